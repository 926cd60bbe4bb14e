#include "media/MP3File.h"
#include "platform/CodePage.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "reports/WriteReport.h"
#include "support/HostNames.h"

#include <QTemporaryDir>
#include <QTest>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace
{
using enum ReportColumn;

const QStringList headings =
    u"FileName|Folder|Time|Size|ID|Layer|BitRate|SampleRate|Mode|CRC Protection|Emphasis|Copyrighted|"
    "Id3v1 Title|Id3v1 Artist|Id3v1 Album|Id3v1 Year|Id3v2 Title|Id3v2 Artist|Id3v2 Album|"
    "Id3v2 Year|Link"_s.split(u'|');
const QList<int> widths{40, 100, 9, 10, 4, 9, 10, 7, 13, 4, 6, 4, 30, 30, 30, 12, 30, 30, 30, 12};
const QString created = u" page created 13:04:05 [01-02-2026]"_s;

/// A folder of media files, and reports of it at a clock that stands still.
struct World {
    QTemporaryDir Temporary;
    QString Folder = FromHostPath(Temporary.path());
    Clock Time = HeadlessHost(u"test"_s).Clock;
    Progress Run;
    ReportSettings Settings = DefaultReportSettings();
    QString Target = In(u"report"_s);

    World()
    {
        Time.Now = [] { return QDateTime(QDate(2026, 1, 2), QTime(13, 4, 5)); };
    }

    /// The temporary folder itself cannot remove a file whose name is no text.
    ~World()
    {
        std::error_code ignored;
        std::filesystem::remove_all(Temporary.path().toStdU16String(), ignored);
    }

    QString In(const QString &name) const { return Folder + u'\\' + name; }

    QString Put(const QString &name, const QByteArray &content) const
    {
        EnsureFolder(In(name).section(u'\\', 0, -2));
        WriteWholeFile(In(name), content);
        return In(name);
    }

    QString Take(const QString &name, QLatin1StringView data) const
    {
        QByteArray content;
        ReadWholeFile(FromHostPath(TEST_DATA "/"_L1 + data), content);
        return Put(name, content);
    }

    /// Leaves these columns in the report, in this order, and nothing around the rows of a page or, with a delimiter,
    /// of a text.
    void Choose(const QList<ReportColumn> &columns, const QString &delimiter = {})
    {
        Settings.RepType = delimiter.isEmpty() ? 0 : 1;
        Settings.Summary = Settings.ColumnHeaders = Settings.SpaceAligned = false;
        Settings.CustomDelimited = true;
        Settings.Delimiter = delimiter;
        Settings.ColumnChecked.fill(false);
        for (std::size_t i = 0; i < static_cast<std::size_t>(columns.size()); ++i) {
            Settings.ColumnOrder[i] = static_cast<qint16>(columns[static_cast<qsizetype>(i)]);
            Settings.ColumnChecked[i] = true;
        }
    }

    bool Write(const QStringList &files) { return WriteReport(Target, files, Settings, Run, Time); }

    QByteArray Report(const QStringList &files)
    {
        QByteArray content;
        return Write(files) && ReadWholeFile(Target, content) ? content : QByteArray();
    }
    QString Text(const QStringList &files) { return DecodeText(Report(files)); }
};

QString Aligned(const QStringList &cells)
{
    QString line;
    for (qsizetype i = 0; i < widths.size(); ++i)
        line += cells[i].left(widths[i] - 1).leftJustified(widths[i]);
    return line;
}

/// A cell of a page, from its tag to the end of its line.
QString Cell(const QString &colour, const QString &font, const QString &text)
{
    return u"<td"_s + colour + u"><font face=" + font + u'>' + text + u"</font></td>\r\n";
}
} // namespace

class ReportsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void WritesEveryLayout()
    {
        World w;
        const QString tagged = w.Take(u"tagged.mp3"_s, "cbr96-mpeg1-mono-flags-info.mp3"_L1);
        MP3File tags;
        tags.SetTitle(u"T1"_s);
        tags.SetArtist(u"A1"_s);
        tags.SetAlbum(u"L1"_s);
        tags.SetYear(u"1991"_s);
        for (const auto &[id, text] : {std::pair("TIT2", u"<b>\r\n\t\u2028\u0085"_s),
                                       {"TPE1", u"A2"_s},
                                       {"TALB", u"L2"_s},
                                       {"TYER", u"2002"_s},
                                       {"TRCK", u"1"_s},
                                       {"TCOM", QString(5000, u'x')}})
            tags.SetFrame(id, text);
        tags.WriteTags(tagged, MP3File::TagChange::Write, MP3File::TagChange::Write);
        QByteArray vorbis = "\x03vorbis\x1d\0\0\0"_ba + QByteArray(29, 'v');
        for (const QByteArray &comment : {"TITLE=T"_ba, "ARTIST=A"_ba, "ALBUM=L"_ba})
            vorbis += static_cast<char>(comment.size()) + QByteArray(3, '\0') + comment;
        vorbis += "\x01\x05vorbis";
        const QString longName(38, u'a');
        const QStringList files{tagged, w.In(u"gone.mp3"_s), w.Put(u"sub\\x.Ogg"_s, vorbis.leftJustified(5000, '\0')),
                                w.Put(u"no.mp3"_s, "text"), w.Put(longName + u"🎵 b.wav.wav", QByteArray(20'000, 'x'))};
        const QString shownName = u'A' + longName.mid(1);
        const QStringList rows{
            u"Tagged|.|0:02|33 Kb|1.0|III|96|32000 Hz|Single Channel|No|50/15 microsec|Yes|T1|A1|L1|1991|"
            "<b>\r\n\t\u2028\u0085|A2|L2|2002|tagged.mp3"_s,
            u"Gone|.||Not found!|||||||||||||||||"_s, u"X|sub||5,000 Bytes|OGG Vorbis||||||||T|A|L||||||sub/x.Ogg"_s,
            u"No|.|0:00|4 Bytes||||0 Hz||No||No|||||||||no.mp3"_s,
            shownName + u"🎵 B|.||20 Kb|||||||||||||||||" + longName + u"🎵%20b.wav.wav"};
        const QString summary = u"5 Items, Total Playing Time >0:06, [>57 Kb]"_s + created;
        w.Settings.ColumnChecked.fill(true);
        w.Settings.Title = u"  My\r\nlist "_s;
        w.Settings.Description = u"<i>of</i>\r\nit"_s;
        w.Settings.FontName = u"Arial"_s;
        w.Settings.FontSizeIndex = 2;
        w.Settings.ValWidth = u"640"_s;
        w.Settings.ValBorder = u"7"_s;
        QList<int> told;
        w.Run.SetLimits = [&](int minimum, int maximum) { told += {minimum, maximum}; };
        w.Run.SetValue = [&](int value) { told.append(value); };
        for (const bool coloured : {true, false}) {
            w.Settings.ColorTable = coloured;
            const QString font = u"'Arial' size='2'"_s;
            QString page =
                u"<head><html><title>"_s + u"My\r\nlist"_s.leftJustified(200) +
                u"</title></head><body><p align=center><font face='Arial' size='3'><b>My<br>list</b></font></p>"
                "\r\n<p align=center><font face='Arial' size='2'><i>of</i><br>it</font></p>\r\n\r\n"
                "<center><table border=7 width=640 cellspacing=1 cellpadding=3>";
            for (const QString &heading : headings)
                page += Cell({}, font, u"<b>"_s + heading + u"</b>");
            page += u"\r\n"_s;
            for (qsizetype row = 0; row < rows.size(); ++row) {
                const QStringList cells = rows[row].split(u'|');
                const QString colour = !coloured      ? QString()
                                       : row % 2 == 0 ? u" bgcolor=#D5DEFF"_s
                                                      : u" bgcolor=#EEEEEE"_s;
                page += u"<tr>\r\n"_s;
                for (qsizetype i = 0; i < 20; ++i)
                    page += Cell(colour, font,
                                 cells[i].isEmpty() ? u"?????"_s : QString(cells[i]).replace(u"<b>"_s, u"&lt;b&gt;"_s));
                page +=
                    Cell(colour, u"'Webdings' size='4'"_s, u"<a href="_s + cells[20] + u">X</a>") + u"</tr>\r\n\r\n";
            }
            page += u"<tr><td colspan=21><font face='Arial' size='2'>"_s + summary +
                    u"</font></td></tr>\r\n</table></center></body></html>\r\n";
            QCOMPARE(w.Text(files), page);
        }
        QCOMPARE(told.first(8), (QList<int>{0, 5, 1, 2, 3, 4, 5, 0}));
        QCOMPARE(w.Settings.Title.Trimmed(), u"My\r\nlist"_s);

        w.Settings.RepType = 1;
        const QString ruler = QString(420, u'-') + u"\r\n";
        const QString title = u"My\r\nlist\r\n<i>of</i>\r\nit\r\n"_s;
        QString text = title + ruler + Aligned(headings) + u"\r\n" + ruler;
        const QStringList plain =
            QStringList(rows).replaceInStrings(QRegularExpression(u"[\r\n\t\u2028\u0085]"_s), u" "_s);
        for (const QString &row : plain)
            text += Aligned(row.split(u'|')).replace(shownName + QChar(0xD83C), shownName + u' ') + u"\r\n";
        QCOMPARE(w.Text(files), QString(text + ruler + summary + u"\r\n" + ruler));
        w.Settings.SpaceAligned = false;
        w.Settings.Delimiter = u" ;;"_s;
        // Of several delimiters the last one counts.
        for (const auto &[layout, mark] : {std::pair(&ReportSettings::CommaDelimited, u","_s),
                                           {&ReportSettings::TabDelimited, u"\t"_s},
                                           {&ReportSettings::CustomDelimited, u";;"_s}}) {
            w.Settings.*layout = true;
            text = title + u"\r\n" + headings.join(mark) + mark + u"\r\n\r\n";
            for (const QString &row : plain)
                text += row.split(u'|').first(20).join(mark) + mark + u"\r\n";
            QCOMPARE(w.Text(files), QString(text + u"\r\n" + summary + u"\r\n\r\n"));
        }
        // A file is read as far as the columns need it, and one of Vorbis for a column of the first tag alone.
        for (const auto &[columns, first] : {std::pair(QList{ID3v2Title, ID}, u"<b>     |1.0|"_s),
                                             {QList{ID3v1Year}, u"1991|"_s},
                                             {QList{CRCProtection}, u"No|"_s}}) {
            w.Choose(columns, u"|"_s);
            const QString empty(columns.size(), u'|');
            QCOMPARE(w.Text({files[0], files[2]}).section(u"\r\n"_s, -4, -3), QString(first + u"\r\n" + empty));
        }
    }

    void SumsUp()
    {
        World w;
        w.Choose({Time, Size}, u";"_s);
        w.Settings.Summary = true;
        const QString song = w.Take(u"song.mp3"_s, "cbr128-mpeg1-joint-info.mp3"_L1);
        const QString plain = w.Put(u"plain.wav"_s, QByteArray(100, 'x'));
        const QString missing = w.In(u"gone.mp3"_s);
        const QString large = w.Put(u"large.wav"_s, {});
        QFile sparse(ToHostPath(large));
        QVERIFY(sparse.open(QIODevice::WriteOnly) && sparse.resize(2'147'483'600));
        sparse.close();
        // The lengths of the rows that have none are those of the song before them. What is too much is not added.
        for (const auto &[files, text] :
             {std::pair(QStringList{song, plain}, u"2 Items, Total Playing Time 0:04, [36 Kb]"_s),
              {{plain, song}, u"2 Items, Total Playing Time >0:02, [36 Kb]"_s},
              {{song, missing}, u"2 Items, Total Playing Time >0:04, [>36 Kb]"_s},
              {{missing}, u"1 Items"_s},
              {{large, plain, song}, u"3 Items, Total Playing Time >0:02, [2,048 Mb]"_s},
              {{}, u"0 Items"_s}})
            QCOMPARE(w.Text(files).section(u"\r\n"_s, -3, -3), QString(text + created));
        QVERIFY(sparse.remove());
    }

    void LeadsToFiles()
    {
        World w;
        w.Choose({Folder, FileName, Link});
        QList<QStringList> cases{{u"it's 100% #1 R&B.mp3"_s, u"it%27s%20100%25%20%231%20R%26B.mp3"_s},
                                 {u"sub\\夜.mp3"_s, u"sub/夜.mp3"_s, u">sub</font>"_s}};
        if (NamesHoldAnything())
            cases +=
                {{u"<b>\"c:d\"?&lt.mp3"_s, u"%3Cb%3E%22c%3Ad%22%3F%26lt.mp3"_s, u">&lt;b&gt;\"c:d\"?&lt</font>"_s},
                 {u"sub\\back\uF05Cslash\uF0E9.mp3"_s, u"sub/back%5Cslash%E9.mp3"_s, u">Back\\slash\uFFFD</font>"_s},
                 {u"c:x\uF00A.mp3"_s, u"c%3Ax%0A.mp3"_s}};
        QStringList files;
        for (const QStringList &names : cases)
            files.append(w.Put(names[0], "x"));
        QString text = w.Text(files);
        for (const QStringList &names : cases)
            QVERIFY2(text.contains(u"<a href=" + names[1] + u">X</a>") && text.contains(names.value(2)),
                     qPrintable(names[1]));
        // A file outside of what the others have in common, and all of them when that is nothing.
        const QString other = w.Put(u"rest\\x.mp3"_s, "x");
        const QString link = u"<a href="_s + QUrl::fromLocalFile(ToHostPath(other)).toString(QUrl::FullyEncoded) + u'>';
        w.Settings.SaveRel = false;
        text = w.Text({other});
        QVERIFY2(text.contains(u"file:///") && text.contains(link), qPrintable(text));
        QVERIFY(text.contains(u'>' + ToHostPath(w.In(u"rest"_s)) + u"</font>"));
        w.Settings.SaveRel = true;
        text = w.Text({other, u"q:\\y.mp3"_s});
        QVERIFY(text.contains(link) && text.contains(u">q:</font>"));
    }

    void LosesNothing()
    {
        World w;
        w.Choose({FileName});
        QStringList files(20'000, w.In(u"a name of the usual length, thirty times or so and a bit.mp3"_s));
        const QByteArray ascii = w.Report(files);
        QVERIFY(ascii.startsWith("<head>") && ascii.size() > 2'000'000);
        files.append(w.In(u"夜🎵.mp3"_s));
        const QByteArray end = "</table></center></body></html>\r\n";
        const QByteArray last = u">夜🎵</font></td>\r\n</tr>\r\n\r\n"_s.toUtf8() + end;
        QByteArray page = w.Report(files);
        QVERIFY(page.startsWith(QByteArray("\xEF\xBB\xBF" + ascii.chopped(end.size()))) && page.endsWith(last));
        w.Choose({FileName}, u";"_s);
        page = w.Report(files);
        QVERIFY(page == EncodeText(DecodeText(page)));
        // What cannot be written, and what the user stops, leaves the old file.
        w.Target = w.Put(u"old.htm"_s, "old");
        w.Run.Stopped = [] { return true; };
        QCOMPARE(w.Report(files), "old"_ba);
        w.Run.Stopped = [] { return false; };
        SetFileAttributes(w.Target, AttributeReadOnly);
        QCOMPARE(w.Report({}), "old"_ba);
        SetFileAttributes(w.Target, AttributeNormal);
        w.Target = w.In(u"gone\\x.htm"_s);
        QVERIFY(!w.Write(files));
        FolderEntries entries;
        QVERIFY(ListFolder(w.Folder, entries) && entries.Files == QStringList({u"old.htm"_s, u"report"_s}));
    }

    void SettingsKeepTheirForm()
    {
        const World w;
        const QString path = w.In(u"a.rpt"_s);
        ReportSettings record;
        QVERIFY(!LoadReportSettings(path, record) && SaveReportSettings(path, DefaultReportSettings()));
        QByteArray bytes;
        QVERIFY(ReadWholeFile(path, bytes));
        QByteArray expected = QByteArray(2, '\0') + QByteArray("Report Title").leftJustified(200) +
                              QByteArray("Report Description").leftJustified(1000) + QByteArray(6, '\xFF') +
                              "Auto1  3  0  ";
        for (char number = 1; number <= 21; ++number)
            expected.append(number).append('\0');
        expected += "\xFF\xFF\0\0"_ba + QByteArray(38, '\xFF') + ":  \xFF\xFF" + QByteArray(6, '\0') +
                    QByteArray("Verdana").leftJustified(20) + "\0\0\xFF\xFF"_ba;
        QCOMPARE(bytes, expected);
        // Every byte of a text, numbers out of range, and what stands behind the record.
        for (qsizetype i = 0; i < 256; ++i)
            bytes[300 + i] = static_cast<char>(i);
        bytes.replace(0, 2, "\x05\x80").replace(1221, 2, "\xFF\x7F").append("tail");
        QByteArray again;
        QVERIFY(WriteWholeFile(path, bytes) && LoadReportSettings(path, record) && SaveReportSettings(path, record));
        QVERIFY(ReadWholeFile(path, again) && again == bytes);
        QVERIFY(WriteWholeFile(path, bytes.first(10)) && LoadReportSettings(path, record));
        QVERIFY(record.Title.Trimmed() == u"Report T"_s && record.ColumnOrder[0] == 0 && !record.Summary);
    }
};

QTEST_MAIN(ReportsTest)
#include "ReportsTest.moc"
