// The battery screen: what is seen of no, one and two batteries, and the way back by any key.
#include "screens/pagefixture.h"

#include "screens/screenbattery.h"
#include "support/death.h"
#include "support/failingnew.h"

#include <QFrame>
#include <QGridLayout>
#include <QProgressBar>
#include <QTranslator>
#include <QVBoxLayout>

#include <thread>

using namespace windowfixture;

namespace {

const QRgb BLACK = qRgb(0, 0, 0);
const QRgb BAND = qRgb(50, 50, 50); // a fifth of white on black

battery_t battery(int status, int charge)
{
    battery_t result;
    result.batteryConnectionStatus = status;
    result.temperature = -20;
    result.capacity = 100;
    result.minutesLeft = 754;
    result.averageTimeToFull = 754;
    result.chargeState = charge;
    return result;
}

battery_t discharging()
{
    return battery(BATT_PRESENT, BATT_DISCHARGING);
}

battery_t charging()
{
    battery_t result = battery(BATT_PRESENT, BATT_CHARGING);
    result.capacity = 47;
    result.temperature = 35;
    return result;
}

const char* const parts[] = {"Icon", "CapacityLabel", "TempTitleLabel", "TempLabel", "2ndLabel"};

// Longer than any words of the seven languages.
class LongWords : public QTranslator {
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* text, const char*, int) const override
    {
        return qstrcmp(text, "Remaining charge time %1:%2 h")
                   ? QString()
                   : QString("Remaining time of charging is %1:%2 h");
    }
};

class BatteryFixture : public PageFixture {
public:
    BatteryFixture() : PageFixture(Screen::SCREEN_BATTERY) {}

    // Whether the five widgets of a half ("Int", "Ext") are shown: all, none, or a mixture.
    QString half(const char* name) const
    {
        int count = 0;
        for (const char* part : parts) {
            count += shown(("pBatt" + QByteArray(name) + part).constData());
        }
        return count == 5 ? "all" : count == 0 ? "none" : "mixture";
    }
    int bar(const char* icon) const
    {
        return page->findChild<QWidget*>(icon)->findChild<QProgressBar*>("pProgressBar")->value();
    }
    QString topText(const char* icon) const
    {
        return page->findChild<QWidget*>(icon)->findChild<QLabel*>("pTopLayerLabel")->text();
    }
};

} // namespace

class ScreenBatteryTest : public QObject {
    Q_OBJECT

private slots:
    void widgetsAreAsTold();
    void backgroundIsAsTold();

    void batteriesDecideWhatIsSeen_data();
    void batteriesDecideWhatIsSeen();
    void noBatteryIsToldOnPlainBlack();
    void oneBatteryHasNoLighterBand_data();
    void oneBatteryHasNoLighterBand();
    void twoBatteriesHaveALighterBand();
    void textsAreTheModels();
    void eachHalfHasItsOwnBattery();
    void capacityAboveTheRangeIsNotTaken();
    void externalSupplyRefreshes();
    void batteriesOfTheModelStandFromTheStart();
    void batteriesComeOverTheBus();
    void dataOfAnotherThreadArriveQueued();

    void languageChange();
    void nothingIsCutOrOverlaps_data();
    void nothingIsCutOrOverlaps();
    void secondLineThatIsTooLongStaysInside();
    void withoutMemoryTheProcessEnds();
};

// --- Widgets and keys --------------------------------------------------------------------------------------

