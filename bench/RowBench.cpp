#include "BenchRows.h"
#include "BenchSupport.h"

#include "playlist/RowCommands.h"
#include "playlist/Sorting.h"

#include <numeric>

using namespace Qt::StringLiterals;

// The commands on rows, with every second row selected, over what a bare vector of the same rows takes.

namespace
{
using Rows = std::vector<PlaylistItem>;

/// A grid, the rows it starts each round with, and bare rows for the floor.
struct RowSet {
    explicit RowSet(int count)
    {
        Shown.Append(BenchRecords(count));
        // Neither the first nor the last row, so that both moves have work to do.
        Shown.Reselect([&](int row, const PlaylistItem &) { return row % 2 == 0 && row < count; });
        Shown.UpdateIcons([number = 0](PlaylistItem &item) mutable {
            if (++number % 5 == 0 && item.SmallIcon != IconMissing)
                item.SmallIcon = IconBlue;
        });
        Start = Shown.RowsForSelection();
        // Each selected row exchanges its place with the one before it.
        Order.resize(Start.size());
        std::iota(Order.begin(), Order.end(), 1);
        for (std::size_t i = 1; i < Order.size(); i += 2)
            std::swap(Order[i - 1], Order[i]);
    }

    void ResetGrid() { Shown.RowsForSelection() = Start; }
    void ResetBare() { Bare = Start; }

    Grid Shown;
    Rows Start;
    Rows Bare;
    std::vector<int> Order;
};

RowSet &SetOf(int count)
{
    static RowSet full(FullList);
    static RowSet part(ShortList);
    return count == FullList ? full : part;
}

void ThreePasses(RowSet &set)
{
    for (int pass = 0; pass < 3; ++pass) {
        for (PlaylistItem &item : set.Bare)
            item.Selected = !item.Selected;
        benchmark::ClobberMemory();
    }
}

void Compaction(RowSet &set)
{
    std::erase_if(set.Bare, [](const PlaylistItem &item) { return item.Selected; });
}

void TopPartition(RowSet &set)
{
    std::stable_partition(set.Bare.begin(), set.Bare.end(), [](const PlaylistItem &item) { return item.Selected; });
}

void BottomPartition(RowSet &set)
{
    std::stable_partition(set.Bare.begin(), set.Bare.end(), [](const PlaylistItem &item) { return !item.Selected; });
}

void Permutation(RowSet &set)
{
    Rows arranged;
    arranged.reserve(set.Bare.size());
    for (const int row : set.Order)
        arranged.push_back(std::move(set.Bare[static_cast<std::size_t>(row - 1)]));
    set.Bare = std::move(arranged);
}

const Clock &HostClock()
{
    static const Clock clock = HeadlessHost(u"bench"_s).Clock;
    return clock;
}

/// What the clock takes for the draws that a command owes to so many rows, each after a reseeding.
void DrawForRows(std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        HostClock().Reseed();
        benchmark::DoNotOptimize(HostClock().Random());
    }
}

void ThreePassesAndDraws(RowSet &set)
{
    ThreePasses(set);
    DrawForRows(set.Bare.size());
}

/// Half of the rows are shuffled.
void PermutationAndDraws(RowSet &set)
{
    Permutation(set);
    DrawForRows(set.Bare.size() / 2);
}

struct RowCommand {
    const char *Name;
    double Bound;
    void (*Floor)(RowSet &set);
    void (*Work)(RowSet &set);
};

const RowCommand commands[] = {
    {"SelectAll", 2, ThreePasses, [](RowSet &set) { SelectAll(set.Shown); }},
    {"SelectNone", 2, ThreePasses, [](RowSet &set) { SelectNone(set.Shown); }},
    {"InvertSelection", 2, ThreePasses, [](RowSet &set) { InvertSelection(set.Shown); }},
    {"AlternateSelection", 2, ThreePasses, [](RowSet &set) { AlternateSelection(set.Shown); }},
    {"RandomSelection", 2, ThreePassesAndDraws, [](RowSet &set) { RandomSelection(set.Shown, HostClock()); }},
    {"SelectInFolder", 2, ThreePasses, [](RowSet &set) { SelectInFolder(set.Shown); }},
    {"SelectCheckMarked", 2, ThreePasses, [](RowSet &set) { SelectCheckMarked(set.Shown); }},
    {"SetCheckMark", 2, ThreePasses, [](RowSet &set) { SetCheckMark(set.Shown, IconGreen); }},
    {"Remove", 1.5, Compaction,
     [](RowSet &set) { set.Shown.RemoveIf([](const PlaylistItem &item) { return item.Selected; }); }},
    {"MoveToTop", 1.5, TopPartition, [](RowSet &set) { MoveToTop(set.Shown); }},
    {"MoveToBottom", 1.5, BottomPartition, [](RowSet &set) { MoveToBottom(set.Shown); }},
    {"MoveUp", 2, Permutation, [](RowSet &set) { MoveUp(set.Shown); }},
    {"MoveDown", 2, Permutation, [](RowSet &set) { MoveDown(set.Shown); }},
    {"ShuffleSelection", 2, PermutationAndDraws, [](RowSet &set) { ShuffleSelection(set.Shown, HostClock()); }},
};

