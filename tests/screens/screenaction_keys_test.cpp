// The list of data bundles under the keys: opening and closing, the exit, start and stop with all that they
// bring, and where the cursor stands on the next visit.
#include "screens/actionfixture.h"

#include "support/patience.h"

#include <QElapsedTimer>

using namespace windowfixture;

namespace {

const char START_NUMBER[] = "ram.local_gui_display.start_bundle_number";
const char ACTIVATED[] = "ram.net.user_groups.0.activated";

// What clients wrote to a key, as text.
QStringList written(const char* key)
{
    QStringList list;
    for (const sim::Value& value : terminal().writesOf(key)) {
        list.append(QString::number(value.toInt()));
    }
    return list;
}

} // namespace

class ScreenActionKeysTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(startRadioModule()); }
    void init()
    {
        resetAction();
        QVERIFY(setNetwork(true));
    }

    // Cursor
    void okOpensABundleAndClosesIt();
    void okOnABundleWithARefusedChildLeavesTheCursor();
    void refusedChildCannotBeReached_data();
    void refusedChildCannotBeReached();
    void leftBacksOut();
    void longOkDoesNothing();
    void otherRowsAreNotImplemented();
    void focusOnTheFirstActiveBundle();
    void focusOnARefusedStopLeavesTheCursor();
    void focusWithoutAnActiveBundleChangesNothing();
    void focusPassesALostBundle();
    void collapseAll();

    // Exit
    void exitClosesAllAndLeaves();
    void exitLeavesTheActiveBundleReady();
    void visitShowsTheActiveBundle();

    // Start and stop
    void startOfABundle();
    void startOfTheSameBundleAgain();
    void startWhileAnotherGroupIsActive();
    void startWithoutANetwork();
    void startAsDhcpClient();
    void startWithoutANetworkAsDhcpClient();
    void startOfABundleThatIsGone();
    void stopOfABundle();
    void stopWhileItIsBeingSetUp();
    void translatedStartAndStop();
    void textThatIsNeither();
};

// --- Cursor ------------------------------------------------------------------------------------------------

void ScreenActionKeysTest::okOpensABundleAndClosesIt()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    f.keys({Qt::Key_Down, Qt::Key_Down, Qt::Key_Return});
    QCOMPARE(f.rows(), QStringList({"Exit", "Standard data", "Streaming", " Start", "Voice"}));
    QCOMPARE(f.current(), QString("Streaming/Start"));
    QVERIFY(f.tree->viewport()->rect().contains(f.tree->visualItemRect(f.button(1))));
    f.keys({Qt::Key_Up, Qt::Key_Return});
    QCOMPARE(f.rows(), QStringList({"Exit", "Standard data", "Streaming", "Voice"}));
    QCOMPARE(f.current(), QString("Streaming"));
    QVERIFY(f.isOpen());
    QCOMPARE(written(START_NUMBER), QStringList());
}

void ScreenActionKeysTest::okOnABundleWithARefusedChildLeavesTheCursor()
{
    defineBundles(THREE);
    setSession(1, BUNDLE_STATUS_RUNNING);
    ActionFixture f;
    f.open();
    f.keys({Qt::Key_Down, Qt::Key_Return}); // from "Stop" of the running one to the next
    QCOMPARE(f.rows().last(), QString(" Start"));
    QCOMPARE(f.buttonText(2), QString("(Start)"));
    QCOMPARE(f.current(), QString("Voice"));
    QVERIFY(f.tree->viewport()->rect().contains(f.tree->visualItemRect(f.button(2)))); // but it is in view
}

void ScreenActionKeysTest::refusedChildCannotBeReached_data()
{
    QTest::addColumn<int>("bundle");
    QTest::addColumn<bool>("aca");
    QTest::newRow("start beside an active bundle") << 1 << false;
    QTest::newRow("stop that ACA forbids") << 0 << true;
}

