// The tree list and its rows: ids and values of a row, the keys, what goes on to the screen around the
// list, and how the rows look on black.
#include "screens/windowfixture.h"

#include "common/qtcompat.h"
#include "screens/screen.h"
#include "widgets/ttreewidget.h"

#include "support/patience.h"

#include <QImage>
#include <QKeyEvent>
#include <QSet>
#include <QVBoxLayout>
#include <QtTest>

using namespace windowfixture;

namespace {

const long long START_OF_2013 = 1356998400000LL;

TTreeWidgetItem* addTop(TTreeWidget* tree, WIDGET_ITEM_ID_ENUM id, const char* text)
{
    return new TTreeWidgetItem(tree, id, text);
}

TTreeWidgetItem* addChild(TTreeWidgetItem* parent, WIDGET_ITEM_ID_ENUM id, const char* text)
{
    return new TTreeWidgetItem(parent, id, text, 0, 0, 0);
}

// A screen around a list, as the menu is one, that notes which keys come to it.
class ListScreen : public Screen {
public:
    ListScreen() : Screen(nullptr, SCREEN_MENU, nullptr), tree(new TTreeWidget(this))
    {
        tree->setUpList(1);
        QVBoxLayout* const layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(tree);
        setFocusProxy(tree);
        exit = addTop(tree, ITEM_ACTION_EXIT, "Exit");
        settings = addTop(tree, ITEM_SETTINGS, "Settings");
        language = addChild(settings, ITEM_LANGUAGE, "Language");
        english = addChild(language, ITEM_LANGUAGE_ENGLISH, "English");
        french = addChild(language, ITEM_LANGUAGE_FRENCH, "French");
        german = addChild(language, ITEM_LANGUAGE_GERMAN, "German");
        powerUp = addChild(settings, ITEM_POWER_UP, "Power-up mode");
        helpDesk = addTop(tree, ITEM_HELP_DESK, "Help desk");
        show();
        activateWindow();
        tree->setFocus();
    }
    void key(Qt::Key key) { QTest::keyClick(tree, key); }
    QString current() const { return tree->currentItem()->text(0); }
    QImage picture() { return qtcompat::grabWidget(this).toImage().convertToFormat(QImage::Format_RGB32); }

    void keyLeftClicked() override { keys.append("left"); }
    void keyRightClicked() override { keys.append("right"); }
    void keyUpClicked() override { keys.append("up"); }
    void keyDownClicked() override { keys.append("down"); }
    void keyOkClicked() override { keys.append("OK"); }
    void keyLongOkPressed() override { keys.append("long OK"); }

    TTreeWidget* const tree;
    TTreeWidgetItem* exit;
    TTreeWidgetItem* settings;
    TTreeWidgetItem* language;
    TTreeWidgetItem* english;
    TTreeWidgetItem* french;
    TTreeWidgetItem* german;
    TTreeWidgetItem* powerUp;
    TTreeWidgetItem* helpDesk;
    QStringList keys;
};

// Notes which row was pressed, by way of a queued connection.
class QueuedReceiver : public QObject {
    Q_OBJECT

public:
    QList<int> ids;

public slots:
    void take(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM id) { ids.append(id); }
};

QSet<QRgb> coloursOf(const QImage& picture, const QRect& area)
{
    QSet<QRgb> colours;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            colours.insert(picture.pixel(x, y));
        }
    }
    return colours;
}

int whitePixels(const QImage& picture, const QRect& area)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            count += picture.pixel(x, y) == qRgb(255, 255, 255) ? 1 : 0;
        }
    }
    return count;
}

} // namespace

class TTreeWidgetTest : public QObject {
    Q_OBJECT

private slots:
    // Rows
    void idsHaveTheirNumbers_data();
    void idsHaveTheirNumbers();
    void topLevelRowBelongsToNothing();
    void childTakesItsParentsBundleAndItsOwnAlert();
    void laterNumberDoesNotReachTheChildren();
    void secondColumn();
    void eventTime_data();
    void eventTime();
    void eventTimeIsLogged();

    // List
    void itemByIdIsTheFirstFromTheTop();
    void itemByIdFindsHiddenAndCollapsedRows();
    void itemByIdWithoutARowIsNull();
    void itemPressedCanBeQueuedAndRecorded();

