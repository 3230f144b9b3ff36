// Catches what the process gives to syslog, in place of the system's log.
//
// Replaces openlog, closelog, setlogmask, syslog, vsyslog and their fortified forms in the process that
// links or preloads it. Identity, default facility and mask behave as in the C library: the identity is
// the pointer that openlog was given, the program's name before that and after closelog.
//
// Linked into a test, the functions below read the lines. Preloaded (libsyslogtap.so), the environment says
// where they go; both may be set, and both work in the linked form too:
//   SYSLOGTAP_FILE    each line is appended to this file with one write
//   SYSLOGTAP_SOCKET  each line is sent as one datagram to this Unix socket (path), lost if nobody listens
// In both, a line is
//   <FACILITY.PRIORITY> IDENT[PID]: TEXT
// with the facility as a number (1 is user, 16 is local0), the priority as a number (0 emergency to 7
// debug), and each line feed in the text written as \n. In the file it ends in a line feed.
//
// Every function may be called from any thread and changes no errno.
#ifndef SIM_SYSLOGTAP_SYSLOGTAP_H
#define SIM_SYSLOGTAP_SYSLOGTAP_H

#include <cstddef>
#include <string>
#include <vector>

extern "C" {

// From here on each line is kept; those kept before are dropped.
void syslogtap_start(void);

// No line is kept any more; those kept stay until syslogtap_clear() or syslogtap_start().
void syslogtap_stop(void);

// Drops the lines kept so far.
void syslogtap_clear(void);

// on: each line is also written to standard error as "<PRIORITY> IDENT: TEXT", which is what death tests
// match. Works without syslogtap_start(), too.
void syslogtap_echo(int on);

// Number of lines kept.
size_t syslogtap_count(void);

// Calls the visitor with each kept line, oldest first. The texts live until the visitor returns. The visitor
// must not log. facility is the constant that openlog takes (LOG_USER, LOG_LOCAL0), priority 0 to 7.
typedef void (*syslogtap_visitor)(void* context, const char* ident, int facility, int priority,
                                  const char* text);
void syslogtap_visit(syslogtap_visitor visitor, void* context);
}

namespace syslogtap {

struct Line {
    std::string ident;
    int facility; // LOG_USER, LOG_LOCAL0, ...
    int priority; // 0 (LOG_EMERG) to 7 (LOG_DEBUG)
    std::string text;
};

// A copy of the lines kept so far, oldest first.
inline std::vector<Line> lines()
{
    std::vector<Line> all;
    syslogtap_visit(
        [](void* context, const char* ident, int facility, int priority, const char* text) {
            Line line = {ident, facility, priority, text};
            static_cast<std::vector<Line>*>(context)->push_back(line);
        },
        &all);
    return all;
}

// How many kept lines have exactly this priority and text.
inline size_t count(int priority, const std::string& text)
{
    size_t found = 0;
    for (const Line& line : lines()) {
        if (line.priority == priority && line.text == text) {
            ++found;
        }
    }
    return found;
}

} // namespace syslogtap

#endif
