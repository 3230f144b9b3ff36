// The real display under the real terminalsim, which plays its application manager: start and end, crashes,
// silence, keys through the keypad, pictures.
#include "support/panelprocess.h"
#include "support/patience.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include <csignal>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

const QString programs = PROJECT_BINARY_DIR;
const char* const READY = "Successfully translated statusTextId=12 ";

QProcessEnvironment displayEnvironment(const QString& xDisplay)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("FONTCONFIG_FILE", QString(PROJECT_SOURCE_DIR) + "/res/fonts/fonts.conf");
    environment.insert("QT_QPA_PLATFORM", xDisplay.isEmpty() ? "offscreen" : "xcb");
    environment.insert("DISPLAY", xDisplay);
    // The library of the log stands before the sanitizer's; the X libraries copy bounded parts of texts.
    environment.insert("ASAN_OPTIONS", environment.value("ASAN_OPTIONS") +
                                           ":verify_asan_link_order=0:strict_string_checks=0");
    return environment;
}

// Whether there is such a process, other than as one that nobody has waited for.
bool lives(qint64 pid)
{
    QFile status(QString("/proc/%1/status").arg(pid));
    return status.open(QIODevice::ReadOnly) && !status.readAll().contains("State:\tZ");
}

// terminalsim with a display, and its console.
class Manager {
public:
    explicit Manager(const char* purpose)
        : m_address(privateBusAddress(purpose)), m_socket(m_directory.filePath("console"))
    {
    }
    ~Manager()
    {
        if (QTest::currentTestFailed())
            fprintf(stderr, "%s\n", (told() + log().join('\n').right(4000).toUtf8()).constData());
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished();
        }
    }

    // The display is lumenpanel with these arguments, or another program.
    bool start(QStringList arguments = {"logQtDebug"}, const QString& program = programs + "/lumenpanel",
               const QString& xDisplay = QString())
    {
        QStringList all = {"--address", m_address,   "--still", "--no-console",  "--socket",
                           m_socket,    "--display", program,   "--display-log", m_directory.filePath("log")};
        for (const QString& argument : arguments)
            all << "--display-argument" << argument;
        process.setProcessEnvironment(displayEnvironment(xDisplay));
        process.start(programs + "/terminalsim", all);
        return process.waitForStarted() && waitUntil(
                                               [this] {
                                                   process.waitForReadyRead(10);
                                                   m_out += process.readAllStandardOutput();
                                                   return m_out.contains("listening on");
                                               },
                                               PATIENCE_MS);
    }
    // One line for the console. What it prints; status is in `status`.
    QString run(const QString& line)
    {
        QProcess client;
        client.setProcessChannelMode(QProcess::MergedChannels);
        client.start(programs + "/terminalsim", QStringList({"--socket", m_socket}) + line.split(' '));
        status = client.waitForFinished(PATIENCE_MS) ? client.exitCode() : -1;
        return QString::fromUtf8(client.readAll()).trimmed();
    }
    bool runs(const QString& line)
    {
        const QString printed = run(line);
        if (status != 0)
            qWarning("%s: %s", qPrintable(line), qPrintable(printed));
        return status == 0;
    }
    QByteArray told()
    {
        m_err += process.readAllStandardError();
        return m_err;
    }
    bool waitForTold(const QString& text)
    {
        return waitUntil(
            [&] {
                process.waitForReadyRead(10);
                return told().contains(text.toUtf8());
            },
            PATIENCE_MS);
    }
    // Of the display; -1 if none runs.
    qint64 pid()
    {
        const QRegularExpressionMatch match = QRegularExpression("pid (\\d+)").match(run("display"));
        return match.hasMatch() ? match.captured(1).toLongLong() : -1;
    }
    bool waitForState(const QString& text)
    {
        return waitUntil([&] { return run("display").contains(text); }, PATIENCE_MS);
    }
    QStringList log() const
    {
        QFile file(m_directory.filePath("log"));
        if (!file.open(QIODevice::ReadOnly))
            return QStringList();
        QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
        lines.removeLast(); // what stands behind the last line feed is not a line yet
        return lines;
    }
    // In the lines behind the first `from`.
    bool waitForLog(const QString& text, int from = 0)
    {
        return waitUntil([&] { return !log().mid(from).filter(text).isEmpty(); }, PATIENCE_MS);
    }
    // Starts it and waits until the status screen shows live values. As in PanelDesk, a change wakes the bus.
    bool startReady(const QString& xDisplay = QString())
    {
        if (!start({"logQtDebug"}, programs + "/lumenpanel", xDisplay))
            return false;
        for (int nudges = 1; nudges <= PATIENCE_MS / 2000; ++nudges) {
            if (waitUntil(
                    [&] {
                        return !log().filter(READY).isEmpty() &&
                               !log().filter("main(): Done creating window").isEmpty();
                    },
                    2000))
                return true;
            run(QString("set ram.status.position.nudge %1").arg(nudges));
        }
        return false;
    }
    int waitForEnd()
    {
        process.waitForFinished(PATIENCE_MS);
        told();
        return process.state() == QProcess::NotRunning && process.exitStatus() == QProcess::NormalExit
                   ? process.exitCode()
                   : -1;
    }
    QString file(const QString& name) const { return m_directory.filePath(name); }

    QProcess process;
    int status = 0; // of the last run()

