#include "reports/ReportSettings.h"
#include "support/FormDriver.h"

#include <QFontDatabase>
#include <QGroupBox>
#include <QProgressBar>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace
{
const QString keep = u"Do you want to keep the file?"_s;

/// A main window with two items in a folder, and the wizard over it.
struct Wizard : FormDriver {
    QString One = F.Write(u"My Music\\one.wma"_s, "123");
    QString Two = F.Write(u"My Music\\sub\\two.wma"_s, "45678");

    Wizard()
    {
        F.Window->AddPath(One, false);
        F.Window->AddPath(Two, false);
        F.Window->FileArray = QStringList{u"left behind"_s};
        Open();
    }

    void Open() { OpenTool("MToolsReport", "ReportForm", {}); }

    /// The caption of the frame that is shown, and which of Back and Next are on.
    QString Shown() const
    {
        QString shown;
        for (const auto *frame : Form->findChildren<QGroupBox *>())
            shown += frame->isVisible() ? frame->title() : QString();
        return shown + (Enabled("CmdBack") ? u"<"_s : QString()) + (Enabled("CmdNext") ? u">"_s : QString());
    }

    void Proceed(int steps) const
    {
        for (int i = 0; i < steps; ++i)
            Click("CmdNext");
    }

    /// From the first step on, through the run.
    void Run() const { Proceed(4); }

    void ChooseText() const { QTest::keyClick(At("RepType"), Qt::Key_Down); }
    QByteArray Folder() const { return F.Read(u"My Music\\tmp.htm"_s); }
    QString Saved() const { return QString::fromUtf8(F.Read(u"kept.txt"_s)); }
};
} // namespace

class ReportFormTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LeadsThroughItsSteps()
    {
        Wizard w;
        const QString options = u"STEP 1 -  Report Options...>"_s;
        const QString details = u"STEP 2 - Item Details...<>"_s;
        const QString generate = u"STEP 4 - Generate Report...<>"_s;
        for (const QString &third : {u"STEP 3 - HTML Table Settings...<>"_s, u"STEP 3 - TXT File Setup...<>"_s}) {
            const QStringList steps{options, details, third, generate};
            for (const QString &step : steps) {
                QCOMPARE(w.Shown(), step);
                w.Proceed(step == generate ? 0 : 1);
            }
            for (qsizetype i = steps.size(); i-- > 0;) {
                QCOMPARE(w.Shown(), steps[i]);
                if (i > 0)
                    w.Click("CmdBack");
            }
            w.ChooseText();
        }
        w.Proceed(2);
        QTest::keyClick(w.Form, Qt::Key_Escape);
        QVERIFY(!w.Form->isVisible());
        w.Open();
        QVERIFY(w.Shown() == options && w.Text("lblReport") == u"Click 'Next>' to generate the report."_s);
        w.F.Prompts.Expect(keep, PromptAnswer::No);
        w.Run();
        QCOMPARE(w.Shown(), u"STEP 4 - Generate Report...>"_s);
        QCOMPARE(w.Text("lblReport"), u"Done: Report Generator. Click 'Next>' to restart..."_s);
        QVERIFY(w.At("CmdClose")->hasFocus() && w.At<QProgressBar>("ProgressBar1")->value() == 0);
        w.Proceed(1);
        QCOMPARE(w.Shown(), options);
    }

    void AsksWhatToKeep()
    {
        Wizard w;
        const QString temporary = w.F.Inside(u"My Music\\tmp.htm"_s);
        const QString proposal = w.F.Inside(u"My Music\\playlist.htm"_s);
        const QString kept = w.F.Inside(u"kept.htm"_s);
        const QString exists = kept + u" exists, do you want to replace it?";
        w.F.Prompts.Expect(keep, PromptAnswer::No);
        w.Run();
        QCOMPARE(w.F.ShellCalls, QStringList{u"open "_s + temporary});
        QVERIFY(w.Folder().isEmpty());
        // A file of that name gets its place back, unless the user breaks off.
        w.F.Write(u"My Music\\tmp.htm"_s, "mine");
        const auto answer = [&](const std::optional<QString> &path) {
            w.Open();
            w.F.Prompts.Expect(keep, PromptAnswer::Yes);
            w.F.Prompts.ExpectPath(proposal, path);
        };
        answer(kept);
        w.Run();
        const QByteArray page = w.F.Read(u"kept.htm"_s);
        QVERIFY(page.contains("one.wma>X</a>") && page.contains("sub/two.wma>X</a>") && w.Folder() == "mine");
        w.F.Write(u"kept.htm"_s, "old");
        answer(kept);
        w.F.Prompts.Expect(exists, PromptAnswer::No);
        w.Run();
        QVERIFY(w.F.Read(u"kept.htm"_s) == "old" && w.Folder() == "mine");
        answer(kept);
        w.F.Prompts.Expect(exists, PromptAnswer::Yes);
        w.F.Prompts.Expect(u"Could not save the file!"_s, PromptAnswer::Ok);
        SetFileAttributes(kept, AttributeReadOnly);
        w.Run();
        SetFileAttributes(kept, AttributeNormal);
        QVERIFY(w.F.Read(u"kept.htm"_s) == "old" && w.Folder() == "mine");
        answer(temporary);
        w.F.Prompts.Expect(temporary + u" exists, do you want to replace it?", PromptAnswer::Yes);
        w.Run();
        QCOMPARE(w.Folder(), page);
        answer({});
        w.Run();
        QCOMPARE(w.Folder(), page);
    }

    void WritesWhereItCan()
    {
        Wizard w;
        // Without a common folder there are no relative links.
        w.F.Window->AddFile(u"q:\\gone.mp3"_s, 0);
        w.F.Prompts.Expect(keep, PromptAnswer::Yes);
        w.F.Prompts.ExpectPath(u"playlist.htm"_s, {});
        w.Run();
        QVERIFY(w.F.Read(u"app\\tmp.htm"_s).contains("3 Items"));
        // An empty list, and a folder that is none.
        w.F.Window->ListView1.Clear();
        w.ChooseText();
        w.F.Write(u"taken"_s, {});
        w.F.Restart();
        w.F.Window->AddFile(w.F.Inside(u"taken\\x.mp3"_s), 0);
        w.Open();
        w.F.Prompts.Expect(u"The file :"_s + ToHostPath(w.F.Inside(u"taken\\tmp.htm"_s)) + u" could not be written.",
                           PromptAnswer::Ok);
        w.Run();
        QCOMPARE(w.Text("lblReport"), u"Done: Report Generator. Click 'Next>' to restart..."_s);
    }

    void EndsAtEscape()
    {
        Wizard w;
        w.F.Write(u"My Music\\tmp.htm"_s, "mine");
        w.Proceed(3);
        QTimer::singleShot(0, w.Form, [&] { QTest::keyClick(w.Form, Qt::Key_Escape); });
        w.Proceed(1);
        QCOMPARE(w.Text("lblReport"), u"Stopped: no report was written. Click 'Next>' to restart..."_s);
        QCOMPARE(w.Folder(), QByteArray("mine"));
    }

    void OrdersColumns()
    {
        Wizard w;
        w.ChooseText();
        w.Enter("txtTitle", u"T"_s);
        QTest::mouseDClick(w.At("txtTitle"), Qt::LeftButton);
        QCOMPARE(w.Text("txtTitle"), u"My Music"_s);
        w.Enter("txtDesc", u"Two\nlines"_s);
        w.Proceed(1);
        QCOMPARE(w.Cells("ColumnList").size(), 21);
        w.Click("cmdUp");
        w.Click("cmdNone");
        const auto move = [&](int row, const char *command, int times) {
            w.SelectRow("ColumnList", row);
            for (int i = 0; i < times; ++i)
                w.Click(command);
        };
        // Ticks go with their columns.
        move(0, "cmdUp", 1);
        QTest::keyClick(w.At("ColumnList"), Qt::Key_Space);
        move(3, "cmdUp", 5);
        QTest::keyClick(w.At("ColumnList"), Qt::Key_Space);
        move(20, "cmdDown", 1);
        QCOMPARE(w.Cells("ColumnList").first(4).join(u' '), u"Size FileName Folder Time"_s);
        QCOMPARE(w.Cells("ColumnList").last(), u"Link"_s);
        w.Click("Summary");
        w.Proceed(1);
        w.Enter("txtDelimiter", u"::::"_s);
        w.Click("CustomDelimited");
        w.Proceed(1);
        w.Click("SaveRel");
        w.F.Prompts.Expect(keep, PromptAnswer::Yes);
        w.F.Prompts.ExpectPath(w.F.Inside(u"My Music\\playlist.txt"_s), w.F.Inside(u"kept.txt"_s));
        w.Proceed(1);
        QCOMPARE(w.Saved(), u"My Music\r\nTwo\r\nlines\r\n\r\nSize:::FileName:::\r\n\r\n3 Bytes:::One:::\r\n"
                            "5 Bytes:::Two:::\r\n\r\n"_s);
        QVERIFY(w.F.Read(u"app\\tmp.txt"_s).isEmpty());
        QCOMPARE(w.F.ShellCalls, QStringList{u"open "_s + w.F.Inside(u"app\\tmp.txt"_s)});
        w.Open();
        w.Proceed(1);
        w.Click("cmdAll");
        w.F.Prompts.ExpectPath(w.F.Inside(u"program\\*.rpt"_s), w.F.Inside(u"all.rpt"_s));
        w.Click("CmdBack");
        w.Click("SaveCurrent");
        ReportSettings record;
        QVERIFY(LoadReportSettings(w.F.Inside(u"all.rpt"_s), record));
        QCOMPARE(std::count(record.ColumnChecked.begin(), record.ColumnChecked.end(), true), 21);
    }

    void KeepsSettingsInFiles()
    {
        Wizard w;
        ReportSettings record = DefaultReportSettings();
        record.RepType = 1;
        record.Title = u"A title with blanks  inside"_s;
        record.Description = QString(u"Zeile ü\r\n\r\nxyz"_s);
        record.ColumnHeaders = record.ColorTable = false;
        record.ValWidth = u"77%"_s;
        record.ValBorder = u"7"_s;
        record.ValSpacing = u"8px"_s;
        record.ValPadding = u"99"_s;
        std::reverse(record.ColumnOrder.begin(), record.ColumnOrder.end());
        std::reverse(record.ColumnChecked.begin(), record.ColumnChecked.end());
        record.FontName = u"No Such Font"_s;
        record.FontSizeIndex = 4;
        record.Delimiter = u"#"_s;
        const QString proposal = w.F.Inside(u"program\\*.rpt"_s);
        const QString path = w.F.Inside(u"a.rpt"_s);
        const QString copy = w.F.Inside(u"b.rpt"_s);
        const auto load = [&](const ReportSettings &settings) {
            SaveReportSettings(path, settings);
            w.F.Prompts.ExpectPath(proposal, path);
            w.Click("LoadCurrent");
        };
        const auto save = [&] {
            w.F.Prompts.ExpectPath(proposal, copy);
            w.Click("SaveCurrent");
        };
        for (bool ReportSettings::*layout : {&ReportSettings::SpaceAligned, &ReportSettings::CommaDelimited,
                                             &ReportSettings::TabDelimited, &ReportSettings::CustomDelimited}) {
            record.SpaceAligned = record.CommaDelimited = record.TabDelimited = record.CustomDelimited = false;
            record.*layout = true;
            record.Summary = record.SaveRel = record.SpaceAligned;
            load(record);
            save();
            QCOMPARE(w.F.Read(u"b.rpt"_s), w.F.Read(u"a.rpt"_s));
            DeleteFile(copy);
        }
        QCOMPARE(w.At("FontTest")->font().pointSize(), 18);
        // Numbers out of range are shown as the nearest ones.
        record.RepType = -3;
        record.FontSizeIndex = 99;
        record.ColumnOrder = {30, -1};
        load(record);
        QVERIFY(w.Text("RepType") == u"HTML File"_s && w.Text("FontSizer") == u"36"_s);
        QCOMPARE(w.Cells("ColumnList").first(2).join(u' '), u"Link FileName"_s);
        w.Click("LoadDefault");
        save();
        SaveReportSettings(path, DefaultReportSettings());
        QCOMPARE(w.F.Read(u"b.rpt"_s), w.F.Read(u"a.rpt"_s));
        // What goes wrong, and what the user does not want.
        const QByteArray before = w.F.Read(u"b.rpt"_s);
        w.Enter("txtTitle", u"other"_s);
        w.F.Prompts.ExpectPath(proposal, copy);
        w.F.Prompts.Expect(copy + u" exists, do you want to replace it?", PromptAnswer::No);
        w.Click("SaveCurrent");
        w.F.Prompts.ExpectPath(proposal, {});
        w.Click("LoadCurrent");
        w.F.Prompts.ExpectPath(proposal, w.F.Inside(u"gone.rpt"_s));
        w.F.Prompts.Expect(u"Could not read the file!"_s, PromptAnswer::Ok);
        w.Click("LoadCurrent");
        w.F.Prompts.ExpectPath(proposal, w.F.Inside(u"gone\\x.rpt"_s));
        w.F.Prompts.Expect(u"Could not save the file!"_s, PromptAnswer::Ok);
        w.Click("SaveCurrent");
        QVERIFY(w.F.Read(u"b.rpt"_s) == before && w.Text("txtTitle") == u"other"_s);
    }

    void ShowsFonts()
    {
        Wizard w;
        QCOMPARE(w.Cells("FontList"), QFontDatabase::families().mid(1));
        w.Proceed(2);
        w.SelectRow("FontList", 0);
        const QString family = w.Cells("FontList").value(0);
        QVERIFY(w.At("FontTest")->font().family() == family && w.At("FontList")->toolTip() == family);
        QTest::keyClick(w.At("FontSizer"), Qt::Key_Down);
        QCOMPARE(w.At("FontTest")->font().pointSize(), 10);
    }
};

QTEST_MAIN(ReportFormTest)
#include "ReportFormTest.moc"
