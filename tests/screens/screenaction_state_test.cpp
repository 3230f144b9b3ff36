// What the rows of the bundles show of their state: "Start" or "Stop", what of it is refused, and the text
// of the second column, which must not be cut.
#include "screens/actionfixture.h"

#include "screens/pictures.h"

#include "support/patience.h"

#include <QStyle>

using namespace windowfixture;

class ScreenActionStateTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(startRadioModule()); }
    void init() { resetAction(); }

    void buttonByStatus_data();
    void buttonByStatus();
    void stopAndAca_data();
    void stopAndAca();
    void refusalIsLogged();
    void otherUserGroupLeavesTheStarts();
    void unsupportedStatusIsLogged();
    void lostBundleIsLogged();
    void refusedStartSendsTheCursorToTheBundle();
    void refusedStopSendsTheCursorToTheBundle();
    void cursorElsewhereStays();
    void stateInTheSecondColumn();
    void deletedSessionIsLogged();
    void stateOfNumberMinusOneRefreshesTheButtons();
    void stateOfAnUnknownBundle();
    void stateWhileOthersHaveTheConnections_data();
    void stateWhileOthersHaveTheConnections();
    void elapsedTimeOfRunningBundles();
    void nothingIsCut_data();
    void nothingIsCut();
};

// In brackets: grey, and out of reach. Only one bundle of user group 0 can be active.
void ScreenActionStateTest::buttonByStatus_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("own");
    QTest::addColumn<QString>("others");
    QTest::newRow("idle") << int(BUNDLE_STATUS_IDLE) << "Start"
                          << "Start";
    QTest::newRow("initializing") << int(BUNDLE_STATUS_INITIALIZING) << "Stop"
                                  << "(Start)";
    QTest::newRow("running") << int(BUNDLE_STATUS_RUNNING) << "Stop"
                             << "(Start)";
}

void ScreenActionStateTest::buttonByStatus()
{
    QFETCH(int, status);
    QFETCH(QString, own);
    QFETCH(QString, others);
    defineBundles(THREE);
    const ActionFixture f;
    setSession(1, static_cast<BUNDLE_STATUS>(status)); // by the signal
    QCOMPARE(f.buttonText(1), own);
    QCOMPARE(f.buttonText(0), others);
    QCOMPARE(f.buttonText(2), others);
    f.screen->populateList(); // and from the start
    QCOMPARE(f.buttonText(1), own);
    QCOMPARE(f.buttonText(0), others);
    endSession();
    for (int number = 0; number <= 2; ++number) {
        QCOMPARE(f.buttonText(number), QString("Start"));
    }
}

void ScreenActionStateTest::stopAndAca_data()
{
    QTest::addColumn<int>("group");
    QTest::addColumn<int>("connections");
    QTest::addColumn<int>("trafficClass");
    QTest::addColumn<bool>("aca");
    QTest::addColumn<QString>("text");
    QTest::newRow("stop that ACA forbids") << 0 << 1 << 3 << true << "(Stop)";
    QTest::newRow("without ACA") << 0 << 1 << 3 << false << "Stop";
    QTest::newRow("another traffic class") << 0 << 1 << 1 << true << "Stop";
    QTest::newRow("unknown traffic class") << 0 << 1 << -1 << true << "Stop";
    QTest::newRow("two connections") << 0 << 2 << 3 << true << "Stop";
    QTest::newRow("no connection") << 0 << 0 << 3 << true << "Stop";
    QTest::newRow("another user group") << 1 << 1 << 3 << true << "Stop";
}

void ScreenActionStateTest::stopAndAca()
{
    QFETCH(int, group);
    QFETCH(int, connections);
    QFETCH(int, trafficClass);
    QFETCH(bool, aca);
    defineBundles({{1, "One", trafficClass, connections}});
    Access::definedBundles()[0].wanUserGroup = group;
    for (BUNDLE_STATUS status : {BUNDLE_STATUS_INITIALIZING, BUNDLE_STATUS_RUNNING}) {
        const ActionFixture f;
        setSession(1, status);
        model()->setACA(aca); // tells it, if it is new
        QCoreApplication::sendPostedEvents();
        QTEST(f.buttonText(1), "text");
        model()->setACA(false);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(f.buttonText(1), QString("Stop"));
    }
}

void ScreenActionStateTest::refusalIsLogged()
{
    defineBundles({{0, "Standard data", 3}});
    setSession(0, BUNDLE_STATUS_RUNNING);
    const ActionFixture f;
    Messages messages;
    f.screen->updateStartStopButtons();
    const QString text = "ScreenAction::updateStartStopButtons(): ACA detected to be active";
    QCOMPARE(messages.count(text), 0);
    model()->setACA(true);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(messages.count(text), 1);
}

