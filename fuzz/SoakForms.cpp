#include "SoakForms.h"

#include "FuzzTarget.h"
#include "text/PathText.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{
/// The buttons that do a tool's work.
const QList<QByteArray> working{"CmdNext",      "CmdProcess",  "CmdUpdate", "cmdUndo",           "CmdSearch",
                                "NxtPath",      "cmdSelAl",    "cmdNext",   "BrowseAssembleLoc", "BrowseImageLoc",
                                "EnbPurge",     "cmdSet",      "cmdRemove", "CmdPaste",          "ID3v1Present",
                                "ID3v2Present", "EnbDuplicate"};

/// Each row that has another path is a file that lies in the same folder.
void RequireRenamed(const SoakRow &before, const SoakRow &after)
{
    SoakRow expected = before;
    expected.Path = after.Path;
    Require(after == expected, "a renaming changes paths alone");
    Require(before.Path == after.Path ||
                (FolderOf(before.Path) == FolderOf(after.Path) && PathExists(after.Path) && !PathExists(before.Path)),
            "a renamed row reaches its file");
}

void RequireRestored(const SoakRow &before, const SoakRow &after)
{
    Require(before == after || (!PathExists(before.Path) && PathExists(after.Path)), "a missing file is found again");
    if (before != after)
        RequireMeasured(&after, &after + 1);
}

using RequireRow = void (*)(const SoakRow &before, const SoakRow &after);

/// Of the rows that were there; more may follow.
void RequireEach(const SoakList &before, const SoakList &after, RequireRow require)
{
    const SoakRows rows = Unselected(before.Rows);
    const SoakRows others = Unselected(after.Rows);
    Require(others.size() >= rows.size(), "no row goes");
    for (std::size_t i = 0; i < rows.size(); ++i)
        require(rows[i], others[i]);
}

void RequireRowsStay(const SoakList &before, const SoakList &after)
{
    Require(Unselected(before.Rows) == Unselected(after.Rows), "a tool that only looks leaves the rows");
}

void RequireRowsGo(const SoakList &before, const SoakList &after)
{
    const SoakRows rows = Unselected(before.Rows);
    const SoakRows others = Unselected(after.Rows);
    auto next = others.begin();
    for (const SoakRow &row : rows)
        next += next != others.end() && *next == row ? 1 : 0;
    Require(next == others.end(), "a purge only takes rows away");
}

/// The rows that were selected may have been read anew.
void RequireTagged(const SoakList &before, const SoakList &after)
{
    Require(PathsOf(before.Rows) == PathsOf(after.Rows), "a tag changes no path");
    const SoakRows rows = Unselected(before.Rows);
    const SoakRows others = Unselected(after.Rows);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        Require(before.Rows[i].Selected || rows[i] == others[i], "a tag is written to selected files alone");
        if (rows[i] != others[i])
            RequireMeasured(&others[i], &others[i] + 1);
    }
}

/// What the list is called and sorted by stays, and it has changed where a path has; mayBeFull: also where none has.
void RequireNames(const SoakList &before, const SoakList &after, bool mayBeFull)
{
    Require(before.File == after.File && before.SortKey == after.SortKey && before.SortOrder == after.SortOrder,
            "a tool leaves the name and the order of the list");
    const bool dirty = before.Dirty || PathsOf(before.Rows) != PathsOf(after.Rows);
    Require(after.Dirty == dirty || (after.Dirty && mayBeFull && after.Rows.size() == Grid::MaxRows),
            "a tool that changes paths changes the list");
}
} // namespace

QWidget *SoakForms::Choose(const QDialog &form) const
{
    QList<QWidget *> controls = form.findChildren<QWidget *>();
    // How long a run must wait for the next one is the only thing that goes by the time.
    controls.removeIf([](const QWidget *control) {
        return !control->isVisible() || !control->isEnabled() || control->objectName().startsWith("qt_"_L1) ||
               qobject_cast<const QLabel *>(control) != nullptr || control->objectName() == "Delay"_L1;
    });
    QList<QWidget *> workers = controls;
    workers.removeIf([](const QWidget *control) { return !working.contains(control->objectName().toUtf8()); });
    const QList<QWidget *> &some = workers.isEmpty() || draw(5) < 2 ? controls : workers;
    return some.isEmpty() ? nullptr : some[draw(static_cast<int>(some.size()))];
}

void SoakForms::Work(const QDialog &form, QWidget &control) const
{
    if (auto *delay = form.findChild<QAbstractButton *>("Delay"_L1); delay != nullptr && delay->isChecked())
        delay->click();
    Use(control);
    CloseMenu();
    if (form.findChild<QWidget *>("CmdProcess"_L1) != nullptr && qobject_cast<QAbstractButton *>(&control) != nullptr)
        QTest::qWait(20);
    QCoreApplication::processEvents();
}

void SoakForms::Use(QWidget &control) const
{
    if (qobject_cast<QLineEdit *>(&control) != nullptr || qobject_cast<QPlainTextEdit *>(&control) != nullptr)
        QTest::keyClicks(&control, QString::number(draw(300)));
    else if (auto *pages = qobject_cast<QTabWidget *>(&control))
        pages->setCurrentIndex(draw(pages->count()));
    else if (auto *list = qobject_cast<QAbstractItemView *>(&control); list != nullptr && draw(2) == 0)
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, QPoint(20, 8 + draw(60)));
    else if (list != nullptr)
        QTest::keyClick(list, Qt::Key_Space);
    else if (qobject_cast<QAbstractButton *>(&control) != nullptr)
        QTest::mouseClick(&control, Qt::LeftButton, {}, QPoint(8, control.height() / 2));
    else
        QTest::keyClick(&control, draw(4) == 0 ? Qt::Key_Up : Qt::Key_Down);
}

/// A menu that has opened lets one of its entries be chosen.
void SoakForms::CloseMenu() const
{
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (menu == nullptr)
        return;
    menu->close();
    menu->actions()[draw(static_cast<int>(menu->actions().size()))]->trigger();
}

void SoakForms::Follow(const QByteArray &form, const QByteArray &control, const SoakList &before, const SoakList &after,
                       const Main &window, SoakHistory &history)
{
    const bool changed = Unselected(before.Rows) != Unselected(after.Rows);
    const bool refreshes = form == "frmDrives" && (control == "cmdSet" || control == "cmdRemove");
    if (refreshes) {
        RequireRefreshed(before, after);
    } else if (form == "RenameForm") {
        Require(before.Rows.size() == after.Rows.size(), "a renaming keeps every row");
        RequireEach(before, after, RequireRenamed);
    } else if (form == "Id3Info") {
        RequireTagged(before, after);
    } else if (form == "FilterForm" && control == "NxtPath") {
        RequireEach(before, after, RequireRestored);
        RequireMeasured(after.Rows.data() + before.Rows.size(), after.Rows.data() + after.Rows.size());
    } else if (form == "FilterForm" && control == "CmdSearch") {
        RequireRowsGo(before, after);
    } else if (form == "FilterForm" || form == "frmSearch") {
        RequireRowsStay(before, after);
    } else {
        RequireList(after, before, "a tool that only reads leaves the list");
    }
    RequireNames(before, after, form == "FilterForm" && control == "NxtPath");
    if (form == "RenameForm" || form == "Id3Info")
        history.FollowFiles(window, changed);
    else if (changed || (refreshes && !before.Rows.empty()))
        history.AddStep(before, control == "CmdSearch");
}