private:
    const QString m_address;
    QTemporaryDir m_directory;
    const QString m_socket;
    QByteArray m_out;
    QByteArray m_err;
};

} // namespace

class DisplayManagerTest : public QObject {
    Q_OBJECT

private slots:
    void startsTheDisplayWhichReports();
    void keysReachTheDatabaseAndTheLogOnceEach_data();
    void keysReachTheDatabaseAndTheLogOnceEach();
    void aLongOkIsSpace();
    void aPressedKeyWaitsForTheWindow();
    void aPictureIsTheDisplaysOwnEnlarged();
    void twoRunsTakeTheirOwnPictures();
    void aCrashIsToldWithTheLastLinesAndTheDisplayStartedAgain();
    void aFrozenDisplayAnswersAgainOnceItIsThawed();
    void thePanicsTextIsToldAndThreeShortLivesEndAll();
    void aClosedWindowEndsAll();
    void theEndOfTerminalsimEndsTheDisplay_data();
    void theEndOfTerminalsimEndsTheDisplay();
    void theConsoleStopsAndStartsTheDisplay();
    void theConsoleTellsWhatItCannotDo();
    void withoutADisplayTheCommandsSaySo();
    void aProgramThatIsNoneIsTold();
    void theKeypadBearsJunkAndTheEndOfItsSocket();
};

void DisplayManagerTest::startsTheDisplayWhichReports()
{
    Manager manager("manager");
    QVERIFY(manager.start());
    QVERIFY(manager.waitForState("state running"));
    const qint64 pid = manager.pid();
    QVERIFY(pid > 0);
    QVERIFY(manager.run("display").contains(
        QRegularExpression("^state running, pid \\d+, restarts 0, up \\d+ s$")));
    QFile environment(QString("/proc/%1/environ").arg(pid));
    QVERIFY(environment.open(QIODevice::ReadOnly));
    QVERIFY(environment.readAll().split('\0').contains("APPMGR_PID=" +
                                                       QByteArray::number(manager.process.processId())));
    // It has its group, so that a Ctrl-C does not reach it past terminalsim.
    QCOMPARE(qint64(getpgid(pid_t(pid))), pid);
    QVERIFY(manager.waitForLog("main(): Done creating window"));
    QVERIFY(manager.run("log 1000").contains("main(): Done creating window"));
    QCOMPARE(manager.run("log 1").split('\n').size(), 1);
}

void DisplayManagerTest::keysReachTheDatabaseAndTheLogOnceEach_data()
{
    QTest::addColumn<bool>("xServer");
    QTest::newRow("offscreen") << false;
    QTest::newRow("xcb") << true;
}

