// A terminal with actors and a console on it, for the tests of consoles.
#ifndef TESTS_SIM_CONSOLE_FIXTURE_H
#define TESTS_SIM_CONSOLE_FIXTURE_H

#include "console_session.h"
#include "support/emptyterminal.h"

inline sim::TerminalOptions acting()
{
    sim::TerminalOptions options;
    options.actors = true;
    options.speed = 100;
    return options;
}

class ConsoleTest : public testing::Test {
protected:
    sim::Terminal terminal{acting()};
    sim::Desk desk{terminal, terminal.loop()};
    ConsoleSession session{desk};
};

#endif
