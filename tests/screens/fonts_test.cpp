// Names that come out of the database are drawn whatever their script and whatever the panel speaks, and so
// are the degree and charging signs: by pixels, on the real screens, with the fonts of the panel.
#include "screens/glyphs.h"
#include "screens/statusfixture.h"

#include "common/constants.h"
#include "model/menu_items.h"
#include "screens/screenpopup.h"
#include "widgets/ttreewidget.h"

#include "support/patience.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QScreen>
#include <QWindow>

using namespace windowfixture;

namespace {

const LANG_ENUM languages[] = {LANG_ENGLISH, LANG_FRENCH,  LANG_GERMAN,  LANG_RUSSIAN,
                               LANG_SPANISH, LANG_CHINESE, LANG_JAPANESE};

// Names as owners of a terminal give them.
const struct {
    const char* script;
    const char* name; // UTF-8, as in the database
    bool wide;        // beyond Latin-1, so always in the wide face
} names[] = {
    {"ASCII", "Ship 4711", false},
    {"Latin-1 capitals", "\303\204\303\226\303\234\303\211\303\210\303\212\303\207\303\221\303\201\303\230",
     false},
    {"Latin-1 small letters", "\303\244\303\266\303\274\303\237\303\251\303\250\303\247\303\261\303\270",
     false},
    {"Latin-1 signs", "\302\277\302\241\302\253\302\273\302\260\302\265\302\243", false},
    {"Latin beyond Latin-1", "\305\201\303\263d\305\272 \304\200\305\240", true},
    {"Cyrillic", "\320\241\320\277\321\203\321\202\320\275\320\270\320\272 \320\201\320\266", true},
    {"Greek", "\316\233\316\254\316\274\317\200\317\211", true},
    {"Chinese", "\345\215\253\346\230\237\347\224\265\350\257\235", true},
    {"Japanese", "\343\203\207\343\203\274\343\202\277\351\200\232\344\277\241", true},
    {"Latin and Chinese", "WLAN \345\215\253\346\230\237", true},
    {"signs of a text program", "\342\200\234A\342\200\235\342\200\224\342\202\254", true},
};

bool chooseLanguage(LANG_ENUM language)
{
    terminal().set("cfg.language", language);
    const bool chosen =
        QTest::qWaitFor([language] { return model()->getLanguage() == language; }, PATIENCE_MS) && passBus();
    QCoreApplication::sendPostedEvents(); // the window has loaded the words; now the screens hear of them
    return chosen;
}

class Panel {
public:
    Panel()
    {
        QCoreApplication::sendPostedEvents();
        window.setVisible(true);
        passBus();
        closePopups();
    }

    Screen* screen(Screen::SCREEN_ID_ENUM id) { return window.getScreenById(id); }
    ScreenPopup* popups() { return static_cast<ScreenPopup*>(screen(Screen::SCREEN_POPUP)); }
    void closePopups()
    {
        while (!popups()->events().isEmpty())
            popups()->closePopup(popups()->events().first().eventId, true);
    }
    TTreeWidget* list(Screen::SCREEN_ID_ENUM id)
    {
        return screen(id)->findChild<TTreeWidget*>("pTreeWidget");
    }
    void show(Screen::SCREEN_ID_ENUM id)
    {
        window.showScreen(id, false);
        QCoreApplication::sendPostedEvents();
    }
    // Presses OK on a row of the menu, which puts up a popup.
    void press(WIDGET_ITEM_ID_ENUM row)
    {
        show(Screen::SCREEN_MENU);
        list(Screen::SCREEN_MENU)->setCurrentItem(list(Screen::SCREEN_MENU)->getItemById(row));
        QTest::keyClick(list(Screen::SCREEN_MENU), Qt::Key_Return);
    }
    QLabel* popupText() { return popups()->findChild<QLabel*>("pTextLabel"); }
    // What is wrong with a text that stands in a widget; the panel's picture is looked at.
    QString faults(const QString& text, QWidget* widget)
    {
        if (!widget->isVisible())
            return widget->objectName() + " is hidden";
        const QRect place(widget->mapTo(&window, QPoint(0, 0)), widget->size());
        return glyphs::faults(text, widget->font(), picture(place));
    }
    QString faults(const QString& text, Screen::SCREEN_ID_ENUM id, QTreeWidgetItem* row)
    {
        TTreeWidget* const tree = list(id);
        tree->scrollToItem(row);
        const QVariant own = row->data(0, Qt::FontRole);
        const QRect place =
            tree->visualItemRect(row).translated(tree->viewport()->mapTo(&window, QPoint(0, 0)));
        // Accents on capitals stand in the last line of the row above.
        return glyphs::faults(text, own.isValid() ? own.value<QFont>() : tree->font(),
                              picture(place.adjusted(0, -1, 0, 0)));
    }
    QImage picture(const QRect& place)
    {
        QCoreApplication::sendPostedEvents();
        return window.grab().toImage().convertToFormat(QImage::Format_RGB32).copy(place);
    }

