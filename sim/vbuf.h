// Value buffers for the server's side: reading what a client sent without trusting it, and building replies.
// The layout is that of runtime/config_vbuf.h.
//
// Pure functions on the caller's memory: any thread.
#ifndef SIM_VBUF_H
#define SIM_VBUF_H

#include "sim/value.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

struct VbufEntry {
    uint32_t type = 0; // as sent, not checked
    std::string key;
    std::string_view value; // leads into the buffer
    int32_t status = 0;
};

// Reads all entries. False if any is malformed; what stands before it is then in *entries. The bytes must be
// the caller's own and writable, and start at a multiple of 4: a text that lacks its NUL gets it in place.
bool readVbuf(std::string_view bytes, std::vector<VbufEntry>* entries);

// Grows a buffer entry by entry.
class VbufWriter {
public:
    VbufWriter() = default;
    ~VbufWriter();
    VbufWriter(const VbufWriter&) = delete;
    VbufWriter& operator=(const VbufWriter&) = delete;

    void add(uint32_t type, const std::string& key, std::string_view value, int32_t status = 0);
    std::string_view bytes() const { return {reinterpret_cast<const char*>(buffer), length}; }
    size_t size() const { return length; }
    // Bytes that an entry takes.
    static size_t entrySize(const std::string& key, size_t valueLength);

private:
    uint8_t* buffer = nullptr;
    uint32_t length = 0;
};

} // namespace sim

#endif
