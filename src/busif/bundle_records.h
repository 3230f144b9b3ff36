// The records of a bundle's start: what is read of the stored definition, what is written for the network
// manager, and the tables that tell which word of the one becomes which word of the other.
//
// Plain data; bus thread. bundle_activation.cpp has the procedure.
#ifndef LUMENPANEL_BUSIF_BUNDLE_RECORDS_H
#define LUMENPANEL_BUSIF_BUNDLE_RECORDS_H

#include <stddef.h>

#include "runtime/config_client_api.h"

const int BUNDLE_TEXT_SIZE = 200; // bytes of a text value, NUL included; a longer one is cut

// The values of one connection, read from cfg.admin.connection.<index>. and written to ram.net.qos.0.<n>.
struct QosData {
    int traffic_class;
    int max_bit_rate_upload;
    int max_bit_rate_download;
    int guaranteed_bit_rate_upload;
    int guaranteed_bit_rate_download;
    int delivery_order;
    int max_sdu_size;
    int sdu_error_rate;
    int delivery_of_erroneous_sdus;
    int transfer_delay;
    int traffic_handling_priority;
    int cid;
};

// The values of one filter, read from cfg.admin.traffic_flow_filters.<number>. and written to
// ram.net.tft.0.<n>.
struct FilterData {
    int entry_owner;
    int active;
    int cid;
    int packet_filter_identifier;
    int evaluation_precedence;
    int protocol_number;
    int tos;
    int tos_mask;
    int spi;
    char source_address[BUNDLE_TEXT_SIZE];
    char source_mask[BUNDLE_TEXT_SIZE];
    int source_port_begin;
    int source_port_end;
    int destination_port_begin;
    int destination_port_end;
    int bit_mask;
};

// The values of the bundle, read from cfg.admin.bundle.<number>., and those of one context, written to
// ram.net.pdp_contexts.0.<n>.
struct PdpData {
    int entry_owner;
    int active;
    int cid;
    int pcid;
    int data_comp;
    int header_comp;
    int secondary_context;
    int apn_type;
    char ip4_addr[1]; // an empty text: nothing fills it
    char apn[BUNDLE_TEXT_SIZE];
    int pdp_type;
    char pd1[BUNDLE_TEXT_SIZE];
    char pd2[BUNDLE_TEXT_SIZE];
    int high_prio_pool;
};

// A stored word of a connection, in the order of reading.
struct QosSource {
    const char* word;
    int QosData::*field;
};
extern const QosSource QOS_SOURCES[];
extern const int QOS_SOURCE_COUNT;

// A written word of a connection, in the order of writing: a field, or a constant where that is null.
struct QosRecord {
    const char* word;
    int QosData::*field;
    int constant;
};
extern const QosRecord QOS_RECORDS[];
extern const int QOS_RECORD_COUNT;

// Bits of a filter's .bit_mask.
enum {
    SMGW_TFT_BITMASK_IP_ADDRESS_AND_SUBNET_MASK = 1,
    SMGW_TFT_BITMASK_PROTOCOL_NUMBER = 2,
    SMGW_TFT_BITMASK_DESTINATION_PORT_RANGE = 4,
    SMGW_TFT_BITMASK_SOURCE_PORT_RANGE = 8,
    SMGW_TFT_BITMASK_IPSEC_SPI = 16,
    SMGW_TFT_BITMASK_TOS = 32
};
struct FilterBit {
    int bit;
    const char* name;
};
extern const FilterBit FILTER_BITS[];
extern const int FILTER_BIT_COUNT;

// A stored word of a filter, in the order of reading: read if the bit is set, else the default stands. A
// number or a text, by which of the two fields is not null.
struct FilterSource {
    int bit;
    const char* word;
    int FilterData::*number;
    int defaultNumber;
    char (FilterData::*text)[BUNDLE_TEXT_SIZE];
    const char* defaultText;
};
extern const FilterSource FILTER_SOURCES[];
extern const int FILTER_SOURCE_COUNT;

// A written word of a filter, in the order of writing: a number or a text.
struct FilterRecord {
    const char* word;
    int FilterData::*number;
    char (FilterData::*text)[BUNDLE_TEXT_SIZE];
};
extern const FilterRecord FILTER_RECORDS[];
extern const int FILTER_RECORD_COUNT;

// A written word of a context, in the order of writing: a number, or a text by its place in PdpData. The
// later ones are for the first context alone.
struct PdpRecord {
    const char* word;
    int PdpData::*number;
    size_t textOffset; // where number is null
    bool firstOnly;
};
extern const PdpRecord PDP_RECORDS[];
extern const int PDP_RECORD_COUNT;

// The records to be written, in space that the caller has: what is added beyond it is only counted.
struct PrecItems {
    enum { NAME_SIZE = 64 }; // the longest key has 49 characters

    config_data_t* items;
    char (*names)[NAME_SIZE];
    int* numbers;
    int capacity;
    int count; // of those added, also beyond the capacity

    // Family is "ram.net.qos.0." and the like; the key is family, index, a dot, and word.
    void addNumber(const char* family, int index, const char* word, int value);
    void addText(const char* family, int index, const char* word, char* value); // keeps the pointer
    void addNumberAt(const char* key, int value);
    int stored() const { return count < capacity ? count : capacity; }

private:
    config_data_t* next(const char* family, int index, const char* word);
    void setNumber(config_data_t* item, int value);
};

#endif
