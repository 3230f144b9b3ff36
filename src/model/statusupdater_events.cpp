// Events and alerts: the mirror of the terminal's alert log, the display's own events, what is new and
// what is gone, and the texts by event id. How an event is shown is the window's business.
#include "model/statusupdater.h"

#include "common/log.h"
#include "model/ascii.h"
#include "model/config_record.h"
#include "model/event_ids.h"
#include "model/event_texts.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QHash>
#include <QStringList>

#include <algorithm>
#include <set>

namespace {

const char ALERT_PREFIX[] = "ram.log.alert.";
const char WARNINGS_PRESENT_KEY[] = "ram.status.gui_display.warnings_present";
const int64_t TIME_TOO_LARGE_MS = 2019686400000LL; // 1 January 2034

// Places of a key's parts: ram.log.alert.<index>.<field>
enum { PART_INDEX = 3, PART_FIELD = 4, PARTS_OF_KEY = 5 };

// Events of the log that the display leaves out: the screens ask for PIN and PUK themselves.
const unsigned int IGNORED_EVENTS[] = {EV_NETMGR_NO_PIN, EV_NETMGR_PUK_CODE};

bool isIgnored(const fmmi_evt_t& event)
{
    for (unsigned int id : IGNORED_EVENTS)
        if (event.identifier == id)
            return true;
    return false;
}

// Copies an ASCII text into an event, as much as its field takes with a NUL.
void setShorttext(fmmi_evt_t& event, const QByteArray& ascii)
{
    const int length = std::min(static_cast<int>(ascii.size()), EVENT_SHORTTEXT_SIZE - 1);
    std::memset(event.shorttext, 0, sizeof(event.shorttext));
    std::memcpy(event.shorttext, ascii.constData(), static_cast<size_t>(length));
}

// The fields of an alert that are whole numbers.
enum ALERT_FIELD { ALERT_ENTRY, ALERT_IDENTIFIER, ALERT_SUB_ID, ALERT_STATE, ALERT_SEVERITY, ALERT_TIME };

struct AlertFieldName {
    const char* name;
    ALERT_FIELD field;
};

const AlertFieldName ALERT_FIELDS[] = {
    {"entry", ALERT_ENTRY}, {"identifier", ALERT_IDENTIFIER}, {"sub_id", ALERT_SUB_ID},
    {"state", ALERT_STATE}, {"severity", ALERT_SEVERITY},     {"time", ALERT_TIME},
};

void setAlertTime(fmmi_evt_t& event, int seconds)
{
    event.time = static_cast<int64_t>(seconds) * 1000;
    if (event.time > TIME_TOO_LARGE_MS)
        logWarning() << "setAlertList(): ERROR!!! epochTimeStampMs=" << static_cast<long long>(event.time)
                     << " seems to be too large!!!";
}

void setAlertNumber(database_evt_type& alert, ALERT_FIELD field, int value)
{
    switch (field) {
    case ALERT_ENTRY:
        alert.entry = static_cast<uint32_t>(value);
        break;
    case ALERT_IDENTIFIER:
        alert.event.identifier = static_cast<uint32_t>(value);
        break;
    case ALERT_SUB_ID:
        alert.event.sub_id = static_cast<uint32_t>(value);
        break;
    case ALERT_STATE:
        alert.event.state = value;
        break;
    case ALERT_SEVERITY:
        alert.event.severity = value;
        break;
    case ALERT_TIME:
        setAlertTime(alert.event, value);
        break;
    }
}

void logWrongType(const char* expected, const config_data_t& record)
{
    logWarning() << "setAlertList: Error: Unexpected type. Expected " << expected
                 << " for name=" << record.name << " but got " << record.type;
}

void takeAlertText(fmmi_evt_t& event, const config_data_t& record)
{
    if (record.type != VX_CONFIG_TYPE_STRING) {
        logWrongType("VX_CONFIG_TYPE_STRING", record);
        return;
    }
    setShorttext(event, asciiOf(recordText(record)));
}

// A field that has no place in an event (unit_id, info and whatever else) is passed over.
void takeAlertField(database_evt_type& alert, const QString& field, const config_data_t& record)
{
    if (field == QLatin1String("shorttext")) {
        takeAlertText(alert.event, record);
        return;
    }
    for (const AlertFieldName& row : ALERT_FIELDS) {
        if (field != QLatin1String(row.name))
            continue;
        if (recordIsInt(record))
            setAlertNumber(alert, row.field, recordInt(record));
        else if (recordHasValue(record))
            logWrongType("VX_CONFIG_TYPE_INT", record);
        return;
    }
}

// The alerts in the order of their first records, and where each index stands among them.
struct AlertLog {
    QList<database_evt_type> alerts;
    QHash<int, int> positions;
};

database_evt_type& alertOf(AlertLog& log, int index)
{
    const QHash<int, int>::const_iterator known = log.positions.constFind(index);
    if (known != log.positions.constEnd())
        return log.alerts[*known];
    log.positions.insert(index, static_cast<int>(log.alerts.size()));
    database_evt_type alert;
    alert.index = index;
    log.alerts.append(alert);
    return log.alerts.last();
}

void takeAlertRecord(AlertLog& log, const config_data_t& record)
{
    const QString name = QString::fromUtf8(record.name);
    if (!name.startsWith(QLatin1String(ALERT_PREFIX))) {
        logWarning() << "setAlertList: WARNING: " << name
                     << " does not start with 'ram.log.alert.' as expected!";
        return;
    }
    const QStringList parts = name.split(QChar::fromLatin1('.'));
    if (parts.size() != PARTS_OF_KEY)
        return;
    bool ok = false;
    const int index = parts.at(PART_INDEX).toInt(&ok);
    if (!ok) { // as with ram.log.alert.latest.entry_count
        logDebug() << "setAlertList: " << name << " does not include an index. Skipping this field.";
        return;
    }
    takeAlertField(alertOf(log, index), parts.at(PART_FIELD), record);
}

// Events of one list that the other doesn't hold. It runs under the lock, for which other threads wait 2.1 s
// at most: the time must not grow with the square of an alert log's length.
QList<fmmi_evt_t> without(const QList<fmmi_evt_t>& list, const QList<fmmi_evt_t>& other)
{
    std::set<const fmmi_evt_t*, EventOrder> held;
    for (const fmmi_evt_t& event : other)
        held.insert(&event);
    QList<fmmi_evt_t> rest;
    for (const fmmi_evt_t& event : list)
        if (held.count(&event) == 0)
            rest.append(event);
    return rest;
}

bool holds(const QList<fmmi_evt_t>& list, unsigned int eventId)
{
    for (const fmmi_evt_t& event : list)
        if (event.identifier == eventId)
            return true;
    return false;
}

bool isNewer(const fmmi_evt_t& a, const fmmi_evt_t& b)
{
    return a.time > b.time;
}

} // namespace

