// Line editing on a VT100 terminal. One thread at a time for each object.
//
// Accepted, beside plain bytes:
//   ESC [ A   ESC O A   up                    8, 127    remove the character before the cursor
//   ESC [ B   ESC O B   down                  10, 13    end of the line
//   ESC [ C   ESC O C   right                 32 to 126 a character of the line
//   ESC [ D   ESC O D   left                  others    ignored
//   ESC [ 3 ~           remove the character at the cursor
// Up and down, Tab (9), and control-D (4) in an empty line are vx_readline.cpp's.
// A sequence ends, in its second byte and behind it, with a byte of 48 or above; where the second byte is
// "[", with one of 63 or above behind it; where it is "O", with one of 47 or above. The ESC counts as one of
// its four bytes. ESC always starts a sequence, also where another one is open, which is forgotten.
//
// Emitted, beside the characters themselves:
//   ESC [ C         cursor right              ESC [ 1 P       delete one character at the cursor
//   ESC [ D         cursor left               ESC [ 4 h       insert mode on
//   ESC [ n D       cursor left by n          ESC [ 4 l       insert mode off
//   ESC [ 0 K       erase to the end of the line
// n is never 0, which terminals take for 1. Behind a finished line vx_readline.cpp sends a line feed.
#include "runtime/vt100.h"
#include "runtime/util.h"
#include "runtime/vx_string.h"

#include <stdlib.h>
#include <string.h>

namespace {

const unsigned char ESC = 27;
const int BACKSPACE = 8;
const int DELETE_CHARACTER = 127;
const int UNKNOWN_SEQUENCE = '?';

const char CURSOR_RIGHT[] = "\033[C";
const char CURSOR_LEFT[] = "\033[D";
const char DELETE_AT_CURSOR[] = "\033[1P";
const char ERASE_TO_END[] = "\033[0K";

const struct {
    char sequence[5];
    int key;
} SEQUENCES[] = {
    {"\033[A", VT100_KEY_UP},   {"\033OA", VT100_KEY_UP},    {"\033[B", VT100_KEY_DOWN},
    {"\033OB", VT100_KEY_DOWN}, {"\033[C", VT100_KEY_RIGHT}, {"\033OC", VT100_KEY_RIGHT},
    {"\033[D", VT100_KEY_LEFT}, {"\033OD", VT100_KEY_LEFT},  {"\033[3~", VT100_KEY_DELETE},
};

bool sequence_is_closed(const vt100_keymap* map)
{
    unsigned char last = map->bytes[map->length - 1];
    unsigned char introducer = map->bytes[1];
    bool introduced = introducer == '[' || introducer == 'O';
    if (map->length == 2 && introduced) {
        return false;
    }
    return last >= (introducer == '[' ? 63 : introducer == 'O' ? 47 : 48);
}

int sequence_key(const vt100_keymap* map)
{
    for (const auto& row : SEQUENCES) {
        if (strlen(row.sequence) == map->length && memcmp(row.sequence, map->bytes, map->length) == 0) {
            return row.key;
        }
    }
    return UNKNOWN_SEQUENCE;
}

void send(const vt100_str* str, const char* text)
{
    str->output(str->output_data, text);
}

void send_cursor_left(const vt100_str* str, size_t count)
{
    if (count > 0) {
        char text[32];
        vx_snprintf(text, sizeof(text), "\033[%zuD", count);
        send(str, text);
    }
}

void move_right(vt100_str* str)
{
    if (str->cursor < str->length) {
        ++str->cursor;
        send(str, CURSOR_RIGHT);
    }
}

void move_left(vt100_str* str)
{
    if (str->cursor > 0) {
        --str->cursor;
        send(str, CURSOR_LEFT);
    }
}

// The buffer's part; the NUL moves along.
void remove_at_cursor(vt100_str* str)
{
    char* at = str->buffer + str->cursor;
    memmove(at, at + 1, str->length - str->cursor);
    --str->length;
}

void remove_before(vt100_str* str)
{
    if (str->cursor > 0) {
        --str->cursor;
        remove_at_cursor(str);
        send(str, CURSOR_LEFT);
        send(str, DELETE_AT_CURSOR);
    }
}

void remove_at(vt100_str* str)
{
    if (str->cursor < str->length) {
        remove_at_cursor(str);
        send(str, DELETE_AT_CURSOR);
    }
}

void insert(vt100_str* str, char character)
{
    if (str->length + 1 >= str->size) {
        return;
    }
    bool at_end = str->cursor == str->length;
    char* at = str->buffer + str->cursor;
    memmove(at + 1, at, str->length - str->cursor + 1);
    *at = character;
    ++str->length;
    ++str->cursor;
    char text[16];
    vx_snprintf(text, sizeof(text), at_end ? "%c" : "\033[4h%c\033[4l", character);
    send(str, text);
}

} // namespace

void vt100_keymap_clear(vt100_keymap* map)
{
    map->length = 0;
}

int vt100_keymap_conv(vt100_keymap* map, unsigned char byte)
{
    if (byte == ESC) {
        map->bytes[0] = byte;
        map->length = 1;
        return VT100_KEY_NONE;
    }
    if (map->length == 0) {
        return byte;
    }
    if (map->length == sizeof(map->bytes)) {
        map->length = 0;
        return UNKNOWN_SEQUENCE;
    }
    map->bytes[map->length++] = byte;
    if (!sequence_is_closed(map)) {
        return VT100_KEY_NONE;
    }
    int key = sequence_key(map);
    map->length = 0;
    return key;
}

int vt100_str_init(vt100_str* str, size_t size, vt100_output_t output, void* output_data)
{
    str->buffer = static_cast<char*>(vx_calloc(size, 1));
    if (!str->buffer) {
        return -1;
    }
    str->size = size;
    str->output = output;
    str->output_data = output_data;
    vt100_str_clear(str);
    return 0;
}

void vt100_str_fini(vt100_str* str)
{
    free(str->buffer);
    str->buffer = nullptr;
}

void vt100_str_put(vt100_str* str, int key)
{
    if (key == VT100_KEY_RIGHT) {
        move_right(str);
    } else if (key == VT100_KEY_LEFT) {
        move_left(str);
    } else if (key == BACKSPACE || key == DELETE_CHARACTER) {
        remove_before(str);
    } else if (key == VT100_KEY_DELETE) {
        remove_at(str);
    } else if (key == '\n' || key == '\r') {
        str->end_of_line = true;
    } else if (key >= 0x20 && key < 0x7f) {
        insert(str, static_cast<char>(key));
    }
}

void vt100_str_put_str(vt100_str* str, const char* text)
{
    for (; *text; ++text) {
        vt100_str_put(str, static_cast<unsigned char>(*text));
    }
}

const char* vt100_str_get(const vt100_str* str)
{
    return str->buffer;
}

size_t vt100_str_len(const vt100_str* str)
{
    return str->length;
}

bool vt100_str_eof(const vt100_str* str)
{
    return str->end_of_line;
}

void vt100_str_clear(vt100_str* str)
{
    str->length = 0;
    str->cursor = 0;
    str->end_of_line = false;
    str->buffer[0] = '\0';
}

void vt100_str_wipe(vt100_str* str)
{
    send_cursor_left(str, str->cursor);
    send(str, ERASE_TO_END);
    vt100_str_clear(str);
}

void vt100_str_end(vt100_str* str)
{
    while (str->cursor < str->length) {
        move_right(str);
    }
}

void vt100_str_redraw(const vt100_str* str)
{
    send(str, str->buffer);
    send_cursor_left(str, str->length - str->cursor);
}
