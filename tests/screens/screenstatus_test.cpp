// The status screen: its layout, every value that it shows, the status text with its swing, and the frame
// on its items. The keys have a test of their own.
#include "screens/pictures.h"
#include "screens/statusfixture.h"

#include "common/constants.h"
#include "support/death.h"
#include "support/failingnew.h"
#include "support/modelaccess.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLayout>
#include <QProgressBar>
#include <QTimer>
#include <QTranslator>

using namespace windowfixture;

namespace {

const char* const ICONS[] = {"pAntennaLabel", "pConnectLabel", "pWifiLabel",    "pIsdnLabel", "pLanLabel",
                             "pPhoneLabel",   "pUsbLabel",     "pWarningLabel", "pBattLabel", "pMenuLabel"};

// A font whose lines are this high.
QFont fontOfHeight(int height)
{
    for (const char* family : {"DejaVu Sans", "New Century Schoolbook"}) {
        QFont font(family);
        for (int size = 4; size < 40; ++size) {
            font.setPixelSize(size);
            if (QFontMetrics(font).height() == height) {
                return font;
            }
        }
    }
    qFatal("no font of height %d", height);
}

int lineHeight(const StatusFixture& f)
{
    return QFontMetrics(f.text()->font()).height();
}

int width(const StatusFixture& f, const QString& text)
{
    return qtcompat::textWidth(QFontMetrics(f.text()->font()), text);
}

// Answers each text with itself in brackets.
class Brackets : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* text, const char*, int) const override
    {
        return QString("[%1]").arg(text);
    }
};

} // namespace

class ScreenStatusTest : public QObject {
    Q_OBJECT

private slots:
    void init() { resetStatus(); }

    // Layout
    void columnsAndRows();
    void nothingLeavesThePanelOrOverlaps_data();
    void nothingLeavesThePanelOrOverlaps();
    void layoutsHaveNoSpace();
    void iconsHaveTheirPictures_data();
    void iconsHaveTheirPictures();
    void topLayersHaveTheirPlaceAndStyle();
    void startsOnTheStatusTextWithTheFocus();

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

    // Frame
    void frameTakesTheItemsPlace_data();
    void frameTakesTheItemsPlace();
    void frameAroundAQuestion();
    void frameHidesForOtherTextsAndComesBack();
    void noItemForNoPlace();
    void frameIsRightAfterTheFirstShow();

    // Events
    void languageChangeRenewsTheTexts();
    void fontChangeReachesTheModel();
    void otherChangesAreLeftOut();
    void withoutMemoryTheProcessEnds();
};

// --- Layout ------------------------------------------------------------------------------------------------

void ScreenStatusTest::columnsAndRows()
{
    StatusFixture f;
    model()->setWarningsPresent(true);
    f.window.show();
    QCOMPARE(f.icon("pAntennaLabel")->geometry(), QRect(0, 0, 32, 28));
    QCOMPARE(f.icon("pConnectLabel")->geometry(), QRect(0, 28, 32, 36));
    QCOMPARE(f.icon("pBattLabel")->geometry(), QRect(216, 0, 40, 28));
    QCOMPARE(f.icon("pMenuLabel")->geometry(), QRect(216, 28, 40, 36));
    QCOMPARE(f.textFrame()->geometry(), QRect(32, 24, 184, 40));
    QCOMPARE(f.text()->parentWidget(), f.textFrame());
    int x = 34;
    for (const char* name :
         {"pWifiLabel", "pIsdnLabel", "pLanLabel", "pPhoneLabel", "pUsbLabel", "pWarningLabel"}) {
        QCOMPARE(f.icon(name)->geometry(), QRect(x, 0, 30, 24));
        QCOMPARE(f.icon(name)->minimumHeight(), 24);
        QCOMPARE(f.icon(name)->maximumHeight(), 24);
        x += 30;
    }
}

