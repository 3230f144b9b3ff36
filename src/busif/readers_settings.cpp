// Readers of the user's settings. Bus thread only.
#include "busif/readers.h"

#include "busif/reader_support.h"
#include "common/log.h"
#include "model/language.h"
#include "model/statusupdater.h"
#include "runtime/config_client_api.h"

namespace {

const int DEFAULT_DISPLAY_TIMEOUT_S = 300;
const int DEFAULT_BRIGHTNESS = 4;

StatusUpdater* model()
{
    return StatusUpdater::getStatusUpdater();
}

// Like readSingleInt, but a database that has no value is given the fallback. It is not asked to save it to
// disk: that is left to the next setting that the user changes.
int readSettingWithDefault(const char* function, const char* key, int fallback)
{
    logReaderStart(function);
    int value = fallback;
    if (config_read_int(key, &value) != 0) {
        value = fallback;
        logDebug() << function << "(): " << key << NOT_IN_DATABASE;
        config_write_int(key, fallback);
    }
    logReaderValue(function, value);
    return value;
}

} // namespace

void readDisplayTimeout()
{
    model()->setScreenSaverTime(
        readSettingWithDefault(__func__, "cfg.display.timeout", DEFAULT_DISPLAY_TIMEOUT_S));
}

void readBrightness()
{
    model()->setBrightness(readSettingWithDefault(__func__, "cfg.display.brightness", DEFAULT_BRIGHTNESS));
}

void readLanguage()
{
    int value = readSingleInt(__func__, "cfg.language", LANG_ENGLISH);
    if (value < LANG_ENGLISH || value > LANG_JAPANESE) {
        logDebug() << "ERROR!!! StatusUpdater::readLanguage(): value=" << value
                   << " not within legal value range!!!";
        value = LANG_ENGLISH;
    }
    model()->setLanguage(static_cast<LANG_ENUM>(value));
}

void readAudioPointing()
{
    model()->setAudioPointing(readSingleInt(__func__, "cfg.audio_indication.pointing", 1));
}

void readPowerUpSetting()
{
    model()->setPowerUp(readSingleInt(__func__, "cfg.power_up.switch_on_when_external_power", 0));
}

void readPowerUpPointingRequiredSetting()
{
    model()->setPointingAtStartup(readSingleInt(__func__, "cfg.power_up.pointing_required", 1));
}

void readControlledByATCommands()
{
    const int value = readSingleInt(__func__, "ram.net.single_user_mode", 0);
    model()->setControlledByATCommands(truthOf(__func__, value));
}

void readACA()
{
    const int value = readSingleInt(__func__, "cfg.net.user_groups.0.automatic_activation", 0);
    model()->setACA(truthOf(__func__, value));
}

void readBondingEnabled()
{
    const int value = readSingleInt(__func__, "cfg.bonding.enabled", 0, " not in database.");
    model()->setBondingEnabled(truthOf(__func__, value));
}

void readHelpDeskStr()
{
    model()->setHelpDeskStr(askSingleText(__func__, "cfg.help_desk_number"));
}
