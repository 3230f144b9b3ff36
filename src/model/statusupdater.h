// The status model: the one object that knows everything the display knows about the terminal.
//
// The bus thread pushes values of the database into it through setters; the screens pull values out
// through getters and are told of changes by its signals. It is also the only way in which screens
// write to the database. It knows nothing of screens and of the window.
//
// Threads: the object and its timers live on the GUI thread, which makes it by the first call of
// getStatusUpdater(). Getters and plain setters may be called on any thread. What is marked [bus] reads
// the database: it ends the process on any other thread, and blocks for as long as the database takes
// to answer. What is marked [GUI] belongs to the GUI thread. Signals are emitted on the thread of the
// call, never under the lock; through automatic connections they arrive queued from the bus thread.
// Each member is guarded by statusMutex (statuslock.h) but for those that say otherwise. Getters return
// copies. No function stores a value away corrected: what is out of range is logged where it is used.
//
// Ends of the process: the lock not had within 2100 ms, a database read off the bus thread, no bus after
// eleven rounds of one second, no memory.
#ifndef LUMENPANEL_MODEL_STATUSUPDATER_H
#define LUMENPANEL_MODEL_STATUSUPDATER_H

#include "model/battery.h"
#include "model/bundle.h"
#include "model/event.h"
#include "model/interfaces.h"
#include "model/language.h"
#include "model/position.h"
#include "model/radio_module.h"
#include "model/state_event.h"
#include "model/status_text.h"
#include "model/statuslock.h"
#include "model/wan.h"

#include <QDateTime>
#include <QFont>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <atomic>

class QFontMetrics;
class QTimer;
struct config_data_t;

// What the model knows of the main window, which tells it.
enum MAIN_WINDOW_STATE : int { MAIN_WINDOW_NONE, MAIN_WINDOW_HIDDEN, MAIN_WINDOW_VISIBLE };

class StatusUpdater : public QObject {
    Q_OBJECT

    // Lets the model's own tests set states that no key leads to.
    friend struct StatusUpdaterTestAccess;

public:
    // --- Frame (statusupdater.cpp) -----------------------------------------------------------------------

    // The one object, made by the first call, which must come from the GUI thread with a QApplication in
    // place. Never null; lives until the process ends.
    static StatusUpdater* getStatusUpdater();
    // For tests: deletes the object, so that the next getStatusUpdater() starts anew. Nobody may use the
    // old one any more.
    static void destroyForTest();

    // Use getStatusUpdater().
    StatusUpdater();
    ~StatusUpdater();

    // The bus thread's QThread::currentThreadId(), null until it runs; it sets it first of all.
    void setThreadIdCBus(void* id);
    void* getThreadIdCBus() const;
    // Whether the bus connection stands. The bus thread sets it; reads and writes wait for it.
    void setHasConnectedToCBus(bool value);
    bool getHasConnectedToCBus() const;
    // Ends the process unless the caller is the bus thread. debugStr tells the log what was attempted.
    bool validateThisIsCBusThread(const QString& debugStr) const;
    // Blocks the calling thread, 0 ms and more; an interrupted sleep is not resumed.
    void sleepMs(int ms) const;
    // Asks the window for a screenshot.
    void takeScreenshot();
    // [GUI] The font that the lines of running connections are measured with. Not locked.
    void setStatusLabelFont(const QFont& font);
    // What the window is: none yet, hidden or visible. Told by the window itself.
    void setMainWindowState(MAIN_WINDOW_STATE state);
    MAIN_WINDOW_STATE getMainWindowState() const;
    // Age of a time stamp as hh:mm:ss, hours as many digits as it takes, at least two; for logs.
    QString debugTimeStr(const QDateTime& timeStamp) const;
    // True if the text does not survive a round trip through Latin-1.
    bool unicodeNeeded(const QString& text) const;

    // --- Status text and radio module (statusupdater_text.cpp, _poll.cpp, _wan.cpp) -----------------------

