// A storm: 1,000 changes a second for 30 seconds, on keys of every kind that the display follows, while its
// window is up. The changes come from the real server in a process of its own, as on the terminal.
//
// Printed: how long after the last change the last value is on the screen, the memory after ten seconds and
// at the end, and how long a key press in the midst of it takes until its screen is repainted.
#include "app/guiapp.h"
#include "app/window.h"
#include "bench/rows.h"
#include "model/statusupdater.h"
#include "sim/terminal.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLabel>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

const int CHANGES_A_SECOND = 1000;
const int KEY_PRESS_EVERY_MS = 100;
int seconds = 30;

// What the display follows, with two values to go to and fro between. What would put another screen or a
// popup before the status screen (alerts, pointing, updates, the modem) is left out: the key presses are
// measured on that screen.
const struct {
    const char* key;
    int value, otherValue;
} numbers[] = {
    {"ram.status.battery.1.capacity_percentage", 40, 90},
    {"ram.status.psumcu.events.external_supply", 0, 1},
    {"ram.status.position.satellites", 3, 7},
    {"ram.status.signal_strength_norm", 2, 4},
    {"cfg.display.brightness", 3, 6},
    {"cfg.display.timeout", 120, 300},
    {"cfg.audio_indication.pointing", 0, 1},
    {"ram.status.interfaces.isdn.enabled", 0, 1},
    {"ram.status.interfaces.lan.enabled", 0, 1},
    {"ram.status.interfaces.phone.enabled", 0, 1},
    {"ram.status.interfaces.usb.enabled", 0, 1},
    {"ram.status.interfaces.wlan.enabled", 0, 1},
    {"cfg.interfaces.lan.enabled", 0, 1},
    {"ram.status.interfaces.wlan.clients", 1, 3},
    {"cfg.interfaces.wlan.bssid", 0, 1},
    {"ram.wan.user_selection", 0, 1},
    {"cfg.power_up.switch_on_when_external_power", 0, 1},
    {"ram.status.ongoing_data_sessions.0.status", 1, 2},
    {"ram.status.ongoing_data_sessions.0.background_total", 10, 20000},
    {"ram.status.ongoing_data_sessions.0.context.1.traffic_class", 2, 3},
    {"ram.net.single_user_mode", 0, 0},
    {"cfg.net.user_groups.0.automatic_activation", 0, 1},
    {"cfg.bonding.enabled", 0, 1},
    {"ram.bonding.status.service.0.cnt", 0, 2},
    {"cfg.admin.bundle.1.connection.0", 1, 2},
    {"ram.status.signal_strength", 410, 560},
};

long residentKiB()
{
    std::ifstream file("/proc/self/status");
    std::string line;
    while (std::getline(file, line)) {
        if (line.compare(0, 6, "VmRSS:") == 0)
            return std::atol(line.c_str() + 6);
    }
    return -1;
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

double percentile(std::vector<double> values, double part)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? -1.0 : values[static_cast<size_t>(part * static_cast<double>(values.size() - 1))];
}

// The terminal's side, in a process of its own: says its address, waits to be told, storms, says when it was
// over, and stays until it is closed.
int storm(int fromPanel, int toPanel)
{
    sim::TerminalOptions options;
    options.record = false; // the logs of a storm would fill the memory
    sim::Terminal terminal(options);
    const std::string address = terminal.address() + "\n";
    terminal.set("ram.status.ext_system", 10);
    char word;
    if (write(toPanel, address.data(), address.size()) < 0 || read(fromPanel, &word, 1) != 1)
        return 1;
    QElapsedTimer clock;
    clock.start();
    const int changes = CHANGES_A_SECOND * seconds;
    for (int i = 0; i < changes; ++i) {
        const auto& row = numbers[size_t(i) % (sizeof(numbers) / sizeof(numbers[0]))];
        const int round = int(size_t(i) / (sizeof(numbers) / sizeof(numbers[0])));
        terminal.set(row.key, round % 2 ? row.value : row.otherValue);
        while (clock.nsecsElapsed() < qint64(i) * 1000000000 / CHANGES_A_SECOND)
            usleep(200);
    }
    terminal.set("ram.status.signal_strength", 444);
    const double took = double(clock.nsecsElapsed()) / 1e9;
    if (write(toPanel, &took, sizeof(took)) < 0 || read(fromPanel, &word, 1) != 1)
        return 1;
    return 0;
}

std::string readLine(int fd)
{
    std::string line;
    char c;
    while (read(fd, &c, 1) == 1 && c != '\n')
        line += c;
    return line;
}

