// What comes up when screens, popups, the pointing and the screen saver want the display at once: the
// screen saver first, then pointing, the popups, the history, and last the status screen.
//
// The window stays hidden in these walks, so that a popup which the program removes goes at once.
#include "screens/windowwalk.h"

#include "screens/screenpointing.h"

using namespace windowfixture;

namespace {

const Walk walks[] = {
    // Screens under a popup
    {"a screen waits under two popups",
     {{"W I", "POPUP | W I"},
      {"MENU+", "POPUP MENU | W I"},
      {"ok", "POPUP MENU | I"},
      {"ok", "MENU"},
      {"back", "STATUS"}}},
    {"a screen waits also if it is not to be added", {{"W MENU", "POPUP MENU | W"}, {"ok", "MENU"}}},
    {"a screen waits once", {{"W MENU+ MENU+ MENU", "POPUP MENU | W"}}},
    {"several screens wait, the last one comes first",
     {{"MENU W", "POPUP MENU | W"},
      {"BATTERY+ ANTENNA+", "POPUP MENU BATTERY ANTENNA | W"},
      {"ok", "ANTENNA MENU BATTERY"},
      {"back", "BATTERY MENU"},
      {"back", "MENU"},
      {"back", "STATUS"}}},
    {"the status screen doesn't wait",
     {{"W STATUS", "POPUP | W"}, {"STATUS+", "POPUP | W"}, {"ok", "STATUS"}}},
    {"the popup screen doesn't wait", {{"W POPUP+", "POPUP | W"}, {"ok", "STATUS"}}},
    {"information too keeps its place", {{"I MENU+", "POPUP MENU | I"}}},
    {"a waiting screen that is taken away", {{"W MENU+ BATTERY+ -MENU", "POPUP BATTERY | W"}}},
    {"hiding the popup screen shows the next popup", {{"W -POPUP", "POPUP | W"}}},
    {"the popup covers the screen that stood",
     {{"MENU+ BATTERY+ W", "POPUP MENU BATTERY | W"}, {"ok", "BATTERY MENU"}}},
    {"a popup that the program removes", {{"MENU+ W gone", "MENU"}}},
    {"an unknown screen waits in vain",
     {{"W OTHER", "POPUP UNDEFINED | W"}, {"ok", "POPUP"}, {"back", "STATUS"}}},
    {"an unknown screen is taken away", {{"W OTHER -OTHER", "POPUP | W"}}},

    // Pointing and popups
    {"the pointing screen pushes information aside", {{"I POINTING+", "POINTING | I"}}},
    {"the pointing screen pushes several aside, without being added", {{"I POINTING", "POINTING | I"}}},
    {"the pointing screen doesn't push a warning aside", {{"W POINTING+", "POPUP | W"}, {"ok", "STATUS"}}},
    {"the pointing screen doesn't push an error aside", {{"E POINTING+", "POPUP | E"}}},
    {"the pointing screen doesn't push a fatal event aside", {{"F POINTING+", "POPUP | F"}}},
    {"the pointing screen doesn't push a warning before information aside",
     {{"W I POINTING+", "POPUP | W I"}}},
    {"pointing begins under information, which comes afterwards",
     {{"I point", "POINTING | I"}, {"pointed", "POPUP | I"}, {"ok", "STATUS"}}},
    {"pointing begins under a warning and comes up when that is closed",
     {{"W point", "POPUP | W"}, {"ok", "POINTING"}, {"unpointed", "STATUS"}}},
    {"pointing begins under a warning and ends before it is closed",
     {{"W point unpointed", "POPUP | W"}, {"ok", "STATUS"}}},
    {"a warning interrupts pointing, information doesn't",
     {{"point", "POINTING"},
      {"I", "POINTING | I"},
      {"W", "POPUP | W I"},
      {"ok", "POINTING | I"},
      {"pointed", "POPUP | I"},
      {"ok", "STATUS"}}},
    {"the last popup closed in pointing mode leads to pointing, not to the history",
     {{"MENU+ W point", "POPUP MENU | W"}, {"ok", "POINTING MENU"}, {"pointed", "MENU"}}},
    {"another screen may cover pointing, and the way back leads to it",
     {{"point I MENU+", "MENU | I"}, {"back", "POINTING | I"}}},
    {"popups that wait come before the history",
     {{"point I MENU+ BATTERY+ unpointed", "BATTERY MENU | I"},
      {"back", "POPUP MENU BATTERY | I"},
      {"ok", "BATTERY MENU"}}},

    // The screen saver
    {"the screen saver keeps every way back closed",
     {{"MENU saver", "POPUP MENU | S"}, {"back", "POPUP MENU | S"}, {"ok", "MENU"}}},
    {"back under the screen saver removes the current screen from the history, and no more",
     {{"MENU saver BATTERY+", "BATTERY MENU | S"}, {"MENU+", "MENU MENU | S"}, {"back", "MENU | S"}}},
    {"the screen saver alone lets screens come", {{"saver", "POPUP | S"}, {"MENU+", "MENU | S"}}},
    {"the screen saver comes before pointing and popups",
     {{"point I saver", "POPUP | S I"}, {"back", "POPUP | S I"}}},
    {"the screen saver over a popup lets no screen come",
     {{"W saver", "POPUP | S W"}, {"MENU+", "POPUP MENU | S W"}, {"POINTING+", "POPUP MENU | S W"}}},
    {"the screen saver over information lets pointing come", {{"I saver POINTING+", "POINTING | S I"}}},
    {"pointing ends the screen saver", {{"saver point", "POINTING"}}},
    {"pointing ends the screen saver over a warning, which stays",
     {{"W saver point", "POPUP | W"}, {"ok", "POINTING"}}},
    {"any popup ends the screen saver", {{"saver I", "POPUP | I"}}},

    // The list of bundles, of which there are none
    {"actions without a bundle tell so, and lead back to where they were asked for",
     {{"MENU ACTION+", "POPUP MENU MENU | I"}, {"ok", "MENU MENU"}, {"back", "STATUS"}}},
    {"actions without a bundle from the status screen", {{"ACTION", "POPUP | I"}, {"ok", "STATUS"}}},
    {"actions without a bundle that had to wait",
     {{"W ACTION+", "POPUP ACTION | W"}, {"ok", "POPUP | I"}, {"ok", "STATUS"}}},
};

} // namespace

