// What the linker puts in the place of vx_panic() and vx_assert_failed(): both throw instead of ending the
// process. See fuzz.h. Any thread; but only a panic of the thread that runs the target is caught.
#include "fuzz/fuzz.h"

#include "runtime/util.h"

#include <cstdarg>

extern "C" {

// vx_panic(char const*, ...)
__attribute__((noreturn)) void __wrap__Z8vx_panicPKcz(const char* format, ...);
// vx_assert_failed(char const*, int)
__attribute__((noreturn)) void __wrap__Z16vx_assert_failedPKci(const char* source, int line);

void __wrap__Z8vx_panicPKcz(const char* format, ...)
{
    char text[512];
    va_list arguments;
    va_start(arguments, format);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    vsnprintf(text, sizeof(text), format, arguments);
#pragma GCC diagnostic pop
    va_end(arguments);
    throw fuzz::Panic{text};
}

void __wrap__Z16vx_assert_failedPKci(const char* source, int line)
{
    char name[64];
    throw fuzz::Panic{std::string("*** ASSERT in ") + vx_source_name(source, name, sizeof(name)) + " at " +
                      std::to_string(line) + "\n"};
}
}
