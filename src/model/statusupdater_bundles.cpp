// The bundles that the configuration defines, the classes of connections and their texts, and how the
// user's wish to start or stop goes to the database. What runs now is kept in statusupdater_sessions.cpp;
// the start itself is the business of the bus thread.
#include "model/statusupdater.h"

#include "common/log.h"
#include "model/config_record.h"
#include "model/duration.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <climits>

namespace {

const char BUNDLE_PREFIX[] = "cfg.admin.bundle.";
const char CONNECTION_PREFIX[] = "cfg.admin.connection.";
const char CURRENT_BUNDLE_KEY[] = "ram.net.user_groups.0.current_bundle";
const char SESSION_STATUS_KEY[] = "ram.status.ongoing_data_sessions.0.status";
const char START_BUNDLE_KEY[] = "ram.local_gui_display.start_bundle_number";
const int START_PAUSE_MS = 200;
const int BONDING_RATE = 897; // kbit/s, the least that one terminal can't give alone

const int BUNDLE_NAME_MAX = 299; // characters; as much as is taken of any other text of the database

// The whole numbers of a connection, in the order in which they are read.
struct ConnectionField {
    const char* suffix;
    int connection_t::*field;
};

const ConnectionField CONNECTION_FIELDS[] = {
    {".max_bit_rate_upload", &connection_t::max_bit_rate_upload},
    {".max_bit_rate_download", &connection_t::max_bit_rate_download},
    {".guaranteed_bit_rate_upload", &connection_t::guaranteed_bit_rate_upload},
    {".guaranteed_bit_rate_download", &connection_t::guaranteed_bit_rate_download},
    {".delivery_order", &connection_t::delivery_order},
    {".max_sdu_size", &connection_t::max_sdu_size},
    {".sdu_error_rate", &connection_t::sdu_error_rate},
    {".delivery_of_erroneous_sdus", &connection_t::delivery_of_erroneous_sdus},
    {".transfer_delay", &connection_t::transfer_delay},
    {".traffic_handling_priority", &connection_t::traffic_handling_priority},
    {".traffic_class", &connection_t::traffic_class},
};

// The classes of the streaming connections by their exact rates in kbit/s. Class 0 goes by the traffic
// class alone, class 1 by both rates being low.
struct RateClass {
    int download;
    int upload;
    int connClass;
};

const int TRAFFIC_CLASS_BACKGROUND = 3;
const int LOW_RATE_MAX = 256;

const RateClass RATE_CLASSES[] = {
    {64, 416, 2}, {416, 416, 3}, {512, 512, 4}, {64, 896, 5}, {896, 896, 6}, {128, 1792, 7}, {1792, 1792, 8},
};

// A rate that isn't known (-1) is no low one: such a connection has no class.
bool isLowRate(int rate)
{
    return rate >= 0 && rate <= LOW_RATE_MAX;
}

// A sum of rates from the database, which may hold any number.
int addedRates(int a, int b)
{
    const long long sum = static_cast<long long>(a) + b;
    return static_cast<int>(std::max<long long>(INT_MIN, std::min<long long>(INT_MAX, sum)));
}

// The order of the screen: bundle 0, then fast before slow, then by name. Bundle 0 stands before all
// others whatever its rates.
bool standsBefore(const bundle_t& a, const bundle_t& b)
{
    if (a.bundleNumber == 0 || b.bundleNumber == 0)
        return a.bundleNumber == 0 && b.bundleNumber != 0;
    if (a.totalMaxBitRateUpload != b.totalMaxBitRateUpload)
        return a.totalMaxBitRateUpload > b.totalMaxBitRateUpload;
    if (a.totalMaxBitRateDownload != b.totalMaxBitRateDownload)
        return a.totalMaxBitRateDownload > b.totalMaxBitRateDownload;
    return a.name.toLower().localeAwareCompare(b.name.toLower()) < 0;
}

void completeBundle(bundle_t& bundle)
{
    bundle.totalMaxBitRateDownload = 0;
    bundle.totalMaxBitRateUpload = 0;
    bundle.backgroundTotal = 0;
    bundle.startTime = QDateTime::currentDateTime();
    for (const connection_t& connection : bundle.connections) {
        bundle.totalMaxBitRateDownload =
            addedRates(bundle.totalMaxBitRateDownload, connection.max_bit_rate_download);
        bundle.totalMaxBitRateUpload =
            addedRates(bundle.totalMaxBitRateUpload, connection.max_bit_rate_upload);
    }
    bundle.bondingRequired =
        bundle.totalMaxBitRateDownload >= BONDING_RATE || bundle.totalMaxBitRateUpload >= BONDING_RATE;
}

// Whoever set the bundle up chose the name, and whatever shows it lays it out whole: it must have an end.
QString boundedName(const config_data_t& record)
{
    const QString name = recordText(record);
    if (name.size() <= BUNDLE_NAME_MAX)
        return name;
    logWarning() << "setDefinedBundlesCfg: Error: name=" << record.name << " has "
                 << static_cast<int>(name.size()) << " characters, cut to " << BUNDLE_NAME_MAX;
    return name.left(BUNDLE_NAME_MAX);
}

bundle_t* findBundle(QList<bundle_t>& bundles, int bundleNumber)
{
    for (bundle_t& bundle : bundles)
        if (bundle.bundleNumber == bundleNumber)
            return &bundle;
    return nullptr;
}

const bundle_t* findBundle(const QList<bundle_t>& bundles, int bundleNumber)
{
    for (const bundle_t& bundle : bundles)
        if (bundle.bundleNumber == bundleNumber)
            return &bundle;
    return nullptr;
}

} // namespace

