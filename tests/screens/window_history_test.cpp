// The main window's screen changes while no popup stands: what comes up, what the history keeps, and where
// the way back leads. With popups: window_precedence_test.cpp.
#include "screens/windowwalk.h"

#include "screens/screenenterpin.h"
#include "widgets/ttreewidget.h"

#include "support/patience.h"

#include <QLabel>

using namespace windowfixture;

namespace {

const Screen::SCREEN_ID_ENUM NO_SCREEN = static_cast<Screen::SCREEN_ID_ENUM>(5);

const Walk walks[] = {
    {"battery from the menu and back",
     {{"MENU+", "MENU"}, {"BATTERY+", "BATTERY MENU"}, {"back", "MENU"}, {"back", "STATUS"}}},
    {"back to the history, then to the status screen",
     {{"MENU+ BATTERY+ ANTENNA+", "ANTENNA MENU BATTERY"},
      {"back", "BATTERY MENU"},
      {"back", "MENU"},
      {"back", "STATUS"}}},
    {"a screen that is shown already leaves the history alone",
     {{"MENU+ MENU+", "MENU"}, {"BATTERY+ BATTERY+", "BATTERY MENU"}}},
    {"the test looks at the screen that comes, appended is the one that goes",
     {{"MENU BATTERY+", "BATTERY MENU"}, {"MENU+", "MENU MENU"}}},
    {"the status screen never stands in the history", {{"MENU+", "MENU"}}},
    {"the popup screen never stands in the history", {{"POPUP", "POPUP"}, {"MENU+", "MENU"}}},
    {"the pointing screen never stands in the history", {{"POINTING", "POINTING"}, {"MENU+", "MENU"}}},
    {"without being asked nothing is added", {{"MENU BATTERY", "BATTERY"}, {"back", "STATUS"}}},
    {"an unknown screen changes nothing but the history",
     {{"MENU", "MENU"}, {"OTHER", "MENU"}, {"OTHER+", "MENU MENU"}}},
    {"back removes the current screen from the history",
     {{"MENU BATTERY+ MENU+", "MENU MENU"}, {"back", "STATUS"}}},
    // The walk goes on with the next index after a removal, and so steps over the entry that moved down.
    {"of two equal neighbours one stays",
     {{"MENU BATTERY+ MENU ANTENNA+", "ANTENNA MENU MENU"},
      {"MENU", "MENU MENU MENU"},
      {"back", "MENU"},
      {"back", "STATUS"}}},
    {"of two equal ones with another between none stays",
     {{"MENU BATTERY+ ANTENNA+", "ANTENNA MENU BATTERY"},
      {"MENU ENTER_PIN+ MENU", "MENU MENU BATTERY MENU"},
      {"back", "BATTERY"}}},
    {"back in pointing mode leads to pointing, and the history is kept",
     {{"point", "POINTING"},
      {"MENU+ BATTERY+", "BATTERY MENU"},
      {"back", "POINTING MENU"},
      {"pointed", "MENU"}}},
    {"a hidden screen leaves the history once",
     {{"MENU BATTERY+ MENU ANTENNA+", "ANTENNA MENU MENU"}, {"-MENU", "ANTENNA MENU"}}},
    {"of the history the first entry goes",
     {{"MENU BATTERY+ ANTENNA+ MENU ENTER_PIN+", "ENTER_PIN MENU BATTERY MENU"},
      {"-MENU", "ENTER_PIN BATTERY MENU"}}},
    {"hiding the current screen shows the previous one",
     {{"MENU+ ENTER_PIN+", "ENTER_PIN MENU"}, {"-ENTER_PIN", "MENU"}}},
    {"hiding the current screen that waits as well",
     {{"MENU BATTERY+ MENU+", "MENU MENU"}, {"-MENU", "STATUS"}}},
    {"hiding what is nowhere changes nothing",
     {{"MENU BATTERY+", "BATTERY MENU"}, {"-ANTENNA", "BATTERY MENU"}}},
    {"hiding pointing with an empty history shows the status screen",
     {{"POINTING+", "POINTING"}, {"-POINTING", "STATUS"}}},
    {"hiding pointing in pointing mode shows it again", {{"point", "POINTING"}, {"-POINTING", "POINTING"}}},
};

} // namespace

class WindowHistoryTest : public QObject, protected WindowWalk {
    Q_OBJECT

private slots:
    void init()
    {
        startTest();
        QVERIFY(setBundles({}));
    }
    void cleanup() { endTest(); }

