// The main window's change of language: the file of each language, the font, and who hears of it.
#include "screens/windowcase.h"

#include "support/qmfile.h"

#include <QLabel>
#include <QMap>
#include <QTreeWidget>

using namespace windowfixture;

namespace {

const char TEXT[] = "EV_ALARM_SIM_MODULE"; // of the model's context

QString translated()
{
    return QCoreApplication::translate("StatusUpdater", TEXT);
}

} // namespace

class WindowLanguageTest : public QObject, protected WindowCase {
    Q_OBJECT

private slots:
    void init() { startTest(); }
    void cleanup() { endTest(); }

    void languageHasItsFile_data();
    void languageHasItsFile();
    void languageHasItsFont_data();
    void languageHasItsFont();
    void fontChangesBeforeTheTexts();
    void missingTranslationLeavesTextsButChangesTheFont();
    void missingTranslationTakesTheOldOneAway();
    void changeReachesTheModel();
    void changeReachesEveryScreen();
    void windowTakesItsTranslationAlong();
};

void WindowLanguageTest::languageHasItsFile_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("file");
    QTest::newRow("English") << 0 << "i18n_en";
    QTest::newRow("French") << 1 << "i18n_fr";
    QTest::newRow("German") << 2 << "i18n_de";
    QTest::newRow("Russian") << 3 << "i18n_ru";
    QTest::newRow("Spanish") << 4 << "i18n_es";
    QTest::newRow("Chinese") << 5 << "i18n_zh";
    QTest::newRow("Japanese") << 6 << "i18n_ja";
    QTest::newRow("undefined") << 7 << "i18n_en";
    QTest::newRow("above all languages") << 8 << "i18n_en";
}

void WindowLanguageTest::languageHasItsFile()
{
    QFETCH(int, language);
    QFETCH(QString, file);
    makeWindow();
    useOwnTranslations();
    QVERIFY(
        writeQmFile(m_directory->filePath(file + ".qm"), {{"StatusUpdater", TEXT, "translated " + file}}));
    Messages messages;
    m_window->handleRequestLoadLanguage(static_cast<LANG_ENUM>(language));
    QCOMPARE(messages.texts().first(), QString("Window::handleRequestLoadLanguage(): Start of function."));
    QCOMPARE(messages.count("Window::loadLanguage(): translation file " + file + " installed."), 1);
    QCOMPARE(translated(), "translated " + file);
}

void WindowLanguageTest::languageHasItsFont_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("family");
    const QString latin = GuiApp::getFont(14, LANG_ENGLISH)->family();
    for (int language : {LANG_ENGLISH, LANG_FRENCH, LANG_GERMAN, LANG_SPANISH}) {
        QTest::addRow("%d", language) << language << latin;
    }
    for (int language : {LANG_RUSSIAN, LANG_CHINESE, LANG_JAPANESE}) {
        QTest::addRow("%d", language) << language << "unifont";
    }
}

void WindowLanguageTest::languageHasItsFont()
{
    QFETCH(int, language);
    QFETCH(QString, family);
    makeWindow();
    m_window->handleRequestLoadLanguage(static_cast<LANG_ENUM>(language));
    QCOMPARE(QApplication::font().family(), family);
}

void WindowLanguageTest::fontChangesBeforeTheTexts()
{
    class Order : public QObject {
    public:
        QStringList events;
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::LanguageChange) {
                events.append("texts in " + QApplication::font().family());
            }
            return false;
        }
    } order;
    makeWindow();
    m_window->installEventFilter(&order);
    m_window->handleRequestLoadLanguage(LANG_RUSSIAN);
    QCoreApplication::sendPostedEvents();
    QVERIFY(!order.events.isEmpty());
    for (const QString& event : order.events) {
        QCOMPARE(event, QString("texts in unifont"));
    }
}

