// Software updates: the upload with its progress, and a result that the user confirms on the display.
//
// The number of a bad result is the last byte of its event (0x10307 is result 7). It stands in
// cfg.status.sw_update.error and its event in the alert log until somebody writes 0 there.
#include "sim/command_actor.h"

namespace sim {

namespace {

const char Active[] = "ram.status.sw_update.active";
const char Progress[] = "ram.status.sw_update.progress";
const char Error[] = "cfg.status.sw_update.error";
const char UploadState[] = "ram.status.sw_update.file_upload.state";
const char UploadResult[] = "ram.status.sw_update.file_upload.result";
const char ExtendedStatus[] = "ram.status.ext_system";
const char Mode[] = "rmcfg.sys.status.mode";

enum { NotActive = 0, Terminal = 1, Antenna = 2 };
enum { Updating = 2, NormalOperation = 10 };
enum { UploadIdle = 0, UploadRuns = 1, UploadDone = 2 };

constexpr int32_t EventBase = 0x10300;
constexpr int32_t LastEvent = 0x10317;
constexpr uint32_t StepPeriod = 500; // ms
constexpr int32_t StepPercent = 5;
constexpr int32_t FailPercent = 40;
constexpr int32_t LowestPercent = 30; // of the batteries, without external supply
enum Result { RejectedBatteryLow = 4, RolledBack = 9 };

class UpdateActor : public CommandActor {
public:
    explicit UpdateActor(const Surroundings& surroundings)
        : CommandActor(surroundings, "update"), timer(surroundings.loop)
    {
    }

    // A result that nobody has confirmed outlasts the run, as the setting that it is.
    void start() override
    {
        if (terminal.number(Error, 0) != 0)
            tell(terminal.number(Error, 0));
        CommandActor::start();
    }
    void onChange(const std::string& key) override
    {
        CommandActor::onChange(key);
        if (key == Active && terminal.number(Active, NotActive) == NotActive)
            endQuietly(); // somebody has put an end to it
        if (key == ExtendedStatus && active == Terminal && timer.isRunning() &&
            terminal.number(ExtendedStatus, Updating) != Updating)
            finish(RolledBack); // the power was gone
        if (key == Error && terminal.number(Error, 0) == 0 && told != 0) {
            command("alert", "clear " + std::to_string(EventBase + told));
            told = 0;
        }
    }

protected:
    std::string carryOut(const Words& words) override
    {
        const std::string& word = words[0];
        int64_t event = 0;
        if (word == "fail") {
            if (words.size() != 2 || !parseNumber(words[1], EventBase + 1, LastEvent, &event))
                return "the event of a result, 0x10301 to 0x10317";
        } else if (words.size() != 1 || (word != "start" && word != "antenna" && word != "cancel")) {
            return "start, antenna, fail and an event, or cancel";
        }
        if ((word == "cancel") != timer.isRunning())
            return timer.isRunning() ? "an update runs already" : "no update runs";
        if (word != "cancel" && terminal.number(ExtendedStatus, NormalOperation) < NormalOperation)
            return "the system is not up";
        if (word == "cancel")
            finish(0);
        else
            begin(word == "antenna" ? Antenna : Terminal,
                  static_cast<int32_t>(event ? event - EventBase : 0));
        return "";
    }

private:
    void command(const char* actor, const std::string& text) { giveCommand(terminal, actor, text); }
    void endQuietly()
    {
        if (!timer.isRunning())
            return;
        timer.stop();
        command("alert", "clear " + std::to_string(EventBase));
    }
    void begin(int32_t what, int32_t newResult)
    {
        active = what;
        result = isTooLow() ? RejectedBatteryLow : newResult;
        if (isTooLow()) {
            finish(result);
            return;
        }
        timer.every(terminal.scaled(StepPeriod), [this] { advance(); });
        std::vector<Write> writes = {{Active, Value::integer(what)},
                                     {Progress, Value::integer(0)},
                                     {Error, Value::integer(0)},
                                     {UploadResult, Value::integer(0)},
                                     {UploadState, Value::integer(UploadRuns)}};
        if (what == Terminal) { // it takes the radio module down
            writes.push_back({ExtendedStatus, Value::integer(Updating)});
            writes.push_back({Mode, Value::text("stopped")});
        }
        terminal.database.apply(writes);
        command("alert", "add " + std::to_string(EventBase) + " warning");
    }
    // An update that runs out of power leaves a terminal that does not start.
    bool isTooLow() const
    {
        if (terminal.number("ram.status.psumcu.events.external_supply", 0) != 0)
            return false;
        int32_t sum = 0, count = 0;
        for (const char* battery : {"1", "2"}) {
            const std::string prefix = "ram.status.battery." + std::string(battery) + ".";
            if (terminal.number(prefix + "status", -1) != 0)
                continue;
            sum += terminal.number(prefix + "relative_state_of_charge", 0);
            count++;
        }
        return sum < LowestPercent * count;
    }
    void advance()
    {
        int32_t percent = terminal.number(Progress, 0) + StepPercent;
        if (result != 0 && percent > FailPercent) {
            finish(result);
        } else if (percent > 100) {
            finish(0, active == Terminal);
        } else {
            terminal.set(Progress, percent);
        }
    }
    void finish(int32_t outcome, bool restarts = false)
    {
        if (timer.isRunning())
            command("alert", "clear " + std::to_string(EventBase));
        timer.stop();
        std::vector<Write> writes = {{Active, Value::integer(NotActive)},
                                     {Progress, Value::integer(0)},
                                     {Error, Value::integer(outcome)},
                                     {UploadResult, Value::integer(outcome)},
                                     {UploadState, Value::integer(outcome ? UploadDone : UploadIdle)}};
        bool wasTaken = terminal.number(ExtendedStatus, NormalOperation) == Updating;
        if (active == Terminal && !restarts && wasTaken) {
            writes.push_back({ExtendedStatus, Value::integer(NormalOperation)});
            writes.push_back({Mode, Value::text("operating")});
        }
        terminal.database.apply(writes);
        if (outcome != 0)
            tell(outcome);
        if (restarts) // into the new software
            command("system", "reboot");
    }
    void tell(int32_t outcome)
    {
        told = outcome;
        command("alert", "add " + std::to_string(EventBase + outcome) + " warning");
    }

    Timer timer;
    int32_t active = NotActive;
    int32_t result = 0; // of the update that runs
    int32_t told = 0;   // that stands in the log
};

} // namespace

void addUpdateActors(const Surroundings& surroundings, Actors* actors)
{
    actors->push_back(std::make_unique<UpdateActor>(surroundings));
}

} // namespace sim
