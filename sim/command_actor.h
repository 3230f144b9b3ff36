// Processes of the terminal that the person at the desk can talk to. A command is a text in a key of its own,
// "ram.desk." and the actor's name; it is carried out as soon as it is written and then deleted, so that the
// same one can be given again. Whether it could be carried out stands in "ram.desk.error".
//
// On the thread of the loop only.
#ifndef SIM_COMMAND_ACTOR_H
#define SIM_COMMAND_ACTOR_H

#include "sim/behaviour.h"

#include <string>
#include <vector>

namespace sim {

// The key of a command, without the actor's name.
extern const char CommandPrefix[];
// Why the last command was refused, "name: reason" in one line; absent after one that was carried out.
extern const char CommandError[];

using Words = std::vector<std::string>;

class CommandActor : public Actor {
public:
    CommandActor(const Surroundings& surroundings, const std::string& name);

    // A command may stand among the initial values.
    void start() override { takeCommand(); }
    void onChange(const std::string& key) override
    {
        if (key == command)
            takeCommand();
    }

protected:
    // The words between blanks, at least one. Returns an empty text, or why nothing was done.
    virtual std::string carryOut(const Words& words) = 0;

private:
    void takeCommand();

    std::string name;
    std::string command;
};

// Gives a command to another process, as a person would, without touching what stands in CommandError.
// Returns why it was refused, or an empty text.
std::string giveCommand(const Surroundings& surroundings, const std::string& name, const std::string& words);

// A number in decimal, or hexadecimal after 0x; false if it is none or lies outside.
bool parseNumber(const std::string& text, int64_t low, int64_t high, int64_t* number);
// The words from one on, with single blanks between them.
std::string joined(const Words& words, size_t first);

// One form of a command, for help texts: the actor's name, the words behind it, what it does.
struct CommandForm {
    const char* name;
    const char* words;
    const char* help;
};
const std::vector<CommandForm>& commandForms();

} // namespace sim

#endif
