// Sessions that nobody starts on the display: the one that the terminal brings up by itself, and those of
// other user groups.
#include "sim/behaviour_causes.h"
#include "sim/command_actor.h"

#include <algorithm>
#include <ctime>
#include <map>
#include <random>

namespace sim {

namespace {

const char AutomaticActivation[] = "cfg.net.user_groups.0.automatic_activation";
const char Activated[] = "ram.net.user_groups.0.activated";
const char CurrentBundle[] = "ram.net.user_groups.0.current_bundle";
const char Session[] = "ram.status.ongoing_data_sessions.";
const char OwnSessionStatus[] = "ram.status.ongoing_data_sessions.0.status";
const char OwnReason[] = "ram.status.ongoing_data_sessions.0.reason";
const char BundlePrefix[] = "cfg.admin.bundle.";
const char ConnectionPrefix[] = "cfg.admin.connection.";
const char ContextPrefix[] = "ram.net.pdp_contexts.0.";
const char QualityPrefix[] = "ram.net.qos.0.";
const char FilterPrefix[] = "ram.net.tft.0.";
const char PsStatus[] = "rmcfg.protocols.umts.ps.status";
const char RegistrationState[] = "rmcfg.protocols.bgan.status.state";
const char WanActive[] = "ram.wan.active";
const char ExtendedStatus[] = "ram.status.ext_system";
const char SingleUser[] = "ram.net.single_user_mode";
const char LanState[] = "ram.status.interfaces.lan.enabled";

enum { NormalOperation = 10 };
enum { WanSatellite = 1, WanBoth = 3 };
enum { Connecting = 1, Running = 2 };
enum { Background = 3, Streaming = 1 };

// What traffic of any kind needs.
bool isOnline(const Surroundings& terminal)
{
    int32_t wan = terminal.number(WanActive, 0);
    return terminal.text(PsStatus) == "Attached" && terminal.text(RegistrationState) != "Deregistered" &&
           (wan == WanSatellite || wan == WanBoth) && terminal.number(ExtendedStatus, 0) >= NormalOperation &&
           terminal.number(TemperatureStageKey, StageNormal) < StageConnections;
}

// Keeps the one background connection up while the setting says so: it starts it whenever there is a network,
// also after somebody has stopped it. Its records bear an owner of their own.
class AutomaticActor : public Actor {
public:
    explicit AutomaticActor(const Surroundings& surroundings) : Actor(surroundings), timer(surroundings.loop)
    {
    }

    void start() override { consider(StartDelay); }
    void onChange(const std::string& key) override
    {
        if (key == OwnReason && terminal.number(OwnReason, 0) == CauseAutomaticFailed) {
            hasFailed = true;
            timer.stop();
            consider(RetryDelay);
        }
        const char* const causes[] = {AutomaticActivation, PsStatus,   WanActive,        ExtendedStatus,
                                      TemperatureStageKey, SingleUser, OwnSessionStatus, LanState};
        if (std::find(std::begin(causes), std::end(causes), key) == std::end(causes))
            return;
        if (!isWanted())
            hasFailed = false;
        consider(hasFailed ? RetryDelay : StartDelay);
    }

private:
    static constexpr uint32_t StartDelay = 5000;  // ms
    static constexpr uint32_t RetryDelay = 30000; // ms after a start that failed

