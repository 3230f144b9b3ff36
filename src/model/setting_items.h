// The values of the settings that the menu offers, and the row of the menu that stands for each: the
// values are those of the database keys. The model maps from value to row, the menu from row to value.
// Constant tables; any thread.
#ifndef LUMENPANEL_MODEL_SETTING_ITEMS_H
#define LUMENPANEL_MODEL_SETTING_ITEMS_H

#include "model/menu_items.h"

struct SettingItem {
    int value;
    WIDGET_ITEM_ID_ENUM item;
};

extern const SettingItem SCREEN_SAVER_ITEMS[5];   // cfg.display.timeout, seconds
extern const SettingItem BRIGHTNESS_ITEMS[8];     // cfg.display.brightness, level
extern const SettingItem AUDIO_POINTING_ITEMS[2]; // cfg.audio_indication.pointing, 0 or 1
extern const SettingItem POWER_UP_ITEMS[2];       // cfg.power_up.switch_on_when_external_power, 0 or 1
extern const SettingItem LANGUAGE_ITEMS[7];       // cfg.language, LANG_ENUM

#endif
