// Raw mode of a terminal. Any thread.
#include "runtime/vx_tty.h"

int vx_posix_tty_raw(int fd, struct termios* saved)
{
    struct termios settings;
    if (tcgetattr(fd, &settings) < 0) {
        return -1;
    }
    if (saved) {
        *saved = settings;
    }
    settings.c_iflag &= ~static_cast<tcflag_t>(INPCK | ISTRIP | IXON);
    settings.c_cflag &= ~static_cast<tcflag_t>(CSIZE | PARENB);
    settings.c_cflag |= CS8;
    settings.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | IEXTEN);
    settings.c_cc[VMIN] = 1;
    settings.c_cc[VTIME] = 0;
    return tcsetattr(fd, TCSAFLUSH, &settings);
}

int vx_posix_tty_set(int fd, const struct termios* saved)
{
    return tcsetattr(fd, TCSAFLUSH, saved);
}