void ScreenActionStateTest::otherUserGroupLeavesTheStarts()
{
    defineBundles(THREE);
    const ActionFixture f;
    terminal().set("ram.status.ongoing_data_sessions.1.status", int(BUNDLE_STATUS_RUNNING));
    passBus();
    QCOMPARE(model()->getNumberOfActiveConnectionsAndBundles(), 1);
    f.screen->updateStartStopButtons();
    for (int number = 0; number <= 2; ++number) {
        QCOMPARE(f.buttonText(number), QString("Start"));
    }
}

void ScreenActionStateTest::unsupportedStatusIsLogged()
{
    defineBundles({{1, "One"}});
    const ActionFixture f;
    for (int status : {-1, -2, 3}) {
        Access::definedBundles()[0].status = static_cast<BUNDLE_STATUS>(status);
        Messages messages;
        f.screen->updateStartStopButtons();
        QCOMPARE(messages.count("ScreenAction::updateStartStopButtons(): ERROR!!! Unsupported bundle status. "
                                "bundle.status=" +
                                QString::number(status)),
                 1);
        QCOMPARE(f.buttonText(1), QString("Start")); // as it was
    }
}

// The list may be asked before it hears that the configuration has changed.
void ScreenActionStateTest::lostBundleIsLogged()
{
    defineBundles(THREE);
    const ActionFixture f;
    for (bundle_t& bundle : Access::definedBundles()) {
        bundle.status = BUNDLE_STATUS_RUNNING;
        bundle.bundleNumber += bundle.bundleNumber == 1 ? 10 : 0;
    }
    Messages messages;
    f.screen->updateStartStopButtons();
    f.screen->updateElapsedTime();
    QCOMPARE(messages.withPrefix("ScreenAction::"),
             QStringList({"ScreenAction::updateStartStopButtons(): ERROR!!! Could not get bundle data for "
                          "bundleNumber=1"}));
    QCOMPARE(f.buttonText(0), QString("Stop"));
    QCOMPARE(f.buttonText(1), QString("Start")); // left as it was
    QCOMPARE(f.buttonText(2), QString("Stop"));
    QCOMPARE(f.bundle(1)->text(1), QString());
    QVERIFY(!f.bundle(2)->text(1).isEmpty());
}

void ScreenActionStateTest::refusedStartSendsTheCursorToTheBundle()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    f.keys({Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Right});
    QCOMPARE(f.current(), QString("Voice/Start"));
    setSession(1, BUNDLE_STATUS_INITIALIZING);
    QCOMPARE(f.current(), QString("Voice"));
    QVERIFY(f.tree->viewport()->rect().contains(f.tree->visualItemRect(f.bundle(2))));
    QVERIFY(f.bundle(2)->isExpanded());
}

void ScreenActionStateTest::refusedStopSendsTheCursorToTheBundle()
{
    defineBundles(THREE);
    setSession(0, BUNDLE_STATUS_RUNNING);
    ActionFixture f;
    f.open();
    QCOMPARE(f.current(), QString("Standard data/Stop"));
    model()->setACA(true);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(f.current(), QString("Standard data"));
    QCOMPARE(f.buttonText(0), QString("(Stop)"));
}

void ScreenActionStateTest::cursorElsewhereStays()
{
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    f.keys({Qt::Key_Down, Qt::Key_Down, Qt::Key_Right});
    setSession(1, BUNDLE_STATUS_INITIALIZING);
    QCOMPARE(f.current(), QString("Streaming/Stop"));
    setSession(1, BUNDLE_STATUS_RUNNING);
    QCOMPARE(f.current(), QString("Streaming/Stop"));
}

void ScreenActionStateTest::stateInTheSecondColumn()
{
    defineBundles(THREE);
    const ActionFixture f;
    setSession(1, BUNDLE_STATUS_INITIALIZING);
    QCOMPARE(f.bundle(1)->text(1), QString("Connecting..."));
    QCOMPARE(f.bundle(0)->text(1), QString());
    f.bundle(1)->setTextSecondColumn("as it was"); // the next update of the time writes it
    emit model()->bundleStateChanged(1, BUNDLE_STATUS_RUNNING);
    QCOMPARE(f.bundle(1)->text(1), QString("as it was"));
    setSession(1, BUNDLE_STATUS_IDLE);
    QCOMPARE(f.bundle(1)->text(1), QString());
}

void ScreenActionStateTest::deletedSessionIsLogged()
{
    defineBundles(THREE);
    const ActionFixture f;
    setSession(1, BUNDLE_STATUS_INITIALIZING);
    Messages messages;
    terminal().erase(SESSION_STATUS);
    passBus();
    QCOMPARE(messages.count("ScreenAction::handleBundleStateChanged(): ERROR!!! Not expected to get into the "
                            "default inside the switch !!!"),
             1);
    QCOMPARE(f.bundle(1)->text(1), QString("Connecting..."));
    terminal().set(CURRENT_BUNDLE, -1);
    passBus();
    QCOMPARE(f.bundle(1)->text(1), QString());
    QCOMPARE(f.buttonText(1), QString("Start"));
}

