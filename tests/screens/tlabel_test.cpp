// The icon: its pictures by state, the dark layer and its fade, the blink, the text on top, and the
// timers that stand still while it is hidden.
#include "screens/pictures.h"
#include "screens/windowfixture.h"

#include "common/constants.h"
#include "support/death.h"
#include "support/failingnew.h"
#include "support/patience.h"
#include "widgets/tlabel.h"

#include <QFontMetrics>
#include <QFrame>
#include <QHBoxLayout>
#include <QLayoutItem>
#include <QTimer>

#include <initializer_list>

using namespace windowfixture;

namespace {

const INTERFACE_STATE_ENUM ILLEGAL_STATE = static_cast<INTERFACE_STATE_ENUM>(4);

const char NOT_FOUND[] = "TLabel::updateIcon(): Pixmap not found for filename=";

// Opens what the tests look at.
class TestLabel : public TLabel {
public:
    explicit TestLabel(ICON_ID_ENUM iconId = ICON_LAN, const char* name = "lan",
                       INTERFACE_STATE_ENUM state = INTERFACE_STATE_ON)
        : TLabel(iconId, name, state, nullptr)
    {
    }
    QLabel* top() const { return pTopLayerLabel; }
    QFrame* dark() const { return pDarkLayer; }
    bool darkShown() const { return !pDarkLayer->isHidden(); }
    QTimer* activatingTimer() const { return findChild<QTimer*>("pActivatingTimer"); }
    QTimer* blinkTimer() const { return findChild<QTimer*>("pBlinkTimer"); }
};

// Counts how often a style sheet was put on a widget.
class StyleCounter : public QObject {
public:
    explicit StyleCounter(QWidget* widget) { widget->installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::StyleChange ? 1 : 0;
        return false;
    }
};

QString fade(int level)
{
    return QString("background: rgba(0,0,0,%1)").arg(level * 20 + 50);
}

} // namespace

class TLabelTest : public QObject {
    Q_OBJECT

private slots:
    void constructorLoadsNothing();
    void pictureAndDarkLayerByState_data();
    void pictureAndDarkLayerByState();
    void stateWithoutSuffixLeavesTheDarkLayer();
    void darkLayerCoversTheLabel();
    void pictureHeightByIcon_data();
    void pictureHeightByIcon();
    void missingPictureIsLoggedAndRemoved();
    void emptyNameDoesNothingAtAll();
    void setStateLogsAndKeepsAnyValue_data();
    void setStateLogsAndKeepsAnyValue();
    void setStateLoadsThePictureOnlyOnAChange();
    void statesOfChangeRunTheTimer();
    void stopOfTheTimerIsLogged();
    void fadeBouncesBetweenBothEnds();
    void fadeGoesOnAcrossStates();
    void fadeStepsByItself();
    void unchangedStyleIsNotSetAgain();
    void leftOverTimeoutStopsTheTimer();
    void timeoutWithoutATimerIsLogged();
    void blinkWithoutNamesIsLogged();
    void blinkShowsBothPictures();
    void blinkEndsWithTheFirstPicture();
    void blinkTimerIsMadeOnce();
    void hiddenLabelRunsNoTimers();
    void stoppedBlinkComesBackWhenShown();
    void shownLabelStartsTheBlinkBeforeTheFade();
    void topLayerTextStandsOnTheUpperEdge();
    void topLayerTextIsLoggedWhenItChanges();
    void emptyTopLayerTextHidesItsLayer();
    void topLayerTextWithoutAPicture();
    void pictureLowerThanTheFontKeepsTheMargins();
    void topLayerAlignment_data();
    void topLayerAlignment();
    void topLayerStylesheet();
    void fontChangeRenewsTheTextsFontAndMargin();
    void drawnLikeAnyLabel();
    void pixmapWidth();
    void stateNames();
    void withoutMemoryTheProcessEnds_data();
    void withoutMemoryTheProcessEnds();
};

