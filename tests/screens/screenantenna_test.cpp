// The antenna screen: signal, position and the blinking bar of satellites, and the way back by any key.
#include "screens/pagefixture.h"

#include "screens/screenantenna.h"
#include "support/death.h"
#include "support/failingnew.h"
#include "support/patience.h"

#include <QElapsedTimer>
#include <QGridLayout>
#include <QProgressBar>
#include <QSignalSpy>

#include <thread>

using namespace windowfixture;

namespace {

gps_data_t position(int fix, int satellites, bool displayAllowed = true)
{
    gps_data_t data;
    data.latDeg = 55;
    data.latMin = 8;
    data.longEast = false;
    data.longDeg = 179;
    data.longMin = 59;
    data.fix_type = fix;
    data.numberOfGpsFound = satellites;
    data.displayPositionAllowed = displayAllowed;
    return data;
}

class AntennaFixture : public PageFixture {
public:
    AntennaFixture()
        : PageFixture(Screen::SCREEN_ANTENNA), screen(static_cast<ScreenAntenna*>(page)),
          bar(page->findChild<QProgressBar*>("pGpsProgressBar")),
          timer(page->findChild<QTimer*>("pProgressBarBlinkTimer"))
    {
    }
    // The names of what is seen of the position.
    QStringList seen() const
    {
        QStringList result;
        for (const char* name : {"pGpsTitleLabel", "pGpsValueLabel", "pGpsWideLabel", "pGpsProgressBar"}) {
            if (shown(name)) {
                result.append(name);
            }
        }
        return result;
    }

    ScreenAntenna* const screen;
    QProgressBar* const bar;
    QTimer* const timer;
};

} // namespace

class ScreenAntennaTest : public QObject {
    Q_OBJECT

private slots:
    void widgetsAreAsTold();
    void barIsAsTold();

    void signalText_data();
    void signalText();
    void signalComesOverTheBus();
    void signalOfTheModelStandsFromTheStart();

    void fixDecidesWhatIsSeen_data();
    void fixDecidesWhatIsSeen();
    void positionComesOverTheBus();
    void lossOfTheFixBringsTheBarBack();
    void dataOfAnotherThreadArriveQueued();

    void nextSegmentBlinks_data();
    void nextSegmentBlinks();
    void fourSatellitesAskForMoreThanTheRange();
    void blinkTakesHalfASecond();
    void timerRunsWhileTheScreenIsVisible();
    void fixEndsTheBlinking();
    void dataForAHiddenScreenStartTheTimer();

    void languageChange();
    void languageChangeOfTheTitle_data();
    void languageChangeOfTheTitle();
    void nothingIsCutOrOverlaps_data();
    void nothingIsCutOrOverlaps();
    void withoutMemoryTheProcessEnds();
};

// --- Widgets and keys --------------------------------------------------------------------------------------

