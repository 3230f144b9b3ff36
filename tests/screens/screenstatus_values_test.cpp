// What the status screen shows: every value of the model, and the status text with its swing.
#include "screens/pictures.h"
#include "screens/statusfixture.h"

#include "common/constants.h"

#include "support/patience.h"

#include <QProgressBar>
#include <QTimer>

using namespace windowfixture;

class ScreenStatusValuesTest : public QObject {
    Q_OBJECT

private slots:
    void init() { resetStatus(); }

    // Values
    void antennaText_data();
    void antennaText();
    void antennaTextFollowsTheBeam_data();
    void antennaTextFollowsTheBeam();
    void antennaIconFollowsTheBars();
    void numberOfConnections();
    void connectIcon_data();
    void connectIcon();
    void lostConnectTakesTheFocus();
    void wifiClients();
    void interfaceStates_data();
    void interfaceStates();
    void unknownInterfaceIsLogged();
    void battery();
    void warningsBlinkAndKeepTheRowInPlace();
    void endOfWarningsTakesTheFocus();
    void signalLeadsToTheStatusText_data();
    void signalLeadsToTheStatusText();
    void constructorFillsTheScreen();

    // Status text
    void textIsCentred_data();
    void textIsCentred();
    void twoLinesOf20StayStill();
    void swing_data();
    void swing();
    void runningSwingGoesOn();
    void swingTurnsRound();
    void shortTextEndsTheSwing();
};

// --- Values ------------------------------------------------------------------------------------------------

void ScreenStatusValuesTest::antennaText_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << 0 << "0";
    QTest::newRow("just none") << 319 << "0";
    QTest::newRow("32.0") << 320 << "32";
    QTest::newRow("45.4") << 454 << "45";
    QTest::newRow("45.5") << 455 << "46";
    QTest::newRow("45.6") << 456 << "46";
    QTest::newRow("59.9") << 599 << "60";
}

void ScreenStatusValuesTest::antennaText()
{
    QFETCH(int, level);
    StatusFixture f;
    model()->setSignalLevel(level);
    QTEST(f.topText("pAntennaLabel"), "text");
}

void ScreenStatusValuesTest::antennaTextFollowsTheBeam_data()
{
    QTest::addColumn<int>("beam");
    QTest::addColumn<QString>("text");
    QTest::newRow("unknown") << 0 << "46";
    QTest::newRow("global") << 1 << "G46";
    QTest::newRow("regional") << 2 << "R46";
    QTest::newRow("narrow") << 3 << "N46";
    QTest::newRow("no such beam") << 4 << "46";
}

void ScreenStatusValuesTest::antennaTextFollowsTheBeam()
{
    QFETCH(int, beam);
    StatusFixture f;
    model()->setSignalLevel(456);
    Access::iai2BeamType() = beam;
    emit model()->beamTypeChanged();
    const QString text = f.topText("pAntennaLabel");
    Access::iai2BeamType() = IAI2_BEAM_TYPE_UNDEFINED;
    QTEST(text, "text");
}

void ScreenStatusValuesTest::antennaIconFollowsTheBars()
{
    StatusFixture f;
    for (int bars : {4, 1, 0}) {
        model()->setSignalLevelIcon(bars);
        const QImage file(GuiApp::getResourcePath() + QString("/antenna_%1.png").arg(bars));
        QCOMPARE(pictureOf(*f.icon("pAntennaLabel")), file.convertToFormat(QImage::Format_ARGB32));
    }
}

void ScreenStatusValuesTest::numberOfConnections()
{
    StatusFixture f;
    QCOMPARE(f.topText("pConnectLabel"), QString());
    {
        RunningConnection connection;
        QCOMPARE(f.topText("pConnectLabel"), QString("1"));
        model()->setControlledByATCommands(true);
        QCOMPARE(f.topText("pConnectLabel"), QString());
        model()->setControlledByATCommands(false);
        QCOMPARE(f.topText("pConnectLabel"), QString("1"));
        model()->setDhcpClientMode(true);
        model()->setBondingEnabled(true);
        QCOMPARE(f.topText("pConnectLabel"), QString());
        model()->setBondingEnabled(false);
        QCOMPARE(f.topText("pConnectLabel"), QString("1"));
    }
    QCOMPARE(f.topText("pConnectLabel"), QString());
}

