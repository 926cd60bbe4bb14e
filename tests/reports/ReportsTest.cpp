#include "media/MP3File.h"
#include "platform/CodePage.h"
#include "platform/WayBack.h"
#include "reports/WriteReport.h"
#include "support/FormDriver.h"

#include <QFontDatabase>

using namespace Qt::StringLiterals;

namespace
{
using enum ReportColumn;

const QString created = u" page created 03:04:05 [01-02-2026]\r\n"_s;

const QByteArray defaultRecord =
    "\0\0Report Title"_ba.leftJustified(202) + "Report Description"_ba.leftJustified(1000) +
    "\xFF\xFF\xFF\xFF\xFF\xFF"
    "Auto1  3  0  \1\0\2\0\3\0\4\0\5\0\6\0\7\0\10\0\11\0\12\0\13\0\14\0\15\0\16\0\17\0\20\0\21\0\22\0\23\0"
    "\24\0\25\0\xFF\xFF\0\0"_ba.leftJustified(103, '\xFF') +
    ":  \xFF\xFF\0\0\0\0\0\0Verdana             \0\0\xFF\xFF"_ba;

/// A folder of media files, and reports of it.
struct World : FormDriver {
    ReportSettings Settings = DefaultReportSettings();
    Progress Run;
    const QString Family = QFontDatabase::families().value(1);
    const QString Proposal = F.Inside(u"program\\*.rpt"_s);

    /// Leaves these columns in the report, in this order, and nothing around the rows of a page or, with a delimiter,
    /// of a text.
    void Leave(const QList<ReportColumn> &columns, const QString &delimiter = {})
    {
        Settings = ReportSettings();
        Settings.RepType = delimiter.isEmpty() ? 0 : 1;
        Settings.SaveRel = Settings.CustomDelimited = true;
        Settings.Delimiter = delimiter;
        std::fill_n(Settings.ColumnChecked.begin(), columns.size(), true);
        std::transform(columns.begin(), columns.end(), Settings.ColumnOrder.begin(),
                       [](ReportColumn column) { return static_cast<qint16>(column); });
    }

    /// The step after each click, and which of Back and Next are on; the same while a prompt stands open.
    QString Shown;

    /// The wizard stands over a window with two items in a folder.
    World()
    {
        F.Window->AddPath(F.Write(u"My Music\\one.wma"_s, "123"), false);
        F.Window->AddPath(F.Write(u"My Music\\sub\\two.wma"_s, "45678"), false);
        F.Window->FileArray = QStringList{u"left behind"_s};
        F.Prompts.Meanwhile = [this] {
            Shown += QString::number(Step()) + (Enabled("CmdBack") ? u"<"_s : QString()) +
                     (Enabled("CmdNext") ? u"> "_s : u" "_s);
        };
        Open();
    }
    void Open() { OpenTool("MToolsReport", "ReportForm", {}); }

    void Go(const char *command, int times)
    {
        for (; times > 0; --times, F.Prompts.Meanwhile())
            Click(command);
    }

    /// What becomes of the next report; no path is Cancel.
    void ExpectKept(const QString &suggested, const std::optional<QString> &path)
    {
        F.Prompts.Expect(u"Do you want to keep the file?"_s, PromptAnswer::Yes);
        F.Prompts.ExpectPath(suggested, path);
    }

    /// Differs from the default record in all that makes a page.
    QByteArray PageRecord() const
    {
        QByteArray record = defaultRecord;
        record.replace(2, 18, "A  song list      ").replace(202, 18, "Two\r\nlines \xFC      ");
        record.replace(1208, 13, "77% 8px99 7  ").replace(1221, 10, "\1\0\5\0\2\0\3\0\4\0"_ba);
        record.replace(1263, 40, QByteArray(4, '\xFF').leftJustified(40, '\0')).replace(1336, 1, "\4");
        return record.replace(1316, 20, Family.toLatin1().leftJustified(20, ' ', true));
    }
    void Load(const QByteArray &record) { ClickAndGive("LoadCurrent", Proposal, F.Write(u"a.rpt"_s, record)); }
    /// What the wizard saves now.
    QByteArray Saved()
    {
        DeleteFile(F.Inside(u"saved.rpt"_s));
        ClickAndGive("SaveCurrent", Proposal, F.Inside(u"saved.rpt"_s));
        return F.Read(u"saved.rpt"_s);
    }