    // Keys
    void okTellsTheCurrentRow();
    void emptyListTakesEveryKey();
    void leftOnAnOpenBranchClosesItThenItsParent();
    void leftOnAClosedTopLevelRowGoesToTheFirst();
    void leftOnTheFirstRowStaysAndClosesIt();
    void leftIsLoggedUnlessTheBranchIsOpen();
    void rightGoesToTheCheckedChild();
    void rightWithoutACheckedChildGoesToTheFirst();
    void rightOpensWhatIsClosed();
    void rightOnALeafStaysAndIsConsumed();
    void rightToADisabledChildOpensTheBranchAndStays();
    void upAndDownMoveAndPassDisabledRows();
    void longOkGoesToTheScreen();
    void f12GoesToTheScreenOnlyThroughTheView();
    void keysAreHandledWhileTheScreensIgnoreThem();

    // Look
    void fourRowsFillThePanel();
    void rowsAreWhiteOnBlack();
    void currentRowIsGreyWithoutALine();
    void checkedRowIsToldFromUnchecked();
    void disabledRowTakesItsForeground();
};

// --- Rows --------------------------------------------------------------------------------------------------

void TTreeWidgetTest::idsHaveTheirNumbers_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("number");
    const struct {
        const char* name;
        TTreeWidgetItem::WIDGET_ITEM_ID_ENUM id;
        int number;
    } rows[] = {
        {"exit", ITEM_ACTION_EXIT, 1},
        {"back to English", ITEM_BACK_TO_ENGLISH, 2},
        {"point now", ITEM_POINT_NOW, 3},
        {"settings", ITEM_SETTINGS, 9},
        {"display", ITEM_DISPLAY, 10},
        {"brightness", ITEM_BRIGHTNESS, 11},
        {"brightness level 0", ITEM_BRIGHTNESS_LEVEL_0, 12},
        {"brightness level 1", ITEM_BRIGHTNESS_LEVEL_1, 13},
        {"brightness level 2", ITEM_BRIGHTNESS_LEVEL_2, 14},
        {"brightness level 3", ITEM_BRIGHTNESS_LEVEL_3, 15},
        {"brightness level 4", ITEM_BRIGHTNESS_LEVEL_4, 16},
        {"brightness level 5", ITEM_BRIGHTNESS_LEVEL_5, 17},
        {"brightness level 6", ITEM_BRIGHTNESS_LEVEL_6, 18},
        {"brightness level 7", ITEM_BRIGHTNESS_LEVEL_7, 19},
        {"timeout", ITEM_TIMEOUT, 20},
        {"5 seconds", ITEM_TIMEOUT_5_SECONDS, 21},
        {"30 seconds", ITEM_TIMEOUT_30_SECONDS, 22},
        {"1 minute", ITEM_TIMEOUT_1_MINUTE, 23},
        {"2 minutes", ITEM_TIMEOUT_2_MINUTES, 24},
        {"5 minutes", ITEM_TIMEOUT_5_MINUTES, 25},
        {"audio indication", ITEM_AUDIO_INDICATION, 26},
        {"pointing audio", ITEM_AUDIO_POINTING, 27},
        {"on", ITEM_AUDIO_POINTING_ON, 28},
        {"off", ITEM_AUDIO_POINTING_OFF, 29},
        {"stealth on", ITEM_STEALTH_ON, 37},
        {"stealth off", ITEM_STEALTH_OFF, 38},
        {"power-up mode", ITEM_POWER_UP, 39},
        {"automatic", ITEM_POWER_UP_AUTOMATIC, 40},
        {"manual", ITEM_POWER_UP_MANUAL, 41},
        {"language", ITEM_LANGUAGE, 42},
        {"English", ITEM_LANGUAGE_ENGLISH, 43 + LANG_ENGLISH},
        {"French", ITEM_LANGUAGE_FRENCH, 43 + LANG_FRENCH},
        {"German", ITEM_LANGUAGE_GERMAN, 43 + LANG_GERMAN},
        {"Russian", ITEM_LANGUAGE_RUSSIAN, 43 + LANG_RUSSIAN},
        {"Spanish", ITEM_LANGUAGE_SPANISH, 43 + LANG_SPANISH},
        {"Chinese", ITEM_LANGUAGE_CHINESE, 43 + LANG_CHINESE},
        {"Japanese", ITEM_LANGUAGE_JAPANESE, 43 + LANG_JAPANESE},
        {"properties", ITEM_PROPERTIES, 51},
        {"IP address", ITEM_IP_ADDRESS, 53},
        {"hardware", ITEM_HARDWARE, 54},
        {"unit serial number", ITEM_UNIT_SERIAL_NUMBER, 55},
        {"antenna serial number", ITEM_ANTENNA_SERIAL_NUMBER, 56},
        {"LAN", ITEM_LAN, 57},
        {"WLAN", ITEM_WLAN, 58},
        {"software", ITEM_SOFTWARE, 59},
        {"conformity", ITEM_CONFORMITY, 60},
        {"IMEI", ITEM_IMEI, 61},
        {"help desk", ITEM_HELP_DESK, 62},
        {"alerts", ITEM_ALERTS, 63},
        {"one alert", ITEM_ALERT, 64},
        {"a bundle", ITEM_ACTION_BUNDLE, 66},
        {"start or stop", ITEM_ACTION_START_STOP, 68},
    };
    for (const auto& row : rows) {
        QTest::newRow(row.name) << int(row.id) << row.number;
    }
}