    void screens_data();
    void screens();
    void stepsAreLogged();
    void historyIsWrittenToTheLog();
    void statusScreenShownAgainIsNotRefreshed();
    void statusScreenIsRefreshedWhenItComesUp();
    void pinEntryBeginsAnewWheneverItComesUp();
    void actionsComeUpWithBundles();
    void actionsOpenTheActiveBundle();
    void oneScreenIsVisibleAndHasTheFocus();
    void newScreenComesBeforeTheOldOneGoes();
    void focusReturnsToAScreenShownAgain();
    void screensByIdAndName_data();
    void screensByIdAndName();
    void unknownIdHasNoScreen();
    void currentScreenIsTheOneSetVisible();
    void statusTextGoesToTheStatusScreen();

private:
    bool statusScreenSays(const QString& text) const
    {
        for (const QLabel* label : screen(Screen::SCREEN_STATUS)->findChildren<QLabel*>()) {
            if (label->text().contains(text)) {
                return true;
            }
        }
        return false;
    }
};

void WindowHistoryTest::screens_data()
{
    QTest::addColumn<int>("row");
    int row = 0;
    for (const Walk& walk : walks) {
        QTest::newRow(walk.name) << row++;
    }
}

void WindowHistoryTest::screens()
{
    QFETCH(int, row);
    makeWindow();
    const QString fault = walk(walks[row]);
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

void WindowHistoryTest::stepsAreLogged()
{
    const struct {
        const char* steps;
        QtMsgType type;
        const char* line;
    } rows[] = {
        {"MENU+", QtDebugMsg,
         "Window::ShowScreen(screenId=12 (SCREEN_MENU), addToHistory=true, pCurrentScreen->getId()=7 "
         "(SCREEN_STATUS)"},
        {"MENU MENU", QtDebugMsg,
         "ShowScreen screenId=12 (SCREEN_MENU) is already shown. But now shows it again to be safe."},
        {"MENU+", QtDebugMsg,
         "Window::showScreen(): Never add SCREEN_STATUS to history, as SCREEN_STATUS is default screen when "
         "history is empty and when pointing mode is OFF."},
        {"POPUP MENU+", QtDebugMsg,
         "Window::showScreen(): Never add SCREEN_POPUP to history, as SCREEN_POPUP shall always be on top of "
         "history screens."},
        {"POINTING MENU+", QtDebugMsg,
         "Window::showScreen(): Never add SCREEN_POINTING to history. SCREEN_POINTING is automatically shown "
         "when SCREEN_POPUP is closed when pointing mode is ON."},
        {"MENU BATTERY+ MENU+", QtDebugMsg,
         "Window::showScreen(): WARNING: screen to show (screenId=12) is already in history, and will "
         "therefore not be added again!!!"},
        {"MENU OTHER+", QtWarningMsg, "ERROR: screenId=5 not defined!!!!"},
        {"MENU BATTERY+ MENU back", QtDebugMsg,
         "Window::showPreviousScreen(): removing current screen SCREEN_MENU from history."},
        {"MENU BATTERY+ MENU ANTENNA+ MENU back", QtDebugMsg, // just one of the two
         "Window::showPreviousScreen(): removing current screen SCREEN_MENU from history."},
        {"MENU back", QtDebugMsg,
         "Window::showPreviousScreen(): History empty. Now showing default page SCREEN_STATUS."},
        {"MENU -MENU", QtDebugMsg,
         "Window::hideAndRemoveScreenFromHistory(): pCurrentScreen was the screen to remove. Therefore show "
         "previous screen."},
        {"MENU -MENU", QtDebugMsg, "Window::hideAndRemoveScreenFromHistory(): Start: The history is empty"},
        {"MENU -MENU", QtDebugMsg, "Window::hideAndRemoveScreenFromHistory(): End: The history is empty"},
        {"MENU", QtDebugMsg, "Window::showScreen(): Start: The history is empty"},
        {"MENU", QtDebugMsg, "Window::showScreen(): End: The history is empty"},
    };
    for (const auto& row : rows) {
        makeWindow();
        Messages messages;
        go(row.steps);
        QVERIFY2(messages.count(row.type, row.line) == 1, row.line);
    }
}

void WindowHistoryTest::historyIsWrittenToTheLog()
{
    makeWindow();
    Messages messages;
    m_window->debugHistory("title");
    QCOMPARE(messages.texts(), QStringList("title: The history is empty"));
    go("MENU BATTERY+ ANTENNA+");
    messages.clear();
    m_window->debugHistory("title");
    QCOMPARE(messages.texts(), QStringList({"title: The history looks like this:",
                                            "history[0]=12 (SCREEN_MENU)", "history[1]=8 (SCREEN_BATTERY)"}));
}

// --- What is done before a screen comes up -----------------------------------------------------------------

void WindowHistoryTest::statusScreenShownAgainIsNotRefreshed()
{
    makeWindow();
    QTRY_COMPARE_WITH_TIMEOUT(model()->getSimStatus(), int(SIM_STATUS_UNKNOWN), PATIENCE_MS);
    m_window->setStatusText("a text of the test");
    m_window->showScreen(Screen::SCREEN_STATUS, false);
    QVERIFY(statusScreenSays("a text of the test"));
}

void WindowHistoryTest::statusScreenIsRefreshedWhenItComesUp()
{
    makeWindow();
    m_window->showScreen(Screen::SCREEN_MENU, false);
    m_window->setStatusText("a text of the test");
    m_window->showScreen(Screen::SCREEN_STATUS, false);
    QVERIFY(!statusScreenSays("a text of the test"));
}

void WindowHistoryTest::pinEntryBeginsAnewWheneverItComesUp()
{
    makeWindow();
    ScreenEnterPin* const page = static_cast<ScreenEnterPin*>(screen(Screen::SCREEN_ENTER_PIN));
    m_window->showScreen(Screen::SCREEN_ENTER_PIN, false);
    QTest::keyClick(page, Qt::Key_Up);
    QTest::keyClick(page, Qt::Key_Right);
    QCOMPARE(page->getEnteredPin(), QString("1000"));
    m_window->showScreen(Screen::SCREEN_ENTER_PIN, false); // it is up: as it was
    QCOMPARE(page->getEnteredPin(), QString("1000"));
    m_window->showScreen(Screen::SCREEN_STATUS, false);
    QCOMPARE(page->getEnteredPin(), QString("1000"));
    m_window->showScreen(Screen::SCREEN_ENTER_PIN, false);
    QCOMPARE(page->getEnteredPin(), QString("0000"));
    QTest::keyClick(page, Qt::Key_Up); // the first digit is current again
    QCOMPARE(page->getEnteredPin(), QString("1000"));
}

void WindowHistoryTest::actionsComeUpWithBundles()
{
    QVERIFY(setBundles({{3, "Base"}, {4, "Camp"}}));
    makeWindow();
    QTreeWidget* const list = screen(Screen::SCREEN_ACTION)->findChild<QTreeWidget*>("pTreeWidget");
    list->expandItem(list->topLevelItem(1));
    m_window->showScreen(Screen::SCREEN_ACTION, true);
    QCOMPARE(state(), QString("ACTION"));
    QVERIFY(list->topLevelItem(1)->isExpanded()); // no bundle is active: as the user left it
    QCOMPARE(list->currentItem(), list->topLevelItem(0));
}

void WindowHistoryTest::actionsOpenTheActiveBundle()
{
    QVERIFY(setBundles({{3, "Base"}, {4, "Camp"}}));
    terminal().set("ram.net.user_groups.0.current_bundle", 4);
    terminal().set("ram.status.ongoing_data_sessions.0.status", 2);
    QTRY_VERIFY_WITH_TIMEOUT(model()->predefinedBundleActive(), PATIENCE_MS);
    makeWindow();
    QTreeWidget* const list = screen(Screen::SCREEN_ACTION)->findChild<QTreeWidget*>("pTreeWidget");
    list->expandItem(list->topLevelItem(1));
    m_window->showScreen(Screen::SCREEN_ACTION, true);
    QCOMPARE(state(), QString("ACTION"));
    QCOMPARE(list->topLevelItem(1)->text(0), QString("Base"));
    QVERIFY(!list->topLevelItem(1)->isExpanded());
    QVERIFY(list->topLevelItem(2)->isExpanded());
    QCOMPARE(list->topLevelItem(2)->text(0), QString("Camp"));
    QCOMPARE(list->currentItem(), list->topLevelItem(2)->child(0));
    terminal().erase("ram.status.ongoing_data_sessions.0.status");
    terminal().erase("ram.net.user_groups.0.current_bundle");
    QTRY_VERIFY_WITH_TIMEOUT(!model()->predefinedBundleActive(), PATIENCE_MS);
}

// --- Visible screen and focus ------------------------------------------------------------------------------

void WindowHistoryTest::oneScreenIsVisibleAndHasTheFocus()
{
    Window* const window = makeVisibleWindow();
    Screen* const antenna = screen(Screen::SCREEN_ANTENNA);
    Screen* const status = screen(Screen::SCREEN_STATUS);
    QTRY_COMPARE_WITH_TIMEOUT(window->focusWidget(), static_cast<QWidget*>(status), PATIENCE_MS);
    window->showScreen(Screen::SCREEN_ANTENNA, true);
    QVERIFY(antenna->isVisible());
    QVERIFY(!status->isVisible());
    QCOMPARE(window->focusWidget(), static_cast<QWidget*>(antenna));
    window->showScreen(Screen::SCREEN_STATUS, true);
    QVERIFY(!antenna->isVisible());
    QVERIFY(status->isVisible());
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(status));
}

