// What the model keeps and shows nobody, or only behind a label; and the states of the radio module, which
// tests set directly where they aren't about the poll.
#ifndef LUMENPANEL_TESTS_SUPPORT_MODELACCESS_H
#define LUMENPANEL_TESTS_SUPPORT_MODELACCESS_H

#include "model/statuslock.h"
#include "model/statusupdater.h"

#include <QString>
#include <QTimer>

struct StatusUpdaterTestAccess {
    static StatusUpdater& model() { return *StatusUpdater::getStatusUpdater(); }
    static int audioPointing() { return model().audioPointing; }
    // Locked, since it is also asked while the bus thread may be writing it.
    static int powerUpSetting()
    {
        StatusLock lock(model().statusMutex, "powerUpSetting");
        return model().powerUpSetting;
    }
    static int brightnessLevel() { return model().m_brightnessLevel; }
    static bool externalSupplyPresent() { return model().externalSupplyPresent; }
    static int bganConnectionError() { return model().bganConnectionError; }
    static int currentBundleNumber() { return model().m_currentBundleNumberForUserGroup0; }
    static bool subscribedToChanges() { return model().subscribedToChanges; }
    static gps_data_t position() { return model().pos; }
    static QString helpDeskStr() { return model().helpDeskStr; }
    static QString unitSerialNumber() { return model().unitSerialNumber; }
    static QString hpaSerialNumber() { return model().hpaSerialNumber; }
    static QString imeiStr() { return model().imeiStr; }
    static QString ipAddress() { return model().ipAddress; }
    static QString lanMacStr() { return model().lanMacStr; }
    static QString wifiMacStr() { return model().wifiMacStr; }
    static QString swBuildDetails()
    {
        const StatusUpdater& m = model();
        return QString("%1|%2|%3|%4|%5")
            .arg(m.swVersion)
            .arg(m.swBuildNr)
            .arg(m.swRedLabel)
            .arg(m.swBuildId, m.swBuildDate);
    }
    static QString swUpload()
    {
        const StatusUpdater& m = model();
        return QString("%1|%2|%3").arg(m.swUploadActive).arg(m.swUploadPercentage).arg(m.swUploadLastResult);
    }
    static QFont statusLabelFont() { return model().statusLabelFont; }

    static int& simStatus() { return model().simStatus; }
    static bool& rmOperating() { return model().rmOperating; }
    static int& plmnStatus() { return model().plmnStatus; }
    static int& umtsCsStatus() { return model().umtsCsStatus; }
    static int& umtsPsStatus() { return model().umtsPsStatus; }
    static int& iai2Status() { return model().iai2Status; }
    static int& iai2BeamType() { return model().iai2BeamType; }
    static QList<bundle_t>& activeConnectionsAndBundles() { return model().activeConnectionsAndBundles; }
    static QList<bundle_t>& definedBundles() { return model().definedBundles; }
    static QList<fmmi_evt_t>& systemEvents() { return model().systemEvents; }
    static int numberOfEventTexts() { return static_cast<int>(model().translatedEventTextList.size()); }
    static StatusMutex& statusMutex() { return model().statusMutex; }

    static QTimer& updateConnectionTimer() { return *model().pUpdateConnectionTimer; }
    static QTimer& pinTimer() { return *model().pPinTimer; }
    static QTimer& hidePointNowTextTimer() { return *model().pHidePointNowTextTimer; }
    static QTimer& ignoreGlobalKeyPressTimer() { return *model().pIgnoreGlobalKeyPressTimer; }
};
typedef StatusUpdaterTestAccess Access;

#endif