void ScreenBatteryTest::widgetsAreAsTold()
{
    BatteryFixture f;
    QVBoxLayout* const rows = qobject_cast<QVBoxLayout*>(f.page->layout());
    QVERIFY(rows);
    QCOMPARE(rows->contentsMargins(), QMargins());
    QCOMPARE(rows->spacing(), 0);
    QCOMPARE(rows->count(), 4);
    QVERIFY(rows->itemAt(0)->spacerItem());
    QCOMPARE(rows->itemAt(1)->widget(), static_cast<QWidget*>(f.label("pNoBatteryLabel")));
    QVERIFY(rows->itemAt(3)->spacerItem());
    QCOMPARE(f.label("pNoBatteryLabel")->alignment(), Qt::Alignment(Qt::AlignCenter));
    QGridLayout* const grid = qobject_cast<QGridLayout*>(rows->itemAt(2)->layout());
    QVERIFY(grid);
    QCOMPARE(grid->columnStretch(1), 10);
    QCOMPARE(grid->columnStretch(3), 10);
    const struct {
        const char* name;
        int row, column, rowSpan, columnSpan;
    } places[] = {
        {"pBattIntIcon", 0, 0, 2, 1},           {"pBattIntCapacityLabel", 0, 2, 1, 1},
        {"pBattIntTempTitleLabel", 0, 4, 1, 1}, {"pBattIntTempLabel", 0, 5, 1, 1},
        {"pBattInt2ndLabel", 1, 2, 1, 4},       {"pBattExtIcon", 3, 0, 2, 1},
        {"pBattExtCapacityLabel", 3, 2, 1, 1},  {"pBattExtTempTitleLabel", 3, 4, 1, 1},
        {"pBattExtTempLabel", 3, 5, 1, 1},      {"pBattExt2ndLabel", 4, 2, 1, 4},
    };
    for (const auto& place : places) {
        const int index = grid->indexOf(f.page->findChild<QWidget*>(place.name));
        QVERIFY2(index >= 0, place.name);
        int row, column, rowSpan, columnSpan;
        grid->getItemPosition(index, &row, &column, &rowSpan, &columnSpan);
        QCOMPARE(QList<int>({row, column, rowSpan, columnSpan}),
                 QList<int>({place.row, place.column, place.rowSpan, place.columnSpan}));
    }
    QCOMPARE(f.label("pBattInt2ndLabel")->maximumWidth(), 220);
    QCOMPARE(f.label("pBattExt2ndLabel")->maximumWidth(), 220);
    QCOMPARE(f.topText("pBattIntIcon"), QString("Int"));
    QCOMPARE(f.topText("pBattExtIcon"), QString("Ext"));
    QCOMPARE(f.text("pBattIntTempTitleLabel"), QString("Temp: "));
    QCOMPARE(f.text("pBattExtTempTitleLabel"), QString("Temp: "));
}

void ScreenBatteryTest::backgroundIsAsTold()
{
    BatteryFixture f;
    QFrame* const background = f.page->findChild<QFrame*>("pBackgroundFrame");
    QCOMPARE(background->geometry(), QRect(QPoint(0, 32), QPoint(255, 63)));
    QCOMPARE(background->styleSheet(), QString("border: none; background: rgba(255,255,255,50)"));
    QCOMPARE(f.page->children().first(), static_cast<QObject*>(background)); // below all others
}

// --- Batteries ---------------------------------------------------------------------------------------------

void ScreenBatteryTest::batteriesDecideWhatIsSeen_data()
{
    QTest::addColumn<int>("internal");
    QTest::addColumn<int>("external");
    QTest::addColumn<bool>("none");
    QTest::addColumn<bool>("band");
    QTest::addColumn<QString>("internalHalf");
    QTest::addColumn<QString>("externalHalf");
    QTest::newRow("none") << -1 << -1 << true << false << "none"
                          << "none";
    QTest::newRow("internal") << 0 << -1 << false << false << "all"
                              << "none";
    QTest::newRow("external") << -1 << 0 << false << false << "none"
                              << "all";
    QTest::newRow("both") << 0 << 0 << false << true << "all"
                          << "all";
    QTest::newRow("internal in error") << -2 << -1 << false << false << "all"
                                       << "none";
    QTest::newRow("external in error beside the internal") << 0 << -2 << false << true << "all"
                                                           << "all";
    QTest::newRow("unknown state") << 7 << -1 << false << false << "all"
                                   << "none";
}

