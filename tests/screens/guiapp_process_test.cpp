// The application's start and end in processes of their own, since there is one application in a process:
// this same program in a role, whose system log comes back as text.
#include "screens/windowfixture.h"

#include "common/log.h"
#include "support/failingnew.h"
#include "support/patience.h"

#include <QProcess>
#include <QRegularExpression>

#include <cstdlib>

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
    grantedAllocations = atoi(getenv("ALLOCATIONS"));
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
    if (!process.waitForFinished(PATIENCE_MS)) {
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

} // namespace

class GuiAppProcessTest : public QObject {
    Q_OBJECT

private slots:
    // Arguments and messages
    void argumentTurnsTheDebugLogOn_data();
    void argumentTurnsTheDebugLogOn();
    void argumentsAreLoggedBeforeTheLogIsOpen();
    void messageOfEachTypeHasItsPrefixAndPriority();
    void infoMessagesAreNotWritten();
    void perCentSignsStayText();
    void whatAsciiLacksBecomesAQuestionMark();
    void fatalMessageIsWrittenAtPriorityZero();

    // Failures and the end
    void noMemoryForTheInstancePanics();
    void noMemoryForAFontPanics();
    void destructorIsLoggedAndDeletesTheBusThread();
};

void GuiAppProcessTest::argumentTurnsTheDebugLogOn_data()
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

void GuiAppProcessTest::argumentTurnsTheDebugLogOn()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, debugOn);
    const QStringList lines = outputOfRole("messages", arguments);
    QCOMPARE(countOf(lines, logLine(7, "QT DEBUG: ", "a debug line")), debugOn ? 1 : 0);
    QCOMPARE(countOf(lines, logLine(7, "QT DEBUG: ", "a debug line of our own")), debugOn ? 1 : 0);
    QCOMPARE(countOf(lines, QRegularExpression("QT DEBUG: ")) > 0, debugOn);
    QCOMPARE(countOf(lines, logLine(4, "QT WARNING: ", "a warning")), 1);
}

void GuiAppProcessTest::argumentsAreLoggedBeforeTheLogIsOpen()
{
    const QStringList lines = outputOfRole("messages", QStringList({"first", "xlogqtdebugx"}));
    QCOMPARE(lines.count("argument[1]=first"), 1);
    QCOMPARE(lines.count("argument[2]=xlogqtdebugx"), 1);
    QCOMPARE(lines.count("myLogQtDebug=true"), 1);
    QVERIFY(lines.indexOf("argument[2]=xlogqtdebugx") < lines.indexOf("myLogQtDebug=true"));
}

void GuiAppProcessTest::messageOfEachTypeHasItsPrefixAndPriority()
{
    const QStringList lines = outputOfRole("messages", QStringList("logQtDebug"));
    QCOMPARE(countOf(lines, logLine(7, "QT DEBUG: ", "a debug line")), 1);
    QCOMPARE(countOf(lines, logLine(4, "QT WARNING: ", "a warning")), 1);
    QCOMPARE(countOf(lines, logLine(2, "QT ERROR: ", "an error")), 1);
}

void GuiAppProcessTest::infoMessagesAreNotWritten()
{
    const QStringList lines = outputOfRole("messages", QStringList("logQtDebug"));
    QCOMPARE(countOf(lines, QRegularExpression("an info line")), 0);
    QCOMPARE(countOf(lines, QRegularExpression("Undefined")), 0);
}

void GuiAppProcessTest::perCentSignsStayText()
{
    const QStringList lines = outputOfRole("messages", QStringList());
    QCOMPARE(countOf(lines, logLine(4, "QT WARNING: ", "network 100%n%s%d")), 1);
}

void GuiAppProcessTest::whatAsciiLacksBecomesAQuestionMark()
{
    const QStringList lines = outputOfRole("messages", QStringList());
    QCOMPARE(countOf(lines, logLine(4, "QT WARNING: ", "?b?c?d")), 1);
}

void GuiAppProcessTest::fatalMessageIsWrittenAtPriorityZero()
{
    const QStringList lines = outputOfRole("fatal", QStringList());
    QCOMPARE(countOf(lines, logLine(0, "QT FATAL: ", "the end")), 1);
}

void GuiAppProcessTest::noMemoryForTheInstancePanics()
{
    const QStringList lines = outputOfRole("nomemory", QStringList(), QStringList("ALLOCATIONS=0"));
    QCOMPARE(countOf(lines, QRegularExpression("^<1> .*\\*\\*\\* ASSERT in guiapp at [0-9]+")), 1);
}

void GuiAppProcessTest::noMemoryForAFontPanics()
{
    // The instance and the notifier of the signal pipe stand before the fonts.
    const QStringList lines = outputOfRole("nomemory", QStringList(), QStringList("ALLOCATIONS=2"));
    QCOMPARE(countOf(lines, QRegularExpression("Local GUI display starting up")), 1);
    QCOMPARE(countOf(lines, QRegularExpression("^<1> gui: \\*\\*\\* ASSERT in guiapp at [0-9]+")), 1);
}

void GuiAppProcessTest::destructorIsLoggedAndDeletesTheBusThread()
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
    return windowfixture::run<GuiAppProcessTest>(argc, argv);
}

#include "guiapp_process_test.moc"
