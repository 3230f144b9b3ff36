// The registration in the network: it follows from radio module, card, antenna and signal, and from what the
// person at the desk wants the network to do. And the spot beam, which follows from it.
#include "sim/behaviour_causes.h"
#include "sim/command_actor.h"
#include "sim/sequence.h"

#include <algorithm>

namespace sim {

const char RejectCauseKey[] = "ram.desk.network.cause";

namespace {

const char Mode[] = "rmcfg.sys.status.mode";
const char PointedStatus[] = "ram.status.pointed_status";
const char UsimStatus[] = "rmcfg.platform.usim.status";
const char PinStatus[] = "rmcfg.platform.usim.pin.status";
const char PlmnStatus[] = "rmcfg.protocols.umts.plmn.status";
const char CsStatus[] = "rmcfg.protocols.umts.cs.status";
const char PsStatus[] = "rmcfg.protocols.umts.ps.status";
const char RegistrationState[] = "rmcfg.protocols.bgan.status.state";
const char BeamType[] = "rmcfg.protocols.bgan.status.beam_type";
const char BeamId[] = "ram.desk.beam.id";
const char Operating[] = "operating";

enum { IsPointed = 2 };
enum AlertId { AlertLimitedService = 0x1600, AlertCsFailed = 0x1700, AlertPsFailed = 0x1800 };

// Where the registration is heading.
enum class Aim {
    Off,
    NoSim,
    Unpointed,
    NoSignal,
    // All that is needed is there; what the network does:
    Registered,
    NotFound,
    Rejected,
    Limited,
    Deregistered
};

Step radioStep(uint32_t delay, const char* plmn, const char* attached, const char* state)
{
    return {delay,
            {{PlmnStatus, Value::text(plmn)},
             {CsStatus, Value::text(attached)},
             {PsStatus, Value::text(attached)},
             {RegistrationState, Value::text(state)}}};
}

constexpr uint32_t StepDelay = 1500; // ms

// The way to what the network answers.
std::vector<Step> stepsToAnswer(const char* attached, const char* state)
{
    return {radioStep(0, "Searching", "Idle", "Receive system information"),
            radioStep(StepDelay, "Selected", "Attaching", "Registering"),
            radioStep(StepDelay, "Selected", attached, state)};
}

std::vector<Step> stepsTo(Aim aim)
{
    switch (aim) {
    case Aim::Off:
        return {radioStep(0, "n/a", "N/A", "N/A")};
    case Aim::NoSim:
        return {radioStep(0, "Not registered", "Idle", "Satellite search")};
    case Aim::Unpointed:
        return {radioStep(0, "Scanning", "Idle", "Satellite search")};
    case Aim::NoSignal: // a short dip does no harm
        return {radioStep(StepDelay, "Searching", "Idle", "Satellite search")};
    case Aim::NotFound:
        return {radioStep(0, "Searching", "Idle", "Satellite search")};
    case Aim::Rejected:
        return stepsToAnswer("Attached rejected", "Deregistered");
    case Aim::Limited:
        return stepsToAnswer("Blocked", "Registered");
    case Aim::Deregistered: // nobody tells the core network
        return {{0, {{RegistrationState, Value::text("Deregistered")}}}};
    case Aim::Registered:
        break;
    }
    return stepsToAnswer("Attached", "Registered");
}

struct Order {
    const char* word;
    Aim aim;
};
const Order Orders[] = {{"search", Aim::NotFound}, {"register", Aim::Registered},
                        {"reject", Aim::Rejected}, {"limited", Aim::Limited},
                        {"auto", Aim::Registered}, {"deregister", Aim::Deregistered}};

class RegistrationActor : public CommandActor {
public:
    explicit RegistrationActor(const Surroundings& surroundings)
        : CommandActor(surroundings, "network"), sequence(surroundings)
    {
    }

    // What the values say at the start is how it is.
    void start() override
    {
        aim = wanted();
        CommandActor::start();
    }
    void onChange(const std::string& key) override
    {
        CommandActor::onChange(key);
        const char* const causes[] = {Mode, PointedStatus, UsimStatus, PinStatus, SignalLevelKey};
        if (std::find(std::begin(causes), std::end(causes), key) != std::end(causes))
            follow();
        if (key == PsStatus || key == CsStatus)
            judge();
    }

protected:
    std::string carryOut(const Words& words) override
    {
        const Order* found = std::find_if(std::begin(Orders), std::end(Orders),
                                          [&](const Order& row) { return words[0] == row.word; });
        if (found == std::end(Orders) || (words.size() > 1 && found->aim != Aim::Rejected))
            return "search, register, reject [CAUSE], limited, deregister or auto";
        int32_t cause = CauseAttachRejected;
        if (words.size() > 1 && !parseCause(joined(words, 1), &cause))
            return "a cause above 0, as 0x10040003, or its name, not " + joined(words, 1);
        if (words[0] == std::string("register") || found->aim == Aim::Deregistered) {
            std::string problem = problemOfRegistering();
            if (!problem.empty())
                return problem;
        }
        if (found->aim == Aim::Deregistered && terminal.text(PsStatus) != "Attached")
            return "it is not registered";
        terminal.database.apply(
            {{RejectCauseKey, found->aim == Aim::Rejected ? Value::integer(cause) : Value()}});
        order = found->aim;
        if (words[0] == std::string("register"))
            aim = Aim::NotFound; // from the start, wherever it stands
        follow();
        return "";
    }

private:
    std::string problemOfRegistering() const
    {
        switch (conditions()) {
        case Aim::Off:
            return "the radio module does not operate";
        case Aim::NoSim:
            return "there is no card that is ready";
        case Aim::Unpointed:
            return "the antenna is not pointed";
        case Aim::NoSignal:
            return "there is no signal";
        default:
            return "";
        }
    }
    // How far it can get by itself.
    Aim conditions() const
    {
        if (terminal.text(Mode) != Operating)
            return Aim::Off;
        if (terminal.number(UsimStatus, -1) != 1 || terminal.text(PinStatus) != "Valid")
            return Aim::NoSim;
        if (terminal.number(PointedStatus, -1) != IsPointed)
            return Aim::Unpointed;
        if (terminal.number(SignalLevelKey, LowestSignal) < LowestSignal)
            return Aim::NoSignal;
        return Aim::Registered;
    }
    Aim wanted() const
    {
        Aim most = conditions();
        return most == Aim::Registered ? order : most;
    }
    void follow()
    {
        Aim before = aim;
        aim = wanted();
        if (aim == before)
            return;
        // A registration that is anew begun is no longer the one that the network has silently dropped.
        if (before == Aim::Deregistered && order == Aim::Deregistered && aim != before)
            order = Aim::Registered;
        // The signal came back before its loss was noticed.
        if (before == Aim::NoSignal && aim == Aim::Registered && terminal.text(PsStatus) == "Attached" &&
            terminal.text(RegistrationState) == "Registered")
            sequence.stop();
        else
            sequence.run(stepsTo(aim));
    }

