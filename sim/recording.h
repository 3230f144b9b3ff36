// Recording of everything the bus carries, and giving it again.
//
// A recording is a text file:
//
//     # terminalsim recording 1
//     [values]                                        the database when the recording began
//     cfg.language = int 0                            as in the file of initial values
//     [messages]
//     15 from 1 request 7.3 config.read.cfg.language ask string 100
//     15 to 1 reply 7.3 config.read.cfg.language value 0 int 0
//     3000 end
//
// A line is a message as encodeTraffic() writes it, behind the milliseconds since the recording began.
// Without the line "end" the recording was cut off; what is there can be given again all the same, but for a
// last line without its line feed. Blank lines and lines that begin with # mean nothing.
//
// On the terminal's thread only. Files are written and read at once: they are meant to be on a local disk.
#ifndef SIM_RECORDING_H
#define SIM_RECORDING_H

#include "sim/terminal.h"
#include "sim/timer.h"
#include "sim/traffic.h"

#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace sim {

// What a file holds.
struct Recording {
    struct Event {
        uint32_t time; // ms since the beginning
        TrafficRecord message;
    };
    std::vector<Write> values;
    std::vector<Event> events;
    uint32_t end = 0; // ms since the beginning
};
// False with *error as "FILE:LINE: what", or "FILE: why".
bool loadRecording(const std::string& fileName, Recording* recording, std::string* error);

// Records from its beginning to its end, or until the terminal is stopped.
class Recorder {
public:
    static constexpr uint64_t MaxSize = 1024 * 1024 * 1024; // bytes; then the recording ends

    explicit Recorder(Terminal& terminal);
    ~Recorder(); // end()
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    // Begins a new file, readable by its owner alone; an earlier recording of this name is written over, any
    // other file is not. False with *error if that fails, and if it records already.
    bool begin(const std::string& fileName, std::string* error);
    // False with *error if not all of it could be written.
    bool end(std::string* error);
    bool isRecording() const { return file != nullptr; }
    const std::string& fileName() const { return name; }
    uint64_t messages() const { return count; }

private:
    void onTraffic(const Traffic& traffic);
    void endInVain();
    void write(const std::string& line);

    Terminal& terminal;
    FILE* file = nullptr;
    std::string name;
    std::unique_ptr<Timer> flushTimer;
    uint64_t listener = 0;
    uint64_t begun = 0; // ms of a clock that does not wrap
    uint64_t size = 0;
    uint64_t count = 0;
    bool full = false;
};

// Gives a recording again: puts its values in place, then makes the changes and sends the signals of the
// terminal's own, while its processes are silent. Meanwhile it takes down what the clients write.
class Replay {
public:
    static constexpr uint32_t DefaultPatience = 3000; // ms behind the end in which writes may still come
    static constexpr uint32_t MaxSpeed = 1000;

    struct Result {
        size_t expected = 0;      // writes of clients in the recording
        size_t cameAgain = 0;     // of them, in their order
        size_t others = 0;        // writes that the recording has not
        std::string firstMissing; // the first that did not, as "config.write.KEY write int 1 (at 12.345 s)"
        size_t missingAt = 0;     // its place among those expected
        bool compared = true;     // false: too many differ to tell; firstMissing is the first that differs
    };

    static constexpr uint32_t ClientPatience = 10000; // ms

    // A speed of 0 is as fast as possible. It begins in the next turn of the loop. Done is called once, at
    // the end; it must not destroy the replay in this call. Destroyed before the end it leaves the database
    // as it is then. In both cases the terminal's processes begin anew.
    //
    // If nobody is connected, it stands still for up to ClientPatience where in the recording the first
    // client spoke, until one does: a display that is being started meets the same terminal again.
    Replay(Terminal& terminal, Recording recording, uint32_t speed, std::function<void(const Result&)> done,
           uint32_t patience = DefaultPatience);
    ~Replay();
    Replay(const Replay&) = delete;
    Replay& operator=(const Replay&) = delete;

private:
    void begin();
    void advance();
    bool waitsForClient(const Recording::Event& event);
    void give(const TrafficRecord& message);
    void resume();
    void waitForRest();
    bool isComplete() const;
    void finish();
    void onTraffic(const Traffic& traffic);
    uint32_t scaled(uint32_t time) const;
    uint32_t due(uint32_t time) const;

    Terminal& terminal;
    const Recording recording;
    const uint32_t speed;
    const uint32_t patience;
    std::function<void(const Result&)> done;
    Timer timer;
    uint64_t listener = 0;
    uint32_t begun = 0; // fdloop_time_ms() of the time 0
    size_t next = 0;    // event
    bool someoneSpoke = false;
    bool waitsToSpeak = false;
    bool atEnd = false;
    bool muted = false;
    std::vector<std::string> expected; // writes of clients, in the recording
    std::vector<uint32_t> expectedTimes;
    std::vector<std::string> seen; // and now
};

// The result in lines for people.
std::vector<std::string> replayReport(const Replay::Result& result);

// A message of a client that changes something, as text to compare; empty for any other.
std::string clientWrite(uint8_t type, std::string_view name, std::string_view data);
// Compares what was written with what was to be.
Replay::Result compareWrites(const std::vector<std::string>& expected, const std::vector<std::string>& seen);

} // namespace sim

#endif