void DisplayManagerTest::keysReachTheDatabaseAndTheLogOnceEach()
{
    QFETCH(bool, xServer);
    XServerProcess server;
    Manager manager("keys");
    QVERIFY(!xServer || server.start());
    QVERIFY(manager.startReady(server.display()));
    const int before = int(manager.log().size());
    QVERIFY(manager.runs("press up")); // from the status text to the LAN icon
    QVERIFY(manager.runs("press ok"));
    QVERIFY(manager.waitForLog("state=INTERFACE_STATE_OFF", before));
    QVERIFY(manager.run("get cfg.interfaces.lan.enabled").endsWith("0"));
    QVERIFY(manager.runs("press down*2 left right"));
    const struct {
        const char* text;
        int count;
    } lines[] = {
        {"Key_Up was pressed for receiver=.", 1},
        {"Key_Return (OK-key) was pressed for receiver=.", 1},
        {"Key_Down was pressed for receiver=.", 2},
        {"Key_Left was pressed for receiver=.", 1},
        {"Key_Right was pressed for receiver=.", 1},
        {"GuiApp::notify: Some key was pressed.", 6},
        {"GuiApp::notify: Done handling the keypress.", 6},
        {" now received the keypress", 6}, // a screen, which handles it
    };
    for (const auto& line : lines)
        QCOMPARE(manager.log().mid(before).filter(line.text).size(), line.count);
}

void DisplayManagerTest::aLongOkIsSpace()
{
    Manager manager("long");
    QVERIFY(manager.startReady());
    const int before = int(manager.log().size());
    QVERIFY(manager.runs("press long"));
    QCOMPARE(
        manager.log().mid(before).filter(QString("key->text()= , key=%1 ").arg(int(Qt::Key_Space))).size(),
        1);
    QCOMPARE(manager.log().mid(before).filter("(OK-key)").size(), 0);
}

// The splash screen takes no key, and neither does the window that is not there yet.
void DisplayManagerTest::aPressedKeyWaitsForTheWindow()
{
    Manager manager("early");
    QVERIFY(manager.start());
    QVERIFY(manager.runs("press up"));
    QCOMPARE(manager.log().filter("Key_Up was pressed for receiver=.ScreenStatus").size(), 1);
}

void DisplayManagerTest::aPictureIsTheDisplaysOwnEnlarged()
{
    Manager manager("picture");
    QVERIFY(manager.startReady());
    const int before = int(manager.log().size());
    QRegularExpressionMatch match;
    QImage own;
    {
        const ScreenshotLock lock;
        QVERIFY(manager.runs("press screenshot"));
        match = QRegularExpression("File (.*\\.bmp) saved\\.").match(manager.log().mid(before).join('\n'));
        QVERIFY(match.hasMatch());
        own = QImage(match.captured(1)).convertToFormat(QImage::Format_RGB32);
    }
    QCOMPARE(own.size(), QSize(256, 64));

    for (int scale : {1, 3, 4}) {
        const QString name = manager.file(QString("%1.png").arg(scale));
        QVERIFY(manager.runs("picture " + name + (scale == 4 ? QString() : QString(" %1").arg(scale))));
        const QImage picture = QImage(name).convertToFormat(QImage::Format_RGB32);
        QCOMPARE(picture, own.scaled(256 * scale, 64 * scale));
    }
    // What was made for the pictures has gone, the screenshot that the key asked for is there.
    const QStringList written = manager.log().mid(before).filter(".bmp saved.");
    QCOMPARE(written.size(), 4);
    const ScreenshotLock lock; // so that there are none of others
    for (const QString& line : written) {
        const QString file = QRegularExpression("File (.*\\.bmp) saved\\.").match(line).captured(1);
        QCOMPARE(QFile::exists(file), file == match.captured(1));
    }
    QFile::remove(match.captured(1));
}

