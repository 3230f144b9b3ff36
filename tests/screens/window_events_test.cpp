// What the main window makes of the model's changes: which popups it adds and removes, when it shows
// itself, what it sends to the pointing process.
//
// The popup queue keeps nothing so far, so the calls are read from the log, where the window names each
// popup that it adds and each that it would remove. Rules that need a popup on display follow with the
// queue: the removal of connection errors, the update while the initialisation is told.
#include "screens/windowfixture.h"

#include "model/event_texts.h"

#include <QRegularExpression>
#include <QScopedPointer>
#include <QSet>

using namespace windowfixture;

namespace {

// One popup as the window asked for it.
struct Added {
    unsigned int id = 0;
    QString severity;
    int closeHandling = -1;
    QString okFunction;
    QString text;
};

// What the window asked of the popup queue, in order.
QList<Added> addedIn(const Messages& messages)
{
    static const QRegularExpression request(
        "^Window::addEvent\\(.*, eventId=0x([0-9A-F]+), severity=(.*)\\): Start of function\\.$");
    static const QRegularExpression arrival("^ScreenPopup::addEvent\\(.*closeHandling=([0-9]+), "
                                            "okFunction=([^,]*), .*text=(.*)$");
    QList<Added> result;
    for (const QString& text : messages.texts()) {
        const QRegularExpressionMatch asked = request.match(text);
        if (asked.hasMatch()) {
            Added added;
            added.id = asked.captured(1).toUInt(nullptr, 16);
            added.severity = asked.captured(2);
            result.append(added);
        }
        const QRegularExpressionMatch arrived = arrival.match(text);
        if (arrived.hasMatch() && !result.isEmpty()) {
            result.last().closeHandling = arrived.captured(1).toInt();
            result.last().okFunction = arrived.captured(2);
            result.last().text = arrived.captured(3);
        }
    }
    return result;
}

QStringList removedIn(const Messages& messages)
{
    static const QRegularExpression removal(
        "^Window::removePopupIfExist\\((.*)\\): Event does not exist in popup list\\. Nothing to remove\\.$");
    QStringList result;
    for (const QString& text : messages.texts()) {
        const QRegularExpressionMatch match = removal.match(text);
        if (match.hasMatch()) {
            result.append(match.captured(1));
        }
    }
    return result;
}

// Additions and removals together, in order: "+NAME" and "-NAME".
QStringList changesIn(const Messages& messages)
{
    static const QRegularExpression addition("^Window::addEvent\\((.*), eventId=");
    static const QRegularExpression removal("^Window::removePopupIfExist\\((.*)\\): Event");
    QStringList result;
    for (const QString& text : messages.texts()) {
        const QRegularExpressionMatch added = addition.match(text);
        const QRegularExpressionMatch removed = removal.match(text);
        if (added.hasMatch()) {
            result.append("+" + added.captured(1));
        } else if (removed.hasMatch()) {
            result.append("-" + removed.captured(1));
        }
    }
    return result;
}

const char INITIALIZING[] = "EV_AP_GUI_STATUS_SYSTEM_INITIALIZING";
const char REBOOTING[] = "EV_AP_GUI_STATUS_SYSTEM_REBOOTING";
const char SHUTTING_DOWN[] = "EV_AP_GUI_STATUS_SYSTEM_SHUTTING_DOWN";
const char IN_USE[] = "EV_AP_GUI_MODEM_IN_USE";
const char SEARCHING[] = "EV_AP_GUI_SEARCHING_FOR_MODEM";
const char SELECT_ON_WEB[] = "EV_AP_GUI_SELECT_NETWORK_ON_WEB";

fmmi_evt_t eventOf(unsigned int id, int severity = EVENT_ERROR)
{
    fmmi_evt_t event;
    event.identifier = id;
    event.severity = severity;
    strcpy(event.shorttext, "the log's own words");
    return event;
}

} // namespace

class WindowEventsTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void addEventBuildsThePopup();
    void addEventTakesTheGivenTimeOrNow();
    void addEventReportsAutoCloseWithoutATime_data();
    void addEventReportsAutoCloseWithoutATime();
    void popupThatIsNotThereIsNotRemoved();
    void removalFromTheModelIsForwarded();

    void eventOfTheTerminalHasItsPopup_data();
    void eventOfTheTerminalHasItsPopup();
    void softwareUpdateOnIsDropped();
    void confirmedResultIsToldToTheTerminal();

    void causeHasItsEvent_data();
    void causeHasItsEvent();
    void allCausesOfTheTable();
    void causeNineChangesNothing();
    void causeOutsideOfTheTableIsUnknown_data();
    void causeOutsideOfTheTableIsUnknown();
    void causeZeroWithoutAPopupRemovesNothing();

    void modemTable_data();
    void modemTable();
    void modemChangeAsksForPointing_data();
    void modemChangeAsksForPointing();
    void modemValuesAreLogged();
    void unknownWanRemovesInSpiteOfItsWords();

    void systemStatusRow_data();
    void systemStatusRow();
    void showRule_data();
    void showRule();
    void updatingWhileVisibleDoesNothing();
    void closedTerminalSuppressesRebootAndShutdown_data();
    void closedTerminalSuppressesRebootAndShutdown();

    void softwareUpload_data();
    void softwareUpload();
    void softwareUploadStopsPointing_data();
    void softwareUploadStopsPointing();
    void endOfUploadBringsTheInitialisationBack_data();
    void endOfUploadBringsTheInitialisationBack();

    void ciphering_data();
    void ciphering();
    void acceptedPinRemovesTheWaitPopup();
    void screenshotIsTakenOfTheCurrentScreen();

