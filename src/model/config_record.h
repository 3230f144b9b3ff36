// Records of the database, as change handlers and readers hand them on: their values, with every bound
// looked at. Any thread; nothing is kept of a record.
#ifndef LUMENPANEL_MODEL_CONFIG_RECORD_H
#define LUMENPANEL_MODEL_CONFIG_RECORD_H

#include "runtime/config_client_api.h"

#include <QString>

#include <cstring>

// A record without a value means that its key was deleted.
inline bool recordHasValue(const config_data_t& record)
{
    return record.data != nullptr;
}

// Whether the value is an int; one of a length other than 4 is none.
inline bool recordIsInt(const config_data_t& record)
{
    return record.type == VX_CONFIG_TYPE_INT && record.data && record.length == sizeof(int);
}

// The value of a record that is an int.
inline int recordInt(const config_data_t& record)
{
    int value;
    std::memcpy(&value, record.data, sizeof(value));
    return value;
}

// The text of a string record, up to its NUL or its end; empty without a value. Not decoded.
inline QByteArray recordBytes(const config_data_t& record)
{
    if (!record.data)
        return QByteArray();
    const char* const text = static_cast<const char*>(record.data);
    return QByteArray(text, static_cast<int>(strnlen(text, record.length)));
}

inline QString recordText(const config_data_t& record)
{
    return QString::fromUtf8(recordBytes(record));
}

#endif
