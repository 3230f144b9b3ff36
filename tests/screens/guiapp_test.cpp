// The application object, on the real bus thread and a real server. There is one application in a process,
// so whatever belongs to its start is tried in child processes: this same program in a role of its own.
#include "app/guiapp.h"
#include "busif/cbusifthread.h"
#include "common/log.h"
#include "common/paths.h"
#include "common/qtcompat.h"
#include "model/statusupdater.h"
#include "runtime/vx_log.h"
#include "sim/syslogtap/syslogtap.h"
#include "sim/terminal.h"
#include "support/messages.h"

#include <QKeyEvent>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStyle>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include <csignal>
#include <cstdlib>
#include <new>
#include <pthread.h>
#include <syslog.h>
#include <unistd.h>

// In the role "nomemory" the n-th non-throwing allocation of the program's own code fails.
static int allocationsLeft = -1;

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    if (allocationsLeft == 0) {
        return nullptr;
    }
    if (allocationsLeft > 0) {
        --allocationsLeft;
    }
    return std::malloc(size);
}

void* operator new(std::size_t size)
{
    void* const memory = std::malloc(size);
    if (!memory) {
        std::abort();
    }
    return memory;
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

// The Latin capital letter A with ring above, a smiling face (two UTF-16 units) and a NUL.
const char16_t foreignText[] = {0x00c5, 'b', 0xd83d, 0xde00, 'c', 0, 'd'};

// --- Roles -------------------------------------------------------------------------------------------------

int roleMessages(int& argc, char** argv)
{
    GuiApp::createInstance(argc, argv);
    qDebug("a debug line");
    logDebug() << "a debug line of our own";
    qInfo("an info line");
    qWarning("a warning");
    qCritical("an error");
    logWarning() << "network 100%n%s%d";
    logWarning() << QString::fromUtf16(foreignText, sizeof(foreignText) / sizeof(foreignText[0]));
    return 0;
}

int roleFatal(int& argc, char** argv)
{
    GuiApp::createInstance(argc, argv);
    qFatal("the end");
}

int roleNoMemory(int& argc, char** argv)
{
    allocationsLeft = atoi(getenv("ALLOCATIONS"));
    GuiApp::createInstance(argc, argv);
    return 0;
}

int roleDestructor(int& argc, char** argv)
{
    delete GuiApp::createInstance(argc, argv);
    return 0;
}

const struct {
    const char* name;
    int (*run)(int& argc, char** argv);
} roles[] = {
    {"role=messages", roleMessages},
    {"role=fatal", roleFatal},
    {"role=nomemory", roleNoMemory},
    {"role=destructor", roleDestructor},
};

// Runs this program in a role and returns what it wrote to standard error, its log lines included.
QStringList outputOfRole(const QString& role, const QStringList& arguments,
                         const QStringList& environment = QStringList())
{
    QProcess process;
    QStringList variables = QProcess::systemEnvironment();
    variables.append("QT_LOGGING_TO_CONSOLE=1");
    variables.append(environment);
    process.setEnvironment(variables);
    process.start(QCoreApplication::applicationFilePath(), QStringList("role=" + role) + arguments);
    if (!process.waitForFinished(30000)) {
        qFatal("the role %s did not end", qPrintable(role));
    }
    return QString::fromUtf8(process.readAllStandardError()).split('\n');
}

// A log line of our handler as a pattern: priority, prefix, thread number, text.
QRegularExpression logLine(int priority, const QString& prefix, const QString& text)
{
    return QRegularExpression("^<" + QString::number(priority) + "> gui: " + prefix +
                              "[0-9]+: " + QRegularExpression::escape(text) + "$");
}

int countOf(const QStringList& lines, const QRegularExpression& pattern)
{
    return int(lines.filter(pattern).size());
}

// --- A receiver of keys
// --------------------------------------------------------------------------------------

class KeyWidget : public QWidget {
public:
    explicit KeyWidget(QWidget* parent = nullptr) : QWidget(parent) {}

    QList<int> pressed;
    QList<int> released;
    QStringList* order = nullptr;
    bool accept = true;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        pressed.append(event->key());
        if (order) {
            order->append("widget");
        }
        event->setAccepted(accept);
    }
    void keyReleaseEvent(QKeyEvent* event) override { released.append(event->key()); }
};

