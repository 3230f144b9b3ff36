// The model's lock, over the whole of its public operations: no signal is sent under it, no operation calls
// another that takes it, and two threads at once find everything guarded.
#include "busif/busfixture.h"
#include "model/operations.h"

#include <QFile>
#include <QMetaMethod>
#include <QRegularExpression>
#include <QSet>

#include <atomic>
#include <thread>

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

// Receives every signal of the model, directly, on the thread of the emission.
class Receiver : public QObject {
    Q_OBJECT

public:
    Receiver()
    {
        const QMetaObject& meta = StatusUpdater::staticMetaObject;
        const QMetaMethod slot = metaObject()->method(metaObject()->indexOfSlot("receive()"));
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            if (meta.method(i).methodType() == QMetaMethod::Signal)
                connect(&model(), meta.method(i), this, slot, Qt::DirectConnection);
        }
    }

    QStringList names;     // of the signals received
    QStringList underLock; // and of those that came while the lock was held

public slots:
    // Calls back into the model, as a screen does: with the lock held that would wait for ever. The first
    // look is without waiting, so that a failure has the signal's name.
    void receive()
    {
        const QString name = QString::fromLatin1(model().metaObject()->method(senderSignalIndex()).name());
        names.append(name);
        if (!Access::statusMutex().mutex.tryLock()) {
            underLock.append(name);
            return;
        }
        Access::statusMutex().mutex.unlock();
        model().getEvents();
        model().getDefinedBundles();
        model().getStatusText();
    }
};

// The names of the public functions of the class, out of its header.
QSet<QString> publicFunctionsOfHeader()
{
    QFile file(PROJECT_SOURCE_DIR "/src/model/statusupdater.h");
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no header");
    QString text = QString::fromUtf8(file.readAll());
    text.remove(QRegularExpression("//[^\n]*"));
    const int begin = int(text.indexOf("public:"));
    QString parts = text.mid(begin, text.indexOf("signals:") - begin);
    QSet<QString> names;
    QRegularExpressionMatchIterator found = QRegularExpression("(~?\\w+)\\(").globalMatch(parts);
    while (found.hasNext())
        names.insert(found.next().captured(1));
    // The object's own beginning and end, which nobody calls while others use it.
    for (const char* name : {"StatusUpdater", "~StatusUpdater", "getStatusUpdater", "destroyForTest"})
        names.remove(name);
    return names;
}

} // namespace

class LockingTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { bus = new BusFixture; }
    void cleanupTestCase() { delete bus; }
    void init() { bus->reset(); }

    void theTableHoldsEveryPublicOperation()
    {
        QSet<QString> inTable;
        for (const Operation& operation : allOperations())
            inTable.insert(operation.name);
        const QSet<QString> inHeader = publicFunctionsOfHeader();
        QVERIFY(inHeader.size() > 150);
        QCOMPARE(QStringList((inHeader - inTable).values()).join(' '), QString());
        QCOMPARE(QStringList((inTable - inHeader).values()).join(' '), QString());
    }

    // "The lock is never held while a signal is emitted or another locking function is called": the second
    // would be a wait for oneself, which ends the process after 2100 ms.
    void noSignalComesUnderTheLock_data()
    {
        QTest::addColumn<int>("index");
        for (size_t i = 0; i < allOperations().size(); ++i)
            QTest::addRow("%zu %s", i, allOperations()[i].name) << int(i);
    }
    void noSignalComesUnderTheLock()
    {
        QFETCH(int, index);
        const Operation& operation = allOperations()[size_t(index)];
        model().updateTranslatedStatusTexts();
        operations::defineBundles(model(), 0);
        operations::setCurrentBundle(model(), 0);
        operations::sendSessions(model(), 0);
        setDebugLogWanted(false);
        Receiver receiver;
        for (int round = 1; round <= 3; ++round)
            operation.run(model(), round);
        setDebugLogWanted(true);
        QCOMPARE(receiver.underLock.join(' '), QString());
        for (const char* signal : operation.emits)
            QVERIFY2(receiver.names.contains(signal), signal);
    }

    // Every signal is sent by some operation of the table, so that none escapes the test above.
    void everySignalWasProvoked()
    {
        setDebugLogWanted(false);
        Receiver receiver;
        model().updateTranslatedStatusTexts();
        for (int round = 1; round <= 2; ++round) {
            for (const Operation& operation : allOperations())
                operation.run(model(), round);
        }
        setDebugLogWanted(true);
        QStringList missing;
        const QMetaObject& meta = StatusUpdater::staticMetaObject;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            const QString name = QString::fromLatin1(meta.method(i).name());
            if (meta.method(i).methodType() == QMetaMethod::Signal && !receiver.names.contains(name))
                missing.append(name);
        }
        // The window's business: it is asked for when the last of the initial reads is done.
        missing.removeAll("guiAllowedToBeShown");
        QCOMPARE(missing.join(' '), QString());
    }

    // Setters on the bus thread, getters on this one, for three seconds: nothing is torn, nothing waits for
    // ever. Under the thread sanitizer this finds members that the lock was forgotten for.
    void settersAndGettersOnTwoThreadsAtOnce()
    {
        StatusUpdater* const m = &model();
        operations::defineBundles(*m, 0);
        m->updateTranslatedStatusTexts();
        setDebugLogWanted(false); // its lines would take most of the time
        std::atomic<bool> stop(false);
        std::atomic<int> settings(0);
        std::thread setter([&] {
            for (int round = 0; !stop; ++round) {
                for (const Operation& operation : allOperations()) {
                    if (operation.kind == Operation::SETTER)
                        operation.run(*m, round);
                }
                ++settings;
            }
        });
        QElapsedTimer clock;
        clock.start();
        int rounds = 0;
        for (; clock.elapsed() < 3000; ++rounds) {
            for (const Operation& operation : allOperations()) {
                if (operation.kind == Operation::GETTER)
                    operation.run(*m, rounds);
            }
            QCoreApplication::sendPostedEvents(); // what the setters' signals have queued
        }
        stop = true;
        setter.join();
        setDebugLogWanted(true);
        QVERIFY(rounds > 3);
        QVERIFY(settings > 3);
    }

private:
    BusFixture* bus = nullptr;
};

QTEST_MAIN(LockingTest)

#include "locking_test.moc"
