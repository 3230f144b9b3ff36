// The application object. See the header; here are also the message handler and the signal handler.
#include "app/guiapp.h"

#include "busif/cbusifthread.h"
#include "common/checked.h"
#include "common/log.h"
#include "common/paths.h"
#include "common/qtcompat.h"
#include "model/statusupdater.h"
#include "runtime/vx_log.h"

#include <QEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QSocketNotifier>
#include <QStringList>
#include <QThread>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <syslog.h>
#include <unistd.h>

namespace {

const char SOURCE[] = "guiapp";
const int SIZE_SMALL = 14;
const int SIZE_LARGE = 18;

// The keys of the panel that count as use of it, and how the log names them.
const struct {
    int key;
    const char* text;
} panelKeys[] = {
    {Qt::Key_Return, "Key_Return (OK-key) was pressed for receiver=."},
    {Qt::Key_Left, "Key_Left was pressed for receiver=."},
    {Qt::Key_Up, "Key_Up was pressed for receiver=."},
    {Qt::Key_Right, "Key_Right was pressed for receiver=."},
    {Qt::Key_Down, "Key_Down was pressed for receiver=."},
};

// How each kind of message reaches the system log. Kinds without a row are not written.
const struct {
    QtMsgType type;
    const char* prefix;
    int priority;
} messageKinds[] = {
    {QtDebugMsg, "QT DEBUG: ", LOG_DEBUG},
    {QtWarningMsg, "QT WARNING: ", LOG_WARNING},
    {QtCriticalMsg, "QT ERROR: ", LOG_CRIT},
    {QtFatalMsg, "QT FATAL: ", LOG_EMERG},
};

// The text in ASCII, one question mark for each character that ASCII lacks. A NUL counts as such a
// character, as the rest of the line would be lost behind it. Each per cent sign is doubled, since the
// text becomes a format.
QByteArray formatInAscii(const QString& text)
{
    QByteArray ascii;
    ascii.reserve(text.size() + 8);
    for (int i = 0; i < text.size(); ++i) {
        const QChar character = text.at(i);
        const ushort code = character.unicode();
        if (character.isLowSurrogate() && i > 0 && text.at(i - 1).isHighSurrogate())
            continue;
        ascii += (code == 0 || code > 127) ? '?' : static_cast<char>(code);
        if (code == '%')
            ascii += '%';
    }
    return ascii;
}

// Written by the signal handler, read by the notifier of the GUI thread. -1 while there is no pipe.
int signalPipe[2] = {-1, -1};

// Signal context, any thread. Logging and emitting a signal take locks that the interrupted thread may
// hold, and the process would hang. So the number goes through a pipe, and the GUI thread does the work
// in its own time. If the pipe is full, that many requests are waiting already and this one is lost.
void signal_handler(int signal, siginfo_t*, void*)
{
    const int savedErrno = errno;
    const unsigned char number = static_cast<unsigned char>(signal);
    const ssize_t written = write(signalPipe[1], &number, 1);
    (void)written;
    errno = savedErrno;
}

bool usesUnicodeFont(LANG_ENUM lang)
{
    return lang == LANG_RUSSIAN || lang == LANG_CHINESE || lang == LANG_JAPANESE;
}

} // namespace

GuiApp* GuiApp::m_pInstance = nullptr;
Window* GuiApp::m_pWindow = nullptr;
bool GuiApp::myLogQtDebug = false;
QFont* GuiApp::pFontLangEn_h11 = nullptr;
QFont* GuiApp::pFontLangEn_h13 = nullptr;
QFont* GuiApp::pFontLangUnicode_h11 = nullptr;
QFont* GuiApp::pFontLangUnicode_h13 = nullptr;

GuiApp* GuiApp::createInstance(int& argc, char** argv)
{
    if (!m_pInstance) {
        // The panel looks the same everywhere: the plain style, and no palette, font or style of the
        // desk on which it may run. Both must be told before the application exists.
        setDesktopSettingsAware(false);
        setStyle(QString::fromLatin1("windows"));
        GuiApp* const instance = new (std::nothrow) GuiApp(argc, argv);
        panelAssert(instance, SOURCE, __LINE__);
        m_pInstance = instance;
    }
    return m_pInstance;
}

