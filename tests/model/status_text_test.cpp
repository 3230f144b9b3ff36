// The status text: the rules from the top, row by row and pair by pair; the words of each id; the lines of
// running connections.
#include "model/statusupdater.h"

#include "common/qtcompat.h"
#include "model/event_ids.h"
#include "support/messages.h"
#include "support/modelaccess.h"

#include <QApplication>
#include <QTranslator>
#include <QtTest>

#include <functional>

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

// A terminal of which no rule but the last but one says anything: up, nobody else's, SIM ready, pointed,
// network selected, both sides idle.
void setQuiet()
{
    StatusUpdater::destroyForTest();
    model().setExtendedSystemStatus(11); // up, but not the step that starts the pointing
    model().setPointingMode(POINTING_STATUS_POINTED);
    Access::simStatus() = SIM_READY;
    Access::plmnStatus() = PLMN_STATUS_SELECTED;
    Access::umtsCsStatus() = UMTS_STATUS_IDLE;
    Access::umtsPsStatus() = UMTS_STATUS_IDLE;
}

void setEvent(unsigned int id)
{
    fmmi_evt_t event;
    event.identifier = id;
    Access::systemEvents().append(event);
}

bundle_t session(BUNDLE_STATUS status, int download, int upload, int trafficClass = -1)
{
    bundle_t bundle;
    bundle.wanUserGroup = 1;
    bundle.status = status;
    bundle.startTime = QDateTime::currentDateTime();
    connection_t connection;
    connection.max_bit_rate_download = download;
    connection.max_bit_rate_upload = upload;
    connection.traffic_class = trafficClass;
    bundle.connections.append(connection);
    return bundle;
}

void addSession(const bundle_t& bundle)
{
    Access::activeConnectionsAndBundles().append(bundle);
}

// One row of the rules: what makes it hold, alone, on the quiet terminal.
struct Row {
    const char* name;
    std::function<void()> make;
    STATUS_TEXT_ENUM result;
};

const QList<Row>& rows()
{
    static const QList<Row> ROWS = {
        {"1 not up", [] { model().setExtendedSystemStatus(9); }, STATUS_TEXT_INITIALIZING},
        {"2 external control", [] { model().setControlledByATCommands(true); }, STATUS_TEXT_EXTERNAL_CONTROL},
        {"3 bonding slave",
         [] {
             model().setBondingEnabled(true);
             model().setDhcpClientMode(true);
         },
         STATUS_TEXT_BONDING_SLAVE_MODE},
        {"4 session runs", [] { addSession(session(BUNDLE_STATUS_RUNNING, 64, 64)); },
         STATUS_TEXT_ACTIVE_BUNDLES},
        {"5 SIM not known", [] { Access::simStatus() = SIM_STATUS_UNKNOWN; }, STATUS_TEXT_INITIALIZING_SIM},
        {"6 SIM invalid", [] { Access::simStatus() = SIM_INVALID; }, STATUS_TEXT_SIM_REJECTED},
        {"7 no SIM", [] { Access::simStatus() = SIM_NOT_PRESENT; }, STATUS_TEXT_INSERT_SIM},
        {"8 SIM blocked", [] { Access::simStatus() = SIM_BLOCKED; }, STATUS_TEXT_ENTER_PUK},
        {"9 SIM locked", [] { Access::simStatus() = SIM_LOCKED; }, STATUS_TEXT_SIM_LOCK_MISMATCH},
        {"10 PIN needed", [] { Access::simStatus() = SIM_PIN_NEEDED; }, STATUS_TEXT_ENTER_PIN},
        {"11 no network data", [] { Access::plmnStatus() = PLMN_STATUS_UNDEFINED; }, STATUS_TEXT_UNDEFINED},
        {"12 not pointed", [] { model().setPointingMode(POINTING_STATUS_NOT_POINTED); },
         STATUS_TEXT_POINT_NOW},
        {"13 too hot", [] { setEvent(66053); }, STATUS_TEXT_BLANK},
        {"14 pointing not known", [] { model().setPointingMode(POINTING_STATUS_UNKNOWN); },
         STATUS_TEXT_INITIALIZING},
        {"15 scanning, text hidden",
         [] {
             Access::plmnStatus() = PLMN_STATUS_SCANNING;
             model().startHidePointNowText();
         },
         STATUS_TEXT_POINT_NOW_HIDDEN},
        {"17 scanning", [] { Access::plmnStatus() = PLMN_STATUS_SCANNING; }, STATUS_TEXT_SEARCHING},
        {"17 searching", [] { Access::plmnStatus() = PLMN_STATUS_SEARCHING; }, STATUS_TEXT_SEARCHING},
        {"17 selecting", [] { Access::plmnStatus() = PLMN_STATUS_SELECTING; }, STATUS_TEXT_SEARCHING},
        {"17 not registered", [] { Access::plmnStatus() = PLMN_STATUS_NOT_REGISTERED; },
         STATUS_TEXT_SEARCHING},
        {"18 circuit side attached", [] { Access::umtsCsStatus() = UMTS_STATUS_ATTACHED; },
         STATUS_TEXT_READY},
        {"18 packet side attached", [] { Access::umtsPsStatus() = UMTS_STATUS_ATTACHED; }, STATUS_TEXT_READY},
        {"19 circuit side attaching", [] { Access::umtsCsStatus() = UMTS_STATUS_ATTACHING; },
         STATUS_TEXT_REGISTERING},
        {"19 packet side attaching", [] { Access::umtsPsStatus() = UMTS_STATUS_ATTACHING; },
         STATUS_TEXT_REGISTERING},
        {"20 both blocked", [] { Access::umtsCsStatus() = Access::umtsPsStatus() = UMTS_STATUS_BLOCKED; },
         STATUS_TEXT_LIMITED_SERVICE},
        {"21 selected", [] {}, STATUS_TEXT_SEARCHING},
    };
    return ROWS;
}

