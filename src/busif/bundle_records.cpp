// The tables of a bundle's start, and the array of records that is filled from them. Bus thread.
#include "busif/bundle_records.h"

#include <stdio.h>
#include <string.h>

#define COUNT_OF(table) static_cast<int>(sizeof(table) / sizeof((table)[0]))

const QosSource QOS_SOURCES[] = {
    {"traffic_class", &QosData::traffic_class},
    {"max_bit_rate_upload", &QosData::max_bit_rate_upload},
    {"max_bit_rate_download", &QosData::max_bit_rate_download},
    {"guaranteed_bit_rate_upload", &QosData::guaranteed_bit_rate_upload},
    {"guaranteed_bit_rate_download", &QosData::guaranteed_bit_rate_download},
    {"delivery_order", &QosData::delivery_order},
    {"max_sdu_size", &QosData::max_sdu_size},
    {"sdu_error_rate", &QosData::sdu_error_rate},
    {"delivery_of_erroneous_sdus", &QosData::delivery_of_erroneous_sdus},
    {"transfer_delay", &QosData::transfer_delay},
    {"traffic_handling_priority", &QosData::traffic_handling_priority},
};
const int QOS_SOURCE_COUNT = COUNT_OF(QOS_SOURCES);

// The run-time family has short words for the directions.
const QosRecord QOS_RECORDS[] = {
    {"traffic_class", &QosData::traffic_class, 0},
    {"guaranteed_bit_rate_d", &QosData::guaranteed_bit_rate_download, 0},
    {"guaranteed_bit_rate_u", &QosData::guaranteed_bit_rate_upload, 0},
    {"max_bit_rate_d", &QosData::max_bit_rate_download, 0},
    {"max_bit_rate_u", &QosData::max_bit_rate_upload, 0},
    {"delivery_order", &QosData::delivery_order, 0},
    {"transfer_delay", &QosData::transfer_delay, 0},
    {"traffic_handling_priority", &QosData::traffic_handling_priority, 0},
    {"delivery_of_erroneous_sdus", &QosData::delivery_of_erroneous_sdus, 0},
    {"sdu_error_rate", &QosData::sdu_error_rate, 0},
    {"max_sdu_size", &QosData::max_sdu_size, 0},
    {"entry_owner", nullptr, 0},
    {"active", nullptr, 1},
    {"cid", &QosData::cid, 0},
    {"residual_bit_error_rate", nullptr, 0},
    {"precedence", nullptr, 0},
    {"delay", nullptr, 0},
    {"reliability", nullptr, 0},
    {"peak", nullptr, 0},
    {"mean", nullptr, 0},
};
const int QOS_RECORD_COUNT = COUNT_OF(QOS_RECORDS);

#define FILTER_BIT(name)                                                                                     \
    {                                                                                                        \
        name, #name                                                                                          \
    }
const FilterBit FILTER_BITS[] = {
    FILTER_BIT(SMGW_TFT_BITMASK_IP_ADDRESS_AND_SUBNET_MASK),
    FILTER_BIT(SMGW_TFT_BITMASK_PROTOCOL_NUMBER),
    FILTER_BIT(SMGW_TFT_BITMASK_DESTINATION_PORT_RANGE),
    FILTER_BIT(SMGW_TFT_BITMASK_SOURCE_PORT_RANGE),
    FILTER_BIT(SMGW_TFT_BITMASK_IPSEC_SPI),
    FILTER_BIT(SMGW_TFT_BITMASK_TOS),
};
#undef FILTER_BIT
const int FILTER_BIT_COUNT = COUNT_OF(FILTER_BITS);

const FilterSource FILTER_SOURCES[] = {
    {SMGW_TFT_BITMASK_IP_ADDRESS_AND_SUBNET_MASK, "source_ip", nullptr, 0, &FilterData::source_address, ""},
    {SMGW_TFT_BITMASK_IP_ADDRESS_AND_SUBNET_MASK, "subnet_mask", nullptr, 0, &FilterData::source_mask,
     "255.255.255.0"},
    {SMGW_TFT_BITMASK_PROTOCOL_NUMBER, "prot_no", &FilterData::protocol_number, 0, nullptr, nullptr},
    {SMGW_TFT_BITMASK_DESTINATION_PORT_RANGE, "dest_port_range_start", &FilterData::destination_port_begin, 0,
     nullptr, nullptr},
    {SMGW_TFT_BITMASK_DESTINATION_PORT_RANGE, "dest_port_range_end", &FilterData::destination_port_end, 65535,
     nullptr, nullptr},
    {SMGW_TFT_BITMASK_SOURCE_PORT_RANGE, "source_port_range_start", &FilterData::source_port_begin, 0,
     nullptr, nullptr},
    {SMGW_TFT_BITMASK_SOURCE_PORT_RANGE, "source_port_range_end", &FilterData::source_port_end, 65535,
     nullptr, nullptr},
    {SMGW_TFT_BITMASK_IPSEC_SPI, "ipsec_spi", &FilterData::spi, -1, nullptr, nullptr},
    {SMGW_TFT_BITMASK_TOS, "type_of_service", &FilterData::tos, -1, nullptr, nullptr},
    {SMGW_TFT_BITMASK_TOS, "type_of_service_mask", &FilterData::tos_mask, 0, nullptr, nullptr},
};
const int FILTER_SOURCE_COUNT = COUNT_OF(FILTER_SOURCES);

