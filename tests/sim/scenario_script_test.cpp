// Reading of scenarios: what becomes of repetitions and included files, and how each mistake is told.
#include "sim/console/command_form.h"
#include "sim/scenario/script.h"
#include "temporary_directory.h"

#include <fstream>
#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class ScenarioScriptTest : public testing::Test {
protected:
    std::string write(const std::string& name, const std::string& text)
    {
        std::ofstream(directory.file(name), std::ios::binary) << text;
        return directory.file(name);
    }
    // The steps as "LINE text".
    std::vector<std::string> stepsOf(const std::string& text)
    {
        EXPECT_TRUE(sim::loadScript(write("a.scenario", text), &script, &error)) << error;
        std::vector<std::string> steps;
        for (const sim::ScenarioStep& step : script.steps)
            steps.push_back(std::to_string(step.line) + " " + step.text);
        return steps;
    }
    // What is wrong, without the directory.
    std::string errorOf(const std::string& text)
    {
        EXPECT_FALSE(sim::loadScript(write("a.scenario", text), &script, &error)) << text;
        EXPECT_TRUE(script.steps.empty());
        EXPECT_THAT(error, testing::Not(HasSubstr("\n")));
        std::string told = error;
        for (size_t at; (at = told.find(directory.name + "/")) != std::string::npos;)
            told.erase(at, directory.name.size() + 1);
        return told;
    }

    TemporaryDirectory directory;
    sim::Script script;
    std::string error;
};

TEST_F(ScenarioScriptTest, CommentsAndBlankLinesAreNoSteps)
{
    EXPECT_THAT(stepsOf("# A story\n\n   \t\nsay one\r\n  say  two words \n# end\n"),
                ElementsAre("4 say one", "5 say  two words"));
    EXPECT_THAT(script.steps[1].words, ElementsAre("say", "two", "words"));
    EXPECT_EQ(script.steps[1].place(), script.file + ":5");
    EXPECT_THAT(stepsOf(""), ElementsAre());
    EXPECT_THAT(stepsOf("say without a line feed"), ElementsAre("1 say without a line feed"));
}

TEST_F(ScenarioScriptTest, RepetitionsStandInTheirPlaces)
{
    EXPECT_THAT(
        stepsOf("say a\nrepeat 2\n  say b\n  repeat 2\n    say c\n  end\nend\nsay d\n"),
        ElementsAre("1 say a", "3 say b", "5 say c", "5 say c", "3 say b", "5 say c", "5 say c", "8 say d"));
    EXPECT_THAT(stepsOf("repeat 3 say \"x  y\"\nsay z"),
                ElementsAre("1 say \"x  y\"", "1 say \"x  y\"", "1 say \"x  y\"", "2 say z"));
    EXPECT_THAT(stepsOf("repeat 2\nrepeat 2 say a\nend\n"),
                ElementsAre("2 say a", "2 say a", "2 say a", "2 say a"));
    EXPECT_THAT(stepsOf("repeat 5\nend\n"), ElementsAre());
}

TEST_F(ScenarioScriptTest, IncludedFilesAreNamedFromTheirIncluder)
{
    std::filesystem::create_directory(directory.file("parts"));
    write("parts/one.scenario", "say one\ninclude two.scenario\n");
    write("parts/two.scenario", "say two\n");
    EXPECT_THAT(stepsOf("include parts/one.scenario\nrepeat 2\ninclude parts/two.scenario\nend\nsay three\n"),
                ElementsAre("1 say one", "1 say two", "1 say two", "1 say two", "5 say three"));
    EXPECT_EQ(script.steps[1].file, directory.file("parts/two.scenario"));
    EXPECT_EQ(script.steps[4].file, directory.file("a.scenario"));
}

