// The tree of the menu as a table, and the loops over it: building, translating, dispatching a press.
#include "screens/screenmenu.h"

#include "common/checked.h"
#include "common/log.h"
#include "model/statusupdater.h"
#include "widgets/ttreewidget.h"

#include <QCoreApplication>

namespace {

const char SOURCE[] = "screenmenu";
const char OWN[] = "ScreenMenu";
const char SHARED[] = "Shared_translations";
const int MAX_DEPTH = 3;
const int NO_ROW = -1; // a depth: the id can be pressed, but the table puts no row of it into the tree

} // namespace

// One row, in the order of the tree. A row without a press opens and closes. A text without a context is
// never translated; without a text, too, the row bears a language's own name.
struct ScreenMenu::MenuRow {
    ItemId id;
    int depth;
    const char* context;
    const char* text;
    void (ScreenMenu::*press)(ItemId itemId);
};

const ScreenMenu::MenuRow ScreenMenu::menuRows[] = {
    {ITEM_ACTION_EXIT, 0, SHARED, QT_TRANSLATE_NOOP("Shared_translations", "Exit"), &ScreenMenu::leave},
    {ITEM_BACK_TO_ENGLISH, 0, nullptr, "Back to English", &ScreenMenu::goBackToEnglish},
    {ITEM_POINT_NOW, 0, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Point now"), &ScreenMenu::pointNow},

    {ITEM_SETTINGS, 0, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Settings"), nullptr},
    {ITEM_DISPLAY, 1, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Display"), nullptr},
    {ITEM_BRIGHTNESS, 2, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Brightness"), nullptr},
    {ITEM_BRIGHTNESS_LEVEL_0, NO_ROW, nullptr, nullptr, &ScreenMenu::storeBrightnessLevelToCBus},
    {ITEM_BRIGHTNESS_LEVEL_1, 3, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Level 1"),
     &ScreenMenu::storeBrightnessLevelToCBus},
    {ITEM_BRIGHTNESS_LEVEL_2, 3, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Level 2"),
     &ScreenMenu::storeBrightnessLevelToCBus},
    {ITEM_BRIGHTNESS_LEVEL_3, 3, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Level 3"),
     &ScreenMenu::storeBrightnessLevelToCBus},
    {ITEM_BRIGHTNESS_LEVEL_4, 3, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Level 4"),
     &ScreenMenu::storeBrightnessLevelToCBus},
    {ITEM_BRIGHTNESS_LEVEL_5, 3, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Level 5"),
     &ScreenMenu::storeBrightnessLevelToCBus},
    {ITEM_BRIGHTNESS_LEVEL_6, 3, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Level 6"),
     &ScreenMenu::storeBrightnessLevelToCBus},
    {ITEM_BRIGHTNESS_LEVEL_7, 3, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Level 7"),
     &ScreenMenu::storeBrightnessLevelToCBus},
    {ITEM_TIMEOUT, 2, SHARED, QT_TRANSLATE_NOOP("Shared_translations", "Timeout"), nullptr},
    {ITEM_TIMEOUT_5_SECONDS, 3, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "5 seconds"),
     &ScreenMenu::storeTimeoutLevelToCBus},
    {ITEM_TIMEOUT_30_SECONDS, 3, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "30 seconds"),
     &ScreenMenu::storeTimeoutLevelToCBus},
    {ITEM_TIMEOUT_1_MINUTE, 3, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "1 minute"),
     &ScreenMenu::storeTimeoutLevelToCBus},
    {ITEM_TIMEOUT_2_MINUTES, 3, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "2 minutes"),
     &ScreenMenu::storeTimeoutLevelToCBus},
    {ITEM_TIMEOUT_5_MINUTES, 3, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "5 minutes"),
     &ScreenMenu::storeTimeoutLevelToCBus},
    {ITEM_AUDIO_INDICATION, 1, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Audio indication"), nullptr},
    {ITEM_AUDIO_POINTING, 2, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Pointing"), nullptr},
    {ITEM_AUDIO_POINTING_ON, 3, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "On"),
     &ScreenMenu::storeAudioPointingToCBus},
    {ITEM_AUDIO_POINTING_OFF, 3, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Off"),
     &ScreenMenu::storeAudioPointingToCBus},
    {ITEM_STEALTH_ON, NO_ROW, nullptr, nullptr, &ScreenMenu::setStealth},
    {ITEM_STEALTH_OFF, NO_ROW, nullptr, nullptr, &ScreenMenu::setStealth},
    {ITEM_POWER_UP, 1, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Power-up mode"), nullptr},
    {ITEM_POWER_UP_AUTOMATIC, 2, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Automatic"),
     &ScreenMenu::storePowerUpLevelToCBus},
    {ITEM_POWER_UP_MANUAL, 2, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Manual"),
     &ScreenMenu::storePowerUpLevelToCBus},
    {ITEM_LANGUAGE, 1, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Language"), nullptr},
    {ITEM_LANGUAGE_ENGLISH, 2, nullptr, nullptr, &ScreenMenu::storeLanguageToCBus},
    {ITEM_LANGUAGE_FRENCH, 2, nullptr, nullptr, &ScreenMenu::storeLanguageToCBus},
    {ITEM_LANGUAGE_GERMAN, 2, nullptr, nullptr, &ScreenMenu::storeLanguageToCBus},
    {ITEM_LANGUAGE_RUSSIAN, 2, nullptr, nullptr, &ScreenMenu::storeLanguageToCBus},
    {ITEM_LANGUAGE_SPANISH, 2, nullptr, nullptr, &ScreenMenu::storeLanguageToCBus},
    {ITEM_LANGUAGE_CHINESE, 2, nullptr, nullptr, &ScreenMenu::storeLanguageToCBus},
    {ITEM_LANGUAGE_JAPANESE, 2, nullptr, nullptr, &ScreenMenu::storeLanguageToCBus},

    {ITEM_PROPERTIES, 0, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Properties"), nullptr},
    {ITEM_IP_ADDRESS, 1, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "IP address"), &ScreenMenu::showProperty},
    {ITEM_HARDWARE, 1, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Hardware"), nullptr},
    {ITEM_UNIT_SERIAL_NUMBER, 2, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Unit serial number"),
     &ScreenMenu::showProperty},
    {ITEM_ANTENNA_SERIAL_NUMBER, 2, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Antenna serial number"),
     &ScreenMenu::showProperty},
    {ITEM_LAN, 2, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "LAN"), &ScreenMenu::showProperty},
    {ITEM_WLAN, 2, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "WLAN"), &ScreenMenu::showProperty},
    {ITEM_SOFTWARE, 1, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Software"), &ScreenMenu::showProperty},
    {ITEM_CONFORMITY, 1, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Conformity"), &ScreenMenu::showProperty},
    {ITEM_IMEI, 1, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "IMEI"), &ScreenMenu::showProperty},

    {ITEM_HELP_DESK, 0, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Help desk"), &ScreenMenu::showProperty},

    {ITEM_ALERTS, 0, OWN, QT_TRANSLATE_NOOP("ScreenMenu", "Alerts"), &ScreenMenu::pressAlerts},
    {ITEM_ALERT, NO_ROW, nullptr, nullptr, &ScreenMenu::showAlert}, // made by updateAlertList()
};

QString ScreenMenu::rowText(const MenuRow& row) const
{
    if (row.context)
        return QCoreApplication::translate(row.context, row.text);
    if (row.text)
        return QString::fromLatin1(row.text);
    return pStatusUpdater->getLanguageStrFromEnum(static_cast<LANG_ENUM>(row.id - ITEM_LANGUAGE_ENGLISH));
}

// A check mark moves only with the model: no row may be ticked by hand, as a mouse on a desk would do.
void ScreenMenu::buildTree()
{
    QTreeWidgetItem* branches[MAX_DEPTH + 1] = {}; // the last row of each depth
    for (const MenuRow& row : menuRows) {
        if (row.depth == NO_ROW)
            continue;
        TTreeWidgetItem* const item =
            row.depth == 0 ? checkedNew<TTreeWidgetItem>(SOURCE, __LINE__, pTreeWidget, row.id, rowText(row))
                           : checkedNew<TTreeWidgetItem>(SOURCE, __LINE__, branches[row.depth - 1], row.id,
                                                         rowText(row), 0u, 0u, 0LL);
        item->setFlags(item->flags() & ~Qt::ItemIsUserCheckable);
        branches[row.depth] = item;
    }
    pAlertsItem = pTreeWidget->getItemById(ITEM_ALERTS);
}

void ScreenMenu::translateTree()
{
    for (const MenuRow& row : menuRows) {
        if (row.context)
            pTreeWidget->getItemById(row.id)->setText(0, rowText(row));
    }
}

void ScreenMenu::handleItemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM itemId)
{
    for (const MenuRow& row : menuRows) {
        if (row.id == itemId && row.press) {
            (this->*row.press)(itemId);
            return;
        }
    }
    toggleBranch(itemId);
}

// The branch is the current row, which is the one that was pressed.
void ScreenMenu::toggleBranch(ItemId itemId)
{
    QTreeWidgetItem* const branch = pTreeWidget->currentItem();
    if (!branch || branch->childCount() == 0) {
        logDebug() << "ScreenMenu::handleItemPressed: itemId=" << itemId << ". Not implemented yet.";
    } else if (branch->isExpanded()) {
        branch->setExpanded(false);
    } else {
        branch->setExpanded(true);
        pTreeWidget->setCurrentItem(branch->child(0));
        pTreeWidget->scrollToItem(branch->child(0));
    }
}