void TLabelTest::constructorLoadsNothing()
{
    TestLabel label;
    QVERIFY(pictureOf(label).isNull());
    QCOMPARE(label.alignment(), Qt::Alignment(Qt::AlignTop));
    QCOMPARE(label.top()->alignment(), Qt::Alignment(Qt::AlignHCenter));
    QCOMPARE(fontText(label.top()->font()), fontText(*GuiApp::getFont(14, LANG_UNDEFINED)));
    QCOMPARE(label.dark()->styleSheet(), frameStyle);
    QVERIFY(!label.darkShown());
    QCOMPARE(label.layout()->contentsMargins(), QMargins());
    QCOMPARE(label.layout()->spacing(), 0);
    QVERIFY(!label.activatingTimer());
    QVERIFY(!label.blinkTimer());
    QCOMPARE(label.getState(), INTERFACE_STATE_ON);
}

void TLabelTest::pictureAndDarkLayerByState_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QColor>("colour");
    QTest::addColumn<bool>("dark");
    QTest::addColumn<QString>("style");
    QTest::newRow("off: disabled below alpha 150")
        << 0 << QColor(Qt::red) << true << "background: rgba(0,0,0,150)";
    QTest::newRow("activating") << 1 << QColor(Qt::green) << true << "background: rgba(0,0,0,50)";
    QTest::newRow("on") << 2 << QColor(Qt::green) << false << QString(frameStyle);
    QTest::newRow("deactivating") << 3 << QColor(Qt::red) << true << "background: rgba(0,0,0,50)";
}

void TLabelTest::pictureAndDarkLayerByState()
{
    QFETCH(int, state);
    Pictures pictures;
    pictures.add("lan_enabled", 30, 24, Qt::green);
    pictures.add("lan_disabled", 30, 24, Qt::red);
    TestLabel label(TLabel::ICON_LAN, "lan", static_cast<INTERFACE_STATE_ENUM>(state));
    label.updateIcon();
    QTEST(colourOf(label), "colour");
    QTEST(label.darkShown(), "dark");
    QTEST(label.dark()->styleSheet(), "style");
}

void TLabelTest::stateWithoutSuffixLeavesTheDarkLayer()
{
    Pictures pictures;
    pictures.add("lan", 30, 24, Qt::blue);
    pictures.add("lan_disabled", 30, 24, Qt::red);
    TestLabel label(TLabel::ICON_LAN, "lan", INTERFACE_STATE_OFF);
    label.updateIcon();
    for (INTERFACE_STATE_ENUM state : {INTERFACE_STATE_UNKNOWN, ILLEGAL_STATE}) {
        label.setState(state);
        QCOMPARE(colourOf(label), QColor(Qt::blue));
        QVERIFY(label.darkShown());
        QCOMPARE(label.dark()->styleSheet(), dimStyle);
    }
    label.dark()->hide();
    label.updateIcon();
    QVERIFY(!label.darkShown());
}

void TLabelTest::darkLayerCoversTheLabel()
{
    TestLabel label(TLabel::ICON_LAN, "lan", INTERFACE_STATE_OFF);
    label.resize(20, 10);
    label.updateIcon();
    QCOMPARE(label.dark()->geometry(), QRect(0, 0, 20, 10));
    label.resize(36, 36); // as a layout does between the construction and the first show
    label.show();
    QCOMPARE(label.dark()->geometry(), QRect(0, 0, 36, 36));
}

void TLabelTest::pictureHeightByIcon_data()
{
    QTest::addColumn<int>("iconId");
    QTest::addColumn<int>("height");
    QTest::newRow("battery") << 1 << 28;
    QTest::newRow("wifi") << 2 << 24;
    QTest::newRow("isdn") << 3 << 24;
    QTest::newRow("lan") << 4 << 24;
    QTest::newRow("phone") << 5 << 24;
    QTest::newRow("usb") << 6 << 24;
    QTest::newRow("warning, as in the file") << 7 << 10;
    QTest::newRow("antenna counts with the battery") << 8 << 28;
    QTest::newRow("text, as in the file") << 9 << 10;
    QTest::newRow("connect") << 10 << 36;
    QTest::newRow("menu") << 11 << 36;
}