void ScreenStatusTest::nothingLeavesThePanelOrOverlaps_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("warnings");
    QTest::addColumn<bool>("full");
    QTest::addColumn<int>("language"); // one for each family of fonts
    for (int state = 0; state <= 3; ++state) {
        for (bool warnings : {false, true}) {
            for (bool full : {false, true}) {
                for (LANG_ENUM language : {LANG_ENGLISH, LANG_RUSSIAN}) {
                    QTest::newRow(qPrintable(QString("state %1, warnings %2, numbers %3, language %4")
                                                 .arg(state)
                                                 .arg(warnings)
                                                 .arg(full ? "large" : "none")
                                                 .arg(language)))
                        << state << warnings << full << int(language);
                }
            }
        }
    }
}

void ScreenStatusTest::nothingLeavesThePanelOrOverlaps()
{
    QFETCH(int, state);
    QFETCH(bool, warnings);
    QFETCH(bool, full);
    QFETCH(int, language);
    StatusFixture f;
    model()->setLanguage(static_cast<LANG_ENUM>(language));
    f.window.show();
    model()->setWarningsPresent(warnings);
    for (int interface = 1; interface <= 5; ++interface) {
        model()->setInterfaceState(static_cast<INTERFACE_NAME_ENUM>(interface),
                                   static_cast<INTERFACE_STATE_ENUM>(state));
    }
    if (full) {
        model()->setWifiNumberOfClients(99);
        model()->setSignalLevel(888);
        battery_t internal;
        internal.batteryConnectionStatus = BATT_PRESENT;
        internal.minutesLeft = 99 * 60 + 59;
        internal.capacity = 100;
        model()->setBattData(internal, battery_t());
        f.icon("pConnectLabel")->setTopLayerText("11");
    }
    QTest::qWait(1); // the layout is done in the event loop
    const QRect panel(0, 0, 256, 64);
    QList<QWidget*> shown;
    for (const char* name : ICONS) {
        if (!f.icon(name)->isHidden()) {
            shown.append(f.icon(name));
        }
    }
    shown.append(f.textFrame());
    QCOMPARE(shown.size(), warnings ? 11 : 10);
    for (int i = 0; i < shown.size(); ++i) {
        QVERIFY2(panel.contains(shown.at(i)->geometry()), qPrintable(shown.at(i)->objectName()));
        for (int j = 0; j < i; ++j) {
            QVERIFY2(!shown.at(i)->geometry().intersects(shown.at(j)->geometry()),
                     qPrintable(shown.at(i)->objectName() + " over " + shown.at(j)->objectName()));
        }
        // No text is cut by its icon.
        const QLabel* const top = shown.at(i)->findChild<QLabel*>("pTopLayerLabel");
        if (top && !top->isHidden()) {
            QVERIFY2(shown.at(i)->rect().contains(top->geometry()), qPrintable(shown.at(i)->objectName()));
            QVERIFY2(top->width() >= qtcompat::textWidth(QFontMetrics(top->font()), top->text()),
                     qPrintable(shown.at(i)->objectName()));
        }
    }
}

void ScreenStatusTest::layoutsHaveNoSpace()
{
    StatusFixture f;
    int layouts = 0;
    for (const QLayout* layout : f.screen->findChildren<QLayout*>()) {
        if (layout->parent() == f.screen || layout->parent()->inherits("QLayout")) {
            QCOMPARE(layout->contentsMargins(), QMargins());
            QCOMPARE(layout->spacing(), 0);
            ++layouts;
        }
    }
    QCOMPARE(layouts, 5);
}

void ScreenStatusTest::iconsHaveTheirPictures_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("picture");
    QTest::addColumn<QSize>("size");
    QTest::newRow("antenna") << "pAntennaLabel"
                             << "antenna_0" << QSize(32, 28);
    QTest::newRow("connect") << "pConnectLabel"
                             << "connect_enabled" << QSize(32, 36);
    QTest::newRow("wifi") << "pWifiLabel"
                          << "wifi_enabled" << QSize(30, 24);
    QTest::newRow("isdn") << "pIsdnLabel"
                          << "isdn_enabled" << QSize(30, 24);
    QTest::newRow("lan") << "pLanLabel"
                         << "lan_enabled" << QSize(30, 24);
    QTest::newRow("phone") << "pPhoneLabel"
                           << "phone_enabled" << QSize(30, 24);
    QTest::newRow("usb") << "pUsbLabel"
                         << "usb_enabled" << QSize(30, 24);
    QTest::newRow("warning") << "pWarningLabel"
                             << "warning_enabled" << QSize(30, 24);
    QTest::newRow("battery") << "pBattLabel"
                             << "battery_disabled" << QSize(40, 28);
    QTest::newRow("menu") << "pMenuLabel"
                          << "menu_enabled" << QSize(40, 36);
}

