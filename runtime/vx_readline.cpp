// The shell's line editor: what lies around the line itself, which is vt100.cpp's, together with all
// sequences of the terminal. One thread at a time for each object.
#include "runtime/vx_readline.h"
#include "runtime/util.h"
#include "runtime/vx_history.h"
#include "runtime/vx_string.h"

#include <stdlib.h>
#include <string.h>

struct vx_readline {
    bool new_line; // the previous call has ended a line
    vx_history history;
    vx_readline_complete_t complete;
    void* complete_data;
    vt100_str editor;
    vt100_keymap keymap;
    char* work; // of the line's size
};

namespace {

const int CONTROL_D = 4;
const int TAB = 9;
const char EXIT_LINE[] = "exit";

// null: there is no such line, and the one on the screen stays.
void show_history_line(vx_readline* readline, const char* line)
{
    if (line) {
        vt100_str_wipe(&readline->editor);
        vt100_str_put_str(&readline->editor, line);
    }
}

void complete_line(vx_readline* readline)
{
    if (!readline->complete) {
        return;
    }
    vt100_str* editor = &readline->editor;
    size_t length = vt100_str_len(editor);
    vx_strlcpy(readline->work, vt100_str_get(editor), editor->size);
    int result = readline->complete(readline->complete_data, readline->work, editor->size);
    readline->work[editor->size - 1] = '\0';
    if (result == VX_COMPLETION_NONE) {
        return;
    }
    if (result == VX_COMPLETION_LIST) {
        vt100_str_redraw(editor);
    }
    bool appended = strlen(readline->work) > length;
    if (appended || result == VX_COMPLETION_UNIQUE) {
        vt100_str_end(editor);
    }
    if (appended) {
        vt100_str_put_str(editor, readline->work + length);
    }
    if (result == VX_COMPLETION_UNIQUE) {
        vt100_str_put(editor, ' ');
    }
}

const char* end_line(vx_readline* readline)
{
    const char* line = vt100_str_get(&readline->editor);
    readline->new_line = true;
    readline->editor.output(readline->editor.output_data, "\n");
    if (*line) {
        vx_history_add(&readline->history, line);
    } else {
        vx_history_reset(&readline->history);
    }
    return line;
}

} // namespace

vx_readline* vx_readline_open(size_t history_lines, size_t line_size, vx_readline_complete_t complete,
                              void* complete_data, vt100_output_t output, void* output_data)
{
    vx_readline* readline = static_cast<vx_readline*>(vx_calloc(1, sizeof(vx_readline)));
    if (!readline) {
        return nullptr;
    }
    readline->complete = complete;
    readline->complete_data = complete_data;
    readline->work = static_cast<char*>(vx_calloc(line_size, 1));
    if (!readline->work || vx_history_init(&readline->history, history_lines, line_size) < 0 ||
        vt100_str_init(&readline->editor, line_size, output, output_data) < 0) {
        vx_readline_close(readline);
        return nullptr;
    }
    return readline;
}

void vx_readline_close(vx_readline* readline)
{
    if (readline) {
        vt100_str_fini(&readline->editor);
        vx_history_fini(&readline->history);
        free(readline->work);
        free(readline);
    }
}

const char* vx_readline_char(vx_readline* readline, unsigned char byte)
{
    vt100_str* editor = &readline->editor;
    if (readline->new_line) {
        readline->new_line = false;
        vt100_str_clear(editor);
        vt100_keymap_clear(&readline->keymap);
    }
    int key = vt100_keymap_conv(&readline->keymap, byte);
    if (key == VT100_KEY_UP) {
        show_history_line(readline, vx_history_up(&readline->history));
    } else if (key == VT100_KEY_DOWN) {
        show_history_line(readline, vx_history_down(&readline->history));
    } else if (key == TAB) {
        complete_line(readline);
    } else if (key == CONTROL_D && vt100_str_len(editor) == 0) {
        return EXIT_LINE;
    } else {
        vt100_str_put(editor, key);
    }
    return vt100_str_eof(editor) ? end_line(readline) : nullptr;
}

void vx_readline_redraw(const vx_readline* readline)
{
    if (!readline->new_line) { // the line that has ended is still in the editor
        vt100_str_redraw(&readline->editor);
    }
}
