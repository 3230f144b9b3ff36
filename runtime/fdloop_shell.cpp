// The debug shell on the loop, see the header. The loop's thread alone, but for the exit handler.
#include "runtime/fdloop_shell.h"
#include "runtime/vx_assert.h"
#include "runtime/vx_cshell.h"
#include "runtime/vx_tty.h"

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <unistd.h>

namespace {

cshell* shell = nullptr;
fdloop_shell_input_t input_hook = nullptr;
void* input_hook_data = nullptr;
struct termios saved_settings;

void restore_terminal()
{
    // A process that has been put in the background would be stopped for it, at its very end.
    signal(SIGTTOU, SIG_IGN);
    vx_posix_tty_set(STDIN_FILENO, &saved_settings);
}

int read_input(int fd, void*)
{
    char bytes[1024];
    ssize_t count = read(fd, bytes, sizeof(bytes));
    if (count <= 0) {
        return -1; // at the end of the input as well: a closed terminal is readable for ever
    }
    size_t length = static_cast<size_t>(count);
    if (input_hook) {
        return input_hook(input_hook_data, bytes, length);
    }
    if (vx_cshell_process_buf(shell, bytes, length) == VX_CSHELL_EXIT) {
        exit(0);
    }
    return 0;
}

} // namespace

cshell* fdloop_shell_init(fdloop_t* loop, const char* name)
{
    if (shell) {
        return shell;
    }
    pid_t foreground = tcgetpgrp(STDIN_FILENO);
    if (foreground < 0 || foreground != getpgrp()) {
        return nullptr;
    }
    if (vx_posix_tty_raw(STDIN_FILENO, &saved_settings) == 0) {
        atexit(restore_terminal);
    }
    // Quirk: 2 is F_SETFD, not F_SETFL, so O_NONBLOCK (0x800) is none of its flags and the descriptor stays
    // blocking, which the terminal's other users want it to be.
    fcntl(STDIN_FILENO, 2, 0x800);
    shell = vx_cshell_alloc(name);
    VX_ASSERT(shell);
    fdloop_fd_register(loop, STDIN_FILENO, read_input, nullptr);
    vx_cshell_prompt(shell);
    return shell;
}

void fdloop_shell_hook_input(fdloop_shell_input_t function, void* data)
{
    input_hook = function;
    input_hook_data = data;
}
