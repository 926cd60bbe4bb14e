#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
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

/// Runs the floor and what is measured against it in turn, once each in every iteration, and reports the median of the
/// rounds: "ratio" (subject over floor in one round), "bound" (what the ratio must not exceed), and the microseconds
/// of each for one of the items that a round handles. The label says whether the ratio keeps its bound.
template <class Floor, class Subject>
void CompareInTurn(benchmark::State &state, std::size_t items, double bound, Floor &&floor, Subject &&subject)
{
    std::vector<double> ratios;
    std::vector<double> floors;
    std::vector<double> subjects;
    floor();
    subject();
    for ([[maybe_unused]] auto round : state) {
        floors.push_back(SecondsOf(floor));
        subjects.push_back(SecondsOf(subject));
        ratios.push_back(subjects.back() / floors.back());
        state.SetIterationTime(subjects.back());
    }
    const double perItem = 1e6 / static_cast<double>(items);
    state.counters["ratio"] = Median(ratios);
    state.counters["bound"] = bound;
    state.counters["floor_us_per_item"] = Median(floors) * perItem;
    state.counters["subject_us_per_item"] = Median(subjects) * perItem;
    state.SetLabel(Median(ratios) > bound ? "OVER ITS BOUND" : "within its bound");
}
