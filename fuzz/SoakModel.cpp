#include "SoakModel.h"

#include "FuzzTarget.h"
#include "session/Main.h"
#include "text/FormatText.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>
#include <map>
#include <set>

using namespace Qt::StringLiterals;

namespace
{
using Change = void (*)(SoakRows &rows);

template <typename Choose>
void Select(SoakRows &rows, Choose choose)
{
    for (SoakRow &row : rows)
        row.Selected = choose(row);
}

template <SmallIcon icon>
void Mark(SoakRows &rows)
{
    for (SoakRow &row : rows)
        row.Icon = row.Selected && row.Icon != IconMissing ? icon : row.Icon;
}

/// Each selected row changes places with the one before it, unless the first one is selected.
template <typename Place>
void Step(Place first, Place end)
{
    if (first == end || first->Selected)
        return;
    for (Place row = first; row + 1 != end; ++row) {
        if (row[1].Selected)
            std::swap(row[0], row[1]);
    }
}

QString FolderOfRow(const SoakRow &row)
{
    return row.Path.first(row.Path.lastIndexOf(u'\\') + 1);
}

QString NameOfRow(const SoakRow &row)
{
    return row.Path.sliced(row.Path.lastIndexOf(u'\\') + 1);
}

void SelectFolders(SoakRows &rows)
{
    std::set<QString> folders;
    for (const SoakRow &row : rows) {
        if (row.Selected)
            folders.insert(FolderOfRow(row));
    }
    Select(rows, [&](const SoakRow &row) { return folders.contains(FolderOfRow(row)); });
}

void Alternate(SoakRows &rows)
{
    bool keep = true;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        if (row->Selected)
            row->Selected = keep = !keep;
    }
}

bool IsSelected(const SoakRow &row)
{
    return row.Selected;
}

const std::map<QByteArray, Change> &Changes()
{
    static const std::map<QByteArray, Change> changes{
        {"MEditSelAll", [](SoakRows &rows) { Select(rows, [](const SoakRow &) { return true; }); }},
        {"MEditSelNone", [](SoakRows &rows) { Select(rows, [](const SoakRow &) { return false; }); }},
        {"MEditSelInv", [](SoakRows &rows) { Select(rows, std::not_fn(IsSelected)); }},
        {"MEditSelectMark",
         [](SoakRows &rows) { Select(rows, [](const SoakRow &row) { return row.Icon >= IconBlue; }); }},
        {"MEditSelAlt", Alternate},
        {"MEditSelFol", SelectFolders},
        {"MEditRemove", [](SoakRows &rows) { std::erase_if(rows, IsSelected); }},
        {"MEditMoveUp", [](SoakRows &rows) { Step(rows.begin(), rows.end()); }},
        {"MEditMoveDown", [](SoakRows &rows) { Step(rows.rbegin(), rows.rend()); }},
        {"MEditSelTop", [](SoakRows &rows) { std::stable_partition(rows.begin(), rows.end(), IsSelected); }},
        {"MEditSelBottom",
         [](SoakRows &rows) { std::stable_partition(rows.begin(), rows.end(), std::not_fn(IsSelected)); }},
        {"MEditSeMarkBlue", Mark<IconBlue>},
        {"MEditSeMarkGreen", Mark<IconGreen>},
        {"MEditSeMarkRed", Mark<IconRed>},
        {"MEditSeUnMark", Mark<IconNormal>},
        {"MEditCopy", [](SoakRows &) {}},
        {"MEditPlayList", [](SoakRows &) {}},
    };
    return changes;
}

using Less = bool (*)(const SoakRow &one, const SoakRow &other);

template <auto textOf>
bool LessText(const SoakRow &one, const SoakRow &other)
{
    return textOf(one).compare(textOf(other), Qt::CaseInsensitive) < 0;
}

template <auto number>
bool LessNumber(const SoakRow &one, const SoakRow &other)
{
    return one.*number < other.*number;
}

const std::map<QByteArray, Less> &Sorts()
{
    static const std::map<QByteArray, Less> sorts{
        {"MViewSortFilename", LessText<NameOfRow>},
        {"MViewSortFolder", LessText<FolderOfRow>},
        {"MViewSortTime", LessNumber<&SoakRow::Length>},
        {"MViewSortSize", LessNumber<&SoakRow::Size>},
    };
    return sorts;
}