void TLabelTest::pictureHeightByIcon()
{
    QFETCH(int, iconId);
    Pictures pictures;
    pictures.add("lan_enabled", 20, 10);
    TestLabel label(static_cast<TLabel::ICON_ID_ENUM>(iconId));
    label.updateIcon();
    QTEST(pictureOf(label).height(), "height");
    QCOMPARE(label.getPixmapWidth(), 2 * pictureOf(label).height()); // the shape is kept
}

void TLabelTest::missingPictureIsLoggedAndRemoved()
{
    Pictures pictures;
    pictures.add("lan_enabled", 30, 24);
    TestLabel label;
    label.updateIcon();
    QVERIFY(!pictureOf(label).isNull());
    Messages messages;
    label.setState(INTERFACE_STATE_OFF);
    QCOMPARE(messages.count(NOT_FOUND + pictures.path("lan_disabled") + ". Now removing pixmap from icon."),
             1);
    QVERIFY(pictureOf(label).isNull());
    label.setState(INTERFACE_STATE_ON); // life goes on
    QVERIFY(!pictureOf(label).isNull());
}

void TLabelTest::emptyNameDoesNothingAtAll()
{
    TestLabel label(TLabel::ICON_STATUS_TEXT, "", INTERFACE_STATE_OFF);
    Messages messages;
    label.updateIcon();
    QVERIFY(!label.darkShown());
    QCOMPARE(label.dark()->styleSheet(), frameStyle);
    label.dark()->show();
    label.setState(INTERFACE_STATE_ON);
    QVERIFY(label.darkShown());
    QCOMPARE(messages.countOfPrefix(NOT_FOUND), 0);
}

void TLabelTest::setStateLogsAndKeepsAnyValue_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("error");
    QTest::newRow("unknown") << -1 << "INTERFACE_STATE_UNKNOWN"
                             << "ScreenStatus::setState(): ERROR!!! INTERFACE_STATE_UNKNOWN!";
    QTest::newRow("off") << 0 << "INTERFACE_STATE_OFF" << QString();
    QTest::newRow("activating") << 1 << "INTERFACE_STATE_ACTIVATING" << QString();
    QTest::newRow("on") << 2 << "INTERFACE_STATE_ON" << QString();
    QTest::newRow("deactivating") << 3 << "INTERFACE_STATE_DEACTIVATING" << QString();
    QTest::newRow("illegal") << 4 << "ERROR!!! undefined m_state str"
                             << "ScreenStatus::setState(): ERROR!!! state=4 is unsupported!!!!";
}

void TLabelTest::setStateLogsAndKeepsAnyValue()
{
    QFETCH(int, state);
    QFETCH(QString, name);
    QFETCH(QString, error);
    TestLabel label;
    Messages messages;
    label.setState(static_cast<INTERFACE_STATE_ENUM>(state));
    QCOMPARE(static_cast<int>(label.getState()), state);
    QCOMPARE(label.getStateStr(), name);
    QCOMPARE(messages.count("TLabel::setState(INTERFACE_STATE_ENUM state): state=" + name), 1);
    QCOMPARE(messages.countOfPrefix("ScreenStatus::setState(): ERROR!!!"), error.isEmpty() ? 0 : 1);
    if (!error.isEmpty()) {
        QCOMPARE(messages.count(error), 1);
    }
}

void TLabelTest::setStateLoadsThePictureOnlyOnAChange()
{
    TestLabel label;
    label.setState(INTERFACE_STATE_ON); // as it was
    QVERIFY(pictureOf(label).isNull());
    label.setState(INTERFACE_STATE_OFF);
    QVERIFY(!pictureOf(label).isNull());
}

void TLabelTest::statesOfChangeRunTheTimer()
{
    TestLabel label;
    label.setState(INTERFACE_STATE_ACTIVATING);
    QTimer* const timer = label.activatingTimer();
    QVERIFY(timer);
    QCOMPARE(timer->interval(), 100);
    QVERIFY(!timer->isSingleShot());
    QVERIFY(timer->isActive());
    const int id = timer->timerId();
    label.setState(INTERFACE_STATE_DEACTIVATING); // runs already: not started anew
    QCOMPARE(label.activatingTimer(), timer);
    QCOMPARE(timer->timerId(), id);
    for (INTERFACE_STATE_ENUM state : {INTERFACE_STATE_UNKNOWN, ILLEGAL_STATE}) {
        label.setState(state); // no timer action
        QVERIFY(timer->isActive());
    }
    label.setState(INTERFACE_STATE_OFF);
    QVERIFY(!timer->isActive());
    label.setState(INTERFACE_STATE_ACTIVATING);
    QVERIFY(timer->isActive());
    label.setState(INTERFACE_STATE_ON);
    QVERIFY(!timer->isActive());
}

