// The list of data bundles; see the header.
#include "screens/screenaction.h"

#include "app/guiapp.h"
#include "app/window.h"
#include "common/checked.h"
#include "common/log.h"
#include "model/event_ids.h"
#include "model/statusupdater.h"
#include "widgets/ttreewidget.h"

#include <QColor>
#include <QCoreApplication>
#include <QEvent>
#include <QHash>
#include <QVBoxLayout>

namespace {

const char SOURCE[] = "screenaction";
const int NAME_WIDTH = 150;
const int TIME_WIDTH = 70; // at least: the last column takes what is left of the panel
const int NO_BUNDLE = -1;  // number of a row without a bundle
const int TRAFFIC_CLASS_BACKGROUND = 3;
const int STARTING_POPUP_MS = 2000;
const int FONT_SIZE = 14;
const QRgb ENABLED_COLOUR = qRgba(255, 255, 255, 255);
const QRgb REFUSED_COLOUR = qRgba(100, 100, 100, 255);

// What the model tells, and what it leads to, in this order.
const struct {
    const char* signal;
    const char* slot;
} connections[] = {
    {SIGNAL(definedBundlesCfgChanged()), SLOT(populateList())},
    {SIGNAL(acaChanged()), SLOT(updateStartStopButtons())},
    {SIGNAL(bundleStateChanged(int, BUNDLE_STATUS)), SLOT(handleBundleStateChanged(int, BUNDLE_STATUS))},
    {SIGNAL(updateElapsedTimeAndBackgroundDataSignal()), SLOT(updateElapsedTime())},
    {SIGNAL(controlledByATCommandsChanged()), SLOT(handleControlledByATCommandsChanged())},
    {SIGNAL(bondingStateChanged()), SLOT(handleBondingStateChanged())},
    {SIGNAL(bondingStateChanged()), SLOT(populateList())},
};

// The translated texts are compared as well as shown, so each has one place.
QString exitText()
{
    return QCoreApplication::translate("Shared_translations", "Exit");
}
QString startText()
{
    return QCoreApplication::translate("Shared_translations", "Start");
}
QString stopText()
{
    return QCoreApplication::translate("Shared_translations", "Stop");
}
QString connectingText()
{
    return QCoreApplication::translate("Shared_translations", "Connecting...");
}

// For walks over all rows: to ask the model for each would take time with the square of their number. Of two
// bundles with one number it is the first.
QHash<int, bundle_t> byNumber(const QList<bundle_t>& bundles)
{
    QHash<int, bundle_t> found;
    for (const bundle_t& bundle : bundles) {
        if (!found.contains(bundle.bundleNumber))
            found.insert(bundle.bundleNumber, bundle);
    }
    return found;
}

bool isActive(const bundle_t& bundle)
{
    return bundle.status == BUNDLE_STATUS_INITIALIZING || bundle.status == BUNDLE_STATUS_RUNNING;
}

} // namespace

// --- Construction -----------------------------------------------------------------------------------------

ScreenAction::ScreenAction(Window* pWindow)
    : Screen(pWindow, SCREEN_ACTION, nullptr), pLayout(nullptr), pTreeWidget(nullptr), pExitItem(nullptr)
{
    createTree();
    populateList();
    connectModel();
}

void ScreenAction::createTree()
{
    pLayout = checkedNew<QVBoxLayout>(SOURCE, __LINE__, this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    pTreeWidget = checkedNew<TTreeWidget>(SOURCE, __LINE__, this);
    pTreeWidget->setObjectName(QString::fromLatin1("pTreeWidget"));
    pTreeWidget->setUpList(2);
    pTreeWidget->setColumnWidth(0, NAME_WIDTH);
    pTreeWidget->setColumnWidth(1, TIME_WIDTH);
    pLayout->addWidget(pTreeWidget);
    setFocusProxy(pTreeWidget);
}

void ScreenAction::connectModel()
{
    connect(pTreeWidget, SIGNAL(itemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM)), this,
            SLOT(handleItemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM)), Qt::UniqueConnection);
    for (const auto& connection : connections)
        connect(pStatusUpdater, connection.signal, this, connection.slot, Qt::UniqueConnection);
}

// --- Rows -------------------------------------------------------------------------------------------------

void ScreenAction::populateList()
{
    clearList();
    if (pStatusUpdater->getNumberOfDefinedBundles() == 0) {
        createExitItem();
        m_pMainWindow->hideAndRemoveScreenFromHistory(SCREEN_ACTION); // nothing to show here
    } else {
        m_pMainWindow->removePopupIfExist(EV_AP_GUI_NO_BUNDLES_DEFINED);
        createExitItem();
        const QList<bundle_t> bundles = pStatusUpdater->getDefinedBundles();
        for (const bundle_t& bundle : bundles) {
            // What asks more than the present bonding offers is not shown.
            if (pStatusUpdater->bondingDemandsReached(bundle))
                addBundleItem(bundle);
        }
    }
    if (!pTreeWidget->topLevelItem(0)) {
        logDebug() << "ScreenAction::populateList(): ERROR!!! Unexpected situation where "
                      "pTreeWidget->itemAt(0,0)==NULL. There should be the EXIT item in that position!";
        return;
    }
    pTreeWidget->setCurrentItem(pTreeWidget->topLevelItem(0));
    pTreeWidget->repaint();
    updateStartStopButtons();
}

