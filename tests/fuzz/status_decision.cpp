// Fuzz target: the decision which status text the state of the terminal comes down to. The input is one state
// after the other, each of STATE_BYTES bytes; the decision is compared with the table of rules, walked once
// more here in its own order and words.
//
// Rules that only hold if a value changes during the walk cannot decide here.
// No legal end.
#include "fuzz/qttarget.h"

using fuzz::check;

namespace {

const int STATE_BYTES = 12;

// The values that the rules look at.
struct State {
    int system, sim, plmn, pointing, cs, ps, sessions, bonding;
    bool external, hidden, closed;
};

// The interesting values often, any other now and then.
int valueOf(fuzz::Input& input, int lowest, int count)
{
    const int byte = static_cast<signed char>(input.byte());
    return byte < -100 ? byte : lowest + (byte & 0x7f) % count;
}

State stateOf(fuzz::Input& input)
{
    State state;
    state.system = valueOf(input, 8, 4);
    const int switches = input.byte();
    state.external = (switches & 7) == 7;
    state.hidden = switches & 8;
    state.closed = (switches & 0x30) == 0x30;
    state.bonding = (switches & 0xc0) == 0xc0 ? 2 : (switches & 0x80) ? 1 : 0;
    state.sessions = valueOf(input, -1, 4);
    state.sim = valueOf(input, -4, 10);
    state.plmn = valueOf(input, 0, 8);
    state.pointing = valueOf(input, -1, 4);
    state.cs = valueOf(input, 0, 9);
    state.ps = valueOf(input, 0, 9);
    for (int spare = 0; spare < STATE_BYTES - 8; ++spare)
        input.byte();
    return state;
}

int decided(const State& s)
{
    if (s.system <= 9)
        return 9;
    if (s.external)
        return 14;
    if (s.bonding == 2)
        return 15;
    if (s.sessions == 1 || s.sessions == 2)
        return 16;
    switch (s.sim) {
    case -3:
        return 2;
    case -2:
    case -1:
        return 3;
    case 0:
        return 1;
    case 2:
        return 6;
    case 4:
        return 5;
    case 1:
        return 7;
    }
    if (s.plmn == 6)
        return 0;
    if (s.pointing == 0 && !s.hidden)
        return 8;
    if (s.closed)
        return 17;
    if (s.pointing == -1)
        return 9;
    if (s.plmn == 1 && s.hidden)
        return 13;
    if (s.plmn == 1 || s.plmn == 2 || s.plmn == 3 || s.plmn == 5)
        return 10;
    if (s.plmn != 4)
        return 0;
    if (s.cs == 3 || s.ps == 3)
        return 12;
    if (s.cs == 2 || s.ps == 2)
        return 11;
    return s.cs == 6 && s.ps == 6 ? 4 : 10;
}

void bring(StatusUpdater& model, const State& state)
{
    model.setExtendedSystemStatus(state.system);
    model.setControlledByATCommands(state.external);
    model.setBondingEnabled(state.bonding != 0);
    model.setDhcpClientMode(state.bonding == 2);
    bundle_t session;
    session.status = static_cast<BUNDLE_STATUS>(state.sessions);
    Access::activeConnectionsAndBundles() = QList<bundle_t>() << session;
    Access::simStatus() = state.sim;
    Access::plmnStatus() = state.plmn;
    model.setPointingMode(static_cast<ENUM_POINTED_STATUS>(state.pointing));
    Access::umtsCsStatus() = state.cs;
    Access::umtsPsStatus() = state.ps;
    if (state.hidden)
        model.startHidePointNowText();
    else
        model.stopHidePointNowText();
    fmmi_evt_t event;
    event.identifier = 66053;
    Access::systemEvents() = state.closed ? QList<fmmi_evt_t>() << event : QList<fmmi_evt_t>();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::startQt();
    fuzz::freshModel();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    StatusUpdater& model = Access::model();
    fuzz::Input input(data, size);
    do {
        const State state = stateOf(input);
        fuzz::survives(
            [&] {
                bring(model, state);
                model.updateCurrentStatusTextId();
                check(model.getCurrentStatusTextId() == decided(state), "another text");
                model.getStatusText();
            },
            {});
    } while (!input.empty());
    return 0;
}
