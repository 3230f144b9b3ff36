// The menu: one tree with the user's settings, the terminal's properties and the list of its alerts.
//
// It stores nothing. A press on a setting writes one key of the database; the change comes back through
// the model, whoever made it, and only then the check mark moves. The tree is built once from a table,
// screenmenu_tree.cpp; only the rows below Alerts come and go. Up, down, left and right are the list's
// own (TTreeWidget), OK ends in handleItemPressed().
// GUI thread only; the model's signals from the bus thread arrive queued. A press may write to the bus.
#ifndef LUMENPANEL_SCREENS_SCREENMENU_H
#define LUMENPANEL_SCREENS_SCREENMENU_H

#include "screens/screen.h"
#include "widgets/ttreewidgetitem.h"

#include <QList>
#include <QString>

class QTreeWidgetItem;
class TTreeWidget;

class ScreenMenu : public Screen {
    Q_OBJECT

public:
    // Builds the tree, closed and with its first row current, fills it from the model and connects it.
    // pWindow is not owned and must outlive the screen.
    explicit ScreenMenu(Window* pWindow);

    // Puts the cursor on the newest alert and brings the alerts into view; without any, on their branch.
    void scrollToAlertMenuAndExpand();

    void retranslate() override;

public slots:
    // OK was pressed on the current row, which has this id.
    void handleItemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM itemId);

    // Each fetches what it shows from the model.
    void updateDisplayBrightnessMenuItems();
    void updateDisplayTimeoutMenuItems();
    void updateAudioPointingMenuItems();
    void updateSettingsPowerUpMenuItems();
    void updateAlertList();

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    friend struct ScreenMenuTestAccess;
    typedef TTreeWidgetItem::WIDGET_ITEM_ID_ENUM ItemId;

    // screenmenu_tree.cpp
    struct MenuRow;
    static const MenuRow menuRows[];
    void buildTree();
    void translateTree();
    QString rowText(const MenuRow& row) const;
    void toggleBranch(ItemId itemId);

    // screenmenu_settings.cpp
    void storeBrightnessLevelToCBus(ItemId itemId);
    void storeTimeoutLevelToCBus(ItemId itemId);
    void storeAudioPointingToCBus(ItemId itemId);
    void storePowerUpLevelToCBus(ItemId itemId);
    void storeLanguageToCBus(ItemId itemId);
    void setStealth(ItemId itemId);
    void setBrightnessLevelCheckmark(ItemId itemId);
    void setTimeoutLevelCheckmark(ItemId itemId);
    void setAudioPointingCheckmark(ItemId itemId);
    void setPowerUp(ItemId itemId);
    void updateLanguageMenuItems();
    void updateLanguageMenuItemsFromEnum(ItemId itemId);
    void showBackToEnglish(bool shown);

    // screenmenu_alerts.cpp
    struct AlertIdentity;
    static AlertIdentity identityOf(const QTreeWidgetItem* item);
    static void deleteAlertItems(QList<QTreeWidgetItem*> items);
    static void deleteAlertSubItems(QList<QTreeWidgetItem*> items);
    QTreeWidgetItem* addAlertItems(const AlertIdentity& wanted);
    void pressAlerts(ItemId itemId);
    void showAlert(ItemId itemId);

    // screenmenu_actions.cpp
    struct Property;
    static const Property properties[];
    void leave(ItemId itemId);
    void goBackToEnglish(ItemId itemId);
    void pointNow(ItemId itemId);
    void showProperty(ItemId itemId);
    void showText(const QString& text);
    QString wlanText() const;
    QString conformityText() const;

    TTreeWidget* pTreeWidget;     // owned
    QTreeWidgetItem* pAlertsItem; // the branch of the alerts; owned by the tree
};

#endif
