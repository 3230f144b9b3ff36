// The user's settings, the identity texts of the terminal, software update, PIN, and the short times in
// which a text or the keys are held back. Values are kept as they come; what is out of range is logged
// where it is mapped.
#include "model/statusupdater.h"

#include "common/log.h"
#include "common/paths.h"
#include "model/setting_items.h"

#include <QCoreApplication>
#include <QTimer>

#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

namespace {

const int PIN_MS = 2000;
const int HIDE_POINT_NOW_MS = 2000;
const int IGNORE_KEYS_MS = 700;

template <int N>
int itemOf(const SettingItem (&items)[N], int value, WIDGET_ITEM_ID_ENUM other, const char* error,
           const char* errorEnd)
{
    for (const SettingItem& row : items)
        if (row.value == value)
            return row.item;
    logWarning() << error << value << errorEnd;
    return other;
}

const char NO_ENUM[] = " does not have associated enum!!!!!";

// UTF-8. The Russian name begins with a Latin P.
const char* const LANGUAGE_NAMES[] = {"English",
                                      "Fran\303\247ais",
                                      "Deutsch",
                                      "P\xd1\x83\xd1\x81\xd1\x81\xd0\xba\xd0\xb8\xd0\xb9",
                                      "Espa\xc3\xb1ol",
                                      "\xe4\xb8\xad\xe6\x96\x87",
                                      "\xe6\x97\xa5\xe6\x9c\xac\xe8\xaa\x9e",
                                      "LANG_UNDEFINED"};
const int NUMBER_OF_LANGUAGE_NAMES = sizeof(LANGUAGE_NAMES) / sizeof(LANGUAGE_NAMES[0]);

// Brightness of the display by level 0 to 7, and for a level that is none of these.
const int DRIVER_VALUES[] = {127, 0, 43, 85, 128, 170, 213, 255};
const int NUMBER_OF_LEVELS = sizeof(DRIVER_VALUES) / sizeof(DRIVER_VALUES[0]);
const int DRIVER_VALUE_OTHER = 128;

int driverValue(int level)
{
    if (level < 0 || level >= NUMBER_OF_LEVELS) {
        logDebug() << "StatusUpdater::setBrightnessInDriver(): ERROR !!!: m_brightnessLevel=" << level
                   << " is undefinded!";
        return DRIVER_VALUE_OTHER;
    }
    if (level == 0)
        logWarning() << "StatusUpdater::setBrightnessInDriver(): ERROR: Auto brightness not implemented yet";
    return DRIVER_VALUES[level];
}

bool isInterface(int interface)
{
    return interface >= INTERFACE_NAME_FIRST && interface <= INTERFACE_NAME_LAST;
}

} // namespace

// --- Settings and their menu items ---------------------------------------------------------------------

void StatusUpdater::setScreenSaverTime(int seconds)
{
    if (storeChanged(m_screenSaverTime, seconds, __func__))
        announce(__func__, "screenSaverTimeChanged", &StatusUpdater::screenSaverTimeChanged);
}

int StatusUpdater::getScreenSaverTime() const
{
    return read(m_screenSaverTime, __func__);
}

int StatusUpdater::getScreenSaverTimeEnum() const
{
    return itemOf(SCREEN_SAVER_ITEMS, read(m_screenSaverTime, __func__), ITEM_TIMEOUT_30_SECONDS,
                  "StatusUpdater::getScreenSaverTimeEnum: Error!!! m_screenSaverTime=", NO_ENUM);
}

void StatusUpdater::setAudioPointing(int value)
{
    if (storeChanged(audioPointing, value, __func__))
        announce(__func__, "audioPointingChanged", &StatusUpdater::audioPointingChanged);
}

int StatusUpdater::getAudioPointingEnum() const
{
    return itemOf(AUDIO_POINTING_ITEMS, read(audioPointing, __func__), ITEM_AUDIO_POINTING_OFF,
                  "StatusUpdater::getAudioPointingEnum: Error!!! audioPointing=", NO_ENUM);
}

void StatusUpdater::setPowerUp(int value)
{
    if (storeChanged(powerUpSetting, value, __func__))
        announce(__func__, "powerUpSettingChanged", &StatusUpdater::powerUpSettingChanged);
}

int StatusUpdater::getPowerUpEnum() const
{
    return itemOf(POWER_UP_ITEMS, read(powerUpSetting, __func__), ITEM_POWER_UP_AUTOMATIC,
                  "StatusUpdater::getPowerUpEnum: Error!!! powerUpSetting=", NO_ENUM);
}

void StatusUpdater::setBrightnessAllowed(bool value)
{
    store(brightnessAllowed, value, __func__);
}