class WindowPrecedenceTest : public QObject, protected WindowWalk {
    Q_OBJECT

private slots:
    void init()
    {
        startTest();
        QVERIFY(setBundles({}));
    }
    void cleanup() { endTest(); }

    void display_data();
    void display();
    void decisionsAreLogged();
    void actionsWithoutABundleHaveTheirPopup();
    void pointingRestartsTheSaversDelay();
    void keysReachThePopupAndNotTheScreenBelow();
};

void WindowPrecedenceTest::display_data()
{
    QTest::addColumn<int>("row");
    int row = 0;
    for (const Walk& walk : walks) {
        QTest::newRow(walk.name) << row++;
    }
}

void WindowPrecedenceTest::display()
{
    QFETCH(int, row);
    makeWindow();
    const QString fault = walk(walks[row]);
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

void WindowPrecedenceTest::decisionsAreLogged()
{
    const char reason[] = "Window::ShowScreen(screenId, addToHistory): Do not append screenId=%1 to history, "
                          "as %2 shall never be added to history.";
    const struct {
        const char* steps;
        QString line;
    } rows[] = {
        {"W STATUS", QString(reason).arg("7", "SCREEN_STATUS")},
        {"W POINTING", QString(reason).arg("6", "SCREEN_POINTING")},
        {"W point", QString(reason).arg("6", "SCREEN_POINTING")},
        {"saver back", "Window::showPreviousScreen(): do nothing, as screenSaver is active"},
        {"W OTHER -OTHER", "Window::hideAndRemoveScreenFromHistory(screenId=5): Warning: pTmpScreen == NULL"},
    };
    for (const auto& row : rows) {
        makeWindow();
        model()->setPointingMode(POINTING_STATUS_NOT_POINTED);
        Messages messages;
        go(row.steps);
        // With a warning up the start of the pointing asks for no screen at all.
        const int expected = QString(row.steps) == "W point" ? 0 : 1;
        QVERIFY2(messages.count(row.line) == expected, qPrintable(row.line));
    }
}

void WindowPrecedenceTest::actionsWithoutABundleHaveTheirPopup()
{
    makeWindow();
    m_window->showScreen(Screen::SCREEN_ACTION, true);
    QCOMPARE(queued(), QStringList("EV_AP_GUI_NO_BUNDLES_DEFINED"));
    QCOMPARE(argumentsOf(EV_AP_GUI_NO_BUNDLES_DEFINED), QString("EVENT_INFO 1 0 - -"));
    QCOMPARE(queue().first().text, model()->getEventText(EV_AP_GUI_NO_BUNDLES_DEFINED));
    QVERIFY(screen(Screen::SCREEN_ACTION)->isHidden());
}

void WindowPrecedenceTest::pointingRestartsTheSaversDelay()
{
    makeWindow();
    forgetBus();
    model()->setPointingMode(POINTING_STATUS_POINTING);
    QVERIFY(terminal().waitForWrite("ram.powersave.activity.display", sim::Value::integer(1)));
}

// Real keys on a visible window: the popup has them, and OK brings the menu back that was below.
void WindowPrecedenceTest::keysReachThePopupAndNotTheScreenBelow()
{
    makeVisibleWindow();
    m_window->showScreen(Screen::SCREEN_ANTENNA, false);
    m_window->addEvent(EV_AP_GUI_CUSTOM_TEXT, EVENT_INFO, POPUP_CLOSE_OK, 0, nullptr, nullptr, "text", -1);
    QCOMPARE(state(), QString("POPUP ANTENNA | I"));
    for (Qt::Key key : {Qt::Key_Left, Qt::Key_Up, Qt::Key_Down, Qt::Key_Right, Qt::Key_Space}) {
        QTest::keyClick(QApplication::focusWidget(), key);
        QCOMPARE(state(), QString("POPUP ANTENNA | I")); // the antenna screen would have gone
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(state(), QString("ANTENNA"));
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(screen(Screen::SCREEN_ANTENNA)));
}

int main(int argc, char** argv)
{
    return windowfixture::run<WindowPrecedenceTest>(argc, argv);
}

#include "window_precedence_test.moc"