// As they are in the file: no scaling, which would smear them.
void ScreenStatusTest::iconsHaveTheirPictures()
{
    QFETCH(QString, label);
    QFETCH(QString, picture);
    StatusFixture f;
    const QImage file(GuiApp::getResourcePath() + "/" + picture + ".png");
    QTEST(file.size(), "size");
    QCOMPARE(pictureOf(*f.icon(qPrintable(label))), file.convertToFormat(QImage::Format_ARGB32));
    if (!picture.startsWith("antenna")) {
        picture.replace(picture.endsWith("_enabled") ? "_enabled" : "_disabled",
                        picture.endsWith("_enabled") ? "_disabled" : "_enabled");
        const QImage other(GuiApp::getResourcePath() + "/" + picture + ".png");
        QTEST(other.size(), "size"); // nothing moves when the state changes
        QVERIFY(other != file);
    }
}

void ScreenStatusTest::topLayersHaveTheirPlaceAndStyle()
{
    StatusFixture f;
    const auto place = [&f](const char* name) {
        const QLayout* const layout = f.icon(name)->layout();
        QString row;
        for (int i = 0; i < layout->count(); ++i) {
            row += layout->itemAt(i)->widget() ? "L" : "s";
        }
        return row;
    };
    QCOMPARE(place("pAntennaLabel"), QString("Ls"));
    QCOMPARE(place("pConnectLabel"), QString("sL"));
    QCOMPARE(place("pWifiLabel"), QString("sL"));
    QCOMPARE(f.top("pConnectLabel")->styleSheet(), labelOverlayStyle);
    QCOMPARE(f.top("pWifiLabel")->styleSheet(), labelOverlayStyle);
    QCOMPARE(f.top("pAntennaLabel")->styleSheet(), QString());
    QCOMPARE(f.frame()->styleSheet(), QString("border: 2px solid white; border-radius: 6px"));
    QCOMPARE(int(f.text()->alignment()), 2);
    QCOMPARE(f.textFrame()->size(), QSize(184, 40));
}

void ScreenStatusTest::startsOnTheStatusTextWithTheFocus()
{
    Messages messages;
    StatusFixture f;
    QCOMPARE(messages.count("ScreenStatus::ScreenStatus(): Contructor: setting focus to itself."), 1);
    QCOMPARE(f.screen->getFocusState(), ScreenStatus::FOCUS_STATUS_LABEL);
    QVERIFY(!f.frameShown()); // "Initializing" is no question
    f.window.show();
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(f.screen));
}

// --- Values ------------------------------------------------------------------------------------------------

void ScreenStatusTest::antennaText_data()
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

void ScreenStatusTest::antennaText()
{
    QFETCH(int, level);
    StatusFixture f;
    model()->setSignalLevel(level);
    QTEST(f.topText("pAntennaLabel"), "text");
}

void ScreenStatusTest::antennaTextFollowsTheBeam_data()
{
    QTest::addColumn<int>("beam");
    QTest::addColumn<QString>("text");
    QTest::newRow("unknown") << 0 << "46";
    QTest::newRow("global") << 1 << "G46";
    QTest::newRow("regional") << 2 << "R46";
    QTest::newRow("narrow") << 3 << "N46";
    QTest::newRow("no such beam") << 4 << "46";
}

void ScreenStatusTest::antennaTextFollowsTheBeam()
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

