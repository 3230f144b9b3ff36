// The main window: the language, and how the model drives the screens by its state events and the SIM.
#include "screens/windowfixture.h"

#include "support/qmfile.h"

#include <QLabel>
#include <QScopedPointer>

#include <thread>

using namespace windowfixture;

class WindowFlowTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    // Language
    void languageHasItsFile_data();
    void languageHasItsFile();
    void missingTranslationLeavesTextsButChangesTheFont();
    void missingTranslationTakesTheOldOneAway();
    void languageChangeReachesScreensAndModel();

    // State events
    void pointingBringsUpItsScreen();
    void endOfPointingLeavesItsScreen_data();
    void endOfPointingLeavesItsScreen();
    void unknownStateEventIsLogged();
    void stateEventCrossesThreads();
    void statusTextIsUpdatedAfterEachStateEvent_data();
    void statusTextIsUpdatedAfterEachStateEvent();
    void simThatNeedsItsPinBringsUpThePinScreen();
    void simThatIsBlockedOrLockedLeadsToTheStatusScreen_data();
    void simThatIsBlockedOrLockedLeadsToTheStatusScreen();
    void unknownSimChangesNothing();
    void absentOrInvalidSimOnlyHidesThePinScreen_data();
    void absentOrInvalidSimOnlyHidesThePinScreen();
    void readySimAsksForPointing();
    void readySimWaitsForTheSystem();
    void readySimWithoutPointingShowsTheStatusScreen_data();
    void readySimWithoutPointingShowsTheStatusScreen();

private:
    Window* makeWindow();
    // From here on translations come from the test's own directory. The icons must be loaded by then.
    void useOwnTranslations();

    QScopedPointer<Window> m_window;
    QScopedPointer<QTemporaryDir> m_directory;
    QByteArray m_files;
    QByteArray m_contrast;
};

void WindowFlowTest::init()
{
    m_directory.reset(new QTemporaryDir);
    m_files = m_directory->path().toUtf8();
    m_contrast = m_directory->filePath("contrast").toUtf8();
    QFile(m_contrast).open(QIODevice::WriteOnly);
    paths::overrideForTest(nullptr, m_files.constData(), m_contrast.constData());
    resetModel();
}

void WindowFlowTest::cleanup()
{
    m_window.reset();
    paths::overrideForTest(nullptr, nullptr, nullptr);
}

Window* WindowFlowTest::makeWindow()
{
    m_window.reset(new Window);
    return m_window.data();
}

void WindowFlowTest::useOwnTranslations()
{
    paths::overrideForTest(m_files.constData(), m_files.constData(), m_contrast.constData());
}

void WindowFlowTest::languageHasItsFile_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("file");
    QTest::newRow("English") << 0 << "i18n_en";
    QTest::newRow("French") << 1 << "i18n_fr";
    QTest::newRow("German") << 2 << "i18n_de";
    QTest::newRow("Russian") << 3 << "i18n_ru";
    QTest::newRow("Spanish") << 4 << "i18n_es";
    QTest::newRow("Chinese") << 5 << "i18n_zh";
    QTest::newRow("Japanese") << 6 << "i18n_ja";
    QTest::newRow("undefined") << 7 << "i18n_en";
    QTest::newRow("above all languages") << 8 << "i18n_en";
}

void WindowFlowTest::languageHasItsFile()
{
    QFETCH(int, language);
    QFETCH(QString, file);
    makeWindow();
    useOwnTranslations();
    QVERIFY(writeQmFile(m_directory->filePath(file + ".qm"),
                        {{"StatusUpdater", "EV_ALARM_SIM_MODULE", "translated " + file}}));
    Messages messages;
    m_window->handleRequestLoadLanguage(static_cast<LANG_ENUM>(language));
    QCOMPARE(messages.count("Window::loadLanguage(): translation file " + file + " installed."), 1);
    QCOMPARE(QCoreApplication::translate("StatusUpdater", "EV_ALARM_SIM_MODULE"), "translated " + file);
}

void WindowFlowTest::missingTranslationLeavesTextsButChangesTheFont()
{
    makeWindow();
    useOwnTranslations();
    Messages messages;
    m_window->handleRequestLoadLanguage(LANG_RUSSIAN);
    QCOMPARE(messages.count("Window::loadLanguage(): ERROR!!! Can not load translation file i18n_ru for "
                            "path=" +
                            m_directory->path() + " !!!"),
             1);
    QCOMPARE(QApplication::font().family(), QString("unifont"));
    QCOMPARE(QCoreApplication::translate("StatusUpdater", "EV_ALARM_SIM_MODULE"),
             QString("EV_ALARM_SIM_MODULE"));
}

