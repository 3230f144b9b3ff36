// The SIM card: inserted and removed, its PIN with the tries that are left, its lock.
#include "sim/command_actor.h"

#include <algorithm>

namespace sim {

namespace {

const char Mode[] = "rmcfg.sys.status.mode";
const char UsimStatus[] = "rmcfg.platform.usim.status";
const char PinStatus[] = "rmcfg.platform.usim.pin.status";
const char EnteredPin[] = "ram.usim.pin";
const char RetriesLeft[] = "ram.desk.sim.retries";

enum { UsimUnknown = -1, UsimAbsent = 0, UsimPresent = 1 };

constexpr uint32_t ReadDelay = 1000; // ms until a card has been read
// A card answers within this; the display looks at the outcome 2 s after it has sent the PIN, and reads it up
// to a second late.
constexpr uint32_t CheckDelay = 400; // ms
constexpr int32_t Tries = 3;
constexpr int32_t PukTries = 10;

bool isPuk(const std::string& text)
{
    return text.size() == 8 && text.find_first_not_of("0123456789") == std::string::npos;
}
bool isPin(const std::string& text)
{
    return text.size() >= 4 && text.size() <= 8 && text.find_first_not_of("0123456789") == std::string::npos;
}

class SimActor : public CommandActor {
public:
    explicit SimActor(const Surroundings& surroundings)
        : CommandActor(surroundings, "sim"), timer(surroundings.loop)
    {
    }

    void start() override
    {
        isPresent = terminal.number(UsimStatus, UsimUnknown) != UsimAbsent;
        adoptStatus();
        CommandActor::start();
    }
    void onChange(const std::string& key) override
    {
        CommandActor::onChange(key);
        if (key == Mode)
            onModeChange();
        else if (key == UsimStatus || key == PinStatus)
            adoptStatus();
        else if (key == EnteredPin)
            onPin();
    }

protected:
    std::string carryOut(const Words& words) override
    {
        const std::string& word = words[0];
        if (word == "puk")
            return enterPuk(words);
        if (words.size() > (word == "pin" ? 2u : 1u))
            return "too many words";
        if (word == "insert" || word == "remove")
            return insert(word == "insert");
        if (word == "pin" && words.size() == 2 && !isPin(words[1]))
            return "a PIN is 4 to 8 digits, not " + words[1];

        if (word == "pin") {
            if (words.size() == 2)
                code = words[1];
            set(Fault::None, true, Tries);
        } else if (word == "nopin") {
            set(Fault::None, false, Tries);
        } else if (word == "block") {
            set(Fault::None, asksForPin, 0);
        } else if (word == "unblock") { // whoever knows the PUK has chosen a PIN with it
            set(Fault::None, asksForPin, Tries);
            wasEntered = true;
            show();
        } else if (word == "lock") {
            set(Fault::Locked, asksForPin, retries);
        } else if (word == "reject") {
            set(Fault::Rejected, asksForPin, retries);
        } else if (word == "accept") {
            set(Fault::None, asksForPin, retries);
        } else {
            return "unknown word " + word;
        }
        return "";
    }

private:
    enum class Fault { None, Locked, Rejected };

    // As on the web: the display has no page for it.
    std::string enterPuk(const Words& words)
    {
        if (words.size() != 3 || !isPuk(words[1]) || !isPin(words[2]))
            return "a PUK of 8 digits and a new PIN of 4 to 8";
        if (!isOperating() || terminal.text(PinStatus) != "Blocked")
            return "the card asks for no PUK";
        if (words[1] != puk) {
            if (--pukRetries == 0) // for good
                set(Fault::Rejected, asksForPin, 0);
            return "the PUK is wrong, " + std::to_string(pukRetries) + " tries left";
        }
        pukRetries = PukTries;
        code = words[2];
        set(Fault::None, asksForPin, Tries);
        wasEntered = true;
        show();
        return "";
    }

    bool isOperating() const { return terminal.text(Mode) == "operating"; }

    std::string insert(bool present)
    {
        if (present == isPresent)
            return present ? "there is a card already" : "there is no card";
        isPresent = present;
        read();
        return "";
    }
    void set(Fault newFault, bool asks, int32_t newRetries)
    {
        fault = newFault;
        asksForPin = asks;
        wasEntered = false;
        retries = newRetries;
        show();
    }
    void onModeChange()
    {
        timer.stop();
        if (isOperating())
            read();
        else
            terminal.set(UsimStatus, UsimUnknown);
    }
    // The card tells what it is after a moment, and no longer knows that a PIN was entered.
    void read()
    {
        wasEntered = false;
        timer.stop();
        if (!isOperating())
            return;
        terminal.set(UsimStatus, isPresent ? UsimUnknown : UsimAbsent);
        if (isPresent)
            timer.once(terminal.scaled(ReadDelay), [this] {
                terminal.database.apply(
                    {{PinStatus, Value::text(status())}, {UsimStatus, Value::integer(UsimPresent)}});
            });
        else
            terminal.database.apply({{PinStatus, Value::text(status())}});
    }
    void show()
    {
        terminal.set(RetriesLeft, retries);
        if (isOperating() && terminal.number(UsimStatus, UsimUnknown) == UsimPresent)
            terminal.database.apply({{PinStatus, Value::text(status())}});
    }
    const char* status() const
    {
        if (!isPresent)
            return "Absent";
        if (fault != Fault::None)
            return fault == Fault::Locked ? "SIM Lock Blocked" : "Invalid";
        if (retries == 0)
            return "Blocked";
        return asksForPin && !wasEntered ? "Needed" : "Valid";
    }
    // Somebody may have written the status itself.
    void adoptStatus()
    {
        int32_t usim = terminal.number(UsimStatus, UsimUnknown);
        if (usim != UsimUnknown)
            isPresent = usim == UsimPresent;
        const std::string text = terminal.text(PinStatus);
        if (usim != UsimPresent || text == status())
            return;
        if (text == "Needed" || text == "Valid") {
            fault = Fault::None;
            asksForPin = asksForPin || text == "Needed";
            wasEntered = text == "Valid";
            retries = std::max(retries, 1);
        } else if (text == "Blocked") {
            retries = 0;
        }
    }

    bool isAsking() const
    {
        return terminal.number(UsimStatus, UsimUnknown) == UsimPresent &&
               terminal.text(PinStatus) == "Needed";
    }
    // A PIN does not stay in the database.
    void onPin()
    {
        const Value* value = terminal.database.find(EnteredPin);
        if (!value)
            return;
        std::string pin = value->toText();
        terminal.database.apply({{EnteredPin, Value()}});
        if (isAsking() && isPin(pin)) // no other is handed to the card, and no try is lost
            checkTimer.once(terminal.scaled(CheckDelay), [this, pin] { check(pin); });
    }
    void check(const std::string& pin)
    {
        if (!isAsking())
            return;
        if (pin == code) {
            wasEntered = true;
            retries = Tries;
        } else {
            retries--;
        }
        show();
    }

    Timer timer;
    Timer checkTimer{terminal.loop};
    bool isPresent = true;
    bool asksForPin = false;
    bool wasEntered = false;
    Fault fault = Fault::None;
    int32_t retries = Tries;
    std::string code = "1234";
    const std::string puk = "12345678";
    int32_t pukRetries = PukTries;
};

} // namespace

void addSimActors(const Surroundings& surroundings, Actors* actors)
{
    actors->push_back(std::make_unique<SimActor>(surroundings));
}

} // namespace sim
