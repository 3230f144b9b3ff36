// The main window: its construction, the screen changes with their history, and the first show.
//
// The popup queue is always empty so far; the rules that need a popup on display follow with it.
#include "screens/windowfixture.h"

#include "screens/screenpopup.h"
#include "screens/screenstatus.h"
#include <QLabel>

#include <QGridLayout>
#include <QScopedPointer>
#include <QSplashScreen>

#include <syslog.h>

using namespace windowfixture;

namespace {

// The order in which the screens go.
const Screen::SCREEN_ID_ENUM ALL_IDS[] = {
    Screen::SCREEN_STATUS, Screen::SCREEN_BATTERY, Screen::SCREEN_ANTENNA,  Screen::SCREEN_ACTION,
    Screen::SCREEN_POPUP,  Screen::SCREEN_MENU,    Screen::SCREEN_POINTING, Screen::SCREEN_ENTER_PIN,
};

// A number that is no screen, within the range of the enumeration.
const Screen::SCREEN_ID_ENUM NO_SCREEN = static_cast<Screen::SCREEN_ID_ENUM>(5);

// Notes which top-level widgets are shown, and whether the backlight is allowed by then.
class ShowOrder : public QObject {
public:
    QStringList shown;

    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        if (event->type() == QEvent::Show && receiver->isWidgetType()) {
            const QWidget* const widget = static_cast<QWidget*>(receiver);
            if (widget->isWindow()) {
                shown.append(QString("%1 %2x%3, %4")
                                 .arg(qobject_cast<QSplashScreen*>(receiver) ? "splash" : "window")
                                 .arg(widget->width())
                                 .arg(widget->height())
                                 .arg(model()->getBrightnessAllowed() ? "lit" : "dark"));
            }
        }
        return false;
    }
};

} // namespace

class WindowTest : public QObject {
    Q_OBJECT

public slots:
    void noteDestroyed(QObject* object) { m_destroyed.append(object); }

private slots:
    void init();
    void cleanup();

    // Construction
    void constructorTakesItsStepsInOrder();
    void constructorTellsTheApplication();
    void windowIsThePanel();
    void startScreenIsTheStatusScreen();
    void popupScreenIsInitialisedDuringConstruction();
    void constructorFollowsTheModelThatExisted();
    void constructorHandlesPointingThatRuns();
    void constructorAsksForCipheringOnlyWhereItIsNeitherOnNorUnread_data();
    void constructorAsksForCipheringOnlyWhereItIsNeitherOnNorUnread();
    void signalOfTheModelReachesItsSlot_data();
    void signalOfTheModelReachesItsSlot();

    // Show
    void showIsNotRunByTheConstructorBeforeTheTerminalIsUp();
    void showBringsTheWindowAndThenTheBacklight();
    void blackSplashComesBeforeTheWindow();
    void showTwiceIsAnErrorAndHarmless();
    void softwareUpdateShowsTheWindow();
    void modelKnowsTheWindowsState();

    // Screen changes
    void statusScreenShownAgainIsNotRefreshed();
    void statusScreenIsRefreshedWhenItComesUp();
    void batteryFromTheMenuAndBack();
    void historyTestsTheNewScreenAndAppendsTheOldOne();
    void statusPopupAndPointingNeverStandInTheHistory();
    void withoutAddToHistoryNothingIsAdded();
    void unknownScreenChangesNothingButTheHistory();
    void oneScreenIsVisibleAndHasTheFocus();
    void screensByIdAndName_data();
    void screensByIdAndName();
    void unknownIdHasNoScreen();
    void currentScreenIsTheOneSetVisible();

    // Going back
    void backToTheHistoryThenToTheStatusScreen();
    void backRemovesTheCurrentScreenFromTheHistory();
    void ofTwoEqualNeighboursOneStays();
    void backInPointingModeLeadsToPointing();
    void hiddenScreenLeavesTheHistoryOnce();
    void hidingTheCurrentScreenShowsThePreviousOne();
    void hidingPointingWithEmptyHistoryShowsTheStatusScreen();
    void hidingPointingInPointingModeShowsItAgain();

    // Forwarding and the end
    void statusTextGoesToTheStatusScreen();
    void historyIsWrittenToTheLog();
    void destructorDeletesTheScreensInOrder();

private:
    Window* makeWindow();
    // Shown, active, and so with a focus widget.
    Window* makeVisibleWindow();

