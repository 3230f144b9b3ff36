// The shell as a class, see the header. The thread of the shell's loop alone.
#include "runtime/vx_shell.h"
#include "runtime/vx_assert.h"

CVXShell::CVXShell(const char* name) : m_shell(nullptr)
{
    VX_ASSERT(init(name) == 0);
}

CVXShell::~CVXShell()
{
    vx_cshell_free(m_shell);
}

int CVXShell::shprintf(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    int length = vx_cshell_vprintf(m_shell, format, arguments);
    va_end(arguments);
    return length;
}

int CVXShell::shputs(const char* text)
{
    return vx_cshell_puts(m_shell, text);
}

int CVXShell::run_command(int argc, char** argv)
{
    return vx_cshell_run_command(m_shell, argc, argv);
}

int CVXShell::run_command(const char* line)
{
    return vx_cshell_run_command_line(m_shell, line);
}

int CVXShell::chdir(const char* directory)
{
    return vx_cshell_chdir(m_shell, directory);
}

int CVXShell::init(const char* name)
{
    cshell* fresh = vx_cshell_alloc(name);
    if (!fresh) {
        return -1;
    }
    vx_cshell_set_object(fresh, this);
    vx_cshell_free(m_shell);
    m_shell = fresh;
    return 0;
}