void WindowHistoryTest::newScreenComesBeforeTheOldOneGoes()
{
    class Order : public QObject {
    public:
        QStringList events;
        bool eventFilter(QObject* receiver, QEvent* event) override
        {
            if (event->type() == QEvent::Show || event->type() == QEvent::Hide) {
                events.append(static_cast<Screen*>(receiver)->getScreenName() +
                              (event->type() == QEvent::Show ? " comes" : " goes"));
            }
            return false;
        }
    } order;
    makeVisibleWindow();
    screen(Screen::SCREEN_STATUS)->installEventFilter(&order);
    screen(Screen::SCREEN_MENU)->installEventFilter(&order);
    m_window->showScreen(Screen::SCREEN_MENU, true);
    QCOMPARE(order.events, QStringList({"SCREEN_MENU comes", "SCREEN_STATUS goes"}));
}

void WindowHistoryTest::focusReturnsToAScreenShownAgain()
{
    Window* const window = makeVisibleWindow();
    window->showScreen(Screen::SCREEN_ANTENNA, true);
    screen(Screen::SCREEN_ANTENNA)->clearFocus();
    QVERIFY(!screen(Screen::SCREEN_ANTENNA)->hasFocus());
    window->showScreen(Screen::SCREEN_ANTENNA, true);
    QVERIFY(screen(Screen::SCREEN_ANTENNA)->hasFocus());
}

