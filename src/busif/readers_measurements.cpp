// Readers of measurements and of the terminal's state and identity. Bus thread only.
#include "busif/readers.h"

#include "busif/reader_support.h"
#include "common/log.h"
#include "model/battery.h"
#include "model/position.h"
#include "model/radio_module.h"
#include "model/statusupdater.h"
#include "model/wan.h"

namespace {

const int CIPHERING_NOT_READABLE = -2;

StatusUpdater* model()
{
    return StatusUpdater::getStatusUpdater();
}

// The fields in the order of reading. The charge state comes last and has a check of its own.
struct BatteryField {
    int battery_t::*field;
    const char* word;
    int fallback;
};
const BatteryField BATTERY_FIELDS[] = {
    {&battery_t::batteryConnectionStatus, "status", BATT_IN_ERROR},
    {&battery_t::temperature, "temperature", 0},
    {&battery_t::capacity, "relative_state_of_charge", 0},
    {&battery_t::minutesLeft, "average_time_to_empty", 0},
    {&battery_t::averageTimeToFull, "average_time_to_full", 0},
    {&battery_t::chargeState, "charge_discharge_status", BATT_CHARGE_STATE_UNKNOWN},
};

battery_t readBattery(const char* function, int number)
{
    battery_t battery;
    battery.isInternal = number == 1;
    const QByteArray prefix = "ram.status.battery." + QByteArray::number(number) + ".";
    for (const BatteryField& field : BATTERY_FIELDS)
        battery.*field.field = readKeyOr(field.fallback, function, prefix + field.word);
    if (battery.chargeState < BATT_CHARGE_STATE_UNKNOWN || battery.chargeState > BATT_PRECHARGING) {
        logDebug() << function << "(): Error!! Illegal value for chargeStateInt=" << battery.chargeState
                   << " for batt" << number << ".";
        battery.chargeState = BATT_CHARGE_STATE_UNKNOWN;
    }
    return battery;
}

struct Angle {
    bool positive;
    int degrees;
    int minutes;
    int thousandths; // of a minute
};

// From degrees times 100,000. Single precision, as the terminal's other displays calculate it, so that all
// show the same last digit.
Angle angleOf(int value)
{
    const float halfThousandth = 8.333333e-6f; // of a minute, in degrees: the last digit is rounded, not cut
    const float f = static_cast<float>(value) / 100000.0f;
    const bool positive = f >= 0.0f;
    const float t = positive ? f + halfThousandth : halfThousandth - f;
    const int degrees = static_cast<int>(t);
    const float m = (t - static_cast<float>(degrees)) * 60.0f;
    const int minutes = static_cast<int>(m);
    const int thousandths = static_cast<int>((m - static_cast<float>(minutes)) * 1000.0f);
    return {positive, degrees, minutes, thousandths};
}

int readFix(const char* function)
{
    const int fix = readKeyOr(0, function, "ram.status.position.fix");
    if (fix == 0 || fix == 2 || fix == 3)
        return fix;
    // The blank that the text lacks is missing on purpose.
    logDebug() << "ERROR!!!! tmpIntValue=" << fix << "is not a valid GPS_FIX type.";
    return 0;
}

} // namespace

void readBatteryData()
{
    logReaderStart(__func__);
    const battery_t first = readBattery(__func__, 1);
    const battery_t second = readBattery(__func__, 2);
    model()->setBattData(first, second);
}

void readExternalSupply()
{
    model()->setExternalSupplyPresent(
        readSingleInt(__func__, "ram.status.psumcu.events.external_supply", 0) != 0);
}