STATUS_TEXT_ENUM decided()
{
    model().updateCurrentStatusTextId();
    return model().getCurrentStatusTextId();
}

int widthOf(const QString& text)
{
    return qtcompat::textWidth(QFontMetrics(Access::statusLabelFont()), text);
}

// Answers every text with itself in brackets and its context, so that a test sees who was asked for it.
class Brackets : public QTranslator {
public:
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        return QString("[%1|%2]").arg(context, source);
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class StatusTextTest : public QObject {
    Q_OBJECT

private slots:
    void init() { setQuiet(); }
    void cleanupTestCase() { StatusUpdater::destroyForTest(); }

    // --- The rules -----------------------------------------------------------------------------------------

    void eachRowDecidesAlone_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < rows().size(); ++i)
            QTest::newRow(rows().at(i).name) << i;
    }
    void eachRowDecidesAlone()
    {
        QFETCH(int, index);
        rows().at(index).make();
        QCOMPARE(int(decided()), int(rows().at(index).result));
    }

    // Any two rows at once: the upper one decides. Where both set one value, such as the SIM's, the upper one
    // is set last and stands alone.
    void upperRowDecidesOfTwo()
    {
        const int lastFree = 13; // up to "14 pointing not known"
        for (int upper = 0; upper <= lastFree; ++upper) {
            for (int lower = upper + 1; lower < rows().size(); ++lower) {
                // Hiding the text is what takes the upper one out: these two never hold at once.
                if (QByteArray(rows().at(upper).name).startsWith("12") &&
                    QByteArray(rows().at(lower).name).startsWith("15"))
                    continue;
                setQuiet();
                rows().at(lower).make();
                rows().at(upper).make(); // last, so that it has its way where both set one value
                const QByteArray pair =
                    QByteArray(rows().at(upper).name) + " over " + QByteArray(rows().at(lower).name);
                QVERIFY2(decided() == rows().at(upper).result, pair.constData());
            }
        }
    }

    // "A SIM in state -1 is told as rejected, although getSimStatusFromPinStr never returns -1."
    void simInStateMinusOneIsRejected()
    {
        Access::simStatus() = -1;
        QCOMPARE(int(decided()), int(STATUS_TEXT_SIM_REJECTED));
    }

    // "With plmnStatus 4 and CS attached, PS idle, the text is "Ready"; with CS attaching and PS attached it
    // is "Ready"; with CS blocked and PS idle it is "Searching"; with both blocked it is the limited service
    // text."
    void networkSidesTogether()
    {
        model().updateTranslatedStatusTexts();
        QCOMPARE(textOfSides(UMTS_STATUS_ATTACHED, UMTS_STATUS_IDLE), QString("Ready"));
        QCOMPARE(textOfSides(UMTS_STATUS_ATTACHING, UMTS_STATUS_ATTACHED), QString("Ready"));
        QCOMPARE(textOfSides(UMTS_STATUS_BLOCKED, UMTS_STATUS_IDLE), QString("Searching"));
        QCOMPARE(textOfSides(UMTS_STATUS_BLOCKED, UMTS_STATUS_BLOCKED),
                 QString("RM_EV_ALARM_LIMITED_SERVICE"));
        QCOMPARE(textOfSides(UMTS_STATUS_ATTACHING, UMTS_STATUS_BLOCKED), QString("Registering"));
    }

    // "pointingMode 0 with plmnStatus 6 gives STATUS_TEXT_UNDEFINED, not "Point now?"."
    void noNetworkDataStandsBeforePointNow()
    {
        model().setPointingMode(POINTING_STATUS_NOT_POINTED);
        Access::plmnStatus() = PLMN_STATUS_UNDEFINED;
        Messages log;
        QCOMPARE(int(decided()), int(STATUS_TEXT_UNDEFINED));
        QCOMPARE(log.count(
                     "StatusUpdater::updateCurrentStatusTextId(): currentStatusTextId=STATUS_TEXT_UNDEFINED"),
                 1);
        model().updateTranslatedStatusTexts();
        QCOMPARE(model().getStatusText(), QString("Initializing"));
    }

    // "With hidePointNowText true, pointingMode 0 and plmnStatus 4, the text goes by CS and PS, as if
    // pointed."
    void hiddenTextGoesByTheNetwork()
    {
        model().setPointingMode(POINTING_STATUS_NOT_POINTED);
        model().startHidePointNowText();
        Access::umtsPsStatus() = UMTS_STATUS_ATTACHED;
        QCOMPARE(int(decided()), int(STATUS_TEXT_READY));
        Access::umtsPsStatus() = UMTS_STATUS_ATTACHING;
        QCOMPARE(int(decided()), int(STATUS_TEXT_REGISTERING));
    }

    // "EV_AP_TEMP_CLOSE_CONN present and pointingMode 0 and hidePointNowText false gives "Point now?"."
    void pointNowStandsBeforeTheShutdownOfConnections()
    {
        QCOMPARE(int(EV_AP_TEMP_CLOSE_CONN), 66053);
        setEvent(EV_AP_TEMP_CLOSE_CONN);
        model().setPointingMode(POINTING_STATUS_NOT_POINTED);
        QCOMPARE(int(decided()), int(STATUS_TEXT_POINT_NOW));
        model().startHidePointNowText();
        QCOMPARE(int(decided()), int(STATUS_TEXT_BLANK));
    }

    // "A running connection hides a SIM problem."
    void runningConnectionHidesASimProblem()
    {
        addSession(session(BUNDLE_STATUS_RUNNING, 64, 64));
        for (int sim : {-3, -2, 0, 1, 2, 4}) {
            Access::simStatus() = sim;
            QCOMPARE(int(decided()), int(STATUS_TEXT_ACTIVE_BUNDLES));
        }
    }

    void networkStateWithoutANameIsLogged()
    {
        Access::plmnStatus() = 77;
        Messages log;
        QCOMPARE(int(decided()), int(STATUS_TEXT_UNDEFINED));
        QCOMPARE(
            log.count(QtWarningMsg, "StatusUpdater::updateCurrentStatusTextId(): ERROR!! tmpPlmnStatus=77"),
            1);
    }

    void readyOfATerminalThatIsNotRegisteredIsLogged()
    {
        const QString text = "StatusUpdater::updateCurrentStatusTextId(): Terminal state unknown, as "
                             "iai2Status==4. Terminal silent deregistered?";
        Access::umtsPsStatus() = UMTS_STATUS_ATTACHED;
        Access::iai2Status() = IAI2_STATUS_REGISTERING;
        Messages log;
        QCOMPARE(int(decided()), int(STATUS_TEXT_READY));
        QCOMPARE(log.count(QtDebugMsg, text), 1);
        log.clear();
        Access::iai2Status() = IAI2_STATUS_REGISTERED;
        QCOMPARE(int(decided()), int(STATUS_TEXT_READY));
        QCOMPARE(log.countOfPrefix("StatusUpdater::updateCurrentStatusTextId(): Terminal state unknown"), 0);
    }

    void externalControlSetsTheIdAtOnce()
    {
        decided();
        model().setControlledByATCommands(true);
        QCOMPARE(int(model().getCurrentStatusTextId()), int(STATUS_TEXT_EXTERNAL_CONTROL));
        model().setControlledByATCommands(false);
        QCOMPARE(int(model().getCurrentStatusTextId()),
                 int(STATUS_TEXT_EXTERNAL_CONTROL)); // until decided anew
        QCOMPARE(int(decided()), int(STATUS_TEXT_SEARCHING));
    }

    void systemStatusTenIsUp()
    {
        for (int status : {-1, 0, 9}) {
            model().setExtendedSystemStatus(status);
            QCOMPARE(int(decided()), int(STATUS_TEXT_INITIALIZING));
        }
        Access::simStatus() = SIM_NOT_PRESENT; // so that the step to 10 does not point
        model().setExtendedSystemStatus(10);
        QCOMPARE(int(decided()), int(STATUS_TEXT_INSERT_SIM));
    }

    // --- The words -----------------------------------------------------------------------------------------

    void textOfEachId_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("context");
        const QString own = "StatusUpdater";
        const QString shared = "Shared_translations";
        QTest::newRow("0") << 0 << "Initializing" << shared;
        QTest::newRow("1") << 1 << "Insert SIM" << own;
        QTest::newRow("2") << 2 << "Initializing SIM" << own;
        QTest::newRow("3") << 3 << "RM_EV_BDU_USIM_REJECTED" << shared;
        QTest::newRow("4") << 4 << "RM_EV_ALARM_LIMITED_SERVICE" << shared;
        QTest::newRow("5") << 5 << "SIM Lock does not\nmatch inserted SIM" << own;
        QTest::newRow("6") << 6 << "Enter PUK in web interface" << own;
        QTest::newRow("7") << 7 << "Enter PIN?" << own;
        QTest::newRow("8") << 8 << "Point now?" << own;
        QTest::newRow("9") << 9 << "Initializing" << shared;
        QTest::newRow("10") << 10 << "Searching" << own;
        QTest::newRow("11") << 11 << "Registering" << own;
        QTest::newRow("12") << 12 << "Ready" << own;
        QTest::newRow("14") << 14 << "External control" << own;
        QTest::newRow("15") << 15 << "Bonding slave mode" << own;
    }
    void textOfEachId()
    {
        QFETCH(int, id);
        QFETCH(QString, source);
        QFETCH(QString, context);
        model().updateTranslatedStatusTexts();
        QCOMPARE(model().getStatusText(STATUS_TEXT_ENUM(id)), source);
        Brackets brackets;
        QCoreApplication::installTranslator(&brackets);
        model().updateTranslatedStatusTexts();
        QCOMPARE(model().getStatusText(STATUS_TEXT_ENUM(id)), QString("[%1|%2]").arg(context, source));
    }

    void blankTextIsAnEntry()
    {
        Brackets brackets;
        QCoreApplication::installTranslator(&brackets); // even then it is empty
        model().updateTranslatedStatusTexts();
        Messages log;
        QCOMPARE(model().getStatusText(STATUS_TEXT_BLANK), QString());
        QCOMPARE(log.texts(),
                 QStringList("StatusUpdater::getStatusText(int statusTextId): Successfully translated "
                             "statusTextId=17 to "));
    }

    // "A STATUS_TEXT_POINT_NOW_HIDDEN text is empty, and a debug line tells of it."
    void hiddenPointNowHasNoText()
    {
        model().updateTranslatedStatusTexts();
        Messages log;
        QCOMPARE(model().getStatusText(STATUS_TEXT_POINT_NOW_HIDDEN), QString());
        QCOMPARE(log.count(QtDebugMsg,
                           "StatusUpdater::getStatusText(int statusTextId): statusTextId=13 not available "
                           "in translatedStatusTextList. translatedStatusTextList.size()=16"),
                 1);
    }

    void noTextBeforeTheFirstLanguage()
    {
        Messages log;
        for (int id = 0; id <= 17; ++id)
            QCOMPARE(model().getStatusText(STATUS_TEXT_ENUM(id)), QString());
        QCOMPARE(log.count(QtDebugMsg,
                           "StatusUpdater::getStatusText(int statusTextId): statusTextId=12 not available "
                           "in translatedStatusTextList. translatedStatusTextList.size()=0"),
                 1);
    }

    void foundTextIsLogged()
    {
        model().updateTranslatedStatusTexts();
        Messages log;
        model().getStatusText(STATUS_TEXT_READY);
        QCOMPARE(log.count(QtDebugMsg,
                           "StatusUpdater::getStatusText(int statusTextId): Successfully translated "
                           "statusTextId=12 to Ready"),
                 1);
    }

    void textOfTheCurrentId()
    {
        model().updateTranslatedStatusTexts();
        model().setPointingMode(POINTING_STATUS_NOT_POINTED);
        decided();
        QCOMPARE(model().getStatusText(), QString("Point now?"));
    }

    // --- Lines of connections ------------------------------------------------------------------------------

    void labelOfEachClass_data()
    {
        QTest::addColumn<int>("download");
        QTest::addColumn<int>("upload");
        QTest::addColumn<int>("trafficClass");
        QTest::addColumn<QString>("label");
        QTest::newRow("class 1") << 64 << 32 << 1 << "64/32 kbps";
        QTest::newRow("class 2") << 64 << 416 << 1 << "HDR Half Asymmetric";
        QTest::newRow("class 3") << 416 << 416 << 1 << "HDR Half Symmetric";
        QTest::newRow("class 4") << 512 << 512 << 1 << "BGAN X-Stream";
        QTest::newRow("class 5") << 64 << 896 << 1 << "HDR Full Asymmetric";
        QTest::newRow("class 6") << 896 << 896 << 1 << "HDR Full Symmetric";
        QTest::newRow("class 7") << 128 << 1792 << 1 << "2xHDR Full Asymmetric";
        QTest::newRow("class 8") << 1792 << 1792 << 1 << "2xHDR Full Symmetric";
        QTest::newRow("no class") << 65 << 416 << 1 << "Unknown connection";
    }
    void labelOfEachClass()
    {
        QFETCH(int, download);
        QFETCH(int, upload);
        QFETCH(int, trafficClass);
        QFETCH(QString, label);
        setFont(4); // so small that nothing is cut
        addSession(session(BUNDLE_STATUS_RUNNING, download, upload, trafficClass));
        const QRegularExpression line("^" + QRegularExpression::escape(label) + "  00:00:0[0-9]$");
        const QString text = model().getActiveBundlesStatusStr();
        QVERIFY2(line.match(text).hasMatch(), qPrintable(text));
    }

    void standardDataShowsItsAmountAndNoTime()
    {
        bundle_t bundle = session(BUNDLE_STATUS_RUNNING, 896, 896, 3);
        bundle.backgroundTotal = 1234;
        addSession(bundle);
        QCOMPARE(model().getActiveBundlesStatusStr(), QString("Standard data: 1.23 MB"));
    }

    void linesComeInTheOrderOfTheList()
    {
        setFont(4);
        addSession(session(BUNDLE_STATUS_INITIALIZING, 64, 64));
        bundle_t bundle = session(BUNDLE_STATUS_RUNNING, 64, 64, 3);
        bundle.connections.append(bundle.connections.first());
        addSession(bundle);
        QCOMPARE(model().getStatusText(STATUS_TEXT_ACTIVE_BUNDLES),
                 QString("Connecting...\nStandard data: 0 kB\nStandard data: 0 kB"));
    }

    void sessionsThatDoNotRunHaveNoLine()
    {
        Messages log;
        addSession(session(BUNDLE_STATUS_IDLE, 64, 64));
        addSession(session(BUNDLE_STATUS_UNKNOWN, 64, 64));
        addSession(session(BUNDLE_STATUS_DELETED, 64, 64));
        QCOMPARE(model().getActiveBundlesStatusStr(), QString());
        QCOMPARE(log.count(QtDebugMsg,
                           "StatusUpdater::getActiveBundlesStatusStr(): Unexpected bundle[2. Bundle may "
                           "be in the process of being stopped."),
                 1);
        QCOMPARE(log.countOfPrefix("StatusUpdater::debugBundle(): unexpected bundle status"), 1);
    }

    void emptyListHasNoLine() { QCOMPARE(model().getActiveBundlesStatusStr(), QString()); }

    // "In French, a label too long for 184 pixels loses first one blank of the gap and then characters, and
    // ends in "..."."
    void longLabelInFrenchLosesABlankAndThenItsEnd()
    {
        model().setLanguage(LANG_FRENCH);
        bool sawTwoBlanks = false, sawOneBlank = false, sawDots = false;
        forLabelsAndSizes([&](const Label& label) {
            const QString line = lineOf(label, 2);
            sawTwoBlanks |= line.startsWith(label.text + "  0");
            sawOneBlank |= line.startsWith(label.text + " 0");
            sawDots |= line.contains("... 0");
        });
        QVERIFY(sawTwoBlanks);
        QVERIFY(sawOneBlank);
        QVERIFY(sawDots);
    }

    // Languages with wide glyphs begin with one blank, and give it up before the label's end.
    void longLabelOfWideGlyphsLosesTheGap()
    {
        for (LANG_ENUM language : {LANG_RUSSIAN, LANG_CHINESE, LANG_JAPANESE}) {
            model().setLanguage(language);
            bool sawOneBlank = false, sawNone = false, sawDots = false;
            forLabelsAndSizes([&](const Label& label) {
                const QString line = lineOf(label, 1);
                sawOneBlank |= line.startsWith(label.text + " 0");
                sawNone |= line.startsWith(label.text + "0");
                sawDots |= line.contains("...0");
            });
            QVERIFY(sawOneBlank && sawNone && sawDots);
        }
    }

    // The time counts with the width of eight digits, whatever it reads: a session of 100 hours makes a
    // longer line, not a shorter label.
    void longTimeDoesNotShortenTheLabel()
    {
        setFont(12);
        const QString line = lineOf({65, 416, "Unknown connection"}, 2);
        Access::activeConnectionsAndBundles()[0].startTime =
            QDateTime::currentDateTime().addSecs(-100 * 3600);
        const QString longer = model().getActiveBundlesStatusStr();
        QVERIFY(longer.contains("100:00:0"));
        QCOMPARE(longer.left(longer.indexOf("100:00:")), line.left(line.indexOf("00:00:")));
    }

    // A font in which not even the dots fit leaves no label, and the work ends.
    void hugeFontLeavesNoLabel()
    {
        setFont(200);
        addSession(session(BUNDLE_STATUS_RUNNING, 65, 416, 1));
        QVERIFY(model().getActiveBundlesStatusStr().startsWith("... 00:00:0"));
    }

