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

} // namespace rows

#endif
