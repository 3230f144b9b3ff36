// What the sources of DatabaseBus share. For these only.
#ifndef SIM_DATABASE_BUS_IMPL_H
#define SIM_DATABASE_BUS_IMPL_H

#include "sim/database_bus.h"

namespace sim {

// One modifyv on its way: it is answered when every validator that it touches has been heard.
struct DatabaseBus::Validation {
    DatabaseBus* owner = nullptr;
    ReplyAddress requester;
    std::vector<Write> writes;
    std::vector<int32_t> statuses; // one for each write
    size_t open = 0;               // questions not answered yet
    fdloop_timer* timer = nullptr;
};

// What one validator was asked. It stays in the client's queue until that client answers, even if the time is
// over: answers carry no number, they come in the order of the questions.
struct DatabaseBus::Question {
    std::weak_ptr<Validation> validation; // empty once it is over
    std::vector<size_t> positions;        // in its writes
};

} // namespace sim

#endif
