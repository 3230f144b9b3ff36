// The alerts of the menu: the one branch whose rows come and go, newest first.
#include "screens/screenmenu.h"

#include "app/window.h"
#include "common/checked.h"
#include "common/log.h"
#include "model/event.h"
#include "model/event_ids.h"
#include "model/statusupdater.h"
#include "widgets/ttreewidget.h"

namespace {

const char SOURCE[] = "screenmenu";

} // namespace

// Which alert a row stands for. Rows are made anew at each change, so a row is known by this alone.
struct ScreenMenu::AlertIdentity {
    bool isAlert;
    unsigned int eventId;
    unsigned int eventSubId;
    long long time;
};

// Of any row of the tree, or none.
ScreenMenu::AlertIdentity ScreenMenu::identityOf(const QTreeWidgetItem* item)
{
    const TTreeWidgetItem* const row = static_cast<const TTreeWidgetItem*>(item);
    if (!row || row->getId() != ITEM_ALERT)
        return AlertIdentity{false, 0, 0, 0};
    return AlertIdentity{true, row->getEventId(), row->getEventSubId(), row->getAlertTimeEpoch()};
}

void ScreenMenu::deleteAlertItems(QList<QTreeWidgetItem*> items)
{
    while (!items.isEmpty()) {
        QTreeWidgetItem* const pLastItem = items.takeLast();
        if (!pLastItem) {
            logDebug() << "ScreenMenu::updateAlertList(): ERROR !!! Can not delete pLastItem as it is NULL";
            continue;
        }
        deleteAlertSubItems(pLastItem->takeChildren());
        delete pLastItem;
    }
}

// An alert has no rows below it today; if it ever has, they go first.
void ScreenMenu::deleteAlertSubItems(QList<QTreeWidgetItem*> items)
{
    while (!items.isEmpty()) {
        QTreeWidgetItem* const pLastSubItem = items.takeLast();
        if (!pLastSubItem)
            logDebug()
                << "ScreenMenu::updateAlertList(): ERROR !!! Can not delete pLastSubItem as it is NULL";
        delete pLastSubItem;
    }
}

// Makes a row for each event and returns the one that is to have the cursor: while the user looks at the
// menu the row of the alert that he stands on, otherwise the last of all. Null if there is none.
QTreeWidgetItem* ScreenMenu::addAlertItems(const AlertIdentity& wanted)
{
    const bool userLooks = m_pMainWindow->isSetToVisibleScreen(this);
    QTreeWidgetItem* cursor = nullptr;
    const QList<fmmi_evt_t> events = pStatusUpdater->getEvents();
    for (int i = 0; i < events.size(); ++i) {
        const fmmi_evt_t& event = events.at(i);
        TTreeWidgetItem* const item = checkedNew<TTreeWidgetItem>(
            SOURCE, __LINE__, pAlertsItem, ITEM_ALERT, pStatusUpdater->getEventText(event.identifier),
            event.sub_id, event.identifier, static_cast<long long>(event.time));
        const bool same = wanted.isAlert && event.identifier == wanted.eventId &&
                          event.sub_id == wanted.eventSubId && event.time == wanted.time;
        if (!userLooks || (same && !cursor))
            cursor = item;
    }
    return cursor;
}

// The view moves the cursor to the branch when the row under it goes; whether it was lost is known only
// from before.
void ScreenMenu::updateAlertList()
{
    const AlertIdentity current = identityOf(pTreeWidget->currentItem());
    deleteAlertItems(pAlertsItem->takeChildren());
    QTreeWidgetItem* const cursor = addAlertItems(current);
    if (cursor)
        pTreeWidget->setCurrentItem(cursor);
    if (pTreeWidget->currentItem() && (cursor || !current.isAlert)) {
        pTreeWidget->scrollToItem(pTreeWidget->currentItem());
    } else {
        logDebug() << "ScreenMenu::updateAlertList(): No current items in the alert list. Now collapsing "
                      "Alerts.";
        pAlertsItem->setExpanded(false);
        pTreeWidget->setCurrentItem(pAlertsItem);
    }
    pTreeWidget->viewport()->update();
}

// One alert is shown below the branch that it belongs to, with whatever is above; more fill the panel.
void ScreenMenu::scrollToAlertMenuAndExpand()
{
    pTreeWidget->setCurrentItem(pAlertsItem);
    if (pAlertsItem->childCount() == 0)
        return;
    QTreeWidgetItem* const newest = pAlertsItem->child(0);
    pAlertsItem->setExpanded(true);
    pTreeWidget->setCurrentItem(newest);
    if (pAlertsItem->childCount() == 1)
        pTreeWidget->scrollToItem(newest, QAbstractItemView::PositionAtBottom);
    else
        pTreeWidget->scrollToItem(pAlertsItem, QAbstractItemView::PositionAtTop);
}

// Warnings may be known before their rows are there; the toggle then finds no children and says so.
void ScreenMenu::pressAlerts(ItemId itemId)
{
    if (pStatusUpdater->getWarningsPresent())
        toggleBranch(itemId);
    else
        m_pMainWindow->addEvent(EV_AP_GUI_NO_EVENTS, EVENT_INFO, POPUP_CLOSE_OK, 0, nullptr, nullptr,
                                QString(), -1);
}

// The window puts the alert's own words in front. The popup is as old as the alert: an old one may be
// closed at once.
void ScreenMenu::showAlert(ItemId)
{
    const TTreeWidgetItem* const alert = static_cast<TTreeWidgetItem*>(pTreeWidget->currentItem());
    if (!alert) {
        logDebug() << "ScreenMenu::handleItemPressed: ERROR!!! No current alert.";
        return;
    }
    QString text = QString::fromLatin1("\n");
    const QString time = alert->getEventTimeStr();
    if (!time.isEmpty())
        text += time + QChar::fromLatin1(' ');
    text += QString::fromLatin1("ID: ") + hexText(alert->getEventId()) + QChar::fromLatin1('-') +
            hexText(alert->getEventSubId());
    m_pMainWindow->addEvent(alert->getEventId(), EVENT_INFO, POPUP_CLOSE_OK, 0, nullptr, nullptr, text,
                            alert->getAlertTimeEpoch());
}
