// The main window's construction and end: the order of the steps, what it takes over from the model, and
// what its functions do while the screens don't exist yet.
#include "screens/windowcase.h"

#include "support/death.h"
#include "support/failingnew.h"
#include "support/patience.h"

#include <QGridLayout>

#include <functional>
#include <syslog.h>

using namespace windowfixture;

Q_DECLARE_METATYPE(std::function<void(Window&)>)

namespace {

// The order in which the screens come, and the one in which they go.
const Screen::SCREEN_ID_ENUM CREATED[] = {
    Screen::SCREEN_POPUP,  Screen::SCREEN_STATUS, Screen::SCREEN_BATTERY,  Screen::SCREEN_ANTENNA,
    Screen::SCREEN_ACTION, Screen::SCREEN_MENU,   Screen::SCREEN_POINTING, Screen::SCREEN_ENTER_PIN,
};
const Screen::SCREEN_ID_ENUM DELETED[] = {
    Screen::SCREEN_STATUS, Screen::SCREEN_BATTERY, Screen::SCREEN_ANTENNA,  Screen::SCREEN_ACTION,
    Screen::SCREEN_POPUP,  Screen::SCREEN_MENU,    Screen::SCREEN_POINTING, Screen::SCREEN_ENTER_PIN,
};

// Runs a function in the middle of a window's construction: when the screen with this id begins its own.
std::function<void(Window&)> duringConstruction;
QString screenThatBegins;

void runDuringConstruction(QtMsgType, const QMessageLogContext&, const QString& text)
{
    if (text.startsWith(screenThatBegins)) {
        duringConstruction(*GuiApp::getMainWindowPointer());
    }
}

// What a new process does that calls the function when the screen with this id begins, and then ends. What
// the function logs goes to standard error, since a message within a message does.
Death callDuringConstruction(Screen::SCREEN_ID_ENUM id, const std::function<void(Window&)>& function)
{
    screenThatBegins = QString("Screen::Screen(): Start of constructor. screenId=%1 ").arg(int(id));
    duringConstruction = [function](Window& window) {
        function(window);
        _exit(0);
    };
    return deathOf([] {
        qInstallMessageHandler(runDuringConstruction);
        const Window window;
    });
}

// While the radio module is down the bus thread takes the pointing mode away once a second, which a window
// that takes that long to be made would notice.
bool setRadioModule(bool operating)
{
    static int nudges = 0;
    if (operating) {
        terminal().set("rmcfg.sys.status.mode", std::string("operating"));
    } else {
        terminal().erase("rmcfg.sys.status.mode");
    }
    terminal().set("ram.status.position.radio_module", ++nudges); // wakes the bus thread
    return QTest::qWaitFor([operating] { return model()->getRmOperating() == int(operating); }, PATIENCE_MS);
}

} // namespace

class WindowConstructionTest : public QObject, protected WindowCase {
    Q_OBJECT

public slots:
    void noteDestroyed(QObject* object) { m_destroyed.append(object); }

private slots:
    void init()
    {
        startTest();
        m_destroyed.clear();
    }
    void cleanup()
    {
        endTest();
        if (model()->getRmOperating() == 1) {
            QVERIFY(setRadioModule(false));
        }
    }

    void takesItsStepsInOrder();
    void startRunsTheShownScreenPath();
    void tellsTheApplication();
    void isThePanel();
    void holdsTheScreensInTheirOrder();
    void startsOnTheStatusScreen();
    void initialisesThePopupScreenBetweenTheOthers();
    void followsTheModelThatExisted();
    void takesOverTheUploadThatRuns();
    void takesOverTheEventsThatStand();
    void takesOverTheModem();
    void handlesPointingThatRuns();
    void asksForTheSimWhereNothingPoints();
    void handlesCipheringOnlyWhereItIsNeitherOnNorUnread_data();
    void handlesCipheringOnlyWhereItIsNeitherOnNorUnread();