// --- The terminal's events
// ----------------------------------------------------------------------------------

void StatusUpdater::setAlertList(unsigned int nrec, const config_data_t* prec)
{
    logDebug() << "StatusUpdater::setAlertList(): Start of function.";
    AlertLog log;
    for (unsigned int i = 0; i < nrec; ++i)
        takeAlertRecord(log, prec[i]);
    QList<fmmi_evt_t> events;
    for (const database_evt_type& alert : log.alerts)
        events.append(alert.event);
    setSystemEvents(events); // with an empty list, too: that is how all alerts clear
}

void StatusUpdater::setSystemEvents(QList<fmmi_evt_t> rawList)
{
    QList<fmmi_evt_t> events;
    for (const fmmi_evt_t& event : rawList) {
        if (isIgnored(event))
            logDebug() << "StatusUpdater::setSystemEvents(): Ignoring eventID " << event.identifier;
        else
            events.append(event);
    }

    StatusLock lock(statusMutex, __func__);
    const QList<fmmi_evt_t> oldEvents = systemEvents;
    systemEvents = events;
    const bool anyPresent = !systemEvents.isEmpty() || !localEventsMutexProtected.isEmpty();
    const QList<fmmi_evt_t> newEvents = without(events, oldEvents);
    const QList<fmmi_evt_t> removedEvents = without(oldEvents, events);
    learnEventTexts(newEvents);
    lock.unlock();

    // An event that changed is new and gone at once; it is shown before its old form is taken away.
    for (const fmmi_evt_t& event : newEvents)
        announce(__func__, "showPopup", &StatusUpdater::showPopup, event);
    setWarningsPresent(anyPresent);
    for (const fmmi_evt_t& event : removedEvents)
        announce(__func__, "signalRemovePopup", &StatusUpdater::signalRemovePopup, event.identifier);
    if (!newEvents.isEmpty() || !removedEvents.isEmpty())
        announce(__func__, "eventListChanged", &StatusUpdater::eventListChanged);
    else
        logDebug() << "StatusUpdater::setSystemEvents(): eventList was not changed. Do not emit signal "
                      "eventListChanged().";
}

