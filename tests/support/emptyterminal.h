// A terminal in whose database nothing is but what a test puts there.
#ifndef TESTS_SUPPORT_EMPTYTERMINAL_H
#define TESTS_SUPPORT_EMPTYTERMINAL_H

#include "sim/terminal.h"

inline sim::TerminalOptions emptyTerminal()
{
    sim::TerminalOptions options;
    options.initialValues = false;
    return options;
}

#endif
