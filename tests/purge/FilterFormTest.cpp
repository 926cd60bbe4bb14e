#include "purge/DriveSearch.h"
#include "session/TickList.h"

#include "support/FormDriver.h"
#include "support/HostNames.h"
#include "text/FormatText.h"

#include <QKeyEvent>
#include <QProgressBar>

using namespace Qt::StringLiterals;

namespace
{
/// The choices for missing items.
enum { Select, Remove, Search };

/// A main window and the purge dialog over it.
struct Purge : FormDriver {
    /// Writes files, then adds rows of others, there or not. Relative paths lie below the folder.
    Purge(const QStringList &written, const QStringList &rows)
    {
        for (const QString &name : written)
            F.Write(name, "x");
        for (const QString &path : rows)
            F.Window->AddFile(path, 0);
    }

    /// Opens the dialog and ticks a page's box.
    void Open(const char *box)
    {
        OpenTool("MToolsFilter", "FilterForm", {});
        Click(box);
    }

    /// The report, the rows' paths below the folder, a star behind selected ones, and the first panel.
    QString Outcome() const
    {
        QString text = Text("lbReport") + u'|';
        for (const PlaylistItem &item : F.Window->ListView1.RowsForSelection())
            text += item.FullPath().remove(F.Folder + u'\\') + (item.Selected ? u"* " : u" ");
        return text + F.Panels().front();
    }
    /// The controls that are enabled, of those whose state changes.
    QString EnabledControls() const
    {
        QStringList names;
        for (const QWidget *control : Named("^(Dup(Base|Case|Action)|Enb.*|MissAction|DontUsePath|FoundPaths|"
                                            "(Missing|Nxt|Skip|Abort)Path|CmdSearch)$"))
            names += control->isEnabled() ? QStringList{control->objectName()} : QStringList();
        names.sort();
        return names.join(u' ');
    }
    /// The suggestions, their folders without that of the test, and which missing folder they are for.
    QString Suggested() const
    {
        const QString rows = Cells("FoundPaths").join(u' ').remove(ShownPath(F.Folder));
        return rows + u' ' + At<QProgressBar>("ProgressBar1")->text();
    }

    /// Escape, as soon as somebody looks whether it was pressed.
    void PressEscape() const { QCoreApplication::postEvent(Form, new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, {})); }
};
} // namespace

class FilterFormTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Duplicates()
    {
        const QStringList five{u"x\\a"_s, u"y\\a"_s, u"X\\A"_s, u"x\\a"_s, u"y\\b"_s};
        const QStringList nameless{u"y\\"_s, u"x\\"_s, u"x\\a"_s};
        // The rows, the texts compared, whether the box is ticked, the action; the outcome.
        const std::tuple<QStringList, int, bool, int, QString> cases[] = {
            {five, 2, false, 3, u"Done: Removed 1 Duplicate Items|x\\a y\\a X\\A y\\b Total: 4"_s},
            {five, 2, false, 0, u"Done: Selected 2 Duplicate Items|x\\a* y\\a X\\A x\\a* y\\b 2 Items"_s},
            {five, 2, true, 2, u"Done: Selected 2 Duplicate Items|x\\a y\\a X\\A* x\\a* y\\b 2 Items"_s},
            {five, 0, false, 1, u"Done: Removed 3 Duplicate Items|X\\A y\\b Total: 2"_s},
            {five, 1, false, 0, u"Done: Selected 4 Duplicate Items|x\\a* y\\a* X\\A x\\a* y\\b* 4 Items"_s},
            {five, 1, true, 3, u"Done: Removed 3 Duplicate Items|x\\a y\\a Total: 2"_s},
            {nameless, 2, false, 1, u"Done: No Duplicate Items were found.|y\\ x\\ x\\a Total: 3"_s},
            // Rows without names are alike from the first one on.
            {nameless, 0, false, 3, u"Done: Removed 2 Duplicate Items|x\\a Total: 1"_s},
        };
        for (const auto &[rows, base, boxTicked, action, outcome] : cases) {
            Purge p({}, rows);
            p.Open("EnbDuplicate");
            p.F.Select({1});
            p.Choose("DupBase", base);
            if (boxTicked)
                p.Click("DupCase");
            p.Choose("DupAction", action);
            p.Click("CmdSearch");
            QCOMPARE(p.Outcome(), outcome);
            QCOMPARE(p.F.Window->PlaylistDirty, outcome.contains(u"Removed"));
            // "Done: Removed 1 Duplicate Items" is told as "Removed 1 duplicate item".
            const QStringList words = outcome.section(u'|', 0, 0).split(u' ');
            QString answer = u"No duplicate items"_s;
            if (words[1] != "No"_L1)
                answer = words[1] + u' ' + words[2] + (words[2] == "1"_L1 ? u" duplicate item" : u" duplicate items");
            p.Click("CmdClose");
            QCOMPARE(p.F.Window->PanelText(4), answer);
        }
    }

    void SelectsAndRemovesMissing()
    {
        for (const int action : {Select, Remove}) {
            Purge p({u"1.wma"_s},
                    {u"1.wma"_s, u"gone.wma"_s, u"\\\\server\\share\\a.wma"_s, u"http://host/a.wma"_s, u"y:\\a.wma"_s});
            // A relative path is missing, whatever answers to it.
            FileRecord relative;
            relative.FileName = u"1.wma"_s;
            p.F.Window->ListView1.Insert(relative);
            p.Open("EnbDuplicate");
            QCOMPARE(p.EnabledControls(), u"CmdSearch DupAction DupBase DupCase EnbDuplicate EnbPurge"_s);
            p.Click("EnbDuplicate");
            QCOMPARE(p.EnabledControls(), u"EnbDuplicate EnbPurge"_s);
            QCOMPARE(p.Text("lbDrives"), u"1 of them lies on y:, which is not there"_s);
            for (int row = 0; row < 1204; ++row)
                p.F.Window->AddFile(u"x:\\b\\a.wma"_s, 0);
            p.Open("EnbPurge");
            QCOMPARE(p.Text("lbDrives"),
                     u"%1 of them lie on x:, 1 on y:, which are not there"_s.arg(QLocale().toString(1204)));
            p.Choose("MissAction", action);
            p.Click("CmdSearch");
            const QString outcome = action == Select
                                        ? u"Done: 1209 Items Selected|1.wma gone.wma* \\\\server\\share\\a.wma* "
                                          "\\http://host/a.wma* y:\\a.wma* 1.wma* x:\\"_s
                                        : u"Done: 1209 Items Removed|1.wma Total: 1"_s;
            QVERIFY(p.Outcome().startsWith(outcome));
            QCOMPARE(p.F.Window->PanelText(4),
                     (action == Select ? u"Selected %1 missing items"_s : u"Removed %1 missing items"_s)
                         .arg(GroupedDigits(1209)));
            QVERIFY(p.F.Window->PlaylistDirty == (action == Remove) &&
                    p.Text("lbDrives").isEmpty() == (action == Remove));
            QCOMPARE(p.EnabledControls(), u"CmdSearch EnbDuplicate EnbPurge MissAction"_s);
            p.Click("CmdSearch");
            QVERIFY(action == Select || p.Text("lbReport") == u"Done: No missing Items Found...");
            QVERIFY(action == Select || p.F.Window->PanelText(4) == u"No missing items");
        }
    }

    void RestoresFolderByFolder()
    {
        Purge p({u"k.wma"_s, u"1\\a.wma"_s, u"1\\e.mp3"_s, u"1\\n.txt"_s, u"2\\xa.wma"_s, u"3\\A.wma"_s, u"3\\b.wma"_s,
                 u"3\\c.wma"_s},
                {u"old\\a.wma"_s, u"old\\b.wma"_s, u"other\\xa.wma"_s, u"old\\c.wma"_s, u"k.wma"_s, u"old\\a.wma"_s});
        p.F.Select({2});
        p.Open("EnbPurge");
        p.Choose("MissAction", Search);
        p.Click("CmdSearch");
        QCOMPARE(p.Text("lbReport"), u"7 Items were returned by the Search..."_s);
        QCOMPARE(p.F.Window->PanelText(4), u"Found 7 files for 5 missing items"_s);
        QCOMPARE(p.EnabledControls(), u"AbortPath FoundPaths MissingPath NxtPath SkipPath"_s);
        QCOMPARE(p.Text("MissingPath"), ShownPath(p.F.Inside(u"old\\a.wma"_s)));
        QCOMPARE(p.Suggested(), u"\\3\\|3 of 3 files \\1\\|1 of 3 files \\2\\|0 of 3 files Folder 1 of 3"_s);
        // The selected folder gives back its rows, also those that lie apart; the ticked one adds all its audio files.
        p.F.Window->PlaylistDirty = false;
        QTest::keyClick(p.Form->focusWidget(), Qt::Key_Down);
        QTest::keyClick(p.Form->focusWidget(), Qt::Key_Space);
        p.DoubleClickRow("FoundPaths", 0);
        QTest::keyClick(p.Form, Qt::Key_Return);
        QVERIFY(p.Outcome().endsWith(
            u"|3\\A.wma 3\\b.wma other\\xa.wma 3\\c.wma k.wma 3\\A.wma 1\\e.mp3 1\\a.wma Total: 8"));
        QVERIFY(p.F.Window->PlaylistDirty && p.F.Window->ListView1.FocusedRow() == 2);
        QCOMPARE(p.F.ShellCalls, QStringList{u"explore "_s + p.F.Inside(u"3\\"_s)});
        QCOMPARE(p.Suggested(), u"\\2\\|1 of 1 file Folder 2 of 3"_s);
        QCOMPARE(p.F.Undoable(), u"Restore 4 items"_s);
        p.Click("SkipPath");
        p.Click("NxtPath");
        QVERIFY(p.Outcome().startsWith(u"Done: Restored 4 Items...|3\\A.wma 3\\b.wma other\\xa.wma "));
        QCOMPARE(p.F.Window->PanelText(4), u"Restored 4 items"_s);
        // What is left over, once more: skipped, aborted, and with the window closed.
        const std::pair<const char *, QString> ends[] = {{"SkipPath", u"Done: No items were restored..."_s},
                                                         {"AbortPath", u"Done: Restoration Aborted..."_s},
                                                         {"CmdClose", u"Twiddling Thumbs..."_s}};
        for (const auto &[command, report] : ends) {
            QTest::keyClick(p.Form->focusWidget(), Qt::Key_Space);
            p.Click(command);
            QCOMPARE(p.Text("lbReport"), report);
            QCOMPARE(p.EnabledControls(),
                     u"CmdSearch DontUsePath EnbDuplicate EnbPurge FoundPaths MissAction MissingPath"_s);
            QVERIFY(p.Text("MissingPath").isEmpty() && p.Cells("FoundPaths").isEmpty());
            QVERIFY(p.At<QProgressBar>("ProgressBar1")->value() < 0);
            QCOMPARE(p.F.Window->PanelText(4), u"Restored 0 items"_s);
        }
        QVERIFY(!p.Form->isVisible());
    }

    void UsesPathInfo()
    {
        Purge p({u"z\\old\\A.wma"_s, u"a.wma"_s, u"share\\m\\a.wma"_s},
                {u"q:\\old\\a.wma"_s, u"\\\\share\\m\\a.wma"_s});
        p.Open("EnbPurge");
        p.Choose("MissAction", Search);
        p.Click("DontUsePath");
        p.Click("CmdSearch");
        QCOMPARE(p.Text("lbReport"), u"2 Items were returned by the Search..."_s);
        // A path with a drive is part of no other path.
        QCOMPARE(p.Suggested(), u"No Suggestions...| Folder 1 of 2"_s);
        p.DoubleClickRow("FoundPaths", 0);
        p.Click("NxtPath");
        QCOMPARE(p.Suggested(), u"\\share\\m\\|1 of 1 file Folder 2 of 2"_s);
        p.F.Window->PlaylistDirty = false;
        p.Click("NxtPath");
        QCOMPARE(p.Outcome(), u"Done: Restored 1 Items...|q:\\old\\a.wma share\\m\\a.wma Total: 2"_s);
        QVERIFY(p.F.Window->PlaylistDirty);
    }

    void EscapeStops()
    {
        Purge p({u"new\\a.wma"_s}, {u"old\\a.wma"_s});
        p.Open("EnbPurge");
        p.PressEscape();
        p.Click("CmdSearch");
        QCOMPARE(p.Text("lbReport"), u"Stopped: The missing Items were left as they are..."_s);
        QCOMPARE(p.F.Window->PanelText(4), u"Stopped, missing items left as they are"_s);
        const auto roots = p.F.Roots;
        p.F.Roots = [&] { return p.PressEscape(), roots(); };
        p.Choose("MissAction", Search);
        p.Click("CmdSearch");
        QCOMPARE(p.Text("lbReport"), u"No Items were found to match... Stopped at "_s + ShownPath(p.F.Inside({})));
        QCOMPARE(p.F.Window->PanelText(4), u"Found 0 files for 1 missing item"_s);
        p.F.Roots = roots;
        p.Click("CmdSearch");
        p.PressEscape();
        p.Click("NxtPath");
        QCOMPARE(p.Outcome(), u"Stopped: Restored 0 Items so far...|old\\a.wma Total: 1"_s);
        QCOMPARE(p.Suggested(), u"\\new\\|1 of 1 file Folder 1 of 1"_s);
        p.Click("NxtPath");
        QCOMPARE(p.Outcome(), u"Done: Restored 1 Items...|new\\a.wma Total: 1"_s);
        // A folder that was to be added is still to be.
        Purge q({u"new\\a.wma"_s, u"one\\a.wma"_s, u"one\\b.wma"_s}, {u"old\\a.wma"_s});
        q.Open("EnbPurge");
        q.Choose("MissAction", Search);
        q.Click("CmdSearch");
        q.SelectRow("FoundPaths", 1);
        q.At<TickList>("FoundPaths")->SetTicked(0, true);
        q.PressEscape();
        q.Click("NxtPath");
        QVERIFY(q.At<TickList>("FoundPaths")->IsTicked(0));
        q.Click("NxtPath");
        QCOMPARE(q.Outcome(), u"Done: Restored 1 Items...|one\\a.wma new\\a.wma Total: 2"_s);
    }

    void WalksEachFolderOnce()
    {
        const Purge p({u"a\\b\\x.wma"_s, u"a\\y.wma"_s, u"c\\X.WMA"_s}, {});
        if (NamesHoldAnything())
            QFile::link(p.F.Temporary.filePath(u"a"_s), p.F.Temporary.filePath(u"link"_s));
        QStringList roots{p.F.Inside(u"a\\b"_s), p.F.Inside({}), p.F.Inside(u"none"_s)};
        if (NamesHoldAnything())
            roots.append(u"z:\\proc\\"_s);
        const QStringList missing{u"q:\\x.wma"_s, u"q:\\X.wma"_s, u"q:\\x.wma"_s, u"q:\\stat"_s};
        QStringList told;
        Progress progress;
        progress.SetText = [&told](const QString &folder) { told.append(folder); };
        const FoundItems found = SearchDrives(roots, missing, false, progress);
        QCOMPARE(told, (QStringList{roots[0], roots[1], p.F.Inside(u"a"_s), p.F.Inside(u"c"_s)}));
        QCOMPARE(found.Folders[1].Items, (QStringList{p.F.Inside(u"c\\X.wma"_s), p.F.Inside(u"c\\x.wma"_s)}));
        // Stopped: what was found by then.
        progress.Stopped = [&told] { return told.size() >= 6; };
        QCOMPARE(SearchDrives(roots, missing, false, progress).Count, 3);
    }
};

QTEST_MAIN(FilterFormTest)
#include "FilterFormTest.moc"
