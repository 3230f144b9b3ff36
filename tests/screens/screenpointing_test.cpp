// The pointing screen: level, bar and scale, the keys with their commands on the bus, and its coming and
// going with the model's pointing mode.
#include "screens/pagefixture.h"
#include "screens/pictures.h"

#include "screens/screenpointing.h"
#include "support/death.h"
#include "support/failingnew.h"

#include <QProgressBar>

#include <climits>
#include <thread>

using namespace windowfixture;

namespace {

const QRgb GROOVE = qRgb(0xbd, 0xbd, 0xbd);
const QRgb FILLED = qRgb(0x42, 0x42, 0x42);

class PointingFixture : public PageFixture {
public:
    PointingFixture() : PageFixture(Screen::SCREEN_POINTING)
    {
        terminal().settle();
        terminal().clearLogs();
    }
    QProgressBar* bar() const { return page->findChild<QProgressBar*>("pProgressBar"); }
    bool current() const { return window.getCurrentScreenId() == Screen::SCREEN_POINTING; }
};

// The commands that came over the bus, with the NUL that ends each.
QList<QByteArray> sentCommands()
{
    terminal().settle();
    QList<QByteArray> commands;
    for (const sim::Message& message : terminal().messagesNamed("bp_ctrl.pointing")) {
        commands.append(QByteArray(message.data.data(), int(message.data.size())));
    }
    return commands;
}

} // namespace

class ScreenPointingTest : public QObject {
    Q_OBJECT

private slots:
    void widgetsAreAsTold();
    void scaleHasTwelveFieldsAndHidesNothing();
    void levels_data();
    void levels();
    void barIsEmptyAt320AndFullAt600();
    void levelOfTheModelStandsFromTheStart();
    void levelComesOverTheBus();
    void levelOfAnotherThreadArrivesQueued();

    void cancelSendsItsCommandAndLeaves();
    void cancelStaysWhileTheModelStillPoints();
    void cancelThatIsNotSentLeavesTheScreen();
    void okSendsStopAndStays();
    void okAsksNotToPointAtOnce();
    void upAndDownChangeNothing_data();
    void upAndDownChangeNothing();
    void otherKeysOnlyLog_data();
    void otherKeysOnlyLog();

    void languageChangeRetranslatesTwice();
    void captionsNeedNoTranslation();
    void fontChangeReachesTheValue();
    void otherChangesGoToTheBaseClass();

    void nothingIsCutOrOverlaps_data();
    void nothingIsCutOrOverlaps();
    void missingPictureEndsTheProcess();
    void withoutMemoryTheProcessEnds();
};

// --- Widgets and level -------------------------------------------------------------------------------------

void ScreenPointingTest::widgetsAreAsTold()
{
    PointingFixture f;
    QCOMPARE(f.bar()->minimum(), 320);
    QCOMPARE(f.bar()->maximum(), 600);
    QCOMPARE(f.bar()->value(), 320);
    QVERIFY(!f.bar()->isTextVisible());
    QCOMPARE(f.bar()->geometry(), QRect(0, 0, 256, 30));
    QCOMPARE(f.bar()->styleSheet(),
             QString("QProgressBar {border: 2px solid #424242;background-color: #BDBDBD;margin-left: "
                     "28px;margin-right: 32px;margin-top: 7px;margin-bottom: 0px;}QProgressBar::chunk "
                     "{background-color: #424242;margin: 1px;border: 1px solid black;}"));
    for (const char* name : {"pCancelLabel", "pSignalValueLabel", "pUnitLabel", "pOkLabel"}) {
        QCOMPARE(f.label(name)->alignment(), Qt::Alignment(Qt::AlignBottom));
        QCOMPARE(f.label(name)->geometry().bottom(), 63);
    }
    QCOMPARE(f.label("pCancelLabel")->x(), 0);
    QCOMPARE(f.label("pUnitLabel")->x(), f.label("pSignalValueLabel")->geometry().right() + 1);
    QCOMPARE(f.label("pOkLabel")->geometry().right(), 255);
    QCOMPARE(f.text("pUnitLabel"), QString(" dBHz"));
    QCOMPARE(f.label("pSignalValueLabel")->font().pixelSize(), 18);
    QCOMPARE(f.label("pGridLabel")->geometry(), QRect(0, 0, 256, 64));
    QCOMPARE(f.page->children().last(), static_cast<QObject*>(f.label("pGridLabel"))); // above all others
}