void ScreenActionKeysTest::refusedChildCannotBeReached()
{
    QFETCH(int, bundle);
    QFETCH(bool, aca);
    defineBundles(THREE);
    setSession(0, BUNDLE_STATUS_RUNNING);
    model()->setACA(aca);
    ActionFixture f;
    f.open();
    const QString name = f.bundle(bundle)->text(0);
    f.tree->setCurrentItem(f.bundle(bundle));
    f.key(Qt::Key_Right); // opens, and stays
    QCOMPARE(f.current(), name);
    QVERIFY(f.bundle(bundle)->isExpanded());
    f.key(Qt::Key_Down); // passes it
    QCOMPARE(f.current(), f.tree->itemBelow(f.button(bundle))->text(0));
    f.key(Qt::Key_Up);
    QCOMPARE(f.current(), name);
    f.key(Qt::Key_Return); // closes
    QVERIFY(!f.bundle(bundle)->isExpanded());
    QCOMPARE(f.current(), name);
    QVERIFY(f.isOpen());
    QCOMPARE(written(ACTIVATED), QStringList());
    QCOMPARE(written(START_NUMBER), QStringList());
}

void ScreenActionKeysTest::leftBacksOut()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    f.keys({Qt::Key_Down, Qt::Key_Down, Qt::Key_Right});
    QCOMPARE(f.current(), QString("Streaming/Start"));
    f.key(Qt::Key_Left);
    QCOMPARE(f.current(), QString("Streaming"));
    QVERIFY(!f.bundle(1)->isExpanded());
    f.key(Qt::Key_Left);
    QCOMPARE(f.current(), QString("Exit"));
}

void ScreenActionKeysTest::longOkDoesNothing()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    Messages messages;
    f.key(Qt::Key_Space);
    QCOMPARE(messages.count("Button LONG OK not defined on this screen."), 1);
    QVERIFY(f.isOpen());
}

void ScreenActionKeysTest::otherRowsAreNotImplemented()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    Messages messages;
    f.screen->handleItemPressed(ITEM_SETTINGS); // on the exit, which has no children
    QCOMPARE(messages.count("ScreenAction::handleItemPressed: itemId=9. Not implemented yet."), 1);
    QVERIFY(f.isOpen());
}

void ScreenActionKeysTest::focusOnTheFirstActiveBundle()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    Access::definedBundles()[1].status = BUNDLE_STATUS_INITIALIZING;
    Access::definedBundles()[2].status = BUNDLE_STATUS_RUNNING;
    f.screen->setFocusOnFirstActiveBundle();
    QCOMPARE(f.rows(), QStringList({"Exit", "Standard data", "Streaming", " Start", "Voice"}));
    QCOMPARE(f.current().section('/', 0, 0), QString("Streaming"));
    QVERIFY(f.tree->currentItem()->parent());
    // As far up as the rows below allow.
    QCOMPARE(f.tree->visualItemRect(f.bundle(2)).bottom(), 63);
}

void ScreenActionKeysTest::focusOnARefusedStopLeavesTheCursor()
{
    defineBundles(THREE);
    setSession(0, BUNDLE_STATUS_RUNNING);
    model()->setACA(true);
    ActionFixture f;
    f.open();
    QCOMPARE(f.current(), QString("Exit"));
    QCOMPARE(f.rows().mid(2, 2), QStringList({" Stop", "Streaming"})); // open all the same
    QCOMPARE(f.buttonText(0), QString("(Stop)"));
}

void ScreenActionKeysTest::focusWithoutAnActiveBundleChangesNothing()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    f.keys({Qt::Key_Down, Qt::Key_Down, Qt::Key_Right});
    f.screen->setFocusOnFirstActiveBundle();
    QCOMPARE(f.current(), QString("Streaming/Start"));
    QCOMPARE(f.rows().size(), 5);
}

void ScreenActionKeysTest::focusPassesALostBundle()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    Access::definedBundles()[0].bundleNumber = 10;
    Access::definedBundles()[2].status = BUNDLE_STATUS_RUNNING;
    Messages messages;
    f.screen->setFocusOnFirstActiveBundle();
    QCOMPARE(messages.withPrefix("ScreenAction::"),
             QStringList({"ScreenAction::setFocusOnFirstActiveBundle(): ERROR!!!! Could not get bundle with "
                          "bundleNumber=0"}));
    QCOMPARE(f.current(), QString("Voice/Start"));
}

