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
document.title = JSON.stringify({rows: count('tr'), cells: count('td'), scripts: count('script'),
                                 images: count('img'), before: document.title, sizes: sizes});
</script>)";
const QString hostile = u"<script>document.title='run'</script><img src=x onerror=\"document.title='run'\">&amp;\"'"_s;
} // namespace

/// Programs that people open a report with.
class ReportToolsTest : public QObject
{
    Q_OBJECT

    const QTemporaryDir folder;
    const QString inside = FromHostPath(folder.path());
    Clock time;
    Progress progress;

    static QByteArray Run(const QString &program, const QStringList &arguments)
    {
        QProcess process;
        process.start(program, arguments);
        return process.waitForFinished(120'000) && process.exitCode() == 0 ? process.readAllStandardOutput()
                                                                           : QByteArray();
    }

    QString Path(const QString &name) const { return inside + u'\\' + name; }

private Q_SLOTS:
    void initTestCase()
    {
        time.Now = [] { return QDateTime(QDate(2026, 1, 2), QTime(13, 4, 5)); };
        QByteArray song;
        QVERIFY(ReadWholeFile(FromHostPath(QStringLiteral(TEST_DATA "/tag-id3v24.mp3")), song));
        QVERIFY(WriteWholeFile(Path(u"song.mp3"_s), song));
        MP3File tags;
        tags.SetFrame("TIT2", hostile);
        tags.SetFrame("TPE1", u"one\r\ntwo\t\u202Ethree"_s + QString(10'000, u'x'));
        tags.WriteTags(Path(u"song.mp3"_s), MP3File::TagChange::Remove, MP3File::TagChange::Write);
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
        QStringList files{Path(u"song.mp3"_s), Path(u"gone.mp3"_s)};
        for (const QString &name :
             {u"it's 100% #1 R&B &copy.wma"_s, u"sub dir\\夜 é.wma"_s, u"<img src=x>.wma"_s, u"a:b?c=d&lt;\"`.wma"_s,
              u"back\uF05Cslash.wma"_s, u"byte\uF0E9 line\uF00A.wma"_s}) {
            EnsureFolder(Path(name).section(u'\\', 0, -2));
            QVERIFY(WriteWholeFile(Path(name), "1234567"));
            files.append(Path(name));
        }
        // Two pages in one, so that the browser starts once.
        QByteArray pages;
        for (const bool relative : {true, false}) {
            ReportSettings settings = DefaultReportSettings();
            settings.SaveRel = relative;
            QVERIFY(WriteReport(Path(u"page.htm"_s), files, settings, progress, time));
            QByteArray page;
            QVERIFY(ReadWholeFile(Path(u"page.htm"_s), page));
            pages += page;
        }
        QVERIFY(WriteWholeFile(Path(u"page.htm"_s), pages + examiner));
        const QTemporaryDir profile;
        QStringList arguments =
            u"--headless --no-sandbox --disable-gpu --disable-quic --no-first-run --disable-background-networking "
            "--disable-component-update --disable-sync --allow-file-access-from-files --dump-dom"_s.split(u' ');
        arguments +=
            {u"--user-data-dir="_s + profile.path(), QUrl::fromLocalFile(folder.filePath(u"page.htm"_s)).toString()};
        const QByteArray dom = Run(browser, arguments);
        const qsizetype start = dom.indexOf("<title>") + 7;
        const QByteArray title = dom.mid(start, dom.indexOf("</title>") - start);
        const QJsonObject found = QJsonDocument::fromJson(title).object();
        // The heading cells make a row of their own, and so does the summary.
        const qsizetype rows = files.size() + 2;
        const qsizetype cells = 20 * (rows - 1) + 1;
        QVERIFY2(found[u"rows"_s] == 2 * rows && found[u"cells"_s] == 2 * cells, title.constData());
        QVERIFY2(found[u"scripts"_s] == 1 && found[u"images"_s] == 0 && found[u"before"_s] == u""_s, title.constData());
        const QJsonArray sizes = found[u"sizes"_s].toArray();
        QCOMPARE(sizes.size(), 2 * files.size());
        for (qsizetype i = 0; i < sizes.size(); ++i) {
            const qsizetype file = i % files.size();
            QVERIFY2(file < 2 || sizes[i] == 7, qPrintable(files[file]));
        }
        QVERIFY(sizes[0].toInt() > 1000 && sizes[files.size()].toInt() > 1000);
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
        const QStringList files{Path(u"song.mp3"_s), Path(u"gone.mp3"_s)};
        QVERIFY(WriteReport(Path(u"cells.csv"_s), files, settings, progress, time));
        const QString script = u"import csv, json, sys\n"
                               "with open(sys.argv[1], newline='', encoding='utf-8') as file:\n"
                               "    print(json.dumps(list(csv.reader(file))))"_s;
        const QByteArray output = Run(python, {u"-c"_s, script, folder.filePath(u"cells.csv"_s)});
        const QJsonArray lines = QJsonDocument::fromJson(output).array();
        QCOMPARE(lines.size(), 6);
        const QJsonArray song = lines[3].toArray();
        // What stands behind the last delimiter is empty.
        QVERIFY2(song.size() == 20 && song[0] == u"Song"_s && song[15] == hostile, output.constData());
        QCOMPARE(song[16].toString(), u"one  two \u202Ethree"_s + QString(10'000, u'x'));
        QCOMPARE(lines[4].toArray()[2], QJsonValue(u"Not found!"_s));
    }
};

QTEST_GUILESS_MAIN(ReportToolsTest)
#include "ReportToolsTest.moc"
