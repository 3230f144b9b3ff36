// What the display reads and writes beside the bus: the place of its screenshots full, read-only or gone, the
// contrast file missing, read-only or broken, icons and translations missing, the system log without a
// listener. Each test spoils places of its own, in a mount namespace. That every single icon and translation
// may be missing is tested in missing_files_test, within one process.
#include "system/faultcase.h"

#include <atomic>
#include <mutex>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>

using faultcase::FaultCase;

namespace {

// Within the directory of all places.
QString nameOf(const QString& place)
{
    return QFileInfo(place).fileName();
}

// The system log's end of its socket: takes what comes.
class LogSocket {
public:
    explicit LogSocket(const QString& file) : m_path(file.toUtf8()) {}
    ~LogSocket() { close(); }

    bool open()
    {
        struct sockaddr_un name;
        memset(&name, 0, sizeof(name));
        name.sun_family = AF_UNIX;
        memcpy(name.sun_path, m_path.constData(), size_t(m_path.size()));
        m_socket = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        if (bind(m_socket, reinterpret_cast<struct sockaddr*>(&name), sizeof(name)) != 0)
            return false;
        m_ends = false;
        m_reader = std::thread([this] { read(); });
        return true;
    }
    void close()
    {
        if (m_socket < 0)
            return;
        m_ends = true;
        m_reader.join();
        ::close(m_socket);
        m_socket = -1;
        QFile::remove(QString::fromUtf8(m_path));
    }
    int count(const QString& text)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        return int(m_lines.filter(text).size());
    }
    bool waitFor(const QString& text, int more)
    {
        return waitUntil([&] { return count(text) >= more; }, PATIENCE_MS);
    }

private:
    void read()
    {
        char bytes[65536];
        while (!m_ends) {
            struct pollfd entry = {m_socket, POLLIN, 0};
            if (poll(&entry, 1, 20) != 1)
                continue;
            const ssize_t got = recv(m_socket, bytes, sizeof(bytes), 0);
            std::lock_guard<std::mutex> lock(m_mutex);
            if (got > 0)
                m_lines.append(QString::fromUtf8(bytes, int(got)));
        }
    }

    const QByteArray m_path;
    int m_socket = -1;
    std::atomic<bool> m_ends{false};
    std::thread m_reader;
    std::mutex m_mutex;
    QStringList m_lines;
};

} // namespace

class FaultsFilesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        FaultCase trial("trial");
        const QString why = trial.takeOwnPlaces();
        if (!why.isEmpty())
            QSKIP(qPrintable("Not tested: " + why));
    }
    void noPlaceForScreenshots_data();
    void noPlaceForScreenshots();
    void noContrast_data();
    void noContrast();
    void aMissingIconIsLeftOut_data();
    void aMissingIconIsLeftOut();
    void aMissingPictureThatIsNeededEndsIt_data();
    void aMissingPictureThatIsNeededEndsIt();
    void aMissingTranslationLeavesEnglish_data();
    void aMissingTranslationLeavesEnglish();
    void theSystemLogGoesAndComes();
    void withoutASystemLogFromTheStart();

private:
    // Places, display and picture as they should be.
    static void begin(FaultCase& desk, QImage* whole)
    {
        QCOMPARE(desk.takeOwnPlaces(), QString());
        QCOMPARE(desk.start(), QString());
        *whole = desk.picture("before");
        QCOMPARE(whole->size(), QSize(256, 64));
    }
};

#define BEGIN(desk, whole)                                                                                   \
    QImage whole;                                                                                            \
    begin(desk, &whole);                                                                                     \
    if (QTest::currentTestFailed())                                                                          \
    return