void TTreeWidgetTest::idsHaveTheirNumbers()
{
    QFETCH(int, id);
    QTEST(id, "number");
}

void TTreeWidgetTest::topLevelRowBelongsToNothing()
{
    TTreeWidget tree(nullptr);
    const TTreeWidgetItem* const item = addTop(&tree, ITEM_SETTINGS, "Settings");
    QCOMPARE(tree.topLevelItem(0), item);
    QCOMPARE(item->text(0), QString("Settings"));
    QCOMPARE(int(item->getId()), 9);
    QCOMPARE(item->getDefinedBundleNumber(), -1);
    QCOMPARE(item->getEventId(), 0U);
    QCOMPARE(item->getEventSubId(), 0U);
    QCOMPARE(item->getAlertTimeEpoch(), 0LL);
}

void TTreeWidgetTest::childTakesItsParentsBundleAndItsOwnAlert()
{
    TTreeWidget tree(nullptr);
    TTreeWidgetItem* const parent = addTop(&tree, ITEM_ALERTS, "Alerts");
    parent->setDefinedBundleNumber(7);
    const TTreeWidgetItem* const item =
        new TTreeWidgetItem(parent, ITEM_ALERT, "Too hot", 0xffffffffU, 0x10002U, 1400000000123LL);
    QCOMPARE(parent->child(0), item);
    QCOMPARE(item->text(0), QString("Too hot"));
    QCOMPARE(int(item->getId()), 64);
    QCOMPARE(item->getDefinedBundleNumber(), 7);
    QCOMPARE(item->getEventSubId(), 0xffffffffU);
    QCOMPARE(item->getEventId(), 0x10002U);
    QCOMPARE(item->getAlertTimeEpoch(), 1400000000123LL);
}

void TTreeWidgetTest::laterNumberDoesNotReachTheChildren()
{
    TTreeWidget tree(nullptr);
    TTreeWidgetItem* const parent = addTop(&tree, ITEM_ACTION_BUNDLE, "Bundle");
    const TTreeWidgetItem* const before = addChild(parent, ITEM_ACTION_START_STOP, "Start");
    parent->setDefinedBundleNumber(3);
    QCOMPARE(parent->getDefinedBundleNumber(), 3);
    QCOMPARE(before->getDefinedBundleNumber(), -1);
}

void TTreeWidgetTest::secondColumn()
{
    TTreeWidget tree(nullptr);
    tree.setUpList(2);
    TTreeWidgetItem* const item = addTop(&tree, ITEM_ACTION_BUNDLE, "Bundle");
    item->setTextSecondColumn("00:00:12");
    QCOMPARE(item->data(1, Qt::DisplayRole).toString(), QString("00:00:12"));
    QCOMPARE(item->text(0), QString("Bundle"));
}

