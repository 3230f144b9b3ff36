// The status text: how the state of the terminal is reduced to one text id, how the id becomes words, and
// the lines of the running connections. The state itself comes from elsewhere: statusupdater_poll.cpp,
// statusupdater_wan.cpp, statusupdater_bundles.cpp. GUI thread.
#include "model/statusupdater.h"

#include "common/log.h"
#include "common/qtcompat.h"
#include "model/event_ids.h"

#include <QCoreApplication>
#include <QFontMetrics>

namespace {

const char SHARED[] = "Shared_translations";
const char OWN[] = "StatusUpdater";

// The texts of the ids. 13 has none; 16 is put together from the connections.
struct StatusText {
    STATUS_TEXT_ENUM id;
    const char* context; // null: the source is the text
    const char* source;
};

const StatusText STATUS_TEXTS[] = {
    {STATUS_TEXT_UNDEFINED, SHARED, QT_TRANSLATE_NOOP("Shared_translations", "Initializing")},
    {STATUS_TEXT_INSERT_SIM, OWN, QT_TRANSLATE_NOOP("StatusUpdater", "Insert SIM")},
    {STATUS_TEXT_INITIALIZING_SIM, OWN, QT_TRANSLATE_NOOP("StatusUpdater", "Initializing SIM")},
    {STATUS_TEXT_SIM_REJECTED, SHARED, QT_TRANSLATE_NOOP("Shared_translations", "RM_EV_BDU_USIM_REJECTED")},
    {STATUS_TEXT_ENTER_PUK, OWN, QT_TRANSLATE_NOOP("StatusUpdater", "Enter PUK in web interface")},
    {STATUS_TEXT_ENTER_PIN, OWN, QT_TRANSLATE_NOOP("StatusUpdater", "Enter PIN?")},
    {STATUS_TEXT_POINT_NOW, OWN, QT_TRANSLATE_NOOP("StatusUpdater", "Point now?")},
    {STATUS_TEXT_LIMITED_SERVICE, SHARED,
     QT_TRANSLATE_NOOP("Shared_translations", "RM_EV_ALARM_LIMITED_SERVICE")},
    {STATUS_TEXT_SIM_LOCK_MISMATCH, OWN,
     QT_TRANSLATE_NOOP("StatusUpdater", "SIM Lock does not\nmatch inserted SIM")},
    {STATUS_TEXT_INITIALIZING, SHARED, QT_TRANSLATE_NOOP("Shared_translations", "Initializing")},
    {STATUS_TEXT_SEARCHING, OWN, QT_TRANSLATE_NOOP("StatusUpdater", "Searching")},
    {STATUS_TEXT_REGISTERING, OWN, QT_TRANSLATE_NOOP("StatusUpdater", "Registering")},
    {STATUS_TEXT_READY, OWN, QT_TRANSLATE_NOOP("StatusUpdater", "Ready")},
    {STATUS_TEXT_BLANK, nullptr, ""},
    {STATUS_TEXT_EXTERNAL_CONTROL, OWN, QT_TRANSLATE_NOOP("StatusUpdater", "External control")},
    {STATUS_TEXT_BONDING_SLAVE_MODE, OWN, QT_TRANSLATE_NOOP("StatusUpdater", "Bonding slave mode")},
};

// The labels of the connection classes. Class 0 shows its amount of data, class 1 its rates.
struct ConnectionLabel {
    int connClass;
    const char* source;
};

const ConnectionLabel CONNECTION_LABELS[] = {
    {2, QT_TRANSLATE_NOOP("StatusUpdater", "HDR Half Asymmetric")},
    {3, QT_TRANSLATE_NOOP("StatusUpdater", "HDR Half Symmetric")},
    {4, QT_TRANSLATE_NOOP("StatusUpdater", "BGAN X-Stream")},
    {5, QT_TRANSLATE_NOOP("StatusUpdater", "HDR Full Asymmetric")},
    {6, QT_TRANSLATE_NOOP("StatusUpdater", "HDR Full Symmetric")},
    {7, QT_TRANSLATE_NOOP("StatusUpdater", "2xHDR Full Asymmetric")},
    {8, QT_TRANSLATE_NOOP("StatusUpdater", "2xHDR Full Symmetric")},
};

// Pixels of a connection's line.
const int LINE_WIDTH = 184;
const char DOTS[] = "..."; // where a label was cut

// Languages whose glyphs are wide get a narrow gap between label and time.
bool hasWideGlyphs(LANG_ENUM language)
{
    return language == LANG_RUSSIAN || language == LANG_CHINESE || language == LANG_JAPANESE;
}

} // namespace

