// Values as people write them: the file of initial values, and the short form of a command line.
//
// The file has one key a line, "key = type value", in any order; blank lines and lines that begin with # are
// skipped:
//
//     ram.status.signal_strength = int 456
//     cfg.interfaces.wlan.ssid   = string "Field office"      # \" \\ \n \r \t \xHH inside
//     ram.some.bytes             = blob 00 ff 1a
//
// Plain functions without state; any thread.
#ifndef SIM_INITIAL_VALUES_H
#define SIM_INITIAL_VALUES_H

#include "sim/database.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace sim {

// Reads a file. On failure *error is "name:line: what is wrong" (or "name: why it cannot be read") and the
// result is false; *values then holds nothing.
bool loadInitialValues(const std::string& fileName, std::vector<Write>* values, std::string* error);
// The same from a stream; the name is only for the messages.
bool parseInitialValues(std::istream& in, const std::string& name, std::vector<Write>* values,
                        std::string* error);

// "int:5", "string:text as it stands", "blob:00ff". On failure *error says why and the result is false.
bool parseShortValue(const std::string& text, Value* value, std::string* error);

// A value in the form of the file: int 5, string "text", blob 00 ff.
std::string describeValue(const Value& value);
// The way back. On failure *error says why and the result is false.
bool parseDescribedValue(const std::string& text, Value* value, std::string* error);

// The file of the source tree, for a terminal in normal operation.
std::string defaultValuesFile();

} // namespace sim

#endif
