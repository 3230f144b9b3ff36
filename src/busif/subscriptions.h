// Which keys of the database the display watches, and what it reads when one of them changes.
//
// Three constant tables: the subscriptions, the readers of each key, and the reads at start. The values in a
// change are used by the model alone where a handler passes them on; all others are read afresh.
// Bus thread only; the handlers block in database reads.
#ifndef LUMENPANEL_BUSIF_SUBSCRIPTIONS_H
#define LUMENPANEL_BUSIF_SUBSCRIPTIONS_H

#include "runtime/config_client_api.h"

// One subscription: all keys that begin with keyPrefix.
struct Subscription {
    const char* keyPrefix;
    config_change_func_t handler;
};

// A reader and the keys whose change it answers, compared whole.
struct ReaderRow {
    enum { MAX_KEYS = 12 };
    int order; // place in the run; of rows with the same place only the first that is raised runs
    void (*read)();
    const char* keys[MAX_KEYS]; // null behind the last
};

extern const Subscription SUBSCRIPTIONS[];
extern const int SUBSCRIPTION_COUNT;
extern const ReaderRow READER_ROWS[];
extern const int READER_ROW_COUNT;

// Sends all subscriptions, in the table's order. The configuration client must have been started.
void registerSubscriptions();

// Reads everything once, in the order in which later reads rely on earlier ones.
void runInitialReads();

// The handlers. `prec` and its values are valid during the call only; data and row are not used.
// The general one runs each reader whose keys are among the records once, in the order of the table.
void _handle_config_changed(unsigned nrec, const config_data_t* prec, void* data,
                            const config_change_row_t* row);
void _handle_config_changed_ongoing_data_sessions(unsigned nrec, const config_data_t* prec, void* data,
                                                  const config_change_row_t* row);
void _handle_config_changed_current_bundle_number(unsigned nrec, const config_data_t* prec, void* data,
                                                  const config_change_row_t* row);
void _handle_config_changed_defined_bundles_cfg(unsigned nrec, const config_data_t* prec, void* data,
                                                const config_change_row_t* row);
void _handle_bonding_services_available_changed(unsigned nrec, const config_data_t* prec, void* data,
                                                const config_change_row_t* row);
void _handle_alert_list_changed(unsigned nrec, const config_data_t* prec, void* data,
                                const config_change_row_t* row);

#endif