void ScreenStatusValuesTest::connectIcon_data()
{
    QTest::addColumn<bool>("controlled");
    QTest::addColumn<bool>("bonding");
    QTest::addColumn<bool>("dhcpClient");
    QTest::addColumn<int>("state");
    QTest::newRow("free") << false << false << false << 2;
    QTest::newRow("bonding master") << false << true << false << 2;
    QTest::newRow("bonding slave") << false << true << true << 0;
    QTest::newRow("AT commands") << true << false << false << 0;
    QTest::newRow("both") << true << true << true << 0;
}

void ScreenStatusValuesTest::connectIcon()
{
    QFETCH(bool, controlled);
    QFETCH(bool, bonding);
    QFETCH(bool, dhcpClient);
    StatusFixture f;
    model()->setControlledByATCommands(controlled);
    model()->setBondingEnabled(bonding);
    model()->setDhcpClientMode(dhcpClient);
    QTEST(int(f.icon("pConnectLabel")->getState()), "state");
}

void ScreenStatusValuesTest::lostConnectTakesTheFocus()
{
    StatusFixture f;
    f.screen->setFocusFrame(ScreenStatus::FOCUS_CONNECT);
    QVERIFY(f.frameShown());
    model()->setControlledByATCommands(true);
    QCOMPARE(f.screen->getFocusState(), ScreenStatus::FOCUS_NONE);
    QVERIFY(!f.frameShown());
    f.screen->setFocusFrame(ScreenStatus::FOCUS_MENU); // another place is left alone
    model()->setControlledByATCommands(true);
    QCOMPARE(f.screen->getFocusState(), ScreenStatus::FOCUS_MENU);
}

void ScreenStatusValuesTest::wifiClients()
{
    StatusFixture f;
    QCOMPARE(f.topText("pWifiLabel"), QString());
    model()->setWifiNumberOfClients(1);
    QCOMPARE(f.topText("pWifiLabel"), QString("1"));
    model()->setWifiNumberOfClients(12);
    QCOMPARE(f.topText("pWifiLabel"), QString("12"));
    for (INTERFACE_STATE_ENUM state :
         {INTERFACE_STATE_OFF, INTERFACE_STATE_ACTIVATING, INTERFACE_STATE_DEACTIVATING}) {
        model()->setInterfaceState(INTERFACE_NAME_WIFI, state);
        QCOMPARE(f.topText("pWifiLabel"), QString());
    }
    model()->setInterfaceState(INTERFACE_NAME_WIFI, INTERFACE_STATE_ON);
    QCOMPARE(f.topText("pWifiLabel"), QString("12"));
    model()->setWifiNumberOfClients(-1);
    QCOMPARE(f.topText("pWifiLabel"), QString());
}

void ScreenStatusValuesTest::interfaceStates_data()
{
    QTest::addColumn<int>("interface");
    QTest::addColumn<QString>("label");
    QTest::newRow("Wi-Fi") << 1 << "pWifiLabel";
    QTest::newRow("ISDN") << 2 << "pIsdnLabel";
    QTest::newRow("LAN") << 3 << "pLanLabel";
    QTest::newRow("phone") << 4 << "pPhoneLabel";
    QTest::newRow("USB") << 5 << "pUsbLabel";
}