void ScreenBatteryTest::batteriesDecideWhatIsSeen()
{
    QFETCH(int, internal);
    QFETCH(int, external);
    // From all, and from nothing.
    for (int before : {BATT_PRESENT, BATT_ABSENT}) {
        BatteryFixture f;
        model()->setBattData(battery(before, BATT_IDLE), battery(before, BATT_IDLE));
        model()->setBattData(battery(internal, BATT_IDLE), battery(external, BATT_IDLE));
        QTEST(f.shown("pNoBatteryLabel"), "none");
        QTEST(f.shown("pBackgroundFrame"), "band");
        QTEST(f.half("Int"), "internalHalf");
        QTEST(f.half("Ext"), "externalHalf");
    }
}

void ScreenBatteryTest::noBatteryIsToldOnPlainBlack()
{
    BatteryFixture f;
    QCOMPARE(f.text("pNoBatteryLabel"), QString("No battery connected"));
    const QRect textRect = f.label("pNoBatteryLabel")->geometry();
    const QImage picture = f.picture();
    int lit = 0;
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 256; ++x) {
            const bool inText = textRect.contains(x, y);
            lit += inText && picture.pixel(x, y) != BLACK;
            QVERIFY(inText || picture.pixel(x, y) == BLACK);
        }
    }
    QVERIFY(lit > 100);
}

void ScreenBatteryTest::oneBatteryHasNoLighterBand_data()
{
    QTest::addColumn<bool>("internal");
    QTest::newRow("internal") << true;
    QTest::newRow("external") << false;
}

void ScreenBatteryTest::oneBatteryHasNoLighterBand()
{
    QFETCH(bool, internal);
    BatteryFixture f;
    model()->setBattData(internal ? discharging() : battery_t(), internal ? battery_t() : discharging());
    QCOMPARE(f.picture().pixel(1, 60), BLACK);
    QCOMPARE(f.picture().pixel(1, 3), BLACK);
}

void ScreenBatteryTest::twoBatteriesHaveALighterBand()
{
    BatteryFixture f;
    model()->setBattData(discharging(), charging());
    const QImage picture = f.picture();
    QCOMPARE(picture.pixel(1, 31), BLACK);
    QCOMPARE(picture.pixel(1, 32), BAND);
    QCOMPARE(picture.pixel(1, 63), BAND);
}

void ScreenBatteryTest::textsAreTheModels()
{
    BatteryFixture f;
    model()->setBattData(discharging(), charging());
    QCOMPARE(f.text("pBattIntCapacityLabel"), QString("100% Discharging"));
    QCOMPARE(f.text("pBattIntTempLabel"), QString::fromUtf8("-20°C"));
    QCOMPARE(f.text("pBattInt2ndLabel"), QString("Remaining time 12:34 h"));
    QCOMPARE(f.bar("pBattIntIcon"), 100);
    QCOMPARE(f.text("pBattExtCapacityLabel"), QString("47% Charging"));
    QCOMPARE(f.text("pBattExtTempLabel"), QString::fromUtf8("35°C"));
    QCOMPARE(f.text("pBattExt2ndLabel"), QString("Remaining charge time 12:34 h"));
    QCOMPARE(f.bar("pBattExtIcon"), 47);
    model()->setBattData(battery(BATT_IN_ERROR, BATT_IDLE), battery(BATT_PRESENT, BATT_PRECHARGING));
    QCOMPARE(f.text("pBattIntCapacityLabel"), QString("100% Idle"));
    QCOMPARE(f.text("pBattInt2ndLabel"), QString("Battery error!"));
    QCOMPARE(f.text("pBattExtCapacityLabel"), QString("Precharging"));
    QCOMPARE(f.text("pBattExt2ndLabel"), QString());
}