private:
    static void setFont(int pixels)
    {
        QFont font("DejaVu Sans Mono");
        font.setPixelSize(pixels);
        model().setStatusLabelFont(font);
    }

    static QString textOfSides(int cs, int ps)
    {
        Access::umtsCsStatus() = cs;
        Access::umtsPsStatus() = ps;
        decided();
        return model().getStatusText();
    }

    struct Label {
        int download;
        int upload;
        QString text;
    };

    // Labels of many widths, in fonts of many sizes: all ways of fitting occur.
    static void forLabelsAndSizes(const std::function<void(const Label&)>& visit)
    {
        const QList<Label> labels = {{65, 416, "Unknown connection"},
                                     {64, 416, "HDR Half Asymmetric"},
                                     {512, 512, "BGAN X-Stream"},
                                     {1, 1, "1/1 kbps"},
                                     {32, 1, "32/1 kbps"},
                                     {32, 64, "32/64 kbps"},
                                     {128, 64, "128/64 kbps"},
                                     {128, 256, "128/256 kbps"}};
        for (int size = 4; size <= 40; ++size) {
            setFont(size);
            for (const Label& label : labels)
                visit(label);
        }
    }

    // The line of a connection, checked against the rule that made it: the longest label that
    // fits, with the widest gap that goes with it.
    static QString lineOf(const Label& connection, int fullGap)
    {
        const QString& label = connection.text;
        Access::activeConnectionsAndBundles().clear();
        addSession(session(BUNDLE_STATUS_RUNNING, connection.download, connection.upload, 1));
        const QString line = model().getActiveBundlesStatusStr();
        const QString shown = line.left(line.indexOf("00:00:"));
        const int time = widthOf("00:00:00");
        const QString blanks = QString(fullGap, ' ');
        const QString expected = [&] {
            if (widthOf(label) + widthOf(blanks) + time <= 184)
                return label + blanks;
            const QString rest = blanks.left(fullGap - 1);
            if (widthOf(label) + widthOf(rest) + time <= 184)
                return label + rest;
            for (int length = label.size(); length > 0; --length)
                if (widthOf(label.left(length)) + widthOf("...") + widthOf(rest) + time < 185)
                    return label.left(length) + (length < label.size() ? "..." : "") + rest;
            return "..." + rest;
        }();
        if (shown != expected)
            qFatal("line is '%s', expected '%s'", qPrintable(line), qPrintable(expected));
        return line;
    }
};

QTEST_MAIN(StatusTextTest)

#include "status_text_test.moc"
