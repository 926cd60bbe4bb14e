#include "support/FormDriver.h"
#include "support/HostNames.h"

#include "session/TickList.h"

using namespace Qt::StringLiterals;

class AutoCreateTest : public QObject
{
    Q_OBJECT

    /// The wizard over two albums and a file above them. Their names are no part of the test folder's name, since a
    /// piece that stands anywhere in every folder counts as common.
    struct Wizard : FormDriver {
        Wizard()
        {
            for (const QString &name : {u"a\\1x\\1.wma"_s, u"a\\1x\\2.wma"_s, u"a\\2y\\3.wma"_s, u"a\\4.wma"_s})
                Add(name);
            Open();
        }
        void Add(const QString &name) { F.Window->AddFile(F.Write(name, "x"), 0); }
        void Open() { OpenTool("MToolsM3UWiz", "AutoCreateWizard", {}); }
        /// The step that is shown, and the commands that are enabled.
        QString State() const { return QString::number(Step()) + u' ' + Usable("^(CmdBack|CmdNext|cmdUndo|BaseF.*)$"); }
        /// The lines of the report from one of them on, joined, the test's folder as "~".
        QString Report(int from = 0) const { return Cells("lstReport").mid(from).join(u'|').replace(F.Folder, u"~"_s); }
        void Undo(PromptAnswer answer) { ClickAndRead("cmdUndo", u"Delete all files created?"_s, answer); }
        /// A playlist's lines, joined, with slashes.
        QByteArray Lines(const QString &name) const { return F.Read(name).replace("\r\n", "|").replace('\\', '/'); }
    };

private Q_SLOTS:
    void ARunAndItsUndo()
    {
        Wizard w;
        w.F.Write(u"a\\2y\\2y-a.m3u"_s, "former");
        w.Next(1);
        w.Click("CmdBack");
        QCOMPARE(w.State(), u"0 BaseFolderOnly CmdNext"_s);
        w.Next(1);
        w.DoubleClickRow("lstPaths", 0);
        QCOMPARE(w.State() + w.F.ShellCalls.join(u'|'), u"1 CmdBack CmdNextexplore "_s + w.F.Inside(u"a\\1x\\"_s));
        w.At<TickList>("lstPaths")->SetTicked(2, false);
        w.Next(3);
        QCOMPARE(w.Report(1),
                 u"Root Folder found as: ~\\a|Building a list of files to be created...|~\\a\\1x\\1x-a.m3u|"
                 "~\\a\\2y\\2y-a.m3u|Searching for duplicates...|No duplicates found...|Creating Files...|"
                 "> - ~\\a\\1x\\1x-a.m3u|> - ~\\a\\2y\\2y-a.m3u|PROCESS COMPLETE!|2 Files Requested|"
                 "2 Files written OK|0 Files could not be created"_s);
        QCOMPARE(w.Lines(u"a\\1x\\1x-a.m3u"_s) + w.Lines(u"a\\2y\\2y-a.m3u"_s), "1.wma|2.wma|3.wma|");
        QCOMPARE(w.State() + w.Focused() + w.Text("Label5").first(17), u"3 cmdUndo CmdNextCmdCloseProcess Complete,"_s);
        QCOMPARE(w.F.Window->PanelText(4), u"2 playlists written"_s);
        // Only a click that is meant begins anew, which forgets the undo.
        w.PressOn("CmdNext", Qt::Key_N);
        w.Undo(PromptAnswer::No);
        w.Undo(PromptAnswer::Yes);
        QCOMPARE(w.F.Window->PanelText(4), u"2 playlists deleted"_s);
        QCOMPARE(w.Report(14), u"User request UNDO....|Successfully Deleted file: ~\\a\\1x\\1x-a.m3u|"
                               "Put back the former file: ~\\a\\2y\\2y-a.m3u|PROCESS COMPLETE!|2 Files Requested|"
                               "2 Files deleted OK|0 Files could not be deleted [in use, missing?]"_s);
        QCOMPARE(w.Lines(u"a\\1x\\1x-a.m3u"_s) + w.Lines(u"a\\2y\\2y-a.m3u"_s), "former");
        w.Next(1);
        QCOMPARE(w.State() + w.Report() + w.Text("Label5").first(11), u"0 BaseFolderOnly CmdNextThe process"_s);

        // A file that is gone is told, and what an undo has taken back it does not touch again.
        w.F.Write(u"a\\all.m3u\\in the way"_s, "x");
        w.Next(2);
        w.Enter("Parameters", u"all"_s);
        w.Next(2);
        QVERIFY(w.Report(11).contains(u"X - ~\\a\\all.m3u|PROCESS COMPLETE!|3 Files Requested|2 Files written OK|1 "));
        QCOMPARE(w.F.Window->PanelText(4), u"2 playlists written, 1 failed"_s);
        QVERIFY(DeleteFile(w.F.Inside(u"a\\1x\\all.m3u"_s)));
        w.Undo(PromptAnswer::Yes);
        w.F.Write(u"a\\2y\\all.m3u"_s, "new");
        w.Undo(PromptAnswer::Yes);
        QVERIFY(w.Report().contains(u"~\\a\\1x\\all.m3u|Could not Delete file: ~\\a\\2y\\all.m3u|PROCESS COMPLETE!"));
        QVERIFY(w.Report().contains(u"|0 Files deleted OK|2 Files could") && w.Lines(u"a\\2y\\all.m3u"_s) == "new");
        // Nor what somebody else has written since, of the same size in the same file.
        w.Next(5);
        w.F.Write(u"a\\1x\\all.m3u"_s, "2.wma\r\n1.wma\r\n");
        QFile theirs(w.F.Temporary.filePath(u"a/1x/all.m3u"_s));
        QVERIFY(theirs.open(QIODevice::ReadWrite) &&
                theirs.setFileTime(QDateTime::currentDateTime().addDays(1), QFileDevice::FileModificationTime));
        theirs.close();
        w.Undo(PromptAnswer::Yes);
        QCOMPARE(w.Lines(u"a\\1x\\all.m3u"_s) + w.Lines(u"a\\2y\\all.m3u"_s), "2.wma|1.wma|new");
    }

