// The pointing command, against the real server.
#include "busif/busfixture.h"
#include "model/pointing_command.h"

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

} // namespace

class PointingCommandTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { bus = new BusFixture; }
    void cleanupTestCase() { delete bus; }
    void init() { bus->reset(); }

    // "send_pointing_msg with extended system status 9 sends nothing and returns -1; with 10 it sends."
    void refusedUntilTheTerminalIsUp_data()
    {
        QTest::addColumn<int>("status");
        for (int status : {9, 4, 0, -1})
            QTest::addRow("%d", status) << status;
    }
    void refusedUntilTheTerminalIsUp()
    {
        QFETCH(int, status);
        model().setExtendedSystemStatus(status);
        bus->clearLogs();
        QCOMPARE(send_pointing_msg("start"), -1);
        bus->terminal.settle();
        QVERIFY(bus->terminal.messages().empty());
        QCOMPARE(bus->log.count(QtDebugMsg, "cbus_if: send_pointing_msg: data=start"), 1);
        QCOMPARE(
            bus->log.count(QtDebugMsg, QString("send_pointing_msg(): extendedSystemStatus=%1").arg(status)),
            1);
        QCOMPARE(bus->log.count(QtDebugMsg, QString("ERROR: send_pointing_msg(): Extended system status=%1 , "
                                                    "pointing not allowed yet.")
                                                .arg(status)),
                 1);
    }

    void sentOnceItIsUp_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("command");
        QTest::newRow("start at 10") << 10 << "start";
        QTest::newRow("stop at 10") << 10 << "stop";
        QTest::newRow("cancel at 11") << 11 << "cancel";
        QTest::newRow("any text") << 10 << "100%s";
    }
    void sentOnceItIsUp()
    {
        QFETCH(int, status);
        QFETCH(QString, command);
        model().setExtendedSystemStatus(status);
        bus->clearLogs();
        QCOMPARE(send_pointing_msg(command.toLatin1().constData()), 0);
        QVERIFY(bus->terminal.waitForMessage("bp_ctrl.pointing"));
        const std::vector<sim::Message> sent = bus->terminal.messages();
        QCOMPARE(sent.size(), size_t(1));
        QCOMPARE(int(sent[0].type), 1); // a signal
        // The text with its NUL, nothing behind it.
        QCOMPARE(QByteArray(sent[0].data.data(), int(sent[0].data.size())), command.toLatin1() + '\0');
        QVERIFY(bus->log.texts().filter("not allowed").isEmpty());
    }

    // The GUI thread may get here before the bus thread has connected.
    void refusedWithoutAConnection()
    {
        model().setExtendedSystemStatus(10);
        cbus_conn_t* const kept = conn;
        conn = nullptr;
        const int result = send_pointing_msg("start");
        conn = kept;
        QCOMPARE(result, -1);
    }

private:
    BusFixture* bus = nullptr;
};

QTEST_MAIN(PointingCommandTest)
#include "pointing_command_test.moc"
