// The model's lock: who holds it, how long it is waited for, and how a deadlock ends.
#include "model/statuslock.h"

#include "support/deaths.h"

#include <QSemaphore>
#include <QThread>

#include <memory>
#include <thread>

namespace {

StatusMutex processMutex;

void takeTwice()
{
    StatusLock first(processMutex, "theFirst");
    StatusLock second(processMutex, "theSecond");
}

// Another thread holds the lock for longer than anybody waits.
void heldByAnotherThread()
{
    static QSemaphore taken;
    std::thread holder([] {
        StatusLock lock(processMutex, "theHolder");
        taken.release();
        QThread::sleep(30);
    });
    holder.detach();
    taken.acquire();
    StatusLock lock(processMutex, "theWaiter");
}

const DeathCase CASES[] = {{"takeTwice", takeTwice}, {"heldByAnotherThread", heldByAnotherThread}};

} // namespace

class StatusLockTest : public QObject {
    Q_OBJECT

private slots:
    void knowsItsHolder()
    {
        StatusMutex mutex;
        {
            StatusLock lock(mutex, "someFunction");
            QCOMPARE(QString(mutex.mutexHolderName.load()), QString("someFunction"));
            QVERIFY(mutex.mutexHolderThread.load() == QThread::currentThreadId());
        }
        StatusLock lock(mutex, "anotherFunction");
        QCOMPARE(QString(mutex.mutexHolderName.load()), QString("anotherFunction"));
    }

    void isFreeAfterTheScope()
    {
        StatusMutex mutex;
        {
            StatusLock lock(mutex, "scope");
            QVERIFY(!mutex.mutex.tryLock());
        }
        QVERIFY(mutex.mutex.tryLock());
        mutex.mutex.unlock();
    }

    void unlocksAndLocksAgain()
    {
        StatusMutex mutex;
        StatusLock lock(mutex, "middle");
        lock.unlock();
        QVERIFY(mutex.mutex.tryLock());
        mutex.mutex.unlock();
        lock.relock();
        QVERIFY(!mutex.mutex.tryLock());
    }

    // Twice the same is once: the lock isn't recursive, and a second unlock would free another's.
    void secondUnlockAndSecondRelockDoNothing()
    {
        StatusMutex mutex;
        StatusLock lock(mutex, "twice");
        lock.relock();
        lock.unlock();
        lock.unlock();
        QVERIFY(mutex.mutex.tryLock());
        lock.unlock();
        QVERIFY(!mutex.mutex.tryLock());
        mutex.mutex.unlock();
    }

    void waitsForAHolderThatLetsGo()
    {
        StatusMutex mutex;
        QSemaphore taken;
        std::thread holder([&] {
            StatusLock lock(mutex, "shortHolder");
            taken.release();
            QThread::msleep(300);
        });
        taken.acquire();
        {
            StatusLock lock(mutex, "waiter");
            QCOMPARE(QString(mutex.mutexHolderName.load()), QString("waiter"));
        }
        holder.join();
    }

    void secondLockOfAThreadEndsTheProcess()
    {
        const ProcessDeath death = deathOfCase("takeTwice");
        QVERIFY2(death.byPanic("ERROR !!! Mutex lock failed. Exiting lumenpanel."), qPrintable(death.output));
        QVERIFY(death.milliseconds >= 2100);
        QVERIFY2(death.said("theSecond: ERROR!!!!!! Mutex lock failed!!!!!!!!! this thread="),
                 qPrintable(death.output));
        QVERIFY(death.said(", Already locked by theFirst in thread="));
    }

    void deadlockBetweenThreadsEndsTheProcessAndNamesBoth()
    {
        const ProcessDeath death = deathOfCase("heldByAnotherThread");
        QVERIFY2(death.byPanic("ERROR !!! Mutex lock failed. Exiting lumenpanel."), qPrintable(death.output));
        QRegularExpression warning(
            "theWaiter: ERROR!!!!!! Mutex lock failed!!!!!!!!! this thread=(0x[0-9a-f]+), "
            "Already locked by theHolder in thread=(0x[0-9a-f]+)");
        const QRegularExpressionMatch match = warning.match(death.output);
        QVERIFY2(match.hasMatch(), qPrintable(death.output));
        QVERIFY(match.captured(1) != match.captured(2));
    }
};

DEATH_TEST_MAIN(StatusLockTest, CASES)

#include "statuslock_test.moc"