    // [GUI] Works out anew which text the state of the terminal comes down to.
    void updateCurrentStatusTextId();
    STATUS_TEXT_ENUM getCurrentStatusTextId() const;
    // [GUI] The text of the current id, or of a given one; several lines when connections run. Empty for
    // an id that has none, and for all ids until updateTranslatedStatusTexts().
    QString getStatusText() const;
    QString getStatusText(STATUS_TEXT_ENUM statusTextId) const;
    // [GUI] Takes the texts over from the translation that is loaded now.
    void updateTranslatedStatusTexts();
    // One line for each running connection, fitted into the status label.
    QString getActiveBundlesStatusStr() const;

    // [bus] Reads the state of the radio module and tells of what changed. Called once a second.
    void pollStatusFromRm();
    // [bus] The steps of the poll. Each returns whether it changed what it keeps.
    bool updateRmOperating();
    bool updateSimStatus();
    bool updatePlmnStatus();
    bool updateCsPsStatus();
    bool updateIai2BeamType();
    bool updateIai2Status();
    int getSimStatus() const;    // SIM_STATUS_ENUM
    int getPlmnStatus() const;   // PLMN_STATUS_ENUM
    int getRmOperating() const;  // 1 or 0
    int getIai2BeamType() const; // IAI2_BEAM_TYPE_ENUM
    // SIM_STATUS_ENUM of a text of rmcfg.platform.usim.pin.status; SIM_STATUS_UNKNOWN if not listed.
    int getSimStatusFromPinStr(const QString& text) const;

    void setPointingMode(ENUM_POINTED_STATUS value);
    int getPointingMode() const; // ENUM_POINTED_STATUS
    void setPointingAtStartup(int value);
    int getPointingAtStartup() const; // 0 or 1
    void setWanActive(ENUM_WAN_ACTIVE value);
    int getWanActive() const; // ENUM_WAN_ACTIVE
    void setModemPresent(int value);
    int getModemPresent() const; // -1 not known, 0, 1
    void setModemActivated(int value);
    int getModemActivated() const; // -1 not known, 0, 1
    void setWanUserSelection(ENUM_WAN_USER_SELECTION value);
    int getWanUserSelection() const; // ENUM_WAN_USER_SELECTION
    void setModemOrBganAtStartup(ENUM_STARTUP_WAN value);
    int getModemOrBganAtStartup() const; // ENUM_STARTUP_WAN
    // Value of ram.status.ext_system; the step from 9 or less to 10 may start the pointing.
    void setExtendedSystemStatus(int value);
    int getExtendedSystemStatus() const;
    // Sends the command to point, if the terminal is up, wants it and can do it. May write to the bus.
    void startPointingIfSystemReady();
    // Name and value of an enumeration's member, for logs; empty, with a log line, if it has no name.
    QString getWanActiveStrFromEnum(int value) const;
    QString getStartupWanStrFromEnum(int value) const;
    QString getWanUserSelectionStrFromEnum(int value) const;

    // --- Bundles, connections, bonding (statusupdater_bundles.cpp, _sessions.cpp, _bonding.cpp) -----------

    // [bus] The records of cfg.admin.bundle, all of them; replaces the list and announces it.
    void setDefinedBundlesCfg(unsigned int nrec, const config_data_t* prec);
    // Changed records of ram.status.ongoing_data_sessions; one without a value was deleted.
    void setActiveConnectionsAndBundles(unsigned int nrec, const config_data_t* prec);
    // The record ram.net.user_groups.0.current_bundle.
    void setCurrentBundleNumber(unsigned int nrec, const config_data_t* prec);
    // The records of ram.bonding.status.service, all of them.
    void setBondingServicesAvailable(unsigned int nrec, const config_data_t* prec);
    void setDhcpClientMode(bool value);
    bool getDhcpClientMode() const;
    void setBondingEnabled(bool value);
    bool getBondingEnabled() const;

