// The language of the menu: what a change of it renews, the way back to English, and the names that are
// readable whatever the language.
#include "screens/menufixture.h"

#include "screens/pictures.h"
#include "support/patience.h"
#include "support/qmfile.h"

#include <QFontInfo>

using namespace windowfixture;

namespace {

const char* const FILES[] = {"i18n_en", "i18n_fr", "i18n_de", "i18n_ru", "i18n_es", "i18n_zh", "i18n_ja"};

// While it lives the panel finds a translation for each language here: some rows and an alert, each with
// the name of its file behind it.
class Translations {
public:
    Translations() : m_path(m_directory.path().toLocal8Bit())
    {
        const QDir icons(GuiApp::getResourcePath());
        for (const QString& icon : icons.entryList({"*.png"})) {
            QFile::link(icons.filePath(icon), m_directory.filePath(icon));
        }
        for (const char* const file : FILES) {
            writeQmFile(m_directory.filePath(QString("%1.qm").arg(file)),
                        {{"ScreenMenu", "Settings", QString("Settings %1").arg(file)},
                         {"ScreenMenu", "Level 4", QString("Level 4 %1").arg(file)},
                         {"Shared_translations", "Exit", QString("Exit %1").arg(file)},
                         {"StatusUpdater", "EV_ALARM_ANTENNA_FAILURE", QString("Antenna %1").arg(file)}});
        }
        paths::overrideForTest(m_path.constData(), nullptr, nullptr);
    }
    ~Translations() { paths::overrideForTest(nullptr, nullptr, nullptr); }

private:
    QTemporaryDir m_directory;
    QByteArray m_path;
};

} // namespace

class ScreenMenuLanguageTest : public QObject {
    Q_OBJECT

private slots:
    void init() { resetMenu(); }

    void pressChangesTheLanguage_data();
    void pressChangesTheLanguage();
    void changeRenewsTextsMarksAndAlerts();
    void changeIsTakenOverTwice();
    void namesKeepTheirFonts_data();
    void namesKeepTheirFonts();
    void namesAreReadable();
    void listTakesTheFontOfTheLanguage();
    void backToEnglishIsAbsentInEnglish();
    void backToEnglishStandsAfterExit_data();
    void backToEnglishStandsAfterExit();
    void backToEnglishWritesAndLeaves();
    void cursorLeavesBackToEnglishWhenItHides();
    void cursorStaysOnTheLanguageThatWasPressed();
};

void ScreenMenuLanguageTest::pressChangesTheLanguage_data()
{
    QTest::addColumn<int>("language");
    for (int language = 0; language <= 6; ++language) {
        QTest::newRow(FILES[language]) << language;
    }
}

void ScreenMenuLanguageTest::pressChangesTheLanguage()
{
    QFETCH(int, language);
    const Translations translations;
    terminal().set("cfg.language", language == 0 ? 2 : 0);
    QVERIFY(passBus());
    MenuFixture f;
    f.open();
    QVERIFY(f.press(43 + language));
    QVERIFY(terminal().waitForWrite("cfg.language", sim::Value::integer(language)));
    QVERIFY(passBus());
    QCOMPARE(int(model()->getLanguage()), language);
    QCOMPARE(f.checked(42), QList<int>({43 + language}));
    QCOMPARE(f.item(9)->text(0), QString("Settings %1").arg(FILES[language]));
    QCOMPARE(f.item(2)->isHidden(), language == 0);
    QVERIFY(f.isOpen());
    QCOMPARE(f.currentId(), 43 + language);
}

void ScreenMenuLanguageTest::changeRenewsTextsMarksAndAlerts()
{
    const Translations translations;
    MenuFixture f;
    setAlertLog({{EV_ALARM_ANTENNA_FAILURE, 0, 1600000000}});
    f.closePopups();
    terminal().set("cfg.language", 2);
    QVERIFY(passBus());
    QCOMPARE(f.item(1)->text(0), QString("Exit i18n_de"));
    QCOMPARE(f.item(9)->text(0), QString("Settings i18n_de"));
    QCOMPARE(f.item(16)->text(0), QString("Level 4 i18n_de"));
    QCOMPARE(f.item(62)->text(0), QString("Help desk")); // no translation: the source
    QCOMPARE(f.alerts(), QStringList("Antenna i18n_de"));
    QCOMPARE(f.item(2)->text(0), QString("Back to English"));
    QCOMPARE(f.item(43)->text(0), QString("English"));
    QCOMPARE(f.item(45)->text(0), QString("Deutsch"));
    QCOMPARE(f.checked(42), QList<int>({45}));
    QCOMPARE(f.checked(11), QList<int>({16})); // the other marks stay
}

// By the page itself and by the base class.
void ScreenMenuLanguageTest::changeIsTakenOverTwice()
{
    MenuFixture f;
    Messages messages;
    QEvent event(QEvent::LanguageChange);
    QCoreApplication::sendEvent(f.menu, &event);
    QCOMPARE(messages.count("ScreenMenu::updateLanguageMenuItemsFromEnum(): Force fixed font for "
                            "pSettingsLang<foo> menu items"),
             2);
}

void ScreenMenuLanguageTest::namesKeepTheirFonts_data()
{
    QTest::addColumn<int>("language");
    QTest::newRow("in English") << 0;
    QTest::newRow("in Russian") << 3;
    QTest::newRow("in Japanese") << 6;
}

