#include "support/FormDriver.h"
#include "support/HostNames.h"

#include "session/TickList.h"

using namespace Qt::StringLiterals;

class AutoCreateTest : public QObject
{
    Q_OBJECT

    struct Wizard : FormDriver {
        /// Adds a row for a file below the test's folder.
        void Add(const QString &name) { F.Window->AddFile(F.Write(name, "x"), 0); }
        void Open() { OpenTool("MToolsM3UWiz", "AutoCreateWizard", {}); }
        void Next(int times = 1) const
        {
            for (; times > 0; --times)
                Click("CmdNext");
        }
        /// The commands that are enabled.
        QString Commands() const
        {
            QString names;
            for (const char *name : {"CmdBack", "CmdNext", "cmdUndo", "BaseFolderOnly"})
                names += Enabled(name) ? QLatin1StringView(name) + u' ' : QString();
            return names.trimmed();
        }
        /// The lines of the report, the test's folder as "~".
        QStringList Report() const
        {
            QStringList lines = Cells("lstReport");
            return lines.replaceInStrings(F.Folder, u"~"_s);
        }
        void Undo(PromptAnswer answer)
        {
            F.Prompts.Expect(u"Delete all files created?"_s, answer);
            Click("cmdUndo");
        }
        /// A playlist's lines, joined by "|", with slashes.
        QByteArray Lines(const QString &name) const { return F.Read(name).replace("\r\n", "|").replace('\\', '/'); }
        bool Exists(const QString &name) const { return ExamineFile(F.Inside(name)).Exists; }
    };

    /// Two albums and a file above them. Their names are no part of the test folder's name, since a piece that stands
    /// anywhere in every folder counts as common.
    static void AddAlbums(Wizard &wizard)
    {
        for (const char *name : {"a\\1x\\1.wma", "a\\1x\\2.wma", "a\\2y\\3.wma", "a\\4.wma"})
            wizard.Add(QLatin1StringView(name));
    }

private Q_SLOTS:
    void EachFolderGetsItsPlaylist()
    {
        Wizard wizard;
        AddAlbums(wizard);
        wizard.F.Write(u"a\\2y\\2y-a.m3u"_s, "former");
        wizard.F.Window->PlaylistDirty = false;
        wizard.Open();
        QCOMPARE(wizard.Commands(), u"CmdNext BaseFolderOnly"_s);
        QVERIFY(wizard.Text("Label1").startsWith(u"Welcome to the 'Autocreate M3U's Wizard'."_s));
        QVERIFY(wizard.At("FrameStep_0")->isVisible());
        wizard.Next();
        QVERIFY(wizard.At("FrameStep_1")->isVisible());
        QCOMPARE(wizard.Commands(), u"CmdBack CmdNext BaseFolderOnly"_s);
        QCOMPARE(wizard.Cells("lstPaths").size(), 3);
        wizard.Click("CmdBack");
        QVERIFY(wizard.At("FrameStep_0")->isVisible());
        QCOMPARE(wizard.Commands(), u"CmdNext BaseFolderOnly"_s);
        wizard.Next(1);
        wizard.DoubleClickRow("lstPaths", 0);
        QCOMPARE(wizard.F.ShellCalls, QStringList(u"explore "_s + wizard.F.Inside(u"a\\1x\\"_s)));
        wizard.At<TickList>("lstPaths")->SetTicked(2, false);
        wizard.Next(2);
        QVERIFY(wizard.At("FrameStep_3")->isVisible());
        QVERIFY(wizard.Text("Label5").startsWith(u"The process is now ready to begin."_s));
        wizard.Next();
        QCOMPARE(wizard.Report(),
                 (QStringList{u"Searching for Root Folder..."_s, u"Root Folder found as: ~\\a"_s,
                              u"Building a list of files to be created..."_s, u"~\\a\\1x\\1x-a.m3u"_s,
                              u"~\\a\\2y\\2y-a.m3u"_s, u"Searching for duplicates..."_s, u"No duplicates found..."_s,
                              u"Creating Files..."_s, u"> - ~\\a\\1x\\1x-a.m3u"_s, u"> - ~\\a\\2y\\2y-a.m3u"_s,
                              u"PROCESS COMPLETE!"_s, u"2 Files Requested"_s, u"2 Files written OK"_s,
                              u"0 Files could not be created"_s}));
        QCOMPARE(wizard.Lines(u"a\\1x\\1x-a.m3u"_s), "1.wma|2.wma|");
        QCOMPARE(wizard.Lines(u"a\\2y\\2y-a.m3u"_s), "3.wma|");
        QCOMPARE(wizard.Commands(), u"CmdNext cmdUndo BaseFolderOnly"_s);
        QVERIFY(wizard.Text("Label5").startsWith(u"Process Complete, Click Next> to repeat the Wizard."_s));
        QCOMPARE(wizard.Focused(), u"CmdClose"_s);

        wizard.Undo(PromptAnswer::No);
        QVERIFY(wizard.Exists(u"a\\1x\\1x-a.m3u"_s));
        wizard.Undo(PromptAnswer::Yes);
        QCOMPARE(wizard.Report().mid(14),
                 (QStringList{u"User request UNDO...."_s, u"Successfully Deleted file: ~\\a\\1x\\1x-a.m3u"_s,
                              u"Put back the former file: ~\\a\\2y\\2y-a.m3u"_s, u"PROCESS COMPLETE!"_s,
                              u"2 Files Requested"_s, u"2 Files deleted OK"_s,
                              u"0 Files could not be deleted [in use, missing?]"_s}));
        QVERIFY(!wizard.Exists(u"a\\1x\\1x-a.m3u"_s));
        QCOMPARE(wizard.F.Read(u"a\\2y\\2y-a.m3u"_s), "former");
        QCOMPARE(wizard.Commands(), u"CmdNext BaseFolderOnly"_s);
        QVERIFY(!wizard.F.Window->PlaylistDirty);

        wizard.Next();
        QVERIFY(wizard.At("FrameStep_0")->isVisible());
        QVERIFY(wizard.Report().isEmpty());
        QVERIFY(wizard.At<TickList>("lstPaths")->IsTicked(2));
    }

