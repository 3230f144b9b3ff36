// The menu's tree: its rows as they are meant to be, laid down here once more by hand, and the way through
// them with the keys.
#include "screens/menufixture.h"

#include "common/qtcompat.h"
#include "support/death.h"
#include "support/failingnew.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QLayout>
#include <QTranslator>

using namespace windowfixture;

namespace {

const char OWN[] = "ScreenMenu";
const char SHARED[] = "Shared_translations";
const char NEVER[] = "";

const struct {
    int id;
    int depth;
    const char* text;
    const char* context;
} ROWS[] = {
    {1, 0, "Exit", SHARED},
    {2, 0, "Back to English", NEVER},
    {3, 0, "Point now", OWN},
    {9, 0, "Settings", OWN},
    {10, 1, "Display", OWN},
    {11, 2, "Brightness", OWN},
    {13, 3, "Level 1", OWN},
    {14, 3, "Level 2", OWN},
    {15, 3, "Level 3", OWN},
    {16, 3, "Level 4", OWN},
    {17, 3, "Level 5", OWN},
    {18, 3, "Level 6", OWN},
    {19, 3, "Level 7", OWN},
    {20, 2, "Timeout", SHARED},
    {21, 3, "5 seconds", OWN},
    {22, 3, "30 seconds", OWN},
    {23, 3, "1 minute", OWN},
    {24, 3, "2 minutes", OWN},
    {25, 3, "5 minutes", OWN},
    {26, 1, "Audio indication", OWN},
    {27, 2, "Pointing", OWN},
    {28, 3, "On", OWN},
    {29, 3, "Off", OWN},
    {39, 1, "Power-up mode", OWN},
    {40, 2, "Automatic", OWN},
    {41, 2, "Manual", OWN},
    {42, 1, "Language", OWN},
    {43, 2, "English", NEVER},
    {44, 2, "Fran\u00e7ais", NEVER},
    {45, 2, "Deutsch", NEVER},
    {46, 2, "P\u0443\u0441\u0441\u043a\u0438\u0439", NEVER},
    {47, 2, "Espa\u00f1ol", NEVER},
    {48, 2, "\u4e2d\u6587", NEVER},
    {49, 2, "\u65e5\u672c\u8a9e", NEVER},
    {51, 0, "Properties", OWN},
    {53, 1, "IP address", OWN},
    {54, 1, "Hardware", OWN},
    {55, 2, "Unit serial number", OWN},
    {56, 2, "Antenna serial number", OWN},
    {57, 2, "LAN", OWN},
    {58, 2, "WLAN", OWN},
    {59, 1, "Software", OWN},
    {60, 1, "Conformity", OWN},
    {61, 1, "IMEI", OWN},
    {62, 0, "Help desk", OWN},
    {63, 0, "Alerts", OWN},
};
const int NUMBER_OF_ROWS = sizeof(ROWS) / sizeof(ROWS[0]);

// Answers each text with its context and itself.
class Contexts : public QTranslator {
public:
    Contexts() { QCoreApplication::installTranslator(this); }
    ~Contexts() override { QCoreApplication::removeTranslator(this); }
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return QString("%1|%2").arg(context, text);
    }
};

int depthOf(const QTreeWidgetItem* item)
{
    return item->parent() ? depthOf(item->parent()) + 1 : 0;
}

} // namespace

class ScreenMenuTreeTest : public QObject {
    Q_OBJECT

private slots:
    void init() { resetMenu(); }

    // The tree
    void rowsInOrder();
    void rowsAreTranslatedInTheirContext();
    void startsClosedOnItsFirstRow();
    void startsClosedWithAlertsToo();
    void listFillsTheScreen();
    void noTextIsCut_data();
    void noTextIsCut();
    void wholeRowsFillTheHeight();
    void noRowCanBeTickedByHand();
    void withoutMemoryTheProcessEnds();

    // Keys
    void hasTheFocusWhenShown();
    void walkFromTheFirstRowToTheLast();
    void upFromTheFirstRowStays();
    void okOpensABranchAndGoesIn_data();
    void okOpensABranchAndGoesIn();
    void leftClosesStepByStep();
    void longOkIsLeftToTheScreen();
    void exitGoesToThePreviousScreen();
    void branchesStayAsTheyAreAcrossExit();
    void branchWithoutRowsSaysSo_data();
    void branchWithoutRowsSaysSo();
    void unreachableIdsAreHandled();
};

// --- The tree ----------------------------------------------------------------------------------------------