    // The bundles of the configuration, in the order of the screen.
    QList<bundle_t> getDefinedBundles() const;
    int getNumberOfDefinedBundles() const;
    // Copies a defined bundle into *out, which is the caller's. False, *out untouched, if there is none.
    bool getBundleByBundleNumber(int bundleNumber, bundle_t* out) const;
    // Sessions that start or run.
    int getNumberOfActiveConnectionsAndBundles() const;
    // Whether a predefined bundle is in use in user group 0.
    bool predefinedBundleActive() const;
    // Whether a session of user group 0 starts or runs.
    bool wanUsergroupZeroActive() const;
    // Name of the current predefined bundle, "Default" if there is none.
    QString getPredefinedBundleName() const;
    // Class 0 to 8 of a connection by its rates, -1 if it has none. Takes no lock.
    int getConnClass(const connection_t& connection) const;
    // hh:mm:ss since the start, empty unless the bundle runs. Takes no lock.
    QString getElapsedTimeStr(const bundle_t& bundle) const;
    // Amount of data with its unit, translated. Takes no lock.
    QString getBackgroundTotalStr(const bundle_t& bundle) const;
    // Whether what the bundle needs of bonding is there.
    bool bondingDemandsReached(const bundle_t& bundle) const;
    bool getBondingServiceAvailable(BONDING_SERVICE_ENUM service) const;
    int getBondingState() const; // BONDING_STATE_ENUM

    // [GUI] Ask the terminal to start a bundle, or to stop the current one. startBundle() blocks for
    // 200 ms. Both write to the database. The number that stopBundle() gets is only logged.
    void startBundle(int bundleNumber);
    void stopBundle(int bundleNumber);
    // [GUI] Ask for an interface to be switched on (1) or off (0). One write to the database each.
    void requestIsdnEnabled(int value) const;
    void requestLanEnabled(int value) const;
    void requestPhoneEnabled(int value) const;
    void requestUsbEnabled(int value) const;
    void requestWifiEnabled(int value) const;

    // Dumps to the debug log. They take no lock.
    void debugDefinedBundles(const QList<bundle_t>& bundles, const char* title) const;
    void debugActiveConnectionsAndBundles(const QList<bundle_t>& bundles, const char* title) const;
    void debugBundle(const bundle_t& bundle, const char* title) const;
    void debugConnection(const connection_t& connection) const;

    // --- Events (statusupdater_events.cpp) ---------------------------------------------------------------

    // All records under ram.log.alert.
    void setAlertList(unsigned int nrec, const config_data_t* prec);
    // Replaces the list of the terminal's events; tells of each that is new and each that is gone.
    void setSystemEvents(QList<fmmi_evt_t> rawList);
    // Events of the display's own making. Nothing raises one today.
    void addLocalEvent(unsigned int eventId, int severity);
    void removeLocalEvent(unsigned int eventId);
    // The terminal's and the display's own events, newest first.
    QList<fmmi_evt_t> getEvents() const;
    bool eventExist(unsigned int eventId) const;
    // Announces each of the terminal's events once more.
    void showAllSystemEvents();
    // Whether there is any event. The setter writes a changed value to the database.
    void setWarningsPresent(bool value);
    bool getWarningsPresent() const;
    // Translated text of an event, empty if the id has none.
    QString getEventText(unsigned int eventId) const;
    // Name of an EVENT_SEVERITY_ENUM, for logs.
    QString getEventSeverityAsString(int severity) const;
    // [GUI] Takes the texts over from the translation that is loaded now.
    void updateTranslatedEventTexts();

    // --- Settings (statusupdater_settings.cpp) -----------------------------------------------------------

    void setScreenSaverTime(int seconds);
    int getScreenSaverTime() const;
    void setAudioPointing(int value);
    void setPowerUp(int value);
    void setBrightnessAllowed(bool value);
    bool getBrightnessAllowed() const;
    // Stores level 0 to 7 and, once that is allowed, writes it to the display. May block on a file.
    void setBrightness(int level);
    void setBrightnessInDriver() const;
    void setLanguage(LANG_ENUM value);
    LANG_ENUM getLanguage() const;
    // The language's own name; empty, with a log line, for a value outside of the enumeration.
    QString getLanguageStrFromEnum(LANG_ENUM value) const;
    // WIDGET_ITEM_ID_ENUM of the menu item that stands for the present value.
    int getScreenSaverTimeEnum() const;
    int getBrightnessEnum() const;
    int getAudioPointingEnum() const;
    int getPowerUpEnum() const;
    int getLanguageTreeWidgetEnum() const;