    /// The playlists of the root, alone and beside those of the folders. The root's own is written once.
    void TheRootGetsThemToo()
    {
        Wizard wizard;
        AddAlbums(wizard);
        wizard.Open();
        wizard.Click("RootFolderOnly");
        wizard.Next(4);
        QVERIFY(wizard.Report().contains(u"3 Files written OK"_s));
        QCOMPARE(wizard.Lines(u"a\\1x-a.m3u"_s), "1x/1.wma|1x/2.wma|");
        QCOMPARE(wizard.Lines(u"a\\2y-a.m3u"_s), "2y/3.wma|");
        const QString rootName = u"a\\a-"_s + wizard.F.Folder.section(u'\\', -1) + u".m3u"_s;
        QCOMPARE(wizard.Lines(rootName), "4.wma|");
        QVERIFY(!wizard.Exists(u"a\\1x\\1x-a.m3u"_s));

        wizard.Click("CmdClose");
        wizard.Open();
        QVERIFY(wizard.At<QAbstractButton>("BaseFolderOnly")->isChecked());
        QVERIFY(!wizard.Enabled("cmdUndo"));
        wizard.Click("BothFolders");
        wizard.Next(4);
        QCOMPARE(wizard.Report().filter(u"> - "_s),
                 (QStringList{u"> - ~\\a\\1x\\1x-a.m3u"_s, u"> - ~\\a\\1x-a.m3u"_s, u"> - ~\\a\\2y\\2y-a.m3u"_s,
                              u"> - ~\\a\\2y-a.m3u"_s, u"> - ~\\"_s + rootName}));
        QCOMPARE(wizard.Lines(u"a\\1x\\1x-a.m3u"_s), "1.wma|2.wma|");
        QCOMPARE(wizard.Lines(u"a\\1x-a.m3u"_s), "1x/1.wma|1x/2.wma|");
        QCOMPARE(wizard.Lines(rootName), "4.wma|");
        wizard.Undo(PromptAnswer::Yes);
        // What an undo has taken back it does not touch again, and what the former run wrote is put back.
        QVERIFY(wizard.Exists(u"a\\1x-a.m3u"_s));
        QVERIFY(!wizard.Exists(u"a\\1x\\1x-a.m3u"_s));
    }