// --- The list of the configuration ------------------------------------------------------------------------

void StatusUpdater::setDefinedBundlesCfg(unsigned int nrec, const config_data_t* prec)
{
    QList<bundle_t> bundles;
    for (unsigned int i = 0; i < nrec; ++i)
        if (recordHasValue(prec[i]))
            addDefinedBundleRecord(bundles, prec[i]);
    for (bundle_t& bundle : bundles)
        completeBundle(bundle);
    std::stable_sort(bundles.begin(), bundles.end(), standsBefore);
    store(definedBundles, bundles, __func__);
    debugDefinedBundles(bundles, "After sort");
    announce(__func__, "definedBundlesCfgChanged", &StatusUpdater::definedBundlesCfgChanged);
}

void StatusUpdater::addDefinedBundleRecord(QList<bundle_t>& bundles, const config_data_t& record) const
{
    const QString key = QString::fromUtf8(record.name);
    QString rest = key;
    if (rest.startsWith(QLatin1String(BUNDLE_PREFIX)))
        rest.remove(0, static_cast<int>(sizeof(BUNDLE_PREFIX)) - 1);
    const QString nameSuffix = QString::fromLatin1(".name");
    const QString indexSuffix = QString::fromLatin1(".connection_index");
    if (rest.endsWith(nameSuffix)) {
        rest.chop(nameSuffix.size());
        if (record.type == VX_CONFIG_TYPE_STRING)
            addBundleName(bundles, rest.toInt(), boundedName(record));
        else // the text bears an older name of this function
            logWarning() << "handleConfigChangedDefinedBundlesCfg: Error: Unexpected type. Expected "
                            "VX_CONFIG_TYPE_STRING for name="
                         << key << " but got " << record.type;
    } else if (rest.endsWith(indexSuffix)) {
        rest.chop(indexSuffix.size());
        const QStringList parts = rest.split(QChar::fromLatin1('.'));
        logDebug() << "StatusUpdater::setDefinedBundlesCfg(): bundleNumber=" << parts.first()
                   << ", position=" << parts.last();
        if (recordIsInt(record))
            addBundleConnection(bundles, parts.first().toInt(), recordInt(record));
        else
            logWarning()
                << "setDefinedBundlesCfg: Error: Unexpected type. Expected VX_CONFIG_TYPE_INT for name="
                << key << " but got " << record.type;
    }
}

void StatusUpdater::addBundleName(QList<bundle_t>& bundles, int bundleNumber, const QString& name) const
{
    if (bundle_t* known = findBundle(bundles, bundleNumber)) {
        known->name = name;
        return;
    }
    bundle_t bundle;
    bundle.bundleNumber = bundleNumber;
    bundle.name = name;
    bundle.status = readBundleStatus(bundleNumber);
    bundles.prepend(bundle);
}

void StatusUpdater::addBundleConnection(QList<bundle_t>& bundles, int bundleNumber, int connectionIndex) const
{
    if (!findBundle(bundles, bundleNumber))
        addBundleName(bundles, bundleNumber, QString());
    bundle_t* const bundle = findBundle(bundles, bundleNumber);
    bundle->connections.append(getConnectionByIndex(connectionIndex));
    bundle->status = readBundleStatus(bundleNumber);
}

