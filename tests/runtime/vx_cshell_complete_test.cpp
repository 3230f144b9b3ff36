// Completion of commands and directories, by the bytes that the terminal gets.
#include "runtime/util.h"
#include "support/testshell.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

class Complete : public testing::Test {
protected:
    TestShell test;

    static void SetUpTestSuite()
    {
        static const shell_command commands[] = {
            {"/", "zeta", run, 0, nullptr, nullptr},
            {"/area", "alpha", run, 0, nullptr, nullptr},
            {"/area", "alphabet", run, 0, nullptr, nullptr},
            {"/area", "twin", run, 0, nullptr, nullptr},
            {"/area-b", "twin", run, 0, nullptr, nullptr},
            {"/area/inner", "beta", run, 0, nullptr, nullptr},
            {"/area/inner", "a-name-that-has-more-than-twenty-letters", run, 0, nullptr, nullptr},
        };
        for (const shell_command& command : commands) {
            shell_command_add_sorted(&command);
        }
    }
    static int run(cshell*, int, char**) { return 0; }
    // What a Tab sends behind the typed text.
    std::string tab(const std::string& typed)
    {
        test.type(typed);
        std::string sent = test.type("\t");
        for (size_t at = 0; at < 64; ++at) {
            test.type("\010");
        }
        return sent;
    }
};

TEST_F(Complete, UniqueCommandAnywhere)
{
    EXPECT_EQ(tab("hel"), "p ");
    EXPECT_EQ(tab("bet"), "a ");
    EXPECT_EQ(tab("z"), "eta ");
    EXPECT_EQ(tab("help"), " ");
}

TEST_F(Complete, NothingMatches)
{
    EXPECT_EQ(tab("nonsense"), "");
    EXPECT_EQ(tab("/nowhere/x"), "");
    EXPECT_EQ(tab("area/nothing"), "");
    EXPECT_EQ(tab("%s"), "");
}

TEST_F(Complete, SeveralMatchesArePrintedThenPromptAndLineAgain)
{
    EXPECT_EQ(tab("alp"), "\nalpha               alphabet            \ntest:/$ alp");
    EXPECT_EQ(tab("echo alp"), "\nalpha               alphabet            \ntest:/$ echo alp");
}

TEST_F(Complete, DirectoriesAreMarkedByAnAsterisk)
{
    EXPECT_EQ(tab("ar"), "\narea*               area-b*             \ntest:/$ ar");
    EXPECT_EQ(tab("area/"),
              "\nalpha               alphabet            twin                inner*              \n"
              "test:/$ area/");
}

TEST_F(Complete, PathsFromTheRootAndFromTheCurrentDirectory)
{
    EXPECT_EQ(tab("/area/inner/b"), "eta ");
    EXPECT_EQ(tab("area/in"), "ner ");
    EXPECT_EQ(tab("cd /bi"), "n ");
    vx_cshell_chdir(test.shell, "/area");
    EXPECT_EQ(tab("inner/b"), "eta ");
    EXPECT_EQ(tab("inn"), "er ");
}

TEST_F(Complete, SameNameInTwoDirectoriesIsOneCandidate)
{
    EXPECT_EQ(tab("twi"), "n ");
}

TEST_F(Complete, LastWordIsCompleted)
{
    EXPECT_EQ(tab("help hel"), "p ");
    EXPECT_EQ(tab("repeat 3 ( hel"), "p ");
}

TEST_F(Complete, EmptyWordListsEverything)
{
    std::string sent = tab("");
    for (const char* name : {"zeta ", "area* ", "bin* ", "help ", "beta "}) {
        EXPECT_NE(sent.find(name), std::string::npos) << name;
    }
    EXPECT_EQ(sent.substr(sent.rfind('\n')), "\ntest:/$ ");
}

TEST_F(Complete, NothingIsCompletedWithoutRoomForTheWhole)
{
    std::string filler(61, 'x');
    EXPECT_EQ(tab("echo " + filler.substr(0, 52) + " hel"), "p ");
    EXPECT_EQ(tab("echo " + filler.substr(0, 53) + " hel"), "p"); // 63 characters: no room for the blank
    EXPECT_EQ(tab("echo a-name-that-has-more b-name-that-has-more a-name"), "");
}

TEST_F(Complete, CompletedLineRuns)
{
    EXPECT_EQ(test.type("ec\tone\n"), "echo one\none\ntest:/$ ");
}

TEST_F(Complete, AnotherFunctionMayTakeItsPlaceAndCallIt)
{
    auto other = [](void* data, char* line, size_t size) {
        if (strcmp(line, "get ") == 0) {
            strncat(line, "key", size - 5);
            return static_cast<int>(VX_COMPLETION_UNIQUE);
        }
        return vx_cshell_complete(static_cast<cshell*>(data), line, size);
    };
    vx_cshell_set_completion(test.shell, other, test.shell);
    EXPECT_EQ(tab("get "), "key ");
    EXPECT_EQ(tab("hel"), "p ");
    vx_cshell_set_completion(test.shell, nullptr, nullptr);
    EXPECT_NE(tab("get "), "key ");
}

TEST_F(Complete, WithoutMemoryNothingHappens)
{
    test.type("hel");
    vx_calloc = [](size_t, size_t) -> void* { return nullptr; };
    EXPECT_EQ(test.type("\t"), "");
    vx_calloc = calloc;
    EXPECT_EQ(test.type("\t"), "p ");
}

TEST_F(Complete, TheLastWordBehindABlankOrATab)
{
    for (const char* typed : {"echo bet", "echo\tbet", "\tbet", "zeta \t bet"}) {
        char line[64];
        snprintf(line, sizeof(line), "%s", typed);
        EXPECT_EQ(vx_cshell_complete(test.shell, line, sizeof(line)), VX_COMPLETION_UNIQUE) << typed;
        EXPECT_EQ(std::string(line), std::string(typed) + "a");
    }
}

TEST_F(Complete, WordLongerThanAnyPathHasNoCandidate)
{
    std::string line(400, 'x');
    EXPECT_EQ(vx_cshell_complete(test.shell, &line[0], line.size() + 1), VX_COMPLETION_NONE);
    EXPECT_EQ(line, std::string(400, 'x'));
}

} // namespace
