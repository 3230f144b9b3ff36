// The network manager: it makes a session of the records that the display has written, tells how it goes, and
// ends it. And the two commands that go with it.
//
// It acts on "activated" alone: 1 starts what the records tell at that moment, 0 ends it. What does not come
// up, or is lost, is told by its cause, and "activated" goes back to 0, so that the next start is a change.
#include "sim/behaviour_causes.h"
#include "sim/command_actor.h"

#include <algorithm>
#include <ctime>
#include <random>

namespace sim {

namespace {

const char Activated[] = "ram.net.user_groups.0.activated";
const char CurrentBundle[] = "ram.net.user_groups.0.current_bundle";
const char Reason[] = "ram.status.ongoing_data_sessions.0.reason";
const char SessionPrefix[] = "ram.status.ongoing_data_sessions.0.";
const char SessionStatus[] = "ram.status.ongoing_data_sessions.0.status";
const char SessionAmount[] = "ram.status.ongoing_data_sessions.0.bytes_in_out_kb";
const char SingleUser[] = "ram.net.single_user_mode";
const char LanState[] = "ram.status.interfaces.lan.enabled";
const char PinStatus[] = "rmcfg.platform.usim.pin.status";
const char RegistrationState[] = "rmcfg.protocols.bgan.status.state";
const char PsStatus[] = "rmcfg.protocols.umts.ps.status";
const char WanActive[] = "ram.wan.active";
const char ExtendedStatus[] = "ram.status.ext_system";

enum { Initializing = 1, Running = 2 };
enum { WanSatellite = 1, WanBoth = 3 };
enum { NormalOperation = 10 };

constexpr int MaxContexts = 11;
constexpr int MaxFilters = 8 * MaxContexts;
constexpr int32_t OneTerminalRate = 896; // kbit/s; above it takes a second one
constexpr int32_t UserDefinedApn = 2;

constexpr uint32_t ConnectDelay = 2500; // ms
constexpr uint32_t CloseDelay = 500;    // ms
constexpr uint32_t AmountPeriod = 1000; // ms

struct Context {
    int index;
    int32_t cid;
    bool isSecondary;
    int filters;
};

class NetworkActor : public CommandActor {
public:
    explicit NetworkActor(const Surroundings& surroundings)
        : CommandActor(surroundings, "fail"), timer(surroundings.loop), amountTimer(surroundings.loop)
    {
    }

    void start() override
    {
        // A session of an earlier life is nobody's.
        if (terminal.database.find(SessionStatus))
            end(0);
        CommandActor::start();
    }
    void onChange(const std::string& key) override
    {
        CommandActor::onChange(key);
        if (key == Activated)
            onActivated();
        else if (key == ExtendedStatus && isSessionUp() && isGoingDown())
            end(CausePowerDown);
        else if ((key == PsStatus || key == WanActive) && state == State::Running && !isOnline())
            end(isGoingDown() ? CausePowerDown : terminal.number(RejectCauseKey, CauseConnectionLost));
        else if (key == TemperatureStageKey && isSessionUp() && isTooHot())
            end(CauseConnectionFailed);
        else if (key == LanState && isSessionUp() && isAutomatic() && terminal.number(LanState, 1) != 1)
            end(CauseLanDisconnected);
        else if (key == SessionStatus && !terminal.database.find(SessionStatus))
            forget();
    }

protected:
    std::string carryOut(const Words& words) override
    {
        int32_t cause = 0;
        if (joined(words, 0) != "off" && !parseCause(joined(words, 0), &cause))
            return "a cause above 0, as 0x1000001d, its name, or off";
        if (cause != 0 && isSessionUp())
            end(cause);
        else
            nextCause = cause;
        return "";
    }

private:
    enum class State { Idle, Connecting, Running, Closing };

    bool isSessionUp() const { return state == State::Connecting || state == State::Running; }
    bool isGoingDown() const { return terminal.number(ExtendedStatus, NormalOperation) < NormalOperation; }
    bool isTooHot() const { return terminal.number(TemperatureStageKey, StageNormal) >= StageConnections; }
    // Started by the terminal itself.
    bool isAutomatic() const { return record("ram.net.pdp_contexts.0.", 0, "entry_owner", 0) == 1; }
    bool isOnline() const
    {
        int32_t wan = terminal.number(WanActive, 0);
        return terminal.text(PsStatus) == "Attached" && (wan == WanSatellite || wan == WanBoth);
    }

    // --- Start and end

