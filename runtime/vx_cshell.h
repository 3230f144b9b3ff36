// The debug shell: lines of words that run commands from one table of the process, whose paths form a small
// directory tree. The built-in commands lie in "/bin".
//
// Everything here, the table included, belongs to the thread of the loop on which the shell is registered.
// There is no lock, and commands block the loop while they run. Output goes to standard output, or where
// vx_cshell_set_output says.
#ifndef RUNTIME_VX_CSHELL_H
#define RUNTIME_VX_CSHELL_H

#include "runtime/vt100.h"
#include "runtime/vx_readline.h"

#include <stdarg.h>
#include <stddef.h>

struct cshell;
class CVXShell;

// Results of a command. Any other value is its own; those below have a meaning for the line that ran it.
enum vx_cshell_result {
    VX_CSHELL_OK = 0,
    VX_CSHELL_EXIT = 2,  // ends the shell
    VX_CSHELL_USAGE = 3, // prints the command's help
    VX_CSHELL_ERROR = 4  // prints "ERROR\n"
};

// Bits of a command's flags.
enum vx_cshell_flags {
    VX_CSHELL_RESTRICTED = 1 // runs only at authorisation level 1
};

// Bounds of a line. What is beyond them is cut off, without a message.
enum { VX_CSHELL_MAX_CHARACTERS = 64, VX_CSHELL_MAX_WORDS = 32 };

// argv[0] is the word that named the command; argc is at least 1. The words are valid during the call.
typedef int (*shell_command_function_t)(cshell* shell, int argc, char** argv);

// The texts are kept as pointers and must live on.
struct shell_command {
    const char* path; // directory: "/" or like "/bin", with no slash at its end
    const char* name;
    shell_command_function_t function;
    unsigned flags;
    const char* help;   // one line; null: none
    const char* syntax; // any number of lines; null: none
};

// Copies the entry into the table. One with the same path and name that is there already hides it. An entry
// without path, name or function, and memory that can't be had, are assertions. Static objects may call it
// before main.
void shell_command_add_sorted(const shell_command* command);

// The table: number of entries, and one of them. They are sorted by path, then by name; a pointer is valid
// until the next entry is added.
size_t shell_command_count(void);
const shell_command* shell_command_get(size_t index);

// A shell of that name (cut at 31 characters) in directory "/", at level 1. Null if there is no memory.
// The first one puts the built-in commands into the table.
cshell* vx_cshell_alloc(const char* name);
void vx_cshell_free(cshell* shell); // null does nothing

// Where all output of the shell and its commands goes; null: standard output, as at first.
void vx_cshell_set_output(cshell* shell, vt100_output_t output, void* data);
int vx_cshell_puts(cshell* shell, const char* text);
__attribute__((format(printf, 2, 3))) int vx_cshell_printf(cshell* shell, const char* format, ...);
__attribute__((format(printf, 2, 0))) int vx_cshell_vprintf(cshell* shell, const char* format,
                                                            va_list arguments);

// Feeds typed bytes. Each finished line is run, and the prompt printed behind it. Returns VX_CSHELL_EXIT when
// a line has ended the shell, without looking at the bytes behind it; else 0.
int vx_cshell_process_buf(cshell* shell, const char* bytes, size_t length);

// Runs one line. Returns VX_CSHELL_EXIT for the word "exit", 0 if there is no word, else what
// vx_cshell_run_command returned, and prints what that result means to a line.
int vx_cshell_run_command_line(cshell* shell, const char* line);

// The same for a line that has been split already, of any length and number of words.
int vx_cshell_run_words(cshell* shell, int argc, char** argv);

// Runs a split command: first the one that lies at this path from the current directory, then the one at this
// path, or of this name in any directory. Returns its result, which becomes the exit status. -1 as well for a
// restricted one without authorisation (silently), and, with a message, where there is none or one in each of
// several directories.
int vx_cshell_run_command(cshell* shell, int argc, char** argv);

// The command that this word names, as above, or null after the message.
const shell_command* vx_cshell_find(cshell* shell, const char* word);

void vx_cshell_prompt(cshell* shell);

// A help line, and the line with the syntax behind it.
void vx_cshell_print_help_line(cshell* shell, const shell_command* command);
void vx_cshell_print_help(cshell* shell, const shell_command* command);

// Changes the current directory: a path from it or from "/", "." and ".." included. Returns 0, or -1 where
// that is no directory or 128 bytes don't hold it.
int vx_cshell_chdir(cshell* shell, const char* directory);

// Prints the current directory and a line feed. Returns 0.
int vx_cshell_pwd(cshell* shell);

// Prints what lies in the current directory. Returns 0.
int vx_cshell_ls(cshell* shell);

// The first "%s" of the format becomes the shell's name, the second its directory, "%%" a percent sign;
// nothing else is special. The prompt is cut at 31 characters. The format is kept as a pointer and must live
// on.
void vx_cshell_set_prompt_fmt(cshell* shell, const char* format);

// 1 allows restricted commands, any other level does not.
int vx_cshell_get_auth_level(const cshell* shell);
void vx_cshell_set_auth_level(cshell* shell, int level);
bool vx_cshell_authorized(const cshell* shell, const shell_command* command);

const char* vx_cshell_get_name(const cshell* shell);
void vx_cshell_set_name(cshell* shell, const char* name); // cut at 31 characters
int vx_cshell_get_exit_status(const cshell* shell);

// The class object around this shell, or null.
CVXShell* vx_cshell_get_object(const cshell* shell);
void vx_cshell_set_object(cshell* shell, CVXShell* object);

// Mode bits of vx_cshell_fslookup.
enum vx_cshell_mode {
    VX_FS_COMMAND = 1,   // commands match
    VX_FS_DIRECTORY = 2, // directories match
    VX_FS_PREFIX = 4,    // the last component is the beginning of a name, "" of any
    VX_FS_ANYWHERE = 8   // the path is a bare name; commands match in whichever directory they lie
};

// What was found: name is not terminated but has length characters. command is null for a directory.
struct vx_cshell_match {
    const char* name;
    size_t length;
    const shell_command* command;
};
typedef void (*vx_cshell_match_t)(void* data, const vx_cshell_match* match);

// Looks up an absolute path, or the beginning of one, in the table. Calls match (null: none) for each hit in
// the table's order, once for each directory. Returns the number of hits.
int vx_cshell_fslookup(const char* path, unsigned mode, vx_cshell_match_t match, void* data);

// The completion of the line's last word among commands and directories, which is the shell's own. Another
// function may take its place, and call it; null puts it back.
int vx_cshell_complete(cshell* shell, char* line, size_t size);
void vx_cshell_set_completion(cshell* shell, vx_readline_complete_t complete, void* data);

// Splits in place at blanks and tabs. Returns the number of words, at most max_words; what lies behind them
// is dropped.
int sh_strsplit(char* text, char** words, int max_words);

#endif