    QScopedPointer<Window> m_window;
    QScopedPointer<QTemporaryDir> m_directory;
    QByteArray m_files;
    QByteArray m_contrast;
    QList<QObject*> m_destroyed;
};

void WindowTest::init()
{
    m_directory.reset(new QTemporaryDir);
    m_files = m_directory->path().toUtf8();
    m_contrast = m_directory->filePath("contrast").toUtf8();
    QFile(m_contrast).open(QIODevice::WriteOnly);
    paths::overrideForTest(nullptr, m_files.constData(), m_contrast.constData());
    resetModel();
    syslogtap_clear();
    m_destroyed.clear();
}

void WindowTest::cleanup()
{
    m_window.reset();
    paths::overrideForTest(nullptr, nullptr, nullptr);
}

Window* WindowTest::makeWindow()
{
    m_window.reset(new Window);
    return m_window.data();
}

Window* WindowTest::makeVisibleWindow()
{
    Window* const window = makeWindow();
    window->show();
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window)) {
        qFatal("the window did not become active");
    }
    return window;
}

void WindowTest::constructorTakesItsStepsInOrder()
{
    Messages messages;
    makeWindow();
    const QStringList steps = {
        "Window::Window(): Start of constructor.",
        "GuiApp::setMainWindowPointer(): Start of function.",
        "Platform detected to be q520 (or at least it includes a Radio Module).",
        "Screen::Screen(): Start of constructor. screenId=11",
        "Screen::Screen(): Start of constructor. screenId=7",
        "StatusUpdater::subscribeToChanges(): Value changed. About to emit signal "
        "signalSubscribeToPollRmValues(false)",
        "StatusUpdater::subscribeToChanges(): Value changed. About to emit signal "
        "signalSubscribeToPollRmValues(true)",
        "ShowScreen screenId=7 (SCREEN_STATUS) is already shown. But now shows it again to be safe.",
        "Window::Window(): About to connect stateEventReceived with handleStateEvent",
        "Window::handleRequestLoadLanguage(): Start of function.",
        "Window::handleSignalExtendedSystemStatusChanged(): getExtendedSystemStatus()=0",
        "Window::handleSignalSwUploadActiveChanged(): swUploadActive=0",
        "Window::Window(): getPointingMode() != POINTING_STATUS_POINTING",
        "Window::handleStateEvent(STATE_EVENT stateEvent): stateEvent=11: About to run setStatusText()",
        "Window::handleModemChanged(): wanActive = ",
        "Window::Window(): Now test if main window is allowed to be shown.",
        "Window::handleSignalExtendedSystemStatusChanged(): getExtendedSystemStatus()=0",
        "Window::Window(): End of constructor.",
    };
    const QStringList texts = messages.texts();
    int position = 0;
    for (const QString& step : steps) {
        while (position < texts.size() && !texts.at(position).startsWith(step)) {
            ++position;
        }
        QVERIFY2(position < texts.size(), qPrintable(step));
        ++position;
    }
}

void WindowTest::constructorTellsTheApplication()
{
    QCOMPARE(GuiApp::getMainWindowPointer(), static_cast<Window*>(nullptr));
    Window* const window = makeWindow();
    QCOMPARE(GuiApp::getMainWindowPointer(), window);
}