// The order of the steps is part of the start: what a step logs goes where the steps before it have
// led the log, and the model must exist before the thread that feeds it.
GuiApp::GuiApp(int& argc, char** argv) : QApplication(argc, argv), m_pBusIfThread(nullptr)
{
    setOrganizationName(QString::fromLatin1("lumenpanel"));
    setOrganizationDomain(QString::fromLatin1("lumenpanel.invalid"));
    readArguments();
    installSignalHandler();
    openlog("gui", 0, LOG_LOCAL1);
    qtcompat::installMessageHandler(handleMessage);
    m_pInstance = this;
    vx_slog(LOG_DEBUG, "%lu: GuiApp::GuiApp(): Local GUI display starting up...", qtcompat::threadIdNumber());
    createFonts();
    setFont(*pFontLangEn_h11);
    StatusUpdater::getStatusUpdater();
    startBusThread();
}

GuiApp::~GuiApp()
{
    vx_slog(LOG_DEBUG, "GuiApp::~GuiApp(): Destructor");
    delete m_pBusIfThread;
}

// The only option of the program is an argument that holds "logQtDebug". The lines here still go where
// Qt itself sends them, standard error: the log isn't open yet.
void GuiApp::readArguments()
{
    const QStringList list = arguments();
    for (int i = 0; i < list.size(); ++i) {
        logDebug() << "argument[" << i << "]=" << list.at(i);
        if (list.at(i).contains(QLatin1String("logQtDebug"), Qt::CaseInsensitive)) {
            logDebug() << "myLogQtDebug=true";
            myLogQtDebug = true;
        }
    }
    setDebugLogWanted(myLogQtDebug);
}

