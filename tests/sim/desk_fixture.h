// A terminal whose processes react, a hundred times faster than a real one, and that takes commands.
#ifndef TESTS_SIM_DESK_FIXTURE_H
#define TESTS_SIM_DESK_FIXTURE_H

#include "raw_client.h"

#include "sim/terminal.h"

#include <gmock/gmock.h>

// The values that a number takes, however short they stand, in the order in which clients are told of them.
class NumberLog {
public:
    NumberLog(sim::Terminal& terminal, const std::string& key) : key(key), watcher(terminal.address())
    {
        watcher.filter("config.change." + key.substr(0, key.find('.')));
        watcher.sync();
    }
    // Waits until it takes the last value; everything seen from the start or the last call, with that.
    std::vector<int32_t> until(int32_t last)
    {
        std::vector<int32_t> seen;
        while (seen.empty() || seen.back() != last) {
            auto change = watcher.readFrame();
            if (!change)
                break;
            // Key and value stand behind each other, the key's area being a multiple of 4.
            size_t at = change->data.find(key + '\0');
            if (at == std::string::npos)
                continue;
            int32_t value;
            memcpy(&value, change->data.data() + at + (key.size() + 4) / 4 * 4, sizeof value);
            seen.push_back(value);
        }
        return seen;
    }

private:
    std::string key;
    RawClient watcher;
};

class DeskTest : public testing::Test {
protected:
    static sim::TerminalOptions options(uint32_t speed = 100, bool moving = false)
    {
        sim::TerminalOptions options;
        options.actors = true;
        options.moving = moving;
        options.speed = speed;
        return options;
    }
    explicit DeskTest(uint32_t speed = 100, bool moving = false) : terminal(options(speed, moving)) {}

    // Gives a command; returns why it was refused, or an empty text.
    std::string command(const std::string& name, const std::string& text)
    {
        terminal.set("ram.desk." + name, text);
        EXPECT_FALSE(terminal.has("ram.desk." + name)) << "nobody took it";
        return terminal.getString("ram.desk.error").value_or("");
    }
    testing::AssertionResult becomes(const std::string& key, int32_t number)
    {
        return becomes(key, sim::Value::integer(number));
    }
    testing::AssertionResult becomes(const std::string& key, const char* text)
    {
        return becomes(key, sim::Value::text(text));
    }
    testing::AssertionResult becomes(const std::string& key, const sim::Value& value)
    {
        if (terminal.waitForValue(key, value))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << key << " did not";
    }
    testing::AssertionResult goes(const std::string& key)
    {
        if (terminal.waitForAbsence(key))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << key << " stayed";
    }
    // A command of the display's, as it sends it.
    void point(const std::string& text)
    {
        RawClient client(terminal.address());
        client.sendSignal("bp_ctrl.pointing", text + '\0');
        EXPECT_TRUE(client.sync());
    }

    sim::Terminal terminal;
};

#endif
