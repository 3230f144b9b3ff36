// Golden pictures of the popups: each kind of closing, each severity, and texts of all heights.
#include "screens/goldenscene.h"

using namespace golden;

namespace {

// A popup that arose so long ago, in seconds.
struct Shown {
    unsigned int eventId;
    EVENT_SEVERITY_ENUM severity = EVENT_WARNING;
    POPUP_CLOSE_HANDLING_ENUM closing = POPUP_CLOSE_OK;
    int milliseconds = 0;
    QString text = QString(); // behind the event's own
    int age = 5;              // more than the grace, less than a popup waits to close by itself
};

void add(Scene& scene, const Shown& shown)
{
    scene.window.addEvent(shown.eventId, shown.severity, shown.closing, shown.milliseconds, nullptr, nullptr,
                          shown.text, (NOON - shown.age) * 1000LL);
    Scene::settle();
}

QImage popup(const Shown& shown, int percentOfSwing = 0, const QList<Qt::Key>& keys = {})
{
    if (!setRadio(Radio())) {
        return QImage();
    }
    Scene scene;
    add(scene, shown);
    if (!keys.isEmpty()) {
        scene.picture(percentOfSwing); // the swing stands still here when the first key comes
        scene.keys(keys);
    }
    return scene.picture(percentOfSwing);
}

QImage custom(const QString& text, POPUP_CLOSE_HANDLING_ENUM closing = POPUP_CLOSE_OK, int milliseconds = 0)
{
    return popup({EV_AP_GUI_CUSTOM_TEXT, EVENT_INFO, closing, milliseconds, text});
}

// After a change of the model that puts a popup up.
QImage after(const std::function<void(StatusUpdater*)>& change)
{
    if (!setRadio(Radio())) {
        return QImage();
    }
    Scene scene;
    change(model());
    return scene.picture();
}

const Shown LONG = {EV_AP_GUI_CUSTOM_TEXT, EVENT_INFO, POPUP_CLOSE_OK, 0,
                    "This text has more lines than the panel can show at once. It swings up and down by "
                    "itself until a key is pressed, and then the keys up and down move it line by line, as "
                    "long as it takes to read it."};

std::vector<Picture> kinds()
{
    return {
        {"closes-itself", "Tells, and goes by itself: no caption.",
         [] {
             return popup(
                 {EV_AP_GUI_STARTING_BUNDLE_NAME, EVENT_INFO, POPUP_CLOSE_AUTO, 2000, "Standard data", 0});
         }},
        {"ok", "Stays until OK.",
         [] {
             return popup({EV_AP_GUI_NOT_REGISTERED_TO_NETWORK, EVENT_INFO});
         }},
        {"closes-itself-or-ok", "Goes by itself, or by OK before that.",
         [] { return custom("The update begins in a minute.", POPUP_CLOSE_AUTO_OR_OK, 60000); }},
        {"cancel", "Stays until Cancel, the left key.",
         [] { return custom("The terminal calibrates itself.", POPUP_CLOSE_CANCEL); }},
        {"ok-or-cancel", "A choice of the two.",
         [] { return custom("Start the update now?", POPUP_CLOSE_OK_OR_CANCEL); }},
        {"any-key", "Goes by any key.", [] { return custom("Press any key.", POPUP_CLOSE_ANY_KEY); }},
        {"not-by-user", "Stays until the terminal takes it away.",
         [] {
             return popup({EV_AP_GUI_VALIDATING_PIN, EVENT_INFO, POPUP_CLOSE_NOT_BY_USER});
         }},
        {"grace", "In its first moments OK does nothing yet, and the caption is missing.",
         [] {
             return popup({EV_AP_GUI_WRONG_PIN, EVENT_WARNING, POPUP_CLOSE_OK, 0, QString(), 0});
         }},
        {"screen-saver", "The display sleeps.",
         [] {
             if (!setRadio(Radio())) {
                 return QImage();
             }
             Scene scene;
             scene.popups()->showScreenSaver();
             return scene.picture();
         }},
    };
}

std::vector<Picture> severities()
{
    return {
        {"info", "Information.",
         [] {
             return popup({EV_AP_GUI_NO_EVENTS, EVENT_INFO});
         }},
        {"warning", "A warning.",
         [] {
             return popup({EV_AP_GUI_WRONG_PIN, EVENT_WARNING});
         }},
        {"error", "An error.",
         [] {
             return popup({EV_AP_GUI_CONN_FAILED, EVENT_ERROR});
         }},
        {"fatal", "The terminal closes down: it is too hot.",
         [] {
             return popup({EV_AP_TEMP_CLOSE_TERM, EVENT_FATAL});
         }},
        {"displaced", "A warning has come over an information, which waits behind it.",
         [] {
             if (!setRadio(Radio())) {
                 return QImage();
             }
             Scene scene;
             add(scene, {EV_AP_GUI_NO_EVENTS, EVENT_INFO});
             add(scene, {EV_AP_GUI_CIPHERING_OFF, EVENT_WARNING});
             return scene.picture();
         }},
    };
}

std::vector<Picture> texts()
{
    return {
        {"one-line", "One line stands in the middle.", [] { return custom("One line."); }},
        {"two-lines", "Two lines.", [] { return custom("A text that is a little too wide for one line."); }},
        {"three-lines", "Three lines are the most that fits, and their end lies beside the caption.",
         [] {
             return custom("A text of three lines, as wide as the panel is, stands still as well; it is the "
                           "highest one that does.");
         }},
        {"swing", "A longer text swings: at its top.", [] { return popup(LONG); }},
        {"swing-middle", "On the way down.", [] { return popup(LONG, 50); }},
        {"swing-end", "At its end.", [] { return popup(LONG, 100); }},
        {"by-hand", "A key stops it, and two more move it by hand.",
         [] {
             return popup(LONG, 0, {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down});
         }},
        {"by-hand-back", "And one moves it back.",
         [] {
             return popup(LONG, 0, {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up});
         }},
        {"cyrillic-name", "A bundle with a Cyrillic name while the panel speaks English.",
         [] {
             return popup({EV_AP_GUI_STARTING_BUNDLE_NAME, EVENT_INFO, POPUP_CLOSE_AUTO, 2000,
                           QString::fromUtf8("Потоковая передача"), 0});
         }},
        {"chinese-name", "The same with a Chinese one.",
         [] {
             return popup({EV_AP_GUI_STARTING_BUNDLE_NAME, EVENT_INFO, POPUP_CLOSE_AUTO, 2000,
                           QString::fromUtf8("流媒体"), 0});
         }},
    };
}

std::vector<Picture> system()
{
    return {
        {"initializing", "The terminal is starting.",
         [] { return after([](StatusUpdater* m) { m->setExtendedSystemStatus(0); }); }},
        {"rebooting", "It starts anew.",
         [] { return after([](StatusUpdater* m) { m->setExtendedSystemStatus(SYSTEM_STATUS_REBOOTING); }); }},
        {"shutting-down", "It goes off.",
         [] { return after([](StatusUpdater* m) { m->setExtendedSystemStatus(SYSTEM_STATUS_STOPPING); }); }},
        {"update", "New software is being loaded.",
         [] { return after([](StatusUpdater* m) { m->setSwUploadStatus(1, 40, 512); }); }},
        {"update-antenna", "New software for the antenna.",
         [] { return after([](StatusUpdater* m) { m->setSwUploadStatus(2, 40, 512); }); }},
        {"update-damaged", "The software is damaged.",
         [] {
             return popup({EV_SW_UPDATE_SW_INTEGRITY_ERROR, EVENT_ERROR, POPUP_CLOSE_NOT_BY_USER});
         }},
        {"ciphering-off", "The network does not encrypt.",
         [] {
             return popup({EV_AP_GUI_CIPHERING_OFF, EVENT_WARNING});
         }},
        {"no-bundles", "There is no bundle to start.",
         [] {
             return popup({EV_AP_GUI_NO_BUNDLES_DEFINED, EVENT_INFO});
         }},
        {"dhcp-client", "The bundles are closed while the terminal is a DHCP client.",
         [] {
             return popup({EV_AP_GUI_DHCP_CLIENT_WITHOUT_BONDING, EVENT_INFO});
         }},
        {"select-network", "The network is chosen in the web interface.",
         [] {
             return popup({EV_AP_GUI_SELECT_NETWORK_ON_WEB, EVENT_INFO, POPUP_CLOSE_NOT_BY_USER});
         }},
        {"modem-in-use", "A modem has taken over.",
         [] {
             return popup({EV_AP_GUI_MODEM_IN_USE, EVENT_INFO, POPUP_CLOSE_NOT_BY_USER});
         }},
        {"modem-searching", "The modem is missing.",
         [] {
             return popup({EV_AP_GUI_SEARCHING_FOR_MODEM, EVENT_INFO, POPUP_CLOSE_NOT_BY_USER});
         }},
        {"wifi-name", "Wi-Fi was switched on: its name.",
         [] {
             return after([](StatusUpdater* m) {
                 m->setWifiSsidStr("Lumen 4711");
                 m->setWifiBroadcastSsid(true);
                 m->setInterfaceState(INTERFACE_NAME_WIFI, INTERFACE_STATE_OFF);
                 QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);  // bundles
                 QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);    // antenna
                 QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right); // Wi-Fi
                 QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
             });
         }},
    };
}

std::vector<Picture> all()
{
    std::vector<Picture> pictures = kinds();
    for (const std::vector<Picture>& part : {severities(), texts(), system()}) {
        pictures.insert(pictures.end(), part.begin(), part.end());
    }
    return pictures;
}

class PopupPictures : public GroupTest {
public:
    PopupPictures() : GroupTest("popup", all()) {}
};

} // namespace

int main(int argc, char** argv)
{
    return run<PopupPictures>(argc, argv);
}
