// The shell's built-in commands, but for those that read and write memory. Success is 0. The loop's thread
// alone.
//
// Commands that run others get them as words of their own line, so nesting and time are bounded by what one
// line can say; "repeat" and "while" run as long as they are told to.
#include "runtime/vx_cshell_impl.h"
#include "runtime/vx_time.h"

#include <errno.h>
#include <stdlib.h>
#include <string.h>

namespace {

const int NOT_FOUND = -1;

bool is_word(const char* word, const char* text)
{
    return strcmp(word, text) == 0;
}

// Index of the first such word at or behind from that is not inside a group begun behind from.
int find_word(int argc, char** argv, int from, const char* word)
{
    int depth = 0;
    for (int at = from; at < argc; ++at) {
        if (depth == 0 && is_word(argv[at], word)) {
            return at;
        }
        depth += is_word(argv[at], "(");
        depth -= is_word(argv[at], ")") && depth > 0;
    }
    return NOT_FOUND;
}

int help(cshell* shell, int argc, char** argv)
{
    if (argc > 2) {
        return VX_CSHELL_USAGE;
    }
    if (argc == 2) {
        const shell_command* command = vx_cshell_find(shell, argv[1]);
        if (!command) {
            return -1;
        }
        vx_cshell_print_help(shell, command);
        return VX_CSHELL_OK;
    }
    for (size_t at = 0; at < shell_command_count(); ++at) {
        vx_cshell_print_help_line(shell, shell_command_get(at));
    }
    return VX_CSHELL_OK;
}

int time_command(cshell* shell, int argc, char** argv)
{
    if (argc < 2) {
        return VX_CSHELL_USAGE;
    }
    uint32_t start = vx_time_ms();
    int result = vx_cshell_run_command(shell, argc - 1, argv + 1);
    uint32_t elapsed = vx_time_ms_elapsed(start);
    vx_cshell_printf(shell, "%d.%03ds\n", static_cast<int>(elapsed / 1000), static_cast<int>(elapsed % 1000));
    return result;
}

int echo(cshell* shell, int argc, char** argv)
{
    bool line_feed = argc < 2 || !is_word(argv[1], "-n");
    int first = line_feed ? 1 : 2;
    for (int at = first; at < argc; ++at) {
        vx_cshell_printf(shell, "%s%s", at > first ? " " : "", argv[at]);
    }
    if (line_feed) {
        vx_cshell_puts(shell, "\n");
    }
    return VX_CSHELL_OK;
}

int repeat(cshell* shell, int argc, char** argv)
{
    if (argc < 3) {
        return VX_CSHELL_USAGE;
    }
    char* end;
    errno = 0;
    long count = strtol(argv[1], &end, 10);
    if (end == argv[1] || *end || errno == ERANGE) {
        return VX_CSHELL_USAGE;
    }
    int result = VX_CSHELL_OK;
    for (long turn = 0; turn < count; ++turn) {
        result = vx_cshell_run_command(shell, argc - 2, argv + 2);
    }
    return result;
}

int not_command(cshell* shell, int argc, char** argv)
{
    if (argc < 2) {
        return VX_CSHELL_USAGE;
    }
    return !vx_cshell_run_command(shell, argc - 1, argv + 1);
}

int true_command(cshell*, int, char**)
{
    return VX_CSHELL_OK;
}

int while_command(cshell* shell, int argc, char** argv)
{
    int colon = find_word(argc, argv, 1, ":");
    if (colon <= 1) { // there is none, or nothing before it
        return VX_CSHELL_USAGE;
    }
    int body = colon + 1;
    int result = VX_CSHELL_OK;
    while (vx_cshell_run_command(shell, colon - 1, argv + 1) == 0) {
        if (body < argc) {
            result = vx_cshell_run_command(shell, argc - body, argv + body);
        }
    }
    return result;
}

int group(cshell* shell, int argc, char** argv)
{
    int close = find_word(argc, argv, 1, ")");
    if (close != argc - 1) {
        return VX_CSHELL_USAGE;
    }
    int result = VX_CSHELL_OK;
    for (int from = 1; from < close;) {
        int end = find_word(close, argv, from, ";");
        if (end == NOT_FOUND) {
            end = close;
        }
        if (end > from) {
            result = vx_cshell_run_command(shell, end - from, argv + from);
        }
        from = end + 1;
    }
    return result;
}

int ls(cshell* shell, int, char**)
{
    return vx_cshell_ls(shell);
}

int cd(cshell* shell, int argc, char** argv)
{
    if (argc > 2) {
        return VX_CSHELL_USAGE;
    }
    return vx_cshell_chdir(shell, argc < 2 ? "/" : argv[1]) < 0 ? VX_CSHELL_ERROR : VX_CSHELL_OK;
}

int pwd(cshell* shell, int, char**)
{
    return vx_cshell_pwd(shell);
}

const char SET_MEMORY[] = "Set memory:\n sm[bh] addr data1 [data2 [...]]\n";
const char DISPLAY_MEMORY[] = "Display memory:\n dm[bh] addr [cnt]\n";
const unsigned RESTRICTED = VX_CSHELL_RESTRICTED;

} // namespace

const shell_command vx_cshell_builtin_commands[] = {
    {"/bin", "help", help, 0, "Show help for commands", "<command name>"},
    {"/bin", "time", time_command, 0, "time the execution of a command", nullptr},
    {"/bin", "echo", echo, 0, "print the arguments", "<argument> ..."},
    {"/bin", "repeat", repeat, 0, "repeat a command", "<count> <command>"},
    {"/bin", "not", not_command, 0, "return the logical inversion of the command's return code", nullptr},
    {"/bin", "true", true_command, 0, "return true", nullptr},
    {"/bin", "while", while_command, 0, "repeat a command while a condition is true",
     "<command> : [<command>]"},
    {"/bin", "(", group, 0, "group commands into sequences", " command [ ; command ... ] )"},
    {"/bin", "ls", ls, 0, "List the current directory", nullptr},
    {"/bin", "cd", cd, 0, "Change the current directory", "[<directory>]"},
    {"/bin", "pwd", pwd, 0, "Show the current directory", nullptr},
    {"/bin", "smb", vx_cshell_set_memory, RESTRICTED, "Set memory (8 bit)", SET_MEMORY},
    {"/bin", "smh", vx_cshell_set_memory, RESTRICTED, "Set memory (16 bit)", SET_MEMORY},
    {"/bin", "sm", vx_cshell_set_memory, RESTRICTED, "Set memory (32 bit)", SET_MEMORY},
    {"/bin", "dmb", vx_cshell_display_memory, RESTRICTED, "Display Memory (8 bit)", DISPLAY_MEMORY},
    {"/bin", "dmh", vx_cshell_display_memory, RESTRICTED, "Display Memory (16 bit)", DISPLAY_MEMORY},
    {"/bin", "dm", vx_cshell_display_memory, RESTRICTED, "Display memory (32 bit)", DISPLAY_MEMORY},
    {nullptr, nullptr, nullptr, 0, nullptr, nullptr},
};
