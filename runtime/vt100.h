// The two halves of line editing on a VT100 terminal: from input bytes to key codes, and from key codes to a
// line of text and the echo that keeps the terminal's line like it. The sequences stand in the source's head.
//
// No Qt, no descriptors: bytes come by call and the echo leaves by a function. One thread at a time for each
// object; nothing blocks but that function.
#ifndef RUNTIME_VT100_H
#define RUNTIME_VT100_H

#include <stddef.h>

// Takes text for the terminal. data is the word that was given with the function. The text is valid during
// the call only.
typedef void (*vt100_output_t)(void* data, const char* text);

// What vt100_keymap_conv makes of the input: plain bytes as they are (0 to 255), keys above them.
enum vt100_key {
    VT100_KEY_NONE = -1, // in the middle of a sequence
    VT100_KEY_UP = 0x1000,
    VT100_KEY_DOWN = 0x1001,
    VT100_KEY_RIGHT = 0x1002,
    VT100_KEY_LEFT = 0x1003,
    VT100_KEY_DELETE = 0x1004
};

// A sequence that has begun. Zeroed: none.
struct vt100_keymap {
    unsigned char bytes[4];
    size_t length;
};

// Forgets a sequence that has begun.
void vt100_keymap_clear(vt100_keymap* map);

// Takes one byte. Returns its code, the code of the sequence that it closes, or VT100_KEY_NONE while one is
// open. A sequence that is unknown or longer than four bytes gives a question mark.
int vt100_keymap_conv(vt100_keymap* map, unsigned char byte);

// The line. buffer holds length characters and a NUL; cursor is 0 to length.
struct vt100_str {
    char* buffer;
    size_t size; // of the buffer: one more than the longest line
    size_t length;
    size_t cursor;
    bool end_of_line;
    vt100_output_t output;
    void* output_data;
};

// Makes an empty line of up to size - 1 characters (size is at least 1) that echoes by output. Returns 0, or
// -1 if there is no memory. vt100_str_fini frees what it holds.
int vt100_str_init(vt100_str* str, size_t size, vt100_output_t output, void* output_data);
void vt100_str_fini(vt100_str* str);

// One key, with its echo. What a full line has no room for, and whatever is neither a printable ASCII
// character nor a key of the editor, does nothing.
void vt100_str_put(vt100_str* str, int key);

// Each character of the text in turn.
void vt100_str_put_str(vt100_str* str, const char* text);

// The line, valid until the next call that changes it.
const char* vt100_str_get(const vt100_str* str);

// Its length in characters.
size_t vt100_str_len(const vt100_str* str);

// True once the line has been ended by line feed or carriage return, until it is cleared.
bool vt100_str_eof(const vt100_str* str);

// Empties the line and its flag. Nothing is sent.
void vt100_str_clear(vt100_str* str);

// Empties the line on the terminal as well.
void vt100_str_wipe(vt100_str* str);

// Moves the cursor behind the last character.
void vt100_str_end(vt100_str* str);

// Shows the line again behind a new prompt, the cursor where it was.
void vt100_str_redraw(const vt100_str* str);

#endif
