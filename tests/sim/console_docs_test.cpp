// The page about the simulator says of its commands what the commands say of themselves.
#include "sim/command_line.h"
#include "sim/console/commands.h"

#include <fstream>
#include <gmock/gmock.h>
#include <sstream>

using testing::HasSubstr;

namespace {

std::string page()
{
    std::ifstream file(PROJECT_SOURCE_DIR "/docs/simulator.md");
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

TEST(CommandDocs, PageHasWhatTheCommandsSay)
{
    const std::string text = page();
    size_t begin = text.find("<!-- commands: begin");
    size_t end = text.find("<!-- commands: end");
    ASSERT_NE(begin, std::string::npos);
    ASSERT_NE(end, std::string::npos);
    begin = text.find('\n', begin) + 1;
    EXPECT_EQ(text.substr(begin, end - begin), "\n" + sim::commandsAsMarkdown() + "\n")
        << "tools/update-command-docs writes it";
}

TEST(CommandDocs, EveryCommandIsThere)
{
    const std::string text = sim::commandsAsMarkdown();
    for (const sim::CommandTheme& theme : sim::commandThemes()) {
        EXPECT_THAT(text, HasSubstr(std::string("### ") + theme.heading + "\n"));
        for (const sim::ConsoleCommand& row : theme.commands)
            EXPECT_THAT(text, HasSubstr(std::string("\n| `") + row.name)) << row.name;
    }
    for (const sim::CommandForm& form : sim::commandForms())
        EXPECT_THAT(text, HasSubstr(std::string("\n| `") + form.name + " ")) << form.name;
}

TEST(CommandDocs, StrokesDoNotBreakTheTable)
{
    EXPECT_THAT(sim::commandsAsMarkdown(), HasSubstr("| `at on \\| off` | "));
}

// The options that the page tells of are there.
TEST(CommandDocs, OptionsOfThePage)
{
    const std::string text = page();
    for (size_t at = 0; (at = text.find("| `--", at)) != std::string::npos; at++) {
        std::string name = text.substr(at + 3, text.find_first_of(" `", at + 3) - at - 3);
        bool found = false;
        for (const sim::CommandLineOption& option : sim::commandLineOptions())
            found = found || name == option.name;
        EXPECT_TRUE(found) << name;
    }
}

} // namespace
