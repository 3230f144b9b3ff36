// The procedure that starts a bundle. Bus thread only.
//
// The tables of what is read and written stand in bundle_records.cpp. It keeps no state between calls; all
// its arrays are on the stack, and its one heap block is the list of the bundle's connections. Logs go to
// syslog directly, at priority 6 for progress and 3 for errors.
#include "busif/bundle_activation.h"

#include <alloca.h>
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <syslog.h>
#include <time.h>

#include "busif/bundle_records.h"
#include "runtime/config_client_api.h"
#include "runtime/vx_log.h"
#include "runtime/vx_string.h"

namespace {

enum { MAX_CONNECTIONS = 11, MAX_FILTERS = 8, UNUSED = -1, APN_USER_DEFINED = 2 };
const int ACTIVATION_DELAY_MS = 200;
const int KEY_SIZE = 128;

// One connection of the bundle, by its number under .connections.
struct ConnectionInPackage {
    int connection_index;
    int filterArray[MAX_FILTERS]; // numbers of stored filters
};

// What one start knows while it runs.
struct Start {
    int bundleNumber;
    int failures; // sum of the reads' results, 0 or below
    PdpData pdp;
    ConnectionInPackage connectionsInPackage[MAX_CONNECTIONS];
    FilterData* filterData; // one for each filter of the bundle
    int filtersDone;        // also the precedence of the last one
    PrecItems precItems;
};

void sleepMs(int ms)
{
    vx_slog(LOG_INFO, "sleepMs(%d)", ms);
    struct timespec duration;
    duration.tv_sec = ms / 1000;
    duration.tv_nsec = (ms % 1000) * 1000000L;
    nanosleep(&duration, nullptr);
}

int config_read_int_with_syslog_entry(const char* key, int* value)
{
    if (config_read_int(key, value) != 0) {
        *value = 0; // what is read next goes on with this; the start fails anyway
        vx_slog(LOG_ERR, "start_bundle: Cound not read %s", key);
        return -1;
    }
    vx_slog(LOG_INFO, "start_bundle: successfully read %s with value=%d", key, *value);
    return 0;
}

int config_read_string_with_syslog_entry(const char* key, char* value)
{
    if (config_read_string(key, value, BUNDLE_TEXT_SIZE) != 0) {
        value[0] = '\0';
        vx_slog(LOG_ERR, "start_bundle: Cound not read %s", key);
        return -1;
    }
    vx_slog(LOG_INFO, "start_bundle: successfully read %s with value=%s", key, value);
    return 0;
}

// Both add to the failures. The key is family, number, a dot, and word.
void readNumber(Start& start, const char* family, int number, const char* word, int* value)
{
    char key[KEY_SIZE];
    snprintf(key, sizeof key, "%s%d.%s", family, number, word);
    start.failures += config_read_int_with_syslog_entry(key, value);
}

void readText(Start& start, const char* family, int number, const char* word, char* value)
{
    char key[KEY_SIZE];
    snprintf(key, sizeof key, "%s%d.%s", family, number, word);
    start.failures += config_read_string_with_syslog_entry(key, value);
}

void clear(Start& start, int bundleNumber)
{
    memset(&start, 0, sizeof start);
    start.bundleNumber = bundleNumber;
    for (ConnectionInPackage& connection : start.connectionsInPackage) {
        connection.connection_index = UNUSED;
        for (int& filter : connection.filterArray)
            filter = UNUSED;
    }
}

void readBundle(Start& start)
{
    const char* const family = "cfg.admin.bundle.";
    readNumber(start, family, start.bundleNumber, "header_comp", &start.pdp.header_comp);
    readNumber(start, family, start.bundleNumber, "apn_type", &start.pdp.apn_type);
    if (start.pdp.apn_type == APN_USER_DEFINED)
        readText(start, family, start.bundleNumber, "apn_user_defined_name", start.pdp.apn);
    readText(start, family, start.bundleNumber, "pd1", start.pdp.pd1);
    readText(start, family, start.bundleNumber, "pd2", start.pdp.pd2);
}

// The record's number, if it has one.
bool numberOf(const config_data_t& record, int* value)
{
    if (record.type != VX_CONFIG_TYPE_INT || !record.data || record.length != sizeof *value) {
        vx_slog(LOG_ERR,
                "start_bundle: ERROR!!! Wrong type. Expected VX_CONFIG_TYPE_INT for prec[i].name=%s but got "
                "%u",
                record.name, record.type);
        return false;
    }
    memcpy(value, record.data, sizeof *value);
    return true;
}

// The number that a text begins with; what no int can hold is as large as an int can be, on every machine.
int leadingNumber(const char* text)
{
    const long number = strtol(text, nullptr, 10);
    return number > INT_MAX ? INT_MAX : number < INT_MIN ? INT_MIN : static_cast<int>(number);
}

// The stored numbers are not bounded by whoever stores them: what has no place is logged and skipped.
bool hasPlace(int number, int places, const char* what, const config_data_t& record)
{
    if (number >= 0 && number < places)
        return true;
    vx_slog(LOG_ERR, "start_bundle: ERROR!!! %s=%d out of range in prec[i].name=%s", what, number,
            record.name);
    return false;
}

// `text` holds "filters": the position stands between "filters." and the next dot, so at least one more word
// must follow it.
void evaluateFilter(ConnectionInPackage& connection, const char* text, const config_data_t& record)
{
    const char* const word = strstr(text, "filters.");
    const char* const tmpFilterString = word ? word + strlen("filters.") : "";
    if (!strchr(tmpFilterString, '.')) {
        vx_slog(LOG_ERR, "start_bundle: ERROR!!! Could not find filter number in tmpFilterString=%s",
                tmpFilterString);
        return;
    }
    const int filterNumber = leadingNumber(tmpFilterString);
    vx_slog(LOG_INFO, "start_bundle: Found filterNumber=%d", filterNumber);
    int value = UNUSED;
    if (hasPlace(filterNumber, MAX_FILTERS, "filterNumber", record) && numberOf(record, &value))
        connection.filterArray[filterNumber] = value;
}

// cfg.admin.bundle.<number>.connections.<connection number>.<rest>. The two words are looked for in all that
// stands behind "connections.", so that one record can count as both; neither is no error.
void evaluateRecord(Start& start, const config_data_t& record)
{
    vx_slog(LOG_INFO, "start_bundle: Evaluating prec[i].name=%s", record.name);
    const char* const marker = strstr(record.name, ".connections.");
    const char* const text = marker ? marker + strlen(".connections.") : "";
    vx_slog(LOG_INFO, "start_bundle: firstPart.c_str()=%.*s",
            marker ? static_cast<int>(text - record.name) : 0, record.name);
    vx_slog(LOG_INFO, "start_bundle: indexAndLastPart.c_str()=%s", text);
    if (!strchr(text, '.')) {
        vx_slog(LOG_ERR, "start_bundle: ERROR!!! Could not find connectionIndex in prec[i].name=%s",
                record.name);
        return;
    }
    const int connectionNumber = leadingNumber(text);
    vx_slog(LOG_INFO, "start_bundle: Found connectionNumber=%d", connectionNumber);
    if (!hasPlace(connectionNumber, MAX_CONNECTIONS, "connectionNumber", record))
        return;
    ConnectionInPackage& connection = start.connectionsInPackage[connectionNumber];
    int value = UNUSED;
    if (strstr(text, "connection_index") && numberOf(record, &value))
        connection.connection_index = value;
    if (strstr(text, "filters"))
        evaluateFilter(connection, text, record);
}

void readConnectionsInPackage(Start& start)
{
    char expression[KEY_SIZE];
    snprintf(expression, sizeof expression, "cfg.admin.bundle.%d.connections.*", start.bundleNumber);
    uint32_t count = 0;
    config_data_t* prec = nullptr;
    if (config_readm(expression, &count, &prec) == 0)
        vx_slog(LOG_INFO, "start_bundle: successfully read %s", expression);
    else
        vx_slog(LOG_ERR, "start_bundle: Cound not read %s", expression);
    for (uint32_t i = 0; i < count; ++i)
        evaluateRecord(start, prec[i]);
    free(prec);
}

// Counts what is in use, and logs it.
void countConnections(const Start& start, unsigned* connections, unsigned* filters)
{
    *connections = 0;
    *filters = 0;
    for (int i = 0; i < MAX_CONNECTIONS; ++i) {
        const ConnectionInPackage& connection = start.connectionsInPackage[i];
        if (connection.connection_index == UNUSED)
            continue;
        ++*connections;
        vx_slog(LOG_INFO, "start_bundle: connectionsInPackage[%d].connection_index=%d", i,
                connection.connection_index);
        for (int j = 0; j < MAX_FILTERS; ++j) {
            if (connection.filterArray[j] == UNUSED)
                continue;
            ++*filters;
            vx_slog(LOG_INFO, "start_bundle: connectionsInPackage[%d].filterArray[%d]=%d", i, j,
                    connection.filterArray[j]);
        }
    }
    vx_slog(LOG_INFO, "start_bundle: numberOfConnectionsInBundle=%u", *connections);
    vx_slog(LOG_INFO, "start_bundle: numberOfTftFiltersInBundle=%u", *filters);
}

void addQos(Start& start, int connection_index, int cfg_net_qos_index)
{
    QosData qos = {};
    qos.cid = cfg_net_qos_index + 1;
    for (int i = 0; i < QOS_SOURCE_COUNT; ++i)
        readNumber(start, "cfg.admin.connection.", connection_index, QOS_SOURCES[i].word,
                   &(qos.*QOS_SOURCES[i].field));
    vx_slog(LOG_INFO, "start_bundle: cfg_net_qos_index=%d. About to store values into array precItems",
            cfg_net_qos_index);
    for (int i = 0; i < QOS_RECORD_COUNT; ++i) {
        const QosRecord& record = QOS_RECORDS[i];
        start.precItems.addNumber("ram.net.qos.0.", cfg_net_qos_index, record.word,
                                  record.field ? qos.*record.field : record.constant);
    }
}

void readFilter(Start& start, int filterNumber, FilterData* data)
{
    const char* const family = "cfg.admin.traffic_flow_filters.";
    readNumber(start, family, filterNumber, "bit_mask", &data->bit_mask);
    for (int i = 0; i < FILTER_SOURCE_COUNT; ++i) {
        const FilterSource& source = FILTER_SOURCES[i];
        const bool stored = data->bit_mask & source.bit;
        if (source.number && stored)
            readNumber(start, family, filterNumber, source.word, &(data->*source.number));
        else if (source.number)
            data->*source.number = source.defaultNumber;
        else if (stored)
            readText(start, family, filterNumber, source.word, data->*source.text);
        else
            vx_strlcpy(data->*source.text, source.defaultText, BUNDLE_TEXT_SIZE);
    }
}

void logFilter(const FilterData& data, int index)
{
    for (int i = 0; i < FILTER_RECORD_COUNT; ++i) {
        const FilterRecord& record = FILTER_RECORDS[i];
        if (record.number)
            vx_slog(LOG_INFO, "start_bundle: filterData[%d].%s = %d", index, record.word,
                    data.*record.number);
        else
            vx_slog(LOG_INFO, "start_bundle: filterData[%d].%s = %s", index, record.word, data.*record.text);
    }
    for (int i = 0; i < FILTER_BIT_COUNT; ++i) {
        if (data.bit_mask & FILTER_BITS[i].bit)
            vx_slog(LOG_INFO, "start_bundle: filterData[%d].bit_mask = %s", index, FILTER_BITS[i].name);
    }
}

void addFilter(Start& start, int filterNumber, int cid)
{
    const int index = start.filtersDone++;
    FilterData* const data = &start.filterData[index];
    memset(data, 0, sizeof *data);
    readFilter(start, filterNumber, data);
    data->entry_owner = 0;
    data->active = 1;
    data->cid = cid;
    // Without a sign: the largest number that can be stored has no filter, but must do no harm either.
    data->packet_filter_identifier = static_cast<int>(static_cast<unsigned int>(filterNumber) + 1U);
    data->evaluation_precedence = index + 1;
    logFilter(*data, index);
    for (int i = 0; i < FILTER_RECORD_COUNT; ++i) {
        const FilterRecord& record = FILTER_RECORDS[i];
        if (record.number)
            start.precItems.addNumber("ram.net.tft.0.", index, record.word, data->*record.number);
        else
            start.precItems.addText("ram.net.tft.0.", index, record.word, data->*record.text);
    }
}

// The first connection is the primary context, with the APN and all that belongs to it; the others hang on
// it as secondary ones (pcid is its cid).
void addPdpContext(Start& start, int cfg_net_qos_index)
{
    PdpData& pdp = start.pdp;
    pdp.active = 1;
    pdp.cid = cfg_net_qos_index + 1;
    pdp.pcid = 1;
    pdp.secondary_context = cfg_net_qos_index == 0 ? 0 : 1;
    for (int i = 0; i < PDP_RECORD_COUNT; ++i) {
        const PdpRecord& record = PDP_RECORDS[i];
        if (record.firstOnly && cfg_net_qos_index != 0)
            continue;
        if (record.number)
            start.precItems.addNumber("ram.net.pdp_contexts.0.", cfg_net_qos_index, record.word,
                                      pdp.*record.number);
        else
            start.precItems.addText("ram.net.pdp_contexts.0.", cfg_net_qos_index, record.word,
                                    reinterpret_cast<char*>(&pdp) + record.textOffset);
    }
}

void addConnections(Start& start)
{
    int cfg_net_qos_index = 0;
    for (int i = 0; i < MAX_CONNECTIONS; ++i) {
        const ConnectionInPackage& connection = start.connectionsInPackage[i];
        if (connection.connection_index == UNUSED)
            continue;
        addQos(start, connection.connection_index, cfg_net_qos_index);
        for (int j = 0; j < MAX_FILTERS; ++j) {
            if (connection.filterArray[j] == UNUSED)
                continue;
            vx_slog(LOG_INFO, "start_bundle: Handling connectionsInPackage[%d].filterArray[%d]=%d", i, j,
                    connection.filterArray[j]);
            addFilter(start, connection.filterArray[j], cfg_net_qos_index + 1);
        }
        addPdpContext(start, cfg_net_qos_index);
        ++cfg_net_qos_index;
    }
}

void logItems(const PrecItems& precItems)
{
    for (int i = 0; i < precItems.stored(); ++i) {
        const config_data_t& item = precItems.items[i];
        if (item.type == VX_CONFIG_TYPE_INT)
            vx_slog(LOG_INFO, "start_bundle: precItems[%d].name=%s , data=%d", i, item.name,
                    *static_cast<const int*>(item.data));
        else if (item.type == VX_CONFIG_TYPE_STRING)
            vx_slog(LOG_INFO, "start_bundle: precItems[%d].name=%s , data=%s", i, item.name,
                    static_cast<const char*>(item.data));
        else
            vx_slog(LOG_INFO, "start_bundle: precItems[%d].type invalid. type=%u", i, item.type);
    }
}

void logSize(const PrecItems& precItems, int numberOfElementsInPrecItems)
{
    vx_slog(LOG_INFO, "start_bundle: debug precItems: last precItemNo = %d", precItems.count - 1);
    if (precItems.count > numberOfElementsInPrecItems)
        vx_slog(LOG_ERR,
                "start_bundle: numberOfElementsInPrecItems(=%d) too small to hold all precItems (=%d).",
                numberOfElementsInPrecItems, precItems.count);
    else
        vx_slog(LOG_DEBUG, "start_bundle: numberOfElementsInPrecItems(=%d) , number of precItems (=%d).",
                numberOfElementsInPrecItems, precItems.count);
}

void send(const PrecItems& precItems)
{
    logItems(precItems);
    config_writev("", static_cast<uint32_t>(precItems.stored()), precItems.items);
    sleepMs(ACTIVATION_DELAY_MS);
    config_write_int("ram.net.user_groups.0.activated", 1);
}

// Fills and sends the records, in arrays of the size that the two counts give.
int sendRecords(Start& start, unsigned connections, unsigned filters)
{
    const int numberOfElementsInPrecItems = static_cast<int>(27 * connections + 16 * filters + 8);
    vx_slog(LOG_INFO, "start_bundle: numberOfElementsInPrecItems=%u", 27 * connections + 16 * filters + 8);
    const size_t room = static_cast<size_t>(numberOfElementsInPrecItems) + 1; // one spare
    PrecItems& precItems = start.precItems;
    precItems.items = static_cast<config_data_t*>(alloca(room * sizeof *precItems.items));
    precItems.names = static_cast<char(*)[PrecItems::NAME_SIZE]>(alloca(room * sizeof *precItems.names));
    precItems.numbers = static_cast<int*>(alloca(room * sizeof *precItems.numbers));
    precItems.capacity = static_cast<int>(room);
    start.filterData = static_cast<FilterData*>(alloca((filters + 1) * sizeof *start.filterData));

    addConnections(start);
    precItems.addNumberAt("ram.net.user_groups.0.current_bundle", start.bundleNumber);
    logSize(precItems, numberOfElementsInPrecItems);
    if (start.failures != 0)
        vx_slog(LOG_ERR, "start_bundle: ERROR!!! Cound not start bundle with bundleNumber %d",
                start.bundleNumber);
    else
        send(precItems);
    return start.failures;
}

} // namespace

int cleanup_bundle()
{
    static const char* const expressions[] = {"ram.net.tft.0.*", "ram.net.qos.0.*",
                                              "ram.net.pdp_contexts.0.*"};
    int result = 0;
    for (const char* expression : expressions)
        result += config_deletem(expression);
    if (result != 0)
        vx_slog(LOG_ERR, "netparm_setup: cleanup_bundle: ERROR!!!!!: Could not clean up values. result=%d",
                result);
    return result;
}

int start_bundle(int bundleNumber)
{
    vx_slog(LOG_INFO, "start_bundle: start of function");
    if (cleanup_bundle() != 0) {
        vx_slog(LOG_ERR, "start_bundle: ERROR!!!!!: Could not clean up before setting new values.");
        return -1;
    }
    vx_slog(LOG_INFO, "start_bundle: Successfully cleaned up before setting new values.");

    Start start;
    clear(start, bundleNumber);
    readBundle(start);
    readConnectionsInPackage(start);
    unsigned connections = 0;
    unsigned filters = 0;
    countConnections(start, &connections, &filters);
    if (connections == 0)
        return -1;
    return sendRecords(start, connections, filters);
}
