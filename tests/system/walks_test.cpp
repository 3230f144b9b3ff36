// Whole walks with the real programs, as a user makes them: keys pressed on an X server, the simulated
// terminal on the other side of the bus. What is judged is what reaches the database, what the log tells, and
// pictures.
//
// A picture of each station is left in the build tree, under walks/, to be looked at.
#include "support/panelprocess.h"
#include "support/patience.h"

#include <QDir>
#include <QTest>

namespace {

const char READY[] = "Successfully translated statusTextId=12 ";
const char POINT_NOW[] = "Successfully translated statusTextId=8 ";
const int GRACE_MS = 750; // for which a popup of the terminal cannot be closed

// The far side goes five times as fast as a terminal.
class Walk {
public:
    explicit Walk(const char* name) : m_name(name), desk(name, PanelDesk::X_SERVER) {}

    // Of a walk that failed the end of the panel's log is told.
    ~Walk()
    {
        if (QTest::currentTestFailed())
            fprintf(stderr, "%s\n", qPrintable(desk.panel.log().mid(m_mark).join('\n').right(6000)));
    }

    // Starts all of it and waits for a line of the panel's log. Empty on success.
    QString begin(const QStringList& values = QStringList(), const char* untilLog = READY)
    {
        QStringList arguments = {"--speed", "5"};
        for (const QString& value : values)
            arguments << "--set" << value;
        if (!desk.xServer.start() || !desk.terminal.start(arguments) ||
            !desk.panel.start(QStringList("logQtDebug"), desk.xServer.display()))
            return "something did not start";
        if (desk.panel.waitForLog(untilLog) < 0)
            return "the panel did not log " + QString(untilLog);
        // Keys that come before the window is complete go to the dark picture that covers it.
        if (untilLog == READY && desk.panel.waitForLog("main(): Done creating window") < 0)
            return "the panel did not complete its window";
        return QString();
    }
    // Several keys by their names in X, one after the other. From here on log lines count as new.
    bool press(const QString& keys)
    {
        m_mark = int(desk.panel.log().size());
        for (const QString& key : keys.split(' ')) {
            const int before = int(desk.panel.log().size());
            if (!desk.press(key) ||
                desk.panel.waitForLog("GuiApp::notify: Done handling the keypress.", PATIENCE_MS, before) < 0)
                return false;
        }
        return true;
    }
    // A command to the terminal's processes. From here on log lines count as new.
    bool tell(const QString& process, const QString& words)
    {
        m_mark = int(desk.panel.log().size());
        return desk.terminal.set("ram.desk." + process, "string:" + words);
    }
    bool set(const QString& key, const QString& value)
    {
        m_mark = int(desk.panel.log().size());
        return desk.terminal.set(key, value);
    }
    bool logs(const QString& text) { return desk.panel.waitForLog(text, PATIENCE_MS, m_mark) >= 0; }
    bool popup(const QString& name) { return logs("eventList[0]=" + name + ","); }
    bool holds(const QString& key, const QString& value) { return desk.waitForKey(key, value, PATIENCE_MS); }
    // A popup of the terminal closes once its user has had time to read it.
    bool confirm()
    {
        QTest::qSleep(GRACE_MS);
        return press("Return");
    }
    QImage look(const char* station)
    {
        const QString directory = PROJECT_BINARY_DIR "/walks";
        const QImage picture = desk.panel.screenshot();
        QDir().mkpath(directory);
        picture.save(QString("%1/%2_%3.png").arg(directory, m_name, station));
        return picture;
    }

private:
    const QString m_name;
    int m_mark = 0;

public:
    PanelDesk desk;
};

} // namespace

class WalksTest : public QObject {
    Q_OBJECT

private slots:
    void powerUpFromDarkToReady();
    void aBundleIsStartedRunsAndIsStopped();
    void aStartIsRefused();
    void aConnectionFailsWithACause();
    void thePinIsEnteredWronglyTwiceAndThenRightly();
    void theAntennaIsPointedAndConfirmedAndCancelled();
    void theLanguageIsChangedAndChangedBack();
    void fatalComesBeforeWarningBeforeInformation();
    void theScreenSaverComesAndGoes();
    void aSoftwareUpdateRunsUntilItIsConfirmed();
};

void WalksTest::powerUpFromDarkToReady()
{
    Walk walk("powerup");
    QCOMPARE(walk.begin({"ram.desk.system=string:start"}, "About to run fdloop_loop"), QString());
    QVERIFY(walk.desk.panel.log().filter("Window::show(): About to show").isEmpty()); // dark
    QVERIFY(walk.logs("Window::show(): About to show black splash screen"));
    QVERIFY(walk.logs(POINT_NOW));
    walk.look("1_point_now");
    QVERIFY(walk.press("Return"));
    QVERIFY(walk.holds("ram.status.pointed_status", "int 1"));
    QVERIFY(walk.logs("SCREEN_POINTING"));
    walk.look("2_pointing");
    QVERIFY(walk.press("Return"));
    QVERIFY(walk.holds("ram.status.pointed_status", "int 2"));
    QVERIFY(walk.logs(READY));
    walk.look("3_ready");
}

