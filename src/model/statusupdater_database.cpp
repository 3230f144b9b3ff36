// The model's way to the database: two reads, a write, and the switch of the terminal's status reports.
//
// Here stand the rules for a value that is missing (-1 or an empty text) and for a bus that isn't there
// yet (eleven rounds of one second, then the end of the process). Reads block and belong to the bus
// thread; writes go from any thread and nobody answers to them.
#include "model/statusupdater.h"

#include "common/log.h"
#include "model/ascii.h"
#include "runtime/config_client_api.h"
#include "runtime/vx_posix_reset.h"

// What a wait for the bus says. The texts differ from operation to operation, and are kept as they are.
struct StatusUpdater::BusWait {
    const char* retry;
    QtMsgType lastWordsType;
    const char* lastWords;
    const char* panic;
};

namespace {

const int BUS_ROUNDS = 11;
const int BUS_ROUND_MS = 1000;
const int STRING_SIZE = 300; // of a text that is read, with its NUL

struct CodeName {
    int code;
    const char* name;
};

const CodeName CODE_NAMES[] = {
    {VX_CONFIG_ERR, "VX_CONFIG_ERR"},
    {VX_CONFIG_DB_ERR, "VX_CONFIG_DB_ERR"},
    {VX_CONFIG_DB_FULL, "VX_CONFIG_DB_FULL"},
    {VX_CONFIG_READONLY, "VX_CONFIG_READONLY"},
    {VX_CONFIG_NO_RECORD, "VX_CONFIG_NO_RECORD"},
    {VX_CONFIG_WRONG_TYPE, "VX_CONFIG_WRONG_TYPE"},
    {VX_CONFIG_BUFFER_TOO_SMALL, "VX_CONFIG_BUFFER_TOO_SMALL"},
    {VX_CONFIG_VERIFY_FAIL, "VX_CONFIG_VERIFY_FAIL"},
};

const char* nameOfCode(int code)
{
    for (const CodeName& row : CODE_NAMES)
        if (row.code == code)
            return row.name;
    return "";
}

// The terminal's status reports: what is written when they are switched on, and whether 0 is written when
// they are switched off. The two requests for an update at once have nothing to take back.
struct Subscription {
    const char* key;
    int on;
    bool clearedWhenOff;
};

const Subscription SUBSCRIPTIONS[] = {
    {"ram.status.psumcu.events.subscribe.external_supply.lumenpanel", 1, true},
    {"ram.status.psumcu.events.subscribe.battery_presence.lumenpanel", 1, true},
    {"ram.status.psumcu.events.subscribe.charging_status.lumenpanel", 1, true},
    {"ram.status.psumcu.events.subscribe.threshold.temperature.lumenpanel", 1, true},
    {"ram.status.psumcu.events.subscribe.threshold.average_time.lumenpanel", 1, true},
    {"ram.status.psumcu.events.subscribe.threshold.remaining_capacity.lumenpanel", 500, true},
    {"ram.status.psumcu.events.subscribe.battery_alarm.lumenpanel", 1, true},
    {"ram.status.battery.update_now", 1, false},
    {"ram.status.signal_strength.update_now", 1, false},
    {"ram.status.signal_strength.update_interval", 1000, true},
};

} // namespace

void StatusUpdater::waitForBus(const BusWait& texts) const
{
    for (int round = 0; round < BUS_ROUNDS; ++round) {
        if (getHasConnectedToCBus())
            return;
        logDebug() << texts.retry;
        sleepMs(BUS_ROUND_MS);
    }
    LogLine(texts.lastWordsType) << texts.lastWords;
    vx_panic("%s", texts.panic);
}

