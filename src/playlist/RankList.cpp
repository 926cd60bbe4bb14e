#include "playlist/RankList.h"

namespace
{
constexpr std::size_t chunkSize = 1024;
}

RankList::RankList(const std::vector<int> &values)
{
    for (const int value : values)
        Append(value);
}

void RankList::Append(int value)
{
    if (chunks.empty() || chunks.back().size() == chunkSize)
        chunks.emplace_back().reserve(chunkSize);
    chunks.back().push_back(static_cast<std::uint16_t>(value));
}

int RankList::MoveToEnd(int place)
{
    auto left = static_cast<std::size_t>(place - 1);
    auto chunk = chunks.begin();
    while (left >= chunk->size())
        left -= (chunk++)->size();
    const auto found = chunk->begin() + static_cast<std::ptrdiff_t>(left);
    const int value = *found;
    chunk->erase(found);
    Append(value);
    return value;
}

std::vector<int> RankList::Values() const
{
    std::vector<int> values;
    for (const auto &chunk : chunks)
        values.insert(values.end(), chunk.begin(), chunk.end());
    return values;
}