// Their displays write to the same directory, and the files' names tell only the second.
void DisplayManagerTest::twoRunsTakeTheirOwnPictures()
{
    Manager first("first");
    Manager second("second");
    QVERIFY(first.startReady());
    QVERIFY(second.startReady());
    const int before = int(second.log().size());
    QVERIFY(second.runs("set ram.status.signal_strength 400"));
    QVERIFY(second.waitForLog("setTopLayerText(): topLayerText=", before));
    QVERIFY(first.runs("picture " + first.file("alone.png")));
    QVERIFY(second.runs("picture " + second.file("alone.png")));
    const QImage firstAlone(first.file("alone.png"));
    const QImage secondAlone(second.file("alone.png"));
    QVERIFY(!firstAlone.isNull() && firstAlone != secondAlone);
    for (int i = 0; i < 5; ++i) {
        QProcess one, other;
        one.start(programs + "/terminalsim",
                  {"--socket", first.file("console"), "picture", first.file("a.png")});
        other.start(programs + "/terminalsim",
                    {"--socket", second.file("console"), "picture", second.file("a.png")});
        QVERIFY(one.waitForFinished(PATIENCE_MS) && other.waitForFinished(PATIENCE_MS));
        QCOMPARE(one.exitCode() + other.exitCode(), 0);
        QCOMPARE(QImage(first.file("a.png")), firstAlone);
        QCOMPARE(QImage(second.file("a.png")), secondAlone);
    }
}

void DisplayManagerTest::aCrashIsToldWithTheLastLinesAndTheDisplayStartedAgain()
{
    Manager manager("crash");
    QVERIFY(manager.startReady());
    const qint64 before = manager.pid();
    QVERIFY(manager.runs("display kill SEGV"));
    QVERIFY(manager.waitForTold("the display is started again (pid "));
    const QString told = QString::fromUtf8(manager.told());
    QVERIFY(
        told.contains(QString("the display (pid %1) crashed by signal 11 (Segmentation fault) and ended with "
                              "status 1; its last log lines:\n")
                          .arg(before)));
    QCOMPARE(told.count(QRegularExpression("terminalsim:     <[0-7]> gui: ")), 5);
    QVERIFY(manager.waitForState("state running"));
    QVERIFY(manager.run("display").contains("restarts 1,"));
    QVERIFY(!lives(before));
    QVERIFY(manager.runs("press down"));
    // Against this signal it has no handler.
    QVERIFY(manager.runs("display kill"));
    QVERIFY(manager.waitForTold("was ended by signal 9 (Killed); its last log lines:\n"));
    QVERIFY(manager.waitForState("restarts 2,"));
}

// That a frozen one is noticed and killed is tested in display_test, with shorter times.
void DisplayManagerTest::aFrozenDisplayAnswersAgainOnceItIsThawed()
{
    Manager manager("frozen");
    QElapsedTimer sinceStart;
    sinceStart.start();
    QVERIFY(manager.startReady());
    const qint64 pid = manager.pid();
    QVERIFY(manager.runs("display freeze"));
    QCOMPARE(manager.run("press up"),
             QString("terminalsim: up: the display did not handle the key within 10 s"));
    QCOMPARE(manager.status, 1);
    QVERIFY(manager.runs("display thaw"));
    const bool answered = manager.runs("press down");
    // Its own sign of life is 23 s old by then if the start took so long.
    if (!answered && sinceStart.elapsed() > 23000 && manager.waitForTold("Local alive failed"))
        QSKIP("The machine is too slow: the display's own limit was over before it went on.");
    QVERIFY(answered);
    QCOMPARE(manager.pid(), pid);
    QVERIFY(manager.runs("display freeze"));
    QVERIFY(manager.runs("display stop")); // one that is frozen, too
    QVERIFY(!lives(pid));
}

// No bus at its start is a panic of the display.
void DisplayManagerTest::thePanicsTextIsToldAndThreeShortLivesEndAll()
{
    Manager manager("panic");
    QVERIFY(manager.start({"CBUS_ADDR=" + privateBusAddress("nobody"), programs + "/lumenpanel"}, "env"));
    QCOMPARE(manager.waitForEnd(), 1);
    const QString told = QString::fromUtf8(manager.told());
    QCOMPARE(told.count(QRegularExpression(
                 "the display \\(pid \\d+\\) crashed by signal 6 \\(Aborted\\) and ended with "
                 "status 1: <1> gui: .*ERROR!!! CBUS not ready to create connection")),
             3);
    QVERIFY(told.contains("the display has ended 3 times within 5 s of its start: it is given up\n"));
}

