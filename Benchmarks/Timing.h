// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

/// Seconds of one call of `work`, over `times` calls.
template <typename Work>
double SecondsOf(int times, Work work)
{
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < times; ++i)
        work();
    const auto end = std::chrono::steady_clock::now();
    return std::chrono::duration<double>(end - begin).count() / times;
}

/// The middle value; the upper one of two. `values` is not empty.
inline double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}
