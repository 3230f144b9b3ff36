// The shell's commands that run others: repeat, while, not, time and the group in brackets. The shell's own
// run them within one call, which a command that takes its time does not allow; here each is an object that
// is asked what comes next whenever a command has ended.
//
// On the terminal's thread only.
#ifndef SIM_CONSOLE_COMPOUND_H
#define SIM_CONSOLE_COMPOUND_H

#include "sim/console/console.h"

namespace sim {

class Compound {
public:
    virtual ~Compound() = default;
    // *status is that of the command that has ended, CommandDone at first. True: *command runs next. False:
    // it has ended, with *status.
    virtual bool next(int* status, Words* command) = 0;
};

// Whether the shell's command of this name runs others.
bool isCompound(const std::string& name);
// The compound that these words are, the name included; null if they are not those of the command.
std::unique_ptr<Compound> makeCompound(Console& console, const Words& words);

} // namespace sim

#endif