    void NamesAreTested()
    {
        Wizard wizard;
        AddAlbums(wizard);
        wizard.Open();
        wizard.Next(2);
        QVERIFY(wizard.At("FrameStep_2")->isVisible());
        wizard.Click("CmdTest");
        QCOMPARE(wizard.Text("TestOutput"), u"1x-a.m3u"_s);
        wizard.Enter("Parameters", u"%TIME %1"_s);
        wizard.Click("CmdTest");
        QCOMPARE(wizard.Text("TestOutput"), u"03-04-05 1x.m3u"_s);
        wizard.Enter("Parameters", u" :"_s);
        wizard.F.Prompts.Expect(u"The resultant File name will not be valid."_s, PromptAnswer::Ok);
        wizard.Click("CmdTest");
        QCOMPARE(wizard.Text("Parameters"), u"%1-%2"_s);
        QCOMPARE(wizard.Focused(), u"Parameters"_s);

        // One name for all: fine in their own folders, a clash in the root, where nothing is written then.
        wizard.Enter("Parameters", u"all"_s);
        wizard.Click("CmdBack");
        wizard.Click("CmdBack");
        wizard.Click("BothFolders");
        wizard.Next(4);
        QVERIFY(wizard.Report().contains(u"PROCESS FAILED!"_s));
        QCOMPARE(wizard.Report().last(), u"name. E.G %1. Click Next> to continue."_s);
        QVERIFY(!wizard.Exists(u"a\\1x\\all.m3u"_s));
        QVERIFY(!wizard.Enabled("cmdUndo"));
        QVERIFY(wizard.Enabled("CmdNext"));
        wizard.Next();
        wizard.Click("BaseFolderOnly");
        wizard.Next(4);
        QCOMPARE(wizard.Lines(u"a\\all.m3u"_s), "4.wma|");
        QVERIFY(wizard.Report().contains(u"3 Files written OK"_s));
    }

    /// A name of nothing fails for each folder, and so do folders that take no file; the rest is written.
    void FailuresAreTold()
    {
        Wizard wizard;
        AddAlbums(wizard);
        wizard.F.Write(u"a\\2y\\all.m3u\\in the way"_s, "x");
        wizard.Open();
        wizard.Next(2);
        wizard.Enter("Parameters", u"all"_s);
        wizard.Next(2);
        QVERIFY(wizard.Report().contains(u"X - ~\\a\\2y\\all.m3u"_s));
        QVERIFY(wizard.Report().contains(u"2 Files written OK"_s));
        QCOMPARE(wizard.Report().last(), u"1 Files could not be created"_s);
        QVERIFY(DeleteFile(wizard.F.Inside(u"a\\1x\\all.m3u"_s)));
        wizard.Undo(PromptAnswer::Yes);
        QVERIFY(wizard.Report().contains(u"Could not Delete file: ~\\a\\1x\\all.m3u"_s));
        QCOMPARE(wizard.Report().last(), u"1 Files could not be deleted [in use, missing?]"_s);
        QVERIFY(wizard.Enabled("cmdUndo"));

        wizard.Next(3);
        wizard.Enter("Parameters", u"%9%9:"_s);
        wizard.Next(2);
        QCOMPARE(wizard.Report().filter(u"X - "_s).size(), 3);
        QVERIFY(!wizard.Enabled("cmdUndo"));
    }

    void OddLists()
    {
        Wizard wizard;
        wizard.F.Prompts.Expect(u"The function cannot be performed because there are no Playlist items!\n"
                                "Use Drag and Drop or 'Add Item' to add files/folders/m3us to the list."_s,
                                PromptAnswer::Ok);
        wizard.F.Trigger("MToolsM3UWiz");
        wizard.Add(u"a\\1.wma"_s);
        wizard.Add(u"b\\2.wma"_s);
        wizard.Add(u"a\\3.wma"_s);
        wizard.F.Window->AddFile(u"y:\\gone\\4.wma"_s, 0);
        wizard.Open();
        // No root: the mode falls back. A folder that comes back later clashes with itself.
        wizard.Click("RootFolderOnly");
        wizard.Next(4);
        QCOMPARE(wizard.Report().mid(1, 2), (QStringList{u"Could not parse Root Folder, Changing mode..."_s,
                                                         u"Set mode: Create M3Us in Base folder only..."_s}));
        QVERIFY(wizard.At<QAbstractButton>("BaseFolderOnly")->isChecked());
        QVERIFY(wizard.Report().contains(u"Duplicate Filenames found..."_s));
        wizard.Next(2);
        QCOMPARE(wizard.Cells("lstPaths").size(), 3);
        for (int row = 0; row < 3; ++row)
            wizard.At<TickList>("lstPaths")->SetTicked(row, false);
        wizard.Next(3);
        QCOMPARE(wizard.Report().mid(4), (QStringList{u"No files requested..."_s, u"PROCESS COMPLETE!"_s}));

        wizard.Click("CmdClose");
        wizard.F.Select({1, 2, 3});
        wizard.F.Trigger("MEditRemove");
        wizard.Open();
        QCOMPARE(wizard.Text("Label1"),
                 u"This Wizard can only work with items that are pointed to correctly in the Playlist..."_s);
        QCOMPARE(wizard.Commands(), QString());
    }
};

QTEST_MAIN(AutoCreateTest)
#include "AutoCreateTest.moc"