void DisplayManagerTest::aClosedWindowEndsAll()
{
    Manager manager("closed");
    QVERIFY(manager.start(QStringList(), "true"));
    QCOMPARE(manager.waitForEnd(), 0);
    QVERIFY(manager.told().contains(" ended with status 0\n"));
}

void DisplayManagerTest::theEndOfTerminalsimEndsTheDisplay_data()
{
    QTest::addColumn<int>("signal");
    QTest::addColumn<bool>("frozen");
    QTest::newRow("SIGKILL") << SIGKILL << false;
    QTest::newRow("SIGKILL, a frozen display") << SIGKILL << true;
    QTest::newRow("SIGTERM") << SIGTERM << false;
    QTest::newRow("SIGINT") << SIGINT << false;
    QTest::newRow("SIGTERM, a frozen display") << SIGTERM << true;
}

void DisplayManagerTest::theEndOfTerminalsimEndsTheDisplay()
{
    QFETCH(int, signal);
    QFETCH(bool, frozen);
    Manager manager("end");
    QVERIFY(manager.startReady());
    const qint64 pid = manager.pid();
    QVERIFY(lives(pid));
    QVERIFY(!frozen || manager.runs("display freeze"));
    ::kill(pid_t(manager.process.processId()), signal);
    QCOMPARE(manager.waitForEnd(), signal == SIGKILL ? -1 : 0);
    // With a signal that it can take, terminalsim waits for the display.
    QVERIFY(waitUntil([&] { return !lives(pid); }, signal == SIGKILL ? PATIENCE_MS : 0));
    QVERIFY2(!manager.told().contains("the display"), manager.told().constData());
}

void DisplayManagerTest::theConsoleStopsAndStartsTheDisplay()
{
    Manager manager("console");
    QVERIFY(manager.startReady());
    const qint64 pid = manager.pid();
    QVERIFY(manager.runs("display stop"));
    QVERIFY(!lives(pid));
    QCOMPARE(manager.run("display"), QString("state stopped, restarts 0"));
    QVERIFY(manager.runs("display stop")); // again: it is what was asked for
    const struct {
        const char* command;
        const char* error;
    } rows[] = {
        {"press up", "up: no display is running"},
        {"picture /dev/null", "no display is running"},
        {"display freeze", "no display is running"},
        {"display kill 9", "no display is running"},
    };
    for (const auto& row : rows) {
        QCOMPARE(manager.run(row.command), QString("terminalsim: ") + row.error);
        QCOMPARE(manager.status, 1);
    }
    QVERIFY(manager.runs("display start"));
    QCOMPARE(manager.run("display start"), QString("terminalsim: the display runs already"));
    QVERIFY(manager.runs("press up"));
    const qint64 second = manager.pid();
    QVERIFY(manager.runs("display restart"));
    QVERIFY(manager.waitForState("restarts 1,"));
    QVERIFY(manager.waitForState("state running"));
    QVERIFY(manager.pid() != second);
    QCOMPARE(manager.process.state(), QProcess::Running);
}

void DisplayManagerTest::theConsoleTellsWhatItCannotDo()
{
    Manager manager("wrong");
    QVERIFY(manager.start());
    const struct {
        const char* command;
        const char* error;
    } rows[] = {
        {"press home", "home is no key: "},
        {"press up*0", "up*0 is no key: "},
        {"press up*x", "up*x is no key: "},
        {"press up down*1001", "down*1001 is no key: "},
        {"picture a.png 0", "0 is no scale from 1 to 32"},
        {"picture a.png 33", "33 is no scale from 1 to 32"},
        {"picture a.png large", "large is no scale from 1 to 32"},
        {"log 0", "0 is no number of lines from 1 to 1000"},
        {"log many", "many is no number of lines from 1 to 1000"},
        {"display kill FOO", "FOO is no signal"},
        {"display kill 99", "99 is no signal"},
    };
    for (const auto& row : rows) {
        const QString printed = manager.run(row.command);
        QVERIFY2(printed.startsWith(QString("terminalsim: ") + row.error), qPrintable(printed));
        QCOMPARE(manager.status, 1);
    }
    for (const char* misused :
         {"press", "picture", "picture a 1 2", "log 1 2", "display dance", "display stop now"}) {
        manager.run(misused);
        QVERIFY2(manager.status != 0, misused);
    }
    QVERIFY(manager.run("picture /none/a.png").startsWith("terminalsim: cannot write /none/a.png: "));
}

