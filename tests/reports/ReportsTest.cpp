#include "media/MP3File.h"
#include "platform/CodePage.h"
#include "reports/WriteReport.h"
#include "support/FormDriver.h"
#include "support/HostNames.h"

#include <QFontDatabase>
#include <QProcess>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace
{
using enum ReportColumn;

const QString created = u" page created 03:04:05 [01-02-2026]\r\n"_s;
const QString headings = u"FileName|Folder|Time|Size|ID|Layer|BitRate|SampleRate|Mode|CRC Protection|Emphasis|"
                         "Copyrighted|Id3v1 Title|Id3v1 Artist|Id3v1 Album|Id3v1 Year|Id3v2 Title|Id3v2 Artist|"
                         "Id3v2 Album|Id3v2 Year|Link|"_s;

/// A folder of media files, and reports of it.
struct World : FormDriver {
    ReportSettings Settings = DefaultReportSettings();
    Progress Run;
    const QString Proposal = F.Inside(u"program\\*.rpt"_s);
    const QString KeepIt = u"Do you want to keep the file?"_s;

    /// Leaves these columns in the report, in this order, and nothing around the rows of a page or, with a delimiter,
    /// of a text.
    void Leave(const QList<ReportColumn> &columns, const QString &delimiter = {})
    {
        Settings.RepType = delimiter.isEmpty() ? 0 : 1;
        Settings.Summary = Settings.ColumnHeaders = Settings.SpaceAligned = Settings.ColorTable = false;
        Settings.CustomDelimited = true;
        Settings.Delimiter = delimiter;
        Settings.ColumnChecked.fill(false);
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

    void Load(const QByteArray &record) { ClickAndGive("LoadCurrent", Proposal, F.Write(u"a.rpt"_s, record)); }
    /// What the wizard saves now.
    QByteArray Saved()
    {
        DeleteFile(F.Inside(u"saved.rpt"_s));
        ClickAndGive("SaveCurrent", Proposal, F.Inside(u"saved.rpt"_s));
        return F.Read(u"saved.rpt"_s);
    }

    QByteArray Report(const QStringList &files, const QString &name = u"report"_s)
    {
        return WriteReport(F.Inside(name), files, Settings, Run, F.Window->World().Clock) ? F.Read(name) : "none"_ba;
    }
    QString Written(const QStringList &files) { return QString::fromUtf8(Report(files)); }
};

void WriteTags(const QString &path)
{
    MP3File tags;
    tags.SetTitle(u"T1"_s);
    tags.SetArtist(u"A1"_s);
    tags.SetAlbum(u"L1"_s);
    tags.SetYear(u"1991"_s);
    for (const QString &frame : {u"TIT2a\r\n\t\u2028\u2029\u0085\"b"_s, u"TPE1A2"_s, u"TALBL2"_s, u"TYER2002"_s})
        tags.SetFrame(frame.first(4).toLatin1(), frame.sliced(4));
    tags.WriteTags(path, MP3File::TagChange::Write, MP3File::TagChange::Write);
}

/// What a program of this machine prints; empty when it is not there.
QString Ask(const QString &name, const QStringList &arguments)
{
    QProcess process;
    process.start(QStandardPaths::findExecutable(name), arguments);
    process.waitForFinished(120'000);
    return QString::fromUtf8(process.readAllStandardOutput());
}

QString AnyFamily()
{
    return QFontDatabase::families().value(1);
}

QByteArray DefaultRecord()
{
    QByteArray record = "\0\0Report Title"_ba.leftJustified(202) + "Report Description"_ba.leftJustified(1000);
    record.append(6, '\xFF').append("Auto1  3  0  ");
    for (char number = 1; number <= 21; ++number)
        record.append(number).append('\0');
    record.append("\xFF\xFF\0\0"_ba).append(38, '\xFF');
    return record + ":  \xFF\xFF\0\0\0\0\0\0Verdana             \0\0\xFF\xFF"_ba;
}

/// Differs from the default record in all that makes a page.
QByteArray PageRecord()
{
    QByteArray record = DefaultRecord();
    record.replace(2, 18, "A  song list      ").replace(202, 18, "Two\r\nlines \xFC      ").replace(1204, 2, "\0\0"_ba);
    record.replace(1208, 13, "77% 8px99 7  ").replace(1221, 10, "\1\0\5\0\2\0\3\0\4\0"_ba);
    record.replace(1263, 40, QByteArray(4, '\xFF').leftJustified(40, '\0')).replace(1336, 1, "\4");
    return record.replace(1316, 20, AnyFamily().toLatin1().leftJustified(20, ' ', true));
}
} // namespace

class ReportsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void WritesEveryColumn()
    {
        World w;
        const QString tagged = w.TakeData(u"tagged.mp3"_s, "cbr96-mpeg1-mono-flags-info.mp3");
        WriteTags(tagged);
        const QByteArray vorbis = "\x03vorbis\x1d\0\0\0-----------------------------\x07\0\0\0TITLE=T\x08\0\0\0ARTIST=A"
                                  "\x07\0\0\0ALBUM=L\x01\x05vorbis"_ba;
        const QString longName(38, u'7');
        const QStringList files{tagged, w.F.Inside(u"gone.mp3"_s),
                                w.F.Write(u"sub\\x.Ogg"_s, vorbis.leftJustified(5000, '\0')),
                                w.F.Write(u"no.mp3"_s, "text"), w.F.Write(longName + u"🎵.wav.wav", "wave")};
        const QString rows =
            u"Tagged|.|0:02|29 Kb|1.0|III|96|32000 Hz|Single Channel|No|50/15 microsec|Yes|T1|A1|L1|1991|a      \"b|A2|"
            "L2|2002|\nGone|.||Not found!|||||||||||||||||\nX|sub||5,000 Bytes|OGG Vorbis||||||||T|A|L||||||\n"
            "No|.|0:00|4 Bytes||||0 Hz||No||No|||||||||\n"_s +
            longName + u"🎵|.||4 Bytes|||||||||||||||||\n";
        const QString summary = u"5 Items, Total Playing Time >0:06, [>33 Kb]"_s + created;
        const QString ruler = QString(420, u'-') + u"\r\n";
        QString aligned = u"My\r\nlist\r\n"_s + ruler;
        for (const QString &row : QString(headings + u'\n' + rows).split(u'\n', Qt::SkipEmptyParts)) {
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
        QVERIFY(told == QList({1, 2, 3, 4, 5, 0}) && w.Settings.Title.Trimmed() == u"My\r\nlist");
        w.Settings.SpaceAligned = false;
        w.Settings.Delimiter = u" ;;"_s;
        QString text = u"My\r\nlist\r\n\r\n"_s + headings + u"\r\n\r\n" + QString(rows).replace(u'\n', u"\r\n"_s) +
                       u"\r\n" + summary + u"\r\n";
        // Of several delimiters the last one counts.
        for (const auto &[layout, mark] : {std::pair(&ReportSettings::CommaDelimited, u","_s),
                                           {&ReportSettings::TabDelimited, u"\t"_s},
                                           {&ReportSettings::CustomDelimited, u";;"_s}}) {
            w.Settings.*layout = true;
            QCOMPARE(w.Written(files), QString(text).replace(u'|', mark));
        }
        w.Settings.CustomDelimited = false;
        w.Report(files);
        const QString reader = u"import csv, sys\nfor row in csv.reader(open(sys.argv[1], newline=''), 'excel-tab'): "
                               "print('|'.join(row))"_s;
        const QString read = Ask(u"python3"_s, {u"-Xutf8"_s, u"-c"_s, reader, ToHostPath(w.F.Inside(u"report"_s))});
        if (!read.isEmpty())
            QCOMPARE(QString(read).remove(u'\r'), text.remove(u'\r'));
        // A file is read as far as the columns need it, and one of Vorbis for a column of the first tag alone.
        for (const auto &[columns, cells] : {std::pair(QList{ID3v2Title, ID}, u"My list a \"b|1.0| || || || ||"_s),
                                             {{ID3v1Year}, u"My list 1991| | | | |"_s},
                                             {{CRCProtection}, u"My list No| | | No| |"_s}}) {
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
              {{large, plain, song}, u"3 Items, Total Playing Time >0:02, [2,048 Mb]"_s},
              {{}, u"0 Items"_s}})
            QCOMPARE(w.Written(files).section(u"\r\n"_s, -3), QString(text + created + u"\r\n"));
    }

    void LeadsToFiles()
    {
        World w;
        w.Leave({Folder, FileName, Link});
        const auto cells = [&w](const QStringList &files) {
            static const QRegularExpression tags(u"</?(t[a-z]+|font|center|body|html)( [^>]*)?>"_s);
            return w.Written(files).section(u"padding=3>"_s, 1).remove(tags).simplified();
        };
        const QString file = w.F.Write(u"sub\\it's 100% #1 R&B.wma"_s, "1234567");
        const QString place = ToHostPath(w.F.Folder);
        const QString away = ToHostPath(w.F.Inside(u"sub"_s)) + u" It's 100% #1 R&b <a href=" +
                             QUrl::fromLocalFile(place).toString(QUrl::FullyEncoded) +
                             u"/sub/it%27s%20100%25%20%231%20R%26B.wma>X</a>";
        // Without anything in common there is nothing to be relative to.
        QCOMPARE(cells({file, u"q:\\y.mp3"_s}), QString(away + u" q: Y <a href=>X</a>"));
        w.Settings.SaveRel = false;
        QCOMPARE(cells({file}), away);
        w.Settings.SaveRel = true;
        if (!NamesHoldAnything())
            return;
        QStringList files{file};
        for (const QString &name :
             {u"<img src=x onerror=\"document.title='run'\">&lt;.wma"_s, u"夜\uF05C\uF0E9.wma"_s, u"c:x\uF00A.wma"_s}) {
            files.append(w.F.Inside(name));
            QVERIFY(WriteWholeFile(files.back(), "1234567"));
        }
        QCOMPARE(cells(files),
                 u"sub It's 100% #1 R&b <a href=sub/it%27s%20100%25%20%231%20R%26B.wma>X</a> "
                 ". &lt;img Src=x Onerror=\"document.title='run'\"&gt;&lt; <a href=%3Cimg%20src=x%20onerror=%22"
                 "document.title=%27run%27%22%3E%26lt;.wma>X</a> "
                 ". 夜\\\uFFFD <a href=夜%5C%E9.wma>X</a> . C:x\uFFFD <a href=c%3Ax%0A.wma>X</a>"_s);
        // A browser reads the page and fetches every link.
        w.F.Write(u"page.htm"_s, w.Report(files) + R"(<script>
const request = new XMLHttpRequest();
const fetched = link => (request.open('GET', link.href, false), request.send(), request.responseText.length);
document.title += [...document.links].map(fetched) + ' ' + document.querySelectorAll('td, img').length;
</script>)");
        const QString flags = u"--headless --no-sandbox --disable-gpu --disable-background-networking --dump-dom "
                              "--allow-file-access-from-files --user-data-dir=@/profile file://@/page.htm"_s;
        const QString dom = Ask(u"chromium"_s, QString(flags).replace(u'@', place).split(u' '));
        // The temporary folder itself cannot remove a file whose name is no text.
        DeleteFile(files[2]);
        if (dom.isEmpty())
            QSKIP("There is no chromium on this machine to open a page with.");
        QVERIFY2(dom.contains(u"<title>7,7,7,7 12</title>"), qPrintable(dom));
    }

    void LosesNothing()
    {
        World w;
        w.Leave({FileName});
        w.Settings.ColumnHeaders = true;
        const QByteArray head =
            "<head><html><title>" + QByteArray(200, ' ') +
            "</title></head><body>\r\n<center><table border=0 cellspacing=1 cellpadding=3><td><font "
            "face='Verdana' size='0'><b>FileName</b></font></td>\r\n\r\n";
        QByteArray row = "<tr>\r\n<td><font face='Verdana' size='0'>@</font></td>\r\n</tr>\r\n\r\n";
        const QByteArray name = "A Name Of The Usual Length, Thirty Times Or So And A Bit Of A Song That Nobody Knows";
        QByteArray page = head + QByteArray(row).replace("@", name).repeated(20'000);
        QStringList files(20'000, w.F.Inside(QString::fromLatin1(name) + u".mp3"));
        const QByteArray foot = "</table></center></body></html>\r\n";
        QVERIFY(w.Report(files) == page + foot);
        files.append(w.F.Inside(u"夜🎵.mp3"_s));
        page = "\xEF\xBB\xBF" + page + row.replace("@", "夜🎵") + foot;
        QVERIFY(w.Report(files) == page);
        // What cannot be written, and what the user stops, leaves the old file.
        const QString old = w.F.Write(u"old.htm"_s, "old");
        w.Run.Stopped = [] { return true; };
        QCOMPARE(w.Report(files, u"old.htm"_s), "old"_ba);
        w.Run.Stopped = [] { return false; };
        SetFileAttributes(old, AttributeReadOnly);
        QCOMPARE(w.Report({}, u"old.htm"_s), "old"_ba);
        SetFileAttributes(old, AttributeNormal);
        QCOMPARE(w.Report(files, u"gone\\x.htm"_s), "none"_ba);
        QCOMPARE(w.F.Listing({}), u"old.htm report"_s);
    }

    /// What is set in each step comes to a settings file, to the report, and back from the file.
    void WritesAPageAsSet()
    {
        World w;
        QCOMPARE(w.Saved(), DefaultRecord());
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
        w.Click("ColumnHeaders");
        w.Go("CmdNext", 1);
        w.Enter("ValWidth", u"77%"_s);
        w.Enter("ValBorder", u"7"_s);
        w.Enter("ValSpacing", u"8px"_s);
        w.Enter("ValPadding", u"99"_s);
        w.SelectRow("FontList", 0);
        w.Choose("FontSizer", 4);
        const QFont sample = w.At("FontTest")->font();
        QVERIFY(sample.family() == AnyFamily() && sample.pointSize() == 18 &&
                w.At("FontList")->toolTip() == sample.family());
        w.Go("CmdNext", 1);
        w.Go("CmdBack", 3);
        QCOMPARE(w.Saved(), PageRecord());
        w.F.Prompts.Expect(w.KeepIt, PromptAnswer::Yes);
        w.F.Prompts.ExpectPath(w.F.Inside(u"My Music\\playlist.htm"_s), w.F.Inside(u"kept.htm"_s));
        w.Go("CmdNext", 4);
        // @ is the font, ~ the end of a cell.
        const QString page =
            u"<head><html><title>"_s + u"A  song list"_s.leftJustified(200) +
            u"</title></head><body><p align=center><font face='%1' size='5'><b>A  song list</b></font></p>\r\n"
            "<p align=center>@Two<br>lines ü</font></p>\r\n\r\n"
            "<center><table border=7 width=77% cellspacing=8px cellpadding=99>\r\n"
            "<tr>\r\n<td bgcolor=#D5DEFF>@One~<td bgcolor=#D5DEFF>@?????~"
            "<td bgcolor=#D5DEFF><font face='Webdings' size='6'><a href=one.wma>X</a>~</tr>\r\n\r\n"
            "<tr>\r\n<td bgcolor=#EEEEEE>@Two~<td bgcolor=#EEEEEE>@?????~"
            "<td bgcolor=#EEEEEE><font face='Webdings' size='6'><a href=sub/two.wma>X</a>~</tr>\r\n\r\n"
            "<tr><td colspan=3>@2 Items page created 03:04:05 [01-02-2026]</font></td></tr>\r\n"
            "</table></center></body></html>\r\n";
        QCOMPARE(DecodeText(w.F.Read(u"kept.htm"_s)), QString(page)
                                                          .replace(u'@', u"<font face='%1' size='4'>"_s)
                                                          .replace(u"%1"_s, AnyFamily().left(20))
                                                          .replace(u'~', u"</font></td>\r\n"_s));
        QCOMPARE(w.Text("lblReport"), u"Done: Report Generator. Click 'Next>' to restart..."_s);
        QVERIFY(w.At("CmdClose")->hasFocus() && w.At("ProgressBar1")->property("value") == 0);
        QCOMPARE(w.At("ProgressBar1")->property("maximum"), 2);
        w.Go("CmdNext", 1);
        QCOMPARE(w.Shown, u"0> 1<> 2<> 4<> 2<> 1<> 0> 0> 1<> 2<> 4<> 4 4 4> 0> "_s);
    }

    void WritesATextAsSet()
    {
        World w;
        w.Load(PageRecord());
        w.Choose("RepType", 1);
        w.DoubleClick("txtTitle");
        w.Go("CmdNext", 1);
        for (const char *box : {"ColumnHeaders", "Summary", "ColorTable"})
            w.Click(box);
        w.Go("CmdNext", 1);
        w.Enter("txtDelimiter", u"::::"_s);
        w.Click("CustomDelimited");
        w.Go("CmdNext", 1);
        w.Click("SaveRel");
        w.Go("CmdBack", 3);
        QByteArray record = PageRecord();
        record.replace(0, 14, "\1\0My Music    "_ba).replace(1202, 6, "\0\0\xFF\xFF\0\0"_ba);
        record.replace(1305, 11, ":::\0\0\0\0\0\0\xFF\xFF"_ba).replace(1338, 2, "\0\0"_ba);
        QCOMPARE(w.Saved(), record);
        w.F.Prompts.Expect(w.KeepIt, PromptAnswer::Yes);
        w.F.Prompts.ExpectPath(w.F.Inside(u"My Music\\playlist.txt"_s), w.F.Inside(u"kept.txt"_s));
        w.Go("CmdNext", 4);
        QCOMPARE(w.F.Read(u"kept.txt"_s),
                 EncodeText(u"My Music\r\nTwo\r\nlines ü\r\n\r\nFileName:::ID:::Link:::\r\n\r\nOne::::::\r\n"
                            u"Two::::::\r\n\r\n"_s));
        QCOMPARE(w.F.ShellCalls, QStringList{u"open "_s + w.F.Inside(u"app\\tmp.txt"_s)});
        w.Go("CmdNext", 1);
        QCOMPARE(w.Shown, u"0> 1<> 3<> 4<> 3<> 1<> 0> 0> 1<> 3<> 4<> 4 4 4> 0> "_s);
    }

    void KeepsSettingsInFiles()
    {
        World w;
        QByteArray record = PageRecord();
        record.replace(0, 2, "\1\0"_ba)
            .replace(1202, 6, "\0\0\0\0\0\0"_ba)
            .replace(1305, 3, ":::")
            .replace(1338, 2, "\0\0"_ba);
        // A font that this host lacks stays.
        record.replace(1316, 20, "No Such Font        ");
        for (const qsizetype layout : {1308, 1310, 1312, 1314}) {
            record.replace(1308, 8, QByteArray(8, '\0')).replace(layout, 2, "\xFF\xFF");
            w.Click("LoadDefault");
            w.Load(record);
            QCOMPARE(w.Saved(), record);
        }
        QVERIFY(w.At("FontTest")->font().pointSize() == 18 &&
                !w.At<QAbstractItemView>("FontList")->currentIndex().isValid());
        // Numbers out of range are shown as the nearest ones.
        record.replace(0, 2, "\xFD\xFF").replace(1221, 4, "\x1E\0\xFF\xFF"_ba).replace(1336, 2, "\x63\0"_ba);
        w.Load(record);
        QCOMPARE(w.Texts("^(RepType|FontSizer)$") + w.Cells("ColumnList").first(2).join(u' '),
                 u"36|HTML FileLink FileName"_s);
        w.Next(1);
        w.Click("cmdAll");
        w.Click("CmdBack");
        const QByteArray before = w.Saved();
        QCOMPARE(before.mid(1263, 42), QByteArray(42, '\xFF'));
        // What goes wrong, and what the user does not want.
        const QString saved = w.F.Inside(u"saved.rpt"_s);
        w.F.Prompts.ExpectPath(w.Proposal, saved);
        w.ClickAndRead("SaveCurrent", saved + u" exists, do you want to replace it?", PromptAnswer::No);
        for (const auto &[command, told] : {std::pair("SaveCurrent", u"Could not save the file!"_s),
                                            {"LoadCurrent", u"Could not read the file!"_s}}) {
            w.F.Prompts.ExpectPath(w.Proposal, w.F.Inside(u"gone\\x.rpt"_s));
            w.ClickAndRead(command, told);
        }
        w.ClickAndGive("LoadCurrent", w.Proposal, {});
        w.ClickAndGive("SaveCurrent", w.Proposal, {});
        QCOMPARE(w.F.Read(u"saved.rpt"_s), before);
        // Of a short file the rest is empty; every byte of a text stays, and so does what stands behind the record.
        w.Load(record.first(8));
        QVERIFY(w.Text("txtTitle") == u"A  son" && !w.Ticked("Summary") && w.Text("txtDesc").isEmpty());
        for (qsizetype i = 0; i < 256; ++i)
            record[300 + i] = static_cast<char>(i);
        const QString path = w.F.Write(u"a.rpt"_s, record.append("tail"));
        QVERIFY(LoadReportSettings(path, w.Settings) && SaveReportSettings(path, w.Settings));
        QCOMPARE(w.F.Read(u"a.rpt"_s), record);
    }

    void AsksWhatToKeep()
    {
        World w;
        const QString temporary = w.F.Inside(u"My Music\\tmp.htm"_s);
        const QString kept = w.F.Inside(u"kept.htm"_s);
        // Escape leaves the wizard, which begins anew.
        w.Next(2);
        QTest::keyClick(w.Form, Qt::Key_Escape);
        QVERIFY(!w.Form->isVisible());
        w.Open();
        QCOMPARE(w.Text("lblReport"), u"Click 'Next>' to generate the report."_s);
        w.Next(3);
        w.ClickAndRead("CmdNext", w.KeepIt, PromptAnswer::No);
        QVERIFY(w.F.ShellCalls == QStringList{u"open "_s + temporary} && w.F.Listing(u"My Music"_s) == u"one.wma");
        // A file of that name gets its place back, unless the user breaks off or keeps the report there.
        w.F.Write(u"My Music\\tmp.htm"_s, "mine");
        QString suggested = w.F.Inside(u"My Music\\playlist.htm"_s);
        const auto run = [&](const std::optional<QString> &path, std::optional<PromptAnswer> replace = {}) {
            w.Open();
            w.F.Prompts.Expect(w.KeepIt, PromptAnswer::Yes);
            w.F.Prompts.ExpectPath(suggested, path);
            if (replace)
                w.F.Prompts.Expect(*path + u" exists, do you want to replace it?", *replace);
            if (replace == PromptAnswer::Yes && *path == kept)
                w.F.Prompts.Expect(u"Could not save the file!"_s, PromptAnswer::Ok);
            w.Next(4);
            return QByteArray(w.F.Read(u"My Music\\tmp.htm"_s) + w.F.Read(u"kept.htm"_s));
        };
        const QByteArray page = run(kept).mid(4) + "old";
        QVERIFY(page.startsWith("<head>"));
        w.F.Write(u"kept.htm"_s, "old");
        SetFileAttributes(kept, AttributeReadOnly);
        QCOMPARE(run(kept, PromptAnswer::No), "mineold"_ba);
        QCOMPARE(run(kept, PromptAnswer::Yes), "mineold"_ba);
        SetFileAttributes(kept, AttributeNormal);
        QCOMPARE(run(temporary, PromptAnswer::Yes), page);
        w.F.Write(u"My Music\\tmp.htm"_s, "mine");
        QCOMPARE(run({}), page);
        // Escape ends a run; the last report stands there still.
        w.Open();
        w.Next(3);
        w.ClickAndStop("CmdNext");
        QCOMPARE(w.Text("lblReport"), u"Stopped: no report was written. Click 'Next>' to restart..."_s);
        QCOMPARE(w.F.Read(u"My Music\\tmp.htm"_s) + "old", page);
        // Without a common folder there are no relative links.
        w.F.Window->AddFile(u"q:\\gone.mp3"_s, 0);
        suggested = u"playlist.htm"_s;
        run({});
        QVERIFY(w.F.Read(u"app\\tmp.htm"_s).contains("3 Items"));
        w.F.Window->ListView1.Clear();
        w.F.Window->AddFile(w.F.Write(u"taken"_s, {}) + u"\\x.mp3", 0);
        w.Open();
        w.Next(3);
        const QString failed = ToHostPath(w.F.Inside(u"taken\\tmp.htm"_s)) + u" could not be written.";
        w.ClickAndRead("CmdNext", u"The file :"_s + failed);
    }
};

QTEST_MAIN(ReportsTest)
#include "ReportsTest.moc"
