// The data sessions that run now: how the changed records of ram.status.ongoing_data_sessions become a
// list of bundles, and what is told of it.
//
// A session's entry arises with the first record of its user group and goes when its status key is
// deleted. Records come on the bus thread, in any order, so an entry can be seen half filled. The steps
// between the states are the database's and are not checked against each other.
#include "model/statusupdater.h"

#include "common/checked.h"
#include "common/log.h"
#include "model/config_record.h"

#include <QStringList>

// One number of a connection, by the end of its key. The function is what the log calls the store.
struct StatusUpdater::ContextField {
    const char* suffix;
    int connection_t::*field;
    const char* name;
    const char* function;
};

namespace {

const char SOURCE[] = "statusupdater";

// Places of a key's parts:
// ram.status.ongoing_data_sessions.<user group>.<field>
// ram.status.ongoing_data_sessions.<user group>.context.<context group>.<field>
enum {
    PART_USER_GROUP = 3,
    PART_CONTEXT = 4,
    PART_CONTEXT_GROUP = 5,
    PARTS_MIN = 5,
    PARTS_WITHOUT_CONTEXT = 6
};

bool counts(const bundle_t& session)
{
    return session.status == BUNDLE_STATUS_INITIALIZING || session.status == BUNDLE_STATUS_RUNNING;
}

// Anything but an int where an int must stand means that the database is not the one this was made for.
int valueOf(const config_data_t& record)
{
    panelAssert(recordIsInt(record), SOURCE, __LINE__);
    return recordInt(record);
}

void logAutoCreate(const char* function, bool autoCreate, int value)
{
    if (autoCreate)
        logDebug() << "StatusUpdater::" << function << "(): autoCreate=TRUE";
    else
        logDebug() << "StatusUpdater::" << function
                   << "(): autoCreate=FALSE. Do not auto-create bundle, value to store=" << value;
}

void logNotStored(const char* function, const char* field)
{
    logDebug() << "StatusUpdater::" << function
               << "(): Do not change activeConnectionsAndBundles, as bundle was not found AND '" << field
               << "' field was deleted from cfg database";
}

} // namespace

// --- Records
// ------------------------------------------------------------------------------------------------

void StatusUpdater::setActiveConnectionsAndBundles(unsigned int nrec, const config_data_t* prec)
{
    QList<int> deletedGroups;
    for (unsigned int i = 0; i < nrec; ++i)
        addSessionRecord(prec[i], deletedGroups);
    for (int group : deletedGroups)
        deleteActiveConnectionsAndBundles(group);
    if (debugLogWanted())
        debugActiveConnectionsAndBundles(read(activeConnectionsAndBundles, __func__), "After update");
}

bool StatusUpdater::sanityCheckSetActiveConnectionsAndBundles(const QStringList& strList) const
{
    const char function[] = "StatusUpdater::sanityCheckSetActiveConnectionsAndBundles()";
    const QString dump = strList.join(QString::fromLatin1(" "));
    if (strList.size() < PARTS_MIN) {
        logWarning() << function
                     << ": ERROR. Too small size. strList.size()=" << static_cast<int>(strList.size()) << ": "
                     << dump;
        return false;
    }
    if (strList.at(0) == QLatin1String("ram") && strList.at(1) == QLatin1String("status") &&
        strList.at(2) == QLatin1String("ongoing_data_sessions"))
        return true;
    logWarning() << function << ": ERROR: strList.at(0)=" << strList.at(0)
                 << ", strList.at(1)=" << strList.at(1) << ", strList.at(2)=" << strList.at(2);
    return false;
}

void StatusUpdater::addSessionRecord(const config_data_t& record, QList<int>& deletedGroups)
{
    const char function[] = "StatusUpdater::setActiveConnectionsAndBundles()";
    const QString name = QString::fromUtf8(record.name);
    const QStringList strList = name.split(QChar::fromLatin1('.'));
    if (!sanityCheckSetActiveConnectionsAndBundles(strList))
        return;
    bool ok = false;
    const int group = strList.at(PART_USER_GROUP).toInt(&ok);
    if (!ok) {
        logWarning() << function
                     << ": ERROR: Could not detect user group value in field=" << strList.at(PART_USER_GROUP);
        return;
    }
    for (const char* field : {"status", "time", "bytes_in_out_kb"}) {
        if (strList.last() == QLatin1String(field)) {
            addSessionField(group, field, record, deletedGroups);
            return;
        }
    }
    if (strList.size() <= PARTS_WITHOUT_CONTEXT)
        return;
    if (strList.at(PART_CONTEXT) != QLatin1String("context"))
        logDebug() << function << ": Unsupported fields for line=" << name;
    else
        addContextRecord(group, strList, record);
}