    Window window;
};

QString family(const QFont& font)
{
    return QFontInfo(font).family().toLower();
}

} // namespace

class FontsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void cleanup() { QVERIFY(chooseLanguage(LANG_ENGLISH)); }

    void panelHasItsThreeFamilies();
    void bundleIsNamedInItsScript_data() { addNames(); }
    void bundleIsNamedInItsScript();
    void accentsOfAListStayWhateverMoves();
    void networkIsNamedInItsScript_data() { addNames(); }
    void networkIsNamedInItsScript();
    void helpDeskIsNamedInItsScript_data() { addNames(); }
    void helpDeskIsNamedInItsScript();
    void alertOfUnknownKindHasTheLogsWordsInAscii();
    void accentOfAnAlert();
    void languagesAreNamedInTheirScripts_data() { addLanguages(); }
    void languagesAreNamedInTheirScripts();
    void chargingSign_data() { addLanguages(); }
    void chargingSign();
    void degreeSignOfTheBatteries_data() { addLanguages(); }
    void degreeSignOfTheBatteries();
    void degreeSignOfThePosition_data() { addLanguages(); }
    void degreeSignOfThePosition();

private:
    static void addLanguages();
    static void addNames();

    QTemporaryDir m_directory;
    QByteArray m_path;
    QByteArray m_contrast;
};

void FontsTest::initTestCase()
{
    m_path = m_directory.path().toUtf8();
    m_contrast = m_directory.filePath("contrast").toUtf8();
    QVERIFY(QFile(m_contrast).open(QIODevice::WriteOnly));
    paths::overrideForTest(nullptr, m_path.constData(), m_contrast.constData());
}

void FontsTest::cleanupTestCase()
{
    paths::overrideForTest(nullptr, nullptr, nullptr);
}

void FontsTest::addLanguages()
{
    QTest::addColumn<int>("language");
    for (LANG_ENUM language : languages)
        QTest::newRow(qPrintable(model()->getLanguageStrFromEnum(language))) << int(language);
}

// Each name with the panel in a language of each face.
void FontsTest::addNames()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("wide");
    for (LANG_ENUM language : {LANG_ENGLISH, LANG_RUSSIAN}) {
        for (const auto& row : names) {
            QTest::addRow("%s, panel in %s", row.script, language == LANG_ENGLISH ? "English" : "Russian")
                << int(language) << QString::fromUtf8(row.name) << (row.wide || language == LANG_RUSSIAN);
        }
    }
}

// With these, and at these sizes: no other face has stepped in.
void FontsTest::panelHasItsThreeFamilies()
{
    QCOMPARE(family(*GuiApp::getFont(14, LANG_ENGLISH)), QString("helvetica"));
    QCOMPARE(family(*GuiApp::getFont(18, LANG_ENGLISH)), QString("helvetica"));
    QCOMPARE(family(*GuiApp::getFont(14, LANG_RUSSIAN)), QString("unifont"));
    QCOMPARE(family(*GuiApp::getFont(18, LANG_RUSSIAN)), QString("unifont"));
    QCOMPARE(family(QFont("DejaVu Sans Mono")), QString("dejavu sans mono"));
    const QStringList families = QFontDatabase().families();
    for (const char* name : {"helvetica", "unifont", "DejaVu Sans Mono"})
        QVERIFY2(families.contains(name, Qt::CaseInsensitive), name);
}

void FontsTest::bundleIsNamedInItsScript()
{
    QFETCH(int, language);
    QFETCH(QString, name);
    terminal().set("cfg.admin.bundle.0.name", name.toStdString());
    QVERIFY(chooseLanguage(static_cast<LANG_ENUM>(language)));
    Panel panel;
    panel.show(Screen::SCREEN_ACTION);
    QTreeWidgetItem* const row = panel.list(Screen::SCREEN_ACTION)->topLevelItem(1); // bundle 0 stands first
    QCOMPARE(row->text(0), name);
    const QVariant own = row->data(0, Qt::FontRole);
    QTEST(family(own.isValid() ? own.value<QFont>() : panel.list(Screen::SCREEN_ACTION)->font()) == "unifont",
          "wide");
    QCOMPARE(panel.faults(name, Screen::SCREEN_ACTION, row), QString());
}

