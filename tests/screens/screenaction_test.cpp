// The list of data bundles: which rows it has, and when the screen leaves. What the rows show of the state
// of the bundles, the keys, and what a start or stop does have tests of their own.
#include "screens/actionfixture.h"

#include "screens/pictures.h"
#include "support/death.h"
#include "support/failingnew.h"
#include "support/patience.h"

#include <QHeaderView>
#include <QLayout>

using namespace windowfixture;

namespace {

const char POTOK[] = "\320\237\320\276\321\202\320\276\320\272"; // Cyrillic

} // namespace

class ScreenActionTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(startRadioModule());
        resetAction();
        QVERIFY(setNetwork(true));
    }
    void init() { resetAction(); }

    // List
    void listHasItsColumnsAndLook();
    void rowsInTheOrderOfTheModel();
    void noBundleDefined();
    void noBundleDefinedOnAnotherScreen();
    void noBundlePassesBonding();
    void bundleComesWithTheBonding();
    void popupOfNoBundlesGoesWhenOneComes();
    void foreignNameHasItsFont();
    void rebuildClosesAllAndGoesToExit();
    void runningBundleHasItsTimeAtOnce();
    void bundleItemIsTheFirstMatch();

    // Screen
    void atCommandsTakeTheScreenAway();
    void endOfAtCommandsLeavesTheScreen();
    void slaveTakesTheScreenAway();
    void masterKeepsTheScreenAndRebuilds();
    void screenLeavesTheHistoryToo();
    void languageChangeRebuilds();
    void fontChangeReachesTheList();
    void connectionsAreUnique();
    void withoutMemoryTheProcessEnds();
};

// --- List --------------------------------------------------------------------------------------------------

void ScreenActionTest::listHasItsColumnsAndLook()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    QCOMPARE(f.tree->columnCount(), 2);
    QCOMPARE(f.tree->columnWidth(0), 150);
    QVERIFY(f.tree->columnWidth(1) >= 70); // takes the rest of the panel
    QCOMPARE(f.tree->columnWidth(0) + f.tree->columnWidth(1), 256);
    QVERIFY(f.tree->isHeaderHidden());
    QVERIFY(!f.tree->rootIsDecorated());
    QCOMPARE(f.tree->selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(f.tree->selectionBehavior(), QAbstractItemView::SelectItems);
    QCOMPARE(f.tree->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(f.tree->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(f.tree->styleSheet(),
             QString("selection-background-color: rgba(80, 80, 80, 255); background: rgba(0,0,0,255); "
                     "color: rgba(255,255,255,255)"));
    QCOMPARE(f.screen->layout()->contentsMargins(), QMargins());
    QCOMPARE(f.screen->layout()->spacing(), 0);
    QCOMPARE(f.tree->geometry(), QRect(0, 0, 256, 64));
    QCOMPARE(f.screen->focusProxy(), f.tree);
    QCOMPARE(f.screen->getId(), Screen::SCREEN_ACTION);
}

void ScreenActionTest::rowsInTheOrderOfTheModel()
{
    defineBundles({{4, "Slow", 1, 1, 32, 32}, {2, "Fast", 1, 1, 256, 256}, {0, "Standard data", 3}});
    const ActionFixture f;
    QCOMPARE(f.rows(), QStringList({"Exit", "Standard data", "Fast", "Slow"}));
    QCOMPARE(f.current(), QString("Exit"));
    const int ids[] = {1, 66, 66, 66};
    const int numbers[] = {-1, 0, 2, 4};
    for (int i = 0; i < 4; ++i) {
        const TTreeWidgetItem* const item = static_cast<TTreeWidgetItem*>(f.tree->topLevelItem(i));
        QCOMPARE(int(item->getId()), ids[i]);
        QCOMPARE(item->getDefinedBundleNumber(), numbers[i]);
        QCOMPARE(item->text(1), QString());
        QCOMPARE(item->childCount(), i == 0 ? 0 : 1);
        if (i > 0) {
            const TTreeWidgetItem* const child = static_cast<TTreeWidgetItem*>(item->child(0));
            QCOMPARE(int(child->getId()), 68);
            QCOMPARE(child->getDefinedBundleNumber(), numbers[i]);
            QCOMPARE(child->text(0), QString("Start"));
            QCOMPARE(child->getEventId(), 0U);
        }
    }
}

void ScreenActionTest::noBundleDefined()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    QVERIFY(f.isOpen());
    defineBundles({});
    QCOMPARE(f.rows(), QStringList({"Exit"}));
    QCOMPARE(f.current(), QString("Exit"));
    QCOMPARE(f.shown(), Screen::SCREEN_STATUS);
}

void ScreenActionTest::noBundleDefinedOnAnotherScreen()
{
    defineBundles(THREE);
    ActionFixture f;
    f.window.showScreen(Screen::SCREEN_BATTERY, true);
    defineBundles({});
    QCOMPARE(f.rows(), QStringList({"Exit"}));
    QCOMPARE(f.shown(), Screen::SCREEN_BATTERY);
}

// A bundle that asks more than the present bonding offers is not shown; without any left the screen stays.
void ScreenActionTest::noBundlePassesBonding()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    defineBundles({{3, "Two of them", 1, 1, 1792, 1792}});
    QCOMPARE(model()->getNumberOfDefinedBundles(), 1);
    QCOMPARE(f.rows(), QStringList({"Exit"}));
    QVERIFY(f.isOpen());
}

