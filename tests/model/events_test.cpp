// Events and alerts: from the records of the log to the list, what is new and what is gone, the display's own
// events, and the texts.
#include "busif/busfixture.h"
#include "model/event_ids.h"
#include "model/event_texts.h"
#include "support/modelaccess.h"
#include "support/records.h"

#include <QSet>
#include <QTranslator>

#include <functional>

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

void update(const Records& records)
{
    model().setAlertList(records.count(), records.data());
}

std::string key(int index, const char* field)
{
    return "ram.log.alert." + std::to_string(index) + "." + field;
}

Records& addAlert(Records& records, int index, int identifier, int state = 1, int time = 1000)
{
    return records.number(key(index, "identifier"), identifier)
        .text(key(index, "shorttext"), "words of the log")
        .number(key(index, "severity"), 2)
        .number(key(index, "state"), state)
        .number(key(index, "sub_id"), 5)
        .number(key(index, "time"), time);
}

fmmi_evt_t eventOf(unsigned int id, int state = 1)
{
    fmmi_evt_t event;
    event.identifier = id;
    event.state = state;
    return event;
}

fmmi_evt_t eventWithText(unsigned int id, const char* text)
{
    fmmi_evt_t event = eventOf(id);
    std::strncpy(event.shorttext, text, sizeof event.shorttext - 1);
    return event;
}

QList<unsigned int> ids(const QList<fmmi_evt_t>& events)
{
    QList<unsigned int> list;
    for (const fmmi_evt_t& event : events)
        list.append(event.identifier);
    return list;
}

// Writes down which signals came, in their order.
class Diary : public QObject {
    Q_OBJECT

public:
    QStringList lines;

    Diary()
    {
        connect(&model(), SIGNAL(showPopup(fmmi_evt_t)), this, SLOT(show(fmmi_evt_t)));
        connect(&model(), SIGNAL(signalRemovePopup(uint)), this, SLOT(removed(uint)));
        connect(&model(), SIGNAL(eventListChanged()), this, SLOT(listChanged()));
        connect(&model(), SIGNAL(warningsPresentChanged(bool)), this, SLOT(warnings(bool)));
    }

public slots:
    void show(fmmi_evt_t event) { lines.append(QString("show %1").arg(event.identifier)); }
    void removed(uint id) { lines.append(QString("remove %1").arg(id)); }
    void listChanged() { lines.append("list"); }
    void warnings(bool value) { lines.append(QString("warnings %1").arg(value)); }
};

class Brackets : public QTranslator {
public:
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        return QString("[%1|%2]").arg(context, source);
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class EventsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { bus = new BusFixture; }
    void cleanupTestCase() { delete bus; }
    void init() { bus->reset(); }

    // --- Records of the log --------------------------------------------------------------------------------

    void alertOfAllItsFields()
    {
        Records records;
        addAlert(records, 3, 0x210)
            .number(key(3, "entry"), 17)
            .number(key(3, "unit_id"), 1)
            .text(key(3, "info"), "x")
            .number(key(3, "anything"), 1);
        update(records);
        QCOMPARE(model().getEvents().size(), 1);
        const fmmi_evt_t event = model().getEvents().at(0);
        QCOMPARE(event.identifier, 0x210u);
        QCOMPARE(event.sub_id, 5u);
        QCOMPARE(event.severity, 2);
        QCOMPARE(event.state, 1);
        QCOMPARE(QString(event.shorttext), QString("words of the log"));
        QCOMPARE(event.time, int64_t(1000000));
        QCOMPARE(bus->log.count(QtDebugMsg, "StatusUpdater::setAlertList(): Start of function."), 1);
    }

    void recordsMayComeInAnyOrder()
    {
        Records records;
        records.number(key(2, "identifier"), 0x240)
            .number(key(1, "identifier"), 0x210)
            .number(key(2, "state"), 7);
        update(records);
        QCOMPARE(ids(model().getEvents()),
                 QList<unsigned int>({0x240, 0x210})); // the order of their first record
        QCOMPARE(model().getEvents().at(0).state, 7);
    }

