// A change of the language while the panel runs, from each language to each other, in states in which the
// screens have much to say: afterwards every text, shown or hidden, and its font are those of a window that
// was built in the new language. What keeps its words is told in two tables, with the reason.
#include "screens/screentexts.h"
#include "screens/statusfixture.h"

#include "common/constants.h"
#include "screens/screenpopup.h"

#include "support/patience.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QSet>

#include <memory>

using namespace windowfixture;

namespace {

const int LANGUAGES = 7;
const char LOG_WORDS[] = "Own words of the log";
const char CYRILLIC_NAME[] = "\320\240\320\260\320\264\320\270\320\276"; // "Radio"

// Texts that a change does not reach.
const struct {
    const char* place;
    const char* reason;
} keptPlaces[] = {
    {"SCREEN_POPUP/pTextFrame/pTextLabel", "a popup keeps the words with which it came up"},
};

// Texts with letters in them that read the same in all languages.
const struct {
    const char* place; // a regular expression, as the next one
    const char* text;
    const char* reason;
} sameEverywhere[] = {
    {"SCREEN_MENU/pTreeWidget/1", "Back to English", "the way out for who cannot read the language in use"},
    {"SCREEN_MENU/pTreeWidget/3/3/\\d", ".+", "each language by its own name"},
    {"SCREEN_MENU/pTreeWidget/.+", LOG_WORDS, "an alert without words of its own has those of the log"},
    {"SCREEN_MENU/pTreeWidget/.+", "LAN|WLAN|IMEI", "names of the trade"},
    {"SCREEN_ACTION/pTreeWidget/\\d", "Standard data|Streaming 64 kbps|Data and voice|\320\240.+",
     "the user has named the bundles"},
    {"SCREEN_(ANTENNA|POINTING)/.+", " dBHz", "a unit"},
    {"SCREEN_STATUS/pAntennaLabel/pTopLayerLabel", "[GRN]\\d+", "the beam's letter is the network's own"},
    {"SCREEN_BATTERY/pBatt(Int|Ext)TempLabel", "-?\\d+\302\260C", "a unit"},
    {"SCREEN_(POINTING|POPUP|ENTER_PIN)/p(Ok|Right)Label", "OK", "the same word in all of them"},
};

QString languageName(int language)
{
    return model()->getLanguageStrFromEnum(static_cast<LANG_ENUM>(language));
}

bool isWide(int language)
{
    return language == LANG_RUSSIAN || language == LANG_CHINESE || language == LANG_JAPANESE;
}

// --- States ------------------------------------------------------------------------------------------------

void normalOperation()
{
    terminal().resetValues();
    terminal().set("cfg.admin.bundle.3.name", std::string(CYRILLIC_NAME));
}

void addAlert(int index, unsigned int id)
{
    const std::string key = "ram.log.alert." + std::to_string(index) + ".";
    terminal().setAll({{key + "entry", sim::Value::integer(index)},
                       {key + "identifier", sim::Value::integer(int(id))},
                       {key + "sub_id", sim::Value::integer(0x17)},
                       {key + "severity", sim::Value::integer(EVENT_WARNING)},
                       {key + "state", sim::Value::integer(2)},
                       {key + "time", sim::Value::integer(1700000000 + index)},
                       {key + "shorttext", sim::Value::text(LOG_WORDS)}});
}

void session(BUNDLE_STATUS status)
{
    const std::string key = "ram.status.ongoing_data_sessions.0.";
    terminal().setAll(
        {{"ram.net.user_groups.0.current_bundle", sim::Value::integer(1)},
         {key + "time", sim::Value::integer(int(QDateTime::currentMSecsSinceEpoch() / 1000 - 1000))},
         {key + "context.1.traffic_class", sim::Value::integer(1)},
         {key + "context.1.max_bw_up", sim::Value::integer(64)},
         {key + "context.1.max_bw_down", sim::Value::integer(64)},
         {key + "status", sim::Value::integer(status)}});
}

void secondBattery(int charge)
{
    const std::string key = "ram.status.battery.2.";
    terminal().setAll({{key + "status", sim::Value::integer(BATT_PRESENT)},
                       {key + "charge_discharge_status", sim::Value::integer(charge)},
                       {key + "relative_state_of_charge", sim::Value::integer(45)},
                       {key + "average_time_to_full", sim::Value::integer(65)}});
}

void runningBundle()
{
    session(BUNDLE_STATUS_RUNNING);
    secondBattery(BATT_CHARGING);
    addAlert(1, EV_ALARM_SIM_MODULE);
    addAlert(2, EV_FAILURE_CAUSE_BASE + 0x31);
    addAlert(3, 0x7abc);
    terminal().set("ram.log.alert.latest.entry_count", 3); // tells of them all
    terminal().set("ram.status.position.fix", 0);
}

void startingBundle()
{
    session(BUNDLE_STATUS_INITIALIZING);
    secondBattery(BATT_PRECHARGING);
    terminal().set("ram.status.psumcu.events.external_supply", 1); // the charging mark
    terminal().set("rmcfg.protocols.bgan.status.beam_type", std::string("Regional"));
}

void pinNeeded()
{
    terminal().set("rmcfg.platform.usim.pin.status", std::string("Needed"));
    terminal().set("ram.status.battery.1.status", BATT_ABSENT);
    terminal().set("rmcfg.protocols.bgan.status.gps_policy.display", 0);
}

void pointing()
{
    terminal().set("ram.status.pointed_status", 1);
    terminal().set("ram.status.battery.1.status", BATT_IN_ERROR);
    terminal().set("rmcfg.protocols.umts.plmn.status", std::string("Searching"));
    terminal().set("rmcfg.protocols.bgan.status.beam_type", std::string("Global"));
}

void simMissing()
{
    terminal().set("rmcfg.platform.usim.status", 0);
    terminal().set("ram.status.battery.1.charge_discharge_status", BATT_CHARGING);
    terminal().set("ram.status.battery.1.average_time_to_full", 0); // an estimate is to come
}

const struct State {
    const char* name;
    void (*make)();
    int sim;               // SIM_STATUS_ENUM
    STATUS_TEXT_ENUM text; // of the status screen
    int beam;              // IAI2_BEAM_TYPE_ENUM
} states[] = {
    {"a bundle runs, with alerts", runningBundle, SIM_READY, STATUS_TEXT_ACTIVE_BUNDLES,
     IAI2_BEAM_TYPE_NARROW},
    {"a bundle starts", startingBundle, SIM_READY, STATUS_TEXT_ACTIVE_BUNDLES, IAI2_BEAM_TYPE_REGIONAL},
    {"a PIN is needed", pinNeeded, SIM_PIN_NEEDED, STATUS_TEXT_ENTER_PIN, IAI2_BEAM_TYPE_NARROW},
    {"pointing", pointing, SIM_READY, STATUS_TEXT_SEARCHING, IAI2_BEAM_TYPE_GLOBAL},
    {"no SIM", simMissing, SIM_NOT_PRESENT, STATUS_TEXT_INSERT_SIM, IAI2_BEAM_TYPE_NARROW},
};

// --- Windows -----------------------------------------------------------------------------------------------

// The way it takes in the terminal: somebody writes the setting.
bool chooseLanguage(int language)
{
    terminal().set("cfg.language", language);
    const bool chosen =
        QTest::qWaitFor([language] { return model()->getLanguage() == language; }, PATIENCE_MS) && passBus();
    QCoreApplication::sendPostedEvents(); // the window has loaded the words; now the screens hear of them
    return chosen;
}

// A window as it stands after its start; on the PIN screen the cursor is on the last digit.
std::unique_ptr<Window> builtWindow()
{
    std::unique_ptr<Window> window(new Window);
    QCoreApplication::sendPostedEvents();
    passBus();
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(window->getScreenById(Screen::SCREEN_ENTER_PIN), Qt::Key_Right);
    return window;
}

bool isKept(const QString& place)
{
    for (const auto& row : keptPlaces)
        if (place == row.place)
            return true;
    return false;
}

// How two windows differ, with all that differs; empty if they don't.
QString differences(const ScreenTexts& actual, const ScreenTexts& expected)
{
    QStringList result;
    const QStringList actualPlaces = actual.keys();
    const QStringList expectedPlaces = expected.keys();
    if (actualPlaces != expectedPlaces)
        result.append("other places");
    for (auto it = expected.begin(); it != expected.end(); ++it) {
        if (isKept(it.key()))
            continue;
        const ScreenText text = actual.value(it.key());
        if (text.text != it->text || text.font != it->font || text.hidden != it->hidden)
            result.append(QString("%1: \"%2\" in %3 (hidden %4), expected \"%5\" in %6 (hidden %7)")
                              .arg(it.key(), text.text, text.font)
                              .arg(text.hidden)
                              .arg(it->text, it->font)
                              .arg(it->hidden));
    }
    return result.join("\n");
}

QStringList popupTexts(const Window& window)
{
    QStringList texts;
    const ScreenPopup* const popups = window.findChild<ScreenPopup*>();
    for (const popup_event_t& popup : popups->events())
        texts.append(popup.text);
    return texts;
}

} // namespace

class LanguageChangeTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void cleanup();

    void everyTextIsOfTheNewLanguage_data() { addStates(); }
    void everyTextIsOfTheNewLanguage();
    void noTextIsLeftUntranslated_data() { addStates(); }
    void noTextIsLeftUntranslated();
    void fontFollowsTheLanguage_data() { addStates(); }
    void fontFollowsTheLanguage();
    void popupKeepsItsWords();
    void shownScreenChangesBeforeTheEyes_data();
    void shownScreenChangesBeforeTheEyes();

private:
    static void addStates()
    {
        QTest::addColumn<int>("row");
        int row = 0;
        for (const State& state : states)
            QTest::newRow(state.name) << row++;
    }
    // The terminal in a state, and the texts of a window in each language. False if the model did not come
    // to it.
    bool bringAbout(const State& state);

    QTemporaryDir m_directory;
    QByteArray m_path;
    QByteArray m_contrast;
    QList<ScreenTexts> m_fresh; // by language
    QMap<const State*, QList<ScreenTexts>> m_freshIn;
};

void LanguageChangeTest::initTestCase()
{
    m_path = m_directory.path().toUtf8();
    m_contrast = m_directory.filePath("contrast").toUtf8();
    QVERIFY(QFile(m_contrast).open(QIODevice::WriteOnly));
    paths::overrideForTest(nullptr, m_path.constData(), m_contrast.constData());
    model()->setSimPinRetriesLeft(2);
}