private:
    Window* window() { return m_window.data(); }

    QScopedPointer<Window> m_window;
    QScopedPointer<QTemporaryDir> m_directory;
    QByteArray m_files;
    QByteArray m_contrast;
};

void WindowEventsTest::init()
{
    m_directory.reset(new QTemporaryDir);
    m_files = m_directory->path().toUtf8();
    m_contrast = m_directory->filePath("contrast").toUtf8();
    QFile(m_contrast).open(QIODevice::WriteOnly);
    paths::overrideForTest(nullptr, m_files.constData(), m_contrast.constData());
    resetModel();
    m_window.reset(new Window);
    terminal().settle();
    terminal().clearLogs();
}

void WindowEventsTest::cleanup()
{
    m_window.reset();
    paths::overrideForTest(nullptr, nullptr, nullptr);
}

// --- addEvent and removePopupIfExist
// ------------------------------------------------------------------------

void WindowEventsTest::addEventBuildsThePopup()
{
    Messages messages;
    window()->addEvent(EV_AP_GUI_STARTING_BUNDLE_NAME, EVENT_WARNING, POPUP_CLOSE_AUTO_OR_OK, 3000, "okSlot",
                       "cancelSlot", " Field office", -1);
    QCOMPARE(messages.texts().first(), QString("Window::addEvent(EV_AP_GUI_STARTING_BUNDLE_NAME, "
                                               "eventId=0x10102, severity=EVENT_WARNING): Start of "
                                               "function."));
    const QList<Added> added = addedIn(messages);
    QCOMPARE(added.size(), 1);
    QCOMPARE(added.at(0).closeHandling, 2);
    QCOMPARE(added.at(0).okFunction, QString("okSlot"));
    QCOMPARE(added.at(0).text, model()->getEventText(EV_AP_GUI_STARTING_BUNDLE_NAME) + " Field office");
}

void WindowEventsTest::addEventTakesTheGivenTimeOrNow()
{
    Messages messages;
    window()->addEvent(EV_AP_GUI_CUSTOM_TEXT, EVENT_INFO, POPUP_CLOSE_OK, 0, nullptr, nullptr, "x",
                       1420070400123LL);
    QCOMPARE(messages.texts().filter("timeStamp=2015-01-01T00:00:00.123").size(), 1);
    messages.clear();
    const QDateTime before = QDateTime::currentDateTime();
    window()->addEvent(EV_AP_GUI_CUSTOM_TEXT, EVENT_INFO, POPUP_CLOSE_OK, 0, nullptr, nullptr, "x", -1);
    const QDateTime after = QDateTime::currentDateTime();
    const QStringList lines = messages.texts().filter("timeStamp=");
    QCOMPARE(lines.size(), 1);
    const QString stamp = QRegularExpression("timeStamp=([^,]*)").match(lines.at(0)).captured(1);
    const QDateTime time = QDateTime::fromString(stamp, "yyyy-MM-ddThh:mm:ss.zzz");
    QVERIFY2(time.isValid(), qPrintable(stamp));
    QVERIFY(time >= before.addMSecs(-1) && time <= after);
}

void WindowEventsTest::addEventReportsAutoCloseWithoutATime_data()
{
    QTest::addColumn<int>("closeHandling");
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<bool>("reported");
    QTest::newRow("auto, 0") << int(POPUP_CLOSE_AUTO) << 0 << true;
    QTest::newRow("auto, negative") << int(POPUP_CLOSE_AUTO) << -5 << true;
    QTest::newRow("auto, 1") << int(POPUP_CLOSE_AUTO) << 1 << false;
    QTest::newRow("auto or OK, 0") << int(POPUP_CLOSE_AUTO_OR_OK) << 0 << false;
    QTest::newRow("OK, 0") << int(POPUP_CLOSE_OK) << 0 << false;
}

void WindowEventsTest::addEventReportsAutoCloseWithoutATime()
{
    QFETCH(int, closeHandling);
    QFETCH(int, milliseconds);
    QFETCH(bool, reported);
    Messages messages;
    window()->addEvent(EV_AP_GUI_CUSTOM_TEXT, EVENT_INFO,
                       static_cast<POPUP_CLOSE_HANDLING_ENUM>(closeHandling), milliseconds, nullptr, nullptr,
                       QString(), -1);
    QCOMPARE(messages.count(QString("Window::addEvent(EV_AP_GUI_CUSTOM_TEXT): ERROR !!!!  "
                                    "closeHandling==POPUP_CLOSE_AUTO and showForMilliseconds=%1 is not an "
                                    "expected combination!!!")
                                .arg(milliseconds)),
             reported ? 1 : 0);
    QCOMPARE(messages.countOfPrefix("ScreenPopup::addEvent("), 1); // it goes on in either case
}

