#pragma once

#include "platform/Host.h"
#include "playlist/Grid.h"

#include <QMap>

#include <deque>

class Main;

/// A row as a person knows it.
struct SoakRow {
    QString Path;
    bool Selected = false;
    bool Focused = false;
    SmallIcon Icon = IconNormal;
    qint64 Size = 0;
    qint32 Length = 0;
    int OriginalOrder = 0;
    /// ID, Layer, Bitrate, Samplerate and Mode.
    std::array<QString, 5> Texts;

    bool operator==(const SoakRow &other) const = default;
};
using SoakRows = std::vector<SoakRow>;

/// The list as a person knows it.
struct SoakList {
    SoakRows Rows;
    bool Dirty = false;
    QString File;
    /// What it was last sorted by.
    int SortKey = -1;
    int SortOrder = 0;

    bool operator==(const SoakList &other) const = default;
};
SoakList ListOf(const Main &window);
/// The rows without selection and focus.
SoakRows Unselected(SoakRows rows);
QStringList PathsOf(const SoakRows &rows);
/// Whether both are one file by now; an entry is also found in another case.
bool IsSameFile(const QString &path, const QString &other);
/// Requires that rows tell of the files as they lie on the disk.
void RequireMeasured(const SoakRow *first, const SoakRow *end);
/// Requires the list, but that the first row may have got the focus where none had it, as the window does when the
/// keyboard comes to it.
void RequireList(const SoakList &list, const SoakList &expected, const char *what);
/// Requires that each file is read anew and nothing is selected.
void RequireRefreshed(const SoakList &before, const SoakList &after);

/// Extended selection, as every list has it: what keys and clicks make of selection and focus. It begins with a click
/// or a key without modifiers.
class SoakSelection
{
public:
    explicit SoakSelection(SoakRows rowsBefore);
    /// page is how many rows can be seen, the last one in part.
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers, double page);
    void Click(int row, Qt::KeyboardModifiers modifiers);
    const SoakRows &Rows() const { return rows; }

private:
    int Count() const { return static_cast<int>(rows.size()); }
    int Target(Qt::Key key, double page) const;
    void SetFocus(int row);
    void SelectAlone(int row);
    void SelectRange(int row);
    void Choose(int row, bool toggle);

    SoakRows rows;
    /// What was selected before the range that Shift spans, which begins at the anchor.
    std::vector<bool> base;
    int focus = 0;
    int anchor = 0;
};

/// The lists that Undo and Redo lead to.
class SoakHistory
{
public:
    /// selects: with a selection of its own before it, which is what Undo brings back.
    void AddStep(const SoakList &before, bool selects = false);
    void End();
    void MarkSaved();
    void Undo(const SoakList &before, const SoakList &after) { Go(undo, redo, before, after); }
    void Redo(const SoakList &before, const SoakList &after) { Go(redo, undo, before, after); }
    /// What changes files ends it; whether a file has changed need not show in the list.
    void FollowFiles(const Main &window, bool changed);
    /// Where much memory is held the oldest steps may have been forgotten.
    void Check(const Main &window);

private:
    struct Side {
        std::size_t Rows;
        std::size_t Selection;
        bool OtherSelection;
        int Focus;
        bool Dirty;
    };
    using Sides = std::deque<Side>;
    static Side SideOf(const SoakList &list);
    static void Go(Sides &from, Sides &to, const SoakList &before, const SoakList &after);

    Sides undo;
    Sides redo;
    bool isCrowded = false;
};

/// What a command was told when it asked.
struct SoakAnswers {
    std::vector<PromptAnswer> Given{};
    /// What was chosen to be read and to be written, and the folder.
    QString Opened{};
    QString Saved{};
    QString Folder{};
};

/// The program's rules told a second time, in the plainest way.
class SoakModel
{
public:
    /// The commands that change the list, each of which has a rule of its own.
    static std::vector<QByteArray> Commands();
    /// Requires that a command has made of the list what it must; one without a rule leaves it.
    void Follow(const QByteArray &command, const SoakList &before, const SoakList &after);
    /// The same for selected rows that were dragged before a row: moved there, or added once more.
    void FollowDrag(int row, bool again, const SoakList &before, const SoakList &after);
    /// Requires that panels, columns and commands tell of the list as it is.
    void CheckWindow(const Main &window, const SoakList &list);

    SoakAnswers Answers;
    SoakHistory History;
    /// The entries of the playlists on the disk, by their paths; a folder may have another letter by now.
    QMap<QString, QStringList> Playlists;

private:
    using Rule = void (SoakModel::*)(const SoakList &before, const SoakList &after);
    static const QMap<QByteArray, Rule> &Rules();
    void FollowChange(const QByteArray &command, const SoakList &before, const SoakList &after);
    void FollowSort(const QByteArray &command, const SoakList &before, const SoakList &after);
    void FollowNew(const SoakList &before, const SoakList &after);
    void FollowOpen(const SoakList &before, const SoakList &after);
    void FollowRecent(int index, const SoakList &before, const SoakList &after);
    void FollowImport(const SoakList &before, const SoakList &after);
    void FollowSave(const SoakList &before, const SoakList &after);
    void FollowAddFolder(const SoakList &before, const SoakList &after);
    void FollowAdd(const SoakList &before, const SoakList &after);
    void FollowRefresh(const SoakList &before, const SoakList &after);
    void FollowRandom(const SoakList &before, const SoakList &after);
    void FollowShuffle(const SoakList &before, const SoakList &after);
    void FollowUndo(const SoakList &before, const SoakList &after) { History.Undo(before, after); }
    void FollowRedo(const SoakList &before, const SoakList &after) { History.Redo(before, after); }

    void RequireOpened(const QString &path, SoakList expected, const SoakList &after);
    /// The list after the answers of a save that began with one of them.
    SoakList Saved(SoakList list, std::size_t first);
    /// False when a list with changes stays; else it is as it was left.
    bool GoesOn(SoakList &list);
    void RememberRecent(const QString &path);
    /// A step is what changes more than the selection.
    void NoteStep(const SoakList &before, const SoakList &after);
    void CheckRecent(const Main &window) const;

    QStringList recent;
};

/// How many media files lie below a folder.
int CountSongs(const QString &folder);
