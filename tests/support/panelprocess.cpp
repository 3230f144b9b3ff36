#include "support/panelprocess.h"

#include "common/paths.h"
#include "support/patience.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

const char* const programDirectory = PROJECT_BINARY_DIR;

QProcessEnvironment environmentFor(const QString& address)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("CBUS_ADDR", address);
    environment.insert("FONTCONFIG_FILE", QString(PROJECT_SOURCE_DIR) + "/res/fonts/fonts.conf");
    environment.remove("APPMGR_PID");
    return environment;
}

} // namespace

QString privateBusAddress(const QString& purpose)
{
    return QString("unix*%1.%2").arg(purpose).arg(QCoreApplication::applicationPid());
}

TerminalProcess::TerminalProcess(const QString& address) : m_address(address)
{
    m_process.setProcessEnvironment(environmentFor(address));
    m_process.setProcessChannelMode(QProcess::MergedChannels);
}

TerminalProcess::~TerminalProcess()
{
    end();
}

bool TerminalProcess::start(const QStringList& arguments)
{
    QStringList all;
    all << "--address" << m_address << "--still"
        << "--store" << m_directory.filePath("store.sqlite") << arguments;
    m_process.start(QString(programDirectory) + "/terminalsim", all);
    QByteArray printed;
    return m_process.waitForStarted(PATIENCE_MS) && waitUntil(
                                                        [&] {
                                                            m_process.waitForReadyRead(10);
                                                            printed += m_process.readAll();
                                                            return printed.contains("listening on");
                                                        },
                                                        PATIENCE_MS);
}

int TerminalProcess::end()
{
    if (m_process.state() == QProcess::NotRunning) {
        return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }
    m_process.terminate();
    if (!m_process.waitForFinished(PATIENCE_MS)) {
        m_process.kill();
        m_process.waitForFinished(PATIENCE_MS);
        return -1;
    }
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

bool TerminalProcess::set(const QString& key, const QString& typedValue)
{
    QProcess tool;
    tool.setProcessEnvironment(environmentFor(m_address));
    tool.start(QString(programDirectory) + "/terminalsim", QStringList() << "set" << key << typedValue);
    return tool.waitForFinished(PATIENCE_MS) && tool.exitCode() == 0;
}

QString TerminalProcess::get(const QString& key)
{
    QProcess tool;
    tool.setProcessEnvironment(environmentFor(m_address));
    tool.start(QString(programDirectory) + "/terminalsim", QStringList() << "get" << key);
    tool.waitForFinished(PATIENCE_MS);
    return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
}

PanelProcess::PanelProcess(const QString& address) : m_address(address) {}

PanelProcess::~PanelProcess()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(PATIENCE_MS);
    }
}

bool PanelProcess::start(const QStringList& arguments, const QString& xDisplay)
{
    QProcessEnvironment environment = environmentFor(m_address);
    environment.insert("SYSLOGTAP_FILE", m_directory.filePath("log"));
    environment.insert("LD_PRELOAD", QString(programDirectory) + "/libsyslogtap.so");
    // The preloaded library stands before the sanitizer's own; that is meant.
    environment.insert("ASAN_OPTIONS", environment.value("ASAN_OPTIONS") + ":verify_asan_link_order=0");
    environment.insert("QT_QPA_PLATFORM", xDisplay.isEmpty() ? "offscreen" : "xcb");
    if (!xDisplay.isEmpty()) {
        environment.insert("DISPLAY", xDisplay);
        // The X libraries copy bounded parts of texts without an end, which the strict check takes for a
        // fault.
        environment.insert("ASAN_OPTIONS", environment.value("ASAN_OPTIONS") + ":strict_string_checks=0");
    }
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(QString(programDirectory) + "/lumenpanel", arguments);
    return m_process.waitForStarted(PATIENCE_MS);
}

QStringList PanelProcess::log() const
{
    QFile file(m_directory.filePath("log"));
    if (!file.open(QIODevice::ReadOnly)) {
        return QStringList();
    }
    QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
    lines.removeLast(); // what stands behind the last line feed is not a line yet
    return lines;
}

