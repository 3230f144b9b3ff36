// The shell's record and what its sources share. Everybody else uses vx_cshell.h.
#ifndef RUNTIME_VX_CSHELL_IMPL_H
#define RUNTIME_VX_CSHELL_IMPL_H

#include "runtime/vx_cshell.h"

enum {
    VX_CSHELL_DIRECTORY_SIZE = 128,
    VX_CSHELL_TEXT_SIZE = 32,  // name and prompt
    VX_CSHELL_PATH_SIZE = 256, // a directory, a slash and a word
    VX_CSHELL_HISTORY_LINES = 16,
    VX_CSHELL_LINE_SIZE = 64
};

struct cshell {
    const char* prompt_format;
    char directory[VX_CSHELL_DIRECTORY_SIZE];
    vx_readline* readline;
    char name[VX_CSHELL_TEXT_SIZE];
    char prompt[VX_CSHELL_TEXT_SIZE];
    int auth_level;
    int exit_status;
    CVXShell* object;
    vt100_output_t output;
    void* output_data;
    vx_readline_complete_t complete;
    void* complete_data;
};

// A list of names in columns: four in a line of 80 characters, directories with an asterisk behind them.
struct vx_cshell_columns {
    cshell* shell;
    unsigned printed;
};
void vx_cshell_print_column(vx_cshell_columns* columns, const char* name, size_t length, bool directory);
void vx_cshell_end_columns(vx_cshell_columns* columns);

// The path of the word from the current directory. False if path, of VX_CSHELL_PATH_SIZE bytes, can't hold
// it.
bool vx_cshell_join(const cshell* shell, const char* word, char* path);

// The built-in commands, with an entry without a name at the end.
extern const shell_command vx_cshell_builtin_commands[];

// Those for memory.
int vx_cshell_set_memory(cshell* shell, int argc, char** argv);
int vx_cshell_display_memory(cshell* shell, int argc, char** argv);

#endif
