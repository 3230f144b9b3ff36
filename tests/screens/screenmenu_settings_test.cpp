// The settings of the menu: what a press writes, and that a check mark moves only when the change comes
// back from the database, whoever made it.
#include "screens/menufixture.h"

#include "support/patience.h"

using namespace windowfixture;

namespace {

const int BRIGHTNESS = 11, TIMEOUT = 20, AUDIO = 27, POWER_UP = 39, LANGUAGE = 42;

const struct {
    int branch;
    int item;
    const char* key;
    int value;
} PRESSES[] = {
    {BRIGHTNESS, 13, "cfg.display.brightness", 1},
    {BRIGHTNESS, 14, "cfg.display.brightness", 2},
    {BRIGHTNESS, 15, "cfg.display.brightness", 3},
    {BRIGHTNESS, 16, "cfg.display.brightness", 4},
    {BRIGHTNESS, 17, "cfg.display.brightness", 5},
    {BRIGHTNESS, 18, "cfg.display.brightness", 6},
    {BRIGHTNESS, 19, "cfg.display.brightness", 7},
    {TIMEOUT, 21, "cfg.display.timeout", 5},
    {TIMEOUT, 22, "cfg.display.timeout", 30},
    {TIMEOUT, 23, "cfg.display.timeout", 60},
    {TIMEOUT, 24, "cfg.display.timeout", 120},
    {TIMEOUT, 25, "cfg.display.timeout", 300},
    {AUDIO, 28, "cfg.audio_indication.pointing", 1},
    {AUDIO, 29, "cfg.audio_indication.pointing", 0},
    {POWER_UP, 40, "cfg.power_up.switch_on_when_external_power", 1},
    {POWER_UP, 41, "cfg.power_up.switch_on_when_external_power", 0},
    {LANGUAGE, 43, "cfg.language", 0},
    {LANGUAGE, 44, "cfg.language", 1},
    {LANGUAGE, 45, "cfg.language", 2},
    {LANGUAGE, 46, "cfg.language", 3},
    {LANGUAGE, 47, "cfg.language", 4},
    {LANGUAGE, 48, "cfg.language", 5},
    {LANGUAGE, 49, "cfg.language", 6},
};

void addPresses()
{
    QTest::addColumn<int>("branch");
    QTest::addColumn<int>("item");
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("value");
    for (const auto& row : PRESSES) {
        QTest::newRow(qPrintable(QString("%1 = %2").arg(row.key).arg(row.value)))
            << row.branch << row.item << QString(row.key) << row.value;
    }
}

// Another choice of the same setting.
int otherItem(int branch, int item)
{
    for (const auto& row : PRESSES) {
        if (row.branch == branch && row.item != item) {
            return row.item;
        }
    }
    return 0;
}
int valueOf(int item)
{
    for (const auto& row : PRESSES) {
        if (row.item == item) {
            return row.value;
        }
    }
    return -1;
}

} // namespace

class ScreenMenuSettingsTest : public QObject {
    Q_OBJECT

private slots:
    void init() { resetMenu(); }

    void pressWritesTheKey_data() { addPresses(); }
    void pressWritesTheKey();
    void pressLeavesTheCheckMarkUntilTheChangeComesBack_data() { addPresses(); }
    void pressLeavesTheCheckMarkUntilTheChangeComesBack();
    void changeOnAnotherInterfaceMovesTheCheckMark_data() { addPresses(); }
    void changeOnAnotherInterfaceMovesTheCheckMark();
    void firstCheckMarksAreThoseOfTheModel();
    void everyChoiceAlwaysHasACheckState();
    void rightGoesToTheChoiceMadeNow();
    void pressOfTheValueSetNowWritesItAgain();
    void signalAloneMovesTheCheckMark();
    void brightnessZeroShowsNoCheckMark();
    void valueWithoutARow_data();
    void valueWithoutARow();
    void storeOfAnIllegalId_data();
    void storeOfAnIllegalId();
    void checkOfAnIllegalId_data();
    void checkOfAnIllegalId();
};

