// Golden pictures of the pages that show one thing: pointing, the PIN, antenna, batteries, a message.
#include "screens/goldenscene.h"

#include "screens/screenantenna.h"
#include "screens/screenmessage.h"

using namespace golden;

namespace {

QImage pointing(int level)
{
    if (!setRadio(Radio())) {
        return QImage();
    }
    Scene scene;
    model()->setSignalLevel(level);
    model()->setPointingMode(POINTING_STATUS_POINTING);
    Scene::settle();
    return scene.window.getCurrentScreenId() == Screen::SCREEN_POINTING ? scene.picture() : QImage();
}

QImage pin(const QList<Qt::Key>& keys, int retriesLeft = 3)
{
    Radio radio;
    radio.sim = SIM_PIN_NEEDED;
    if (!setRadio(radio)) {
        return QImage();
    }
    Scene scene;
    model()->setSimPinRetriesLeft(retriesLeft);
    emit model()->simPinRetriesLeftChanged();
    scene.keys(keys);
    return scene.window.getCurrentScreenId() == Screen::SCREEN_ENTER_PIN ? scene.picture() : QImage();
}

// blinks: how often the next segment of the bar has changed since the page came up.
QImage antenna(const gps_data_t& position, int blinks = 0)
{
    if (!setRadio(Radio())) {
        return QImage();
    }
    Scene scene;
    model()->setPosition(position);
    scene.show(Screen::SCREEN_ANTENNA);
    for (int i = 0; i < blinks; ++i) {
        static_cast<ScreenAntenna*>(scene.window.getScreenById(Screen::SCREEN_ANTENNA))
            ->handleGpsBlinkTimeout();
    }
    return scene.picture();
}

gps_data_t fix(int satellites, int type = 3)
{
    gps_data_t position;
    position.latDeg = 55;
    position.latMin = 41;
    position.longEast = false;
    position.longDeg = 112;
    position.longMin = 34;
    position.fix_type = type;
    position.numberOfGpsFound = satellites;
    return position;
}

gps_data_t hidden()
{
    gps_data_t position = fix(6);
    position.displayPositionAllowed = false;
    return position;
}

QImage batteries(const battery_t& internal, const battery_t& external)
{
    if (!setRadio(Radio())) {
        return QImage();
    }
    Scene scene;
    model()->setBattData(internal, external);
    scene.show(Screen::SCREEN_BATTERY);
    return scene.picture();
}

battery_t broken()
{
    battery_t battery = batteryOf(50, BATT_IDLE, -1);
    battery.batteryConnectionStatus = BATT_IN_ERROR;
    return battery;
}

// The message page has no instance of its own: its words are given here.
class Message : public ScreenMessage {
public:
    explicit Message(Window* window) : ScreenMessage(window, Screen::SCREEN_ENTER_PIN, nullptr)
    {
        setFixedSize(Screen::PANEL_WIDTH, Screen::PANEL_HEIGHT);
        retranslate();
        pMessageLabel->setText("A message of two lines, with a caption on either side.");
    }
};

const Qt::Key U = Qt::Key_Up;
const Qt::Key D = Qt::Key_Down;
const Qt::Key R = Qt::Key_Right;

std::vector<Picture> entries()
{
    return {
        {"pointing-0", "Pointing without a signal. The scale has twelve fields.", [] { return pointing(0); }},
        {"pointing-1", "The weakest signal that counts.", [] { return pointing(320); }},
        {"pointing-2", "A fair one.", [] { return pointing(427); }},
        {"pointing-3", "A good one.", [] { return pointing(523); }},
        {"pointing-4", "The bar is full.", [] { return pointing(600); }},
        {"pin-1", "The first digit: left leaves.",
         [] {
             return pin({U, U, U, U});
         }},
        {"pin-2", "The second: what was passed can't be read.",
         [] {
             return pin({U, U, U, U, R, D});
         }},
        {"pin-3", "The third.",
         [] {
             return pin({U, U, U, U, R, D, R, U, U});
         }},
        {"pin-4", "The last: OK sends the PIN.",
         [] {
             return pin({U, U, U, U, R, D, R, U, U, R, D, D, D});
         }},
        {"pin-retries", "A wrong PIN came before.", [] { return pin({}, 2); }},
        {"pin-last-retry", "The last try, on its last digit.",
         [] {
             return pin({R, R, R, U}, 1);
         }},
    };
}

std::vector<Picture> details()
{
    return {
        {"antenna-acquiring", "Looking for the position, with no satellite yet.",
         [] { return antenna(fix(0, 0), 2); }},
        {"antenna-acquiring-2", "Two satellites found.", [] { return antenna(fix(2, 0), 2); }},
        {"antenna-acquiring-blink", "The next segment blinks.", [] { return antenna(fix(2, 0), 1); }},
        {"antenna-acquiring-4", "Four found: the bar is full.", [] { return antenna(fix(4, 0), 2); }},
        {"antenna-fix", "The position.", [] { return antenna(fix(7)); }},
        {"antenna-hidden", "The position is known and must not be shown.", [] { return antenna(hidden()); }},
        {"battery-none", "No battery.", [] { return batteries(battery_t(), battery_t()); }},
        {"battery-one", "The internal battery in use.",
         [] { return batteries(batteryOf(84, BATT_DISCHARGING, 340), battery_t()); }},
        {"battery-external", "The external one alone, charging.",
         [] { return batteries(battery_t(), batteryOf(35, BATT_CHARGING, 95)); }},
        {"battery-two", "Both: one in use, one waiting, on a band of its own.",
         [] { return batteries(batteryOf(84, BATT_IDLE, 340), batteryOf(22, BATT_DISCHARGING, 130)); }},
        {"battery-two-charging", "Both: one charging, one so empty that it must be woken first.",
         [] { return batteries(batteryOf(61, BATT_CHARGING, 72), batteryOf(0, BATT_PRECHARGING, -1)); }},
        {"battery-estimating", "The time isn't known yet.",
         [] { return batteries(batteryOf(97, BATT_DISCHARGING, 0), batteryOf(12, BATT_CHARGING, 0)); }},
        {"battery-broken", "A battery that is out of order.",
         [] { return batteries(broken(), batteryOf(100, BATT_IDLE, 600)); }},
        {"message", "A message with two captions, the base of the page of the PIN.",
         [] {
             Scene scene;
             Message message(&scene.window);
             return message.grab().toImage();
         }},
    };
}

std::vector<Picture> all()
{
    std::vector<Picture> pictures = entries();
    const std::vector<Picture> more = details();
    pictures.insert(pictures.end(), more.begin(), more.end());
    return pictures;
}

class PagePictures : public GroupTest {
public:
    PagePictures() : GroupTest("pages", all()) {}
};

} // namespace

int main(int argc, char** argv)
{
    return run<PagePictures>(argc, argv);
}
