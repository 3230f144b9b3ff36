// The whole road with the real programs: a value of the database changes in another process, and the picture
// of the panel changes; a key is pressed, and a key of the database changes.
#include "support/panelprocess.h"
#include "support/patience.h"

#include <QRegularExpression>
#include <QTest>

#include <csignal>

class PanelTest : public QObject {
    Q_OBJECT

private slots:
    void signalStrengthChangesThePicture();
    void okOnTheLanIconTurnsTheInterfaceOff();
    void aKeyPressIsLoggedOnce();
    void noBusAtStartIsThePanic();
    void busLostLaterKeepsThePanelWorking();
    void endBySignalGivesStatusOne_data();
    void endBySignalGivesStatusOne();
    void linesBeforeTheLogIsOpenedBearTheProgramsName();
    void withoutTheArgumentNoDebugLinesOfTheFrontEnd();
    void aPerCentSignFromTheDatabaseDoesNoHarm();
};

void PanelTest::signalStrengthChangesThePicture()
{
    PanelDesk desk("picture");
    QCOMPARE(desk.startTerminal(), QString());
    QVERIFY(desk.terminal.set("ram.status.signal_strength", "int:450"));
    QCOMPARE(desk.startPanel(), QString());
    const QImage before = desk.panel.screenshot();
    QCOMPARE(before.size(), QSize(256, 64));

    const int lines = desk.panel.log().size();
    QVERIFY(desk.terminal.set("ram.status.signal_strength", "int:530"));
    QVERIFY(desk.panel.waitForLog("setTopLayerText(): topLayerText=", PATIENCE_MS, lines) >= 0);
    const QImage after = desk.panel.screenshot();
    QCOMPARE(after.size(), QSize(256, 64));
    QVERIFY(before != after);
    // Only the number over the antenna changed: the left column, above the connect icon.
    const QRect column(0, 0, 36, 28);
    QVERIFY(before.copy(column) != after.copy(column));
    QCOMPARE(before.copy(40, 0, 216, 64), after.copy(40, 0, 216, 64));
}

void PanelTest::okOnTheLanIconTurnsTheInterfaceOff()
{
    PanelDesk desk("lan", PanelDesk::X_SERVER);
    QCOMPARE(desk.startTerminal(), QString());
    QCOMPARE(desk.terminal.get("cfg.interfaces.lan.enabled"), QString("int 1"));
    QCOMPARE(desk.startPanel(), QString());

    QVERIFY(desk.press("Up")); // from the status text to the LAN icon
    QVERIFY(desk.press("Return"));
    QVERIFY(desk.waitForKey("cfg.interfaces.lan.enabled", "int 0"));
    // The interface follows what was asked for, and the panel can turn it on again.
    QVERIFY(desk.waitForKey("ram.status.interfaces.lan.enabled", "int 0"));
    QVERIFY(desk.panel.waitForLog("state=INTERFACE_STATE_OFF") >= 0);
    QVERIFY(desk.press("Return"));
    QVERIFY(desk.waitForKey("cfg.interfaces.lan.enabled", "int 1"));
}

void PanelTest::aKeyPressIsLoggedOnce()
{
    PanelDesk desk("key", PanelDesk::X_SERVER);
    QCOMPARE(desk.start(), QString());
    const int before = desk.panel.log().size();
    QVERIFY(desk.press("Up"));
    QVERIFY(desk.panel.waitForLog("GuiApp::notify: Done handling the keypress.", PATIENCE_MS, before) >= 0);
    QVERIFY(desk.press("Down"));
    QVERIFY(desk.panel.waitForLog("Key_Down was pressed for receiver=.", PATIENCE_MS, before) >= 0);
    QVERIFY(waitUntil(
        [&] { return desk.panel.log().mid(before).filter("Current screen=SCREEN_STATUS").size() >= 2; },
        PATIENCE_MS));
    QCOMPARE(desk.panel.log().mid(before).filter("Key_Up was pressed for receiver=.").size(), 1);
    QCOMPARE(desk.panel.log().mid(before).filter("Current screen=SCREEN_STATUS").size(), 2);
}

void PanelTest::noBusAtStartIsThePanic()
{
    PanelProcess panel(privateBusAddress("nobus"));
    QVERIFY(panel.start());
    QCOMPARE(panel.waitForEnd(), 1);
    const QStringList panic =
        panel.log().filter("ERROR!!! CBUS not ready to create connection. Exiting lumenpanel.");
    QVERIFY(!panic.filter(QRegularExpression("^<17\\.1> gui\\[")).isEmpty());
    const QByteArray printed = panel.process().readAll();
    QVERIFY(printed.contains("*** signal_handler: signal=6\n"));
    QVERIFY(printed.contains("Backtrace:\n"));
    QVERIFY(printed.contains("*** signal_handler: exit\n"));
}

