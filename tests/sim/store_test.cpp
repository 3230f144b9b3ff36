// Settings that outlast a run: the store alone, and the terminal that uses it.
#include "raw_client.h"
#include "temporary_directory.h"

#include "sim/store.h"
#include "sim/terminal.h"

#include <fstream>
#include <gmock/gmock.h>
#include <sqlite3.h>

using namespace std::string_literals;
using sim::Store;
using sim::Type;
using sim::Value;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class StoreTest : public testing::Test {
protected:
    std::string content() const
    {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    void overwrite(const std::string& bytes) const { std::ofstream(file, std::ios::binary) << bytes; }
    // Carries statements out on the file from outside.
    void execute(const char* statements) const
    {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, statements, nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(database);
        sqlite3_close(database);
    }

    TemporaryDirectory directory;
    std::string file = directory.file("cfg.db");
    std::string error;
    Store::Values values;
};

TEST_F(StoreTest, KeepsValuesOfAllTypes)
{
    const Store::Values saved = {{"cfg.i", Value::integer(-3)},
                                 {"cfg.s", Value::text("\xc3\xa6")},
                                 {"cfg.b", Value::blob("\x00\xff"s)},
                                 {"cfg.deleted", Value()}};
    {
        Store store;
        ASSERT_TRUE(store.open(file, &values, &error)) << error;
        EXPECT_TRUE(values.empty());
        EXPECT_TRUE(store.save(saved, &error)) << error;
    }
    Store store;
    ASSERT_TRUE(store.open(file, &values, &error)) << error;
    EXPECT_EQ(values, saved);
}

TEST_F(StoreTest, SaveChangesAddsAndRemoves)
{
    Store store;
    ASSERT_TRUE(store.open(file, &values, &error));
    ASSERT_TRUE(store.save({{"cfg.a", Value::integer(1)}, {"cfg.b", Value::integer(1)}}, &error));
    ASSERT_TRUE(store.save({{"cfg.b", Value::integer(2)}, {"cfg.c", Value::integer(3)}}, &error));
    ASSERT_TRUE(store.open(file, &values, &error));
    EXPECT_EQ(values, (Store::Values{{"cfg.b", Value::integer(2)}, {"cfg.c", Value::integer(3)}}));
}

TEST_F(StoreTest, SaveOfTheSameValuesWritesNothing)
{
    Store store;
    ASSERT_TRUE(store.open(file, &values, &error));
    ASSERT_TRUE(store.save({{"cfg.a", Value::integer(1)}}, &error));
    std::string before = content();
    ASSERT_TRUE(store.save({{"cfg.a", Value::integer(1)}}, &error));
    EXPECT_EQ(content(), before);
}

TEST_F(StoreTest, FailedSaveLeavesTheFileAsItWasAndTheNextOneWorks)
{
    Store store;
    ASSERT_TRUE(store.open(file, &values, &error));
    ASSERT_TRUE(store.save({{"cfg.a", Value::integer(1)}}, &error));
    execute("CREATE TRIGGER refuse BEFORE INSERT ON cfg WHEN NEW.key = 'cfg.z' BEGIN SELECT RAISE(ABORT, "
            "'refused'); END");
    EXPECT_FALSE(store.save({{"cfg.a", Value::integer(2)}, {"cfg.z", Value::integer(2)}}, &error));
    EXPECT_EQ(error, file + ": refused");
    execute("DROP TRIGGER refuse");
    Store reader;
    ASSERT_TRUE(reader.open(file, &values, &error));
    EXPECT_EQ(values, (Store::Values{{"cfg.a", Value::integer(1)}}));
    reader.close();
    EXPECT_TRUE(store.save({{"cfg.a", Value::integer(2)}, {"cfg.z", Value::integer(2)}}, &error)) << error;
}

TEST_F(StoreTest, LockedFileIsAnErrorWithinAMoment)
{
    Store store;
    ASSERT_TRUE(store.open(file, &values, &error));
    sqlite3* holder = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &holder), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(holder, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_FALSE(store.save({{"cfg.a", Value::integer(1)}}, &error));
    EXPECT_EQ(error, file + ": database is locked");
    sqlite3_close(holder);
    EXPECT_TRUE(store.save({{"cfg.a", Value::integer(1)}}, &error)) << error;
}

TEST_F(StoreTest, FileOfAnotherKindIsAnErrorAndLeftAlone)
{
    overwrite(std::string(4096, 'x'));
    Store store;
    EXPECT_FALSE(store.open(file, &values, &error));
    EXPECT_EQ(error, file + ": file is not a database");
    EXPECT_FALSE(store.isOpen());
    EXPECT_EQ(content(), std::string(4096, 'x'));
    EXPECT_FALSE(store.save({}, &error));
}

TEST_F(StoreTest, DamagedFileIsAnError)
{
    {
        Store store;
        ASSERT_TRUE(store.open(file, &values, &error));
        Store::Values many;
        for (int at = 0; at < 1000; at++)
            many["cfg.key." + std::to_string(at)] = Value::text(std::string(50, 'v'));
        ASSERT_TRUE(store.save(many, &error));
    }
    std::string bytes = content();
    for (size_t at = 4096 + 8; at < bytes.size(); at += 97)
        bytes[at] = static_cast<char>(bytes[at] ^ 0x5a);
    overwrite(bytes);
    Store store;
    EXPECT_FALSE(store.open(file, &values, &error));
    EXPECT_THAT(error, StartsWith(file + ": "));
    EXPECT_TRUE(values.empty());
    EXPECT_EQ(content(), bytes);
}

TEST_F(StoreTest, NewerFileIsAnError)
{
    execute("PRAGMA user_version = 2");
    Store store;
    EXPECT_FALSE(store.open(file, &values, &error));
    EXPECT_EQ(error, file + ": written by a newer version");
}

TEST_F(StoreTest, UnknownTypeIsAnError)
{
    {
        Store store;
        ASSERT_TRUE(store.open(file, &values, &error));
    }
    execute("INSERT INTO cfg VALUES ('cfg.x', 9, x'00')");
    Store store;
    EXPECT_FALSE(store.open(file, &values, &error));
    EXPECT_EQ(error, file + ": unknown type of value 9");
}

TEST_F(StoreTest, MissingDirectoryIsAnError)
{
    Store store;
    EXPECT_FALSE(store.open(directory.file("none/cfg.db"), &values, &error));
    EXPECT_THAT(error, HasSubstr("unable to open database file"));
}

// --- The terminal with a store

class StoredTerminalTest : public StoreTest {
protected:
    sim::TerminalOptions options() const
    {
        sim::TerminalOptions options;
        options.storeFile = file;
        return options;
    }
    Store::Values saved()
    {
        Store store;
        EXPECT_TRUE(store.open(file, &values, &error)) << error;
        return values;
    }
};

TEST_F(StoredTerminalTest, SyncSavesCfgAlone)
{
    sim::Terminal terminal(options());
    terminal.set("cfg.language", 4);
    terminal.set("ram.kept", 1);
    terminal.set("cfgx.other", 1);
    RawClient client(terminal.address());
    client.sendSignal("config.sync.ram", "");
    ASSERT_TRUE(client.sync());
    EXPECT_EQ(saved().count("cfg.language"), 0u);
    client.sendSignal("config.sync.cfg", "");
    ASSERT_TRUE(client.sync());
    Store::Values kept = saved();
    EXPECT_EQ(kept["cfg.language"], Value::integer(4));
    EXPECT_EQ(kept.count("ram.kept"), 0u);
    EXPECT_EQ(kept.count("cfgx.other"), 0u);
}

TEST_F(StoredTerminalTest, CleanEndSavesAndTheNextRunReads)
{
    {
        sim::Terminal terminal(options());
        terminal.set("cfg.language", 4);
        terminal.set("cfg.added", "new");
        terminal.set("ram.status.signal_strength", 111);
        terminal.erase("cfg.help_desk_number");
    }
    sim::Terminal terminal(options());
    EXPECT_EQ(terminal.getInt("cfg.language"), 4);
    EXPECT_EQ(terminal.getString("cfg.added"), "new");
    EXPECT_FALSE(terminal.has("cfg.help_desk_number"));
    EXPECT_EQ(terminal.getInt("ram.status.signal_strength"), 512);
    EXPECT_EQ(terminal.getInt("cfg.display.brightness"), 4);
}

TEST_F(StoredTerminalTest, FactoryResetIsSavedAtOnce)
{
    {
        sim::Terminal terminal(options());
        terminal.set("cfg.language", 4);
        terminal.erase("cfg.help_desk_number");
        RawClient client(terminal.address());
        client.sendSignal("config.sync.cfg", "");
        ASSERT_TRUE(client.ask("config.factory_reset", word(0xffffffff)));
        EXPECT_EQ(saved()["cfg.language"], Value::integer(0));
    }
    sim::Terminal terminal(options());
    EXPECT_EQ(terminal.getInt("cfg.language"), 0);
    EXPECT_TRUE(terminal.has("cfg.help_desk_number"));
}

TEST_F(StoredTerminalTest, DamagedFileIsToldInOneLineAndTheRunGoesOn)
{
    overwrite(std::string(4096, 'x'));
    {
        sim::Terminal terminal(options());
        ASSERT_TRUE(terminal.running());
        EXPECT_THAT(terminal.serverLog(),
                    testing::ElementsAre("settings are not kept: " + file + ": file is not a database"));
        RawClient client(terminal.address());
        client.sendSignal("config.sync.cfg", "");
        ASSERT_TRUE(client.sync());
    }
    EXPECT_EQ(content(), std::string(4096, 'x'));
}

TEST_F(StoredTerminalTest, FailedSaveIsToldAndTheRunGoesOn)
{
    sim::Terminal terminal(options());
    execute("DROP TABLE cfg");
    RawClient client(terminal.address());
    client.sendSignal("config.sync.cfg", "");
    EXPECT_TRUE(terminal.waitForLog("settings could not be saved: " + file + ": "));
    EXPECT_TRUE(client.sync());
}

} // namespace