void StatusUpdater::showAllSystemEvents()
{
    StatusLock lock(statusMutex, __func__);
    const QList<fmmi_evt_t> events = systemEvents;
    for (const fmmi_evt_t& event : events)
        logDebug()
            << "StatusUpdater::showAllSystemEvents(): Appending event to list of pop-ups to show. Text="
            << event.shorttext;
    lock.unlock();
    for (const fmmi_evt_t& event : events)
        announce(__func__, "showPopup", &StatusUpdater::showPopup, event);
}

// --- The display's own events
// -------------------------------------------------------------------------------

void StatusUpdater::addLocalEvent(unsigned int eventId, int severity)
{
    fmmi_evt_t event;
    event.identifier = eventId;
    event.severity = severity;
    event.state = EVENT_STATE_LOCAL;
    event.time = QDateTime::currentMSecsSinceEpoch();
    QString text = getEventText(eventId);
    if (text.size() > EVENT_LOCAL_TEXT_MAX) {
        logWarning() << "StatusUpdater::addLocalEvent(eventId=0x" << hexText(eventId)
                     << "): Error. stringDescription.size()>59 is not legal. stringDescription=" << text;
        text.truncate(EVENT_LOCAL_TEXT_MAX);
    }
    setShorttext(event, asciiOf(text));

    StatusLock lock(statusMutex, __func__);
    if (localEventsMutexProtected.contains(event)) {
        logDebug() << "StatusUpdater::addLocalEvent(" << eventId << "): eventAlreadyExist";
        return;
    }
    localEventsMutexProtected.append(event);
    lock.unlock();
    announce(__func__, "showPopup", &StatusUpdater::showPopup, event);
    announce(__func__, "eventListChanged", &StatusUpdater::eventListChanged);
    if (!getWarningsPresent())
        setWarningsPresent(true);
}

void StatusUpdater::removeLocalEvent(unsigned int eventId)
{
    const QString prefix =
        QString::fromLatin1("StatusUpdater::removeLocalEvent(eventId=0x") + hexText(eventId);
    bool removed = false;
    StatusLock lock(statusMutex, __func__);
    for (int i = static_cast<int>(localEventsMutexProtected.size()) - 1; i >= 0; --i) {
        if (localEventsMutexProtected.at(i).identifier != eventId)
            continue;
        logDebug() << prefix << "), and will now remove it from the localEventsMutexProtected list.";
        localEventsMutexProtected.removeAt(i);
        removed = true;
    }
    if (!removed)
        logDebug() << prefix << "): Cound not find event with eventId=0x" << hexText(eventId)
                   << "). Nothing to remove.";
    logDebug() << prefix << "): localEventsMutexProtected.size()="
               << static_cast<int>(localEventsMutexProtected.size());
    if (systemEvents.isEmpty() && localEventsMutexProtected.isEmpty() && warningsPresent) {
        lock.unlock();
        setWarningsPresent(false);
        lock.relock();
    }
    lock.unlock();
    if (!removed)
        return;
    announce(__func__, "signalRemovePopup", &StatusUpdater::signalRemovePopup, eventId);
    announce(__func__, "eventListChanged", &StatusUpdater::eventListChanged);
}