void WindowTest::windowIsThePanel()
{
    Window* const window = makeWindow();
    QCOMPARE(window->geometry(), QRect(QPoint(0, 0), QPoint(255, 63)));
    QCOMPARE(window->minimumSize(), QSize(256, 64));
    QCOMPARE(window->maximumSize(), QSize(256, 64));
    QCOMPARE(window->sizePolicy().horizontalPolicy(), QSizePolicy::Maximum);
    QCOMPARE(window->sizePolicy().verticalPolicy(), QSizePolicy::Maximum);
    QVERIFY(window->windowFlags() & Qt::FramelessWindowHint);
    QVERIFY(!(window->windowFlags() &
              (Qt::WindowTitleHint | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint) &
              ~Qt::FramelessWindowHint));
    QGridLayout* const layout = qobject_cast<QGridLayout*>(window->layout());
    QVERIFY(layout);
    QCOMPARE(layout->alignment(), Qt::Alignment(Qt::AlignCenter));
    QCOMPARE(layout->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(layout->itemAt(0)->widget(), window->getScreenById(Screen::SCREEN_POPUP));
    QCOMPARE(layout->itemAt(1)->widget(), window->getScreenById(Screen::SCREEN_STATUS));
}

void WindowTest::startScreenIsTheStatusScreen()
{
    Window* const window = makeWindow();
    QCOMPARE(window->getCurrentScreenId(), Screen::SCREEN_STATUS);
    QVERIFY(!window->getScreenById(Screen::SCREEN_STATUS)->isHidden());
    QVERIFY(window->getScreenById(Screen::SCREEN_POPUP)->isHidden());
    QVERIFY(!window->isVisible());
}

void WindowTest::popupScreenIsInitialisedDuringConstruction()
{
    terminal().clearLogs();
    makeWindow();
    // Off and on again, so that the terminal hears of the subscription.
    QVERIFY(terminal().waitForWrite("ram.status.signal_strength.update_interval", sim::Value::integer(0)));
    QVERIFY(terminal().waitForWrite("ram.status.signal_strength.update_interval", sim::Value::integer(1000)));
}

void WindowTest::constructorFollowsTheModelThatExisted()
{
    model()->setExtendedSystemStatus(10);
    model()->setLanguage(LANG_JAPANESE);
    Messages messages;
    makeWindow();
    QVERIFY(m_window->isVisible());
    QCOMPARE(QApplication::font().family(), QString("unifont"));
    QCOMPARE(messages.count("Window::handleSignalExtendedSystemStatusChanged(): "
                            "getExtendedSystemStatus()=10"),
             2);
}

void WindowTest::constructorHandlesPointingThatRuns()
{
    model()->setPointingMode(POINTING_STATUS_POINTING);
    Messages messages;
    makeWindow();
    QCOMPARE(messages.count("Window::Window(): getPointingMode()==POINTING_STATUS_POINTING"), 1);
    QCOMPARE(messages.count("Window::handleStateEvent(STATE_EVENT stateEvent): stateEvent=4: About to run "
                            "setStatusText()"),
             1);
}

void WindowTest::constructorAsksForCipheringOnlyWhereItIsNeitherOnNorUnread_data()
{
    QTest::addColumn<int>("ciphering");
    QTest::addColumn<int>("calls");
    QTest::newRow("on") << 3 << 0;
    QTest::newRow("not read") << -2 << 0;
    QTest::newRow("off") << 0 << 1;
    QTest::newRow("missing") << -1 << 1;
}

void WindowTest::constructorAsksForCipheringOnlyWhereItIsNeitherOnNorUnread()
{
    QFETCH(int, ciphering);
    QFETCH(int, calls);
    model()->setCiphering(ciphering);
    Messages messages;
    makeWindow();
    QCOMPARE(messages.countOfPrefix("Window::handleCipheringChanged(int value): Start of function."), calls);
}

void WindowTest::signalOfTheModelReachesItsSlot_data()
{
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QString>("line");
    const QString modem = "Window::handleModemChanged(): wanActive = ";
    QTest::newRow("signalPinAccepted")
        << QByteArray("signalPinAccepted") << "Window::handleSignalPinAccepted(): About to remove popup";
    QTest::newRow("signalWanActiveChanged") << QByteArray("signalWanActiveChanged") << modem;
    QTest::newRow("signalModemPresentChanged") << QByteArray("signalModemPresentChanged") << modem;
    QTest::newRow("signalModemActivatedChanged") << QByteArray("signalModemActivatedChanged") << modem;
    QTest::newRow("signalWanUserSelectionChanged") << QByteArray("signalWanUserSelectionChanged") << modem;
    QTest::newRow("signalModemOrBganAtStartupChanged")
        << QByteArray("signalModemOrBganAtStartupChanged") << modem;
    QTest::newRow("signalExtendedSystemStatusChanged")
        << QByteArray("signalExtendedSystemStatusChanged")
        << "Window::handleSignalExtendedSystemStatusChanged(): getExtendedSystemStatus()=";
    QTest::newRow("signalTakeScreenshot")
        << QByteArray("signalTakeScreenshot") << "Is about to create screenshot";
    QTest::newRow("guiAllowedToBeShown")
        << QByteArray("guiAllowedToBeShown")
        << "Window::show(): About to show black splash screen and then show the main window";
}

void WindowTest::signalOfTheModelReachesItsSlot()
{
    QFETCH(QByteArray, signal);
    QFETCH(QString, line);
    makeWindow();
    Messages messages;
    QVERIFY(QMetaObject::invokeMethod(model(), signal.constData(), Qt::DirectConnection));
    QCOMPARE(messages.countOfPrefix(line), 1);
}

void WindowTest::showIsNotRunByTheConstructorBeforeTheTerminalIsUp()
{
    makeWindow();
    QVERIFY(!m_window->isVisible());
    QCOMPARE(QFile(m_contrast).size(), qint64(0));
    QVERIFY(!model()->getBrightnessAllowed());
}

void WindowTest::showBringsTheWindowAndThenTheBacklight()
{
    makeWindow();
    Messages messages;
    m_window->show();
    QVERIFY(m_window->isVisible());
    QVERIFY(model()->getBrightnessAllowed());
    QVERIFY(QFile(m_contrast).size() > 0);
    QCOMPARE(messages.count("Window::show(): About to show black splash screen and then show the main "
                            "window"),
             1);
    int visibleWindows = 0;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        visibleWindows += widget->isVisible() ? 1 : 0;
    }
    QCOMPARE(visibleWindows, 1); // the splash is gone
}

