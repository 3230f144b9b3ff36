// From a change of one key in the database to the repaint that it causes: through the server, the bus thread,
// the model and the status screen, in one process with the real server on a thread of its own.
//
// The clock starts when the value is handed to the database and stops at the event loop's first turn behind
// the paint of the changed number over the antenna. Prints the median and the 99th percentile.
#include "app/guiapp.h"
#include "app/window.h"
#include "bench/rows.h"
#include "model/statusupdater.h"
#include "sim/terminal.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QWidget>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>
#include <vector>

namespace {

const int rounds = 500;
const char key[] = "ram.status.signal_strength";

class Paints : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        seen = seen || event->type() == QEvent::Paint;
        return false;
    }
    bool seen = false;
};

bool waitForPaint(Paints& paints)
{
    QElapsedTimer limit;
    limit.start();
    while (!paints.seen && limit.elapsed() < 5000) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    }
    return paints.seen;
}

double percentile(const std::vector<double>& sorted, double part)
{
    return sorted[static_cast<size_t>(part * static_cast<double>(sorted.size() - 1))];
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    sim::Terminal terminal;
    terminal.set("ram.status.ext_system", 10);
    terminal.set(key, 450);
    qputenv("CBUS_ADDR", terminal.address().c_str());
    GuiApp* const application = GuiApp::createInstance(argc, argv);
    Window window(nullptr);
    QElapsedTimer start;
    start.start();
    while (!window.isVisible() && start.elapsed() < 10000) {
        application->processEvents(QEventLoop::AllEvents, 50);
    }
    QWidget* const antenna = window.findChild<QWidget*>("pAntennaLabel");
    if (!window.isVisible() || !antenna) {
        std::fprintf(stderr, "change_bench: the window did not show itself\n");
        return 1;
    }
    while (start.elapsed() < 1500) { // the start's own repaints are over
        application->processEvents(QEventLoop::AllEvents, 50);
    }
    Paints paints;
    antenna->installEventFilter(&paints);
    for (QWidget* child : antenna->findChildren<QWidget*>()) {
        child->installEventFilter(&paints);
    }
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i) {
        paints.seen = false;
        QElapsedTimer clock;
        clock.start();
        terminal.set(key, i % 2 ? 450 : 530);
        if (!waitForPaint(paints)) {
            std::fprintf(stderr, "change_bench: no repaint within 5 s\n");
            return 1;
        }
        times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    std::printf("From a change of one key to the repaint it causes, %d changes, ms\n", rounds);
    std::printf("%-34s%12.3f\n%-34s%12.3f\n", "median", percentile(times, 0.5), "99th percentile",
                percentile(times, 0.99));
    rows::print("a change of a key to its repaint", "ms, median", percentile(times, 0.5));
    rows::print("a change of a key to its repaint", "ms, 99th percentile", percentile(times, 0.99));
    std::fflush(stdout);
    _exit(0); // the bus thread still runs
}
