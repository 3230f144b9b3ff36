// What helps at a console: completion of what is typed, and traces.
#include "console_fixture.h"
#include "raw_client.h"

#include "sim/console/trace.h"

#include <gmock/gmock.h>

using namespace std::string_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

// --- Completion

struct Completion {
    const char* line;
    const char* completed;
    std::vector<std::string> candidates;
};

TEST(ConsoleAlone, Completion)
{
    sim::Terminal terminal(emptyTerminal());
    sim::Desk desk{terminal, terminal.loop()};
    ConsoleSession session(desk);
    for (const char* key : {"cfg.language", "cfg.lan.a", "cfg.lan.b", "ram.x", "ram.x.y"})
        terminal.set(key, 1);
    const Completion table[] = {
        {"dele", "delete ", {}},
        {"unw", "unwatch ", {}},
        {"zzz", "zzz", {}},
        {"get c", "get cfg.", {}},
        {"get cfg.", "get cfg.lan", {"cfg.lan.", "cfg.language"}},
        {"get cfg.lang", "get cfg.language ", {}},
        {"get cfg.lan.", "get cfg.lan.", {"cfg.lan.a", "cfg.lan.b"}},
        {"get ram.", "get ram.x", {"ram.x", "ram.x."}},
        {"get x", "get x", {}},
        {"get cfg.language x", "get cfg.language x", {}},
        {"get cfg.language ", "get cfg.language ", {}},
        {"set cfg.langu", "set cfg.language ", {}},
        {"watch r", "watch ram.", {}},
        {"list cfg.la", "list cfg.lan", {"cfg.lan.", "cfg.language"}},
        {"delete cfg.lan.a", "delete cfg.lan.a ", {}},
        {"pointing s", "pointing st", {"start", "stop"}},
        {"pointing c", "pointing cancel ", {}},
        {"battery s", "battery supply ", {}},
        {"battery supply o", "battery supply o", {"off", "on"}},
        {"modem se", "modem search ", {}},
        {"repeat 3 dele", "repeat 3 delete ", {}},
        {"repeat 3 get cfg.lang", "repeat 3 get cfg.language ", {}},
        {"repeat d", "repeat d", {}},
        {"not get cfg.lang", "not get cfg.language ", {}},
        {"help dele", "help delete ", {}},
        {"get \"cfg.l", "get \"cfg.l", {}},
        {"say \"a b", "say \"a b", {}},
        {"sm", "sm", {}},
    };
    for (const Completion& row : table) {
        std::vector<std::string> candidates;
        std::string completed;
        terminal.onThread([&] { completed = session.console->complete(row.line, &candidates); });
        EXPECT_EQ(completed, row.completed) << row.line;
        EXPECT_EQ(candidates, row.candidates) << row.line;
    }
    std::vector<std::string> all;
    terminal.onThread([&] { session.console->complete("", &all); });
    EXPECT_THAT(all, Contains("get"));
    EXPECT_THAT(all, Contains("battery"));
    EXPECT_THAT(all, Contains("trace"));
    EXPECT_THAT(all, testing::Not(Contains("smb")));
}

TEST_F(ConsoleTest, KeysOfTheDisplayAreNotThoseOfTheDatabase)
{
    std::vector<std::string> candidates;
    std::string completed;
    terminal.onThread([&] { completed = session.console->complete("press do", &candidates); });
    EXPECT_EQ(completed, "press down ");
}

// --- Trace items

TEST_F(ConsoleTest, Traces)
{
    std::vector<std::string> lines;
    std::mutex mutex;
    desk.log = [&](const std::string& line) {
        std::lock_guard<std::mutex> lock(mutex);
        lines.push_back(line);
    };
    std::unique_ptr<sim::Traces> traces;
    terminal.onThread([&] {
        traces = std::make_unique<sim::Traces>(desk);
        desk.traces = traces.get();
    });
    auto take = [&] {
        terminal.settle();
        std::lock_guard<std::mutex> lock(mutex);
        return std::exchange(lines, {});
    };
    terminal.set("ram.t", 1);
    session.run("echo a");
    EXPECT_THAT(take(), IsEmpty());

    session.run("trace db a");
    terminal.set("ram.t", 2);
    terminal.set("ram.u", "a\nb"s);
    EXPECT_THAT(take(), ElementsAre("trace db: ram.t = int 2", "trace db: ram.u = string \"a\\nb\""));
    session.run("trace db -");

    session.run("trace actor *");
    session.run("sim insert");
    EXPECT_THAT(take(), UnorderedElementsAre("trace actor: sim insert",
                                             "trace actor: refused: sim: there is a card already"));
    session.run("trace actor #");

    session.run("trace console ab");
    session.run("get no\x01");
    auto lived = take();
    EXPECT_THAT(lived, Contains("trace console: test runs get no?"));
    EXPECT_THAT(lived, Contains("trace console: test: failed"));
    session.run("trace console #");
    take();

    session.run("trace bus *");
    RawClient client(terminal.address());
    client.sendSignal("some.signal", "x");
    ASSERT_TRUE(client.sync());
    auto traced = take();
    EXPECT_THAT(traced, Contains(HasSubstr("signal some.signal")));
    EXPECT_THAT(traced, Contains(HasSubstr("request nobody.serves.this")));
    std::vector<std::string> seen;
    for (int attempt = 0; attempt < 200 && seen.empty(); attempt++) {
        usleep(25000);
        for (const std::string& line : take()) {
            if (line.find("is here") != std::string::npos)
                seen.push_back(line);
        }
    }
    EXPECT_THAT(seen, ElementsAre("trace bus: client 1 is here"));
    session.run("trace bus #");
    session.run("trace db +");
    session.run("trace db #");
    take();
    client.sendSignal("some.signal", "x");
    ASSERT_TRUE(client.sync());
    EXPECT_THAT(take(), IsEmpty());
    terminal.onThread([&] {
        desk.traces = nullptr;
        traces.reset();
    });
}

} // namespace