// They stand in the row above, and rows are drawn anew or moved one by one: what is on the panel is what a
// drawing of the whole would be.
void FontsTest::accentsOfAListStayWhateverMoves()
{
    const QString name = QString::fromUtf8("\303\211\303\221 g");
    for (int bundle = 0; bundle < 4; ++bundle)
        terminal().set("cfg.admin.bundle." + std::to_string(bundle) + ".name", name.toStdString());
    Panel panel;
    panel.show(Screen::SCREEN_ACTION);
    TTreeWidget* const list = panel.list(Screen::SCREEN_ACTION);
    QVERIFY(QTest::qWaitForWindowExposed(&panel.window, PATIENCE_MS));
    const auto onThePanel = [&panel] {
        return panel.window.windowHandle()
            ->screen()
            ->grabWindow(panel.window.winId())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    };
    const QRect all(0, 0, 256, 64);
    QTRY_COMPARE_WITH_TIMEOUT(onThePanel(), panel.picture(all), PATIENCE_MS);
    QCOMPARE(panel.faults(name, Screen::SCREEN_ACTION, list->topLevelItem(2)), QString());
    for (Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Right, Qt::Key_Left, Qt::Key_Down,
                        Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Right, Qt::Key_Up, Qt::Key_Up}) {
        QTest::keyClick(list, key);
        QTRY_COMPARE_WITH_TIMEOUT(onThePanel(), panel.picture(all), PATIENCE_MS);
    }
}

void FontsTest::networkIsNamedInItsScript()
{
    QFETCH(int, language);
    QFETCH(QString, name);
    terminal().set("cfg.interfaces.wlan.ssid", name.toStdString());
    QVERIFY(chooseLanguage(static_cast<LANG_ENUM>(language)));
    Panel panel;
    panel.press(ITEM_WLAN);
    QCOMPARE(panel.window.getCurrentScreenId(), Screen::SCREEN_POPUP);
    QVERIFY(panel.popupText()->text().endsWith(name));
    QTEST(family(panel.popupText()->font()) == "unifont", "wide");
    QCOMPARE(panel.faults(name, panel.popupText()), QString());
}

void FontsTest::helpDeskIsNamedInItsScript()
{
    QFETCH(int, language);
    QFETCH(QString, name);
    terminal().set("cfg.help_desk_number", name.toStdString());
    QVERIFY(chooseLanguage(static_cast<LANG_ENUM>(language)));
    Panel panel;
    panel.press(ITEM_HELP_DESK);
    QCOMPARE(panel.popupText()->text(), name);
    QTEST(family(panel.popupText()->font()) == "unifont", "wide");
    QCOMPARE(panel.faults(name, panel.popupText()), QString());
}

// The log's text becomes ASCII on its way, and what ASCII lacks a question mark: never an empty box.
void FontsTest::alertOfUnknownKindHasTheLogsWordsInAscii()
{
    const char text[] = "Fan \320\266\303\251 of 3"; // two letters that ASCII lacks
    Panel panel;
    terminal().setAll({{"ram.log.alert.1.identifier", sim::Value::integer(0x7abd)},
                       {"ram.log.alert.1.severity", sim::Value::integer(EVENT_WARNING)},
                       {"ram.log.alert.1.state", sim::Value::integer(2)},
                       {"ram.log.alert.1.shorttext", sim::Value::text(text)}});
    terminal().set("ram.log.alert.latest.entry_count", 1);
    QTRY_COMPARE_WITH_TIMEOUT(panel.popupText()->text(), QString("Fan ?? of 3"), PATIENCE_MS);
    QCOMPARE(panel.faults("Fan ?? of 3", panel.popupText()), QString());
    panel.closePopups();
    panel.show(Screen::SCREEN_MENU);
    QTreeWidgetItem* const alerts = panel.list(Screen::SCREEN_MENU)->getItemById(ITEM_ALERTS);
    alerts->setExpanded(true);
    QCOMPARE(panel.faults("Fan ?? of 3", Screen::SCREEN_MENU, alerts->child(0)), QString());
    terminal().erasePrefix("ram.log.alert.1.");
    terminal().set("ram.log.alert.latest.entry_count", 0);
    QVERIFY(passBus());
}