void ScreenStatusValuesTest::interfaceStates()
{
    QFETCH(int, interface);
    QFETCH(QString, label);
    StatusFixture f;
    for (int state : {0, 1, 2, 3, -1}) {
        model()->setInterfaceState(static_cast<INTERFACE_NAME_ENUM>(interface),
                                   static_cast<INTERFACE_STATE_ENUM>(state));
        for (const char* name : {"pWifiLabel", "pIsdnLabel", "pLanLabel", "pPhoneLabel", "pUsbLabel"}) {
            QCOMPARE(int(f.icon(name)->getState()), label == name ? state : int(INTERFACE_STATE_ON));
        }
    }
}

void ScreenStatusValuesTest::unknownInterfaceIsLogged()
{
    StatusFixture f;
    for (int interface : {0, 6}) {
        Messages messages;
        f.screen->updateInterfaceState(static_cast<INTERFACE_NAME_ENUM>(interface));
        QCOMPARE(messages.count(QString("StatusUpdater::updateInterfaceState(): ERROR!!! interface=%1 not "
                                        "supported!")
                                    .arg(interface)),
                 1);
    }
}

void ScreenStatusValuesTest::battery()
{
    StatusFixture f;
    QProgressBar* const bar = f.icon("pBattLabel")->findChild<QProgressBar*>("pProgressBar");
    QCOMPARE(f.icon("pBattLabel")->getState(), INTERFACE_STATE_OFF); // no battery
    QCOMPARE(bar->value(), 0);
    battery_t internal;
    internal.batteryConnectionStatus = BATT_PRESENT;
    internal.minutesLeft = 65;
    internal.capacity = 51;
    battery_t external = internal;
    external.minutesLeft = 0;
    external.capacity = 50;
    model()->setBattData(internal, external);
    QCOMPARE(f.icon("pBattLabel")->getState(), INTERFACE_STATE_ON);
    QCOMPARE(f.topText("pBattLabel"), QString("1:05"));
    QCOMPARE(bar->value(), 50);
    model()->setExternalSupplyPresent(true);
    QCOMPARE(f.topText("pBattLabel"), QString(chargeChar));
    model()->setBattData(battery_t(), battery_t());
    QCOMPARE(f.icon("pBattLabel")->getState(), INTERFACE_STATE_OFF);
}

void ScreenStatusValuesTest::warningsBlinkAndKeepTheRowInPlace()
{
    StatusFixture f;
    f.window.show();
    QVERIFY(f.icon("pWarningLabel")->isHidden());
    const QRect before = f.icon("pWifiLabel")->geometry();
    Messages messages;
    model()->setWarningsPresent(true);
    QTimer* const timer = f.icon("pWarningLabel")->findChild<QTimer*>("pBlinkTimer");
    QVERIFY(timer->isActive());
    QVERIFY(!f.icon("pWarningLabel")->isHidden());
    QCOMPARE(messages.countOfPrefix("Window::removePopupIfExist(EV_AP_GUI_NO_EVENTS)"), 1);
    QTRY_COMPARE_WITH_TIMEOUT(f.icon("pWarningLabel")->geometry(), QRect(185, 0, 30, 24), PATIENCE_MS);
    QCOMPARE(f.icon("pWifiLabel")->geometry(), before);
    const QImage sign(GuiApp::getResourcePath() + "/warning_enabled.png");
    const QImage noSign(GuiApp::getResourcePath() + "/warning_no_sign_enabled.png");
    QTRY_COMPARE_WITH_TIMEOUT(pictureOf(*f.icon("pWarningLabel")),
                              noSign.convertToFormat(QImage::Format_ARGB32), PATIENCE_MS);
    model()->setWarningsPresent(false);
    QVERIFY(f.icon("pWarningLabel")->isHidden());
    QVERIFY(!timer->isActive());
    QCOMPARE(pictureOf(*f.icon("pWarningLabel")), sign.convertToFormat(QImage::Format_ARGB32));
    QTest::qWait(1);
    QCOMPARE(f.icon("pWifiLabel")->geometry(), before);
}