void WindowEventsTest::popupThatIsNotThereIsNotRemoved()
{
    Messages messages;
    window()->removePopupIfExist(0x12345);
    QCOMPARE(messages.texts(),
             QStringList("Window::removePopupIfExist(No debug text for eventId=0x12345): Event does not "
                         "exist in popup list. Nothing to remove."));
}

void WindowEventsTest::removalFromTheModelIsForwarded()
{
    Messages messages;
    emit model()->signalRemovePopup(EV_AP_TEMP_LOW);
    QCOMPARE(removedIn(messages), QStringList("EV_AP_TEMP_LOW"));
}

// --- Events of the terminal
// ---------------------------------------------------------------------------------

void WindowEventsTest::eventOfTheTerminalHasItsPopup_data()
{
    QTest::addColumn<unsigned int>("id");
    QTest::addColumn<int>("closeHandling");
    QTest::addColumn<QString>("okFunction");
    const QString confirm = "handleSwUpdateResultUserConfirmed";
    const QString none = "none";
    const unsigned int confirmed[] = {0x10303, 0x10304, 0x10305, 0x10306, 0x10307, 0x10308, 0x10309,
                                      0x1030c, 0x1030d, 0x10310, 0x10313, 0x10314, 0x10316, 0x10317};
    for (unsigned int id : confirmed) {
        QTest::addRow("0x%x", id) << id << 1 << confirm;
    }
    const unsigned int plain[] = {0x10301, 0x10302, 0x1030e, 0x1030f, 0x10311, 0x10312,
                                  0x10315, 0x10318, 0x210,   0x12345, 0x10206};
    for (unsigned int id : plain) {
        QTest::addRow("0x%x", id) << id << 1 << none;
    }
    QTest::newRow("integrity error") << 0x1030au << 6 << none;
    QTest::newRow("integrity error of the antenna") << 0x1030bu << 6 << none;
}

void WindowEventsTest::eventOfTheTerminalHasItsPopup()
{
    QFETCH(unsigned int, id);
    QFETCH(int, closeHandling);
    QFETCH(QString, okFunction);
    Messages messages;
    emit model()->showPopup(eventOf(id));
    const QList<Added> added = addedIn(messages);
    QCOMPARE(added.size(), 1);
    QCOMPARE(added.at(0).id, id);
    QCOMPARE(added.at(0).severity, QString("EVENT_ERROR")); // the event's own
    QCOMPARE(added.at(0).closeHandling, closeHandling);
    QCOMPARE(added.at(0).okFunction, okFunction);
    QCOMPARE(added.at(0).text, model()->getEventText(id)); // not the event's own words
}

void WindowEventsTest::softwareUpdateOnIsDropped()
{
    Messages messages;
    emit model()->showPopup(eventOf(EV_SW_UPDATE_ON));
    QCOMPARE(changesIn(messages), QStringList());
}

void WindowEventsTest::confirmedResultIsToldToTheTerminal()
{
    // By name, as the popup screen calls it.
    QVERIFY(QMetaObject::invokeMethod(window(), "handleSwUpdateResultUserConfirmed", Qt::DirectConnection));
    QVERIFY(terminal().waitForWrite("cfg.status.sw_update.error", sim::Value::integer(0)));
}

// --- Connection errors
// --------------------------------------------------------------------------------------

