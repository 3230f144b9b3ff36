// Pictures of the display: asks it for a screenshot by SIGUSR1, waits for the file that it writes, and makes
// a PNG of it.
//
// The file's name tells the second, not the display, and all displays of a build leave theirs in the same
// directory. So whoever takes pictures here holds a lock on that directory from the question to the file.
//
// On the thread of the loop only. Nothing blocks but the reading and writing of the small files.
#ifndef SIM_DISPLAY_PICTURE_TAKER_H
#define SIM_DISPLAY_PICTURE_TAKER_H

#include "sim/display/requests.h"
#include "sim/display/watch.h"

#include <set>
#include <string>
#include <sys/types.h>

namespace sim {

class PictureTaker {
public:
    // The directory into which the display writes.
    PictureTaker(fdloop_t* loop, const std::string& directory);
    ~PictureTaker();
    PictureTaker(const PictureTaker&) = delete;
    PictureTaker& operator=(const PictureTaker&) = delete;

    // The process that is asked.
    void ask(pid_t process) { display = process; }
    // That process has gone.
    void displayEnded();

    void take(uint64_t number, const std::string& file, unsigned scale, RequestDone done);
    void forget(uint64_t number) { pictures.forget(number); }

private:
    struct Wish {
        std::string file;
        unsigned scale;
    };
    enum class Step { Idle, Unready, Locked, Asked };

    void tryToAsk();
    bool lock();
    void unlock();
    void onFile(const std::string& name);
    void end(const std::string& error);
    std::string convert(const std::string& screenshot);
    std::string whyLate();

    std::string directory;
    pid_t display = -1;
    Requests<Wish> pictures;
    Timer retry;
    Watch watch;
    Step step = Step::Idle;
    int lockFd = -1;
    std::set<std::string> before; // screenshots that somebody has left there
};

} // namespace sim

#endif