void ScreenAction::clearList()
{
    for (int i = 0; i < pTreeWidget->topLevelItemCount(); ++i) {
        QTreeWidgetItem* const pItem = pTreeWidget->topLevelItem(i);
        while (pItem->childCount() > 0)
            delete pItem->takeChild(pItem->childCount() - 1);
    }
    pExitItem = nullptr;
    while (pTreeWidget->topLevelItemCount() > 0)
        delete pTreeWidget->takeTopLevelItem(pTreeWidget->topLevelItemCount() - 1);
}

void ScreenAction::createExitItem()
{
    pExitItem = checkedNew<TTreeWidgetItem>(SOURCE, __LINE__, static_cast<QTreeWidget*>(pTreeWidget),
                                            ITEM_ACTION_EXIT, exitText());
}

// The row below gets its text from updateStartStopButtons(), and the bundle's number from its parent as
// it is made.
void ScreenAction::addBundleItem(const bundle_t& bundle)
{
    TTreeWidgetItem* const pItem = checkedNew<TTreeWidgetItem>(
        SOURCE, __LINE__, static_cast<QTreeWidget*>(pTreeWidget), ITEM_ACTION_BUNDLE, bundle.name);
    if (pStatusUpdater->unicodeNeeded(bundle.name))
        pItem->setFont(0, *GuiApp::getFont(FONT_SIZE, LANG_RUSSIAN));
    if (bundle.status == BUNDLE_STATUS_RUNNING)
        pItem->setTextSecondColumn(pStatusUpdater->getElapsedTimeStr(bundle));
    pItem->setDefinedBundleNumber(bundle.bundleNumber);
    checkedNew<TTreeWidgetItem>(SOURCE, __LINE__, static_cast<QTreeWidgetItem*>(pItem),
                                ITEM_ACTION_START_STOP, QString(), 0U, 0U, 0LL);
}

TTreeWidgetItem* ScreenAction::topLevelItem(int index) const
{
    return static_cast<TTreeWidgetItem*>(pTreeWidget->topLevelItem(index));
}

TTreeWidgetItem* ScreenAction::getBundleWidgetItem(int bundleNumber) const
{
    for (int i = 0; i < pTreeWidget->topLevelItemCount(); ++i) {
        if (topLevelItem(i)->getDefinedBundleNumber() == bundleNumber)
            return topLevelItem(i);
    }
    logDebug() << "ScreenAction::getBundleWidgetItem(): Could not find bundle with bundleNumber="
               << bundleNumber << ". About to return NULL";
    return nullptr;
}

// --- State of the bundles ---------------------------------------------------------------------------------

void ScreenAction::updateStartStopButtons()
{
    const QHash<int, bundle_t> bundles = byNumber(pStatusUpdater->getDefinedBundles());
    for (int i = 0; i < pTreeWidget->topLevelItemCount(); ++i) {
        TTreeWidgetItem* const pBundleItem = topLevelItem(i);
        const int bundleNumber = pBundleItem->getDefinedBundleNumber();
        if (bundleNumber == NO_BUNDLE)
            continue;
        if (!bundles.contains(bundleNumber)) {
            logDebug() << "ScreenAction::updateStartStopButtons(): ERROR!!! Could not get bundle data for "
                          "bundleNumber="
                       << bundleNumber;
            continue;
        }
        for (int child = 0; child < pBundleItem->childCount(); ++child) {
            TTreeWidgetItem* const pItem = static_cast<TTreeWidgetItem*>(pBundleItem->child(child));
            if (pItem->getId() == ITEM_ACTION_START_STOP)
                updateStartStopButton(pItem, bundles.value(bundleNumber));
        }
    }
}

// Of user group 0 one bundle can be active at a time: while it is, no other can be started.
void ScreenAction::updateStartStopButton(TTreeWidgetItem* pItem, const bundle_t& bundle)
{
    switch (bundle.status) {
    case BUNDLE_STATUS_IDLE:
        pItem->setText(0, startText());
        setRefused(pItem, pStatusUpdater->wanUsergroupZeroActive());
        break;
    case BUNDLE_STATUS_INITIALIZING:
    case BUNDLE_STATUS_RUNNING:
        pItem->setText(0, stopText());
        setRefused(pItem, isStopRefused(bundle));
        break;
    default:
        logDebug()
            << "ScreenAction::updateStartStopButtons(): ERROR!!! Unsupported bundle status. bundle.status="
            << bundle.status;
    }
}

