// The battery icon: the bar and its limits, the font of the charging mark, and the dark layer that never
// shows.
#include "screens/pictures.h"
#include "screens/windowfixture.h"

#include "common/constants.h"
#include "widgets/tbattlabel.h"

#include <QFrame>
#include <QImage>
#include <QProgressBar>

using namespace windowfixture;

namespace {

class TestBattery : public TBattLabel {
public:
    TestBattery() : TBattLabel(nullptr) { updateIcon(); }
    QLabel* top() const { return pTopLayerLabel; }
    QFrame* dark() const { return pDarkLayer; }
    QProgressBar* bar() const { return findChild<QProgressBar*>("pProgressBar"); }
};

} // namespace

class TBattLabelTest : public QObject {
    Q_OBJECT

private slots:
    void barAtStart();
    void capacity_data();
    void capacity();
    void barFillsTheOutline();
    void barShowsOnlyWhenOn();
    void neverDark();
    void chargingMarkHasItsOwnFont();
    void fontChangeKeepsTheChargingMark();
};

void TBattLabelTest::barAtStart()
{
    TestBattery battery;
    QCOMPARE(battery.getState(), INTERFACE_STATE_ON);
    QProgressBar* const bar = battery.bar();
    QCOMPARE(bar->minimum(), 0);
    QCOMPARE(bar->maximum(), 100);
    QCOMPARE(bar->value(), 50);
    QVERIFY(!bar->isTextVisible());
    QCOMPARE(bar->size(), QSize(27, 25));
    QCOMPARE(bar->pos(), QPoint(0, 0));
    QCOMPARE(bar->styleSheet(),
             QString("QProgressBar {border: 0px solid #424242;background-color: rgba(0,0,0,0);margin-left: "
                     "6px;margin-right: 0px;margin-top: 17px;margin-bottom: 0px;}QProgressBar::chunk "
                     "{background-color: #999999;margin: 0px;border: 0px solid black;}"));
    QCOMPARE(pictureOf(battery).height(), 28);
}

void TBattLabelTest::capacity_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("shown"); // 33 is what it was
    QTest::newRow("empty") << 0 << 0;
    QTest::newRow("one") << 1 << 1;
    QTest::newRow("96 shows as 96") << 96 << 96;
    QTest::newRow("97 is full") << 97 << 100;
    QTest::newRow("full") << 100 << 100;
    QTest::newRow("101 changes nothing") << 101 << 33;
    QTest::newRow("-1 changes nothing") << -1 << 33;
}

void TBattLabelTest::capacity()
{
    QFETCH(int, value);
    QFETCH(int, shown);
    TestBattery battery;
    battery.setCapacity(33);
    Messages messages;
    battery.setCapacity(value);
    QCOMPARE(battery.bar()->value(), shown);
    QCOMPARE(messages.count(
                 QString("TBattLabel::setCapacity: ERROR!!!! value=%1 is out of range (0-100)").arg(value)),
             shown == 33 ? 1 : 0);
}

// Whole pixels: the full bar, and the outline of the picture right around it.
void TBattLabelTest::barFillsTheOutline()
{
    TestBattery battery;
    QPalette blackPalette;
    blackPalette.setColor(QPalette::Window, Qt::black);
    battery.setPalette(blackPalette);
    battery.setAutoFillBackground(true);
    battery.resize(battery.sizeHint());
    battery.setCapacity(100);
    const QImage picture = battery.grab().toImage();
    QCOMPARE(picture.size(), QSize(40, 28));
    const QRgb grey = qRgb(0x99, 0x99, 0x99);
    const QRgb white = qRgb(255, 255, 255);
    for (int y = 17; y <= 24; ++y) {
        for (int x = 6; x <= 26; ++x) {
            QCOMPARE(picture.pixel(x, y), grey);
        }
        for (int x : {4, 5, 27, 28}) {
            QCOMPARE(picture.pixel(x, y), white);
        }
    }
    for (int y : {15, 16, 25, 26}) {
        QCOMPARE(picture.pixel(16, y), white);
    }
    battery.setCapacity(0);
    QCOMPARE(battery.grab().toImage().pixel(6, 20), qRgb(0, 0, 0));
}

void TBattLabelTest::barShowsOnlyWhenOn()
{
    TestBattery battery;
    QVERIFY(!battery.bar()->isHidden());
    for (int state : {-1, 0, 1, 3}) {
        battery.setState(INTERFACE_STATE_ON);
        QVERIFY(!battery.bar()->isHidden());
        battery.setState(static_cast<INTERFACE_STATE_ENUM>(state));
        QVERIFY2(battery.bar()->isHidden(), QByteArray::number(state));
        QCOMPARE(static_cast<int>(battery.getState()), state);
    }
}

void TBattLabelTest::neverDark()
{
    TestBattery battery;
    for (int state : {0, 1, 2, 3, -1}) {
        battery.setState(static_cast<INTERFACE_STATE_ENUM>(state));
        QVERIFY2(battery.dark()->isHidden(), QByteArray::number(state));
    }
}

void TBattLabelTest::chargingMarkHasItsOwnFont()
{
    TestBattery battery;
    battery.setTopLayerText(QString("1:05") + chargeChar);
    const QFont font = battery.top()->font();
    QCOMPARE(font.family(), QString("DejaVu Sans Mono"));
    QCOMPARE(font.pixelSize(), 14);
    QCOMPARE(int(font.styleStrategy()), 0x80);
    QVERIFY(!battery.top()->isHidden());
    battery.setTopLayerText("1:05");
    QCOMPARE(fontText(battery.top()->font()), fontText(*GuiApp::getFont(14, LANG_UNDEFINED)));
    battery.setTopLayerText(chargeChar);
    battery.setTopLayerText("");
    QCOMPARE(fontText(battery.top()->font()), fontText(*GuiApp::getFont(14, LANG_UNDEFINED)));
    QVERIFY(battery.top()->isHidden());
}

void TBattLabelTest::fontChangeKeepsTheChargingMark()
{
    TestBattery battery;
    battery.setTopLayerText(chargeChar);
    model()->setLanguage(LANG_CHINESE);
    battery.setFont(*GuiApp::getFont(14, LANG_CHINESE));
    QCOMPARE(battery.top()->font().family(), QString("DejaVu Sans Mono"));
    battery.setTopLayerText("1:05");
    QCOMPARE(fontText(battery.top()->font()), fontText(*GuiApp::getFont(14, LANG_CHINESE)));
    model()->setLanguage(LANG_ENGLISH);
    battery.setFont(*GuiApp::getFont(14, LANG_ENGLISH));
    QCOMPARE(fontText(battery.top()->font()), fontText(*GuiApp::getFont(14, LANG_ENGLISH)));
}

int main(int argc, char** argv)
{
    return windowfixture::run<TBattLabelTest>(argc, argv);
}

#include "tbattlabel_test.moc"
