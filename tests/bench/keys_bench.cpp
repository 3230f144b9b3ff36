// From a key press to the end of the repaint that it causes, on each screen on which a key changes the
// picture, in one process with the real server. Prints the median and the 99th percentile.
//
// The press is posted as the window system's would be; the clock stops at the first turn of the event loop
// behind a paint of the window. On the pointing screen no key changes the picture, so it has no row.
#include "app/guiapp.h"
#include "app/window.h"
#include "bench/rows.h"
#include "model/event_ids.h"
#include "model/statusupdater.h"
#include "screens/screenpopup.h"
#include "screens/screenstatus.h"
#include "sim/terminal.h"

#include <QElapsedTimer>
#include <QKeyEvent>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <unistd.h>
#include <vector>

namespace {

const int PRESSES = 400;

Window* window;

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

class Paints : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        seen = seen || event->type() == QEvent::Paint;
        return false;
    }
    bool seen = false;
};
Paints paints;

void settle()
{
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
}

// -1 if nothing was painted within two seconds.
double timeOf(int key)
{
    paints.seen = false;
    QElapsedTimer clock;
    clock.start();
    QCoreApplication::postEvent(window->focusWidget(), new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier));
    while (!paints.seen && clock.elapsed() < 2000)
        QCoreApplication::processEvents();
    return paints.seen ? double(clock.nsecsElapsed()) / 1e6 : -1.0;
}

void fillAlerts(int count)
{
    QList<fmmi_evt_t> events;
    for (int i = 0; i < count; ++i) {
        fmmi_evt_t event;
        event.identifier = 0x200 + 0x10 * unsigned(i % 40);
        event.sub_id = unsigned(i);
        event.severity = EVENT_WARNING;
        event.state = 2;
        event.time = 1600000000000 + 1000 * i;
        events.append(event);
    }
    model().setSystemEvents(events);
    settle();
    ScreenPopup* const popups = static_cast<ScreenPopup*>(window->getScreenById(Screen::SCREEN_POPUP));
    while (!popups->events().isEmpty())
        popups->closePopup(popups->events().first().eventId, true);
    settle();
}

void showPopup()
{
    popup_event_t popup;
    popup.eventId = EV_AP_GUI_CUSTOM_TEXT;
    popup.severity = EVENT_WARNING;
    popup.closeHandling = POPUP_CLOSE_OK;
    popup.timeStamp = QDateTime::currentDateTime();
    popup.text = QString("A text of many lines that doesn't fit the screen. ").repeated(20);
    ScreenPopup* const popups = static_cast<ScreenPopup*>(window->getScreenById(Screen::SCREEN_POPUP));
    popups->addEvent(popup);
    settle();
    timeOf(Qt::Key_Down); // stops the swing
}

void show(Screen::SCREEN_ID_ENUM screenId)
{
    window->showScreen(screenId, false);
    settle();
}

const struct {
    const char* name;
    std::function<void()> prepare; // once
    std::function<void()> again;   // before each press, outside of the time; may be null
    int keys[2];                   // by turns
} presses[] = {
    {"status: frame moves", [] { show(Screen::SCREEN_STATUS); }, nullptr, {Qt::Key_Left, Qt::Key_Right}},
    {"bundle list: row moves", [] { show(Screen::SCREEN_ACTION); }, nullptr, {Qt::Key_Down, Qt::Key_Up}},
    {"menu: row moves", [] { show(Screen::SCREEN_MENU); }, nullptr, {Qt::Key_Down, Qt::Key_Up}},
    {"battery: back to status", [] {}, [] { show(Screen::SCREEN_BATTERY); }, {Qt::Key_Up, Qt::Key_Up}},
    {"antenna: back to status", [] {}, [] { show(Screen::SCREEN_ANTENNA); }, {Qt::Key_Up, Qt::Key_Up}},
    {"pointing: cancelled", [] {}, [] { show(Screen::SCREEN_POINTING); }, {Qt::Key_Left, Qt::Key_Left}},
    {"PIN: digit changes", [] { show(Screen::SCREEN_ENTER_PIN); }, nullptr, {Qt::Key_Up, Qt::Key_Down}},
    {"popup: text scrolls", [] { showPopup(); }, nullptr, {Qt::Key_Down, Qt::Key_Up}},
    {"menu with 200 alerts: row moves",
     [] {
         static_cast<ScreenPopup*>(window->getScreenById(Screen::SCREEN_POPUP))
             ->closePopup(EV_AP_GUI_CUSTOM_TEXT, true);
         fillAlerts(200);
         window->scrollToAlertMenuAndExpand();
         show(Screen::SCREEN_MENU);
     },
     nullptr,
     {Qt::Key_Down, Qt::Key_Up}},
    {"menu with 200 alerts: opens",
     [] {
         static_cast<ScreenStatus*>(window->getScreenById(Screen::SCREEN_STATUS))
             ->setFocusFrame(ScreenStatus::FOCUS_MENU);
     },
     [] { show(Screen::SCREEN_STATUS); },
     {Qt::Key_Return, Qt::Key_Return}},
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    sim::Terminal terminal;
    terminal.useForProcess();
    GuiApp* const application = GuiApp::createInstance(argc, argv);
    window = new Window(nullptr);
    QElapsedTimer start;
    start.start();
    while (start.elapsed() < 2500 || (!window->isVisible() && start.elapsed() < 10000))
        application->processEvents(QEventLoop::AllEvents, 50);
    if (!window->isVisible()) {
        std::fprintf(stderr, "keys_bench: the window did not show itself\n");
        return 1;
    }
    window->activateWindow();
    for (QWidget* child : window->findChildren<QWidget*>())
        child->installEventFilter(&paints);
    std::printf("From a key press to the repaint it causes, %d presses, ms\n", PRESSES);
    std::printf("%-36s%10s%18s\n", "", "median", "99th percentile");
    int status = 0;
    for (const auto& row : presses) {
        row.prepare();
        std::vector<double> times;
        for (int i = 0; i < PRESSES; ++i) {
            if (row.again)
                row.again();
            const double time = timeOf(row.keys[i % 2]);
            settle();
            if (time < 0) {
                std::fprintf(stderr, "keys_bench: %s: a key press painted nothing\n", row.name);
                status = 1;
                break;
            }
            times.push_back(time);
        }
        std::sort(times.begin(), times.end());
        if (!times.empty()) {
            std::printf("%-36s%10.2f%18.2f\n", row.name, times[times.size() / 2],
                        times[times.size() * 99 / 100]);
            rows::print(std::string("a key press to its repaint, ") + row.name, "ms, median",
                        times[times.size() / 2]);
        }
    }
    std::fflush(stdout);
    _exit(status); // the bus thread still runs
}
