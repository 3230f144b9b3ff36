// Follows the file into which the display's system log and its output go, and keeps its newest lines.
//
// On the thread of the loop only. Reads what is there at once, in parts that do not hold up the loop.
#ifndef SIM_DISPLAY_LOG_FOLLOWER_H
#define SIM_DISPLAY_LOG_FOLLOWER_H

#include "sim/display/watch.h"
#include "sim/timer.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace sim {

// A line of the log as people see it: "<priority> ident: text". The file has "<facility.priority> ident[pid]:
// text"; a line of another form is what the program has printed, and becomes "<6> output: text".
std::string readableLogLine(const std::string& line);
// The priority of a readable line, 0 to 7.
int logPriority(const std::string& readable);
bool isOutputLine(const std::string& readable);

class LogFollower {
public:
    static constexpr size_t Kept = 1000;         // lines
    static constexpr size_t LongestLine = 16384; // bytes; the rest of a longer one is dropped

    // heard is called with each line as it comes.
    LogFollower(fdloop_t* loop, std::function<void(const std::string& line)> heard);
    ~LogFollower();

    // Empties the file, or makes it, and follows it. False with *error.
    bool start(const std::string& file, std::string* error);
    // Reads all that is there now, also what is not a whole line: the program that wrote it has ended.
    void readToTheEnd();

    size_t count() const { return total; } // of all lines since the start
    // The newest lines, at most so many, without the first `skipped` of all.
    std::vector<std::string> newest(size_t most, size_t skipped = 0) const;

private:
    void read();
    bool readPart();
    void take(const char* bytes, size_t count);
    void endLine();

    std::function<void(const std::string&)> heard;
    Watch watch;
    Timer again;
    int file = -1;
    int64_t position = 0;
    std::string line; // what has come of the next one
    std::deque<std::string> lines;
    size_t total = 0;
};

} // namespace sim

#endif