void ScreenActionTest::bundleComesWithTheBonding()
{
    defineBundles({{1, "One"}, {3, "Two of them", 1, 1, 1792, 1792}});
    const ActionFixture f;
    QCOMPARE(f.rows(), QStringList({"Exit", "One"}));
    terminal().setAll({{"ram.bonding.status.service.0", sim::Value::text("XBB:HDR_STREAM896K")},
                       {"ram.bonding.status.service.0.cnt", sim::Value::integer(2)}});
    passBus();
    model()->setBondingEnabled(true); // the master's part
    QCoreApplication::sendPostedEvents();
    QCOMPARE(f.rows(), QStringList({"Exit", "Two of them", "One"}));
}

void ScreenActionTest::popupOfNoBundlesGoesWhenOneComes()
{
    ActionFixture f;
    f.open();
    QCOMPARE(f.popups(), QList<unsigned int>({EV_AP_GUI_NO_BUNDLES_DEFINED}));
    defineBundles({{1, "One"}});
    QTRY_COMPARE_WITH_TIMEOUT(f.popups(), QList<unsigned int>(), PATIENCE_MS);
    QCOMPARE(f.rows(), QStringList({"Exit", "One"}));
}

void ScreenActionTest::foreignNameHasItsFont()
{
    defineBundles({{1, "Gr\303\274n"}, {2, POTOK}});
    const ActionFixture f;
    QVERIFY(f.bundle(1)->data(0, Qt::FontRole).isNull()); // Latin-1: the list's own font will do
    QCOMPARE(fontText(f.bundle(2)->data(0, Qt::FontRole).value<QFont>()),
             fontText(*GuiApp::getFont(14, LANG_RUSSIAN)));
    QVERIFY(f.bundle(2)->data(1, Qt::FontRole).isNull());
    QCOMPARE(f.bundle(2)->text(0), QString::fromUtf8(POTOK));
}

void ScreenActionTest::rebuildClosesAllAndGoesToExit()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    f.keys({Qt::Key_Down, Qt::Key_Down, Qt::Key_Right});
    QCOMPARE(f.current(), QString("Streaming/Start"));
    f.screen->populateList();
    QCOMPARE(f.current(), QString("Exit"));
    QCOMPARE(f.rows(), QStringList({"Exit", "Standard data", "Streaming", "Voice"}));
    QVERIFY(f.isOpen());
}

void ScreenActionTest::runningBundleHasItsTimeAtOnce()
{
    defineBundles(THREE);
    setSession(1, BUNDLE_STATUS_RUNNING, 360000 + 3661);
    const ActionFixture f;
    const QString time = f.bundle(1)->text(1);
    QVERIFY2(time.startsWith("101:01:"), qPrintable(time));
    QCOMPARE(f.bundle(0)->text(1), QString());
    setSession(1, BUNDLE_STATUS_INITIALIZING);
    f.screen->populateList(); // only what runs has a text from the start
    QCOMPARE(f.bundle(1)->text(1), QString());
}

void ScreenActionTest::bundleItemIsTheFirstMatch()
{
    defineBundles(THREE);
    const ActionFixture f;
    QCOMPARE(f.screen->getBundleWidgetItem(1), static_cast<TTreeWidgetItem*>(f.tree->topLevelItem(2)));
    Messages messages;
    QVERIFY(!f.screen->getBundleWidgetItem(9));
    QCOMPARE(messages.count("ScreenAction::getBundleWidgetItem(): Could not find bundle with bundleNumber=9. "
                            "About to return NULL"),
             1);
}

// --- Screen ------------------------------------------------------------------------------------------------

void ScreenActionTest::atCommandsTakeTheScreenAway()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    Messages messages;
    model()->setControlledByATCommands(true);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(f.shown(), Screen::SCREEN_STATUS);
    QCOMPARE(messages.count("ScreenAction::handleControlledByATCommandsChanged(): Remove action screen if "
                            "exist."),
             1);
}

void ScreenActionTest::endOfAtCommandsLeavesTheScreen()
{
    defineBundles(THREE);
    model()->setControlledByATCommands(true);
    ActionFixture f;
    f.open();
    Messages messages;
    model()->setControlledByATCommands(false);
    QCoreApplication::sendPostedEvents();
    QVERIFY(f.isOpen());
    QCOMPARE(messages.countOfPrefix("ScreenAction::handleControlledByATCommandsChanged()"), 0);
}

