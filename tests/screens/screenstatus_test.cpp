// The status screen: its layout, the frame on its items, and what events of Qt lead to. The values that it
// shows and its keys have tests of their own.
#include "screens/pictures.h"
#include "screens/statusfixture.h"

#include "common/constants.h"
#include "support/death.h"
#include "support/failingnew.h"

#include <QLayout>
#include <QTranslator>

using namespace windowfixture;

namespace {

const char* const ICONS[] = {"pAntennaLabel", "pConnectLabel", "pWifiLabel",    "pIsdnLabel", "pLanLabel",
                             "pPhoneLabel",   "pUsbLabel",     "pWarningLabel", "pBattLabel", "pMenuLabel"};

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
    int x = 33;
    for (const char* name :
         {"pWifiLabel", "pIsdnLabel", "pLanLabel", "pPhoneLabel", "pUsbLabel", "pWarningLabel"}) {
        const int width = x == 33 ? 32 : 30; // the first one has a number beside it
        QCOMPARE(f.icon(name)->geometry(), QRect(x, 0, width, 24));
        QCOMPARE(f.icon(name)->minimumHeight(), 24);
        QCOMPARE(f.icon(name)->maximumHeight(), 24);
        x += width;
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
                          << "wifi_enabled" << QSize(32, 24);
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