void WalksTest::aBundleIsStartedRunsAndIsStopped()
{
    Walk walk("bundle");
    QCOMPARE(walk.begin(), QString());
    QVERIFY(walk.press("Left Return")); // the connect icon, the list
    walk.look("1_list");
    QVERIFY(walk.press("Down Return"));
    walk.look("2_open");
    QVERIFY(walk.press("Return"));
    QVERIFY(walk.popup("EV_AP_GUI_STARTING_BUNDLE_NAME"));
    walk.look("3_starting");
    QVERIFY(walk.holds("ram.net.user_groups.0.activated", "int 1"));
    QVERIFY(walk.holds("ram.status.ongoing_data_sessions.0.status", "int 2"));
    QVERIFY(walk.logs("SCREEN_STATUS")); // once the popup has gone
    const QImage running = walk.look("4_running");
    QVERIFY(walk.press("Return")); // the running bundle is open, with "Stop" current
    walk.look("5_stop");
    QVERIFY(walk.press("Return"));
    QVERIFY(walk.holds("ram.net.user_groups.0.activated", "int 0"));
    QVERIFY(walk.holds("ram.status.ongoing_data_sessions.0.status", ""));
    QVERIFY(walk.logs("Window::showPreviousScreen(): History empty."));
    QVERIFY(waitUntil([&] { return walk.look("6_stopped") != running; }, PATIENCE_MS));
}

void WalksTest::aStartIsRefused()
{
    Walk walk("refused");
    QCOMPARE(walk.begin(), QString());
    QVERIFY(walk.tell("signal", "20"));
    QVERIFY(walk.logs("Successfully translated statusTextId=10 ")); // Searching
    QVERIFY(walk.press("Left Return Down Return Return"));
    QVERIFY(walk.popup("EV_AP_GUI_NOT_REGISTERED_TO_NETWORK"));
    walk.look("1_refused");
    QCOMPARE(walk.desk.terminal.get("ram.net.user_groups.0.activated"), QString("int 0"));
    QVERIFY(walk.confirm());
    QVERIFY(walk.logs("SCREEN_ACTION"));
    walk.look("2_list_again");
}

void WalksTest::aConnectionFailsWithACause()
{
    Walk walk("failed");
    QCOMPARE(walk.begin(), QString());
    QVERIFY(walk.tell("fail", "0x10000023"));
    QVERIFY(walk.press("Left Return Down Return Return"));
    QVERIFY(walk.holds("ram.status.ongoing_data_sessions.0.reason", QString("int %1").arg(0x10000023)));
    QVERIFY(walk.holds("ram.net.user_groups.0.activated", "int 0"));
    QVERIFY(walk.logs("eventList[0]=NSAPI already used"));
    walk.look("1_cause");
    QVERIFY(walk.confirm());
    QVERIFY(walk.logs("eventList is empty"));
    walk.look("2_closed");
}

void WalksTest::thePinIsEnteredWronglyTwiceAndThenRightly()
{
    Walk walk("pin");
    QCOMPARE(walk.begin(), QString());
    QVERIFY(walk.tell("sim", "pin 4711"));
    QVERIFY(walk.logs("Window::ShowScreen(screenId=3 (SCREEN_ENTER_PIN)"));
    walk.look("1_first_digit");
    for (const char* triesLeft : {"int 2", "int 1"}) {
        QVERIFY(walk.press("Return Return Return Return"));
        QVERIFY(walk.popup("EV_AP_GUI_WRONG_PIN"));
        QVERIFY(walk.holds("ram.desk.sim.retries", triesLeft));
        walk.look("2_wrong");
        QVERIFY(walk.confirm());
        QVERIFY(walk.logs("eventList is empty"));
    }
    QVERIFY(walk.press("Up Up Up Up Return Down Down Down Return Up Return Up"));
    walk.look("3_last_digit");
    QVERIFY(walk.press("Return"));
    QVERIFY(walk.holds("rmcfg.platform.usim.pin.status", "string \"Valid\""));
    QVERIFY(walk.logs(READY));
    QVERIFY(walk.logs("SCREEN_STATUS"));
    walk.look("4_ready");
}