void ScreenStatusTest::antennaIconFollowsTheBars()
{
    StatusFixture f;
    for (int bars : {4, 1, 0}) {
        model()->setSignalLevelIcon(bars);
        const QImage file(GuiApp::getResourcePath() + QString("/antenna_%1.png").arg(bars));
        QCOMPARE(pictureOf(*f.icon("pAntennaLabel")), file.convertToFormat(QImage::Format_ARGB32));
    }
}

void ScreenStatusTest::numberOfConnections()
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

void ScreenStatusTest::connectIcon_data()
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

void ScreenStatusTest::connectIcon()
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

void ScreenStatusTest::lostConnectTakesTheFocus()
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

void ScreenStatusTest::wifiClients()
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

void ScreenStatusTest::interfaceStates_data()
{
    QTest::addColumn<int>("interface");
    QTest::addColumn<QString>("label");
    QTest::newRow("Wi-Fi") << 1 << "pWifiLabel";
    QTest::newRow("ISDN") << 2 << "pIsdnLabel";
    QTest::newRow("LAN") << 3 << "pLanLabel";
    QTest::newRow("phone") << 4 << "pPhoneLabel";
    QTest::newRow("USB") << 5 << "pUsbLabel";
}

void ScreenStatusTest::interfaceStates()
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

void ScreenStatusTest::unknownInterfaceIsLogged()
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

void ScreenStatusTest::battery()
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

void ScreenStatusTest::warningsBlinkAndKeepTheRowInPlace()
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
    QTRY_COMPARE(f.icon("pWarningLabel")->geometry(), QRect(184, 0, 30, 24));
    QCOMPARE(f.icon("pWifiLabel")->geometry(), before);
    const QImage sign(GuiApp::getResourcePath() + "/warning_enabled.png");
    const QImage noSign(GuiApp::getResourcePath() + "/warning_no_sign_enabled.png");
    QTRY_COMPARE(pictureOf(*f.icon("pWarningLabel")), noSign.convertToFormat(QImage::Format_ARGB32));
    model()->setWarningsPresent(false);
    QVERIFY(f.icon("pWarningLabel")->isHidden());
    QVERIFY(!timer->isActive());
    QCOMPARE(pictureOf(*f.icon("pWarningLabel")), sign.convertToFormat(QImage::Format_ARGB32));
    QTest::qWait(1);
    QCOMPARE(f.icon("pWifiLabel")->geometry(), before);
}

void ScreenStatusTest::endOfWarningsTakesTheFocus()
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

void ScreenStatusTest::signalLeadsToTheStatusText_data()
{
    QTest::addColumn<QByteArray>("signal");
    for (const char* signal :
         {"numberOfConnectionsChanged", "controlledByATCommandsChanged", "bondingStateChanged",
          "statusChanged", "updateElapsedTimeAndBackgroundDataSignal"}) {
        QTest::newRow(signal) << QByteArray(signal);
    }
}

void ScreenStatusTest::signalLeadsToTheStatusText()
{
    QFETCH(QByteArray, signal);
    StatusFixture f;
    f.screen->setStatusText("something old");
    QVERIFY(QMetaObject::invokeMethod(model(), signal.constData(), Qt::DirectConnection));
    QCOMPARE(f.text()->text(), QString("Initializing"));
}

void ScreenStatusTest::constructorFillsTheScreen()
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

void ScreenStatusTest::textIsCentred_data()
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

void ScreenStatusTest::textIsCentred()
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

void ScreenStatusTest::twoLinesOf20StayStill()
{
    StatusFixture f;
    f.text()->setFont(fontOfHeight(20));
    f.screen->setStatusText("one\ntwo");
    QCOMPARE(f.text()->height(), 40);
    QCOMPARE(f.text()->y(), 0);
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Stopped);
}

void ScreenStatusTest::swing_data()
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

void ScreenStatusTest::swing()
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
    QTRY_VERIFY(f.text()->y() < 0);
}

void ScreenStatusTest::runningSwingGoesOn()
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

void ScreenStatusTest::swingTurnsRound()
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