TEST_F(ScenarioScriptTest, EveryMistakeIsToldWithFileAndLine)
{
    const struct {
        const char* text;
        const char* error;
    } cases[] = {
        {"say a\nfly away\n", "a.scenario:2: unknown command fly"},
        {"# x\n\nsay \"a\n", "a.scenario:3: "},
        {"say\n", "a.scenario:1: usage: say TEXT"},
        {"wait\n", "a.scenario:1: usage: wait SECONDS"},
        {"wait 1 2\n", "a.scenario:1: usage: wait SECONDS"},
        {"say a\nquit\n", "a.scenario:2: a scenario ends with its last line"},
        {"exit\n", "a.scenario:1: a scenario ends with its last line"},
        {"picture a/b\n", "a.scenario:1: in a scenario the name of a picture is made of"},
        {"wait soon\n", "a.scenario:1: soon is no number of seconds from 0 to 3600"},
        {"pause 3601\n", "a.scenario:1: 3601 is no number of seconds from 0 to 3600"},
        {"pause -1\n", "a.scenario:1: -1 is no number of seconds from 0 to 3600"},
        {"say a\nsim swallow\n", "a.scenario:2: usage: sim insert | remove; "},
        {"expect cfg.language int:x\n", "a.scenario:1: "},
        {"expect cfg.language 1 within long\n", "a.scenario:1: long is no number of seconds from 0 to 3600"},
        {"expect cfg.language >much\n", "a.scenario:1: >much is no bound"},
        {"expect language 1\n", "a.scenario:1: language is no key"},
        {"expect screen nowhere\n", "a.scenario:1: there is no screen nowhere"},
        {"expect pointing sideways\n", "a.scenario:1: pointing is start, stop or cancel, not sideways"},
        {"expect\n", "a.scenario:1: usage: expect KEY VALUE"},
        {"repeat\nend\n", "a.scenario:1: usage: repeat N"},
        {"repeat 0\nend\n", "a.scenario:1: usage: repeat N"},
        {"repeat 10001\nend\n", "a.scenario:1: usage: repeat N"},
        {"repeat x say a\n", "a.scenario:1: usage: repeat N"},
        {"say a\nend\n", "a.scenario:2: there is no repeat for this end"},
        {"repeat 2\nsay a\n", "a.scenario:1: there is no end for this repeat"},
        {"repeat 2\nrepeat 2\nsay a\nend\n", "a.scenario:1: there is no end for this repeat"},
        {"repeat 2\nsay a\nend now\n", "a.scenario:3: nothing stands behind end"},
        {"repeat 2\nsay a\nrepeat 2 fly\nend\n", "a.scenario:3: unknown command fly"},
        {"repeat 10000\nrepeat 11\nsay a\nend\nend\n", "a.scenario:1: too many lines, with all repetitions"},
        {"include\n", "a.scenario:1: usage: include FILE"},
        {"say a\ninclude none.scenario\n",
         "a.scenario:2: cannot include none.scenario: No such file or directory"},
        {"include a.scenario\n", "a.scenario:1: a.scenario includes itself"},
        {"include .\n", "a.scenario:1: cannot include .: this is no file"},
        {"start now\n", "a.scenario:1: usage: start [dark]"},
        {"start\nstart dark\n", "a.scenario:2: the display has been started already, at a.scenario:1"},
        {"repeat 2 start\n", "a.scenario:1: the display has been started already, at a.scenario:1"},
        {"expect screen status\nstart\n",
         "a.scenario:1: the display is started further down, at a.scenario:2"},
    };
    for (const auto& row : cases)
        EXPECT_THAT(errorOf(row.text), StartsWith(row.error)) << row.text;
}

TEST_F(ScenarioScriptTest, FilesThatIncludeOneAnotherInACircleAreFound)
{
    write("b.scenario", "say b\ninclude c.scenario\n");
    write("c.scenario",
          "say c\n\ninclude ./../" + directory.name.substr(directory.name.rfind('/') + 1) + "/b.scenario\n");
    EXPECT_THAT(errorOf("include b.scenario\n"),
                testing::AllOf(StartsWith("c.scenario:3: "), HasSubstr("includes itself")));
}

TEST_F(ScenarioScriptTest, AMistakeInAnIncludedFileIsToldWithItsOwnPlace)
{
    write("b.scenario", "say b\nfly\n");
    EXPECT_EQ(errorOf("say a\ninclude b.scenario\n"), "b.scenario:2: unknown command fly");
}

