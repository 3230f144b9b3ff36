// Records of the database as a change handler gets them, put together by hand. They live as long as the
// object.
#ifndef LUMENPANEL_TESTS_SUPPORT_RECORDS_H
#define LUMENPANEL_TESTS_SUPPORT_RECORDS_H

#include "runtime/config_client_api.h"

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

class Records {
public:
    Records() = default;
    Records(Records&&) = default; // a copy's records would point into the original
    Records(const Records&) = delete;
    Records& operator=(const Records&) = delete;

    Records& number(const std::string& key, int32_t value)
    {
        return raw(key, VX_CONFIG_TYPE_INT,
                   std::string(reinterpret_cast<const char*>(&value), sizeof(value)));
    }
    Records& text(const std::string& key, const std::string& value)
    {
        return raw(key, VX_CONFIG_TYPE_STRING, value + '\0');
    }
    Records& deleted(const std::string& key)
    {
        raw(key, VX_CONFIG_TYPE_NONE, std::string());
        m_list.back().data = nullptr;
        return *this;
    }
    // Any bytes under any type.
    Records& raw(const std::string& key, uint32_t type, const std::string& bytes)
    {
        m_keys.push_back(key);
        m_values.push_back(bytes);
        config_data_t record = {};
        record.type = type;
        record.name = m_keys.back().c_str();
        record.data = &m_values.back()[0];
        record.size = record.length = static_cast<uint32_t>(bytes.size());
        m_list.push_back(record);
        return *this;
    }
    unsigned int count() const { return static_cast<unsigned int>(m_list.size()); }
    const config_data_t* data() const { return m_list.data(); }

private:
    std::deque<std::string> m_keys; // deques, so that what the records point to stays where it is
    std::deque<std::string> m_values;
    std::vector<config_data_t> m_list;
};

#endif
