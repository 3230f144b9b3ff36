// The events by which the model drives the flow of the screens. Travels in a signal; any thread.
#ifndef LUMENPANEL_MODEL_STATE_EVENT_H
#define LUMENPANEL_MODEL_STATE_EVENT_H

#include <QMetaType>

enum STATE_EVENT : int {
    STATE_EVENT_NOT_POINTED = 3,
    STATE_EVENT_POINTING = 4,
    STATE_EVENT_POINTED = 5,
    STATE_EVENT_SIM_STATUS_CHANGED = 11
};
Q_DECLARE_METATYPE(STATE_EVENT)

#endif
