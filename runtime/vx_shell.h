// The shell as a class, for commands that are written as objects: a command gets at the object of the shell
// that runs it by vx_cshell_get_object.
//
// The thread of the shell's loop alone.
#ifndef RUNTIME_VX_SHELL_H
#define RUNTIME_VX_SHELL_H

#include "runtime/vx_cshell.h"

class CVXShell {
public:
    // Makes a shell of that name; a failure is an assertion.
    explicit CVXShell(const char* name);
    virtual ~CVXShell();
    CVXShell(const CVXShell&) = delete;
    CVXShell& operator=(const CVXShell&) = delete;

    // Output of the shell, like vx_cshell_printf and vx_cshell_puts.
    __attribute__((format(printf, 2, 3))) int shprintf(const char* format, ...);
    int shputs(const char* text);

    // Like vx_cshell_run_command and vx_cshell_run_command_line.
    int run_command(int argc, char** argv);
    int run_command(const char* line);

    // Like vx_cshell_chdir.
    int chdir(const char* directory);

    // Starts afresh with a new shell of that name, in "/" and without history; the old one is freed. Returns
    // 0, or -1 if there is no memory, and the old one stays.
    int init(const char* name);

    // The shell inside, owned by the object.
    cshell* shell() const { return m_shell; }

private:
    cshell* m_shell;
};

#endif