Side CommandOn(RowSet &set, const RowCommand &command)
{
    return {[&set, &command] { command.Work(set); }, set.Start.size(), [&set] { set.ResetGrid(); }};
}

void Restart(RowSet &set)
{
    set.Shown.Steps().End();
    set.ResetGrid();
    set.Shown.SortKey = -1;
}

void Keep(RowSet &set, void (*work)(RowSet &set))
{
    set.Shown.Steps().Open();
    work(set);
    set.Shown.CloseStep({}, false);
}

void OverFloor(benchmark::State &state, const RowCommand &command)
{
    RowSet &set = SetOf(FullList);
    const Side floor{[&] { command.Floor(set); }, set.Start.size(), [&] { set.ResetBare(); }};
    Compare(state, command.Bound, floor, CommandOn(set, command));
}

void Growth(benchmark::State &state, const RowCommand &command)
{
    Compare(state, 1.3, CommandOn(SetOf(ShortList), command), CommandOn(SetOf(FullList), command));
}

/// A command whose step is kept, over the same without.
void WithStep(benchmark::State &state, const RowCommand &command)
{
    RowSet &set = SetOf(FullList);
    const Side kept{[&] { Keep(set, command.Work); }, set.Start.size(), [&] { Restart(set); }};
    const Side plain{[&] { command.Work(set); }, set.Start.size(), [&] { Restart(set); }};
    Compare(state, 1.3, plain, kept);
}

/// Undo, or Redo, over a bare copy of the rows.
void Back(benchmark::State &state, void (*work)(RowSet &set), bool again)
{
    RowSet &set = SetOf(FullList);
    const Side floor{[&] { Rows(set.Start).swap(set.Bare); }, set.Start.size(), [&] { set.Bare.clear(); }};
    bool dirty = false;
    const auto prepare = [&] {
        Restart(set);
        Keep(set, work);
        if (again)
            set.Shown.Undo(dirty);
    };
    const auto turn = [&] { again ? set.Shown.Redo(dirty) : set.Shown.Undo(dirty); };
    Compare(state, 2, floor, {turn, set.Start.size(), prepare});
}

/// Rows dragged to the middle, over Move to Top.
void DragOverTop(benchmark::State &state)
{
    RowSet &set = SetOf(FullList);
    const auto reset = [&] { set.ResetGrid(); };
    Compare(state, 1.2, {[&] { MoveToTop(set.Shown); }, set.Start.size(), reset},
            {[&] { MoveTo(set.Shown, FullList / 2); }, set.Start.size(), reset});
}

[[maybe_unused]] const bool registered = [] {
    benchmark::RegisterBenchmark("DragOverTop", DragOverTop)->UseManualTime();
    const std::pair<const char *, void (*)(RowSet &)> turned[] = {
        {"Remove", [](RowSet &set) { set.Shown.RemoveIf([](const PlaylistItem &item) { return item.Selected; }); }},
        {"Sort", [](RowSet &set) { SortGrid(set.Shown, ColumnFileName, SortText); }},
        {"Shuffle", [](RowSet &set) { ShuffleSelection(set.Shown, HostClock()); }},
    };
    for (const auto &[name, work] : turned) {
        benchmark::RegisterBenchmark((std::string(name) + "/Undo").c_str(), Back, work, false)->UseManualTime();
        benchmark::RegisterBenchmark((std::string(name) + "/Redo").c_str(), Back, work, true)->UseManualTime();
    }
    for (const RowCommand &command : commands) {
        const std::string name = command.Name;
        benchmark::RegisterBenchmark((name + "/OverFloor").c_str(), OverFloor, command)->UseManualTime();
        benchmark::RegisterBenchmark((name + "/Growth").c_str(), Growth, command)->UseManualTime();
        if (!name.starts_with("Select") && !name.ends_with("Selection"))
            benchmark::RegisterBenchmark((name + "/WithStep").c_str(), WithStep, command)->UseManualTime();
    }
    return true;
}();
} // namespace
