// The display's own process stands still and goes on; and keys that come in one turn of its loop.
#include "system/faultcase.h"

#include <cerrno>
#include <sys/socket.h>
#include <sys/un.h>

using faultcase::FaultCase;

namespace {

const int STOPPED_MS = 30000;

// The other end of the display's keypad, which takes several keys in one piece.
class KeypadSocket {
public:
    explicit KeypadSocket(const QByteArray& path)
    {
        struct sockaddr_un name;
        memset(&name, 0, sizeof(name));
        name.sun_family = AF_UNIX;
        memcpy(name.sun_path, path.constData(), size_t(path.size()));
        m_server = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        m_good = bind(m_server, reinterpret_cast<struct sockaddr*>(&name), sizeof(name)) == 0 &&
                 listen(m_server, 1) == 0;
    }
    ~KeypadSocket()
    {
        close(m_server);
        if (m_keypad >= 0)
            close(m_keypad);
    }
    KeypadSocket(const KeypadSocket&) = delete;
    KeypadSocket& operator=(const KeypadSocket&) = delete;

    bool take()
    {
        m_keypad = m_good ? accept4(m_server, nullptr, nullptr, SOCK_CLOEXEC) : -1;
        struct timeval limit = {PATIENCE_MS / 1000, 0};
        return m_keypad >= 0 && setsockopt(m_keypad, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof(limit)) == 0;
    }
    bool send(const QByteArray& keys)
    {
        return ::send(m_keypad, keys.constData(), size_t(keys.size()), MSG_NOSIGNAL) == ssize_t(keys.size());
    }
    QByteArray answers(int count)
    {
        QByteArray all;
        char bytes[256];
        while (all.count('\n') < count) {
            const ssize_t got = recv(m_keypad, bytes, sizeof(bytes), 0);
            // The child that stops and goes on interrupts it: a socket with a time limit is not read again by
            // itself.
            if (got < 0 && errno == EINTR)
                continue;
            if (got <= 0)
                break;
            all.append(bytes, int(got));
        }
        return all;
    }

private:
    int m_server = -1;
    int m_keypad = -1;
    bool m_good = false;
};

} // namespace

class FaultsStoppedTest : public QObject {
    Q_OBJECT

private slots:
    void thirtySeconds();
    void twoKeysInOneTurn_data();
    void twoKeysInOneTurn();
};

// Two displays for the same thirty seconds: one whose application manager doesn't ask meanwhile, and one
// whose manager does. The first goes on as if nothing had been; changes of the time are all shown, keys of
// the time have been pressed. The second finds the question first when it wakes, has given no sign of life
// for longer than 23 seconds, and ends; the next one shows everything.
void FaultsStoppedTest::thirtySeconds()
{
    PanelDesk alone("fault.alone", PanelDesk::X_SERVER);
    QCOMPARE(alone.start(), QString());
    FaultCase asked("asked");
    QCOMPARE(asked.start(), QString());
    QVERIFY(asked.runs("press up ok"));
    QVERIFY(asked.waitForValue("cfg.interfaces.lan.enabled", "int 0"));
    const QStringList settings = asked.settings();

    const pid_t pid = pid_t(alone.panel.process().processId());
    QVERIFY(pid > 0);
    QElapsedTimer clock;
    clock.start();
    ::kill(pid, SIGSTOP);
    QVERIFY(asked.runs("display freeze"));
    const int mark = int(alone.panel.log().size());
    const int askedMark = asked.mark();
    for (int level = 400; level <= 500; level += 20)
        QVERIFY(alone.terminal.set("ram.status.signal_strength", QString("int:%1").arg(level)));
    QVERIFY(alone.press("Up"));
    QVERIFY(alone.press("Return"));
    QTest::qWait(int(qMax(qint64(0), STOPPED_MS - clock.elapsed()))); // this is the fault
    QCOMPARE(alone.panel.log().size(), mark);
    ::kill(pid, SIGCONT);
    asked.run("display thaw"); // it may have been ended just now

    QVERIFY(alone.panel.waitForLog("topLayerText=N50 ", PATIENCE_MS, mark) >= 0);
    QVERIFY(alone.waitForKey("cfg.interfaces.lan.enabled", "int 0", PATIENCE_MS));
    QVERIFY(alone.panel.waitForLog("state=INTERFACE_STATE_OFF", PATIENCE_MS, mark) >= 0);
    QCOMPARE(alone.panel.screenshot().size(), QSize(256, 64));
    QCOMPARE(alone.panel.process().state(), QProcess::Running);
    QVERIFY(alone.panel.log().filter(QRegularExpression("^<\\d+\\.[0-3]> ")).isEmpty());

    QVERIFY(asked.waitUntilReady(askedMark));
    QCOMPARE(asked.restarts(), 1);
    QCOMPARE(asked.settings(), settings);
    // terminalsim itself kills a display that has not answered for as long; whichever of the two was first.
    QVERIFY(asked.waitForTold("the display is started again (pid "));
    const QString told = QString::fromUtf8(asked.told());
    QVERIFY2(told.contains("ended with status 1: <1> gui: Local alive failed") || told.contains("signal 9"),
             qPrintable(told));
}