void WindowTest::blackSplashComesBeforeTheWindow()
{
    makeWindow();
    ShowOrder order;
    qApp->installEventFilter(&order);
    m_window->show();
    qApp->removeEventFilter(&order);
    QCOMPARE(order.shown, QStringList({"splash 256x64, dark", "window 256x64, dark"}));
    QVERIFY(model()->getBrightnessAllowed());
}

void WindowTest::showTwiceIsAnErrorAndHarmless()
{
    makeWindow();
    m_window->show();
    model()->setBrightnessAllowed(false);
    Messages messages;
    m_window->show();
    QCOMPARE(messages.texts().filter("Window::show()"),
             QStringList("Window::show(): ERROR!!! Window is already visible. This function is not supposed "
                         "to be run twice!"));
    QVERIFY(m_window->isVisible());
    QVERIFY(!model()->getBrightnessAllowed()); // nothing else is done
}

void WindowTest::softwareUpdateShowsTheWindow()
{
    makeWindow();
    QVERIFY(!m_window->isVisible());
    model()->setSwUploadStatus(1, 0, 512);
    QVERIFY(m_window->isVisible());
}

void WindowTest::modelKnowsTheWindowsState()
{
    QCOMPARE(model()->getMainWindowState(), MAIN_WINDOW_NONE);
    makeWindow();
    QCOMPARE(model()->getMainWindowState(), MAIN_WINDOW_HIDDEN);
    m_window->show();
    QCOMPARE(model()->getMainWindowState(), MAIN_WINDOW_VISIBLE);
    m_window->hide();
    QCOMPARE(model()->getMainWindowState(), MAIN_WINDOW_HIDDEN);
    m_window.reset();
    QCOMPARE(model()->getMainWindowState(), MAIN_WINDOW_NONE);
}

void WindowTest::statusScreenShownAgainIsNotRefreshed()
{
    makeWindow();
    QTRY_COMPARE(model()->getSimStatus(), int(SIM_STATUS_UNKNOWN));
    m_window->setStatusText("a text of the test");
    m_window->showScreen(Screen::SCREEN_STATUS, false);
    bool stands = false;
    for (QLabel* label : m_window->findChildren<QLabel*>()) {
        stands |= label->text().contains("a text of the test");
    }
    QVERIFY(stands);
}

void WindowTest::statusScreenIsRefreshedWhenItComesUp()
{
    makeWindow();
    m_window->showScreen(Screen::SCREEN_MENU, false);
    m_window->setStatusText("a text of the test");
    m_window->showScreen(Screen::SCREEN_STATUS, false);
    for (QLabel* label : m_window->findChildren<QLabel*>()) {
        QVERIFY(!label->text().contains("a text of the test"));
    }
}

