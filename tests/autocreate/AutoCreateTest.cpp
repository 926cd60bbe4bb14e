#include "support/FormDriver.h"

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
        }
        void Add(const QString &name) { F.Window->AddFile(F.Write(name, "x"), 0); }
        void Open() { OpenTool("MToolsM3UWiz", "AutoCreateWizard", {}); }
        /// The step that is shown, and the commands that are enabled.
        QString State() const { return QString::number(Step()) + u' ' + Usable("^(CmdBack|CmdNext|cmdUndo|BaseF.*)$"); }
        /// The lines of the report from one of them on, joined, the test's folder as "~".
        QString Report(qsizetype from = 0) const
        {
            return Cells("lstReport").replaceInStrings(F.Folder, u"~"_s).mid(from).join(u'|');
        }
        void Undo(PromptAnswer answer) { ClickAndRead("cmdUndo", u"Delete all files created?"_s, answer); }
        /// A playlist's lines, joined, with slashes.
        QByteArray Lines(const QString &name) const { return F.Read(name).replace("\r\n", "|").replace('\\', '/'); }
        TickList &Paths() const { return *At<TickList>("lstPaths"); }
    };

private Q_SLOTS:
    void ARunAndItsUndo()
    {
        Wizard wizard;
        wizard.F.Write(u"a\\2y\\2y-a.m3u"_s, "former");
        wizard.Open();
        QCOMPARE(wizard.State(), u"0 BaseFolderOnly CmdNext"_s);
        QVERIFY(wizard.Text("Label1").startsWith(u"Welcome to the 'Autocreate M3U's Wizard'."_s));
        wizard.Next(1);
        QCOMPARE(wizard.State(), u"1 CmdBack CmdNext"_s);
        wizard.Click("CmdBack");
        QCOMPARE(wizard.State(), u"0 BaseFolderOnly CmdNext"_s);
        wizard.Next(1);
        wizard.DoubleClickRow("lstPaths", 0);
        QCOMPARE(wizard.F.ShellCalls.join(u'|'), u"explore "_s + wizard.F.Inside(u"a\\1x\\"_s));
        wizard.Paths().SetTicked(2, false);
        wizard.Next(3);
        QCOMPARE(wizard.Report(),
                 u"Searching for Root Folder...|Root Folder found as: ~\\a|Building a list of files to be created...|"
                 "~\\a\\1x\\1x-a.m3u|~\\a\\2y\\2y-a.m3u|Searching for duplicates...|No duplicates found...|"
                 "Creating Files...|> - ~\\a\\1x\\1x-a.m3u|> - ~\\a\\2y\\2y-a.m3u|PROCESS COMPLETE!|"
                 "2 Files Requested|2 Files written OK|0 Files could not be created"_s);
        QCOMPARE(wizard.Lines(u"a\\1x\\1x-a.m3u"_s) + wizard.Lines(u"a\\2y\\2y-a.m3u"_s), "1.wma|2.wma|3.wma|");
        QCOMPARE(wizard.State(), u"3 cmdUndo CmdNext"_s);
        QVERIFY(wizard.Text("Label5").startsWith(u"Process Complete, Click Next> to repeat the Wizard."_s));
        QCOMPARE(wizard.Focused(), u"CmdClose"_s);
        wizard.Undo(PromptAnswer::No);
        wizard.Undo(PromptAnswer::Yes);
        QCOMPARE(wizard.Report(14), u"User request UNDO....|Successfully Deleted file: ~\\a\\1x\\1x-a.m3u|"
                                    "Put back the former file: ~\\a\\2y\\2y-a.m3u|PROCESS COMPLETE!|2 Files Requested|"
                                    "2 Files deleted OK|0 Files could not be deleted [in use, missing?]"_s);
        QVERIFY(!ExamineFile(wizard.F.Inside(u"a\\1x\\1x-a.m3u"_s)).Exists);
        QCOMPARE(wizard.Lines(u"a\\2y\\2y-a.m3u"_s), "former");
        wizard.Next(1);
        QCOMPARE(wizard.State() + wizard.Report(), u"0 BaseFolderOnly CmdNext"_s);
        QVERIFY(wizard.Paths().IsTicked(2));
        QVERIFY(wizard.Text("Label5").startsWith(u"The process is now ready to begin."_s));

        // A file that is gone is told, and what an undo has taken back it does not touch again.
        wizard.F.Write(u"a\\all.m3u\\in the way"_s, "x");
        wizard.Next(2);
        wizard.Enter("Parameters", u"all"_s);
        wizard.Next(2);
        QVERIFY(wizard.Report(11).contains(u"X - ~\\a\\all.m3u|PROCESS COMPLETE!|3 Files Requested|2 Files written OK|"
                                           "1 Files could not be created"_s));
        QVERIFY(DeleteFile(wizard.F.Inside(u"a\\1x\\all.m3u"_s)));
        wizard.Undo(PromptAnswer::Yes);
        wizard.F.Write(u"a\\2y\\all.m3u"_s, "new");
        wizard.Undo(PromptAnswer::Yes);
        QVERIFY(wizard.Report().contains(u"Could not Delete file: ~\\a\\1x\\all.m3u"_s));
        QVERIFY(wizard.Report().endsWith(u"0 Files deleted OK|2 Files could not be deleted [in use, missing?]"_s));
        QCOMPARE(wizard.Lines(u"a\\2y\\all.m3u"_s), "new");
    }

    void ModesAndNames()
    {
        Wizard wizard;
        wizard.Open();
        wizard.Click("RootFolderOnly");
        wizard.Next(4);
        QCOMPARE(wizard.Lines(u"a\\1x-a.m3u"_s), "1x/1.wma|1x/2.wma|");
        wizard.Click("CmdClose");
        wizard.Open();
        QVERIFY(wizard.At<QAbstractButton>("BaseFolderOnly")->isChecked());
        wizard.Click("BothFolders");
        wizard.Next(4);
        // The root's own playlist is written once.
        const QString own = u"> - ~\\a\\a-"_s + wizard.F.Folder.section(u'\\', -1) + u".m3u"_s;
        QVERIFY(wizard.Report().contains(u"> - ~\\a\\1x\\1x-a.m3u|> - ~\\a\\1x-a.m3u|> - ~\\a\\2y\\2y-a.m3u|"
                                         "> - ~\\a\\2y-a.m3u|"_s +
                                         own + u"|PROCESS COMPLETE!"_s));
        QCOMPARE(wizard.Lines(own.mid(6)), "4.wma|");

        // One name for all is a clash in the root, and nothing is written.
        wizard.Next(3);
        wizard.Click("CmdTest");
        QCOMPARE(wizard.Text("TestOutput"), u"1x-a.m3u"_s);
        wizard.Enter("Parameters", u" :"_s);
        wizard.ClickAndRead("CmdTest", u"The resultant File name will not be valid."_s);
        QCOMPARE(wizard.Text("Parameters") + wizard.Focused(), u"%1-%2Parameters"_s);
        wizard.Enter("Parameters", u"%DATE"_s);
        wizard.Next(2);
        QVERIFY(wizard.Report().endsWith(u"name. E.G %1. Click Next> to continue."_s));
        QCOMPARE(wizard.State(), u"3 CmdNext"_s);
        QVERIFY(!ExamineFile(wizard.F.Inside(u"a\\01-02-2026.m3u"_s)).Exists);
    }

    void OddLists()
    {
        Wizard wizard;
        wizard.Add(u"1b\\5.wma"_s);
        wizard.Add(u"a\\6.wma"_s);
        wizard.F.Window->AddFile(u"y:\\gone\\7.wma"_s, 0);
        wizard.Open();
        // No root: the mode falls back. A folder that comes back clashes with itself, and one that is gone is left out.
        wizard.Click("RootFolderOnly");
        wizard.Next(4);
        QVERIFY(wizard.Report().contains(u"Could not parse Root Folder, Changing mode...|"
                                         "Set mode: Create M3Us in Base folder only..."_s));
        QVERIFY(wizard.At<QAbstractButton>("BaseFolderOnly")->isChecked());
        QVERIFY(wizard.Report().contains(u"Duplicate Filenames found...|PROCESS FAILED!"_s));
        wizard.Next(1);
        QCOMPARE(wizard.Paths().RowCount(), 5);
        wizard.Paths().TickAll(false);
        wizard.Next(4);
        QCOMPARE(wizard.Report(4), u"No files requested...|PROCESS COMPLETE!"_s);

        wizard.F.Select({1, 2, 3, 4, 5, 6});
        wizard.F.Trigger("MEditRemove");
        wizard.Open();
        QVERIFY(wizard.Text("Label1").startsWith(u"This Wizard can only work with items"_s));
        QCOMPARE(wizard.State(), u"0 "_s);
        wizard.Next(1);
        QCOMPARE(wizard.State(), u"0 "_s);
        wizard.F.Select({1});
        wizard.F.Trigger("MEditRemove");
        wizard.F.Prompts.Expect(u"The function cannot be performed because there are no Playlist items!\n"
                                "Use Drag and Drop or 'Add Item' to add files/folders/m3us to the list."_s,
                                PromptAnswer::Ok);
        wizard.F.Trigger("MToolsM3UWiz");
    }
};

QTEST_MAIN(AutoCreateTest)
#include "AutoCreateTest.moc"