void TTreeWidgetTest::eventTime_data()
{
    QTest::addColumn<qlonglong>("milliseconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("the very start of 2013") << qlonglong(START_OF_2013) << "1 Jan 2013 00:00:00";
    QTest::newRow("one millisecond less") << qlonglong(START_OF_2013 - 1) << "";
    QTest::newRow("no time") << qlonglong(0) << "";
    QTest::newRow("before the epoch") << qlonglong(-1) << "";
    QTest::newRow("day of one digit") << qlonglong(1425460025999LL) << "4 Mar 2015 09:07:05";
    QTest::newRow("beyond 32 bits of seconds") << qlonglong(4294967296000LL) << "7 Feb 2106 06:28:16";
}

void TTreeWidgetTest::eventTime()
{
    QFETCH(qlonglong, milliseconds);
    TTreeWidget tree(nullptr);
    TTreeWidgetItem* const parent = addTop(&tree, ITEM_ALERTS, "Alerts");
    const TTreeWidgetItem item(parent, ITEM_ALERT, "Alert", 0, 1, milliseconds);
    QTEST(item.getEventTimeStr(), "text");
}

void TTreeWidgetTest::eventTimeIsLogged()
{
    TTreeWidget tree(nullptr);
    TTreeWidgetItem* const parent = addTop(&tree, ITEM_ALERTS, "Alerts");
    const TTreeWidgetItem known(parent, ITEM_ALERT, "Alert", 0, 0x1010aU, START_OF_2013);
    const TTreeWidgetItem unknown(parent, ITEM_ALERT, "Alert", 0, 0x1010aU, START_OF_2013 - 1);
    Messages messages;
    known.getEventTimeStr();
    unknown.getEventTimeStr();
    QCOMPARE(
        messages.texts(),
        QStringList(
            {"TTreeWidgetItem::getEventTimeStr(): m_timeStampMs=1356998400000 for m_eventId=0x1010A",
             "TTreeWidgetItem::getEventTimeStr(): About to return returnStr= 1 Jan 2013 00:00:00",
             "TTreeWidgetItem::getEventTimeStr(): m_timeStampMs=1356998399999 for m_eventId=0x1010A",
             "TTreeWidgetItem::getEventTimeStr(): time is before 1/1-2013 (m_timeStampMs=1356998399999 is "
             "less than 1356998400000). Do not show time."}));
}

// --- List --------------------------------------------------------------------------------------------------

void TTreeWidgetTest::itemByIdIsTheFirstFromTheTop()
{
    TTreeWidget tree(nullptr);
    TTreeWidgetItem* const first = addTop(&tree, ITEM_ACTION_BUNDLE, "A");
    TTreeWidgetItem* const inner = addChild(first, ITEM_ACTION_START_STOP, "Start A");
    addTop(&tree, ITEM_ACTION_START_STOP, "a row of the same id at the top level");
    addTop(&tree, ITEM_ACTION_BUNDLE, "B");
    QCOMPARE(tree.getItemById(ITEM_ACTION_BUNDLE), first);
    QCOMPARE(tree.getItemById(ITEM_ACTION_START_STOP), inner); // depth first
}

void TTreeWidgetTest::itemByIdFindsHiddenAndCollapsedRows()
{
    ListScreen f;
    QVERIFY(!f.settings->isExpanded());
    QCOMPARE(f.tree->getItemById(ITEM_LANGUAGE_GERMAN), f.german);
    f.helpDesk->setHidden(true);
    QCOMPARE(f.tree->getItemById(ITEM_HELP_DESK), f.helpDesk);
}

void TTreeWidgetTest::itemByIdWithoutARowIsNull()
{
    ListScreen f;
    QVERIFY(!f.tree->getItemById(ITEM_ALERTS));
    f.tree->clear();
    QVERIFY(!f.tree->getItemById(ITEM_ACTION_EXIT));
}

void TTreeWidgetTest::itemPressedCanBeQueuedAndRecorded()
{
    ListScreen f;
    QueuedReceiver receiver;
    QVERIFY(connect(f.tree, SIGNAL(itemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM)), &receiver,
                    SLOT(take(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM)), Qt::QueuedConnection));
    QSignalSpy spy(f.tree, SIGNAL(itemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM)));
    f.tree->setCurrentItem(f.helpDesk);
    f.key(Qt::Key_Return);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(int(spy.at(0).at(0).value<TTreeWidgetItem::WIDGET_ITEM_ID_ENUM>()), 62);
    QVERIFY(receiver.ids.isEmpty());
    QCoreApplication::sendPostedEvents();
    QCOMPARE(receiver.ids, QList<int>({62}));
}

