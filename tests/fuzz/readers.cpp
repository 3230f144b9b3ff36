// Fuzz target: values of the database through the readers and change handlers into the model. The input is
// lines that fill the database (see database.h); a line that begins with "!" writes what stands before it,
// hands the changes to the handlers, and asks the model for everything that a screen asks it; "!!" also reads
// all that is read at start, and "!?" polls the radio module.
//
// Database and server are the simulated terminal's, on this thread.
// Legal end: a session's number that is none (assertion).
#include "fuzz/database.h"
#include "fuzz/qttarget.h"

#include "busif/subscriptions.h"
#include "model/operations.h"

namespace {

const int MAX_STEPS = 6;

void askAll(StatusUpdater& model)
{
    static const std::vector<Operation>& all = allOperations();
    int round = 0;
    for (const Operation& operation : all)
        if (operation.kind == Operation::GETTER)
            operation.run(model, ++round);
    for (BATT_TYPE_ENUM type : {BATT_TYPE_INTERNAL, BATT_TYPE_EXTERNAL}) {
        model.getBattCapacityLabel(type);
        model.getBattTempValueLabel(type);
        model.getBatt2ndLabel(type);
    }
    model.getSignalLevelStr(model.getSignalLevel());
    model.updateCurrentStatusTextId();
    model.getStatusText();
    for (const bundle_t& bundle : model.getDefinedBundles()) {
        model.bondingDemandsReached(bundle);
        model.debugBundle(bundle, "fuzz");
    }
}

void step(fuzz::Database& database, StatusUpdater& model, const std::string& how)
{
    database.deliver();
    if (how.compare(0, 2, "!!") == 0)
        runInitialReads();
    if (how.compare(0, 2, "!?") == 0)
        model.pollStatusFromRm();
    database.deliver(); // what the reads wrote themselves
    askAll(model);
}

void run(fuzz::Database& database, StatusUpdater& model, fuzz::Input& input)
{
    std::vector<sim::Write> writes;
    for (int steps = 0; !input.empty() && steps < MAX_STEPS;) {
        const std::string line = input.line();
        if (line[0] != '!') {
            fuzz::Database::addLine(line, &writes);
            continue;
        }
        ++steps;
        database.write(writes);
        writes.clear();
        step(database, model, line);
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::startQt();
    fuzz::Database::instance();
    registerSubscriptions();
    fuzz::Database::instance().settle();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Database& database = fuzz::Database::instance();
    StatusUpdater& model = fuzz::freshModel();
    model.updateTranslatedStatusTexts();
    fuzz::Input input(data, size);
    fuzz::Blocks blocks;
    const bool survived =
        fuzz::survives([&] { run(database, model, input); }, {"*** ASSERT in statusupdater at "});
    database.clear();
    if (!survived)
        blocks.freeRest();
    return 0;
}