bool StatusUpdater::getBrightnessAllowed() const
{
    return read(brightnessAllowed, __func__);
}

void StatusUpdater::setBrightness(int level)
{
    if (!storeChanged(m_brightnessLevel, level, __func__))
        return;
    if (getBrightnessAllowed())
        setBrightnessInDriver();
    else
        logDebug() << "StatusUpdater::setBrightness(): Brightness not allowed to be set yet.";
    announce(__func__, "brightnessChanged", &StatusUpdater::brightnessChanged);
}

void StatusUpdater::setBrightnessInDriver() const
{
    const int value = driverValue(read(m_brightnessLevel, __func__));
    const QString path = paths::contrastFile();
    const int file = open(path.toLocal8Bit().constData(), O_WRONLY);
    if (file < 0) {
        logWarning() << "StatusUpdater::setBrightnessInDriver(): ERROR !!! Can not open file " << path;
        return;
    }
    // The driver takes four bytes: the digits, their NUL, and whatever follows it.
    char buffer[4] = {};
    snprintf(buffer, sizeof(buffer), "%d", value);
    const ssize_t written = write(file, buffer, sizeof(buffer));
    close(file);
    if (written != static_cast<ssize_t>(sizeof(buffer)))
        logDebug() << "StatusUpdater::setBrightnessInDriver(): ERROR !!! Can not write to file.";
    else
        logDebug() << "StatusUpdater::setBrightnessInDriver(): Wrote " << value << " to file";
}

int StatusUpdater::getBrightnessEnum() const
{
    return itemOf(BRIGHTNESS_ITEMS, read(m_brightnessLevel, __func__), ITEM_BRIGHTNESS_LEVEL_3,
                  "StatusUpdater::getBrightnessEnum: Error!!! m_brightnessLevel=", NO_ENUM);
}

void StatusUpdater::setLanguage(LANG_ENUM value)
{
    StatusLock lock(statusMutex, __func__);
    const LANG_ENUM oldValue = language;
    language = value;
    lock.unlock();
    if (value == oldValue)
        return;
    logDebug() << "StatusUpdater::setLanguage(): Language changed from " << getLanguageStrFromEnum(oldValue)
               << " to " << getLanguageStrFromEnum(value);
    announce(__func__, "requestLoadLanguage", &StatusUpdater::requestLoadLanguage, value);
}

LANG_ENUM StatusUpdater::getLanguage() const
{
    return read(language, __func__);
}

QString StatusUpdater::getLanguageStrFromEnum(LANG_ENUM value) const
{
    if (value >= 0 && value < NUMBER_OF_LANGUAGE_NAMES)
        return QString::fromUtf8(LANGUAGE_NAMES[value]);
    logDebug() << "getLanguageStrFromEnum(): ERROR!!! enum=" << value << " not supported!!!";
    return QString();
}

int StatusUpdater::getLanguageTreeWidgetEnum() const
{
    return itemOf(LANGUAGE_ITEMS, read(language, __func__), ITEM_LANGUAGE_ENGLISH,
                  "StatusUpdater::getLanguageTreeWidgetEnum(): ERROR!!!! language=", " not supported???");
}

// --- States ----------------------------------------------------------------------------------------------

void StatusUpdater::setInterfaceState(INTERFACE_NAME_ENUM interface, INTERFACE_STATE_ENUM value)
{
    if (!isInterface(interface)) {
        logWarning() << "StatusUpdater::setInterfaceState(): ERROR!!! interface="
                     << interface << " not supported!";
        return;
    }
    StatusLock lock(statusMutex, __func__);
    if (interfaceStates[interface].exchange(value) == value)
        return;
    lock.unlock();
    announce(__func__, "interfaceStateChanged", &StatusUpdater::interfaceStateChanged, interface);
}

INTERFACE_STATE_ENUM StatusUpdater::getInterfaceState(INTERFACE_NAME_ENUM interface) const
{
    if (!isInterface(interface)) {
        logWarning() << "StatusUpdater::getInterfaceState(): ERROR!!! interface="
                     << interface << " not supported!";
        return INTERFACE_STATE_UNKNOWN;
    }
    return static_cast<INTERFACE_STATE_ENUM>(interfaceStates[interface].load());
}

void StatusUpdater::setCiphering(int value)
{
    if (storeChanged(ciphering, value, __func__))
        announce(__func__, "cipheringChanged", &StatusUpdater::cipheringChanged, value);
}

int StatusUpdater::getCiphering() const
{
    return read(ciphering, __func__);
}

void StatusUpdater::setSimPinRetriesLeft(int value)
{
    if (storeChanged(simPinRetriesLeft, value, __func__))
        announce(__func__, "simPinRetriesLeftChanged", &StatusUpdater::simPinRetriesLeftChanged);
}

