// What the screens show as numbers and labels: signal, position, batteries and supply.
#include "model/statusupdater.h"

#include "common/constants.h"
#include "common/log.h"
#include "model/duration.h"

#include <QCoreApplication>

namespace {

const int SIGNAL_LEVEL_MIN = 320; // tenths; below counts as no signal

// Values of fix_type
enum { FIX_NONE = 0, FIX_2D = 2, FIX_3D = 3 };

// Two labels of a battery depend on its charge state.
struct ChargeText {
    int chargeState;
    const char* text;
};

const ChargeText CHARGE_TEXTS[] = {
    {BATT_IDLE, QT_TRANSLATE_NOOP("StatusUpdater", "Idle")},
    {BATT_CHARGING, QT_TRANSLATE_NOOP("StatusUpdater", "Charging")},
    {BATT_DISCHARGING, QT_TRANSLATE_NOOP("StatusUpdater", "Discharging")},
};

// A text with the places %1 and %2 for hours and minutes.
QString withHoursAndMinutes(const QString& text, long long minutes)
{
    return text.arg(minutes / 60).arg(twoDigits(minutes % 60));
}

} // namespace

// --- Signal ----------------------------------------------------------------------------------------------

void StatusUpdater::setSignalLevel(int value)
{
    store(signalLevel, value, __func__);
    announce(__func__, "signalLevelChanged", &StatusUpdater::signalLevelChanged, value);
}

int StatusUpdater::getSignalLevel() const
{
    return read(signalLevel, __func__);
}

void StatusUpdater::setSignalLevelIcon(int value)
{
    store(signalLevelNumBars, value, __func__);
    announce(__func__, "signalLevelNumBarsChanged", &StatusUpdater::signalLevelNumBarsChanged, value);
}

int StatusUpdater::getSignalLevelNumBars() const
{
    return read(signalLevelNumBars, __func__);
}

QString StatusUpdater::getSignalLevelStr(int value) const
{
    if (value < SIGNAL_LEVEL_MIN)
        return QString::fromLatin1("0.0");
    return QString::fromLatin1("%1.%2").arg(value / 10).arg(value % 10);
}

// --- Position --------------------------------------------------------------------------------------------

void StatusUpdater::setPosition(const gps_data_t& value)
{
    store(pos, value, __func__);
    announce(__func__, "gpsDataChanged", &StatusUpdater::gpsDataChanged);
}

int StatusUpdater::getNumberOfGpsFound() const
{
    return read(pos, __func__).numberOfGpsFound;
}

bool StatusUpdater::getGpsDisplayPositionAllowed() const
{
    return read(pos, __func__).displayPositionAllowed;
}

QString StatusUpdater::getGpsPositionStr() const
{
    StatusLock lock(statusMutex, __func__);
    if (!pos.displayPositionAllowed)
        return tr("Position acquired") + QChar::fromLatin1(' ');
    const QString minuteSign = QString::fromLatin1("' ");
    return (pos.latNorth ? tr("N") : tr("S")) + twoDigits(pos.latDeg) + degreeChar + twoDigits(pos.latMin) +
           minuteSign + (pos.longEast ? tr("E") : tr("W")) + twoDigits(pos.longDeg) + degreeChar +
           twoDigits(pos.longMin) + minuteSign;
}

bool StatusUpdater::getGpsAcquired() const
{
    const int fix = read(pos, __func__).fix_type;
    if (fix != FIX_NONE && fix != FIX_2D && fix != FIX_3D)
        logWarning() << "StatusUpdater::getGpsAcqured: ERROR! pos.fix_type=" << fix << " is unknown state!";
    return fix == FIX_2D || fix == FIX_3D;
}

// --- Batteries -------------------------------------------------------------------------------------------

void StatusUpdater::setBattData(const battery_t& internal, const battery_t& external)
{
    StatusLock lock(statusMutex, __func__);
    battInt = internal;
    battExt = external;
    lock.unlock();
    announce(__func__, "battDataChanged", &StatusUpdater::battDataChanged);
}

battery_t StatusUpdater::getBattInt() const
{
    return read(battInt, __func__);
}

battery_t StatusUpdater::getBattExt() const
{
    return read(battExt, __func__);
}

void StatusUpdater::setExternalSupplyPresent(bool value)
{
    const bool oldValue = externalSupplyPresent; // one writer only, the bus thread: no lock needed to look
    StatusLock lock(statusMutex, __func__);
    externalSupplyPresent = value;
    lock.unlock();
    if (value != oldValue)
        announce(__func__, "battDataChanged", &StatusUpdater::battDataChanged);
}