TEST_F(ScenarioScriptTest, WhatIsNoTextOrTooLongIsRefused)
{
    EXPECT_EQ(errorOf(std::string("say a\nsay \0b\n", 13)), "a.scenario:2: this is no text");
    EXPECT_EQ(errorOf("say a\nsay " + std::string(sim::Script::MaxLine, 'x')),
              "a.scenario:2: the line is too long");
    EXPECT_EQ(errorOf(std::string(sim::Script::MaxFile + 1, '\n')),
              "a.scenario: this is too long for a scenario");
    EXPECT_FALSE(sim::loadScript(directory.file("none"), &script, &error));
    EXPECT_EQ(error, directory.file("none") + ": No such file or directory");
    EXPECT_FALSE(sim::loadScript(directory.name, &script, &error));
    EXPECT_EQ(error, directory.name + ": this is no file");
}

// Each of these would take for ever, or all memory, if it were carried out as it stands.
TEST_F(ScenarioScriptTest, NestingIsBounded)
{
    std::string text;
    for (int i = 0; i < 16; i++)
        text += "repeat 10000\n";
    for (int i = 0; i < 16; i++)
        text += "end\n";
    EXPECT_THAT(stepsOf(text), ElementsAre()); // 10000 to the power of 16, of nothing
    EXPECT_THAT(errorOf("repeat 1\n" + text + "end\n"), HasSubstr("too many repetitions in one another"));

    for (int i = 0; i < 20; i++) {
        std::string inner;
        for (int line = 0; line < 50; line++)
            inner += "include f" + std::to_string(i + 1) + ".scenario\n";
        write("f" + std::to_string(i) + ".scenario", i == 15 ? "# nothing\n" : inner);
    }
    EXPECT_THAT(errorOf("include f1.scenario\n"), HasSubstr(": too many files"));
}

TEST(CommandFormTest, WordsFitAForm)
{
    const struct {
        const char* form;
        sim::Words words;
        bool fits;
    } cases[] = {
        {"", {}, true},
        {"", {"x"}, false},
        {"KEY", {"cfg.language"}, true},
        {"KEY", {}, false},
        {"KEY", {"a", "b"}, false},
        {"on | off", {"on"}, true},
        {"on|off", {"off"}, true},
        {"on | off", {"on", "off"}, false},
        {"on | off", {"of"}, false},
        {"supply on | off", {"supply", "off"}, true},
        {"supply on | off", {"supply"}, false},
        {"[N] PERCENT", {"50"}, true},
        {"[N] PERCENT", {"2", "50"}, true},
        {"[N] PERCENT", {"2", "50", "x"}, false},
        {"KEY VALUE [within SECONDS]", {"k", "v"}, true},
        {"KEY VALUE [within SECONDS]", {"k", "v", "within", "3"}, true},
        {"KEY VALUE [within SECONDS]", {"k", "v", "within"}, false},
        {"KEY VALUE [within SECONDS]", {"k", "v", "before", "3"}, false},
        {"add ID [FIELD=N ...] [TEXT]", {"add", "1"}, true},
        {"add ID [FIELD=N ...] [TEXT]", {"add", "1", "a=2", "b=3", "two", "words"}, true},
        {"add ID [FIELD=N ...] [TEXT]", {"add"}, false},
        {"KEY [KEY ...]", {"a", "b", "c", "d"}, true},
        {"KEY...", {"a", "b"}, true},
        {"KEY ...", {}, false},
        {"[on | off]", {}, true},
        {"[on | off]", {"off"}, true},
        {"[[N] M] last", {"1", "2", "last"}, true},
        {"[[N] M] last", {"last"}, true},
        {"TEXT [within SECONDS]", {"a", "b", "within", "3"}, true},
        {"TEXT", {}, false},
    };
    for (const auto& row : cases)
        EXPECT_EQ(sim::fitsForm(row.form, row.words), row.fits)
            << row.form << " and " << testing::PrintToString(row.words);
}

TEST(CommandFormTest, ACommandIsCheckedWithoutBeingRun)
{
    EXPECT_EQ(sim::checkCommand({"signal", "52.5"}), "");
    EXPECT_EQ(sim::checkCommand({"signal", "up"}), "");
    EXPECT_THAT(sim::checkCommand({"signal"}), StartsWith("usage: signal LEVEL"));
    EXPECT_EQ(sim::checkCommand({"fly"}), "unknown command fly");
}

} // namespace