const FilterRecord FILTER_RECORDS[] = {
    {"entry_owner", &FilterData::entry_owner, nullptr},
    {"active", &FilterData::active, nullptr},
    {"cid", &FilterData::cid, nullptr},
    {"packet_filter_identifier", &FilterData::packet_filter_identifier, nullptr},
    {"evaluation_precedence", &FilterData::evaluation_precedence, nullptr},
    {"protocol_number", &FilterData::protocol_number, nullptr},
    {"tos", &FilterData::tos, nullptr},
    {"tos_mask", &FilterData::tos_mask, nullptr},
    {"spi", &FilterData::spi, nullptr},
    {"source_address", nullptr, &FilterData::source_address},
    {"source_mask", nullptr, &FilterData::source_mask},
    {"source_port_begin", &FilterData::source_port_begin, nullptr},
    {"source_port_end", &FilterData::source_port_end, nullptr},
    {"destination_port_begin", &FilterData::destination_port_begin, nullptr},
    {"destination_port_end", &FilterData::destination_port_end, nullptr},
    {"bit_mask", &FilterData::bit_mask, nullptr},
};
const int FILTER_RECORD_COUNT = COUNT_OF(FILTER_RECORDS);

const PdpRecord PDP_RECORDS[] = {
    {"entry_owner", &PdpData::entry_owner, 0, false},
    {"active", &PdpData::active, 0, false},
    {"cid", &PdpData::cid, 0, false},
    {"pcid", &PdpData::pcid, 0, false},
    {"data_comp", &PdpData::data_comp, 0, false},
    {"header_comp", &PdpData::header_comp, 0, false},
    {"secondary_context", &PdpData::secondary_context, 0, false},
    {"apn_type", &PdpData::apn_type, 0, true},
    {"ip4_addr", nullptr, offsetof(PdpData, ip4_addr), true},
    {"apn", nullptr, offsetof(PdpData, apn), true},
    {"pdp_type", &PdpData::pdp_type, 0, true},
    {"pd1", nullptr, offsetof(PdpData, pd1), true},
    {"pd2", nullptr, offsetof(PdpData, pd2), true},
    {"high_prio_pool", &PdpData::high_prio_pool, 0, true},
};
const int PDP_RECORD_COUNT = COUNT_OF(PDP_RECORDS);

// The place of the next record with its name filled in; null if there is no room, but counted.
config_data_t* PrecItems::next(const char* family, int index, const char* word)
{
    const int place = count++;
    if (place >= capacity)
        return nullptr;
    snprintf(names[place], NAME_SIZE, "%s%d.%s", family, index, word);
    config_data_t* const item = &items[place];
    memset(item, 0, sizeof *item);
    item->name = names[place];
    return item;
}

void PrecItems::setNumber(config_data_t* item, int value)
{
    int* const place = &numbers[item - items];
    *place = value;
    item->type = VX_CONFIG_TYPE_INT;
    item->data = place;
    item->size = sizeof *place;
}

void PrecItems::addNumber(const char* family, int index, const char* word, int value)
{
    config_data_t* const item = next(family, index, word);
    if (item)
        setNumber(item, value);
}

void PrecItems::addText(const char* family, int index, const char* word, char* value)
{
    config_data_t* const item = next(family, index, word);
    if (item) {
        item->type = VX_CONFIG_TYPE_STRING;
        item->data = value;
        item->size = static_cast<uint32_t>(strlen(value) + 1);
    }
}

void PrecItems::addNumberAt(const char* key, int value)
{
    config_data_t* const item = next("", 0, "");
    if (item) {
        item->name = key;
        setNumber(item, value);
    }
}
