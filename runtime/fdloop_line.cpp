// The loop's line parser: one for the process, static. No lock: the thread that runs the loop alone.
//
// At the end of the input nothing is delivered and the entry stays, so a loop whose line descriptor has ended
// turns without rest until somebody unregisters it.
#include "runtime/fdloop_impl.h"
#include "runtime/vx_log.h"

#include <errno.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

namespace {

const char HANDLER_NAME[] = "_blkr_proc";

fdloop_line_parser parser;
const char* line_prompt = nullptr;
fdloop_line_cb_t line_callback = nullptr;
fdloop_line_cb_t lineedit_callback = nullptr;

ssize_t read_again(int fd, void* buffer, size_t size)
{
    ssize_t count;
    do {
        count = read(fd, buffer, size);
    } while (count < 0 && errno == EAGAIN);
    return count;
}

void print_prompt()
{
    if (line_prompt) {
        vx_puts(line_prompt);
    }
}

void deliver_line(void*, char* line)
{
    line_callback(line);
    print_prompt();
}

// One line, whose line feed has become a NUL at end.
void take_line(char* line, char* end)
{
    if (parser.discard) {
        vx_printf("*** %s Discard remainder: >%.*s<\n", HANDLER_NAME, static_cast<int>(end - line), line);
        parser.discard = false;
        return;
    }
    if (end > line && end[-1] == '\r') {
        end[-1] = '\0';
    }
    parser.line_function(parser.data, line);
}

int read_lines(int fd, void*)
{
    ssize_t count = parser.read_function(fd, parser.buffer + parser.fill, parser.size - parser.fill);
    if (count < 0) {
        return -1;
    }
    char* line = parser.buffer;
    size_t remaining = parser.fill + static_cast<size_t>(count);
    while (remaining > 0) {
        char* end = static_cast<char*>(memchr(line, '\n', remaining));
        if (!end) {
            break;
        }
        *end = '\0';
        remaining -= static_cast<size_t>(end + 1 - line);
        take_line(line, end);
        line = end + 1;
    }
    if (remaining >= parser.size) {
        vx_printf("*** %s Line too long - discarded: >%.*s<\n", HANDLER_NAME, static_cast<int>(remaining),
                  line);
        parser.discard = true;
        remaining = 0;
    }
    memmove(parser.buffer, line, remaining);
    parser.fill = remaining;
    return 0;
}

} // namespace

void fdloop_fd_register_lineparser(fdloop_t* loop, int fd, const char* prompt, fdloop_line_cb_t callback)
{
    line_prompt = prompt;
    line_callback = callback;
    parser.size = sizeof(parser.buffer);
    parser.fill = 0;
    parser.discard = false;
    parser.read_function = read_again;
    parser.line_function = deliver_line;
    parser.data = nullptr;
    fdloop_fd_register(loop, fd, read_lines, nullptr);
    print_prompt();
}

void fdloop_lineedit_line(char* line)
{
    if (!line) {
        vx_puts("\n");
        exit(0);
    }
    lineedit_callback(line);
}

void fdloop_lineedit_init(fdloop_t* loop, const char* prompt, fdloop_line_cb_t callback)
{
    lineedit_callback = callback;
    fdloop_fd_register_lineparser(loop, STDIN_FILENO, prompt, fdloop_lineedit_line);
}
