// The repaint of the whole status screen, against that of a bare window of the same size with ten labels
// under the same fonts. Both are shown on Qt's offscreen platform and painted at once, from the window's
// request to its pixels. (A repaint asked of the main window would paint nothing: the screen covers it.)
//
// Beside it one step of an icon's fade, as a measure of what moves by itself. After the
// usual table a second one with the ratios, taken in short alternating rounds so that other load on the
// machine meets all alike; instructions are those of user space.
#include "app/guiapp.h"
#include "app/window.h"
#include "bench/rows.h"
#include "bench/steps.h"
#include "model/statusupdater.h"
#include "screens/screenstatus.h"
#include "sim/terminal.h"
#include "widgets/tlabel.h"

#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QLabel>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <unistd.h>
#include <vector>

namespace {

ScreenStatus* screen;
QWidget* bare;
TLabel* lan;

// A screen with everything on it: a running terminal, numbers on the icons, a warning and a question.
void fillPanel(Window& window)
{
    StatusUpdater* const model = StatusUpdater::getStatusUpdater();
    for (int interface = INTERFACE_NAME_FIRST; interface <= INTERFACE_NAME_LAST; ++interface) {
        model->setInterfaceState(static_cast<INTERFACE_NAME_ENUM>(interface),
                                 interface % 2 ? INTERFACE_STATE_ON : INTERFACE_STATE_OFF);
    }
    model->setWifiNumberOfClients(2);
    model->setSignalLevel(523);
    model->setSignalLevelIcon(4);
    model->setWarningsPresent(true);
    battery_t battery;
    battery.batteryConnectionStatus = BATT_PRESENT;
    battery.minutesLeft = 246;
    battery.capacity = 82;
    model->setBattData(battery, battery_t());
    QCoreApplication::processEvents();
    screen = window.findChild<ScreenStatus*>();
    screen->findChild<TLabel*>("pWarningLabel")->setBlinking(false); // a timer less in the measurement
    screen->setStatusText("Searching");
    lan = screen->findChild<TLabel*>("pLanLabel");
}

QWidget* makeBareWindow()
{
    QWidget* const window = new QWidget;
    window->setFixedSize(256, 64);
    for (int i = 0; i < 10; ++i) {
        QLabel* const label = new QLabel(QString("Label %1").arg(i), window);
        label->setGeometry(i % 5 * 51, i / 5 * 32, 51, 32);
    }
    window->show();
    return window;
}

void repaintPanel()
{
    screen->repaint();
}

void frame(bool shown)
{
    screen->setFocusFrame(shown ? ScreenStatus::FOCUS_MENU : ScreenStatus::FOCUS_NONE);
    QCoreApplication::processEvents();
}

void repaintBare()
{
    bare->repaint();
}

// One step of the fade with the repaint that it causes.
void fadeStep()
{
    lan->handleActivatingTimeout();
    lan->repaint();
}

void BM_StatusScreen(benchmark::State& state)
{
    for (auto _ : state) {
        repaintPanel();
    }
}
BENCHMARK(BM_StatusScreen);

void BM_StatusScreenWithFrame(benchmark::State& state)
{
    frame(true);
    for (auto _ : state) {
        repaintPanel();
    }
    frame(false);
}
BENCHMARK(BM_StatusScreenWithFrame);

void BM_TenLabels(benchmark::State& state)
{
    for (auto _ : state) {
        repaintBare();
    }
}
BENCHMARK(BM_TenLabels);

void BM_FadeStep(benchmark::State& state)
{
    lan->setState(INTERFACE_STATE_ACTIVATING);
    for (auto _ : state) {
        fadeStep();
    }
    lan->setState(INTERFACE_STATE_ON);
}
BENCHMARK(BM_FadeStep);

// --- The second table

double processorTime()
{
    timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return 1e6 * static_cast<double>(now.tv_sec) + 1e-3 * static_cast<double>(now.tv_nsec);
}

double timeOf(const std::function<void()>& repaint)
{
    const int TURNS = 50;
    const double start = processorTime();
    for (int i = 0; i < TURNS; ++i) {
        repaint();
    }
    return (processorTime() - start) / TURNS;
}

// The difference between one and three, so that what surrounds them falls out.
double instructionsOf(const std::function<void()>& repaint)
{
    const long one = steps::countOnce(repaint);
    const long three = steps::countOnce([&repaint] {
        repaint();
        repaint();
        repaint();
    });
    return one < 0 || three < 0 ? -1.0 : static_cast<double>(three - one) / 2;
}

void printRatios()
{
    const int ROUNDS = 101;
    struct {
        const char* name;
        bool framed;
        std::vector<double> times;
        std::vector<double> ratios;
        double instructions;
    } rows[] = {{"status screen", false, {}, {}, 0}, {"status screen with its frame", true, {}, {}, 0}};
    std::vector<double> bareTimes;
    const double bareInstructions = instructionsOf(repaintBare);
    for (auto& row : rows) {
        frame(row.framed);
        repaintPanel();
        row.instructions = instructionsOf(repaintPanel);
        for (int round = 0; round < ROUNDS; ++round) {
            bareTimes.push_back(timeOf(repaintBare));
            row.times.push_back(timeOf(repaintPanel));
            row.ratios.push_back(row.times.back() / bareTimes.back());
        }
    }
    std::printf("\nOne repaint, medians of %d alternating rounds\n", ROUNDS);
    std::printf("%-34s%14s%8s%18s%8s\n", "", "processor us", "ratio", "instructions", "ratio");
    std::printf("%-34s%14.1f%8s%18.0f\n", "window with ten labels", rows::median(bareTimes), "",
                bareInstructions);
    for (const auto& row : rows) {
        std::printf("%-34s%14.1f%8.2f%18.0f%8.2f\n", row.name, rows::median(row.times),
                    rows::median(row.ratios), row.instructions, row.instructions / bareInstructions);
        const std::string measure = std::string("one repaint of the ") + row.name;
        rows::print(measure, "processor us", rows::median(row.times),
                    {{"window with ten labels", rows::median(bareTimes), rows::median(row.ratios)}});
        rows::print(measure, "instructions", row.instructions,
                    {{"window with ten labels", bareInstructions}});
    }
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    sim::Terminal terminal;
    terminal.useForProcess();
    GuiApp::createInstance(argc, argv);
    Window window(nullptr);
    window.show();
    while (StatusUpdater::getStatusUpdater()->getExtendedSystemStatus() != 10) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    }
    fillPanel(window);
    bare = makeBareWindow();
    QCoreApplication::processEvents();
    benchmark::RunSpecifiedBenchmarks();
    printRatios();
    fflush(nullptr);
    _exit(0); // the bus thread never ends
}