void ScreenStatusValuesTest::endOfWarningsTakesTheFocus()
{
    StatusFixture f;
    model()->setWarningsPresent(true);
    f.screen->setFocusFrame(ScreenStatus::FOCUS_WARNING);
    QVERIFY(f.frameShown());
    model()->setWarningsPresent(false);
    QCOMPARE(f.screen->getFocusState(), ScreenStatus::FOCUS_NONE);
    QVERIFY(!f.frameShown());
    QTest::keyClick(f.screen, Qt::Key_Up); // the arrows go on like from the status text
    QCOMPARE(f.screen->getFocusState(), ScreenStatus::FOCUS_LAN);
    model()->setWarningsPresent(true); // another place is left alone
    model()->setWarningsPresent(false);
    QCOMPARE(f.screen->getFocusState(), ScreenStatus::FOCUS_LAN);
}

void ScreenStatusValuesTest::signalLeadsToTheStatusText_data()
{
    QTest::addColumn<QByteArray>("signal");
    for (const char* signal :
         {"numberOfConnectionsChanged", "controlledByATCommandsChanged", "bondingStateChanged",
          "statusChanged", "updateElapsedTimeAndBackgroundDataSignal"}) {
        QTest::newRow(signal) << QByteArray(signal);
    }
}

void ScreenStatusValuesTest::signalLeadsToTheStatusText()
{
    QFETCH(QByteArray, signal);
    StatusFixture f;
    f.screen->setStatusText("something old");
    QVERIFY(QMetaObject::invokeMethod(model(), signal.constData(), Qt::DirectConnection));
    QCOMPARE(f.text()->text(), QString("Initializing"));
}

void ScreenStatusValuesTest::constructorFillsTheScreen()
{
    model()->setSignalLevel(456);
    model()->setSignalLevelIcon(3);
    model()->setWifiNumberOfClients(2);
    model()->setInterfaceState(INTERFACE_NAME_LAN, INTERFACE_STATE_OFF);
    model()->setWarningsPresent(true);
    model()->setControlledByATCommands(true);
    battery_t internal;
    internal.batteryConnectionStatus = BATT_PRESENT;
    internal.minutesLeft = 65;
    internal.capacity = 40;
    model()->setBattData(internal, battery_t());
    StatusFixture f;
    QCOMPARE(f.topText("pAntennaLabel"), QString("46"));
    QCOMPARE(pictureOf(*f.icon("pAntennaLabel")),
             QImage(GuiApp::getResourcePath() + "/antenna_3.png").convertToFormat(QImage::Format_ARGB32));
    QCOMPARE(f.topText("pWifiLabel"), QString("2"));
    QCOMPARE(f.icon("pLanLabel")->getState(), INTERFACE_STATE_OFF);
    QVERIFY(!f.icon("pWarningLabel")->isHidden());
    QCOMPARE(f.icon("pConnectLabel")->getState(), INTERFACE_STATE_OFF);
    QCOMPARE(f.topText("pBattLabel"), QString("1:05"));
    QCOMPARE(f.text()->text(), QString("Initializing"));
}

// --- Status text -------------------------------------------------------------------------------------------

void ScreenStatusValuesTest::textIsCentred_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("widest");
    QTest::addColumn<int>("lines");
    QTest::newRow("one line") << "Searching"
                              << "Searching" << 1;
    QTest::newRow("two lines") << "Standard\n64/64 kbps"
                               << "64/64 kbps" << 2;
    QTest::newRow("an empty part counts") << "Ready\n"
                                          << "Ready" << 2;
    QTest::newRow("nothing") << ""
                             << "" << 1;
    QTest::newRow("wider than its frame") << QString(80, 'W') << QString(80, 'W') << 1;
}

void ScreenStatusValuesTest::textIsCentred()
{
    QFETCH(QString, text);
    QFETCH(QString, widest);
    QFETCH(int, lines);
    StatusFixture f;
    f.screen->setStatusText(text);
    QCOMPARE(f.text()->text(), text);
    QCOMPARE(f.text()->size(), QSize(width(f, widest), lines * lineHeight(f)));
    QCOMPARE(f.text()->pos(), QPoint(92 - width(f, widest) / 2, 20 - lines * lineHeight(f) / 2));
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Stopped);
}

