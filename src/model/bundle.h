// Data connections and bundles, as the model keeps them.
//
// A connection is one context with its quality of service; a bundle is a named set of them that is
// started and stopped as one. Plain values, copied freely; any thread.
#ifndef LUMENPANEL_MODEL_BUNDLE_H
#define LUMENPANEL_MODEL_BUNDLE_H

#include <QDateTime>
#include <QList>
#include <QMetaType>
#include <QString>

// Values of ram.status.ongoing_data_sessions.<group>.status are 0 to 2.
enum BUNDLE_STATUS : int {
    BUNDLE_STATUS_DELETED = -2,
    BUNDLE_STATUS_UNKNOWN = -1,
    BUNDLE_STATUS_IDLE = 0,
    BUNDLE_STATUS_INITIALIZING = 1,
    BUNDLE_STATUS_RUNNING = 2
};
Q_DECLARE_METATYPE(BUNDLE_STATUS)

// Services of the network that a bonded pair of terminals needs.
enum BONDING_SERVICE_ENUM : int {
    BONDING_SERVICE_HDR_STREAM896K_64K = 1,
    BONDING_SERVICE_HDR_STREAM896K = 2
};

enum BONDING_STATE_ENUM : int { BONDING_STATE_OFF = 0, BONDING_STATE_MASTER = 1, BONDING_STATE_SLAVE = 2 };

// Rates are in kbit/s; -1 means not known. The initial values are those of a running session of which
// nothing is known yet. wanContextGroup has a meaning in running sessions only.
struct connection_t {
    QString name;
    int wanContextGroup = -1;
    int max_bit_rate_upload = 0;
    int max_bit_rate_download = 0;
    int guaranteed_bit_rate_upload = 0;
    int guaranteed_bit_rate_download = 0;
    int delivery_order = -1;
    int max_sdu_size = -1;
    int sdu_error_rate = -1;
    int delivery_of_erroneous_sdus = -1;
    int transfer_delay = -1;
    int traffic_handling_priority = -1;
    int traffic_class = -1;
};

struct bundle_t {
    bool bondingRequired = false; // a total rate is 897 or more
    int bundleNumber = -1;        // index in the database
    int wanUserGroup = 0;
    QList<connection_t> connections;
    QString name;
    int totalMaxBitRateDownload = 0; // kbit/s
    int totalMaxBitRateUpload = 0;   // kbit/s
    int backgroundTotal = 0;         // kB moved so far, -1 when not known
    QDateTime startTime;
    BUNDLE_STATUS status = BUNDLE_STATUS_UNKNOWN;
};

// The name of a status, or "Unhandled bundleStatus=" with the value.
QString debugBundleStatusStr(int bundleStatus);

#endif
