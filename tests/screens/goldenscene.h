// A scene for golden pictures: a terminal and a window in a known state, on which nothing depends on time.
//
// The wall clock stands still at NOON in this whole program. What comes by way of the bus is brought about
// before the window is made; from then on the event loop doesn't run, so that no timer fires: values go into
// the model by its setters, keys straight to the widget with the focus, and animations are set to a point
// of their way. Only the sessions of the list of bundles come later, by the bus: nothing on it blinks.
#ifndef TESTS_SCREENS_GOLDENSCENE_H
#define TESTS_SCREENS_GOLDENSCENE_H

#include "screens/actionfixture.h"

#include "support/golden.h"
#include "support/records.h"

#include <QPropertyAnimation>

#include <sys/time.h>

const long NOON = 1774008000; // 20 March 2026, 12:00 UTC

// Takes the place of the C library's in this program, for Qt's clock.
extern "C" int gettimeofday(struct timeval* now, void*) noexcept
{
    now->tv_sec = NOON;
    now->tv_usec = 0;
    return 0;
}

namespace golden {

using windowfixture::model;
using windowfixture::terminal;

// The state of the radio module, as the poll reads it.
struct Radio {
    SIM_STATUS_ENUM sim = SIM_READY;
    PLMN_STATUS_ENUM network = PLMN_STATUS_SELECTED;
    UMTS_STATUS_ENUM service = UMTS_STATUS_ATTACHED;
    IAI2_BEAM_TYPE_ENUM beam = IAI2_BEAM_TYPE_NARROW;
    bool operating = true;
};

inline sim::Value textOf(const RadioModuleMap& map, int value)
{
    for (int i = 0; i < map.size; ++i) {
        if (map.rows[i].value == value && map.rows[i].text) {
            return sim::Value::text(map.rows[i].text);
        }
    }
    return sim::Value(); // deletes the key
}

// Writes it to the database and waits until the model has it.
inline bool setRadio(const Radio& radio)
{
    const bool present = radio.sim != SIM_NOT_PRESENT && radio.sim != SIM_STATUS_UNKNOWN;
    terminal().setAll(
        {{"rmcfg.sys.status.mode", sim::Value::text(radio.operating ? "operating" : "starting")},
         {"rmcfg.platform.usim.status",
          radio.sim == SIM_STATUS_UNKNOWN ? sim::Value() : sim::Value::integer(present ? 1 : 0)},
         {"rmcfg.platform.usim.pin.status", present ? textOf(SIM_STATUS_MAP, radio.sim) : sim::Value()},
         {"rmcfg.protocols.umts.plmn.status", textOf(PLMN_STATUS_MAP, radio.network)},
         {"rmcfg.protocols.umts.cs.status", textOf(UMTS_STATUS_MAP, radio.service)},
         {"rmcfg.protocols.umts.ps.status", textOf(UMTS_STATUS_MAP, radio.service)},
         {"rmcfg.protocols.bgan.status.beam_type", textOf(IAI2_BEAM_TYPE_MAP, radio.beam)},
         {"rmcfg.protocols.bgan.status.state", textOf(IAI2_STATUS_MAP, IAI2_STATUS_REGISTERED)}});
    return QTest::qWaitFor(
        [&radio] {
            windowfixture::passBus(); // wakes the bus thread, which polls once a second
            if (model()->getSimStatus() != radio.sim || bool(model()->getRmOperating()) != radio.operating) {
                return false;
            }
            if (!radio.operating) {
                return model()->getPlmnStatus() == PLMN_STATUS_UNDEFINED;
            }
            if (model()->getPlmnStatus() != radio.network) {
                return false;
            }
            return radio.network != PLMN_STATUS_SELECTED ||
                   (Access::umtsCsStatus() == radio.service && Access::umtsPsStatus() == radio.service &&
                    model()->getIai2BeamType() == radio.beam);
        },
        30000);
}

inline battery_t batteryOf(int capacity, BATT_CHARGE_STATE_ENUM state, int minutes)
{
    battery_t battery;
    battery.batteryConnectionStatus = BATT_PRESENT;
    battery.temperature = 23;
    battery.capacity = capacity;
    battery.chargeState = state;
    (state == BATT_CHARGING ? battery.averageTimeToFull : battery.minutesLeft) = minutes;
    return battery;
}

// A running session: user group, its age in seconds, and what it carries.
struct Session {
    int group;
    int age;
    int trafficClass = 3;
    int rate = 0; // guaranteed, kbit/s
    int kilobytes = 0;
    BUNDLE_STATUS status = BUNDLE_STATUS_RUNNING;
};

inline void startSessions(const std::vector<Session>& sessions)
{
    Records records;
    for (const Session& session : sessions) {
        const std::string key = "ram.status.ongoing_data_sessions." + std::to_string(session.group) + ".";
        records.number(key + "status", session.status)
            .number(key + "time", int(NOON) - session.age)
            .number(key + "bytes_in_out_kb", session.kilobytes)
            .number(key + "context.1.bw_up", session.rate)
            .number(key + "context.1.bw_down", session.rate)
            .number(key + "context.1.max_bw_up", session.rate)
            .number(key + "context.1.max_bw_down", session.rate)
            .number(key + "context.1.traffic_class", session.trafficClass);
    }
    model()->setActiveConnectionsAndBundles(records.count(), records.data());
    model()->handleUpdateTimeout(); // what each second brings: the records came one by one
    QCoreApplication::sendPostedEvents();
}

inline void endSessions()
{
    Records records;
    for (const bundle_t& session : Access::activeConnectionsAndBundles()) {
        records.deleted("ram.status.ongoing_data_sessions." + std::to_string(session.wanUserGroup) +
                        ".status");
    }
    model()->setActiveConnectionsAndBundles(records.count(), records.data());
}

// A terminal in the field: on the air, Wi-Fi in use, one battery, nothing to report.
inline void resetTerminal()
{
    endSessions();
    windowfixture::resetModel();
    StatusUpdater* const m = model();
    m->setPointingAtStartup(0);
    m->setPointingMode(POINTING_STATUS_POINTED);
    m->setExtendedSystemStatus(10);
    m->setControlledByATCommands(false);
    m->setBondingEnabled(false);
    m->setDhcpClientMode(false);
    m->setACA(false);
    for (int interface = INTERFACE_NAME_FIRST; interface <= INTERFACE_NAME_LAST; ++interface) {
        m->setInterfaceState(INTERFACE_NAME_ENUM(interface), INTERFACE_STATE_ON);
    }
    m->setInterfaceState(INTERFACE_NAME_ISDN, INTERFACE_STATE_OFF);
    m->setWifiNumberOfClients(2);
    m->setSignalLevel(523);
    m->setSignalLevelIcon(3);
    m->setBattData(batteryOf(84, BATT_DISCHARGING, 340), battery_t());
    m->setExternalSupplyPresent(false);
    m->setWarningsPresent(false);
    m->setPosition(gps_data_t());
    m->setSimPinRetriesLeft(3);
    m->setScreenSaverTime(300);
    m->setBrightness(4);
    m->setAudioPointing(1);
    m->setPowerUp(0);
    m->stopHidePointNowText();
    m->stopIgnoreGlobalKeyPress();
}

class Scene {
public:
    explicit Scene(LANG_ENUM language = LANG_ENGLISH) : prepared(prepare(language))
    {
        window.setVisible(true); // however the terminal's state has it
        QApplication::setActiveWindow(&window);
        window.handleRequestLoadLanguage(language);
        settle();
    }