namespace {

// The whole table, written out: cause and event.
QList<QPair<unsigned int, unsigned int>> allCauses()
{
    const struct {
        unsigned int first;
        QList<unsigned int> events;
    } rows[] = {
        {1, {0x10006, 0x10007, 0x10008, 0x10009, 0x1000a, 0x1000b, 0x1000c, 0x1000d}},
        {10, {0x10010}},
        {0x10000008, {0x1001000f}},
        {0x1000001a,
         {0x10010011, 0x10010012, 0x10010013, 0x10010014, 0x10010015, 0x10010016, 0x10010017, 0x10010018,
          0x10010019}},
        {0x10000023,
         {0x10010020, 0x10010021, 0x10010022, 0x10010023, 0x10010024, 0x10010025, 0x10010026, 0x10010027,
          0x10010028, 0x10010029, 0x1001002a, 0x1001002b}},
        {0x10024002, {0x10010075, 0x10010076}},
        {0x10024006,
         {0x10010077, 0x10010078, 0x10010079, 0x1001007a, 0x1001007b, 0x1001007c, 0x1001007d, 0x1001007e,
          0x1001007f, 0x10010080, 0x10010081}},
        {0x10024100,
         {0x1001003b, 0x1001003c, 0x1001003d, 0x1001003e, 0x1001003f, 0x10010040, 0x10010041, 0x10010043,
          0x10010044, 0x10010045}},
        {0x10034011, {0x10010082}},
        {0x10034014, {0x10010083, 0x10010084, 0x10010085, 0x10010086}},
        {0x1003405f, {0x10010087, 0x10010088, 0x10010089, 0x1001008a}},
        {0x10034064, {0x1001008b, 0x1001008c}},
        {0x1003406f, {0x1001008d}},
        {0x10040001, {0x10010030, 0x10010031, 0x10010032, 0x10010033, 0x10010034}},
        {0x10040008, {0x10010035}},
        {0x10040101, {0x10010036, 0x10010037, 0x10010038}},
        {0x10040107, {0x10010039}},
        {0x1004010b, {0x1001003a}},
        {0x10051001, {0x10010090, 0x10010091, 0x10010092, 0x10010093, 0x10010094, 0x10010095, 0x10010096}},
        {0x10086300,
         {0x10010050, 0x10010051, 0x10010052, 0x10010053, 0x10010054, 0x10010055, 0x10010056, 0x10010057,
          0x10010058, 0x10010059, 0x1001005a, 0x1001005b, 0x1001005c, 0x1001005d}},
        {0x10086314,
         {0x1001005f, 0x10010060, 0x10010061, 0x10010062, 0x10010063, 0x10010064, 0x10010065, 0x10010066,
          0x10010067, 0x10010068, 0x1001005e, 0x10010069, 0x1001006a, 0x1001006b, 0x1001006c, 0x1001006d,
          0x1001006e, 0x1001006f, 0x10010070}},
    };
    QList<QPair<unsigned int, unsigned int>> result;
    for (const auto& row : rows) {
        for (int i = 0; i < row.events.size(); ++i) {
            result.append(qMakePair(row.first + static_cast<unsigned int>(i), row.events.at(i)));
        }
    }
    return result;
}

} // namespace

void WindowEventsTest::causeHasItsEvent_data()
{
    QTest::addColumn<int>("cause");
    QTest::addColumn<unsigned int>("id");
    for (const auto& row : allCauses()) {
        QTest::addRow("cause 0x%x", row.first) << static_cast<int>(row.first) << row.second;
    }
}

void WindowEventsTest::causeHasItsEvent()
{
    QFETCH(int, cause);
    QFETCH(unsigned int, id);
    Messages messages;
    window()->handleBganConnectionErrorChanged(cause);
    QCOMPARE(messages.count(QString("Window::handleBganConnectionErrorChanged(): value=%1").arg(cause)), 1);
    const QList<Added> added = addedIn(messages);
    QCOMPARE(added.size(), 1);
    QCOMPARE(added.at(0).id, id);
    QCOMPARE(added.at(0).severity, QString("EVENT_WARNING"));
    QCOMPARE(added.at(0).closeHandling, 1);
    QCOMPARE(added.at(0).okFunction, QString("none"));
    QCOMPARE(messages.countOfPrefix("Window::handleBganConnectionErrorChanged(). Unsupported"), 0);
}

// Each failure cause that has a text has its cause, but for none twice.
void WindowEventsTest::allCausesOfTheTable()
{
    QSet<unsigned int> events;
    for (const auto& row : allCauses()) {
        QVERIFY(!events.contains(row.second));
        events.insert(row.second);
        QVERIFY2(findEventText(row.second), QByteArray::number(row.second, 16).constData());
    }
    QCOMPARE(int(allCauses().size()), 117);
    QVERIFY(allCauses().contains(qMakePair(0x1008631eu, 0x1001005eu)));
    QVERIFY(allCauses().contains(qMakePair(0x1008631du, 0x10010068u)));
}

void WindowEventsTest::causeNineChangesNothing()
{
    Messages messages;
    window()->handleBganConnectionErrorChanged(9);
    QCOMPARE(messages.texts(), QStringList("Window::handleBganConnectionErrorChanged(): value=9"));
}

void WindowEventsTest::causeOutsideOfTheTableIsUnknown_data()
{
    QTest::addColumn<int>("cause");
    for (int cause :
         {-1,         11,         0x10000007, 0x10000009, 0x10000019, 0x1000002f, 0x10024001, 0x10024004,
          0x10024005, 0x10024011, 0x100240ff, 0x1002410a, 0x10034010, 0x10034012, 0x10034013, 0x10034018,
          0x1003405e, 0x10034063, 0x10034066, 0x1003406e, 0x10034070, 0x10040000, 0x10040006, 0x10040007,
          0x10040009, 0x10040100, 0x10040104, 0x10040106, 0x10040108, 0x1004010a, 0x1004010c, 0x10051000,
          0x10051008, 0x100862ff, 0x1008630e, 0x10086313, 0x10086327}) {
        QTest::addRow("0x%x", static_cast<unsigned int>(cause)) << cause;
    }
}

void WindowEventsTest::causeOutsideOfTheTableIsUnknown()
{
    QFETCH(int, cause);
    Messages messages;
    emit model()->bganConnectionErrorChanged(cause);
    const QList<Added> added = addedIn(messages);
    QCOMPARE(added.size(), 1);
    QCOMPARE(added.at(0).id, static_cast<unsigned int>(EV_AP_GUI_CONN_UNKNOWN));
    QCOMPARE(added.at(0).severity, QString("EVENT_WARNING"));
    QCOMPARE(added.at(0).closeHandling, 1);
    QCOMPARE(messages.count(
                 QString("Window::handleBganConnectionErrorChanged(). Unsupported value=%1").arg(cause)),
             1);
}