void TLabelTest::stopOfTheTimerIsLogged()
{
    TestLabel label;
    Messages messages;
    label.setState(INTERFACE_STATE_OFF); // there is no timer yet
    QCOMPARE(messages.countOfPrefix("TLabel::setState(): state="), 0);
    label.setState(INTERFACE_STATE_ACTIVATING);
    label.setState(INTERFACE_STATE_OFF);
    QCOMPARE(messages.count("TLabel::setState(): state=INTERFACE_STATE_OFF: Stopping timer"), 1);
    label.setState(INTERFACE_STATE_ON);
    QCOMPARE(messages.count("TLabel::setState(): state=INTERFACE_STATE_ON: Stopping timer"), 1);
}

void TLabelTest::fadeBouncesBetweenBothEnds()
{
    TestLabel label;
    label.setState(INTERFACE_STATE_ACTIVATING);
    QCOMPARE(label.dark()->styleSheet(), fade(0));
    const int levels[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0, 1, 2};
    for (int level : levels) {
        label.handleActivatingTimeout();
        QCOMPARE(label.dark()->styleSheet(), fade(level));
        QVERIFY(label.activatingTimer()->isActive());
    }
    QCOMPARE(fade(10), QString("background: rgba(0,0,0,250)")); // the darkest
    QCOMPARE(fade(0), QString("background: rgba(0,0,0,50)"));
}

void TLabelTest::fadeGoesOnAcrossStates()
{
    TestLabel label;
    label.setState(INTERFACE_STATE_ACTIVATING);
    for (int i = 0; i < 12; ++i) {
        label.handleActivatingTimeout();
    }
    QCOMPARE(label.dark()->styleSheet(), fade(8));
    label.setState(INTERFACE_STATE_ON);
    label.setState(INTERFACE_STATE_DEACTIVATING);
    QCOMPARE(label.dark()->styleSheet(), fade(8));
    label.handleActivatingTimeout();
    QCOMPARE(label.dark()->styleSheet(), fade(7)); // and still on its way down
}

void TLabelTest::fadeStepsByItself()
{
    TestLabel label;
    label.show();
    label.setState(INTERFACE_STATE_ACTIVATING);
    QTRY_COMPARE_WITH_TIMEOUT(label.dark()->styleSheet(), fade(3), PATIENCE_MS);
}

void TLabelTest::unchangedStyleIsNotSetAgain()
{
    TestLabel label(TLabel::ICON_LAN, "lan", INTERFACE_STATE_OFF);
    label.show();
    StyleCounter counter(label.dark());
    label.updateIcon();
    QCOMPARE(counter.count, 1);
    label.updateIcon();
    label.updateIcon();
    QCOMPARE(counter.count, 1);
}

void TLabelTest::leftOverTimeoutStopsTheTimer()
{
    for (INTERFACE_STATE_ENUM state : {INTERFACE_STATE_OFF, INTERFACE_STATE_ON}) {
        TestLabel label;
        label.setState(INTERFACE_STATE_ACTIVATING);
        label.setState(state);
        label.show(); // starts the timer in any state; its first timeout stops it
        QVERIFY(label.activatingTimer()->isActive());
        QTRY_VERIFY_WITH_TIMEOUT(!label.activatingTimer()->isActive(), PATIENCE_MS);
    }
}

void TLabelTest::timeoutWithoutATimerIsLogged()
{
    TestLabel label;
    label.setText("12%");
    Messages messages;
    label.handleActivatingTimeout();
    QCOMPARE(
        messages.count("TLabel::handleActivatingTimeout(): ERROR!!! pActivatingTimer has not been created "
                       "for TLabel.text=12%"),
        1);
    QVERIFY(!pictureOf(label).isNull()); // the picture was updated all the same
}