void WalksTest::theAntennaIsPointedAndConfirmedAndCancelled()
{
    Walk walk("pointing");
    QCOMPARE(walk.begin(), QString());
    QVERIFY(walk.press("Left Left Return")); // the connect icon, the menu icon, the menu
    walk.look("1_menu");
    QVERIFY(walk.press("Down Return")); // "Point now"
    QVERIFY(walk.holds("ram.status.pointed_status", "int 1"));
    QVERIFY(walk.logs("SCREEN_POINTING"));
    QVERIFY(walk.tell("signal", "52.5"));
    QTest::qSleep(300);
    walk.look("2_pointing");
    QVERIFY(walk.press("Left"));
    QVERIFY(walk.holds("ram.status.pointed_status", "int 0"));
    QVERIFY(walk.logs(POINT_NOW));
    walk.look("3_cancelled");
    QVERIFY(walk.press("Left Return")); // from the menu icon to the question
    QVERIFY(walk.holds("ram.status.pointed_status", "int 1"));
    QVERIFY(walk.logs("SCREEN_POINTING"));
    QVERIFY(walk.press("Return"));
    QVERIFY(walk.holds("ram.status.pointed_status", "int 2"));
    QVERIFY(walk.logs(READY));
    walk.look("4_confirmed");
}

void WalksTest::theLanguageIsChangedAndChangedBack()
{
    Walk walk("language");
    QCOMPARE(walk.begin(), QString());
    // The menu, "Settings", "Display" to "Language", the language that is set, and two below it.
    QVERIFY(walk.press("Left Left Return Down Down Right Down Down Down Right"));
    walk.look("1_languages");
    QVERIFY(walk.press("Down Down Return"));
    QVERIFY(walk.holds("cfg.language", "int 2"));
    QVERIFY(walk.logs("Window::handleRequestLoadLanguage()"));
    walk.look("2_german");
    QVERIFY(walk.press("Left Left Left")); // out of the branches and to the first row
    QVERIFY(walk.press("Down"));
    walk.look("3_back_to_english");
    QVERIFY(walk.press("Return"));
    QVERIFY(walk.holds("cfg.language", "int 0"));
    QVERIFY(walk.logs("Window::loadLanguage(): translation file i18n_en installed."));
    walk.look("4_english");
}

void WalksTest::fatalComesBeforeWarningBeforeInformation()
{
    Walk walk("severity");
    QCOMPARE(walk.begin(), QString());
    QVERIFY(walk.tell("alert", "add 0x210 info Nothing much"));
    QVERIFY(walk.logs("eventList[0]=") && walk.logs("eventId=0x210,"));
    walk.look("1_information");
    QVERIFY(walk.tell("alert", "add 0x240 warning Getting warm"));
    QVERIFY(walk.logs("eventList[1]=") && walk.logs("eventId=0x240,"));
    walk.look("2_warning");
    QVERIFY(walk.tell("alert", "add 0x250 fatal Nothing goes"));
    QVERIFY(walk.logs("eventList[2]=") && walk.logs("eventId=0x250,"));
    const QImage fatal = walk.look("3_fatal");
    QVERIFY(walk.confirm());
    const QImage warning = walk.look("4_warning_again");
    QVERIFY(warning != fatal);
    QVERIFY(walk.confirm());
    const QImage information = walk.look("5_information_again");
    QVERIFY(information != warning);
    QVERIFY(walk.confirm());
    QVERIFY(walk.logs("eventList is empty"));
    walk.look("6_none");
}

void WalksTest::theScreenSaverComesAndGoes()
{
    Walk walk("saver");
    QCOMPARE(walk.begin(), QString());
    const QImage ready = walk.look("1_ready");
    QVERIFY(walk.set("cfg.display.timeout", "int:5"));
    QVERIFY(walk.holds("ram.powersave.activity.display", "int 0"));
    // (A screenshot would wake it, so there is none of the dark.)
    QVERIFY(walk.press("Down"));
    QVERIFY(walk.holds("ram.powersave.activity.display", "int 1"));
    QCOMPARE(walk.look("2_awake"), ready); // the key did nothing else
}

void WalksTest::aSoftwareUpdateRunsUntilItIsConfirmed()
{
    Walk walk("update");
    QCOMPARE(walk.begin(), QString());
    QVERIFY(walk.tell("update", "start"));
    QVERIFY(walk.logs("eventList[0]=EV_SW_UPDATE_ON"));
    walk.look("1_running");
    QVERIFY(walk.holds("ram.status.ext_system", "int 10"));
    QVERIFY(walk.logs(POINT_NOW));
    walk.look("2_up_again");
    QVERIFY(walk.tell("update", "fail 0x10307"));
    QVERIFY(walk.holds("cfg.status.sw_update.error", "int 7"));
    // The progress stays for as long as it takes to read, then comes the result.
    QVERIFY(walk.popup("EV_SW_UPDATE_REJECTED_SWPK_CORRUPT"));
    walk.look("3_failed");
    QVERIFY(walk.confirm());
    QVERIFY(walk.holds("cfg.status.sw_update.error", "int 0"));
    walk.look("4_confirmed");
}

QTEST_GUILESS_MAIN(WalksTest)
#include "walks_test.moc"
