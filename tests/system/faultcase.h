// The real display under the real terminalsim, for tests of what goes wrong around it: a console for faults,
// keys and pictures, the display's log, and, if asked for, places of the test's own: icons, screenshots, the
// contrast file and /dev are then those of a mount namespace, which a test may spoil while others run.
#ifndef TESTS_SYSTEM_FAULTCASE_H
#define TESTS_SYSTEM_FAULTCASE_H

#include "common/paths.h"
#include "support/panelprocess.h"
#include "support/patience.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <cstdio>
#include <unistd.h>

namespace faultcase {

const QString programs = PROJECT_BINARY_DIR;
const char* const COMPLETE = "main(): Done creating window";

// `unshare`, with which a process gets a mount namespace of its own; also its user's, unless that is root.
inline QStringList unshare()
{
    return geteuid() == 0 ? QStringList({"unshare", "-m"}) : QStringList({"unshare", "-rm"});
}

class FaultCase {
public:
    explicit FaultCase(const char* purpose)
        : m_purpose(purpose), m_address(privateBusAddress(QString("fault.") + purpose)),
          m_socket(m_directory.filePath("console"))
    {
    }
    ~FaultCase()
    {
        if (QTest::currentTestFailed())
            fprintf(stderr, "%s\n", (told() + log().join('\n').right(4000).toUtf8()).constData());
        if (process.state() != QProcess::NotRunning) {
            process.terminate(); // it takes the display with it
            if (!process.waitForFinished(20000)) {
                process.kill();
                process.waitForFinished();
            }
        }
    }
    FaultCase(const FaultCase&) = delete;
    FaultCase& operator=(const FaultCase&) = delete;

    // --- Before the start

    // NAME=VALUE for the display alone.
    QStringList displayEnvironment;
    QStringList terminalArguments;
    // The places are the test's own. Why that can't be, or an empty text.
    QString takeOwnPlaces()
    {
        const QString build = QFileInfo(programs).absoluteFilePath();
        for (const QString& place :
             {paths::resourcePath(), paths::screenshotDirectory(), paths::contrastFile()}) {
            if (QFileInfo(place).absolutePath() != build)
                return "the places of this build are not in its own directory";
        }
        QProcess trial;
        const QStringList command = unshare() + QStringList({"mount", "-t", "tmpfs", "tmpfs", "/tmp"});
        trial.start(command.first(), command.mid(1));
        if (!trial.waitForFinished(20000) || trial.exitCode() != 0)
            return "no right to mount, not even in a namespace of one's own";
        m_ownPlaces = true;
        return QString();
    }

    // --- Life

    // Starts all and waits until the status screen shows live values. Empty, or what did not come up.
    QString start()
    {
        if (!startTerminal())
            return "terminalsim did not start";
        return waitUntilReady() ? QString() : QString("the display did not become ready");
    }
    bool startTerminal()
    {
        QStringList command = m_ownPlaces ? placesCommand() : QStringList();
        command << programs + "/terminalsim"
                << "--address" << m_address << "--still"
                << "--no-console"
                << "--socket" << m_socket << "--store" << file("store") << "--display-log" << file("log")
                << terminalArguments;
        QStringList display = displayEnvironment.isEmpty() ? QStringList() : QStringList("env");
        display << displayEnvironment << programs + "/lumenpanel"
                << "logQtDebug";
        command << "--display" << display.first();
        for (const QString& argument : display.mid(1))
            command << "--display-argument" << argument;
        process.setProcessEnvironment(environment());
        process.start(command.first(), command.mid(1));
        QByteArray printed;
        return process.waitForStarted() && waitUntil(
                                               [&] {
                                                   process.waitForReadyRead(10);
                                                   printed += process.readAllStandardOutput();
                                                   return printed.contains("listening on");
                                               },
                                               PATIENCE_MS);
    }
    // The text "Ready" comes with the first poll of the radio module. A change wakes the bus thread, which
    // may not have noticed yet that it is to poll. The window may show it before the start is over, which
    // would undo what a key does.
    bool waitUntilReady(int from = 0)
    {
        for (int waited = 0; waited < PATIENCE_MS; waited += 2000) {
            if (waitUntil([&] { return logged("Successfully translated statusTextId=12 ", from); }, 2000))
                return waitForLog(COMPLETE, from);
            run(QString("set ram.status.position.nudge %1").arg(++m_nudges));
        }
        return false;
    }
    // Ends the display, does something to the terminal, and starts a display.
    bool restartWith(const QString& command)
    {
        return runs("display stop") && runs(command) && runs("display start");
    }

    // --- The console

