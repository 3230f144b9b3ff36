// The ring of lines typed before, see the header. One thread at a time for each object.
#include "runtime/vx_history.h"
#include "runtime/util.h"
#include "runtime/vx_string.h"

#include <stdlib.h>
#include <string.h>

namespace {

// The line that is so many lines older than the newest, age being below the number of lines.
char* line_of_age(const vx_history* history, size_t age)
{
    size_t index = (history->newest + history->lines - age) % history->lines;
    return history->text + index * history->line_size;
}

} // namespace

int vx_history_init(vx_history* history, size_t lines, size_t line_size)
{
    history->text = static_cast<char*>(vx_calloc(lines, line_size));
    if (!history->text) {
        return -1;
    }
    history->lines = lines;
    history->line_size = line_size;
    history->newest = 0;
    vx_history_reset(history);
    return 0;
}

void vx_history_fini(vx_history* history)
{
    free(history->text);
    history->text = nullptr;
}

void vx_history_add(vx_history* history, const char* line)
{
    vx_history_reset(history);
    if (strcmp(line, line_of_age(history, 0)) == 0) {
        return;
    }
    history->newest = (history->newest + 1) % history->lines;
    vx_strlcpy(line_of_age(history, 0), line, history->line_size);
}

void vx_history_reset(vx_history* history)
{
    history->browse = history->lines;
}

const char* vx_history_up(vx_history* history)
{
    size_t older = history->browse == history->lines ? 0 : history->browse + 1;
    if (older == history->lines || *line_of_age(history, older) == '\0') {
        return nullptr;
    }
    history->browse = older;
    return line_of_age(history, older);
}

const char* vx_history_down(vx_history* history)
{
    if (history->browse == history->lines) {
        return nullptr;
    }
    if (history->browse == 0) {
        vx_history_reset(history);
        return "";
    }
    --history->browse;
    return line_of_age(history, history->browse);
}
