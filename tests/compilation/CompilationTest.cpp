#include "compilation/BuildCompilation.h"
#include "compilation/CompilationFiles.h"
#include "compilation/DiscCapacity.h"
#include "compilation/DiscIcon.h"
#include "platform/Drives.h"
#include "platform/Files.h"

#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{
/// A program's folder and a compilation of two files, and builds of it at a clock that stands still.
struct Disc {
    QTemporaryDir Temporary;
    CompilationPlan Plan;
    QStringList Files;
    QStringList Entries;
    ReportSettings Record = DefaultReportSettings();
    Progress Run;
    Clock Time;
    QStringList Told;

    Disc()
    {
        const QString folder = FromHostPath(Temporary.path());
        Plan = {folder + u"\\Mix", u"Mix"_s, folder + u"\\program", true, true, true, true, true, true, {}, "icon"};
        Files = {Put(u"a b.wma"_s, "1"), Put(u"sub\\c.wma"_s, "22")};
        EnsureFolder(Plan.ProgramFolder);
        WriteWholeFile(Plan.ProgramFolder + u"\\VTLMP3FB.exe", "browser");
        Time.Now = [] { return QDateTime(QDate(2026, 1, 2), QTime(13, 4, 5)); };
        Run.SetText = [this](const QString &text) { Told.append(text); };
        Run.SetValue = [this](int value) { Told.append(QString::number(value)); };
    }

    QString In(const QString &name) const { return Plan.Folder + u'\\' + name; }
    QString Put(const QString &name, const QByteArray &content) const
    {
        EnsureFolder(In(name).section(u'\\', 0, -2));
        WriteWholeFile(In(name), content);
        return In(name);
    }
    QByteArray Content(const QString &name) const
    {
        QByteArray content;
        ReadWholeFile(In(name), content);
        return content;
    }
    QString Listed() const
    {
        FolderEntries entries;
        ListFolder(Plan.Folder, entries);
        return entries.Files.join(u' ');
    }
    bool Build() { return BuildCompilation(Plan, Files, Entries, Record, Run, Time); }
};
} // namespace

class CompilationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void BuildsADisc()
    {
        Disc disc;
        disc.Record.SaveRel = false;
        QVERIFY(disc.Build());
        QCOMPARE(disc.Listed(), u"a b.wma autorun.inf MP3Index.htm playlist.m3u setup.ico vtlmp3fb.exe"_s);
        QCOMPARE(disc.Content(u"autorun.inf"_s), "[autorun]\r\nicon=setup.ico\r\nopen=start playlist.m3u\r\n"
                                                 "open=start vtlmp3fb.exe\r\n"_ba);
        QCOMPARE(disc.Content(u"playlist.m3u"_s), "a b.wma\r\nsub\\c.wma\r\n"_ba);
        QVERIFY(disc.Content(u"vtlmp3fb.exe"_s) == "browser" && disc.Content(u"setup.ico"_s) == "icon");
        const QByteArray page = disc.Content(u"MP3Index.htm"_s);
        QVERIFY(page.contains("<title>Mix - Created: 13:04:05 [01-02-2026] ") && page.contains("<a href=sub/c.wma>"));
        QVERIFY(!page.contains("Report Description"));
        QVERIFY(disc.Entries.size() == 7 && disc.Entries.first() == disc.In(u"sub"_s));
        QCOMPARE(
            disc.Told.join(u' '),
            u"1 Copying MP3 browser Software... 2 Creating a table of MP3 Data... 1 2 0 3 Creating the Autorun file... "
            "Creating CD playlist... 4 Building list of files to be copied... 5 Saving your settings... 0"_s);
    }

    void MakesWhatIsAskedFor()
    {
        Disc disc;
        disc.Plan.AutoIcon = disc.Plan.AutoBigList = disc.Plan.AutoIndex = disc.Plan.CopyBrowser = false;
        QVERIFY(disc.Build() && disc.Listed() == u"a b.wma MP3Index.htm playlist.m3u"_s);
        disc.Plan.AutoIcon = disc.Plan.AutoIndex = true;
        disc.Plan.IconFile = disc.Put(u"sub\\own.ico"_s, "own");
        QVERIFY(disc.Build() && disc.Content(u"setup.ico"_s) == "own");
        QCOMPARE(disc.Content(u"autorun.inf"_s), "[autorun]\r\nicon=setup.ico\r\n"_ba);
        Disc bare;
        bare.Plan.CreateAutorun = bare.Plan.CreateTable = false;
        QVERIFY(bare.Build() && bare.Listed() == u"a b.wma vtlmp3fb.exe"_s);
    }

    void GivesBackWhatAFailedBuildReplaced()
    {
        // A folder of that name cannot be replaced; an icon that is missing fails nothing.
        for (const char *name : {"vtlmp3fb.exe", "autorun.inf", "MP3Index.htm", "setup.ico"}) {
            Disc disc;
            disc.Put(u"playlist.m3u"_s, "mine");
            EnsureFolder(disc.In(QLatin1StringView(name)));
            const bool built = disc.Build();
            QCOMPARE(built, QByteArrayView(name) == "setup.ico");
            QVERIFY(built || (disc.Listed() == u"a b.wma playlist.m3u"_s && disc.Content(u"playlist.m3u"_s) == "mine"));
        }
        Disc disc;
        disc.Run.Stopped = [] { return true; };
        QVERIFY(!disc.Build() && disc.Listed() == u"a b.wma"_s);
    }

    void ChecksTheSize()
    {
        const Disc disc;
        constexpr int smallest = 0;
        const auto check = [&](int number) { return CheckCompilationFiles(disc.Plan.Folder + u'\\', number); };
        QCOMPARE(check(smallest).Files, disc.Files);
        QVERIFY(check(smallest).State == CompilationState::Fits && DiscNames().size() == 16);
        QVERIFY(CheckCompilationFiles(disc.In(u"gone"_s), smallest).State == CompilationState::Empty);
        for (int number = 10; number < 15; ++number)
            QVERIFY(check(number).State == CompilationState::Unknown);
        QVERIFY(check(15).State == CompilationState::TooLarge && check(15).Excess == 1048576 + 3);
        QFile large(ToHostPath(disc.In(u"large.WAV"_s)));
        QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(104857600 - 1048576 - 4));
        QVERIFY(check(smallest).State == CompilationState::Fits && check(smallest).Files.size() == 3);
        QVERIFY(large.resize(104857600 - 1048576 - 3) && check(smallest).State == CompilationState::TooLarge);
        QVERIFY(large.resize(2147483647) && check(smallest).State == CompilationState::Unknown && large.remove());
    }

    void MakesAnIconFile()
    {
        QImage picture(100, 100, QImage::Format_ARGB32);
        picture.fill(Qt::transparent);
        QPainter(&picture).fillRect(0, 0, 50, 100, Qt::red);
        const QByteArray icon = IconFileContent(picture);
        // Four entries; the last one lies at the end as PNG.
        QCOMPARE(icon.first(22), QByteArray("\0\0\1\0\4\0\x10\x10\0\0\1\0\x20\0\x68\4\0\0\x46\0\0\0", 22));
        const qsizetype png = icon.indexOf("\x89PNG");
        QCOMPARE(QImage::fromData(icon.mid(png)).size(), QSize(256, 256));
        // The lowest row of 16 pixels, then the first row of the mask behind all rows.
        QCOMPARE(icon.mid(70 + 40, 4), QByteArray("\0\0\xFF\xFF", 4));
        QCOMPARE(icon.mid(70 + 40 + 60, 4), QByteArray(4, '\0'));
        QCOMPARE(icon.mid(70 + 40 + 1024, 4), QByteArray("\0\xFF\0\0", 4));
        QVERIFY(IconFileContent({}).isEmpty());
    }
};

QTEST_MAIN(CompilationTest)
#include "CompilationTest.moc"