void WindowTest::batteryFromTheMenuAndBack()
{
    makeWindow();
    m_window->showScreen(Screen::SCREEN_MENU, true);
    m_window->showScreen(Screen::SCREEN_BATTERY, true);
    {
        Messages messages;
        m_window->debugHistory("title");
        QCOMPARE(messages.texts(),
                 QStringList({"title: The history looks like this:", "history[0]=12 (SCREEN_MENU)"}));
    }
    m_window->showPreviousScreen();
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_MENU);
    Messages messages;
    m_window->debugHistory("title");
    QCOMPARE(messages.texts(), QStringList("title: The history is empty"));
}

void WindowTest::historyTestsTheNewScreenAndAppendsTheOldOne()
{
    makeWindow();
    m_window->showScreen(Screen::SCREEN_MENU, false);
    m_window->showScreen(Screen::SCREEN_BATTERY, true); // history: menu
    Messages messages;
    m_window->showScreen(Screen::SCREEN_MENU, true);
    QCOMPARE(messages.count("Window::showScreen(): WARNING: screen to show (screenId=12) is already in "
                            "history, and will therefore not be added again!!!"),
             1);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_MENU);
    messages.clear();
    m_window->debugHistory("title");
    QCOMPARE(messages.texts().mid(1), QStringList("history[0]=12 (SCREEN_MENU)")); // no battery
}

void WindowTest::statusPopupAndPointingNeverStandInTheHistory()
{
    makeWindow();
    Messages messages;
    m_window->showScreen(Screen::SCREEN_MENU, true); // leaves the status screen
    QCOMPARE(messages.count("Window::showScreen(): Never add SCREEN_STATUS to history, as SCREEN_STATUS is "
                            "default screen when history is empty and when pointing mode is OFF."),
             1);
    m_window->showScreen(Screen::SCREEN_POPUP, false);
    m_window->showScreen(Screen::SCREEN_MENU, true);
    QCOMPARE(messages.count("Window::showScreen(): Never add SCREEN_POPUP to history, as SCREEN_POPUP shall "
                            "always be on top of history screens."),
             1);
    m_window->showScreen(Screen::SCREEN_POINTING, false);
    m_window->showScreen(Screen::SCREEN_MENU, true);
    QCOMPARE(messages.count("Window::showScreen(): Never add SCREEN_POINTING to history. SCREEN_POINTING is "
                            "automatically shown when SCREEN_POPUP is closed when pointing mode is ON."),
             1);
    messages.clear();
    m_window->debugHistory("title");
    QCOMPARE(messages.texts(), QStringList("title: The history is empty"));
}

void WindowTest::withoutAddToHistoryNothingIsAdded()
{
    makeWindow();
    m_window->showScreen(Screen::SCREEN_MENU, false);
    m_window->showScreen(Screen::SCREEN_BATTERY, false);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_BATTERY);
    m_window->showPreviousScreen();
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_STATUS);
}

void WindowTest::unknownScreenChangesNothingButTheHistory()
{
    makeWindow();
    Screen* const menu = m_window->getScreenById(Screen::SCREEN_MENU);
    m_window->showScreen(Screen::SCREEN_MENU, false);
    Messages messages;
    m_window->showScreen(NO_SCREEN, true);
    QCOMPARE(messages.count(QtWarningMsg, "ERROR: screenId=5 not defined!!!!"), 1);
    QVERIFY(m_window->isSetToVisibleScreen(menu));
    messages.clear();
    m_window->debugHistory("title");
    QCOMPARE(messages.texts().mid(1), QStringList("history[0]=12 (SCREEN_MENU)"));
}

void WindowTest::oneScreenIsVisibleAndHasTheFocus()
{
    Window* const window = makeVisibleWindow();
    Screen* const antenna = window->getScreenById(Screen::SCREEN_ANTENNA);
    Screen* const status = window->getScreenById(Screen::SCREEN_STATUS);
    QTRY_COMPARE(window->focusWidget(), static_cast<QWidget*>(status));
    window->showScreen(Screen::SCREEN_ANTENNA, true);
    QVERIFY(antenna->isVisible());
    QVERIFY(!status->isVisible());
    QCOMPARE(window->focusWidget(), static_cast<QWidget*>(antenna));
    window->showScreen(Screen::SCREEN_STATUS, true);
    QVERIFY(!antenna->isVisible());
    QVERIFY(status->isVisible());
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(status));
}