// Between the bar's ends the picture leaves twelve equal gaps through which the bar is seen, and below the
// bar it is nothing.
void ScreenPointingTest::scaleHasTwelveFieldsAndHidesNothing()
{
    const QImage scale = QImage(paths::resourcePath() + "/grid_12_fields.png");
    QCOMPARE(scale.size(), QSize(256, 64));
    QList<int> starts;
    for (int x = 30; x <= 221; ++x) {
        const bool clear = qAlpha(scale.pixel(x, 18)) == 0;
        if (clear && (x == 30 || qAlpha(scale.pixel(x - 1, 18)) != 0)) {
            starts.append(x);
        }
    }
    QCOMPARE(starts.size(), 12);
    for (int field = 1; field < 12; ++field) {
        QCOMPARE(starts.at(field) - 1, 30 + field * 16);
    }
    for (int y = 30; y < 64; ++y) {
        for (int x = 0; x < 256; ++x) {
            QCOMPARE(qAlpha(scale.pixel(x, y)), 0);
        }
    }
    PointingFixture f;
    QCOMPARE(pictureOf(*f.label("pGridLabel")), scale.convertToFormat(QImage::Format_ARGB32));
}

void ScreenPointingTest::levels_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("bar");
    QTest::newRow("319 shows 0.0 and an empty bar") << 319 << "0.0" << 320;
    QTest::newRow("320 shows 32.0 and an empty bar") << 320 << "32.0" << 320;
    QTest::newRow("600 shows 60.0 and a full bar") << 600 << "60.0" << 600;
    QTest::newRow("700 shows 70.0 and a full bar") << 700 << "70.0" << 600;
    QTest::newRow("327 gives 32.7") << 327 << "32.7" << 327;
    QTest::newRow("483") << 483 << "48.3" << 483;
    QTest::newRow("599") << 599 << "59.9" << 599;
    QTest::newRow("601") << 601 << "60.1" << 600;
    QTest::newRow("1000") << 1000 << "100.0" << 600;
    QTest::newRow("0") << 0 << "0.0" << 320;
    QTest::newRow("-1") << -1 << "0.0" << 320;
    QTest::newRow("lowest") << INT_MIN << "0.0" << 320;
    QTest::newRow("highest") << INT_MAX << "214748364.7" << 600;
}

void ScreenPointingTest::levels()
{
    QFETCH(int, level);
    PointingFixture f;
    model()->setSignalLevel(450); // so that every row changes something
    QCOMPARE(f.text("pSignalValueLabel"), QString("45.0"));
    model()->setSignalLevel(level);
    QTEST(f.text("pSignalValueLabel"), "text");
    QTEST(f.bar()->value(), "bar");
}

void ScreenPointingTest::barIsEmptyAt320AndFullAt600()
{
    PointingFixture f;
    const QPoint first(38, 18); // in the middle of the first and of the last field
    const QPoint last(214, 18);
    model()->setSignalLevel(320);
    QCOMPARE(f.picture().pixel(first), GROOVE);
    QCOMPARE(f.picture().pixel(last), GROOVE);
    model()->setSignalLevel(460);
    QCOMPARE(f.picture().pixel(first), FILLED);
    QCOMPARE(f.picture().pixel(last), GROOVE);
    model()->setSignalLevel(600);
    QCOMPARE(f.picture().pixel(first), FILLED);
    QCOMPARE(f.picture().pixel(last), FILLED);
}

void ScreenPointingTest::levelOfTheModelStandsFromTheStart()
{
    PointingFixture f;
    model()->setSignalLevel(512);
    ScreenPointing screen(&f.window);
    QCOMPARE(screen.findChild<QLabel*>("pSignalValueLabel")->text(), QString("51.2"));
    QCOMPARE(screen.findChild<QProgressBar*>("pProgressBar")->value(), 512);
}

void ScreenPointingTest::levelComesOverTheBus()
{
    PointingFixture f;
    for (int level : {456, 300, 655}) {
        terminal().set("ram.status.signal_strength", level);
        QVERIFY(passBus());
        QCOMPARE(f.text("pSignalValueLabel"), model()->getSignalLevelStr(level));
        QCOMPARE(f.bar()->value(), qBound(320, level, 600));
    }
}

void ScreenPointingTest::levelOfAnotherThreadArrivesQueued()
{
    PointingFixture f;
    std::thread([] { model()->setSignalLevel(511); }).join();
    QCOMPARE(f.text("pSignalValueLabel"), QString("0.0"));
    QCoreApplication::sendPostedEvents();
    QCOMPARE(f.text("pSignalValueLabel"), QString("51.1"));
}

// --- Keys --------------------------------------------------------------------------------------------------