void WindowEventsTest::causeZeroWithoutAPopupRemovesNothing()
{
    Messages messages;
    window()->handleBganConnectionErrorChanged(0);
    QCOMPARE(messages.texts(), QStringList("Window::handleBganConnectionErrorChanged(): value=0"));
}

// --- Modem
// --------------------------------------------------------------------------------------------------

void WindowEventsTest::modemTable_data()
{
    QTest::addColumn<int>("wan");
    QTest::addColumn<int>("activated");
    QTest::addColumn<int>("present");
    QTest::addColumn<int>("startup");
    QTest::addColumn<QString>("added"); // the one popup that stands, or none
    const int any = STARTUP_WAN_UNKNOWN;
    const int user = STARTUP_WAN_USER_SELECTTION;
    QTest::newRow("none, modem there") << 0 << 1 << 1 << any << IN_USE;
    QTest::newRow("none, modem there, user's choice") << 0 << 1 << 1 << user << IN_USE;
    QTest::newRow("none, modem not there") << 0 << 1 << 0 << any << SEARCHING;
    QTest::newRow("none, modem not known") << 0 << 1 << -1 << any << SEARCHING;
    QTest::newRow("none, no modem, user's choice") << 0 << 0 << 0 << user << SELECT_ON_WEB;
    QTest::newRow("none, activation not known, user's choice") << 0 << -1 << 1 << user << SELECT_ON_WEB;
    QTest::newRow("none, no modem") << 0 << 0 << 1 << int(STARTUP_WAN_BGAN) << "";
    for (int wan : {1, 3}) {
        QTest::addRow("%d, modem there", wan) << wan << 1 << 1 << any << IN_USE;
        QTest::addRow("%d, modem not there", wan) << wan << 1 << 0 << any << SEARCHING;
        QTest::addRow("%d, no modem", wan) << wan << 0 << 1 << user << "";
    }
    QTest::newRow("modem, there") << 2 << 0 << 1 << user << IN_USE;
    QTest::newRow("modem, not there") << 2 << 1 << 0 << any << SEARCHING;
    QTest::newRow("unknown") << -1 << 1 << 1 << user << "";
    QTest::newRow("any other") << 4 << 1 << 1 << user << "";
}

void WindowEventsTest::modemTable()
{
    QFETCH(int, wan);
    QFETCH(int, activated);
    QFETCH(int, present);
    QFETCH(int, startup);
    QFETCH(QString, added);
    model()->setModemActivated(activated);
    model()->setModemPresent(present);
    model()->setModemOrBganAtStartup(static_cast<ENUM_STARTUP_WAN>(startup));
    model()->setWanActive(static_cast<ENUM_WAN_ACTIVE>(wan));
    // The choice of the user has no part in it.
    for (ENUM_WAN_USER_SELECTION selection : {WAN_USER_SELECTION_NONE, WAN_USER_SELECTION_MODEM}) {
        model()->setWanUserSelection(selection);
        Messages messages;
        window()->handleModemChanged();
        QStringList expected;
        QStringList expectedLines;
        for (const char* name : {IN_USE, SEARCHING, SELECT_ON_WEB}) {
            const bool stands = added == name;
            expected.append((stands ? "+" : "-") + QString(name));
            expectedLines.append(QString("Window::handleModemChanged(): ") +
                                 (stands ? "Adding event " : "Removing event ") + name);
        }
        QCOMPARE(changesIn(messages), expected);
        QCOMPARE(messages.texts().filter(QRegularExpression("(Adding|Removing) event ")), expectedLines);
        for (const Added& popup : addedIn(messages)) {
            QCOMPARE(popup.severity, QString("EVENT_INFO"));
            QCOMPARE(popup.closeHandling, 6);
            QCOMPARE(popup.okFunction, QString("none"));
        }
    }
}

void WindowEventsTest::modemChangeAsksForPointing_data()
{
    QTest::addColumn<int>("wan");
    QTest::addColumn<int>("activated");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("pointing");
    QTest::addColumn<int>("atStartup");
    QTest::addColumn<int>("upload");
    QTest::addColumn<int>("sim");
    QTest::addColumn<bool>("asked");
    QTest::newRow("BGAN") << 1 << 0 << 10 << 0 << 1 << 0 << 3 << true;
    QTest::newRow("modem and BGAN") << 3 << 0 << 10 << 0 << 1 << 0 << 3 << true;
    QTest::newRow("modem activated") << 1 << 1 << 10 << 0 << 1 << 0 << 3 << false;
    QTest::newRow("status 11") << 1 << 0 << 11 << 0 << 1 << 0 << 3 << false;
    QTest::newRow("pointed") << 1 << 0 << 10 << 2 << 1 << 0 << 3 << false;
    QTest::newRow("pointing not known") << 1 << 0 << 10 << -1 << 1 << 0 << 3 << false;
    QTest::newRow("not at start-up") << 1 << 0 << 10 << 0 << 0 << 0 << 3 << false;
    QTest::newRow("software upload") << 1 << 0 << 10 << 0 << 1 << 1 << 3 << false;
    QTest::newRow("no WAN") << 0 << 0 << 10 << 0 << 1 << 0 << 3 << false;
    QTest::newRow("SIM needs its PIN") << 1 << 0 << 10 << 0 << 1 << 0 << 1 << false;
}