// --- Keys --------------------------------------------------------------------------------------------------

void TTreeWidgetTest::okTellsTheCurrentRow()
{
    ListScreen f;
    f.tree->setCurrentItem(f.settings);
    QSignalSpy spy(f.tree, SIGNAL(itemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM)));
    Messages messages;
    f.key(Qt::Key_Return);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(int(spy.at(0).at(0).value<TTreeWidgetItem::WIDGET_ITEM_ID_ENUM>()), 9);
    QCOMPARE(
        messages.withPrefix("TTreeWidget::"),
        QStringList({"TTreeWidget::keyPressEvent: Key OK pressed on treeWidget. Now the SLOT function on "
                     "the clicked item should be run.",
                     "TTreeWidget::keyPressEvent(): pCurrentItem->getId()=9"}));
    QVERIFY(f.keys.isEmpty());
    QVERIFY(!f.settings->isExpanded()); // what the press leads to is the owner's business
}

void TTreeWidgetTest::emptyListTakesEveryKey()
{
    ListScreen f;
    f.tree->clear();
    QSignalSpy spy(f.tree, SIGNAL(itemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM)));
    for (Qt::Key key : {Qt::Key_Return, Qt::Key_Left, Qt::Key_Right}) {
        f.key(key);
    }
    QCOMPARE(spy.count(), 0);
    QVERIFY(f.keys.isEmpty());
}

void TTreeWidgetTest::leftOnAnOpenBranchClosesItThenItsParent()
{
    ListScreen f;
    f.settings->setExpanded(true);
    f.language->setExpanded(true);
    f.tree->setCurrentItem(f.language);
    f.key(Qt::Key_Left);
    QCOMPARE(f.current(), QString("Language"));
    QVERIFY(!f.language->isExpanded());
    QVERIFY(f.settings->isExpanded());
    f.key(Qt::Key_Left);
    QCOMPARE(f.current(), QString("Settings"));
    QVERIFY(!f.settings->isExpanded());
    QVERIFY(f.keys.isEmpty());
}

void TTreeWidgetTest::leftOnAClosedTopLevelRowGoesToTheFirst()
{
    ListScreen f;
    f.settings->setExpanded(true);
    f.tree->setCurrentItem(f.helpDesk);
    f.key(Qt::Key_Left);
    QCOMPARE(f.current(), QString("Exit"));
    QVERIFY(f.settings->isExpanded()); // another branch stays as it is
}

void TTreeWidgetTest::leftOnTheFirstRowStaysAndClosesIt()
{
    ListScreen f;
    addChild(f.exit, ITEM_ACTION_START_STOP, "below");
    f.exit->setExpanded(true);
    f.tree->setCurrentItem(f.exit);
    f.key(Qt::Key_Left);
    QCOMPARE(f.current(), QString("Exit"));
    QVERIFY(!f.exit->isExpanded());
    f.key(Qt::Key_Left);
    QCOMPARE(f.current(), QString("Exit"));
    QVERIFY(!f.exit->isExpanded());
}

void TTreeWidgetTest::leftIsLoggedUnlessTheBranchIsOpen()
{
    ListScreen f;
    f.settings->setExpanded(true);
    f.tree->setCurrentItem(f.powerUp);
    Messages messages;
    f.key(Qt::Key_Left); // to the parent
    QCOMPARE(messages.withPrefix("setToItem="), QStringList({"setToItem=Settings"}));
    f.key(Qt::Key_Left); // to the first row
    QCOMPARE(messages.withPrefix("setToItem="), QStringList({"setToItem=Settings", "setToItem=Exit"}));
    f.settings->setExpanded(true);
    f.tree->setCurrentItem(f.settings);
    messages.clear();
    f.key(Qt::Key_Left); // an open branch
    QCOMPARE(messages.withPrefix("setToItem="), QStringList());
}

