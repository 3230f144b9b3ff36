// Frames that no sound bus sends, one row each.
#include "sim/faults.h"

#include "sim/terminal.h"
#include "sim/vbuf.h"

#include "runtime/config_client_api.h"
#include "runtime/config_vbuf.h"

#include <cstring>

namespace sim {

namespace {

const char Change[] = "config.change.ram";
const char Key[] = "ram.status.signal_strength"; // that the display is subscribed to
constexpr uint16_t StrayNumber = 0xfffe;
constexpr uint8_t NoType = 9;
const char Number[] = {1, 0, 0, 0};

std::string number()
{
    return std::string(Number, sizeof Number);
}

std::string signal(const std::string& name, const std::string& data)
{
    return Terminal::frame(CBUS_TYPE_SIGNAL, 0, 0, name, data);
}

// A sound change of the key, as a frame and as its data alone.
std::string records(uint32_t type, const std::string& value)
{
    VbufWriter writer;
    writer.add(type, Key, value);
    return std::string(writer.bytes());
}
std::string change(const std::string& data)
{
    return signal(Change, data);
}
std::string soundChange()
{
    return change(records(VX_CONFIG_TYPE_INT, number()));
}

// The frame with something else in its header.
template <typename Field> std::string with(Field cbus_header_t::*field, Field value, std::string frame)
{
    cbus_header_t header;
    memcpy(&header, frame.data(), sizeof header);
    header.*field = value;
    memcpy(&frame[0], &header, sizeof header);
    return frame;
}

// The change with something else in its record's header.
template <typename Field> std::string withRecord(Field config_vbuf_header_t::*field, Field value)
{
    std::string data = records(VX_CONFIG_TYPE_INT, number());
    config_vbuf_header_t header;
    memcpy(&header, data.data(), sizeof header);
    header.*field = value;
    memcpy(&data[0], &header, sizeof header);
    return change(data);
}

std::string unendedKey()
{
    std::string data = records(VX_CONFIG_TYPE_INT, number());
    size_t key = sizeof(config_vbuf_header_t);
    for (size_t at = key; at < data.size() - sizeof Number; at++)
        data[at] = data[at] ? data[at] : 'x';
    return change(data);
}

std::string unendedName()
{
    // 18 bytes with the NUL that the name then lacks.
    std::string frame = soundChange();
    frame[sizeof(cbus_header_t) + strlen(Change)] = 'x';
    return frame;
}

constexpr bool Ends = true;
constexpr bool GoesOn = false;

} // namespace

const std::vector<BrokenFrame>& brokenFrames()
{
    static const std::vector<BrokenFrame> frames = {
        {"type", "a message of a type that there is not",
         [] { return with(&cbus_header_t::type, NoType, soundChange()); }, GoesOn},
        {"name-long", "a name of 1,024 bytes, the first length that is too long",
         [] { return with<uint16_t>(&cbus_header_t::nlen, CBUS_NAME_LIMIT, soundChange()); }, GoesOn},
        {"name-open", "a name without its NUL", unendedName, GoesOn},
        {"name-empty", "a signal with an empty name", [] { return signal(std::string(1, '\0'), {}); },
         GoesOn},
        {"name-none", "a signal without a name", [] { return signal({}, {}); }, GoesOn},
        {"data-huge", "2 MiB of data, the first length that is too long",
         [] { return with<uint32_t>(&cbus_header_t::dlen, CBUS_DATA_LIMIT, soundChange()); }, GoesOn},
        {"shifted", "a byte too many between two messages", [] { return '\xff' + soundChange(); }, GoesOn},
        {"cut-header", "the connection ends inside a header", [] { return soundChange().substr(0, 7); },
         Ends},
        {"cut-data", "the connection ends inside the data",
         [] { return soundChange().substr(0, soundChange().size() - 6); }, Ends},
        {"reply", "a reply that nobody asked for",
         [] { return Terminal::frame(CBUS_TYPE_REPLY, 0, StrayNumber, Change, {}); }, GoesOn},
        {"request", "a request to the display, which serves nothing",
         [] { return Terminal::frame(CBUS_TYPE_REQUEST, 0, 0, "config.read.cfg.language", {}); }, GoesOn},
        {"change-empty", "a change of nothing", [] { return change({}); }, GoesOn},
        {"change-short", "a change that is shorter than a record's header",
         [] { return change(std::string(8, '\0')); }, GoesOn},
        {"change-cut", "a change that ends inside its value",
         [] {
             std::string data = records(VX_CONFIG_TYPE_INT, number());
             return change(data.substr(0, data.size() - 2));
         },
         GoesOn},
        {"key-open", "a change whose key has no NUL", unendedKey, GoesOn},
        {"key-long", "a change whose key is said to be longer than the message",
         [] { return withRecord<uint32_t>(&config_vbuf_header_t::name_area, 4096); }, GoesOn},
        {"key-odd", "a change whose key takes a number of bytes that 4 does not divide",
         [] { return withRecord<uint32_t>(&config_vbuf_header_t::name_area, 27); }, GoesOn},
        {"value-long", "a change whose value is said to have 4 GiB",
         [] { return withRecord<uint32_t>(&config_vbuf_header_t::data_length, UINT32_MAX); }, GoesOn},
        {"value-type", "a change to a type that there is not",
         [] { return withRecord<uint8_t>(&config_vbuf_header_t::type, NoType); }, GoesOn},
        {"int-short", "a change to a number of two bytes",
         [] { return change(records(VX_CONFIG_TYPE_INT, number().substr(0, 2))); }, GoesOn},
        {"int-as-text", "a number's key changes to a text",
         [] { return change(records(VX_CONFIG_TYPE_STRING, std::string("12\0", 3))); }, GoesOn},
        {"text-open", "a change to a text without its NUL",
         [] { return change(records(VX_CONFIG_TYPE_STRING, "12")); }, GoesOn},
        {"validator", "a question to a validator that there is not",
         [] { return signal("config.clnt_validate.nobody", {}); }, GoesOn},
        {"validator-none", "a question to a validator without a name",
         [] { return signal("config.clnt_validate.", {}); }, GoesOn},
    };
    return frames;
}

} // namespace sim