    void recordsOfTheWrongFormAreSkipped()
    {
        Records records;
        records.number("ram.log.event.1.identifier", 1)
            .number("ram.log.alert.1.identifier.x", 1)
            .number("ram.log.alert.1", 1)
            .number("ram.log.alert.latest.entry_count", 1);
        update(records);
        QVERIFY(model().getEvents().isEmpty());
        QCOMPARE(bus->log.count(QtWarningMsg,
                                "setAlertList: WARNING: ram.log.event.1.identifier does not start with "
                                "'ram.log.alert.' as expected!"),
                 1);
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "setAlertList: ram.log.alert.latest.entry_count does not include an index. "
                                "Skipping this field."),
                 1);
    }

    void valuesOfTheWrongTypeAreWarnedOf()
    {
        Records records;
        records.number(key(1, "identifier"), 0x210)
            .text(key(1, "severity"), "2")
            .number(key(1, "shorttext"), 2)
            .deleted(key(1, "state")) // without a value: skipped in silence
            .raw(key(1, "sub_id"), VX_CONFIG_TYPE_INT, "ab");
        update(records);
        QCOMPARE(model().getEvents().size(), 1);
        QCOMPARE(model().getEvents().at(0).severity, 0); // what never came is zero
        QCOMPARE(model().getEvents().at(0).sub_id, 0u);
        QCOMPARE(bus->log.count(QtWarningMsg,
                                "setAlertList: Error: Unexpected type. Expected VX_CONFIG_TYPE_INT for "
                                "name=ram.log.alert.1.severity but got 2"),
                 1);
        QCOMPARE(bus->log.count(QtWarningMsg,
                                "setAlertList: Error: Unexpected type. Expected VX_CONFIG_TYPE_STRING for "
                                "name=ram.log.alert.1.shorttext but got 3"),
                 1);
        QVERIFY(bus->log.texts().filter("name=ram.log.alert.1.state").isEmpty());
    }

    // "A record ram.log.alert.3.time with a value of 2019686401 stores the time and warns."
    void timeBeyond2033()
    {
        const QString warning = "setAlertList(): ERROR!!! epochTimeStampMs=%1 seems to be too large!!!";
        Records records;
        update(records.number(key(3, "identifier"), 0x210).number(key(3, "time"), 2019686401));
        QCOMPARE(model().getEvents().at(0).time, int64_t(2019686401000));
        QCOMPARE(bus->log.count(QtWarningMsg, warning.arg(2019686401000LL)), 1);
        Records atTheLimit;
        update(atTheLimit.number(key(3, "identifier"), 0x210).number(key(3, "time"), 2019686400));
        QCOMPARE(bus->log.count(QtWarningMsg, warning.arg(2019686400000LL)), 0);
    }

    void longTextIsCutAt63Characters()
    {
        Records records;
        update(records.number(key(1, "identifier"), 0x777).text(key(1, "shorttext"), std::string(200, 'x')));
        QCOMPARE(QString(model().getEvents().at(0).shorttext), QString(63, 'x'));
    }

    void textWithoutItsEndAndTextBeyondAscii()
    {
        Records records;
        update(records.number(key(1, "identifier"), 0x777)
                   .raw(key(1, "shorttext"), VX_CONFIG_TYPE_STRING, "Gr\303\274n"));
        QCOMPARE(QString(model().getEvents().at(0).shorttext), QString("Gr?n"));
    }

    // --- New and gone --------------------------------------------------------------------------------------

    void newEventIsShown()
    {
        Diary diary;
        model().setSystemEvents({eventOf(0x210), eventOf(0x240)});
        QCOMPARE(diary.lines, QStringList({"show 528", "show 576", "warnings 1", "list"}));
        QVERIFY(model().eventExist(0x210));
        QVERIFY(!model().eventExist(0x300));
    }

    // "An update with the same records as before emits nothing and logs that the event list was not changed,
    // but setWarningsPresent is called."
    void sameRecordsAgain()
    {
        Records records;
        update(addAlert(records, 1, 0x210));
        model().setWarningsPresent(false); // so that it shows that it is called again
        bus->log.clear();
        Diary diary;
        update(records);
        QCOMPARE(diary.lines, QStringList("warnings 1"));
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::setSystemEvents(): eventList was not changed. Do not emit "
                                "signal eventListChanged()."),
                 1);
    }

    // "An alert that changes only its state emits showPopup first and signalRemovePopup after, with the same
    // id."
    void changedStateIsShownAndThenRemoved()
    {
        Records before, after;
        update(addAlert(before, 1, 0x210, 1));
        Diary diary;
        update(addAlert(after, 1, 0x210, 2));
        QCOMPARE(diary.lines, QStringList({"show 528", "remove 528", "list"}));
    }

    void timeAloneMakesNoNewEvent()
    {
        Records before, after;
        update(addAlert(before, 1, 0x210, 1, 1000));
        Diary diary;
        update(addAlert(after, 1, 0x210, 1, 2000));
        QCOMPARE(diary.lines, QStringList());
        QCOMPARE(model().getEvents().at(0).time, int64_t(2000000));
    }

    void eachFieldButTheTimeMakesAnEventAnother()
    {
        const fmmi_evt_t event = eventOf(0x210);
        fmmi_evt_t other = event;
        other.time = 5;
        QVERIFY(event == other);
        other.identifier = 1;
        QVERIFY(event != other);
        other = event;
        other.sub_id = 1;
        QVERIFY(event != other);
        other = event;
        other.severity = 1;
        QVERIFY(event != other);
        other = event;
        other.state = 9;
        QVERIFY(event != other);
        other = event;
        other.shorttext[0] = 'x';
        QVERIFY(event != other);
        other = event;
        other.shorttext[5] = 'x'; // behind the NUL: does not count
        QVERIFY(event == other);
    }

    void emptyLogClearsAll()
    {
        Records records;
        update(addAlert(records, 1, 0x210));
        Diary diary;
        update(Records());
        QCOMPARE(diary.lines, QStringList({"warnings 0", "remove 528", "list"}));
        QVERIFY(model().getEvents().isEmpty());
    }

    // "An event with id 0x10117 never reaches the lists, and never sets warningsPresent."
    void pinAndPukEventsAreLeftOut()
    {
        Diary diary;
        model().setSystemEvents({eventOf(0x10117), eventOf(0x10118)});
        QCOMPARE(diary.lines, QStringList());
        QVERIFY(model().getEvents().isEmpty());
        QVERIFY(!model().getWarningsPresent());
        for (int id : {0x10117, 0x10118})
            QCOMPARE(bus->log.count(QtDebugMsg,
                                    QString("StatusUpdater::setSystemEvents(): Ignoring eventID %1").arg(id)),
                     1);
    }

    void eventOfNoRowShowsTheLogsWords()
    {
        Records records;
        update(addAlert(records, 1, 0x777));
        QCOMPARE(model().getEventText(0x777), QString("words of the log"));
        Brackets brackets;
        QCoreApplication::installTranslator(&brackets);
        model().updateTranslatedEventTexts();
        QCOMPARE(model().getEventText(0x777), QString("words of the log")); // stays across a language change
        update(Records());
        QCOMPARE(model().getEventText(0x777), QString("words of the log")); // and when the event has gone
        QCOMPARE(model().getEventText(0x210), QString("[StatusUpdater|EV_ALARM_SIM_MODULE]"));
    }

    // Ids are the log's own: one that never uses an id twice must not fill the memory.
    void textsOfUnknownEventsAreForgottenWhenTheyGetTooMany()
    {
        const unsigned int first = 0x500000;
        for (unsigned int id = first; id < first + 3 * LEARNED_EVENT_TEXTS_MAX; ++id) {
            model().setSystemEvents({eventOf(0x210), eventOf(first), eventWithText(id, "strange")});
            QVERIFY(StatusUpdaterTestAccess::numberOfEventTexts() <=
                    NUMBER_OF_EVENT_TEXTS + LEARNED_EVENT_TEXTS_MAX);
            QCOMPARE(model().getEventText(id), id == first ? QString() : QString("strange"));
        }
        QCOMPARE(model().getEventText(first + 1), QString()); // gone, and forgotten
        QVERIFY(model().getEventText(0x11002).size() > 0);    // of the table
        QVERIFY(!bus->log.texts().filter("Too many unknown event ids. Forgetting the texts of 99").isEmpty());
        // The log itself may list more.
        QList<fmmi_evt_t> many;
        for (unsigned int id = 0x600000; id < 0x600000 + 2 * LEARNED_EVENT_TEXTS_MAX; ++id)
            many.append(eventWithText(id, "of many"));
        model().setSystemEvents(many);
        QCOMPARE(model().getEventText(0x600000), QString("of many"));
        model().setSystemEvents({eventWithText(0x700000, "after all of them")});
        QCOMPARE(StatusUpdaterTestAccess::numberOfEventTexts(), NUMBER_OF_EVENT_TEXTS + 1);
        model().setSystemEvents({});
    }

    void allEventsOnceMore()
    {
        model().setSystemEvents({eventOf(0x210), eventOf(0x240)});
        model().addLocalEvent(0x300, EVENT_INFO); // not the system's
        Diary diary;
        model().showAllSystemEvents();
        QCOMPARE(diary.lines, QStringList({"show 528", "show 576"}));
        QCOMPARE(
            bus->log.countOfPrefix(
                "StatusUpdater::showAllSystemEvents(): Appending event to list of pop-ups to show. Text="),
            2);
    }

    // --- The display's own events --------------------------------------------------------------------------

    void localEvent()
    {
        Diary diary;
        model().addLocalEvent(0x210, EVENT_ERROR);
        QCOMPARE(diary.lines, QStringList({"show 528", "list", "warnings 1"}));
        const fmmi_evt_t event = model().getEvents().at(0);
        QCOMPARE(event.sub_id, 0u);
        QCOMPARE(event.state, 2);
        QCOMPARE(event.severity, int(EVENT_ERROR));
        QCOMPARE(QString(event.shorttext), QString("EV_ALARM_SIM_MODULE"));
        QVERIFY(qAbs(event.time - QDateTime::currentMSecsSinceEpoch()) < 60000);
    }

    // "addLocalEvent for an id without a row stores an empty shorttext."
    void localEventOfNoRow()
    {
        model().addLocalEvent(0x778, EVENT_INFO);
        QCOMPARE(QString(model().getEvents().at(0).shorttext), QString());
    }

    // "addLocalEvent twice with the same id and severity adds one event; the second only logs."
    void localEventTwice()
    {
        model().addLocalEvent(0x210, EVENT_INFO);
        Diary diary;
        model().addLocalEvent(0x210, EVENT_INFO);
        QCOMPARE(model().getEvents().size(), 1);
        QCOMPARE(diary.lines, QStringList());
        QCOMPARE(bus->log.count(QtDebugMsg, "StatusUpdater::addLocalEvent(528): eventAlreadyExist"), 1);
        model().addLocalEvent(0x210, EVENT_ERROR); // another severity is another event
        QCOMPARE(model().getEvents().size(), 2);
        QCOMPARE(diary.lines, QStringList({"show 528", "list"}));
    }

    void longTextOfALocalEventIsCutAt59()
    {
        Records records;
        const QString words(63, 'w');
        update(records.number(key(1, "identifier"), 0x77a).text(key(1, "shorttext"), words.toStdString()));
        model().addLocalEvent(0x77a, EVENT_INFO);
        QCOMPARE(QString(model().getEvents().at(0).shorttext), words.left(59)); // newest first
        QCOMPARE(bus->log.count(QtWarningMsg, "StatusUpdater::addLocalEvent(eventId=0x77A): Error. "
                                              "stringDescription.size()>59 is not legal. stringDescription=" +
                                                  words),
                 1);
    }

    // "removeLocalEvent removes all events of the id, and with no list left sets warningsPresent to false."
    void removeTakesAllOfAnId()
    {
        model().addLocalEvent(0x210, EVENT_INFO);
        model().addLocalEvent(0x210, EVENT_ERROR);
        Diary diary;
        model().removeLocalEvent(0x210);
        QVERIFY(model().getEvents().isEmpty());
        QCOMPARE(diary.lines, QStringList({"warnings 0", "remove 528", "list"}));
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::removeLocalEvent(eventId=0x210), and will now remove it "
                                "from the localEventsMutexProtected list."),
                 2);
        QCOMPARE(bus->log.count(
                     QtDebugMsg,
                     "StatusUpdater::removeLocalEvent(eventId=0x210): localEventsMutexProtected.size()=0"),
                 1);
    }

    // "the same when all but their time agrees"
    void sameEvents()
    {
        fmmi_evt_t event;
        fmmi_evt_t other;
        other.time = 1;
        QVERIFY(event == other);
        QVERIFY(!(event != other));
        const std::function<void(fmmi_evt_t&)> changes[] = {
            [](fmmi_evt_t& e) { e.identifier = 1; }, [](fmmi_evt_t& e) { e.sub_id = 1; },
            [](fmmi_evt_t& e) { e.severity = EVENT_ERROR; }, [](fmmi_evt_t& e) { e.state = 1; },
            [](fmmi_evt_t& e) { e.shorttext[0] = 'x'; }};
        for (const auto& change : changes) {
            other = event;
            change(other);
            QVERIFY(event != other);
        }
    }

    void removeLeavesOtherIds()
    {
        model().addLocalEvent(0x210, EVENT_INFO);
        model().addLocalEvent(0x211, EVENT_INFO);
        model().addLocalEvent(0x210, EVENT_ERROR);
        Diary diary;
        model().removeLocalEvent(0x210);
        QCOMPARE(model().getEvents().size(), 1);
        QCOMPARE(model().getEvents().at(0).identifier, 0x211u);
        QVERIFY(model().getWarningsPresent());
        QCOMPARE(diary.lines, QStringList({"remove 528", "list"}));
    }

    void warningsStayWhileAnEventIsLeft()
    {
        model().setSystemEvents({eventOf(0x240)});
        model().addLocalEvent(0x210, EVENT_INFO);
        model().removeLocalEvent(0x210);
        QVERIFY(model().getWarningsPresent());
        model().addLocalEvent(0x210, EVENT_INFO);
        model().setSystemEvents({});
        QVERIFY(model().getWarningsPresent());
    }

    void removeOfNothing()
    {
        Diary diary;
        model().removeLocalEvent(0xabc);
        QCOMPARE(diary.lines, QStringList());
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "StatusUpdater::removeLocalEvent(eventId=0xABC): Cound not find event with "
                                "eventId=0xABC). Nothing to remove."),
                 1);
    }

    // --- Both ----------------------------------------------------------------------------------------------

    // "getEvents with a system event and a local event of the same time returns the system event first."
    void eventsNewestFirst()
    {
        model().addLocalEvent(0x210, EVENT_INFO);
        fmmi_evt_t same = eventOf(0x240);
        same.time = model().getEvents().at(0).time;
        fmmi_evt_t newer = eventOf(0x300);
        newer.time = same.time + 1;
        fmmi_evt_t older = eventOf(0x360);
        older.time = same.time - 1;
        fmmi_evt_t never = eventOf(0x1010); // its time never came
        model().setSystemEvents({never, older, same, newer});
        QCOMPARE(ids(model().getEvents()), QList<unsigned int>({0x300, 0x240, 0x210, 0x360, 0x1010}));
    }

    void existsInEitherList()
    {
        model().addLocalEvent(0x210, EVENT_INFO);
        model().setSystemEvents({eventOf(0x240)});
        QVERIFY(model().eventExist(0x210));
        QVERIFY(model().eventExist(0x240));
    }

    void warningsGoToTheDatabase()
    {
        Diary diary;
        model().setWarningsPresent(true);
        QVERIFY(
            bus->terminal.waitForWrite("ram.status.gui_display.warnings_present", sim::Value::integer(1)));
        QCOMPARE(bus->log.count(QtDebugMsg, "StatusUpdater::setWarningsPresent(): Value set to TRUE"), 1);
        model().setWarningsPresent(true);
        QCOMPARE(diary.lines, QStringList("warnings 1"));
        model().setWarningsPresent(false);
        QVERIFY(
            bus->terminal.waitForWrite("ram.status.gui_display.warnings_present", sim::Value::integer(0)));
        QCOMPARE(bus->log.count(QtDebugMsg, "StatusUpdater::setWarningsPresent(): Value set to FALSE"), 1);
        bus->terminal.settle();
        QCOMPARE(int(bus->terminal.writes().size()), 2);
    }

    // --- Texts ---------------------------------------------------------------------------------------------

    void tableHas215RowsOfDifferentIds()
    {
        QSet<unsigned int> seen;
        for (const EventText& row : EVENT_TEXTS)
            seen.insert(row.id);
        QCOMPARE(int(seen.size()), 215);
        for (unsigned int id : {EV_AP_GUI_SCREEN_SAVER, EV_NETMGR_NO_PIN, EV_NETMGR_PUK_CODE})
            QVERIFY(!seen.contains(id));
    }

    // One of each kind of row; the context is that of the translation.
    void textsOfEachKind_data()
    {
        QTest::addColumn<unsigned int>("id");
        QTest::addColumn<QString>("translated");
        QTest::addColumn<QString>("name");
        QTest::newRow("id 0") << 0u << "[StatusUpdater|RM_EV_INFOLVL_INFO]"
                              << "EV_INFOLVL_INFO";
        QTest::newRow("alarm") << 0x2600u << "[StatusUpdater|EV_ALARM_ANTENNA_FAILURE]"
                               << "EV_ALARM_ANTENNA_FAILURE";
        QTest::newRow("radio module") << 0x1700u << "[StatusUpdater|RM_EV_ALARM_CS_REGISTER_FAILED]"
                                      << "EV_ALARM_CS_REGISTER_FAILED";
        QTest::newRow("limited service") << 0x1600u << "[Shared_translations|RM_EV_ALARM_LIMITED_SERVICE]"
                                         << "EV_ALARM_LIMITED_SERVICE";
        QTest::newRow("SIM rejected") << 0x8056u << "[Shared_translations|RM_EV_BDU_USIM_REJECTED]"
                                      << "EV_BDU_USIM_REJECTED";
        QTest::newRow("power amplifier") << 0x1eu << "[StatusUpdater|EV_HPA_CM_VOLTAGE]"
                                         << "EV_HPA_CM_VOLTAGE";
        QTest::newRow("no alerts") << 0x10106u << "[StatusUpdater|No alerts]"
                                   << "EV_AP_GUI_NO_EVENTS";
        QTest::newRow("custom text") << 0x10105u << ""
                                     << "EV_AP_GUI_CUSTOM_TEXT";
        QTest::newRow("temperature") << 0x10205u << "[StatusUpdater|EV_AP_TEMP_CLOSE_CONN]"
                                     << "EV_AP_TEMP_CLOSE_CONN";
        QTest::newRow("update") << 0x10317u << "[StatusUpdater|EV_SW_UPDATE_TRANSFER_TIMEOUT]"
                                << "EV_SW_UPDATE_TRANSFER_TIMEOUT";
        QTest::newRow("power supply") << 0x11004u << "[StatusUpdater|EV_PSU_ALARM_BATTERY_TEMP_HIGH]"
                                      << "EV_PSU_ALARM_BATTERY_TEMP_HIGH";
        QTest::newRow("timeout") << 0x10010031u << "[Shared_translations|Timeout]"
                                 << "Timeout";
        QTest::newRow("first cause") << 0x1001000fu << "[StatusUpdater|Operator Determined Barring]"
                                     << "Operator Determined Barring";
        QTest::newRow("last cause") << 0x10010096u << "[StatusUpdater|Reject, PLMN/GPRS not allowed]"
                                    << "Reject, PLMN/GPRS not allowed";
    }
    void textsOfEachKind()
    {
        QFETCH(unsigned int, id);
        QFETCH(QString, translated);
        QFETCH(QString, name);
        Brackets brackets;
        QCoreApplication::installTranslator(&brackets);
        model().updateTranslatedEventTexts();
        QCOMPARE(model().getEventText(id), translated);
        QVERIFY(findEventText(id));
        QCOMPARE(QString(findEventText(id)->name), name);
    }

    void missingTextIsEmptyWithoutALog()
    {
        model();
        bus->log.clear();
        QCOMPARE(model().getEventText(EV_AP_GUI_SCREEN_SAVER), QString());
        QCOMPARE(bus->log.texts(), QStringList());
        QVERIFY(findEventText(EV_AP_GUI_SCREEN_SAVER) == nullptr);
    }

    void severityNames()
    {
        const QStringList names = {"EVENT_INFO", "EVENT_WARNING", "EVENT_ERROR", "EVENT_FATAL",
                                   "EVENT_SCREEN_SAVER"};
        for (int severity = 0; severity <= 4; ++severity)
            QCOMPARE(model().getEventSeverityAsString(severity), names.at(severity));
        QCOMPARE(model().getEventSeverityAsString(5), QString("No debug text for severity=5"));
        QCOMPARE(model().getEventSeverityAsString(-1), QString("No debug text for severity=-1"));
    }

private:
    BusFixture* bus = nullptr;
};

QTEST_MAIN(EventsTest)

#include "events_test.moc"
