// Why a connection of the satellite network fails: causes by number and by name.
//
// Constants; any thread.
#ifndef SIM_BEHAVIOUR_CAUSES_H
#define SIM_BEHAVIOUR_CAUSES_H

#include <cstdint>
#include <string>
#include <vector>

namespace sim {

// Those that the terminal's own processes tell.
enum Cause : int32_t {
    CauseAutomaticFailed = 2,
    CauseConnectionFailed = 3,
    CauseConnectionLost = 4,
    CauseLanDisconnected = 7,
    CauseInsufficientResources = 0x1000001a,
    CauseMissingApn = 0x1000001b,
    CauseFilterSemantics = 0x1000002c,
    CauseFilterSyntax = 0x1000002d,
    CauseContextWithoutFilterExists = 0x1000002e,
    CauseAttachTimeout = 0x10040002,
    CauseAttachRejected = 0x10040003,
    CausePowerDown = 0x10040102,
    CauseDomainBlocked = 0x10051003,
    CauseMissingPin = 0x10051004,
    CauseDeregistered = 0x1008631e,
};

// A cause for which the display has words, and these words; for the terminal's own ones the event's name.
struct NamedCause {
    int32_t cause;
    const char* name;
};
// In ascending order.
const std::vector<NamedCause>& namedCauses();

// A number above 0, as 0x1000001d, or one of the names in any case ("Normal deactivation" has two causes: the
// first). False if the text is neither.
bool parseCause(const std::string& text, int32_t* cause);

} // namespace sim

#endif