connection_t StatusUpdater::getConnectionByIndex(int index) const
{
    const QString prefix = QString::fromLatin1(CONNECTION_PREFIX) + QString::number(index);
    connection_t connection;
    connection.name = getCBusValueStr(prefix + QString::fromLatin1(".name"));
    for (const ConnectionField& row : CONNECTION_FIELDS)
        connection.*row.field = getCBusValueInt(prefix + QString::fromLatin1(row.suffix));
    return connection;
}

// Only the current bundle can be other than idle; its status is that of the session of user group 0.
BUNDLE_STATUS StatusUpdater::readBundleStatus(int bundleNumber) const
{
    validateThisIsCBusThread(QString::fromLatin1(__func__));
    int current = -1;
    if (config_read_int(CURRENT_BUNDLE_KEY, &current) != 0) {
        logDebug() << "readBundlesStatus(): ERROR !!! " << CURRENT_BUNDLE_KEY << " not in database???";
        return BUNDLE_STATUS_IDLE;
    }
    if (current != bundleNumber)
        return BUNDLE_STATUS_IDLE;
    int status = BUNDLE_STATUS_IDLE;
    if (config_read_int(SESSION_STATUS_KEY, &status) != 0) {
        logDebug() << "readBundlesStatus(): ERROR !!! " << SESSION_STATUS_KEY << " not in database???";
        return BUNDLE_STATUS_IDLE;
    }
    if (status < BUNDLE_STATUS_IDLE || status > BUNDLE_STATUS_RUNNING) {
        logWarning() << "StatusUpdater::readBundlesStatus(): ERROR!!! bundleNumber=" << bundleNumber
                     << " has statusValue=" << status;
        return BUNDLE_STATUS_IDLE;
    }
    return static_cast<BUNDLE_STATUS>(status);
}

void StatusUpdater::setCurrentBundleNumber(unsigned int nrec, const config_data_t* prec)
{
    const int oldNumber = read(m_currentBundleNumberForUserGroup0, __func__);
    int number = oldNumber;
    for (unsigned int i = 0; i < nrec; ++i) {
        const QString name = QString::fromUtf8(prec[i].name);
        if (!name.startsWith(QLatin1String(CURRENT_BUNDLE_KEY))) {
            logDebug() << "StatusUpdater::setCurrentBundleNumber(): ERROR. prec[i].name=" << name
                       << " does not start with " << CURRENT_BUNDLE_KEY;
            continue;
        }
        if (!recordHasValue(prec[i])) {
            logDebug() << "StatusUpdater::setCurrentBundleNumber(): About to set "
                          "m_currentBundleNumberForUserGroup0 to -1, as prec[i].data == NULL";
            number = -1;
        } else if (recordIsInt(prec[i])) {
            number = recordInt(prec[i]);
        } else {
            logWarning() << "StatusUpdater::setCurrentBundleNumber(): Error: Expected VX_CONFIG_TYPE_INT for "
                            "name="
                         << name << " but got " << prec[i].type;
            continue;
        }
        store(m_currentBundleNumberForUserGroup0, number, __func__);
    }
    // A start is announced by the session's status; only the end is announced here.
    if (number == oldNumber || number != -1)
        return;
    setAllPredefinedBundlesIdle();
    announce(__func__, "stopUpdateConnectionTimerSignal", &StatusUpdater::stopUpdateConnectionTimerSignal);
    logEmission(__func__, "bundleStateChanged");
    emit bundleStateChanged(oldNumber, BUNDLE_STATUS_IDLE);
}

void StatusUpdater::setAllPredefinedBundlesIdle()
{
    StatusLock lock(statusMutex, __func__);
    for (bundle_t& bundle : definedBundles)
        bundle.status = BUNDLE_STATUS_IDLE;
}

void StatusUpdater::setPredefinedBundleStartTime(const QDateTime& startTime)
{
    StatusLock lock(statusMutex, __func__);
    if (bundle_t* bundle = findBundle(definedBundles, m_currentBundleNumberForUserGroup0))
        bundle->startTime = startTime;
}

QList<bundle_t> StatusUpdater::getDefinedBundles() const
{
    // Each copied under the lock: a shared list would be read here while the bus thread, which asks for its
    // count of users without an order of memory, may write into it again.
    StatusLock lock(statusMutex, __func__);
    QList<bundle_t> copies;
    for (const bundle_t& bundle : definedBundles)
        copies.append(bundle);
    return copies;
}

int StatusUpdater::getNumberOfDefinedBundles() const
{
    return static_cast<int>(read(definedBundles, __func__).size());
}

