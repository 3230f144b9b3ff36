// The rules of the popup queue as pure functions: the table of kinds, and where a new popup goes.
#include "screens/popup_rules.h"

#include <QStringList>
#include <QTest>

#include <algorithm>
#include <random>

namespace {

popup_event_t popupOf(unsigned int eventId, int severity,
                      POPUP_CLOSE_HANDLING_ENUM closeHandling = POPUP_CLOSE_OK, int showForMilliseconds = 0)
{
    popup_event_t popup;
    popup.eventId = eventId;
    popup.severity = static_cast<EVENT_SEVERITY_ENUM>(severity);
    popup.closeHandling = closeHandling;
    popup.showForMilliseconds = showForMilliseconds;
    return popup;
}

QString lettersOf(const QList<popup_event_t>& list)
{
    QString result;
    for (const popup_event_t& popup : list) {
        result += QChar(static_cast<ushort>(popup.eventId));
    }
    return result;
}

// A list of popups named by letters, with the severities behind them: "A2B1" is a list of two.
QList<popup_event_t> listOf(const QString& text)
{
    QList<popup_event_t> result;
    for (int i = 0; i + 1 < text.size(); i += 2) {
        result.append(popupOf(text.at(i).unicode(), text.at(i + 1).digitValue()));
    }
    return result;
}

} // namespace

class PopupRulesTest : public QObject {
    Q_OBJECT

private slots:
    void kind_data();
    void kind();
    void numberThatIsNoKind();
    void showTimeAndKind_data();
    void showTimeAndKind();
    void staleAfterTenSecondsIfItClosesByItself();
    void positions();
    void insertion_data();
    void insertion();
    void withoutTheExtraRuleTheOrderIsStable();
    void theExtraRuleNeverLosesAPopup();
};

void PopupRulesTest::kind_data()
{
    QTest::addColumn<int>("closeHandling");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<bool>("cancel");
    QTest::addColumn<bool>("byItself");
    QTest::addColumn<QString>("keys"); // ok, left, right, up, down
    QTest::newRow("AUTO") << 0 << false << false << true << "";
    QTest::newRow("OK") << 1 << true << false << false << "o";
    QTest::newRow("AUTO_OR_OK") << 2 << true << false << true << "o";
    QTest::newRow("CANCEL") << 3 << false << true << false << "l";
    QTest::newRow("OK_OR_CANCEL") << 4 << true << true << false << "ol";
    QTest::newRow("ANY_KEY") << 5 << false << false << false << "olrud";
    QTest::newRow("NOT_BY_USER") << 6 << false << false << false << "";
}

void PopupRulesTest::kind()
{
    QFETCH(int, closeHandling);
    QFETCH(QString, keys);
    const PopupCloseRule* const rule = findPopupCloseRule(closeHandling);
    QVERIFY(rule);
    QCOMPARE(int(rule->closeHandling), closeHandling);
    QTEST(rule->okShown, "ok");
    QTEST(rule->cancelShown, "cancel");
    QTEST(rule->closesByItself, "byItself");
    const struct {
        char letter;
        unsigned int key;
    } letters[] = {{'o', POPUP_KEY_OK},
                   {'l', POPUP_KEY_LEFT},
                   {'r', POPUP_KEY_RIGHT},
                   {'u', POPUP_KEY_UP},
                   {'d', POPUP_KEY_DOWN}};
    unsigned int expected = 0;
    for (const auto& row : letters) {
        if (keys.contains(row.letter)) {
            expected |= row.key;
        }
    }
    QCOMPARE(rule->closingKeys, expected);
    QTEST(closesByItself(popupOf('A', 0, static_cast<POPUP_CLOSE_HANDLING_ENUM>(closeHandling))), "byItself");
}

void PopupRulesTest::numberThatIsNoKind()
{
    for (int number : {-1, 7, 100}) {
        QVERIFY(!findPopupCloseRule(number));
        QVERIFY(!closesByItself(popupOf('A', 0, static_cast<POPUP_CLOSE_HANDLING_ENUM>(number))));
    }
}

void PopupRulesTest::showTimeAndKind_data()
{
    QTest::addColumn<int>("closeHandling");
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<bool>("fits");
    for (int closeHandling = 0; closeHandling <= 6; ++closeHandling) {
        const bool byItself = closeHandling == 0 || closeHandling == 2;
        for (int milliseconds : {-1, 0, 1, 3000}) {
            QTest::newRow(qPrintable(QString("kind %1, %2 ms").arg(closeHandling).arg(milliseconds)))
                << closeHandling << milliseconds << (byItself ? milliseconds > 0 : milliseconds <= 0);
        }
    }
}

void PopupRulesTest::showTimeAndKind()
{
    QFETCH(int, closeHandling);
    QFETCH(int, milliseconds);
    QTEST(showTimeFitsCloseHandling(
              popupOf('A', 0, static_cast<POPUP_CLOSE_HANDLING_ENUM>(closeHandling), milliseconds)),
          "fits");
}

