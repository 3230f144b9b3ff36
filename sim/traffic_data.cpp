// The data of messages as text and back: one form for each layout, and which message has which. The lines
// around them are traffic.cpp's.
#include "sim/traffic.h"

#include "sim/initial_values.h"
#include "sim/traffic_words.h"
#include "sim/vbuf.h"

#include "runtime/config_client_api.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace sim {

namespace {

bool startsWith(std::string_view text, std::string_view prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

template <typename T> std::string bytesOf(const T& object)
{
    return std::string(reinterpret_cast<const char*>(&object), sizeof object);
}

template <typename T> bool takeWord(std::string_view* data, T* word)
{
    if (data->size() < sizeof *word)
        return false;
    memcpy(word, data->data(), sizeof *word);
    data->remove_prefix(sizeof *word);
    return true;
}

// --- Values

const char* const TypeNames[] = {"none", "blob", "string", "int"};
const char EmptyPrefix[] = "no "; // of a type without bytes: no int

std::optional<std::string> encodeValue(uint32_t type, std::string_view bytes)
{
    if (type >= std::size(TypeNames))
        return std::nullopt;
    if (bytes.empty())
        return type == VX_CONFIG_TYPE_NONE ? std::string(TypeNames[type])
                                           : std::string(EmptyPrefix) + TypeNames[type];
    Value value{static_cast<Type>(type), std::string(bytes)};
    std::string text = describeValue(value);
    Value again;
    std::string error;
    if (!parseDescribedValue(text, &again, &error) || again != value)
        return std::nullopt;
    return text;
}

bool decodeValue(const std::string& text, uint32_t* type, std::string* bytes, std::string* error)
{
    for (uint32_t at = 0; at < std::size(TypeNames); at++) {
        std::string empty =
            at == VX_CONFIG_TYPE_NONE ? std::string(TypeNames[at]) : std::string(EmptyPrefix) + TypeNames[at];
        if (text == empty) {
            *type = at;
            bytes->clear();
            return true;
        }
    }
    Value value;
    if (!parseDescribedValue(text, &value, error))
        return false;
    *type = static_cast<uint32_t>(value.type);
    *bytes = value.bytes;
    return true;
}

// --- Forms of the data, each with its word in front. An encoder gives nullopt for what the form has no words
// for; it may pass over bytes that mean nothing.

using Encoded = std::optional<std::string>;

Encoded encodeText(std::string_view data)
{
    Encoded text = encodeValue(VX_CONFIG_TYPE_STRING, data);
    return text && startsWith(*text, "string ") ? Encoded(text->substr(strlen("string "))) : std::nullopt;
}

bool decodeText(std::string text, std::string* data, std::string* error)
{
    Value value;
    if (!parseDescribedValue("string " + text, &value, error))
        return false;
    *data = value.bytes;
    return true;
}

// The layout of read and write: status, type, length, value.
Encoded encodeValueAfter(std::string_view data, int32_t* status)
{
    uint32_t type;
    uint32_t length;
    if (!takeWord(&data, status) || !takeWord(&data, &type) || !takeWord(&data, &length) ||
        data.size() != length)
        return std::nullopt;
    return encodeValue(type, data);
}

bool decodeValueAfter(int32_t status, const std::string& text, std::string* data, std::string* error)
{
    uint32_t type;
    std::string bytes;
    if (!decodeValue(text, &type, &bytes, error))
        return false;
    *data = bytesOf(status) + bytesOf(type) + bytesOf(static_cast<uint32_t>(bytes.size())) + bytes;
    return true;
}

Encoded encodeValueForm(std::string_view data)
{
    int32_t status;
    Encoded value = encodeValueAfter(data, &status);
    return value ? Encoded(std::to_string(status) + Blank + *value) : std::nullopt;
}

bool decodeValueForm(std::string text, std::string* data, std::string* error)
{
    int32_t status;
    std::string word = firstWord(&text);
    if (!number(word, &status)) {
        *error = "not a status: " + word;
        return false;
    }
    return decodeValueAfter(status, text, data, error);
}

constexpr int32_t NoStatus = -1; // where a request has one

Encoded encodeWrite(std::string_view data)
{
    int32_t status;
    Encoded value = encodeValueAfter(data, &status);
    return value && status == NoStatus ? value : std::nullopt;
}

bool decodeWrite(std::string text, std::string* data, std::string* error)
{
    return decodeValueAfter(NoStatus, text, data, error);
}

Encoded encodeAsk(std::string_view data)
{
    int32_t status;
    uint32_t type;
    uint32_t size;
    if (!takeWord(&data, &status) || !takeWord(&data, &type) || !takeWord(&data, &size) || !data.empty() ||
        status != NoStatus || type >= std::size(TypeNames))
        return std::nullopt;
    return std::string(TypeNames[type]) + Blank + std::to_string(size);
}

bool decodeAsk(std::string text, std::string* data, std::string* error)
{
    std::string name = firstWord(&text);
    auto type = std::find(std::begin(TypeNames), std::end(TypeNames), name);
    uint32_t size;
    if (type == std::end(TypeNames) || !number(text, &size)) {
        *error = "not a type and a size: " + name + Blank + text;
        return false;
    }
    *data = bytesOf(NoStatus) + bytesOf(static_cast<uint32_t>(type - TypeNames)) + bytesOf(size);
    return true;
}

Encoded encodeStatus(std::string_view data)
{
    int32_t status;
    uint32_t value;
    if (!takeWord(&data, &status))
        return std::nullopt;
    if (data.empty())
        return std::to_string(status);
    if (!takeWord(&data, &value) || !data.empty())
        return std::nullopt;
    return std::to_string(status) + Blank + std::to_string(value);
}

bool decodeStatus(std::string text, std::string* data, std::string* error)
{
    std::string word = firstWord(&text);
    int32_t status;
    uint32_t value;
    if (!number(word, &status) || (!text.empty() && !number(text, &value))) {
        *error = "not a status: " + word + (text.empty() ? "" : " ") + text;
        return false;
    }
    *data = bytesOf(status) + (text.empty() ? std::string() : bytesOf(value));
    return true;
}

// --- Records: KEY = VALUE; KEY status -5 = VALUE

const char RecordEnd[] = "; ";
const char StatusWord[] = " status ";
const char Equals[] = " = ";

// readVbuf wants memory of its own that starts at a multiple of 4.
bool readCopy(std::string_view data, std::vector<uint32_t>* copy, std::vector<VbufEntry>* entries)
{
    copy->resize((data.size() + 3) / 4);
    if (!data.empty())
        memcpy(copy->data(), data.data(), data.size());
    return readVbuf({reinterpret_cast<const char*>(copy->data()), data.size()}, entries);
}

Encoded encodeRecords(std::string_view data)
{
    std::vector<uint32_t> copy;
    std::vector<VbufEntry> entries;
    if (!readCopy(data, &copy, &entries) || entries.empty())
        return std::nullopt;
    std::string text;
    for (const VbufEntry& entry : entries) {
        Encoded value = encodeValue(entry.type, entry.value);
        if (!value || !isPlain(entry.key))
            return std::nullopt;
        text += (text.empty() ? "" : RecordEnd) + entry.key;
        if (entry.status != 0)
            text += StatusWord + std::to_string(entry.status);
        text += Equals + *value;
    }
    return text;
}

// Where the record that begins at the position ends: a text may hold anything.
size_t endOfRecord(const std::string& text, size_t at)
{
    bool quoted = false;
    for (; at < text.size(); at++) {
        if (quoted && text[at] == '\\')
            at++;
        else if (text[at] == '"')
            quoted = !quoted;
        else if (!quoted && text.compare(at, strlen(RecordEnd), RecordEnd) == 0)
            return at;
    }
    return text.size();
}

bool decodeRecord(const std::string& text, VbufWriter* records, std::string* error)
{
    size_t equals = text.find(Equals);
    if (equals == std::string::npos) {
        *error = "a record is written \"KEY = VALUE\", not " + text;
        return false;
    }
    std::string key = text.substr(0, equals);
    int8_t status = 0;
    size_t word = key.find(StatusWord);
    if (word != std::string::npos) {
        if (!number(key.substr(word + strlen(StatusWord)), &status)) {
            *error = "not a status: " + key;
            return false;
        }
        key.resize(word);
    }
    uint32_t type;
    std::string bytes;
    if (!decodeValue(text.substr(equals + strlen(Equals)), &type, &bytes, error))
        return false;
    records->add(type, key, bytes, status);
    return true;
}

bool decodeRecords(std::string text, std::string* data, std::string* error)
{
    VbufWriter records;
    for (size_t at = 0; at < text.size();) {
        size_t end = endOfRecord(text, at);
        if (!decodeRecord(text.substr(at, end - at), &records, error))
            return false;
        at = end + strlen(RecordEnd);
    }
    *data = records.bytes();
    return true;
}

// The answer to readm: a word that means nothing, the number of records, and the records.
Encoded encodeList(std::string_view data)
{
    int32_t unused;
    uint32_t count;
    if (!takeWord(&data, &unused) || !takeWord(&data, &count))
        return std::nullopt;
    Encoded records = encodeRecords(data);
    return records ? Encoded(std::to_string(count) + Blank + *records) : std::nullopt;
}

bool decodeList(std::string text, std::string* data, std::string* error)
{
    uint32_t count;
    std::string word = firstWord(&text);
    if (!number(word, &count)) {
        *error = "not a number of records: " + word;
        return false;
    }
    std::string records;
    if (!decodeRecords(text, &records, error))
        return false;
    *data = bytesOf(static_cast<int32_t>(0)) + bytesOf(count) + records;
    return true;
}

// --- Bytes

Encoded encodeHex(std::string_view data)
{
    static const char digits[] = "0123456789abcdef";
    std::string text;
    for (char character : data) {
        unsigned char byte = static_cast<unsigned char>(character);
        if (!text.empty())
            text += Blank;
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

bool decodeHex(std::string text, std::string* data, std::string* error)
{
    Value value;
    if (!parseDescribedValue("blob " + text, &value, error))
        return false;
    *data = value.bytes;
    return true;
}

struct DataForm {
    const char* word;
    Encoded (*encode)(std::string_view data);
    bool (*decode)(std::string text, std::string* data, std::string* error);
};
const DataForm dataForms[] = {
    {"text", encodeText, decodeText},            // "..." with its NUL
    {"ask", encodeAsk, decodeAsk},               // TYPE SIZE: what a read asks for
    {"value", encodeValueForm, decodeValueForm}, // STATUS VALUE: what it gets
    {"write", encodeWrite, decodeWrite},         // VALUE
    {"records", encodeRecords, decodeRecords},   // KEY = VALUE; ...
    {"list", encodeList, decodeList},            // COUNT KEY = VALUE; ...
    {"status", encodeStatus, decodeStatus},      // STATUS [NUMBER]
    {"hex", encodeHex, decodeHex},               // 00 ff ...
};

// Which form a message's data have: the first row whose prefix and type fit; a text otherwise.
struct NameForm {
    const char* prefix;
    uint8_t type;
    const char* word;
};
const NameForm nameForms[] = {
    {"config.read.", CBUS_TYPE_REQUEST, "ask"},
    {"config.read.", CBUS_TYPE_REPLY, "value"},
    {"config.write.", CBUS_TYPE_SIGNAL, "write"},
    {"config.readv", CBUS_TYPE_REQUEST, "records"},
    {"config.readv", CBUS_TYPE_REPLY, "records"},
    {"config.writev", CBUS_TYPE_SIGNAL, "records"},
    {"config.modifyv", CBUS_TYPE_REQUEST, "records"},
    {"config.modifyv", CBUS_TYPE_REPLY, "records"},
    {"config.readm.", CBUS_TYPE_REPLY, "list"},
    {"config.stat.", CBUS_TYPE_REQUEST, "status"},
    {"config.stat.", CBUS_TYPE_REPLY, "status"},
    {"config.factory_reset", CBUS_TYPE_REQUEST, "status"},
    {"config.factory_reset", CBUS_TYPE_REPLY, "status"},
    {"config.change.", CBUS_TYPE_SIGNAL, "records"},
    {"config.clnt_validate.", CBUS_TYPE_SIGNAL, "records"},
    {"config.validate.rsp", CBUS_TYPE_SIGNAL, "records"},
};

const DataForm& formNamed(std::string_view word)
{
    auto found = std::find_if(std::begin(dataForms), std::end(dataForms),
                              [&](const DataForm& form) { return word == form.word; });
    return found == std::end(dataForms) ? *std::prev(found) : *found;
}

const DataForm& formOf(uint8_t type, std::string_view name)
{
    for (const NameForm& row : nameForms) {
        if (row.type == type && startsWith(name, row.prefix))
            return formNamed(row.word);
    }
    return formNamed("text");
}

} // namespace

// --- All forms

std::string describeData(uint8_t type, std::string_view name, std::string_view data, bool exact)
{
    if (data.empty())
        return std::string();
    const DataForm& suited = type == 0 ? formNamed("hex") : formOf(type, name);
    // A message may hold something else than its name says.
    for (const DataForm* form : {&suited, &formNamed("text"), &formNamed("hex")}) {
        Encoded text = form->encode(data);
        if (!text)
            continue;
        std::string described = std::string(form->word) + Blank + *text;
        std::string again;
        std::string error;
        if (!exact || (decodeData(described, &again, &error) && again == data))
            return described;
    }
    return std::string();
}

bool decodeData(const std::string& text, std::string* data, std::string* error)
{
    data->clear();
    if (text.empty())
        return true;
    std::string rest = text;
    std::string word = firstWord(&rest);
    for (const DataForm& form : dataForms) {
        if (word == form.word)
            return form.decode(rest, data, error);
    }
    *error = "unknown form of data \"" + word + "\"";
    return false;
}

// --- Keys

std::vector<std::string> keysOf(uint8_t type, std::string_view name, std::string_view data)
{
    static const char* const verbsWithKey[] = {"config.read.",  "config.write.", "config.stat.",
                                               "config.readm.", "config.delm.",  "config.sync."};
    std::vector<std::string> keys;
    for (const char* verb : verbsWithKey) {
        if (startsWith(name, verb))
            keys.emplace_back(name.substr(strlen(verb)));
    }
    const DataForm& form = formOf(type, name);
    if (form.encode == encodeList)
        data.remove_prefix(std::min<size_t>(data.size(), 2 * sizeof(uint32_t)));
    if (form.encode != encodeList && form.encode != encodeRecords)
        return keys;
    std::vector<uint32_t> copy;
    std::vector<VbufEntry> entries;
    readCopy(data, &copy, &entries);
    for (const VbufEntry& entry : entries)
        keys.push_back(entry.key);
    return keys;
}

bool readRecords(std::string_view data, std::vector<Write>* writes)
{
    std::vector<uint32_t> copy;
    std::vector<VbufEntry> entries;
    if (!readCopy(data, &copy, &entries))
        return false;
    for (const VbufEntry& entry : entries)
        writes->push_back(
            {entry.key,
             {static_cast<Type>(std::min<uint32_t>(entry.type, UINT8_MAX)), std::string(entry.value)}});
    return true;
}

} // namespace sim
