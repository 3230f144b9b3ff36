// Bonding: two terminals that work as one, which the fastest bundles need. What the network offers of it,
// which part this terminal plays, and whether a bundle's demands are met.
#include "model/statusupdater.h"

#include "common/log.h"
#include "model/config_record.h"

#include <QStringList>

namespace {

const char SERVICE_PREFIX[] = "ram.bonding.status.service";
const char SERVICE_COUNT_KEY[] = "ram.bonding.status.service.cnt";
const int NUMBER_OF_SERVICES = 10;

// ram.bonding.status.service.<index> holds the name, ram.bonding.status.service.<index>.cnt the count.
enum { PART_INDEX = 4, PARTS_OF_NAME = 5, PARTS_OF_COUNT = 6 };

struct ServiceName {
    const char* name;
    BONDING_SERVICE_ENUM service;
};

const ServiceName SERVICE_NAMES[] = {
    {"XBB:HDR_STREAM896K_64K", BONDING_SERVICE_HDR_STREAM896K_64K},
    {"XBB:HDR_STREAM896K", BONDING_SERVICE_HDR_STREAM896K},
};

// What the records say, by the service's index; 0 is none.
struct Services {
    int name[NUMBER_OF_SERVICES];
    int count[NUMBER_OF_SERVICES];
};

void takeName(int& service, const config_data_t& record)
{
    if (record.type != VX_CONFIG_TYPE_STRING) {
        logWarning() << "setBondingServicesAvailable: ERROR!!! Expected VX_CONFIG_TYPE_STRING for name="
                     << record.name << " but got " << record.type;
        return;
    }
    const QString text = recordText(record);
    for (const ServiceName& row : SERVICE_NAMES) {
        if (text == QLatin1String(row.name)) {
            service = row.service;
            return;
        }
    }
    logDebug() << "setBondingServicesAvailable: ERROR!!! nameStr=" << text << " not supported!!!";
}

void takeRecord(Services& services, const config_data_t& record)
{
    const QString name = QString::fromUtf8(record.name);
    if (!name.startsWith(QLatin1String(SERVICE_PREFIX))) {
        logWarning() << "setBondingServicesAvailable: ERROR!!! name does not start with "
                        "ram.bonding.status.service!!!";
        return;
    }
    const QStringList parts = name.split(QChar::fromLatin1('.'));
    const int size = static_cast<int>(parts.size());
    if (size < PARTS_OF_NAME) {
        logWarning() << "setBondingServicesAvailable: ERROR!!! list.size()=" << size << ", expected 5 or 6";
        return;
    }
    if (name == QLatin1String(SERVICE_COUNT_KEY))
        return;
    bool ok = false;
    const int index = parts.at(PART_INDEX).toInt(&ok);
    if (!ok)
        logWarning() << "setBondingServicesAvailable: ERROR!!! could not convert element 5 to integer. "
                     << name;
    else if (index < 0 || index >= NUMBER_OF_SERVICES)
        logWarning() << "setBondingServicesAvailable: ERROR!!! serviceIndex=" << index;
    else if (size == PARTS_OF_NAME)
        takeName(services.name[index], record);
    else if (size > PARTS_OF_COUNT)
        logWarning() << "setBondingServicesAvailable: ERROR!!! list.size()=" << size << ", expected max 6";
    else if (recordIsInt(record))
        services.count[index] = recordInt(record);
}

} // namespace

void StatusUpdater::setBondingServicesAvailable(unsigned int nrec, const config_data_t* prec)
{
    Services services = {};
    for (unsigned int i = 0; i < nrec; ++i)
        takeRecord(services, prec[i]);
    QHash<int, unsigned int> available;
    for (int i = 0; i < NUMBER_OF_SERVICES; ++i)
        if (services.count[i] != 0)
            available.insert(services.name[i], static_cast<unsigned int>(services.count[i]));
    if (storeChanged(bondingServicesAvailable, available, __func__))
        announce(__func__, "bondingStateChanged", &StatusUpdater::bondingStateChanged);
}

bool StatusUpdater::getBondingServiceAvailable(BONDING_SERVICE_ENUM service) const
{
    StatusLock lock(statusMutex, __func__);
    return bondingServicesAvailable.value(service, 0) > 1; // a pair needs two
}

void StatusUpdater::setDhcpClientMode(bool value)
{
    store(dhcpClientMode, value, __func__);
    updateBondingState();
}

bool StatusUpdater::getDhcpClientMode() const
{
    return read(dhcpClientMode, __func__);
}

void StatusUpdater::setBondingEnabled(bool value)
{
    store(bondingEnabled, value, __func__);
    updateBondingState();
}

bool StatusUpdater::getBondingEnabled() const
{
    return read(bondingEnabled, __func__);
}

void StatusUpdater::updateBondingState()
{
    StatusLock lock(statusMutex, __func__);
    const int oldState = bondingState;
    bondingState = !bondingEnabled  ? BONDING_STATE_OFF
                   : dhcpClientMode ? BONDING_STATE_SLAVE
                                    : BONDING_STATE_MASTER;
    const bool changed = bondingState != oldState;
    lock.unlock();
    if (changed)
        announce(__func__, "bondingStateChanged", &StatusUpdater::bondingStateChanged);
}

int StatusUpdater::getBondingState() const
{
    return read(bondingState, __func__);
}

// The asymmetry is wanted: 896 down is enough by itself, whatever goes up; 896 up is enough, whatever
// comes down.
bool StatusUpdater::bondingDemandsReached(const bundle_t& bundle) const
{
    const int down = bundle.totalMaxBitRateDownload;
    const int up = bundle.totalMaxBitRateUpload;
    if (down == 896 || up <= 896)
        return true;
    const BONDING_SERVICE_ENUM service =
        down < 896 ? BONDING_SERVICE_HDR_STREAM896K_64K : BONDING_SERVICE_HDR_STREAM896K;
    return getBondingServiceAvailable(service) && getBondingState() == BONDING_STATE_MASTER;
}