    void onActivated()
    {
        if (terminal.number(Activated, 0) == 1) {
            if (state == State::Closing)
                removeSession();
            connect();
        } else if (isSessionUp()) {
            state = State::Closing;
            amountTimer.stop();
            terminal.set(CurrentBundle, -1);
            timer.once(terminal.scaled(CloseDelay), [this] { removeSession(); });
        }
    }
    void connect()
    {
        state = State::Connecting;
        terminal.database.apply({{Reason, Value::integer(0)}, {SessionStatus, Value::integer(Initializing)}});
        timer.once(terminal.scaled(ConnectDelay), [this] { onConnected(); });
    }
    void onConnected()
    {
        std::vector<Context> contexts = readContexts();
        int32_t cause = nextCause != 0 ? nextCause : refusal(contexts);
        if (nextCause == 0 && cause != 0 && isAutomatic())
            cause = CauseAutomaticFailed;
        nextCause = 0;
        if (cause != 0) {
            end(cause);
            return;
        }
        state = State::Running;
        std::vector<Write> writes = {
            {SessionStatus, Value::integer(Running)},
            {SessionPrefix + std::string("time"), Value::integer(static_cast<int32_t>(time(nullptr)))},
            {SessionAmount, Value::integer(0)},
        };
        for (const Context& context : contexts)
            addContext(context, &writes);
        terminal.database.apply(writes);
        if (terminal.moving)
            amountTimer.every(terminal.scaled(AmountPeriod), [this] { addAmount(); });
    }
    void addContext(const Context& context, std::vector<Write>* writes) const
    {
        struct Field {
            const char* told;
            const char* asked;
        };
        const Field fields[] = {
            {"bw_up", "guaranteed_bit_rate_u"}, {"bw_down", "guaranteed_bit_rate_d"},
            {"max_bw_up", "max_bit_rate_u"},    {"max_bw_down", "max_bit_rate_d"},
            {"traffic_class", "traffic_class"},
        };
        const std::string number = std::to_string(context.index);
        for (const Field& field : fields)
            writes->push_back(
                {SessionPrefix + ("context." + number + "." + field.told),
                 Value::integer(terminal.number("ram.net.qos.0." + number + "." + field.asked, 0))});
    }
    // The session is over, by the network: with a cause, or with 0 without a word.
    void end(int32_t cause)
    {
        forget();
        std::vector<Write> writes = sessionRemoval();
        if (cause != 0)
            writes.push_back({Reason, Value::integer(cause)});
        writes.push_back({Activated, Value::integer(0)});
        writes.push_back({CurrentBundle, Value::integer(-1)});
        terminal.database.apply(writes);
    }
    void removeSession()
    {
        forget();
        terminal.database.apply(sessionRemoval());
    }
    void forget()
    {
        state = State::Idle;
        timer.stop();
        amountTimer.stop();
    }
    std::vector<Write> sessionRemoval() const
    {
        std::vector<Write> writes;
        for (const std::string& key : terminal.database.keysWithPrefix(SessionPrefix)) {
            if (key != Reason)
                writes.push_back({key, Value()});
        }
        return writes;
    }

    // --- What the records ask for

    int32_t record(const char* family, int index, const char* field, int32_t otherwise) const
    {
        return terminal.number(family + std::to_string(index) + "." + field, otherwise);
    }
    std::vector<Context> readContexts() const
    {
        std::vector<Context> contexts;
        for (int index = 0; index < MaxContexts; index++) {
            if (record("ram.net.pdp_contexts.0.", index, "active", 0) != 1)
                continue;
            int32_t cid = record("ram.net.pdp_contexts.0.", index, "cid", 0);
            int filters = 0;
            for (int filter = 0; filter < MaxFilters; filter++)
                filters += isActiveFilter(filter) && record("ram.net.tft.0.", filter, "cid", 0) == cid;
            contexts.push_back(
                {index, cid, record("ram.net.pdp_contexts.0.", index, "secondary_context", 0) != 0, filters});
        }
        return contexts;
    }
    bool isActiveFilter(int index) const { return record("ram.net.tft.0.", index, "active", 0) == 1; }

