// What the bus carries, message by message, and the text form of a message: one line that people can read and
// that a recording is made of.
//
//     from 1 request config.read.cfg.language ask string 100
//     to 1 reply config.read.cfg.language value 0 int 1
//     all 0 signal config.change.ram records ram.status.gps = int 2; ram.status.bars = none
//
// First whose it is: "from" a client; "to" a client; "all" for a signal to everyone who wants it, with the
// client that caused it, or 0 for the terminal itself. Then type, name (quoted if it is not one plain word),
// and the data in one of the forms of dataForms in traffic_data.cpp, or as "hex 00 ff". Bytes that are no
// message at all are told as "to 1 bytes hex 00 ff".
//
// Plain functions without state: any thread.
#ifndef SIM_TRAFFIC_H
#define SIM_TRAFFIC_H

#include "sim/database.h"

#include "runtime/cbus_frame.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

enum class Way : uint8_t { From, To, All };

// One message. The views are valid during the call of a listener only.
struct Traffic {
    Way way = Way::From;
    uint64_t client = 0;    // number of the connection; for All: of the client that caused it, 0: nobody's
    cbus_header_t header{}; // of All: no number, since each client gets its own. type 0: bytes, no message
    std::string_view name;  // without its NUL
    std::string_view data;
};

// A message that owns its texts.
struct TrafficRecord {
    Way way = Way::From;
    uint64_t client = 0;
    uint8_t type = 0;
    uint8_t src = 0;
    uint16_t seqn = 0;
    std::string name;
    std::string data;
};

// "from 1 signal NAME DATA", cut to so many bytes, "..." included.
std::string describe(const Traffic& traffic, size_t limit);

// The data alone. Exact: decodeData makes the very same bytes of it; what no other form could give back is in
// hex. Otherwise it is the form that suits the message, even where bytes that mean nothing differ.
std::string describeData(uint8_t type, std::string_view name, std::string_view data, bool exact);
// False with *error if the text is no data.
bool decodeData(const std::string& text, std::string* data, std::string* error);

// The words "from 1 signal 7.12 NAME DATA": src and number stand behind the type. Exact.
std::string encodeTraffic(const Traffic& traffic);
bool decodeTraffic(const std::string& line, TrafficRecord* record, std::string* error);

// The keys that a message is about: of its name, and of its records.
std::vector<std::string> keysOf(uint8_t type, std::string_view name, std::string_view data);
// The records of a change, as writes; false if they are malformed.
bool readRecords(std::string_view data, std::vector<Write>* writes);

} // namespace sim

#endif