    // 1 to 5; others are logged, and read as INTERFACE_STATE_UNKNOWN. The getter takes no lock.
    void setInterfaceState(INTERFACE_NAME_ENUM interface, INTERFACE_STATE_ENUM value);
    INTERFACE_STATE_ENUM getInterfaceState(INTERFACE_NAME_ENUM interface) const;
    void setCiphering(int value);
    int getCiphering() const; // -2 not read yet
    void setSimPinRetriesLeft(int value);
    int getSimPinRetriesLeft() const;
    void setBganConnectionError(int value);
    void setControlledByATCommands(bool value);
    bool getControlledByATCommands() const;
    void setACA(bool value);
    bool getACA() const;

    // Software update: number of the unit at work (0 none), percentage, last result.
    void setSwUploadStatus(int active, int percentage, int lastResult);
    int getSwUploadActive() const;
    // [GUI] The user has seen the result of an update. Writes to the database.
    void setSwResultUserConfirmed();

    // [GUI] Hands the PIN to the SIM; 2000 ms later signalPinAccepted() or signalWrongPin() tells the
    // outcome. Writes to the database.
    void startValidatePin(const QString& pin);
    // [GUI] For 2000 ms the status text does not ask to point. The getter takes no lock.
    void startHidePointNowText();
    bool getHidePointNowText() const;
    // [GUI] For 700 ms keys are ignored.
    void startIgnoreGlobalKeyPress();
    bool getIgnoreGlobalKeyPress() const;

    // --- Identity (statusupdater_identity.cpp) -----------------------------------------------------------

    void setWifiBroadcastSsid(bool value);
    bool getWifiBroadcastSsid() const;
    void setWifiSsidStr(const QString& text);
    QString getWifiSsidStr() const;
    void setWifiNumberOfClients(int value);
    int getWifiNumberOfClients() const;
    QString getWifiSsidUserStr() const;

    // Texts of the properties, with label and fall-back; the setters take the bare text.
    void setHelpDeskStr(const QString& text);
    QString getHelpDeskStr() const;
    void setUnitSerialNumber(const QString& text);
    QString getUnitSerialNumber() const;
    void setHpaSerialNumber(const QString& text);
    QString getHpaSerialNumber() const;
    void setImeiStr(const QString& text);
    QString getImeiStr() const;
    void setIpAddress(const QString& text);
    QString getIpAddrStr() const;
    void setWifiMacStr(const QString& text);
    QString getWifiMacStr() const;
    void setLanMacStr(const QString& text);
    QString getLanMacStr() const;
    void setSwBuildDetails(const QString& version, int buildNr, int redLabel, const QString& buildId,
                           const QString& buildDate);
    QString getSoftwareVersion() const;

    // --- Measurements (statusupdater_measurements.cpp) ---------------------------------------------------

    // Signal level in tenths of dBHz, and the bars of its icon, 0 to 4.
    void setSignalLevel(int value);
    int getSignalLevel() const;
    void setSignalLevelIcon(int value);
    int getSignalLevelNumBars() const;
    // The level as a number with one decimal, "0.0" below 32.
    QString getSignalLevelStr(int value) const;

    void setPosition(const gps_data_t& value);
    int getNumberOfGpsFound() const;
    bool getGpsDisplayPositionAllowed() const;
    QString getGpsPositionStr() const;
    bool getGpsAcquired() const;

