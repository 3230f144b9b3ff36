// Whether the words of each language fit the places where they stand, text by text, and whether each event
// has words. The files are read as they are translated; that they hold all texts, finished, is the business
// of tools/check-translations. What several texts make together, and on the screens themselves, is seen by
// fit_test.cpp. The same table of places, for whoever translates, is in docs/translating.md.
#include "common/paths.h"
#include "model/event_ids.h"
#include "model/event_texts.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFontMetrics>
#include <QRegularExpression>
#include <QTest>
#include <QTranslator>
#include <QXmlStreamReader>

#include <algorithm>
#include <vector>

namespace {

const char* const WIDE[] = {"ru", "zh", "ja"};
const int POPUP_WIDTH = 246;

enum WRAPPING { BY_HAND, BY_ITSELF };

// Where a text stands: the first row whose pattern matches "context|source" as a whole. Pixels, lines. In the
// wide scripts, the time beside a connection's name is wider than in the others, and leaves less.
const struct Place {
    const char* pattern;
    int width;
    int lines;
    WRAPPING wrapping;
    int widthInWideScripts; // 0: the same
} PLACES[] = {
    // The status screen. A connection's name and the amount of data leave room for what is put behind them.
    {"Shared_translations\\|(Initializing|RM_EV_.*)", 184, 2, BY_HAND, 0},
    {"StatusUpdater\\|(Insert SIM|Initializing SIM|SIM Lock.*|Enter PUK in web interface|Enter PIN\\?|"
     "Point now\\?|Searching|Registering|Ready|External control|Bonding slave mode)",
     184, 2, BY_HAND, 0},
    {"StatusUpdater\\|(2x)?HDR .*|StatusUpdater\\|(BGAN X-Stream|Unknown connection)", 126, 1, BY_HAND, 112},
    {"StatusUpdater\\|Standard data: ", 118, 1, BY_HAND, 120},
    {"Shared_translations\\| (kB|kbps)|StatusUpdater\\| MB", 56, 1, BY_HAND, 0},
    {"ScreenStatus\\|[GRN]", 12, 1, BY_HAND, 0},
    // Events: the popups of the display itself, and alerts, which are rows of the menu as well.
    {"StatusUpdater\\|(EV_AP_GUI_.*|No alerts)", POPUP_WIDTH, 2, BY_ITSELF, 0},
    {"StatusUpdater\\|(RM_)?EV_.*", 230, 2, BY_HAND, 0},
    // The menu, from the deepest row to the shallowest, and the list of connections.
    {"ScreenMenu\\|(Level .|.* seconds?|.* minutes?|On|Off)", 171, 1, BY_HAND, 0},
    {"ScreenMenu\\|(Automatic|Manual)", 191, 1, BY_HAND, 0},
    {"ScreenMenu\\|(Brightness|Pointing|Unit serial number|Antenna serial number|LAN|WLAN)", 210, 1, BY_HAND,
     0},
    {"Shared_translations\\|Timeout", 210, 1, BY_HAND, 0},
    {"ScreenMenu\\|CONFORMITY_TEXT", POPUP_WIDTH, 10, BY_ITSELF, 0},
    {"ScreenMenu\\|(Point now|Settings|Properties|Help desk|Alerts)", 250, 1, BY_HAND, 0},
    {"ScreenMenu\\|.*", 230, 1, BY_HAND, 0},
    {"Shared_translations\\|Exit", 144, 1, BY_HAND, 0},
    {"Shared_translations\\|(Start|Stop)", 124, 1, BY_HAND, 0},
    {"Shared_translations\\|Connecting\\.\\.\\.", 100, 1, BY_HAND, 0},
    {"Shared_translations\\|(OK|Cancel)", 80, 1, BY_HAND, 0},
    // The pages of battery, antenna and PIN. State, percentage, temperature and its label share a line with
    // the icon. The position stands in a larger face, which the wide scripts don't have.
    {"StatusUpdater\\|(Idle|Charging|Discharging)", 80, 1, BY_HAND, 0},
    {"StatusUpdater\\|Precharging", 120, 1, BY_HAND, 0},
    {"ScreenBattery\\|Temp: ", 56, 1, BY_HAND, 0},
    {"StatusUpdater\\|(Battery error!|Estimating time\\.\\.\\.|Remaining .*)", 216, 1, BY_HAND, 0},
    {"ScreenBattery\\|(Int|Ext)", 40, 1, BY_HAND, 0},
    {"ScreenBattery\\|No battery connected", 256, 1, BY_HAND, 0},
    {"ScreenAntenna\\|(BGAN signal: |Position: )", 104, 1, BY_HAND, 0},
    {"ScreenAntenna\\|Acquiring position: ", 156, 1, BY_HAND, 0},
    {"StatusUpdater\\|Position acquired", 186, 1, BY_HAND, 240},
    {"StatusUpdater\\|[NSEWC]", 16, 1, BY_HAND, 0},
    {"ScreenEnterPin\\|.*", 190, 1, BY_HAND, 0},
    // Popups of the properties, and failure causes.
    {"Shared_translations\\|MAC: ", 110, 1, BY_HAND, 0},
    {"StatusUpdater\\|.*", POPUP_WIDTH, 3, BY_ITSELF, 0},
};

struct Text {
    QString context;
    QString source;
    QString words;
};

QStringList languages()
{
    QFile file(PROJECT_SOURCE_DIR "/res/translations/languages.txt");
    if (!file.open(QIODevice::ReadOnly))
        return QStringList();
    return QString::fromLatin1(file.readAll()).simplified().split(QLatin1Char(' '));
}

std::vector<Text> textsOf(const QString& language)
{
    std::vector<Text> texts;
    QFile file(QString(PROJECT_SOURCE_DIR "/res/translations/i18n_%1.ts").arg(language));
    if (!file.open(QIODevice::ReadOnly))
        return texts;
    QXmlStreamReader xml(&file);
    Text text;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name")) {
            text.context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            text.source = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            text.words = xml.readElementText();
            texts.push_back(text);
        }
    }
    return texts;
}

