#pragma once

#include "playlist/FileRecord.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>

#include <algorithm>
#include <array>
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

/// The state of a row, as its small icon. Marks replace the normal icon and never the missing one.
enum SmallIcon : qint8 { IconNormal = 1, IconMissing, IconBlue, IconGreen, IconRed };

/// One row of the playlist: the path and the numbers; the texts of its columns are made when they are asked for.
struct PlaylistItem {
    /// The file's name with extension, without folder.
    QString Text;
    /// The folder, always ending in a backslash.
    QString Folder;
    /// The folder's place in the grid's pool of texts: the same for the same folder, and for no other.
    quint32 FolderNumber = 0;
    /// Bytes; 0 for a missing row.
    qint64 Size = 0;
    /// Whole seconds.
    qint32 Length = 0;
    /// ID, Layer, Bitrate, Samplerate and Mode, as places in the grid's pool of texts.
    std::array<quint32, 5> StreamTexts{};
    /// The row's index at the moment it was added.
    qint16 OriginalOrder = 0;
    enum SmallIcon SmallIcon = IconNormal;
    /// Shown dimmed: exactly for a row added as missing.
    bool Ghosted = false;
    bool Selected = false;
    /// What Selected was before the Shift or drag gesture that is open; else the same as Selected.
    bool SelectedBefore = false;

    QString FullPath() const { return Folder + Text; }
    /// A missing row has no values beyond its path: its columns 5 to 12 are empty.
    bool Measured() const { return Size != 0; }
};

/// Raised by whatever would add row 32,768; the rows that fit have been added.
class PlaylistFull : public std::runtime_error
{
public:
    PlaylistFull();
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
    /// The same for count rows that are made of recordOf(i), i from 0, as far as they fit. They are added all at once,
    /// after the last record has been asked for.
    template <typename RecordOf>
    void Append(std::size_t count, RecordOf recordOf);
    /// Puts a new row with each record, selected or not, in place of the row of the number beside it. Rows that do not
    /// exist are passed over.
    void Replace(const std::vector<std::pair<int, FileRecord>> &records, bool selected);
    /// Gives rows the names beside their numbers.
    void Rename(const std::vector<std::pair<int, QString>> &names);
    void Clear();
    /// Removes the rows for which drop(const PlaylistItem &) holds and returns how many went.
    template <typename Drop>
    int RemoveIf(Drop drop);
    /// Puts the rows into a new order: order[i] is the present row (from 1) of the row that will be i + 1. The focus
    /// follows its row.
    void Rearrange(const std::vector<int> &order);

    /// Sets each row's Selected to choose(row, const PlaylistItem &), rows in order.
    template <typename Choose>
    void Reselect(Choose choose);
    /// Lets change(PlaylistItem &) change icons of rows, in order.
    template <typename Change>
    void UpdateIcons(Change change);
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

private:
    PlaylistItem MakeItem(const FileRecord &record, int index);
    quint32 Pooled(const QString &text);
    void AppendItems(std::vector<PlaylistItem> items);

    std::vector<PlaylistItem> rows;
    std::vector<QString> pool;
    QHash<QString, quint32> poolPlaces;
    /// Folder, and stream texts, of the row made last.
    quint32 lastFolder = 0;
    std::array<quint32, 5> lastTexts{};
    int focusedRow = 0;
};

template <typename RecordOf>
void Grid::Append(std::size_t count, RecordOf recordOf)
{
    const std::size_t fitting = std::min(count, static_cast<std::size_t>(MaxRows - Count()));
    std::vector<PlaylistItem> items;
    items.reserve(fitting);
    for (std::size_t i = 0; i < fitting; ++i)
        items.push_back(MakeItem(recordOf(i), Count() + static_cast<int>(i) + 1));
    AppendItems(std::move(items));
    if (fitting < count)
        throw PlaylistFull();
}

template <typename Drop>
int Grid::RemoveIf(Drop drop)
{
    int focusAfter = 0;
    int kept = 0;
    for (int row = 1; row <= Count(); ++row) {
        kept += drop(Item(row)) ? 0 : 1;
        if (row == focusedRow)
            focusAfter = kept;
    }
    const int removed = Count() - kept;
    if (removed == 0)
        return 0;
    beginResetModel();
    std::erase_if(rows, drop);
    focusedRow = 0;
    endResetModel();
    SetFocusedRow(focusAfter == 0 && kept > 0 ? 1 : focusAfter);
    return removed;
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
    for (PlaylistItem &item : rows)
        change(item);
    if (!rows.empty())
        Q_EMIT dataChanged(index(0, 0), index(Count() - 1, 0), {Qt::DecorationRole});
}
