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
const QString done = u"Done: Report Generator. Click 'Next>' to restart..."_s;

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

    QByteArray Temporary() const { return F.Read(u"My Music\\tmp.htm"_s); }
};
} // namespace

class ReportFormTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LeadsThroughItsSteps()
    {
        Wizard w;
        const QString first = u"STEP 1 -  Report Options...>"_s;
        for (const QString &third : {u"STEP 3 - HTML Table Settings...<>"_s, u"STEP 3 - TXT File Setup...<>"_s}) {
            const QStringList steps{first, u"STEP 2 - Item Details...<>"_s, third, u"STEP 4 - Generate Report...<>"_s};
            for (qsizetype i = 0; i < 4; ++i, w.Proceed(i < 4 ? 1 : 0))
                QCOMPARE(w.Shown(), steps[i]);
            for (qsizetype i = 3; i > 0; --i, w.Click("CmdBack"))
                QCOMPARE(w.Shown(), steps[i]);
            w.Choose("RepType", 1);
        }
        w.Proceed(2);
        QTest::keyClick(w.Form, Qt::Key_Escape);
        QVERIFY(!w.Form->isVisible());
        w.Open();
        QCOMPARE(QString(w.Shown() + w.Text("lblReport")), QString(first + u"Click 'Next>' to generate the report."));
        w.F.Prompts.Expect(keep, PromptAnswer::No);
        w.Proceed(4);
        QCOMPARE(QString(w.Shown() + w.Text("lblReport")), QString(u"STEP 4 - Generate Report...>"_s + done));
        QVERIFY(w.At("CmdClose")->hasFocus() && w.At<QProgressBar>("ProgressBar1")->value() == 0);
        w.Proceed(1);
        QCOMPARE(w.Shown(), first);
    }

    void AsksWhatToKeep()
    {
        Wizard w;
        const QString temporary = w.F.Inside(u"My Music\\tmp.htm"_s);
        const QString kept = w.F.Inside(u"kept.htm"_s);
        w.F.Prompts.Expect(keep, PromptAnswer::No);
        w.Proceed(4);
        QVERIFY(w.F.ShellCalls == QStringList{u"open "_s + temporary} && w.Temporary().isEmpty());
        // A file of that name gets its place back, unless the user breaks off or keeps the report there.
        w.F.Write(u"My Music\\tmp.htm"_s, "mine");
        const auto run = [&](const std::optional<QString> &path, std::optional<PromptAnswer> replace = {}) {
            w.Open();
            w.F.Prompts.Expect(keep, PromptAnswer::Yes);
            w.F.Prompts.ExpectPath(w.F.Inside(u"My Music\\playlist.htm"_s), path);
            if (replace)
                w.F.Prompts.Expect(*path + u" exists, do you want to replace it?", *replace);
            if (replace == PromptAnswer::Yes && *path == kept)
                w.F.Prompts.Expect(u"Could not save the file!"_s, PromptAnswer::Ok);
            w.Proceed(4);
            return QByteArray(w.Temporary() + w.F.Read(u"kept.htm"_s));
        };
        QByteArray page = run(kept);
        QVERIFY(page.startsWith("mine<head>") && page.contains("one.wma>X</a>") && page.contains("sub/two.wma>X</a>"));
        w.F.Write(u"kept.htm"_s, "old");
        SetFileAttributes(kept, AttributeReadOnly);
        QCOMPARE(run(kept, PromptAnswer::No), "mineold"_ba);
        QCOMPARE(run(kept, PromptAnswer::Yes), "mineold"_ba);
        SetFileAttributes(kept, AttributeNormal);
        page = page.mid(4) + "old";
        QCOMPARE(run(temporary, PromptAnswer::Yes), page);
        w.F.Write(u"My Music\\tmp.htm"_s, "mine");
        QCOMPARE(run({}), page);
        // Escape ends a run; the last report stands there still.
        w.Open();
        w.Proceed(3);
        QTimer::singleShot(0, w.Form, [&] { QTest::keyClick(w.Form, Qt::Key_Escape); });
        w.Proceed(1);
        QCOMPARE(w.Text("lblReport"), u"Stopped: no report was written. Click 'Next>' to restart..."_s);
        QCOMPARE(w.Temporary() + "old", page);
    }

    void WritesWhereItCan()
    {
        Wizard w;
        // Without a common folder there are no relative links.
        w.F.Window->AddFile(u"q:\\gone.mp3"_s, 0);
        w.F.Prompts.Expect(keep, PromptAnswer::Yes);
        w.F.Prompts.ExpectPath(u"playlist.htm"_s, {});
        w.Proceed(4);
        QVERIFY(w.F.Read(u"app\\tmp.htm"_s).contains("3 Items"));
        w.F.Window->ListView1.Clear();
        w.F.Window->AddFile(w.F.Write(u"taken"_s, {}) + u"\\x.mp3", 0);
        w.Open();
        const QString failed = ToHostPath(w.F.Inside(u"taken\\tmp.htm"_s)) + u" could not be written.";
        w.F.Prompts.Expect(u"The file :"_s + failed, PromptAnswer::Ok);
        w.Proceed(4);
        QCOMPARE(w.Text("lblReport"), done);
    }

    /// What is set in each step comes to the report of a text and to a settings file.
    void WritesWhatIsSet()
    {
        Wizard w;
        w.Choose("RepType", 1);
        QTest::mouseDClick(w.At("txtTitle"), Qt::LeftButton);
        w.Enter("txtDesc", u"Two\nlines"_s);
        w.Proceed(1);
        w.Click("cmdNone");
        const auto move = [&](int row, const char *command, int times) {
            w.SelectRow("ColumnList", row);
            for (int i = 0; i < times; ++i)
                w.Click(command);
            QTest::keyClick(w.At("ColumnList"), Qt::Key_Space);
        };
        // Ticks go with their columns.
        move(0, "cmdUp", 1);
        move(3, "cmdUp", 5);
        move(20, "cmdDown", 1);
        w.SelectRow("ColumnList", 0);
        w.Click("cmdDown");
        w.Click("Summary");
        w.Proceed(1);
        w.Enter("txtDelimiter", u"::::"_s);
        w.Click("CustomDelimited");
        w.Proceed(1);
        w.Click("SaveRel");
        w.F.Prompts.Expect(keep, PromptAnswer::Yes);
        w.F.Prompts.ExpectPath(w.F.Inside(u"My Music\\playlist.txt"_s), w.F.Inside(u"kept.txt"_s));
        w.Proceed(1);
        QCOMPARE(w.F.Read(u"kept.txt"_s), "My Music\r\nTwo\r\nlines\r\n\r\nFileName:::Size:::Link:::\r\n\r\n"
                                          "One:::3 Bytes:::\r\nTwo:::5 Bytes:::\r\n\r\n"_ba);
        QCOMPARE(w.F.ShellCalls, QStringList{u"open "_s + w.F.Inside(u"app\\tmp.txt"_s)});
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
        const QString path = w.F.Inside(u"a.rpt"_s);
        const QString copy = w.F.Inside(u"b.rpt"_s);
        const auto press = [&](const char *command, const std::optional<QString> &file, const QString &told = {},
                               PromptAnswer answer = PromptAnswer::Ok) {
            w.F.Prompts.ExpectPath(w.F.Inside(u"program\\*.rpt"_s), file);
            if (!told.isEmpty())
                w.F.Prompts.Expect(told, answer);
            w.Click(command);
        };
        for (bool ReportSettings::*layout : {&ReportSettings::SpaceAligned, &ReportSettings::CommaDelimited,
                                             &ReportSettings::TabDelimited, &ReportSettings::CustomDelimited}) {
            record.SpaceAligned = record.CommaDelimited = record.TabDelimited = record.CustomDelimited = false;
            record.*layout = true;
            record.Summary = record.SaveRel = record.SpaceAligned;
            DeleteFile(copy);
            SaveReportSettings(path, record);
            press("LoadCurrent", path);
            press("SaveCurrent", copy);
            QCOMPARE(w.F.Read(u"b.rpt"_s), w.F.Read(u"a.rpt"_s));
        }
        QCOMPARE(w.At("FontTest")->font().pointSize(), 18);
        // Numbers out of range are shown as the nearest ones.
        record.RepType = -3;
        record.FontSizeIndex = 99;
        record.ColumnOrder = {30, -1};
        SaveReportSettings(path, record);
        press("LoadCurrent", path);
        QCOMPARE(w.Texts("^(RepType|FontSizer)$") + w.Cells("ColumnList").first(2).join(u' '),
                 u"36|HTML FileLink FileName"_s);
        // What goes wrong, and what the user does not want.
        const QByteArray before = w.F.Read(u"b.rpt"_s);
        press("SaveCurrent", copy, copy + u" exists, do you want to replace it?", PromptAnswer::No);
        press("LoadCurrent", {});
        press("LoadCurrent", w.F.Inside(u"gone\\x.rpt"_s), u"Could not read the file!"_s);
        press("SaveCurrent", w.F.Inside(u"gone\\x.rpt"_s), u"Could not save the file!"_s);
        QCOMPARE(w.F.Read(u"b.rpt"_s), before);
        w.Click("LoadDefault");
        QCOMPARE(w.Text("txtTitle"), u"Report Title"_s);
        w.Proceed(2);
        w.SelectRow("FontList", 0);
        w.Choose("FontSizer", 1);
        const QFont sample = w.At("FontTest")->font();
        QCOMPARE(sample.family(), QFontDatabase::families().value(1));
        QVERIFY(w.At("FontList")->toolTip() == sample.family() && sample.pointSize() == 10);
    }
};

QTEST_MAIN(ReportFormTest)
#include "ReportFormTest.moc"
