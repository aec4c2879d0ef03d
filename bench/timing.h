#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace varnhold::bench {

inline double milliseconds(std::chrono::steady_clock::duration duration) {
    return std::chrono::duration<double, std::milli>(duration).count();
}

inline double timed(const std::function<void()>& work) {
    const auto began = std::chrono::steady_clock::now();
    work();
    return milliseconds(std::chrono::steady_clock::now() - began);
}

// A line that budgets.py reads: what it was, the median and the worst, in milliseconds.
inline void report(const std::string& what, std::vector<double> times) {
    std::sort(times.begin(), times.end());
    std::printf("%s\t%.4f\t%.4f\n", what.c_str(), times[times.size() / 2], times.back());
}

} // namespace varnhold::bench
