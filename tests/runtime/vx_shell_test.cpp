// The shell as a class.
#include "runtime/util.h"
#include "runtime/vx_shell.h"
#include "sim/syslogtap/syslogtap.h"
#include "support/outputcapture.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

// A command written as an object: the shell's object carries what it needs.
class CountingShell : public CVXShell {
public:
    using CVXShell::CVXShell;
    int count = 10;
    static int command(cshell* shell, int argc, char**)
    {
        CountingShell* self = static_cast<CountingShell*>(vx_cshell_get_object(shell));
        self->count += argc;
        self->shprintf("count %d\n", self->count);
        return self->count;
    }
};

void addCommand()
{
    static bool added = false;
    if (!added) {
        added = true;
        shell_command command = {"/object", "count", CountingShell::command, 0, nullptr, nullptr};
        shell_command_add_sorted(&command);
    }
}

TEST(VxShell, RunsCommandsThatReachTheObject)
{
    addCommand();
    CountingShell shell("obj");
    OutputCapture output;
    EXPECT_EQ(shell.run_command("count a b"), 13);
    char word[] = "count";
    char* words[] = {word};
    EXPECT_EQ(shell.run_command(1, words), 14);
    EXPECT_EQ(shell.run_command("exit"), VX_CSHELL_EXIT);
    EXPECT_EQ(output.stop(), "count 13\ncount 14\n");
    EXPECT_EQ(vx_cshell_get_object(shell.shell()), &shell);
    EXPECT_STREQ(vx_cshell_get_name(shell.shell()), "obj");
    EXPECT_EQ(vx_cshell_get_exit_status(shell.shell()), 14);
}

TEST(VxShell, PrintsAndChangesDirectory)
{
    addCommand();
    CVXShell shell("obj");
    OutputCapture output;
    shell.shputs("plain %s");
    EXPECT_EQ(shell.shprintf("%s %d", " and", 5), 6);
    EXPECT_EQ(shell.chdir("/object"), 0);
    EXPECT_EQ(shell.chdir("nowhere"), -1);
    vx_cshell_pwd(shell.shell());
    EXPECT_EQ(output.stop(), "plain %s and 5/object\n");
}

TEST(VxShell, InitStartsAfresh)
{
    addCommand();
    CVXShell shell("first");
    shell.chdir("/object");
    EXPECT_EQ(shell.init("second"), 0);
    EXPECT_STREQ(vx_cshell_get_name(shell.shell()), "second");
    EXPECT_EQ(vx_cshell_get_object(shell.shell()), &shell);
    OutputCapture output;
    vx_cshell_prompt(shell.shell());
    EXPECT_EQ(output.stop(), "second:/$ ");
}

TEST(VxShell, InitWithoutMemoryKeepsTheOldShell)
{
    CVXShell shell("first");
    vx_calloc = [](size_t, size_t) -> void* { return nullptr; };
    EXPECT_EQ(shell.init("second"), -1);
    vx_calloc = calloc;
    EXPECT_STREQ(vx_cshell_get_name(shell.shell()), "first");
}

TEST(VxShellDeathTest, ConstructorAssertsSuccess)
{
    CVXShell first("first"); // has put the built-in commands into the table
    EXPECT_DEATH(
        {
            syslogtap_echo(1);
            vx_calloc = [](size_t, size_t) -> void* { return nullptr; };
            CVXShell shell("x");
        },
        "<1> .*: \\*\\*\\* ASSERT in vx_shell at [0-9]+\n");
}

} // namespace