void readPosition()
{
    logReaderStart(__func__);
    gps_data_t position;
    // A missing angle reads as 0, which is positive and has zeros only.
    const Angle latitude = angleOf(readKeyOr(0, __func__, "ram.status.position.latitude"));
    position.latNorth = latitude.positive;
    position.latDeg = latitude.degrees;
    position.latMin = latitude.minutes;
    position.latMinFraction = latitude.thousandths;
    const Angle longitude = angleOf(readKeyOr(0, __func__, "ram.status.position.longitude"));
    position.longEast = longitude.positive;
    position.longDeg = longitude.degrees;
    position.longMin = longitude.minutes;
    position.longMinFraction = longitude.thousandths;
    position.displayPositionAllowed =
        readKeyOr(1, __func__, "rmcfg.protocols.bgan.status.gps_policy.display") != 0;
    position.numberOfGpsFound = readKeyOr(0, __func__, "ram.status.position.satellites");
    position.fix_type = readFix(__func__);
    logDebug() << "readPosition(): position.longMin=" << position.longMin;
    model()->setPosition(position);
}

void readSignalLevel()
{
    model()->setSignalLevel(readSingleInt(__func__, "ram.status.signal_strength", 0));
}

void readSignalLevelIcon()
{
    model()->setSignalLevelIcon(readSingleInt(__func__, "ram.status.signal_strength_norm", 0));
}

void readPointingMode()
{
    logReaderStart(__func__);
    int value = readKeyOr(POINTING_STATUS_UNKNOWN, __func__, "ram.status.pointed_status", NOT_IN_DATABASE,
                          "(): ERROR !!! ");
    logReaderValue(__func__, value);
    if (value < POINTING_STATUS_UNKNOWN || value > POINTING_STATUS_POINTED) {
        logDebug() << __func__ << ": ERROR: Unsupported pointing value=" << value;
        value = POINTING_STATUS_UNKNOWN;
    }
    model()->setPointingMode(static_cast<ENUM_POINTED_STATUS>(value));
}

void readCiphering()
{
    // A missing key is -1, which passes like any value; only -2 stands for nothing that could be known.
    const int value = askSingleInt(__func__, "rmcfg.protocols.umts.ciphering_capabilities", nullptr);
    if (value == CIPHERING_NOT_READABLE) {
        logDebug() << "readCiphering(): Warning: Could not read ciphering information from RM.";
        return;
    }
    model()->setCiphering(value);
}

void readExtendedSystemStatus()
{
    model()->setExtendedSystemStatus(readSingleInt(__func__, "ram.status.ext_system", SYSTEM_STATUS_UNDEFINED,
                                                   " not in database. Setting SYSTEM_STATUS_UNDEFINED"));
}

void readBganConnectionError()
{
    model()->setBganConnectionError(
        readSingleInt(__func__, "ram.status.ongoing_data_sessions.0.reason", 0, " not in database !!!!!"));
}

void readSwUploadStatus()
{
    logReaderStart(__func__);
    const int active =
        readKeyOr(0, __func__, "ram.status.sw_update.active", " not in database (=not active)");
    const int progress = readKeyOr(0, __func__, "ram.status.sw_update.progress");
    const int error = readKeyOr(0, __func__, "cfg.status.sw_update.error");
    logDebug() << __func__ << "(): active=" << active << ", progress=" << progress << ", error=" << error;
    model()->setSwUploadStatus(active, progress, error);
}

void readSwBuildDetails()
{
    logReaderStart(__func__);
    StatusUpdater* const m = model();
    const QString version = m->getCBusValueStr("ram.software_version.release.version");
    const int buildNr = m->getCBusValueInt("ram.software_version.release.buildnr");
    const QString buildId = m->getCBusValueStr("ram.software_version.release.buildid");
    const QString buildDate = m->getCBusValueStr("ram.software_version.release.builddate");
    // Missing, it reads as -1 and so marks the software as red label.
    const int redLabel = m->getCBusValueInt("ram.software_version.release.red_label");
    m->setSwBuildDetails(version, buildNr, redLabel, buildId, buildDate);
}

void readUnitSerialNumber()
{
    model()->setUnitSerialNumber(askSingleText(__func__, "rmcfg.platform.sysconf.serial_number"));
}

void readHpaSerialNumber()
{
    model()->setHpaSerialNumber(askSingleText(__func__, "rmcfg.platform.hpa_hw.unit_serial"));
}

void readImeiStr()
{
    model()->setImeiStr(askSingleText(__func__, "cfg.network_information.imei_number"));
}
