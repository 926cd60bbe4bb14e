#include "purge/DriveSearch.h"

#include "support/FormDriver.h"
#include "support/HostNames.h"

#include <QKeyEvent>
#include <QProgressBar>

using namespace Qt::StringLiterals;

namespace
{
/// The choices for missing items.
enum { Select, Remove, Search };

/// A main window and the purge dialog over it.
struct Purge : FormDriver {
    void Open() { OpenTool("MToolsFilter", "FilterForm", {}); }

    /// Adds rows of files that need not exist; their sizes count from 1.
    void AddRows(const QStringList &paths)
    {
        for (const QString &path : paths) {
            FileRecord record;
            record.FileName = path.section(u'\\', -1);
            record.Folder = path.chopped(record.FileName.size());
            record.Size = F.Window->ListView1.Count() + 1;
            F.Window->ListView1.Insert(record);
        }
    }
    /// Adds rows of files below the folder, as they are.
    void AddFiles(const QStringList &names)
    {
        for (const QString &name : names)
            F.Window->AddFile(F.Inside(name), 0);
    }
    void WriteFiles(const QStringList &names)
    {
        for (const QString &name : names)
            F.Write(name, "x");
    }

    /// The sizes of the rows, with a star behind a selected one, and the first panel of the status bar.
    QString Rows() const
    {
        QString rows;
        for (const PlaylistItem &item : F.Window->ListView1.RowsForSelection())
            rows += QString::number(item.Size) + (item.Selected ? u"* " : u" ");
        return rows + F.Panels().front();
    }
    /// The rows' paths below the folder.
    QString Paths() const
    {
        QStringList paths;
        for (const PlaylistItem &item : F.Window->ListView1.RowsForSelection())
            paths.append(item.FullPath().remove(F.Folder + u'\\'));
        return paths.join(u' ');
    }

    /// Opens the dialog on the action for missing items.
    void Prepare(int action)
    {
        Open();
        Click("EnbPurge");
        Choose("MissAction", action);
    }

    QString Report() const { return Text("lbReport"); }
    /// The controls that are enabled, of those whose state changes.
    QString EnabledControls() const
    {
        QStringList names;
        for (const QWidget *control : Named("^(DupBase|DupCase|DupAction|EnbPurge|MissAction|DontUsePath|FoundPaths|"
                                            "MissingPath|NxtPath|SkipPath|AbortPath|CmdSearch|EnbDuplicate)$"))
            names += control->isEnabled() ? QStringList{control->objectName()} : QStringList();
        names.sort();
        return names.join(u' ');
    }
    /// The suggestions, their folders without that of the test, and which missing folder they are for.
    QString Suggested() const
    {
        return Cells("FoundPaths").join(u' ').remove(ShownPath(F.Folder)) + u' ' +
               At<QProgressBar>("ProgressBar1")->text();
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
        // The texts compared, whether the box is ticked, the action; the rows and the report afterwards.
        const std::tuple<int, bool, int, QString, QString> cases[] = {
            {2, false, 3, u"1 2 3 5 Total: 4"_s, u"Done: Removed 1 Duplicate Items"_s},
            {2, false, 0, u"1* 2 3 4* 5 2 Items"_s, u"Done: Selected 2 Duplicate Items"_s},
            {2, true, 2, u"1 2 3* 4* 5 2 Items"_s, u"Done: Selected 2 Duplicate Items"_s},
            {0, false, 1, u"3 5 Total: 2"_s, u"Done: Removed 3 Duplicate Items"_s},
            {1, false, 0, u"1* 2* 3 4* 5* 4 Items"_s, u"Done: Selected 4 Duplicate Items"_s},
            {1, true, 3, u"1 2 Total: 2"_s, u"Done: Removed 3 Duplicate Items"_s},
        };
        for (const auto &[base, boxTicked, action, rows, report] : cases) {
            Purge p;
            p.AddRows({u"d:\\x\\a.mp3"_s, u"d:\\y\\a.mp3"_s, u"d:\\X\\A.mp3"_s, u"d:\\x\\a.mp3"_s, u"d:\\y\\b.mp3"_s});
            p.Open();
            p.Click("EnbDuplicate");
            p.Choose("DupBase", base);
            if (boxTicked)
                p.Click("DupCase");
            p.Choose("DupAction", action);
            p.Click("CmdSearch");
            QCOMPARE(p.Rows(), rows);
            QCOMPARE(p.Report(), report);
            QCOMPARE(p.F.Window->PlaylistDirty, action % 2 == 1);
        }
        Purge p;
        p.AddRows({u"d:\\x\\a.mp3"_s, u"d:\\x\\"_s, u"d:\\y\\"_s});
        p.Open();
        p.F.Select({1});
        p.Click("EnbDuplicate");
        p.Click("CmdSearch");
        QCOMPARE(p.Report(), u"Done: No Duplicate Items were found."_s);
        QCOMPARE(p.Rows(), u"1 2 3 Total: 3"_s);
        // Rows without names are alike from the first one on.
        p.Choose("DupBase", 0);
        p.Click("CmdSearch");
        QCOMPARE(p.Rows(), u"1 Total: 1"_s);
    }