void ScreenActionTest::slaveTakesTheScreenAway()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    f.key(Qt::Key_Down);
    model()->setDhcpClientMode(true); // no bonding yet
    QCoreApplication::sendPostedEvents();
    QVERIFY(f.isOpen());
    Messages messages;
    model()->setBondingEnabled(true);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(f.shown(), Screen::SCREEN_STATUS);
    QCOMPARE(messages.count("ScreenAction::handleBondingStateChanged(): Remove action screen if exist."), 1);
    QCOMPARE(f.current(), QString("Exit")); // rebuilt, as on any change of the bonding
}

void ScreenActionTest::masterKeepsTheScreenAndRebuilds()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    f.key(Qt::Key_Down);
    Messages messages;
    model()->setBondingEnabled(true);
    QCoreApplication::sendPostedEvents();
    QVERIFY(f.isOpen());
    QCOMPARE(f.current(), QString("Exit"));
    QCOMPARE(messages.countOfPrefix("ScreenAction::handleBondingStateChanged()"), 0);
}

void ScreenActionTest::screenLeavesTheHistoryToo()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    f.window.addEvent(EV_AP_GUI_NO_EVENTS, EVENT_INFO, POPUP_CLOSE_OK, 0, nullptr, nullptr, QString(), -1);
    QCOMPARE(f.shown(), Screen::SCREEN_POPUP); // the list waits below
    model()->setControlledByATCommands(true);
    QCoreApplication::sendPostedEvents();
    f.popup->closePopup(EV_AP_GUI_NO_EVENTS, true);
    QCOMPARE(f.shown(), Screen::SCREEN_STATUS);
}

void ScreenActionTest::languageChangeRebuilds()
{
    defineBundles(THREE);
    setSession(1, BUNDLE_STATUS_RUNNING);
    ActionFixture f;
    f.open();
    {
        const Brackets german;
        QCoreApplication::sendPostedEvents();
        QCOMPARE(f.rows(),
                 QStringList({"[Exit]", "Standard data", "Streaming|" + f.bundle(1)->text(1), "Voice"}));
        QCOMPARE(f.current(), QString("[Exit]"));
        QCOMPARE(f.buttonText(1), QString("[Stop]"));
        QCOMPARE(f.buttonText(2), QString("([Start])"));
        setSession(1, BUNDLE_STATUS_INITIALIZING);
        QCOMPARE(f.bundle(1)->text(1), QString("[Connecting...]"));
    }
    QCoreApplication::sendPostedEvents();
    QCOMPARE(f.buttonText(1), QString("Stop"));
    QCOMPARE(f.tree->topLevelItem(0)->text(0), QString("Exit"));
}

void ScreenActionTest::fontChangeReachesTheList()
{
    const ActionFixture f;
    model()->setLanguage(LANG_CHINESE);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(fontText(f.tree->font()), fontText(*GuiApp::getFont(14, LANG_CHINESE)));
    model()->setLanguage(LANG_GERMAN);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(fontText(f.tree->font()), fontText(*GuiApp::getFont(14, LANG_GERMAN)));
}

void ScreenActionTest::connectionsAreUnique()
{
    const ActionFixture f;
    const struct {
        const char* signal;
        const char* slot;
    } rows[] = {
        {SIGNAL(definedBundlesCfgChanged()), SLOT(populateList())},
        {SIGNAL(acaChanged()), SLOT(updateStartStopButtons())},
        {SIGNAL(bundleStateChanged(int, BUNDLE_STATUS)), SLOT(handleBundleStateChanged(int, BUNDLE_STATUS))},
        {SIGNAL(updateElapsedTimeAndBackgroundDataSignal()), SLOT(updateElapsedTime())},
        {SIGNAL(controlledByATCommandsChanged()), SLOT(handleControlledByATCommandsChanged())},
        {SIGNAL(bondingStateChanged()), SLOT(handleBondingStateChanged())},
        {SIGNAL(bondingStateChanged()), SLOT(populateList())},
    };
    for (const auto& row : rows) {
        QVERIFY2(QObject::disconnect(model(), row.signal, f.screen, row.slot), row.slot);
        QVERIFY2(!QObject::disconnect(model(), row.signal, f.screen, row.slot), row.slot);
    }
    QVERIFY(QObject::disconnect(f.tree, SIGNAL(itemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM)), f.screen,
                                SLOT(handleItemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM))));
}

void ScreenActionTest::withoutMemoryTheProcessEnds()
{
    defineBundles(THREE);
    const ActionFixture f;
    for (int granted : {0, 1, 2}) { // the exit, a bundle, its button
        const Death death = deathOf([&f, granted] {
            grantedAllocations = granted;
            f.screen->populateList();
        });
        QVERIFY(death.status != 111);
        QVERIFY2(death.output.find("<1> gui: *** ASSERT in screenaction at ") != std::string::npos,
                 death.output.c_str());
    }
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenActionTest>(argc, argv);
}

#include "screenaction_test.moc"
