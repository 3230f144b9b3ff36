// The tables of settings and menu rows; see the header.
#include "model/setting_items.h"

#include "model/language.h"

const SettingItem SCREEN_SAVER_ITEMS[] = {{5, ITEM_TIMEOUT_5_SECONDS},
                                          {30, ITEM_TIMEOUT_30_SECONDS},
                                          {60, ITEM_TIMEOUT_1_MINUTE},
                                          {120, ITEM_TIMEOUT_2_MINUTES},
                                          {300, ITEM_TIMEOUT_5_MINUTES}};

const SettingItem BRIGHTNESS_ITEMS[] = {{0, ITEM_BRIGHTNESS_LEVEL_0}, {1, ITEM_BRIGHTNESS_LEVEL_1},
                                        {2, ITEM_BRIGHTNESS_LEVEL_2}, {3, ITEM_BRIGHTNESS_LEVEL_3},
                                        {4, ITEM_BRIGHTNESS_LEVEL_4}, {5, ITEM_BRIGHTNESS_LEVEL_5},
                                        {6, ITEM_BRIGHTNESS_LEVEL_6}, {7, ITEM_BRIGHTNESS_LEVEL_7}};

const SettingItem AUDIO_POINTING_ITEMS[] = {{1, ITEM_AUDIO_POINTING_ON}, {0, ITEM_AUDIO_POINTING_OFF}};

const SettingItem POWER_UP_ITEMS[] = {{1, ITEM_POWER_UP_AUTOMATIC}, {0, ITEM_POWER_UP_MANUAL}};

const SettingItem LANGUAGE_ITEMS[] = {
    {LANG_ENGLISH, ITEM_LANGUAGE_ENGLISH},  {LANG_FRENCH, ITEM_LANGUAGE_FRENCH},
    {LANG_GERMAN, ITEM_LANGUAGE_GERMAN},    {LANG_RUSSIAN, ITEM_LANGUAGE_RUSSIAN},
    {LANG_SPANISH, ITEM_LANGUAGE_SPANISH},  {LANG_CHINESE, ITEM_LANGUAGE_CHINESE},
    {LANG_JAPANESE, ITEM_LANGUAGE_JAPANESE}};
