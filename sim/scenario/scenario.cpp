// Carries out the steps of a scenario, one after the other.
#include "sim/scenario/scenario.h"

#include "sim/console/witness.h"
#include "sim/display/display.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace sim {
namespace {

const uint32_t LookInterval = 100; // ms
const uint32_t RestartTime = 2000; // ms in which a display that has crashed is there again
const uint32_t StartLimit = 20000; // ms until the display shows something
const char ErrorMark[] = "error: ";
const char* const Blanks = " \t\r\n";

// Its line says it all.
bool isSay(const ScenarioStep* step)
{
    return step && step->words[0] == "say";
}

bool isExpectCrash(const ScenarioStep* step)
{
    return step && step->words.size() >= 2 && step->words[0] == "expect" && step->words[1] == "crash";
}

} // namespace

Scenario::Scenario(Desk& desk, Script script, Options options)
    : desk(desk), script(std::move(script)), options(std::move(options)),
      console(desk, "scenario", [this](std::string_view text) { onOutput(text); }), timer(desk.loop),
      watcher(desk.loop)
{
}

Scenario::~Scenario()
{
    if (!scratch.empty()) {
        std::error_code ignored;
        std::filesystem::remove_all(scratch, ignored);
    }
}

void Scenario::begin()
{
    if (desk.pictures.empty()) {
        char name[] = "/tmp/terminalsim.XXXXXX";
        if (mkdtemp(name))
            scratch = desk.pictures = name;
    } else {
        std::error_code problem; // which the first picture will tell
        std::filesystem::create_directories(desk.pictures, problem);
    }
    watcher.every(LookInterval, [this] { look(); });
    if (desk.display && !script.hasStart)
        startDisplay(true);
    else
        timer.once(0, [this] { advance(); });
}

// --- Steps

void Scenario::advance()
{
    const std::string problem = crashed();
    if (!problem.empty()) {
        fail(problem);
        return;
    }
    if (!current()) {
        // One that has just gone may be on its way to be started again, which would be a crash.
        if (isStarted && !isLate && desk.display->state() == Display::State::Stopped) {
            isLate = true;
            timer.once(RestartTime, [this] { advance(); });
            return;
        }
        end(0);
        return;
    }
    error.clear();
    if (!options.quiet)
        options.print(lineOf(*current()));
    if (current()->words[0] == "start")
        startDisplay(current()->words.size() == 1);
    else
        run(*current());
}

void Scenario::run(const ScenarioStep& step)
{
    std::string line = step.text;
    if (step.words[0] == "picture") {
        char number[16];
        snprintf(number, sizeof number, "%02u_", ++pictures);
        line = "picture " + std::string(number) + step.words[1] + ".png";
        for (size_t word = 2; word < step.words.size(); word++)
            line += " " + step.words[word];
    }
    if (step.words[0] == "display" && step.words.size() > 1)
        mayEnd = step.words[1] != "start" && step.words[1] != "restart";
    isRunning = true;
    console.run(line, [this](int status) {
        isRunning = false;
        if (status == CommandFailed) {
            fail(error.empty() ? "this has failed" : error);
            return;
        }
        if (isExpectCrash(current()))
            mayEnd = false;
        at++;
        timer.once(0, [this] { advance(); });
    });
}

std::string Scenario::lineOf(const ScenarioStep& step)
{
    const std::string place = step.file == script.file ? std::to_string(step.line) : step.place();
    return (place.size() < 4 ? std::string(4 - place.size(), ' ') : std::string()) + place + "  " + step.text;
}

// "error: " begins the line that tells why a command has failed.
void Scenario::onOutput(std::string_view text)
{
    partial += text;
    for (size_t end; (end = partial.find('\n')) != std::string::npos; partial.erase(0, end + 1)) {
        const std::string line = partial.substr(0, end);
        if (line.compare(0, strlen(ErrorMark), ErrorMark) == 0)
            error = line.substr(strlen(ErrorMark));
        else if (!options.quiet && !isSay(current()) && line.find_first_not_of(Blanks) != std::string::npos)
            options.print("      " + line);
    }
}

// --- The display

void Scenario::startDisplay(bool waitForWindow)
{
    std::string problem;
    if (!desk.display)
        problem = "there is no display to be started";
    else
        desk.display->start(&problem);
    if (!problem.empty()) {
        timer.once(0, [this, problem] { fail(problem); });
        return;
    }
    isStarted = true;
    startedAt = fdloop_time_ms();
    timer.every(LookInterval, [this, waitForWindow] {
        const Shown& shown = desk.witness->shown();
        const std::string problem = crashed();
        if (!problem.empty()) {
            fail(problem);
        } else if (desk.display->state() == Display::State::Running && shown.listens && shown.complete &&
                   (shown.window || !waitForWindow)) {
            at += script.hasStart;
            timer.once(0, [this] { advance(); });
        } else if (fdloop_time_ms() - startedAt > StartLimit * desk.patience) {
            fail(waitForWindow ? "the display shows nothing after 20 s" : "the display is not up after 20 s");
        }
    });
}

bool Scenario::crashIsAllowed() const
{
    const size_t next = at + 1;
    return mayEnd || isExpectCrash(current()) ||
           (next < script.steps.size() && isExpectCrash(&script.steps[next]));
}

// Why the display is not there any more; empty if it is, or needn't be. One that the terminal itself has
// switched off has not crashed: that is known of those that had to be started again, or that nobody starts.
std::string Scenario::crashed() const
{
    if (!isStarted || crashIsAllowed() || (desk.witness->crashes() == 0 && !isGone))
        return std::string();
    const std::string last = desk.witness->lastWords();
    return "the display has ended by itself" + (last.empty() ? std::string() : "; its log: " + last);
}

// While a line takes its time.
void Scenario::look()
{
    const std::string problem = isRunning ? crashed() : std::string();
    if (problem.empty())
        return;
    console.cancel();
    isRunning = false;
    fail(problem);
}

// --- The end

void Scenario::fail(const std::string& what)
{
    const ScenarioStep* step = current();
    options.printError((step ? step->place() : script.file) + ": " + what);
    end(1);
}

void Scenario::end(int status)
{
    isOver = true;
    timer.stop();
    watcher.stop();
    console.cancel();
    if (!scratch.empty())
        desk.pictures.clear();
    if (options.ended)
        options.ended(status);
}

} // namespace sim
