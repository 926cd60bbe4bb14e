#pragma once

#include <cstdint>
#include <vector>

/// A list of numbers from which any place can be moved to the end, in time that hardly grows with its length: the
/// numbers stay in their slots, each move takes a new slot, and counts over blocks of slots find the n-th number.
class RankList
{
public:
    explicit RankList(const std::vector<int> &values);

    /// Moves the number at place (from 1) to the end and returns it. At most as many moves as there are numbers.
    int MoveToEnd(int place);
    std::vector<int> Values() const;

private:
    static constexpr std::size_t wordsPerBlock = 32;

    std::size_t SlotOf(int place) const;
    void Fill(std::size_t slot);

    std::vector<int> slots;
    /// One bit a slot: taken.
    std::vector<std::uint64_t> words;
    std::vector<std::uint8_t> wordCounts;
    std::vector<int> blockCounts;
};
