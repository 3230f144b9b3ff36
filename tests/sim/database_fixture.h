// An empty terminal, a client that writes its bytes by hand, and the pieces of the database's messages.
#ifndef TESTS_SIM_DATABASE_FIXTURE_H
#define TESTS_SIM_DATABASE_FIXTURE_H

#include "raw_client.h"

#include "sim/database.h"
#include "sim/terminal.h"
#include "support/emptyterminal.h"

#include <gtest/gtest.h>

// An entry of a value buffer, laid out by hand.
inline std::string entry(uint8_t type, int8_t status, const std::string& key, const std::string& value)
{
    std::string name = key + '\0';
    std::string bytes{static_cast<char>(type), static_cast<char>(status), 0, 0};
    name.resize((name.size() + 3) / 4 * 4);
    bytes +=
        word(static_cast<uint32_t>(name.size())) + word(static_cast<uint32_t>(value.size())) + name + value;
    bytes.resize((bytes.size() + 3) / 4 * 4);
    return bytes;
}

inline std::string status(int32_t value)
{
    return word(static_cast<uint32_t>(value));
}

class DatabaseBusTest : public testing::Test {
protected:
    static sim::TerminalOptions options()
    {
        sim::TerminalOptions options = emptyTerminal();
        options.validatorTimeout = 300;
        return options;
    }
    DatabaseBusTest() : terminal(options()), client(terminal.address()) {}

    std::string ask(const std::string& name, const std::string& data)
    {
        return client.ask(name, data).value_or("no answer");
    }
    std::string read(const std::string& key, uint32_t type, uint32_t size)
    {
        return ask("config.read." + key, status(-1) + word(type) + word(size));
    }
    void write(const std::string& key, uint32_t type, const std::string& value)
    {
        client.sendSignal("config.write." + key,
                          status(-1) + word(type) + word(static_cast<uint32_t>(value.size())) + value);
    }

    sim::Terminal terminal;
    RawClient client;
};

#endif