void TLabelTest::blinkWithoutNamesIsLogged()
{
    TestLabel label;
    for (bool blinking : {true, false}) {
        Messages messages;
        label.setBlinking(blinking);
        QCOMPARE(messages.count("TLabel::setBlinking(): Warning!!!! setBlinkIconNames() must be run first!"),
                 1);
        QVERIFY(!label.blinkTimer());
        QVERIFY(pictureOf(label).isNull());
    }
}

void TLabelTest::blinkShowsBothPictures()
{
    Pictures pictures;
    pictures.add("one_enabled", 24, 24, Qt::green);
    pictures.add("two_enabled", 24, 24, Qt::red);
    TestLabel label(TLabel::ICON_WARNING, "none");
    label.setBlinkIconNames("one", "two");
    QVERIFY(!label.blinkTimer()->isActive());
    label.setBlinking(true);
    QVERIFY(label.blinkTimer()->isActive());
    QCOMPARE(label.blinkTimer()->interval(), 500);
    QVERIFY(pictureOf(label).isNull()); // the first picture comes with the first timeout
    label.handleBlinkTimeout();
    QCOMPARE(colourOf(label), QColor(Qt::red));
    label.handleBlinkTimeout();
    QCOMPARE(colourOf(label), QColor(Qt::green));
    QVERIFY(label.blinkTimer()->isActive());
    QTRY_COMPARE_WITH_TIMEOUT(colourOf(label), QColor(Qt::red), PATIENCE_MS); // by itself
}

void TLabelTest::blinkEndsWithTheFirstPicture()
{
    Pictures pictures;
    pictures.add("one_enabled", 24, 24, Qt::green);
    pictures.add("two_enabled", 24, 24, Qt::red);
    TestLabel label(TLabel::ICON_WARNING, "none");
    label.setBlinkIconNames("one", "two");
    label.setBlinking(true);
    label.handleBlinkTimeout();
    QCOMPARE(colourOf(label), QColor(Qt::red));
    label.setBlinking(false);
    QVERIFY(!label.blinkTimer()->isActive());
    QCOMPARE(colourOf(label), QColor(Qt::green));
}

void TLabelTest::blinkTimerIsMadeOnce()
{
    TestLabel label(TLabel::ICON_WARNING, "warning");
    label.setBlinkIconNames("warning", "warning_no_sign");
    QTimer* const timer = label.blinkTimer();
    label.setBlinkIconNames("lan", "usb");
    QCOMPARE(label.blinkTimer(), timer);
    QCOMPARE(label.findChildren<QTimer*>().size(), 1);
}

void TLabelTest::hiddenLabelRunsNoTimers()
{
    TestLabel label(TLabel::ICON_WARNING, "warning");
    label.setBlinkIconNames("warning", "warning_no_sign");
    label.show();
    label.setBlinking(true);
    label.setState(INTERFACE_STATE_ACTIVATING);
    label.hide();
    QVERIFY(!label.blinkTimer()->isActive());
    QVERIFY(!label.activatingTimer()->isActive());
    TestLabel without; // one without timers hides and shows, too
    without.show();
    without.hide();
    QVERIFY(without.findChildren<QTimer*>().isEmpty());
}

void TLabelTest::stoppedBlinkComesBackWhenShown()
{
    TestLabel label(TLabel::ICON_WARNING, "warning");
    label.setBlinkIconNames("warning", "warning_no_sign");
    label.setBlinking(false);
    label.show();
    QVERIFY(label.blinkTimer()->isActive());
    QCOMPARE(label.blinkTimer()->interval(), 500);
}

void TLabelTest::shownLabelStartsTheBlinkBeforeTheFade()
{
    TestLabel label(TLabel::ICON_WARNING, "warning");
    label.setState(INTERFACE_STATE_ACTIVATING);
    label.show();
    label.hide();
    label.show();
    QVERIFY(label.activatingTimer()->isActive());
    QCOMPARE(label.activatingTimer()->interval(), 100);
    label.hide();
    label.setBlinkIconNames("warning", "warning_no_sign");
    label.show(); // one of the two, the blink first
    QVERIFY(label.blinkTimer()->isActive());
    QVERIFY(!label.activatingTimer()->isActive());
}

