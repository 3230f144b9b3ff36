// Raw mode of a terminal, as the debug shell needs it.
//
// Any thread. Applying the settings waits until written output has been sent, and drops unread input.
#ifndef RUNTIME_VX_TTY_H
#define RUNTIME_VX_TTY_H

#include <termios.h>

// Sets the terminal to single characters without echo, 8 bits and no parity, signals still on. The settings
// before go to saved, if that is not null. Returns 0, or -1 with errno.
int vx_posix_tty_raw(int fd, struct termios* saved);

// Puts settings back. Returns 0, or -1 with errno.
int vx_posix_tty_set(int fd, const struct termios* saved);

#endif
