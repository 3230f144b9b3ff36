// The GPS receiver: it searches its satellites after the terminal has started, and then knows where it is.
#include "sim/command_actor.h"
#include "sim/sequence.h"

#include <cmath>
#include <cstdlib>

namespace sim {

namespace {

const char Fix[] = "ram.status.position.fix";
const char Satellites[] = "ram.status.position.satellites";
const char Latitude[] = "ram.status.position.latitude";
const char Longitude[] = "ram.status.position.longitude";
const char ShowPolicy[] = "rmcfg.protocols.bgan.status.gps_policy.display";
const char ExtendedStatus[] = "ram.status.ext_system";
enum { Dark = 0, NormalOperation = 10 };

enum { NoFix = 0, FlatFix = 2, FullFix = 3 };
constexpr int32_t AllSatellites = 8;

struct Progress {
    uint32_t delay; // ms after the one before
    int32_t satellites;
    int32_t fix;
};
// After a start the receiver knows where the satellites should be, and has its fix before the terminal is up.
const Progress Warm[] = {{500, 1, NoFix},    {500, 2, NoFix},    {500, 3, NoFix},
                         {1000, 4, FlatFix}, {1500, 6, FullFix}, {2000, AllSatellites, FullFix}};
const Progress ColdSearch[] = {{4000, 1, NoFix},
                               {5000, 2, NoFix},
                               {6000, 3, NoFix},
                               {8000, 4, NoFix},
                               {5000, 5, FlatFix},
                               {4000, 7, FullFix},
                               {4000, AllSatellites, FullFix}};

Step stepTo(uint32_t delay, int32_t satellites, int32_t fix)
{
    return {delay, {{Satellites, Value::integer(satellites)}, {Fix, Value::integer(fix)}}};
}

template <size_t Count> std::vector<Step> search(const Progress (&progress)[Count])
{
    std::vector<Step> steps = {stepTo(0, 0, NoFix)};
    for (const Progress& row : progress)
        steps.push_back(stepTo(row.delay, row.satellites, row.fix));
    return steps;
}

class PositionActor : public CommandActor {
public:
    explicit PositionActor(const Surroundings& surroundings)
        : CommandActor(surroundings, "position"), sequence(surroundings)
    {
    }

    void start() override
    {
        wasDark = isDark();
        CommandActor::start();
    }
    void onChange(const std::string& key) override
    {
        CommandActor::onChange(key);
        if (key != ExtendedStatus || isDark() == wasDark)
            return;
        wasDark = isDark();
        if (wasDark)
            sequence.run({stepTo(0, 0, NoFix)});
        else if (!isCovered && terminal.number(Fix, NoFix) == NoFix)
            sequence.run(search(Warm));
    }

protected:
    std::string carryOut(const Words& words) override
    {
        const std::string& word = words[0];
        if (words.size() == 2)
            return move(words);
        if (words.size() != 1 ||
            (word != "lost" && word != "search" && word != "found" && word != "show" && word != "hide"))
            return "a latitude and a longitude, lost, search, found, show or hide";
        if (word == "show" || word == "hide") {
            terminal.set(ShowPolicy, word == "show");
            return "";
        }
        isCovered = word == "lost";
        if (word == "search")
            sequence.run(search(ColdSearch));
        else
            sequence.run({isCovered ? stepTo(0, 0, NoFix) : stepTo(0, AllSatellites, FullFix)});
        return "";
    }

private:
    bool isDark() const { return terminal.number(ExtendedStatus, NormalOperation) == Dark; }

    std::string move(const Words& words)
    {
        int32_t latitude = 0, longitude = 0;
        if (!parseDegrees(words[0], 90, &latitude))
            return "a latitude is a number from -90 to 90, as 59.9123, not " + words[0];
        if (!parseDegrees(words[1], 180, &longitude))
            return "a longitude is a number from -180 to 180, as -10.75, not " + words[1];
        terminal.database.apply(
            {{Latitude, Value::integer(latitude)}, {Longitude, Value::integer(longitude)}});
        return "";
    }
    // In hundred-thousandths.
    static bool parseDegrees(const std::string& text, int32_t limit, int32_t* degrees)
    {
        char* end = nullptr;
        double value = strtod(text.c_str(), &end);
        if (text.find_first_not_of("-.0123456789") != std::string::npos || end == text.c_str() ||
            *end != '\0' || !(std::fabs(value) <= limit))
            return false;
        *degrees = static_cast<int32_t>(std::lround(value * 100000));
        return true;
    }

    bool wasDark = false;
    bool isCovered = false; // no satellite is seen until somebody says otherwise
    Sequence sequence;
};

} // namespace

void addPositionActors(const Surroundings& surroundings, Actors* actors)
{
    actors->push_back(std::make_unique<PositionActor>(surroundings));
}

} // namespace sim