// The rules, from the top; the first that holds decides. Each value is read at its own moment, so a
// change in between may show an older one; the change's signal has the rules walked again.
STATUS_TEXT_ENUM StatusUpdater::decideStatusText() const
{
    typedef const StatusUpdater& Model;
    struct Rule {
        bool (*holds)(Model model);
        STATUS_TEXT_ENUM result;
    };
    static const Rule RULES[] = {
        {[](Model m) { return m.getExtendedSystemStatus() <= SYSTEM_STATUS_NOT_UP_LAST; },
         STATUS_TEXT_INITIALIZING},
        {[](Model m) { return m.getControlledByATCommands(); }, STATUS_TEXT_EXTERNAL_CONTROL},
        {[](Model m) { return m.getBondingState() == BONDING_STATE_SLAVE; }, STATUS_TEXT_BONDING_SLAVE_MODE},
        {[](Model m) { return m.getNumberOfActiveConnectionsAndBundles() > 0; }, STATUS_TEXT_ACTIVE_BUNDLES},
        {[](Model m) { return m.getSimStatus() == SIM_STATUS_UNKNOWN; }, STATUS_TEXT_INITIALIZING_SIM},
        // -1 is no state that the SIM's texts lead to; it is taken like an invalid SIM all the same.
        {[](Model m) {
             const int sim = m.getSimStatus();
             return sim == -1 || sim == SIM_INVALID;
         },
         STATUS_TEXT_SIM_REJECTED},
        {[](Model m) { return m.getSimStatus() == SIM_NOT_PRESENT; }, STATUS_TEXT_INSERT_SIM},
        {[](Model m) { return m.getSimStatus() == SIM_BLOCKED; }, STATUS_TEXT_ENTER_PUK},
        {[](Model m) { return m.getSimStatus() == SIM_LOCKED; }, STATUS_TEXT_SIM_LOCK_MISMATCH},
        {[](Model m) { return m.getSimStatus() == SIM_PIN_NEEDED; }, STATUS_TEXT_ENTER_PIN},
        {[](Model m) { return m.getPlmnStatus() == PLMN_STATUS_UNDEFINED; }, STATUS_TEXT_UNDEFINED},
        {[](Model m) {
             return m.getPointingMode() == POINTING_STATUS_NOT_POINTED && !m.getHidePointNowText();
         },
         STATUS_TEXT_POINT_NOW},
        {[](Model m) { return m.eventExist(EV_AP_TEMP_CLOSE_CONN); }, STATUS_TEXT_BLANK},
        {[](Model m) { return m.getPointingMode() == POINTING_STATUS_UNKNOWN; }, STATUS_TEXT_INITIALIZING},
        {[](Model m) { return m.getPlmnStatus() == PLMN_STATUS_SCANNING && m.getHidePointNowText(); },
         STATUS_TEXT_POINT_NOW_HIDDEN},
        // Reached only if the hiding ended, or the pointing did, since the rule above that asks to point.
        {[](Model m) {
             return m.getPlmnStatus() == PLMN_STATUS_SCANNING &&
                    m.getPointingMode() == POINTING_STATUS_NOT_POINTED;
         },
         STATUS_TEXT_POINT_NOW},
        {[](Model m) {
             const int plmn = m.getPlmnStatus();
             return plmn == PLMN_STATUS_SCANNING || plmn == PLMN_STATUS_SEARCHING ||
                    plmn == PLMN_STATUS_SELECTING || plmn == PLMN_STATUS_NOT_REGISTERED;
         },
         STATUS_TEXT_SEARCHING},
        {[](Model m) { return m.selectedAndOneIs(UMTS_STATUS_ATTACHED); }, STATUS_TEXT_READY},
        {[](Model m) { return m.selectedAndOneIs(UMTS_STATUS_ATTACHING); }, STATUS_TEXT_REGISTERING},
        {[](Model m) { return m.selectedAndBothBlocked(); }, STATUS_TEXT_LIMITED_SERVICE},
        {[](Model m) { return m.getPlmnStatus() == PLMN_STATUS_SELECTED; }, STATUS_TEXT_SEARCHING},
        // Reached only if the network's data went since the rule above that looks for it.
        {[](Model m) { return m.getPlmnStatus() == PLMN_STATUS_UNDEFINED; }, STATUS_TEXT_INITIALIZING},
    };
    for (const Rule& rule : RULES)
        if (rule.holds(*this))
            return rule.result;
    logWarning() << "StatusUpdater::updateCurrentStatusTextId(): ERROR!! tmpPlmnStatus=" << getPlmnStatus();
    return STATUS_TEXT_UNDEFINED;
}

