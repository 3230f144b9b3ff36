// The form of a command, as its table and its help tell it, compared with words that somebody wrote:
//
//     KEY VALUE [within SECONDS]     words in capitals stand for one word of any kind,
//     on | off                       others for themselves; one of several
//     [N] PERCENT                    what may be left out
//     ID SEVERITY [FIELD=N ...]      "..." repeats what stands before it in the same brackets
//     [TEXT]                         TEXT is the rest of the line
//
// Plain functions without state; any thread.
#ifndef SIM_CONSOLE_COMMAND_FORM_H
#define SIM_CONSOLE_COMMAND_FORM_H

#include "sim/command_actor.h"

namespace sim {

// True if the arguments, without the command's name, have this form.
bool fitsForm(const char* form, const Words& arguments);

// What the form has behind these arguments, its words in capitals included; some may be there twice.
Words nextWords(const char* form, const Words& arguments);

// Whether some command takes these words, the first of which is its name. Empty, or why not, as "unknown
// command foo" or "usage: get KEY".
std::string checkCommand(const Words& words);

} // namespace sim

#endif