    // What the line prints; its status is in `status`.
    QString run(const QString& line)
    {
        QProcess client;
        client.setProcessChannelMode(QProcess::MergedChannels);
        client.start(programs + "/terminalsim", {"--socket", m_socket, "-"});
        client.write(line.toUtf8() + "\n");
        client.closeWriteChannel();
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
    bool waitForValue(const QString& key, const QString& value)
    {
        return waitUntil([&] { return run("get " + key) == value; }, PATIENCE_MS);
    }
    // All stored settings but those that the terminal itself writes there, one a line.
    QStringList settings()
    {
        return run("list cfg\\..*")
            .split('\n')
            .filter(QRegularExpression("^(?!cfg\\.interfaces\\.\\w+\\.mac_)"));
    }
    int restarts()
    {
        const QRegularExpressionMatch match = QRegularExpression("restarts (\\d+)").match(run("display"));
        return match.hasMatch() ? match.captured(1).toInt() : -1;
    }
    // Of the display; -1 if none runs.
    pid_t pid()
    {
        const QRegularExpressionMatch match = QRegularExpression("pid (\\d+)").match(run("display"));
        return match.hasMatch() ? pid_t(match.captured(1).toLongLong()) : -1;
    }
    // What terminalsim has said of the display.
    QByteArray told()
    {
        m_told += process.readAllStandardError();
        return m_told;
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

    // --- What the display shows and says

    // Its picture; null if there was none. Left in the build tree, enlarged, to be looked at.
    QImage picture(const QString& name)
    {
        const QString path = file(name + ".png");
        if (!runs("picture " + path + " 1"))
            return QImage();
        const QImage image = QImage(path).convertToFormat(QImage::Format_RGB32);
        QDir().mkpath(programs + "/faults");
        image.scaled(image.size() * 4).save(programs + "/faults/" + m_purpose + "_" + name + ".png");
        return image;
    }
    QStringList log() const
    {
        QFile stream(file("log"));
        if (!stream.open(QIODevice::ReadOnly))
            return QStringList();
        QStringList lines = QString::fromUtf8(stream.readAll()).split('\n');
        lines.removeLast(); // what stands behind the last line feed is not a line yet
        return lines;
    }
    int mark() const { return int(log().size()); }
    bool logged(const QString& text, int from = 0) const { return !log().mid(from).filter(text).isEmpty(); }
    bool waitForLog(const QString& text, int from = 0)
    {
        return waitUntil([&] { return logged(text, from); }, PATIENCE_MS);
    }
    // Lines of the system's error priorities, 0 to 3: panics, assertions, broken I/O.
    QStringList errors(int from = 0) const
    {
        return log().mid(from).filter(QRegularExpression("^<\\d+\\.[0-3]> "));
    }

    // The same without the one line of a connection that is closed while something is under way.
    QStringList errorsBesideTheLoss(int from = 0) const
    {
        return errors(from).filter(
            QRegularExpression("^(?!.*\\*\\*\\* IO error 104 \\(Connection reset by peer\\))"));
    }

    // --- Its places

    // Runs shell commands where the display lives, in the directory of its places.
    bool inside(const QString& commands)
    {
        QProcess shell;
        QStringList arguments = {"-t", QString::number(process.processId()), "-m"};
        if (geteuid() != 0)
            arguments << "-U"
                      << "--preserve-credentials";
        arguments << "sh"
                  << "-ec"
                  << "cd \"" + programs + "\"\n" + commands;
        shell.setProcessChannelMode(QProcess::ForwardedChannels);
        shell.start("nsenter", arguments);
        return shell.waitForFinished(PATIENCE_MS) && shell.exitCode() == 0;
    }
    // A file of the test's own directory, which is the same for the display.
    QString file(const QString& name) const { return m_directory.filePath(name); }

    QProcess process;
    int status = 0; // of the last run()

private:
    static QProcessEnvironment environment()
    {
        QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
        result.insert("FONTCONFIG_FILE", QString(PROJECT_SOURCE_DIR) + "/res/fonts/fonts.conf");
        result.insert("QT_QPA_PLATFORM", "offscreen");
        // The library of the log stands before the sanitizer's; that is meant.
        result.insert("ASAN_OPTIONS", result.value("ASAN_OPTIONS") + ":verify_asan_link_order=0");
        return result;
    }
    // A shell that makes the places and becomes what follows. The build's directory is one in memory with
    // links to what is in the real one; the icons are copies, the rest is new. /dev has what a program needs
    // and a log that leads to the file "devlog" of the test.
    QStringList placesCommand() const
    {
        const QString disp = QFileInfo(paths::resourcePath()).fileName();
        const QString misc = QFileInfo(paths::screenshotDirectory()).fileName();
        const QString contrast = QFileInfo(paths::contrastFile()).fileName();
        const char script[] = R"(
set -e
mkdir "$T/real" "$T/dev"
mount --bind "$B" "$T/real"
mount -t tmpfs tmpfs "$B"
cp -R "$T/real/$DISP" "$B/$DISP"
mkdir "$B/$MISC"
printf 128 >"$B/$CONTRAST"
for entry in "$T/real"/*; do
    test -e "$B/${entry##*/}" || ln -s "$entry" "$B/"
done
mount -t tmpfs tmpfs "$T/dev"
for node in null zero full random urandom; do
    : >"$T/dev/$node"
    mount --bind "/dev/$node" "$T/dev/$node"
done
mkdir "$T/dev/shm"
ln -s /proc/self/fd "$T/dev/fd"
ln -s "$T/devlog" "$T/dev/log"
mount --rbind "$T/dev" /dev
exec "$@"
)";
        return unshare() + QStringList({"env", "T=" + m_directory.path(), "B=" + programs, "DISP=" + disp,
                                        "MISC=" + misc, "CONTRAST=" + contrast, "sh", "-c", script, "sh"});
    }

    const QString m_purpose;
    const QString m_address;
    QTemporaryDir m_directory;
    const QString m_socket;
    QByteArray m_told;
    bool m_ownPlaces = false;
    int m_nudges = 0;
};

} // namespace faultcase

#endif
