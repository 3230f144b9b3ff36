// Listeners by their numbers: what is told, and to whom. One that is called may take any of them away, itself
// included, and add others, which hear of what comes next.
//
// On the thread of whoever owns the map. Nothing blocks.
#ifndef SIM_LISTENERS_H
#define SIM_LISTENERS_H

#include <cstdint>
#include <map>
#include <vector>

namespace sim {

// Calls them in the order of their numbers.
template <typename Listener, typename... Told>
void tellListeners(const std::map<uint64_t, Listener>& listeners, const Told&... told)
{
    std::vector<uint64_t> numbers;
    for (const auto& entry : listeners)
        numbers.push_back(entry.first);
    for (uint64_t number : numbers) {
        auto found = listeners.find(number);
        if (found == listeners.end())
            continue;
        Listener listener = found->second; // the map's own may go while it runs
        listener(told...);
    }
}

} // namespace sim

#endif