    void endsWithoutWhatItNeeds_data();
    void endsWithoutWhatItNeeds();
    void endsWithoutMemory();
    void dropsTheStatusTextWithoutItsScreen();
    void showsNothingWithoutAScreen();

    void deletesTheScreensInOrder();

private:
    QList<QObject*> m_destroyed;
};

// --- Construction ------------------------------------------------------------------------------------------

void WindowConstructionTest::takesItsStepsInOrder()
{
    model()->setCiphering(0);
    Messages messages;
    makeWindow(INITIALIZING);
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
        "Screen::Screen(): Start of constructor. screenId=8",
        "Screen::Screen(): Start of constructor. screenId=9",
        "Screen::Screen(): Start of constructor. screenId=10",
        "Screen::Screen(): Start of constructor. screenId=12",
        "Screen::Screen(): Start of constructor. screenId=6",
        "Screen::Screen(): Start of constructor. screenId=3",
        "ShowScreen screenId=7 (SCREEN_STATUS) is already shown. But now shows it again to be safe.",
        "Window::Window(): About to connect stateEventReceived with handleStateEvent",
        "Window::handleRequestLoadLanguage(): Start of function.",
        "Window::handleSignalExtendedSystemStatusChanged(): getExtendedSystemStatus()=0",
        "Window::handleSignalSwUploadActiveChanged(): swUploadActive=0",
        "Window::Window(): getPointingMode() != POINTING_STATUS_POINTING",
        "Window::handleStateEvent(STATE_EVENT stateEvent): stateEvent=11: About to run setStatusText()",
        "Window::handleCipheringChanged(int value): Start of function. value=0",
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

void WindowConstructionTest::startRunsTheShownScreenPath()
{
    Messages messages;
    makeWindow();
    QCOMPARE(messages.withPrefix("Window::ShowScreen(").mid(0, 1),
             QStringList("Window::ShowScreen(screenId=7 (SCREEN_STATUS), addToHistory=false, "
                         "pCurrentScreen->getId()=7 (SCREEN_STATUS)"));
}

void WindowConstructionTest::tellsTheApplication()
{
    QCOMPARE(GuiApp::getMainWindowPointer(), static_cast<Window*>(nullptr));
    Window* const window = makeWindow();
    QCOMPARE(GuiApp::getMainWindowPointer(), window);
}

void WindowConstructionTest::isThePanel()
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
    QVERIFY(!window->parentWidget());
}

