#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

/// The value in the middle; 0 of none.
inline double Median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Seconds that a function takes.
template <class Function>
double SecondsOf(Function &&function)
{
    const auto start = std::chrono::steady_clock::now();
    function();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// One side of a comparison.
struct Side {
    /// What a round times.
    std::function<void()> Work;
    /// Rows, files or the like that a round handles.
    std::size_t Items = 1;
    /// Done before each round, its time not taken.
    std::function<void()> Prepare = [] {};
};

/// Runs the floor and what is measured against it in turn, once each in every iteration, and reports the median of the
/// rounds: "ratio" (subject over floor in one round, an item over an item), the lowest and the highest of them,
/// "bound" (what the ratio must not exceed), and the microseconds of each for an item. The label says whether the
/// ratio keeps its bound.
inline void Compare(benchmark::State &state, double bound, const Side &floor, const Side &subject)
{
    const auto secondsPerItem = [](const Side &side) {
        side.Prepare();
        return SecondsOf(side.Work) / static_cast<double>(side.Items);
    };
    std::vector<double> ratios;
    std::vector<double> floors;
    std::vector<double> subjects;
    secondsPerItem(floor);
    secondsPerItem(subject);
    for ([[maybe_unused]] auto round : state) {
        floors.push_back(secondsPerItem(floor));
        subjects.push_back(secondsPerItem(subject));
        ratios.push_back(subjects.back() / floors.back());
        state.SetIterationTime(subjects.back() * static_cast<double>(subject.Items));
    }
    const double ratio = Median(ratios);
    state.counters["ratio"] = ratio;
    state.counters["ratio_min"] = *std::min_element(ratios.begin(), ratios.end());
    state.counters["ratio_max"] = *std::max_element(ratios.begin(), ratios.end());
    state.counters["bound"] = bound;
    state.counters["floor_us_per_item"] = Median(floors) * 1e6;
    state.counters["subject_us_per_item"] = Median(subjects) * 1e6;
    state.SetLabel(ratio > bound ? "OVER ITS BOUND" : "within its bound");
}

/// The same for two sides that handle the same items and need no preparation.
template <class Floor, class Subject>
void CompareInTurn(benchmark::State &state, std::size_t items, double bound, Floor &&floor, Subject &&subject)
{
    Compare(state, bound, {floor, items}, {subject, items});
}
