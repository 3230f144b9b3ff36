// The system log, standard output, the console, and dumps. Keeps no state. Any thread; in signal handlers
// only vx_console_*.
#include "runtime/vx_log.h"

#include "runtime/vx_string.h"

#include <errno.h>
#include <stdio.h>
#include <string.h>
#include <syslog.h>
#include <unistd.h>

const char* const vx_slog_prio_txt[8] = {"EMERG",   "ALERT",  "CRIT", "ERROR",
                                         "WARNING", "NOTICE", "INFO", "DEBUG"};

void vx_slog(int priority, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    vx_vslog(priority, format, arguments);
    va_end(arguments);
}

void vx_vslog(int priority, const char* format, va_list arguments)
{
    vsyslog(priority, format, arguments);
}

void vx_slogd(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    vx_vslog(LOG_DEBUG, format, arguments);
    va_end(arguments);
}

void vx_slog_open(const char* ident, int option, int facility)
{
    openlog(ident, option, facility);
}

void vx_slog_close(void)
{
    closelog();
}

int vx_printf(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    int length = vx_vprintf(format, arguments);
    va_end(arguments);
    return length;
}

int vx_vprintf(const char* format, va_list arguments)
{
    int length = vprintf(format, arguments);
    fflush(stdout);
    return length;
}

int vx_puts(const char* text)
{
    int result = fputs(text, stdout);
    fflush(stdout);
    return result;
}

int vx_console_puts(const char* text)
{
    size_t length = strlen(text);
    size_t written = 0;
    while (written < length) {
        ssize_t count = write(STDOUT_FILENO, text + written, length - written);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            break;
        }
        written += static_cast<size_t>(count);
    }
    return static_cast<int>(written);
}

int vx_console_printf(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    int written = vx_console_vprintf(format, arguments);
    va_end(arguments);
    return written;
}

int vx_console_vprintf(const char* format, va_list arguments)
{
    char text[80];
    vx_vsnprintf(text, sizeof(text), format, arguments);
    return vx_console_puts(text);
}

namespace {

const size_t LINE_BYTES = VX_DATA_LINE_BYTES;

size_t unit_size(char unit)
{
    return unit == 'b' ? 1 : unit == 'h' ? 2 : 4;
}

// One unit in host byte order. Of a last unit that reaches past the data, the missing bytes are zero.
uint32_t unit_value(const uint8_t* bytes, size_t available, size_t size)
{
    uint8_t byte = 0;
    uint16_t half = 0;
    uint32_t word = 0;
    void* target = size == 1 ? static_cast<void*>(&byte) : size == 2 ? static_cast<void*>(&half) : &word;
    memcpy(target, bytes, available < size ? available : size);
    return size == 1 ? byte : size == 2 ? half : word;
}

} // namespace

void vx_data_line(char* text, char unit, const void* data, size_t length, uint32_t label)
{
    const uint8_t* bytes = static_cast<const uint8_t*>(data);
    size_t size = unit_size(unit);
    int used = vx_snprintf(text, VX_DATA_LINE_SIZE, "%08x:", label);
    for (size_t at = 0; at < LINE_BYTES; at += size) {
        size_t room = VX_DATA_LINE_SIZE - static_cast<size_t>(used);
        int digits = static_cast<int>(2 * size);
        if (at < length) {
            uint32_t value = unit_value(bytes + at, length - at, size);
            used += vx_snprintf(text + used, room, " %0*x", digits, value);
        } else {
            used += vx_snprintf(text + used, room, " %*s", digits, "");
        }
    }
    text[used++] = ' ';
    text[used++] = ' ';
    for (size_t at = 0; at < length; ++at) {
        text[used++] = bytes[at] >= 0x20 && bytes[at] < 0x7f ? static_cast<char>(bytes[at]) : '.';
    }
    text[used++] = '\n';
    text[used] = '\0';
}

void vx_mem_display(char unit, const void* data, size_t length)
{
    vx_data_display(unit, data, length, static_cast<uint32_t>(reinterpret_cast<uintptr_t>(data)));
}

void vx_data_display(char unit, const void* data, size_t length, uint32_t start)
{
    const uint8_t* bytes = static_cast<const uint8_t*>(data);
    for (size_t at = 0; at < length; at += LINE_BYTES) {
        size_t rest = length - at;
        char text[VX_DATA_LINE_SIZE];
        vx_data_line(text, unit, bytes + at, rest < LINE_BYTES ? rest : LINE_BYTES,
                     start + static_cast<uint32_t>(at));
        vx_puts(text);
    }
}