const char SOME_KEY[] = "GuiApp::notify: Some key was pressed.";
const char DONE[] = "GuiApp::notify: Done handling the keypress.";

} // namespace

class GuiAppTest : public QObject {
    Q_OBJECT

public slots:
    void noteKey() { m_order.append("signal"); }

private slots:
    void initTestCase();
    void cleanup();

    // The start
    void startIsLoggedOnceAsGui();
    void secondCreateInstanceReturnsTheFirstAndConstructsNothing();
    void organisationIsSet();
    void styleIsThePlainOne();
    void resourcePathIsTheBuilds();
    void startUpFontIsEnglish();
    void modelExistsAndBusThreadRuns();

    // Arguments and messages
    void argumentTurnsTheDebugLogOn_data();
    void argumentTurnsTheDebugLogOn();
    void argumentsAreLoggedBeforeTheLogIsOpen();
    void messageOfEachTypeHasItsPrefixAndPriority();
    void infoMessagesAreNotWritten();
    void perCentSignsStayText();
    void whatAsciiLacksBecomesAQuestionMark();
    void fatalMessageIsWrittenAtPriorityZero();

    // Fonts
    void fontOfSizeAndLanguage_data();
    void fontOfSizeAndLanguage();
    void smallFontInJapaneseForTheLanguageInUse();
    void useFontTakesTheFamilyOfTheLanguage_data();
    void useFontTakesTheFamilyOfTheLanguage();
    void useFontDoesNotResolveTheLanguageInUse();
    void fontFileThatCannotBeLoadedIsLoggedAndTheFontMade();
    void fontFileIsLoaded();

    // Keys
    void panelKeyIsLoggedAndTold_data();
    void panelKeyIsLoggedAndTold();
    void panelKeyIsToldBeforeItIsDelivered();
    void otherKeysReachTheWidgetButAreNotTold_data();
    void otherKeysReachTheWidgetButAreNotTold();
    void pressThroughTheNativeWindowCountsOnce();
    void pressThatIsPassedOnToTheParentCountsOnce();
    void releaseIsDeliveredAndNotLogged();
    void pressForAnObjectThatIsNoWidgetIsNotLogged();

    // SIGUSR1
    void signalHandlerIsInstalledWithAnEmptyMask();
    void signalAsksForAScreenshot();
    void signalOnAnotherThreadIsHandledOnTheGuiThread();
    void eachSignalOfABurstIsAnswered();

    // Failures and the end
    void noMemoryForTheInstancePanics();
    void noMemoryForAFontPanics();
    void destructorIsLoggedAndDeletesTheBusThread();

private:
    QStringList m_order;
};

void GuiAppTest::initTestCase()
{
    QTRY_VERIFY_WITH_TIMEOUT(StatusUpdater::getStatusUpdater()->getHasConnectedToCBus(), 10000);
}

void GuiAppTest::cleanup()
{
    m_order.clear();
    StatusUpdater::getStatusUpdater()->setLanguage(LANG_ENGLISH);
    static_cast<GuiApp*>(qApp)->useFont(LANG_ENGLISH);
}

void GuiAppTest::startIsLoggedOnceAsGui()
{
    const QString text =
        QString::number(qtcompat::threadIdNumber()) + ": GuiApp::GuiApp(): Local GUI display starting up...";
    int found = 0;
    for (const syslogtap::Line& line : syslogtap::lines()) {
        if (line.text != text.toStdString()) {
            continue;
        }
        ++found;
        QCOMPARE(line.ident, std::string("gui"));
        QCOMPARE(line.facility, int(LOG_LOCAL1));
        QCOMPARE(line.priority, 7);
    }
    QCOMPARE(found, 1);
    QCOMPARE(int(LOG_LOCAL1), 136);
}

