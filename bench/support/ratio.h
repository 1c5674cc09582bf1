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

// The middle one; of an even number the mean of the two in the middle.
inline double Median(std::vector<double> values)
{
    std::ranges::sort(values);
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

// How many times as fast as `limit` the work `ours` is: the median over the rounds of time(limit) /
// time(ours). The two take turns, so that whatever else the machine does meets both; one round before the
// first warms both up.
//
// `prepare` is called before each, outside the time.
double MedianRatio(auto &&limit, auto &&ours, int rounds, auto &&prepare)
{
    const auto timeOf = [&prepare](auto &&work) {
        prepare();
        return TimeOf(work);
    };
    timeOf(limit);
    timeOf(ours);
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        const double limitTime = timeOf(limit);
        ratios.push_back(limitTime / timeOf(ours));
    }
    return Median(ratios);
}

double MedianRatio(auto &&limit, auto &&ours, int rounds)
{
    return MedianRatio(limit, ours, rounds, [] {});
}

} // namespace wb::bench
