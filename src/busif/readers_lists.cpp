// Readers of lists of records, and the request to start a bundle. Bus thread only.
#include "busif/readers.h"

#include <stdlib.h>

#include "busif/bundle_activation.h"
#include "busif/reader_support.h"
#include "common/log.h"
#include "model/statusupdater.h"
#include "runtime/config_client_api.h"

namespace {

typedef void (StatusUpdater::*RecordSetter)(unsigned nrec, const config_data_t* prec);

// Lists all keys that match and hands the records to the model, which copies what it keeps. A list that
// could not be had is logged, and the model gets what came back: no record, as a rule.
void readList(const char* function, const char* expression, RecordSetter setter)
{
    logReaderStart(function);
    uint32_t count = 0;
    config_data_t* records = nullptr;
    if (config_readm(expression, &count, &records) != 0)
        logDebug() << function << "(): " << expression << NOT_IN_DATABASE;
    (StatusUpdater::getStatusUpdater()->*setter)(count, records);
    free(records);
}

} // namespace

void readDefinedBundlesCfg()
{
    readList(__func__, "cfg.admin\\.bundle\\..*", &StatusUpdater::setDefinedBundlesCfg);
}

void readBondingServicesAvailable()
{
    readList(__func__, "ram.bonding\\.status\\.service\\..*", &StatusUpdater::setBondingServicesAvailable);
}

void readAlertList()
{
    readList(__func__, "ram.log\\.alert\\..*", &StatusUpdater::setAlertList);
}

void initialReadOngoingDataSessions()
{
    readList(__func__, "ram.status\\.ongoing_data_sessions\\..*",
             &StatusUpdater::setActiveConnectionsAndBundles);
}

void initialReadCurrentBundleNumber()
{
    readList(__func__, "ram.net\\.user_groups\\.0\\.current_bundle", &StatusUpdater::setCurrentBundleNumber);
}

void readLocalGuiDisplayStartBundleNumber()
{
    // The writer of a request first writes -1, which starts nothing but makes each request a change.
    const int value = readSingleInt(__func__, "ram.local_gui_display.start_bundle_number", -1,
                                    " not in database. Using default value of -1.");
    if (value >= 0)
        start_bundle(value);
}