void ScreenBatteryTest::eachHalfHasItsOwnBattery()
{
    BatteryFixture f;
    model()->setBattData(charging(), discharging());
    QCOMPARE(f.text("pBattIntCapacityLabel"), QString("47% Charging"));
    QCOMPARE(f.text("pBattExtCapacityLabel"), QString("100% Discharging"));
    QCOMPARE(f.bar("pBattIntIcon"), 47);
    QCOMPARE(f.bar("pBattExtIcon"), 100);
}

void ScreenBatteryTest::capacityAboveTheRangeIsNotTaken()
{
    BatteryFixture f;
    battery_t internal = charging();
    model()->setBattData(internal, battery_t());
    internal.capacity = 101;
    model()->setBattData(internal, battery_t());
    QCOMPARE(f.bar("pBattIntIcon"), 47); // the icon's rule
    QCOMPARE(f.text("pBattIntCapacityLabel"), QString("101% Charging"));
    internal.capacity = 97;
    model()->setBattData(internal, battery_t());
    QCOMPARE(f.bar("pBattIntIcon"), 100);
}

// The model tells of the supply by the batteries' signal; the screen then fetches both again.
void ScreenBatteryTest::externalSupplyRefreshes()
{
    BatteryFixture f;
    model()->setBattData(discharging(), battery_t());
    f.label("pBattInt2ndLabel")->setText("old");
    model()->setExternalSupplyPresent(true);
    QCOMPARE(f.text("pBattInt2ndLabel"), QString("Remaining time 12:34 h"));
}

void ScreenBatteryTest::batteriesOfTheModelStandFromTheStart()
{
    BatteryFixture f;
    model()->setBattData(battery_t(), charging());
    ScreenBattery screen(&f.window);
    QCOMPARE(screen.findChild<QLabel*>("pBattExtCapacityLabel")->text(), QString("47% Charging"));
    QVERIFY(screen.findChild<QLabel*>("pBattIntCapacityLabel")->isHidden());
}

void ScreenBatteryTest::batteriesComeOverTheBus()
{
    BatteryFixture f;
    const auto number = [](int value) { return sim::Value::integer(value); };
    terminal().setAll({{"ram.status.battery.1.status", number(0)},
                       {"ram.status.battery.1.temperature", number(21)},
                       {"ram.status.battery.1.relative_state_of_charge", number(80)},
                       {"ram.status.battery.1.average_time_to_empty", number(65)},
                       {"ram.status.battery.1.average_time_to_full", number(-1)},
                       {"ram.status.battery.1.charge_discharge_status", number(2)},
                       {"ram.status.battery.2.status", number(-1)},
                       {"ram.status.battery.2.charge_discharge_status", number(-1)}});
    QVERIFY(passBus());
    QVERIFY(!f.shown("pNoBatteryLabel"));
    QCOMPARE(f.half("Int"), QString("all"));
    QCOMPARE(f.half("Ext"), QString("none"));
    QCOMPARE(f.text("pBattIntCapacityLabel"), QString("80% Discharging"));
    QCOMPARE(f.text("pBattIntTempLabel"), QString::fromUtf8("21°C"));
    QCOMPARE(f.text("pBattInt2ndLabel"), QString("Remaining time 1:05 h"));
    terminal().set("ram.status.battery.1.status", -1);
    QVERIFY(passBus());
    QVERIFY(f.shown("pNoBatteryLabel"));
    terminal().erasePrefix("ram.status.battery.");
    QVERIFY(passBus());
}

void ScreenBatteryTest::dataOfAnotherThreadArriveQueued()
{
    BatteryFixture f;
    std::thread([] { model()->setBattData(charging(), battery_t()); }).join();
    QVERIFY(f.shown("pNoBatteryLabel"));
    QCoreApplication::sendPostedEvents();
    QVERIFY(!f.shown("pNoBatteryLabel"));
}

// --- Language, the whole -----------------------------------------------------------------------------------