void GuiAppTest::secondCreateInstanceReturnsTheFirstAndConstructsNothing()
{
    const size_t linesBefore =
        syslogtap::count(7, QString("%1: GuiApp::GuiApp(): Local GUI display starting up...")
                                .arg(qtcompat::threadIdNumber())
                                .toStdString());
    QFont* const font = GuiApp::getFont(14, LANG_ENGLISH);
    int argc = 1;
    char name[] = "other";
    char* argv[] = {name, nullptr};
    QCOMPARE(static_cast<QObject*>(GuiApp::createInstance(argc, argv)), static_cast<QObject*>(qApp));
    QCOMPARE(GuiApp::getFont(14, LANG_ENGLISH), font);
    QCOMPARE(syslogtap::count(7, QString("%1: GuiApp::GuiApp(): Local GUI display starting up...")
                                     .arg(qtcompat::threadIdNumber())
                                     .toStdString()),
             linesBefore);
}

void GuiAppTest::organisationIsSet()
{
    QCOMPARE(QCoreApplication::organizationName(), QString("lumenpanel"));
    QCOMPARE(QCoreApplication::organizationDomain(), QString("lumenpanel.invalid"));
}

void GuiAppTest::styleIsThePlainOne()
{
    QCOMPARE(QApplication::style()->objectName(), QString("windows"));
}

void GuiAppTest::resourcePathIsTheBuilds()
{
    QCOMPARE(GuiApp::getResourcePath(), paths::resourcePath());
    paths::overrideForTest("/app/res/disp", nullptr, nullptr);
    QCOMPARE(GuiApp::getResourcePath(), QString("/app/res/disp"));
    paths::overrideForTest(nullptr, nullptr, nullptr);
}

void GuiAppTest::startUpFontIsEnglish()
{
    QCOMPARE(QApplication::font().family(), QString("helvetica"));
    QCOMPARE(QApplication::font().pixelSize(), 14);
}

void GuiAppTest::modelExistsAndBusThreadRuns()
{
    QVERIFY(StatusUpdater::getStatusUpdater()->getThreadIdCBus() != nullptr);
    QVERIFY(StatusUpdater::getStatusUpdater()->getThreadIdCBus() != QThread::currentThreadId());
}

void GuiAppTest::argumentTurnsTheDebugLogOn_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("debugOn");
    QTest::newRow("none") << QStringList() << false;
    QTest::newRow("the word") << QStringList("logQtDebug") << true;
    QTest::newRow("another case") << QStringList("LOGqtDEBUG") << true;
    QTest::newRow("inside a longer word") << QStringList("--with-logQtDebug=1") << true;
    QTest::newRow("stays set for the arguments behind it") << QStringList({"logQtDebug", "other"}) << true;
    QTest::newRow("a part of the word") << QStringList("logQtDebu") << false;
}

void GuiAppTest::argumentTurnsTheDebugLogOn()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, debugOn);
    const QStringList lines = outputOfRole("messages", arguments);
    QCOMPARE(countOf(lines, logLine(7, "QT DEBUG: ", "a debug line")), debugOn ? 1 : 0);
    QCOMPARE(countOf(lines, logLine(7, "QT DEBUG: ", "a debug line of our own")), debugOn ? 1 : 0);
    QCOMPARE(countOf(lines, QRegularExpression("QT DEBUG: ")) > 0, debugOn);
    QCOMPARE(countOf(lines, logLine(4, "QT WARNING: ", "a warning")), 1);
}

void GuiAppTest::argumentsAreLoggedBeforeTheLogIsOpen()
{
    const QStringList lines = outputOfRole("messages", QStringList({"first", "xlogqtdebugx"}));
    QCOMPARE(lines.count("argument[1]=first"), 1);
    QCOMPARE(lines.count("argument[2]=xlogqtdebugx"), 1);
    QCOMPARE(lines.count("myLogQtDebug=true"), 1);
    QVERIFY(lines.indexOf("argument[2]=xlogqtdebugx") < lines.indexOf("myLogQtDebug=true"));
}