void WindowFlowTest::missingTranslationTakesTheOldOneAway()
{
    makeWindow();
    useOwnTranslations();
    QVERIFY(writeQmFile(m_directory->filePath("i18n_de.qm"),
                        {{"StatusUpdater", "EV_ALARM_SIM_MODULE", "SIM defekt"}}));
    m_window->handleRequestLoadLanguage(LANG_GERMAN);
    QCOMPARE(QCoreApplication::translate("StatusUpdater", "EV_ALARM_SIM_MODULE"), QString("SIM defekt"));
    m_window->handleRequestLoadLanguage(LANG_FRENCH);
    QCOMPARE(QCoreApplication::translate("StatusUpdater", "EV_ALARM_SIM_MODULE"),
             QString("EV_ALARM_SIM_MODULE"));
}

void WindowFlowTest::languageChangeReachesScreensAndModel()
{
    makeWindow();
    useOwnTranslations();
    QCoreApplication::sendPostedEvents();
    Messages messages;
    QVERIFY(writeQmFile(m_directory->filePath("i18n_de.qm"),
                        {{"StatusUpdater", "EV_ALARM_SIM_MODULE", "SIM defekt"}}));
    model()->setLanguage(LANG_GERMAN); // through the model's signal
    QCoreApplication::sendPostedEvents();
    QCOMPARE(messages.count("Screen::changeEvent(): LanguageChange. Shall run retranslate."), 8);
    QCOMPARE(model()->getEventText(EV_ALARM_SIM_MODULE), QString("SIM defekt"));
}

void WindowFlowTest::pointingBringsUpItsScreen()
{
    makeWindow();
    m_window->showScreen(Screen::SCREEN_MENU, true);
    terminal().clearLogs();
    Messages messages;
    m_window->handleStateEvent(STATE_EVENT_POINTING);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_POINTING);
    QCOMPARE(messages.countOfPrefix("Window::removePopupIfExist(No debug text for eventId=0x10109)"), 1);
    QVERIFY(terminal().waitForWrite("ram.powersave.activity.display", sim::Value::integer(1)));
    m_window->handleStateEvent(STATE_EVENT_POINTING); // it is up: no second change
    m_window->handleStateEvent(STATE_EVENT_NOT_POINTED);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_MENU); // added to the history
}

void WindowFlowTest::endOfPointingLeavesItsScreen_data()
{
    QTest::addColumn<int>("event");
    QTest::newRow("not pointed") << int(STATE_EVENT_NOT_POINTED);
    QTest::newRow("pointed") << int(STATE_EVENT_POINTED);
}

void WindowFlowTest::endOfPointingLeavesItsScreen()
{
    QFETCH(int, event);
    makeWindow();
    m_window->showScreen(Screen::SCREEN_POINTING, true);
    m_window->handleStateEvent(static_cast<STATE_EVENT>(event));
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_STATUS);
}

void WindowFlowTest::unknownStateEventIsLogged()
{
    makeWindow();
    Messages messages;
    m_window->handleStateEvent(static_cast<STATE_EVENT>(99));
    QCOMPARE(messages.count("Window::handleStateEvent(STATE_EVENT stateEvent): ERROR!!!! Unknown "
                            "stateEvent=99"),
             1);
    QCOMPARE(messages.count("Window::handleStateEvent(STATE_EVENT stateEvent): stateEvent=99: About to run "
                            "setStatusText()"),
             1);
}

void WindowFlowTest::stateEventCrossesThreads()
{
    makeWindow();
    m_window->showScreen(Screen::SCREEN_POINTING, false);
    std::thread([] { emit model()->stateEventReceived(STATE_EVENT_POINTED); }).join();
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_POINTING); // queued
    QTRY_COMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_STATUS);
}

void WindowFlowTest::statusTextIsUpdatedAfterEachStateEvent_data()
{
    QTest::addColumn<int>("event");
    for (int event : {3, 4, 5, 11, 99}) {
        QTest::addRow("%d", event) << event;
    }
}

void WindowFlowTest::statusTextIsUpdatedAfterEachStateEvent()
{
    QFETCH(int, event);
    makeWindow();
    m_window->setStatusText("a text of the test");
    m_window->handleStateEvent(static_cast<STATE_EVENT>(event));
    for (QLabel* label : m_window->findChildren<QLabel*>()) {
        QVERIFY(!label->text().contains("a text of the test"));
    }
}

void WindowFlowTest::simThatNeedsItsPinBringsUpThePinScreen()
{
    makeWindow();
    QVERIFY(setSim(SIM_PIN_NEEDED));
    QTRY_COMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_ENTER_PIN);
}

