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
    World(const World &) = delete;
    World &operator=(const World &) = delete;

    QString In(const QString &name) const { return Folder + u'\\' + name; }

    QString Take(const QString &name, const char *data) const
    {
        QByteArray content;
        ReadWholeFile(FromHostPath(QLatin1StringView(TEST_DATA "/") + QLatin1StringView(data)), content);
        return Put(name, content);
    }

    QString Put(const QString &name, const QByteArray &content) const
    {
        EnsureFolder(In(name).section(u'\\', 0, -2));
        WriteWholeFile(In(name), content);
        return In(name);
    }

    /// Leaves these columns in the report, in this order.
    void Choose(const QList<ReportColumn> &columns)
    {
        Settings.ColumnChecked.fill(false);
        for (qsizetype i = 0; i < columns.size(); ++i) {
            Settings.ColumnOrder[static_cast<std::size_t>(i)] = static_cast<qint16>(columns[i]);
            Settings.ColumnChecked[static_cast<std::size_t>(i)] = true;
        }
    }

    /// As a text file with a delimiter, or a page for none; without anything around the rows.
    void UseLayout(const QString &delimiter)
    {
        Settings.RepType = delimiter.isEmpty() ? 0 : 1;
        Settings.SpaceAligned = Settings.Summary = Settings.ColumnHeaders = false;
        Settings.CustomDelimited = true;
        Settings.Delimiter = delimiter;
    }

    bool Write(const QStringList &files) { return WriteReport(Target, files, Settings, Run, Time); }

    QByteArray Report(const QStringList &files)
    {
        Write(files);
        QByteArray content;
        ReadWholeFile(Target, content);
        return content;
    }

    /// The lines of the report from the first row on.
    QStringList Lines(const QStringList &files)
    {
        QStringList lines = DecodeText(Report(files)).split(u"\r\n"_s);
        return lines.mid(2);
    }
};

using enum ReportColumn;

QString Padded(const QList<std::pair<const char *, int>> &cells)
{
    QString line;
    for (const auto &[text, width] : cells)
        line += QLatin1StringView(text).toString().leftJustified(width);
    return line;
}
} // namespace

class ReportsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void WritesAPage()
    {
        World w;
        w.Settings.Title = u"  My\r\nlist "_s;
        w.Settings.ValWidth = u"640"_s;
        w.Settings.FontSizeIndex = 2;
        w.Choose({FileName, Size, Link});
        QList<int> told;
        w.Run.SetLimits = [&](int minimum, int maximum) { told += {minimum, maximum}; };
        w.Run.SetValue = [&](int value) { told.append(value); };
        const QString first = w.Put(u"a b.wma.wma"_s, QByteArray(20'000, 'x'));
        const QByteArray font = "<font face='Verdana' size='2'>";
        const auto row = [&](const QByteArray &colour, const QByteArray &name, const QByteArray &size,
                             const QByteArray &link) -> QByteArray {
            const QByteArray cell = "<td bgcolor=#" + colour + '>';
            return "<tr>\r\n" + cell + font + name + "</font></td>\r\n" + cell + font + size + "</font></td>\r\n" +
                   cell + "<font face='Webdings' size='4'><a href=" + link + ">X</a></font></td>\r\n</tr>\r\n\r\n";
        };
        const QByteArray page =
            "<head><html><title>" + QByteArray("My\r\nlist").leftJustified(200) +
            "</title></head><body><p align=center><font face='Verdana' size='3'><b>My<br>list</b></font></p>\r\n\r\n"
            "<center><table border=0 width=640 cellspacing=1 cellpadding=3><td>" +
            font + "<b>FileName</b></font></td>\r\n<td>" + font + "<b>Size</b></font></td>\r\n<td>" + font +
            "<b>Link</b></font></td>\r\n\r\n" + row("D5DEFF", "A B", "20 Kb", "a%20b.wma.wma") +
            row("EEEEEE", "Gone", "Not found!", "") + "<tr><td colspan=3>" + font +
            "2 Items, [>20 Kb] page created 13:04:05 [01-02-2026]</font></td></tr>\r\n"
            "</table></center></body></html>\r\n";
        QCOMPARE(w.Report({first, w.In(u"gone.mp3"_s)}), page);
        QCOMPARE(told, (QList<int>{0, 2, 1, 2, 0}));
        QVERIFY(w.Settings.Title.Trimmed() == u"My\r\nlist" && w.Settings.Description.Trimmed().isEmpty());
    }

    void WritesText()
    {
        World w;
        w.Settings.RepType = 1;
        w.Settings.Description = u"of a\r\nfolder"_s;
        w.Settings.ColumnChecked[1] = true;
        const QString headings = Padded(
            {{"FileName", 40},   {"Folder", 100},     {"Time", 9},          {"Size", 10},         {"ID", 4},
             {"Layer", 9},       {"BitRate", 10},     {"Sample", 7},        {"Mode", 13},         {"CRC", 4},
             {"Empha", 6},       {"Cop", 4},          {"Id3v1 Title", 30},  {"Id3v1 Artist", 30}, {"Id3v1 Album", 30},
             {"Id3v1 Year", 12}, {"Id3v2 Title", 30}, {"Id3v2 Artist", 30}, {"Id3v2 Album", 30},  {"Id3v2 Year", 12}});
        QCOMPARE(QString::fromUtf8(w.Report({})).section(u"\r\n"_s, 3, 3), headings);
        w.Choose({FileName, Time, Link});
        const QStringList files{w.Take(u"one.MP3"_s, "cbr128-mpeg1-joint-info.mp3"),
                                w.Put(u"a name of more than thirty-nine characters.wav"_s, "x")};
        const QString ruler(49, u'-');
        const QString summary = u"2 Items, Total Playing Time 0:04 page created 13:04:05 [01-02-2026]"_s;
        const QStringList aligned{u"of a"_s,
                                  u"folder"_s,
                                  ruler,
                                  Padded({{"FileName", 40}, {"Time", 9}}),
                                  ruler,
                                  Padded({{"One", 40}, {"0:02", 9}}),
                                  Padded({{"A Name Of More Than Thirty-nine Charact", 49}}),
                                  ruler,
                                  summary,
                                  ruler,
                                  {}};
        QCOMPARE(QString::fromUtf8(w.Report(files)), aligned.join(u"\r\n"_s));
        w.Settings.SpaceAligned = false;
        w.Settings.Description = {};
        w.Settings.Delimiter = u" ;;"_s;
        // Of several delimiters the last one counts.
        const std::pair<bool ReportSettings::*, QString> delimiters[] = {{&ReportSettings::CommaDelimited, u","_s},
                                                                         {&ReportSettings::TabDelimited, u"\t"_s},
                                                                         {&ReportSettings::CustomDelimited, u";;"_s}};
        for (const auto &[layout, mark] : delimiters) {
            w.Settings.*layout = true;
            const QString text = u"\r\nFileName|Time|Link|\r\n\r\nOne|0:02|\r\n"
                                 "A Name Of More Than Thirty-nine Characters||\r\n\r\n"_s;
            QCOMPARE(QString::fromUtf8(w.Report(files)), QString(text).replace(u'|', mark) + summary + u"\r\n\r\n");
        }
    }

    void ShowsTagsAndStreams()
    {
        World w;
        w.UseLayout(u"|"_s);
        QList<ReportColumn> columns;
        for (int number = static_cast<int>(Size); number <= static_cast<int>(ID3v2Year); ++number)
            columns.append(ReportColumnOf(number));
        w.Choose(columns);
        const QString tagged = w.Take(u"tagged.mp3"_s, "cbr96-mpeg1-mono-flags-info.mp3");
        MP3File tags;
        tags.SetTitle(u"T1"_s);
        tags.SetArtist(u"A1"_s);
        tags.SetAlbum(u"L1"_s);
        tags.SetYear(u"1991"_s);
        const QList<std::pair<const char *, QString>> frames{
            {"TIT2", u"one\r\ntwo\tthree\u2028"_s}, {"TPE1", u"A2"_s}, {"TALB", u"L2"_s}, {"TYER", u"2002"_s}};
        for (const auto &[id, text] : frames)
            tags.SetFrame(id, text);
        tags.WriteTags(tagged, MP3File::TagChange::Write, MP3File::TagChange::Write);
        QByteArray vorbis = "\x03vorbis\x1d"_ba + QByteArray(3, '\0') + QByteArray(29, 'v');
        for (const QByteArray &comment : {"TITLE=T"_ba, "ARTIST=A"_ba, "ALBUM=L"_ba})
            vorbis += static_cast<char>(comment.size()) + QByteArray(3, '\0') + comment;
        const QStringList files{tagged, w.Put(u"x.Ogg"_s, vorbis.append("\x01\x05vorbis").leftJustified(5000, '\0')),
                                w.Put(u"no.mp3"_s, "text")};
        QStringList rows{u"29 Kb|1.0|III|96|32000 Hz|Single Channel|No|50/15 microsec|Yes|"
                         "T1|A1|L1|1991|one  two three |A2|L2|2002|"_s,
                         u"5,000 Bytes|OGG Vorbis||||||||T|A|L||||||"_s, u"4 Bytes||||0 Hz||No||No|||||||||"_s};
        QCOMPARE(w.Lines(files).first(3), rows);
        // A column of the first tag is what brings out an OGG file.
        w.Choose({ID3v2Title, ID});
        QCOMPARE(w.Lines(files).first(3), (QStringList{u"one  two three |1.0|"_s, u"||"_s, u"||"_s}));
        w.Choose({ID3v1Year});
        QCOMPARE(w.Lines(files).first(3), (QStringList{u"1991|"_s, u"|"_s, u"|"_s}));
    }

    void SumsUp()
    {
        World w;
        w.UseLayout(u";"_s);
        w.Settings.Summary = true;
        w.Choose({Time, Size});
        const QString song = w.Take(u"song.mp3"_s, "cbr128-mpeg1-joint-info.mp3");
        const QString plain = w.Put(u"plain.wav"_s, QByteArray(100, 'x'));
        const QString large = w.Put(u"large.wav"_s, {});
        QFile sparse(ToHostPath(large));
        QVERIFY(sparse.open(QIODevice::WriteOnly) && sparse.resize(2'147'483'600));
        sparse.close();
        const QString missing = w.In(u"gone.mp3"_s);
        // The lengths of the rows that have none are those of the song before them. What is too much is not added.
        const std::pair<QStringList, QString> cases[] = {
            {{song, plain}, u"2 Items, Total Playing Time 0:04, [36 Kb]"_s},
            {{plain, song}, u"2 Items, Total Playing Time >0:02, [36 Kb]"_s},
            {{song, missing}, u"2 Items, Total Playing Time >0:04, [>36 Kb]"_s},
            {{missing}, u"1 Items"_s},
            {{large, plain, song}, u"3 Items, Total Playing Time >0:02, [2,048 Mb]"_s},
            {{}, u"0 Items"_s},
        };
        for (const auto &[files, text] : cases)
            QCOMPARE(w.Lines(files)[files.size() + 1], text + u" page created 13:04:05 [01-02-2026]"_s);
        QVERIFY(sparse.remove());
    }

    void LeadsToFiles()
    {
        World w;
        w.UseLayout({});
        w.Choose({Folder, FileName, Link});
        QStringList names{u"it's 100% #1 R&B.mp3"_s, u"sub\\夜.mp3"_s};
        if (NamesHoldAnything())
            names += {u"<b>\"c:d\"?&lt.mp3"_s, u"sub\\back\uF05Cslash\uF0E9.mp3"_s, u"c:x\uF00A.mp3"_s};
        QStringList files;
        for (const QString &name : std::as_const(names))
            files.append(w.Put(name, "x"));
        QByteArray page = w.Report(files);
        QVERIFY(page.startsWith("\xEF\xBB\xBF<head>"));
        QString text = DecodeText(page);
        QStringList links{u"it%27s%20100%25%20%231%20R%26B.mp3"_s, u"sub/夜.mp3"_s};
        if (NamesHoldAnything()) {
            links += {u"%3Cb%3E%22c%3Ad%22%3F%26lt.mp3"_s, u"sub/back%5Cslash%E9.mp3"_s, u"c%3Ax%0A.mp3"_s};
            QVERIFY(text.contains(u">&lt;b&gt;\"c:d\"?&lt</font>") && text.contains(u">Back\\slash\uFFFD</font>"));
        }
        for (const QString &link : std::as_const(links))
            QVERIFY2(text.contains(u"<a href=" + link + u">X</a>"), qPrintable(link));
        QVERIFY(text.contains(u">.</font>") && text.contains(u">sub</font>"));
        // A file outside of what the others have in common, and all of them when that is nothing.
        const QString root = w.Folder.section(u'\\', 0, 0) + u'\\';
        const QString other = w.Put(u"rest\\x.mp3"_s, "x");
        w.Settings.SaveRel = false;
        text = DecodeText(w.Report({other}));
        const QString address = QUrl::fromLocalFile(ToHostPath(other)).toString(QUrl::FullyEncoded);
        QVERIFY2(address.startsWith(u"file:///") && text.contains(u"<a href=" + address + u'>'), qPrintable(text));
        QVERIFY(text.contains(u'>' + ToHostPath(w.In(u"rest"_s)) + u"</font>"));
        w.Settings.SaveRel = true;
        text = DecodeText(w.Report({other, u"q:\\y.mp3"_s}));
        QVERIFY(text.contains(u"<a href=" + address + u'>') && text.contains(u">q:</font>"));
    }

    void KeepsEveryCharacter()
    {
        World w;
        w.UseLayout({});
        w.Choose({FileName});
        QStringList files(2000, w.In(u"a name of the usual length, thirty times or so and a bit.mp3"_s));
        const QByteArray ascii = w.Report(files);
        QVERIFY(ascii.startsWith("<head>") && ascii.size() > 200'000);
        files.append(w.In(u"夜🎵.mp3"_s));
        const QByteArray page = w.Report(files);
        const QByteArray end = "</table></center></body></html>\r\n";
        QVERIFY(page.startsWith("\xEF\xBB\xBF") && page.mid(3).startsWith(ascii.chopped(end.size())));
        QVERIFY(page.endsWith(u">夜🎵</font></td>\r\n</tr>\r\n\r\n"_s.toUtf8().append(end)));
        w.UseLayout(u";"_s);
        const QByteArray plain = w.Report(files);
        QVERIFY(plain == EncodeText(DecodeText(plain)));
    }

    void LeavesTheOldReport()
    {
        World w;
        w.Target = w.Put(u"old.htm"_s, "old");
        w.Run.Stopped = [] { return true; };
        QVERIFY(w.Write({w.In(u"a.mp3"_s)}));
        w.Run.Stopped = [] { return false; };
        SetFileAttributes(w.Target, AttributeReadOnly);
        QVERIFY(w.Write({}));
        QByteArray content;
        QVERIFY(ReadWholeFile(w.Target, content) && content == "old");
        SetFileAttributes(w.Target, AttributeNormal);
        w.Target = w.In(u"gone\\x.htm"_s);
        QVERIFY(!w.Write({w.In(u"a.mp3"_s)}));
        FolderEntries entries;
        QVERIFY(ListFolder(w.Folder, entries) && entries.Files == QStringList{u"old.htm"_s} &&
                entries.Folders.isEmpty());
    }

    void SettingsKeepTheirForm()
    {
        const World w;
        const QString path = w.In(u"a.rpt"_s);
        ReportSettings record;
        QVERIFY(!LoadReportSettings(path, record) && SaveReportSettings(path, DefaultReportSettings()));
        QByteArray bytes;
        QVERIFY(ReadWholeFile(path, bytes));
        QByteArray expected(2, '\0');
        expected += QByteArray("Report Title").leftJustified(200) +
                    QByteArray("Report Description").leftJustified(1000) + QByteArray(6, '\xFF') + "Auto1  3  0  ";
        for (char number = 1; number <= 21; ++number)
            expected.append(number).append('\0');
        for (char number = 1; number <= 21; ++number)
            expected += QByteArray(2, number == 2 ? '\0' : '\xFF');
        expected += ":  \xFF\xFF" + QByteArray(6, '\0') + QByteArray("Verdana").leftJustified(20) + QByteArray(2, '\0');
        QCOMPARE(bytes, expected + "\xFF\xFF");
        // Every byte of a text, numbers out of range, and what stands behind the record.
        for (qsizetype i = 0; i < 256; ++i)
            bytes[300 + i] = static_cast<char>(i);
        bytes.replace(0, 2, "\x05\x80").replace(1221, 2, "\xFF\x7F").append("tail");
        QByteArray again;
        QVERIFY(WriteWholeFile(path, bytes) && LoadReportSettings(path, record) && SaveReportSettings(path, record));
        QVERIFY(ReadWholeFile(path, again) && again == bytes);
        QVERIFY(WriteWholeFile(path, bytes.first(10)) && LoadReportSettings(path, record));
        QVERIFY(record.Title.Trimmed() == u"Report T"_s && record.ColumnOrder[0] == 0 && !record.Summary);
        QVERIFY(WriteWholeFile(path, {}) && LoadReportSettings(path, record) && record.Title.Trimmed().isEmpty());
    }
};

QTEST_MAIN(ReportsTest)
#include "ReportsTest.moc"
