// The life of the display: started, alive, silent, ended, started again. Its keys, pictures and log lines
// have files of their own.
#include "sim/display/display.h"

#include "sim/display/key_sender.h"
#include "sim/display/launch.h"
#include "sim/display/log_follower.h"
#include "sim/display/picture_taker.h"
#include "sim/listeners.h"
#include "sim/timer.h"

#include "runtime/fdloop.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <list>
#include <map>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sim {

namespace {

constexpr uint32_t StopPatience = 3000; // ms between SIGTERM and SIGKILL
constexpr size_t LastLines = 5;         // of the log, told when it has ended
constexpr int PanicPriority = 1;

std::string seconds(uint32_t milliseconds)
{
    char text[32];
    snprintf(text, sizeof text, "%g s", milliseconds / 1000.0);
    return text;
}

std::string signalText(int signo)
{
    return "signal " + std::to_string(signo) + " (" + strsignal(signo) + ")";
}

std::string absolute(const std::string& file)
{
    std::error_code ignored;
    return file.empty() ? file : std::filesystem::absolute(file, ignored).string();
}

// The new one stands first.
std::string extended(const char* variable, const std::string& entry, char separator)
{
    const char* now = getenv(variable);
    return now && *now ? entry + separator + now : entry;
}

} // namespace

struct Display::Impl {
    Impl(fdloop_t* loop, const Options& options);
    ~Impl();

    bool prepare(std::string* error);
    bool makeDirectory(std::string* error);
    bool start(std::string* error);
    void stop(std::function<void()> stopped);
    uint64_t press(Key key, Done done);
    uint64_t takePicture(const std::string& file, unsigned scale, Done done);
    uint64_t refuse(const std::string& error, Done done);
    void forget(uint64_t number);

    std::map<std::string, std::string> environment() const;
    static int onSignal(int fd, void* data);
    bool takeSignals();
    void onSignOfLife();
    void send(int signo);
    void ask();
    void onSilence();
    void reap();
    void onEnd(int status);
    std::string reasonOfEnd(int status) const;
    void tellEnd(pid_t ended, int status);
    void goOn(uint32_t life);
    void startAgain();
    void heard(const std::string& line);

    fdloop_t* loop;
    Options options;
    std::string ownDirectory; // made here, for socket and log if there is no other place
    std::string socket;       // of the keypad
    LogFollower log;
    KeySender keys;
    PictureTaker pictures;

    int signals = -1;
    sigset_t maskBefore;
    bool prepared = false;

    State state = State::Stopped;
    pid_t pid = -1;
    uint32_t startTime = 0; // of the loop's clock
    size_t linesBefore = 0; // of the log, when it was started
    unsigned restarts = 0;
    unsigned shortLives = 0; // in a row
    bool answered = true;    // the last question
    bool stopping = false;
    bool goesOn = false; // it has ended and is to be started again, unless somebody stops or starts it
    std::vector<std::function<void()>> stopped;

    Timer questions;
    Timer patience; // with a display that does not answer
    Timer killer;   // of one that is told to end
    Timer delay;    // before it is started again

    uint64_t lastNumber = 0;
    std::map<uint64_t, std::function<void(const std::string&)>> listeners;
    Requests<std::string> refusals; // errors that are known at once, told later
};

Display::Impl::Impl(fdloop_t* loop, const Options& options)
    : loop(loop), options(options), log(loop, [this](const std::string& line) { heard(line); }), keys(loop),
      pictures(loop, options.screenshots.empty() ? LUMENPANEL_SCREENSHOT_PATH : options.screenshots),
      questions(loop), patience(loop), killer(loop), delay(loop),
      refusals(
          loop, [this] { refusals.finish(std::string(refusals.current())); }, [] { return std::string(); })
{
    // Not by the loop's own registration of signals: that tells a child's exit status, but not the signal by
    // which it ended.
    sigset_t ours;
    sigemptyset(&ours);
    sigaddset(&ours, SIGCHLD);
    sigaddset(&ours, SIGUSR2);
    sigprocmask(SIG_BLOCK, &ours, &maskBefore);
    signals = signalfd(-1, &ours, SFD_CLOEXEC | SFD_NONBLOCK);
    fdloop_fd_register(loop, signals, onSignal, this);
}