void ScreenMenuTreeTest::rowsInOrder()
{
    MenuFixture f;
    int row = 0;
    for (QTreeWidgetItemIterator it(f.tree); *it; ++it, ++row) {
        QVERIFY(row < NUMBER_OF_ROWS);
        const TTreeWidgetItem* const item = static_cast<TTreeWidgetItem*>(*it);
        QCOMPARE(int(item->getId()), ROWS[row].id);
        QCOMPARE(depthOf(item), ROWS[row].depth);
        QCOMPARE(item->text(0), QString::fromUtf8(ROWS[row].text));
        QCOMPARE(item->getEventId(), 0u);
        QCOMPARE(item->getEventSubId(), 0u);
        QCOMPARE(item->getAlertTimeEpoch(), 0LL);
        QCOMPARE(item->getDefinedBundleNumber(), -1);
    }
    QCOMPARE(row, NUMBER_OF_ROWS);
}

void ScreenMenuTreeTest::rowsAreTranslatedInTheirContext()
{
    MenuFixture f;
    {
        const Contexts contexts;
        QCoreApplication::sendPostedEvents();
        for (const auto& row : ROWS) {
            const QString text = QString::fromUtf8(row.text);
            QCOMPARE(f.item(row.id)->text(0),
                     row.context == NEVER ? text : QString("%1|%2").arg(row.context, text));
        }
        const MenuFixture built; // and so does a menu that is built now
        for (const auto& row : ROWS) {
            QCOMPARE(built.item(row.id)->text(0), f.item(row.id)->text(0));
        }
    }
    QCoreApplication::sendPostedEvents();
    for (const auto& row : ROWS) {
        QCOMPARE(f.item(row.id)->text(0), QString::fromUtf8(row.text));
    }
}

void ScreenMenuTreeTest::startsClosedOnItsFirstRow()
{
    const MenuFixture f;
    QCOMPARE(f.currentId(), 1);
    for (QTreeWidgetItemIterator it(f.tree); *it; ++it) {
        QVERIFY2(!(*it)->isExpanded(), qPrintable((*it)->text(0)));
    }
}

void ScreenMenuTreeTest::startsClosedWithAlertsToo()
{
    setAlertLog({{0x1010, 1, 1700000000}, {0x1020, 2, 1700000001}});
    MenuFixture f;
    const ScreenMenu menu(&f.window);
    TTreeWidget* const tree = menu.findChild<TTreeWidget*>("pTreeWidget");
    QCOMPARE(tree->getItemById(ITEM_ALERTS)->childCount(), 2);
    QVERIFY(!tree->getItemById(ITEM_ALERTS)->isExpanded());
    QCOMPARE(tree->currentItem(), tree->topLevelItem(0));
}

