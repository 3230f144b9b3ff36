// Golden pictures of the menu: closed, each branch open, the check marks, the alerts, and what a row opens.
#include "screens/goldenscene.h"

using namespace golden;

namespace {

const Qt::Key D = Qt::Key_Down;
const Qt::Key L = Qt::Key_Left;
const Qt::Key R = Qt::Key_Right;
const Qt::Key OK = Qt::Key_Return;

QList<Qt::Key> down(int times, const QList<Qt::Key>& then = {})
{
    QList<Qt::Key> keys;
    for (int i = 0; i < times; ++i) {
        keys.append(D);
    }
    return keys + then;
}
// The rows at the top while the panel speaks English, and those of the settings.
enum { SETTINGS = 2, PROPERTIES = 3, HELP_DESK = 4, ALERTS = 5 };
enum { AUDIO = 1, POWER_UP = 2, LANGUAGE = 3 };
QList<Qt::Key> settings(const QList<Qt::Key>& then)
{
    return down(SETTINGS, QList<Qt::Key>{OK} + then);
}
QList<Qt::Key> properties(const QList<Qt::Key>& then)
{
    return down(PROPERTIES, QList<Qt::Key>{OK} + then);
}

fmmi_evt_t alert(unsigned int eventId, int hoursAgo)
{
    fmmi_evt_t event;
    event.identifier = eventId;
    event.sub_id = 2;
    event.severity = EVENT_WARNING;
    event.time = (NOON - hoursAgo * 3600) * 1000LL;
    return event;
}
const QList<fmmi_evt_t> THREE_ALERTS = {alert(EV_AP_TEMP_REDUCED_PERF, 1), alert(EV_AP_TEMP_USB, 2),
                                        alert(EV_AP_GUI_CIPHERING_OFF, 50)};

// The menu after these keys.
QImage menu(const QList<Qt::Key>& keys, const QList<fmmi_evt_t>& alerts = {})
{
    if (!setRadio(Radio())) {
        return QImage();
    }
    Scene scene;
    StatusUpdater* const m = model();
    m->setIpAddress("192.168.0.1");
    m->setUnitSerialNumber("LP-0381-4471");
    m->setHpaSerialNumber("LA-1207-0093");
    m->setLanMacStr("02:00:00:4b:12:7e");
    m->setWifiMacStr("02:00:00:4b:12:7f");
    m->setWifiSsidStr("Lumen 4711");
    m->setWifiBroadcastSsid(true);
    m->setImeiStr("004999010640000");
    m->setHelpDeskStr("+00 1234 567890");
    m->setSwBuildDetails("1.21", 5, 0, "0005", "2026-03-02");
    m->setSystemEvents(alerts);
    Scene::settle();
    for (const fmmi_evt_t& event : alerts) {
        scene.popups()->closePopup(event.identifier, true); // read and closed
    }
    scene.show(Screen::SCREEN_MENU);
    scene.keys(keys);
    scene.popups()->handleHideButtonsTimeout(); // the grace of a popup that has come up is over
    return scene.picture();
}

// The menu opened by OK on the warning sign of the status screen.
QImage alertsOfTheSign(int count)
{
    if (!setRadio(Radio())) {
        return QImage();
    }
    Scene scene;
    const QList<fmmi_evt_t> alerts = THREE_ALERTS.mid(0, count);
    model()->setSystemEvents(alerts);
    Scene::settle();
    for (const fmmi_evt_t& event : alerts) {
        scene.popups()->closePopup(event.identifier, true);
    }
    scene.keys({Qt::Key_Up, R, R, R, OK});
    return scene.picture();
}

QImage inLanguage(LANG_ENUM language, const QList<Qt::Key>& keys)
{
    if (!setRadio(Radio())) {
        return QImage();
    }
    Scene scene(language);
    scene.show(Screen::SCREEN_MENU);
    scene.keys(keys);
    return scene.picture();
}

std::vector<Picture> trees()
{
    return {
        {"closed", "The menu as it opens. The selected row has a band.", [] { return menu({}); }},
        {"closed-end", "Its end.", [] { return menu(down(ALERTS)); }},
        {"settings", "A row that is open, with its first row selected.", [] { return menu(settings({})); }},
        {"display", "One level deeper.", [] { return menu(settings({OK})); }},
        {"brightness", "A choice: the key to the right leads to the check mark.",
         [] {
             return menu(settings({OK, R}));
         }},
        {"brightness-other", "Another row selected: the band and the check mark are two things.",
         [] {
             return menu(settings({OK, R, D}));
         }},
        {"timeout", "The time until the display sleeps.",
         [] {
             return menu(settings({OK, D, R}));
         }},
        {"audio", "The sound.", [] { return menu(settings(down(AUDIO, {OK}))); }},
        {"audio-pointing", "The sound while pointing.",
         [] {
             return menu(settings(down(AUDIO, {OK, R})));
         }},
        {"power-up", "How the terminal goes on.", [] { return menu(settings(down(POWER_UP, {R}))); }},
        {"language", "The languages, each in its own words.",
         [] { return menu(settings(down(LANGUAGE, {R}))); }},
        {"language-middle", "The next ones.",
         [] {
             return menu(settings(down(LANGUAGE, {R, D, D, D})));
         }},
        {"language-end", "The last ones.",
         [] {
             return menu(settings(down(LANGUAGE, {R, D, D, D, D, D, D})));
         }},
        {"back-to-english", "In another language a row leads back to English.",
         [] { return inLanguage(LANG_JAPANESE, {}); }},
        {"language-russian", "The check mark of another language.",
         [] {
             return inLanguage(LANG_RUSSIAN, {D, D, D, OK, D, D, D, R});
         }},
        {"left", "Left closes the row and stays on it.", [] { return menu(settings({L})); }},
        {"properties", "What the terminal is.", [] { return menu(properties({})); }},
        {"hardware", "Its parts.",
         [] {
             return menu(properties({D, OK}));
         }},
        {"alerts", "Three alerts, the newest first.", [] { return menu(down(ALERTS, {OK}), THREE_ALERTS); }},
        {"alerts-of-the-sign", "The same, from the warning sign.", [] { return alertsOfTheSign(3); }},
        {"alert-of-the-sign", "Only one.", [] { return alertsOfTheSign(1); }},
    };
}

std::vector<Picture> popups()
{
    return {
        {"alert", "One alert with its time and its number.",
         [] {
             return menu(down(ALERTS, {OK, OK}), THREE_ALERTS);
         }},
        {"no-alerts", "There are none.", [] { return menu(down(ALERTS, {OK})); }},
        {"ip-address", "The address.", [] { return menu(properties({OK})); }},
        {"serial-number", "The serial number.",
         [] {
             return menu(properties({D, OK, OK}));
         }},
        {"antenna-serial-number", "That of the antenna.",
         [] {
             return menu(properties({D, OK, D, OK}));
         }},
        {"lan", "The address of the LAN's hardware.",
         [] {
             return menu(properties({D, OK, D, D, OK}));
         }},
        {"wlan", "That of Wi-Fi, and its name.",
         [] {
             return menu(properties({D, OK, D, D, D, OK}));
         }},
        {"software", "The software.",
         [] {
             return menu(properties({D, D, OK}));
         }},
        {"conformity", "The conformity: more lines than fit.",
         [] {
             return menu(properties({D, D, D, OK}));
         }},
        {"imei", "The IMEI.",
         [] {
             return menu(properties({D, D, D, D, OK}));
         }},
        {"help-desk", "Whom to call.", [] { return menu(down(HELP_DESK, {OK})); }},
    };
}

std::vector<Picture> all()
{
    std::vector<Picture> pictures = trees();
    const std::vector<Picture> more = popups();
    pictures.insert(pictures.end(), more.begin(), more.end());
    return pictures;
}

class MenuPictures : public GroupTest {
public:
    MenuPictures() : GroupTest("menu", all()) {}
};

} // namespace

int main(int argc, char** argv)
{
    return run<MenuPictures>(argc, argv);
}