    // Why the network does not take them; 0 if it does.
    int32_t refusal(const std::vector<Context>& contexts) const
    {
        if (int32_t cause = networkRefusal())
            return cause;
        if (std::count_if(contexts.begin(), contexts.end(),
                          [](const Context& context) { return !context.isSecondary; }) != 1)
            return CauseConnectionFailed;
        if (record("ram.net.pdp_contexts.0.", 0, "apn_type", 0) == UserDefinedApn &&
            terminal.text("ram.net.pdp_contexts.0.0.apn").empty())
            return CauseMissingApn;
        if (int32_t cause = filterRefusal(contexts))
            return cause;
        for (const Context& context : contexts) {
            int32_t rate = std::max(record("ram.net.qos.0.", context.index, "max_bit_rate_u", 0),
                                    record("ram.net.qos.0.", context.index, "max_bit_rate_d", 0));
            if (rate > OneTerminalRate && !isBonded())
                return CauseInsufficientResources;
        }
        return 0;
    }
    // Whether there is a network that would carry anything at all.
    int32_t networkRefusal() const
    {
        if (isTooHot() || terminal.number(SingleUser, 0) == 1 || isSlave())
            return CauseConnectionFailed;
        if (terminal.text(PinStatus) == "Needed")
            return CauseMissingPin;
        if (terminal.text(PsStatus) == "Attached rejected")
            return terminal.number(RejectCauseKey, CauseAttachRejected);
        if (terminal.text(PsStatus) == "Blocked")
            return CauseDomainBlocked;
        if (!isOnline())
            return CauseAttachTimeout;
        return terminal.text(RegistrationState) == "Deregistered" ? CauseDeregistered : 0;
    }
    int32_t filterRefusal(const std::vector<Context>& contexts) const
    {
        // Traffic that no filter takes has one context to go to, not two.
        if (std::count_if(contexts.begin(), contexts.end(),
                          [](const Context& context) { return context.filters == 0; }) > 1)
            return CauseContextWithoutFilterExists;
        for (int filter = 0; filter < MaxFilters; filter++) {
            if (!isActiveFilter(filter))
                continue;
            int32_t cid = record("ram.net.tft.0.", filter, "cid", 0);
            if (std::none_of(contexts.begin(), contexts.end(),
                             [&](const Context& context) { return context.cid == cid; }))
                return CauseFilterSemantics;
            for (const char* side : {"source_port_", "destination_port_"}) {
                if (record("ram.net.tft.0.", filter, (side + std::string("begin")).c_str(), 0) >
                    record("ram.net.tft.0.", filter, (side + std::string("end")).c_str(), 0))
                    return CauseFilterSyntax;
            }
        }
        return 0;
    }
    // Another terminal decides what this one carries.
    bool isSlave() const
    {
        return terminal.number("cfg.bonding.enabled", 0) == 1 &&
               terminal.number("ram.net.eth0.dhcp_client_mode", 0) == 1;
    }
    bool isBonded() const
    {
        if (terminal.number("cfg.bonding.enabled", 0) != 1 ||
            terminal.number("ram.net.eth0.dhcp_client_mode", 0) != 0)
            return false;
        for (int service = 0; service < 10; service++) {
            if (record("ram.bonding.status.service.", service, "cnt", 0) > 1)
                return true;
        }
        return false;
    }

    // --- While it runs

    // Streaming moves at its rate, background traffic as it comes.
    void addAmount()
    {
        int32_t amount = 0;
        for (int index = 0; index < MaxContexts; index++) {
            const std::string context = SessionPrefix + ("context." + std::to_string(index) + ".");
            amount += (terminal.number(context + "bw_up", 0) + terminal.number(context + "bw_down", 0)) / 8;
        }
        std::uniform_int_distribution<int32_t> background(1, 60);
        terminal.set(SessionAmount, terminal.number(SessionAmount, 0) + amount + background(random));
    }

    State state = State::Idle;
    int32_t nextCause = 0;
    Timer timer;
    Timer amountTimer;
    std::minstd_rand random{3};
};

// Asks the display to start a bundle, and ends one, as its own action screen does.
class BundleActor : public CommandActor {
public:
    explicit BundleActor(const Surroundings& surroundings)
        : CommandActor(surroundings, "bundle"), timer(surroundings.loop)
    {
    }

protected:
    std::string carryOut(const Words& words) override
    {
        int64_t number = 0;
        if (words.size() == 1 && words[0] == "stop") {
            timer.stop();
            terminal.set(Activated, 0);
            terminal.set(CurrentBundle, -1);
            return "";
        }
        if (words.size() != 2 || words[0] != "start" || !parseNumber(words[1], 0, INT32_MAX, &number))
            return "start and a number, or stop";
        terminal.set(Request, -1);
        // In the display's own time: it reads the key when it is told of the change, and both values must be
        // seen.
        timer.once(Pause, [this, number] { terminal.set(Request, static_cast<int32_t>(number)); });
        return "";
    }

private:
    static constexpr const char* Request = "ram.local_gui_display.start_bundle_number";
    static constexpr uint32_t Pause = 200; // ms

    Timer timer;
};

} // namespace

void addNetworkActors(const Surroundings& surroundings, Actors* actors)
{
    actors->push_back(std::make_unique<NetworkActor>(surroundings));
    actors->push_back(std::make_unique<BundleActor>(surroundings));
}

} // namespace sim