void StatusUpdater::addSessionField(int group, const char* field, const config_data_t& record,
                                    QList<int>& deletedGroups)
{
    const bool present = recordHasValue(record);
    const int value = present ? valueOf(record) : 0;
    if (qstrcmp(field, "time") == 0) {
        setActiveConnectionOrBundleFieldTime(group, value);
    } else if (qstrcmp(field, "bytes_in_out_kb") == 0) {
        setActiveConnectionOrBundleFieldBackgroundTotal(group, present ? value : -1);
    } else if (!present) {
        setActiveConnectionOrBundleFieldStatus(group, BUNDLE_STATUS_DELETED);
        deletedGroups.append(group);
    } else if (value < BUNDLE_STATUS_IDLE || value > BUNDLE_STATUS_RUNNING) {
        logWarning() << "StatusUpdater::setActiveConnectionsAndBundles(): ERROR!!!! bundleStatusInt="
                     << value;
    } else {
        setActiveConnectionOrBundleFieldStatus(group, static_cast<BUNDLE_STATUS>(value));
    }
}

void StatusUpdater::addContextRecord(int group, const QStringList& strList, const config_data_t& record)
{
    static const ContextField FIELDS[] = {
        {"bw_up", &connection_t::guaranteed_bit_rate_upload, "guaranteed_bit_rate_upload",
         "setActiveConnectionOrBundleFieldBwUp"},
        {"bw_down", &connection_t::guaranteed_bit_rate_download, "guaranteed_bit_rate_download",
         "setActiveConnectionOrBundleFieldBwDown"},
        {"max_bw_up", &connection_t::max_bit_rate_upload, "max_bit_rate_upload",
         "setActiveConnectionOrBundleFieldMaxBwUp"},
        {"max_bw_down", &connection_t::max_bit_rate_download, "max_bit_rate_download",
         "setActiveConnectionOrBundleFieldMaxBwDown"},
        {"traffic_class", &connection_t::traffic_class, "traffic_class",
         "setActiveConnectionOrBundleFieldTrafficClass"},
    };
    bool ok = false;
    const int context = strList.at(PART_CONTEXT_GROUP).toInt(&ok);
    if (!ok) {
        logWarning() << "StatusUpdater::setActiveConnectionsAndBundles(): ERROR: Could not detect "
                        "wanContextGroup number in field="
                     << strList.at(PART_CONTEXT_GROUP);
        return;
    }
    for (const ContextField& field : FIELDS) {
        if (strList.last() != QLatin1String(field.suffix))
            continue;
        if (recordHasValue(record))
            setActiveConnectionOrBundleField(field, group, context, valueOf(record));
        else
            removeActiveConnectionFromWanUserGroup(group, context);
        return;
    }
}

// --- Entries
// ------------------------------------------------------------------------------------------------

int StatusUpdater::getActiveConnectionBundleIndexByWanUserGroup(int group, bool autoCreate)
{
    StatusLock lock(statusMutex, __func__);
    for (int i = 0; i < activeConnectionsAndBundles.size(); ++i)
        if (activeConnectionsAndBundles.at(i).wanUserGroup == group)
            return i;
    lock.unlock();
    return autoCreate ? createNewActiveConnectionBundle(group) : -1;
}

int StatusUpdater::createNewActiveConnectionBundle(int group)
{
    bundle_t session;
    session.wanUserGroup = group;
    session.backgroundTotal = -1; // not known until its record comes
    session.startTime = QDateTime::currentDateTime();
    StatusLock lock(statusMutex, __func__);
    activeConnectionsAndBundles.append(session);
    return static_cast<int>(activeConnectionsAndBundles.size()) - 1;
}