void ScreenStatusTest::shortTextEndsTheSwing()
{
    StatusFixture f;
    f.text()->setFont(fontOfHeight(20));
    f.screen->setStatusText("a\nb\nc");
    f.screen->setStatusText("a");
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Stopped);
    QCOMPARE(f.text()->y(), 10);
}

// --- Frame -------------------------------------------------------------------------------------------------

void ScreenStatusTest::frameTakesTheItemsPlace_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<QString>("item");
    QTest::newRow("connect") << 2 << "pConnectLabel";
    QTest::newRow("antenna") << 3 << "pAntennaLabel";
    QTest::newRow("wifi") << 4 << "pWifiLabel";
    QTest::newRow("isdn") << 5 << "pIsdnLabel";
    QTest::newRow("lan") << 6 << "pLanLabel";
    QTest::newRow("phone") << 7 << "pPhoneLabel";
    QTest::newRow("usb") << 8 << "pUsbLabel";
    QTest::newRow("warning") << 9 << "pWarningLabel";
    QTest::newRow("battery") << 10 << "pBattLabel";
    QTest::newRow("menu") << 11 << "pMenuLabel";
}

void ScreenStatusTest::frameTakesTheItemsPlace()
{
    QFETCH(int, place);
    QFETCH(QString, item);
    StatusFixture f;
    f.window.show();
    model()->setWarningsPresent(true);
    QTest::qWait(1);
    const ScreenStatus::FOCUS_STATE_ENUM state = static_cast<ScreenStatus::FOCUS_STATE_ENUM>(place);
    f.screen->setFocusFrame(state);
    QCOMPARE(f.screen->getFocusItem(state), f.icon(qPrintable(item)));
    QVERIFY(f.frameShown());
    QCOMPARE(f.frame()->geometry(), f.icon(qPrintable(item))->geometry());
    // Above the icon, white, with its corners cut.
    const QImage picture = f.screen->grab().toImage();
    const QRect frame = f.frame()->geometry();
    QCOMPARE(picture.pixel(frame.center().x(), frame.top()), qRgb(255, 255, 255));
    QCOMPARE(picture.pixel(frame.left(), frame.center().y()), qRgb(255, 255, 255));
    QVERIFY(picture.pixel(frame.topLeft()) != qRgb(255, 255, 255));
}

void ScreenStatusTest::frameAroundAQuestion()
{
    StatusFixture f;
    f.window.show();
    f.screen->setStatusText("Point now?");
    f.screen->setFocusFrame(ScreenStatus::FOCUS_STATUS_LABEL);
    QVERIFY(f.frameShown());
    const int w = width(f, "Point now?");
    const int h = lineHeight(f);
    QCOMPARE(f.frame()->geometry(), QRect(32 + 92 - w / 2 - 4, 24 + 20 - h / 2 - 4, w + 8, h + 8));
}

void ScreenStatusTest::frameHidesForOtherTextsAndComesBack()
{
    StatusFixture f;
    f.screen->setStatusText("Enter PIN?");
    QVERIFY(f.frameShown());
    f.screen->setStatusText("Searching");
    QVERIFY(!f.frameShown());
    QCOMPARE(f.screen->getFocusState(), ScreenStatus::FOCUS_STATUS_LABEL);
    f.screen->setStatusText("Point now?");
    QVERIFY(f.frameShown());
    f.screen->setFocusFrame(ScreenStatus::FOCUS_LAN); // no matter on another place
    f.screen->setStatusText("Searching");
    QVERIFY(f.frameShown());
}

void ScreenStatusTest::noItemForNoPlace()
{
    StatusFixture f;
    for (int state : {0, 12, 15}) {
        f.screen->setFocusFrame(ScreenStatus::FOCUS_MENU);
        Messages messages;
        f.screen->setFocusFrame(static_cast<ScreenStatus::FOCUS_STATE_ENUM>(state));
        QVERIFY(!f.frameShown());
        QCOMPARE(messages.count(QString("ScreenStatus::getFocusItem: ERROR: no legal state=%1").arg(state)),
                 1);
        QVERIFY(!f.screen->getFocusItem(static_cast<ScreenStatus::FOCUS_STATE_ENUM>(state)));
    }
}

