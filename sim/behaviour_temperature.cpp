// The temperature of the terminal, and what its thermal manager does about it. The stages are those of its
// events: each takes the place of the one before in the alert log.
#include "sim/command_actor.h"

#include <algorithm>

namespace sim {

const char TemperatureStageKey[] = "ram.desk.temperature.stage";

namespace {

const char Degrees[] = "ram.desk.temperature.degrees";
const char ExtendedStatus[] = "ram.status.ext_system";
enum { NormalOperation = 10 };

constexpr int32_t Coldest = -40;
constexpr int32_t Hottest = 100;
constexpr int32_t Normal = 32;
constexpr int32_t ColdFrom = -25;
constexpr int32_t Hysteresis = 3;     // degrees
constexpr uint32_t CloseDelay = 5000; // ms between the fatal alert and the end

struct Stage {
    TemperatureStage stage;
    int32_t from; // degrees
    int32_t event;
    const char* severity;
};
const Stage Stages[] = {
    {StageReduced, 55, 0x10201, "warning"},    {StagePoe, 58, 0x10208, "warning"},
    {StageUsb, 60, 0x10202, "warning"},        {StageUsbExtern, 62, 0x10203, "warning"},
    {StageBackground, 65, 0x10204, "warning"}, {StageConnections, 70, 0x10205, "error"},
    {StageClosing, 75, 0x10206, "fatal"},
};
const Stage Cold = {StageCold, ColdFrom, 0x10207, "warning"};

const Stage* find(int32_t stage)
{
    if (stage == StageCold)
        return &Cold;
    auto found = std::find_if(std::begin(Stages), std::end(Stages),
                              [stage](const Stage& row) { return row.stage == stage; });
    return found == std::end(Stages) ? nullptr : found;
}

// One that stands goes only some degrees back from where it came.
int32_t stageAt(int32_t degrees, int32_t standing)
{
    if (degrees <= (standing == StageCold ? ColdFrom + Hysteresis - 1 : ColdFrom))
        return StageCold;
    int32_t stage = StageNormal;
    for (const Stage& row : Stages) {
        if (degrees >= (row.stage <= standing ? row.from - Hysteresis + 1 : row.from))
            stage = row.stage;
    }
    return stage;
}

class TemperatureActor : public CommandActor {
public:
    explicit TemperatureActor(const Surroundings& surroundings)
        : CommandActor(surroundings, "temperature"), timer(surroundings.loop)
    {
    }

    // One that is started while it is too hot ends again.
    void onChange(const std::string& key) override
    {
        CommandActor::onChange(key);
        if (key == ExtendedStatus && standing == StageClosing && isUp() && !timer.isRunning())
            closeLater();
    }

protected:
    std::string carryOut(const Words& words) override
    {
        int64_t degrees = Normal;
        bool isBattery = words.size() == 2 && (words[0] == "1" || words[0] == "2");
        if ((words.size() != 1 && !isBattery) ||
            (words.back() != "normal" && !parseNumber(words.back(), Coldest, Hottest, &degrees)))
            return "degrees from -40 to 100, or normal, behind a battery, 1 or 2, or nothing";
        if (isBattery) {
            std::string problem = giveCommand(terminal, "battery", words[0] + " temperature " + words[1]);
            return problem.substr(problem.find(": ") == std::string::npos ? 0 : problem.find(": ") + 2);
        }
        terminal.set(Degrees, static_cast<int32_t>(degrees));
        enter(stageAt(static_cast<int32_t>(degrees), standing));
        return "";
    }

private:
    void enter(int32_t stage)
    {
        if (stage == standing)
            return;
        const Stage* before = find(standing);
        const Stage* now = find(stage);
        standing = stage;
        // The new alert stands before what it brings is seen.
        if (now)
            giveCommand(terminal, "alert", "add " + std::to_string(now->event) + " " + now->severity);
        terminal.database.apply(
            {{TemperatureStageKey, stage == StageNormal ? Value() : Value::integer(stage)}});
        if (before)
            giveCommand(terminal, "alert", "clear " + std::to_string(before->event));
        timer.stop();
        if (stage == StageClosing)
            closeLater();
    }
    bool isUp() const { return terminal.number(ExtendedStatus, 0) >= NormalOperation; }
    void closeLater()
    {
        timer.once(terminal.scaled(CloseDelay), [this] {
            if (isUp())
                giveCommand(terminal, "system", "shutdown");
        });
    }

    int32_t standing = StageNormal;
    Timer timer;
};

} // namespace

void addTemperatureActors(const Surroundings& surroundings, Actors* actors)
{
    actors->push_back(std::make_unique<TemperatureActor>(surroundings));
}

} // namespace sim
