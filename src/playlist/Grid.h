#pragma once

#include "playlist/FileRecord.h"
#include "playlist/History.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>

#include <algorithm>
#include <array>
#include <optional>
#include <stdexcept>
#include <vector>

/// The columns of a playlist, from 1.
enum Column {
    ColumnFileName = 1,
    ColumnTime,
    ColumnSize,
    ColumnPath,
    ColumnID,
    ColumnLayer,
    ColumnBitrate,
    ColumnSamplerate,
    ColumnMode,
    ColumnHiddenLen,
    ColumnHiddenSize,
    ColumnOriginalOrder,
};
inline constexpr int ColumnCount = ColumnOriginalOrder;

/// Raised by whatever would add row 32,768.
class PlaylistFull : public std::runtime_error
{
public:
    enum class Added { WhatFits, Nothing };
    explicit PlaylistFull(Added added = Added::WhatFits);
};

/// The one store of the playlist. Rows are addressed from 1. Whoever changes many rows goes through one of the bulk
/// operations, which tell the view once, at the end.
class Grid : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// Row numbers are 16-bit signed.
    static constexpr int MaxRows = 32767;

    explicit Grid(QObject *parent = nullptr);

    int Count() const { return static_cast<int>(rows.size()); }
    const PlaylistItem &Item(int row) const { return rows[static_cast<std::size_t>(row - 1)]; }
    /// The text of a cell, columns from 1, as tools and files see it.
    QString CellText(int row, int column) const;
    static QString Caption(int column);

    /// How many different texts the rows have had; numbers of folders lie below it.
    std::size_t PoolSize() const { return pool.size(); }

    /// Adds a row at the end (index below 1 or beyond the end) or at index, so that the rows from it on move down.
    /// Raises PlaylistFull.
    void Insert(const FileRecord &record, int index = 0);
    /// Adds rows at the end; raises PlaylistFull after adding those that fit.
    void Append(const std::vector<FileRecord> &records);
    /// The same for count rows that are made of recordOf(i), i from 0, as far as they fit and up to the first one
    /// without a record. They are added all at once, after the last record has been asked for.
    template <typename RecordOf>
    void Append(std::size_t count, RecordOf recordOf);
    /// Puts a new row with recordOf(i), i from 0, selected or not, in place of the row of each number. A row that does
    /// not exist is passed over, and one without a record stays. They are replaced all at once, after the last record
    /// has been asked for. Returns how many were.
    template <typename RecordOf>
    int Replace(const std::vector<int> &numbers, RecordOf recordOf, bool selected);
    /// Gives rows the names beside their numbers.
    void Rename(const std::vector<std::pair<int, QString>> &names);
    void Clear();
    /// Removes the rows for which drop(const PlaylistItem &) holds and returns how many went.
    template <typename Drop>
    int RemoveIf(Drop drop);
    /// Puts the rows into a new order: order[i] is the present row (from 1) of the row that will be i + 1. The focus
    /// follows its row.
    void Rearrange(const std::vector<int> &order);
    /// Adds each selected row once more, before a row or behind the last one; they are selected instead. Raises
    /// PlaylistFull, and then nothing has changed.
    void AddSelectedAgain(int before);

    /// Sets each row's Selected to choose(row, const PlaylistItem &), rows in order.
    template <typename Choose>
    void Reselect(Choose choose);
    /// Lets change(PlaylistItem &) change icons of rows, in order.
    template <typename Change>
    void UpdateIcons(Change change);
    /// What the rows can go back to. Every change above is kept in its open step.
    History &Steps() { return history; }
    const History &Steps() const { return history; }
    void CloseStep(const QString &name, bool dirty) { history.Close(name, dirty); }
    /// Takes back, or does again, one step with selection, marks, focus and what the rows are sorted by, exchanges
    /// dirty, and returns the step's name; empty when there is none.
    QString Undo(bool &dirty);
    QString Redo(bool &dirty);

    /// For the selection model: its steps on all rows, and the one message to the view afterwards.
    std::vector<PlaylistItem> &RowsForSelection() { return rows; }
    void TellSelection() { Q_EMIT SelectionChanged(); }

    /// The row with the focus; 0 for none.
    int FocusedRow() const { return focusedRow; }
    void SetFocusedRow(int row);

    /// Pixels, columns from 1; a hidden column has width 0.
    std::array<int, ColumnCount> ColumnWidths;
    /// 0-based column of the last sort, -1 before the first one.
    int SortKey = -1;
    /// 0 ascending, 1 descending.
    int SortOrder = 0;
    /// The column (from 1) that the rows are shown as sorted by; 0 once they have come into another order or new ones
    /// have come.
    int SortedColumn() const { return sortedColumn; }
    void SetSortedColumn(int column);
    /// The five small icons, in the order of SmallIcon.
    std::array<QIcon, 5> SmallIcons;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }

Q_SIGNALS:
    void SelectionChanged();
    void FocusMoved(int row);
    void SortedColumnChanged();

private:
    GridState State(std::vector<quint8> flags) const;
    /// What each change of rows or icons begins with: true when its step is kept, so that it must be added to it.
    bool BeginChange();
    /// The places that views keep go with their rows; see Rearrange.
    void MovePlacesKept(const std::vector<int> &order);
    void Turn(HistoryStep &step, bool &dirty);
    void RemoveRows(const RowNumbers &gone);
    PlaylistItem MakeItem(const FileRecord &record, int index);
    /// The place of a text in the pool, by one of the indexes of it.
    quint32 Pooled(const QString &text, QHash<QString, quint32> &places);
    void AppendItems(std::vector<PlaylistItem> items);
    int ReplaceItems(std::vector<std::pair<int, PlaylistItem>> &&items);

    std::vector<PlaylistItem> rows;
    History history;
    std::vector<QString> pool;
    /// The few stream texts have an index of their own, which stays quick among any number of folders.
    QHash<QString, quint32> folderPlaces;
    QHash<QString, quint32> textPlaces;
    /// Folder, and stream texts, of the row made last.
    quint32 lastFolder = 0;
    std::array<quint32, 5> lastTexts{};
    int focusedRow = 0;
    int sortedColumn = 0;
};

template <typename RecordOf>
void Grid::Append(std::size_t count, RecordOf recordOf)
{
    const std::size_t fitting = std::min(count, static_cast<std::size_t>(MaxRows - Count()));
    std::vector<PlaylistItem> items;
    items.reserve(fitting);
    while (items.size() < fitting) {
        const std::optional<FileRecord> record = recordOf(items.size());
        if (!record)
            break;
        items.push_back(MakeItem(*record, Count() + static_cast<int>(items.size()) + 1));
    }
    const bool full = items.size() == fitting && fitting < count;
    AppendItems(std::move(items));
    if (full)
        throw PlaylistFull();
}

template <typename RecordOf>
int Grid::Replace(const std::vector<int> &numbers, RecordOf recordOf, bool selected)
{
    std::vector<std::pair<int, PlaylistItem>> items;
    items.reserve(numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::optional<FileRecord> record = recordOf(i);
        if (!record || numbers[i] < 1 || numbers[i] > Count())
            continue;
        PlaylistItem &item = items.emplace_back(numbers[i], MakeItem(*record, numbers[i])).second;
        item.Selected = item.SelectedBefore = selected;
    }
    return ReplaceItems(std::move(items));
}

template <typename Drop>
int Grid::RemoveIf(Drop drop)
{
    RowNumbers gone;
    for (int row = 1; row <= Count(); ++row) {
        if (drop(Item(row)))
            gone.push_back(static_cast<qint16>(row));
    }
    if (!gone.empty())
        RemoveRows(gone);
    return static_cast<int>(gone.size());
}

template <typename Choose>
void Grid::Reselect(Choose choose)
{
    int row = 0;
    for (PlaylistItem &item : rows) {
        item.Selected = choose(++row, std::as_const(item));
        item.SelectedBefore = item.Selected;
    }
    TellSelection();
}

template <typename Change>
void Grid::UpdateIcons(Change change)
{
    // What the rows were is kept as they change: a second look at each would take as long as the change.
    std::vector<quint8> flags;
    const bool first = history.Keeps() && history.NeedsState();
    if (first)
        flags.reserve(rows.size());
    bool changed = false;
    for (PlaylistItem &item : rows) {
        const SmallIcon before = item.SmallIcon;
        if (first)
            flags.push_back(FlagOf(item));
        change(item);
        changed = changed || item.SmallIcon != before;
    }
    if (first)
        history.SetState(State(std::move(flags)));
    history.NoteIcons(changed);
    if (!rows.empty())
        Q_EMIT dataChanged(index(0, 0), index(Count() - 1, 0), {Qt::DecorationRole});
}
