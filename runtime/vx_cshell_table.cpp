// The shell's table of commands and the directory tree that their paths form. The loop's thread alone, but
// for static objects that add their commands before main.
#define VX_ASSERT_SOURCE "vx_cshell"
#include "runtime/util.h"
#include "runtime/vx_assert.h"
#include "runtime/vx_cshell_impl.h"
#include "runtime/vx_string.h"

#include <stdlib.h>
#include <string.h>

namespace {

const size_t TABLE_STEP = 8; // entries by which the array grows

shell_command* table = nullptr;
size_t table_count = 0;
size_t table_size = 0;

int compare(const shell_command* one, const shell_command* other)
{
    int order = strcmp(one->path, other->path);
    return order ? order : strcmp(one->name, other->name);
}

// By an earlier one of the same path and name.
bool is_hidden(size_t index)
{
    return index > 0 && compare(&table[index - 1], &table[index]) == 0;
}

void grow_table()
{
    size_t size = table_size + TABLE_STEP;
    shell_command* larger = static_cast<shell_command*>(vx_calloc(size, sizeof(shell_command)));
    VX_ASSERT(larger);
    if (table) {
        memcpy(larger, table, table_count * sizeof(shell_command));
        free(table);
    }
    table = larger;
    table_size = size;
}

// A looked-up path: directory without the slash at its end ("" is the root), and the last component.
struct lookup {
    const char* directory;
    size_t directory_length;
    const char* name;
    unsigned mode;
};

bool name_matches(const lookup* what, const char* name, size_t length)
{
    size_t wanted = strlen(what->name);
    return (what->mode & VX_FS_PREFIX ? wanted <= length : wanted == length) &&
           strncmp(what->name, name, wanted) == 0;
}

// What follows the looked-up directory in the path, without its slash; null if the path isn't in it. "" if it
// is that very directory.
const char* path_below(const lookup* what, const char* path)
{
    if (strcmp(path, "/") == 0) {
        return what->directory_length == 0 ? "" : nullptr;
    }
    if (strncmp(path, what->directory, what->directory_length) != 0) {
        return nullptr;
    }
    const char* rest = path + what->directory_length;
    return *rest == '/' ? rest + 1 : *rest == '\0' ? rest : nullptr;
}

bool find_command(const lookup* what, const shell_command* command, vx_cshell_match* match)
{
    if (!(what->mode & VX_FS_ANYWHERE)) {
        const char* below = path_below(what, command->path);
        if (!below || *below) {
            return false;
        }
    }
    match->name = command->name;
    match->length = strlen(command->name);
    match->command = command;
    return name_matches(what, match->name, match->length);
}

// The directory right below the looked-up one through which the entry's path leads.
bool find_directory(const lookup* what, const shell_command* command, vx_cshell_match* match)
{
    const char* below = path_below(what, command->path);
    if (!below || !*below) {
        return false;
    }
    match->name = below;
    match->length = strcspn(below, "/");
    match->command = nullptr;
    return name_matches(what, match->name, match->length);
}

// Entries of one directory need not be neighbours: "/a" < "/a-b" < "/a/b".
bool is_first_of_directory(const lookup* what, size_t index, const vx_cshell_match* match)
{
    for (size_t earlier = 0; earlier < index; ++earlier) {
        vx_cshell_match other;
        if (find_directory(what, &table[earlier], &other) && other.length == match->length &&
            strncmp(other.name, match->name, match->length) == 0) {
            return false;
        }
    }
    return true;
}

bool directory_exists(const char* path)
{
    return strcmp(path, "/") == 0 || vx_cshell_fslookup(path, VX_FS_DIRECTORY, nullptr, nullptr) > 0;
}

// Goes one component on from the absolute path, which stays as it was if the component has no room.
bool append_component(char* path, const char* component, size_t length)
{
    size_t used = strlen(path);
    if (length == 0 || (length == 1 && component[0] == '.')) {
        return true;
    }
    if (length == 2 && component[0] == '.' && component[1] == '.') {
        char* slash = strrchr(path, '/');
        slash[slash == path ? 1 : 0] = '\0';
        return true;
    }
    if (used == 1) {
        used = 0; // the root's slash is the separator
    }
    if (used + 1 + length >= VX_CSHELL_DIRECTORY_SIZE) {
        return false;
    }
    path[used] = '/';
    memcpy(path + used + 1, component, length);
    path[used + 1 + length] = '\0';
    return true;
}

void print_match(void* data, const vx_cshell_match* match)
{
    vx_cshell_print_column(static_cast<vx_cshell_columns*>(data), match->name, match->length,
                           !match->command);
}

struct found_commands {
    const shell_command* first;
    bool several; // in different directories
};

void take_command(void* data, const vx_cshell_match* match)
{
    found_commands* found = static_cast<found_commands*>(data);
    if (!found->first) {
        found->first = match->command;
    } else if (strcmp(found->first->path, match->command->path) != 0) {
        found->several = true;
    }
}

void print_command_path(void* data, const vx_cshell_match* match)
{
    const char* path = match->command->path;
    vx_cshell_printf(static_cast<cshell*>(data), "%s/%s\n", strcmp(path, "/") == 0 ? "" : path,
                     match->command->name);
}

} // namespace