void ScreenActionKeysTest::collapseAll()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    f.bundle(0)->setExpanded(true);
    f.bundle(2)->setExpanded(true);
    f.screen->collapseAllBundles();
    QCOMPARE(f.rows(), QStringList({"Exit", "Standard data", "Streaming", "Voice"}));
}

// --- Exit --------------------------------------------------------------------------------------------------

void ScreenActionKeysTest::exitClosesAllAndLeaves()
{
    defineBundles(THREE);
    ActionFixture f;
    f.window.showScreen(Screen::SCREEN_BATTERY, true);
    f.open();
    f.bundle(1)->setExpanded(true);
    f.key(Qt::Key_Return);
    QCOMPARE(f.shown(), Screen::SCREEN_BATTERY);
    QCOMPARE(f.rows(), QStringList({"Exit", "Standard data", "Streaming", "Voice"}));
    QCOMPARE(f.current(), QString("Exit"));
}

void ScreenActionKeysTest::exitLeavesTheActiveBundleReady()
{
    defineBundles(THREE);
    setSession(1, BUNDLE_STATUS_RUNNING);
    ActionFixture f;
    f.open();
    f.keys({Qt::Key_Left, Qt::Key_Left});
    QCOMPARE(f.current(), QString("Exit"));
    f.bundle(2)->setExpanded(true);
    f.key(Qt::Key_Return);
    QCOMPARE(f.shown(), Screen::SCREEN_STATUS);
    QCOMPARE(f.current(), QString("Streaming/Stop"));
    QVERIFY(!f.bundle(2)->isExpanded());
}

void ScreenActionKeysTest::visitShowsTheActiveBundle()
{
    defineBundles(THREE);
    ActionFixture f;
    setSession(2, BUNDLE_STATUS_RUNNING);
    f.open();
    QCOMPARE(f.current(), QString("Voice/Stop"));
    QVERIFY(f.tree->hasFocus());
    QVERIFY(f.tree->viewport()->rect().contains(f.tree->visualItemRect(f.button(2))));
}

// --- Start and stop ----------------------------------------------------------------------------------------

void ScreenActionKeysTest::startOfABundle()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    f.bundle(0)->setExpanded(true);
    f.keys({Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Right});
    QCOMPARE(f.current(), QString("Streaming/Start"));
    terminal().clearLogs();
    Messages messages;
    QElapsedTimer clock;
    clock.start();
    f.key(Qt::Key_Return);
    QVERIFY(clock.elapsed() >= 200); // the two numbers are two changes
    QCOMPARE(messages.count("ScreenAction::handleItemPressed(): About to start bundle"), 1);
    QVERIFY(terminal().waitForWrite(START_NUMBER, sim::Value::integer(1)));
    QCOMPARE(written(START_NUMBER), QStringList({"-1", "1"}));
    // The bus thread sets the bundle up.
    QVERIFY(terminal().waitForWrite(ACTIVATED, sim::Value::integer(1)));
    QCOMPARE(terminal().getInt(CURRENT_BUNDLE), std::optional<int32_t>(1));
    // The list is left as it will be found, and the user is back on the status screen, below the popup.
    QCOMPARE(f.rows(), QStringList({"Exit", "Standard data", "Streaming", " Start", "Voice"}));
    QCOMPARE(f.current(), QString("Streaming/Start"));
    QCOMPARE(f.shown(), Screen::SCREEN_POPUP);
    QCOMPARE(f.popups(), QList<unsigned int>({EV_AP_GUI_STARTING_BUNDLE_NAME}));
    const popup_event_t popup = f.popup->events().first();
    QCOMPARE(int(popup.severity), int(EVENT_INFO));
    QCOMPARE(int(popup.closeHandling), int(POPUP_CLOSE_AUTO));
    QCOMPARE(popup.showForMilliseconds, 2000);
    QVERIFY2(popup.text.endsWith("Streaming"), qPrintable(popup.text));
    QVERIFY(!popup.okFunction && !popup.cancelFunction);
    QTRY_COMPARE_WITH_TIMEOUT(f.shown(), Screen::SCREEN_STATUS, PATIENCE_MS);
    QVERIFY(clock.elapsed() >= 2000);
    // Nothing here has waited for the outcome.
    QCOMPARE(int(Access::definedBundles().at(1).status), int(BUNDLE_STATUS_IDLE));
}

