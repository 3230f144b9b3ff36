// Events and alerts, as the model keeps them and as they travel in signals. Plain values; any thread.
#ifndef LUMENPANEL_MODEL_EVENT_H
#define LUMENPANEL_MODEL_EVENT_H

#include <QMetaType>

#include <cstdint>
#include <cstring>
#include <tuple>

// Priority of an event, ascending.
enum EVENT_SEVERITY_ENUM : int {
    EVENT_INFO = 0,
    EVENT_WARNING = 1,
    EVENT_ERROR = 2,
    EVENT_FATAL = 3,
    EVENT_SCREEN_SAVER = 4
};

// State of an event that the display raises itself.
const int EVENT_STATE_LOCAL = 2;

// Size of an event's text with its NUL, and the longest text of an event of the display's own.
const int EVENT_SHORTTEXT_SIZE = 64;
const int EVENT_LOCAL_TEXT_MAX = 59;

struct fmmi_evt_t_type {
    uint32_t identifier = 0; // event_ids.h
    uint32_t sub_id = 0;     // from the alert log; 0 for the display's own events
    int severity = EVENT_INFO;
    int state = 0;
    char shorttext[EVENT_SHORTTEXT_SIZE] = {}; // ASCII, always NUL-terminated
    int64_t time = 0;                          // milliseconds since 1 January 1970
};
typedef fmmi_evt_t_type fmmi_evt_t;
Q_DECLARE_METATYPE(fmmi_evt_t)

// Two events are the same when all but their time agrees.
inline bool operator==(const fmmi_evt_t& a, const fmmi_evt_t& b)
{
    return a.identifier == b.identifier && a.sub_id == b.sub_id && a.severity == b.severity &&
           a.state == b.state && std::strcmp(a.shorttext, b.shorttext) == 0;
}
inline bool operator!=(const fmmi_evt_t& a, const fmmi_evt_t& b)
{
    return !(a == b);
}

// Some order of events, in which those that are the same, and no others, are equivalent.
struct EventOrder {
    typedef std::tuple<uint32_t, uint32_t, int, int> Numbers;

    static Numbers numbersOf(const fmmi_evt_t& event)
    {
        return Numbers(event.identifier, event.sub_id, event.severity, event.state);
    }
    bool operator()(const fmmi_evt_t* a, const fmmi_evt_t* b) const
    {
        const Numbers left = numbersOf(*a);
        const Numbers right = numbersOf(*b);
        return left != right ? left < right : std::strcmp(a->shorttext, b->shorttext) < 0;
    }
};

// An alert while it is put together from the records ram.log.alert.<index>.<field>.
struct database_evt_type {
    int index = 0;
    uint32_t entry = 0;
    fmmi_evt_t event;
};

#endif
