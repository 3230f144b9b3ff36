// The whole road with the real programs: a value of the database changes in another process, and the picture
// of the panel changes; a key is pressed, and a key of the database changes.
#include "support/panelprocess.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTest>

#include <csignal>

class PanelTest : public QObject {
    Q_OBJECT

private slots:
    void signalStrengthChangesThePicture();
    void okOnTheLanIconTurnsTheInterfaceOff();
    void aKeyPressIsLoggedOnce();
    void noBusAtStartIsThePanicWithinASecond();
    void busLostLaterKeepsThePanelWorking();
    void endBySignalGivesStatusOne_data();
    void endBySignalGivesStatusOne();
    void linesBeforeTheLogIsOpenedBearTheProgramsName();
    void withoutTheArgumentNoDebugLinesOfTheFrontEnd();
    void aPerCentSignFromTheDatabaseDoesNoHarm();

private:
    bool waitUntilLive(PanelProcess& panel);
    bool waitForKey(TerminalProcess& terminal, const QString& key, const QString& value);
    QString startXServer(QProcess& server);
    bool press(const QString& display, const QString& key);
};

// The text "Ready" comes with the first poll of the radio module, after all initial reads.
bool PanelTest::waitUntilLive(PanelProcess& panel)
{
    return panel.waitForLog("Successfully translated statusTextId=12 ") >= 0;
}

bool PanelTest::waitForKey(TerminalProcess& terminal, const QString& key, const QString& value)
{
    return waitUntil([&] { return terminal.get(key) == value; }, 20000);
}

// An X server without a desktop; the name of its display, or an empty text.
QString PanelTest::startXServer(QProcess& server)
{
    server.start("Xvfb", QStringList() << "-displayfd"
                                       << "1"
                                       << "-screen"
                                       << "0"
                                       << "256x64x24"
                                       << "-nolisten"
                                       << "tcp");
    if (!server.waitForStarted() || !server.waitForReadyRead(20000)) {
        return QString();
    }
    return ":" + QString::fromLatin1(server.readAllStandardOutput()).trimmed();
}

bool PanelTest::press(const QString& display, const QString& key)
{
    QProcess tool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", display);
    tool.setProcessEnvironment(environment);
    tool.start("xdotool", QStringList() << "mousemove"
                                        << "100"
                                        << "30"
                                        << "key" << key);
    return tool.waitForFinished(20000) && tool.exitCode() == 0;
}

void PanelTest::signalStrengthChangesThePicture()
{
    const QString address = privateBusAddress("picture");
    TerminalProcess terminal(address);
    QVERIFY(terminal.start());
    QVERIFY(terminal.set("ram.status.signal_strength", "int:450"));
    PanelProcess panel(address);
    QVERIFY(panel.start(QStringList("logQtDebug")));
    QVERIFY(waitUntilLive(panel));
    const QImage before = panel.screenshot();
    QCOMPARE(before.size(), QSize(256, 64));

    const int lines = panel.log().size();
    QVERIFY(terminal.set("ram.status.signal_strength", "int:530"));
    QVERIFY(panel.waitForLog("setTopLayerText(): topLayerText=", 20000, lines) >= 0);
    const QImage after = panel.screenshot();
    QCOMPARE(after.size(), QSize(256, 64));
    QVERIFY(before != after);
    // Only the number over the antenna changed: the left column, above the connect icon.
    const QRect column(0, 0, 36, 28);
    QVERIFY(before.copy(column) != after.copy(column));
    QCOMPARE(before.copy(40, 0, 216, 64), after.copy(40, 0, 216, 64));
}

void PanelTest::okOnTheLanIconTurnsTheInterfaceOff()
{
    QProcess server;
    const QString display = startXServer(server);
    QVERIFY2(!display.isEmpty(), "Xvfb did not start");
    const QString address = privateBusAddress("lan");
    TerminalProcess terminal(address);
    QVERIFY(terminal.start());
    QCOMPARE(terminal.get("cfg.interfaces.lan.enabled"), QString("int 1"));
    PanelProcess panel(address);
    QVERIFY(panel.start(QStringList("logQtDebug"), display));
    QVERIFY(waitUntilLive(panel));

    QVERIFY(press(display, "Up")); // from the status text to the LAN icon
    QVERIFY(press(display, "Return"));
    QVERIFY(waitForKey(terminal, "cfg.interfaces.lan.enabled", "int 0"));
    // The interface follows what was asked for, and the panel can turn it on again.
    QVERIFY(waitForKey(terminal, "ram.status.interfaces.lan.enabled", "int 0"));
    QVERIFY(panel.waitForLog("state=INTERFACE_STATE_OFF") >= 0);
    QVERIFY(press(display, "Return"));
    QVERIFY(waitForKey(terminal, "cfg.interfaces.lan.enabled", "int 1"));
    panel.process().kill();
    panel.waitForEnd();
    server.kill();
    server.waitForFinished();
}