/// Tells the first row that differs.
void RequireSame(const SoakRows &rows, const SoakRows &expected, const char *what)
{
    const auto [row, other] = std::mismatch(rows.begin(), rows.end(), expected.begin(), expected.end());
    for (const auto &[place, end] : {std::pair(row, rows.end()), std::pair(other, expected.end())}) {
        if (place != end)
            std::fprintf(stderr, "%s selected %d icon %d\n", qPrintable(place->Path), place->Selected, place->Icon);
    }
    if (rows != expected)
        std::fprintf(stderr, "row %td of %zu, not %zu\n", row - rows.begin() + 1, rows.size(), expected.size());
    Require(rows == expected, what);
}

SoakRows Unselected(SoakRows rows)
{
    Select(rows, [](const SoakRow &) { return false; });
    return rows;
}

SoakRows InAnyOrder(SoakRows rows)
{
    const auto key = [](const SoakRow &row) {
        return std::tie(row.Path, row.Selected, row.Icon, row.Size, row.Length);
    };
    std::sort(rows.begin(), rows.end(), [&](const auto &one, const auto &other) { return key(one) < key(other); });
    return rows;
}

QStringList PathsOfRows(const SoakRows &rows)
{
    QStringList paths;
    for (const SoakRow &row : rows)
        paths.append(row.Path);
    return paths;
}

/// A sort keeps rows that are alike in their order, upwards and downwards; its question may have been answered with No.
void CheckSort(Less less, const SoakRows &before, const SoakRows &after)
{
    SoakRows upwards = before;
    std::stable_sort(upwards.begin(), upwards.end(), less);
    SoakRows downwards = before;
    std::stable_sort(downwards.begin(), downwards.end(), [less](const auto &a, const auto &b) { return less(b, a); });
    Require(after == before || after == upwards || after == downwards, "a sort puts the rows in order");
}

/// What a list says of itself, summed as its rows tell it; a missing row counts as the one before it.
struct Sums {
    qint64 Length = 0;
    qint64 Size = 0;
    qint64 Selected = 0;
    qint64 SelectedLength = 0;
    qint64 SelectedSize = 0;
    /// Of the last selected row: its number, and the length of all before it.
    qint64 Row = 0;
    qint64 LengthBefore = 0;

    explicit Sums(const SoakRows &rows)
    {
        SoakRow counted;
        for (const SoakRow &row : rows) {
            if (row.Size != 0)
                counted = row;
            if (row.Selected) {
                ++Selected;
                SelectedLength += counted.Length;
                SelectedSize += counted.Size;
                Row = &row - rows.data() + 1;
                LengthBefore = Length;
            }
            Length += counted.Length;
            Size += counted.Size;
        }
    }
};

QStringList PanelsOf(const Sums &sums, qint64 count)
{
    if (sums.Selected == 0)
        return {u"Total: %1"_s.arg(count), FormatPlayTime(sums.Length), FormatFileSize(sums.Size)};
    if (sums.Selected > 1)
        return {u"%1 Items"_s.arg(sums.Selected), FormatPlayTime(sums.SelectedLength),
                FormatFileSize(sums.SelectedSize)};
    return {u"Track: %1/%2"_s.arg(sums.Row).arg(count),
            u"%1[%2]"_s.arg(FormatPlayTime(sums.SelectedLength), FormatPlayTime(sums.LengthBefore)),
            FormatFileSize(sums.SelectedSize)};
}

void CheckCommands(const Main &window, const SoakRows &rows, const Sums &sums)
{
    const auto require = [&window](std::initializer_list<const char *> names, bool on) {
        for (const char *name : names)
            Require(window.Command(name)->isEnabled() == on, name);
    };
    const auto count = static_cast<qint64>(rows.size());
    const bool some = sums.Selected > 0;
    require({"MEditRemove", "MEditCopy", "MEditPlaySel", "MEditSelAlt", "MEditSelNone", "MEditSeUnMark"}, some);
    require({"MEditFileInfo"}, sums.Selected == 1);
    require({"MEditUndo"}, const_cast<Main &>(window).ListView1.Steps().Undoable() != nullptr);
    require({"MEditRedo"}, const_cast<Main &>(window).ListView1.Steps().Redoable() != nullptr);
    if (count > 0)
        require({"MEditSelAll"}, sums.Selected < 2 || sums.Selected < count);
    if (some && count > 1) {
        require({"MEditMoveUp"}, !rows.front().Selected);
        require({"MEditMoveDown"}, !rows.back().Selected);
        require({"MEditSelTop"}, sums.Selected == 1 ? !rows.front().Selected : sums.Selected < count);
        require({"MEditSelBottom"}, sums.Selected == 1 ? !rows.back().Selected : sums.Selected < count);
    } else if (!some) {
        require({"MEditMoveUp", "MEditMoveDown", "MEditSelTop", "MEditSelBottom"}, false);
    }
}
} // namespace

