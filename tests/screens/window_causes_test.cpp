// Connection errors: the cause that the network gives, the popup that tells it, and what the end of the
// error takes away.
#include "screens/windowcase.h"

#include "model/event_texts.h"

#include <QSet>

using namespace windowfixture;

namespace {

// The whole table, written out: the first cause of a row, and the events of it and its followers.
QList<QPair<unsigned int, unsigned int>> allCauses()
{
    const struct {
        unsigned int first;
        QList<unsigned int> events;
    } rows[] = {
        {1, {0x10006, 0x10007, 0x10008, 0x10009, 0x1000a, 0x1000b, 0x1000c, 0x1000d}},
        {10, {0x10010}},
        {0x10000008, {0x1001000f}},
        {0x1000001a,
         {0x10010011, 0x10010012, 0x10010013, 0x10010014, 0x10010015, 0x10010016, 0x10010017, 0x10010018,
          0x10010019}},
        {0x10000023,
         {0x10010020, 0x10010021, 0x10010022, 0x10010023, 0x10010024, 0x10010025, 0x10010026, 0x10010027,
          0x10010028, 0x10010029, 0x1001002a, 0x1001002b}},
        {0x10024002, {0x10010075, 0x10010076}},
        {0x10024006,
         {0x10010077, 0x10010078, 0x10010079, 0x1001007a, 0x1001007b, 0x1001007c, 0x1001007d, 0x1001007e,
          0x1001007f, 0x10010080, 0x10010081}},
        {0x10024100, // 0x10010042 is left out
         {0x1001003b, 0x1001003c, 0x1001003d, 0x1001003e, 0x1001003f, 0x10010040, 0x10010041, 0x10010043,
          0x10010044, 0x10010045}},
        {0x10034011, {0x10010082}},
        {0x10034014, {0x10010083, 0x10010084, 0x10010085, 0x10010086}},
        {0x1003405f, {0x10010087, 0x10010088, 0x10010089, 0x1001008a}},
        {0x10034064, {0x1001008b, 0x1001008c}},
        {0x1003406f, {0x1001008d}},
        {0x10040001, {0x10010030, 0x10010031, 0x10010032, 0x10010033, 0x10010034}},
        {0x10040008, {0x10010035}},
        {0x10040101, {0x10010036, 0x10010037, 0x10010038}},
        {0x10040107, {0x10010039}},
        {0x1004010b, {0x1001003a}},
        {0x10051001, {0x10010090, 0x10010091, 0x10010092, 0x10010093, 0x10010094, 0x10010095, 0x10010096}},
        {0x10086300,
         {0x10010050, 0x10010051, 0x10010052, 0x10010053, 0x10010054, 0x10010055, 0x10010056, 0x10010057,
          0x10010058, 0x10010059, 0x1001005a, 0x1001005b, 0x1001005c, 0x1001005d}},
        {0x10086314, // the eleventh is out of sequence
         {0x1001005f, 0x10010060, 0x10010061, 0x10010062, 0x10010063, 0x10010064, 0x10010065, 0x10010066,
          0x10010067, 0x10010068, 0x1001005e, 0x10010069, 0x1001006a, 0x1001006b, 0x1001006c, 0x1001006d,
          0x1001006e, 0x1001006f, 0x10010070}},
    };
    QList<QPair<unsigned int, unsigned int>> result;
    for (const auto& row : rows) {
        for (int i = 0; i < row.events.size(); ++i) {
            result.append(qMakePair(row.first + static_cast<unsigned int>(i), row.events.at(i)));
        }
    }
    return result;
}

} // namespace

class WindowCausesTest : public QObject, protected WindowCase {
    Q_OBJECT

private slots:
    void init()
    {
        startTest();
        makeWindow();
    }
    void cleanup() { endTest(); }

    void causeHasItsEvent_data();
    void causeHasItsEvent();
    void allCausesOfTheTable();
    void causeNineChangesNothing();
    void causeOutsideOfTheTableIsUnknown_data();
    void causeOutsideOfTheTableIsUnknown();
    void endRemovesBothRunsAndNothingElse();
    void endRemovesWhatIsUnderTheScreenSaver();
    void endWithoutAPopupRemovesNothing();
    void endUnderTheScreenSaverAloneRemovesNothing();

private:
    void addAll(const QList<unsigned int>& ids)
    {
        for (unsigned int id : ids) {
            add(id);
        }
    }
    QList<unsigned int> queuedIds() const
    {
        QList<unsigned int> ids;
        for (const popup_event_t& popup : queue()) {
            ids.append(popup.eventId);
        }
        return ids;
    }
};

void WindowCausesTest::causeHasItsEvent_data()
{
    QTest::addColumn<int>("cause");
    QTest::addColumn<unsigned int>("id");
    for (const auto& row : allCauses()) {
        QTest::addRow("cause 0x%x", row.first) << static_cast<int>(row.first) << row.second;
    }
}

void WindowCausesTest::causeHasItsEvent()
{
    QFETCH(int, cause);
    QFETCH(unsigned int, id);
    Messages messages;
    m_window->handleBganConnectionErrorChanged(cause);
    QCOMPARE(messages.count(QString("Window::handleBganConnectionErrorChanged(): value=%1").arg(cause)), 1);
    QCOMPARE(queuedIds(), QList<unsigned int>() << id);
    QCOMPARE(argumentsOf(id), QString("EVENT_WARNING 1 0 - -"));
    QCOMPARE(queue().first().text, model()->getEventText(id));
    QCOMPARE(messages.countOfPrefix("Window::handleBganConnectionErrorChanged(). Unsupported"), 0);
}