void FaultsStoppedTest::twoKeysInOneTurn_data()
{
    QTest::addColumn<QByteArray>("before"); // pressed first, one after the other
    QTest::addColumn<QByteArray>("keys");   // come in one piece
    QTest::addColumn<QString>("log");       // what the last of them does
    // The frame moves to the LAN icon, and that is what OK switches.
    QTest::newRow("move, then act") << QByteArray() << QByteArray("up\nok\n")
                                    << "About to store cfg.interfaces.lan.enabled with value=0";
    // The second one is the menu's, whose first row is the way back.
    QTest::newRow("another screen in between")
        << QByteArray("right\n") << QByteArray("ok\nok\n") << "Window::ShowScreen(screenId=7 (SCREEN_STATUS)";
    // The first one has made it a switch that is under way, and such a one takes no key.
    QTest::newRow("the same switch twice") << QByteArray("up\n") << QByteArray("ok\nok\n")
                                           << "About to store cfg.interfaces.lan.enabled with value=0";
}

void FaultsStoppedTest::twoKeysInOneTurn()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, keys);
    QFETCH(QString, log);
    QTemporaryDir directory;
    const QByteArray path = directory.filePath("keypad").toUtf8();
    KeypadSocket keypad(path);
    qputenv("QT_PLUGIN_PATH", QByteArray(PROJECT_BINARY_DIR "/plugins"));
    qputenv("QT_QPA_GENERIC_PLUGINS", "deskkeypad:" + path);
    PanelDesk desk("fault.keys");
    const QString fault = desk.start();
    qunsetenv("QT_PLUGIN_PATH");
    qunsetenv("QT_QPA_GENERIC_PLUGINS");
    QCOMPARE(fault, QString());
    QVERIFY(keypad.take());
    QVERIFY(keypad.send(before));
    QCOMPARE(keypad.answers(int(before.count('\n'))).count("done "), before.count('\n'));

    // While it stands still they gather, so that all are there in the turn in which it goes on.
    const pid_t pid = pid_t(desk.panel.process().processId());
    QVERIFY(pid > 0);
    ::kill(pid, SIGSTOP);
    const int mark = int(desk.panel.log().size());
    QVERIFY(keypad.send(keys));
    ::kill(pid, SIGCONT);
    QCOMPARE(keypad.answers(int(keys.count('\n'))), "done " + keys.trimmed().replace("\n", "\ndone ") + "\n");
    QVERIFY(desk.panel.waitForLog(log, PATIENCE_MS, mark) >= 0);
    const QStringList lines = desk.panel.log().mid(mark);
    QCOMPARE(lines.filter("GuiApp::notify: Some key was pressed.").size(), keys.count('\n'));
    QCOMPARE(lines.filter("GuiApp::notify: Done handling the keypress.").size(), keys.count('\n'));
    QCOMPARE(lines.filter("About to store cfg.").size(), log.contains("store") ? 1 : 0);
    QVERIFY(lines.filter(QRegularExpression("^<\\d+\\.[0-3]> ")).isEmpty());
    QCOMPARE(desk.panel.screenshot().size(), QSize(256, 64));
}

QTEST_GUILESS_MAIN(FaultsStoppedTest)
#include "faults_stopped_test.moc"