SoakRows RowsOf(const Grid &grid)
{
    SoakRows rows;
    for (int row = 1; row <= grid.Count(); ++row) {
        const PlaylistItem &item = grid.Item(row);
        rows.push_back({item.FullPath(), item.Selected, item.SmallIcon, item.Size, item.Length});
    }
    return rows;
}

std::vector<QByteArray> ModelledCommands()
{
    std::vector<QByteArray> names{"MEditSelRnd", "MEditSelShuffle", "MEditPaste",  "MEditAddDir",
                                  "MEditUndo",   "MEditRedo",       "MViewRefresh"};
    for (const auto &[name, less] : Sorts())
        names.push_back(name);
    for (const auto &[name, change] : Changes())
        names.push_back(name);
    return names;
}

void CheckCommand(const QByteArray &command, const SoakRows &before, const SoakRows &after)
{
    if (const auto change = Changes().find(command); change != Changes().end()) {
        SoakRows expected = before;
        change->second(expected);
        RequireSame(after, expected, "the rows are what the command makes of them");
    }
    if (const auto sort = Sorts().find(command); sort != Sorts().end())
        CheckSort(sort->second, before, after);
    if (command == "MEditSelRnd")
        Require(Unselected(after) == Unselected(before), "a selection leaves the rows");
    if (command == "MEditSelShuffle" || command.startsWith("MViewSort"))
        Require(InAnyOrder(after) == InAnyOrder(before), "an order keeps every row");
    if (command == "MEditSelShuffle") {
        for (std::size_t i = 0; i < before.size(); ++i)
            Require(before[i].Selected || after[i] == before[i], "a shuffle leaves what is not selected");
    }
    if (command == "MViewRefresh")
        Require(PathsOfRows(after) == PathsOfRows(before), "a refresh keeps the files");
    if (command == "MEditPaste" || command == "MEditAddDir") {
        Require(after.size() >= before.size(), "adding removes nothing");
        const SoakRows first(after.begin(), after.begin() + static_cast<std::ptrdiff_t>(before.size()));
        Require(Unselected(first) == Unselected(before), "what is added stands behind");
    }
    if (command == "MEditCopy") {
        const auto selected = std::count_if(before.begin(), before.end(), IsSelected);
        Require(QGuiApplication::clipboard()->text().count(u'\n') + 1 == selected, "what is selected is copied");
    }
}

void CheckDrag(int row, bool again, const SoakRows &before, const SoakRows &after)
{
    SoakRows dragged;
    std::copy_if(before.begin(), before.end(), std::back_inserter(dragged), IsSelected);
    if (again && before.size() + dragged.size() > Grid::MaxRows) {
        Require(after == before, "what does not fit is not added");
        return;
    }
    // What is added is new, so it has no mark.
    for (SoakRow &each : dragged)
        each.Icon = again && each.Icon != IconMissing ? IconNormal : each.Icon;
    SoakRows expected;
    for (std::size_t i = 0; i <= before.size(); ++i) {
        if (i + 1 == static_cast<std::size_t>(row))
            expected.insert(expected.end(), dragged.begin(), dragged.end());
        if (i < before.size() && (again || !before[i].Selected))
            expected.push_back(before[i]);
        if (again && i < before.size())
            expected.back().Selected = dragged.empty() && before[i].Selected;
    }
    RequireSame(after, expected, "dragged rows stand where they were dropped");
}

void CheckWindow(const Main &window)
{
    const Grid &grid = window.ListView1;
    const SoakRows rows = RowsOf(grid);
    const Sums sums(rows);
    Require(grid.Count() <= Grid::MaxRows && grid.rowCount() == grid.Count(), "the list keeps its limit");
    Require(grid.FocusedRow() >= 0 && grid.FocusedRow() <= grid.Count(), "the focus is on a row");
    const QStringList panels{window.PanelText(1), window.PanelText(2), window.PanelText(3)};
    Require(panels == PanelsOf(sums, grid.Count()), "the panels tell of the rows");
    CheckCommands(window, rows, sums);
}
