// Compares two ways of doing the same work by their time.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

namespace wb::bench
{

// Wall time of one call, in seconds.
double TimeOf(auto &&work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// How many times as fast as `limit` the work `ours` is: the median over the rounds of time(limit) /
// time(ours). The two take turns, so that whatever else the machine does meets both; one round before the
// first warms both up.
double MedianRatio(auto &&limit, auto &&ours, int rounds)
{
    limit();
    ours();
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        const double limitTime = TimeOf(limit);
        ratios.push_back(limitTime / TimeOf(ours));
    }
    std::ranges::sort(ratios);
    const std::size_t middle = ratios.size() / 2;
    return ratios.size() % 2 == 1 ? ratios[middle] : (ratios[middle - 1] + ratios[middle]) / 2;
}

} // namespace wb::bench