void WindowHistoryTest::screensByIdAndName_data()
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

void WindowHistoryTest::screensByIdAndName()
{
    QFETCH(int, id);
    QFETCH(QString, name);
    const Screen::SCREEN_ID_ENUM screenId = static_cast<Screen::SCREEN_ID_ENUM>(id);
    makeWindow();
    QCOMPARE(m_window->getScreenNameById(screenId), name);
    Screen* const page = screen(screenId);
    QVERIFY(page);
    QCOMPARE(page->getId(), screenId);
    const QString className = page->metaObject()->className(); // ScreenEnterPin for SCREEN_ENTER_PIN
    QCOMPARE(className.toUpper(), name.remove('_'));
}

void WindowHistoryTest::unknownIdHasNoScreen()
{
    makeWindow();
    Messages messages;
    QCOMPARE(screen(NO_SCREEN), static_cast<Screen*>(nullptr));
    QCOMPARE(messages.texts(), QStringList("Window::getScreenById(): ERROR! Unknown screenId=5"));
    QCOMPARE(m_window->getScreenNameById(NO_SCREEN), QString("SCREEN_UNDEFINED"));
    QCOMPARE(m_window->getScreenNameById(Screen::SCREEN_UNDEFINED), QString("SCREEN_UNDEFINED"));
}

void WindowHistoryTest::currentScreenIsTheOneSetVisible()
{
    makeWindow();
    QVERIFY(m_window->isSetToVisibleScreen(screen(Screen::SCREEN_STATUS)));
    QVERIFY(!m_window->isSetToVisibleScreen(screen(Screen::SCREEN_POPUP)));
    m_window->showScreen(Screen::SCREEN_POPUP, true);
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_POPUP);
    QVERIFY(m_window->isSetToVisibleScreen(screen(Screen::SCREEN_POPUP)));
}

void WindowHistoryTest::statusTextGoesToTheStatusScreen()
{
    makeWindow();
    m_window->setStatusText("a text of the test");
    QVERIFY(statusScreenSays("a text of the test"));
}

int main(int argc, char** argv)
{
    return windowfixture::run<WindowHistoryTest>(argc, argv);
}

#include "window_history_test.moc"