    template <typename T> T* find(const char* name) const { return window.findChild<T*>(name); }
    ScreenPopup* popups() { return static_cast<ScreenPopup*>(window.getScreenById(Screen::SCREEN_POPUP)); }
    // Straight from the status screen, as its icons lead there.
    void show(Screen::SCREEN_ID_ENUM id)
    {
        window.showScreen(id, false);
        settle();
    }
    void press(Qt::Key key, int times = 1)
    {
        for (int i = 0; i < times; ++i) {
            model()->stopIgnoreGlobalKeyPress();
            QTest::keyClick(QApplication::focusWidget(), key);
            settle();
        }
    }
    void keys(const QList<Qt::Key>& list)
    {
        for (Qt::Key each : list) {
            press(each);
        }
    }
    // What follows from what has happened so far, without time passing.
    static void settle()
    {
        for (int step = 0; step < 3; ++step) {
            QCoreApplication::sendPostedEvents();
        }
    }
    // Texts that swing are taken at this part of their way.
    QImage picture(int percentOfSwing = 0)
    {
        settle();
        for (QPropertyAnimation* const animation : window.findChildren<QPropertyAnimation*>()) {
            if (animation->state() == QAbstractAnimation::Running) {
                animation->pause();
                animation->setCurrentTime(animation->duration() * percentOfSwing / 100);
            }
        }
        return window.isActiveWindow() ? window.grab().toImage() : QImage();
    }

    const bool prepared; // before the window is made
    Window window;

private:
    static bool prepare(LANG_ENUM language)
    {
        resetTerminal();
        model()->setLanguage(language);
        return true;
    }
};

// Runs a group's test; returns the program's exit status.
template <typename Test> int run(int argc, char** argv)
{
    if (QDateTime::currentMSecsSinceEpoch() != qint64(NOON) * 1000) {
        qFatal("the clock of these pictures does not stand still");
    }
    return windowfixture::run<Test>(argc, argv);
}

} // namespace golden

#endif