void WindowConstructionTest::holdsTheScreensInTheirOrder()
{
    Window* const window = makeWindow();
    QGridLayout* const layout = qobject_cast<QGridLayout*>(window->layout());
    QVERIFY(layout);
    QCOMPARE(layout->alignment(), Qt::Alignment(Qt::AlignCenter));
    QCOMPARE(layout->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(layout->count(), 8);
    for (int i = 0; i < layout->count(); ++i) {
        QCOMPARE(layout->itemAt(i)->widget(), screen(CREATED[i]));
        QCOMPARE(layout->itemAt(i)->widget()->parentWidget(), window);
    }
}

void WindowConstructionTest::startsOnTheStatusScreen()
{
    Window* const window = makeWindow();
    QCOMPARE(window->getCurrentScreenId(), Screen::SCREEN_STATUS);
    for (Screen::SCREEN_ID_ENUM id : CREATED) {
        QCOMPARE(screen(id)->isHidden(), id != Screen::SCREEN_STATUS);
    }
    QVERIFY(!window->isVisible());
    QCOMPARE(history(), QString());
}

void WindowConstructionTest::initialisesThePopupScreenBetweenTheOthers()
{
    terminal().clearLogs();
    makeWindow();
    // Off and on again, so that the terminal hears of the subscription.
    QVERIFY(terminal().waitForWrite("ram.status.signal_strength.update_interval", sim::Value::integer(0)));
    QVERIFY(terminal().waitForWrite("ram.status.signal_strength.update_interval", sim::Value::integer(1000)));
}

// --- The model that existed before -------------------------------------------------------------------------

void WindowConstructionTest::followsTheModelThatExisted()
{
    model()->setLanguage(LANG_JAPANESE);
    Messages messages;
    makeWindow(NORMAL);
    QVERIFY(m_window->isVisible());
    QCOMPARE(QApplication::font().family(), QString("unifont"));
    QCOMPARE(messages.count("Window::handleSignalExtendedSystemStatusChanged(): "
                            "getExtendedSystemStatus()=10"),
             2);
}

// The popup of the initialisation, which the status puts up first, goes again.
void WindowConstructionTest::takesOverTheUploadThatRuns()
{
    model()->setExtendedSystemStatus(2);
    model()->setSwUploadStatus(1, 0, 512);
    makeWindow(2);
    QCOMPARE(queued(), QStringList("EV_SW_UPDATE_ON"));
    QVERIFY(m_window->isVisible());
}

void WindowConstructionTest::takesOverTheEventsThatStand()
{
    model()->setSystemEvents({eventOf(EV_AP_TEMP_LOW, EVENT_WARNING), eventOf(EV_AP_TEMP_LOW + 1)});
    makeWindow();
    QCOMPARE(argumentsOf(EV_AP_TEMP_LOW), QString("EVENT_WARNING 1 0 - -"));
    QCOMPARE(queue().size(), 2);
}

void WindowConstructionTest::takesOverTheModem()
{
    model()->setModemPresent(1);
    model()->setWanActive(WAN_ACTIVE_MODEM);
    makeWindow();
    QCOMPARE(queued(), QStringList("EV_AP_GUI_MODEM_IN_USE"));
}

void WindowConstructionTest::handlesPointingThatRuns()
{
    QVERIFY(setRadioModule(true));
    model()->setPointingMode(POINTING_STATUS_POINTING);
    Messages messages;
    makeWindow();
    QCOMPARE(messages.count("Window::Window(): getPointingMode()==POINTING_STATUS_POINTING"), 1);
    QCOMPARE(messages.count("Window::handleStateEvent(STATE_EVENT stateEvent): stateEvent=4: About to run "
                            "setStatusText()"),
             1);
    QCOMPARE(messages.countOfPrefix("Window::handleStateEvent(STATE_EVENT stateEvent): stateEvent=11"), 0);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_POINTING);
}

void WindowConstructionTest::asksForTheSimWhereNothingPoints()
{
    QVERIFY(setSim(SIM_PIN_NEEDED));
    makeWindow();
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_ENTER_PIN);
    m_window.reset();
    QVERIFY(setRadioModule(true));
    model()->setPointingMode(POINTING_STATUS_POINTING);
    makeWindow();
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_POINTING);
    QCOMPARE(history(), QString());
    QVERIFY(setSim(SIM_STATUS_UNKNOWN));
}

void WindowConstructionTest::handlesCipheringOnlyWhereItIsNeitherOnNorUnread_data()
{
    QTest::addColumn<int>("ciphering");
    QTest::addColumn<int>("calls");
    QTest::newRow("on") << 3 << 0;
    QTest::newRow("not read") << -2 << 0;
    QTest::newRow("off") << 0 << 1;
    QTest::newRow("missing") << -1 << 1;
    QTest::newRow("1") << 1 << 1;
}

void WindowConstructionTest::handlesCipheringOnlyWhereItIsNeitherOnNorUnread()
{
    QFETCH(int, ciphering);
    QFETCH(int, calls);
    model()->setCiphering(ciphering);
    Messages messages;
    makeWindow();
    QCOMPARE(messages.countOfPrefix("Window::handleCipheringChanged(int value): Start of function."), calls);
    QCOMPARE(queued(), ciphering == 0 ? QStringList("EV_AP_GUI_CIPHERING_OFF") : QStringList());
}

// --- Before the screens exist ------------------------------------------------------------------------------