void PanelTest::busLostLaterKeepsThePanelWorking()
{
    PanelDesk desk("lost", PanelDesk::X_SERVER);
    QCOMPARE(desk.start(), QString());
    QCOMPARE(desk.terminal.end(), 0);
    // The next poll reads nothing, and the radio module counts as not operating.
    QVERIFY(desk.panel.waitForLog("rmcfg.sys.status.mode not in database") >= 0);
    // That means a reboot, of which a popup tells; the keys reach it, and change nothing.
    QVERIFY(desk.panel.waitForLog("eventList[0]=EV_AP_GUI_STATUS_SYSTEM_REBOOTING") >= 0);
    int before = desk.panel.log().size();
    QVERIFY(desk.press("Up"));
    QVERIFY(desk.panel.waitForLog("ScreenPopup::keyUpClicked(). Do nothing.", PATIENCE_MS, before) >= 0);
    QVERIFY(desk.panel.waitForLog("GuiApp::notify: Done handling the keypress.", PATIENCE_MS, before) >= 0);
    before = desk.panel.log().size();
    QVERIFY(desk.press("Return"));
    QVERIFY(desk.panel.waitForLog("GuiApp::notify: Done handling the keypress.", PATIENCE_MS, before) >= 0);
    QCOMPARE(desk.panel.process().state(), QProcess::Running);
    QCOMPARE(desk.panel.screenshot().size(), QSize(256, 64));
}

void PanelTest::endBySignalGivesStatusOne_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGSEGV") << SIGSEGV;
    QTest::newRow("SIGABRT") << SIGABRT;
}

void PanelTest::endBySignalGivesStatusOne()
{
    QFETCH(int, signal);
    const QString address = privateBusAddress("end");
    TerminalProcess terminal(address);
    QVERIFY(terminal.start());
    PanelProcess panel(address);
    QVERIFY(panel.start());
    QVERIFY(panel.waitForLog("CBusIfThread::run(): About to run fdloop_loop(fdl)") >= 0);
    ::kill(pid_t(panel.process().processId()), signal);
    QCOMPARE(panel.waitForEnd(), 1);
}

void PanelTest::linesBeforeTheLogIsOpenedBearTheProgramsName()
{
    const QString address = privateBusAddress("names");
    TerminalProcess terminal(address);
    QVERIFY(terminal.start());
    PanelProcess panel(address);
    QVERIFY(panel.start());
    QVERIFY(panel.waitForLog("main(): Done creating window") >= 0);
    const QStringList log = panel.log();
    // Facility 1 is user, the default; 17 is local1.
    QVERIFY(log.at(0).contains(
        QRegularExpression("^<1\\.7> lumenpanel\\[\\d+\\]: \\d+: main\\(\\): About to send "
                           "appmgr_signal\\(\\)$")));
    QVERIFY(
        log.at(1).contains(QRegularExpression("^<1\\.7> lumenpanel\\[\\d+\\]: \\d+: main\\(\\):About to run "
                                              "GuiApp::createInstance$")));
    QVERIFY(log.at(2).contains(
        QRegularExpression("^<17\\.7> gui\\[\\d+\\]: \\d+: GuiApp::GuiApp\\(\\): Local GUI display "
                           "starting up\\.\\.\\.$")));
}

void PanelTest::withoutTheArgumentNoDebugLinesOfTheFrontEnd()
{
    const QString address = privateBusAddress("quiet");
    TerminalProcess terminal(address);
    QVERIFY(terminal.start());
    PanelProcess panel(address);
    QVERIFY(panel.start());
    QVERIFY(panel.waitForLog("CBusIfThread::run(): About to run fdloop_loop(fdl)") >= 0);
    QVERIFY(panel.log().filter("QT DEBUG").isEmpty());
    PanelProcess talking(address);
    QVERIFY(talking.start(QStringList("--XlogqtDEBUGx")));
    QVERIFY(talking.waitForLog("QT DEBUG: ") >= 0);
}

void PanelTest::aPerCentSignFromTheDatabaseDoesNoHarm()
{
    PanelDesk desk("percent");
    QCOMPARE(desk.start(), QString());
    QVERIFY(desk.terminal.set("cfg.interfaces.wlan.ssid", "string:%n%s%n 100% caf\xc3\xa9"));
    QVERIFY(desk.panel.waitForLog("%n%s%n 100% caf?") >= 0);
    QCOMPARE(desk.panel.process().state(), QProcess::Running);
}

QTEST_GUILESS_MAIN(PanelTest)
#include "panel_test.moc"