// Whether the network is selected and its circuit or packet side is in this state.
bool StatusUpdater::selectedAndOneIs(int umtsStatus) const
{
    return getPlmnStatus() == PLMN_STATUS_SELECTED &&
           (read(umtsCsStatus, __func__) == umtsStatus || read(umtsPsStatus, __func__) == umtsStatus);
}

bool StatusUpdater::selectedAndBothBlocked() const
{
    return getPlmnStatus() == PLMN_STATUS_SELECTED && read(umtsCsStatus, __func__) == UMTS_STATUS_BLOCKED &&
           read(umtsPsStatus, __func__) == UMTS_STATUS_BLOCKED;
}

void StatusUpdater::updateCurrentStatusTextId()
{
    store(currentStatusTextId, STATUS_TEXT_UNDEFINED, __func__);
    const STATUS_TEXT_ENUM decided = decideStatusText();
    const int iai2 = read(iai2Status, __func__);
    if (decided == STATUS_TEXT_READY && iai2 != IAI2_STATUS_REGISTERED)
        logDebug() << "StatusUpdater::updateCurrentStatusTextId(): Terminal state unknown, as iai2Status=="
                   << iai2 << ". Terminal silent deregistered?";
    StatusLock lock(statusMutex, __func__);
    currentStatusTextId = decided;
    if (decided == STATUS_TEXT_UNDEFINED)
        logDebug() << "StatusUpdater::updateCurrentStatusTextId(): currentStatusTextId=STATUS_TEXT_UNDEFINED";
}

STATUS_TEXT_ENUM StatusUpdater::getCurrentStatusTextId() const
{
    return read(currentStatusTextId, __func__);
}

QString StatusUpdater::getStatusText() const
{
    return getStatusText(getCurrentStatusTextId());
}

QString StatusUpdater::getStatusText(STATUS_TEXT_ENUM statusTextId) const
{
    StatusLock lock(statusMutex, __func__);
    const QHash<int, QString>::const_iterator entry = translatedStatusTextList.constFind(statusTextId);
    if (entry != translatedStatusTextList.constEnd()) {
        logDebug() << "StatusUpdater::getStatusText(int statusTextId): Successfully translated statusTextId="
                   << statusTextId << " to " << *entry;
        return *entry;
    }
    if (statusTextId == STATUS_TEXT_ACTIVE_BUNDLES) {
        lock.unlock();
        return getActiveBundlesStatusStr();
    }
    logDebug() << "StatusUpdater::getStatusText(int statusTextId): statusTextId=" << statusTextId
               << " not available in translatedStatusTextList. translatedStatusTextList.size()="
               << static_cast<int>(translatedStatusTextList.size());
    return QString();
}

void StatusUpdater::updateTranslatedStatusTexts()
{
    StatusLock lock(statusMutex, __func__);
    translatedStatusTextList.clear();
    for (const StatusText& text : STATUS_TEXTS)
        translatedStatusTextList.insert(text.id, text.context
                                                     ? QCoreApplication::translate(text.context, text.source)
                                                     : QString::fromLatin1(text.source));
}