    void UndoesWhatIsOneFile()
    {
        Wizard w;
        // The root comes back, and its own playlist is written twice.
        w.Add(u"a\\5z\\5.wma"_s);
        w.Add(u"a\\6.wma"_s);
        w.Open();
        const QString own = u"a\\a-"_s + w.F.Folder.section(u'\\', -1) + u".m3u"_s;
        w.F.Write(own, "former");
        w.Click("RootFolderOnly");
        w.Next(4);
        QCOMPARE(w.Lines(own), "4.wma|6.wma|");
        w.Undo(PromptAnswer::Yes);
        QVERIFY(w.Lines(own) == "former" && w.Report().contains(u"|5 Files deleted OK|0 Files could not"));
        if (!NamesHoldAnything())
            return;
        Wizard two;
        // A folder under two names: the second one does not write over what the first one has made.
        QVERIFY(QFile::link(two.F.Temporary.filePath(u"a/1x"_s), two.F.Temporary.filePath(u"a/8"_s)));
        two.F.Write(u"a\\1x\\all.m3u"_s, "former");
        two.F.Window->AddFile(two.F.Inside(u"a\\8\\2.wma"_s), 0);
        two.Open();
        two.Next(2);
        two.Enter("Parameters", u"all"_s);
        two.Next(2);
        QVERIFY(two.Lines(u"a\\1x\\all.m3u"_s) == "1.wma|2.wma|" && two.Report().contains(u"|X - ~\\a\\8\\all.m3u|"));
        two.Undo(PromptAnswer::Yes);
        QCOMPARE(two.Lines(u"a\\1x\\all.m3u"_s), "former");
    }

    void ModesNamesAndOddLists()
    {
        Wizard w;
        w.Click("RootFolderOnly");
        w.Next(4);
        QCOMPARE(w.Lines(u"a\\1x-a.m3u"_s), "1x/1.wma|1x/2.wma|");
        w.Open();
        QVERIFY(w.At<QAbstractButton>("BaseFolderOnly")->isChecked());
        w.Click("BothFolders");
        w.Next(4);
        // The root's own playlist is written once.
        const QString own = u"a\\a-"_s + w.F.Folder.section(u'\\', -1) + u".m3u"_s;
        QVERIFY(w.Report(14).startsWith(u"> - ~\\a\\2y-a.m3u|> - ~\\" + own + u"|PROCESS COMPLETE!|5 Files"));
        QCOMPARE(w.Lines(own), "4.wma|");

        // One name for all is a clash in the root, and nothing is written.
        w.Next(3);
        w.Click("CmdTest");
        QCOMPARE(w.Text("TestOutput"), u"1x-a.m3u"_s);
        w.Enter("Parameters", u" :"_s);
        w.ClickAndRead("CmdTest", u"The resultant File name will not be valid."_s);
        QCOMPARE(w.Text("Parameters") + w.Focused(), u"%1-%2Parameters"_s);
        w.Enter("Parameters", u"%DATE"_s);
        w.Next(2);
        QVERIFY(w.Report().endsWith(u"name. E.G %1. Click Next> to continue.") && w.State() == u"3 CmdNext");

        w.Add(u"1b\\5.wma"_s);
        w.Add(u"a\\6.wma"_s);
        w.F.Window->AddFile(u"y:\\gone\\7.wma"_s, 0);
        w.Open();
        // No root: the mode falls back. A folder that comes back clashes with itself, and one that is gone is left out.
        w.Click("RootFolderOnly");
        w.Next(4);
        QVERIFY(w.Report(2).startsWith(u"Set mode: Create M3Us in Base folder only...|"
                                       "Building a list of files to be created...|~\\a\\1x\\1x-a.m3u|"));
        QVERIFY(w.Report(9).startsWith(u"Searching for duplicates...|Duplicate Filenames found...|PROCESS FAILED!"));
        w.Next(1);
        w.At<TickList>("lstPaths")->TickAll(false);
        w.Next(4);
        QCOMPARE(w.Report(4), u"No files requested...|PROCESS COMPLETE!"_s);

        w.F.Select({1, 2, 3, 4, 5, 6});
        w.F.Trigger("MEditRemove");
        w.Open();
        QVERIFY(w.Text("Label1").startsWith(u"This Wizard can only work with items") && w.State() == u"0 ");
        w.F.Window->ListView1.Clear();
        w.F.Prompts.Expect(NoItems, PromptAnswer::Ok);
        w.F.Trigger("MToolsM3UWiz");
    }
};

QTEST_MAIN(AutoCreateTest)
#include "AutoCreateTest.moc"