void TTreeWidgetTest::rightGoesToTheCheckedChild()
{
    ListScreen f;
    f.english->setCheckState(0, Qt::Unchecked);
    f.french->setCheckState(0, Qt::PartiallyChecked); // not the mark that is looked for
    f.german->setCheckState(0, Qt::Checked);
    f.settings->setExpanded(true);
    f.tree->setCurrentItem(f.language);
    Messages messages;
    f.key(Qt::Key_Right);
    QCOMPARE(f.current(), QString("German"));
    QVERIFY(f.language->isExpanded());
    QCOMPARE(messages.withPrefix("setToItem="), QStringList({"setToItem=German"}));
    QVERIFY(f.tree->rect().contains(f.tree->visualItemRect(f.german)));
}

void TTreeWidgetTest::rightWithoutACheckedChildGoesToTheFirst()
{
    ListScreen f;
    f.german->setCheckState(0, Qt::Unchecked);
    f.tree->setCurrentItem(f.settings);
    f.key(Qt::Key_Right);
    QCOMPARE(f.current(), QString("Language"));
    f.key(Qt::Key_Right);
    QCOMPARE(f.current(), QString("English"));
    QVERIFY(f.keys.isEmpty());
}

void TTreeWidgetTest::rightOpensWhatIsClosed()
{
    ListScreen f;
    f.tree->setCurrentItem(f.settings);
    QVERIFY(!f.settings->isExpanded());
    f.key(Qt::Key_Right);
    QVERIFY(f.settings->isExpanded());
    QVERIFY(!f.language->isExpanded());
}

void TTreeWidgetTest::rightOnALeafStaysAndIsConsumed()
{
    ListScreen f;
    f.tree->setCurrentItem(f.helpDesk);
    Messages messages;
    f.key(Qt::Key_Right);
    QCOMPARE(f.current(), QString("Help desk"));
    QCOMPARE(messages.withPrefix("setToItem="), QStringList({"setToItem=Help desk"}));
    QVERIFY(f.keys.isEmpty());
}

void TTreeWidgetTest::rightToADisabledChildOpensTheBranchAndStays()
{
    ListScreen f;
    f.language->setFlags(f.language->flags() & ~Qt::ItemIsEnabled);
    f.tree->setCurrentItem(f.settings);
    f.key(Qt::Key_Right);
    QCOMPARE(f.current(), QString("Settings"));
    QVERIFY(f.settings->isExpanded());
    QVERIFY(f.tree->rect().contains(f.tree->visualItemRect(f.language)));
}

void TTreeWidgetTest::upAndDownMoveAndPassDisabledRows()
{
    ListScreen f;
    f.settings->setFlags(f.settings->flags() & ~Qt::ItemIsEnabled);
    f.tree->setCurrentItem(f.exit);
    f.key(Qt::Key_Up); // the upper end
    QCOMPARE(f.current(), QString("Exit"));
    f.key(Qt::Key_Down);
    QCOMPARE(f.current(), QString("Help desk"));
    f.key(Qt::Key_Down); // the lower end
    QCOMPARE(f.current(), QString("Help desk"));
    f.key(Qt::Key_Up);
    QCOMPARE(f.current(), QString("Exit"));
}

void TTreeWidgetTest::longOkGoesToTheScreen()
{
    ListScreen f;
    f.tree->setCurrentItem(f.settings);
    QSignalSpy spy(f.tree, SIGNAL(itemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM)));
    f.key(Qt::Key_Space);
    QCOMPARE(f.keys, QStringList({"long OK"}));
    QCOMPARE(f.current(), QString("Settings"));
    QCOMPARE(spy.count(), 0);
}

// There is no rule for it here: the view has no use for the key and leaves it unaccepted. A letter, which
// the view searches for, stays in the list.
void TTreeWidgetTest::f12GoesToTheScreenOnlyThroughTheView()
{
    ListScreen f;
    f.tree->setCurrentItem(f.exit);
    const QTemporaryDir directory;
    const QByteArray path = directory.path().toLocal8Bit();
    paths::overrideForTest(nullptr, path.constData(), nullptr);
    Messages messages;
    f.key(Qt::Key_F12);
    QCOMPARE(messages.count("Is about to create screenshot"), 1);
    messages.clear();
    f.key(Qt::Key_H);
    QCOMPARE(f.current(), QString("Help desk"));
    QCOMPARE(messages.countOfPrefix("Current screen="), 0);
    paths::overrideForTest(nullptr, nullptr, nullptr);
}