int StatusUpdater::getActiveContextIndex(int group, int context, bool autoCreate)
{
    const int index = getActiveConnectionBundleIndexByWanUserGroup(group, autoCreate);
    if (index < 0)
        return -1;
    StatusLock lock(statusMutex, __func__);
    QList<connection_t>& connections = activeConnectionsAndBundles[index].connections;
    for (int i = 0; i < connections.size(); ++i)
        if (connections.at(i).wanContextGroup == context)
            return i;
    if (!autoCreate)
        return -1;
    connection_t connection;
    connection.wanContextGroup = context;
    connections.append(connection);
    return static_cast<int>(connections.size()) - 1;
}

// The index of a session whose field is to be stored; -1, with a log line, if it isn't there.
int StatusUpdater::findSessionToStore(int group, bool autoCreate, const char* function, const char* field)
{
    const int index = getActiveConnectionBundleIndexByWanUserGroup(group, autoCreate);
    if (index < 0)
        logNotStored(function, field);
    return index;
}

void StatusUpdater::setActiveConnectionOrBundleFieldTime(int group, int startTime)
{
    const bool autoCreate = startTime != 0;
    logAutoCreate(__func__, autoCreate, startTime);
    const int index = findSessionToStore(group, autoCreate, __func__, "startTime");
    if (index < 0)
        return;
    const QDateTime start = QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(startTime) * 1000);
    StatusLock lock(statusMutex, __func__);
    activeConnectionsAndBundles[index].startTime = start;
    lock.unlock();
    logDebug() << "StatusUpdater::setActiveConnectionOrBundleFieldTime(): activeConnectionsAndBundles["
               << index << "].startTime stored with value=" << startTime;
    if (group == 0)
        setPredefinedBundleStartTime(start);
}

void StatusUpdater::setActiveConnectionOrBundleFieldBackgroundTotal(int group, int total)
{
    const bool autoCreate = total >= 0;
    logAutoCreate(__func__, autoCreate, total);
    const int index = findSessionToStore(group, autoCreate, __func__, "backgroundTotal");
    if (index < 0)
        return;
    StatusLock lock(statusMutex, __func__);
    activeConnectionsAndBundles[index].backgroundTotal = total;
    lock.unlock();
    logDebug() << "StatusUpdater::setActiveConnectionOrBundleFieldBackgroundTotal(): "
                  "activeConnectionsAndBundles["
               << index << "].backgroundTotal stored with value=" << total;
}

void StatusUpdater::setActiveConnectionOrBundleField(const ContextField& field, int group, int context,
                                                     int value)
{
    const bool autoCreate = value >= 0;
    logAutoCreate(field.function, autoCreate, value);
    const int index = getActiveConnectionBundleIndexByWanUserGroup(group, autoCreate);
    const int contextIndex = getActiveContextIndex(group, context, autoCreate);
    if (index < 0 || contextIndex < 0) {
        logNotStored(field.function, field.name);
        return;
    }
    StatusLock lock(statusMutex, field.function);
    activeConnectionsAndBundles[index].connections[contextIndex].*field.field = value;
    lock.unlock();
    logDebug() << "StatusUpdater::" << field.function << "(): activeConnectionsAndBundles[" << index
               << "].connections[" << contextIndex << "]." << field.name << " stored with value=" << value;
}

void StatusUpdater::setActiveConnectionOrBundleFieldStatus(int group, BUNDLE_STATUS status)
{
    const int oldNumber = getNumberOfActiveConnectionsAndBundles();
    const bool autoCreate = status != BUNDLE_STATUS_DELETED && status != BUNDLE_STATUS_UNKNOWN;
    if (!autoCreate)
        logDebug()
            << "StatusUpdater::setActiveConnectionOrBundleFieldStatus(): Do not auto-create bundle, value "
               "to store seems to be deleted";
    const int index = findSessionToStore(group, autoCreate, __func__, "status");
    if (index >= 0) {
        StatusLock lock(statusMutex, __func__);
        activeConnectionsAndBundles[index].status = status;
        lock.unlock();
        if (group == 0)
            storePredefinedSession(index, status);
        announce(__func__, "statusChanged", &StatusUpdater::statusChanged);
        if (group == 0) {
            lock.relock();
            const int bundleNumber = activeConnectionsAndBundles.at(index).bundleNumber;
            lock.unlock();
            logEmission(__func__, "bundleStateChanged");
            emit bundleStateChanged(bundleNumber, status);
        } else {
            logDebug()
                << "StatusUpdater::setActiveConnectionOrBundleFieldStatus(): wanUserGroup is not 0. Do not "
                   "emit bundleStateChanged";
        }
    }
    const int number = getNumberOfActiveConnectionsAndBundles();
    if (number == oldNumber)
        return;
    announce(__func__, "numberOfConnectionsChanged", &StatusUpdater::numberOfConnectionsChanged);
    if (number < 1)
        announce(__func__, "stopUpdateConnectionTimerSignal",
                 &StatusUpdater::stopUpdateConnectionTimerSignal);
    else
        announce(__func__, "startUpdateConnectionTimerSignal",
                 &StatusUpdater::startUpdateConnectionTimerSignal);
}