void ScreenMenuSettingsTest::pressWritesTheKey()
{
    QFETCH(int, item);
    QFETCH(QString, key);
    QFETCH(int, value);
    const std::string name = key.toStdString();
    MenuFixture f;
    f.open();
    QVERIFY(f.walkTo(item));
    terminal().clearLogs();
    f.key(Qt::Key_Return);
    QVERIFY(terminal().waitForWrite(name, sim::Value::integer(value)));
    QVERIFY(passBus());
    QVERIFY(terminal().waitForValue(name, sim::Value::integer(value)));
    QStringList settings;
    for (const sim::WriteRecord& write : terminal().writes()) {
        if (write.key.compare(0, 4, "cfg.") == 0) {
            settings.append(QString::fromStdString(write.key));
        }
    }
    QCOMPARE(settings, QStringList(key)); // that one, and once
    QCOMPARE(terminal().messagesNamed("config.sync.cfg").size(), size_t(1));
    QVERIFY(f.isOpen());
    QCOMPARE(f.currentId(), item);
}

// A server that reads nothing answers nothing: what moves before it reads again, moves by itself.
void ScreenMenuSettingsTest::pressLeavesTheCheckMarkUntilTheChangeComesBack()
{
    QFETCH(int, branch);
    QFETCH(int, item);
    QFETCH(QString, key);
    const int before = otherItem(branch, item);
    terminal().set(key.toStdString(), valueOf(before));
    QVERIFY(passBus());
    MenuFixture f;
    f.open();
    QVERIFY(f.walkTo(item));
    QCOMPARE(f.checked(branch), QList<int>({before}));
    terminal().hold();
    f.key(Qt::Key_Return);
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents();
    }
    const QList<int> held = f.checked(branch);
    terminal().release();
    QCOMPARE(held, QList<int>({before}));
    QTRY_COMPARE_WITH_TIMEOUT(f.checked(branch), QList<int>({item}), PATIENCE_MS);
}

void ScreenMenuSettingsTest::changeOnAnotherInterfaceMovesTheCheckMark()
{
    QFETCH(int, branch);
    QFETCH(int, item);
    QFETCH(QString, key);
    QFETCH(int, value);
    terminal().set(key.toStdString(), valueOf(otherItem(branch, item)));
    QVERIFY(passBus());
    MenuFixture f;
    f.open();
    terminal().set(key.toStdString(), value);
    QVERIFY(passBus());
    QCOMPARE(f.checked(branch), QList<int>({item}));
    QCOMPARE(f.currentId(), 1); // nobody moved the cursor
}

void ScreenMenuSettingsTest::firstCheckMarksAreThoseOfTheModel()
{
    terminal().setAll({{"cfg.display.brightness", sim::Value::integer(7)},
                       {"cfg.display.timeout", sim::Value::integer(60)},
                       {"cfg.audio_indication.pointing", sim::Value::integer(0)},
                       {"cfg.power_up.switch_on_when_external_power", sim::Value::integer(1)},
                       {"cfg.language", sim::Value::integer(4)}});
    QVERIFY(passBus());
    const MenuFixture f;
    QCOMPARE(f.checked(BRIGHTNESS), QList<int>({19}));
    QCOMPARE(f.checked(TIMEOUT), QList<int>({23}));
    QCOMPARE(f.checked(AUDIO), QList<int>({29}));
    QCOMPARE(f.checked(POWER_UP), QList<int>({40}));
    QCOMPARE(f.checked(LANGUAGE), QList<int>({47}));
}

void ScreenMenuSettingsTest::everyChoiceAlwaysHasACheckState()
{
    const MenuFixture f;
    for (QTreeWidgetItemIterator it(f.tree); *it; ++it) {
        const int id = static_cast<TTreeWidgetItem*>(*it)->getId();
        const QVariant state = (*it)->data(0, Qt::CheckStateRole);
        QCOMPARE(state.isValid(), valueOf(id) != -1);
        if (state.isValid()) {
            QCOMPARE(state.toInt(), QList<int>({16, 25, 28, 41, 43}).contains(id) ? 2 : 0);
        }
    }
}

