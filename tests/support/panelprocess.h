// The real programs as processes: the simulated terminal and the display, on a private bus address.
// For tests that judge what a user or a tester sees: pictures, log lines, exit statuses, database keys.
#ifndef TESTS_SUPPORT_PANELPROCESS_H
#define TESTS_SUPPORT_PANELPROCESS_H

#include "support/patience.h"

#include <QImage>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <QThread>

// An address that no other test and no live system uses.
QString privateBusAddress(const QString& purpose);

// Waits, until the condition holds; false after the time in ms.
template <typename Condition> bool waitUntil(Condition condition, int timeoutMs);

// Displays of one build write their screenshots to one directory, and the names tell only the second. Who
// takes one and reads it holds this meanwhile, like the simulated terminal does for its pictures.
class ScreenshotLock {
public:
    ScreenshotLock(); // waits for its turn
    ~ScreenshotLock();
    ScreenshotLock(const ScreenshotLock&) = delete;
    ScreenshotLock& operator=(const ScreenshotLock&) = delete;

private:
    int m_descriptor;
};

// `terminalsim` with values that stand still.
class TerminalProcess {
public:
    explicit TerminalProcess(const QString& address);
    ~TerminalProcess();

    // Starts it and waits until it listens.
    bool start(const QStringList& arguments = QStringList());
    // Ends it by SIGTERM and waits; the exit status, or -1 when it crashed or hung.
    int end();
    // Database access through the program's own subcommands; a missing key reads as an empty text.
    bool set(const QString& key, const QString& typedValue);
    QString get(const QString& key);
    QProcess& process() { return m_process; }

private:
    QProcess m_process;
    QString m_address;
    QTemporaryDir m_directory;
};

// `lumenpanel` on that address, with its system log in a file.
class PanelProcess {
public:
    explicit PanelProcess(const QString& address);
    ~PanelProcess();

    // Starts the display; arguments such as "logQtDebug"; display is the X display, or empty for no display.
    bool start(const QStringList& arguments = QStringList(), const QString& xDisplay = QString());
    // Waits for a line that holds the text, after the first `from` lines; its index, or -1.
    int waitForLog(const QString& text, int timeoutMs = PATIENCE_MS, int from = 0);
    QStringList log() const;
    // Asks for a screenshot by SIGUSR1 and reads it; a null image when none came.
    QImage screenshot();
    // Waits for the end; the exit status, -1 when it was killed by a signal or still runs.
    int waitForEnd(int timeoutMs = PATIENCE_MS);
    QProcess& process() { return m_process; }

private:
    QProcess m_process;
    QString m_address;
    QTemporaryDir m_directory;
};

// An X server of the panel's size, without a desktop.
class XServerProcess {
public:
    ~XServerProcess();

    // Starts it and waits until it takes clients.
    bool start();
    // Its name for DISPLAY, empty before the start.
    QString display() const { return m_display; }
    // Presses and releases a key by its name in X, such as "Up" or "Return", wherever the pointer is: there
    // is no window manager that would give the focus.
    bool press(const QString& key);

private:
    QProcess m_process;
    QString m_display;
};

// Terminal, panel and, if keys are to be pressed, an X server, on a bus address of their own. Whatever was
// started ends with the object, also where a check has failed.
class PanelDesk {
public:
    enum Display { OFFSCREEN, X_SERVER };

    explicit PanelDesk(const QString& purpose, Display display = OFFSCREEN);

    // Each starts what its name says; start() all of it, with the panel's debug log on, and waits until the
    // panel shows live values. Empty on success, else what did not come up.
    QString startTerminal();
    QString startPanel();
    QString start();

    bool press(const QString& key) { return xServer.press(key); }
    bool waitForKey(const QString& key, const QString& value, int timeoutMs = PATIENCE_MS);

private:
    const Display m_display;
    const QString m_address;

public:
    // In the order of their start; they end in the reverse one.
    XServerProcess xServer;
    TerminalProcess terminal;
    PanelProcess panel;
};

template <typename Condition> bool waitUntil(Condition condition, int timeoutMs)
{
    for (int waited = 0; !condition(); waited += 20) {
        if (waited >= timeoutMs) {
            return false;
        }
        QThread::msleep(20);
    }
    return true;
}

#endif
