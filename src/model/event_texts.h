// The display text of each event id, and its name for the log: one table. Constant; any thread.
#ifndef LUMENPANEL_MODEL_EVENT_TEXTS_H
#define LUMENPANEL_MODEL_EVENT_TEXTS_H

// One event. source is what is translated in the given context: for most rows a key, whose words stand
// in the translation file in English as well; for the failure causes the English sentence itself. Where
// context is null the text is empty and nothing is translated.
struct EventText {
    unsigned int id;
    const char* name; // for the log; a failure cause bears its sentence
    const char* context;
    const char* source;
};

const int NUMBER_OF_EVENT_TEXTS = 215;
// So many texts besides these are learned from the alert log, which lists some hundreds of events at most,
// before those of events that are gone are forgotten.
const int LEARNED_EVENT_TEXTS_MAX = 1000;
extern const EventText EVENT_TEXTS[NUMBER_OF_EVENT_TEXTS];

// The row of an id, null if it has none. A linear walk: for the log and for single looks.
const EventText* findEventText(unsigned int eventId);

#endif
