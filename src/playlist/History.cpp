#include "playlist/History.h"

#include <algorithm>
#include <utility>

namespace
{
auto At(PlaylistItems &rows, int number)
{
    return rows.begin() + (number - 1);
}

/// Puts items back where they were taken out.
void PutIn(PlaylistItems &rows, const RowNumbers &places, PlaylistItems items)
{
    auto source = static_cast<std::ptrdiff_t>(rows.size());
    rows.resize(rows.size() + items.size());
    auto target = rows.end();
    for (std::size_t i = places.size(); i-- > 0;) {
        const auto place = At(rows, places[i]);
        const auto behind = target - place - 1;
        target = std::move_backward(rows.begin() + source - behind, rows.begin() + source, target);
        source -= behind;
        *--target = std::move(items[i]);
    }
}

RowNumbers Inverse(const RowNumbers &order)
{
    RowNumbers inverse(order.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        inverse[static_cast<std::size_t>(order[i] - 1)] = static_cast<qint16>(i + 1);
    return inverse;
}

void Turn(RowChange &change, PlaylistItems &rows)
{
    switch (change.Kind) {
    case RowChange::Order:
        change.Rows = Inverse(change.Rows);
        PutInOrder(rows, change.Rows);
        break;
    case RowChange::Removal:
        PutIn(rows, change.Rows, std::exchange(change.Items, {}));
        change.Kind = RowChange::Addition;
        break;
    case RowChange::Addition:
        change.Items = TakeOut(rows, change.Rows);
        change.Kind = RowChange::Removal;
        break;
    case RowChange::Replacement:
        // A row may have been replaced twice.
        for (std::size_t i = change.Rows.size(); i-- > 0;)
            std::swap(*At(rows, change.Rows[i]), change.Items[i]);
        std::reverse(change.Rows.begin(), change.Rows.end());
        std::reverse(change.Items.begin(), change.Items.end());
        break;
    }
}

constexpr int selectedBit = 0x80;

SmallIcon IconOf(quint8 flag)
{
    return static_cast<SmallIcon>(flag & ~selectedBit);
}
} // namespace

PlaylistItems TakeOut(PlaylistItems &rows, const RowNumbers &places)
{
    PlaylistItems taken;
    if (places.empty())
        return taken;
    taken.reserve(places.size());
    auto kept = At(rows, places.front());
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto place = At(rows, places[i]);
        const auto next = i + 1 < places.size() ? At(rows, places[i + 1]) : rows.end();
        taken.push_back(std::move(*place));
        kept = std::move(place + 1, next, kept);
    }
    rows.erase(kept, rows.end());
    return taken;
}

void PutInOrder(PlaylistItems &rows, const RowNumbers &order)
{
    PlaylistItems arranged;
    arranged.reserve(rows.size());
    for (const int row : order)
        arranged.push_back(std::move(*At(rows, row)));
    rows = std::move(arranged);
}

quint8 FlagOf(const PlaylistItem &item)
{
    return static_cast<quint8>(item.SmallIcon | (item.Selected ? selectedBit : 0));
}

std::vector<quint8> FlagsOf(const PlaylistItems &rows)
{
    std::vector<quint8> flags(rows.size());
    std::transform(rows.begin(), rows.end(), flags.begin(), FlagOf);
    return flags;
}

void SetFlags(PlaylistItems &rows, const std::vector<quint8> &flags)
{
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i].SmallIcon = IconOf(flags[i]);
        rows[i].Selected = rows[i].SelectedBefore = (flags[i] & selectedBit) != 0;
    }
}

void HistoryStep::Turn(PlaylistItems &rows)
{
    std::reverse(Changes.begin(), Changes.end());
    for (RowChange &change : Changes)
        ::Turn(change, rows);
}

int HistoryStep::CountAdded() const
{
    std::ptrdiff_t added = 0;
    for (const RowChange &change : Changes) {
        const auto count = static_cast<std::ptrdiff_t>(change.Rows.size());
        added += change.Kind == RowChange::Addition ? count : change.Kind == RowChange::Removal ? -count : 0;
    }
    return static_cast<int>(added);
}

std::size_t HistoryStep::Bytes() const
{
    // What the memory takes to keep a text besides its characters.
    constexpr std::size_t overhead = 32;
    std::size_t bytes = sizeof(HistoryStep) + State.Flags.capacity();
    for (const RowChange &change : Changes) {
        bytes += sizeof(RowChange) + change.Rows.capacity() * sizeof(qint16);
        bytes += change.Items.capacity() * sizeof(PlaylistItem);
        // Folders are the grid's, and shared.
        for (const PlaylistItem &item : change.Items)
            bytes += overhead + static_cast<std::size_t>(item.Text.size()) * sizeof(QChar);
    }
    return bytes;
}

void History::Open()
{
    open = {};
    open.IsOpen = true;
}

void History::Close(const QString &name, bool dirty)
{
    if (open.HasState && (!open.Step.Changes.empty() || open.HasOtherIcons)) {
        open.Step.Name = name;
        open.Step.Dirty = dirty;
        while (!redo.empty())
            Forget(redo);
        Keep(undo, std::move(open.Step));
    }
    open = {};
}

void History::End()
{
    undo.clear();
    redo.clear();
    bytes = 0;
    open = {};
}

void History::MarkSaved()
{
    for (Steps *steps : {&undo, &redo}) {
        for (Kept &kept : *steps)
            kept.Step.Dirty = true;
    }
}

bool History::Keeps()
{
    if (!open.IsOpen)
        End();
    return open.IsOpen;
}

void History::SetState(GridState state)
{
    open.Step.State = std::move(state);
    open.HasState = true;
}

void History::Add(RowChange change)
{
    std::vector<RowChange> &changes = open.Step.Changes;
    // Rows that came one by one go as quickly as those that came at once.
    const bool follows = !changes.empty() && change.Kind == RowChange::Addition &&
                         changes.back().Kind == RowChange::Addition &&
                         changes.back().Rows.back() + 1 == change.Rows.front();
    if (follows)
        changes.back().Rows.insert(changes.back().Rows.end(), change.Rows.begin(), change.Rows.end());
    else
        changes.push_back(std::move(change));
}

void History::MoveUndone()
{
    Move(undo, redo);
}

void History::MoveRedone()
{
    Move(redo, undo);
}

void History::Keep(Steps &steps, HistoryStep step)
{
    const std::size_t held = step.Bytes();
    steps.push_back({std::move(step), held});
    bytes += held;
    while (bytes > MaxBytes || undo.size() + redo.size() > MaxSteps)
        Forget(undo.empty() ? redo : undo);
}

/// The step that is farthest away.
void History::Forget(Steps &steps)
{
    bytes -= steps.front().Bytes;
    steps.pop_front();
}

void History::Move(Steps &from, Steps &to)
{
    HistoryStep step = std::move(from.back().Step);
    bytes -= from.back().Bytes;
    from.pop_back();
    Keep(to, std::move(step));
}
