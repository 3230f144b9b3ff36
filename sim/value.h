// A value of the configuration database: a type and its bytes, as they travel on the bus.
//
// A plain value without identity; copy it freely, on any thread.
#ifndef SIM_VALUE_H
#define SIM_VALUE_H

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace sim {

// The numbers are those of the bus (runtime/config_client_api.h).
enum class Type : uint8_t { None = 0, Blob = 1, String = 2, Int = 3 };

struct Value {
    Type type = Type::None;
    std::string bytes; // String: with its NUL; Int: 4 bytes in host order; None: empty

    static Value integer(int32_t number)
    {
        return {Type::Int, std::string(reinterpret_cast<const char*>(&number), sizeof number)};
    }
    static Value text(std::string_view characters)
    {
        Value value{Type::String, std::string(characters)};
        value.bytes.push_back('\0');
        return value;
    }
    static Value blob(std::string_view content) { return {Type::Blob, std::string(content)}; }

    bool isInt() const { return type == Type::Int && bytes.size() == sizeof(int32_t); }
    // The number of an Int, 0 for anything else.
    int32_t toInt() const
    {
        int32_t number = 0;
        if (isInt())
            memcpy(&number, bytes.data(), sizeof number);
        return number;
    }
    // The characters of a String up to its first NUL; the bytes of a Blob; empty for anything else.
    std::string toText() const
    {
        if (type == Type::String)
            return bytes.substr(0, bytes.find('\0'));
        return type == Type::Blob ? bytes : std::string();
    }

    bool operator==(const Value& other) const { return type == other.type && bytes == other.bytes; }
    bool operator!=(const Value& other) const { return !(*this == other); }
};

} // namespace sim

#endif