void ScreenAntennaTest::widgetsAreAsTold()
{
    AntennaFixture f;
    const Qt::Alignment right = Qt::AlignRight | Qt::AlignVCenter;
    const Qt::Alignment left = Qt::AlignLeft | Qt::AlignVCenter;
    const struct {
        const char* name;
        Qt::Alignment alignment;
        int pixelSize;
    } labels[] = {
        {"pBganSignalTitleLabel", right, 14}, {"pBganSignalLabel", left, 16},
        {"pBganSignalUnitLabel", left, 14},   {"pGpsTitleLabel", right, 14},
        {"pGpsValueLabel", left, 16},         {"pGpsWideLabel", Qt::AlignCenter, 16},
    };
    for (const auto& row : labels) {
        QCOMPARE(f.label(row.name)->alignment(), row.alignment);
        QCOMPARE(f.label(row.name)->font().pixelSize(), row.pixelSize);
    }
    QCOMPARE(f.text("pBganSignalTitleLabel"), QString("BGAN signal: "));
    QCOMPARE(f.text("pBganSignalUnitLabel"), QString(" dBHz"));

    QGridLayout* const grid = qobject_cast<QGridLayout*>(f.page->layout());
    QVERIFY(grid);
    QCOMPARE(grid->contentsMargins(), QMargins());
    QCOMPARE(grid->spacing(), 0);
    QCOMPARE(grid->columnStretch(0), 10);
    QCOMPARE(grid->columnStretch(3), 10);
    QCOMPARE(grid->itemAtPosition(0, 1)->widget(), static_cast<QWidget*>(f.label("pBganSignalTitleLabel")));
    QCOMPARE(grid->itemAtPosition(1, 1)->widget(), static_cast<QWidget*>(f.label("pGpsTitleLabel")));
    for (int column : {1, 2}) {
        QCOMPARE(grid->itemAtPosition(2, column)->widget(), static_cast<QWidget*>(f.label("pGpsWideLabel")));
    }
    const QList<QList<QWidget*>> rows = {{f.label("pBganSignalLabel"), f.label("pBganSignalUnitLabel")},
                                         {f.label("pGpsValueLabel"), f.bar}};
    for (int row = 0; row < rows.size(); ++row) {
        QHBoxLayout* const box = qobject_cast<QHBoxLayout*>(grid->itemAtPosition(row, 2)->layout());
        QVERIFY(box);
        QCOMPARE(box->contentsMargins(), QMargins());
        QCOMPARE(box->spacing(), 0);
        QCOMPARE(box->count(), 3);
        QCOMPARE(box->itemAt(0)->widget(), rows.at(row).at(0));
        QCOMPARE(box->itemAt(1)->widget(), rows.at(row).at(1));
        QVERIFY(box->itemAt(2)->spacerItem());
    }
}

void ScreenAntennaTest::barIsAsTold()
{
    AntennaFixture f;
    QCOMPARE(f.bar->minimum(), 0);
    QCOMPARE(f.bar->maximum(), 4);
    QCOMPARE(f.bar->value(), 0);
    QVERIFY(!f.bar->isTextVisible());
    QCOMPARE(f.bar->size(), QSize(100, 35));
    QCOMPARE(f.bar->contentsMargins(), QMargins());
    QCOMPARE(f.bar->alignment(), Qt::Alignment(Qt::AlignLeft));
    QCOMPARE(f.bar->styleSheet(),
             QString("QProgressBar {border: 2px solid #424242;border-radius: 4px;background-color: "
                     "#BDBDBD;margin-left: 0px;margin-right: 0px;margin-top: 0px;margin-bottom: "
                     "0px;}QProgressBar::chunk {background-color: #424242;width: 20px;margin: 1px;border: "
                     "1px solid black;border-radius: 2px;}"));
}

// --- Signal ------------------------------------------------------------------------------------------------

void ScreenAntennaTest::signalText_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << 0 << "0.0";
    QTest::newRow("319") << 319 << "0.0";
    QTest::newRow("320") << 320 << "32.0";
    QTest::newRow("456") << 456 << "45.6";
    QTest::newRow("700") << 700 << "70.0";
}

void ScreenAntennaTest::signalText()
{
    QFETCH(int, level);
    AntennaFixture f;
    model()->setSignalLevel(500);
    QCOMPARE(f.text("pBganSignalLabel"), QString("50.0"));
    model()->setSignalLevel(level);
    QTEST(f.text("pBganSignalLabel"), "text");
}

void ScreenAntennaTest::signalComesOverTheBus()
{
    AntennaFixture f;
    terminal().set("ram.status.signal_strength", 511);
    QVERIFY(passBus());
    QCOMPARE(f.text("pBganSignalLabel"), QString("51.1"));
}

