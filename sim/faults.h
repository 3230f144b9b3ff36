// A terminal that misbehaves: late or missing answers, lost connections, floods, frames that are none. For
// tests and for people who want to see what the display makes of it.
//
// Times are in milliseconds of the clock, whatever the speed of the terminal. On the terminal's thread only.
// Nothing blocks.
#ifndef SIM_FAULTS_H
#define SIM_FAULTS_H

#include "sim/bus_server.h"
#include "sim/database.h"
#include "sim/timer.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace sim {

// One kind of broken frame.
struct BrokenFrame {
    const char* kind;
    const char* help;
    std::string (*bytes)(); // what is sent, padded to 4 bytes unless the kind is about just that
    bool ends;              // the connection is closed behind it
};
const std::vector<BrokenFrame>& brokenFrames();

// The errors with which reads can be answered.
struct FaultStatus {
    int32_t status;
    const char* name;
};
const std::vector<FaultStatus>& faultStatuses();

class Faults {
public:
    static constexpr uint32_t MaxDelay = 10 * 60 * 1000;
    static constexpr size_t MaxWaiting = 16 * 1024 * 1024; // bytes that are late; then nothing more is read
    static constexpr uint32_t MaxFlood = 10 * 1000 * 1000;
    static constexpr size_t MaxAnswers = 64;

    struct Hooks {
        std::function<void()> changed;                // watches() may have changed
        std::function<void(const BusFrame&)> deliver; // deal with a message that takes() kept back
    };

    // All must outlive this object.
    Faults(fdloop_t* loop, Database& database, BusServer& server, Hooks hooks);
    Faults(const Faults&) = delete;
    Faults& operator=(const Faults&) = delete;

    // --- Each can be in force together with all others, until it is set anew or ended.

    // Whatever a client sends is dealt with so much later, in order. 0: at once, what is late included.
    void delay(uint32_t milliseconds);
    // Nothing is read from clients; with a time other than 0 until it is over.
    void stop(uint32_t milliseconds = 0);
    void go();
    // New clients cannot connect. False with *error if they cannot be let in again.
    bool setDeaf(bool deaf, std::string* error);
    // Reads, stat and modifyv of keys that match the expression whole give the status; an empty expression is
    // all keys, and then readm gives nothing. False if the expression is malformed or there are too many.
    bool answer(int32_t status, const std::string& expression);
    // After so many more messages of clients all connections are closed; the next message is not dealt with.
    void cutAfter(uint32_t messages);
    // All connections are closed when a client sends a message whose name matches the expression whole; it is
    // not dealt with. False if the expression is malformed.
    bool cutAt(const std::string& expression);
    // So many changes, each a signal of its own, so many a second (0: as fast as they can be made). Keys with
    // this prefix change and are at their end what they were; if there are none, PREFIX.1 and so on come and
    // go. An empty prefix is "ram.desk.flood".
    void flood(uint32_t changes, uint32_t perSecond, const std::string& prefix);
    // Ends them all. False with *error if that failed in part.
    bool off(std::string* error);

    // --- At once

    // Closes a client's connection, or all (0). Returns their number.
    size_t cut(uint64_t client);
    // Sends a broken frame to a client, or to all (0). Returns to how many; nullopt for an unknown kind.
    std::optional<size_t> sendFrame(const std::string& kind, uint64_t client);

    // What is in force, one line each, in the words of the command.
    std::vector<std::string> list() const;

    // --- For the terminal

    // Whether takes() must be asked about each message of a client.
    bool watches() const { return delayed != 0 || !late.empty() || cutting || cutPlace; }
    // True if the message has been dealt with, or will be.
    bool takes(const BusFrame& frame);
    // The status with which a read of the key is answered; 0: as ever. An empty key: of all keys.
    int32_t statusOf(const std::string& key) const;

private:
    struct Late {
        cbus_header_t header;
        uint64_t client;
        std::string name;
        std::string data;
        uint32_t due; // fdloop_time_ms()
    };
    struct Answer {
        int32_t status;
        std::string text;
        std::optional<KeyExpression> expression; // none: all keys
    };
    struct Flood {
        uint32_t wanted = 0;
        uint32_t made = 0;
        uint32_t perSecond = 0;
        uint32_t begun = 0; // fdloop_time_ms()
        std::string prefix;
        struct Key {
            std::string name;
            Value before;  // what it is to be again; type None: absent
            Value written; // by the flood
        };
        std::vector<Key> keys;
    };

    bool cutsNow(const BusFrame& frame);
    void keep(const BusFrame& frame);
    void releaseDue();
    void updateHeld();
    void floodOn();
    void changeOne();
    void endFlood();

    Database& database;
    BusServer& server;
    Hooks hooks;

    uint32_t delayed = 0;
    std::deque<Late> late;
    size_t waiting = 0; // bytes of late
    bool releasing = false;
    Timer lateTimer;

    bool stopped = false;
    uint32_t stopEnds = 0; // fdloop_time_ms(); counts while stopTimer runs
    Timer stopTimer;

    bool deaf = false;
    bool cutting = false;
    uint32_t untilCut = 0;
    std::string cutPlaceText;
    std::optional<KeyExpression> cutPlace;
    std::vector<Answer> answers;

    Flood running;
    uint64_t floods = 0; // counts them
    Timer floodTimer;
};

} // namespace sim

#endif