void GuiAppTest::messageOfEachTypeHasItsPrefixAndPriority()
{
    const QStringList lines = outputOfRole("messages", QStringList("logQtDebug"));
    QCOMPARE(countOf(lines, logLine(7, "QT DEBUG: ", "a debug line")), 1);
    QCOMPARE(countOf(lines, logLine(4, "QT WARNING: ", "a warning")), 1);
    QCOMPARE(countOf(lines, logLine(2, "QT ERROR: ", "an error")), 1);
}

void GuiAppTest::infoMessagesAreNotWritten()
{
    const QStringList lines = outputOfRole("messages", QStringList("logQtDebug"));
    QCOMPARE(countOf(lines, QRegularExpression("an info line")), 0);
    QCOMPARE(countOf(lines, QRegularExpression("Undefined")), 0);
}

void GuiAppTest::perCentSignsStayText()
{
    const QStringList lines = outputOfRole("messages", QStringList());
    QCOMPARE(countOf(lines, logLine(4, "QT WARNING: ", "network 100%n%s%d")), 1);
}

void GuiAppTest::whatAsciiLacksBecomesAQuestionMark()
{
    const QStringList lines = outputOfRole("messages", QStringList());
    QCOMPARE(countOf(lines, logLine(4, "QT WARNING: ", "?b?c?d")), 1);
}

void GuiAppTest::fatalMessageIsWrittenAtPriorityZero()
{
    const QStringList lines = outputOfRole("fatal", QStringList());
    QCOMPARE(countOf(lines, logLine(0, "QT FATAL: ", "the end")), 1);
}

void GuiAppTest::fontOfSizeAndLanguage_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("family");
    QTest::addColumn<int>("pixels");
    const struct {
        int language;
        const char* family;
    } families[] = {
        {0, "helvetica"}, {1, "helvetica"}, {2, "helvetica"}, {3, "unifont"},    {4, "helvetica"},
        {5, "unifont"},   {6, "unifont"},   {8, "helvetica"}, {-1, "helvetica"},
    };
    const struct {
        int size;
        int pixels;
    } sizes[] = {{18, 18}, {14, 14}, {-1, 14}, {0, 14}, {17, 14}};
    for (const auto& family : families) {
        for (const auto& size : sizes) {
            QTest::addRow("size %d, language %d", size.size, family.language)
                << size.size << family.language << QString(family.family) << size.pixels;
        }
    }
}

void GuiAppTest::fontOfSizeAndLanguage()
{
    QFETCH(int, size);
    QFETCH(int, language);
    QFETCH(QString, family);
    QFETCH(int, pixels);
    QFont* const font = GuiApp::getFont(size, static_cast<LANG_ENUM>(language));
    QVERIFY(font);
    QCOMPARE(font->family(), family);
    QCOMPARE(font->pixelSize(), pixels);
    QCOMPARE(int(font->styleStrategy()), 256);
    QCOMPARE(GuiApp::getFont(size, static_cast<LANG_ENUM>(language)), font);
}

void GuiAppTest::smallFontInJapaneseForTheLanguageInUse()
{
    StatusUpdater::getStatusUpdater()->setLanguage(LANG_JAPANESE);
    QCOMPARE(GuiApp::getFont(-1, LANG_UNDEFINED)->family(), QString("unifont"));
    QCOMPARE(GuiApp::getFont(-1, LANG_UNDEFINED)->pixelSize(), 14);
    StatusUpdater::getStatusUpdater()->setLanguage(LANG_SPANISH);
    QCOMPARE(GuiApp::getFont(18, LANG_UNDEFINED)->family(), QString("helvetica"));
    QCOMPARE(GuiApp::getFont(18, LANG_UNDEFINED)->pixelSize(), 18);
}

void GuiAppTest::useFontTakesTheFamilyOfTheLanguage_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<bool>("unicode");
    const bool unicode[] = {false, false, false, true, false, true, true, false};
    for (int language = 0; language <= 7; ++language) {
        QTest::addRow("language %d", language) << language << unicode[language];
    }
}