    void setBattData(const battery_t& internal, const battery_t& external);
    battery_t getBattInt() const;
    battery_t getBattExt() const;
    void setExternalSupplyPresent(bool value);
    QString getBattCapacityLabel(BATT_TYPE_ENUM type) const;
    QString getBattTempValueLabel(BATT_TYPE_ENUM type) const;
    QString getBatt2ndLabel(BATT_TYPE_ENUM type) const;
    // "hours:minutes" of both batteries together, the charging mark on external supply, or empty.
    QString getTotalBattRemainingTimeStr() const;
    int getNumberOfBatteries() const;
    int getTotalBattCapacity() const; // percent

    // --- Database (statusupdater_database.cpp) -----------------------------------------------------------

    // [bus] The value of a key; -1 or an empty text when the database doesn't hold it. A text is cut at
    // 299 bytes.
    int getCBusValueInt(const QString& key) const;
    QString getCBusValueStr(const QString& key) const;
    // Write a key. Nobody tells whether the database took it. A key of the area "cfg" goes to disk.
    // Block, if the bus isn't there yet, for up to eleven seconds.
    void setCBusValue(const QString& key, int value) const;
    void setCBusValue(const QString& key, const QString& value) const;
    // Switches the terminal's status reports on or off, as the display wakes or goes to sleep. Writes to
    // the database if the value is new. It is true at start.
    void subscribeToChanges(bool value);

public slots:
    void handleStartUpdateConnectionTimer();
    void handleStopUpdateConnectionTimer();
    void handleUpdateTimeout();
    void handlePinTimeout();
    void stopHidePointNowText();
    void stopIgnoreGlobalKeyPress();

signals:
    void screenSaverTimeChanged();
    void brightnessChanged();
    void audioPointingChanged();
    void interfaceStateChanged(INTERFACE_NAME_ENUM interface);
    void statusChanged();
    void beamTypeChanged();
    void numberOfConnectionsChanged();
    void numberOfWlanClientsChanged();
    void signalWanActiveChanged();
    void signalModemPresentChanged();
    void signalModemActivatedChanged();
    void signalWanUserSelectionChanged();
    void signalModemOrBganAtStartupChanged();
    void signalLevelChanged(int value);
    void signalLevelNumBarsChanged(int value);
    void gpsDataChanged();
    void battDataChanged();
    void warningsPresentChanged(bool value);
    void eventListChanged();
    void showPopup(fmmi_evt_t);
    void signalRemovePopup(uint eventId);
    void cipheringChanged(int value);
    void stateEventReceived(STATE_EVENT stateEvent);
    void requestLoadLanguage(LANG_ENUM newLanguage);
    void simPinRetriesLeftChanged();
    void signalWrongPin();
    void signalPinAccepted();
    void powerUpSettingChanged();
    void definedBundlesCfgChanged();
    void bundleStateChanged(int bundleNumber, BUNDLE_STATUS state);
    void updateElapsedTimeAndBackgroundDataSignal();
    void startUpdateConnectionTimerSignal();
    void stopUpdateConnectionTimerSignal();
    void bganConnectionErrorChanged(int value);
    void signalTakeScreenshot();
    void signalSubscribeToPollRmValues(bool value);
    void controlledByATCommandsChanged();
    void acaChanged();
    void signalExtendedSystemStatusChanged();
    void bondingStateChanged();
    void guiAllowedToBeShown();
    void signalSwUploadActiveChanged(int activeUnitNumber);

private:
    Q_DISABLE_COPY(StatusUpdater)

    // The pattern of the getters and setters. `function` is the caller's __func__.

    // A copy of a member.
    template <typename T> T read(const T& member, const char* function) const
    {
        StatusLock lock(statusMutex, function);
        return member;
    }
    // Stores a value.
    template <typename T> void store(T& member, const T& value, const char* function)
    {
        StatusLock lock(statusMutex, function);
        member = value;
    }
    // Stores a value and returns whether it is a new one.
    template <typename T> bool storeChanged(T& member, const T& value, const char* function)
    {
        StatusLock lock(statusMutex, function);
        if (member == value)
            return false;
        member = value;
        return true;
    }
    // Logs that a signal is about to go, and emits it.
    void announce(const char* function, const char* name, void (StatusUpdater::*signal)())
    {
        logEmission(function, name);
        (this->*signal)();
    }
    template <typename T>
    void announce(const char* function, const char* name, void (StatusUpdater::*signal)(T), T value)
    {
        logEmission(function, name);
        (this->*signal)(value);
    }
    static void logEmission(const char* function, const char* name);

