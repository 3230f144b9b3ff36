// What a press leads to that is neither a setting nor an alert: leaving, pointing, and the popups that show
// a property of the terminal.
#include "screens/screenmenu.h"

#include "app/window.h"
#include "model/event_ids.h"
#include "model/pointing_command.h"
#include "model/statusupdater.h"
#include "widgets/ttreewidget.h"

// A row and where its text comes from: one getter of the model, or one of this screen.
struct ScreenMenu::Property {
    ItemId id;
    QString (StatusUpdater::*ofModel)() const;
    QString (ScreenMenu::*ofScreen)() const;
};

const ScreenMenu::Property ScreenMenu::properties[] = {
    {ITEM_IP_ADDRESS, &StatusUpdater::getIpAddrStr, nullptr},
    {ITEM_UNIT_SERIAL_NUMBER, &StatusUpdater::getUnitSerialNumber, nullptr},
    {ITEM_ANTENNA_SERIAL_NUMBER, &StatusUpdater::getHpaSerialNumber, nullptr},
    {ITEM_LAN, &StatusUpdater::getLanMacStr, nullptr},
    {ITEM_WLAN, nullptr, &ScreenMenu::wlanText},
    {ITEM_SOFTWARE, &StatusUpdater::getSoftwareVersion, nullptr},
    {ITEM_CONFORMITY, nullptr, &ScreenMenu::conformityText},
    {ITEM_IMEI, &StatusUpdater::getImeiStr, nullptr},
    {ITEM_HELP_DESK, &StatusUpdater::getHelpDeskStr, nullptr},
};

void ScreenMenu::leave(ItemId)
{
    m_pMainWindow->showPreviousScreen();
}

void ScreenMenu::goBackToEnglish(ItemId)
{
    storeLanguageToCBus(ITEM_LANGUAGE_ENGLISH);
    pTreeWidget->setCurrentItem(pTreeWidget->getItemById(ITEM_ACTION_EXIT));
    m_pMainWindow->showPreviousScreen();
}

// Pointing takes the radio for itself, so a running bundle goes first.
void ScreenMenu::pointNow(ItemId)
{
    pTreeWidget->setCurrentItem(pTreeWidget->getItemById(ITEM_ACTION_EXIT));
    m_pMainWindow->showPreviousScreen();
    if (pStatusUpdater->predefinedBundleActive())
        pStatusUpdater->stopBundle(-1);
    send_pointing_msg("start");
}

void ScreenMenu::showProperty(ItemId itemId)
{
    for (const Property& property : properties) {
        if (property.id == itemId)
            showText(property.ofModel ? (pStatusUpdater->*property.ofModel)() : (this->*property.ofScreen)());
    }
}

void ScreenMenu::showText(const QString& text)
{
    m_pMainWindow->addEvent(EV_AP_GUI_CUSTOM_TEXT, EVENT_INFO, POPUP_CLOSE_OK, 0, nullptr, nullptr, text, -1);
}

QString ScreenMenu::wlanText() const
{
    return pStatusUpdater->getWifiMacStr() + QChar::fromLatin1('\n') + pStatusUpdater->getWifiSsidUserStr();
}

QString ScreenMenu::conformityText() const
{
    return tr("CONFORMITY_TEXT");
}