void GuiAppTest::useFontTakesTheFamilyOfTheLanguage()
{
    QFETCH(int, language);
    QFETCH(bool, unicode);
    Messages messages;
    static_cast<GuiApp*>(qApp)->useFont(static_cast<LANG_ENUM>(language));
    QCOMPARE(QApplication::font().family(), QString(unicode ? "unifont" : "helvetica"));
    QCOMPARE(QApplication::font().pixelSize(), 14);
    QCOMPARE(messages.count(QtDebugMsg, "GuiApp::useFont(): About to set font to pFontLangUnicode_h11"),
             unicode ? 1 : 0);
    QCOMPARE(messages.count(QtDebugMsg, "GuiApp::useFont(): About to set font to pFontLangEn_h11"),
             unicode ? 0 : 1);
}

void GuiAppTest::useFontDoesNotResolveTheLanguageInUse()
{
    StatusUpdater::getStatusUpdater()->setLanguage(LANG_RUSSIAN);
    static_cast<GuiApp*>(qApp)->useFont(LANG_UNDEFINED);
    QCOMPARE(QApplication::font().family(), QString("helvetica"));
}

void GuiAppTest::fontFileThatCannotBeLoadedIsLoggedAndTheFontMade()
{
    Messages messages;
    QFont* const font = static_cast<GuiApp*>(qApp)->createFontPointer("/nowhere/no.ttf", "helvetica", 21);
    QCOMPARE(messages.count("GuiApp::createFontPointer(): Error!!! Could not load font with "
                            "filename=/nowhere/no.ttf"),
             1);
    QCOMPARE(font->family(), QString("helvetica"));
    QCOMPARE(font->pixelSize(), 21);
    delete font;
}

void GuiAppTest::fontFileIsLoaded()
{
    const QString file = "/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf";
    Messages messages;
    QFont* const font = static_cast<GuiApp*>(qApp)->createFontPointer(file, "DejaVu Sans Mono", 14);
    QCOMPARE(messages.count("GuiApp::createFontPointer(): file=" + file + " loaded successfully."), 1);
    QCOMPARE(font->family(), QString("DejaVu Sans Mono"));
    delete font;
}

void GuiAppTest::panelKeyIsLoggedAndTold_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("text");
    QTest::newRow("OK") << 0x1000004 << "Key_Return (OK-key) was pressed for receiver=.";
    QTest::newRow("left") << 0x1000012 << "Key_Left was pressed for receiver=.";
    QTest::newRow("up") << 0x1000013 << "Key_Up was pressed for receiver=.";
    QTest::newRow("right") << 0x1000014 << "Key_Right was pressed for receiver=.";
    QTest::newRow("down") << 0x1000015 << "Key_Down was pressed for receiver=.";
}

void GuiAppTest::panelKeyIsLoggedAndTold()
{
    QFETCH(int, key);
    QFETCH(QString, text);
    KeyWidget widget;
    widget.setObjectName("page");
    QSignalSpy spy(qApp, SIGNAL(someKeyWasPressed()));
    Messages messages;
    QTest::keyPress(&widget, static_cast<Qt::Key>(key));
    const QString receiver =
        "QWidget(0x" + QString::number(reinterpret_cast<quintptr>(&widget), 16) + ", name=page)";
    QCOMPARE(messages.texts().filter(QRegularExpression("^(GuiApp|Key)")),
             QStringList({SOME_KEY, text + receiver, DONE}));
    QCOMPARE(messages.count(QtDebugMsg, SOME_KEY), 1);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(widget.pressed, QList<int>({key}));
}

void GuiAppTest::panelKeyIsToldBeforeItIsDelivered()
{
    KeyWidget widget;
    widget.order = &m_order;
    connect(qApp, SIGNAL(someKeyWasPressed()), this, SLOT(noteKey()));
    QTest::keyPress(&widget, Qt::Key_Up);
    disconnect(qApp, SIGNAL(someKeyWasPressed()), this, SLOT(noteKey()));
    QCOMPARE(m_order, QStringList({"signal", "widget"}));
}