void WindowEventsTest::modemChangeAsksForPointing()
{
    QFETCH(int, wan);
    QFETCH(int, activated);
    QFETCH(int, status);
    QFETCH(int, pointing);
    QFETCH(int, atStartup);
    QFETCH(int, upload);
    QFETCH(int, sim);
    QFETCH(bool, asked);
    QVERIFY(setSim(sim));
    QCoreApplication::sendPostedEvents();
    model()->setPointingAtStartup(atStartup);
    model()->setPointingMode(static_cast<ENUM_POINTED_STATUS>(pointing));
    model()->setSwUploadStatus(upload, 0, 512);
    model()->setModemActivated(activated);
    model()->setExtendedSystemStatus(status);
    model()->setWanActive(static_cast<ENUM_WAN_ACTIVE>(wan));
    QCoreApplication::sendPostedEvents();
    terminal().settle();
    terminal().clearLogs();
    Messages messages;
    window()->handleModemChanged();
    QCOMPARE(messages.count("Window::handleModemChanged(): About to request pointing started"),
             asked ? 1 : 0);
    if (asked) {
        QVERIFY(terminal().waitForMessage("bp_ctrl.pointing"));
        QCOMPARE(terminal().messagesNamed("bp_ctrl.pointing").at(0).text(), std::string("start"));
    } else {
        terminal().settle();
        QCOMPARE(terminal().messagesNamed("bp_ctrl.pointing").size(), size_t(0));
    }
}

void WindowEventsTest::modemValuesAreLogged()
{
    model()->setWanActive(WAN_ACTIVE_MODEM);
    model()->setModemOrBganAtStartup(STARTUP_WAN_MODEM);
    model()->setModemPresent(1);
    model()->setModemActivated(0);
    model()->setWanUserSelection(WAN_USER_SELECTION_MODEM);
    Messages messages;
    window()->handleModemChanged();
    QCOMPARE(messages.countOfPrefix(
                 "Window::handleModemChanged(): wanActive = WAN_ACTIVE_MODEM (2), startupWan = "
                 "STARTUP_WAN_MODEM (3), modemPresent = 1, modemActivated = 0, wanUserSelection = "
                 "WAN_USER_SELECTION_MODEM (2)"),
             1);
}

void WindowEventsTest::unknownWanRemovesInSpiteOfItsWords()
{
    model()->setWanActive(WAN_ACTIVE_UNKNOWN);
    Messages messages;
    window()->handleModemChanged();
    QCOMPARE(messages.count("Window::handleModemChanged(): WAN_ACTIVE_UNKNOWN. Do not do anything. Wait for "
                            "WAN status to become ready."),
             1);
    QCOMPARE(removedIn(messages), QStringList({IN_USE, SEARCHING, SELECT_ON_WEB}));
}

// --- Extended system status
// -----------------------------------------------------------------------------------

void WindowEventsTest::systemStatusRow_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QStringList>("changes");
    QTest::addColumn<QString>("severity");
    const QString plus = "+";
    const QString minus = "-";
    const QStringList initializing = {plus + INITIALIZING, minus + REBOOTING, minus + SHUTTING_DOWN};
    const QStringList rebooting = {plus + REBOOTING, minus + INITIALIZING, minus + SHUTTING_DOWN};
    const QStringList stopping = {plus + SHUTTING_DOWN, minus + INITIALIZING, minus + REBOOTING};
    const QStringList normal = {minus + INITIALIZING, minus + REBOOTING, minus + SHUTTING_DOWN};
    QTest::newRow("0") << 0 << initializing << "EVENT_WARNING";
    QTest::newRow("1") << 1 << initializing << "EVENT_WARNING";
    QTest::newRow("2 updating") << 2 << QStringList(minus + INITIALIZING) << "";
    QTest::newRow("3") << 3 << rebooting << "EVENT_FATAL";
    QTest::newRow("4 stopping") << 4 << stopping << "EVENT_FATAL";
    QTest::newRow("5") << 5 << rebooting << "EVENT_FATAL";
    QTest::newRow("8 safe mode") << 8 << QStringList() << "";
    for (int status : {10, 11, 12, 13, 14, 20}) {
        QTest::addRow("%d", status) << status << normal << "";
    }
    for (int status : {-1, 6, 7, 9, 15, 16, 17, 18, 19, 21}) {
        QTest::addRow("%d illegal", status) << status << QStringList() << "";
    }
}

