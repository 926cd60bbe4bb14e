#include "playlist/Grid.h"

#include "platform/Drives.h"
#include "text/FormatText.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <numeric>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
struct ColumnInfo {
    QStringView Caption;
    int Width;
    Qt::Alignment Alignment;
};

constexpr Qt::Alignment left = Qt::AlignLeft | Qt::AlignVCenter;
constexpr Qt::Alignment right = Qt::AlignRight | Qt::AlignVCenter;

constexpr std::array<ColumnInfo, ColumnCount> columns{{
    {u"FileName", 200, left},
    {u"Time", 60, right},
    {u"Size", 80, right},
    {u"Path", 650, left},
    {u"ID", 80, left},
    {u"Layer", 80, left},
    {u"Bitrate", 80, left},
    {u"Samplerate", 100, left},
    {u"Mode", 100, left},
    {u"HiddenLen", 0, left},
    {u"HiddenSize", 0, left},
    {u"Original Order", 50, left},
}};

/// Quicker than a comparison that can tell which text comes first.
bool IsSame(const QString &one, const QString &other)
{
    return one.size() == other.size() &&
           std::memcmp(one.constData(), other.constData(), static_cast<std::size_t>(one.size()) * sizeof(QChar)) == 0;
}

const ColumnInfo &Info(int column)
{
    return columns[static_cast<std::size_t>(column - 1)];
}

RowNumbers Numbers(int first, int count)
{
    RowNumbers numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), static_cast<qint16>(first));
    return numbers;
}
} // namespace

PlaylistFull::PlaylistFull(Added added)
    : std::runtime_error(added == Added::WhatFits
                             ? "The playlist is full: it holds 32767 items, and no more can be added.\n"
                               "The items that did not fit were left out."
                             : "The playlist holds 32767 items at most, and so many more do not fit.\n"
                               "None of them was added.")
{
}

Grid::Grid(QObject *parent)
    : QAbstractTableModel(parent), pool{QString()}, folderPlaces{{QString(), 0}}, textPlaces{{QString(), 0}}
{
    std::transform(columns.begin(), columns.end(), ColumnWidths.begin(),
                   [](const ColumnInfo &info) { return info.Width; });
}

QString Grid::Caption(int column)
{
    return Info(column).Caption.toString();
}

QString Grid::CellText(int row, int column) const
{
    const PlaylistItem &item = Item(row);
    switch (column) {
    case ColumnFileName:
        return item.Text;
    case ColumnTime:
        return FormatPlayTime(item.Length);
    case ColumnSize:
        return FormatFileSize(item.Size);
    case ColumnPath:
        return item.Folder;
    case ColumnHiddenLen:
        return item.Measured() ? QString::number(item.Length) : QString();
    case ColumnHiddenSize:
        return item.Measured() ? QString::number(item.Size) : QString();
    case ColumnOriginalOrder:
        return item.Measured() ? QString::number(item.OriginalOrder) : QString();
    default:
        return pool[item.StreamTexts[static_cast<std::size_t>(column - ColumnID)]];
    }
}

quint32 Grid::Pooled(const QString &text, QHash<QString, quint32> &places)
{
    const auto found = places.constFind(text);
    if (found != places.cend())
        return *found;
    const auto place = static_cast<quint32>(pool.size());
    pool.push_back(text);
    places.insert(text, place);
    return place;
}

PlaylistItem Grid::MakeItem(const FileRecord &record, int index)
{
    PlaylistItem item;
    item.Text = record.FileName;
    // Neighbours mostly share their folder and are of one kind.
    if (!IsSame(pool[lastFolder], record.Folder))
        lastFolder = Pooled(record.Folder, folderPlaces);
    item.FolderNumber = lastFolder;
    item.Folder = pool[lastFolder];
    if (record.Size == 0) {
        item.SmallIcon = IconMissing;
        item.Ghosted = true;
        return item;
    }
    item.Size = record.Size;
    item.Length = record.Length;
    const std::array texts{&record.FileType, &record.LayerText, &record.BitrateText, &record.SampleRateText,
                           &record.ModeText};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (!IsSame(pool[lastTexts[i]], *texts[i]))
            lastTexts[i] = Pooled(*texts[i], textPlaces);
    }
    item.StreamTexts = lastTexts;
    item.OriginalOrder = static_cast<qint16>(index);
    return item;
}