    bool isWanted() const
    {
        return terminal.number(AutomaticActivation, 0) == 1 && isOnline(terminal) &&
               terminal.number(SingleUser, 0) == 0 && terminal.number(LanState, 0) == 1;
    }
    bool isFree() const
    {
        return !terminal.database.find(OwnSessionStatus) && terminal.number(Activated, 0) == 0;
    }
    void consider(uint32_t delay)
    {
        if (!isWanted() || !isFree())
            timer.stop();
        else if (!timer.isRunning())
            timer.once(terminal.scaled(delay), [this] { bringUp(); });
    }
    void bringUp()
    {
        if (!isWanted() || !isFree())
            return;
        hasFailed = false;
        int bundle = -1, connection = -1;
        findBackground(&bundle, &connection);
        std::vector<Write> writes;
        for (const char* family : {ContextPrefix, QualityPrefix, FilterPrefix}) {
            for (const std::string& key : terminal.database.keysWithPrefix(family))
                writes.push_back({key, Value()});
        }
        addRecords(bundle, connection, &writes);
        writes.push_back({CurrentBundle, Value::integer(bundle)});
        terminal.database.apply(writes);
        terminal.set(Activated, 1);
    }
    // The stored bundle that is one background connection and nothing else; -1 for both if there is none.
    void findBackground(int* bundle, int* connection) const
    {
        std::map<int, std::vector<int>> bundles;
        for (const std::string& key : terminal.database.keysWithPrefix(BundlePrefix)) {
            if (key.find(".connection_index") != std::string::npos)
                bundles[atoi(key.c_str() + sizeof BundlePrefix - 1)].push_back(terminal.number(key, -1));
        }
        for (const auto& [number, connections] : bundles) {
            if (connections.size() != 1 || quality(connections[0], "traffic_class") != Background)
                continue;
            *bundle = number;
            *connection = connections[0];
            return;
        }
    }
    int32_t quality(int connection, const char* field) const
    {
        return terminal.number(ConnectionPrefix + std::to_string(connection) + "." + field, 0);
    }
    void addRecords(int bundle, int connection, std::vector<Write>* writes) const
    {
        const std::string stored = BundlePrefix + std::to_string(bundle) + ".";
        const std::string context = ContextPrefix + std::string("0.");
        const std::pair<const char*, int32_t> numbers[] = {
            {"entry_owner", 1},
            {"active", 1},
            {"cid", 1},
            {"pcid", 1},
            {"secondary_context", 0},
            {"apn_type", terminal.number(stored + "apn_type", 0)}};
        for (const auto& [field, value] : numbers)
            writes->push_back({context + field, Value::integer(value)});
        writes->push_back({context + "apn", Value::text(terminal.text(stored + "apn_user_defined_name"))});
        const std::pair<const char*, const char*> rates[] = {
            {"max_bit_rate_u", "max_bit_rate_upload"},
            {"max_bit_rate_d", "max_bit_rate_download"},
            {"guaranteed_bit_rate_u", "guaranteed_bit_rate_upload"},
            {"guaranteed_bit_rate_d", "guaranteed_bit_rate_download"}};
        const std::string record = QualityPrefix + std::string("0.");
        for (const auto& [field, source] : rates)
            writes->push_back({record + field, Value::integer(quality(connection, source))});
        for (const char* field : {"active", "cid", "entry_owner"})
            writes->push_back({record + field, Value::integer(1)});
        writes->push_back({record + "traffic_class", Value::integer(Background)});
    }

    Timer timer;
    bool hasFailed = false;
};

// Sessions of the user groups 1 to 9: one connection each.
class SessionActor : public CommandActor {
public:
    explicit SessionActor(const Surroundings& surroundings)
        : CommandActor(surroundings, "session"), amountTimer(surroundings.loop)
    {
    }

