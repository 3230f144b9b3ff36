// The database and the bus server of the simulated terminal on the target's own thread, and a client's
// connection to them: no thread, no wait, the same steps for the same input.
//
// The server works whenever the client is about to wait for a reply: the linker hands the client's waits and
// reads to database.cpp (--wrap). Sleeps of what is tested are counted instead of slept.
#ifndef TESTS_FUZZ_DATABASE_H
#define TESTS_FUZZ_DATABASE_H

#include "runtime/cbus.h"
#include "sim/bus_server.h"
#include "sim/database.h"
#include "sim/database_bus.h"

#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

class Database {
public:
    // The one of the process. The first call makes it and connects the configuration client to it.
    static Database& instance();

    // Writes all values in one go, as the terminal's processes do; refused ones are left out.
    void write(const std::vector<sim::Write>& writes) { database.apply(writes); }
    // Adds a write of a line "i KEY NUMBER", "s KEY TEXT", "b KEY BYTES" or "d KEY"; others add nothing.
    static void addLine(const std::string& line, std::vector<sim::Write>* writes);
    // Handles everything that the client has sent.
    void settle();
    // Hands all changes that were signalled to the client's handlers, and what comes of that.
    void deliver();
    // No key, no signal on its way, no count of sleeps. Also after a panic in a handler.
    void clear();

    bool has(const std::string& key) const { return database.find(key) != nullptr; }
    int numberOf(const std::string& key) const; // -1 without one
    size_t countWithPrefix(const std::string& prefix) const { return database.keysWithPrefix(prefix).size(); }
    int64_t slept() const; // milliseconds

    // For the client's waits.
    void workUntilReadable(int fd);

private:
    Database();

    fdloop_t* serverLoop;
    sim::Database database;
    sim::BusServer server;
    sim::DatabaseBus bus;
    fdloop_t* clientLoop;
    cbus_conn_t* conn;
};

} // namespace fuzz

#endif
