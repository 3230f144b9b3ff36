// What a benchmark has found, as a line that `run` takes for the one table of all.
#ifndef TESTS_BENCH_ROWS_H
#define TESTS_BENCH_ROWS_H

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace rows {

// What ours is compared with, in the same unit. The ratio of the values is taken where none was measured.
struct Peer {
    std::string name;
    double value;
    double ratio = 0; // ours to this one, as a median of pairs
};

inline void print(const std::string& measure, const std::string& unit, double ours,
                  const std::vector<Peer>& peers = {})
{
    std::printf("@row\t%s\t%s\t%.9g", measure.c_str(), unit.c_str(), ours);
    for (const Peer& peer : peers) {
        const double ratio = peer.ratio > 0 ? peer.ratio : peer.value > 0 ? ours / peer.value : 0;
        std::printf("\t%s\t%.9g\t%.6g", peer.name.c_str(), peer.value, ratio);
    }
    std::printf("\n");
}

inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

// The median of the ratios of each round.
inline double medianRatio(const std::vector<double>& ours, const std::vector<double>& theirs)
{
    std::vector<double> ratios;
    for (size_t round = 0; round < ours.size() && round < theirs.size(); ++round)
        ratios.push_back(ours[round] / theirs[round]);
    return median(ratios);
}

// One that takes part in a comparison: processor time of each round, in ns, and instructions, both for one
// turn.
struct Contender {
    std::string name;
    std::vector<double> times;
    double instructions;
};

// A table of them, and the rows of the first, which is ours, beside the others. The table's ratios are to the
// second, which is the floor.
inline void compare(const std::string& measure, const std::string& instructionsOf,
                    const std::vector<Contender>& contenders)
{
    const std::string heading = "instructions" + instructionsOf;
    std::printf("%-20s %14s %8s %36s\n", "", "processor ns", "ratio", heading.c_str());
    std::vector<Peer> byTime, byInstructions;
    const Contender &ours = contenders.at(0), &floor = contenders.at(1);
    for (const Contender& contender : contenders) {
        std::printf("%-20s %14.0f %8.2f %36.0f\n", contender.name.c_str(), median(contender.times),
                    medianRatio(contender.times, floor.times), contender.instructions);
        if (&contender == &ours)
            continue;
        byTime.push_back({contender.name, median(contender.times), medianRatio(ours.times, contender.times)});
        byInstructions.push_back({contender.name, contender.instructions});
    }
    print(measure, "processor ns", median(ours.times), byTime);
    print(measure, heading, ours.instructions, byInstructions);
}

} // namespace rows

#endif