int PanelProcess::waitForLog(const QString& text, int timeoutMs, int from)
{
    int found = -1;
    waitUntil(
        [&] {
            const QStringList lines = log();
            for (int i = from; i < lines.size() && found < 0; ++i) {
                if (lines.at(i).contains(text)) {
                    found = i;
                }
            }
            return found >= 0;
        },
        timeoutMs);
    return found;
}

ScreenshotLock::ScreenshotLock()
{
    const QString directory = paths::screenshotDirectory();
    QDir().mkpath(directory);
    m_descriptor = ::open(directory.toLocal8Bit().constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    while (::flock(m_descriptor, LOCK_EX) != 0 && errno == EINTR) {
    }
}

ScreenshotLock::~ScreenshotLock()
{
    ::close(m_descriptor);
}

// Needs a display started with "logQtDebug": the file's name stands in a debug line.
QImage PanelProcess::screenshot()
{
    const ScreenshotLock lock;
    const QStringList kept = QDir(paths::screenshotDirectory()).entryList();
    const int before = log().size();
    ::kill(pid_t(m_process.processId()), SIGUSR1);
    const int line = waitForLog(".bmp saved.", PATIENCE_MS, before);
    if (line < 0) {
        return QImage();
    }
    const QRegularExpressionMatch match =
        QRegularExpression("File (.*\\.bmp) saved\\.").match(log().at(line));
    const QImage picture(match.captured(1));
    // One of the same second that another test wants to keep stays, though with this content.
    if (!kept.contains(QFileInfo(match.captured(1)).fileName())) {
        QFile::remove(match.captured(1));
    }
    return picture.convertToFormat(QImage::Format_RGB32);
}

int PanelProcess::waitForEnd(int timeoutMs)
{
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(timeoutMs)) {
        return -1;
    }
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

XServerProcess::~XServerProcess()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(PATIENCE_MS);
    }
}

bool XServerProcess::start()
{
    // A press that a busy machine makes long is still one: no auto-repeat.
    m_process.start("Xvfb", QString("-displayfd 1 -screen 0 256x64x24 -nolisten tcp -r").split(' '));
    if (!m_process.waitForStarted(PATIENCE_MS) || !m_process.waitForReadyRead(PATIENCE_MS)) {
        return false;
    }
    m_display = ":" + QString::fromLatin1(m_process.readAllStandardOutput()).trimmed();
    return true;
}

bool XServerProcess::press(const QString& key)
{
    QProcess tool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", m_display);
    tool.setProcessEnvironment(environment);
    tool.start("xdotool", QStringList({"mousemove", "100", "30", "key", key}));
    return tool.waitForFinished(PATIENCE_MS) && tool.exitCode() == 0;
}

PanelDesk::PanelDesk(const QString& purpose, Display display)
    : m_display(display), m_address(privateBusAddress(purpose)), terminal(m_address), panel(m_address)
{
}

QString PanelDesk::startTerminal()
{
    return terminal.start() ? QString() : QString("terminalsim did not start");
}

// The text "Ready" comes with the first poll of the radio module, after all initial reads. That may still be
// within the window's construction, when a key would go to the dark picture that covers it.
QString PanelDesk::startPanel()
{
    if (m_display == X_SERVER && !xServer.start()) {
        return "Xvfb did not start";
    }
    if (!panel.start(QStringList("logQtDebug"), xServer.display())) {
        return "lumenpanel did not start";
    }
    // The window's construction switches the poll off and on, which the bus thread may not notice before
    // something wakes it; any change that it is told of will do.
    for (int nudges = 1; nudges <= PATIENCE_MS / 2000; ++nudges) {
        if (panel.waitForLog("Successfully translated statusTextId=12 ", 2000) >= 0 &&
            panel.waitForLog("main(): Done creating window") >= 0) {
            return QString();
        }
        terminal.set("ram.status.position.nudge", QString("int:%1").arg(nudges));
    }
    return "lumenpanel did not become ready";
}

QString PanelDesk::start()
{
    const QString fault = startTerminal();
    return fault.isEmpty() ? startPanel() : fault;
}

bool PanelDesk::waitForKey(const QString& key, const QString& value, int timeoutMs)
{
    return waitUntil([&] { return terminal.get(key) == value; }, timeoutMs);
}
