// Fuzz target: the debug shell. The first line of the input is the value of a trace item's environment
// variable, all that follows is typed at the shell's terminal, sequences of keys included.
//
// "repeat" and "while" run as long as they are told to, and "dm" prints as much: the target ends an input
// after some commands and some output. "sm" writes to this process's memory, which is its purpose; here it
// reaches one page (at PAGE, if that is free) and the addresses where nothing is, nothing else.
// No legal end.
#include "fuzz/fuzz.h"

#include "runtime/vx_cshell_impl.h"
#include "runtime/vx_trace.h"

#include <sys/mman.h>

using fuzz::check;

namespace {

const uintptr_t PAGE = 0x10000000;
const uintptr_t PAGE_SIZE = 4096;
const int MAX_COMMANDS = 300;
const size_t MAX_OUTPUT = 40000;

struct Enough {};

int commands;
size_t printed;
vx_trace_t* items[3];

void count(void*, const char* text)
{
    printed += strlen(text);
    if (printed > MAX_OUTPUT)
        throw Enough();
}

int nothing(cshell* shell, int argc, char** argv)
{
    vx_cshell_printf(shell, "%d %s\n", argc, argv[argc - 1]);
    return argc;
}

// Names that are there twice, and directories below each other.
const shell_command COMMANDS[] = {
    {"/net", "ping", nothing, 0, "ping", "<host>"},
    {"/net/sat", "ping", nothing, 0, nullptr, nullptr},
    {"/net/sat", "point", nothing, VX_CSHELL_RESTRICTED, "point\n", "\n"},
    {"/", "root", nothing, 0, "", ""},
};

// bit (character - 'A') modulo 32 for each character
uint32_t maskOf(const std::string& value)
{
    if (value[0] == '*')
        return ~0u;
    uint32_t mask = 0;
    for (char character : value)
        mask |= 1u << ((character - 'A') & 31);
    return mask;
}

void checkInitialMask(const std::string& value)
{
    setenv("TRACE_fuzz", value.c_str(), 1);
    check(vx_trace_get_initial_mask("fuzz") == (value.empty() ? 0 : maskOf(value)), "another mask");
}

} // namespace

extern "C" {

// vx_cshell_run_command(cshell*, int, char**), as "repeat" and "while" call it
int __real__Z21vx_cshell_run_commandP6cshelliPPc(cshell* shell, int argc, char** argv);
int __wrap__Z21vx_cshell_run_commandP6cshelliPPc(cshell* shell, int argc, char** argv)
{
    if (++commands > MAX_COMMANDS)
        throw Enough();
    return __real__Z21vx_cshell_run_commandP6cshelliPPc(shell, argc, argv);
}

// vx_cshell_set_memory(cshell*, int, char**)
int __real__Z20vx_cshell_set_memoryP6cshelliPPc(cshell* shell, int argc, char** argv);
int __wrap__Z20vx_cshell_set_memoryP6cshelliPPc(cshell* shell, int argc, char** argv)
{
    const uintptr_t address = argc > 1 ? strtoull(argv[1], nullptr, 0) : 0;
    const bool harmless = address < 4096 || (address >= PAGE && address < PAGE + PAGE_SIZE - 256);
    return harmless ? __real__Z20vx_cshell_set_memoryP6cshelliPPc(shell, argc, argv) : VX_CSHELL_ERROR;
}
}

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::silence();
    mmap(reinterpret_cast<void*>(PAGE), PAGE_SIZE, PROT_READ | PROT_WRITE,
         MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
    vx_cshell_free(vx_cshell_alloc("first")); // fills the table, before the target's own commands
    for (const shell_command& command : COMMANDS)
        shell_command_add_sorted(&command);
    items[0] = vx_xtrace_init("nav", "a: all\n");
    items[1] = vx_trace_init("fuzz");
    items[2] = vx_trace_init("longername");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Input input(data, size);
    checkInitialMask(input.line().c_str());
    const std::string typed = input.rest();
    commands = 0;
    printed = 0;
    for (vx_trace_t* item : items)
        *item = vx_trace_t();

    fuzz::Blocks blocks;
    cshell* const shell = vx_cshell_alloc("fuzz");
    vx_cshell_set_output(shell, count, nullptr);
    vx_cshell_set_auth_level(shell, 1 + (size & 1));
    try {
        fuzz::survives([&] { vx_cshell_process_buf(shell, typed.data(), typed.size()); }, {});
        vx_cshell_free(shell);
    } catch (const Enough&) {
        blocks.freeRest();
    }
    return 0;
}