// Presses an arrow and turns the event loop until the selection frame has been painted.
double timeOfKeyPress(QWidget* screen, Paints& paints, int key)
{
    paints.seen = false;
    QElapsedTimer clock;
    clock.start();
    QKeyEvent* const press = new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::postEvent(screen, press); // behind what is queued, as a real one
    while (!paints.seen && clock.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    return double(clock.nsecsElapsed()) / 1e6;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1)
        seconds = std::atoi(argv[1]);
    int toTerminal[2], toPanel[2];
    if (pipe(toTerminal) < 0 || pipe(toPanel) < 0)
        return 1;
    const pid_t terminal = fork();
    if (terminal == 0)
        _exit(storm(toTerminal[0], toPanel[1]));
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("CBUS_ADDR", readLine(toPanel[0]).c_str());
    GuiApp* const application = GuiApp::createInstance(argc, argv);
    Window window(nullptr);
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 1500 || (!window.isVisible() && clock.elapsed() < 10000))
        application->processEvents(QEventLoop::AllEvents, 50);
    QWidget* const screen = window.getScreenById(Screen::SCREEN_STATUS);
    QWidget* const frame = window.findChild<QWidget*>("pSelectionFrame");
    if (!window.isVisible() || !screen || !frame) {
        std::fprintf(stderr, "storm_bench: the window did not show itself\n");
        return 1;
    }
    Paints paints;
    frame->installEventFilter(&paints);

    // What the terminal's side says arrives on a thread of its own, to the moment.
    std::atomic<double> took(-1);
    QElapsedTimer sinceEnd;
    std::thread listener([&] {
        double value = 0;
        if (read(toPanel[0], &value, sizeof(value)) == ssize_t(sizeof(value))) {
            sinceEnd.start();
            took = value;
        }
    });
    if (write(toTerminal[1], "g", 1) != 1)
        return 1;
    std::vector<double> presses;
    long memoryAtTen = -1;
    clock.restart();
    qint64 nextPress = KEY_PRESS_EVERY_MS;
    while (took < 0) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
        if (clock.elapsed() >= nextPress) {
            presses.push_back(
                timeOfKeyPress(screen, paints, presses.size() % 2 ? Qt::Key_Left : Qt::Key_Right));
            nextPress = clock.elapsed() + KEY_PRESS_EVERY_MS;
        }
        if (memoryAtTen < 0 && clock.elapsed() > 1000 * seconds / 3)
            memoryAtTen = residentKiB();
    }
    listener.join();
    while (StatusUpdater::getStatusUpdater()->getSignalLevel() != 444 && sinceEnd.elapsed() < 10000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    QLabel* const level = window.findChild<QWidget*>("pAntennaLabel")->findChild<QLabel*>("pTopLayerLabel");
    while (level && !level->text().endsWith("44") &&
           sinceEnd.elapsed() < 10000) // behind the beam, in whole dBHz
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    const double settled = double(sinceEnd.nsecsElapsed()) / 1e6;
    const long memoryAtEnd = residentKiB();

    std::printf("A storm of %d changes a second for %d s on %d keys\n", CHANGES_A_SECOND, seconds,
                int(sizeof(numbers) / sizeof(numbers[0])));
    std::printf("%-52s%10.1f\n", "changes a second that the server got done",
                CHANGES_A_SECOND * seconds / double(took));
    std::printf("%-52s%10.1f\n", "last value shown after the last change, ms (200)", settled);
    std::printf("%-52s%10ld\n", "memory after a third of it, KiB", memoryAtTen);
    std::printf("%-52s%10ld\n", "memory at the end, KiB", memoryAtEnd);
    std::printf("%-52s%10.2f\n", "key press to repaint, median, ms", percentile(presses, 0.5));
    std::printf("%-52s%10.2f\n", "key press to repaint, 99th percentile, ms (100)",
                percentile(presses, 0.99));
    std::printf("%-52s%10zu\n", "key presses", presses.size());
    rows::print("storm of 1,000 changes a second: last value shown after", "ms", settled);
    rows::print("storm: a key press to its repaint", "ms, 99th percentile", percentile(presses, 0.99));
    rows::print("storm: memory at its end", "KiB", double(memoryAtEnd),
                {{"after a third of it", double(memoryAtTen)}});
    std::fflush(stdout);
    if (write(toTerminal[1], "e", 1) != 1)
        return 1;
    waitpid(terminal, nullptr, 0);
    _exit(0);
}