void WindowEventsTest::systemStatusRow()
{
    QFETCH(int, status);
    QFETCH(QStringList, changes);
    QFETCH(QString, severity);
    model()->setExtendedSystemStatus(status == 0 ? 1 : 0);
    Messages messages;
    model()->setExtendedSystemStatus(status); // through the model's signal
    QCOMPARE(changesIn(messages), changes);
    for (const Added& popup : addedIn(messages)) {
        QCOMPARE(popup.severity, severity);
        QCOMPARE(popup.closeHandling, 6);
    }
    const bool illegal = QByteArray(QTest::currentDataTag()).endsWith("illegal");
    QCOMPARE(messages.count(QString("Window::handleSignalExtendedSystemStatusChanged(): ERROR!!! Illegal "
                                    "value getExtendedSystemStatus()=%1")
                                .arg(status)),
             illegal ? 1 : 0);
    QCOMPARE(messages.count("Window::handleSignalExtendedSystemStatusChanged(): Safemode. GUI not shown. Do "
                            "nothing"),
             status == 8 ? 1 : 0);
}

void WindowEventsTest::showRule_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("shown");
    const QSet<int> showing = {2, 10, 11, 12, 13, 14, 20};
    for (int status = -1; status <= 21; ++status) {
        QTest::addRow("%d", status) << status << showing.contains(status);
    }
}

void WindowEventsTest::showRule()
{
    QFETCH(int, status);
    QFETCH(bool, shown);
    QVERIFY(!window()->isVisible());
    model()->setExtendedSystemStatus(status == 0 ? 1 : 0);
    QVERIFY(!window()->isVisible());
    Messages messages;
    model()->setExtendedSystemStatus(status);
    QCOMPARE(window()->isVisible(), shown);
    QCOMPARE(model()->getBrightnessAllowed(), shown);
    const QString updating = "Window::handleSignalExtendedSystemStatusChanged(): SYSTEM_STATUS_UPDATING: "
                             "About to run this->show()";
    QCOMPARE(messages.count(updating), status == 2 ? 1 : 0);
    QCOMPARE(messages.count("Window::handleSignalExtendedSystemStatusChanged(): About to run this->show()"),
             shown && status != 2 ? 1 : 0);
}

void WindowEventsTest::updatingWhileVisibleDoesNothing()
{
    window()->show();
    Messages messages;
    model()->setExtendedSystemStatus(2);
    QCOMPARE(changesIn(messages), QStringList()); // the popup of the initialisation stays
    QCOMPARE(messages.countOfPrefix("Window::show()"), 0);
}

void WindowEventsTest::closedTerminalSuppressesRebootAndShutdown_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("removed");
    const QString prefix = "Window::handleSignalExtendedSystemStatusChanged(): Ingoring ";
    const QString suffix = " as EV_AP_TEMP_CLOSE_TERM shall be shown instead.";
    QTest::newRow("3") << 3 << prefix + "EV_AP_GUI_STATUS_SYSTEM_REBOOTING" + suffix
                       << QStringList({INITIALIZING, SHUTTING_DOWN});
    QTest::newRow("5") << 5 << prefix + "EV_AP_GUI_STATUS_SYSTEM_REBOOTING" + suffix
                       << QStringList({INITIALIZING, SHUTTING_DOWN});
    QTest::newRow("4") << 4 << prefix + "SYSTEM_STATUS_STOPPING" + suffix
                       << QStringList({INITIALIZING, REBOOTING});
}

void WindowEventsTest::closedTerminalSuppressesRebootAndShutdown()
{
    QFETCH(int, status);
    QFETCH(QString, line);
    QFETCH(QStringList, removed);
    QList<fmmi_evt_t> events;
    events.append(eventOf(EV_AP_TEMP_CLOSE_TERM));
    model()->setSystemEvents(events);
    Messages messages;
    model()->setExtendedSystemStatus(status);
    QCOMPARE(messages.count(line), 1);
    QCOMPARE(addedIn(messages).size(), 0);
    QCOMPARE(removedIn(messages), removed);
}

// --- Software upload, ciphering and the rest
// ---------------------------------------------------------------------

void WindowEventsTest::softwareUpload_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QStringList>("changes");
    const QStringList system = {"+EV_SW_UPDATE_ON", "-EV_AP_GUI_SW_UPDATE_ANTENNA",
                                "-EV_AP_GUI_STATUS_SYSTEM_INITIALIZING"};
    QTest::newRow("the antenna") << 2
                                 << QStringList({"+EV_AP_GUI_SW_UPDATE_ANTENNA", "-EV_SW_UPDATE_ON",
                                                 "-EV_AP_GUI_STATUS_SYSTEM_INITIALIZING"});
    QTest::newRow("1") << 1 << system;
    QTest::newRow("3") << 3 << system;
    const QStringList none = {"-EV_SW_UPDATE_ON", "-EV_AP_GUI_SW_UPDATE_ANTENNA"};
    QTest::newRow("0") << 0 << none;
    QTest::newRow("negative") << -1 << none;
}

