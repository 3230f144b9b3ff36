// The debug shell itself: its life, its output, and the running of lines. The table and its directories are
// vx_cshell_table.cpp's, the built-in commands vx_cshell_commands.cpp's. The loop's thread alone.
#include "runtime/vx_cshell.h"
#include "runtime/util.h"
#include "runtime/vx_cshell_impl.h"
#include "runtime/vx_log.h"
#include "runtime/vx_string.h"

#include <stdlib.h>
#include <string.h>

namespace {

const char DEFAULT_PROMPT_FORMAT[] = "%s:%s$ ";

void put_standard_output(void*, const char* text)
{
    vx_puts(text);
}

void put_echo(void* data, const char* text)
{
    vx_cshell_puts(static_cast<cshell*>(data), text);
}

int complete(void* data, char* line, size_t size)
{
    cshell* shell = static_cast<cshell*>(data);
    return shell->complete ? shell->complete(shell->complete_data, line, size)
                           : vx_cshell_complete(shell, line, size);
}

void add_builtin_commands()
{
    static bool added = false;
    if (added) {
        return;
    }
    added = true;
    for (const shell_command* command = vx_cshell_builtin_commands; command->name; ++command) {
        shell_command_add_sorted(command);
    }
}

// Text with a line feed behind it, unless it brings its own.
void put_line(cshell* shell, const char* text)
{
    size_t length = strlen(text);
    vx_cshell_puts(shell, text);
    if (length == 0 || text[length - 1] != '\n') {
        vx_cshell_puts(shell, "\n");
    }
}

bool is_blank(char character)
{
    return character == ' ' || character == '\t';
}

} // namespace

cshell* vx_cshell_alloc(const char* name)
{
    add_builtin_commands();
    cshell* shell = static_cast<cshell*>(vx_calloc(1, sizeof(cshell)));
    if (!shell) {
        return nullptr;
    }
    shell->readline =
        vx_readline_open(VX_CSHELL_HISTORY_LINES, VX_CSHELL_LINE_SIZE, complete, shell, put_echo, shell);
    if (!shell->readline) {
        free(shell);
        return nullptr;
    }
    shell->prompt_format = DEFAULT_PROMPT_FORMAT;
    vx_strlcpy(shell->directory, "/", sizeof(shell->directory));
    shell->auth_level = 1;
    vx_cshell_set_name(shell, name);
    vx_cshell_set_output(shell, nullptr, nullptr);
    return shell;
}

void vx_cshell_free(cshell* shell)
{
    if (shell) {
        vx_readline_close(shell->readline);
        free(shell);
    }
}

void vx_cshell_set_output(cshell* shell, vt100_output_t output, void* data)
{
    shell->output = output ? output : put_standard_output;
    shell->output_data = data;
}

int vx_cshell_puts(cshell* shell, const char* text)
{
    shell->output(shell->output_data, text);
    return 0;
}

int vx_cshell_printf(cshell* shell, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    int length = vx_cshell_vprintf(shell, format, arguments);
    va_end(arguments);
    return length;
}

int vx_cshell_vprintf(cshell* shell, const char* format, va_list arguments)
{
    char text[512];
    va_list again;
    va_copy(again, arguments);
    int length = vx_vsnprintf(text, sizeof(text), format, arguments);
    char* whole = nullptr;
    if (length >= static_cast<int>(sizeof(text))) {
        size_t size = static_cast<size_t>(length) + 1;
        whole = static_cast<char*>(vx_calloc(size, 1));
        if (whole) { // without memory the cut text is what there is
            vx_vsnprintf(whole, size, format, again);
        }
    }
    va_end(again);
    vx_cshell_puts(shell, whole ? whole : text);
    free(whole);
    return length;
}

int vx_cshell_process_buf(cshell* shell, const char* bytes, size_t length)
{
    for (size_t at = 0; at < length; ++at) {
        const char* line = vx_readline_char(shell->readline, static_cast<unsigned char>(bytes[at]));
        if (!line) {
            continue;
        }
        if (vx_cshell_run_command_line(shell, line) == VX_CSHELL_EXIT) {
            return VX_CSHELL_EXIT;
        }
        vx_cshell_prompt(shell);
    }
    return 0;
}