void LanguageChangeTest::cleanupTestCase()
{
    paths::overrideForTest(nullptr, nullptr, nullptr);
}

void LanguageChangeTest::cleanup()
{
    normalOperation();
    QVERIFY(chooseLanguage(LANG_ENGLISH));
}

bool LanguageChangeTest::bringAbout(const State& state)
{
    normalOperation();
    state.make();
    const std::unique_ptr<Window> nudge = builtWindow(); // the bus thread looks at the radio module anew
    const bool reached = QTest::qWaitFor(
        [&state] {
            passBus();
            model()->updateCurrentStatusTextId();
            return model()->getSimStatus() == state.sim && model()->getIai2BeamType() == state.beam &&
                   model()->getCurrentStatusTextId() == state.text;
        },
        30000);
    if (m_freshIn.contains(&state)) {
        m_fresh = m_freshIn.value(&state);
        return reached;
    }
    m_fresh.clear();
    for (int language = 0; language < LANGUAGES; ++language) {
        if (!chooseLanguage(language))
            return false;
        m_fresh.append(textsOf(*builtWindow()));
    }
    m_freshIn.insert(&state, m_fresh);
    return reached;
}

// From each language to each other, and all in one life of the window: what one change left behind shows
// after the next.
void LanguageChangeTest::everyTextIsOfTheNewLanguage()
{
    QFETCH(int, row);
    QVERIFY(bringAbout(states[row]));
    QVERIFY(chooseLanguage(LANG_ENGLISH));
    const std::unique_ptr<Window> window = builtWindow();
    QCOMPARE(differences(textsOf(*window), m_fresh.at(LANG_ENGLISH)), QString());
    // A walk of each stride comes back to where it began, and has been everywhere: 7 is a prime.
    for (int stride = 1; stride < LANGUAGES; ++stride) {
        for (int step = 0; step < LANGUAGES; ++step) {
            const int from = step * stride % LANGUAGES;
            const int to = (from + stride) % LANGUAGES;
            QCOMPARE(static_cast<int>(model()->getLanguage()), from);
            QVERIFY(chooseLanguage(to));
            const QString wrong = differences(textsOf(*window), m_fresh.at(to));
            QVERIFY2(wrong.isEmpty(),
                     qPrintable(QString("%1 to %2\n%3").arg(languageName(from), languageName(to), wrong)));
        }
    }
}

void LanguageChangeTest::noTextIsLeftUntranslated()
{
    QFETCH(int, row);
    QVERIFY(bringAbout(states[row]));
    QStringList untranslated;
    int translated = 0;
    for (const QString& place : m_fresh.first().keys()) {
        QSet<QString> texts;
        for (const ScreenTexts& fresh : m_fresh)
            texts.insert(fresh.value(place).text);
        const QString text = m_fresh.first().value(place).text;
        if (texts.size() > 1) {
            ++translated;
            continue;
        }
        bool known = isKept(place) || !text.contains(QRegularExpression("\\p{L}"));
        for (const auto& same : sameEverywhere) {
            known = known ||
                    (QRegularExpression(QRegularExpression::anchoredPattern(same.place))
                         .match(place)
                         .hasMatch() &&
                     QRegularExpression(QRegularExpression::anchoredPattern(QString::fromUtf8(same.text)))
                         .match(text)
                         .hasMatch());
        }
        if (!known)
            untranslated.append(place + ": " + text);
    }
    QCOMPARE(untranslated.join("\n"), QString());
    QVERIFY2(translated >= 50, QByteArray::number(translated)); // the menu alone has more
}

