// Counts the instructions of pieces of code, for programs that `run` starts under callgrind.
//
// Each counted piece is dumped under its own name: what is measured, beside what (empty for the product
// itself), and how large it is (0 where nothing grows). Only the calling thread counts. Exact, and the same
// in every run but for addresses and the clock. Outside of callgrind nothing is counted, and all runs just
// the same.
#ifndef TESTS_BENCH_COUNTED_H
#define TESTS_BENCH_COUNTED_H

#include <string>
#include <valgrind/callgrind.h>

namespace counted {

template <typename Function>
void once(const std::string& measure, const std::string& peer, int size, Function function)
{
    const std::string name = measure + "|" + peer + "|" + std::to_string(size);
    CALLGRIND_ZERO_STATS;
    function();
    CALLGRIND_DUMP_STATS_AT(name.c_str());
}

// The second call is the one that counts: what is bound, or cached, at the first call is there.
template <typename Function>
void warm(const std::string& measure, const std::string& peer, int size, Function function)
{
    function();
    once(measure, peer, size, function);
}

} // namespace counted

#endif