void ScreenActionKeysTest::startOfTheSameBundleAgain()
{
    defineBundles({{4, "Four"}});
    ActionFixture f;
    for (int visit = 0; visit < 2; ++visit) {
        f.closePopups();
        f.open();
        f.tree->setCurrentItem(f.button(4));
        f.key(Qt::Key_Return);
        QVERIFY(terminal().waitForWrite(ACTIVATED, sim::Value::integer(1)));
        QCOMPARE(written(START_NUMBER), QStringList({"-1", "4"}));
        terminal().clearLogs();
    }
}

void ScreenActionKeysTest::startWhileAnotherGroupIsActive()
{
    defineBundles(THREE);
    ActionFixture f;
    terminal().set("ram.status.ongoing_data_sessions.1.status", int(BUNDLE_STATUS_RUNNING));
    passBus();
    model()->updateCurrentStatusTextId();
    QCOMPARE(model()->getCurrentStatusTextId(), STATUS_TEXT_ACTIVE_BUNDLES);
    f.open();
    f.keys({Qt::Key_Down, Qt::Key_Right, Qt::Key_Return});
    QVERIFY(terminal().waitForWrite(START_NUMBER, sim::Value::integer(0)));
    QCOMPARE(f.popups(), QList<unsigned int>({EV_AP_GUI_STARTING_BUNDLE_NAME}));
}

// While the status text is "Searching".
void ScreenActionKeysTest::startWithoutANetwork()
{
    defineBundles(THREE);
    QVERIFY(setNetwork(false));
    ActionFixture f;
    QCOMPARE(model()->getStatusText(), QString("Searching"));
    f.open();
    f.keys({Qt::Key_Down, Qt::Key_Right, Qt::Key_Return});
    QCOMPARE(f.popups(), QList<unsigned int>({EV_AP_GUI_NOT_REGISTERED_TO_NETWORK}));
    const popup_event_t popup = f.popup->events().first();
    QCOMPARE(int(popup.severity), int(EVENT_INFO));
    QCOMPARE(int(popup.closeHandling), int(POPUP_CLOSE_OK));
    QCOMPARE(popup.showForMilliseconds, 0);
    QCOMPARE(popup.text, model()->getEventText(EV_AP_GUI_NOT_REGISTERED_TO_NETWORK));
    passBus();
    QCOMPARE(written(START_NUMBER), QStringList());
    QCOMPARE(int(Access::definedBundles().at(0).status), int(BUNDLE_STATUS_IDLE));
    f.closePopups();
    QVERIFY(f.isOpen()); // the list is still there
    QCOMPARE(f.current(), QString("Standard data/Start"));
}

void ScreenActionKeysTest::startAsDhcpClient()
{
    defineBundles(THREE);
    ActionFixture f;
    model()->setDhcpClientMode(true);
    QCoreApplication::sendPostedEvents();
    f.open();
    f.keys({Qt::Key_Down, Qt::Key_Right, Qt::Key_Return});
    QCOMPARE(f.popups(), QList<unsigned int>({EV_AP_GUI_DHCP_CLIENT_WITHOUT_BONDING}));
    QCOMPARE(int(f.popup->events().first().closeHandling), int(POPUP_CLOSE_OK));
    passBus();
    QCOMPARE(written(START_NUMBER), QStringList());
    f.closePopups();
    QVERIFY(f.isOpen());
}

void ScreenActionKeysTest::startWithoutANetworkAsDhcpClient()
{
    defineBundles(THREE);
    QVERIFY(setNetwork(false));
    ActionFixture f;
    model()->setDhcpClientMode(true);
    QCoreApplication::sendPostedEvents();
    f.open();
    f.keys({Qt::Key_Down, Qt::Key_Right, Qt::Key_Return});
    QCOMPARE(f.popups(), QList<unsigned int>({EV_AP_GUI_NOT_REGISTERED_TO_NETWORK})); // asked first
}