int StatusUpdater::getCBusValueInt(const QString& key) const
{
    static const BusWait WAIT = {
        "StatusUpdater::getCBusValueInt(): CBus not ready yet. Waiting 1 second to retry.", QtWarningMsg,
        "ERROR!!!  lumenpanel: vx_panic: StatusUpdater::getCBusValueInt(): ERROR!!! Can not read from cbus..",
        "StatusUpdater::getCBusValueInt(): ERROR!!! Can not read from cbus, as connection is not "
        "established! "
        "Exiting lumenpanel."};
    validateThisIsCBusThread(QString::fromLatin1("getCBusValueInt") + key);
    if (!getHasConnectedToCBus()) {
        logWarning() << "StatusUpdater::getCBusValueInt(): CBus not ready yet.";
        waitForBus(WAIT);
    }
    int value = -1;
    const int code = config_read_int(asciiOf(key).constData(), &value);
    if (code == 0)
        return value;
    logDebug() << "StatusUpdater::getCBusValueInt(): ERROR!!! Returned " << nameOfCode(code)
               << " when trying to read " << key;
    return -1;
}

QString StatusUpdater::getCBusValueStr(const QString& key) const
{
    // The retry text bears the other read's name, as it always has.
    static const BusWait WAIT = {
        "StatusUpdater::getCBusValueInt(): CBus not ready yet. Waiting 1 second to retry.", QtDebugMsg,
        "ERROR!!!  lumenpanel: vx_panic: StatusUpdater::getCBusValueStr(): ERROR!!! Can not read from cbus!",
        "StatusUpdater::getCBusValueStr(): ERROR!!! Can not read from cbus, as connection is not "
        "established! "
        "Exiting lumenpanel."};
    validateThisIsCBusThread(QString::fromLatin1("getCBusValueStr") + key);
    waitForBus(WAIT);
    char text[STRING_SIZE];
    if (config_read_string(asciiOf(key).constData(), text, sizeof(text)) == 0)
        return QString::fromUtf8(text);
    logDebug() << "getCBusValueStr(): " << key << " not in database!!!";
    return QString();
}

void StatusUpdater::setCBusValue(const QString& key, int value) const
{
    static const BusWait WAIT = {
        "StatusUpdater::setCBusValue(): CBus not ready yet. Waiting 1 second to retry.", QtDebugMsg,
        "ERROR!!!  lumenpanel: vx_panic: StatusUpdater::setCBusValue(): ERROR!!! Can not write to cbus.",
        "StatusUpdater::setCBusValue(): ERROR!!! Can not write to cbus, as connection is not established! "
        "Exiting lumenpanel."};
    logDebug() << "StatusUpdater::setCBusValue(): Start of function. About to store " << key
               << " with value=" << value;
    waitForBus(WAIT);
    config_write_int(asciiOf(key).constData(), value);
    syncIfPersistent(key);
}

void StatusUpdater::setCBusValue(const QString& key, const QString& value) const
{
    static const BusWait WAIT = {
        "StatusUpdater::setCBusValue(): CBus not ready yet. Waiting 1 second to retry.", QtDebugMsg,
        "ERROR!!!  lumenpanel: vx_panic: StatusUpdater::setCBusValue(string): ERROR!!! Can not write to "
        "cbus.",
        "StatusUpdater::setCBusValue(string): ERROR!!! Can not write to cbus, as connection is not "
        "established! Exiting lumenpanel."};
    logDebug() << "StatusUpdater::setCBusValue(): Start of function. About to store " << key
               << " with value=" << value;
    waitForBus(WAIT);
    config_write_string(asciiOf(key).constData(), asciiOf(value).constData());
    syncIfPersistent(key);
}

void StatusUpdater::syncIfPersistent(const QString& key) const
{
    if (!key.startsWith(QLatin1String("cfg"), Qt::CaseSensitive))
        return;
    config_sync("cfg");
    logDebug() << "StatusUpdater::setCBusValue(): Sync cfg to disk done.";
}

void StatusUpdater::subscribeToChanges(bool value)
{
    if (!storeChanged(subscribedToChanges, value, __func__))
        return;
    for (const Subscription& row : SUBSCRIPTIONS)
        if (value || row.clearedWhenOff)
            setCBusValue(QString::fromLatin1(row.key), value ? row.on : 0);
    logDebug() << "StatusUpdater::subscribeToChanges(): Value changed. About to emit signal "
                  "signalSubscribeToPollRmValues("
               << value << ")";
    emit signalSubscribeToPollRmValues(value);
}
