// Trace items and the shell command that switches them, see the header. The command is in the shell's table
// of every program that uses a trace item.
#include "runtime/vx_trace.h"
#include "runtime/vx_assert.h"
#include "runtime/vx_cshell.h"
#include "runtime/vx_string.h"

#include <stdlib.h>
#include <string.h>
#include <strings.h>

namespace {

const uint32_t ALL_FLAGS = 0xffffffff;
const int LETTERS = 26;

struct trace_item {
    vx_trace_t trace;
    char name[VX_TRACE_NAME_SIZE];
    const char* help;
};

trace_item items[VX_TRACE_MAX_ITEMS];
int item_count = 0;

trace_item* add_item(const char* name)
{
    VX_ASSERT(item_count < VX_TRACE_MAX_ITEMS);
    trace_item* item = &items[item_count++];
    vx_strlcpy(item->name, name, sizeof(item->name));
    return item;
}

// Not isalpha and toupper, which depend on the locale.
bool is_letter(char character)
{
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

// (character - "A") modulo 32, which is the same for both cases of a letter.
uint32_t flag_of(char character)
{
    return 1u << ((static_cast<unsigned char>(character) - 'A') & 31);
}

uint32_t apply_flags(uint32_t mask, const char* flags)
{
    for (; *flags; ++flags) {
        if (*flags == '#') {
            mask = 0;
        } else if (*flags == '*') {
            mask = ALL_FLAGS;
        } else if (*flags == '!' && is_letter(flags[1])) {
            mask &= ~flag_of(*++flags);
        } else if (is_letter(*flags)) {
            mask |= flag_of(*flags);
        }
    }
    return mask;
}

void print_item(cshell* shell, const trace_item* item)
{
    char flags[LETTERS + 1];
    int used = 0;
    for (int letter = 0; letter < LETTERS; ++letter) {
        if (item->trace.mask >> letter & 1) {
            flags[used++] = static_cast<char>('A' + letter);
        }
    }
    flags[used] = '\0';
    vx_cshell_printf(shell, "%-20s %8s %s\n", item->name, item->trace.state ? "Enabled" : "Disabled", flags);
}

void print_all(cshell* shell)
{
    vx_cshell_puts(shell, "Trace Settings\n");
    vx_cshell_puts(shell, "Module               State    Mask flags\n");
    for (int at = 0; at < item_count; ++at) {
        print_item(shell, &items[at]);
    }
}

void print_help(cshell* shell, const trace_item* item)
{
    print_item(shell, item);
    if (item->help) {
        vx_cshell_puts(shell, "Supported flags:\n");
        vx_cshell_puts(shell, item->help);
    }
}

void change(trace_item* item, const char* how)
{
    if (strcmp(how, "+") == 0) {
        vx_trace_start(&item->trace);
    } else if (strcmp(how, "-") == 0) {
        vx_trace_stop(&item->trace);
    } else {
        vx_trace_set_mask(&item->trace, apply_flags(item->trace.mask, how));
    }
}

int trace_command(cshell* shell, int argc, char** argv)
{
    if (argc == 1) {
        print_all(shell);
        return VX_CSHELL_OK;
    }
    if (argc > 3) {
        return VX_CSHELL_USAGE;
    }
    bool all = strcmp(argv[1], "*") == 0;
    bool found = all;
    for (int at = 0; at < item_count; ++at) {
        // Quirk: the case of names doesn't matter, in spite of the help text.
        if (!all && strcasecmp(argv[1], items[at].name) != 0) {
            continue;
        }
        found = true;
        if (argc == 2) {
            print_help(shell, &items[at]);
            continue;
        }
        change(&items[at], argv[2]);
        if (!all) {
            print_item(shell, &items[at]);
        }
    }
    if (!found) {
        vx_cshell_printf(shell, "No such trace item: %s\n", argv[1]);
        return -1;
    }
    return VX_CSHELL_OK;
}

const shell_command TRACE_COMMAND = {
    "/bin",
    "trace",
    trace_command,
    0,
    "Trace debug",
    "The trace command turns debug traces on and off.\n"
    "Usage: trace [name] [flags | + | - ]\n"
    "name             - Name (case sensitive) of trace item, may be * for all\n"
    "                   Without 2nd parameter: Displays a help screen for <name>\n"
    "flags            - Flag string such as 'abc'. Legal flags are 'a' to 'z' (case insensitive)\n"
    "                   Use * to set all flags\n"
    "                   Use # to clear all flags, ! to clear the following flag\n"
    "+                - Enable trace\n"
    "-                - Disable trace\n"
    "Example: trace nav *!b!c\n"
    "This will enable all trace bits (a-z) for nav, except b and c\n"};

struct command_registration {
    command_registration() { shell_command_add_sorted(&TRACE_COMMAND); }
} registration;

} // namespace

vx_trace_t* vx_trace_init(const char* name)
{
    return &add_item(name)->trace;
}

vx_trace_t* vx_xtrace_init(const char* name, const char* help)
{
    trace_item* item = add_item(name);
    item->help = help;
    vx_trace_set_mask(&item->trace, vx_trace_get_initial_mask(item->name));
    vx_trace_start(&item->trace);
    return &item->trace;
}

uint32_t vx_trace_get_initial_mask(const char* name)
{
    char variable[64];
    vx_snprintf(variable, sizeof(variable), "TRACE_%s", name);
    const char* value = getenv(variable);
    if (!value) {
        return 0;
    }
    if (*value == '*') {
        return ALL_FLAGS;
    }
    uint32_t mask = 0;
    for (; *value; ++value) {
        mask |= flag_of(*value);
    }
    return mask;
}

void vx_trace_set_mask(vx_trace_t* trace, uint32_t mask)
{
    VX_ASSERT(trace);
    trace->mask = mask;
}

void vx_trace_start(vx_trace_t* trace)
{
    VX_ASSERT(trace);
    trace->state = 1;
}

void vx_trace_stop(vx_trace_t* trace)
{
    VX_ASSERT(trace);
    trace->state = 0;
}