void FaultsFilesTest::noPlaceForScreenshots_data()
{
    QTest::addColumn<QString>("spoil");
    QTest::addColumn<QString>("repair");
    QTest::addColumn<QString>("log");
    QTest::newRow("full") << "mount -t tmpfs -o size=4k tmpfs $MISC"
                          << "umount $MISC"
                          << ".bmp saved."; // so it says, whether or not all of it could be written
    QTest::newRow("no inode left") << "mount -t tmpfs -o nr_inodes=1 tmpfs $MISC"
                                   << "umount $MISC"
                                   << "Screen::createScreenshot: Open for write only failed.";
    QTest::newRow("read-only") << "mount -t tmpfs -o ro tmpfs $MISC"
                               << "umount $MISC"
                               << "Screen::createScreenshot: Open for write only failed.";
    QTest::newRow("gone") << "mv $MISC away"
                          << "mv away $MISC"
                          << " does not exist!";
}

// No picture is left, the screen stays as it is, and keys and settings work on.
void FaultsFilesTest::noPlaceForScreenshots()
{
    QFETCH(QString, spoil);
    QFETCH(QString, repair);
    QFETCH(QString, log);
    FaultCase desk("misc");
    BEGIN(desk, unframed);
    QVERIFY(desk.runs("press up"));
    const QImage whole = desk.picture("framed");
    QVERIFY(whole != unframed);
    const QString misc = nameOf(paths::screenshotDirectory());
    QVERIFY(desk.inside(spoil.replace("$MISC", misc)));
    int mark = desk.mark();
    const pid_t pid = desk.pid();
    QVERIFY(pid > 0);
    ::kill(pid, SIGUSR1);
    QVERIFY(desk.waitForLog(log, mark));
    QVERIFY(desk.runs("press screenshot ok"));
    QVERIFY(desk.waitForValue("cfg.interfaces.lan.enabled", "int 0"));
    QVERIFY(desk.waitForLog("state=INTERFACE_STATE_OFF", mark));
    QCOMPARE(desk.log().mid(mark).filter(log).size(), 2);
    QVERIFY(!desk.logged("eventList[0]=", mark)); // no message about it
    mark = desk.mark();
    QVERIFY(desk.runs("press ok"));
    QVERIFY(desk.waitForLog("state=INTERFACE_STATE_ON", mark));
    QVERIFY(desk.inside(repair.replace("$MISC", misc)));
    QCOMPARE(desk.picture("after"), whole);
    QVERIFY(desk.errors().isEmpty());
    QCOMPARE(desk.pid(), pid);
}

void FaultsFilesTest::noContrast_data()
{
    QTest::addColumn<QString>("spoil");
    QTest::addColumn<QString>("repair");
    QTest::addColumn<QString>("log");
    const QString notOpened =
        QString("StatusUpdater::setBrightnessInDriver(): ERROR !!! Can not open file ") +
        paths::contrastFile();
    QTest::newRow("missing") << "rm $FILE"
                             << "printf 128 >$FILE" << notOpened;
    QTest::newRow("read-only") << "mount --bind $FILE $FILE; mount -o remount,bind,ro $FILE"
                               << "umount $FILE" << notOpened;
    QTest::newRow("a directory") << "rm $FILE; mkdir $FILE"
                                 << "rmdir $FILE; printf 128 >$FILE" << notOpened;
    QTest::newRow("takes nothing")
        << "ln -sf /dev/full $FILE"
        << "rm $FILE; printf 128 >$FILE"
        << "StatusUpdater::setBrightnessInDriver(): ERROR !!! Can not write to file.";
}

// The brightness stays as it was; the setting is stored, shown in the menu, and takes effect when the file is
// there again and the next one is chosen.
void FaultsFilesTest::noContrast()
{
    QFETCH(QString, spoil);
    QFETCH(QString, repair);
    QFETCH(QString, log);
    FaultCase desk("contrast");
    BEGIN(desk, whole);
    const QString file = nameOf(paths::contrastFile());
    QVERIFY(desk.inside(spoil.replace("$FILE", file)));
    int mark = desk.mark();
    QVERIFY(desk.runs("set cfg.display.brightness 6"));
    QVERIFY(desk.waitForLog(log, mark));
    QVERIFY(!desk.logged("StatusUpdater::setBrightnessInDriver(): Wrote", mark));
    QCOMPARE(desk.picture("without"), whole);

    // And from the start: the display is shown all the same.
    mark = desk.mark();
    QVERIFY(desk.runs("display restart"));
    QVERIFY(desk.waitForLog(log, mark));
    QVERIFY(desk.waitUntilReady(mark));
    QCOMPARE(desk.run("get cfg.display.brightness"), QString("int 6"));
    QCOMPARE(desk.picture("restarted"), whole);
    QVERIFY(desk.errors().isEmpty());

    QVERIFY(desk.inside(repair.replace("$FILE", file)));
    QVERIFY(desk.runs("set cfg.display.brightness 7"));
    QVERIFY(desk.waitForLog("StatusUpdater::setBrightnessInDriver(): Wrote 255 to file", mark));
    QVERIFY(desk.inside("grep -q 255 " + file));
}