void WindowTest::screensByIdAndName_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("name");
    QTest::newRow("3") << 3 << "SCREEN_ENTER_PIN";
    QTest::newRow("6") << 6 << "SCREEN_POINTING";
    QTest::newRow("7") << 7 << "SCREEN_STATUS";
    QTest::newRow("8") << 8 << "SCREEN_BATTERY";
    QTest::newRow("9") << 9 << "SCREEN_ANTENNA";
    QTest::newRow("10") << 10 << "SCREEN_ACTION";
    QTest::newRow("11") << 11 << "SCREEN_POPUP";
    QTest::newRow("12") << 12 << "SCREEN_MENU";
}

void WindowTest::screensByIdAndName()
{
    QFETCH(int, id);
    QFETCH(QString, name);
    const Screen::SCREEN_ID_ENUM screenId = static_cast<Screen::SCREEN_ID_ENUM>(id);
    makeWindow();
    QCOMPARE(m_window->getScreenNameById(screenId), name);
    QVERIFY(m_window->getScreenById(screenId));
    QCOMPARE(m_window->getScreenById(screenId)->getId(), screenId);
}

void WindowTest::unknownIdHasNoScreen()
{
    makeWindow();
    Messages messages;
    QCOMPARE(m_window->getScreenById(NO_SCREEN), static_cast<Screen*>(nullptr));
    QCOMPARE(messages.texts(), QStringList("Window::getScreenById(): ERROR! Unknown screenId=5"));
    QCOMPARE(m_window->getScreenNameById(NO_SCREEN), QString("SCREEN_UNDEFINED"));
    QCOMPARE(m_window->getScreenNameById(Screen::SCREEN_UNDEFINED), QString("SCREEN_UNDEFINED"));
}

void WindowTest::currentScreenIsTheOneSetVisible()
{
    makeWindow();
    QVERIFY(m_window->isSetToVisibleScreen(m_window->getScreenById(Screen::SCREEN_STATUS)));
    QVERIFY(!m_window->isSetToVisibleScreen(m_window->getScreenById(Screen::SCREEN_POPUP)));
    m_window->showScreen(Screen::SCREEN_POPUP, true);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_POPUP);
    QVERIFY(m_window->isSetToVisibleScreen(m_window->getScreenById(Screen::SCREEN_POPUP)));
}

void WindowTest::backToTheHistoryThenToTheStatusScreen()
{
    makeWindow();
    m_window->showScreen(Screen::SCREEN_MENU, true);
    m_window->showScreen(Screen::SCREEN_BATTERY, true);
    m_window->showScreen(Screen::SCREEN_ANTENNA, true);
    m_window->showPreviousScreen();
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_BATTERY);
    m_window->showPreviousScreen();
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_MENU);
    Messages messages;
    m_window->showPreviousScreen();
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_STATUS);
    QCOMPARE(messages.count("Window::showPreviousScreen(): History empty. Now showing default page "
                            "SCREEN_STATUS."),
             1);
}

void WindowTest::backRemovesTheCurrentScreenFromTheHistory()
{
    makeWindow();
    m_window->showScreen(Screen::SCREEN_MENU, false);
    m_window->showScreen(Screen::SCREEN_BATTERY, true);
    m_window->showScreen(Screen::SCREEN_MENU, true); // current menu, history: menu
    Messages messages;
    m_window->showPreviousScreen();
    QCOMPARE(messages.count("Window::showPreviousScreen(): removing current screen SCREEN_MENU from "
                            "history."),
             1);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_STATUS);
}

// The walk goes on with the next index after a removal, and so steps over the entry that moved down.
void WindowTest::ofTwoEqualNeighboursOneStays()
{
    makeWindow();
    m_window->showScreen(Screen::SCREEN_MENU, false);
    m_window->showScreen(Screen::SCREEN_BATTERY, true); // history: menu
    m_window->showScreen(Screen::SCREEN_MENU, false);   // current menu
    m_window->showScreen(Screen::SCREEN_ANTENNA, true); // history: menu, menu
    m_window->showScreen(Screen::SCREEN_MENU, false);   // current menu
    Messages messages;
    m_window->showPreviousScreen();
    QCOMPARE(messages.count("Window::showPreviousScreen(): removing current screen SCREEN_MENU from "
                            "history."),
             1);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_MENU); // the entry that stayed
    m_window->showPreviousScreen();
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_STATUS);
}

