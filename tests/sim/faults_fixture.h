// A terminal without values whose faults are at hand, for the tests of what its clients get of them.
#ifndef TESTS_SIM_FAULTS_FIXTURE_H
#define TESTS_SIM_FAULTS_FIXTURE_H

#include "raw_client.h"

#include "sim/faults.h"
#include "support/emptyterminal.h"
#include "support/patience.h"

#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <thread>

using Clock = std::chrono::steady_clock;

inline int64_t since(Clock::time_point begin)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin).count();
}

class FaultsTest : public testing::Test {
protected:
    // Does something with the faults, on their thread.
    template <typename Function> void with(Function function)
    {
        terminal.onThread([&] { function(*terminal.faults()); });
    }
    std::vector<std::string> inForce()
    {
        std::vector<std::string> lines;
        with([&](sim::Faults& faults) { lines = faults.list(); });
        return lines;
    }
    // Waits until no fault is in force any more: what is over ends by itself.
    void waitUntilOver()
    {
        Clock::time_point begin = Clock::now();
        while (!inForce().empty() && since(begin) < PATIENCE_MS)
            std::this_thread::yield();
    }

    sim::Terminal terminal{emptyTerminal()};
};

#endif