void ScreenMenuTreeTest::listFillsTheScreen()
{
    MenuFixture f;
    f.open();
    QCOMPARE(f.tree->geometry(), QRect(0, 0, 256, 64));
    QCOMPARE(f.menu->layout()->contentsMargins(), QMargins());
    QCOMPARE(f.menu->layout()->spacing(), 0);
    QVERIFY(f.menu->layout()->inherits("QVBoxLayout"));
    QCOMPARE(f.menu->focusProxy(), static_cast<QWidget*>(f.tree));
    QCOMPARE(f.tree->columnCount(), 1);
    QVERIFY(f.tree->header()->isHidden());
    QVERIFY(!f.tree->rootIsDecorated());
    QCOMPARE(f.tree->selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(f.tree->selectionBehavior(), QAbstractItemView::SelectItems);
    QCOMPARE(f.tree->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(f.tree->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(f.tree->styleSheet(),
             QString("selection-background-color: rgba(80, 80, 80, 255); background: rgba(0,0,0,255); "
                     "color: rgba(255,255,255,255)"));
}

void ScreenMenuTreeTest::noTextIsCut_data()
{
    QTest::addColumn<int>("language"); // one for each family of fonts
    QTest::newRow("Latin") << int(LANG_ENGLISH);
    QTest::newRow("Unicode") << int(LANG_RUSSIAN);
}

// The rows of a fully opened tree, with the branches' lines and check marks before them.
void ScreenMenuTreeTest::noTextIsCut()
{
    QFETCH(int, language);
    MenuFixture f;
    terminal().set("cfg.language", language);
    QVERIFY(passBus());
    f.open();
    f.tree->expandAll();
    QTest::qWait(1); // the layout is done in the event loop
    for (QTreeWidgetItemIterator it(f.tree); *it; ++it) {
        if ((*it)->isHidden()) {
            continue;
        }
        const QVariant ownFont = (*it)->data(0, Qt::FontRole);
        const QFont font = ownFont.isValid() ? ownFont.value<QFont>() : f.tree->font();
        const QRect rect = f.tree->visualItemRect(*it);
        const int mark = (*it)->data(0, Qt::CheckStateRole).isValid() ? 20 : 0;
        const QFontMetrics metrics(font);
        QVERIFY2(rect.left() + mark + 3 + qtcompat::textWidth(metrics, (*it)->text(0)) <= 256,
                 qPrintable((*it)->text(0)));
        QVERIFY2(rect.height() >= metrics.height(), qPrintable((*it)->text(0)));
    }
}

void ScreenMenuTreeTest::wholeRowsFillTheHeight()
{
    MenuFixture f;
    f.open();
    QCOMPARE(f.rowsInView(), QStringList({"Exit", "Point now", "Settings", "Properties"}));
    QCOMPARE(f.tree->visualItemRect(f.item(51)).bottom(), 63);
}

// As a mouse on a desk might.
void ScreenMenuTreeTest::noRowCanBeTickedByHand()
{
    MenuFixture f;
    f.open();
    QVERIFY(f.walkTo(16));
    const QRect row = f.tree->visualItemRect(f.item(13));
    for (int x = row.left(); x < row.left() + 30; x += 3) {
        QTest::mouseClick(f.tree->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(x, row.center().y()));
    }
    QCOMPARE(f.currentId(), 13); // the click arrived
    QCOMPARE(f.checked(11), QList<int>({16}));
}

// How many allocations of a new menu end the process with the menu's name when they fail.
static int deathsOfANewMenu(Window* window)
{
    for (int granted = 0, inMenu = 0;; ++granted) {
        const Death death = deathOf([window, granted] {
            grantedAllocations = granted;
            ScreenMenu screen(window);
        });
        if (death.status == 111) {
            return inMenu; // as many as it needs
        }
        if (death.output.find("<1> gui: *** ASSERT in ") == std::string::npos) {
            return -1;
        }
        inMenu += death.output.find("<1> gui: *** ASSERT in screenmenu at ") != std::string::npos;
    }
}

// Layout, tree and the rows; what else there is belongs to the list.
void ScreenMenuTreeTest::withoutMemoryTheProcessEnds()
{
    MenuFixture f;
    const int withoutAlerts = 2 + NUMBER_OF_ROWS;
    QCOMPARE(deathsOfANewMenu(&f.window), withoutAlerts);
    setAlertLog({{0x1010, 1, 1700000000}});
    QVERIFY(deathsOfANewMenu(&f.window) > withoutAlerts);
}

// --- Keys --------------------------------------------------------------------------------------------------

void ScreenMenuTreeTest::hasTheFocusWhenShown()
{
    MenuFixture f;
    QVERIFY(!f.tree->hasFocus());
    f.open();
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(f.tree));
    f.leave();
    QVERIFY(!f.tree->hasFocus());
    f.open();
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(f.tree));
}

void ScreenMenuTreeTest::walkFromTheFirstRowToTheLast()
{
    MenuFixture f;
    f.open();
    f.tree->expandAll();
    for (const auto& row : ROWS) {
        if (row.id == 2) {
            continue; // English is the language
        }
        QCOMPARE(f.currentId(), row.id);
        QVERIFY(f.rowsInView().contains(f.currentText()));
        f.key(Qt::Key_Down);
    }
    QCOMPARE(f.currentId(), 63); // the last row stays
}

void ScreenMenuTreeTest::upFromTheFirstRowStays()
{
    MenuFixture f;
    f.open();
    f.key(Qt::Key_Up);
    QCOMPARE(f.currentId(), 1);
    f.key(Qt::Key_Down);
    QCOMPARE(f.currentId(), 3);
    f.key(Qt::Key_Up);
    QCOMPARE(f.currentId(), 1);
}

void ScreenMenuTreeTest::okOpensABranchAndGoesIn_data()
{
    QTest::addColumn<int>("branch");
    QTest::addColumn<int>("firstChild");
    QTest::newRow("settings") << 9 << 10;
    QTest::newRow("display") << 10 << 11;
    QTest::newRow("brightness") << 11 << 13;
    QTest::newRow("timeout") << 20 << 21;
    QTest::newRow("audio indication") << 26 << 27;
    QTest::newRow("pointing") << 27 << 28;
    QTest::newRow("power-up mode") << 39 << 40;
    QTest::newRow("language") << 42 << 43;
    QTest::newRow("properties") << 51 << 53;
    QTest::newRow("hardware") << 54 << 55;
}

void ScreenMenuTreeTest::okOpensABranchAndGoesIn()
{
    QFETCH(int, branch);
    QFETCH(int, firstChild);
    MenuFixture f;
    f.open();
    QVERIFY(f.press(branch));
    QVERIFY(f.item(branch)->isExpanded());
    QCOMPARE(f.currentId(), firstChild);
    QVERIFY(f.rowsInView().contains(f.currentText()));
    f.key(Qt::Key_Up);
    QCOMPARE(f.currentId(), branch);
    f.key(Qt::Key_Return);
    QVERIFY(!f.item(branch)->isExpanded());
    QCOMPARE(f.currentId(), branch);
    QVERIFY(f.isOpen());
    QCOMPARE(terminal().writesOf("cfg.display.brightness").size(), size_t(0));
}

void ScreenMenuTreeTest::leftClosesStepByStep()
{
    MenuFixture f;
    f.open();
    QVERIFY(f.walkTo(24));
    for (int id : {20, 10, 9}) {
        f.key(Qt::Key_Left);
        QCOMPARE(f.currentId(), id);
        QVERIFY(!f.item(id)->isExpanded());
    }
    f.key(Qt::Key_Left);
    QCOMPARE(f.currentId(), 1);
}

// No neighbour is named for it on this screen.
void ScreenMenuTreeTest::longOkIsLeftToTheScreen()
{
    MenuFixture f;
    f.open();
    QVERIFY(f.walkTo(16));
    Messages messages;
    f.key(Qt::Key_Space);
    QCOMPARE(messages.count("Button LONG OK not defined on this screen."), 1);
    QCOMPARE(f.currentId(), 16);
    QCOMPARE(f.checked(11), QList<int>({16}));
    QVERIFY(f.isOpen());
}

void ScreenMenuTreeTest::exitGoesToThePreviousScreen()
{
    MenuFixture f;
    f.window.showScreen(Screen::SCREEN_BATTERY, false);
    f.window.showScreen(Screen::SCREEN_MENU, true);
    QVERIFY(f.press(1));
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_BATTERY);
    f.window.showScreen(Screen::SCREEN_STATUS, false);
    f.open();
    f.key(Qt::Key_Return); // the cursor still stands on it
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_STATUS);
}