void GuiApp::installSignalHandler()
{
    if (pipe2(signalPipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        logWarning() << "GuiApp::installSignalHandler(): ERROR!!! No pipe: " << strerror(errno);
        return;
    }
    QSocketNotifier* const notifier =
        checkedNew<QSocketNotifier>(SOURCE, __LINE__, signalPipe[0], QSocketNotifier::Read, this);
    connect(notifier, SIGNAL(activated(int)), this, SLOT(handleSignalByte()));

    struct sigaction action;
    memset(&action, 0, sizeof(action));
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_SIGINFO;
    action.sa_sigaction = signal_handler;
    sigaction(SIGUSR1, &action, nullptr);
}

// The second half of signal_handler, on the GUI thread.
void GuiApp::handleSignalByte()
{
    unsigned char number = 0;
    while (read(signalPipe[0], &number, 1) == 1) {
        vx_slog(LOG_DEBUG, "%lu: signal_handler(): signal=%d", qtcompat::threadIdNumber(), number);
        if (number == SIGUSR1)
            StatusUpdater::getStatusUpdater()->takeScreenshot();
    }
}

void GuiApp::createFonts()
{
    const QString noFile;
    const QString helvetica = QString::fromLatin1("helvetica");
    const QString unifont = QString::fromLatin1("unifont");
    pFontLangEn_h11 = createFontPointer(noFile, helvetica, SIZE_SMALL);
    pFontLangEn_h13 = createFontPointer(noFile, helvetica, SIZE_LARGE);
    pFontLangUnicode_h11 = createFontPointer(noFile, unifont, SIZE_SMALL);
    pFontLangUnicode_h13 = createFontPointer(noFile, unifont, SIZE_LARGE);
}

void GuiApp::startBusThread()
{
    m_pBusIfThread = checkedNew<CBusIfThread>(SOURCE, __LINE__);
    m_pBusIfThread->start(QThread::InheritPriority);
    connect(StatusUpdater::getStatusUpdater(), SIGNAL(signalSubscribeToPollRmValues(bool)), m_pBusIfThread,
            SLOT(handleSubscribeToPollRmValues(bool)));
}

Window* GuiApp::getMainWindowPointer()
{
    return m_pWindow;
}

void GuiApp::setMainWindowPointer(Window* window)
{
    logDebug() << "GuiApp::setMainWindowPointer(): Start of function.";
    m_pWindow = window;
}

QString GuiApp::getResourcePath()
{
    return paths::resourcePath();
}

QFont* GuiApp::getFont(int size, LANG_ENUM lang)
{
    if (lang == LANG_UNDEFINED)
        lang = StatusUpdater::getStatusUpdater()->getLanguage();
    if (usesUnicodeFont(lang))
        return size == SIZE_LARGE ? pFontLangUnicode_h13 : pFontLangUnicode_h11;
    return size == SIZE_LARGE ? pFontLangEn_h13 : pFontLangEn_h11;
}

void GuiApp::useFont(LANG_ENUM lang) const
{
    if (usesUnicodeFont(lang)) {
        logDebug() << "GuiApp::useFont(): About to set font to pFontLangUnicode_h11";
        QApplication::setFont(*pFontLangUnicode_h11);
    } else {
        logDebug() << "GuiApp::useFont(): About to set font to pFontLangEn_h11";
        QApplication::setFont(*pFontLangEn_h11);
    }
    qtcompat::deliverFontChange();
}

QFont* GuiApp::createFontPointer(const QString& fileName, const QString& family, int pixelSize) const
{
    if (!fileName.isEmpty()) {
        if (QFontDatabase::addApplicationFont(fileName) == -1)
            logDebug() << "GuiApp::createFontPointer(): Error!!! Could not load font with filename="
                       << fileName;
        else
            logDebug() << "GuiApp::createFontPointer(): file=" << fileName << " loaded successfully.";
    }
    QFont* const font = checkedNew<QFont>(SOURCE, __LINE__, family);
    font->setPixelSize(pixelSize);
    font->setStyleStrategy(QFont::NoAntialias);
    return font;
}

// Since Qt 5 a key press passes here twice: first for the native window, which then sends it to the
// focus widget. Only the delivery to a widget is the key press. A widget that ignores the event passes it
// on to its parents inside QApplication::notify, which doesn't come here again.
bool GuiApp::notify(QObject* receiver, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || !receiver || !receiver->isWidgetType())
        return QApplication::notify(receiver, event);
    const QKeyEvent* const keyEvent = static_cast<QKeyEvent*>(event);
    noticeKeyPress(receiver, keyEvent->key(), keyEvent->text());
    const bool result = QApplication::notify(receiver, event);
    logDebug() << "GuiApp::notify: Done handling the keypress.";
    return result;
}

// Logs the key and tells that the panel is in use. A long OK (Space) and F12 tell nothing.
void GuiApp::noticeKeyPress(const QObject* receiver, int key, const QString& text)
{
    logDebug() << "GuiApp::notify: Some key was pressed.";
    for (const auto& panelKey : panelKeys) {
        if (panelKey.key == key) {
            logDebug() << panelKey.text << receiver;
            emit someKeyWasPressed();
            return;
        }
    }
    logDebug() << "KeyPress: Unhandled key with key->text()=" << text << ", key=" << key
               << " for receiver=" << receiver;
}

// Any thread, no lock: the thread's number in the text tells the lines apart.
void GuiApp::handleMessage(QtMsgType type, const QString& text)
{
    if (type == QtDebugMsg && !myLogQtDebug)
        return;
    for (const auto& kind : messageKinds) {
        if (kind.type != type)
            continue;
        const QByteArray line =
            formatInAscii(QString::fromLatin1(kind.prefix) + QString::number(qtcompat::threadIdNumber()) +
                          QString::fromLatin1(": ") + text);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
        // The text is the format itself; formatInAscii has made it harmless.
        syslog(kind.priority, line.constData());
#pragma GCC diagnostic pop
        return;
    }
}
