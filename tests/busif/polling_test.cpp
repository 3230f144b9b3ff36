// The poll of the radio module: its timer, its period, and how it is switched.
#include "busif/busfixture.h"

#include <atomic>
#include <chrono>
#include <thread>

namespace {

// The first read of each poll.
const char* const FIRST_READ = "config.read.rmcfg.sys.status.mode";

} // namespace

class PollingTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { bus = new BusFixture; }
    void cleanupTestCase() { delete bus; }
    void init()
    {
        bus->reset();
        thread.handleSubscribeToPollRmValues(false);
        bus->log.clear();
    }

    // "handleSubscribeToPollRmValues(true) twice leaves one timer running."
    void onTwiceLeavesOneTimer()
    {
        thread.handleSubscribeToPollRmValues(true);
        struct fdloop_timer* const first = fdloop_timer;
        QVERIFY(first != nullptr);
        thread.handleSubscribeToPollRmValues(true);
        QVERIFY(fdloop_timer == first);
        QCOMPARE(bus->log.count(QtDebugMsg, "CBusIfThread::handleSubscribeToPollRmValues(value=true"), 2);
        QCOMPARE(fdloop_timer_get_interval(fdloop_timer), 1000u);
        QCOMPARE(pollsWithin(2500), 2);
    }

    // "handleSubscribeToPollRmValues(false) at a time when polling is off calls fdloop_timer_del with a null
    // timer, which does nothing."
    void offTwiceDoesNothing()
    {
        thread.handleSubscribeToPollRmValues(false);
        thread.handleSubscribeToPollRmValues(false);
        QVERIFY(fdloop_timer == nullptr);
        QCOMPARE(bus->log.count(QtDebugMsg, "CBusIfThread::handleSubscribeToPollRmValues(value=false"), 2);
        QCOMPARE(pollsWithin(1300), 0);
    }

    void offEndsThePolls()
    {
        thread.handleSubscribeToPollRmValues(true);
        QCOMPARE(pollsWithin(1500), 1);
        thread.handleSubscribeToPollRmValues(false);
        QCOMPARE(pollsWithin(1300), 0);
        thread.handleSubscribeToPollRmValues(true);
        QCOMPARE(pollsWithin(1500), 1);
    }

    void eachPollBringsTheNext()
    {
        thread.handleSubscribeToPollRmValues(true);
        struct fdloop_timer* const expired = fdloop_timer;
        QCOMPARE(updateRmValues(nullptr), 0); // the expired timer is dropped
        QVERIFY(fdloop_timer != nullptr);
        QVERIFY(fdloop_timer != expired);
        QCOMPARE(fdloop_timer_get_interval(fdloop_timer), 1000u);
        fdloop_timer_del(fdl, expired);
    }

    // Switched off between its timer's expiry and its start, a poll brings no other.
    void pollWithoutATimerBringsNone()
    {
        QVERIFY(fdloop_timer == nullptr);
        QCOMPARE(updateRmValues(nullptr), 0);
        QCOMPARE(polls(), 1);
        QVERIFY(fdloop_timer == nullptr);
        QCOMPARE(pollsWithin(1300), 0);
    }

    // The period counts from the end of one poll to the start of the next.
    void slowDatabaseStretchesThePeriod()
    {
        using Clock = std::chrono::steady_clock;
        static const int DELAY_MS = 600;
        std::vector<Clock::time_point> starts;
        bus->terminal.onMessage([&starts](const sim::Message& message) {
            if (message.name != FIRST_READ)
                return;
            starts.push_back(Clock::now());
            std::this_thread::sleep_for(std::chrono::milliseconds(DELAY_MS));
        });
        thread.handleSubscribeToPollRmValues(true);
        bus->turnUntil([this] { return polls() >= 3; });
        bus->terminal.settle();
        bus->terminal.onMessage(nullptr);
        for (size_t i = 1; i < 3; ++i) {
            const auto period =
                std::chrono::duration_cast<std::chrono::milliseconds>(starts[i] - starts[i - 1]).count();
            QVERIFY2(period >= 1000 + DELAY_MS - 5, qPrintable(QString::number(period)));
        }
    }

    void switchedOffDuringAPollStaysOff()
    {
        connect(StatusUpdater::getStatusUpdater(), SIGNAL(statusChanged()), this, SLOT(switchOff()));
        bus->terminal.set("rmcfg.sys.status.mode", "operating"); // the poll finds a change and tells of it
        thread.handleSubscribeToPollRmValues(true);
        QCOMPARE(pollsWithin(1500), 1);
        QCOMPARE(switchedOff, 1);
        QVERIFY(fdloop_timer == nullptr);
        QCOMPARE(pollsWithin(1300), 0);
    }

    void switchedOffAndOnDuringAPollLeavesOneTimer()
    {
        connect(StatusUpdater::getStatusUpdater(), SIGNAL(statusChanged()), this, SLOT(switchOffAndOn()));
        bus->terminal.set("rmcfg.sys.status.mode", "operating");
        thread.handleSubscribeToPollRmValues(true);
        QCOMPARE(pollsWithin(1500), 1);
        QVERIFY(fdloop_timer != nullptr);
        QCOMPARE(pollsWithin(2000), 2);
    }

    // The road from the screen saver: the model's signal switches the timer.
    void theModelSwitchesIt()
    {
        StatusUpdater* const model = StatusUpdater::getStatusUpdater();
        connect(model, SIGNAL(signalSubscribeToPollRmValues(bool)), &thread,
                SLOT(handleSubscribeToPollRmValues(bool)));
        thread.handleSubscribeToPollRmValues(true);
        model->subscribeToChanges(false);
        QVERIFY(fdloop_timer == nullptr);
        model->subscribeToChanges(true);
        QVERIFY(fdloop_timer != nullptr);
    }

public slots:
    void switchOff()
    {
        thread.handleSubscribeToPollRmValues(false);
        ++switchedOff;
    }
    void switchOffAndOn()
    {
        thread.handleSubscribeToPollRmValues(false);
        thread.handleSubscribeToPollRmValues(true);
    }

private:
    int polls() const { return int(bus->terminal.messagesNamed(FIRST_READ).size()); }
    int pollsWithin(int milliseconds)
    {
        const int before = polls();
        bus->turnFor(milliseconds);
        bus->terminal.settle();
        return polls() - before;
    }

    BusFixture* bus = nullptr;
    CBusIfThread thread; // never started: its slot is called on this thread
    int switchedOff = 0;
};

QTEST_MAIN(PollingTest)
#include "polling_test.moc"