void WindowFlowTest::simThatIsBlockedOrLockedLeadsToTheStatusScreen_data()
{
    QTest::addColumn<int>("sim");
    QTest::newRow("blocked") << int(SIM_BLOCKED);
    QTest::newRow("locked") << int(SIM_LOCKED);
}

void WindowFlowTest::simThatIsBlockedOrLockedLeadsToTheStatusScreen()
{
    QFETCH(int, sim);
    QVERIFY(setSim(sim));
    makeWindow();
    m_window->showScreen(Screen::SCREEN_MENU, false);
    m_window->showScreen(Screen::SCREEN_ENTER_PIN, true);
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_STATUS); // not back to the menu
}

void WindowFlowTest::unknownSimChangesNothing()
{
    QVERIFY(setSim(SIM_STATUS_UNKNOWN));
    makeWindow();
    m_window->showScreen(Screen::SCREEN_ENTER_PIN, true);
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_ENTER_PIN);
}

void WindowFlowTest::absentOrInvalidSimOnlyHidesThePinScreen_data()
{
    QTest::addColumn<int>("sim");
    QTest::newRow("absent") << int(SIM_NOT_PRESENT);
    QTest::newRow("invalid") << int(SIM_INVALID);
}

void WindowFlowTest::absentOrInvalidSimOnlyHidesThePinScreen()
{
    QFETCH(int, sim);
    QVERIFY(setSim(sim));
    makeWindow();
    m_window->showScreen(Screen::SCREEN_MENU, false);
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_MENU);
    m_window->showScreen(Screen::SCREEN_ENTER_PIN, true);
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_MENU);
}

void WindowFlowTest::readySimAsksForPointing()
{
    QVERIFY(setSim(SIM_READY));
    model()->setExtendedSystemStatus(10);
    model()->setWanActive(WAN_ACTIVE_BGAN);
    makeWindow();
    m_window->showScreen(Screen::SCREEN_MENU, false);
    terminal().settle();
    terminal().clearLogs();
    Messages messages;
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(messages.count("Window::handleEventSimStatusChanged(): Request pointing started, as SIM_READY "
                            "and extendedSystemStatus=10"),
             1);
    QVERIFY(terminal().waitForMessage("bp_ctrl.pointing"));
    QCOMPARE(terminal().messagesNamed("bp_ctrl.pointing").at(0).text(), std::string("start"));
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_MENU); // stays until the pointing begins
}

void WindowFlowTest::readySimWaitsForTheSystem()
{
    QVERIFY(setSim(SIM_READY));
    model()->setWanActive(WAN_ACTIVE_BGAN);
    makeWindow();
    model()->setExtendedSystemStatus(9);
    m_window->showScreen(Screen::SCREEN_MENU, false);
    terminal().settle();
    terminal().clearLogs();
    Messages messages;
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(messages.count("Window::handleEventSimStatusChanged(): SIM_READY, but do not request pointing "
                            "started yet, as extendedSystemStatus=9"),
             1);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_MENU);
    terminal().settle();
    QCOMPARE(terminal().messagesNamed("bp_ctrl.pointing").size(), size_t(0));
}

void WindowFlowTest::readySimWithoutPointingShowsTheStatusScreen_data()
{
    QTest::addColumn<int>("atStartup");
    QTest::addColumn<int>("upload");
    QTest::addColumn<int>("wan");
    QTest::newRow("pointing at start-up is off") << 0 << 0 << int(WAN_ACTIVE_BGAN);
    QTest::newRow("software upload") << 1 << 1 << int(WAN_ACTIVE_BGAN);
    QTest::newRow("modem") << 1 << 0 << int(WAN_ACTIVE_MODEM);
    QTest::newRow("modem and BGAN") << 1 << 0 << int(WAN_ACTIVE_MODEM_AND_BGAN);
}

void WindowFlowTest::readySimWithoutPointingShowsTheStatusScreen()
{
    QFETCH(int, atStartup);
    QFETCH(int, upload);
    QFETCH(int, wan);
    QVERIFY(setSim(SIM_READY));
    model()->setPointingAtStartup(atStartup);
    model()->setWanActive(static_cast<ENUM_WAN_ACTIVE>(wan));
    model()->setSwUploadStatus(upload, 0, 512);
    makeWindow();
    model()->setExtendedSystemStatus(11);
    m_window->showScreen(Screen::SCREEN_MENU, false);
    terminal().settle();
    terminal().clearLogs();
    m_window->handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_STATUS);
    terminal().settle();
    QCOMPARE(terminal().messagesNamed("bp_ctrl.pointing").size(), size_t(0));
}

int main(int argc, char** argv)
{
    return windowfixture::run<WindowFlowTest>(argc, argv);
}

#include "window_flow_test.moc"