void PanelTest::aKeyPressIsLoggedOnce()
{
    QProcess server;
    const QString display = startXServer(server);
    QVERIFY2(!display.isEmpty(), "Xvfb did not start");
    const QString address = privateBusAddress("key");
    TerminalProcess terminal(address);
    QVERIFY(terminal.start());
    PanelProcess panel(address);
    QVERIFY(panel.start(QStringList("logQtDebug"), display));
    QVERIFY(waitUntilLive(panel));
    const int before = panel.log().size();
    QVERIFY(press(display, "Up"));
    QVERIFY(panel.waitForLog("GuiApp::notify: Done handling the keypress.", 20000, before) >= 0);
    QVERIFY(press(display, "Down"));
    QVERIFY(panel.waitForLog("Key_Down was pressed for receiver=.", 20000, before) >= 0);
    QCOMPARE(panel.log().mid(before).filter("Key_Up was pressed for receiver=.").size(), 1);
    QCOMPARE(panel.log().mid(before).filter("Current screen=SCREEN_STATUS").size(), 2);
    panel.process().kill();
    panel.waitForEnd();
    server.kill();
    server.waitForFinished();
}

void PanelTest::noBusAtStartIsThePanicWithinASecond()
{
    PanelProcess panel(privateBusAddress("nobus"));
    QElapsedTimer clock;
    clock.start();
    QVERIFY(panel.start());
    QCOMPARE(panel.waitForEnd(), 1);
    const qint64 elapsed = clock.elapsed();
#if defined(NDEBUG) // a sanitizer's build, which is never one for release, may take its time
    QVERIFY2(elapsed < 1000, qPrintable(QString("took %1 ms").arg(elapsed)));
#else
    Q_UNUSED(elapsed);
#endif
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
    QProcess server;
    const QString display = startXServer(server);
    QVERIFY2(!display.isEmpty(), "Xvfb did not start");
    const QString address = privateBusAddress("lost");
    TerminalProcess terminal(address);
    QVERIFY(terminal.start());
    PanelProcess panel(address);
    QVERIFY(panel.start(QStringList("logQtDebug"), display));
    QVERIFY(waitUntilLive(panel));
    QCOMPARE(terminal.end(), 0);
    // The next poll reads nothing, and the radio module counts as not operating.
    QVERIFY(panel.waitForLog("rmcfg.sys.status.mode not in database") >= 0);
    const int before = panel.log().size();
    QVERIFY(press(display, "Up"));
    QVERIFY(panel.waitForLog("ScreenStatus::keyUpClicked(). this->focusState=", 20000, before) >= 0);
    QVERIFY(press(display, "Return"));
    QVERIFY(panel.waitForLog("GuiApp::notify: Done handling the keypress.", 20000, before) >= 0);
    QCOMPARE(panel.process().state(), QProcess::Running);
    QCOMPARE(panel.screenshot().size(), QSize(256, 64));
    server.kill();
    server.waitForFinished();
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
    const QString address = privateBusAddress("percent");
    TerminalProcess terminal(address);
    QVERIFY(terminal.start());
    PanelProcess panel(address);
    QVERIFY(panel.start(QStringList("logQtDebug")));
    QVERIFY(waitUntilLive(panel));
    QVERIFY(terminal.set("cfg.interfaces.wlan.ssid", "string:%n%s%n 100% caf\xc3\xa9"));
    QVERIFY(panel.waitForLog("%n%s%n 100% caf?") >= 0);
    QCOMPARE(panel.process().state(), QProcess::Running);
}

QTEST_GUILESS_MAIN(PanelTest)
#include "panel_test.moc"