// Signs of life that are still under way would end this process once the signal is let through.
Display::Impl::~Impl()
{
    if (pid > 0) {
        kill(pid, SIGKILL);
        while (waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    signalfd_siginfo info;
    while (read(signals, &info, sizeof info) > 0) {
    }
    fdloop_fd_unregister(loop, signals);
    close(signals);
    sigprocmask(SIG_SETMASK, &maskBefore, nullptr);
    std::error_code ignored;
    if (!ownDirectory.empty())
        std::filesystem::remove_all(ownDirectory, ignored);
}

// --- The start

// Once, before the first start.
bool Display::Impl::prepare(std::string* error)
{
    if (prepared)
        return true;
    for (std::string* file : {&options.logFile, &options.syslogLibrary, &options.keypadDirectory})
        *file = absolute(*file);
    for (const std::string& file : {options.syslogLibrary, options.keypadDirectory}) {
        if (!file.empty() && access(file.c_str(), R_OK) != 0) {
            *error = file + ": " + strerror(errno);
            return false;
        }
    }
    bool needsDirectory = options.logFile.empty() || options.directory.empty();
    if (needsDirectory && !makeDirectory(error))
        return false;
    if (options.logFile.empty())
        options.logFile = ownDirectory + "/log";
    options.directory = absolute(options.directory.empty() ? ownDirectory : options.directory);
    socket = options.directory + "/keypad." + std::to_string(getpid());
    if (!options.keypadDirectory.empty() && !keys.listen(socket, error))
        return false;
    prepared = log.start(options.logFile, error);
    return prepared;
}

bool Display::Impl::makeDirectory(std::string* error)
{
    const char* runtime = getenv("XDG_RUNTIME_DIR");
    std::filesystem::path place = runtime && *runtime ? runtime : std::filesystem::temp_directory_path();
    std::string pattern = (place / "terminalsim-XXXXXX").string();
    if (!ownDirectory.empty())
        return true;
    if (!mkdtemp(pattern.data())) {
        *error = "cannot make a directory " + pattern + ": " + strerror(errno);
        return false;
    }
    ownDirectory = pattern;
    return true;
}

std::map<std::string, std::string> Display::Impl::environment() const
{
    std::map<std::string, std::string> changes = {
        {"APPMGR_PID", std::to_string(getpid())},
        {"APPMGR_CLIENT_EXIT_CMD", ""},
        {"SYSLOGTAP_FILE", options.logFile},
        {"SYSLOGTAP_SOCKET", ""},
    };
    if (!options.busAddress.empty())
        changes["CBUS_ADDR"] = options.busAddress;
    if (!options.syslogLibrary.empty())
        changes["LD_PRELOAD"] = extended("LD_PRELOAD", options.syslogLibrary, ':');
    if (!options.keypadDirectory.empty()) {
        changes["QT_PLUGIN_PATH"] = extended("QT_PLUGIN_PATH", options.keypadDirectory, ':');
        changes["QT_QPA_GENERIC_PLUGINS"] = extended("QT_QPA_GENERIC_PLUGINS", "deskkeypad:" + socket, ',');
    }
    return changes;
}

bool Display::Impl::start(std::string* error)
{
    if (pid > 0) {
        *error = "the display runs already";
        return false;
    }
    if (options.command.empty()) {
        *error = "there is no program to run";
        return false;
    }
    delay.stop();
    goesOn = false;
    if (!prepare(error))
        return false;
    linesBefore = log.count();
    pid = launch({options.command, environment(), options.logFile, maskBefore}, error);
    if (pid < 0)
        return false;
    state = State::Starting;
    startTime = fdloop_time_ms();
    answered = false;
    keys.expect(pid);
    pictures.ask(pid);
    patience.once(options.pingTimeout, [this] { onSilence(); });
    return true;
}

// --- Signs of life

int Display::Impl::onSignal(int, void* data)
{
    Impl& display = *static_cast<Impl*>(data);
    if (display.takeSignals())
        display.reap();
    return 0;
}

// Takes the signs of life that have come. True if a child may have ended.
bool Display::Impl::takeSignals()
{
    bool child = false;
    signalfd_siginfo info;
    while (read(signals, &info, sizeof info) == sizeof info) {
        child |= info.ssi_signo == SIGCHLD;
        if (info.ssi_signo == SIGUSR2 && static_cast<pid_t>(info.ssi_pid) == pid)
            onSignOfLife();
    }
    return child;
}

// The first one is its report that it is up. Before that, a question would end it.
void Display::Impl::onSignOfLife()
{
    answered = true;
    patience.stop();
    if (state != State::Starting)
        return;
    state = State::Running;
    questions.every(options.pingInterval, [this] { ask(); });
}

// Never to -1 or 0, which mean all processes and this one's group.
void Display::Impl::send(int signo)
{
    if (pid > 0)
        kill(pid, signo);
}

void Display::Impl::ask()
{
    if (answered)
        patience.once(options.pingTimeout, [this] { onSilence(); });
    answered = false;
    send(SIGUSR2);
}

// If it was this process that had to wait, the answer may be there already.
void Display::Impl::onSilence()
{
    bool ended = takeSignals();
    if (answered || pid < 0)
        return;
    if (ended) {
        reap();
        if (pid < 0)
            return;
    }
    options.tell("the display (pid " + std::to_string(pid) + ") has given no sign of life for " +
                 seconds(options.pingTimeout) + ": it is killed");
    send(SIGKILL);
}

// --- The end

void Display::Impl::reap()
{
    int status = 0;
    if (pid > 0 && waitpid(pid, &status, WNOHANG) == pid)
        onEnd(status);
}

// Whoever is told of it may call anything here, so the state is right before anybody is.
void Display::Impl::onEnd(int status)
{
    uint32_t life = fdloop_time_ms() - startTime;
    pid_t ended = pid;
    bool wanted = stopping;
    for (Timer* timer : {&questions, &patience, &killer})
        timer->stop();
    pid = -1;
    state = State::Stopped;
    stopping = false;
    goesOn = !wanted;
    log.readToTheEnd();
    keys.displayEnded();
    pictures.displayEnded();
    if (!wanted)
        tellEnd(ended, status);
    if (wanted) {
        std::vector<std::function<void()>> waiting;
        waiting.swap(stopped);
        for (const auto& function : waiting)
            function();
    } else if (WIFEXITED(status) && WEXITSTATUS(status) == 0) {
        options.ended(0);
    } else if (goesOn) {
        goOn(life);
    }
}

// A crash is an exit for those who wait: the crash handler prints the signal and ends with status 1.
std::string Display::Impl::reasonOfEnd(int status) const
{
    if (WIFSIGNALED(status))
        return " was ended by " + signalText(WTERMSIG(status));
    std::string text = " ended with status " + std::to_string(WEXITSTATUS(status));
    const std::string mark = "*** signal_handler: signal=";
    for (const std::string& line : log.newest(LogFollower::Kept, linesBefore)) {
        size_t at = isOutputLine(line) ? line.find(mark) : std::string::npos;
        if (at != std::string::npos)
            text = " crashed by " + signalText(atoi(line.c_str() + at + mark.size())) + " and" + text;
    }
    return text;
}

void Display::Impl::tellEnd(pid_t ended, int status)
{
    std::string text = "the display (pid " + std::to_string(ended) + ")" + reasonOfEnd(status);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) {
        options.tell(text);
        return;
    }
    std::vector<std::string> lines;
    for (const std::string& line : log.newest(LogFollower::Kept, linesBefore)) {
        if (!isOutputLine(line))
            lines.push_back(line);
    }
    if (lines.empty()) // it has logged nothing: then what it printed
        lines = log.newest(LastLines, linesBefore);
    // Behind the panic other threads may still have logged something.
    auto panic = std::find_if(lines.rbegin(), lines.rend(),
                              [](const std::string& line) { return logPriority(line) == PanicPriority; });
    if (panic != lines.rend()) {
        options.tell(text + ": " + *panic);
        return;
    }
    options.tell(text + (lines.empty() ? ", without a line in its log" : "; its last log lines:"));
    for (size_t i = lines.size() > LastLines ? lines.size() - LastLines : 0; i < lines.size(); i++)
        options.tell("    " + lines[i]);
}

void Display::Impl::goOn(uint32_t life)
{
    shortLives = life < options.shortLife ? shortLives + 1 : 0;
    if (shortLives >= options.maxRestarts) {
        options.tell("the display has ended " + std::to_string(shortLives) + " times within " +
                     seconds(options.shortLife) + " of its start: it is given up");
        options.ended(1);
        return;
    }
    options.tell("the display is started again in " + seconds(options.restartDelay));
    if (goesOn)
        delay.once(options.restartDelay, [this] { startAgain(); });
}

void Display::Impl::startAgain()
{
    std::string error;
    restarts++;
    if (start(&error)) {
        options.tell("the display is started again (pid " + std::to_string(pid) + ")");
        return;
    }
    options.tell(error);
    options.ended(1);
}

void Display::Impl::stop(std::function<void()> function)
{
    delay.stop();
    goesOn = false;
    shortLives = 0;
    if (pid < 0) {
        function();
        return;
    }
    stopped.push_back(std::move(function));
    if (stopping)
        return;
    stopping = true;
    questions.stop();
    patience.stop();
    send(SIGTERM);
    send(SIGCONT); // one that was frozen
    killer.once(StopPatience, [this] { send(SIGKILL); });
}

// --- Keys, pictures, log

uint64_t Display::Impl::refuse(const std::string& error, Done done)
{
    refusals.add(++lastNumber, error, std::move(done));
    return lastNumber;
}

uint64_t Display::Impl::press(Key key, Done done)
{
    if (pid < 0)
        return refuse("no display is running", std::move(done));
    if (options.keypadDirectory.empty())
        return refuse("the display was started without a keypad", std::move(done));
    keys.press(++lastNumber, key, std::move(done));
    return lastNumber;
}

uint64_t Display::Impl::takePicture(const std::string& file, unsigned scale, Done done)
{
    if (pid < 0)
        return refuse("no display is running", std::move(done));
    if (scale < 1 || scale > MaxScale)
        return refuse("a picture is enlarged 1 to " + std::to_string(MaxScale) + " times", std::move(done));
    pictures.take(++lastNumber, file, scale, std::move(done));
    return lastNumber;
}

void Display::Impl::forget(uint64_t number)
{
    listeners.erase(number);
    refusals.forget(number);
    keys.forget(number);
    pictures.forget(number);
}

void Display::Impl::heard(const std::string& line)
{
    tellListeners(listeners, line);
}

// --- The class

Display::Display(fdloop_t* loop, const Options& options) : impl(std::make_unique<Impl>(loop, options))
{
    if (!impl->options.tell)
        impl->options.tell = [](const std::string&) {};
    if (!impl->options.ended)
        impl->options.ended = [](int) {};
}

Display::~Display() = default;

bool Display::start(std::string* error)
{
    return impl->start(error);
}

void Display::stop(std::function<void()> stopped)
{
    impl->stop(std::move(stopped));
}

void Display::restart()
{
    impl->stop([this] { impl->startAgain(); });
}

Display::State Display::state() const
{
    return impl->state;
}

pid_t Display::pid() const
{
    return impl->pid;
}

unsigned Display::restarts() const
{
    return impl->restarts;
}

uint32_t Display::uptime() const
{
    return impl->pid < 0 ? 0 : fdloop_time_ms() - impl->startTime;
}

uint64_t Display::press(Key key, Done done)
{
    return impl->press(key, std::move(done));
}

uint64_t Display::takePicture(const std::string& file, unsigned scale, Done done)
{
    return impl->takePicture(file, scale, std::move(done));
}

uint64_t Display::listenToLog(std::function<void(const std::string&)> listener)
{
    impl->listeners[++impl->lastNumber] = std::move(listener);
    return impl->lastNumber;
}

std::vector<std::string> Display::lastLines(size_t count) const
{
    return impl->log.newest(count);
}

void Display::forget(uint64_t number)
{
    impl->forget(number);
}

} // namespace sim