// The terminal keeps the one background connection up by itself; a stop would not last.
bool ScreenAction::isStopRefused(const bundle_t& bundle) const
{
    const bool refused = bundle.wanUserGroup == 0 && bundle.connections.size() == 1 &&
                         bundle.connections.first().traffic_class == TRAFFIC_CLASS_BACKGROUND &&
                         pStatusUpdater->getACA();
    if (refused)
        logDebug() << "ScreenAction::updateStartStopButtons(): ACA detected to be active";
    return refused;
}

// A refused row is grey and the cursor cannot stand on it: it goes to the bundle's own row.
void ScreenAction::setRefused(TTreeWidgetItem* pItem, bool refused)
{
    pItem->setForeground(0, QBrush(QColor::fromRgba(refused ? REFUSED_COLOUR : ENABLED_COLOUR)));
    const Qt::ItemFlags flags =
        refused ? pItem->flags() & ~Qt::ItemIsEnabled : pItem->flags() | Qt::ItemIsEnabled;
    if (flags != pItem->flags()) // the tree looks for the row even where nothing changes
        pItem->setFlags(flags);
    if (refused && pTreeWidget->currentItem() == pItem) {
        pTreeWidget->setCurrentItem(pItem->parent());
        pTreeWidget->scrollToItem(pItem->parent());
    }
}

void ScreenAction::handleBundleStateChanged(int bundleNumber, BUNDLE_STATUS state)
{
    const bool shown = bundleNumber != NO_BUNDLE && !pStatusUpdater->getControlledByATCommands() &&
                       pStatusUpdater->getBondingState() != BONDING_STATE_SLAVE;
    TTreeWidgetItem* const pItem = shown ? getBundleWidgetItem(bundleNumber) : nullptr;
    if (pItem) {
        switch (state) {
        case BUNDLE_STATUS_INITIALIZING:
            pItem->setTextSecondColumn(connectingText());
            break;
        case BUNDLE_STATUS_RUNNING: // the next updateElapsedTime() writes the time
            break;
        case BUNDLE_STATUS_IDLE:
            pItem->setTextSecondColumn(QString());
            break;
        default:
            logDebug() << "ScreenAction::handleBundleStateChanged(): ERROR!!! Not expected to get into the "
                          "default inside the switch !!!";
        }
    }
    updateStartStopButtons();
}

void ScreenAction::updateElapsedTime()
{
    const QHash<int, bundle_t> bundles = byNumber(pStatusUpdater->getDefinedBundles());
    for (int i = 0; i < pTreeWidget->topLevelItemCount(); ++i) {
        TTreeWidgetItem* const pItem = topLevelItem(i);
        const QHash<int, bundle_t>::const_iterator bundle =
            bundles.constFind(pItem->getDefinedBundleNumber());
        if (pItem->getDefinedBundleNumber() != NO_BUNDLE && bundle != bundles.constEnd() &&
            bundle->status == BUNDLE_STATUS_RUNNING)
            pItem->setTextSecondColumn(pStatusUpdater->getElapsedTimeStr(*bundle));
    }
}

void ScreenAction::handleControlledByATCommandsChanged()
{
    if (!pStatusUpdater->getControlledByATCommands())
        return;
    logDebug() << "ScreenAction::handleControlledByATCommandsChanged(): Remove action screen if exist.";
    m_pMainWindow->hideAndRemoveScreenFromHistory(SCREEN_ACTION);
}

void ScreenAction::handleBondingStateChanged()
{
    if (pStatusUpdater->getBondingState() != BONDING_STATE_SLAVE)
        return;
    logDebug() << "ScreenAction::handleBondingStateChanged(): Remove action screen if exist.";
    m_pMainWindow->hideAndRemoveScreenFromHistory(SCREEN_ACTION);
}

// --- Cursor -----------------------------------------------------------------------------------------------

void ScreenAction::collapseAllBundles()
{
    pTreeWidget->collapseAll();
}

void ScreenAction::setFocusOnFirstActiveBundle()
{
    for (int i = 0; i < pTreeWidget->topLevelItemCount(); ++i) {
        TTreeWidgetItem* const pItem = topLevelItem(i);
        const int bundleNumber = pItem->getDefinedBundleNumber();
        if (bundleNumber == NO_BUNDLE)
            continue;
        bundle_t bundle;
        if (!pStatusUpdater->getBundleByBundleNumber(bundleNumber, &bundle)) {
            logDebug() << "ScreenAction::setFocusOnFirstActiveBundle(): ERROR!!!! Could not get bundle with "
                          "bundleNumber="
                       << bundleNumber;
            continue;
        }
        if (isActive(bundle) && pItem->childCount() > 0) {
            pTreeWidget->expandItem(pItem);
            goToFirstChild(pItem);
            pTreeWidget->scrollToItem(pItem, QAbstractItemView::PositionAtTop);
            return;
        }
    }
}