void FaultsFilesTest::aMissingIconIsLeftOut_data()
{
    QTest::addColumn<QString>("file");
    for (const char* name : {"menu_enabled", "wifi_enabled", "lan_enabled", "battery_enabled"})
        QTest::newRow(name) << name + QString(".png");
}

void FaultsFilesTest::aMissingIconIsLeftOut()
{
    QFETCH(QString, file);
    FaultCase desk(QTest::currentDataTag());
    BEGIN(desk, whole);
    const QString path = paths::resourcePath() + "/" + file;
    const QString inPlace = nameOf(paths::resourcePath()) + "/" + file;
    QVERIFY(desk.inside("mv " + inPlace + " away"));
    int mark = desk.mark();
    QVERIFY(desk.runs("display restart"));
    QVERIFY(desk.waitUntilReady(mark));
    QVERIFY(desk.logged("TLabel::updateIcon(): Pixmap not found for filename=" + path +
                            ". Now removing pixmap from icon.",
                        mark));
    const QImage without = desk.picture("without");
    QVERIFY(without != whole);
    QVERIFY(desk.errors().isEmpty());
    QVERIFY(desk.inside("mv away " + inPlace));
    mark = desk.mark();
    QVERIFY(desk.runs("display restart"));
    QVERIFY(desk.waitUntilReady(mark));
    QCOMPARE(desk.picture("after"), whole);
}

void FaultsFilesTest::aMissingPictureThatIsNeededEndsIt_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("panic");
    const QString level = "TSignalLabel::updateIcon(): ERROR !!! : Pixmap not found. Exiting lumenpanel.";
    QTest::newRow("bars") << "antenna_4.png" << level;
    QTest::newRow("no bars") << "antenna_0.png" << level;
    QTest::newRow("scale") << "grid_12_fields.png"
                           << "ERROR!!! Missing file used by lumenpanel. Exiting lumenpanel.";
}

// As soon as it is needed. The application manager starts the display again, in vain until the file is there.
void FaultsFilesTest::aMissingPictureThatIsNeededEndsIt()
{
    QFETCH(QString, file);
    QFETCH(QString, panic);
    FaultCase desk("needed");
    BEGIN(desk, whole);
    const QStringList settings = desk.settings();
    const QString inPlace = nameOf(paths::resourcePath()) + "/" + file;
    QVERIFY(desk.inside("mv " + inPlace + " away"));
    const int mark = desk.mark();
    QVERIFY(desk.runs("display restart"));
    // With status 1, or by the signal itself if the bus thread has not put its handlers in place yet.
    QVERIFY(desk.waitForTold(": <1> gui: " + panic));
    QVERIFY(desk.inside("mv away " + inPlace));
    const QStringList errors = desk.errors(mark);
    QVERIFY(!errors.filter(panic).isEmpty() && errors.filter(panic).first().startsWith("<17.1> gui["));
    QVERIFY(desk.waitUntilReady(mark));
    QCOMPARE(desk.picture("after"), whole);
    QCOMPARE(desk.settings(), settings);
}

void FaultsFilesTest::aMissingTranslationLeavesEnglish_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("name");
    QTest::newRow("English") << 0 << "i18n_en";
    QTest::newRow("German") << 2 << "i18n_de";
    QTest::newRow("Japanese") << 6 << "i18n_ja";
}