void FontsTest::languagesAreNamedInTheirScripts()
{
    QFETCH(int, language);
    QVERIFY(chooseLanguage(static_cast<LANG_ENUM>(language)));
    Panel panel;
    panel.show(Screen::SCREEN_MENU);
    TTreeWidget* const list = panel.list(Screen::SCREEN_MENU);
    list->expandAll();
    for (LANG_ENUM named : languages) {
        QTreeWidgetItem* const row =
            list->getItemById(static_cast<WIDGET_ITEM_ID_ENUM>(ITEM_LANGUAGE_ENGLISH + named));
        QCOMPARE(row->text(0), model()->getLanguageStrFromEnum(named));
        QCOMPARE(panel.faults(row->text(0), Screen::SCREEN_MENU, row), QString());
    }
}

void FontsTest::chargingSign()
{
    QFETCH(int, language);
    terminal().set("ram.status.psumcu.events.external_supply", 1);
    QVERIFY(chooseLanguage(static_cast<LANG_ENUM>(language)));
    Panel panel;
    panel.show(Screen::SCREEN_STATUS);
    QLabel* const text = panel.screen(Screen::SCREEN_STATUS)
                             ->findChild<QWidget*>("pBattLabel")
                             ->findChild<QLabel*>("pTopLayerLabel");
    QCOMPARE(text->text(), QString(chargeChar));
    QCOMPARE(family(text->font()), QString("dejavu sans mono"));
    QCOMPARE(panel.faults(text->text(), text), QString());
    terminal().set("ram.status.psumcu.events.external_supply", 0);
}

// A row whose words begin with an accent.
void FontsTest::accentOfAnAlert()
{
    QVERIFY(chooseLanguage(LANG_FRENCH));
    Panel panel;
    const unsigned int cause = EV_FAILURE_CAUSE_BASE + 0x14;
    terminal().setAll({{"ram.log.alert.1.identifier", sim::Value::integer(int(cause))},
                       {"ram.log.alert.1.severity", sim::Value::integer(EVENT_WARNING)},
                       {"ram.log.alert.1.state", sim::Value::integer(2)}});
    terminal().set("ram.log.alert.latest.entry_count", 2);
    QTRY_COMPARE_WITH_TIMEOUT(panel.popupText()->text(), model()->getEventText(cause), PATIENCE_MS);
    panel.closePopups();
    panel.show(Screen::SCREEN_MENU);
    QTreeWidgetItem* const alerts = panel.list(Screen::SCREEN_MENU)->getItemById(ITEM_ALERTS);
    alerts->setExpanded(true);
    const QString begin = alerts->child(0)->text(0).left(12);
    QVERIFY2(begin.startsWith(QChar(0xc9)), qPrintable(begin));
    QCOMPARE(panel.faults(begin, Screen::SCREEN_MENU, alerts->child(0)), QString());
    terminal().erasePrefix("ram.log.alert.1.");
    terminal().set("ram.log.alert.latest.entry_count", 0);
    QVERIFY(passBus());
}

void FontsTest::degreeSignOfTheBatteries()
{
    QFETCH(int, language);
    QVERIFY(chooseLanguage(static_cast<LANG_ENUM>(language)));
    Panel panel;
    panel.show(Screen::SCREEN_BATTERY);
    QLabel* const temperature = panel.screen(Screen::SCREEN_BATTERY)->findChild<QLabel*>("pBattIntTempLabel");
    QVERIFY(temperature->text().contains(degreeChar));
    QCOMPARE(panel.faults(temperature->text(), temperature), QString());
}

void FontsTest::degreeSignOfThePosition()
{
    QFETCH(int, language);
    QVERIFY(chooseLanguage(static_cast<LANG_ENUM>(language)));
    Panel panel;
    panel.show(Screen::SCREEN_ANTENNA);
    QLabel* const position = panel.screen(Screen::SCREEN_ANTENNA)->findChild<QLabel*>("pGpsValueLabel");
    QCOMPARE(position->text().count(degreeChar), 2);
    QCOMPARE(panel.faults(position->text(), position), QString());
}

int main(int argc, char** argv)
{
    return windowfixture::run<FontsTest>(argc, argv, sim::TerminalOptions());
}

#include "fonts_test.moc"