void WindowTest::backInPointingModeLeadsToPointing()
{
    makeWindow();
    model()->setPointingMode(POINTING_STATUS_POINTING);
    m_window->showScreen(Screen::SCREEN_MENU, true);
    m_window->showScreen(Screen::SCREEN_BATTERY, true); // history: menu
    m_window->showPreviousScreen();
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_POINTING);
    model()->setPointingMode(POINTING_STATUS_POINTED);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_MENU); // the history was kept
}

void WindowTest::hiddenScreenLeavesTheHistoryOnce()
{
    makeWindow();
    m_window->showScreen(Screen::SCREEN_MENU, false);
    m_window->showScreen(Screen::SCREEN_BATTERY, true);
    m_window->showScreen(Screen::SCREEN_MENU, false);
    m_window->showScreen(Screen::SCREEN_ANTENNA, true); // history: menu, menu
    m_window->hideAndRemoveScreenFromHistory(Screen::SCREEN_MENU);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_ANTENNA);
    Messages messages;
    m_window->debugHistory("title");
    QCOMPARE(messages.texts().mid(1), QStringList("history[0]=12 (SCREEN_MENU)"));
}

void WindowTest::hidingTheCurrentScreenShowsThePreviousOne()
{
    makeWindow();
    m_window->showScreen(Screen::SCREEN_MENU, true);
    m_window->showScreen(Screen::SCREEN_ENTER_PIN, true);
    Messages messages;
    m_window->hideAndRemoveScreenFromHistory(Screen::SCREEN_ENTER_PIN);
    QCOMPARE(messages.count("Window::hideAndRemoveScreenFromHistory(): pCurrentScreen was the screen to "
                            "remove. Therefore show previous screen."),
             1);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_MENU);
}

void WindowTest::hidingPointingWithEmptyHistoryShowsTheStatusScreen()
{
    makeWindow();
    m_window->showScreen(Screen::SCREEN_POINTING, true);
    m_window->hideAndRemoveScreenFromHistory(Screen::SCREEN_POINTING);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_STATUS);
}

void WindowTest::hidingPointingInPointingModeShowsItAgain()
{
    makeWindow();
    Screen* const pointing = m_window->getScreenById(Screen::SCREEN_POINTING);
    model()->setPointingMode(POINTING_STATUS_POINTING);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_POINTING);
    m_window->hideAndRemoveScreenFromHistory(Screen::SCREEN_POINTING);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_POINTING);
    QVERIFY(!pointing->isHidden());
}

void WindowTest::statusTextGoesToTheStatusScreen()
{
    makeWindow();
    m_window->setStatusText("a text of the test");
    bool stands = false;
    for (QLabel* label : m_window->getScreenById(Screen::SCREEN_STATUS)->findChildren<QLabel*>()) {
        stands |= label->text().contains("a text of the test");
    }
    QVERIFY(stands);
}

void WindowTest::historyIsWrittenToTheLog()
{
    makeWindow();
    m_window->showScreen(Screen::SCREEN_MENU, false);
    m_window->showScreen(Screen::SCREEN_BATTERY, true);
    m_window->showScreen(Screen::SCREEN_ANTENNA, true);
    Messages messages;
    m_window->debugHistory("title");
    QCOMPARE(messages.texts(), QStringList({"title: The history looks like this:",
                                            "history[0]=12 (SCREEN_MENU)", "history[1]=8 (SCREEN_BATTERY)"}));
}

void WindowTest::destructorDeletesTheScreensInOrder()
{
    makeWindow();
    QList<QObject*> expected;
    for (Screen::SCREEN_ID_ENUM id : ALL_IDS) {
        expected.append(m_window->getScreenById(id));
    }
    expected.append(m_window->layout());
    for (QObject* object : expected) {
        connect(object, SIGNAL(destroyed(QObject*)), this, SLOT(noteDestroyed(QObject*)));
    }
    m_window->showScreen(Screen::SCREEN_MENU, true); // the current screen is freed once
    syslogtap_clear();
    m_window.reset();
    QCOMPARE(m_destroyed, expected);
    QCOMPARE(syslogtap::count(LOG_DEBUG, "Window::~Window(): Destructor"), size_t(1));
    QCOMPARE(GuiApp::getMainWindowPointer(), static_cast<Window*>(nullptr));
}

int main(int argc, char** argv)
{
    return windowfixture::run<WindowTest>(argc, argv);
}

#include "window_test.moc"