void ScreenMenuLanguageTest::namesKeepTheirFonts()
{
    QFETCH(int, language);
    const Translations translations;
    MenuFixture f;
    terminal().set("cfg.language", language);
    QVERIFY(passBus());
    const char* const families[] = {"helvetica", "helvetica", "helvetica", "unifont",
                                    "helvetica", "unifont",   "unifont"};
    for (int i = 0; i <= 6; ++i) {
        const QFont font = f.item(43 + i)->data(0, Qt::FontRole).value<QFont>();
        QCOMPARE(fontText(font), fontText(*GuiApp::getFont(14, static_cast<LANG_ENUM>(i))));
        QCOMPARE(font.family(), QString(families[i]));
        QCOMPARE(font.pixelSize(), 14);
    }
    QVERIFY(!f.item(42)->data(0, Qt::FontRole).isValid());
}

// Each name has a face that really draws it: no character is replaced by a box.
void ScreenMenuLanguageTest::namesAreReadable()
{
    MenuFixture f;
    for (int id = 43; id <= 49; ++id) {
        const QFontMetrics metrics(f.item(id)->data(0, Qt::FontRole).value<QFont>());
        for (const QChar character : f.item(id)->text(0)) {
            QVERIFY2(metrics.inFont(character), qPrintable(f.item(id)->text(0)));
        }
    }
}

void ScreenMenuLanguageTest::listTakesTheFontOfTheLanguage()
{
    const Translations translations;
    MenuFixture f;
    f.open();
    for (int language : {3, 0, 5, 1, 6, 4}) {
        terminal().set("cfg.language", language);
        QVERIFY(passBus());
        QCOMPARE(fontText(f.tree->font()), fontText(*GuiApp::getFont(14, static_cast<LANG_ENUM>(language))));
    }
}

void ScreenMenuLanguageTest::backToEnglishIsAbsentInEnglish()
{
    MenuFixture f;
    f.open();
    QVERIFY(f.item(2)->isHidden());
    QCOMPARE(f.rowsInView(), QStringList({"Exit", "Point now", "Settings", "Properties"}));
    f.key(Qt::Key_Down);
    QCOMPARE(f.currentId(), 3);
}

void ScreenMenuLanguageTest::backToEnglishStandsAfterExit_data()
{
    QTest::addColumn<int>("language");
    for (int language = 1; language <= 6; ++language) {
        QTest::newRow(FILES[language]) << language;
    }
}

void ScreenMenuLanguageTest::backToEnglishStandsAfterExit()
{
    QFETCH(int, language);
    const Translations translations;
    MenuFixture f;
    f.open();
    terminal().set("cfg.language", language);
    QVERIFY(passBus());
    QCOMPARE(f.rowsInView().mid(0, 2),
             QStringList({QString("Exit %1").arg(FILES[language]), "Back to English"}));
    QCOMPARE(f.currentId(), 1);
    f.key(Qt::Key_Down);
    QCOMPARE(f.currentId(), 2);
    // And in a window that is built in that language.
    f.leave();
    MenuFixture later;
    QVERIFY(!later.item(2)->isHidden());
}

void ScreenMenuLanguageTest::backToEnglishWritesAndLeaves()
{
    const Translations translations;
    terminal().set("cfg.language", 3);
    QVERIFY(passBus());
    MenuFixture f;
    f.window.showScreen(Screen::SCREEN_BATTERY, false);
    f.window.showScreen(Screen::SCREEN_MENU, true);
    QVERIFY(f.press(2));
    QVERIFY(terminal().waitForWrite("cfg.language", sim::Value::integer(0)));
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_BATTERY);
    QCOMPARE(f.currentId(), 1);
    QVERIFY(passBus());
    QCOMPARE(int(model()->getLanguage()), 0);
    QVERIFY(f.item(2)->isHidden());
    QCOMPARE(f.checked(42), QList<int>({43}));
    QCOMPARE(f.item(9)->text(0), QString("Settings i18n_en"));
    f.open();
    QCOMPARE(f.rowsInView().first(), QString("Exit i18n_en"));
}

void ScreenMenuLanguageTest::cursorLeavesBackToEnglishWhenItHides()
{
    const Translations translations;
    terminal().set("cfg.language", 2);
    QVERIFY(passBus());
    MenuFixture f;
    f.open();
    QVERIFY(f.walkTo(2));
    terminal().set("cfg.language", 0); // on another interface
    QVERIFY(passBus());
    QCOMPARE(f.currentId(), 1);
    f.key(Qt::Key_Down);
    QCOMPARE(f.currentId(), 3);
}

void ScreenMenuLanguageTest::cursorStaysOnTheLanguageThatWasPressed()
{
    const Translations translations;
    MenuFixture f;
    f.open();
    for (int id : {46, 49, 43}) {
        QVERIFY(f.press(id));
        QTRY_COMPARE_WITH_TIMEOUT(f.checked(42), QList<int>({id}), PATIENCE_MS);
        QCOMPARE(f.currentId(), id);
        QVERIFY(f.rowsInView().contains(f.currentText()));
    }
}

int main(int argc, char** argv)
{
    return run<ScreenMenuLanguageTest>(argc, argv);
}

#include "screenmenu_language_test.moc"