void TLabelTest::topLayerTextStandsOnTheUpperEdge()
{
    TestLabel label;
    label.updateIcon();
    label.setTopLayerText("7");
    QCOMPARE(label.top()->text(), QString("7"));
    QVERIFY(!label.top()->isHidden());
    const int fontHeight = QFontMetrics(label.top()->font()).height();
    QCOMPARE(label.layout()->contentsMargins(), QMargins(0, 0, 0, 24 - fontHeight));
    label.resize(30, 24);
    label.show();
    QCOMPARE(label.top()->geometry().top(), 0);
    QCOMPARE(label.top()->height(), fontHeight);
}

void TLabelTest::topLayerTextIsLoggedWhenItChanges()
{
    TestLabel label;
    label.updateIcon();
    Messages messages;
    const QString line = "TLabel::setTopLayerText(): topLayerText=7 for m_iconName=lan";
    label.setTopLayerText("7");
    QCOMPARE(messages.count(line), 1);
    label.setTopLayerText("7");
    QCOMPARE(messages.count(line), 1);
}

void TLabelTest::emptyTopLayerTextHidesItsLayer()
{
    TestLabel label;
    Messages messages;
    label.setTopLayerText("");
    QVERIFY(label.top()->isHidden());
    QCOMPARE(label.layout()->contentsMargins(), QMargins());
    QVERIFY(messages.texts().isEmpty()); // the missing picture isn't looked for
}

void TLabelTest::topLayerTextWithoutAPicture()
{
    TestLabel label;
    Messages messages;
    label.setTopLayerText("7");
    QCOMPARE(
        messages.count("TLabel::setTopLayerText(): ERROR !!!! Pixmap not set for TLabel with m_iconId=4, "
                       "m_iconName=lan"),
        1);
    QCOMPARE(label.layout()->contentsMargins().bottom(), 24 - QFontMetrics(label.top()->font()).height());
    QVERIFY(!label.top()->isHidden());
}

void TLabelTest::pictureLowerThanTheFontKeepsTheMargins()
{
    Pictures pictures;
    pictures.add("warning_enabled", 24, 30);
    pictures.add("warning_disabled", 24, 8);
    TestLabel label(TLabel::ICON_WARNING, "warning");
    label.updateIcon();
    label.setTopLayerText("7");
    const QMargins before = label.layout()->contentsMargins();
    QVERIFY(before.bottom() > 0);
    label.setState(INTERFACE_STATE_OFF);
    Messages messages;
    label.setTopLayerText("8");
    QCOMPARE(messages.count("TLabel::setTopLayerText(): ERROR! Illegal bottom margin."), 1);
    QCOMPARE(label.layout()->contentsMargins(), before);
    QVERIFY(!label.top()->isHidden());
}

void TLabelTest::topLayerAlignment_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<QString>("row"); // s: a stretch, L: the label
    QTest::addColumn<int>("textAlignment");
    const int centre = Qt::AlignHCenter;
    QTest::newRow("centre") << centre << "sLs" << int(Qt::AlignCenter);
    QTest::newRow("right") << int(Qt::AlignRight) << "sL" << centre;
    QTest::newRow("left") << int(Qt::AlignLeft) << "Ls" << centre;
    QTest::newRow("any other") << int(Qt::AlignTop) << "L" << centre;
    QTest::newRow("two at once") << int(Qt::AlignLeft | Qt::AlignTop) << "L" << centre;
}

void TLabelTest::topLayerAlignment()
{
    QFETCH(int, alignment);
    TestLabel label;
    label.setTopLayerTextAlignment(Qt::AlignHCenter); // items of before go away
    label.setTopLayerTextAlignment(Qt::Alignment(alignment));
    QString row;
    for (int i = 0; i < label.layout()->count(); ++i) {
        QLayoutItem* const item = label.layout()->itemAt(i);
        row += item->widget() == label.top() ? "L" : item->spacerItem() ? "s" : "?";
    }
    QTEST(row, "row");
    QTEST(int(label.top()->alignment()), "textAlignment");
}