    QString Written(const QStringList &files)
    {
        WriteReport(F.Inside(u"report"_s), files, Settings, Run, F.Window->World().Clock);
        return QString::fromUtf8(F.Read(u"report"_s));
    }
};
} // namespace

class ReportsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void WritesEveryColumn()
    {
        World w;
        const QString tagged = w.TakeData(u"tagged.mp3"_s, "cbr96-mpeg1-mono-flags-info.mp3");
        MP3File tags;
        tags.SetTitle(u"T1"_s);
        tags.SetArtist(u"A1"_s);
        tags.SetAlbum(u"L1"_s);
        tags.SetYear(u"1991"_s);
        for (const QString &frame : {u"TIT2a\r\n\t\u2028\u2029\u0085\"b"_s, u"TPE1A2"_s, u"TALBL2"_s, u"TYER2002"_s})
            tags.SetFrame(frame.first(4).toLatin1(), frame.sliced(4));
        tags.WriteTags(tagged, MP3File::TagChange::Write, MP3File::TagChange::Write);
        const QByteArray vorbis = "\x03vorbis\x1d\0\0\0-----------------------------\x07\0\0\0TITLE=T\x08\0\0\0ARTIST=A"
                                  "\x07\0\0\0ALBUM=L\x01\x05vorbis"_ba;
        const QString name(38, u'7');
        // A folder cannot be read, and shows nothing of the song before it.
        w.F.Write(u"no.mp3\\x"_s, {});
        const QStringList files{tagged, w.F.Inside(name + u"🎵.mp3.mp3"),
                                w.F.Write(u"sub\\x.Ogg"_s, vorbis.leftJustified(5000, '\0')), w.F.Inside(u"no.mp3"_s)};
        const QString headings = u"FileName|Folder|Time|Size|ID|Layer|BitRate|SampleRate|Mode|CRC Protection|Emphasis|"
                                 "Copyrighted|Id3v1 Title|Id3v1 Artist|Id3v1 Album|Id3v1 Year|Id3v2 Title|"
                                 "Id3v2 Artist|Id3v2 Album|Id3v2 Year|Link|"_s;
        const QString rows =
            u"Tagged|.|0:02|29 Kb|1.0|III|96|32000 Hz|Single Channel|No|50/15 microsec|Yes|T1|A1|L1|1991|a      \"b|A2|"
            "L2|2002|\r\n%1🎵|.||Not found!|||||||||||||||||\r\nX|sub||5,000 Bytes|OGG Vorbis||||||||T|A|L||||||\r\n"
            "No|.|0:00|0 Bytes||||0 Hz||No||No|||||||||\r\n"_s.arg(name);
        const QString summary = u"4 Items, Total Playing Time >0:06, [>33 Kb]"_s + created;
        const QString ruler = QString(420, u'-') + u"\r\n";
        QString aligned = u"My\r\nlist\r\n"_s + ruler;
        for (const QString &row : QString(headings + u"\r\n" + rows).split(u"\r\n"_s, Qt::SkipEmptyParts)) {
            QStringList cells = row.split(u'|');
            for (const int width : {40, 100, 9, 10, 4, 9, 10, 7, 13, 4, 6, 4, 30, 30, 30, 12, 30, 30, 30, 12})
                aligned += cells.takeFirst().left(width - 1).leftJustified(width);
            aligned += u"\r\n" + (row == headings ? ruler : QString());
        }
        // Half a character is none.
        aligned.replace(QChar(0xD83C), u' ');
        w.Settings.RepType = 1;
        w.Settings.ColumnChecked.fill(true);
        w.Settings.Title = u"  My\r\nlist "_s;
        QList<int> told;
        w.Run.SetValue = [&](int value) { told.append(value); };
        QCOMPARE(w.Written(files), QString(aligned + ruler + summary + ruler));
        QCOMPARE(told, QList({1, 2, 3, 4, 0}));
        w.Settings.SpaceAligned = false;
        const QString text = u"My\r\nlist\r\n\r\n"_s + headings + u"\r\n\r\n" + rows + u"\r\n" + summary + u"\r\n";
        // Of two delimiters the last one counts.
        for (const auto &[layout, mark] :
             {std::pair(&ReportSettings::CommaDelimited, u","_s), {&ReportSettings::TabDelimited, u"\t"_s}}) {
            w.Settings.*layout = true;
            QCOMPARE(w.Written(files), QString(text).replace(u'|', mark));
        }
        // A file is read as far as the columns need it, and one of Vorbis for a column of the first tag alone.
        for (const auto &[columns, cells] : {std::pair(QList{ID3v2Title, ID}, u"a \"b|1.0| || || ||"_s),
                                             {{ID3v1Year}, u"1991| | | |"_s},
                                             {{CRCProtection}, u"No| | | No|"_s}}) {
            w.Leave(columns, u"|"_s);
            QCOMPARE(w.Written(files).simplified(), cells);
        }
    }

    void SumsUp()
    {
        World w;
        w.Leave({Time, Size}, u";"_s);
        w.Settings.Summary = true;
        const QString song = w.TakeData(u"song.mp3"_s, "cbr128-mpeg1-joint-info.mp3");
        const QString plain = w.F.Write(u"plain.wav"_s, QByteArray(100, 'x'));
        const QString large = w.F.Write(u"large.wav"_s, {});
        QVERIFY(QFile::resize(ToHostPath(large), 2'147'483'600));
        // The lengths of the rows that have none are those of the song before them. What is too much is not added.
        for (const auto &[files, text] :
             {std::pair(QStringList{song, plain}, u"2 Items, Total Playing Time 0:04, [36 Kb]"_s),
              {{plain, song}, u"2 Items, Total Playing Time >0:02, [36 Kb]"_s},
              {{song, u"z:\\gone.mp3"_s}, u"2 Items, Total Playing Time >0:04, [>36 Kb]"_s},
              {{u"z:\\gone.mp3"_s}, u"1 Items"_s},
              {{large, plain, song}, u"3 Items, Total Playing Time >0:02, [2,048 Mb]"_s}})
            QCOMPARE(w.Written(files).section(u"\r\n"_s, -3), QString(text + created + u"\r\n"));
    }

    void LeadsToFiles()
    {
        World w;
        w.Leave({Folder, FileName, Link});
        const QString file = w.F.Write(u"sub\\it's 100% #1 R&B.wma"_s, "1234567");
        const QString link = u"<a href=" + QUrl::fromLocalFile(ToHostPath(w.F.Folder)).toString(QUrl::FullyEncoded) +
                             u"/sub/it%27s%20100%25%20%231%20R%26B.wma>X</a>";
        // Without anything in common there is nothing to be relative to, and a missing file has no place.
        const QString page = w.Written({file, u"q:\\<img src=x>&lt;\uF00A.mp3"_s});
        QVERIFY(page.contains(link) && page.contains(u"<a href=>X</a>"));
        for (const QString &cell : {ToHostPath(w.F.Inside(u"sub"_s)), u"It's 100% #1 R&b"_s,
                                    QString(u"&lt;img Src=x&gt;&lt;" + ShownPath(u"\uF00A"_s))})
            QVERIFY2(page.contains(u"'>" + cell + u"</font></td>"), qPrintable(page));
        // A doubled separator is none of the name.
        const QString doubled = w.F.Inside(u"\\sub\\b.wma"_s);
        w.F.Write(u"sub\\b.wma"_s, "1");
        QVERIFY(w.Written({doubled, w.F.Write(u"c.wma"_s, "1")}).contains(u"<a href=sub/b.wma>"));
        w.Settings.SaveRel = false;
        QVERIFY(w.Written({file}).contains(link));
    }

    void LosesNothing()
    {
        World w;
        w.Leave({FileName}, u"|"_s);
        const QString name = u"A Name Of The Usual Length, Thirty Times Or So And A Bit Of A Song That Nobody Knows"_s;
        QStringList files(20'000, w.F.Inside(name + u".mp3"));
        QVERIFY(w.Written(files) == u"\r\n\r\n" + QString(name + u"|\r\n").repeated(20'000) + u"\r\n");
        // What goes beyond ASCII has a mark in a page. Without a title there is no line for it.
        w.Settings.RepType = 0;
        files.append(w.F.Inside(u"夜🎵.mp3"_s));
        QCOMPARE(w.Written(files).count(name), 20'000);
        const QByteArray page = w.F.Read(u"report"_s);
        const QByteArray head = "\xEF\xBB\xBF<head><html><title>" + QByteArray(200, ' ') + "</title></head><body>\r\n";
        const QByteArray end = "'>夜🎵</font></td>\r\n</tr>\r\n\r\n</table></center></body></html>\r\n";
        QVERIFY(page.startsWith(head) && page.endsWith(end));
        // What cannot be written leaves the old file, and no other is looked at: something stands there, but no report
        // of this run.
        const QString path = w.F.Inside(u"report"_s);
        SetFileAttributes(path, AttributeReadOnly);
        w.Run.SetValue = [](int) { QFAIL("A file was looked at."); };
        QVERIFY(!WriteWholeReport(path, files, w.Settings, w.Run, w.F.Window->World().Clock) &&
                WriteReport(path, files, w.Settings, w.Run, w.F.Window->World().Clock));
        QVERIFY(w.F.Read(u"report"_s) == page && w.F.Listing({}) == u"report");
    }

    /// What is set in each step comes to a settings file, to the report, and back from the file.
    void WritesAPageAsSet()
    {
        World w;
        w.F.Write(u"My Music\\tmp.htm"_s, "mine");
        QCOMPARE(w.Saved(), defaultRecord);
        w.Enter("txtTitle", u"A  song list"_s);
        w.Enter("txtDesc", u"Two\nlines ü"_s);
        w.Go("CmdNext", 1);
        w.Click("cmdNone");
        // Ticks go with their columns.
        for (const auto &[row, command, times] : {std::tuple(0, "cmdUp", 1), {4, "cmdUp", 5}, {20, "cmdDown", 1}}) {
            w.SelectRow("ColumnList", row);
            for (int i = 0; i < times; ++i)
                w.Click(command);
            QTest::keyClick(w.At("ColumnList"), Qt::Key_Space);
        }
        w.SelectRow("ColumnList", 0);
        w.Click("cmdDown");
        w.Go("CmdNext", 1);
        w.Enter("ValWidth", u"77%"_s);
        w.Enter("ValBorder", u"7"_s);
        w.Enter("ValSpacing", u"8px"_s);
        w.Enter("ValPadding", u"99"_s);
        w.SelectRow("FontList", 0);
        w.Choose("FontSizer", 4);
        QVERIFY(w.At("FontTest")->font().pointSize() == 18 && w.At("FontList")->toolTip() == w.Family);
        w.Go("CmdNext", 1);
        w.Go("CmdBack", 3);
        QCOMPARE(w.Saved(), w.PageRecord());
        w.ExpectKept(w.F.Inside(u"My Music\\playlist.htm"_s), w.F.Inside(u"kept.htm"_s));
        w.Go("CmdNext", 4);
        // @ is the font, ~ the end of a cell.
        QString page =
            u"<head><html><title>"_s + u"A  song list"_s.leftJustified(200) +
            u"</title></head><body><p align=center><font face='%1' size='5'><b>A  song list</b></font></p>\r\n"
            "<p align=center>@Two<br>lines ü</font></p>\r\n\r\n<center><table border=7 width=77% cellspacing=8px "
            "cellpadding=99><td>@<b>FileName</b>~<td>@<b>ID</b>~<td>@<b>Link</b>~\r\n"
            "<tr>\r\n<td bgcolor=#D5DEFF>@One~<td bgcolor=#D5DEFF>@?????~"
            "<td bgcolor=#D5DEFF><font face='Webdings' size='6'><a href=one.wma>X</a>~</tr>\r\n\r\n"
            "<tr>\r\n<td bgcolor=#EEEEEE>@Two~<td bgcolor=#EEEEEE>@?????~"
            "<td bgcolor=#EEEEEE><font face='Webdings' size='6'><a href=sub/two.wma>X</a>~</tr>\r\n\r\n"
            "<tr><td colspan=3>@2 Items page created 03:04:05 [01-02-2026]</font></td></tr>\r\n"
            "</table></center></body></html>\r\n";
        page.replace(u'@', u"<font face='%1' size='4'>"_s).replace(u'~', u"</font></td>\r\n"_s);
        QCOMPARE(DecodeText(w.F.Read(u"kept.htm"_s)), page.arg(w.Family.left(20)));
        QCOMPARE(w.Text("lblReport"), u"Done: Report Generator. Click 'Next>' to restart..."_s);
        QCOMPARE(w.F.Window->PanelText(4), QString(u"Report kept as "_s + ShownPath(w.F.Inside(u"kept.htm"_s))));
        QVERIFY(w.At("CmdClose")->hasFocus() && w.F.Read(u"My Music\\tmp.htm"_s) == "mine");
        w.Go("CmdNext", 1);
        QCOMPARE(w.Text("lblReport"), u"Click 'Next>' to generate the report."_s);
        QCOMPARE(w.Shown, u"0> 1<> 2<> 4<> 2<> 1<> 0> 0> 1<> 2<> 4<> 4 4 4> 0> "_s);
    }

    void WritesATextAsSet()
    {
        World w;
        w.F.Window->AddFile(u"q:\\gone.mp3"_s, 0);
        w.Load(w.PageRecord());
        w.Choose("RepType", 1);
        w.DoubleClick("txtTitle");
        w.Go("CmdNext", 1);
        w.Click("ColumnHeaders");
        w.Go("CmdNext", 1);
        w.Enter("txtDelimiter", u"::::"_s);
        w.Click("CustomDelimited");
        w.Go("CmdNext", 1);
        w.Go("CmdBack", 3);
        // Without a common folder there are no relative links.
        w.ExpectKept(u"playlist.txt"_s, w.F.Inside(u"kept.txt"_s));
        w.Go("CmdNext", 4);
        const QString text =
            u"My Music\r\nTwo\r\nlines ü\r\n\r\n\r\nOne::::::\r\nTwo::::::\r\nGone::::::\r\n\r\n3 Items"_s;
        QCOMPARE(DecodeText(w.F.Read(u"kept.txt"_s)), QString(text + created + u"\r\n"));
        w.Go("CmdNext", 1);
        QCOMPARE(w.Shown, u"0> 1<> 3<> 4<> 3<> 1<> 0> 1<> 3<> 4<> 4 4 4> 0> "_s);
    }

    void KeepsSettingsInFiles()
    {
        World w;
        // A font that this host lacks stays.
        QByteArray record =
            w.PageRecord().replace(0, 2, "\1\0"_ba).replace(1202, 6, "\0\0\0\0\0\0"_ba).replace(1305, 3, ":::");
        record.replace(1316, 20, "No Such Font        ").replace(1338, 2, "\0\0"_ba);
        for (const qsizetype layout : {1308, 1310, 1312, 1314}) {
            record.replace(1308, 8, QByteArray(8, '\0')).replace(layout, 2, "\xFF\xFF");
            w.Click("LoadDefault");
            w.Load(record);
            QCOMPARE(w.Saved(), record);
        }
        // Numbers out of range are shown as the nearest ones.
        record.replace(0, 2, "\xFD\xFF").replace(1221, 4, "\x1E\0\xFF\xFF"_ba).replace(1336, 1, "\x63");
        w.Load(record);
        QCOMPARE(w.Texts("^(RepType|FontSizer)$") + w.Cells("ColumnList").first(2).join(u' '),
                 u"36|HTML FileLink FileName"_s);
        w.Next(1);
        w.Click("cmdAll");
        w.Click("CmdBack");
        QCOMPARE(w.Saved().mid(1263, 42), QByteArray(42, '\xFF'));
        // What goes wrong, and what the user does not want.
        for (const auto &[command, told] : {std::pair("SaveCurrent", u"Could not save the file!"_s),
                                            {"LoadCurrent", u"Could not read the file!"_s}}) {
            w.ClickAndGive(command, w.Proposal, {});
            w.ClickAndGive(command, w.Proposal, w.F.Inside(u"gone\\x.rpt"_s), told);
        }
        const QString path = w.F.Write(u"a.rpt"_s, record.append("tail"));
        const QString question = path + u" exists, do you want to replace it?";
        w.ClickAndGive("SaveCurrent", w.Proposal, path, question, PromptAnswer::No);
        // What stands behind the record stays, and of a short file the rest is empty.
        QVERIFY(LoadReportSettings(path, w.Settings) && SaveReportSettings(path, w.Settings));
        QCOMPARE(w.F.Read(u"a.rpt"_s), record);
        w.Load(record.first(8));
        QVERIFY(w.Text("txtTitle") == u"A  son" && !w.Ticked("Summary") && w.Text("txtDesc").isEmpty());
    }

    void AsksWhatToKeep()
    {
        World w;
        using enum PromptAnswer;
        const QString temporary = w.F.Inside(u"My Music\\tmp.htm"_s);
        const QString kept = w.F.Write(u"kept.htm"_s, "old");
        SetFileAttributes(kept, AttributeReadOnly);
        w.Next(3);
        w.ClickAndRead("CmdNext", u"Do you want to keep the file?"_s, No);
        QCOMPARE(w.F.Window->PanelText(4), u"Report not kept"_s);
        QVERIFY(w.F.ShellCalls == QStringList{u"open "_s + temporary} && w.F.Listing(u"My Music"_s) == u"one.wma");
        // A file of that name gets its place back, unless the user breaks off or keeps the report there.
        const std::tuple<std::optional<QString>, PromptAnswer, QByteArray> answers[] = {
            {kept, No, "mine"}, {kept, Yes, "mine"}, {temporary, Yes, "<head>"}, {{}, Cancel, "<head>"}};
        for (const auto &[path, replace, left] : answers) {
            w.F.Write(u"My Music\\tmp.htm"_s, "mine");
            w.Open();
            w.ExpectKept(w.F.Inside(u"My Music\\playlist.htm"_s), path);
            if (path)
                w.F.Prompts.Expect(*path + u" exists, do you want to replace it?", replace);
            if (path == kept && replace == Yes)
                w.F.Prompts.Expect(u"Could not save the file!"_s, Ok);
            w.Next(4);
            QCOMPARE(w.F.Read(u"My Music\\tmp.htm"_s).first(left.size()), left);
            QCOMPARE(w.F.Window->PanelText(4),
                     left == "mine" ? u"Report not kept"_s : QString(u"Report kept as "_s + ShownPath(temporary)));
        }
        // What another program writes there meanwhile stays, at the next start too.
        KeepWaysBack(w.F.Inside(u"notes"_s));
        w.Open();
        w.Next(3);
        w.F.Prompts.Meanwhile = [&] { w.F.Write(u"My Music\\tmp.htm"_s, "theirs"); };
        w.F.Prompts.Expect(u"Do you want to keep the file?"_s, No);
        w.ClickAndRead("CmdNext", QString(u"Could not take back the file: "_s + ToHostPath(temporary)));
        w.F.Prompts.Meanwhile = [] {};
        for (const QString &notes : {QString(), w.F.Inside(u"notes"_s), QString()})
            KeepWaysBack(notes);
        QCOMPARE(w.F.Read(u"My Music\\tmp.htm"_s), "theirs");
        // Escape ends a run; what stands there stays.
        w.Open();
        w.Next(3);
        w.ClickAndStop("CmdNext");
        QCOMPARE(w.Text("lblReport"), u"Stopped: no report was written. Click 'Next>' to restart..."_s);
        QVERIFY(w.F.Read(u"My Music\\tmp.htm"_s) == "theirs" && w.F.Read(u"kept.htm"_s) == "old");
        // Once it is written it is asked about like any other.
        w.Next(4);
        w.F.Prompts.Expect(u"Do you want to keep the file?"_s, No);
        w.ClickAndStopAtEnd("CmdNext", "ProgressBar1");
        QCOMPARE(w.F.Read(u"My Music\\tmp.htm"_s), "theirs");
        // A disk that has gone away meanwhile gets back what it held when it is there again.
        KeepWaysBack(w.F.Inside(u"notes"_s));
        w.Next(4);
        w.ExpectKept(w.F.Inside(u"My Music\\playlist.htm"_s), w.F.Inside(u"none.htm"_s));
        w.F.Prompts.Expect(u"Could not save the file!"_s, Ok);
        w.F.Prompts.Expect(QString(u"Could not take back the file: "_s + ToHostPath(temporary)), Ok);
        const QString music = w.F.Temporary.filePath(u"My Music"_s);
        w.F.Prompts.Meanwhile = [&] { QDir().rename(music, music + u" away"); };
        w.Click("CmdNext");
        w.F.Prompts.Meanwhile = [] {};
        QVERIFY(QDir().rename(music + u" away", music));
        w.Next(4);
        w.ClickAndRead("CmdNext", u"Do you want to keep the file?"_s, No);
        QCOMPARE(w.F.Read(u"My Music\\tmp.htm"_s), "theirs");
        for (const QString &notes : {QString(), w.F.Inside(u"notes"_s), QString()})
            KeepWaysBack(notes);
        QCOMPARE(w.F.Read(u"My Music\\tmp.htm"_s), "theirs");
        // With absolute links it is written into a folder of the program.
        w.F.Write(u"app"_s, "in the way");
        w.Next(4);
        w.Click("SaveRel");
        const QString place = ToHostPath(w.F.Inside(u"app\\tmp.htm"_s));
        w.ClickAndRead("CmdNext", u"The file :"_s + place + u" could not be written.");
    }
};

QTEST_MAIN(ReportsTest)
#include "ReportsTest.moc"