QString StatusUpdater::getActiveBundlesStatusStr() const
{
    QString lines;
    StatusLock lock(statusMutex, __func__);
    for (int i = 0; i < activeConnectionsAndBundles.size(); ++i) {
        const bundle_t& bundle = activeConnectionsAndBundles.at(i);
        switch (static_cast<int>(bundle.status)) {
        case BUNDLE_STATUS_RUNNING:
            for (const connection_t& connection : bundle.connections)
                lines += connectionLine(bundle, connection) + QChar::fromLatin1('\n');
            break;
        case BUNDLE_STATUS_INITIALIZING:
            lines +=
                QCoreApplication::translate("Shared_translations", "Connecting...") + QChar::fromLatin1('\n');
            break;
        case BUNDLE_STATUS_IDLE:
        case BUNDLE_STATUS_UNKNOWN:
            logDebug() << "StatusUpdater::getActiveBundlesStatusStr(): bundle[" << i
                       << "].status=" << debugBundleStatusStr(bundle.status);
            break;
        default:
            logDebug() << "StatusUpdater::getActiveBundlesStatusStr(): Unexpected bundle[" << i
                       << ". Bundle may be in the process of being stopped.";
            debugBundle(bundle, "unexpected bundle status");
            break;
        }
    }
    lock.unlock();
    lines.chop(1); // the last line's end, if there is any line
    return lines;
}

QString StatusUpdater::connectionLine(const bundle_t& bundle, const connection_t& connection) const
{
    // Standard data is counted by amount, all else by time.
    if (getConnClass(connection) == 0)
        return tr("Standard data: ") + getBackgroundTotalStr(bundle);
    return fittedLine(connectionLabel(connection), getElapsedTimeStr(bundle));
}

QString StatusUpdater::connectionLabel(const connection_t& connection) const
{
    const int connClass = getConnClass(connection);
    if (connClass == 1)
        return QString::number(connection.max_bit_rate_download) + QChar::fromLatin1('/') +
               QString::number(connection.max_bit_rate_upload) +
               QCoreApplication::translate("Shared_translations", " kbps");
    for (const ConnectionLabel& label : CONNECTION_LABELS)
        if (label.connClass == connClass)
            return QCoreApplication::translate(OWN, label.source);
    return tr("Unknown connection");
}

// Label, gap and time within the width of the label: first the gap gives way, then the label's end. Runs
// with the lock held, as a part of the walk above.
QString StatusUpdater::fittedLine(QString label, const QString& elapsedTime) const
{
    const QFontMetrics metrics(statusLabelFont);
    if (lineWidths.time < 0)
        lineWidths = measuredLineWidths(metrics);
    const bool wide = hasWideGlyphs(language);
    int blanks = wide ? 1 : CONNECTION_GAP_MAX;
    int labelWidth = qtcompat::textWidth(metrics, label);

    if (labelWidth + lineWidths.gaps[blanks] + lineWidths.time > LINE_WIDTH)
        --blanks;
    if (labelWidth + lineWidths.gaps[blanks] + lineWidths.time > LINE_WIDTH) {
        if (wide)
            blanks = 0;
        const int rest = lineWidths.dots + lineWidths.gaps[blanks] + lineWidths.time;
        const int length = label.size();
        while (!label.isEmpty() && labelWidth + rest > LINE_WIDTH) {
            label.chop(1);
            labelWidth = qtcompat::textWidth(metrics, label);
        }
        if (label.size() < length)
            label += QString::fromLatin1(DOTS);
    }
    return label + QString(blanks, QChar::fromLatin1(' ')) + elapsedTime;
}

StatusUpdater::LineWidths StatusUpdater::measuredLineWidths(const QFontMetrics& metrics)
{
    LineWidths widths;
    // The time is always measured on these digits, so that a line does not jump with the seconds.
    widths.time = qtcompat::textWidth(metrics, QString::fromLatin1("00:00:00"));
    widths.dots = qtcompat::textWidth(metrics, QString::fromLatin1(DOTS));
    for (int blanks = 0; blanks <= CONNECTION_GAP_MAX; ++blanks)
        widths.gaps[blanks] = qtcompat::textWidth(metrics, QString(blanks, QChar::fromLatin1(' ')));
    return widths;
}