    // --- What it warns of

    void judge()
    {
        const std::string cause =
            " sub_id=" + std::to_string(terminal.number(RejectCauseKey, CauseAttachRejected));
        raise(&isCsRejected, terminal.text(CsStatus) == "Attached rejected", AlertCsFailed, cause);
        raise(&isPsRejected, terminal.text(PsStatus) == "Attached rejected", AlertPsFailed, cause);
        raise(&isLimited, terminal.text(CsStatus) == "Blocked" && terminal.text(PsStatus) == "Blocked",
              AlertLimitedService, "");
    }
    void raise(bool* stands, bool applies, int32_t id, const std::string& subId)
    {
        if (*stands == applies)
            return;
        *stands = applies;
        giveCommand(terminal, "alert",
                    applies ? "add " + std::to_string(id) + " warning" + subId
                            : "clear " + std::to_string(id));
    }

    Aim aim = Aim::Off;
    Aim order = Aim::Registered;
    bool isCsRejected = false;
    bool isPsRejected = false;
    bool isLimited = false;
    Sequence sequence;
};

// The beam: the whole sky while it searches, a regional one while it registers, a narrow one for traffic.
class BeamActor : public CommandActor {
public:
    explicit BeamActor(const Surroundings& surroundings)
        : CommandActor(surroundings, "beam"), sequence(surroundings)
    {
    }

    void onChange(const std::string& key) override
    {
        CommandActor::onChange(key);
        if ((key == PlmnStatus || key == PsStatus || key == Mode) && !isHeld)
            follow();
    }

protected:
    std::string carryOut(const Words& words) override
    {
        if (words.size() == 1 && words[0] == "auto") {
            isHeld = false;
            terminal.database.apply({{BeamId, Value()}});
            follow();
            return "";
        }
        const Beam* found = std::find_if(std::begin(Beams), std::end(Beams),
                                         [&](const Beam& row) { return words[0] == row.word; });
        if (found == std::end(Beams) || words.size() > 2)
            return "global, regional or narrow and a number, or auto";
        int64_t id = 0;
        if (words.size() == 2 && !parseNumber(words[1], 1, MaxId, &id))
            return "a beam has a number from 1 to " + std::to_string(MaxId) + ", not " + words[1];
        if (terminal.text(Mode) != Operating)
            return "the radio module does not operate";
        isHeld = true;
        sequence.run({{0,
                       {{BeamType, Value::text(found->type)},
                        {BeamId, id ? Value::integer(static_cast<int32_t>(id)) : Value()}}}});
        return "";
    }

private:
    struct Beam {
        const char* word;
        const char* type;
    };
    static constexpr Beam Beams[] = {{"global", "Global"}, {"regional", "Regional"}, {"narrow", "Narrow"}};
    static constexpr int32_t MaxId = 255;
    static constexpr uint32_t NarrowDelay = 2000; // ms

    void follow()
    {
        if (terminal.text(Mode) != Operating) {
            isHeld = false;
            sequence.run({{0, {{BeamType, Value::text("")}, {BeamId, Value()}}}});
        } else if (terminal.text(PlmnStatus) != "Selected") {
            sequence.run({{0, {{BeamType, Value::text("Global")}}}});
        } else if (terminal.text(PsStatus) == "Attached") {
            if (terminal.text(BeamType) != "Narrow")
                sequence.run({{NarrowDelay, {{BeamType, Value::text("Narrow")}}}});
        } else {
            sequence.run({{0, {{BeamType, Value::text("Regional")}}}});
        }
    }

    bool isHeld = false;
    Sequence sequence;
};
constexpr BeamActor::Beam BeamActor::Beams[];

} // namespace

void addRegistrationActors(const Surroundings& surroundings, Actors* actors)
{
    actors->push_back(std::make_unique<RegistrationActor>(surroundings));
    actors->push_back(std::make_unique<BeamActor>(surroundings));
}

} // namespace sim