// Where the child is refused, the cursor stays.
void ScreenAction::goToFirstChild(QTreeWidgetItem* pParent)
{
    if (!pParent->child(0)->isDisabled())
        pTreeWidget->setCurrentItem(pParent->child(0));
}

// Its bundle is the only open one, at the upper edge, with the cursor on the row.
void ScreenAction::showOnly(TTreeWidgetItem* pItem)
{
    collapseAllBundles();
    pTreeWidget->expandItem(pItem->parent());
    pTreeWidget->setCurrentItem(pItem);
    pTreeWidget->scrollToItem(pItem->parent(), QAbstractItemView::PositionAtTop);
}

// --- OK ---------------------------------------------------------------------------------------------------

void ScreenAction::handleItemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM itemId)
{
    if (itemId == ITEM_ACTION_EXIT)
        pressExit();
    else if (itemId == ITEM_ACTION_START_STOP)
        pressStartStop();
    else
        toggleCurrentItem(itemId);
}

// The active bundle stands ready for the next visit.
void ScreenAction::pressExit()
{
    collapseAllBundles();
    if (pStatusUpdater->predefinedBundleActive())
        setFocusOnFirstActiveBundle();
    m_pMainWindow->showPreviousScreen();
}

// The text on the row decides, not the state of the bundle: what the user has read is what is done.
void ScreenAction::pressStartStop()
{
    TTreeWidgetItem* const pItem = static_cast<TTreeWidgetItem*>(pTreeWidget->currentItem());
    if (!pItem)
        return;
    if (pItem->text(0) == startText())
        startBundle(pItem);
    else if (pItem->text(0) == stopText())
        stopBundle(pItem);
    else
        logDebug() << "ScreenAction::handleItemPressed(): unhandled item pressed. pItem->text(0)="
                   << pItem->text(0);
}

// Tells the user by a popup why not.
bool ScreenAction::isStartPossible()
{
    unsigned int obstacle = 0;
    const int statusTextId = pStatusUpdater->getCurrentStatusTextId();
    if (statusTextId != STATUS_TEXT_READY && statusTextId != STATUS_TEXT_ACTIVE_BUNDLES)
        obstacle = EV_AP_GUI_NOT_REGISTERED_TO_NETWORK;
    else if (pStatusUpdater->getDhcpClientMode())
        obstacle = EV_AP_GUI_DHCP_CLIENT_WITHOUT_BONDING;
    if (obstacle != 0)
        m_pMainWindow->addEvent(obstacle, EVENT_INFO, POPUP_CLOSE_OK, 0, nullptr, nullptr, QString(), -1);
    return obstacle == 0;
}

// Afterwards the user is back on the screen before, with the popup over it.
void ScreenAction::startBundle(TTreeWidgetItem* pItem)
{
    if (!isStartPossible())
        return;
    logDebug() << "ScreenAction::handleItemPressed(): About to start bundle";
    pStatusUpdater->startBundle(pItem->getDefinedBundleNumber());
    showOnly(pItem);
    m_pMainWindow->addEvent(EV_AP_GUI_STARTING_BUNDLE_NAME, EVENT_INFO, POPUP_CLOSE_AUTO, STARTING_POPUP_MS,
                            nullptr, nullptr, pItem->parent()->text(0), -1);
    m_pMainWindow->hideAndRemoveScreenFromHistory(SCREEN_ACTION);
}

void ScreenAction::stopBundle(TTreeWidgetItem* pItem)
{
    pStatusUpdater->stopBundle(pItem->getDefinedBundleNumber());
    showOnly(pItem);
    m_pMainWindow->showPreviousScreen();
}

void ScreenAction::toggleCurrentItem(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM itemId)
{
    QTreeWidgetItem* const pItem = pTreeWidget->currentItem();
    if (!pItem || pItem->childCount() == 0) {
        logDebug() << "ScreenAction::handleItemPressed: itemId=" << itemId << ". Not implemented yet.";
    } else if (pItem->isExpanded()) {
        pTreeWidget->collapseItem(pItem);
    } else {
        pTreeWidget->expandItem(pItem);
        goToFirstChild(pItem);
        pTreeWidget->scrollToItem(pItem->child(0), QAbstractItemView::EnsureVisible);
    }
}

// --- Events of Qt -----------------------------------------------------------------------------------------

void ScreenAction::retranslate()
{
    populateList();
}

// The base class translates a second time, which does no harm.
void ScreenAction::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    else if (event->type() == QEvent::FontChange)
        pTreeWidget->setFont(*GuiApp::getFont(-1, LANG_UNDEFINED));
    Screen::changeEvent(event);
}
