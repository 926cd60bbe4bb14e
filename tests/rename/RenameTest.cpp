#include "rename/RenameRun.h"
#include "session/TickList.h"
#include "support/FormDriver.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QProgressBar>

using namespace Qt::StringLiterals;

namespace
{
/// A main window and the batch rename over it.
struct Rename : FormDriver {
    QString RulesFile = F.Inside(u"rules.rps"_s);

    /// Writes files with their names as content, adds their rows and opens the dialog on some of them; names are joined
    /// by "|".
    void OpenOn(const QString &names, const QList<int> &rows)
    {
        for (const QString &name : names.split(u'|'))
            F.Window->AddFile(F.Write(name, name.toUtf8()), 0);
        F.Window->PlaylistDirty = false;
        Open(rows);
    }
    void Open(const QList<int> &rows) { OpenTool("MToolsRename", "RenameForm", rows); }
    void Page(int page) const { Turn(*At<QTabWidget>("SSTab1"), page); }
    void Expect(const QString &text, PromptAnswer answer) { F.Prompts.Expect(text, answer); }

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
        QStringList rows = Cells("RuleList");
        for (int row = 0; row < rows.size(); ++row)
            rows[row].prepend(At<TickList>("RuleList")->IsTicked(row) ? u"+"_s : QString());
        return rows.join(u'|');
    }
    /// What becomes of names.
    QString Samples(const QString &names) const
    {
        QStringList made;
        for (const QString &name : names.split(u'|')) {
            Enter("Test1", name);
            Click("RenTest");
            made.append(Text("Test2"));
        }
        return made.join(u'|');
    }

    /// Runs with the warning answered; returns the report.
    QString Process()
    {
        if (!Ticked("Warning"))
            Expect(warning, PromptAnswer::Yes);
        return Do("CmdProcess");
    }
    QString Do(const char *command) const
    {
        Click(command);
        return Report();
    }
    QString Load(const QByteArray &bytes)
    {
        F.Prompts.ExpectPath(proposal, F.Write(u"rules.rps"_s, bytes));
        return Do("RulesLoad");
    }

