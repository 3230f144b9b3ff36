// The keypad's driver: its socket, and the way of a key to the window.
#include "keypad.h"

#include <QCoreApplication>
#include <QFile>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QSocketNotifier>
#include <QWindow>

#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

const int LongestName = 32;

// The keys of the panel as its driver reports them: the OK-key held long is the space bar.
const struct {
    const char* name;
    int key;
    const char* text;
} keys[] = {
    {"up", Qt::Key_Up, ""},          {"down", Qt::Key_Down, ""},   {"left", Qt::Key_Left, ""},
    {"right", Qt::Key_Right, ""},    {"ok", Qt::Key_Return, "\r"}, {"long", Qt::Key_Space, " "},
    {"screenshot", Qt::Key_F12, ""},
};

int connectTo(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    struct sockaddr_un address;
    memset(&address, 0, sizeof(address));
    address.sun_family = AF_UNIX;
    if (name.isEmpty() || size_t(name.size()) >= sizeof(address.sun_path)) {
        errno = ENAMETOOLONG;
        return -1;
    }
    memcpy(address.sun_path, name.constData(), size_t(name.size()));
    const int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (fd < 0 || connect(fd, reinterpret_cast<struct sockaddr*>(&address), sizeof(address)) == 0)
        return fd;
    const int problem = errno;
    close(fd);
    errno = problem;
    return -1;
}

// A splash screen would swallow the key.
bool takesKeys(const QWindow* window)
{
    return window && window->isVisible() && window->type() != Qt::SplashScreen;
}

QWindow* receiver()
{
    if (takesKeys(QGuiApplication::focusWindow()))
        return QGuiApplication::focusWindow();
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow* const window : windows) {
        if (takesKeys(window))
            return window;
    }
    return nullptr;
}

// False if there is no window. Its handling of the press may destroy the window.
bool deliver(int key, const QString& text)
{
    const QPointer<QWindow> window(receiver());
    if (!window)
        return false;
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(window, &press);
    if (window) {
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(window, &release);
    }
    return true;
}

QByteArray press(const QByteArray& name)
{
    for (const auto& key : keys) {
        if (name == key.name)
            return (deliver(key.key, QString::fromLatin1(key.text)) ? "done " : "hidden ") + name;
    }
    return "unknown";
}

} // namespace

Keypad::Keypad(const QString& socketPath)
    : m_socket(connectTo(socketPath)), m_notifier(nullptr), m_tooLong(false), m_handling(false)
{
    if (m_socket < 0) {
        qWarning("The keypad has no connection to %s: %s", qPrintable(socketPath), strerror(errno));
        return;
    }
    m_notifier = new QSocketNotifier(m_socket, QSocketNotifier::Read, this);
    connect(m_notifier, SIGNAL(activated(int)), this, SLOT(takeKeys()));
}

Keypad::~Keypad()
{
    disconnectPath();
}

void Keypad::disconnectPath()
{
    if (m_socket < 0)
        return;
    m_notifier->setEnabled(false);
    close(m_socket);
    m_socket = -1;
    m_received.clear();
}

void Keypad::takeKeys()
{
    char bytes[1024];
    const ssize_t count = m_socket < 0 ? 0 : read(m_socket, bytes, sizeof(bytes));
    if (count > 0) {
        m_received.append(bytes, int(count));
        handleLines();
    } else if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
        disconnectPath();
    }
}

// One key after the other, also where a key's handling comes back here through an event loop of its own.
void Keypad::handleLines()
{
    if (m_handling)
        return;
    m_handling = true;
    int end;
    while ((end = int(m_received.indexOf('\n'))) >= 0) {
        const QByteArray line = m_received.left(end);
        m_received.remove(0, end + 1);
        const bool known = !m_tooLong && end <= LongestName;
        m_tooLong = false;
        answer(known ? press(line) : QByteArray("unknown"));
    }
    m_handling = false;
    if (m_received.size() > LongestName) {
        m_tooLong = true;
        m_received.clear();
    }
}

void Keypad::answer(const QByteArray& line)
{
    const QByteArray bytes = line + '\n';
    if (m_socket >= 0 && send(m_socket, bytes.constData(), size_t(bytes.size()),
                              MSG_NOSIGNAL | MSG_DONTWAIT) != ssize_t(bytes.size()))
        disconnectPath(); // who does not read the answers does not get more of them
}

QObject* KeypadPlugin::create(const QString& name, const QString& socketPath)
{
    if (name.compare(QLatin1String("deskkeypad"), Qt::CaseInsensitive) != 0)
        return nullptr;
    return new Keypad(socketPath);
}