void ScreenStatusValuesTest::twoLinesOf20StayStill()
{
    StatusFixture f;
    f.text()->setFont(fontOfHeight(20));
    f.screen->setStatusText("one\ntwo");
    QCOMPARE(f.text()->height(), 40);
    QCOMPARE(f.text()->y(), 0);
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Stopped);
}

void ScreenStatusValuesTest::swing_data()
{
    QTest::addColumn<int>("fontHeight");
    QTest::addColumn<int>("lines");
    QTest::addColumn<int>("duration");
    QTest::newRow("three lines of 20") << 20 << 3 << 2000;
    QTest::newRow("four lines of 20") << 20 << 4 << 4000;
    QTest::newRow("seven lines of 20") << 20 << 7 << 10000;
    QTest::newRow("two lines of 24, at least 2000 ms") << 24 << 2 << 2000;
    QTest::newRow("one line of 44") << 44 << 1 << 2000;
}

void ScreenStatusValuesTest::swing()
{
    QFETCH(int, fontHeight);
    QFETCH(int, lines);
    StatusFixture f;
    f.text()->setFont(fontOfHeight(fontHeight));
    f.screen->setStatusText(QString("line\n").repeated(lines).chopped(1));
    const int x = 92 - width(f, "line") / 2;
    QTEST(f.animation()->duration(), "duration");
    QCOMPARE(f.animation()->targetObject(), static_cast<QObject*>(f.text()));
    QCOMPARE(f.animation()->propertyName(), QByteArray("pos"));
    QCOMPARE(f.animation()->startValue().toPoint(), QPoint(x, 0));
    QCOMPARE(f.animation()->endValue().toPoint(), QPoint(x, 40 - lines * fontHeight));
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Running);
    QTRY_VERIFY_WITH_TIMEOUT(f.text()->y() < 0, PATIENCE_MS);
}

void ScreenStatusValuesTest::runningSwingGoesOn()
{
    StatusFixture f;
    f.text()->setFont(fontOfHeight(20));
    f.screen->setStatusText("a\nb\nc");
    f.screen->changeStatusLabelAnimationDirection();
    f.animation()->setCurrentTime(1000);
    f.screen->setStatusText("aaa\nb\nc\nd");
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Running);
    QCOMPARE(f.animation()->direction(), QAbstractAnimation::Backward);
    QVERIFY(f.animation()->currentTime() > 0 && f.animation()->currentTime() <= 1000);
    QCOMPARE(f.animation()->duration(), 4000);
    QCOMPARE(f.animation()->endValue().toPoint(), QPoint(92 - width(f, "aaa") / 2, -40));
}

void ScreenStatusValuesTest::swingTurnsRound()
{
    StatusFixture f;
    f.text()->setFont(fontOfHeight(20));
    f.screen->setStatusText("a\nb\nc");
    QCOMPARE(f.animation()->direction(), QAbstractAnimation::Forward);
    f.animation()->setCurrentTime(2000); // at the end: it turns by itself, without a pause
    QCOMPARE(f.animation()->direction(), QAbstractAnimation::Backward);
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Running);
    QCOMPARE(f.text()->y(), -20);
    f.animation()->setCurrentTime(0);
    QCOMPARE(f.animation()->direction(), QAbstractAnimation::Forward);
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Running);
    QCOMPARE(f.text()->y(), 0);
}

void ScreenStatusValuesTest::shortTextEndsTheSwing()
{
    StatusFixture f;
    f.text()->setFont(fontOfHeight(20));
    f.screen->setStatusText("a\nb\nc");
    f.screen->setStatusText("a");
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Stopped);
    QCOMPARE(f.text()->y(), 10);
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenStatusValuesTest>(argc, argv);
}

#include "screenstatus_values_test.moc"