// The session of user group 0 is the predefined bundle: the two lists learn of each other.
void StatusUpdater::storePredefinedSession(int index, BUNDLE_STATUS status)
{
    StatusLock lock(statusMutex, __func__);
    const int current = m_currentBundleNumberForUserGroup0;
    if (current >= 0)
        activeConnectionsAndBundles[index].bundleNumber = current;
    else if (status == BUNDLE_STATUS_INITIALIZING || status == BUNDLE_STATUS_RUNNING)
        logDebug() << "Active connection in wanUserGroup 0 seems not to be a predefined bundle.";
    for (bundle_t& bundle : definedBundles)
        bundle.status = bundle.bundleNumber == current ? status : BUNDLE_STATUS_IDLE;
    lock.unlock();
    if (status != BUNDLE_STATUS_RUNNING)
        return;
    const QString name = getPredefinedBundleName();
    lock.relock();
    activeConnectionsAndBundles[index].name = name;
}

// The count and its signals were dealt with when the status was stored.
void StatusUpdater::deleteActiveConnectionsAndBundles(int group)
{
    StatusLock lock(statusMutex, __func__);
    bool removed = false;
    for (int i = static_cast<int>(activeConnectionsAndBundles.size()) - 1; i >= 0; --i) {
        if (activeConnectionsAndBundles.at(i).wanUserGroup == group) {
            activeConnectionsAndBundles.removeAt(i);
            removed = true;
        }
    }
    if (!removed)
        logWarning()
            << "StatusUpdater::deleteActiveConnectionsAndBundles(): Could not delete for wanUserGroup="
            << group;
}

void StatusUpdater::removeActiveConnectionFromWanUserGroup(int group, int context)
{
    const int index = getActiveConnectionBundleIndexByWanUserGroup(group, false);
    const int contextIndex = getActiveContextIndex(group, context, false);
    if (index < 0 || contextIndex < 0) {
        logDebug() << "StatusUpdater::removeActiveConnectionFromWanUserGroup(): Nothing to remove for "
                      "wanUserGroup="
                   << group << ", wanContextGroup=" << context;
        return;
    }
    StatusLock lock(statusMutex, __func__);
    activeConnectionsAndBundles[index].connections.removeAt(contextIndex);
    lock.unlock();
    logDebug()
        << "StatusUpdater::removeActiveConnectionFromWanUserGroup(): Successfully removed wanContextGroup="
        << context;
}

// --- What the screens ask ----------------------------------------------------------------------------------

int StatusUpdater::getNumberOfActiveConnectionsAndBundles() const
{
    StatusLock lock(statusMutex, __func__);
    int number = 0;
    for (const bundle_t& session : activeConnectionsAndBundles)
        number += counts(session) ? 1 : 0;
    return number;
}

// Anything but idle counts here, so a session of which nothing is known yet does as well.
bool StatusUpdater::predefinedBundleActive() const
{
    StatusLock lock(statusMutex, __func__);
    if (m_currentBundleNumberForUserGroup0 == -1)
        return false;
    for (const bundle_t& session : activeConnectionsAndBundles)
        if (session.wanUserGroup == 0 && session.status != BUNDLE_STATUS_IDLE)
            return true;
    return false;
}

bool StatusUpdater::wanUsergroupZeroActive() const
{
    StatusLock lock(statusMutex, __func__);
    for (const bundle_t& session : activeConnectionsAndBundles)
        if (session.wanUserGroup == 0 && counts(session))
            return true;
    return false;
}