void Grid::Insert(const FileRecord &record, int index)
{
    if (Count() == MaxRows)
        throw PlaylistFull();
    const int row = index < 1 || index > Count() ? Count() + 1 : index;
    if (BeginChange())
        history.Add({RowChange::Addition, {static_cast<qint16>(row)}});
    beginInsertRows({}, row - 1, row - 1);
    rows.insert(rows.begin() + (row - 1), MakeItem(record, row));
    if (focusedRow >= row)
        ++focusedRow;
    endInsertRows();
    SetSortedColumn(0);
}

void Grid::Append(const std::vector<FileRecord> &records)
{
    Append(records.size(), [&records](std::size_t i) -> const FileRecord & { return records[i]; });
}

void Grid::AppendItems(std::vector<PlaylistItem> items)
{
    if (items.empty())
        return;
    if (BeginChange())
        history.Add({RowChange::Addition, Numbers(Count() + 1, static_cast<int>(items.size()))});
    beginInsertRows({}, Count(), Count() + static_cast<int>(items.size()) - 1);
    if (rows.empty())
        rows = std::move(items);
    else
        rows.insert(rows.end(), std::make_move_iterator(items.begin()), std::make_move_iterator(items.end()));
    endInsertRows();
    SetSortedColumn(0);
}

int Grid::ReplaceItems(std::vector<std::pair<int, PlaylistItem>> &&items)
{
    if (items.empty())
        return 0;
    const bool kept = BeginChange();
    RowChange change{RowChange::Replacement, {}};
    int first = MaxRows;
    int last = 0;
    for (auto &[row, item] : items) {
        std::swap(rows[static_cast<std::size_t>(row - 1)], item);
        if (kept) {
            change.Rows.push_back(static_cast<qint16>(row));
            change.Items.push_back(std::move(item));
        }
        first = std::min(first, row);
        last = std::max(last, row);
    }
    if (kept)
        history.Add(std::move(change));
    Q_EMIT dataChanged(index(first - 1, 0), index(last - 1, ColumnCount - 1));
    TellSelection();
    return static_cast<int>(items.size());
}

void Grid::Rename(const std::vector<std::pair<int, QString>> &names)
{
    if (names.empty())
        return;
    // The files do not go back.
    history.End();
    for (const auto &[row, name] : names)
        rows[static_cast<std::size_t>(row - 1)].Text = name;
    Q_EMIT dataChanged(index(0, 0), index(Count() - 1, 0));
}

void Grid::Clear()
{
    RemoveIf([](const PlaylistItem &) { return true; });
}

void Grid::RemoveRows(const RowNumbers &gone)
{
    const bool kept = BeginChange();
    const auto behindFocus = std::upper_bound(gone.begin(), gone.end(), focusedRow);
    const int focusAfter = focusedRow - static_cast<int>(behindFocus - gone.begin());
    beginResetModel();
    PlaylistItems items = TakeOut(rows, gone);
    focusedRow = 0;
    endResetModel();
    if (kept)
        history.Add({RowChange::Removal, gone, std::move(items)});
    if (rows.empty())
        SetSortedColumn(0);
    SetFocusedRow(std::max(focusAfter, 1));
}

void Grid::Rearrange(const std::vector<int> &order)
{
    const bool kept = BeginChange();
    if (std::is_sorted(order.begin(), order.end()))
        return;
    RowNumbers numbers(order.begin(), order.end());
    Q_EMIT layoutAboutToBeChanged();
    PutInOrder(rows, numbers);
    MovePlacesKept(order);
    const auto focus = std::find(order.begin(), order.end(), focusedRow);
    Q_EMIT layoutChanged();
    if (kept)
        history.Add({RowChange::Order, std::move(numbers)});
    SetSortedColumn(0);
    if (focus != order.end())
        SetFocusedRow(static_cast<int>(focus - order.begin()) + 1);
}

