#include "playlist/RankList.h"

#include <bit>

RankList::RankList(const std::vector<int> &values) : slots(values)
{
    words.resize(values.size() * 2 / 64 + 1);
    wordCounts.resize(words.size());
    blockCounts.resize(words.size() / wordsPerBlock + 1);
    slots.reserve(values.size() * 2);
    for (std::size_t slot = 0; slot < values.size(); ++slot)
        Fill(slot);
}

void RankList::Fill(std::size_t slot)
{
    words[slot / 64] |= std::uint64_t{1} << (slot % 64);
    ++wordCounts[slot / 64];
    ++blockCounts[slot / 64 / wordsPerBlock];
}

std::size_t RankList::SlotOf(int place) const
{
    int left = place - 1;
    std::size_t block = 0;
    while (left >= blockCounts[block])
        left -= blockCounts[block++];
    std::size_t word = block * wordsPerBlock;
    while (left >= wordCounts[word])
        left -= wordCounts[word++];
    std::uint64_t bits = words[word];
    for (; left > 0; --left)
        bits &= bits - 1;
    return word * 64 + static_cast<std::size_t>(std::countr_zero(bits));
}

int RankList::MoveToEnd(int place)
{
    const std::size_t slot = SlotOf(place);
    words[slot / 64] &= ~(std::uint64_t{1} << (slot % 64));
    --wordCounts[slot / 64];
    --blockCounts[slot / 64 / wordsPerBlock];
    const int value = slots[slot];
    slots.push_back(value);
    Fill(slots.size() - 1);
    return value;
}

std::vector<int> RankList::Values() const
{
    std::vector<int> values;
    for (std::size_t slot = 0; slot < slots.size(); ++slot) {
        if (words[slot / 64] >> (slot % 64) & 1)
            values.push_back(slots[slot]);
    }
    return values;
}