int StatusUpdater::getSimPinRetriesLeft() const
{
    return read(simPinRetriesLeft, __func__);
}

void StatusUpdater::setBganConnectionError(int value)
{
    store(bganConnectionError, value, __func__);
    announce(__func__, "bganConnectionErrorChanged", &StatusUpdater::bganConnectionErrorChanged, value);
}

void StatusUpdater::setControlledByATCommands(bool value)
{
    StatusLock lock(statusMutex, __func__);
    controlledByATCommands = value;
    if (value)
        currentStatusTextId = STATUS_TEXT_EXTERNAL_CONTROL; // at once, ahead of the next decision
    lock.unlock();
    announce(__func__, "controlledByATCommandsChanged", &StatusUpdater::controlledByATCommandsChanged);
}

bool StatusUpdater::getControlledByATCommands() const
{
    return read(controlledByATCommands, __func__);
}

void StatusUpdater::setACA(bool value)
{
    store(aca, value, __func__);
    announce(__func__, "acaChanged", &StatusUpdater::acaChanged);
}

bool StatusUpdater::getACA() const
{
    return read(aca, __func__);
}

// --- Software update, PIN, hidden text, ignored keys -----------------------------------------------------

void StatusUpdater::setSwUploadStatus(int active, int percentage, int lastResult)
{
    StatusLock lock(statusMutex, __func__);
    swUploadPercentage = percentage;
    swUploadLastResult = lastResult;
    const bool changed = swUploadActive != active;
    swUploadActive = active;
    const MAIN_WINDOW_STATE window = mainWindowState;
    lock.unlock();
    if (changed)
        announce(__func__, "signalSwUploadActiveChanged", &StatusUpdater::signalSwUploadActiveChanged,
                 active);
    if (active == 0)
        return;
    if (window == MAIN_WINDOW_NONE)
        logDebug()
            << "StatusUpdater::setSwUploadStatus(): Main Window is not created yet. Do not emit signal "
               "to show main window.";
    else if (window == MAIN_WINDOW_HIDDEN)
        announce(__func__, "guiAllowedToBeShown", &StatusUpdater::guiAllowedToBeShown);
}

int StatusUpdater::getSwUploadActive() const
{
    return read(swUploadActive, __func__);
}

void StatusUpdater::setSwResultUserConfirmed()
{
    setCBusValue(QString::fromLatin1("cfg.status.sw_update.error"), 0);
    setCBusValue(QString::fromLatin1("ram.status.sw_update.file_upload.result"), 0);
    setCBusValue(QString::fromLatin1("ram.status.sw_update.file_upload.state"), 0);
}

void StatusUpdater::startValidatePin(const QString& pin)
{
    setCBusValue(QString::fromLatin1("ram.usim.pin"), pin);
    pPinTimer->start(PIN_MS);
}

// Nobody answers to a PIN; what became of it shows in the state of the SIM.
void StatusUpdater::handlePinTimeout()
{
    if (pPinTimer->isActive())
        pPinTimer->stop();
    if (getSimStatus() == SIM_READY)
        announce(__func__, "signalPinAccepted", &StatusUpdater::signalPinAccepted);
    else
        announce(__func__, "signalWrongPin", &StatusUpdater::signalWrongPin);
}

void StatusUpdater::startHidePointNowText()
{
    StatusLock lock(statusMutex, __func__);
    hidePointNowText = true;
    pHidePointNowTextTimer->start(HIDE_POINT_NOW_MS);
}

void StatusUpdater::stopHidePointNowText()
{
    StatusLock lock(statusMutex, __func__);
    pHidePointNowTextTimer->stop();
    hidePointNowText = false;
    lock.unlock();
    announce(__func__, "statusChanged", &StatusUpdater::statusChanged);
}

bool StatusUpdater::getHidePointNowText() const
{
    return hidePointNowText;
}

void StatusUpdater::startIgnoreGlobalKeyPress()
{
    pIgnoreGlobalKeyPressTimer->start(IGNORE_KEYS_MS);
    logDebug() << "StatusUpdater::startIgnoreGlobalKeyPress(): Ignoring keypress for " << IGNORE_KEYS_MS
               << " ms";
}

void StatusUpdater::stopIgnoreGlobalKeyPress()
{
    pIgnoreGlobalKeyPressTimer->stop();
}

bool StatusUpdater::getIgnoreGlobalKeyPress() const
{
    if (!pIgnoreGlobalKeyPressTimer->isActive())
        return false;
    logDebug() << "StatusUpdater::getIgnoreGlobalKeyPress(): Ignoring keypress.";
    return true;
}