// Each failure cause that has a text has its cause, but for none twice.
void WindowCausesTest::allCausesOfTheTable()
{
    QSet<unsigned int> events;
    for (const auto& row : allCauses()) {
        QVERIFY(!events.contains(row.second));
        events.insert(row.second);
        QVERIFY2(findEventText(row.second), QByteArray::number(row.second, 16).constData());
    }
    QCOMPARE(int(allCauses().size()), 117);
    QVERIFY(allCauses().contains(qMakePair(0x1008631eu, 0x1001005eu)));
    QVERIFY(allCauses().contains(qMakePair(0x1008631du, 0x10010068u)));
}

void WindowCausesTest::causeNineChangesNothing()
{
    m_window->handleBganConnectionErrorChanged(1);
    Messages messages;
    m_window->handleBganConnectionErrorChanged(9);
    QCOMPARE(messages.texts(), QStringList("Window::handleBganConnectionErrorChanged(): value=9"));
    QCOMPARE(queued(), QStringList("EV_AP_GUI_CONN_LIMIT_EXCEEDED")); // of the earlier cause
}

// Both sides of each run.
void WindowCausesTest::causeOutsideOfTheTableIsUnknown_data()
{
    QTest::addColumn<int>("cause");
    for (int cause :
         {-1,         11,         0x10000007, 0x10000009, 0x10000019, 0x1000002f, 0x10024001, 0x10024004,
          0x10024005, 0x10024011, 0x100240ff, 0x1002410a, 0x10034010, 0x10034012, 0x10034013, 0x10034018,
          0x1003405e, 0x10034063, 0x10034066, 0x1003406e, 0x10034070, 0x10040000, 0x10040006, 0x10040007,
          0x10040009, 0x10040100, 0x10040104, 0x10040106, 0x10040108, 0x1004010a, 0x1004010c, 0x10051000,
          0x10051008, 0x100862ff, 0x1008630e, 0x10086313, 0x10086327}) {
        QTest::addRow("0x%x", static_cast<unsigned int>(cause)) << cause;
    }
}

void WindowCausesTest::causeOutsideOfTheTableIsUnknown()
{
    QFETCH(int, cause);
    Messages messages;
    emit model()->bganConnectionErrorChanged(cause);
    QCOMPARE(queued(), QStringList("EV_AP_GUI_CONN_UNKNOWN"));
    QCOMPARE(argumentsOf(EV_AP_GUI_CONN_UNKNOWN), QString("EVENT_WARNING 1 0 - -"));
    QCOMPARE(messages.count(
                 QString("Window::handleBganConnectionErrorChanged(). Unsupported value=%1").arg(cause)),
             1);
}

// 0x10010 is a connection error, and stays all the same until the user closes it; 0x1000f tells of the
// software update.
void WindowCausesTest::endRemovesBothRunsAndNothingElse()
{
    QList<unsigned int> removed;
    for (unsigned int id = 0x10006; id <= 0x1000e; ++id) {
        removed.append(id);
    }
    for (unsigned int id = 0x1001000f; id <= 0x10010096; ++id) {
        removed.append(id);
    }
    const QList<unsigned int> stay = {0x10005, 0x1000f, 0x10010, 0x1001000e, 0x10010097};
    addAll(stay.mid(0, 2));
    addAll(removed);
    addAll(stay.mid(2));
    QCOMPARE(queue().size(), removed.size() + stay.size());
    Messages messages;
    m_window->handleBganConnectionErrorChanged(0);
    QCOMPARE(queuedIds(), stay);
    // In ascending order, and only those.
    QStringList expected;
    for (unsigned int id : removed) {
        expected.append("-" + popupScreen()->getEventIdAsString(id));
    }
    QCOMPARE(changesIn(messages), expected);
}

void WindowCausesTest::endRemovesWhatIsUnderTheScreenSaver()
{
    m_window->handleBganConnectionErrorChanged(1);
    popupScreen()->showScreenSaver();
    QCOMPARE(queued(), QStringList({SCREEN_SAVER, "EV_AP_GUI_CONN_LIMIT_EXCEEDED"}));
    m_window->handleBganConnectionErrorChanged(0);
    QCOMPARE(queued(), QStringList(SCREEN_SAVER));
}

void WindowCausesTest::endWithoutAPopupRemovesNothing()
{
    Messages messages;
    m_window->handleBganConnectionErrorChanged(0);
    QCOMPARE(messages.texts(), QStringList("Window::handleBganConnectionErrorChanged(): value=0"));
}

void WindowCausesTest::endUnderTheScreenSaverAloneRemovesNothing()
{
    popupScreen()->showScreenSaver();
    Messages messages;
    m_window->handleBganConnectionErrorChanged(0);
    QCOMPARE(messages.texts(), QStringList("Window::handleBganConnectionErrorChanged(): value=0"));
}

int main(int argc, char** argv)
{
    return windowfixture::run<WindowCausesTest>(argc, argv);
}

#include "window_causes_test.moc"