void TLabelTest::topLayerStylesheet()
{
    TestLabel label;
    label.setTopLayerStylesheet(labelOverlayStyle);
    QCOMPARE(label.top()->styleSheet(), labelOverlayStyle);
    QCOMPARE(label.styleSheet(), QString());
}

void TLabelTest::fontChangeRenewsTheTextsFontAndMargin()
{
    TestLabel label;
    label.updateIcon();
    label.setTopLayerText("7");
    label.top()->setFont(*GuiApp::getFont(18, LANG_ENGLISH)); // 21 pixels high
    label.setTopLayerText("7");
    QCOMPARE(label.layout()->contentsMargins().bottom(), 24 - QFontMetrics(label.top()->font()).height());
    const int before = label.layout()->contentsMargins().bottom();
    model()->setLanguage(LANG_JAPANESE);
    label.setFont(*GuiApp::getFont(14, LANG_JAPANESE));
    QCOMPARE(fontText(label.top()->font()), fontText(*GuiApp::getFont(14, LANG_JAPANESE)));
    QCOMPARE(label.layout()->contentsMargins().bottom(), 24 - QFontMetrics(label.top()->font()).height());
    QVERIFY(label.layout()->contentsMargins().bottom() != before);
    model()->setLanguage(LANG_ENGLISH);
}

// The icon draws its picture by itself.
void TLabelTest::drawnLikeAnyLabel()
{
    for (const QSize& size : {QSize(30, 24), QSize(36, 36), QSize(20, 10)}) {
        TestLabel label;
        label.updateIcon();
        label.resize(size);
        QLabel plain;
        plain.setAlignment(Qt::AlignTop);
        plain.setPixmap(qtcompat::labelPixmap(&label));
        plain.resize(size);
        QCOMPARE(label.grab().toImage(), plain.grab().toImage());
    }
    TestLabel text(TLabel::ICON_STATUS_TEXT, "");
    text.setText("Ready");
    text.resize(60, 20);
    QLabel plain("Ready");
    plain.setAlignment(Qt::AlignTop);
    plain.resize(60, 20);
    QCOMPARE(text.grab().toImage(), plain.grab().toImage());
}

void TLabelTest::pixmapWidth()
{
    Pictures pictures;
    pictures.add("warning_enabled", 17, 24);
    TestLabel label(TLabel::ICON_WARNING, "warning");
    QCOMPARE(label.getPixmapWidth(), 0);
    label.updateIcon();
    QCOMPARE(label.getPixmapWidth(), 17);
}

void TLabelTest::stateNames()
{
    const char* const names[] = {"INTERFACE_STATE_UNKNOWN", "INTERFACE_STATE_OFF",
                                 "INTERFACE_STATE_ACTIVATING", "INTERFACE_STATE_ON",
                                 "INTERFACE_STATE_DEACTIVATING"};
    for (int state = -1; state <= 3; ++state) {
        TestLabel label(TLabel::ICON_LAN, "lan", static_cast<INTERFACE_STATE_ENUM>(state));
        QCOMPARE(label.getStateStr(), QString(names[state + 1]));
    }
    TestLabel label(TLabel::ICON_LAN, "lan", ILLEGAL_STATE);
    QCOMPARE(label.getStateStr(), QString("ERROR!!! undefined m_state str"));
}

void TLabelTest::withoutMemoryTheProcessEnds_data()
{
    QTest::addColumn<int>("granted");
    for (int granted = 0; granted < 5; ++granted) {
        const char* const parts[] = {"layout", "text", "dark layer", "blink", "fade"};
        QTest::newRow(parts[granted]) << granted;
    }
}

void TLabelTest::withoutMemoryTheProcessEnds()
{
    QFETCH(int, granted);
    const Death death = deathOf([granted] {
        grantedAllocations = granted;
        TestLabel label;
        label.setBlinkIconNames("warning", "warning_no_sign");
        label.setState(INTERFACE_STATE_ACTIVATING);
    });
    QVERIFY(death.status != 111);
    QVERIFY2(death.output.find("<1> gui: *** ASSERT in tlabel at ") != std::string::npos,
             death.output.c_str());
}

int main(int argc, char** argv)
{
    return windowfixture::run<TLabelTest>(argc, argv);
}

#include "tlabel_test.moc"