// --- Both
// ---------------------------------------------------------------------------------------------------

QList<fmmi_evt_t> StatusUpdater::getEvents() const
{
    StatusLock lock(statusMutex, __func__);
    QList<fmmi_evt_t> events = systemEvents + localEventsMutexProtected;
    lock.unlock();
    std::stable_sort(events.begin(), events.end(), isNewer);
    return events;
}

bool StatusUpdater::eventExist(unsigned int eventId) const
{
    StatusLock lock(statusMutex, __func__);
    return holds(systemEvents, eventId) || holds(localEventsMutexProtected, eventId);
}

void StatusUpdater::setWarningsPresent(bool value)
{
    if (!storeChanged(warningsPresent, value, __func__))
        return;
    logDebug() << "StatusUpdater::setWarningsPresent(): Value set to " << (value ? "TRUE" : "FALSE");
    announce(__func__, "warningsPresentChanged", &StatusUpdater::warningsPresentChanged, value);
    // Past setCBusValue(): events come on the bus thread, which is connected.
    config_write_int(WARNINGS_PRESENT_KEY, value ? 1 : 0);
}

bool StatusUpdater::getWarningsPresent() const
{
    return read(warningsPresent, __func__);
}

// --- Texts
// --------------------------------------------------------------------------------------------------

QString StatusUpdater::getEventText(unsigned int eventId) const
{
    StatusLock lock(statusMutex, __func__);
    return translatedEventTextList.value(eventId);
}

QString StatusUpdater::getEventSeverityAsString(int severity) const
{
    static const char* const NAMES[] = {"EVENT_INFO", "EVENT_WARNING", "EVENT_ERROR", "EVENT_FATAL",
                                        "EVENT_SCREEN_SAVER"};
    if (severity >= EVENT_INFO && severity <= EVENT_SCREEN_SAVER)
        return QString::fromLatin1(NAMES[severity]);
    return QString::fromLatin1("No debug text for severity=") + QString::number(severity);
}

// An event that the table doesn't know shows the log's own words from now on. Under the lock.
void StatusUpdater::learnEventTexts(const QList<fmmi_evt_t>& newEvents)
{
    if (translatedEventTextList.size() + newEvents.size() > NUMBER_OF_EVENT_TEXTS + LEARNED_EVENT_TEXTS_MAX)
        forgetTextsOfGoneEvents();
    for (const fmmi_evt_t& event : newEvents)
        if (!translatedEventTextList.contains(event.identifier))
            translatedEventTextList.insert(event.identifier, QString::fromLatin1(event.shorttext));
}

// Ids are the log's: in the months of a process any number of them may come. Under the lock.
void StatusUpdater::forgetTextsOfGoneEvents()
{
    QHash<unsigned int, QString> kept;
    for (const EventText& row : EVENT_TEXTS)
        kept.insert(row.id, translatedEventTextList.value(row.id));
    for (const fmmi_evt_t& event : systemEvents + localEventsMutexProtected)
        if (translatedEventTextList.contains(event.identifier))
            kept.insert(event.identifier, translatedEventTextList.value(event.identifier));
    const int forgotten = static_cast<int>(translatedEventTextList.size() - kept.size());
    translatedEventTextList = kept;
    if (forgotten > 0)
        logWarning()
            << "StatusUpdater::setSystemEvents(): Too many unknown event ids. Forgetting the texts of "
            << forgotten << " that are gone.";
}

// Rows that came from the log's own words stay, in English, whatever the language.
void StatusUpdater::updateTranslatedEventTexts()
{
    StatusLock lock(statusMutex, __func__);
    for (const EventText& row : EVENT_TEXTS)
        translatedEventTextList.insert(row.id, row.context
                                                   ? QCoreApplication::translate(row.context, row.source)
                                                   : QString::fromLatin1(""));
}