void ScreenMenuSettingsTest::rightGoesToTheChoiceMadeNow()
{
    terminal().set("cfg.display.timeout", 120);
    QVERIFY(passBus());
    MenuFixture f;
    f.open();
    QVERIFY(f.walkTo(TIMEOUT));
    f.key(Qt::Key_Right);
    QCOMPARE(f.currentId(), 24);
    QVERIFY(f.item(TIMEOUT)->isExpanded());
}

void ScreenMenuSettingsTest::pressOfTheValueSetNowWritesItAgain()
{
    MenuFixture f;
    f.open();
    QVERIFY(f.press(16));
    QVERIFY(terminal().waitForWrite("cfg.display.brightness", sim::Value::integer(4)));
    QVERIFY(passBus());
    QCOMPARE(f.checked(BRIGHTNESS), QList<int>({16}));
}

// Each signal of the model has its slot, and it fetches the value.
void ScreenMenuSettingsTest::signalAloneMovesTheCheckMark()
{
    MenuFixture f;
    const auto uncheckAll = [&f](int branch) {
        for (int i = 0; i < f.item(branch)->childCount(); ++i) {
            f.item(branch)->child(i)->setCheckState(0, Qt::Unchecked);
        }
        return f.checked(branch).isEmpty();
    };
    const struct {
        const char* signal;
        int branch;
        int item;
    } rows[] = {{"brightnessChanged", BRIGHTNESS, 16},
                {"screenSaverTimeChanged", TIMEOUT, 25},
                {"audioPointingChanged", AUDIO, 28},
                {"powerUpSettingChanged", POWER_UP, 41}};
    for (const auto& row : rows) {
        QVERIFY(uncheckAll(row.branch));
        QVERIFY(QMetaObject::invokeMethod(model(), row.signal));
        QCOMPARE(f.checked(row.branch), QList<int>({row.item}));
    }
}

void ScreenMenuSettingsTest::brightnessZeroShowsNoCheckMark()
{
    MenuFixture f;
    f.open();
    Messages messages;
    terminal().set("cfg.display.brightness", 0);
    QVERIFY(passBus());
    QCOMPARE(f.checked(BRIGHTNESS), QList<int>());
    QCOMPARE(messages.count("ScreenMenu::setBrightnessLevelCheckmark(): ERROR!!! unsupported itemId=12"), 1);
    // Without a mark, right goes to the first choice.
    QVERIFY(f.walkTo(BRIGHTNESS));
    f.key(Qt::Key_Right);
    QCOMPARE(f.currentId(), 13);
}

void ScreenMenuSettingsTest::valueWithoutARow_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("branch");
    QTest::addColumn<int>("item");
    QTest::addColumn<QString>("warning");
    QTest::newRow("brightness") << "cfg.display.brightness" << 9 << BRIGHTNESS << 15
                                << "StatusUpdater::getBrightnessEnum: Error!!! m_brightnessLevel=9";
    QTest::newRow("timeout") << "cfg.display.timeout" << 45 << TIMEOUT << 22
                             << "StatusUpdater::getScreenSaverTimeEnum: Error!!! m_screenSaverTime=45";
    QTest::newRow("audio") << "cfg.audio_indication.pointing" << 2 << AUDIO << 29
                           << "StatusUpdater::getAudioPointingEnum: Error!!! audioPointing=2";
    QTest::newRow("power-up") << "cfg.power_up.switch_on_when_external_power" << 2 << POWER_UP << 40
                              << "StatusUpdater::getPowerUpEnum: Error!!! powerUpSetting=2";
}

