// The terminal's end of the keypad: a Unix socket to which the driver in the display connects, and the keys
// that wait to be pressed. What goes over it is told in sim/keypad/keypad.h.
//
// On the thread of the loop only. Nothing blocks.
#ifndef SIM_DISPLAY_KEY_SENDER_H
#define SIM_DISPLAY_KEY_SENDER_H

#include "sim/display/display.h"
#include "sim/display/requests.h"

#include <string>
#include <sys/types.h>

namespace sim {

class KeySender {
public:
    explicit KeySender(fdloop_t* loop);
    ~KeySender();
    KeySender(const KeySender&) = delete;
    KeySender& operator=(const KeySender&) = delete;

    // Makes the socket, for its user alone. False with *error.
    bool listen(const std::string& path, std::string* error);
    // The process whose connection is taken. Others are turned away.
    void expect(pid_t process) { display = process; }
    // That process has gone.
    void displayEnded();

    void press(uint64_t number, Key key, RequestDone done);
    void forget(uint64_t number);

private:
    static int onConnection(int fd, void* data);
    static int onAnswer(int fd, void* data);
    void accept();
    void receive();
    void take(const std::string& answer);
    void disconnect();
    void sendKey();
    std::string whyLate();

    fdloop_t* loop;
    std::string path;
    int server = -1;
    int connection = -1;
    pid_t display = -1;
    Requests<Key> keys;
    Timer retry;
    bool sent = false;    // the current key, and it was not answered
    bool hidden = false;  // the current key was sent, and there was no window for it
    unsigned unheard = 0; // keys that were given up before their answer came
    std::string received; // of an answer
};

} // namespace sim

#endif