void TTreeWidgetTest::keysAreHandledWhileTheScreensIgnoreThem()
{
    ListScreen f;
    f.tree->setCurrentItem(f.settings);
    QSignalSpy spy(f.tree, SIGNAL(itemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM)));
    model()->startIgnoreGlobalKeyPress();
    f.key(Qt::Key_Space); // the screen's
    f.key(Qt::Key_Right);
    f.key(Qt::Key_Return);
    QVERIFY(model()->getIgnoreGlobalKeyPress());
    model()->stopIgnoreGlobalKeyPress();
    QVERIFY(f.keys.isEmpty());
    QCOMPARE(f.current(), QString("Language"));
    QCOMPARE(spy.count(), 1);
}

// --- Look --------------------------------------------------------------------------------------------------

void TTreeWidgetTest::fourRowsFillThePanel()
{
    ListScreen f;
    f.tree->setFont(*GuiApp::getFont(14, LANG_ENGLISH));
    f.settings->setExpanded(true);
    QCOMPARE(f.tree->viewport()->geometry(), QRect(0, 0, 256, 64));
    const QRect fourth = f.tree->visualItemRect(f.powerUp);
    QVERIFY2(fourth.bottom() < 64, qPrintable(QString("the fourth row ends at %1").arg(fourth.bottom())));
}

void TTreeWidgetTest::rowsAreWhiteOnBlack()
{
    ListScreen f;
    f.tree->setCurrentItem(f.exit);
    const QRect row = f.tree->visualItemRect(f.helpDesk);
    QCOMPARE(coloursOf(f.picture(), row), QSet<QRgb>({qRgb(0, 0, 0), qRgb(255, 255, 255)}));
}

void TTreeWidgetTest::currentRowIsGreyWithoutALine()
{
    ListScreen f;
    f.tree->setCurrentItem(f.helpDesk);
    QTRY_VERIFY_WITH_TIMEOUT(f.tree->hasFocus(), PATIENCE_MS);
    const QRect row = f.tree->visualItemRect(f.helpDesk);
    const QImage picture = f.picture();
    QCOMPARE(coloursOf(picture, row),
             QSet<QRgb>({qRgb(0, 0, 0), qRgb(80, 80, 80), qRgb(255, 255, 255)})); // black right of the text
    QCOMPARE(coloursOf(picture, QRect(row.left(), row.top(), 2, row.height())),
             QSet<QRgb>({qRgb(80, 80, 80)}));
}

void TTreeWidgetTest::checkedRowIsToldFromUnchecked()
{
    ListScreen f;
    f.english->setCheckState(0, Qt::Unchecked);
    f.french->setCheckState(0, Qt::Checked);
    f.tree->scrollToItem(f.french); // opens the branch
    f.tree->scrollToItem(f.english, QAbstractItemView::PositionAtTop);
    f.tree->setCurrentItem(f.exit);
    f.tree->scrollToItem(f.french, QAbstractItemView::PositionAtBottom);
    const QImage picture = f.picture();
    const QSize box(18, f.tree->visualItemRect(f.french).height());
    const int unchecked = whitePixels(picture, QRect(f.tree->visualItemRect(f.english).topLeft(), box));
    const int checked = whitePixels(picture, QRect(f.tree->visualItemRect(f.french).topLeft(), box));
    QVERIFY2(unchecked > 30, qPrintable(QString::number(unchecked))); // the box
    QVERIFY2(checked > unchecked + 10, qPrintable(QString("%1, %2").arg(checked).arg(unchecked)));
}

void TTreeWidgetTest::disabledRowTakesItsForeground()
{
    ListScreen f;
    f.tree->setCurrentItem(f.exit);
    f.helpDesk->setForeground(0, QColor(100, 100, 100));
    f.helpDesk->setFlags(f.helpDesk->flags() & ~Qt::ItemIsEnabled);
    const QRect row = f.tree->visualItemRect(f.helpDesk);
    QCOMPARE(coloursOf(f.picture(), row), QSet<QRgb>({qRgb(0, 0, 0), qRgb(100, 100, 100)}));
}

int main(int argc, char** argv)
{
    return windowfixture::run<TTreeWidgetTest>(argc, argv);
}

#include "ttreewidget_test.moc"