    void SelectsAndRemovesMissing()
    {
        for (const int action : {Select, Remove}) {
            Purge p;
            p.F.Prompts.Expect(u"The function cannot be performed because there are no Playlist items!\n"
                               u"Use Drag and Drop or 'Add Item' to add files/folders/m3us to the list."_s,
                               PromptAnswer::Ok);
            p.F.Trigger("MToolsFilter");
            p.WriteFiles({u"1.wma"_s});
            p.F.Write(u"empty.wma"_s, {});
            p.AddFiles({u"1.wma"_s, u"gone.wma"_s, u"empty.wma"_s});
            // A relative path is missing, whatever answers to it.
            p.AddRows({u"1.wma"_s, u"\\\\server\\share\\a.wma"_s, u"\\http://host/a.wma"_s, u"f:\\a.wma"_s});
            p.Open();
            QCOMPARE(p.Text("lbDrives"), u"1 of them lies on f:, which is not there"_s);
            p.AddRows(QStringList(1204, u"e:\\x\\a.wma"_s));
            p.F.Window->PlaylistDirty = false;
            p.Open();
            QCOMPARE(p.Text("lbDrives"),
                     QLocale().toString(1204) + u" of them lie on e:, 1 on f:, which are not there");
            QCOMPARE(p.EnabledControls(), u"EnbDuplicate EnbPurge"_s);
            p.Prepare(action);
            p.Click("CmdSearch");
            QVERIFY(p.Rows().startsWith(action == Select ? u"1 0* 0 4* 5* 6* 7* 8* 9* " : u"1 0 Total: 2"));
            QCOMPARE(p.Report(), action == Select ? u"Done: 1209 Items Selected"_s : u"Done: 1209 Items Removed"_s);
            QCOMPARE(p.F.Window->PlaylistDirty, action == Remove);
            QCOMPARE(p.Text("lbDrives").isEmpty(), action == Remove);
            p.Click("CmdSearch");
            QVERIFY(action == Select || p.Report() == u"Done: No missing Items Found...");
            QCOMPARE(p.EnabledControls(), u"CmdSearch EnbDuplicate EnbPurge MissAction"_s);
            p.Click("EnbDuplicate");
            p.Click("EnbPurge");
            QCOMPARE(p.EnabledControls(), u"CmdSearch DupAction DupBase DupCase EnbDuplicate EnbPurge"_s);
        }
    }

    void RestoresFolderByFolder()
    {
        Purge p;
        p.WriteFiles({u"k.wma"_s, u"1\\a.wma"_s, u"1\\e.mp3"_s, u"1\\n.txt"_s, u"2\\xa.wma"_s, u"3\\A.wma"_s,
                      u"3\\b.wma"_s, u"3\\c.wma"_s});
        p.AddFiles(
            {u"old\\a.wma"_s, u"old\\b.wma"_s, u"other\\xa.wma"_s, u"old\\c.wma"_s, u"k.wma"_s, u"old\\a.wma"_s});
        p.F.Select({2});
        p.Prepare(Search);
        p.Click("CmdSearch");
        QCOMPARE(p.Report(), u"7 Items were returned by the Search..."_s);
        QCOMPARE(p.EnabledControls(), u"AbortPath FoundPaths MissingPath NxtPath SkipPath"_s);
        QCOMPARE(p.Text("MissingPath"), ShownPath(p.F.Inside(u"old\\a.wma"_s)));
        QCOMPARE(p.Suggested(), u"\\3\\|3 of 3 files \\1\\|1 of 3 files \\2\\|0 of 3 files Folder 1 of 3"_s);
        // The selected folder gives back its rows, also those that lie apart; the ticked one adds all its audio files.
        p.F.Window->PlaylistDirty = false;
        p.SelectRow("FoundPaths", 1);
        QTest::keyClick(p.At("FoundPaths"), Qt::Key_Space);
        p.SelectRow("FoundPaths", 0);
        p.DoubleClickRow("FoundPaths", 0);
        QTest::keyClick(p.Form, Qt::Key_Return);
        QCOMPARE(p.Paths(), u"3\\A.wma 3\\b.wma other\\xa.wma 3\\c.wma k.wma 3\\A.wma 1\\e.mp3 1\\a.wma"_s);
        QCOMPARE(p.Rows(), u"1 1 0 1 1 1 1 1 Total: 8"_s);
        QVERIFY(p.F.Window->PlaylistDirty && p.F.Window->ListView1.FocusedRow() == 2);
        QCOMPARE(p.Suggested(), u"\\2\\|1 of 1 file Folder 2 of 3"_s);
        p.Click("SkipPath");
        QVERIFY(p.Suggested().endsWith(u"Folder 3 of 3"));
        p.Click("NxtPath");
        QCOMPARE(p.Report(), u"Done: Restored 4 Items..."_s);
        QVERIFY(p.Paths().contains(u"other\\xa.wma") &&
                p.F.ShellCalls == QStringList{u"explore "_s + p.F.Inside(u"3\\"_s)});
        const QString idle = u"CmdSearch DontUsePath EnbDuplicate EnbPurge FoundPaths MissAction MissingPath"_s;
        QCOMPARE(p.EnabledControls(), idle);
        // What is left over, once more: skipped, aborted, and with the window closed.
        const std::pair<const char *, QString> ends[] = {{"SkipPath", u"Done: No items were restored..."_s},
                                                         {"AbortPath", u"Done: Restoration Aborted..."_s},
                                                         {"CmdClose", u"Twiddling Thumbs..."_s}};
        for (const auto &[command, report] : ends) {
            p.Click("CmdSearch");
            p.Click(command);
            QCOMPARE(p.Report(), report);
            QCOMPARE(p.EnabledControls(), idle);
            QVERIFY(p.Text("MissingPath").isEmpty() && p.Cells("FoundPaths").isEmpty());
        }
        QVERIFY(!p.Form->isVisible());
    }

