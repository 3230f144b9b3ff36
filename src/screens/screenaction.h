// The list of data bundles, the one place of the panel where connections are started and stopped: the
// exit, then one row for each bundle with its name and its elapsed time, and below it "Start" or "Stop".
//
// It keeps no copy of the bundles: what it shows is fetched from the model each time, and nothing here
// waits for the outcome of a start or stop. The keys are the list's (widgets/ttreewidget.h).
// GUI thread only; the model's signals from the bus thread arrive queued. A failed allocation ends the
// process.
#ifndef LUMENPANEL_SCREENS_SCREENACTION_H
#define LUMENPANEL_SCREENS_SCREENACTION_H

#include "model/bundle.h"
#include "screens/screen.h"
#include "widgets/ttreewidgetitem.h"

class QTreeWidgetItem;
class QVBoxLayout;
class TTreeWidget;

class ScreenAction : public Screen {
    Q_OBJECT

public:
    // Builds the list, fills it from the model and connects it. pWindow is not owned and must outlive the
    // screen.
    explicit ScreenAction(Window* pWindow);

    void collapseAllBundles();
    // Opens the first bundle that runs or is being set up, and goes to its "Stop" unless that is refused;
    // without such a bundle nothing changes.
    void setFocusOnFirstActiveBundle();
    // The row of a bundle, null with a log line if it isn't shown. Owned by the list, and gone with the
    // next populateList().
    TTreeWidgetItem* getBundleWidgetItem(int bundleNumber) const;

    void retranslate() override;

public slots:
    // Builds all rows anew: the bundles are closed and the cursor stands on the exit. Without any bundle
    // the screen leaves.
    void populateList();
    // Sets the rows "Start" and "Stop" by the state of their bundles, and greys what is refused.
    void updateStartStopButtons();
    void handleBundleStateChanged(int bundleNumber, BUNDLE_STATUS state);
    void updateElapsedTime();
    // While AT commands or another terminal have the connections in hand, the screen leaves.
    void handleControlledByATCommandsChanged();
    void handleBondingStateChanged();
    // OK on the current row, which has this id. A start blocks for 200 ms, since the model does.
    void handleItemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM itemId);

protected:
    void changeEvent(QEvent* event) override;

private:
    void createTree();
    void connectModel();

    void clearList();
    void createExitItem();
    void addBundleItem(const bundle_t& bundle);
    TTreeWidgetItem* topLevelItem(int index) const;

    void updateStartStopButton(TTreeWidgetItem* pItem, const bundle_t& bundle);
    bool isStopRefused(const bundle_t& bundle) const;
    void setRefused(TTreeWidgetItem* pItem, bool refused);

    void pressExit();
    void pressStartStop();
    bool isStartPossible();
    void startBundle(TTreeWidgetItem* pItem);
    void stopBundle(TTreeWidgetItem* pItem);
    void showOnly(TTreeWidgetItem* pItem);
    void toggleCurrentItem(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM itemId);
    void goToFirstChild(QTreeWidgetItem* pParent);

    QVBoxLayout* pLayout;       // owned
    TTreeWidget* pTreeWidget;   // owned
    TTreeWidgetItem* pExitItem; // the first row; owned by the list
};

#endif
