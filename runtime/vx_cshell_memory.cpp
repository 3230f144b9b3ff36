// The shell's commands that display and set memory of this process by address. The loop's thread alone.
//
// All access goes through the kernel, by a pipe, so that an address that can't be read or written is an error
// of the command instead of the end of the process.
#include "runtime/vx_cshell_impl.h"
#include "runtime/vx_log.h"

#include <errno.h>
#include <fcntl.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

const uintptr_t DEFAULT_UNITS = 16;

// The commands differ in the last letter of their names.
char unit_of(const char* word)
{
    char last = word[strlen(word) - 1];
    return last == 'b' || last == 'h' ? last : 'w';
}

uintptr_t unit_bytes(char unit)
{
    return unit == 'b' ? 1 : unit == 'h' ? 2 : 4;
}

// Up to VX_DATA_LINE_BYTES bytes from one address to another. The system calls are made bare, as the check
// that wrappers of them may make of the addresses is just what the kernel is asked for here.
bool copy_memory(uintptr_t destination, uintptr_t source, size_t length)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) < 0) {
        return false;
    }
    long expected = static_cast<long>(length);
    bool copied = syscall(SYS_write, ends[1], source, length) == expected &&
                  syscall(SYS_read, ends[0], destination, length) == expected;
    close(ends[0]);
    close(ends[1]);
    return copied;
}

// A number in C's notations, of at most that value.
bool parse_number(const char* text, unsigned long long largest, unsigned long long* number)
{
    char* end;
    errno = 0;
    *number = strtoull(text, &end, 0);
    return end != text && !*end && !strchr(text, '-') && errno != ERANGE && *number <= largest;
}

bool parse_address(const char* text, uintptr_t* address)
{
    unsigned long long number;
    bool good = parse_number(text, UINTPTR_MAX, &number);
    *address = static_cast<uintptr_t>(number);
    return good;
}

bool set_unit(uintptr_t address, uintptr_t bytes, unsigned long long value)
{
    uint8_t byte = static_cast<uint8_t>(value);
    uint16_t half = static_cast<uint16_t>(value);
    uint32_t word = static_cast<uint32_t>(value);
    const void* source = bytes == 1   ? static_cast<void*>(&byte)
                         : bytes == 2 ? static_cast<void*>(&half)
                                      : &word;
    return copy_memory(address, reinterpret_cast<uintptr_t>(source), bytes);
}

} // namespace

int vx_cshell_set_memory(cshell*, int argc, char** argv)
{
    uintptr_t bytes = unit_bytes(unit_of(argv[0]));
    unsigned long long largest = (1ull << (8 * bytes)) - 1;
    unsigned long long value;
    uintptr_t address;
    if (argc < 3 || !parse_address(argv[1], &address)) {
        return VX_CSHELL_USAGE;
    }
    for (int at = 2; at < argc; ++at) { // nothing is written if any of it is wrong
        if (!parse_number(argv[at], largest, &value)) {
            return VX_CSHELL_USAGE;
        }
    }
    for (int at = 2; at < argc; ++at) {
        parse_number(argv[at], largest, &value);
        if (!set_unit(address, bytes, value)) {
            return VX_CSHELL_ERROR;
        }
        address += bytes;
    }
    return VX_CSHELL_OK;
}

int vx_cshell_display_memory(cshell* shell, int argc, char** argv)
{
    char unit = unit_of(argv[0]);
    uintptr_t bytes = unit_bytes(unit);
    uintptr_t address;
    unsigned long long count = DEFAULT_UNITS;
    if (argc < 2 || argc > 3 || !parse_address(argv[1], &address)) {
        return VX_CSHELL_USAGE;
    }
    if (argc == 3 && !parse_number(argv[2], (UINTPTR_MAX - address) / bytes, &count)) {
        return VX_CSHELL_USAGE;
    }
    for (uintptr_t rest = static_cast<uintptr_t>(count) * bytes; rest > 0;) {
        uint8_t data[VX_DATA_LINE_BYTES];
        char text[VX_DATA_LINE_SIZE];
        size_t length = rest < sizeof(data) ? rest : sizeof(data);
        if (!copy_memory(reinterpret_cast<uintptr_t>(data), address, length)) {
            return VX_CSHELL_ERROR;
        }
        vx_data_line(text, unit, data, length, static_cast<uint32_t>(address));
        vx_cshell_puts(shell, text);
        address += length;
        rest -= length;
    }
    return VX_CSHELL_OK;
}
