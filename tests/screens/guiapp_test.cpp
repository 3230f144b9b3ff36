// The application object on the real bus thread and a real server: what its start leaves behind, its fonts,
// and SIGUSR1. Keys: guiapp_keys_test.cpp; what is tried in processes of its own: guiapp_process_test.cpp.
#include "screens/windowfixture.h"

#include "common/qtcompat.h"

#include "support/patience.h"

#include <QSignalSpy>
#include <QStyle>

#include <csignal>
#include <pthread.h>
#include <syslog.h>

using namespace windowfixture;

class GuiAppTest : public QObject {
    Q_OBJECT

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

    // Fonts
    void fontOfSizeAndLanguage_data();
    void fontOfSizeAndLanguage();
    void smallFontInJapaneseForTheLanguageInUse();
    void useFontTakesTheFamilyOfTheLanguage_data();
    void useFontTakesTheFamilyOfTheLanguage();
    void useFontDoesNotResolveTheLanguageInUse();
    void fontFileThatCannotBeLoadedIsLoggedAndTheFontMade();
    void fontFileIsLoaded();

    // SIGUSR1
    void signalHandlerIsInstalledWithAnEmptyMask();
    void signalAsksForAScreenshot();
    void signalOnAnotherThreadIsHandledOnTheGuiThread();
    void eachSignalOfABurstIsAnswered();
};

void GuiAppTest::initTestCase()
{
    QTRY_VERIFY_WITH_TIMEOUT(model()->getHasConnectedToCBus(), PATIENCE_MS);
}

void GuiAppTest::cleanup()
{
    model()->setLanguage(LANG_ENGLISH);
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
    QVERIFY(model()->getThreadIdCBus() != nullptr);
    QVERIFY(model()->getThreadIdCBus() != QThread::currentThreadId());
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
    model()->setLanguage(LANG_JAPANESE);
    QCOMPARE(GuiApp::getFont(-1, LANG_UNDEFINED)->family(), QString("unifont"));
    QCOMPARE(GuiApp::getFont(-1, LANG_UNDEFINED)->pixelSize(), 14);
    model()->setLanguage(LANG_SPANISH);
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
    model()->setLanguage(LANG_RUSSIAN);
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
    QSignalSpy spy(model(), SIGNAL(signalTakeScreenshot()));
    syslogtap_clear();
    raise(SIGUSR1);
    QCOMPARE(spy.count(), 0); // nothing is done in the handler itself
    QTRY_COMPARE_WITH_TIMEOUT(spy.count(), 1, PATIENCE_MS);
    QCOMPARE(syslogtap::count(
                 7, QString("%1: signal_handler(): signal=10").arg(qtcompat::threadIdNumber()).toStdString()),
             size_t(1));
}

void GuiAppTest::signalOnAnotherThreadIsHandledOnTheGuiThread()
{
    QSignalSpy spy(model(), SIGNAL(signalTakeScreenshot()));
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
    QTRY_COMPARE_WITH_TIMEOUT(spy.count(), 1, PATIENCE_MS);
    QCOMPARE(syslogtap::count(
                 7, QString("%1: signal_handler(): signal=10").arg(qtcompat::threadIdNumber()).toStdString()),
             size_t(1));
}

void GuiAppTest::eachSignalOfABurstIsAnswered()
{
    QSignalSpy spy(model(), SIGNAL(signalTakeScreenshot()));
    for (int i = 0; i < 5; ++i) {
        raise(SIGUSR1);
    }
    QTRY_COMPARE_WITH_TIMEOUT(spy.count(), 5, PATIENCE_MS);
}

int main(int argc, char** argv)
{
    return windowfixture::run<GuiAppTest>(argc, argv);
}

#include "guiapp_test.moc"
