// Golden pictures of the status screen.
#include "screens/goldenscene.h"

#include "screens/screenstatus.h"
#include "widgets/tlabel.h"

using namespace golden;

namespace {

// The screen with a state of the radio module.
QImage withRadio(const Radio& radio, ENUM_POINTED_STATUS pointing = POINTING_STATUS_POINTED)
{
    if (!setRadio(radio)) {
        return QImage();
    }
    Scene scene;
    model()->setPointingMode(pointing);
    scene.show(Screen::SCREEN_STATUS); // from the entry of the PIN
    return scene.picture();
}

QImage withSim(SIM_STATUS_ENUM sim)
{
    Radio radio;
    radio.sim = sim;
    return withRadio(radio);
}

QImage withNetwork(PLMN_STATUS_ENUM network, UMTS_STATUS_ENUM service = UMTS_STATUS_ATTACHED)
{
    Radio radio;
    radio.network = network;
    radio.service = service;
    return withRadio(radio);
}

// The screen of a terminal on the air after a change of the model.
QImage with(const std::function<void(StatusUpdater*)>& change)
{
    if (!setRadio(Radio())) {
        return QImage();
    }
    Scene scene;
    change(model());
    return scene.picture();
}

QImage withSessions(const std::vector<Session>& sessions, int percentOfSwing = 0)
{
    if (!setRadio(Radio())) {
        return QImage();
    }
    Scene scene;
    startSessions(sessions);
    const QImage picture = scene.picture(percentOfSwing);
    endSessions();
    return picture;
}

// In the order in which they started.
const std::vector<Session> SESSIONS = {
    {0, 3725, 3, 0, 18300}, {1, 754, 1, 64}, {2, 95, 1, 128}, {3, 4, 1, 32}};
std::vector<Session> sessions(int count)
{
    return std::vector<Session>(SESSIONS.begin(), SESSIONS.begin() + count);
}

QImage withInterfaces(INTERFACE_STATE_ENUM state, int steps = 0)
{
    if (!setRadio(Radio())) {
        return QImage();
    }
    Scene scene;
    for (int interface = INTERFACE_NAME_FIRST; interface <= INTERFACE_NAME_LAST; ++interface) {
        model()->setInterfaceState(INTERFACE_NAME_ENUM(interface), state);
    }
    for (const char* name : {"pWifiLabel", "pIsdnLabel", "pLanLabel", "pPhoneLabel", "pUsbLabel"}) {
        for (int step = 0; step < steps; ++step) {
            scene.find<TLabel>(name)->handleActivatingTimeout();
        }
    }
    return scene.picture();
}

// The frame after these keys, from the first focus.
QImage framed(const QList<Qt::Key>& keys, bool warnings = false)
{
    if (!setRadio(Radio())) {
        return QImage();
    }
    Scene scene;
    model()->setWarningsPresent(warnings);
    scene.keys(keys);
    return scene.picture();
}

QImage withSignal(int level, int bars, IAI2_BEAM_TYPE_ENUM beam)
{
    Radio radio;
    radio.beam = beam;
    if (!setRadio(radio)) {
        return QImage();
    }
    Scene scene;
    model()->setSignalLevel(level);
    model()->setSignalLevelIcon(bars);
    return scene.picture();
}

QImage warning(bool blinked)
{
    if (!setRadio(Radio())) {
        return QImage();
    }
    Scene scene;
    model()->setWarningsPresent(true);
    if (blinked) {
        scene.find<TLabel>("pWarningLabel")->handleBlinkTimeout();
    }
    return scene.picture();
}

const Qt::Key L = Qt::Key_Left;
const Qt::Key R = Qt::Key_Right;
const Qt::Key U = Qt::Key_Up;

std::vector<Picture> texts()
{
    return {
        {"starting", "The radio module isn't up yet.",
         [] {
             Radio radio;
             radio.operating = false;
             return withRadio(radio, POINTING_STATUS_UNKNOWN);
         }},
        {"sim-starting", "The SIM is being read.", [] { return withSim(SIM_STATUS_UNKNOWN); }},
        {"no-sim", "There is no SIM in the terminal.", [] { return withSim(SIM_NOT_PRESENT); }},
        {"sim-rejected", "The network does not take the SIM.", [] { return withSim(SIM_INVALID); }},
        {"sim-blocked", "The PIN was entered wrongly too often.", [] { return withSim(SIM_BLOCKED); }},
        {"sim-locked", "The terminal is locked to another provider's SIM.",
         [] { return withSim(SIM_LOCKED); }},
        {"enter-pin", "The SIM wants its PIN. A question stands in the frame: OK answers it.",
         [] { return withSim(SIM_PIN_NEEDED); }},
        {"point-now", "The antenna isn't pointed: OK starts the pointing.",
         [] { return withRadio(Radio(), POINTING_STATUS_NOT_POINTED); }},
        {"searching", "Looking for the network.", [] { return withNetwork(PLMN_STATUS_SEARCHING); }},
        {"registering", "The network was found and takes the terminal in.",
         [] { return withNetwork(PLMN_STATUS_SELECTED, UMTS_STATUS_ATTACHING); }},
        {"limited-service", "The network offers emergency service only.",
         [] { return withNetwork(PLMN_STATUS_SELECTED, UMTS_STATUS_BLOCKED); }},
        {"ready", "Ready for use, with nothing running.", [] { return withRadio(Radio()); }},
        {"external-control", "Another program controls the terminal; the bundles are out of reach.",
         [] { return with([](StatusUpdater* m) { m->setControlledByATCommands(true); }); }},
        {"bonding-slave", "The terminal serves another one as its second half.",
         [] {
             return with([](StatusUpdater* m) {
                 m->setBondingEnabled(true);
                 m->setDhcpClientMode(true);
             });
         }},
        {"connecting", "A bundle is being started.",
         [] {
             return withSessions({{0, 1, 3, 0, 0, BUNDLE_STATUS_INITIALIZING}});
         }},
        {"one-bundle", "Standard data is counted by its amount.", [] { return withSessions(sessions(1)); }},
        {"one-stream", "Streaming is counted by its time.", [] { return withSessions({SESSIONS[1]}); }},
        {"two-bundles", "Two bundles run; the count stands on the icon.",
         [] { return withSessions(sessions(2)); }},
        {"three-bundles", "Three are more than fit, and the lines swing: at the top.",
         [] { return withSessions(sessions(3)); }},
        {"three-bundles-end", "The same at the bottom.", [] { return withSessions(sessions(3), 100); }},
        {"four-bundles", "Four bundles, at the top of their swing.",
         [] { return withSessions(sessions(4)); }},
        {"four-bundles-middle", "On the way.", [] { return withSessions(sessions(4), 50); }},
        {"four-bundles-end", "At the bottom.", [] { return withSessions(sessions(4), 100); }},
    };
}

std::vector<Picture> icons()
{
    return {
        {"interfaces-on", "All interfaces are on.", [] { return withInterfaces(INTERFACE_STATE_ON); }},
        {"interfaces-off", "All interfaces are off: other pictures, under a dark layer.",
         [] { return withInterfaces(INTERFACE_STATE_OFF); }},
        {"interfaces-activating", "Switching on: the dark layer at the bright end of its breath.",
         [] { return withInterfaces(INTERFACE_STATE_ACTIVATING); }},
        {"interfaces-activating-dark", "Switching on: at its dark end.",
         [] { return withInterfaces(INTERFACE_STATE_ACTIVATING, 10); }},
        {"interfaces-deactivating", "Switching off: half way.",
         [] { return withInterfaces(INTERFACE_STATE_DEACTIVATING, 4); }},
        {"frame-bundles", "The frame on the bundles.", [] { return framed({L}); }},
        {"frame-antenna", "On the antenna.",
         [] {
             return framed({L, U});
         }},
        {"frame-wifi", "On Wi-Fi.",
         [] {
             return framed({L, U, R});
         }},
        {"frame-isdn", "On ISDN, which is off.",
         [] {
             return framed({L, U, R, R});
         }},
        {"frame-switching", "OK on it: it is being switched on.",
         [] {
             return framed({L, U, R, R, Qt::Key_Return});
         }},
        {"frame-lan", "On LAN.", [] { return framed({U}); }},
        {"frame-phone", "On the phone.",
         [] {
             return framed({U, R});
         }},
        {"frame-usb", "On USB.",
         [] {
             return framed({U, R, R});
         }},
        {"frame-warning", "On the warning sign.",
         [] {
             return framed({U, R, R, R}, true);
         }},
        {"frame-bundles-count", "The frame around the count of the bundles.",
         [] {
             if (!setRadio(Radio())) {
                 return QImage();
             }
             Scene scene;
             startSessions(sessions(2));
             scene.press(L);
             const QImage picture = scene.picture();
             endSessions();
             return picture;
         }},
        {"frame-battery", "On the battery.",
         [] {
             return framed({R, U});
         }},
        {"frame-menu", "On the menu.", [] { return framed({R}); }},
        {"warning", "Something wants attention: the sign blinks.", [] { return warning(false); }},
        {"warning-blink", "The other half of the blink.", [] { return warning(true); }},
        {"signal-0", "No signal.", [] { return withSignal(0, 0, IAI2_BEAM_TYPE_UNDEFINED); }},
        {"signal-1", "One bar, in the global beam.",
         [] { return withSignal(412, 1, IAI2_BEAM_TYPE_GLOBAL); }},
        {"signal-2", "Two bars, in a regional beam.",
         [] { return withSignal(468, 2, IAI2_BEAM_TYPE_REGIONAL); }},
        {"signal-4", "Four bars, in a narrow beam.",
         [] { return withSignal(599, 4, IAI2_BEAM_TYPE_NARROW); }},
    };
}

QImage withBatteries(const battery_t& internal, const battery_t& external, bool supply)
{
    return with([&](StatusUpdater* m) {
        m->setBattData(internal, external);
        m->setExternalSupplyPresent(supply);
    });
}

std::vector<Picture> batteries()
{
    return {
        {"battery-full", "Full, with ten hours and more left.",
         [] { return withBatteries(batteryOf(100, BATT_DISCHARGING, 754), battery_t(), false); }},
        {"battery-low", "Nearly empty.",
         [] { return withBatteries(batteryOf(4, BATT_DISCHARGING, 9), battery_t(), false); }},
        {"battery-two", "Two batteries: their mean, and their times together.",
         [] {
             return withBatteries(batteryOf(40, BATT_DISCHARGING, 150), batteryOf(90, BATT_IDLE, 410), false);
         }},
        {"battery-charging", "On external supply.",
         [] { return withBatteries(batteryOf(60, BATT_CHARGING, 80), battery_t(), true); }},
        {"battery-none", "On external supply without a battery.",
         [] { return withBatteries(battery_t(), battery_t(), true); }},
    };
}

std::vector<Picture> all()
{
    std::vector<Picture> pictures = texts();
    for (const std::vector<Picture>& part : {icons(), batteries()}) {
        pictures.insert(pictures.end(), part.begin(), part.end());
    }
    return pictures;
}

class StatusPictures : public GroupTest {
public:
    StatusPictures() : GroupTest("status", all()) {}
};

} // namespace

int main(int argc, char** argv)
{
    return run<StatusPictures>(argc, argv);
}