void ScreenMenuSettingsTest::valueWithoutARow()
{
    QFETCH(QString, key);
    QFETCH(int, value);
    QFETCH(int, branch);
    QFETCH(int, item);
    QFETCH(QString, warning);
    MenuFixture f;
    Messages messages;
    terminal().set(key.toStdString(), value);
    QVERIFY(passBus());
    QCOMPARE(f.checked(branch), QList<int>({item}));
    QVERIFY(messages.countOfPrefix(warning) >= 1);
    QCOMPARE(terminal().getInt(key.toStdString()), std::optional<int32_t>(value)); // not corrected
}

void ScreenMenuSettingsTest::storeOfAnIllegalId_data()
{
    QTest::addColumn<int>("function");
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("fallback");
    QTest::addColumn<QString>("error");
    QTest::newRow("brightness") << 0 << "cfg.display.brightness" << 3
                                << "ScreenMenu::storeBrightnessLevelToCBus(): ERROR: Illegal value. itemId=1";
    QTest::newRow("timeout") << 1 << "cfg.display.timeout" << 300
                             << "ScreenMenu::storeTimeoutLevelToCBus(): ERROR: Illegal value. itemId=1";
    QTest::newRow("audio") << 2 << "cfg.audio_indication.pointing" << 0
                           << "ScreenMenu::storeAudioPointingToCBus(): ERROR: Illegal value. itemId=1";
    QTest::newRow("power-up") << 3 << "cfg.power_up.switch_on_when_external_power" << 1
                              << "ScreenMenu::storePowerUpLevelToCBus(): ERROR: Illegal value. itemId=1";
    QTest::newRow("language") << 4 << "cfg.language" << 0
                              << "StatusUpdater::storeLanguageToCBus(): ERROR!!!! itemId=1";
}

void ScreenMenuSettingsTest::storeOfAnIllegalId()
{
    QFETCH(int, function);
    QFETCH(QString, key);
    QFETCH(int, fallback);
    QFETCH(QString, error);
    MenuFixture f;
    Messages messages;
    ScreenMenuTestAccess::store(*f.menu, function, ITEM_ACTION_EXIT);
    QVERIFY(terminal().waitForWrite(key.toStdString(), sim::Value::integer(fallback)));
    QCOMPARE(messages.count(error), 1);
}

void ScreenMenuSettingsTest::checkOfAnIllegalId_data()
{
    QTest::addColumn<int>("function");
    QTest::addColumn<int>("branch");
    QTest::addColumn<QString>("error");
    QTest::newRow("brightness")
        << 0 << BRIGHTNESS << "ScreenMenu::setBrightnessLevelCheckmark(): ERROR!!! unsupported itemId=99";
    QTest::newRow("timeout") << 1 << TIMEOUT
                             << "ScreenMenu::setTimeoutLevelCheckmark(): ERROR!!! unsupported itemId=99";
    QTest::newRow("audio") << 2 << AUDIO
                           << "ScreenMenu::setAudioPointingCheckmark(): ERROR!!! unsupported itemId=99";
    QTest::newRow("power-up") << 3 << POWER_UP << "ScreenMenu::setPowerUp(): ERROR!!! unsupported itemId=99";
    QTest::newRow("language")
        << 4 << LANGUAGE << "ScreenMenu::updateLanguageMenuItemsFromEnum(): ERROR!!! unsupported itemId=99";
}

void ScreenMenuSettingsTest::checkOfAnIllegalId()
{
    QFETCH(int, function);
    QFETCH(int, branch);
    QFETCH(QString, error);
    MenuFixture f;
    Messages messages;
    ScreenMenuTestAccess::check(*f.menu, function, static_cast<WIDGET_ITEM_ID_ENUM>(99));
    QCOMPARE(messages.count(error), 1);
    QCOMPARE(f.checked(branch), QList<int>());
}

int main(int argc, char** argv)
{
    return run<ScreenMenuSettingsTest>(argc, argv);
}

#include "screenmenu_settings_test.moc"