void WindowLanguageTest::missingTranslationLeavesTextsButChangesTheFont()
{
    makeWindow();
    useOwnTranslations();
    Messages messages;
    m_window->handleRequestLoadLanguage(LANG_RUSSIAN);
    QCOMPARE(messages.count("Window::loadLanguage(): ERROR!!! Can not load translation file i18n_ru for "
                            "path=" +
                            m_directory->path() + " !!!"),
             1);
    QCOMPARE(QApplication::font().family(), QString("unifont"));
    QCOMPARE(translated(), QString(TEXT));
}

void WindowLanguageTest::missingTranslationTakesTheOldOneAway()
{
    makeWindow();
    useOwnTranslations();
    QVERIFY(writeQmFile(m_directory->filePath("i18n_de.qm"), {{"StatusUpdater", TEXT, "SIM defekt"}}));
    m_window->handleRequestLoadLanguage(LANG_GERMAN);
    QCOMPARE(translated(), QString("SIM defekt"));
    m_window->handleRequestLoadLanguage(LANG_FRENCH);
    QCOMPARE(translated(), QString(TEXT));
    m_window->handleRequestLoadLanguage(LANG_GERMAN);
    QCOMPARE(translated(), QString("SIM defekt"));
}

void WindowLanguageTest::changeReachesTheModel()
{
    makeWindow();
    useOwnTranslations();
    QVERIFY(writeQmFile(m_directory->filePath("i18n_de.qm"), {{"StatusUpdater", TEXT, "SIM defekt"}}));
    Messages messages;
    model()->setLanguage(LANG_GERMAN); // through the model's signal
    QCOMPARE(model()->getEventText(EV_ALARM_SIM_MODULE), QString("SIM defekt"));
}

// Each screen hears of it, and what it says is translated, shown or not.
void WindowLanguageTest::changeReachesEveryScreen()
{
    class Receivers : public QObject {
    public:
        QMap<QString, int> changes;
        bool eventFilter(QObject* receiver, QEvent* event) override
        {
            if (event->type() == QEvent::LanguageChange) {
                ++changes[static_cast<Screen*>(receiver)->getScreenName()];
            }
            return false;
        }
    } receivers;
    makeWindow();
    useOwnTranslations();
    QVERIFY(
        writeQmFile(m_directory->filePath("i18n_de.qm"), {{"Shared_translations", "Exit", "Zur\303\274ck"},
                                                          {"Shared_translations", "Cancel", "Abbrechen"}}));
    for (Screen* page : m_window->findChildren<Screen*>()) {
        page->installEventFilter(&receivers);
    }
    model()->setLanguage(LANG_GERMAN);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(receivers.changes.size(), 8);
    for (int changes : receivers.changes) {
        QVERIFY(changes >= 1);
    }
    const QString exit = QCoreApplication::translate("Shared_translations", "Exit");
    for (Screen::SCREEN_ID_ENUM id : {Screen::SCREEN_MENU, Screen::SCREEN_ACTION}) {
        QCOMPARE(screen(id)->findChild<QTreeWidget*>("pTreeWidget")->topLevelItem(0)->text(0), exit);
    }
    for (Screen::SCREEN_ID_ENUM id : {Screen::SCREEN_POINTING, Screen::SCREEN_ENTER_PIN}) {
        QStringList texts;
        for (const QLabel* label : screen(id)->findChildren<QLabel*>()) {
            texts.append(label->text());
        }
        QVERIFY2(!texts.filter("Abbrechen").isEmpty(), qPrintable(texts.join(", ")));
    }
}

void WindowLanguageTest::windowTakesItsTranslationAlong()
{
    makeWindow();
    useOwnTranslations();
    QVERIFY(writeQmFile(m_directory->filePath("i18n_de.qm"), {{"StatusUpdater", TEXT, "SIM defekt"}}));
    m_window->handleRequestLoadLanguage(LANG_GERMAN);
    QCOMPARE(translated(), QString("SIM defekt"));
    m_window.reset();
    QCOMPARE(translated(), QString(TEXT));
}

int main(int argc, char** argv)
{
    return windowfixture::run<WindowLanguageTest>(argc, argv);
}

#include "window_language_test.moc"