void ScreenAntennaTest::signalOfTheModelStandsFromTheStart()
{
    AntennaFixture f;
    model()->setSignalLevel(512);
    ScreenAntenna screen(&f.window);
    QCOMPARE(screen.findChild<QLabel*>("pBganSignalLabel")->text(), QString("51.2"));
    QVERIFY(screen.findChild<QLabel*>("pGpsValueLabel")->isHidden());
    QVERIFY(screen.findChild<QLabel*>("pGpsWideLabel")->isHidden());
    QVERIFY(!screen.findChild<QTimer*>("pProgressBarBlinkTimer")->isActive());
}

// --- Position ----------------------------------------------------------------------------------------------

void ScreenAntennaTest::fixDecidesWhatIsSeen_data()
{
    QTest::addColumn<int>("fix");
    QTest::addColumn<bool>("allowed");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("seen");
    const QStringList acquiring = {"pGpsTitleLabel", "pGpsProgressBar"};
    const QStringList value = {"pGpsTitleLabel", "pGpsValueLabel"};
    const QStringList wide = {"pGpsWideLabel"};
    QTest::newRow("no fix") << 0 << true << "Acquiring position: " << acquiring;
    QTest::newRow("no fix, not to be shown") << 0 << false << "Acquiring position: " << acquiring;
    QTest::newRow("unknown fix") << 1 << true << "Acquiring position: " << acquiring;
    QTest::newRow("fix of two dimensions") << 2 << true << "Position: " << value;
    QTest::newRow("fix of three dimensions") << 3 << true << "Position: " << value;
    QTest::newRow("fix, not to be shown") << 2 << false << "" << wide;
    QTest::newRow("full fix, not to be shown") << 3 << false << "" << wide;
}

void ScreenAntennaTest::fixDecidesWhatIsSeen()
{
    QFETCH(int, fix);
    QFETCH(bool, allowed);
    QFETCH(QString, title);
    QFETCH(QStringList, seen);
    // From each of the other states.
    for (const gps_data_t& before : {position(0, 2), position(3, 4), position(3, 4, false)}) {
        AntennaFixture f;
        model()->setPosition(before);
        model()->setPosition(position(fix, 4, allowed));
        QCOMPARE(f.seen(), seen);
        if (!title.isEmpty()) {
            QCOMPARE(f.text("pGpsTitleLabel"), title);
        }
        if (seen.contains("pGpsValueLabel")) {
            QCOMPARE(f.text("pGpsValueLabel"), QString::fromUtf8("N55°08' W179°59' "));
        }
        if (seen.contains("pGpsWideLabel")) {
            QCOMPARE(f.text("pGpsWideLabel"), QString("Position acquired "));
        }
        QCOMPARE(f.timer->isActive(), seen.contains("pGpsProgressBar"));
    }
}

void ScreenAntennaTest::positionComesOverTheBus()
{
    AntennaFixture f;
    terminal().setAll({{"ram.status.position.latitude", sim::Value::integer(5550000)},
                       {"ram.status.position.longitude", sim::Value::integer(-1225000)},
                       {"ram.status.position.satellites", sim::Value::integer(4)},
                       {"ram.status.position.fix", sim::Value::integer(3)}});
    QVERIFY(passBus());
    QCOMPARE(f.text("pGpsValueLabel"), QString::fromUtf8("N55°30' W12°15' "));
    QVERIFY(f.label("pGpsValueLabel")->isVisible());
    terminal().erasePrefix("ram.status.position.");
    QVERIFY(passBus());
    QVERIFY(f.label("pGpsValueLabel")->isHidden());
    QVERIFY(f.bar->isVisible());
}

void ScreenAntennaTest::lossOfTheFixBringsTheBarBack()
{
    AntennaFixture f;
    model()->setPosition(position(3, 4));
    model()->setPosition(position(0, 1));
    QCOMPARE(f.seen(), QStringList({"pGpsTitleLabel", "pGpsProgressBar"}));
    QCOMPARE(f.text("pGpsTitleLabel"), QString("Acquiring position: "));
    QVERIFY(f.timer->isActive());
}