// The setting stays what was chosen, and the language is there with the file at the next start.
void FaultsFilesTest::aMissingTranslationLeavesEnglish()
{
    QFETCH(int, language);
    QFETCH(QString, name);
    FaultCase desk("language");
    QCOMPARE(desk.takeOwnPlaces(), QString());
    desk.terminalArguments = QStringList({"--set", QString("cfg.language=int:%1").arg(language)});
    QVERIFY(desk.startTerminal());
    const QString ready = "Successfully translated statusTextId=12 to ";
    QVERIFY(desk.waitForLog(ready));
    const QImage whole = desk.picture("whole-" + name);
    const QString inPlace = nameOf(paths::resourcePath()) + "/" + name + ".qm";
    QVERIFY(desk.inside("mv " + inPlace + " away"));
    int mark = desk.mark();
    QVERIFY(desk.runs("display restart"));
    QVERIFY(desk.waitForLog("Window::loadLanguage(): ERROR!!! Can not load translation file " + name +
                                " for path=" + paths::resourcePath() + " !!!",
                            mark));
    QVERIFY(desk.waitForLog(faultcase::COMPLETE, mark));
    QVERIFY(desk.runs("press right ok")); // the menu is in the words of the source
    const QImage without = desk.picture("without-" + name);
    QCOMPARE(without.size(), QSize(256, 64));
    QVERIFY(desk.errors().isEmpty());
    QCOMPARE(desk.run("get cfg.language"), QString("int %1").arg(language));
    QVERIFY(desk.inside("mv away " + inPlace));
    mark = desk.mark();
    QVERIFY(desk.runs("display restart"));
    QVERIFY(desk.waitForLog(ready, mark));
    QCOMPARE(desk.picture("again-" + name), whole);
}

// Lines of the time without a listener are lost; the first one after it is there.
void FaultsFilesTest::theSystemLogGoesAndComes()
{
    FaultCase desk("log");
    QCOMPARE(desk.takeOwnPlaces(), QString());
    desk.displayEnvironment << "LD_PRELOAD="; // the C library's own syslog
    LogSocket log(desk.file("devlog"));
    QVERIFY(log.open());
    QVERIFY(desk.startTerminal());
    QVERIFY(log.waitFor("Local GUI display starting up...", 1));
    QVERIFY(log.waitFor("Successfully translated statusTextId=12 ", 1));
    const QString key = "GuiApp::notify: Done handling the keypress.";
    QVERIFY(desk.runs("press up"));
    QVERIFY(log.waitFor(key, 1));
    QCOMPARE(log.count(key), 1);

    log.close();
    QVERIFY(desk.runs("press down up ok")); // LAN off
    QVERIFY(desk.waitForValue("cfg.interfaces.lan.enabled", "int 0"));
    QVERIFY(!desk.picture("silent").isNull());
    QCOMPARE(log.count(key), 1);

    QVERIFY(log.open());
    QVERIFY(desk.runs("press right"));
    QVERIFY(log.waitFor(key, 2));
    QCOMPARE(log.count(key), 2);
    QCOMPARE(desk.restarts(), 0);
}

void FaultsFilesTest::withoutASystemLogFromTheStart()
{
    FaultCase desk("mute");
    QCOMPARE(desk.takeOwnPlaces(), QString());
    desk.displayEnvironment << "LD_PRELOAD=";
    QVERIFY(desk.startTerminal());
    QVERIFY(desk.runs("press up ok"));
    QVERIFY(desk.waitForValue("cfg.interfaces.lan.enabled", "int 0"));
    QVERIFY(!desk.picture("shown").isNull());
    QCOMPARE(desk.restarts(), 0);
    LogSocket log(desk.file("devlog"));
    QVERIFY(log.open());
    QVERIFY(desk.runs("press right"));
    QVERIFY(log.waitFor("GuiApp::notify: Done handling the keypress.", 1));
}

QTEST_GUILESS_MAIN(FaultsFilesTest)
#include "faults_files_test.moc"
