#include "SoakModel.h"

#include "FuzzTarget.h"
#include "platform/Drives.h"
#include "session/GridView.h"
#include "session/Main.h"
#include "text/FormatText.h"

#include <QAction>
#include <QClipboard>
#include <QDirIterator>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>
#include <cmath>
#include <set>

using namespace Qt::StringLiterals;

namespace
{
bool IsSelected(const SoakRow &row)
{
    return row.Selected;
}

template <typename Choose>
void Select(SoakRows &rows, Choose choose)
{
    for (SoakRow &row : rows)
        row.Selected = choose(row);
}

/// From 1; 0 for none.
int FocusOf(const SoakRows &rows)
{
    const auto focused = std::find_if(rows.begin(), rows.end(), [](const SoakRow &row) { return row.Focused; });
    return focused == rows.end() ? 0 : static_cast<int>(focused - rows.begin()) + 1;
}

void FocusOn(SoakRows &rows, int number)
{
    for (SoakRow &row : rows)
        row.Focused = &row - rows.data() == number - 1;
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

/// The focus goes to what stands before a row that is gone.
void Remove(SoakRows &rows)
{
    if (std::none_of(rows.begin(), rows.end(), IsSelected))
        return;
    const auto before = std::count_if(rows.begin(), rows.begin() + FocusOf(rows), std::not_fn(IsSelected));
    std::erase_if(rows, IsSelected);
    FocusOn(rows, std::max(static_cast<int>(before), 1));
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

struct Change {
    void (*Make)(SoakRows &rows);
    bool MovesRows = false;
    bool Dirties = false;
};

const QMap<QByteArray, Change> &Changes()
{
    static const QMap<QByteArray, Change> changes{
        {"MEditSelAll", {[](SoakRows &rows) { Select(rows, [](const SoakRow &) { return true; }); }}},
        {"MEditSelNone", {[](SoakRows &rows) { Select(rows, [](const SoakRow &) { return false; }); }}},
        {"MEditSelInv", {[](SoakRows &rows) { Select(rows, std::not_fn(IsSelected)); }}},
        {"MEditSelectMark",
         {[](SoakRows &rows) { Select(rows, [](const SoakRow &row) { return row.Icon >= IconBlue; }); }}},
        {"MEditSelAlt", {Alternate}},
        {"MEditSelFol", {SelectFolders}},
        {"MEditRemove", {Remove, false, true}},
        {"MEditMoveUp", {[](SoakRows &rows) { Step(rows.begin(), rows.end()); }, true, true}},
        {"MEditMoveDown", {[](SoakRows &rows) { Step(rows.rbegin(), rows.rend()); }, true, true}},
        {"MEditSelTop", {[](SoakRows &rows) { std::stable_partition(rows.begin(), rows.end(), IsSelected); }, true}},
        {"MEditSelBottom",
         {[](SoakRows &rows) { std::stable_partition(rows.begin(), rows.end(), std::not_fn(IsSelected)); }, true}},
        {"MEditSeMarkBlue", {Mark<IconBlue>}},
        {"MEditSeMarkGreen", {Mark<IconGreen>}},
        {"MEditSeMarkRed", {Mark<IconRed>}},
        {"MEditSeUnMark", {Mark<IconNormal>}},
    };
    return changes;
}

/// A number or a text.
using Key = std::pair<qint64, QString>;

struct Sort {
    int Column;
    Key (*KeyOf)(const SoakRow &row);
};

template <int column>
Sort ByText()
{
    return {column, [](const SoakRow &row) { return Key(0, row.Texts[column - ColumnID].toLower()); }};
}

const QMap<QByteArray, Sort> &Sorts()
{
    static const QMap<QByteArray, Sort> sorts{
        {"MViewSortFilename", {ColumnFileName, [](const SoakRow &row) { return Key(0, NameOfRow(row).toLower()); }}},
        {"MViewSortFolder", {ColumnPath, [](const SoakRow &row) { return Key(0, FolderOfRow(row).toLower()); }}},
        {"MViewSortTime", {ColumnHiddenLen, [](const SoakRow &row) { return Key(row.Length, {}); }}},
        {"MViewSortSize", {ColumnHiddenSize, [](const SoakRow &row) { return Key(row.Size, {}); }}},
        {"MViewSortOrig", {ColumnOriginalOrder, [](const SoakRow &row) { return Key(row.OriginalOrder, {}); }}},
        {"MViewSortID", ByText<ColumnID>()},
        {"MViewSortLayer", ByText<ColumnLayer>()},
        {"MViewSortBitrate", ByText<ColumnBitrate>()},
        {"MViewSortSamplerate", ByText<ColumnSamplerate>()},
        {"MViewSortMode", ByText<ColumnMode>()},
    };
    return sorts;
}

/// Rows that are alike keep their order, upwards and downwards.
SoakRows Sorted(const SoakRows &rows, Key (*keyOf)(const SoakRow &row), bool downwards)
{
    std::vector<std::pair<Key, const SoakRow *>> keys;
    for (const SoakRow &row : rows)
        keys.emplace_back(keyOf(row), &row);
    std::stable_sort(keys.begin(), keys.end(), [downwards](const auto &one, const auto &other) {
        return downwards ? other.first < one.first : one.first < other.first;
    });
    SoakRows sorted;
    for (const auto &[key, row] : keys)
        sorted.push_back(*row);
    return sorted;
}

/// Tells the first row that differs.
void RequireRows(const SoakRows &rows, const SoakRows &expected, const char *what)
{
    if (rows == expected)
        return;
    const auto [row, other] = std::mismatch(rows.begin(), rows.end(), expected.begin(), expected.end());
    for (const auto &[place, end] : {std::pair(row, rows.end()), std::pair(other, expected.end())}) {
        if (place != end)
            std::fprintf(stderr, "%s selected %d focused %d icon %d size %lld\n", qPrintable(place->Path),
                         place->Selected, place->Focused, place->Icon, place->Size);
    }
    std::fprintf(stderr, "row %td of %zu, not %zu\n", row - rows.begin() + 1, rows.size(), expected.size());
    Require(false, what);
}

SoakRows InAnyOrder(SoakRows rows)
{
    const auto key = [](const SoakRow &row) {
        return std::tie(row.Path, row.Selected, row.Focused, row.Icon, row.Size, row.Length, row.OriginalOrder);
    };
    std::sort(rows.begin(), rows.end(), [&](const auto &one, const auto &other) { return key(one) < key(other); });
    return rows;
}

SoakRows FirstRows(const SoakRows &rows, std::size_t count)
{
    Require(rows.size() >= count, "adding removes nothing");
    return {rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(count)};
}

void RequireFiles(const QStringList &paths, const QStringList &expected, const char *what)
{
    const auto [path, other] = std::mismatch(paths.begin(), paths.end(), expected.begin(), expected.end(), IsSameFile);
    if (path == paths.end() && other == expected.end())
        return;
    const auto place = path - paths.begin();
    std::fprintf(stderr, "row %lld of %lld, not %lld: %s, not %s\n", place + 1, paths.size(), expected.size(),
                 qPrintable(paths.value(place)), qPrintable(expected.value(place)));
    Require(false, what);
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
        const SoakRow none;
        const SoakRow *counted = &none;
        for (const SoakRow &row : rows) {
            if (row.Size != 0)
                counted = &row;
            if (row.Selected) {
                ++Selected;
                SelectedLength += counted->Length;
                SelectedSize += counted->Size;
                Row = &row - rows.data() + 1;
                LengthBefore = Length;
            }
            Length += counted->Length;
            Size += counted->Size;
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

void RequireEnabled(const Main &window, std::initializer_list<const char *> names, bool on)
{
    for (const char *name : names)
        Require(window.Command(name)->isEnabled() == on, name);
}

void CheckCommands(const Main &window, const SoakRows &rows, const Sums &sums)
{
    const auto count = static_cast<qint64>(rows.size());
    const bool some = sums.Selected > 0;
    const bool one = sums.Selected == 1;
    RequireEnabled(window,
                   {"MEditRemove", "MEditCopy", "MEditPlaySel", "MEditPlayFol", "MEditPlayLoc", "MEditSelAlt",
                    "MEditSelNone", "MEditSelLoc", "MEditSeMark", "MEditSeUnMark", "MEditId3"},
                   some);
    RequireEnabled(window, {"MEditFileInfo"}, one);
    if (count > 0)
        RequireEnabled(window, {"MEditSelAll"}, sums.Selected < 2 || sums.Selected < count);
    RequireEnabled(window, {"MEditMoveUp"}, some && !rows.front().Selected);
    RequireEnabled(window, {"MEditMoveDown"}, some && !rows.back().Selected);
    RequireEnabled(window, {"MEditSelTop"}, some && (one ? !rows.front().Selected : sums.Selected < count));
    RequireEnabled(window, {"MEditSelBottom"}, some && (one ? !rows.back().Selected : sums.Selected < count));
}

void RequireAdded(const SoakList &before, const SoakList &after, bool dirty)
{
    const std::size_t count = before.Rows.size();
    RequireRows(Unselected(FirstRows(after.Rows, count)), Unselected(before.Rows), "what is added stands behind");
    RequireMeasured(after.Rows.data() + count, after.Rows.data() + after.Rows.size());
    SoakList expected = before;
    expected.Rows = after.Rows;
    FocusOn(expected.Rows, after.Rows.size() > count ? static_cast<int>(after.Rows.size()) : FocusOf(before.Rows));
    expected.Dirty = dirty;
    RequireList(after, expected, "what is added last has the focus");
}

QByteArray Element(const char *array, int index)
{
    return QByteArray(array) + '(' + QByteArray::number(index) + ')';
}

void CheckColumns(const Main &window)
{
    for (int column = 0; column < ColumnMode; ++column) {
        const bool isShown = window.ListView1.ColumnWidths[static_cast<std::size_t>(column)] > 0;
        Require(window.View()->isColumnHidden(column) != isShown, "a column without a width is hidden");
        Require(window.Command(Element("MHidOptionColumnVis", column))->isChecked() == isShown,
                "the check of a column tells whether it is shown");
    }
}
} // namespace

SoakList ListOf(const Main &window)
{
    const Grid &grid = window.ListView1;
    SoakList list{{}, window.PlaylistDirty, window.CurrentPlaylistPath, grid.SortKey, grid.SortOrder};
    list.Rows.reserve(static_cast<std::size_t>(grid.Count()));
    for (int row = 1; row <= grid.Count(); ++row) {
        const PlaylistItem &item = grid.Item(row);
        list.Rows.push_back({item.FullPath(),
                             item.Selected,
                             row == grid.FocusedRow(),
                             item.SmallIcon,
                             item.Size,
                             item.Length,
                             item.Measured() ? item.OriginalOrder : 0,
                             {}});
        for (std::size_t i = 0; i < list.Rows.back().Texts.size(); ++i)
            list.Rows.back().Texts[i] = grid.CellText(row, ColumnID + static_cast<int>(i));
    }
    return list;
}

SoakRows Unselected(SoakRows rows)
{
    Select(rows, [](const SoakRow &) { return false; });
    FocusOn(rows, 0);
    return rows;
}

QStringList PathsOf(const SoakRows &rows)
{
    QStringList paths;
    for (const SoakRow &row : rows)
        paths.append(row.Path);
    return paths;
}

bool IsSameFile(const QString &path, const QString &other)
{
    return path == other || ToHostPath(path).compare(ToHostPath(other), Qt::CaseInsensitive) == 0;
}

void RequireMeasured(const SoakRow *first, const SoakRow *end)
{
    for (const SoakRow *row = first; row != end; ++row) {
        Require(row->Size == QFileInfo(ToHostPath(row->Path)).size(), "a row tells the size of its file");
        Require(row->Icon == (row->Size == 0 ? IconMissing : IconNormal), "a row that was read has no mark");
    }
}

void RequireList(const SoakList &list, const SoakList &expected, const char *what)
{
    const bool firstOnly = FocusOf(list.Rows) == 1 && FocusOf(expected.Rows) == 0;
    SoakRows rows = expected.Rows;
    if (firstOnly)
        FocusOn(rows, 1);
    RequireRows(list.Rows, rows, what);
    Require(list.Dirty == expected.Dirty, "the list knows whether it has changed");
    Require(list.File == expected.File, "the list knows its file");
    Require(list.SortKey == expected.SortKey && list.SortOrder == expected.SortOrder,
            "the list knows what it was sorted by");
}

void RequireRefreshed(const SoakList &before, const SoakList &after)
{
    RequireFiles(PathsOf(after.Rows), PathsOf(before.Rows), "a refresh keeps the files");
    RequireMeasured(after.Rows.data(), after.Rows.data() + after.Rows.size());
    SoakList expected = after;
    Select(expected.Rows, [](const SoakRow &) { return false; });
    FocusOn(expected.Rows, FocusOf(before.Rows));
    expected.Dirty = before.Dirty || PathsOf(before.Rows) != PathsOf(after.Rows);
    expected.File = before.File;
    RequireList(after, expected, "a refresh leaves nothing selected");
}

int CountSongs(const QString &folder)
{
    QDirIterator files(ToHostPath(folder), {u"*.mp3"_s, u"*.wma"_s, u"*.ogg"_s, u"*.wav"_s}, QDir::Files | QDir::Hidden,
                       QDirIterator::Subdirectories);
    int count = 0;
    for (; files.hasNext(); files.next())
        ++count;
    return count;
}

SoakSelection::SoakSelection(SoakRows rowsBefore)
    : rows(std::move(rowsBefore)), base(rows.size()), focus(FocusOf(rows)), anchor(focus)
{
}

int SoakSelection::Target(Qt::Key key, double page) const
{
    if (focus == 0)
        return 1;
    const int distance = key == Qt::Key_Down       ? 1
                         : key == Qt::Key_Up       ? -1
                         : key == Qt::Key_PageDown ? static_cast<int>(std::floor(page))
                         : key == Qt::Key_PageUp   ? -static_cast<int>(std::ceil(page))
                         : key == Qt::Key_Home     ? -Count()
                                                   : Count();
    return std::clamp(focus + distance, 1, Count());
}

void SoakSelection::SetFocus(int row)
{
    focus = row;
    FocusOn(rows, row);
}

void SoakSelection::SelectAlone(int row)
{
    base.assign(base.size(), false);
    anchor = row;
    SelectRange(row);
}

void SoakSelection::SelectRange(int row)
{
    const auto [first, last] = std::minmax(anchor, row);
    for (int each = 1; each <= Count(); ++each) {
        const auto place = static_cast<std::size_t>(each - 1);
        rows[place].Selected = base[place] || (each >= first && each <= last);
    }
    SetFocus(row);
}

void SoakSelection::Choose(int row, bool toggle)
{
    std::transform(rows.begin(), rows.end(), base.begin(), IsSelected);
    bool &selected = rows[static_cast<std::size_t>(row - 1)].Selected;
    selected = !toggle || !selected;
    SetFocus(row);
}

void SoakSelection::Press(Qt::Key key, Qt::KeyboardModifiers modifiers, double page)
{
    if (rows.empty())
        return;
    if (key == Qt::Key_Space) {
        Choose(focus, modifiers == Qt::ControlModifier);
        return;
    }
    const int target = Target(key, page);
    const bool alone = modifiers == Qt::NoModifier;
    if (target == focus && !(alone && (key == Qt::Key_Home || key == Qt::Key_End)))
        return;
    if (alone) {
        SelectAlone(target);
    } else if (modifiers == Qt::ShiftModifier) {
        SelectRange(target);
    } else {
        anchor = target;
        SetFocus(target);
    }
}

void SoakSelection::Click(int row, Qt::KeyboardModifiers modifiers)
{
    if (modifiers == Qt::NoModifier) {
        SelectAlone(row);
    } else if (modifiers == Qt::ShiftModifier) {
        SelectRange(row);
    } else {
        anchor = row;
        Choose(row, true);
    }
}

SoakHistory::Side SoakHistory::SideOf(const SoakList &list)
{
    std::size_t rows = qHashMulti(0, list.SortKey, list.SortOrder);
    std::size_t selection = 0;
    for (const SoakRow &row : list.Rows) {
        rows = qHashMulti(rows, row.Path, static_cast<int>(row.Icon), row.Size, row.Length, row.OriginalOrder);
        selection = qHashMulti(selection, row.Selected);
    }
    return {rows, selection, false, FocusOf(list.Rows), list.Dirty};
}

void SoakHistory::AddStep(const SoakList &before, bool selects)
{
    redo.clear();
    undo.push_back(SideOf(before));
    undo.back().OtherSelection = selects;
    if (undo.size() > ::History::MaxSteps)
        undo.pop_front();
}

void SoakHistory::End()
{
    undo.clear();
    redo.clear();
    isCrowded = false;
}

void SoakHistory::MarkSaved()
{
    for (Sides *sides : {&undo, &redo}) {
        for (Side &side : *sides)
            side.Dirty = true;
    }
}

void SoakHistory::Go(Sides &from, Sides &to, const SoakList &before, const SoakList &after)
{
    const Side expected = from.back();
    const Side reached = SideOf(after);
    from.pop_back();
    to.push_back(SideOf(before));
    Require(reached.Rows == expected.Rows, "Undo and Redo lead to the rows that were there");
    Require(reached.Selection == expected.Selection || expected.OtherSelection,
            "Undo and Redo bring the selection back");
    Require(reached.Focus == expected.Focus || (reached.Focus == 1 && expected.Focus == 0),
            "Undo and Redo bring the focus back");
    Require(reached.Dirty == expected.Dirty, "Undo and Redo know whether the list is as its file");
}

void SoakHistory::FollowFiles(const Main &window, bool changed)
{
    const bool ended = !window.Command("MEditUndo")->isEnabled() && !window.Command("MEditRedo")->isEnabled();
    Require(ended || !changed, "what changes files cannot be undone");
    if (ended)
        End();
}

void SoakHistory::Check(const Main &window)
{
    isCrowded = isCrowded || window.ListView1.Steps().Bytes() > ::History::MaxBytes / 4 * 3;
    for (const auto &[name, sides] : {std::pair("MEditUndo", &undo), std::pair("MEditRedo", &redo)}) {
        const bool on = window.Command(name)->isEnabled();
        if (isCrowded && !on)
            sides->clear();
        Require(on == !sides->empty(), name);
    }
}

const QMap<QByteArray, SoakModel::Rule> &SoakModel::Rules()
{
    static const QMap<QByteArray, Rule> rules{
        {"MFileNew", &SoakModel::FollowNew},          {"MFileOpen", &SoakModel::FollowOpen},
        {"MFileImport", &SoakModel::FollowImport},    {"MFileSave", &SoakModel::FollowSave},
        {"MFileSaveAs", &SoakModel::FollowSave},      {"MFileSaveRel", &SoakModel::FollowSave},
        {"MEditAddDir", &SoakModel::FollowAddFolder}, {"MEditAddFiles", &SoakModel::FollowAdd},
        {"MEditPaste", &SoakModel::FollowAdd},        {"MToolsLoadWinamp", &SoakModel::FollowAdd},
        {"MViewRefresh", &SoakModel::FollowRefresh},  {"MToolsFullData", &SoakModel::FollowRefresh},
        {"MEditSelRnd", &SoakModel::FollowRandom},    {"MEditSelShuffle", &SoakModel::FollowShuffle},
        {"MEditUndo", &SoakModel::FollowUndo},        {"MEditRedo", &SoakModel::FollowRedo},
    };
    return rules;
}

std::vector<QByteArray> SoakModel::Commands()
{
    const QList<QByteArray> names = Changes().keys() + Sorts().keys() + Rules().keys();
    return {names.begin(), names.end()};
}

void SoakModel::Follow(const QByteArray &command, const SoakList &before, const SoakList &after)
{
    if (Changes().contains(command))
        FollowChange(command, before, after);
    else if (Sorts().contains(command))
        FollowSort(command, before, after);
    else if (const Rule rule = Rules().value(command))
        (this->*rule)(before, after);
    else if (command.startsWith("MFileRecent("))
        FollowRecent(command.mid(12).chopped(1).toInt(), before, after);
    else
        RequireList(after, before, "a command that is none of the list leaves it");
    if (command == "MEditCopy") {
        const auto selected = std::count_if(before.Rows.begin(), before.Rows.end(), IsSelected);
        Require(QGuiApplication::clipboard()->text().count(u'\n') + 1 == selected, "what is selected is copied");
    }
}

void SoakModel::NoteStep(const SoakList &before, const SoakList &after)
{
    if (Unselected(before.Rows) != Unselected(after.Rows))
        History.AddStep(before);
}

void SoakModel::FollowChange(const QByteArray &command, const SoakList &before, const SoakList &after)
{
    const Change change = Changes().value(command);
    SoakList expected = before;
    change.Make(expected.Rows);
    expected.Dirty = before.Dirty || (change.Dirties && expected.Rows != before.Rows);
    RequireList(after, expected, "the rows are what the command makes of them");
    // Rows that are alike may have changed places.
    if (change.MovesRows && expected.Rows != before.Rows)
        History.AddStep(before);
    else
        NoteStep(before, after);
}

void SoakModel::FollowSort(const QByteArray &command, const SoakList &before, const SoakList &after)
{
    SoakList expected = before;
    if (Answers.Given == std::vector{PromptAnswer::Yes}) {
        const Sort sort = Sorts().value(command);
        const bool again = before.SortKey == sort.Column - 1;
        expected.SortKey = sort.Column - 1;
        expected.SortOrder = again ? 1 - before.SortOrder : 0;
        expected.Rows = Sorted(before.Rows, sort.KeyOf, expected.SortOrder == 1);
    }
    RequireList(after, expected, "a sort puts the rows in order");
    NoteStep(before, after);
}

SoakList SoakModel::Saved(SoakList list, std::size_t first)
{
    const auto refuses = [](PromptAnswer answer) {
        return answer == PromptAnswer::No || answer == PromptAnswer::Cancel;
    };
    if (list.Rows.empty() ||
        std::any_of(Answers.Given.begin() + static_cast<std::ptrdiff_t>(first), Answers.Given.end(), refuses))
        return list;
    list.File = Answers.Saved.isEmpty() ? list.File : Answers.Saved;
    list.Dirty = false;
    QStringList entries;
    for (const SoakRow &row : list.Rows)
        entries.append(ToHostPath(row.Path));
    Playlists[list.File] = entries;
    RememberRecent(list.File);
    History.MarkSaved();
    return list;
}

bool SoakModel::GoesOn(SoakList &list)
{
    if (!list.Dirty || list.Rows.empty())
        return true;
    if (Answers.Given.front() != PromptAnswer::Yes)
        return Answers.Given.front() == PromptAnswer::No;
    list = Saved(list, 1);
    return !list.Dirty;
}

void SoakModel::RememberRecent(const QString &path)
{
    if (!recent.contains(path))
        recent.prepend(path);
    recent.resize(std::min(recent.size(), qsizetype(Main::RecentCount)));
}

void SoakModel::FollowNew(const SoakList &before, const SoakList &after)
{
    SoakList expected = before;
    if (GoesOn(expected)) {
        expected = {{}, false, {}, before.SortKey, before.SortOrder};
        History.End();
    }
    RequireList(after, expected, "a new list is empty");
}

void SoakModel::RequireOpened(const QString &path, SoakList expected, const SoakList &after)
{
    if (!GoesOn(expected)) {
        RequireList(after, expected, "a list that is not to be saved stays");
        return;
    }
    History.End();
    RequireFiles(PathsOf(after.Rows), Playlists.value(path), "every entry is a row");
    RequireMeasured(after.Rows.data(), after.Rows.data() + after.Rows.size());
    expected.Rows = Unselected(after.Rows);
    expected.Dirty = false;
    if (!after.Rows.empty()) {
        expected.File = path;
        RememberRecent(path);
    }
    RequireList(after, expected, "a list that was opened is as its file");
}

void SoakModel::FollowOpen(const SoakList &before, const SoakList &after)
{
    RequireOpened(Answers.Opened, before, after);
}

void SoakModel::FollowRecent(int index, const SoakList &before, const SoakList &after)
{
    const QString path = recent.value(index);
    if (path.isEmpty())
        RequireList(after, before, "no recent file, no other list");
    else
        RequireOpened(path, before, after);
}

void SoakModel::FollowImport(const SoakList &before, const SoakList &after)
{
    const QStringList entries = Playlists.value(Answers.Opened);
    const auto room = static_cast<qsizetype>(Grid::MaxRows - before.Rows.size());
    RequireFiles(PathsOf(after.Rows), PathsOf(before.Rows) + entries.first(std::min(room, entries.size())),
                 "the entries are added behind");
    RequireAdded(before, after, true);
    Require(entries.size() > room || std::none_of(after.Rows.begin(), after.Rows.end(), IsSelected),
            "an import leaves nothing selected");
    NoteStep(before, after);
}

void SoakModel::FollowSave(const SoakList &before, const SoakList &after)
{
    RequireList(after, Saved(before, 0), "a save leaves the rows");
}

void SoakModel::FollowAddFolder(const SoakList &before, const SoakList &after)
{
    const auto all = before.Rows.size() + static_cast<std::size_t>(CountSongs(Answers.Folder));
    Require(after.Rows.size() == std::min(all, std::size_t(Grid::MaxRows)), "every song of a folder is added");
    if (after.Rows != before.Rows) {
        for (std::size_t i = 0; i < after.Rows.size(); ++i)
            Require(after.Rows[i].Selected == (i >= before.Rows.size()), "what is added is selected");
    }
    FollowAdd(before, after);
}

void SoakModel::FollowAdd(const SoakList &before, const SoakList &after)
{
    RequireAdded(before, after, before.Dirty || after.Rows.size() > before.Rows.size());
    NoteStep(before, after);
}

void SoakModel::FollowRefresh(const SoakList &before, const SoakList &after)
{
    RequireRefreshed(before, after);
    if (!before.Rows.empty())
        History.AddStep(before);
}

void SoakModel::FollowRandom(const SoakList &before, const SoakList &after)
{
    SoakList expected = before;
    for (std::size_t i = 0; i < std::min(before.Rows.size(), after.Rows.size()); ++i)
        expected.Rows[i].Selected = after.Rows[i].Selected;
    RequireList(after, expected, "a selection leaves the rows");
}

void SoakModel::FollowShuffle(const SoakList &before, const SoakList &after)
{
    SoakList expected = before;
    expected.Rows = after.Rows;
    RequireList(after, expected, "a shuffle leaves the name of the list");
    Require(InAnyOrder(after.Rows) == InAnyOrder(before.Rows), "an order keeps every row");
    for (std::size_t i = 0; i < before.Rows.size(); ++i)
        Require(before.Rows[i].Selected || after.Rows[i] == before.Rows[i], "what is not selected is not shuffled");
    NoteStep(before, after);
}

void SoakModel::FollowDrag(int row, bool again, const SoakList &before, const SoakList &after)
{
    SoakRows dragged;
    std::copy_if(before.Rows.begin(), before.Rows.end(), std::back_inserter(dragged), IsSelected);
    SoakList expected = before;
    if (again && !dragged.empty() && before.Rows.size() + dragged.size() <= Grid::MaxRows) {
        expected.Rows = Unselected(before.Rows);
        expected.Rows.insert(expected.Rows.begin() + (row - 1), dragged.begin(), dragged.end());
        // What is added is new: it has no mark, and takes its number from its place.
        for (int number = row; number < row + static_cast<int>(dragged.size()); ++number) {
            SoakRow &added = expected.Rows[static_cast<std::size_t>(number - 1)];
            added.Icon = added.Icon == IconMissing ? IconMissing : IconNormal;
            added.OriginalOrder = added.Size != 0 ? number : 0;
        }
        FocusOn(expected.Rows, row + static_cast<int>(dragged.size()) - 1);
    } else if (!again) {
        const auto place = expected.Rows.begin() + (row - 1);
        std::stable_partition(expected.Rows.begin(), place, std::not_fn(IsSelected));
        std::stable_partition(place, expected.Rows.end(), IsSelected);
    }
    expected.Dirty = before.Dirty || expected.Rows != before.Rows;
    RequireList(after, expected, "dragged rows stand where they were dropped");
    if (expected.Rows != before.Rows)
        History.AddStep(before);
}

void SoakModel::CheckRecent(const Main &window) const
{
    Require(window.Command("MFileRec")->isEnabled() != recent.isEmpty(), "MFileRec");
    for (int i = 0; i < Main::RecentCount; ++i) {
        const QAction *command = window.Command(Element("MFileRecent", i));
        Require(command->isVisible() == (i < recent.size()), "every recent file has a line");
        Require(command->text().endsWith(recent.value(i)), "a recent file is told");
    }
}

void SoakModel::CheckWindow(const Main &window, const SoakList &list)
{
    const Grid &grid = window.ListView1;
    const Sums sums(list.Rows);
    Require(grid.Count() <= Grid::MaxRows && grid.rowCount() == grid.Count(), "the list keeps its limit");
    Require(window.View()->currentIndex().row() + 1 == grid.FocusedRow(), "the view shows the focus");
    const QStringList panels{window.PanelText(1), window.PanelText(2), window.PanelText(3)};
    Require(panels == PanelsOf(sums, grid.Count()), "the panels tell of the rows");
    CheckCommands(window, list.Rows, sums);
    CheckColumns(window);
    CheckRecent(window);
    History.Check(window);
}
