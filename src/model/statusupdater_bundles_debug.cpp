// Dumps of bundles and connections to the debug log. They take no lock: they work on what the caller
// holds. Nothing is put together while debug lines aren't wanted.
#include "model/statusupdater.h"

#include "common/log.h"

QString debugBundleStatusStr(int bundleStatus)
{
    switch (bundleStatus) {
    case BUNDLE_STATUS_DELETED:
        return QString::fromLatin1("BUNDLE_STATUS_DELETED");
    case BUNDLE_STATUS_UNKNOWN:
        return QString::fromLatin1("BUNDLE_STATUS_UNKNOWN");
    case BUNDLE_STATUS_IDLE:
        return QString::fromLatin1("BUNDLE_STATUS_IDLE");
    case BUNDLE_STATUS_INITIALIZING:
        return QString::fromLatin1("BUNDLE_STATUS_INITIALIZING");
    case BUNDLE_STATUS_RUNNING:
        return QString::fromLatin1("BUNDLE_STATUS_RUNNING");
    default:
        return QString::fromLatin1("Unhandled bundleStatus=") + QString::number(bundleStatus);
    }
}

void StatusUpdater::debugDefinedBundles(const QList<bundle_t>& bundles, const char* title) const
{
    if (!debugLogWanted())
        return;
    logDebug() << "StatusUpdater::debugDefinedBundles(): " << title
               << ": size=" << static_cast<int>(bundles.size());
    for (const bundle_t& bundle : bundles)
        debugBundle(bundle, title);
}

void StatusUpdater::debugActiveConnectionsAndBundles(const QList<bundle_t>& bundles, const char* title) const
{
    if (!debugLogWanted())
        return;
    logDebug() << "StatusUpdater::debugActiveConnectionsAndBundles(): " << title
               << ": size=" << static_cast<int>(bundles.size());
    for (const bundle_t& bundle : bundles)
        debugBundle(bundle, title);
}

void StatusUpdater::debugBundle(const bundle_t& bundle, const char* title) const
{
    if (!debugLogWanted())
        return;
    logDebug() << "StatusUpdater::debugBundle(): " << title << ": bundleNumber=" << bundle.bundleNumber
               << ", wanUserGroup=" << bundle.wanUserGroup << ", name=" << bundle.name
               << ", status=" << debugBundleStatusStr(bundle.status)
               << ", bondingRequired=" << bundle.bondingRequired
               << ", totalMaxBitRateDownload=" << bundle.totalMaxBitRateDownload
               << ", totalMaxBitRateUpload=" << bundle.totalMaxBitRateUpload
               << ", backgroundTotal=" << bundle.backgroundTotal
               << ", startTime=" << debugTimeStr(bundle.startTime) << " ago";
    for (const connection_t& connection : bundle.connections)
        debugConnection(connection);
}

void StatusUpdater::debugConnection(const connection_t& connection) const
{
    logDebug() << "StatusUpdater::debugConnection(): name=" << connection.name
               << ", wanContextGroup=" << connection.wanContextGroup
               << ", max_bit_rate_upload=" << connection.max_bit_rate_upload
               << ", max_bit_rate_download=" << connection.max_bit_rate_download
               << ", guaranteed_bit_rate_upload=" << connection.guaranteed_bit_rate_upload
               << ", guaranteed_bit_rate_download=" << connection.guaranteed_bit_rate_download
               << ", delivery_order=" << connection.delivery_order
               << ", max_sdu_size=" << connection.max_sdu_size
               << ", sdu_error_rate=" << connection.sdu_error_rate
               << ", delivery_of_erroneous_sdus=" << connection.delivery_of_erroneous_sdus
               << ", transfer_delay=" << connection.transfer_delay
               << ", traffic_handling_priority=" << connection.traffic_handling_priority
               << ", traffic_class=" << connection.traffic_class;
}