void WindowEventsTest::softwareUpload()
{
    QFETCH(int, value);
    QFETCH(QStringList, changes);
    model()->setExtendedSystemStatus(10);
    Messages messages;
    emit model()->signalSwUploadActiveChanged(value);
    QCOMPARE(
        messages.count(QString("Window::handleSignalSwUploadActiveChanged(): swUploadActive=%1").arg(value)),
        1);
    QCOMPARE(changesIn(messages), changes);
    for (const Added& popup : addedIn(messages)) {
        QCOMPARE(popup.severity, QString("EVENT_WARNING"));
        QCOMPARE(popup.closeHandling, 6);
    }
}

void WindowEventsTest::softwareUploadStopsPointing_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("pointing");
    QTest::addColumn<bool>("stopped");
    QTest::newRow("1, pointing") << 1 << 1 << true;
    QTest::newRow("2, pointing") << 2 << 1 << true;
    QTest::newRow("0, pointing") << 0 << 1 << false;
    QTest::newRow("1, pointed") << 1 << 2 << false;
    QTest::newRow("1, not pointed") << 1 << 0 << false;
}

void WindowEventsTest::softwareUploadStopsPointing()
{
    QFETCH(int, value);
    QFETCH(int, pointing);
    QFETCH(bool, stopped);
    model()->setExtendedSystemStatus(10);
    model()->setPointingMode(static_cast<ENUM_POINTED_STATUS>(pointing));
    terminal().settle();
    terminal().clearLogs();
    Messages messages;
    window()->handleSignalSwUploadActiveChanged(value);
    // The lines bear the name of another function, as ever.
    QCOMPARE(messages.count("Window::handleShowPopUpEvent(): About to run send_pointing_msg(\"stop\")"),
             stopped ? 1 : 0);
    QCOMPARE(messages.count("Window::handleShowPopUpEvent(): finished command send_pointing_msg(\"stop\")"),
             stopped ? 1 : 0);
    if (stopped) {
        QVERIFY(terminal().waitForMessage("bp_ctrl.pointing"));
        QCOMPARE(terminal().messagesNamed("bp_ctrl.pointing").at(0).text(), std::string("stop"));
    } else {
        terminal().settle();
        QCOMPARE(terminal().messagesNamed("bp_ctrl.pointing").size(), size_t(0));
    }
}

void WindowEventsTest::endOfUploadBringsTheInitialisationBack_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("back");
    QTest::newRow("0") << 0 << true;
    QTest::newRow("1") << 1 << true;
    QTest::newRow("3") << 3 << false;
    QTest::newRow("10") << 10 << false;
}

void WindowEventsTest::endOfUploadBringsTheInitialisationBack()
{
    QFETCH(int, status);
    QFETCH(bool, back);
    model()->setExtendedSystemStatus(status);
    Messages messages;
    window()->handleSignalSwUploadActiveChanged(0);
    QStringList expected = {"-EV_SW_UPDATE_ON", "-EV_AP_GUI_SW_UPDATE_ANTENNA"};
    if (back) {
        expected.prepend(QString("+") + INITIALIZING);
    }
    QCOMPARE(changesIn(messages), expected);
}

void WindowEventsTest::ciphering_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QStringList>("changes");
    QTest::newRow("off") << 0 << QStringList("+EV_AP_GUI_CIPHERING_OFF");
    QTest::newRow("on") << 3 << QStringList("-EV_AP_GUI_CIPHERING_OFF");
    for (int value : {-2, -1, 1, 2, 4}) {
        QTest::addRow("%d", value) << value << QStringList();
    }
}

void WindowEventsTest::ciphering()
{
    QFETCH(int, value);
    QFETCH(QStringList, changes);
    Messages messages;
    emit model()->cipheringChanged(value);
    QCOMPARE(
        messages.count(
            QString("Window::handleCipheringChanged(int value): Start of function. value=%1").arg(value)),
        1);
    QCOMPARE(changesIn(messages), changes);
    for (const Added& popup : addedIn(messages)) {
        QCOMPARE(popup.severity, QString("EVENT_WARNING"));
        QCOMPARE(popup.closeHandling, 1);
    }
}

void WindowEventsTest::acceptedPinRemovesTheWaitPopup()
{
    Messages messages;
    emit model()->signalPinAccepted();
    QCOMPARE(messages.count("Window::handleSignalPinAccepted(): About to remove popup"), 1);
    QCOMPARE(removedIn(messages), QStringList("EV_AP_GUI_VALIDATING_PIN"));
}

void WindowEventsTest::screenshotIsTakenOfTheCurrentScreen()
{
    Messages messages;
    emit model()->signalTakeScreenshot();
    QCOMPARE(messages.countOfPrefix("ScreenPopup::closePopup()"), 1); // the screen saver goes first
    const QStringList pictures = QDir(m_directory->path()).entryList(QStringList("screen_*.bmp"));
    QCOMPARE(pictures.size(), 1);
    QCOMPARE(QImage(m_directory->filePath(pictures.at(0))).size(), QSize(256, 64));
    QVERIFY(terminal().waitForWrite("ram.powersave.activity.display", sim::Value::integer(1)));
}

int main(int argc, char** argv)
{
    return windowfixture::run<WindowEventsTest>(argc, argv);
}

#include "window_events_test.moc"