void ScreenAntennaTest::dataOfAnotherThreadArriveQueued()
{
    AntennaFixture f;
    std::thread([] { model()->setPosition(position(2, 4)); }).join();
    QVERIFY(!f.shown("pGpsValueLabel"));
    QCoreApplication::sendPostedEvents();
    QVERIFY(f.shown("pGpsValueLabel"));
}

// --- Blinking ----------------------------------------------------------------------------------------------

void ScreenAntennaTest::nextSegmentBlinks_data()
{
    QTest::addColumn<int>("satellites");
    for (int satellites : {0, 1, 2, 3}) {
        QTest::addRow("%d satellites", satellites) << satellites;
    }
}

void ScreenAntennaTest::nextSegmentBlinks()
{
    QFETCH(int, satellites);
    AntennaFixture f;
    model()->setPosition(position(0, satellites));
    f.timer->stop(); // only the ticks of this test
    for (int round = 0; round < 3; ++round) {
        f.screen->handleGpsBlinkTimeout();
        QCOMPARE(f.bar->value(), satellites + 1);
        f.screen->handleGpsBlinkTimeout();
        QCOMPARE(f.bar->value(), satellites);
    }
}

// "With 4 satellites found and no fix, every second tick asks for the value 5, which is above the range of
// the bar, and Qt's progress bar keeps its value."
void ScreenAntennaTest::fourSatellitesAskForMoreThanTheRange()
{
    AntennaFixture f;
    model()->setPosition(position(0, 4));
    f.timer->stop();
    f.screen->handleGpsBlinkTimeout(); // the lit phase: 5 is refused
    QCOMPARE(f.bar->value(), 0);
    for (int round = 0; round < 3; ++round) {
        f.screen->handleGpsBlinkTimeout();
        QCOMPARE(f.bar->value(), 4);
        f.screen->handleGpsBlinkTimeout();
        QCOMPARE(f.bar->value(), 4);
    }
}

void ScreenAntennaTest::blinkTakesHalfASecond()
{
    AntennaFixture f;
    QCOMPARE(f.timer->interval(), 500);
    QVERIFY(!f.timer->isSingleShot());
    model()->setPosition(position(0, 2));
    QElapsedTimer clock;
    clock.start();
    QSignalSpy changes(f.bar, SIGNAL(valueChanged(int)));
    QTRY_COMPARE_WITH_TIMEOUT(changes.size(), 4, PATIENCE_MS);
    QVERIFY(clock.elapsed() >= 4 * 475); // Qt's coarse timers may come one twentieth early
    const QList<int> expected = {3, 2, 3, 2};
    for (int i = 0; i < expected.size(); ++i) {
        QCOMPARE(changes.at(i).at(0).toInt(), expected.at(i));
    }
}

void ScreenAntennaTest::timerRunsWhileTheScreenIsVisible()
{
    AntennaFixture f;
    QVERIFY(f.timer->isActive());
    {
        Messages messages;
        f.window.showScreen(Screen::SCREEN_STATUS, false);
        QCOMPARE(messages.count("ScreenAntenna::hideEvent(): About to stop pProgressBarBlinkTimer."), 1);
    }
    QVERIFY(!f.timer->isActive());
    {
        Messages messages;
        f.window.showScreen(Screen::SCREEN_ANTENNA, false);
        QCOMPARE(
            messages.count("ScreenAntenna::showEvent(): About to update GPS (and start timer if needed)."),
            1);
    }
    QVERIFY(f.timer->isActive());
    f.window.showScreen(Screen::SCREEN_STATUS, false);
    model()->setPosition(position(3, 4));
    f.window.showScreen(Screen::SCREEN_ANTENNA, false);
    QVERIFY(!f.timer->isActive());
}

void ScreenAntennaTest::fixEndsTheBlinking()
{
    AntennaFixture f;
    model()->setPosition(position(0, 3));
    QVERIFY(f.timer->isActive());
    model()->setPosition(position(2, 4));
    QVERIFY(!f.timer->isActive());
}

