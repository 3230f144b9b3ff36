// The shell's completion of a line's last word: commands and directories that can be reached from the current
// directory, and commands anywhere. The loop's thread alone.
#include "runtime/util.h"
#include "runtime/vx_cshell_impl.h"
#include "runtime/vx_string.h"

#include <stdlib.h>
#include <string.h>

namespace {

// Without two of the same name.
struct candidates {
    vx_cshell_match* matches;
    size_t count;
    size_t size;
};

void take_candidate(void* data, const vx_cshell_match* match)
{
    candidates* found = static_cast<candidates*>(data);
    for (size_t at = 0; at < found->count; ++at) {
        const vx_cshell_match* other = &found->matches[at];
        if (other->length == match->length && strncmp(other->name, match->name, match->length) == 0) {
            return;
        }
    }
    if (found->count < found->size) {
        found->matches[found->count++] = *match;
    }
}

void find_candidates(const cshell* shell, const char* word, candidates* found)
{
    const unsigned everything = VX_FS_COMMAND | VX_FS_DIRECTORY | VX_FS_PREFIX;
    char path[VX_CSHELL_PATH_SIZE];
    if (*word == '/') {
        vx_cshell_fslookup(word, everything, take_candidate, found);
        return;
    }
    if (vx_cshell_join(shell, word, path)) {
        vx_cshell_fslookup(path, everything, take_candidate, found);
    }
    if (!strchr(word, '/')) {
        vx_cshell_fslookup(word, VX_FS_COMMAND | VX_FS_PREFIX | VX_FS_ANYWHERE, take_candidate, found);
    }
}

// Nothing is completed where the line has no room for the whole.
int append_rest(const vx_cshell_match* match, size_t typed, char* line, size_t size)
{
    size_t used = strlen(line);
    size_t rest = match->length - typed;
    if (used + rest >= size) {
        return VX_COMPLETION_NONE;
    }
    memcpy(line + used, match->name + typed, rest);
    line[used + rest] = '\0';
    return VX_COMPLETION_UNIQUE;
}

int print_candidates(cshell* shell, const candidates* found)
{
    vx_cshell_columns columns = {shell, 0};
    vx_cshell_puts(shell, "\n");
    for (size_t at = 0; at < found->count; ++at) {
        const vx_cshell_match* match = &found->matches[at];
        vx_cshell_print_column(&columns, match->name, match->length, !match->command);
    }
    vx_cshell_end_columns(&columns);
    vx_cshell_prompt(shell);
    return VX_COMPLETION_LIST;
}

} // namespace

int vx_cshell_complete(cshell* shell, char* line, size_t size)
{
    const char* word = line;
    for (const char* at = line; *at; ++at) {
        if (*at == ' ' || *at == '\t') {
            word = at + 1;
        }
    }
    const char* slash = strrchr(word, '/');
    size_t typed = strlen(slash ? slash + 1 : word);

    // An entry of the table is a candidate at most twice: as a command and by its directory.
    candidates found = {nullptr, 0, 2 * shell_command_count()};
    found.matches = static_cast<vx_cshell_match*>(vx_calloc(found.size + 1, sizeof(vx_cshell_match)));
    if (!found.matches) {
        return VX_COMPLETION_NONE;
    }
    find_candidates(shell, word, &found);
    int result = VX_COMPLETION_NONE;
    if (found.count == 1) {
        result = append_rest(&found.matches[0], typed, line, size);
    } else if (found.count > 1) {
        result = print_candidates(shell, &found);
    }
    free(found.matches);
    return result;
}