void ScreenPointingTest::cancelSendsItsCommandAndLeaves()
{
    PointingFixture f;
    Messages messages;
    f.press(Qt::Key_Left);
    QCOMPARE(messages.count("ScreenPointing::keyLeftClicked(): About to run send_pointing_msg(\"cancel\")"),
             1);
    QCOMPARE(
        messages.count("ScreenPointing::keyLeftClicked(): finished command send_pointing_msg(\"cancel\")"),
        1);
    QVERIFY(terminal().waitForMessage("bp_ctrl.pointing"));
    QCOMPARE(sentCommands(), QList<QByteArray>{QByteArray("cancel\0", 7)});
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_STATUS);
    QVERIFY(f.page->isHidden());
}

// The window's rule brings the screen up again at once; it goes when the model reports the end.
void ScreenPointingTest::cancelStaysWhileTheModelStillPoints()
{
    PointingFixture f;
    model()->setPointingMode(POINTING_STATUS_POINTING);
    f.press(Qt::Key_Left);
    QVERIFY(terminal().waitForMessage("bp_ctrl.pointing"));
    QCOMPARE(sentCommands(), QList<QByteArray>{QByteArray("cancel\0", 7)});
    QVERIFY(f.current());
    QVERIFY(f.page->isVisible());
    QCOMPARE(f.window.focusWidget(), static_cast<QWidget*>(f.page));
    terminal().set("ram.status.pointed_status", POINTING_STATUS_NOT_POINTED);
    QVERIFY(passBus());
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_STATUS);
}

void ScreenPointingTest::cancelThatIsNotSentLeavesTheScreen()
{
    PointingFixture f;
    model()->setExtendedSystemStatus(8);
    f.press(Qt::Key_Left);
    QVERIFY(passBus());
    QCOMPARE(sentCommands(), QList<QByteArray>());
    QVERIFY(!f.current());
}

void ScreenPointingTest::okSendsStopAndStays()
{
    PointingFixture f;
    model()->setPointingMode(POINTING_STATUS_POINTING);
    Messages messages;
    f.press(Qt::Key_Return);
    QCOMPARE(messages.count("ScreenPointing::keyOkClicked(): About to ask the RadioModule to stop pointing "
                            "and start registering."),
             1);
    QVERIFY(terminal().waitForMessage("bp_ctrl.pointing"));
    QCOMPARE(sentCommands(), QList<QByteArray>{QByteArray("stop\0", 5)});
    QVERIFY(f.current());
    QVERIFY(f.page->isVisible());
    terminal().set("ram.status.pointed_status", POINTING_STATUS_POINTED);
    QVERIFY(passBus());
    QVERIFY(!f.current());
}

void ScreenPointingTest::okAsksNotToPointAtOnce()
{
    PointingFixture f;
    f.window.setStatusText("old");
    QVERIFY(!model()->getHidePointNowText());
    f.press(Qt::Key_Return);
    QVERIFY(model()->getHidePointNowText());
    const Screen* const status = f.window.getScreenById(Screen::SCREEN_STATUS);
    QCOMPARE(status->findChild<QLabel*>("pStatusLabel")->text(), QString());
}

void ScreenPointingTest::upAndDownChangeNothing_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("up") << int(Qt::Key_Up);
    QTest::newRow("down") << int(Qt::Key_Down);
}

void ScreenPointingTest::upAndDownChangeNothing()
{
    QFETCH(int, key);
    PointingFixture f;
    model()->setSignalLevel(483);
    const QImage before = f.picture();
    Messages messages;
    f.press(static_cast<Qt::Key>(key));
    QCOMPARE(
        messages.count("ScreenPointing::toogleMuteBuzzer(): Here the buzzer mute shall be toggled on/off"),
        1);
    QVERIFY(f.current());
    QCOMPARE(f.picture(), before);
    QVERIFY(passBus());
    QCOMPARE(sentCommands(), QList<QByteArray>());
    for (const sim::WriteRecord& write : terminal().writes()) {
        QVERIFY2(write.key.find("buzzer") == std::string::npos, write.key.c_str());
    }
}

void ScreenPointingTest::otherKeysOnlyLog_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("line");
    QTest::newRow("right") << int(Qt::Key_Right) << "Button RIGHT not defined on this screen.";
    QTest::newRow("long OK") << int(Qt::Key_Space) << "Button LONG OK not defined on this screen.";
}

void ScreenPointingTest::otherKeysOnlyLog()
{
    QFETCH(int, key);
    QFETCH(QString, line);
    PointingFixture f;
    Messages messages;
    f.press(static_cast<Qt::Key>(key));
    QCOMPARE(messages.count(line), 1);
    QVERIFY(f.current());
    QCOMPARE(sentCommands(), QList<QByteArray>());
}

