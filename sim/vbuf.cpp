// Value buffers of the server: see vbuf.h.
#include "sim/vbuf.h"

#include "runtime/cbus_frame.h"
#include "runtime/config_vbuf.h"

#include <cstdlib>

namespace sim {

bool readVbuf(std::string_view bytes, std::vector<VbufEntry>* entries)
{
    uint32_t length = static_cast<uint32_t>(bytes.size());
    void* buffer = const_cast<char*>(bytes.data());
    for (uint32_t at = 0; at < length;) {
        config_vbuf_entry_t found;
        if (!config_vbuf_entry_at(buffer, length, at, &found))
            return false;
        VbufEntry entry;
        entry.type = found.type;
        entry.key = found.key;
        if (found.length)
            entry.value = {static_cast<const char*>(found.value), found.length};
        entry.status = found.status;
        entries->push_back(std::move(entry));
        at += found.distance;
    }
    return true;
}

VbufWriter::~VbufWriter()
{
    free(buffer);
}

void VbufWriter::add(uint32_t type, const std::string& key, std::string_view value, int32_t status)
{
    length =
        config_vbuf_add(&buffer, length, nullptr, type, key.c_str(), value.empty() ? nullptr : value.data(),
                        static_cast<uint32_t>(value.size()), static_cast<int8_t>(status));
}

size_t VbufWriter::entrySize(const std::string& key, size_t valueLength)
{
    return sizeof(config_vbuf_header_t) + cbus_padded(static_cast<uint32_t>(key.size() + 1)) +
           cbus_padded(static_cast<uint32_t>(valueLength));
}

} // namespace sim