    void start() override
    {
        for (int group = 1; group <= MaxGroup; group++)
            remove(group, 0); // of an earlier life
        CommandActor::start();
    }
    void onChange(const std::string& key) override
    {
        CommandActor::onChange(key);
        if (key == PsStatus || key == WanActive || key == ExtendedStatus || key == TemperatureStageKey) {
            if (isOnline(terminal))
                return;
            for (int group = 1; group <= MaxGroup; group++)
                remove(group, CauseConnectionLost);
        }
    }

protected:
    std::string carryOut(const Words& words) override
    {
        int64_t group = 0, rate = 0;
        if (words.size() != 2)
            return "a user group and standard, a rate or stop";
        if (!parseNumber(words[0], 1, MaxGroup, &group))
            return "a user group is a number from 1 to 9, not " + words[0];
        if (words[1] != "stop" && words[1] != "standard" && !parseNumber(words[1], 1, OneTerminalRate, &rate))
            return "standard, a rate from 1 to 896 kbps or stop, not " + words[1];
        bool isThere = terminal.database.find(keyOf(group, "status")) != nullptr;
        if (isThere != (words[1] == "stop"))
            return isThere ? "the group has a session already" : "the group has no session";
        if (isThere)
            remove(static_cast<int>(group), 0);
        else if (!isOnline(terminal))
            return "there is no network for it";
        else
            connect(static_cast<int>(group), static_cast<int32_t>(rate));
        return "";
    }

private:
    static constexpr int MaxGroup = 9;
    static constexpr int32_t OneTerminalRate = 896; // kbit/s
    static constexpr uint32_t ConnectDelay = 2500;  // ms
    static constexpr uint32_t AmountPeriod = 1000;  // ms

    static std::string keyOf(int64_t group, const char* field)
    {
        return Session + std::to_string(group) + "." + field;
    }
    void connect(int group, int32_t rate)
    {
        terminal.set(keyOf(group, "status"), Connecting);
        auto& timer = timers[group];
        if (!timer)
            timer = std::make_unique<Timer>(terminal.loop);
        timer->once(terminal.scaled(ConnectDelay), [this, group, rate] { run(group, rate); });
    }
    void run(int group, int32_t rate)
    {
        std::vector<Write> writes = {
            {keyOf(group, "status"), Value::integer(Running)},
            {keyOf(group, "time"), Value::integer(static_cast<int32_t>(time(nullptr)))},
            {keyOf(group, "bytes_in_out_kb"), Value::integer(0)},
            {keyOf(group, "context.0.traffic_class"), Value::integer(rate ? Streaming : Background)}};
        for (const char* field : {"bw_up", "bw_down", "max_bw_up", "max_bw_down"})
            writes.push_back({keyOf(group, "context.0.") + field, Value::integer(rate)});
        terminal.database.apply(writes);
        if (terminal.moving && !amountTimer.isRunning())
            amountTimer.every(terminal.scaled(AmountPeriod), [this] { addAmounts(); });
    }
    void remove(int group, int32_t cause)
    {
        auto timer = timers.find(group);
        if (timer != timers.end())
            timer->second->stop();
        bool isThere = terminal.database.find(keyOf(group, "status")) != nullptr;
        if (!isThere && cause != 0)
            return;
        std::vector<Write> writes;
        for (const std::string& key : terminal.database.keysWithPrefix(keyOf(group, "")))
            writes.push_back({key, Value()});
        if (cause != 0)
            writes.push_back({keyOf(group, "reason"), Value::integer(cause)});
        terminal.database.apply(writes);
    }
    void addAmounts()
    {
        std::uniform_int_distribution<int32_t> background(1, 60);
        bool isAny = false;
        for (int group = 1; group <= MaxGroup; group++) {
            const std::string amount = keyOf(group, "bytes_in_out_kb");
            if (!terminal.database.find(amount))
                continue;
            isAny = true;
            int32_t rate = terminal.number(keyOf(group, "context.0.bw_up"), 0);
            terminal.set(amount, terminal.number(amount, 0) + rate / 4 + background(random));
        }
        if (!isAny)
            amountTimer.stop();
    }

    std::map<int, std::unique_ptr<Timer>> timers;
    Timer amountTimer;
    std::minstd_rand random{4};
};

} // namespace

void addSessionActors(const Surroundings& surroundings, Actors* actors)
{
    actors->push_back(std::make_unique<AutomaticActor>(surroundings));
    actors->push_back(std::make_unique<SessionActor>(surroundings));
}

} // namespace sim
