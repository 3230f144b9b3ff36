// The system log, standard output, the console for signal handlers, and hexadecimal dumps.
//
// Any thread. Only vx_console_* are safe in signal handlers: they don't touch the standard stream.
#ifndef RUNTIME_VX_LOG_H
#define RUNTIME_VX_LOG_H

#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>

// Priorities are those of syslog: 0 emergency, 1 alert, 2 critical, 3 error, 4 warning, 5 notice, 6 info,
// 7 debug. The texts may end in a line feed or not. errno is readable as %m.
__attribute__((format(printf, 2, 3))) void vx_slog(int priority, const char* format, ...);
__attribute__((format(printf, 2, 0))) void vx_vslog(int priority, const char* format, va_list arguments);

// The same at priority 7.
__attribute__((format(printf, 1, 2))) void vx_slogd(const char* format, ...);

// openlog: the identity is kept as a pointer and must live on. option and facility are LOG_* of <syslog.h>.
void vx_slog_open(const char* ident, int option, int facility);

// closelog.
void vx_slog_close(void);

// Names of the eight priorities, "EMERG" (0) to "DEBUG" (7).
extern const char* const vx_slog_prio_txt[8];

// To standard output, flushed after each call. Return what vprintf and fputs return.
__attribute__((format(printf, 1, 2))) int vx_printf(const char* format, ...);
__attribute__((format(printf, 1, 0))) int vx_vprintf(const char* format, va_list arguments);

// Writes the text as it stands: unlike puts, no line feed is added.
int vx_puts(const char* text);

// Writes to descriptor 1 with write(), repeated on short writes and EINTR. Returns the number of bytes
// written, less than the text has if a write failed.
int vx_console_puts(const char* text);

// Formats into 80 bytes, cut there to 79 characters, then vx_console_puts(), whose result they return.
__attribute__((format(printf, 1, 2))) int vx_console_printf(const char* format, ...);
__attribute__((format(printf, 1, 0))) int vx_console_vprintf(const char* format, va_list arguments);

// Hexadecimal dumps on standard output, 16 bytes a line: "%08x:", the units, the bytes as printable
// characters or ".". unit is 'b' for bytes, 'h' for 16 bits, anything else for 32 bits, in host byte order;
// length is in bytes, and the bytes that are missing from the last unit are shown as zeros.
// vx_mem_display labels the lines by the (low 32 bits of the) address, vx_data_display by the given start
// value and what follows from it.
void vx_mem_display(char unit, const void* data, size_t length);
void vx_data_display(char unit, const void* data, size_t length, uint32_t start);

// One such line with its line feed, of at most VX_DATA_LINE_BYTES bytes of data, to a text of
// VX_DATA_LINE_SIZE bytes.
enum { VX_DATA_LINE_BYTES = 16, VX_DATA_LINE_SIZE = 96 };
void vx_data_line(char* text, char unit, const void* data, size_t length, uint32_t label);

#endif
