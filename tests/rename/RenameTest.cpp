#include "rename/RenameRun.h"
#include "support/FormDriver.h"
#include "support/HostNames.h"

#include <QComboBox>
#include <QProgressBar>
#include <QTreeWidget>

#include <numeric>

using namespace Qt::StringLiterals;

namespace
{
/// A main window and the batch rename over it.
struct Rename : FormDriver {
    QString RulesFile = F.Inside(u"rules.rps"_s);

    /// Writes files with their names as content, as far as they are not there, and adds their rows.
    void Take(const QStringList &names)
    {
        for (const QString &name : names) {
            const QString path = F.Inside(name);
            EnsureFolder(GetFolderPart(path));
            QVERIFY(PathExists(path) || WriteWholeFile(path, name.toUtf8()));
            F.Window->AddFile(path, 0);
        }
        F.Window->PlaylistDirty = false;
    }

    void Open(const QList<int> &rows) { OpenTool("MToolsRename", "RenameForm", rows); }
    /// Takes files and opens the dialog on their rows.
    void OpenOn(const QStringList &names)
    {
        Take(names);
        QList<int> rows(names.size());
        std::iota(rows.begin(), rows.end(), 1);
        Open(rows);
    }

    void Tick(int row) const
    {
        SelectRow("RuleList", row);
        QTest::keyClick(At("RuleList"), Qt::Key_Space);
    }
    void AddRule(const QString &from, const QString &to, bool tick = true) const
    {
        Enter("ToReplace", from);
        Enter("ReplaceTo", to);
        Click("AddRule");
        if (tick)
            Tick(static_cast<int>(Cells("RuleList").size()) - 1);
    }
    /// The rules of the list, a ticked one with a "+".
    QString Rules() const
    {
        QStringList rows;
        const auto *list = At<QTreeWidget>("RuleList");
        for (int row = 0; row < list->topLevelItemCount(); ++row) {
            const QTreeWidgetItem *item = list->topLevelItem(row);
            rows.append((item->checkState(0) == Qt::Checked ? u"+"_s : QString()) + item->text(0));
        }
        return rows.join(u'|');
    }
    QString Sample(const QString &name) const
    {
        Enter("Test1", name);
        Click("RenTest");
        return Text("Test2");
    }

    /// Runs with the warning answered; returns the report.
    QString Process()
    {
        if (!Ticked("Warning"))
            F.Prompts.Expect(warning, PromptAnswer::Yes);
        Click("CmdProcess");
        return Report();
    }
    QString Undo() const
    {
        Click("cmdUndo");
        return Report();
    }
    QString Load(const QByteArray &bytes)
    {
        F.Write(u"rules.rps"_s, bytes);
        F.Prompts.ExpectPath(proposal, RulesFile);
        Click("RulesLoad");
        return Text("lbReport");
    }

    /// The names of the rows.
    QString Names() const
    {
        QStringList names;
        for (int row = 1; row <= F.Window->ListView1.Count(); ++row)
            names.append(F.Window->ListView1.Item(row).Text);
        return names.join(u'|');
    }
    /// The files of the folder, each with what its content says when that is another name.
    QString Disk() const
    {
        FolderEntries entries;
        ListFolder(F.Folder, entries);
        QStringList names;
        for (const QString &name : entries.Files)
            names.append(F.Read(name) == name.toUtf8() ? name : name + u'=' + QString::fromUtf8(F.Read(name)));
        return names.join(u'|');
    }
    QString Commands() const
    {
        return (Enabled("CmdProcess") ? u" +Rename"_s : QString()) + (Enabled("cmdUndo") ? u" +Undo"_s : QString());
    }
    /// The report and the commands that are enabled.
    QString Report() const { return Text("lbReport") + Commands(); }

    const QString proposal = F.Inside(u"program\\*.rps"_s);
    const QString warning =
        u"Warning, you are about to RENAME ALL FILTERABLE SELECTED mp3 files, If two filenames match after filtering "
        "only the first in the list will be renamed. It is also recommended that you remove duplicate items and "
        "evaluate the result of filename length limiting before processing. Do you want to continue the process?"_s;
    const QString missing =
        u"Not all of the items you selected are pointed to correctly. Do you want to proceed? [This "
        "could cause inconsistency in the resultant filenames!]"_s;
    const QString folders =
        u"You have chosen to add incremental numbers to each item to be renamed, yet the items selected exist in "
        "different folders! Do you want to 'Reset' the count for each individual folder? Clicking 'No' will simply "
        "increment the number for every item renamed."_s;
};
} // namespace

class RenameTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void RulesAndOptionsMakeNames()
    {
        Rename r;
        r.OpenOn({u"a.mp3"_s});
        QCOMPARE(r.Sample(u"SAmPle File_naMe.MP3"_s), u"Sample File Name.mp3"_s);
        QCOMPARE(r.Text("lbReport"), u"Generated Test FileName from: SAmPle File_naMe.MP3"_s);
        const std::pair<QString, QString> plain[] = {
            {u"a.mp3b.mp3"_s, u"Ab.mp3"_s},
            {u"song.mpeg"_s, u"Song.mpeg"_s},
            {u"x.mp"_s, u"x.mp"_s},
            {u" _ .mp3"_s, u" _ .mp3"_s},
            {u"_(a) é-x.OGG"_s, u"(a) É-x.ogg"_s},
            {u"c:\\a.mp3\\a.mp3"_s, u"c:\\\\A.mp3"_s},
        };
        for (const auto &[from, to] : plain)
            QCOMPARE(r.Sample(from), to);
        r.Click("Extension");
        QCOMPARE(r.Sample(u"a.MP3"_s), u"A.MP3"_s);
        r.AddRule(u"a"_s, u"aa"_s);
        r.AddRule(u"x"_s, QString());
        r.AddRule(QString(), u" end"_s, false);
        QCOMPARE(r.Sample(u"bxaxa.mp3"_s), u"Baaaa.mp3"_s);
        r.Tick(3);
        QCOMPARE(r.Sample(u"bxaxa.mp3"_s), u"Baaaa End.mp3"_s);
        r.Click("LowFilename");
        QCOMPARE(r.Sample(u"BA.mp3"_s), u"ba end.mp3"_s);
        r.Click("Capitalise");
        r.Click("LowFilename");
        QVERIFY(!r.Enabled("IncPosC") && !r.Enabled("Truncval"));
        r.Click("Increment");
        QCOMPARE(r.Sample(u"B.mp3"_s), u"08 - B end.mp3"_s);
        QTest::keyClick(r.Reach("IncPosC"), Qt::Key_End);
        QCOMPARE(r.Sample(u"B.mp3"_s), u"B end - 08.mp3"_s);
        r.Click("Truncat");
        QTest::keyClick(r.Reach("Truncval"), Qt::Key_Home);
        QCOMPARE(r.Sample(u"B.mp3"_s), u"B end -.mp3"_s);
        QCOMPARE(r.Sample(u"1234567\U0001F3B5.mp3"_s), u"1234567.mp3"_s);
        QTest::keyClick(r.Reach("IncPosC"), Qt::Key_Home);
        r.Tick(3);
        QCOMPARE(r.Sample(u".mp3"_s), u"08.mp3"_s);
        for (int i = 0; i < 9; ++i)
            r.AddRule(QString(1 + i % 2, u'n'), QString(19 - i, u'n'));
        QCOMPARE(r.Sample(u"n.mp3"_s), u"n.mp3"_s);
        const std::tuple<int, int, QString> numbers[] = {{7, 9, u"7"_s},       {7, 10, u"07"_s},   {7, 100, u"007"_s},
                                                         {7, 9999, u"0007"_s}, {7, 10000, u"7"_s}, {123, 9, u"123"_s}};
        for (const auto &[number, total, text] : numbers)
            QCOMPARE(FormatSequenceNumber(number, total), text);
    }

    void RuleListIsEdited()
    {
        Rename r;
        r.OpenOn({u"a.mp3"_s});
        QCOMPARE(r.Rules(), u"+Replace '_' with ' '"_s);
        r.AddRule(u"a"_s, u"a"_s, false);
        r.AddRule(QString(40, u'x'), QString(), false);
        r.AddRule(QString(), u"b "_s, false);
        QCOMPARE(r.Rules(), u"+Replace '_' with ' '|Remove '"_s + QString(19, u'x') + u"'|Add 'b '");
        // A part of what the boxes say is there already.
        r.AddRule(u"q"_s, u"b "_s, false);
        QVERIFY(r.Rules().endsWith(u"|+Add 'b '"_s));
        QCOMPARE(r.Sample(u"a_.mp3"_s), u"A B.mp3"_s);
        r.SelectRow("RuleList", 0);
        r.Click("RemoveRule");
        QCOMPARE(r.Rules(), u"Remove '"_s + QString(19, u'x') + u"'|+Add 'b '");
        QCOMPARE(r.Sample(u"a_.mp3"_s), u"A_b.mp3"_s);
        r.SelectRow("RuleList", 1);
        r.Click("RemoveRule");
        QCOMPARE(r.Sample(u"a_.mp3"_s), u"A_.mp3"_s);
        for (int i = 0; i < 20; ++i)
            r.AddRule(QString::number(i), QString(), false);
        QCOMPARE(r.Cells("RuleList").size(), 19);
        r.Click("RulesDef");
        QCOMPARE(r.Rules(), u"+Replace '_' with ' '"_s);
        QCOMPARE(r.Text("lbReport"), u"Restored Default Renaming Configuration..."_s);
    }

    void RunsUndoesAndRunsAgain()
    {
        Rename r;
        r.Take({u"a_1.MP3"_s, u"b_2.mp3"_s, u"C 3.mp3"_s, u"d_4.mp3"_s});
        r.Open({});
        QCOMPARE(r.Report(), u"Nothing Selected..."_s);
        r.Click("CmdClose");
        r.Open({1, 3, 4});
        QCOMPARE(r.Report(), u"3 Items Selected. +Rename"_s);
        const QString before = r.Names();
        const QString renamed = u"A 1.mp3|b_2.mp3|C 3.mp3|D 4.mp3"_s;
        r.F.Prompts.Expect(r.warning, PromptAnswer::No);
        r.Click("CmdProcess");
        QCOMPARE(r.Names() + r.Commands(), before + u" +Rename"_s);
        QCOMPARE(r.Process(), u"Done: 2/3 Items were Processed +Undo"_s);
        QCOMPARE(r.Names(), renamed);
        QCOMPARE(r.Disk(), u"A 1.mp3=a_1.MP3|b_2.mp3|C 3.mp3|D 4.mp3=d_4.mp3"_s);
        QVERIFY(r.F.Window->PlaylistDirty && r.Ticked("Warning") && r.Commands() == u" +Undo"_s);
        QCOMPARE(r.At<QProgressBar>("ProgressBar1")->value(), -1);
        QCOMPARE(r.Form->cursor().shape(), Qt::ArrowCursor);
        r.Click("AllowOnce");
        r.Click("Delay");
        r.Click("Delay");
        QCOMPARE(r.Commands(), u" +Undo"_s);
        r.Click("Delay");
        QVERIFY(r.Undo().startsWith(u"Done: 2/2 Items were Restored"_s));
        QCOMPARE(r.Names(), before);
        QCOMPARE(r.Disk(), u"a_1.MP3|b_2.mp3|C 3.mp3|d_4.mp3"_s);
        QCOMPARE(r.F.Rows(), u"A_1 b_2 C 3 D_4"_s);
        QTRY_COMPARE(r.Commands(), u" +Rename"_s);
        QVERIFY(r.Process().startsWith(u"Done: 2/2 Items were Processed"_s));
        QCOMPARE(r.Names(), renamed);
        QTRY_COMPARE(r.Commands(), u" +Rename +Undo"_s);
        r.Click("AllowOnce");
        QCOMPARE(r.Commands(), u" +Undo"_s);
        r.Click("CmdClose");
        QCOMPARE(r.Text("lbReport"), u"Ready..."_s);
        // Nothing is left to do.
        r.F.Window->PlaylistDirty = false;
        r.Open({1});
        QCOMPARE(r.Process(), u"Done: 0/1 Items were Processed +Rename"_s);
        QVERIFY(!r.F.Window->PlaylistDirty);
    }

    void RefusedNamesLoseNothing()
    {
        Rename r;
        r.Take({u"one_.mp3"_s, u"one .mp3"_s, u"gone_.mp3"_s, u"two_.mp3"_s, u"sep_x.mp3"_s, u"Long_.mp3"_s});
        r.Take({u"two_.mp3"_s, u"one_.mp3"_s});
        const QString before = r.Names();
        r.F.Write(u"Two.mp3"_s, "there");
        r.Open({1, 2, 3, 4, 5, 6, 7});
        r.AddRule(u"sep "_s, u"a/../"_s);
        r.AddRule(u"Long"_s, QString(19, u'é'));
        r.AddRule(u"é"_s, QString(19, u'é'));
        DeleteFile(r.F.Inside(u"gone_.mp3"_s));
        r.F.Prompts.Expect(r.warning, PromptAnswer::Yes);
        r.F.Prompts.Expect(r.missing, PromptAnswer::No);
        r.Click("CmdProcess");
        QCOMPARE(r.Text("lbReport"), u"Use 'Remove Non-Existent Items' to Purge Missing Files..."_s);
        r.F.Prompts.Expect(r.missing, PromptAnswer::Yes);
        const QString disk = u"one .mp3|One.mp3=one_.mp3|sep_x.mp3|Two.mp3=there|two_.mp3"_s;
        QCOMPARE(r.Process(), u"Done: 1/7 Items were Processed +Undo"_s);
        QVERIFY2(r.Disk().endsWith(disk), qPrintable(r.Disk()));
        // Also the row that was not selected follows its file.
        QCOMPARE(r.Names(), u"One.mp3|"_s + before.sliced(9, before.size() - 17) + u"One.mp3"_s);
        DeleteFile(r.F.Inside(u"one .mp3"_s));
        r.F.Write(u"one_.mp3"_s, "in the way");
        QCOMPARE(r.Undo(), u"Done: 0/1 Items were Restored +Undo"_s);
        QCOMPARE(r.F.Rows(), u"One one  gone_ two_ sep_x Long_ two_ One"_s);
        DeleteFile(r.F.Inside(u"one_.mp3"_s));
        QCOMPARE(r.Undo(), u"Done: 1/1 Items were Restored"_s);
        QCOMPARE(r.Names(), before);
    }

    void EveryRowFollowsItsFile()
    {
        Rename r;
        r.Take({u"a_.mp3"_s, u"sub\\a_.mp3"_s, u"a_.mp3"_s, u"_a_.mp3"_s});
        // One name is free once the other file has left it.
        r.Open({1, 2, 3, 4});
        r.Click("RulesDef");
        r.AddRule(u" a"_s, u"x"_s);
        r.F.Window->AddFile(r.F.Inside(u"sub\\..\\a_.mp3"_s), 0);
        QCOMPARE(r.Process(), u"Done: 3/4 Items were Processed +Undo"_s);
        QCOMPARE(r.Names(), u"A.mp3|A.mp3|A.mp3|X.mp3|A.mp3"_s);
        QCOMPARE(r.Undo(), u"Done: 3/3 Items were Restored"_s);
        QCOMPARE(r.Names(), u"a_.mp3|a_.mp3|a_.mp3|_a_.mp3|a_.mp3"_s);
        QCOMPARE(r.Disk(), u"_a_.mp3|a_.mp3"_s);
    }

    void NumbersCountByFolder()
    {
        Rename r;
        QStringList names;
        for (int i = 0; i < 4; ++i)
            names += {u"p\\A.mp%1"_s.arg(i), u"q\\B.mp%1"_s.arg(i)};
        for (int i = 0; i < 10; ++i)
            r.F.Write(u"q\\other%1.%2"_s.arg(i).arg(i % 2 == 0 ? u"OGG"_s : u"wma"_s), "x");
        r.F.Write(u"p\\no.txt"_s, "x");
        r.Take(names);
        r.Open({1, 3, 4, 5});
        r.Click("Increment");
        r.Click("Warning");
        r.F.Prompts.Expect(r.folders, PromptAnswer::Cancel);
        r.Click("CmdProcess");
        QCOMPARE(r.Text("lbReport"), u"Select ALL files from a single folder to be sure..."_s);
        r.F.Prompts.Expect(r.folders, PromptAnswer::No);
        r.Process();
        QCOMPARE(r.Names(), u"1 - A.mp0|B.mp0|2 - A.mp1|3 - B.mp1|4 - A.mp2|B.mp2|A.mp3|B.mp3"_s);
        r.Undo();
        r.Open({1, 3, 4, 5});
        r.F.Prompts.Expect(r.folders, PromptAnswer::Yes);
        r.Process();
        QCOMPARE(r.Names(), u"1 - A.mp0|B.mp0|2 - A.mp1|01 - B.mp1|3 - A.mp2|B.mp2|A.mp3|B.mp3"_s);
        r.Undo();
        r.Open({2, 4});
        r.Process();
        QCOMPARE(r.Names(), u"A.mp0|01 - B.mp0|A.mp1|02 - B.mp1|A.mp2|B.mp2|A.mp3|B.mp3"_s);
    }

    void TagsGiveNames()
    {
        Rename r;
        r.TakeData(u"a.MP3"_s, "tag-id3v24.mp3");
        r.TakeData(u"b_1.mp3"_s, "text.mp3");
        r.Take({u"c.ogg"_s, u"d_2.wav"_s});
        r.F.Write(u"c.ogg"_s,
                  "\3vorbis\x1D" + QByteArray("ARTIST=Ax\0\0\0TITLE=T", 19) + "\1\5vorbis" + QByteArray(4096, 'x'));
        r.Open({1, 2, 3, 4});
        r.Click("RenID3");
        r.Turn(*r.At<QTabWidget>("SSTab1"), 3);
        const QString preview = r.Cells("PreviewList").join(u'|');
        QCOMPARE(r.Process(), u"Done: 4/4 Items were Processed +Undo"_s);
        QCOMPARE(r.Names(), u"Caf Meridian -  Ber Den Wolken.mp3|B 1.mp3|A - T.ogg|D 2.wav"_s);
        QCOMPARE(preview, u"a.MP3|%1|b_1.mp3|%2|c.ogg|%3|d_2.wav|%4"_s.arg(r.Names().split(u'|')[0], u"B 1.mp3"_s,
                                                                           u"A - T.ogg"_s, u"D 2.wav"_s));
    }

    void RuleFilesKeepSettings()
    {
        Rename r;
        r.OpenOn({u"a.mp3"_s});
        const QString saved = u"Renaming Configuration Saved to: 'rules.rps'"_s;
        r.F.Prompts.ExpectPath(r.proposal, std::nullopt);
        r.Click("RulesSave");
        r.F.Prompts.ExpectPath(r.proposal, r.RulesFile);
        r.Click("RulesSave");
        QCOMPARE(r.Text("lbReport"), saved);
        const QByteArray defaults = r.F.Read(u"rules.rps"_s);
        const QByteArray pad(19, '\x8f');
        const QByteArray set("\xff\xff");
        QCOMPARE(defaults, set + set + QByteArray(2, '\0') + set + '_' + pad + QByteArray(400, ' ') + ' ' + pad +
                               QByteArray(400, ' ') + set + QByteArray(42, '\0') + ' ' + QByteArray(7, '\0'));
        // What is not held by the code page is not written.
        r.AddRule(u"夜"_s, u"x"_s);
        r.F.Prompts.ExpectPath(r.proposal, r.RulesFile);
        r.F.Prompts.Expect(ShownPath(r.RulesFile) + u" exists, do you want to replace it?", PromptAnswer::Yes);
        r.F.Prompts.Expect(u"Could not save the file!"_s, PromptAnswer::Ok);
        r.Click("RulesSave");
        r.F.Prompts.ExpectPath(r.proposal, r.RulesFile);
        r.F.Prompts.Expect(ShownPath(r.RulesFile) + u" exists, do you want to replace it?", PromptAnswer::No);
        r.Click("RulesSave");
        QCOMPARE(r.F.Read(u"rules.rps"_s), defaults);

        QByteArray foreign = defaults;
        const auto put = [](QByteArray &record, qsizetype place, const QByteArray &part) {
            record.replace(place, part.size(), part);
        };
        put(foreign, 0, QByteArray("\x01\x00", 2));
        put(foreign, 4, set + QByteArray(2, '\0'));
        put(foreign, 8 + 20, "\xe9 " + pad.chopped(1));
        put(foreign, 848 + 2, set);
        put(foreign, 890, set + "\xf9\xff\xff\xff" + set + set);
        QCOMPARE(r.Load(foreign + "tail"), u"Renaming Configuration Loaded from: 'rules.rps'"_s);
        QCOMPARE(r.Rules(), u"+Replace '_' with ' '|+Remove 'é '"_s);
        QVERIFY(!r.Ticked("Capitalise") && r.Ticked("Extension") && r.Ticked("LowFilename") && r.Ticked("RenID3"));
        QVERIFY(r.Ticked("Increment") && r.Enabled("IncPosC") && r.Text("IncPosC") == u"At End"_s);
        QVERIFY(r.Ticked("Truncat") && r.Enabled("Truncval") && r.Text("Truncval").isEmpty());
        QCOMPARE(r.At<QComboBox>("Truncval")->placeholderText(), u"-7"_s);
        QCOMPARE(r.Sample(u"name.mp3"_s), u"name.mp3"_s);
        // A gap puts ticks on other rows, and what a short file lacks stays.
        QByteArray gap = defaults;
        put(gap, 8 + 40, "b" + pad);
        put(gap, 848 + 2, set + QByteArray(2, '\0'));
        r.Load(gap);
        QCOMPARE(r.Rules(), u"+Replace '_' with ' '|Remove 'b'"_s);
        r.Load(set + QByteArray(2, '\0') + set + set + "\xff");
        QVERIFY(r.Ticked("Increment") && !r.Ticked("Extension") && r.Text("IncPosC") == u"At Start"_s);
        QCOMPARE(r.Rules(), u"+Replace '_' with ' '|Remove 'b'"_s);
        r.Load({});
        QCOMPARE(r.Sample(u"a_.MP3"_s), u"08 - A.MP3"_s);
        QByteArray noise(900, '\0');
        for (qsizetype i = 0; i < noise.size(); ++i)
            noise[i] = static_cast<char>(i * 7919 % 251);
        r.Load(noise);
        QVERIFY(!r.Sample(u"a_.mp3"_s).isEmpty());
        r.F.Prompts.ExpectPath(r.proposal, r.F.Inside(u"gone.rps"_s));
        r.F.Prompts.Expect(u"Could not read the file!"_s, PromptAnswer::Ok);
        r.Click("RulesLoad");
    }

    void SummaryTellsTheSteps()
    {
        Rename r;
        r.OpenOn({u"a.mp3"_s});
        r.AddRule(u"a"_s, QString());
        r.AddRule(QString(), u"b"_s);
        r.AddRule(u"c"_s, QString(), false);
        r.Turn(*r.At<QTabWidget>("SSTab1"), 2);
        QCOMPARE(r.Cells("TestList"), (QStringList{u"1|The extension will be made lower case."_s,
                                                   u"2|'_' in the filename will be replaced with ' '."_s,
                                                   u"3|'a' will be removed from the filename."_s,
                                                   u"4|'b' will be added to the end of the filename."_s,
                                                   u"5|Words will be formatted to start with a capital letter."_s,
                                                   u"6|The filename will be validated and rebuilt"_s,
                                                   u">|The file will be renamed and the change logged."_s}));
        QCOMPARE(r.Text("lbReport"), u"Generated Report of Renaming Rules..."_s);
        for (const char *box : {"Extension", "Capitalise", "RenID3", "LowFilename", "Increment", "Truncat"})
            r.Click(box);
        for (const int row : {0, 1, 2})
            r.Tick(row);
        r.Turn(*r.At<QTabWidget>("SSTab1"), 2);
        QCOMPARE(r.Cells("TestList").first(4).join(u'|'),
                 u"1|The filename will be created from ID3v1/2 Data.|2|The filename will be made lowercase.|"
                 "3|Numbers will be added to the start of each file.|4|The filename will be truncated to 32 "
                 "characters."_s);
    }

    void PreviewShowsWhatARunDoes()
    {
        Rename r;
        r.Take({u"a_.mp3"_s, u"A _.mp3"_s, u"B.mp3"_s, u"b_.mp3"_s, u"c_.mp3"_s, u"d_.mp3"_s, u"a_.mp3"_s});
        DeleteFile(r.F.Inside(u"c_.mp3"_s));
        r.Open({1, 2, 3, 4, 5, 6, 7});
        r.AddRule(u"d "_s, u"x\\y"_s);
        r.Turn(*r.At<QTabWidget>("SSTab1"), 3);
        QCOMPARE(r.Text("lbPreview"), u"1 of 7 will be renamed, 2 collide, 1 is missing, 1 is refused"_s);
        QCOMPARE(r.Cells("PreviewList").join(u' '),
                 u"a_.mp3|A.mp3 A _.mp3|A.mp3 B.mp3|B.mp3 b_.mp3|B.mp3 c_.mp3|C.mp3 d_.mp3|X\\y.mp3 a_.mp3|A.mp3"_s);
        const QAbstractItemModel &model = *r.At<QAbstractItemView>("PreviewList")->model();
        QString marks;
        QStringList tips;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QModelIndex cell = model.index(row, 1);
            marks += cell.data(Qt::ForegroundRole).isValid() ? u'-' : u' ';
            marks += cell.data(Qt::DecorationRole).isValid() ? u'!' : u' ';
            tips.append(cell.data(Qt::ToolTipRole).toString().section(u'\n', 1).section(u':', 0, 0));
        }
        QCOMPARE(marks, u"  -!- -!-!-!-!"_s);
        QCOMPARE(
            tips.join(u'|'),
            u"|An earlier item of the selection gets this name||A file of this name stands in the folder|The file is "
            "not there.|A name can hold no separator of folders|The same file as in an earlier row"_s);
        QCOMPARE(r.Names(), u"a_.mp3|A _.mp3|B.mp3|b_.mp3|c_.mp3|d_.mp3|a_.mp3"_s);
        r.F.Prompts.Expect(r.warning, PromptAnswer::Yes);
        r.F.Prompts.Expect(r.missing, PromptAnswer::Yes);
        r.Click("CmdProcess");
        QCOMPARE(r.Text("lbReport"), u"Done: 1/7 Items were Processed"_s);
        QVERIFY(r.Text("lbPreview").startsWith(u"0 of 7"_s));
        r.Undo();
        QVERIFY(r.Text("lbPreview").startsWith(u"1 of 2"_s));
        r.Click("Increment");
        r.Turn(*r.At<QTabWidget>("SSTab1"), 3);
        QVERIFY(r.Cells("PreviewList").front().endsWith(u"|1 - A.mp3"_s));
    }

    void EscapeEndsRuns()
    {
        const auto escape = [](QWidget *window) {
            QCoreApplication::postEvent(window, new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
        };
        Rename r;
        r.OpenOn({u"a_.mp3"_s, u"b_.mp3"_s});
        r.Click("Warning");
        escape(r.Form);
        QCOMPARE(r.Process(), u"Done: 0/0 Items were Processed, ended after 0 of 2 +Rename"_s);
        QVERIFY(r.Form->isVisible());
        QCOMPARE(r.Process(), u"Done: 2/2 Items were Processed +Undo"_s);
        escape(r.Form);
        QCOMPARE(r.Undo(), u"Done: 0/0 Items were Restored +Undo"_s);
        QCOMPARE(r.Undo(), u"Done: 2/2 Items were Restored"_s);

        // What is done stays, and its undo takes it back.
        int done = 0;
        Progress progress;
        progress.SetValue = [&](int value) { done = value; };
        progress.Stopped = [&] { return done == 1; };
        QStringList old{r.F.Inside(u"a_.mp3"_s), r.F.Inside(u"b_.mp3"_s)};
        RenameOutcome outcome = RunRename(RenameSettings(), old, false, progress);
        QCOMPARE(outcome.NewPaths, QStringList{r.F.Inside(u"A.mp3"_s)});
        QCOMPARE(r.Disk(), u"A.mp3=a_.mp3|b_.mp3"_s);
    }

    void NamesInAnyForm()
    {
        if (!NamesHoldAnything())
            QSKIP("The file system holds names as text");
        const QStringList names{u"夜_の散歩.mp3"_s, u"e\u0301_é.mp3"_s, u"\uF0FF_\uF00A.mp3"_s,
                                u"_\uF05C:*?\"<>|.mp3"_s};
        Rename r;
        r.OpenOn(names);
        QCOMPARE(r.Process(), u"Done: 4/4 Items were Processed +Undo"_s);
        QCOMPARE(r.Names(), u"夜 の散歩.mp3|E\u0301 É.mp3|\uF0FF \uF00A.mp3|\uF05C:*?\"<>|.mp3"_s);
        for (int row = 1; row <= 4; ++row)
            QCOMPARE(ExamineFile(r.F.Window->ListView1.Item(row).FullPath()).Size, names[row - 1].toUtf8().size());
        QCOMPARE(r.Undo(), u"Done: 4/4 Items were Restored"_s);
        QCOMPARE(r.Names(), names.join(u'|'));
        // The temporary folder cannot remove all of them.
        for (const QString &name : names)
            QVERIFY(DeleteFile(r.F.Inside(name)));
    }
};

QTEST_MAIN(RenameTest)
#include "RenameTest.moc"