// The list has not heard yet that the configuration is another: the model refuses, and nothing is written.
void ScreenActionKeysTest::startOfABundleThatIsGone()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    f.keys({Qt::Key_Down, Qt::Key_Right});
    Access::definedBundles()[0].bundleNumber = 10;
    Messages messages;
    f.key(Qt::Key_Return);
    QCOMPARE(
        messages.count("StatusUpdater::startBundle(): ERROR!!! bundleNumber=0 does not exist in the list "
                       "of known bundles !!!"),
        1);
    passBus();
    QCOMPARE(written(START_NUMBER), QStringList());
}

void ScreenActionKeysTest::stopOfABundle()
{
    defineBundles(THREE);
    setSession(1, BUNDLE_STATUS_RUNNING, 60);
    ActionFixture f;
    f.open();
    f.bundle(0)->setExpanded(true);
    QCOMPARE(f.current(), QString("Streaming/Stop"));
    f.key(Qt::Key_Return);
    QVERIFY(terminal().waitForWrite(CURRENT_BUNDLE, sim::Value::integer(-1)));
    QCOMPARE(written(ACTIVATED), QStringList({"0"}));
    QCOMPARE(written(START_NUMBER), QStringList());
    QCOMPARE(f.shown(), Screen::SCREEN_STATUS);
    QCOMPARE(f.popups(), QList<unsigned int>());
    QVERIFY(!f.bundle(0)->isExpanded());
    QVERIFY(f.bundle(1)->isExpanded());
    QVERIFY(f.tree->currentItem() == f.button(1));
    // What the end of the current bundle brings comes back from the database.
    passBus();
    QCOMPARE(f.bundle(1)->text(1), QString());
    QCOMPARE(int(Access::definedBundles().at(1).status), int(BUNDLE_STATUS_IDLE));
}

void ScreenActionKeysTest::stopWhileItIsBeingSetUp()
{
    defineBundles(THREE);
    setSession(1, BUNDLE_STATUS_INITIALIZING);
    ActionFixture f;
    model()->setDhcpClientMode(true); // neither this nor the network stands in the way of a stop
    QCoreApplication::sendPostedEvents();
    f.open();
    f.screen->setFocusOnFirstActiveBundle();
    f.key(Qt::Key_Return);
    QVERIFY(terminal().waitForWrite(CURRENT_BUNDLE, sim::Value::integer(-1)));
    QCOMPARE(f.shown(), Screen::SCREEN_STATUS);
}

// The text of the row decides what a press does, and both sides of the comparison are translated.
void ScreenActionKeysTest::translatedStartAndStop()
{
    defineBundles(THREE);
    ActionFixture f;
    const Brackets german;
    QCoreApplication::sendPostedEvents();
    f.open();
    f.keys({Qt::Key_Down, Qt::Key_Right});
    QCOMPARE(f.current(), QString("Standard data/[Start]"));
    f.key(Qt::Key_Return);
    QVERIFY(terminal().waitForWrite(START_NUMBER, sim::Value::integer(0)));
    setSession(0, BUNDLE_STATUS_RUNNING);
    f.closePopups();
    f.open();
    QCOMPARE(f.current(), QString("Standard data/[Stop]"));
    f.key(Qt::Key_Return);
    QVERIFY(terminal().waitForWrite(ACTIVATED, sim::Value::integer(0)));
}

void ScreenActionKeysTest::textThatIsNeither()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    f.keys({Qt::Key_Down, Qt::Key_Right});
    f.tree->currentItem()->setText(0, "start");
    Messages messages;
    f.key(Qt::Key_Return);
    QCOMPARE(
        messages.count("ScreenAction::handleItemPressed(): unhandled item pressed. pItem->text(0)=start"), 1);
    QVERIFY(f.isOpen());
    passBus();
    QCOMPARE(written(START_NUMBER), QStringList());
    QCOMPARE(written(ACTIVATED), QStringList());
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenActionKeysTest>(argc, argv);
}

#include "screenaction_keys_test.moc"