QString StatusUpdater::getBattCapacityLabel(BATT_TYPE_ENUM type) const
{
    const battery_t batt = type == BATT_TYPE_INTERNAL ? getBattInt() : getBattExt();
    if (batt.chargeState == BATT_PRECHARGING)
        return tr("Precharging");
    for (const ChargeText& row : CHARGE_TEXTS)
        if (row.chargeState == batt.chargeState)
            return QString::number(batt.capacity) + QString::fromLatin1("% ") +
                   QCoreApplication::translate("StatusUpdater", row.text);
    logWarning() << "StatusUpdater::getBattCapacityLabel: ERROR!!! batt.chargeState=" << batt.chargeState
                 << " is undefined!";
    return QString();
}

QString StatusUpdater::getBattTempValueLabel(BATT_TYPE_ENUM type) const
{
    const battery_t batt = type == BATT_TYPE_INTERNAL ? getBattInt() : getBattExt();
    return QString::number(batt.temperature) + degreeChar + tr("C");
}

QString StatusUpdater::getBatt2ndLabel(BATT_TYPE_ENUM type) const
{
    const bool internal = type == BATT_TYPE_INTERNAL;
    const battery_t batt = internal ? getBattInt() : getBattExt();
    const battery_t other = internal ? getBattExt() : getBattInt();
    switch (batt.batteryConnectionStatus) {
    case BATT_PRESENT:
        return presentBatt2ndLabel(batt, other);
    case BATT_ABSENT:
        return QString();
    case BATT_IN_ERROR:
        return tr("Battery error!");
    default:
        logWarning() << "StatusUpdater::getBatt2ndLabel: ERROR! batt.batteryConnectionStatus="
                     << batt.batteryConnectionStatus << " is an unknown state!!!!";
        return QString();
    }
}

QString StatusUpdater::presentBatt2ndLabel(const battery_t& batt, const battery_t& other) const
{
    const QString remaining = batt.minutesLeft >= 1
                                  ? withHoursAndMinutes(tr("Remaining time %1:%2 h"), batt.minutesLeft)
                                  : QString();
    switch (batt.chargeState) {
    case BATT_IDLE: // it waits for its turn while the other one gives the power
        return other.chargeState == BATT_DISCHARGING ? remaining : QString();
    case BATT_CHARGING:
        return batt.averageTimeToFull > 0
                   ? withHoursAndMinutes(tr("Remaining charge time %1:%2 h"), batt.averageTimeToFull)
                   : tr("Estimating time...");
    case BATT_DISCHARGING:
        return remaining.isEmpty() ? tr("Estimating time...") : remaining;
    case BATT_PRECHARGING:
        return QString();
    default:
        logWarning() << "StatusUpdater::getBatt2ndLabel: ERROR!!! batt.chargeState=" << batt.chargeState
                     << " is undefined!";
        return QString();
    }
}

QString StatusUpdater::getTotalBattRemainingTimeStr() const
{
    StatusLock lock(statusMutex, __func__);
    if (externalSupplyPresent) {
        logDebug() << "StatusUpdater::getTotalBattRemainingTimeStr(): Show charging symbol";
        return QString(chargeChar);
    }
    long long minutes = 0;
    for (const battery_t* batt : {&battInt, &battExt})
        if (batt->batteryConnectionStatus == BATT_PRESENT && batt->minutesLeft >= 1)
            minutes += batt->minutesLeft;
    return minutes > 0 ? withHoursAndMinutes(QString::fromLatin1("%1:%2"), minutes) : QString();
}

int StatusUpdater::getNumberOfBatteries() const
{
    StatusLock lock(statusMutex, __func__);
    return (battInt.batteryConnectionStatus == BATT_PRESENT ? 1 : 0) +
           (battExt.batteryConnectionStatus == BATT_PRESENT ? 1 : 0);
}

int StatusUpdater::getTotalBattCapacity() const
{
    StatusLock lock(statusMutex, __func__);
    const bool internal = battInt.batteryConnectionStatus == BATT_PRESENT;
    const bool external = battExt.batteryConnectionStatus == BATT_PRESENT;
    const long long sum = (internal ? battInt.capacity : 0LL) + (external ? battExt.capacity : 0LL);
    return static_cast<int>(internal && external ? sum / 2 : sum);
}
