// The steps of a picture: the display is up to it, nobody else takes one, it is asked, its file is there.
#include "sim/display/picture_taker.h"

#include "sim/display/picture.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/file.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace sim {

namespace {

constexpr uint32_t RetryInterval = 50; // ms

// Whether the process has a handler for the signal; without one, the signal would end it.
bool catches(pid_t process, int signo)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    const std::string mark = "SigCgt:";
    std::string line;
    while (std::getline(status, line)) {
        if (line.compare(0, mark.size(), mark) == 0)
            return strtoull(line.c_str() + mark.size(), nullptr, 16) >> (signo - 1) & 1;
    }
    return false;
}

// screen_yyyyMMdd_hhmmss.bmp
bool isScreenshot(const std::string& name)
{
    const std::string pattern = "screen_########_######.bmp";
    if (name.size() != pattern.size())
        return false;
    for (size_t i = 0; i < pattern.size(); i++) {
        bool digit = name[i] >= '0' && name[i] <= '9';
        if (pattern[i] == '#' ? !digit : name[i] != pattern[i])
            return false;
    }
    return true;
}

std::set<std::string> screenshotsIn(const std::string& directory)
{
    std::set<std::string> names;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(directory, ignored)) {
        if (isScreenshot(entry.path().filename()))
            names.insert(entry.path().filename());
    }
    return names;
}

} // namespace

PictureTaker::PictureTaker(fdloop_t* loop, const std::string& directory)
    : directory(directory), pictures(
                                loop,
                                [this] {
                                    step = Step::Unready;
                                    tryToAsk();
                                },
                                [this] { return whyLate(); }),
      retry(loop), watch(loop)
{
}

PictureTaker::~PictureTaker()
{
    unlock();
}

void PictureTaker::take(uint64_t number, const std::string& file, unsigned scale, RequestDone done)
{
    pictures.add(number, {file, scale}, std::move(done));
}

void PictureTaker::displayEnded()
{
    display = -1;
    retry.stop();
    watch.stop();
    unlock();
    step = Step::Idle;
    pictures.failAll("the display has ended");
}

void PictureTaker::tryToAsk()
{
    if (!pictures.isWanted()) {
        end("");
        return;
    }
    bool ready = display > 0 && catches(display, SIGUSR1);
    step = ready ? Step::Locked : Step::Unready;
    std::string error;
    if (!ready || !lock()) {
        if (lockFd < 0 && ready && errno != EWOULDBLOCK && errno != EINTR)
            end("cannot use " + directory + ": " + strerror(errno));
        else
            retry.once(RetryInterval, [this] { tryToAsk(); });
        return;
    }
    before = screenshotsIn(directory);
    if (!watch.start(
            directory, IN_CLOSE_WRITE, [this](const std::string& name) { onFile(name); }, &error)) {
        end(error);
        return;
    }
    step = Step::Asked;
    kill(display, SIGUSR1); // it is above 0: see ready
}

// False with errno if it can't be had, or not yet. The display does not make its directory.
bool PictureTaker::lock()
{
    std::error_code problem;
    std::filesystem::create_directories(directory, problem);
    lockFd = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (lockFd >= 0 && flock(lockFd, LOCK_EX | LOCK_NB) != 0) {
        int why = errno;
        unlock();
        errno = why;
    }
    return lockFd >= 0;
}

void PictureTaker::unlock()
{
    if (lockFd >= 0)
        close(lockFd);
    lockFd = -1;
}

void PictureTaker::onFile(const std::string& name)
{
    if (!isScreenshot(name))
        return;
    std::string screenshot = directory + "/" + name;
    std::string error = pictures.isWanted() ? convert(screenshot) : "";
    // A screenshot of the same second that a person has asked for stays, though with this content.
    if (before.count(name) == 0)
        unlink(screenshot.c_str());
    end(error);
}

std::string PictureTaker::convert(const std::string& screenshot)
{
    const Wish& wish = pictures.current();
    Picture picture;
    std::string error;
    if (readBitmap(screenshot, &picture, &error))
        writePng(wish.file, picture, wish.scale, &error);
    return error;
}

void PictureTaker::end(const std::string& error)
{
    retry.stop();
    watch.stop();
    unlock();
    step = Step::Idle;
    pictures.finish(error);
}

std::string PictureTaker::whyLate()
{
    Step last = step;
    retry.stop();
    watch.stop();
    unlock();
    step = Step::Idle;
    if (last == Step::Asked)
        return "the display wrote no picture within 10 s";
    return last == Step::Locked ? "another program takes pictures in " + directory + " all the time"
                                : "the display shows no window yet";
}

} // namespace sim