    void createTimers();

    // Texts of events
    void learnEventTexts(const QList<fmmi_evt_t>& newEvents);
    void forgetTextsOfGoneEvents();

    // Status text
    STATUS_TEXT_ENUM decideStatusText() const;
    bool selectedAndOneIs(int umtsStatus) const;
    bool selectedAndBothBlocked() const;
    QString connectionLine(const bundle_t& bundle, const connection_t& connection) const;
    QString connectionLabel(const connection_t& connection) const;
    QString fittedLine(QString label, const QString& elapsedTime) const;

    // Radio module
    int readRadioModuleText(const char* function, const char* key, const RadioModuleMap& map, int missing,
                            int unlisted, const char* warning) const;
    bool absenceExpected() const;

    // Defined bundles
    connection_t getConnectionByIndex(int index) const;
    BUNDLE_STATUS readBundleStatus(int bundleNumber) const;
    void addDefinedBundleRecord(QList<bundle_t>& bundles, const config_data_t& record) const;
    void addBundleName(QList<bundle_t>& bundles, int bundleNumber, const QString& name) const;
    void addBundleConnection(QList<bundle_t>& bundles, int bundleNumber, int connectionIndex) const;
    void setPredefinedBundleStartTime(const QDateTime& startTime);
    void setAllPredefinedBundlesIdle();

    // Running sessions
    struct ContextField;
    bool sanityCheckSetActiveConnectionsAndBundles(const QStringList& strList) const;
    void addSessionRecord(const config_data_t& record, QList<int>& deletedGroups);
    void addSessionField(int group, const char* field, const config_data_t& record,
                         QList<int>& deletedGroups);
    void addContextRecord(int group, const QStringList& strList, const config_data_t& record);
    int getActiveConnectionBundleIndexByWanUserGroup(int group, bool autoCreate);
    int createNewActiveConnectionBundle(int group);
    int getActiveContextIndex(int group, int context, bool autoCreate);
    int findSessionToStore(int group, bool autoCreate, const char* function, const char* field);
    void setActiveConnectionOrBundleFieldStatus(int group, BUNDLE_STATUS status);
    void setActiveConnectionOrBundleFieldTime(int group, int startTime);
    void setActiveConnectionOrBundleFieldBackgroundTotal(int group, int total);
    void setActiveConnectionOrBundleField(const ContextField& field, int group, int context, int value);
    void storePredefinedSession(int index, BUNDLE_STATUS status);
    void deleteActiveConnectionsAndBundles(int group);
    void removeActiveConnectionFromWanUserGroup(int group, int context);

    // Bonding
    void updateBondingState();

    // Identity
    QString macText(const QString& mac, INTERFACE_NAME_ENUM interface, const char* unknown,
                    const char* off) const;
    QString labelled(const char* label, const QString& text, const char* unknown) const;

    // Measurements
    QString presentBatt2ndLabel(const battery_t& batt, const battery_t& other) const;

    // Database
    struct BusWait;
    void waitForBus(const BusWait& texts) const;
    void syncIfPersistent(const QString& key) const;

    static StatusUpdater* pStatusUpdater;