int vx_cshell_run_command_line(cshell* shell, const char* line)
{
    char text[VX_CSHELL_MAX_CHARACTERS + 1];
    char* words[VX_CSHELL_MAX_WORDS];
    vx_strlcpy(text, line, sizeof(text));
    int count = sh_strsplit(text, words, VX_CSHELL_MAX_WORDS);
    return vx_cshell_run_words(shell, count, words);
}

int vx_cshell_run_words(cshell* shell, int argc, char** argv)
{
    if (argc == 0) {
        return 0;
    }
    if (strcmp(argv[0], "exit") == 0) {
        return VX_CSHELL_EXIT;
    }
    int result = vx_cshell_run_command(shell, argc, argv);
    if (result == VX_CSHELL_USAGE) {
        const shell_command* command = vx_cshell_find(shell, argv[0]);
        if (command) {
            vx_cshell_print_help(shell, command);
        }
    } else if (result == VX_CSHELL_ERROR) {
        vx_cshell_puts(shell, "ERROR\n");
    }
    return result;
}

int vx_cshell_run_command(cshell* shell, int argc, char** argv)
{
    const shell_command* command = argc > 0 ? vx_cshell_find(shell, argv[0]) : nullptr;
    if (command && vx_cshell_authorized(shell, command)) {
        // By value: the command may add entries to the table.
        shell_command_function_t function = command->function;
        shell->exit_status = function(shell, argc, argv);
    } else {
        shell->exit_status = -1;
    }
    return shell->exit_status;
}

void vx_cshell_prompt(cshell* shell)
{
    const char* const values[] = {shell->name, shell->directory};
    const size_t values_count = sizeof(values) / sizeof(values[0]);
    size_t used_values = 0;
    shell->prompt[0] = '\0';
    for (const char* at = shell->prompt_format; *at; ++at) {
        char single[2] = {*at, '\0'};
        const char* text = single;
        if (at[0] == '%' && at[1] == '%') {
            ++at;
        } else if (at[0] == '%' && at[1] == 's' && used_values < values_count) {
            text = values[used_values++];
            ++at;
        }
        vx_strlcat(shell->prompt, text, sizeof(shell->prompt));
    }
    vx_cshell_puts(shell, shell->prompt);
}

void vx_cshell_print_help_line(cshell* shell, const shell_command* command)
{
    vx_cshell_printf(shell, "%-15s: ", command->name);
    put_line(shell, command->help ? command->help : "no description\n");
}

void vx_cshell_print_help(cshell* shell, const shell_command* command)
{
    vx_cshell_print_help_line(shell, command);
    put_line(shell, command->syntax ? command->syntax : "No syntax description\n");
}

void vx_cshell_set_prompt_fmt(cshell* shell, const char* format)
{
    shell->prompt_format = format;
}

int vx_cshell_get_auth_level(const cshell* shell)
{
    return shell->auth_level;
}

void vx_cshell_set_auth_level(cshell* shell, int level)
{
    shell->auth_level = level;
}

bool vx_cshell_authorized(const cshell* shell, const shell_command* command)
{
    return !(command->flags & VX_CSHELL_RESTRICTED) || shell->auth_level == 1;
}

const char* vx_cshell_get_name(const cshell* shell)
{
    return shell->name;
}

void vx_cshell_set_name(cshell* shell, const char* name)
{
    vx_strlcpy(shell->name, name, sizeof(shell->name));
}

int vx_cshell_get_exit_status(const cshell* shell)
{
    return shell->exit_status;
}

CVXShell* vx_cshell_get_object(const cshell* shell)
{
    return shell->object;
}

void vx_cshell_set_object(cshell* shell, CVXShell* object)
{
    shell->object = object;
}

void vx_cshell_set_completion(cshell* shell, vx_readline_complete_t complete, void* data)
{
    shell->complete = complete;
    shell->complete_data = data;
}

int sh_strsplit(char* text, char** words, int max_words)
{
    int count = 0;
    while (count < max_words) {
        while (is_blank(*text)) {
            ++text;
        }
        if (!*text) {
            break;
        }
        words[count++] = text;
        while (*text && !is_blank(*text)) {
            ++text;
        }
        if (*text) {
            *text++ = '\0';
        }
    }
    return count;
}
