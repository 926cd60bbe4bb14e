#pragma once

#include <cstdint>
#include <vector>

/// A list of row numbers from which any place can be moved to the end. It is kept in chunks, so that a move shifts few
/// numbers however long the list is.
class RankList
{
public:
    explicit RankList(const std::vector<int> &values);

    /// Moves the number at place (from 1) to the end and returns it.
    int MoveToEnd(int place);
    std::vector<int> Values() const;

private:
    void Append(int value);

    std::vector<std::vector<std::uint16_t>> chunks;
};