// Before the layout the geometries are nobody's.
void ScreenStatusTest::frameIsRightAfterTheFirstShow()
{
    StatusFixture f;
    f.screen->setFocusFrame(ScreenStatus::FOCUS_MENU);
    f.frame()->setGeometry(1, 1, 2, 2);
    f.window.show();
    QCOMPARE(f.frame()->geometry(), QRect(216, 28, 40, 36));
}

// --- Events ------------------------------------------------------------------------------------------------

void ScreenStatusTest::languageChangeRenewsTheTexts()
{
    StatusFixture f;
    model()->setSignalLevel(456);
    Access::iai2BeamType() = IAI2_BEAM_TYPE_REGIONAL;
    f.screen->setStatusText("old");
    Brackets brackets;
    Messages messages;
    QCoreApplication::installTranslator(&brackets);
    model()->updateTranslatedStatusTexts();
    QEvent event(QEvent::LanguageChange);
    QCoreApplication::sendEvent(f.screen, &event);
    QCOMPARE(f.text()->text(), QString("[Initializing]"));
    QCOMPARE(f.topText("pAntennaLabel"), QString("[R]46"));
    QCOMPARE(messages.countOfPrefix("Screen::changeEvent("), 0); // the base class isn't asked
    QCoreApplication::removeTranslator(&brackets);
    Access::iai2BeamType() = IAI2_BEAM_TYPE_UNDEFINED;
}

void ScreenStatusTest::fontChangeReachesTheModel()
{
    StatusFixture f;
    f.screen->setStatusText("old");
    Messages messages;
    static_cast<GuiApp*>(qApp)->useFont(LANG_JAPANESE);
    QCOMPARE(fontText(f.text()->font()), fontText(*GuiApp::getFont(14, LANG_JAPANESE)));
    QCOMPARE(fontText(Access::statusLabelFont()), fontText(f.text()->font()));
    QCOMPARE(f.text()->text(), QString("Initializing"));
    QCOMPARE(f.text()->width(), width(f, "Initializing"));
    QVERIFY(
        !messages.texts().contains("Screen::changeEvent(QEvent *pEvent): QEvent::FontChange. Nothing to do "
                                   "here.") ||
        messages.countOfPrefix("ScreenStatus::changeEvent()") == 0);
    static_cast<GuiApp*>(qApp)->useFont(LANG_ENGLISH);
    QCOMPARE(fontText(Access::statusLabelFont()), fontText(*GuiApp::getFont(14, LANG_ENGLISH)));
}

void ScreenStatusTest::otherChangesAreLeftOut()
{
    StatusFixture f;
    f.screen->setStatusText("old");
    Messages messages;
    QEvent event(QEvent::PaletteChange);
    QCoreApplication::sendEvent(f.screen, &event);
    QCOMPARE(f.text()->text(), QString("old"));
    QVERIFY(messages.texts().isEmpty());
}

void ScreenStatusTest::withoutMemoryTheProcessEnds()
{
    StatusFixture f;
    Window* const window = &f.window;
    int deaths = 0;
    for (;; ++deaths) {
        const Death death = deathOf([window, deaths] {
            grantedAllocations = deaths;
            ScreenStatus screen(window);
        });
        if (death.status == 111) {
            break; // as many as it needs
        }
        QVERIFY2(death.output.find("<1> gui: *** ASSERT in ") != std::string::npos, death.output.c_str());
        QVERIFY2(death.output.find("in screenstatus at ") != std::string::npos ||
                     death.output.find("in tlabel at ") != std::string::npos ||
                     death.output.find("in tbattlabel at ") != std::string::npos,
                 death.output.c_str());
    }
    // Eleven labels with three parts each, the bar, the blink, five layouts, the spacer, two frames and the
    // animation.
    QCOMPARE(deaths, 11 * 4 + 1 + 1 + 5 + 1 + 2 + 1);
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenStatusTest>(argc, argv);
}

#include "screenstatus_test.moc"