void DisplayManagerTest::withoutADisplayTheCommandsSaySo()
{
    const QString address = privateBusAddress("without");
    QTemporaryDir directory;
    TerminalProcess terminal(address);
    const QString socket = directory.filePath("console");
    QVERIFY(terminal.start({"--no-console", "--socket", socket}));
    for (const char* command : {"press up", "picture a.png", "log", "display", "display stop"}) {
        QProcess client;
        client.setProcessChannelMode(QProcess::MergedChannels);
        client.start(programs + "/terminalsim",
                     QStringList({"--socket", socket}) + QString(command).split(' '));
        QVERIFY(client.waitForFinished());
        QCOMPARE(QString::fromUtf8(client.readAll()), QString("terminalsim: no display was started here\n"));
        QCOMPARE(client.exitCode(), 1);
    }
}

void DisplayManagerTest::aProgramThatIsNoneIsTold()
{
    Manager manager("none");
    manager.start(QStringList(), "/none/such");
    QCOMPARE(manager.waitForEnd(), 1);
    QVERIFY(manager.told().contains("terminalsim: cannot run /none/such: No such file or directory\n"));
}

// The driver in the display, with another end of its socket than terminalsim.
void DisplayManagerTest::theKeypadBearsJunkAndTheEndOfItsSocket()
{
    QTemporaryDir directory;
    const QByteArray path = directory.filePath("keypad").toUtf8();
    struct sockaddr_un name;
    memset(&name, 0, sizeof(name));
    name.sun_family = AF_UNIX;
    memcpy(name.sun_path, path.constData(), size_t(path.size()));
    const int server = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    QCOMPARE(bind(server, reinterpret_cast<struct sockaddr*>(&name), sizeof(name)), 0);
    QCOMPARE(listen(server, 1), 0);
    qputenv("QT_PLUGIN_PATH", QByteArray(PROJECT_BINARY_DIR "/plugins"));
    qputenv("QT_QPA_GENERIC_PLUGINS", "deskkeypad:" + path);
    PanelDesk desk("junk");
    const QString fault = desk.start();
    qunsetenv("QT_PLUGIN_PATH");
    qunsetenv("QT_QPA_GENERIC_PLUGINS");
    QCOMPARE(fault, QString());

    const int keypad = accept4(server, nullptr, nullptr, SOCK_CLOEXEC);
    QVERIFY(keypad >= 0);
    struct timeval limit = {20, 0};
    setsockopt(keypad, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof(limit));
    const QByteArray junk =
        QByteArray("\0\xff\x1b[A\n", 6) + "\n" + QByteArray(100000, 'u') + "\nup \nUP\nup\ndown";
    QCOMPARE(send(keypad, junk.constData(), size_t(junk.size()), MSG_NOSIGNAL), ssize_t(junk.size()));
    QByteArray answers;
    char bytes[256];
    ssize_t count;
    while (answers.count('\n') < 6 && (count = recv(keypad, bytes, sizeof(bytes), 0)) > 0)
        answers.append(bytes, int(count));
    QCOMPARE(answers, QByteArray("unknown\nunknown\nunknown\nunknown\nunknown\ndone up\n"));

    close(keypad); // in the middle of a line
    close(server);
    const int before = int(desk.panel.log().size());
    QVERIFY(desk.terminal.set("ram.status.signal_strength", "int:333"));
    QVERIFY(desk.panel.waitForLog("setTopLayerText(): topLayerText=", PATIENCE_MS, before) >= 0);
    QCOMPARE(desk.panel.log().filter("Key_Up was pressed for receiver=.").size(), 1);
    QCOMPARE(desk.panel.log().filter("Key_Down was pressed for receiver=.").size(), 0);
    QCOMPARE(desk.panel.process().state(), QProcess::Running);
    QCOMPARE(desk.panel.screenshot().size(), QSize(256, 64));
}

QTEST_GUILESS_MAIN(DisplayManagerTest)
#include "display_manager_test.moc"
