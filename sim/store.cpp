// Saved values in SQLite: see store.h.
#include "sim/store.h"

#include <sqlite3.h>

namespace sim {

// Kept in the file's user_version.
static constexpr int SchemaVersion = 1;
static constexpr int BusyTimeout = 200; // ms

namespace {

class Statement {
public:
    Statement(sqlite3* database, const char* text)
    {
        sqlite3_prepare_v2(database, text, -1, &statement, nullptr);
    }
    ~Statement() { sqlite3_finalize(statement); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    bool isGood() const { return statement != nullptr; }
    sqlite3_stmt* get() const { return statement; }
    // SQLITE_ROW, SQLITE_DONE or an error.
    int step() { return sqlite3_step(statement); }
    bool run()
    {
        bool done = step() == SQLITE_DONE;
        sqlite3_reset(statement);
        return done;
    }
    void bindKey(int position, const std::string& key)
    {
        sqlite3_bind_text(statement, position, key.data(), static_cast<int>(key.size()), SQLITE_TRANSIENT);
    }

private:
    sqlite3_stmt* statement = nullptr;
};

std::string bytesOf(sqlite3_stmt* statement, int column)
{
    const void* bytes = sqlite3_column_blob(statement, column);
    return bytes ? std::string(static_cast<const char*>(bytes),
                               static_cast<size_t>(sqlite3_column_bytes(statement, column)))
                 : std::string();
}

} // namespace

bool Store::execute(const char* statement)
{
    return sqlite3_exec(database, statement, nullptr, nullptr, nullptr) == SQLITE_OK;
}

std::string Store::problem() const
{
    return name + ": " + (reason.empty() ? sqlite3_errmsg(database) : reason);
}

bool Store::open(const std::string& fileName, Values* values, std::string* error)
{
    close();
    name = fileName;
    values->clear();
    int result =
        sqlite3_open_v2(fileName.c_str(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    if (result == SQLITE_OK)
        sqlite3_busy_timeout(database, BusyTimeout);
    if (result != SQLITE_OK || !prepareSchema() || !load(values)) {
        *error = database ? problem() : name + ": out of memory";
        values->clear();
        close();
        return false;
    }
    return true;
}

bool Store::prepareSchema()
{
    int version = 0;
    {
        Statement ask(database, "PRAGMA user_version");
        if (!ask.isGood() || ask.step() != SQLITE_ROW)
            return false;
        version = sqlite3_column_int(ask.get(), 0);
    }
    {
        Statement check(database, "PRAGMA quick_check(1)");
        if (!check.isGood() || check.step() != SQLITE_ROW)
            return false;
        if (bytesOf(check.get(), 0) != "ok") {
            reason = "the file is damaged: " + bytesOf(check.get(), 0);
            return false;
        }
    }
    if (version > SchemaVersion) {
        reason = "written by a newer version";
        return false;
    }
    // Written in any case, so that a file that can only be read is found out now and not at the first save.
    return execute("BEGIN IMMEDIATE") &&
           execute("CREATE TABLE IF NOT EXISTS cfg (key TEXT PRIMARY KEY NOT NULL, type INTEGER NOT NULL, "
                   "value BLOB "
                   "NOT NULL) WITHOUT ROWID") &&
           execute("PRAGMA user_version = 1") && execute("COMMIT");
}

bool Store::load(Values* values)
{
    Statement rows(database, "SELECT key, type, value FROM cfg");
    if (!rows.isGood())
        return false;
    int result = 0;
    while ((result = rows.step()) == SQLITE_ROW) {
        int type = sqlite3_column_int(rows.get(), 1);
        if (type < 0 || type > static_cast<int>(Type::Int)) {
            reason = "unknown type of value " + std::to_string(type);
            return false;
        }
        (*values)[bytesOf(rows.get(), 0)] = {static_cast<Type>(type), bytesOf(rows.get(), 2)};
    }
    saved = *values;
    return result == SQLITE_DONE;
}

bool Store::save(const Values& values, std::string* error)
{
    reason.clear();
    if (!database) {
        *error = "no file is open";
        return false;
    }
    if (values == saved)
        return true;
    if (!execute("BEGIN IMMEDIATE") || !write(values) || !execute("COMMIT")) {
        *error = problem();
        if (!sqlite3_get_autocommit(database))
            execute("ROLLBACK");
        return false;
    }
    saved = values;
    return true;
}

bool Store::write(const Values& values)
{
    Statement remove(database, "DELETE FROM cfg WHERE key = ?");
    Statement insert(database, "INSERT OR REPLACE INTO cfg (key, type, value) VALUES (?, ?, ?)");
    if (!remove.isGood() || !insert.isGood())
        return false;
    for (const auto& [key, value] : saved) {
        if (values.count(key))
            continue;
        remove.bindKey(1, key);
        if (!remove.run())
            return false;
    }
    for (const auto& [key, value] : values) {
        auto old = saved.find(key);
        if (old != saved.end() && old->second == value)
            continue;
        insert.bindKey(1, key);
        sqlite3_bind_int(insert.get(), 2, static_cast<int>(value.type));
        // A null pointer would be NULL, not an empty value.
        sqlite3_bind_blob(insert.get(), 3, value.bytes.empty() ? "" : value.bytes.data(),
                          static_cast<int>(value.bytes.size()), SQLITE_TRANSIENT);
        if (!insert.run())
            return false;
    }
    return true;
}

void Store::close()
{
    sqlite3_close(database);
    database = nullptr;
    saved.clear();
    reason.clear();
}

} // namespace sim
