// Fuzz target: the start of a bundle from a stored definition. The input is lines that fill the database (see
// database.h), in short "B N", "C N" and "F N" for all words of a bundle, a connection, a filter, and lines
// "! N" that start the bundle of this number. Database and server are the simulated terminal's, on this
// thread.
// No legal end.
#include "fuzz/database.h"
#include "fuzz/fuzz.h"

#include "busif/bundle_activation.h"
#include "busif/bundle_records.h"

using fuzz::check;

namespace {

const char ACTIVATED[] = "ram.net.user_groups.0.activated";
const char CURRENT[] = "ram.net.user_groups.0.current_bundle";
const int MAX_STARTS = 4;

void start(fuzz::Database& database, int number)
{
    database.write({{ACTIVATED, sim::Value()}, {CURRENT, sim::Value()}});
    const int64_t before = database.slept();
    const int result = start_bundle(number);
    database.settle();
    const size_t connections = database.countWithPrefix("ram.net.qos.0.") / 20;
    const size_t filters = database.countWithPrefix("ram.net.tft.0.") / 16;
    if (result != 0) {
        check(result < 0, "a failure above zero");
        check(connections + filters == 0, "records of a bundle that could not be started");
        check(!database.has(ACTIVATED) && !database.has(CURRENT), "a failed start was activated");
        return;
    }
    check(database.numberOf(ACTIVATED) == 1 && database.numberOf(CURRENT) == number, "not activated");
    check(database.slept() - before == 200, "another pause before the activation");
    check(connections >= 1 && connections <= 11 && filters <= 88, "more records than a bundle can have");
    check(database.countWithPrefix("ram.net.qos.0.") == 20 * connections, "a part of a connection");
    check(database.countWithPrefix("ram.net.tft.0.") == 16 * filters, "a part of a filter");
    // An empty text is a value of one byte, so all of the first context's stand.
    check(database.countWithPrefix("ram.net.pdp_contexts.0.") == 7 * connections + 7, "a part of a context");
}

void addNumber(const std::string& key, int number, std::vector<sim::Write>* writes)
{
    writes->push_back({key, sim::Value::integer(number)});
}

void addText(const std::string& key, std::vector<sim::Write>* writes)
{
    writes->push_back({key, sim::Value::text("text")});
}

void addShort(const std::string& line, std::vector<sim::Write>* writes)
{
    const int number = static_cast<int>(strtol(line.c_str() + 1, nullptr, 10));
    const std::string infix = std::to_string(number) + ".";
    const std::string bundle = "cfg.admin.bundle." + infix;
    const std::string filter = "cfg.admin.traffic_flow_filters." + infix;
    if (line[0] == 'B') {
        addNumber(bundle + "header_comp", 0, writes);
        addNumber(bundle + "apn_type", number & 3, writes);
        for (const char* word : {"apn_user_defined_name", "pd1", "pd2"})
            addText(bundle + word, writes);
    } else if (line[0] == 'C') {
        for (int i = 0; i < QOS_SOURCE_COUNT; ++i)
            addNumber("cfg.admin.connection." + infix + QOS_SOURCES[i].word, i, writes);
    } else if (line[0] == 'F') {
        addNumber(filter + "bit_mask", number, writes);
        for (int i = 0; i < FILTER_SOURCE_COUNT; ++i) {
            if (FILTER_SOURCES[i].number)
                addNumber(filter + FILTER_SOURCES[i].word, i, writes);
            else
                addText(filter + FILTER_SOURCES[i].word, writes);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::silence();
    fuzz::Database::instance();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Database& database = fuzz::Database::instance();
    fuzz::Input input(data, size);
    std::vector<sim::Write> writes;
    int starts = 0;
    while (!input.empty() && starts < MAX_STARTS) {
        const std::string line = input.line();
        if (line[0] != '!') {
            fuzz::Database::addLine(line, &writes);
            addShort(line, &writes);
            continue;
        }
        // What lies there before is deleted by the start; only what it does not touch must not be counted.
        for (size_t i = writes.size(); i-- > 0;)
            if (writes[i].key.compare(0, 4, "ram.") == 0)
                writes.erase(writes.begin() + static_cast<long>(i));
        database.write(writes);
        writes.clear();
        ++starts;
        const int number = static_cast<int>(strtol(line.c_str() + 1, nullptr, 10));
        fuzz::survives([&] { start(database, number); }, {});
    }
    database.clear();
    return 0;
}