void GuiAppTest::otherKeysReachTheWidgetButAreNotTold_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("text");
    QTest::newRow("Space, a long OK") << 0x20 << " ";
    QTest::newRow("F12, a screenshot") << 0x100003b << "";
    QTest::newRow("Enter of a keypad") << int(Qt::Key_Enter) << "\r";
    QTest::newRow("a letter") << int(Qt::Key_A) << "a";
}

void GuiAppTest::otherKeysReachTheWidgetButAreNotTold()
{
    QFETCH(int, key);
    QFETCH(QString, text);
    KeyWidget widget;
    QSignalSpy spy(qApp, SIGNAL(someKeyWasPressed()));
    Messages messages;
    QTest::sendKeyEvent(QTest::Press, &widget, static_cast<Qt::Key>(key), text, Qt::NoModifier);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(widget.pressed, QList<int>({key}));
    QCOMPARE(messages.count(SOME_KEY), 1);
    QCOMPARE(messages.count(DONE), 1);
    QCOMPARE(messages.count("KeyPress: Unhandled key with key->text()=" + text +
                            ", key=" + QString::number(key) + " for receiver=QWidget(0x" +
                            QString::number(reinterpret_cast<quintptr>(&widget), 16) + ")"),
             1);
}

void GuiAppTest::pressThroughTheNativeWindowCountsOnce()
{
    KeyWidget widget;
    widget.setFixedSize(256, 64);
    widget.show();
    widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&widget));
    widget.setFocus();
    QSignalSpy spy(qApp, SIGNAL(someKeyWasPressed()));
    Messages messages;
    QTest::keyPress(widget.windowHandle(), Qt::Key_Down);
    QTRY_COMPARE(widget.pressed, QList<int>({int(Qt::Key_Down)}));
    QCOMPARE(messages.count(SOME_KEY), 1);
    QCOMPARE(messages.countOfPrefix("Key_Down was pressed for receiver=."), 1);
    QCOMPARE(messages.count(DONE), 1);
    QCOMPARE(spy.count(), 1);
}

void GuiAppTest::pressThatIsPassedOnToTheParentCountsOnce()
{
    KeyWidget parent;
    KeyWidget child(&parent);
    child.accept = false;
    QSignalSpy spy(qApp, SIGNAL(someKeyWasPressed()));
    Messages messages;
    QTest::keyPress(&child, Qt::Key_Left);
    QCOMPARE(child.pressed, QList<int>({int(Qt::Key_Left)}));
    QCOMPARE(parent.pressed, QList<int>({int(Qt::Key_Left)}));
    QCOMPARE(messages.count(SOME_KEY), 1);
    QCOMPARE(spy.count(), 1);
}

void GuiAppTest::releaseIsDeliveredAndNotLogged()
{
    KeyWidget widget;
    QSignalSpy spy(qApp, SIGNAL(someKeyWasPressed()));
    Messages messages;
    QTest::keyRelease(&widget, Qt::Key_Return);
    QCOMPARE(widget.released, QList<int>({int(Qt::Key_Return)}));
    QCOMPARE(messages.texts().filter(QRegularExpression("^(GuiApp|Key)")), QStringList());
    QCOMPARE(spy.count(), 0);
}

void GuiAppTest::pressForAnObjectThatIsNoWidgetIsNotLogged()
{
    QObject receiver;
    QSignalSpy spy(qApp, SIGNAL(someKeyWasPressed()));
    Messages messages;
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Left, Qt::NoModifier);
    QCoreApplication::sendEvent(&receiver, &event);
    QCOMPARE(messages.count(SOME_KEY), 0);
    QCOMPARE(spy.count(), 0);
}

void GuiAppTest::signalHandlerIsInstalledWithAnEmptyMask()
{
    QCOMPARE(SIGUSR1, 10);
    struct sigaction action;
    QCOMPARE(sigaction(SIGUSR1, nullptr, &action), 0);
    QCOMPARE(action.sa_flags & (SA_SIGINFO | SA_RESTART | SA_NODEFER | SA_RESETHAND), SA_SIGINFO);
    for (int number = 1; number < 32; ++number) {
        QCOMPARE(sigismember(&action.sa_mask, number), 0);
    }
}