// The wide face for Russian, Chinese and Japanese and the other one for the rest, and back.
void LanguageChangeTest::fontFollowsTheLanguage()
{
    QFETCH(int, row);
    QVERIFY(bringAbout(states[row]));
    QVERIFY(chooseLanguage(LANG_ENGLISH));
    const std::unique_ptr<Window> window = builtWindow();
    for (int language : {LANG_RUSSIAN, LANG_FRENCH, LANG_CHINESE, LANG_GERMAN, LANG_JAPANESE, LANG_SPANISH,
                         LANG_JAPANESE, LANG_ENGLISH}) {
        QVERIFY(chooseLanguage(language));
        const QString family = isWide(language) ? "unifont" : "helvetica";
        const ScreenTexts texts = textsOf(*window);
        for (auto it = texts.begin(); it != texts.end(); ++it) {
            QString expected = family;
            for (int own = 0; own < LANGUAGES; ++own)
                if (it->text == languageName(own)) // each language in its own face
                    expected = isWide(own) ? "unifont" : "helvetica";
            if (it->text == QString::fromUtf8(CYRILLIC_NAME))
                expected = "unifont";
            if (it->text == QString(chargeChar))
                expected = "DejaVu Sans Mono";
            QVERIFY2(
                it->font.startsWith(expected + " "),
                qPrintable(languageName(language) + ", " + it.key() + ": " + it->text + " in " + it->font));
        }
    }
}

void LanguageChangeTest::popupKeepsItsWords()
{
    QVERIFY(bringAbout(states[0]));
    QVERIFY(chooseLanguage(LANG_GERMAN));
    const std::unique_ptr<Window> window = builtWindow();
    const QStringList queued = popupTexts(*window);
    QCOMPARE(queued.size(), 3);
    QLabel* const text = window->findChild<QLabel*>("pTextLabel");
    QCOMPARE(text->text(), queued.first());
    QVERIFY(queued.contains(model()->getEventText(EV_ALARM_SIM_MODULE)));
    const QString caption = m_fresh.at(LANG_JAPANESE).value("SCREEN_POPUP/pCancelLabel").text;
    for (int language : {LANG_JAPANESE, LANG_FRENCH, LANG_GERMAN}) {
        QVERIFY(chooseLanguage(language));
        QCOMPARE(popupTexts(*window), queued);
        QCOMPARE(text->text(), queued.first());
        QCOMPARE(textsOf(*window).value("SCREEN_POPUP/pCancelLabel").text == caption,
                 language == LANG_JAPANESE);
    }
}

void LanguageChangeTest::shownScreenChangesBeforeTheEyes_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("status") << int(Screen::SCREEN_STATUS);
    QTest::newRow("battery") << int(Screen::SCREEN_BATTERY);
    QTest::newRow("antenna") << int(Screen::SCREEN_ANTENNA);
    QTest::newRow("action") << int(Screen::SCREEN_ACTION);
    QTest::newRow("menu") << int(Screen::SCREEN_MENU);
    QTest::newRow("pointing") << int(Screen::SCREEN_POINTING);
    QTest::newRow("PIN") << int(Screen::SCREEN_ENTER_PIN);
}

// To the pixel what a window built in the new language shows.
void LanguageChangeTest::shownScreenChangesBeforeTheEyes()
{
    QFETCH(int, id);
    normalOperation();
    if (id == Screen::SCREEN_POINTING) {
        pointing();
        QTRY_COMPARE_WITH_TIMEOUT(model()->getPointingMode(), static_cast<int>(POINTING_STATUS_POINTING),
                                  PATIENCE_MS);
    }
    const auto pictureIn = [id](Window& window) {
        window.showScreen(static_cast<Screen::SCREEN_ID_ENUM>(id), false);
        QCoreApplication::sendPostedEvents();
        return window.grab().toImage();
    };
    QList<QImage> fresh;
    for (int language = 0; language < LANGUAGES; ++language) {
        QVERIFY(chooseLanguage(language));
        fresh.append(pictureIn(*builtWindow()));
    }
    QVERIFY(chooseLanguage(LANG_ENGLISH));
    const std::unique_ptr<Window> window = builtWindow();
    QCOMPARE(pictureIn(*window), fresh.at(LANG_ENGLISH));
    for (int language :
         {LANG_CHINESE, LANG_GERMAN, LANG_RUSSIAN, LANG_FRENCH, LANG_JAPANESE, LANG_SPANISH, LANG_ENGLISH}) {
        QVERIFY(chooseLanguage(language));
        QCOMPARE(window->getCurrentScreenId(), static_cast<Screen::SCREEN_ID_ENUM>(id));
        QTRY_COMPARE_WITH_TIMEOUT(window->grab().toImage(), fresh.at(language),
                                  PATIENCE_MS); // a layout may take a moment
    }
}

int main(int argc, char** argv)
{
    return windowfixture::run<LanguageChangeTest>(argc, argv, sim::TerminalOptions());
}

#include "language_change_test.moc"