void WindowConstructionTest::endsWithoutWhatItNeeds_data()
{
    QTest::addColumn<int>("begins"); // the screen that is being made
    QTest::addColumn<std::function<void(Window&)>>("call");
    typedef std::function<void(Window&)> Call;
    const Call stateEvent = [](Window& window) { window.handleStateEvent(STATE_EVENT_POINTED); };
    const Call screenshot = [](Window& window) { window.handleSignalTakeScreenshot(); };
    const int popup = Screen::SCREEN_POPUP;
    const int status = Screen::SCREEN_STATUS;
    QTest::newRow("addEvent without a popup screen") << popup << Call([](Window& window) {
        window.addEvent(EV_AP_TEMP_LOW, EVENT_INFO, POPUP_CLOSE_OK, 0, nullptr, nullptr, QString(), -1);
    });
    QTest::newRow("handleStateEvent without a popup screen") << popup << stateEvent;
    QTest::newRow("handleStateEvent without a status screen") << status << stateEvent;
    QTest::newRow("handleSignalSwUploadActiveChanged without a popup screen")
        << popup << Call([](Window& window) { window.handleSignalSwUploadActiveChanged(1); });
    QTest::newRow("handleSignalTakeScreenshot without a popup screen") << popup << screenshot;
    QTest::newRow("handleSignalTakeScreenshot without a current screen") << status << screenshot;
    QTest::newRow("showPreviousScreen without a current screen")
        << popup << Call([](Window& window) { window.showPreviousScreen(); });
    QTest::newRow("hideAndRemoveScreenFromHistory without a current screen")
        << popup << Call([](Window& window) { window.hideAndRemoveScreenFromHistory(Screen::SCREEN_MENU); });
}

void WindowConstructionTest::endsWithoutWhatItNeeds()
{
    QFETCH(int, begins);
    QFETCH(std::function<void(Window&)>, call);
    const Death death = callDuringConstruction(static_cast<Screen::SCREEN_ID_ENUM>(begins), call);
    QVERIFY(death.status != 0 && death.status != 111);
    QVERIFY2(death.output.find("<1> gui: *** ASSERT in window at ") != std::string::npos,
             death.output.c_str());
}

void WindowConstructionTest::endsWithoutMemory()
{
    for (int granted : {0, 1}) { // the layout, the first screen
        const Death death = deathOf([granted] {
            grantedAllocations = granted;
            const Window window;
        });
        QVERIFY(death.status != 111);
        QVERIFY2(death.output.find("<1> gui: *** ASSERT in window at ") != std::string::npos,
                 death.output.c_str());
    }
}

void WindowConstructionTest::dropsTheStatusTextWithoutItsScreen()
{
    const Death death =
        callDuringConstruction(Screen::SCREEN_STATUS, [](Window& window) { window.setStatusText("text"); });
    QCOMPARE(death.status, 0);
    QVERIFY2(death.output.find("Window::setStatusText(): pScreenStatus=NULL is not ready yet.") !=
                 std::string::npos,
             death.output.c_str());
}

void WindowConstructionTest::showsNothingWithoutAScreen()
{
    const Death death = callDuringConstruction(
        Screen::SCREEN_POPUP, [](Window& window) { window.showScreen(Screen::SCREEN_BATTERY, true); });
    QCOMPARE(death.status, 0);
    for (const char* line : {"Window::ShowScreen(screenId=8 (SCREEN_BATTERY), addToHistory=true, "
                             "pCurrentScreen->getId()=NULL",
                             "Window::ShowScreen(Screen *pScreen): ERROR!! pScreen (=pCurrentScreen) is not "
                             "allowed to be NULL!!!"}) {
        QVERIFY2(death.output.find(line) != std::string::npos, death.output.c_str());
    }
}

// --- The end -----------------------------------------------------------------------------------------------

void WindowConstructionTest::deletesTheScreensInOrder()
{
    makeWindow();
    QList<QObject*> expected;
    for (Screen::SCREEN_ID_ENUM id : DELETED) {
        expected.append(screen(id));
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
    return windowfixture::run<WindowConstructionTest>(argc, argv);
}

#include "window_construction_test.moc"