void GuiAppTest::signalAsksForAScreenshot()
{
    QSignalSpy spy(StatusUpdater::getStatusUpdater(), SIGNAL(signalTakeScreenshot()));
    syslogtap_clear();
    raise(SIGUSR1);
    QCOMPARE(spy.count(), 0); // nothing is done in the handler itself
    QTRY_COMPARE(spy.count(), 1);
    QCOMPARE(syslogtap::count(
                 7, QString("%1: signal_handler(): signal=10").arg(qtcompat::threadIdNumber()).toStdString()),
             size_t(1));
}

void GuiAppTest::signalOnAnotherThreadIsHandledOnTheGuiThread()
{
    QSignalSpy spy(StatusUpdater::getStatusUpdater(), SIGNAL(signalTakeScreenshot()));
    syslogtap_clear();
    pthread_t thread;
    QCOMPARE(pthread_create(
                 &thread, nullptr,
                 [](void*) -> void* {
                     pthread_kill(pthread_self(), SIGUSR1);
                     return nullptr;
                 },
                 nullptr),
             0);
    pthread_join(thread, nullptr);
    QTRY_COMPARE(spy.count(), 1);
    QCOMPARE(syslogtap::count(
                 7, QString("%1: signal_handler(): signal=10").arg(qtcompat::threadIdNumber()).toStdString()),
             size_t(1));
}

void GuiAppTest::eachSignalOfABurstIsAnswered()
{
    QSignalSpy spy(StatusUpdater::getStatusUpdater(), SIGNAL(signalTakeScreenshot()));
    for (int i = 0; i < 5; ++i) {
        raise(SIGUSR1);
    }
    QTRY_COMPARE(spy.count(), 5);
}

void GuiAppTest::noMemoryForTheInstancePanics()
{
    const QStringList lines = outputOfRole("nomemory", QStringList(), QStringList("ALLOCATIONS=0"));
    QCOMPARE(countOf(lines, QRegularExpression("^<1> .*\\*\\*\\* ASSERT in guiapp at [0-9]+")), 1);
}

void GuiAppTest::noMemoryForAFontPanics()
{
    // The instance and the notifier of the signal pipe stand before the fonts.
    const QStringList lines = outputOfRole("nomemory", QStringList(), QStringList("ALLOCATIONS=2"));
    QCOMPARE(countOf(lines, QRegularExpression("Local GUI display starting up")), 1);
    QCOMPARE(countOf(lines, QRegularExpression("^<1> gui: \\*\\*\\* ASSERT in guiapp at [0-9]+")), 1);
}

void GuiAppTest::destructorIsLoggedAndDeletesTheBusThread()
{
    const QStringList lines = outputOfRole("destructor", QStringList());
    const int application = int(lines.indexOf("<7> gui: GuiApp::~GuiApp(): Destructor"));
    QVERIFY2(application >= 0, qPrintable(lines.join('\n')));
    QVERIFY(lines.indexOf("<7> gui: Inside destructor CBusIfThread::~CBusIfThread()") > application);
}

int main(int argc, char** argv)
{
    for (const auto& role : roles) {
        if (argc > 1 && !strcmp(argv[1], role.name)) {
            syslogtap_echo(1);
            // The role's own name is no argument of the program.
            argv[1] = argv[0];
            int left = argc - 1;
            const int result = role.run(left, argv + 1);
            _exit(result);
        }
    }
    sim::Terminal terminal;
    if (!terminal.running()) {
        qFatal("no terminal: %s", terminal.error().c_str());
    }
    terminal.useForProcess();
    syslogtap_start();
    char debugArgument[] = "logQtDebug";
    char* applicationArguments[] = {argv[0], debugArgument, nullptr};
    int applicationCount = 2;
    GuiApp::createInstance(applicationCount, applicationArguments);
    GuiAppTest test;
    const int result = QTest::qExec(&test, argc, argv);
    fflush(nullptr);
    _exit(result); // the bus thread never ends
}

#include "guiapp_test.moc"
