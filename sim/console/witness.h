// What the clients of the bus have done and what the display has logged, kept for "expect": a scenario that
// looks a moment too late still sees a write that came at once. Only the newest things are kept.
//
// On the terminal's thread only. It lives as long as the consoles.
#ifndef SIM_CONSOLE_WITNESS_H
#define SIM_CONSOLE_WITNESS_H

#include "sim/console/console.h"
#include <deque>
#include <map>

namespace sim {

struct Traffic;

// What the display shows, as far as its log tells.
struct Shown {
    bool listens = false;  // it hears of the database's changes
    bool window = false;   // anything at all
    bool complete = false; // it is through its start, in which it would undo what a key has done
    std::string screen;    // as "SCREEN_STATUS"; empty: nothing yet
    std::string status;    // the text of the status screen; empty while bundles run
    int statusId = -1;     // its number; -1: nothing yet
    std::string popup;     // name of the message in front; empty: none
    std::string popupText;
};

class Witness {
public:
    static constexpr size_t MaxKept = 5000; // of each kind

    struct Noted {
        uint64_t number = 0; // counts all that was noted, from 1
        std::string text;    // a key; an expression of keys; a pointing command; a log line
        bool isExpression = false;
        Value value;       // of a write; Type::None: a deletion
        bool used = false; // one write meets one expectation
    };
    using Notes = std::deque<Noted>;

    // The display may be null. Both must outlive the witness.
    Witness(Terminal& terminal, Display* display);
    ~Witness();
    Witness(const Witness&) = delete;
    Witness& operator=(const Witness&) = delete;

    Notes writes;   // by clients, as they were asked for
    Notes pointing; // "start", "stop", "cancel"
    Notes log;      // of the display, without "<priority> ident: "
    const Shown& shown();
    // The last line that the display logged as an error or worse; empty if there was none.
    std::string lastWords() const { return graveLine; }
    // How often the display has ended by itself, without those that were to be expected.
    unsigned crashes() const;
    // What ended until now was to be expected.
    void forgiveCrashes();

    // A line of the session begins. One that does something is what later expectations count from.
    void lineBegins(const Console& session, const std::string& line);
    // The number of the last thing noted before the session last did something.
    uint64_t mark(const Console& session) const;
    void sessionEnds(const Console& session);

    // Calls the listener whenever something was noted. A number for forget(), which may be called in a
    // listener.
    uint64_t listen(std::function<void()> listener);
    void forget(uint64_t listener);
    size_t listenerCount() const { return listeners.size(); }

private:
    void note(Notes* notes, Noted noted);
    void noteMessage(const Traffic& message);
    void noteWrite(const std::string& key, const Value& value, bool isExpression = false);
    void noteLog(const std::string& line);

    Terminal& terminal;
    Display* panel;
    Shown display;
    pid_t shownBy = -1; // the process that display is of
    std::string graveLine;
    unsigned forgiven = 0; // restarts
    uint64_t count = 0;
    std::map<const Console*, uint64_t> marks;
    std::map<uint64_t, std::function<void()>> listeners;
    uint64_t lastListener = 0;
    uint64_t trafficListener = 0;
    uint64_t logListener = 0;
};

// Commands that only look, and so don't move the mark: wait, say, expect, get, picture and the like.
bool isLooking(const std::string& command);

} // namespace sim

#endif