// "A change of the GPS data while the screen is hidden runs updateGps() too, through the signal, and that
// starts the blink timer on a hidden screen; the next hideEvent stops it."
void ScreenAntennaTest::dataForAHiddenScreenStartTheTimer()
{
    AntennaFixture f;
    f.window.showScreen(Screen::SCREEN_STATUS, false);
    QVERIFY(!f.timer->isActive());
    model()->setPosition(position(0, 1));
    QVERIFY(f.page->isHidden());
    QVERIFY(f.timer->isActive());
    f.window.showScreen(Screen::SCREEN_ANTENNA, false);
    f.window.showScreen(Screen::SCREEN_STATUS, false);
    QVERIFY(!f.timer->isActive());
}

// --- Language, the whole -----------------------------------------------------------------------------------

void ScreenAntennaTest::languageChange()
{
    AntennaFixture f;
    Messages messages;
    Brackets brackets;
    QCOMPARE(f.text("pBganSignalTitleLabel"), QString("[ScreenAntenna|BGAN signal: ]"));
    QCOMPARE(messages.count("ScreenAntenna::changeEvent(): LanguageChange detected."), 1);
    QEvent event(QEvent::LanguageChange);
    messages.clear();
    QCoreApplication::sendEvent(f.page, &event);
    QCOMPARE(messages.countOfPrefix("Screen::changeEvent("), 0); // the base class isn't asked
    QEvent font(QEvent::FontChange);
    QCoreApplication::sendEvent(f.page, &font);
    QCOMPARE(messages.countOfPrefix("Screen::changeEvent("), 0);
}

void ScreenAntennaTest::languageChangeOfTheTitle_data()
{
    QTest::addColumn<int>("fix");
    QTest::addColumn<QString>("title");
    QTest::newRow("no fix") << 0 << "[ScreenAntenna|Acquiring position: ]";
    QTest::newRow("fix") << 3 << "[ScreenAntenna|Position: ]";
}

void ScreenAntennaTest::languageChangeOfTheTitle()
{
    QFETCH(int, fix);
    AntennaFixture f;
    model()->setPosition(position(fix, 4));
    Brackets brackets;
    QTEST(f.text("pGpsTitleLabel"), "title");
}

void ScreenAntennaTest::nothingIsCutOrOverlaps_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<int>("fix");
    QTest::addColumn<bool>("allowed");
    QTest::newRow("no fix") << int(LANG_ENGLISH) << 0 << true;
    // The wide face, with the texts that don't come from a translation.
    for (int language : {int(LANG_ENGLISH), int(LANG_CHINESE)}) {
        QTest::addRow("position, language %d", language) << language << 3 << true;
        QTest::addRow("no position allowed, language %d", language) << language << 3 << false;
    }
}

void ScreenAntennaTest::nothingIsCutOrOverlaps()
{
    QFETCH(int, language);
    QFETCH(int, fix);
    QFETCH(bool, allowed);
    AntennaFixture f;
    model()->setLanguage(static_cast<LANG_ENUM>(language));
    model()->setSignalLevel(700);
    model()->setPosition(position(fix, 4, allowed));
    QCOMPARE(f.flaws(), QString());
}

void ScreenAntennaTest::withoutMemoryTheProcessEnds()
{
    AntennaFixture f;
    Window* const window = &f.window;
    int deaths = 0;
    for (;; ++deaths) {
        const Death death = deathOf([window, deaths] {
            grantedAllocations = deaths;
            ScreenAntenna screen(window);
        });
        if (death.status == 111) {
            break; // as many as it needs
        }
        QVERIFY2(death.output.find("<1> gui: *** ASSERT in screenantenna at ") != std::string::npos,
                 death.output.c_str());
    }
    QCOMPARE(deaths, 3 + 6 + 1 + 1); // layouts, labels, bar, timer
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenAntennaTest>(argc, argv);
}

#include "screenantenna_test.moc"