const Place* placeOf(const Text& text)
{
    const QString name = text.context + QLatin1Char('|') + text.source;
    for (const Place& place : PLACES) {
        const QRegularExpression pattern(QRegularExpression::anchoredPattern(place.pattern),
                                         QRegularExpression::DotMatchesEverythingOption);
        if (pattern.match(name).hasMatch())
            return &place;
    }
    return nullptr;
}

bool isWide(const QString& language)
{
    return std::any_of(std::begin(WIDE), std::end(WIDE),
                       [&](const char* wide) { return language == QLatin1String(wide); });
}

// The face in which the window shows the language.
QFont fontOf(const QString& language)
{
    QFont font(isWide(language) ? "unifont" : "helvetica");
    font.setPixelSize(14);
    font.setStyleStrategy(QFont::NoAntialias);
    return font;
}

// Arguments as they read at their longest.
QString filledIn(QString words)
{
    return words.replace("%1", "88").replace("%2", "88");
}

QSize sizeOf(const QString& words, const QFontMetrics& metrics, WRAPPING wrapping)
{
    if (wrapping == BY_ITSELF)
        return metrics.boundingRect(QRect(0, 0, POPUP_WIDTH, 1000), Qt::TextWordWrap, words).size();
    int width = 0;
    const QStringList lines = words.split(QLatin1Char('\n'));
    for (const QString& line : lines)
        width = qMax(width, metrics.horizontalAdvance(line));
    return QSize(width, lines.size() * metrics.lineSpacing());
}

} // namespace

class TranslationsTest : public QObject {
    Q_OBJECT

private slots:
    void wordsFit_data();
    void wordsFit();
    void eventsHaveWords_data() { addLanguages(); }
    void eventsHaveWords();
    void startAndStopDiffer_data() { addLanguages(); }
    void startAndStopDiffer();

private:
    static void addLanguages();
    static QString compiled(const QString& language);
};

void TranslationsTest::addLanguages()
{
    QTest::addColumn<QString>("language");
    for (const QString& language : languages())
        QTest::newRow(qPrintable(language)) << language;
}

// Files in the making too: whoever translates sees what doesn't fit before the language is listed.
void TranslationsTest::wordsFit_data()
{
    QTest::addColumn<QString>("language");
    const QStringList files =
        QDir(PROJECT_SOURCE_DIR "/res/translations").entryList(QStringList("i18n_*.ts"));
    QVERIFY(files.size() >= languages().size());
    for (const QString& file : files) {
        const QString language = file.mid(5, 2);
        QTest::newRow(qPrintable(language)) << language;
    }
}

QString TranslationsTest::compiled(const QString& language)
{
    return paths::resourcePath() + "/i18n_" + language + ".qm";
}

// All that don't fit are named, for whoever translates.
void TranslationsTest::wordsFit()
{
    QFETCH(QString, language);
    const QFontMetrics metrics(fontOf(language));
    const std::vector<Text> texts = textsOf(language);
    QVERIFY(texts.size() > 300);
    int faults = 0;
    for (const Text& text : texts) {
        const Place* const place = placeOf(text);
        if (!place) {
            ++faults;
            qWarning("%s|%s: no place is known for it", qPrintable(text.context), qPrintable(text.source));
            continue;
        }
        const QSize size = sizeOf(filledIn(text.words), metrics, place->wrapping);
        const int lines = (size.height() + metrics.lineSpacing() - 1) / metrics.lineSpacing();
        const bool narrower = place->widthInWideScripts && isWide(language);
        const int width = narrower ? place->widthInWideScripts : place->width;
        if (size.width() <= width && lines <= place->lines)
            continue;
        ++faults;
        qWarning("%s|%s: \"%s\" has %d pixels in %d lines; its place has %d in %d", qPrintable(text.context),
                 qPrintable(text.source), qPrintable(text.words), size.width(), lines, width, place->lines);
    }
    QCOMPARE(faults, 0);
}

// In the compiled file that the window loads, in the context in which the model asks.
void TranslationsTest::eventsHaveWords()
{
    QFETCH(QString, language);
    QTranslator translator;
    QVERIFY2(translator.load(compiled(language)), qPrintable(compiled(language)));
    int rows = 0;
    for (const EventText& row : EVENT_TEXTS) {
        if (!row.source)
            continue; // shows what its caller says
        ++rows;
        const QString words = translator.translate(row.context, row.source);
        QVERIFY2(!words.isEmpty() && !words.contains("EV_"), row.source);
    }
    QCOMPARE(rows, int(NUMBER_OF_EVENT_TEXTS) - 1);
}

// The list of connections tells by the text what a press on it asks for.
void TranslationsTest::startAndStopDiffer()
{
    QFETCH(QString, language);
    QTranslator translator;
    QVERIFY2(translator.load(compiled(language)), qPrintable(compiled(language)));
    QVERIFY(translator.translate("Shared_translations", "Start") !=
            translator.translate("Shared_translations", "Stop"));
}

QTEST_MAIN(TranslationsTest)
#include "translations_test.moc"