void ScreenMenuTreeTest::branchesStayAsTheyAreAcrossExit()
{
    MenuFixture f;
    f.open();
    QVERIFY(f.walkTo(16));
    for (int i = 0; i < 20 && f.currentId() != 1; ++i) {
        f.key(Qt::Key_Up);
    }
    f.key(Qt::Key_Return);
    QVERIFY(!f.isOpen());
    f.open();
    for (int id : {9, 10, 11}) {
        QVERIFY(f.item(id)->isExpanded());
    }
    QVERIFY(!f.item(20)->isExpanded());
    QCOMPARE(f.currentId(), 1);
}

void ScreenMenuTreeTest::branchWithoutRowsSaysSo_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("no entry of the menu") << 66;
    QTest::newRow("no id at all") << 99;
}

void ScreenMenuTreeTest::branchWithoutRowsSaysSo()
{
    QFETCH(int, id);
    MenuFixture f;
    f.open();
    Messages messages;
    f.menu->handleItemPressed(static_cast<WIDGET_ITEM_ID_ENUM>(id)); // Exit is the current row
    QCOMPARE(
        messages.count(QString("ScreenMenu::handleItemPressed: itemId=%1. Not implemented yet.").arg(id)), 1);
    QCOMPARE(f.currentId(), 1);
    QVERIFY(f.isOpen());
}

// Brightness level 0 and the two of the stealth mode have no rows, but the press function knows them.
void ScreenMenuTreeTest::unreachableIdsAreHandled()
{
    MenuFixture f;
    f.open();
    for (int id : {12, 37, 38}) {
        QVERIFY(!f.item(id));
    }
    Messages messages;
    f.menu->handleItemPressed(ITEM_BRIGHTNESS_LEVEL_0);
    QVERIFY(terminal().waitForWrite("cfg.display.brightness", sim::Value::integer(0)));
    terminal().settle();
    terminal().clearLogs();
    f.menu->handleItemPressed(ITEM_STEALTH_ON);
    f.menu->handleItemPressed(ITEM_STEALTH_OFF);
    QVERIFY(passBus());
    QVERIFY(terminal().writes().empty());
    QCOMPARE(messages.countOfPrefix("ScreenMenu::handleItemPressed: itemId="), 0);
}

int main(int argc, char** argv)
{
    return run<ScreenMenuTreeTest>(argc, argv);
}

#include "screenmenu_tree_test.moc"
