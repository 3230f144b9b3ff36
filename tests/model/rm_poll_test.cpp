// The poll of the radio module against the real server: every text of every map, what is missing, what is
// not listed, what is told of, and the fall of all values when the module stops.
#include "busif/busfixture.h"

#include "model/radio_module.h"

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

const char MODE[] = "rmcfg.sys.status.mode";
const char USIM[] = "rmcfg.platform.usim.status";
const char PIN[] = "rmcfg.platform.usim.pin.status";
const char PLMN[] = "rmcfg.protocols.umts.plmn.status";
const char CS[] = "rmcfg.protocols.umts.cs.status";
const char PS[] = "rmcfg.protocols.umts.ps.status";
const char BEAM[] = "rmcfg.protocols.bgan.status.beam_type";
const char STATE[] = "rmcfg.protocols.bgan.status.state";

} // namespace

class RmPollTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { bus = new BusFixture; }
    void cleanupTestCase() { delete bus; }
    void init() { bus->reset(); }

    // --- Whether the module operates -----------------------------------------------------------------------

    void operatingIsOneExactText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("operating");
        QTest::newRow("operating") << "operating" << 1;
        QTest::newRow("upper case") << "Operating" << 0;
        QTest::newRow("blank behind") << "operating " << 0;
        QTest::newRow("other") << "booting" << 0;
    }
    void operatingIsOneExactText()
    {
        QFETCH(QString, text);
        QFETCH(int, operating);
        set(MODE, text);
        QCOMPARE(model().updateRmOperating(), operating == 1);
        QCOMPARE(model().getRmOperating(), operating);
        QCOMPARE(model().updateRmOperating(), false); // the second time it is no change
    }

    // In the log a value that has no name is told as such.
    void namesOfValues()
    {
        QCOMPARE(QString(SIM_STATUS_MAP.nameOf(SIM_STATUS_MAP.rows[0].value)),
                 QString(SIM_STATUS_MAP.rows[0].name));
        for (const RadioModuleMap* map :
             {&SIM_STATUS_MAP, &PLMN_STATUS_MAP, &UMTS_STATUS_MAP, &IAI2_STATUS_MAP, &IAI2_BEAM_TYPE_MAP})
            QCOMPARE(QString(map->nameOf(4711)), QString("unknown"));
    }

    void missingModeIsLogged()
    {
        QVERIFY(!model().updateRmOperating());
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "updateRmOperating(): ERROR !!! rmcfg.sys.status.mode not in database???"),
                 1);
    }

    void stoppedModuleTakesAllValuesAlong()
    {
        operate();
        model().setPointingMode(POINTING_STATUS_POINTED);
        Access::iai2BeamType() = IAI2_BEAM_TYPE_NARROW;
        Access::iai2Status() = IAI2_STATUS_REGISTERED;
        Access::plmnStatus() = PLMN_STATUS_SELECTED;
        Access::umtsCsStatus() = Access::umtsPsStatus() = UMTS_STATUS_ATTACHED;
        set(MODE, "stopped");
        QSignalSpy events(&model(), SIGNAL(stateEventReceived(STATE_EVENT)));
        QVERIFY(model().updateRmOperating());
        QCOMPARE(model().getIai2BeamType(), 0);
        QCOMPARE(Access::iai2Status(), 0);
        QCOMPARE(model().getPointingMode(), -1);
        QCOMPARE(model().getPlmnStatus(), 6);
        QCOMPARE(Access::umtsCsStatus(), 7);
        QCOMPARE(Access::umtsPsStatus(), 7);
        QCOMPARE(events.count(), 0); // nobody is told of the pointing mode
    }

    void stoppedModuleMeansThatTheTerminalReboots()
    {
        operate();
        model().setExtendedSystemStatus(11);
        set(MODE, "stopped");
        QSignalSpy spy(&model(), SIGNAL(signalExtendedSystemStatusChanged()));
        QVERIFY(model().updateRmOperating());
        QCOMPARE(model().getExtendedSystemStatus(), 3);
        QCOMPARE(spy.count(), 1);
        QVERIFY(!model().updateRmOperating()); // once only
        model().setExtendedSystemStatus(11);
        QVERIFY(!model().updateRmOperating());
        QCOMPARE(model().getExtendedSystemStatus(), 11);
    }

    void stoppedModuleDuringAnUploadIsNoReboot()
    {
        operate();
        model().setExtendedSystemStatus(11);
        model().setSwUploadStatus(1, 10, 0);
        set(MODE, "stopped");
        QVERIFY(model().updateRmOperating());
        QCOMPARE(model().getExtendedSystemStatus(), 11);
    }

    // --- SIM -----------------------------------------------------------------------------------------------

    void simStatusFromBothKeys_data()
    {
        QTest::addColumn<int>("usim");
        QTest::addColumn<QString>("pin");
        QTest::addColumn<int>("status");
        QTest::newRow("absent") << 0 << "Valid" << 0;
        QTest::newRow("Invalid") << 1 << "Invalid" << -2;
        QTest::newRow("Absent") << 1 << "Absent" << 0;
        QTest::newRow("Needed") << 1 << "Needed" << 1;
        QTest::newRow("Blocked") << 1 << "Blocked" << 2;
        QTest::newRow("Valid") << 1 << "Valid" << 3;
        QTest::newRow("SIM Lock Blocked") << 1 << "SIM Lock Blocked" << 4;
    }
    void simStatusFromBothKeys()
    {
        QFETCH(int, usim);
        QFETCH(QString, pin);
        QFETCH(int, status);
        bus->terminal.set(USIM, usim);
        set(PIN, pin);
        QSignalSpy spy(&model(), SIGNAL(stateEventReceived(STATE_EVENT)));
        QVERIFY(model().updateSimStatus());
        QCOMPARE(model().getSimStatus(), status);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(int(spy.at(0).at(0).value<STATE_EVENT>()), int(STATE_EVENT_SIM_STATUS_CHANGED));
        QVERIFY(!model().updateSimStatus()); // no change, nothing told
        QCOMPARE(spy.count(), 1);
    }

    void simNotKnownIsNotLogged()
    {
        Access::simStatus() = SIM_READY;
        bus->terminal.set(USIM, -1);
        bus->clearLogs();
        QVERIFY(model().updateSimStatus());
        QCOMPARE(model().getSimStatus(), -3);
        QCOMPARE(bus->log.countOfPrefix("StatusUpdater::updateSimStatus(): ERROR"), 0);
    }

    void missingSimIsNotKnown()
    {
        Access::simStatus() = SIM_READY;
        QVERIFY(model().updateSimStatus());
        QCOMPARE(model().getSimStatus(), -3);
    }

    void unsupportedSimValueIsWarnedOf()
    {
        Access::simStatus() = SIM_READY;
        bus->terminal.set(USIM, 2);
        QVERIFY(model().updateSimStatus());
        QCOMPARE(model().getSimStatus(), -3);
        QCOMPARE(bus->log.count(QtWarningMsg,
                                "StatusUpdater::updateSimStatus(): ERROR!!!! Unsupported value for "
                                "rmcfg.platform.usim.status. Value=2"),
                 1);
    }

    void missingPinIsLogged()
    {
        Access::simStatus() = SIM_READY;
        bus->terminal.set(USIM, 1);
        QVERIFY(model().updateSimStatus());
        QCOMPARE(model().getSimStatus(), -3);
        QCOMPARE(bus->log.count(QtDebugMsg, "StatusUpdater::updateSimStatus(): ERROR !!! "
                                            "rmcfg.platform.usim.pin.status not in database???"),
                 1);
    }

    void unlistedPinTextIsWarnedOf()
    {
        QCOMPARE(model().getSimStatusFromPinStr("valid"), -3);
        QCOMPARE(bus->log.count(QtWarningMsg, "StatusUpdater::getSimStatusFromPinStr(): ERROR!!! Unsupported "
                                              "value=valid. About to return SIM_STATUS_UNKNOWN"),
                 1);
    }

    // --- Network -------------------------------------------------------------------------------------------

    void plmnStatusByItsText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("name");
        QTest::newRow("1") << "Scanning" << 1 << "PLMN_STATUS_SCANNING";
        QTest::newRow("2") << "Searching" << 2 << "PLMN_STATUS_SEARCHING";
        QTest::newRow("3") << "Selecting" << 3 << "PLMN_STATUS_SELECTING";
        QTest::newRow("4") << "Selected" << 4 << "PLMN_STATUS_SELECTED";
        QTest::newRow("5") << "Not registered" << 5 << "PLMN_STATUS_NOT_REGISTERED";
        QTest::newRow("6") << "n/a" << 6 << "PLMN_STATUS_UNDEFINED";
    }
    void plmnStatusByItsText()
    {
        QFETCH(QString, text);
        QFETCH(int, status);
        QFETCH(QString, name);
        operate();
        Access::plmnStatus() = 0; // differs from all
        set(PLMN, text);
        QVERIFY(model().updatePlmnStatus());
        QCOMPARE(model().getPlmnStatus(), status);
        QCOMPARE(bus->log.count(QtDebugMsg, "StatusUpdater::updatePlmnStatus(): plmnStatus = " + name), 1);
        QVERIFY(!model().updatePlmnStatus());
    }

    void plmnStatusMissingOrNotListed()
    {
        operate();
        Access::plmnStatus() = PLMN_STATUS_SELECTED;
        QVERIFY(model().updatePlmnStatus());
        QCOMPARE(model().getPlmnStatus(), 6);
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "updatePlmnStatus(): ERROR !!! rmcfg.protocols.umts.plmn.status not in "
                                "database???"),
                 1);
        Access::plmnStatus() = PLMN_STATUS_SELECTED;
        set(PLMN, "selected");
        QVERIFY(model().updatePlmnStatus());
        QCOMPARE(model().getPlmnStatus(), 6);
        QCOMPARE(bus->log.count(QtWarningMsg,
                                "StatusUpdater::updatePlmnStatus(): Error!!! Unsupported value=selected"),
                 1);
    }

    // A module that is down is worth a warning only where it should be up, and only when it was.
    void plmnStatusOfAModuleThatIsDown_data()
    {
        QTest::addColumn<int>("systemStatus");
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("warnings");
        QTest::newRow("updating") << 2 << 4 << 0;
        QTest::newRow("rebooting") << 3 << 4 << 0;
        QTest::newRow("stopping") << 4 << 4 << 0;
        QTest::newRow("below") << 1 << 4 << 1;
        QTest::newRow("above") << 5 << 4 << 1;
        QTest::newRow("normal") << 11 << 4 << 1;
        QTest::newRow("was undefined") << 11 << 6 << 0;
    }
    void plmnStatusOfAModuleThatIsDown()
    {
        QFETCH(int, systemStatus);
        QFETCH(int, before);
        QFETCH(int, warnings);
        model().setExtendedSystemStatus(systemStatus);
        Access::plmnStatus() = before;
        set(PLMN, "Selected"); // not even looked at
        QCOMPARE(model().updatePlmnStatus(), before != 6);
        QCOMPARE(model().getPlmnStatus(), 6);
        QCOMPARE(
            bus->log.count(QtWarningMsg, "StatusUpdater::updatePlmnStatus(): Warning: RM not operating."),
            warnings);
    }

    void umtsStatusByItsText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("name");
        QTest::newRow("1") << "Idle" << 1 << "UMTS_STATUS_IDLE";
        QTest::newRow("2") << "Attaching" << 2 << "UMTS_STATUS_ATTACHING";
        QTest::newRow("3") << "Attached" << 3 << "UMTS_STATUS_ATTACHED";
        QTest::newRow("4") << "Attached rejected" << 4 << "UMTS_STATUS_ATTACHED_REJECTED";
        QTest::newRow("5") << "Detaching" << 5 << "UMTS_STATUS_DETACHING";
        QTest::newRow("6") << "Blocked" << 6 << "UMTS_STATUS_BLOCKED";
        QTest::newRow("7") << "N/A" << 7 << "UMTS_STATUS_UNDEFINED";
    }
    void umtsStatusByItsText()
    {
        QFETCH(QString, text);
        QFETCH(int, status);
        QFETCH(QString, name);
        const int other = status == UMTS_STATUS_IDLE ? UMTS_STATUS_ATTACHED : UMTS_STATUS_IDLE;
        const QString otherText = status == UMTS_STATUS_IDLE ? "Attached" : "Idle";
        const QString otherName = status == UMTS_STATUS_IDLE ? "UMTS_STATUS_ATTACHED" : "UMTS_STATUS_IDLE";
        Access::umtsCsStatus() = Access::umtsPsStatus() = 0;
        set(CS, text);
        set(PS, otherText);
        QVERIFY(model().updateCsPsStatus()); // does not ask whether the module operates
        QCOMPARE(Access::umtsCsStatus(), status);
        QCOMPARE(Access::umtsPsStatus(), other);
        QCOMPARE(bus->log.count(QtDebugMsg, "StatusUpdater::updateCsPsStatus(): umtsCsStatus=" + name +
                                                ", umtsPsStatus=" + otherName),
                 1);
        QVERIFY(!model().updateCsPsStatus());
        set(PS, text); // one of the two is a change
        QVERIFY(model().updateCsPsStatus());
        QCOMPARE(Access::umtsPsStatus(), status);
    }

    void umtsStatusMissingOrNotListed()
    {
        Access::umtsCsStatus() = Access::umtsPsStatus() = UMTS_STATUS_IDLE;
        QVERIFY(model().updateCsPsStatus());
        QCOMPARE(Access::umtsCsStatus(), 7);
        QCOMPARE(Access::umtsPsStatus(), 7);
        QCOMPARE(
            bus->log.count(QtDebugMsg,
                           "updateCsPsStatus(): ERROR !!! rmcfg.protocols.umts.cs.status not in database???"),
            1);
        QCOMPARE(
            bus->log.count(QtDebugMsg,
                           "updateCsPsStatus(): ERROR !!! rmcfg.protocols.umts.ps.status not in database???"),
            1);
        set(CS, "idle");
        set(PS, "n/a");
        QVERIFY(!model().updateCsPsStatus());
        QCOMPARE(bus->log.count(
                     QtWarningMsg,
                     "StatusUpdater::updateCsPsStatus(): ERROR!!! umtsCsStatus value illegal!!! value=idle"),
                 1);
        QCOMPARE(bus->log.count(
                     QtWarningMsg,
                     "StatusUpdater::updateCsPsStatus(): ERROR!!! umtsPsStatus value illegal!!! value=n/a"),
                 1);
    }

    void beamTypeByItsText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("name");
        QTest::newRow("1") << "Global" << 1 << "IAI2_BEAM_TYPE_GLOBAL";
        QTest::newRow("2") << "Regional" << 2 << "IAI2_BEAM_TYPE_REGIONAL";
        QTest::newRow("3") << "Narrow" << 3 << "IAI2_BEAM_TYPE_NARROW";
    }
    void beamTypeByItsText()
    {
        QFETCH(QString, text);
        QFETCH(int, type);
        QFETCH(QString, name);
        selected();
        set(BEAM, text);
        QVERIFY(model().updateIai2BeamType());
        QCOMPARE(model().getIai2BeamType(), type);
        QCOMPARE(bus->log.count(QtDebugMsg, "StatusUpdater::updateIai2BeamType(): iai2BeamType = " + name),
                 1);
        QVERIFY(!model().updateIai2BeamType());
    }

    void beamTypeMissingOrNotListed()
    {
        selected();
        Access::iai2BeamType() = IAI2_BEAM_TYPE_NARROW;
        QVERIFY(model().updateIai2BeamType());
        QCOMPARE(model().getIai2BeamType(), 0);
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "updateIai2BeamType(): ERROR !!! rmcfg.protocols.bgan.status.beam_type "
                                "not in database???"),
                 1);
        const QString warning =
            "StatusUpdater::updateIai2BeamType(): ERROR!!! beamTypeStr =global. Setting it to "
            "IAI2_BEAM_TYPE_GLOBAL";
        set(BEAM, "global");
        QVERIFY(model().updateIai2BeamType());
        QCOMPARE(model().getIai2BeamType(), 1);
        QCOMPARE(bus->log.count(QtWarningMsg, warning), 1);
        QVERIFY(!model().updateIai2BeamType());
        QCOMPARE(bus->log.count(QtWarningMsg, warning), 1); // said once, not each second
    }

    void beamTypeWithoutASelectedNetworkIsGlobal()
    {
        operate();
        Access::plmnStatus() = PLMN_STATUS_SEARCHING;
        set(BEAM, "Narrow");
        QVERIFY(model().updateIai2BeamType());
        QCOMPARE(model().getIai2BeamType(), 1);
    }

    void beamTypeOfAModuleThatIsDown()
    {
        for (int systemStatus : {1, 2, 3, 4, 5, 11}) {
            bus->reset();
            model().setExtendedSystemStatus(systemStatus);
            Access::iai2BeamType() = IAI2_BEAM_TYPE_NARROW;
            QVERIFY(model().updateIai2BeamType());
            QCOMPARE(model().getIai2BeamType(), 0);
            const bool expected = systemStatus >= 2 && systemStatus <= 4;
            QCOMPARE(bus->log.count(QtWarningMsg,
                                    "StatusUpdater::updateIai2BeamType(): Warning: RM not operating."),
                     expected ? 0 : 1);
            QVERIFY(!model().updateIai2BeamType());
        }
    }

    void iai2StatusByItsText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("name");
        QTest::newRow("1") << "N/A" << 1 << "IAI2_STATUS_RM_NOT_READY";
        QTest::newRow("2") << "Satellite search" << 2 << "IAI2_STATUS_SATELLITE_SEARCH";
        QTest::newRow("3") << "Receive system information" << 3 << "IAI2_STATUS_RECEIVE_SYSTEM_INFORMATION";
        QTest::newRow("4") << "Registering" << 4 << "IAI2_STATUS_REGISTERING";
        QTest::newRow("5") << "Registered" << 5 << "IAI2_STATUS_REGISTERED";
        QTest::newRow("6") << "Deregistered" << 6 << "IAI2_STATUS_DEREGISTERED";
    }
    void iai2StatusByItsText()
    {
        QFETCH(QString, text);
        QFETCH(int, status);
        QFETCH(QString, name);
        operate();
        set(STATE, text);
        QVERIFY(model().updateIai2Status());
        QCOMPARE(Access::iai2Status(), status);
        QCOMPARE(bus->log.count(QtDebugMsg, "StatusUpdater::updateIai2Status(): iai2Status=" + name), 1);
        QVERIFY(!model().updateIai2Status());
    }

    void iai2StatusMissingNotListedOrDown()
    {
        operate();
        Access::iai2Status() = IAI2_STATUS_REGISTERED;
        QVERIFY(model().updateIai2Status());
        QCOMPARE(Access::iai2Status(), 0);
        QCOMPARE(bus->log.count(QtDebugMsg,
                                "updateIai2Status(): ERROR !!! rmcfg.protocols.bgan.status.state not in "
                                "database???"),
                 1);
        Access::iai2Status() = IAI2_STATUS_REGISTERED;
        set(STATE, "registered");
        QVERIFY(model().updateIai2Status());
        QCOMPARE(Access::iai2Status(), 0);
        QCOMPARE(bus->log.count(QtWarningMsg, "StatusUpdater::updateIai2Status(): Warning: iai2Status value "
                                              "illegal!!! value=registered"),
                 1);
        Access::rmOperating() = false;
        Access::iai2Status() = IAI2_STATUS_REGISTERED;
        QVERIFY(!model().updateIai2Status()); // stays as it is
        QCOMPARE(Access::iai2Status(), 5);
    }

    // --- The poll as a whole -------------------------------------------------------------------------------

    void readsItsKeysInOrder()
    {
        set(MODE, "operating");
        bus->terminal.set(USIM, 1);
        set(PIN, "Valid");
        set(PLMN, "Selected");
        bus->clearLogs();
        model().pollStatusFromRm();
        QCOMPARE(bus->reads(), QStringList({MODE, USIM, PIN, PLMN, CS, PS, BEAM, STATE}));
    }

    void sidesAreReadOnlyInASelectedNetwork()
    {
        set(MODE, "operating");
        set(PLMN, "Searching");
        Access::umtsCsStatus() = UMTS_STATUS_ATTACHED;
        bus->clearLogs();
        model().pollStatusFromRm();
        QCOMPARE(bus->reads(), QStringList({MODE, USIM, PLMN, STATE}));
        QCOMPARE(Access::umtsCsStatus(), 3); // keeps its last reading
    }

    void changeIsToldOfOnce()
    {
        set(MODE, "operating");
        set(PLMN, "Searching");
        QSignalSpy status(&model(), SIGNAL(statusChanged()));
        model().pollStatusFromRm();
        QCOMPARE(status.count(), 1);
        model().pollStatusFromRm();
        QCOMPARE(status.count(), 1);
    }

    // Each value but the beam type changes the status.
    void eachValueButTheBeamTypeTellsOfTheStatus()
    {
        selectedInDatabase();
        model().pollStatusFromRm();
        QSignalSpy status(&model(), SIGNAL(statusChanged()));
        const QList<QPair<const char*, QString>> changes = {{PIN, "Needed"},     {CS, "Attaching"},
                                                            {PS, "Attaching"},   {STATE, "Registering"},
                                                            {PLMN, "Searching"}, {MODE, "stopped"}};
        for (const auto& change : changes) {
            status.clear();
            set(change.first, change.second);
            model().pollStatusFromRm();
            QVERIFY2(status.count() == 1, change.first);
        }
    }

    // "A beam type change alone emits beamTypeChanged and no statusChanged."
    void beamTypeAloneIsToldOfByItself()
    {
        selectedInDatabase();
        model().pollStatusFromRm();
        QSignalSpy status(&model(), SIGNAL(statusChanged()));
        QSignalSpy beam(&model(), SIGNAL(beamTypeChanged()));
        set(BEAM, "Narrow");
        model().pollStatusFromRm();
        QCOMPARE(beam.count(), 1);
        QCOMPARE(status.count(), 0);
    }

private:
    void set(const char* key, const QString& text) { bus->terminal.set(key, text.toStdString()); }
    void operate() { Access::rmOperating() = true; }
    void selected()
    {
        operate();
        Access::plmnStatus() = PLMN_STATUS_SELECTED;
    }
    void selectedInDatabase()
    {
        set(MODE, "operating");
        bus->terminal.set(USIM, 1);
        set(PIN, "Valid");
        set(PLMN, "Selected");
        set(CS, "Idle");
        set(PS, "Idle");
        set(BEAM, "Regional");
        set(STATE, "Registered");
    }

    BusFixture* bus = nullptr;
};

QTEST_MAIN(RmPollTest)

#include "rm_poll_test.moc"