// --- Language and font -------------------------------------------------------------------------------------

void ScreenPointingTest::languageChangeRetranslatesTwice()
{
    PointingFixture f;
    Messages messages;
    Brackets brackets;
    QCOMPARE(f.text("pCancelLabel"), QString("[Shared_translations|Cancel]"));
    QCOMPARE(f.text("pOkLabel"), QString("[Shared_translations|OK]"));
    QCOMPARE(messages.count("ScreenPointing::changeEvent(): shall re-translate here..."), 1);
    QCOMPARE(messages.count("ScreenPointing::retranslate(): Start of function."), 2);
}

void ScreenPointingTest::captionsNeedNoTranslation()
{
    PointingFixture f;
    ScreenPointing screen(&f.window); // no change of the language has reached it
    QCOMPARE(screen.findChild<QLabel*>("pCancelLabel")->text(), QString("Cancel"));
    QCOMPARE(screen.findChild<QLabel*>("pOkLabel")->text(), QString("OK"));
}

void ScreenPointingTest::fontChangeReachesTheValue()
{
    PointingFixture f;
    model()->setLanguage(LANG_JAPANESE); // the window changes the font
    QCoreApplication::sendPostedEvents();
    QCOMPARE(fontText(f.label("pSignalValueLabel")->font()), fontText(*GuiApp::getFont(18, LANG_JAPANESE)));
    model()->setLanguage(LANG_ENGLISH);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(fontText(f.label("pSignalValueLabel")->font()), fontText(*GuiApp::getFont(18, LANG_ENGLISH)));
}

void ScreenPointingTest::otherChangesGoToTheBaseClass()
{
    PointingFixture f;
    Messages messages;
    QEvent font(QEvent::FontChange);
    QCoreApplication::sendEvent(f.page, &font);
    QCOMPARE(messages.count("Screen::changeEvent(QEvent *pEvent): QEvent::FontChange. Nothing to do here."),
             1);
    QCOMPARE(messages.countOfPrefix("ScreenPointing::"), 0);
}

// --- The whole ---------------------------------------------------------------------------------------------

void ScreenPointingTest::nothingIsCutOrOverlaps_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<int>("level");
    for (int language : {int(LANG_ENGLISH), int(LANG_CHINESE)}) {
        for (int level : {0, 350, 483, 600, 700, INT_MAX}) {
            QTest::addRow("language %d, level %d", language, level) << language << level;
        }
    }
}

void ScreenPointingTest::nothingIsCutOrOverlaps()
{
    QFETCH(int, language);
    QFETCH(int, level);
    PointingFixture f;
    model()->setLanguage(static_cast<LANG_ENUM>(language));
    model()->setSignalLevel(level);
    QCOMPARE(f.flaws({"pGridLabel"}), QString());
    QVERIFY(f.label("pSignalValueLabel")->y() >= f.bar()->geometry().bottom());
}

void ScreenPointingTest::missingPictureEndsTheProcess()
{
    PointingFixture f;
    Pictures pictures;
    Window* const window = &f.window;
    const Death death = deathOf([window] {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
            fprintf(stderr, "%s\n", qPrintable(text));
        });
        ScreenPointing screen(window);
    });
    QVERIFY(death.signal != 0 || death.status == 1);
    const QByteArray line =
        "ScreenPointing::ScreenPointing(): ERROR !!!!!!!! Pixmap not found for filename=" +
        pictures.path("grid_12_fields").toLatin1() + ". Now exiting lumenpanel!";
    QVERIFY2(death.output.find(line.constData()) != std::string::npos, death.output.c_str());
    QVERIFY2(death.output.find("<1> gui: ERROR!!! Missing file used by lumenpanel. Exiting lumenpanel.") !=
                 std::string::npos,
             death.output.c_str());
}

void ScreenPointingTest::withoutMemoryTheProcessEnds()
{
    PointingFixture f;
    Window* const window = &f.window;
    int deaths = 0;
    for (;; ++deaths) {
        const Death death = deathOf([window, deaths] {
            grantedAllocations = deaths;
            ScreenPointing screen(window);
        });
        if (death.status == 111) {
            break; // as many as it needs
        }
        QVERIFY2(death.output.find("<1> gui: *** ASSERT in screenpointing at ") != std::string::npos,
                 death.output.c_str());
    }
    QCOMPARE(deaths, 2 + 1 + 5); // layouts, bar, labels
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenPointingTest>(argc, argv);
}

#include "screenpointing_test.moc"