void shell_command_add_sorted(const shell_command* command)
{
    VX_ASSERT(command->path && command->name && command->function);
    if (table_count == table_size) {
        grow_table();
    }
    size_t at = table_count;
    while (at > 0 && compare(&table[at - 1], command) > 0) {
        --at;
    }
    memmove(table + at + 1, table + at, (table_count - at) * sizeof(shell_command));
    table[at] = *command;
    ++table_count;
}

size_t shell_command_count(void)
{
    return table_count;
}

const shell_command* shell_command_get(size_t index)
{
    return index < table_count ? &table[index] : nullptr;
}

int vx_cshell_fslookup(const char* path, unsigned mode, vx_cshell_match_t match, void* data)
{
    const char* slash = strrchr(path, '/');
    if (!slash && !(mode & VX_FS_ANYWHERE)) {
        return 0;
    }
    lookup what = {path, slash ? static_cast<size_t>(slash - path) : 0, slash ? slash + 1 : path, mode};
    int count = 0;
    for (size_t index = 0; index < table_count; ++index) {
        vx_cshell_match hit;
        bool command = mode & VX_FS_COMMAND && !is_hidden(index) && find_command(&what, &table[index], &hit);
        bool directory = !command && mode & VX_FS_DIRECTORY && find_directory(&what, &table[index], &hit) &&
                         is_first_of_directory(&what, index, &hit);
        if (command || directory) {
            ++count;
            if (match) {
                match(data, &hit);
            }
        }
    }
    return count;
}

bool vx_cshell_join(const cshell* shell, const char* word, char* path)
{
    const char* directory = strcmp(shell->directory, "/") == 0 ? "" : shell->directory;
    int length = vx_snprintf(path, VX_CSHELL_PATH_SIZE, "%s/%s", directory, word);
    return length < VX_CSHELL_PATH_SIZE;
}

const shell_command* vx_cshell_find(cshell* shell, const char* word)
{
    char path[VX_CSHELL_PATH_SIZE];
    found_commands found = {nullptr, false};
    if (vx_cshell_join(shell, word, path)) {
        vx_cshell_fslookup(path, VX_FS_COMMAND, take_command, &found);
    }
    unsigned mode = strchr(word, '/') ? VX_FS_COMMAND : VX_FS_COMMAND | VX_FS_ANYWHERE;
    if (!found.first) {
        vx_cshell_fslookup(word, mode, take_command, &found);
    }
    if (found.several) {
        vx_cshell_printf(shell, "%s: multiple matches\n", word);
        vx_cshell_fslookup(word, mode, print_command_path, shell);
        return nullptr;
    }
    if (!found.first) {
        vx_cshell_printf(shell, "%s: command not found\n", word);
    }
    return found.first;
}

int vx_cshell_chdir(cshell* shell, const char* directory)
{
    char path[VX_CSHELL_DIRECTORY_SIZE];
    vx_strlcpy(path, *directory == '/' ? "/" : shell->directory, sizeof(path));
    while (*directory) {
        size_t length = strcspn(directory, "/");
        if (!append_component(path, directory, length)) {
            return -1;
        }
        directory += length;
        directory += *directory == '/';
    }
    if (!directory_exists(path)) {
        return -1;
    }
    vx_strlcpy(shell->directory, path, sizeof(shell->directory));
    return 0;
}

int vx_cshell_pwd(cshell* shell)
{
    vx_cshell_printf(shell, "%s\n", shell->directory);
    return 0;
}

int vx_cshell_ls(cshell* shell)
{
    char path[VX_CSHELL_PATH_SIZE];
    vx_cshell_columns columns = {shell, 0};
    if (vx_cshell_join(shell, "", path)) {
        vx_cshell_fslookup(path, VX_FS_COMMAND | VX_FS_DIRECTORY | VX_FS_PREFIX, print_match, &columns);
    }
    vx_cshell_end_columns(&columns);
    return 0;
}

void vx_cshell_print_column(vx_cshell_columns* columns, const char* name, size_t length, bool directory)
{
    char text[VX_CSHELL_PATH_SIZE];
    vx_snprintf(text, sizeof(text), "%.*s%s", static_cast<int>(length), name, directory ? "*" : "");
    vx_cshell_printf(columns->shell, "%-20s", text);
    if (++columns->printed % 4 == 0) {
        vx_cshell_puts(columns->shell, "\n");
    }
}

void vx_cshell_end_columns(vx_cshell_columns* columns)
{
    if (columns->printed % 4 != 0) {
        vx_cshell_puts(columns->shell, "\n");
    }
}
