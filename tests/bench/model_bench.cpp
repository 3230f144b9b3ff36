// The model's costs: an update of the alert log and of the running sessions, and how they grow with the
// number of alerts and of contexts; one evaluation of the status text. The last also in instructions of user
// space.
//
// The records are put together beforehand, as the bus thread hands them over; every second update differs
// from the one before it in one alert, or in all amounts and rates.
#include "bench/steps.h"
#include "common/log.h"
#include "model/statusupdater.h"
#include "runtime/cbus_client.h"
#include "runtime/config_client_api.h"
#include "runtime/fdloop.h"
#include "sim/terminal.h"
#include "support/modelaccess.h"
#include "support/records.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QThread>

#include <cstdio>

namespace {

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

Records alerts(int count, int round)
{
    Records records;
    for (int index = 0; index < count; ++index) {
        const std::string alert = "ram.log.alert." + std::to_string(index) + ".";
        records.number(alert + "identifier", 0x210 + index)
            .number(alert + "sub_id", index)
            .number(alert + "severity", 1)
            .number(alert + "state", 1)
            .text(alert + "shorttext", "Temperature out of range")
            .number(alert + "time", 1600000000 + index + (index == 0 ? round : 0));
    }
    return records;
}

Records sessions(int contexts, int round)
{
    const std::string group = "ram.status.ongoing_data_sessions.0.";
    Records records;
    records.number(group + "status", 2)
        .number(group + "time", 1000)
        .number(group + "background_total", round);
    static const char* const fields[] = {"traffic_class", "bw_up", "bw_down", "bw_up_guaranteed",
                                         "bw_down_guaranteed"};
    for (int context = 1; context <= contexts; ++context) {
        for (const char* field : fields)
            records.number(group + "context." + std::to_string(context) + "." + field, 1 + round);
    }
    return records;
}

void setAlertList(benchmark::State& state)
{
    const int count = int(state.range(0));
    const Records rounds[] = {alerts(count, 0), alerts(count, 1)};
    int round = 0;
    for (auto unused : state) {
        const Records& records = rounds[round++ % 2];
        model().setAlertList(records.count(), records.data());
    }
    state.SetComplexityN(count);
}
BENCHMARK(setAlertList)
    ->Arg(1)
    ->Arg(10)
    ->Arg(50)
    ->Arg(200)
    ->Arg(1000)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity();

void setActiveConnectionsAndBundles(benchmark::State& state)
{
    const int contexts = int(state.range(0));
    const Records rounds[] = {sessions(contexts, 0), sessions(contexts, 1)};
    int round = 0;
    for (auto unused : state) {
        const Records& records = rounds[round++ % 2];
        model().setActiveConnectionsAndBundles(records.count(), records.data());
    }
    state.SetComplexityN(contexts);
    const Records end = std::move(Records().deleted("ram.status.ongoing_data_sessions.0.status"));
    model().setActiveConnectionsAndBundles(end.count(), end.data());
}
BENCHMARK(setActiveConnectionsAndBundles)
    ->Arg(1)
    ->Arg(2)
    ->Arg(5)
    ->Arg(11)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity();

// A terminal that is ready, and then one with running connections.
void makeReady()
{
    Access::rmOperating() = true;
    Access::simStatus() = SIM_READY;
    Access::plmnStatus() = PLMN_STATUS_SELECTED;
    Access::umtsCsStatus() = Access::umtsPsStatus() = UMTS_STATUS_ATTACHED;
    Access::iai2Status() = IAI2_STATUS_REGISTERED;
    model().setPointingMode(POINTING_STATUS_POINTED);
    model().setExtendedSystemStatus(SYSTEM_STATUS_NORMAL);
    model().updateTranslatedStatusTexts();
}

void evaluate()
{
    model().updateCurrentStatusTextId();
    benchmark::DoNotOptimize(model().getStatusText());
}

void runConnections(int contexts)
{
    const Records start = sessions(contexts, 1);
    const Records end = std::move(Records().deleted("ram.status.ongoing_data_sessions.0.status"));
    const Records& records = contexts > 0 ? start : end;
    model().setActiveConnectionsAndBundles(records.count(), records.data());
}

void statusText(benchmark::State& state)
{
    runConnections(int(state.range(0)));
    for (auto unused : state)
        evaluate();
    runConnections(0);
}
BENCHMARK(statusText)->ArgName("contexts")->Arg(0)->Arg(1)->Arg(11)->Unit(benchmark::kMicrosecond);

// Outside of the benchmarks, which run their functions again and again: stepping takes its time.
void printInstructions()
{
    std::printf("\nInstructions of one evaluation of the status text\n");
    for (int contexts : {0, 1, 11}) {
        runConnections(contexts);
        evaluate(); // what is bound at the first call is bound
        const double count = steps::perTurn(
            [](int turns) {
                for (int i = 0; i < turns; ++i)
                    evaluate();
            },
            1, 3);
        std::printf("%2d running contexts%16.0f\n", contexts, count);
        runConnections(0);
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    sim::TerminalOptions options;
    options.initialValues = false;
    sim::Terminal terminal(options);
    terminal.useForProcess();
    cbus_conn_t* const conn = cbus_conn_create(fdloop_init(), "bench");
    if (!conn) {
        std::fprintf(stderr, "model_bench: no connection to the terminal\n");
        return 1;
    }
    config_init_cbus(conn, nullptr);
    setDebugLogWanted(false); // as on the terminal
    model().setThreadIdCBus(QThread::currentThreadId());
    model().setHasConnectedToCBus(true);
    makeReady();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    printInstructions();
    std::fflush(nullptr);
    _exit(0);
}
