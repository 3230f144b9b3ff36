// Golden pictures of the main screens in all seven languages.
#include "screens/goldenscene.h"

using namespace golden;

namespace {

const struct {
    LANG_ENUM language;
    const char* code;
    const char* name;
} LANGUAGES[] = {{LANG_ENGLISH, "en", "English"},  {LANG_FRENCH, "fr", "French"},
                 {LANG_GERMAN, "de", "German"},    {LANG_RUSSIAN, "ru", "Russian"},
                 {LANG_SPANISH, "es", "Spanish"},  {LANG_CHINESE, "zh", "Chinese"},
                 {LANG_JAPANESE, "ja", "Japanese"}};

const Qt::Key D = Qt::Key_Down;
const Qt::Key R = Qt::Key_Right;
const Qt::Key OK = Qt::Key_Return;

QImage question(LANG_ENUM language)
{
    Scene scene(language);
    model()->setPointingMode(POINTING_STATUS_NOT_POINTED);
    scene.show(Screen::SCREEN_STATUS);
    return scene.picture();
}

QImage running(LANG_ENUM language)
{
    Scene scene(language);
    startSessions({{0, 3725, 3, 0, 18300}, {1, 754, 1, 128}});
    const QImage picture = scene.picture();
    endSessions();
    return picture;
}

QImage popup(LANG_ENUM language)
{
    Scene scene(language);
    scene.window.addEvent(EV_AP_GUI_CIPHERING_OFF, EVENT_WARNING, POPUP_CLOSE_OK_OR_CANCEL, 0, nullptr,
                          nullptr, QString(), (NOON - 5) * 1000LL);
    return scene.picture();
}

QImage menu(LANG_ENUM language, const QList<Qt::Key>& keys)
{
    Scene scene(language);
    scene.show(Screen::SCREEN_MENU);
    scene.keys(keys);
    return scene.picture();
}
QImage closedMenu(LANG_ENUM language)
{
    return menu(language, {});
}
// The row "Back to English" stands in all languages but one.
QImage settings(LANG_ENUM language)
{
    QList<Qt::Key> keys = {D, D, OK};
    if (language != LANG_ENGLISH) {
        keys.prepend(D);
    }
    return menu(language, keys);
}
QImage timeout(LANG_ENUM language)
{
    QList<Qt::Key> keys = {D, D, OK, OK, D, R};
    if (language != LANG_ENGLISH) {
        keys.prepend(D);
    }
    return menu(language, keys);
}

QImage bundles(LANG_ENUM language)
{
    windowfixture::endSession();
    windowfixture::defineBundles({{0, "Standard data", 3}, {1, "Streaming", 1}});
    QImage picture;
    {
        Scene scene(language);
        windowfixture::setSession(1, BUNDLE_STATUS_INITIALIZING, 1);
        scene.show(Screen::SCREEN_ACTION);
        picture = scene.picture();
    }
    windowfixture::endSession();
    windowfixture::defineBundles({});
    return picture;
}

QImage pointing(LANG_ENUM language)
{
    Scene scene(language);
    model()->setPointingMode(POINTING_STATUS_POINTING);
    return scene.picture();
}

QImage pin(LANG_ENUM language)
{
    Scene scene(language);
    scene.show(Screen::SCREEN_ENTER_PIN);
    return scene.picture();
}

QImage antenna(LANG_ENUM language)
{
    Scene scene(language);
    scene.show(Screen::SCREEN_ANTENNA);
    return scene.picture();
}

QImage batteries(LANG_ENUM language)
{
    Scene scene(language);
    model()->setBattData(batteryOf(61, BATT_CHARGING, 72), batteryOf(84, BATT_DISCHARGING, 340));
    scene.show(Screen::SCREEN_BATTERY);
    return scene.picture();
}

const struct {
    const char* name;
    const char* description;
    QImage (*take)(LANG_ENUM);
} SCREENS[] = {
    {"question", "the question on the status screen", question},
    {"running", "two bundles on the status screen", running},
    {"popup", "a warning with both captions", popup},
    {"menu", "the menu", closedMenu},
    {"settings", "the settings", settings},
    {"timeout", "the check mark on the time until the display sleeps", timeout},
    {"bundles", "a bundle that is being started", bundles},
    {"pointing", "pointing", pointing},
    {"pin", "the entry of the PIN", pin},
    {"antenna", "the antenna without a position", antenna},
    {"battery", "two batteries", batteries},
};

QImage takeInLanguage(QImage (*take)(LANG_ENUM), LANG_ENUM language, SIM_STATUS_ENUM sim)
{
    Radio radio;
    radio.sim = sim;
    return setRadio(radio) ? take(language) : QImage();
}

// Those of one screen beside each other; the SIM changes only for the PIN.
std::vector<Picture> all()
{
    std::vector<Picture> pictures;
    for (const auto& screen : SCREENS) {
        const auto take = screen.take;
        const SIM_STATUS_ENUM sim = take == pin ? SIM_PIN_NEEDED : SIM_READY;
        for (const auto& row : LANGUAGES) {
            const LANG_ENUM language = row.language;
            pictures.push_back({QString(screen.name) + "-" + row.code,
                                QString(row.name) + ": " + screen.description + ".",
                                [=] { return takeInLanguage(take, language, sim); }});
        }
    }
    return pictures;
}

class LanguagePictures : public GroupTest {
public:
    LanguagePictures() : GroupTest("languages", all()) {}
};

} // namespace

int main(int argc, char** argv)
{
    return run<LanguagePictures>(argc, argv);
}