    void UsesPathInfo()
    {
        Purge p;
        p.WriteFiles({u"z\\old\\A.wma"_s, u"a.wma"_s, u"share\\m\\a.wma"_s});
        p.AddRows({u"q:\\old\\a.wma"_s, u"old\\a.wma"_s, u"\\\\share\\m\\a.wma"_s});
        p.Prepare(Search);
        p.Click("DontUsePath");
        p.Click("CmdSearch");
        QCOMPARE(p.Report(), u"3 Items were returned by the Search..."_s);
        // A path with a drive is part of no other path.
        QCOMPARE(p.Suggested(), u"No Suggestions...| Folder 1 of 3"_s);
        p.DoubleClickRow("FoundPaths", 0);
        for (const QString &suggested :
             {u"\\z\\old\\|1 of 1 file Folder 2 of 3"_s, u"\\share\\m\\|1 of 1 file Folder 3 of 3"_s}) {
            p.Click("NxtPath");
            QCOMPARE(p.Suggested(), suggested);
        }
        p.Click("NxtPath");
        QCOMPARE(p.Report(), u"Done: Restored 2 Items..."_s);
        QCOMPARE(p.Paths(), u"q:\\old\\a.wma z\\old\\A.wma share\\m\\a.wma"_s);
        QCOMPARE(p.F.ShellCalls, QStringList());
    }

    void EscapeStops()
    {
        Purge p;
        p.WriteFiles({u"new\\a.wma"_s});
        p.AddFiles({u"old\\a.wma"_s});
        p.Prepare(Select);
        p.PressEscape();
        p.Click("CmdSearch");
        QCOMPARE(p.Report(), u"Stopped: The missing Items were left as they are..."_s);
        p.Choose("MissAction", Search);
        const auto roots = std::exchange(p.F.Roots, [&p] {
            p.PressEscape();
            return QStringList{p.F.Inside({})};
        });
        p.Click("CmdSearch");
        QCOMPARE(p.Report(), u"No Items were found to match... Stopped at "_s + ShownPath(p.F.Inside({})));
        p.F.Roots = roots;
        p.Click("CmdSearch");
        p.PressEscape();
        p.Click("NxtPath");
        QCOMPARE(p.Report(), u"Stopped: Restored 0 Items so far..."_s);
        QCOMPARE(p.Suggested(), u"\\new\\|1 of 1 file Folder 1 of 1"_s);
        p.Click("NxtPath");
        QCOMPARE(p.Paths(), u"new\\a.wma"_s);
    }

    void WalksEachFolderOnce()
    {
        Purge p;
        p.WriteFiles({u"a\\b\\x.wma"_s, u"a\\y.wma"_s, u"c\\X.WMA"_s});
        if (NamesHoldAnything())
            QFile::link(p.F.Temporary.filePath(u"a"_s), p.F.Temporary.filePath(u"link"_s));
        const QStringList roots{p.F.Inside(u"a\\b"_s), p.F.Inside({}), p.F.Inside(u"none"_s), u"z:\\proc\\"_s};
        QStringList told;
        Progress progress;
        progress.SetText = [&told](const QString &folder) { told.append(folder); };
        const QStringList missing{u"q:\\x.wma"_s, u"q:\\X.wma"_s, u"q:\\x.wma"_s, u"q:\\stat"_s};
        FoundItems found = SearchDrives(roots, missing, false, progress);
        QCOMPARE(told, (QStringList{roots[0], roots[1], p.F.Inside(u"a"_s), p.F.Inside(u"c"_s)}));
        QCOMPARE(found.Count, 6);
        QCOMPARE(found.Folders[1].Items, (QStringList{p.F.Inside(u"c\\X.wma"_s), p.F.Inside(u"c\\x.wma"_s)}));
        // Stopped: what was found by then.
        progress.Stopped = [&told] { return told.size() >= 6; };
        QCOMPARE(SearchDrives(roots, missing, false, progress).Count, 3);
    }
};

QTEST_MAIN(FilterFormTest)
#include "FilterFormTest.moc"