void ScreenActionStateTest::stateOfNumberMinusOneRefreshesTheButtons()
{
    defineBundles(THREE);
    const ActionFixture f;
    Access::definedBundles()[1].status = BUNDLE_STATUS_RUNNING;
    Messages messages;
    f.screen->handleBundleStateChanged(-1, BUNDLE_STATUS_INITIALIZING);
    QCOMPARE(f.rows(), QStringList({"Exit", "Standard data", "Streaming", "Voice"}));
    QCOMPARE(f.buttonText(1), QString("Stop"));
    QCOMPARE(messages.countOfPrefix("ScreenAction::getBundleWidgetItem()"), 0);
}

void ScreenActionStateTest::stateOfAnUnknownBundle()
{
    defineBundles(THREE);
    const ActionFixture f;
    Access::definedBundles()[1].status = BUNDLE_STATUS_RUNNING;
    Messages messages;
    f.screen->handleBundleStateChanged(9, BUNDLE_STATUS_INITIALIZING);
    QCOMPARE(f.rows(), QStringList({"Exit", "Standard data", "Streaming", "Voice"}));
    QCOMPARE(f.buttonText(1), QString("Stop"));
    QCOMPARE(messages.countOfPrefix("ScreenAction::getBundleWidgetItem()"), 1);
}

void ScreenActionStateTest::stateWhileOthersHaveTheConnections_data()
{
    QTest::addColumn<bool>("atCommands");
    QTest::newRow("AT commands") << true;
    QTest::newRow("slave") << false;
}

void ScreenActionStateTest::stateWhileOthersHaveTheConnections()
{
    QFETCH(bool, atCommands);
    defineBundles(THREE);
    const ActionFixture f;
    model()->setControlledByATCommands(atCommands);
    model()->setBondingEnabled(!atCommands);
    model()->setDhcpClientMode(!atCommands);
    QCoreApplication::sendPostedEvents();
    setSession(1, BUNDLE_STATUS_INITIALIZING);
    QCOMPARE(f.bundle(1)->text(1), QString());
    QCOMPARE(f.buttonText(1), QString("Stop")); // the buttons follow all the same
}

void ScreenActionStateTest::elapsedTimeOfRunningBundles()
{
    defineBundles(THREE);
    const ActionFixture f;
    setSession(1, BUNDLE_STATUS_RUNNING, 5000);
    QCOMPARE(f.bundle(1)->text(1), QString()); // a running state writes nothing by itself
    emit model()->updateElapsedTimeAndBackgroundDataSignal();
    const QString time = f.bundle(1)->text(1);
    QVERIFY2(time.startsWith("01:23:"), qPrintable(time));
    QCOMPARE(f.bundle(0)->text(1), QString());
    setSession(1, BUNDLE_STATUS_INITIALIZING);
    emit model()->updateElapsedTimeAndBackgroundDataSignal();
    QCOMPARE(f.bundle(1)->text(1), QString("Connecting...")); // not running: left alone
    // The model's own timer brings it, too.
    setSession(1, BUNDLE_STATUS_RUNNING, 5000);
    QTRY_VERIFY_WITH_TIMEOUT(f.bundle(1)->text(1).startsWith("01:23:"), PATIENCE_MS);
}

void ScreenActionStateTest::nothingIsCut_data()
{
    QTest::addColumn<int>("language"); // one for each family of fonts
    QTest::addColumn<QString>("text");
    QTest::newRow("short time, Latin") << int(LANG_ENGLISH) << "00:00:00";
    QTest::newRow("long time, Latin") << int(LANG_ENGLISH) << "9999:59:59";
    QTest::newRow("connecting, Latin") << int(LANG_ENGLISH) << "Connecting...";
    QTest::newRow("short time, Unicode") << int(LANG_RUSSIAN) << "00:00:00";
    QTest::newRow("long time, Unicode") << int(LANG_RUSSIAN) << "9999:59:59";
}

void ScreenActionStateTest::nothingIsCut()
{
    QFETCH(int, language);
    QFETCH(QString, text);
    defineBundles(THREE);
    ActionFixture f;
    f.open();
    model()->setLanguage(static_cast<LANG_ENUM>(language));
    QCoreApplication::sendPostedEvents();
    const QFont font = *GuiApp::getFont(14, static_cast<LANG_ENUM>(language));
    QCOMPARE(fontText(f.tree->font()), fontText(font));
    const int margin = f.tree->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, f.tree) + 1;
    const int needed = qtcompat::textWidth(QFontMetrics(f.tree->font()), text) + 2 * margin;
    QVERIFY2(needed <= f.tree->columnWidth(1),
             qPrintable(QString("%1 of %2").arg(needed).arg(f.tree->columnWidth(1))));
    for (int number = 0; number <= 2; ++number) {
        QVERIFY(f.tree->visualItemRect(f.bundle(number)).height() >= QFontMetrics(font).height());
    }
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenActionStateTest>(argc, argv);
}

#include "screenaction_state_test.moc"
