// The menu: construction, and what events of Qt lead to. The tree stands in screenmenu_tree.cpp, settings
// and check marks in screenmenu_settings.cpp, the alerts in screenmenu_alerts.cpp, all other presses in
// screenmenu_actions.cpp.
#include "screens/screenmenu.h"

#include "app/guiapp.h"
#include "app/window.h"
#include "common/checked.h"
#include "common/log.h"
#include "model/statusupdater.h"
#include "widgets/ttreewidget.h"

#include <QEvent>
#include <QVBoxLayout>

namespace {

const char SOURCE[] = "screenmenu";

// What the model tells, and what it leads to.
const struct {
    const char* signal;
    const char* slot;
} connections[] = {
    {SIGNAL(brightnessChanged()), SLOT(updateDisplayBrightnessMenuItems())},
    {SIGNAL(screenSaverTimeChanged()), SLOT(updateDisplayTimeoutMenuItems())},
    {SIGNAL(audioPointingChanged()), SLOT(updateAudioPointingMenuItems())},
    {SIGNAL(powerUpSettingChanged()), SLOT(updateSettingsPowerUpMenuItems())},
    {SIGNAL(eventListChanged()), SLOT(updateAlertList())},
};

} // namespace

ScreenMenu::ScreenMenu(Window* pWindow)
    : Screen(pWindow, SCREEN_MENU, nullptr), pTreeWidget(nullptr), pAlertsItem(nullptr)
{
    QVBoxLayout* const layout = checkedNew<QVBoxLayout>(SOURCE, __LINE__, this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    pTreeWidget = checkedNew<TTreeWidget>(SOURCE, __LINE__, this);
    pTreeWidget->setObjectName(QString::fromLatin1("pTreeWidget"));
    pTreeWidget->setUpList(1);
    layout->addWidget(pTreeWidget);
    setFocusProxy(pTreeWidget);

    buildTree();
    for (const auto& connection : connections)
        connect(pStatusUpdater, connection.signal, this, connection.slot);
    connect(pTreeWidget, SIGNAL(itemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM)), this,
            SLOT(handleItemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM)));
    updateDisplayBrightnessMenuItems();
    updateDisplayTimeoutMenuItems();
    updateAudioPointingMenuItems();
    updateSettingsPowerUpMenuItems();
    updateLanguageMenuItems();
    updateAlertList();
    // Scrolling to an alert has opened its branch.
    pTreeWidget->collapseAll();
    pTreeWidget->setCurrentItem(pTreeWidget->topLevelItem(0));
}

void ScreenMenu::retranslate()
{
    updateLanguageMenuItems();
    translateTree();
    updateAlertList();
}

// The base class retranslates as well, so a new language is taken over twice. That is as it must be.
void ScreenMenu::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    else if (event->type() == QEvent::FontChange && pTreeWidget)
        pTreeWidget->setFont(*GuiApp::getFont(-1, LANG_UNDEFINED));
    Screen::changeEvent(event);
}

// The base class and what Qt does while a page appears may take the focus elsewhere.
void ScreenMenu::showEvent(QShowEvent* event)
{
    pTreeWidget->setFocus(Qt::OtherFocusReason);
    Screen::showEvent(event);
    pTreeWidget->setFocus(Qt::OtherFocusReason);
}
