// The settings of the menu: what a press writes, and how the check marks follow the model.
#include "screens/screenmenu.h"

#include "app/guiapp.h"
#include "common/log.h"
#include "model/setting_items.h"
#include "model/statusupdater.h"
#include "widgets/ttreewidget.h"

#include <QFont>

namespace {

// One setting: the key that a press writes, the rows of its values, and what is written for a row that is
// none of them. The errors are the log's, each followed by the row's id.
struct Setting {
    const char* key;
    const SettingItem* items;
    int numberOfItems;
    int fallback;
    const char* storeError;
    const char* checkError;
};

template <int N>
constexpr Setting setting(const char* key, const SettingItem (&items)[N], int fallback,
                          const char* storeError, const char* checkError)
{
    return Setting{key, items, N, fallback, storeError, checkError};
}

const Setting BRIGHTNESS = setting("cfg.display.brightness", BRIGHTNESS_ITEMS, 3,
                                   "ScreenMenu::storeBrightnessLevelToCBus(): ERROR: Illegal value. itemId=",
                                   "ScreenMenu::setBrightnessLevelCheckmark(): ERROR!!! unsupported itemId=");
const Setting TIMEOUT = setting("cfg.display.timeout", SCREEN_SAVER_ITEMS, 300,
                                "ScreenMenu::storeTimeoutLevelToCBus(): ERROR: Illegal value. itemId=",
                                "ScreenMenu::setTimeoutLevelCheckmark(): ERROR!!! unsupported itemId=");
const Setting AUDIO_POINTING =
    setting("cfg.audio_indication.pointing", AUDIO_POINTING_ITEMS, 0,
            "ScreenMenu::storeAudioPointingToCBus(): ERROR: Illegal value. itemId=",
            "ScreenMenu::setAudioPointingCheckmark(): ERROR!!! unsupported itemId=");
const Setting POWER_UP = setting("cfg.power_up.switch_on_when_external_power", POWER_UP_ITEMS, 1,
                                 "ScreenMenu::storePowerUpLevelToCBus(): ERROR: Illegal value. itemId=",
                                 "ScreenMenu::setPowerUp(): ERROR!!! unsupported itemId=");
// The class in the first text isn't this one; it is the log's wording.
const Setting LANGUAGE = setting(
    "cfg.language", LANGUAGE_ITEMS, LANG_ENGLISH, "StatusUpdater::storeLanguageToCBus(): ERROR!!!! itemId=",
    "ScreenMenu::updateLanguageMenuItemsFromEnum(): ERROR!!! unsupported itemId=");

// Only writes: the check mark waits for the change to come back.
void store(const Setting& setting, StatusUpdater* statusUpdater, WIDGET_ITEM_ID_ENUM itemId)
{
    int value = setting.fallback;
    bool known = false;
    for (int i = 0; i < setting.numberOfItems && !known; ++i) {
        known = setting.items[i].item == itemId;
        if (known)
            value = setting.items[i].value;
    }
    if (!known)
        logDebug() << setting.storeError << itemId;
    statusUpdater->setCBusValue(QString::fromLatin1(setting.key), value);
}

// Not every value has a row: brightness level 0 leaves the list without a mark.
void check(const Setting& setting, TTreeWidget* tree, WIDGET_ITEM_ID_ENUM itemId)
{
    for (int i = 0; i < setting.numberOfItems; ++i) {
        TTreeWidgetItem* const item = tree->getItemById(setting.items[i].item);
        if (item)
            item->setCheckState(0, Qt::Unchecked);
    }
    TTreeWidgetItem* const item = tree->getItemById(itemId);
    if (item)
        item->setCheckState(0, Qt::Checked);
    else
        logDebug() << setting.checkError << itemId;
}

WIDGET_ITEM_ID_ENUM itemId(int modelEnum)
{
    return static_cast<WIDGET_ITEM_ID_ENUM>(modelEnum);
}

} // namespace

void ScreenMenu::storeBrightnessLevelToCBus(ItemId itemId)
{
    store(BRIGHTNESS, pStatusUpdater, itemId);
}

void ScreenMenu::storeTimeoutLevelToCBus(ItemId itemId)
{
    store(TIMEOUT, pStatusUpdater, itemId);
}

void ScreenMenu::storeAudioPointingToCBus(ItemId itemId)
{
    store(AUDIO_POINTING, pStatusUpdater, itemId);
}

void ScreenMenu::storePowerUpLevelToCBus(ItemId itemId)
{
    store(POWER_UP, pStatusUpdater, itemId);
}

void ScreenMenu::storeLanguageToCBus(ItemId itemId)
{
    store(LANGUAGE, pStatusUpdater, itemId);
}

// The ids are kept, but no row bears them and the terminal has no such setting.
void ScreenMenu::setStealth(ItemId itemId)
{
    logDebug() << "ScreenMenu::setStealth(): There is no such setting. itemId=" << itemId;
}

void ScreenMenu::setBrightnessLevelCheckmark(ItemId itemId)
{
    check(BRIGHTNESS, pTreeWidget, itemId);
}

void ScreenMenu::setTimeoutLevelCheckmark(ItemId itemId)
{
    check(TIMEOUT, pTreeWidget, itemId);
}

void ScreenMenu::setAudioPointingCheckmark(ItemId itemId)
{
    check(AUDIO_POINTING, pTreeWidget, itemId);
}

void ScreenMenu::setPowerUp(ItemId itemId)
{
    check(POWER_UP, pTreeWidget, itemId);
}

void ScreenMenu::updateDisplayBrightnessMenuItems()
{
    setBrightnessLevelCheckmark(itemId(pStatusUpdater->getBrightnessEnum()));
}

void ScreenMenu::updateDisplayTimeoutMenuItems()
{
    setTimeoutLevelCheckmark(itemId(pStatusUpdater->getScreenSaverTimeEnum()));
}

void ScreenMenu::updateAudioPointingMenuItems()
{
    setAudioPointingCheckmark(itemId(pStatusUpdater->getAudioPointingEnum()));
}

void ScreenMenu::updateSettingsPowerUpMenuItems()
{
    setPowerUp(itemId(pStatusUpdater->getPowerUpEnum()));
}

void ScreenMenu::updateLanguageMenuItems()
{
    updateLanguageMenuItemsFromEnum(itemId(pStatusUpdater->getLanguageTreeWidgetEnum()));
}

// Each name keeps the font of its own script, so that whoever is lost in a foreign language finds his own.
void ScreenMenu::updateLanguageMenuItemsFromEnum(ItemId itemId)
{
    check(LANGUAGE, pTreeWidget, itemId);
    showBackToEnglish(pTreeWidget->getItemById(ITEM_LANGUAGE_ENGLISH)->checkState(0) != Qt::Checked);
    logDebug() << "ScreenMenu::updateLanguageMenuItemsFromEnum(): Force fixed font for pSettingsLang<foo> "
                  "menu items";
    for (const SettingItem& language : LANGUAGE_ITEMS) {
        const QFont* const font = GuiApp::getFont(14, static_cast<LANG_ENUM>(language.value));
        pTreeWidget->getItemById(language.item)->setData(0, Qt::FontRole, *font);
    }
}

// A hidden row can't keep the cursor: nobody would see where he stands.
void ScreenMenu::showBackToEnglish(bool shown)
{
    TTreeWidgetItem* const item = pTreeWidget->getItemById(ITEM_BACK_TO_ENGLISH);
    item->setHidden(!shown);
    if (!shown && pTreeWidget->currentItem() == item)
        pTreeWidget->setCurrentItem(pTreeWidget->getItemById(ITEM_ACTION_EXIT));
}