    int m_screenSaverTime = 30; // seconds
    int m_brightnessLevel = -1;
    bool brightnessAllowed = false; // the driver may be written
    int audioPointing = 1;
    int powerUpSetting = 1;
    QString helpDeskStr;
    QString unitSerialNumber;
    QString hpaSerialNumber;
    QString imeiStr;
    QString ipAddress;
    QString wifiSsidStr;
    ENUM_WAN_ACTIVE m_wanActive = WAN_ACTIVE_UNKNOWN;
    int modemPresent = -1;
    int modemActivated = -1;
    ENUM_WAN_USER_SELECTION wanUserSelection = WAN_USER_SELECTION_UNKNOWN;
    ENUM_STARTUP_WAN modemOrBganAtStartup = STARTUP_WAN_UNKNOWN;
    bool wifiBroadcastSsid = false;
    QString wifiMacStr;
    QString lanMacStr;
    int wifiNumberOfClients = 0;
    std::atomic<int> interfaceStates[INTERFACE_NAME_LAST + 1]; // by INTERFACE_NAME_ENUM; read without lock
    ENUM_POINTED_STATUS pointingMode = POINTING_STATUS_UNKNOWN;
    int pointingAtStartup = 1;
    int ciphering = -2;
    int simPinRetriesLeft = 3;
    int simStatus = SIM_STATUS_UNKNOWN;
    int iai2Status = IAI2_STATUS_UNDEFINED;
    bool rmOperating = false;
    int plmnStatus = PLMN_STATUS_UNDEFINED;
    int umtsCsStatus = UMTS_STATUS_UNDEFINED;
    int umtsPsStatus = UMTS_STATUS_UNDEFINED;
    int iai2BeamType = IAI2_BEAM_TYPE_UNDEFINED;
    int bganConnectionError = 0;
    std::atomic<bool> hidePointNowText; // read without lock
    int m_currentBundleNumberForUserGroup0 = -1;
    QList<bundle_t> definedBundles;
    QList<bundle_t> activeConnectionsAndBundles;
    bool controlledByATCommands = false;
    int extendedSystemStatus = SYSTEM_STATUS_UNDEFINED;
    bool dhcpClientMode = false;
    bool bondingEnabled = false;
    bool aca = false;
    QHash<int, unsigned int> bondingServicesAvailable; // BONDING_SERVICE_ENUM to its count
    int bondingState = BONDING_STATE_OFF;
    QTimer* pUpdateConnectionTimer = nullptr; // owned, as are the other three; GUI thread
    QTimer* pPinTimer = nullptr;
    QTimer* pHidePointNowTextTimer = nullptr;
    QTimer* pIgnoreGlobalKeyPressTimer = nullptr;
    gps_data_t pos;
    LANG_ENUM language = LANG_UNDEFINED;
    battery_t battInt;
    battery_t battExt;
    std::atomic<bool> externalSupplyPresent; // its old value is read without lock
    int signalLevel = 0;
    int signalLevelNumBars = 0;
    int swUploadActive = 0;
    int swUploadPercentage = 0;
    int swUploadLastResult = 512;
    mutable StatusMutex statusMutex;
    bool warningsPresent = false;
    bool subscribedToChanges = true;
    QList<fmmi_evt_t> systemEvents;
    QList<fmmi_evt_t> localEventsMutexProtected;
    bool hasConnectedToCBus = false;
    void* threadIdCBus = nullptr;
    QFont statusLabelFont; // GUI thread, not locked, as what follows
    // What stands in every connection's line besides its label, in pixels of that font; measured when the
    // first line is made.
    enum { CONNECTION_GAP_MAX = 2 };
    struct LineWidths {
        int time = -1; // negative: not measured
        int dots = 0;
        int gaps[CONNECTION_GAP_MAX + 1] = {}; // of none, one and two blanks
    };
    mutable LineWidths lineWidths;
    static LineWidths measuredLineWidths(const QFontMetrics& metrics);
    QHash<unsigned int, QString> translatedEventTextList;
    QHash<int, QString> translatedStatusTextList; // by STATUS_TEXT_ENUM
    STATUS_TEXT_ENUM currentStatusTextId = STATUS_TEXT_UNDEFINED;
    QString swVersion;
    QString swBuildId;
    QString swBuildDate;
    int swBuildNr = 0;
    int swRedLabel = 0;
    MAIN_WINDOW_STATE mainWindowState = MAIN_WINDOW_NONE;
};

#endif
