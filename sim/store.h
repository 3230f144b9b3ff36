// The values that outlast a run: a SQLite file with one row for each key.
//
// Each save is one transaction: a file is either as before or as after it, whenever the power goes. A save
// that changes nothing writes nothing. A value of type None says that the key is deleted, so that an initial
// value does not come back.
//
// One thread. Blocks for the disk, and up to 200 ms for another process that is writing the same file.
#ifndef SIM_STORE_H
#define SIM_STORE_H

#include "sim/value.h"

#include <map>
#include <string>

struct sqlite3;

namespace sim {

class Store {
public:
    using Values = std::map<std::string, Value, std::less<>>;

    Store() = default;
    ~Store() { close(); }
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    // Opens or makes the file and reads all rows into *values. On failure: false, *error is one line that
    // names the file, nothing is open, and the file is as it was.
    bool open(const std::string& fileName, Values* values, std::string* error);
    bool isOpen() const { return database != nullptr; }
    // Makes the file hold exactly these values. On failure: false, *error as above, the file is as it was and
    // stays open.
    bool save(const Values& values, std::string* error);
    void close();

private:
    bool execute(const char* statement);
    bool prepareSchema();
    bool load(Values* values);
    bool write(const Values& values);
    std::string problem() const;

    std::string name;
    sqlite3* database = nullptr;
    Values saved;       // what the file holds
    std::string reason; // why it failed, where SQLite does not know
};

} // namespace sim

#endif