// Locked, since the list may be replaced by the bus thread at any moment.
bool StatusUpdater::getBundleByBundleNumber(int bundleNumber, bundle_t* out) const
{
    StatusLock lock(statusMutex, __func__);
    const bundle_t* const bundle = findBundle(definedBundles, bundleNumber);
    if (!bundle)
        return false;
    *out = *bundle;
    return true;
}

QString StatusUpdater::getPredefinedBundleName() const
{
    StatusLock lock(statusMutex, __func__);
    if (const bundle_t* bundle = findBundle(definedBundles, m_currentBundleNumberForUserGroup0))
        return bundle->name;
    QStringList numbers;
    for (const bundle_t& bundle : definedBundles)
        numbers.append(QString::number(bundle.bundleNumber));
    logDebug() << "StatusUpdater::getPredefinedBundleName(): No bundle with bundleNumber="
               << m_currentBundleNumberForUserGroup0
               << " among bundleNumbers=" << numbers.join(QString::fromLatin1(","));
    return QString::fromLatin1("Default");
}

// --- Class and texts of a connection ----------------------------------------------------------------------

int StatusUpdater::getConnClass(const connection_t& connection) const
{
    if (connection.traffic_class == TRAFFIC_CLASS_BACKGROUND)
        return 0;
    if (isLowRate(connection.max_bit_rate_download) && isLowRate(connection.max_bit_rate_upload))
        return 1;
    for (const RateClass& row : RATE_CLASSES)
        if (row.download == connection.max_bit_rate_download && row.upload == connection.max_bit_rate_upload)
            return row.connClass;
    return -1;
}

QString StatusUpdater::getElapsedTimeStr(const bundle_t& bundle) const
{
    if (bundle.status != BUNDLE_STATUS_RUNNING)
        return QString();
    return hoursMinutesSeconds(bundle.startTime.secsTo(QDateTime::currentDateTime()));
}

QString StatusUpdater::getBackgroundTotalStr(const bundle_t& bundle) const
{
    int total = bundle.backgroundTotal;
    if (total < 0) {
        logDebug() << "StatusUpdater::getBackgroundTotalStr(): No valid value available for backgroundTotal "
                      "(value="
                   << total << "). Using value=0";
        total = 0;
    }
    if (total < 1000)
        return QString::number(total) + QCoreApplication::translate("Shared_translations", " kB");
    // As many decimals as fit into four characters, two at most.
    QString number;
    for (int decimals = 2; decimals >= 0; --decimals) {
        number = QString::number(total / 1000.0, 'f', decimals);
        if (number.size() <= 4)
            break;
    }
    return number + tr(" MB");
}

// --- What the user asks for -------------------------------------------------------------------------------

void StatusUpdater::startBundle(int bundleNumber)
{
    bundle_t bundle;
    if (!getBundleByBundleNumber(bundleNumber, &bundle)) {
        logWarning() << "StatusUpdater::startBundle(): ERROR!!! bundleNumber=" << bundleNumber
                     << " does not exist in the list of known bundles !!!";
        return;
    }
    // The -1 ahead makes the start of the same number a change again.
    const QString key = QString::fromLatin1(START_BUNDLE_KEY);
    setCBusValue(key, -1);
    sleepMs(START_PAUSE_MS);
    setCBusValue(key, bundleNumber);
}

void StatusUpdater::stopBundle(int bundleNumber)
{
    logDebug() << "StatusUpdater::stopBundle(): bundleNumber=" << bundleNumber;
    setCBusValue(QString::fromLatin1("ram.net.user_groups.0.activated"), 0);
    setCBusValue(QString::fromLatin1(CURRENT_BUNDLE_KEY), -1);
}

void StatusUpdater::requestIsdnEnabled(int value) const
{
    setCBusValue(QString::fromLatin1("cfg.interfaces.isdn.enabled"), value);
}

void StatusUpdater::requestLanEnabled(int value) const
{
    setCBusValue(QString::fromLatin1("cfg.interfaces.lan.enabled"), value);
}

void StatusUpdater::requestPhoneEnabled(int value) const
{
    setCBusValue(QString::fromLatin1("cfg.interfaces.phone.enabled"), value);
}

void StatusUpdater::requestUsbEnabled(int value) const
{
    setCBusValue(QString::fromLatin1("cfg.interfaces.usb.enabled"), value);
}

void StatusUpdater::requestWifiEnabled(int value) const
{
    setCBusValue(QString::fromLatin1("cfg.interfaces.wlan.enabled"), value);
}