void PopupRulesTest::staleAfterTenSecondsIfItClosesByItself()
{
    const QDateTime now = QDateTime::fromMSecsSinceEpoch(1700000000000);
    for (int closeHandling = 0; closeHandling <= 6; ++closeHandling) {
        // Whatever the time that was asked for.
        popup_event_t popup =
            popupOf('A', 0, static_cast<POPUP_CLOSE_HANDLING_ENUM>(closeHandling), 60 * 1000);
        popup.timeStamp = now.addMSecs(-10000);
        QVERIFY(!isStale(popup, now));
        popup.timeStamp = now.addMSecs(-10001);
        QCOMPARE(isStale(popup, now),
                 closeHandling == POPUP_CLOSE_AUTO || closeHandling == POPUP_CLOSE_AUTO_OR_OK);
    }
}

void PopupRulesTest::positions()
{
    const QList<popup_event_t> list = listOf("N3N3A1B1");
    QCOMPARE(firstPositionOf(list, 'N'), 0);
    QCOMPARE(lastPositionOf(list, 'N'), 1);
    QCOMPARE(firstPositionOf(list, 'B'), 3);
    QCOMPARE(lastPositionOf(list, 'B'), 3);
    QCOMPARE(firstPositionOf(list, 'X'), -1);
    QCOMPARE(lastPositionOf(list, 'X'), -1);
    QCOMPARE(firstPositionOf(QList<popup_event_t>(), 'X'), -1);
    QCOMPARE(lastPositionOf(QList<popup_event_t>(), 'X'), -1);
}

void PopupRulesTest::insertion_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<bool>("firstByItself");
    QTest::addColumn<int>("severity"); // of the new popup, N
    QTest::addColumn<QString>("after");
    QTest::newRow("empty list") << "" << false << 0 << "N";

    QTest::newRow("one, lower") << "A1" << false << 2 << "NA";
    QTest::newRow("one, equal: behind it") << "A1" << false << 1 << "AN";
    QTest::newRow("one, higher") << "A2" << false << 1 << "AN";
    QTest::newRow("one that closes by itself, lower") << "A1" << true << 2 << "NA";
    QTest::newRow("one that closes by itself, equal") << "A1" << true << 1 << "AN";

    QTest::newRow("all lower") << "A2B1C0" << false << 3 << "NABC";
    QTest::newRow("behind the last of its severity") << "A2B1C1D0" << false << 1 << "ABCND";
    QTest::newRow("behind the last that is higher") << "A3B2C0" << false << 1 << "ABNC";
    QTest::newRow("lowest: at the end") << "A3B2C1" << false << 0 << "ABCN";
    QTest::newRow("above A, A stays") << "A1B1" << false << 2 << "NAB";
    QTest::newRow("not above A, A stays") << "A2B1" << false << 2 << "ANB";

    // The rule of position 1.
    QTest::newRow("above both, A closes by itself: twice") << "A1B1" << true << 2 << "NNAB";
    QTest::newRow("above B only, A closes by itself: in front of A all the same")
        << "A2B1" << true << 2 << "NNAB";
    QTest::newRow("three, A closes by itself: twice") << "A1B1C0" << true << 2 << "NNABC";
    QTest::newRow("B as high, A closes by itself: once, behind B") << "A2B1C0" << true << 1 << "ABNC";
    QTest::newRow("screen saver, A closes by itself: twice") << "A1B1" << true << 4 << "NNAB";
}

void PopupRulesTest::insertion()
{
    QFETCH(QString, before);
    QFETCH(bool, firstByItself);
    QFETCH(int, severity);
    QList<popup_event_t> list = listOf(before);
    insertBySeverity(list, popupOf('N', severity), firstByItself);
    QTEST(lettersOf(list), "after");
}

void PopupRulesTest::withoutTheExtraRuleTheOrderIsStable()
{
    std::mt19937 random(20);
    for (int round = 0; round < 300; ++round) {
        QList<popup_event_t> list;
        QList<popup_event_t> expected;
        for (unsigned int eventId = 1; eventId <= 20; ++eventId) {
            const popup_event_t popup = popupOf(eventId, int(random() % 5));
            insertBySeverity(list, popup, false);
            expected.append(popup);
        }
        std::stable_sort(
            expected.begin(), expected.end(),
            [](const popup_event_t& a, const popup_event_t& b) { return a.severity > b.severity; });
        QCOMPARE(lettersOf(list), lettersOf(expected));
    }
}

void PopupRulesTest::theExtraRuleNeverLosesAPopup()
{
    std::mt19937 random(21);
    for (int round = 0; round < 300; ++round) {
        QList<popup_event_t> list;
        for (unsigned int eventId = 1; eventId <= 20; ++eventId) {
            const QList<popup_event_t> before = list;
            insertBySeverity(list, popupOf(eventId, int(random() % 5)), random() % 2 == 0);
            QList<popup_event_t> others;
            int copies = 0;
            for (const popup_event_t& popup : list) {
                if (popup.eventId == eventId) {
                    ++copies;
                } else {
                    others.append(popup);
                }
            }
            QVERIFY(copies == 1 || copies == 2);
            QCOMPARE(lettersOf(others), lettersOf(before)); // the others keep their order
            if (copies == 2) {
                QCOMPARE(firstPositionOf(list, eventId), 0);
                QCOMPARE(lastPositionOf(list, eventId), 1);
            }
        }
    }
}

QTEST_APPLESS_MAIN(PopupRulesTest)
#include "popup_rules_test.moc"