void Grid::MovePlacesKept(const std::vector<int> &order)
{
    const QModelIndexList kept = persistentIndexList();
    if (kept.isEmpty())
        return;
    std::vector<int> places(order.size() + 1);
    for (std::size_t place = 0; place < order.size(); ++place)
        places[static_cast<std::size_t>(order[place])] = static_cast<int>(place);
    QModelIndexList moved;
    for (const QModelIndex &each : kept)
        moved.append(index(places[static_cast<std::size_t>(each.row()) + 1], each.column()));
    changePersistentIndexList(kept, moved);
}

void Grid::AddSelectedAgain(int before)
{
    PlaylistItems copies;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(copies),
                 [](const PlaylistItem &item) { return item.Selected; });
    if (copies.empty())
        return;
    if (copies.size() > static_cast<std::size_t>(MaxRows - Count()))
        throw PlaylistFull(PlaylistFull::Added::Nothing);
    const int count = static_cast<int>(copies.size());
    if (BeginChange())
        history.Add({RowChange::Addition, Numbers(before, count)});
    for (PlaylistItem &item : rows)
        item.Selected = item.SelectedBefore = false;
    int row = before;
    for (PlaylistItem &item : copies) {
        item.OriginalOrder = static_cast<qint16>(row++);
        item.SmallIcon = item.Ghosted ? IconMissing : IconNormal;
    }
    beginInsertRows({}, before - 1, before + count - 2);
    rows.insert(rows.begin() + (before - 1), std::make_move_iterator(copies.begin()),
                std::make_move_iterator(copies.end()));
    focusedRow = 0;
    endInsertRows();
    SetSortedColumn(0);
    SetFocusedRow(before + count - 1);
    TellSelection();
}

GridState Grid::State(std::vector<quint8> flags) const
{
    return {std::move(flags), focusedRow, SortKey, SortOrder, sortedColumn};
}

bool Grid::BeginChange()
{
    const bool kept = history.Keeps();
    if (kept && history.NeedsState())
        history.SetState(State(FlagsOf(rows)));
    return kept;
}

void Grid::Turn(HistoryStep &step, bool &dirty)
{
    const GridState other = std::exchange(step.State, State(FlagsOf(rows)));
    beginResetModel();
    step.Turn(rows);
    SetFlags(rows, other.Flags);
    focusedRow = 0;
    SortKey = other.SortKey;
    SortOrder = other.SortOrder;
    endResetModel();
    SetSortedColumn(other.SortedColumn);
    SetFocusedRow(other.FocusedRow);
    TellSelection();
    std::swap(step.Dirty, dirty);
}

QString Grid::Undo(bool &dirty)
{
    HistoryStep *step = history.Undoable();
    if (step == nullptr)
        return {};
    Turn(*step, dirty);
    const QString name = step->Name;
    history.MoveUndone();
    return name;
}

QString Grid::Redo(bool &dirty)
{
    HistoryStep *step = history.Redoable();
    if (step == nullptr)
        return {};
    Turn(*step, dirty);
    const QString name = step->Name;
    history.MoveRedone();
    return name;
}

void Grid::SetSortedColumn(int column)
{
    if (column == 0 && sortedColumn == 0)
        return;
    sortedColumn = column;
    Q_EMIT SortedColumnChanged();
}

void Grid::SetFocusedRow(int row)
{
    focusedRow = row >= 1 && row <= Count() ? row : 0;
    Q_EMIT FocusMoved(focusedRow);
}

int Grid::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Count();
}

int Grid::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant Grid::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const int row = index.row() + 1;
    const int column = index.column() + 1;
    switch (role) {
    case Qt::DisplayRole:
        return ShownPath(CellText(row, column));
    case Qt::ToolTipRole:
        return column == ColumnFileName || column == ColumnPath ? ShownPath(Item(row).FullPath()) : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Info(column).Alignment);
    case Qt::DecorationRole:
        return column == ColumnFileName ? SmallIcons[static_cast<std::size_t>(Item(row).SmallIcon - IconNormal)]
                                        : QVariant();
    default:
        return {};
    }
}

QVariant Grid::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    if (role == Qt::DisplayRole)
        return Caption(section + 1);
    return role == Qt::TextAlignmentRole ? QVariant::fromValue(Info(section + 1).Alignment) : QVariant();
}

Qt::ItemFlags Grid::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
}
