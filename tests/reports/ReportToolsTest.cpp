#include "media/MP3File.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "reports/WriteReport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace
{
/// Put behind a page: fetches every link, and leaves what it found in the title.
const QByteArray examiner = R"(<script>
const sizes = [...document.links].map(link => {
    const request = new XMLHttpRequest();
    try { request.open('GET', link.href, false); request.send(); return request.responseText.length; }
    catch (error) { return -1; }
});
const count = name => document.querySelectorAll(name).length;
document.title = JSON.stringify([document.title, count('script'), count('img'), count('tr'), count('td'), ...sizes]);
</script>)";
const QString hostile = u"<script>document.title='run'</script><img src=x onerror=\"document.title='run'\">&amp;\"'"_s;
} // namespace

/// Programs that people open a report with.
class ReportToolsTest : public QObject
{
    Q_OBJECT

    const QTemporaryDir folder;
    const QString song = Path(u"song.mp3"_s);

    static QByteArray Run(const QString &program, const QStringList &arguments)
    {
        QProcess process;
        process.start(program, arguments);
        return process.waitForFinished(120'000) && process.exitCode() == 0 ? process.readAllStandardOutput()
                                                                           : QByteArray();
    }

    QString Path(const QString &name) const { return FromHostPath(folder.path()) + u'\\' + name; }

    QByteArray Report(const QStringList &files, ReportSettings settings) const
    {
        Clock time;
        time.Now = [] { return QDateTime(QDate(2026, 1, 2), QTime(13, 4, 5)); };
        QByteArray report;
        WriteReport(Path(u"report"_s), files, settings, Progress(), time);
        ReadWholeFile(Path(u"report"_s), report);
        return report;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QByteArray content;
        QVERIFY(ReadWholeFile(FromHostPath(QStringLiteral(TEST_DATA "/tag-id3v24.mp3")), content));
        QVERIFY(WriteWholeFile(song, content));
        MP3File tags;
        tags.SetFrame("TIT2", hostile);
        tags.SetFrame("TPE1", u"one\r\ntwo\t\u202Ethree"_s + QString(10'000, u'x'));
        tags.WriteTags(song, MP3File::TagChange::Remove, MP3File::TagChange::Write);
    }

    /// The temporary folder itself cannot remove a file whose name is no text.
    void cleanupTestCase()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder.path().toStdString(), ignored);
    }

    void BrowserShowsThePage()
    {
        const QString browser = QStandardPaths::findExecutable(u"chromium"_s);
        if (browser.isEmpty())
            QSKIP("There is no chromium on this machine to open a page with.");
        QStringList files{song, Path(u"gone.mp3"_s)};
        EnsureFolder(Path(u"sub dir"_s));
        for (const QString &name :
             {u"it's 100% #1 R&B &copy.wma"_s, u"sub dir\\夜 é.wma"_s, u"<img src=x>.wma"_s, u"a:b?c=d&lt;\"`.wma"_s,
              u"back\uF05Cslash.wma"_s, u"byte\uF0E9 line\uF00A.wma"_s}) {
            files.append(Path(name));
            QVERIFY(WriteWholeFile(files.back(), "1234567"));
        }
        // Two pages in one, so that the browser starts once.
        ReportSettings settings = DefaultReportSettings();
        QByteArray pages = Report(files, settings);
        settings.SaveRel = false;
        pages += Report(files, settings);
        QVERIFY(WriteWholeFile(Path(u"page.htm"_s), pages + examiner));
        const QTemporaryDir profile;
        QStringList arguments =
            u"--headless --no-sandbox --disable-gpu --disable-quic --no-first-run --disable-background-networking "
            "--disable-component-update --disable-sync --allow-file-access-from-files --dump-dom"_s.split(u' ');
        arguments +=
            {u"--user-data-dir="_s + profile.path(), QUrl::fromLocalFile(folder.filePath(u"page.htm"_s)).toString()};
        const QByteArray dom = Run(browser, arguments);
        const qsizetype start = dom.indexOf("<title>") + 7;
        // The heading cells make a row of their own, and so does the summary.
        const QByteArray found = dom.mid(start, dom.indexOf("</title>") - start);
        const QJsonArray numbers = QJsonDocument::fromJson(found).array();
        const QList<int> expected{1, 0, 20, 2 * (20 * 9 + 1)};
        QVERIFY2(numbers.size() == 5 + 16 && numbers[0] == u""_s, found.constData());
        for (qsizetype i = 0; i < 20; ++i) {
            const qsizetype file = (i - 4) % 8;
            if (i < 4 || file >= 2)
                QVERIFY2(numbers[i + 1] == (i < 4 ? expected[i] : 7), found.constData());
            else if (file == 0)
                QVERIFY2(numbers[i + 1].toInt() > 1000, found.constData());
        }
    }

    void ReaderOfDelimitedTextSeesTheCells()
    {
        const QString python = QStandardPaths::findExecutable(u"python3"_s);
        if (python.isEmpty())
            QSKIP("There is no python3 on this machine to read delimited text.");
        ReportSettings settings = DefaultReportSettings();
        settings.RepType = 1;
        settings.SpaceAligned = settings.Summary = false;
        settings.CommaDelimited = true;
        Report({song, Path(u"gone.mp3"_s)}, settings);
        const QString script = u"import csv, json, sys\n"
                               "print(json.dumps(list(csv.reader(open(sys.argv[1], newline='', encoding='utf-8')))))"_s;
        const QByteArray output = Run(python, {u"-c"_s, script, folder.filePath(u"report"_s)});
        const QJsonArray lines = QJsonDocument::fromJson(output).array();
        QCOMPARE(lines.size(), 6);
        const QJsonArray cells = lines[3].toArray();
        // What stands behind the last delimiter is empty.
        QVERIFY2(cells.size() == 20 && cells[0] == u"Song"_s && cells[15] == hostile, output.constData());
        QCOMPARE(cells[16].toString(), u"one  two \u202Ethree"_s + QString(10'000, u'x'));
        QCOMPARE(lines[4].toArray()[2], QJsonValue(u"Not found!"_s));
    }
};

QTEST_GUILESS_MAIN(ReportToolsTest)
#include "ReportToolsTest.moc"
