#pragma once

#include "playlist/PlaylistItem.h"

#include <deque>
#include <vector>

using PlaylistItems = std::vector<PlaylistItem>;
/// Row numbers, from 1.
using RowNumbers = std::vector<qint16>;

/// One change of the rows, kept so that it can be turned round; that makes it its own opposite.
struct RowChange {
    enum ChangeKind : quint8 {
        /// Rows came into another order: for each row, the one it was before.
        Order,
        /// Rows have gone (ascending numbers); they are in Items.
        Removal,
        /// Rows have come (ascending numbers).
        Addition,
        /// Rows have been replaced; what stood there is in Items.
        Replacement,
    };
    ChangeKind Kind;
    RowNumbers Rows;
    PlaylistItems Items{};
};

/// Takes rows (ascending numbers) out.
PlaylistItems TakeOut(PlaylistItems &rows, const RowNumbers &places);
/// Puts the rows into the order: for each row, the number of the one that shall be there.
void PutInOrder(PlaylistItems &rows, const RowNumbers &order);

/// What a list is besides its rows.
struct GridState {
    /// Icon and selection of each row, a byte for each.
    std::vector<quint8> Flags;
    int FocusedRow = 0;
    int SortKey = -1;
    int SortOrder = 0;
    int SortedColumn = 0;
};
quint8 FlagOf(const PlaylistItem &item);
std::vector<quint8> FlagsOf(const PlaylistItems &rows);
void SetFlags(PlaylistItems &rows, const std::vector<quint8> &flags);

/// What leads from the list as it is to the list as it was before a command, or after it.
struct HistoryStep {
    /// What the command did, as "Remove 12 items".
    QString Name;
    /// Of the list on the other side of the step.
    GridState State;
    /// The list on the other side of the step is not as its file has it.
    bool Dirty = false;
    /// In the order in which they happened, seen from the other side.
    std::vector<RowChange> Changes{};

    /// Turns the changes of the rows round; state and Dirty are the caller's.
    void Turn(PlaylistItems &rows);
    /// Rows that the changes have added, less those that they have removed.
    int CountAdded() const;
    /// Memory held, in bytes.
    std::size_t Bytes() const;
};

/// The steps by which a list can go back and forth. The oldest are forgotten when there are too many, or when they
/// take too much memory.
class History
{
public:
    static constexpr std::size_t MaxSteps = 100;
    static constexpr std::size_t MaxBytes = std::size_t{64} << 20;

    /// What changes from here on is one step, until it is closed.
    void Open();
    /// Keeps the open step, if anything has changed; dirty is what the list was before.
    void Close(const QString &name, bool dirty);
    /// Forgets everything. Nothing more is kept until the next step is opened.
    void End();
    /// The list is now as its file has it, and is so on no other side of a step.
    void MarkSaved();

    /// For the rows: whether a change that comes now is kept, and whether it is the first one of its step. A change
    /// outside a step ends the history, since the steps would no longer fit.
    bool Keeps();
    bool NeedsState() const { return !open.HasState; }
    void SetState(GridState state);
    void Add(RowChange change);
    /// Icons leave no change behind but other flags.
    void NoteIcons(bool changed) { open.HasOtherIcons = open.HasOtherIcons || changed; }
    const HistoryStep &OpenStep() const { return open.Step; }
    std::size_t Bytes() const { return bytes; }

    /// The step that would be undone, or done again, next; none where there is none.
    HistoryStep *Undoable() { return undo.empty() ? nullptr : &undo.back().Step; }
    HistoryStep *Redoable() { return redo.empty() ? nullptr : &redo.back().Step; }
    /// After the next step has been turned round.
    void MoveUndone();
    void MoveRedone();

private:
    struct Kept {
        HistoryStep Step;
        std::size_t Bytes = 0;
    };
    using Steps = std::deque<Kept>;

    void Keep(Steps &steps, HistoryStep step);
    void Forget(Steps &steps);
    void Move(Steps &from, Steps &to);

    struct {
        HistoryStep Step;
        bool IsOpen = false;
        bool HasState = false;
        bool HasOtherIcons = false;
    } open;
    Steps undo;
    Steps redo;
    /// Of all steps.
    std::size_t bytes = 0;
};