void ScreenBatteryTest::languageChange()
{
    BatteryFixture f;
    model()->setBattData(charging(), battery(BATT_PRESENT, BATT_CHARGING));
    Brackets brackets;
    QCOMPARE(f.text("pNoBatteryLabel"), QString("[ScreenBattery|No battery connected]"));
    QCOMPARE(f.topText("pBattIntIcon"), QString("[ScreenBattery|Int]"));
    QCOMPARE(f.topText("pBattExtIcon"), QString("[ScreenBattery|Ext]"));
    QCOMPARE(f.text("pBattIntTempTitleLabel"), QString("[ScreenBattery|Temp: ]"));
    QCOMPARE(f.text("pBattExtTempTitleLabel"), QString("[ScreenBattery|Temp: ]"));
    // The model's texts are fetched anew.
    QCOMPARE(f.text("pBattIntCapacityLabel"), QString("47% [StatusUpdater|Charging]"));
    QCOMPARE(f.text("pBattExtCapacityLabel"), QString("100% [StatusUpdater|Charging]"));
}

void ScreenBatteryTest::nothingIsCutOrOverlaps_data()
{
    QTest::addColumn<int>("capacity");
    QTest::addColumn<int>("temperature");
    for (int capacity : {0, 47, 100}) {
        for (int temperature : {5, 35, -20}) {
            QTest::addRow("%d percent, %d degrees", capacity, temperature) << capacity << temperature;
        }
    }
}

// Every pair of charge states, with short and long texts; -1 is no battery.
void ScreenBatteryTest::nothingIsCutOrOverlaps()
{
    QFETCH(int, capacity);
    QFETCH(int, temperature);
    BatteryFixture f;
    const auto half = [capacity, temperature](int charge) {
        battery_t result = charge < 0 ? battery_t() : battery(BATT_PRESENT, charge);
        result.capacity = capacity;
        result.temperature = temperature;
        return result;
    };
    for (int internal = -1; internal <= 3; ++internal) {
        for (int external = -1; external <= 3; ++external) {
            model()->setBattData(half(internal), half(external));
            QVERIFY2(f.flaws({"pBackgroundFrame"}).isEmpty(),
                     qPrintable(QString("%1 and %2: ").arg(internal).arg(external) +
                                f.flaws({"pBackgroundFrame"})));
        }
    }
}

// Only where it doesn't fit: the words above it are whole.
void ScreenBatteryTest::secondLineThatIsTooLongStaysInside()
{
    BatteryFixture f;
    static_cast<GuiApp*>(qApp)->useFont(LANG_CHINESE); // a wide face for the English words
    for (const battery_t& internal : {battery_t(), discharging()}) {
        model()->setBattData(internal, charging());
        QVERIFY(f.label("pBattExt2ndLabel")->sizeHint().width() > 220);
        QCOMPARE(f.flaws({"pBackgroundFrame"}), QString("pBattExt2ndLabel cut"));
        QCOMPARE(f.label("pBattExt2ndLabel")->geometry().right(), 255);
    }
    static_cast<GuiApp*>(qApp)->useFont(LANG_ENGLISH);
}

void ScreenBatteryTest::withoutMemoryTheProcessEnds()
{
    BatteryFixture f;
    Window* const window = &f.window;
    int deaths = 0;
    for (;; ++deaths) {
        const Death death = deathOf([window, deaths] {
            grantedAllocations = deaths;
            ScreenBattery screen(window);
        });
        if (death.status == 111) {
            break; // as many as it needs
        }
        QVERIFY2(death.output.find("<1> gui: *** ASSERT in screenbattery at ") != std::string::npos ||
                     death.output.find("<1> gui: *** ASSERT in tlabel at ") != std::string::npos ||
                     death.output.find("<1> gui: *** ASSERT in tbattlabel at ") != std::string::npos,
                 death.output.c_str());
    }
    QCOMPARE(deaths,
             1 + 2 + 1 + 2 * (5 + 4)); // band, layouts, label; for each icon with its parts and labels
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenBatteryTest>(argc, argv);
}

#include "screenbattery_test.moc"
