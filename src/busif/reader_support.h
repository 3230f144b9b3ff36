// What the value readers share: one key read, with the log lines that belong to it.
//
// `function` is the reader's name, which its log lines begin with. All log at debug level. Bus thread only;
// all block in a database request.
#ifndef LUMENPANEL_BUSIF_READER_SUPPORT_H
#define LUMENPANEL_BUSIF_READER_SUPPORT_H

#include <QByteArray>
#include <QString>

extern const char* const NOT_IN_DATABASE; // " not in database???"

void logReaderStart(const char* function);            // "readX(): Start of function"
void logReaderValue(const char* function, int value); // "readX(): value=5"

// Reads an int key. Where that fails, logs function, `introduction`, key and `missing` and returns the
// fallback.
int readKeyOr(int fallback, const char* function, const QByteArray& key,
              const char* missing = NOT_IN_DATABASE, const char* introduction = "(): ");

// A whole reader of one int key up to its setter: start, read as above, value.
int readSingleInt(const char* function, const char* key, int fallback, const char* missing = NOT_IN_DATABASE);

// The same through the model, which waits for a bus that isn't there yet; -1 if the key is missing. With a
// null `missing` that is not logged, since the reader has a line of its own for it.
int askSingleInt(const char* function, const char* key, const char* missing = NOT_IN_DATABASE);

// The same for a text; empty if the key is missing.
QString askSingleText(const char* function, const char* key);

// A value that must be 0 or 1. Anything else is logged as illegal and counts as false.
bool truthOf(const char* function, int value);

#endif