    /// The names of the rows, with their folders inside the test's.
    QString Names() const { return F.Paths().join(u'|'); }
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
    QString Commands() const { return Usable("^(CmdProcess|cmdUndo)$"); }
    /// The report and the commands that are enabled.
    QString Report() const { return QString(Text("lbReport") + u' ' + Commands()).trimmed(); }

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
        r.OpenOn(u"a.mp3"_s, {1});
        QCOMPARE(r.Samples(u"a.mp3b.mp3|song.mpeg|x.mp| _ .mp3|_(a) é-x.OGG|c:\\a.mp3\\a.mp3|SAmPle File_naMe.MP3"_s),
                 u"Ab.mp3|Song.mpeg|x.mp| _ .mp3|(a) É-x.ogg|c:\\\\A.mp3|Sample File Name.mp3"_s);
        QCOMPARE(r.Text("lbReport"), u"Generated Test FileName from: SAmPle File_naMe.MP3"_s);
        r.Click("Extension");
        r.AddRule(u"a"_s, u"aa"_s);
        r.AddRule(u"x"_s, QString());
        r.AddRule(QString(), u" end"_s, false);
        QCOMPARE(r.Samples(u"bxaxa.MP3"_s), u"Baaaa.MP3"_s);
        r.Tick(3);
        r.Click("LowFilename");
        QCOMPARE(r.Samples(u"BA.mp3"_s), u"ba end.mp3"_s);
        r.Click("LowFilename");
        QVERIFY(!r.Enabled("IncPosC") && !r.Enabled("Truncval"));
        r.Click("Increment");
        QCOMPARE(r.Samples(u"B.mp3"_s), u"08 - B End.mp3"_s);
        r.Choose("IncPosC", 1);
        r.Click("Truncat");
        QCOMPARE(r.Samples(u"B.mp3"_s), u"B End - 08.mp3"_s);
        r.Choose("Truncval", 0);
        QCOMPARE(r.Samples(u"B.mp3|1234567\U0001F3B5.mp3"_s), u"B End -.mp3|1234567.mp3"_s);
        r.Choose("IncPosC", 0);
        r.Tick(3);
        r.Click("Capitalise");
        for (int i = 0; i < 9; ++i)
            r.AddRule(QString(1 + i % 2, u'n'), QString(19 - i, u'n'));
        QCOMPARE(r.Samples(u".mp3|b.mp3|n.mp3"_s), u"08.mp3|08 - b.mp3|n.mp3"_s);
        QStringList numbers;
        for (const int total : {9, 10, 100, 1000, 9999, 10000})
            numbers.append(FormatSequenceNumber(12, total));
        QCOMPARE(numbers.join(u' '), u"12 12 012 0012 0012 12"_s);
    }

    void RuleListIsEdited()
    {
        Rename r;
        r.OpenOn(u"a.mp3"_s, {1});
        r.AddRule(u"a"_s, u"a"_s, false);
        r.AddRule(QString(40, u'x'), QString(), false);
        r.AddRule(QString(), u"b "_s, false);
        const QString remove = u"Remove '"_s + QString(19, u'x');
        QCOMPARE(r.Rules(), u"+Replace '_' with ' '|"_s + remove + u"'|Add 'b '");
        // A part of what the boxes say is there already.
        r.AddRule(u"q"_s, u"b "_s, false);
        QCOMPARE(r.Samples(u"a_.mp3"_s), u"A B.mp3"_s);
        r.Page(2);
        const QString steps = r.Cells("TestList").join(u'|') + r.Text("lbReport");
        r.SelectRow("RuleList", 0);
        r.Click("RemoveRule");
        QCOMPARE(r.Rules() + r.Samples(u"a_.mp3"_s), remove + u"'|+Add 'b 'A_b.mp3"_s);
        r.SelectRow("RuleList", 1);
        r.Click("RemoveRule");
        QCOMPARE(r.Samples(u"a_.mp3"_s), u"A_.mp3"_s);
        for (int i = 0; i < 20; ++i)
            r.AddRule(QString::number(i), QString(), i == 0);
        QCOMPARE(r.Cells("RuleList").size(), 19);
        for (const char *box : {"Extension", "Capitalise", "RenID3", "LowFilename", "Increment", "Truncat"})
            r.Click(box);
        r.Page(2);
        QCOMPARE(steps + r.Cells("TestList").first(5).join(u'|'),
                 u"1|The extension will be made lower case.|2|'_' in the filename will be replaced with ' '.|3|'b ' "
                 "will be added to the end of the filename.|4|Words will be formatted to start with a capital "
                 "letter.|5|The filename will be validated and rebuilt|>|The file will be renamed and the change "
                 "logged.Generated Report of Renaming Rules...1|The filename will be created from ID3v1/2 "
                 "Data.|2|'0' will be removed from the filename.|3|The filename will be made lowercase.|4|Numbers "
                 "will be added to the start of each file.|5|The filename will be truncated to 32 characters."_s);
        r.Click("RulesDef");
        QCOMPARE(r.Report() + r.Rules(),
                 u"Restored Default Renaming Configuration... CmdProcess+Replace '_' with ' '"_s);
    }

    void RunsUndoesAndRunsAgain()
    {
        Rename r;
        r.OpenOn(u"a_1.MP3|b_2.mp3|C 3.mp3|d_4.mp3"_s, {});
        QCOMPARE(r.Report(), u"Nothing Selected..."_s);
        r.Click("CmdClose");
        r.F.Select({1});
        r.F.Trigger("MEditSeMarkBlue");
        r.Open({1, 3, 4});
        QCOMPARE(r.Report() + r.F.Undoable(), u"3 Items Selected. CmdProcessMark 1 item"_s);
        const QString before = r.Names();
        const QString renamed = u"A 1.mp3|b_2.mp3|C 3.mp3|D 4.mp3"_s;
        r.Expect(r.warning, PromptAnswer::No);
        QCOMPARE(r.Do("CmdProcess") + r.Names(), u"3 Items Selected. CmdProcess"_s + before);
        QCOMPARE(r.Process(), u"Done: 2/3 Items were Processed cmdUndo"_s);
        QCOMPARE(r.Names() + r.Disk(), renamed + u"A 1.mp3=a_1.MP3|b_2.mp3|C 3.mp3|D 4.mp3=d_4.mp3"_s);
        QVERIFY(r.F.Window->PlaylistDirty && r.Ticked("Warning") && r.F.Undoable().isEmpty());
        QCOMPARE(r.F.Window->PanelText(4), u"2 files renamed"_s);
        r.Click("AllowOnce");
        r.Click("Delay");
        r.Click("Delay");
        QCOMPARE(r.Commands(), u"cmdUndo"_s);
        r.Click("Delay");
        // The list is saved as it is now.
        r.F.Window->PlaylistDirty = false;
        QVERIFY(r.Do("cmdUndo").startsWith(u"Done: 2/2 Items were Restored"_s));
        QCOMPARE(r.Names() + r.Disk() + r.F.Rows(), before + before + u"A_1 b_2 C 3 D_4"_s);
        QVERIFY(r.F.Window->PlaylistDirty);
        QTRY_COMPARE(r.Commands(), u"CmdProcess"_s);
        QVERIFY(r.Process().startsWith(u"Done: 2/2 Items were Processed"_s));
        QCOMPARE(r.Names(), renamed);
        QTRY_COMPARE(r.Commands(), u"cmdUndo CmdProcess"_s);
        r.Click("AllowOnce");
        QCOMPARE(r.Commands(), u"cmdUndo"_s);
        QCOMPARE(r.Do("CmdClose"), u"Ready..."_s);
        // What Undo would bring back would have no file any more.
        r.F.Select({1, 4});
        r.F.Trigger("MEditRemove");
        QCOMPARE(r.F.Undoable(), u"Remove 2 items"_s);
        r.Open({1});
        QVERIFY(r.Do("cmdUndo").startsWith(u"Done: 2/2 Items were Restored"_s));
        r.Click("CmdClose");
        QCOMPARE(r.F.Undoable() + r.Names(), u"b_2.mp3|C 3.mp3"_s);
        // Nothing is left to do.
        r.F.Window->PlaylistDirty = false;
        r.Open({2});
        QCOMPARE(r.Process(), u"Done: 0/1 Items were Processed CmdProcess"_s);
        QVERIFY(!r.F.Window->PlaylistDirty);
    }

    void RefusedNamesLoseNothing()
    {
        Rename r;
        r.OpenOn(u"one_.mp3|one .mp3|gone_.mp3|two_.mp3|sep_x.mp3|Long_.mp3|two_.mp3|one_.mp3"_s,
                 {1, 2, 3, 4, 5, 6, 7});
        const QString before = r.Names();
        r.F.Write(u"Two.mp3"_s, "there");
        r.AddRule(u"sep "_s, u"a/../"_s);
        r.AddRule(u"Long"_s, QString(19, u'é'));
        r.AddRule(u"é"_s, QString(19, u'é'));
        DeleteFile(r.F.Inside(u"gone_.mp3"_s));
        r.Expect(r.warning, PromptAnswer::Yes);
        r.Expect(r.missing, PromptAnswer::No);
        QCOMPARE(r.Do("CmdProcess"), u"Use 'Remove Non-Existent Items' to Purge Missing Files... CmdProcess"_s);
        r.Expect(r.missing, PromptAnswer::Yes);
        const QString disk = u"one .mp3|One.mp3=one_.mp3|sep_x.mp3|Two.mp3=there|two_.mp3"_s;
        QCOMPARE(r.Process(), u"Done: 1/7 Items were Processed cmdUndo"_s);
        QVERIFY2(r.Disk().endsWith(disk), qPrintable(r.Disk()));
        // Also the row that was not selected follows its file.
        QCOMPARE(r.Names(), u"One.mp3|"_s + before.sliced(9, before.size() - 17) + u"One.mp3"_s);
        DeleteFile(r.F.Inside(u"one .mp3"_s));
        r.F.Write(u"one_.mp3"_s, "in the way");
        QCOMPARE(r.Do("cmdUndo"), u"Done: 0/1 Items were Restored cmdUndo"_s);
        QCOMPARE(r.F.Rows(), u"One one  gone_ two_ sep_x Long_ two_ One"_s);
        DeleteFile(r.F.Inside(u"one_.mp3"_s));
        QCOMPARE(r.Do("cmdUndo"), u"Done: 1/1 Items were Restored"_s);
        QCOMPARE(r.Names(), before);
    }

    void EveryRowFollowsItsFile()
    {
        Rename r;
        r.OpenOn(u"a_.mp3|sub\\a_.mp3|a_.mp3|_a_.mp3"_s, {1, 2, 3, 4});
        r.AddRule(u" a"_s, u"x"_s);
        r.F.Window->AddFile(r.F.Inside(u"sub\\..\\a_.mp3"_s), 0);
        QCOMPARE(r.Process(), u"Done: 3/4 Items were Processed cmdUndo"_s);
        QCOMPARE(r.Names(), u"A.mp3|sub\\A.mp3|A.mp3|X.mp3|sub\\..\\A.mp3"_s);
        // A run that changes nothing leaves the way back of the one before.
        r.Open({4});
        QCOMPARE(r.Process(), u"Done: 0/1 Items were Processed cmdUndo CmdProcess"_s);
        QCOMPARE(r.Do("cmdUndo"), u"Done: 3/3 Items were Restored CmdProcess"_s);
        QCOMPARE(r.Names() + r.Disk(), u"a_.mp3|sub\\a_.mp3|a_.mp3|_a_.mp3|sub\\..\\a_.mp3_a_.mp3|a_.mp3"_s);
    }

    void NumbersCountByFolder()
    {
        Rename r;
        for (int i = 0; i < 10; ++i)
            r.F.Write(u"q\\other%1.%2"_s.arg(i).arg(i % 2 == 0 ? u"OGG"_s : u"wma"_s), "x");
        r.F.Write(u"p\\no.txt"_s, "x");
        r.OpenOn(u"p\\A.mp0|q\\B.mp0|p\\A.mp1|q\\B.mp1|p\\A.mp2"_s, {1, 3, 4, 5});
        r.Click("Increment");
        r.Click("Warning");
        r.Expect(r.folders, PromptAnswer::Cancel);
        QCOMPARE(r.Do("CmdProcess"), u"Select ALL files from a single folder to be sure... CmdProcess"_s);
        for (const auto &[answer, names] :
             {std::pair(PromptAnswer::No, u"p\\1 - A.mp0|q\\B.mp0|p\\2 - A.mp1|q\\3 - B.mp1|p\\4 - A.mp2"_s),
              {PromptAnswer::Yes, u"p\\1 - A.mp0|q\\B.mp0|p\\2 - A.mp1|q\\01 - B.mp1|p\\3 - A.mp2"_s}}) {
            r.Open({1, 3, 4, 5});
            r.Expect(r.folders, answer);
            r.Process();
            QCOMPARE(r.Names(), names);
            r.Do("cmdUndo");
        }
        r.Open({2, 4});
        r.Process();
        QCOMPARE(r.Names(), u"p\\A.mp0|q\\01 - B.mp0|p\\A.mp1|q\\02 - B.mp1|p\\A.mp2"_s);
    }

    void TagsGiveNames()
    {
        Rename r;
        r.TakeData(u"a.MP3"_s, "tag-id3v24.mp3");
        r.TakeData(u"b_1.mp3"_s, "text.mp3");
        r.OpenOn(u"c.ogg|d_2.wav"_s, {});
        r.F.Write(u"c.ogg"_s,
                  "\3vorbis\x1D" + QByteArray("ARTIST=Ax\0\0\0TITLE=T", 19) + "\1\5vorbis" + QByteArray(4096, 'x'));
        r.Open({1, 2, 3, 4});
        r.Click("RenID3");
        r.Page(3);
        QVERIFY(r.Cells("PreviewList").join(u'|').contains(u"|A - T.ogg|"));
        r.Process();
        QCOMPARE(r.Names(), u"Caf Meridian -  Ber Den Wolken.mp3|B 1.mp3|A - T.ogg|D 2.wav"_s);
    }

    void RuleFilesKeepSettings()
    {
        Rename r;
        r.OpenOn(u"a.mp3"_s, {1});
        r.ClickAndGive("RulesSave", r.proposal, {});
        r.F.Prompts.ExpectPath(r.proposal, r.RulesFile);
        QCOMPARE(r.Do("RulesSave"), u"Renaming Configuration Saved to: 'rules.rps' CmdProcess"_s);
        const QByteArray defaults = r.F.Read(u"rules.rps"_s);
        const QByteArray pad(19, '\x8f');
        const QByteArray set("\xff\xff");
        QCOMPARE(defaults, set + set + QByteArray(2, '\0') + set + '_' + pad + QByteArray(400, ' ') + ' ' + pad +
                               QByteArray(400, ' ') + set + QByteArray(42, '\0') + ' ' + QByteArray(7, '\0'));
        // What is not held by the code page is not written.
        r.AddRule(u"夜"_s, u"x"_s);
        r.F.Prompts.ExpectPath(r.proposal, r.RulesFile);
        const QString exists = ShownPath(r.RulesFile) + u" exists, do you want to replace it?";
        r.Expect(exists, PromptAnswer::Yes);
        r.ClickAndRead("RulesSave", u"Could not save the file!"_s);
        r.ClickAndGive("RulesSave", r.proposal, r.RulesFile, exists, PromptAnswer::No);
        QCOMPARE(r.F.Read(u"rules.rps"_s), defaults);

        QByteArray foreign = defaults;
        foreign.replace(0, 8, "\1\0\xff\xff\xff\xff\0\0"_ba).replace(28, 20, "\xe9 "_ba.append(pad.chopped(1)));
        foreign.replace(850, 2, set).replace(890, 10, "\xff\xff\xf9\xff\xff\xff\xff\xff\xff\xff");
        QCOMPARE(r.Load(foreign + "tail"), u"Renaming Configuration Loaded from: 'rules.rps' CmdProcess"_s);
        QCOMPARE(r.Rules(), u"+Replace '_' with ' '|+Remove 'é '"_s);
        QVERIFY(!r.Ticked("Capitalise") && r.Ticked("Extension") && r.Ticked("LowFilename") && r.Ticked("RenID3"));
        QVERIFY(r.Enabled("IncPosC") && r.Ticked("Truncat") && r.Enabled("Truncval"));
        QCOMPARE(r.Text("IncPosC") + r.At<QComboBox>("Truncval")->placeholderText(), u"At End-7"_s);
        QCOMPARE(r.Samples(u"name.mp3"_s), u"name.mp3"_s);
        // A gap puts ticks on other rows, and what a short file lacks stays.
        r.Load(QByteArray(defaults).replace(48, 20, "b"_ba.append(pad)).replace(850, 4, "\xff\xff\0\0"_ba));
        r.Load(set + QByteArray(2, '\0') + set + set + "\xff");
        QVERIFY(r.Ticked("Increment") && !r.Ticked("Extension") && r.Text("IncPosC") == u"At Start"_s);
        QCOMPARE(r.Rules(), u"+Replace '_' with ' '|Remove 'b'"_s);
        QCOMPARE(r.Samples(u"a_.MP3"_s), u"08 - A.MP3"_s);
        r.Load(QByteArray("\x8f\x12\0z", 4).repeated(225));
        QCOMPARE(r.Samples(u"a_.mp3"_s), u"a_.mp3"_s);
        r.ClickAndGive("RulesLoad", r.proposal, r.F.Inside(u"gone.rps"_s), u"Could not read the file!"_s);
    }

    void PreviewShowsWhatARunDoes()
    {
        Rename r;
        r.OpenOn(u"a_.mp3|A _.mp3|B.mp3|b_.mp3|c_.mp3|d_.mp3|a_.mp3"_s, {1, 2, 3, 4, 5, 6, 7});
        DeleteFile(r.F.Inside(u"c_.mp3"_s));
        r.AddRule(u"d "_s, u"x\\y"_s);
        r.Page(3);
        QCOMPARE(r.Text("lbPreview"), u"1 of 7 will be renamed, 2 collide, 1 is missing, 1 is refused"_s);
        QCOMPARE(r.Cells("PreviewList").join(u' '),
                 u"a_.mp3|A.mp3 A _.mp3|A.mp3 B.mp3|B.mp3 b_.mp3|B.mp3 c_.mp3|C.mp3 d_.mp3|X\\y.mp3 a_.mp3|A.mp3"_s);
        const QAbstractItemModel &model = *r.At<QAbstractItemView>("PreviewList")->model();
        QStringList marks;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QModelIndex cell = model.index(row, 1);
            marks.append(cell.data(Qt::ToolTipRole).toString().section(u'\n', 1).section(u':', 0, 0));
            marks.last() += cell.data(Qt::ForegroundRole).isValid() ? u"-"_s : QString();
            marks.last() += cell.data(Qt::DecorationRole).isValid() ? u"!"_s : QString();
        }
        QCOMPARE(marks.join(u'|'),
                 u"|An earlier item of the selection gets this name-!|-|A file of this name stands in the folder-!|"
                 "The file is not there.-!|A name can hold no separator of folders-!|"
                 "The same file as in an earlier row-!"_s);
        r.Expect(r.warning, PromptAnswer::Yes);
        r.Expect(r.missing, PromptAnswer::Yes);
        QCOMPARE(r.Do("CmdProcess"), u"Done: 1/7 Items were Processed cmdUndo"_s);
        r.Do("cmdUndo");
        QVERIFY(r.Text("lbPreview").startsWith(u"1 of 2"_s));
        r.Click("Increment");
        r.Page(3);
        QVERIFY(r.Cells("PreviewList").front().endsWith(u"|1 - A.mp3"_s));
    }

    void EscapeEndsRuns()
    {
        Rename r;
        r.OpenOn(u"a_.mp3|b_.mp3"_s, {1, 2});
        r.Click("Warning");
        r.ClickAndStop("CmdProcess");
        QCOMPARE(r.Report(), u"Stopped: No Item was renamed... CmdProcess"_s);
        // A key that is still held does nothing to the window behind the run.
        r.At("CmdClose")->setFocus();
        for (const int key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter}) {
            QKeyEvent held(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
            QCoreApplication::sendEvent(r.Form, &held);
            QVERIFY(r.Form->isVisible());
        }
        r.F.Window->AddFile(r.F.Inside(u"gone"_s), 0);
        r.Open({1, 2, 3});
        r.F.Prompts.Meanwhile = [&r] { r.StopSoon(); };
        r.Expect(r.missing, PromptAnswer::Yes);
        QCOMPARE(r.Process(), u"Done: 0/0 Items were Processed, ended after 0 of 3 CmdProcess"_s);
        r.Open({1, 2});
        QCOMPARE(r.Process(), u"Done: 2/2 Items were Processed cmdUndo"_s);
        r.ClickAndStop("cmdUndo");
        QCOMPARE(r.Report(), u"Done: 0/0 Items were Restored, ended after 0 of 2 cmdUndo"_s);
        QCOMPARE(r.Do("cmdUndo"), u"Done: 2/2 Items were Restored"_s);
        // Without anything to do the bar does not look busy for ever.
        r.Open({});
        r.Page(3);
        QVERIFY(r.At<QProgressBar>("ProgressBar1")->maximum() > 0);
    }
};

QTEST_MAIN(RenameTest)
#include "RenameTest.moc"
