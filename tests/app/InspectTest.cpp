#include "platform/Drives.h"
#include "support/HostNames.h"

#include <QDirIterator>
#include <QFile>
#include <QImageReader>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <filesystem>
#include <fstream>
#include <random>

using namespace Qt::StringLiterals;

namespace
{
constexpr int deadline = 120'000;
const QByteArray headerLine =
    "FileName\tTime\tSize\tPath\tID\tLayer\tBitrate\tSamplerate\tMode\tHiddenLen\tHiddenSize\t"
    "Original Order\tSmallIcon";

struct Listing {
    /// -1 for a crash or a hang.
    int Status = -1;
    QByteArray Output;
    QByteArray Errors;

    QList<QByteArray> Lines() const
    {
        QList<QByteArray> lines = Output.split('\n');
        if (lines.takeLast().isEmpty() && lines.value(0) == headerLine)
            return lines;
        return {};
    }

    /// Between the header and the empty line before the four panels.
    QList<QByteArray> RowLines() const
    {
        const QList<QByteArray> lines = Lines();
        const qsizetype end = lines.size() - 5;
        if (end < 1 || !lines[end].isEmpty() || !lines[end + 1].startsWith("panel 1: "))
            return {"no listing"};
        return lines.mid(1, end - 1);
    }

    /// The names of the rows, a missing one in brackets; a row that has not thirteen values as it is.
    QList<QByteArray> Names() const
    {
        QList<QByteArray> names;
        for (const QByteArray &line : RowLines()) {
            const QList<QByteArray> values = line.split('\t');
            const bool whole = values.size() == 13 && (values[12] == "1" || values[12] == "2");
            names.append(!whole ? line : values[12] == "2" ? '(' + values[0] + ')' : values[0]);
        }
        return names;
    }
};

/// A path by its bytes, UTF-8 on Windows.
std::filesystem::path HostName(const QByteArray &bytes)
{
    return std::u8string(bytes.begin(), bytes.end());
}

/// A user's home and a folder of music, and the program started in the latter.
struct World {
    QTemporaryDir Temporary;

    World()
    {
        QDir(Temporary.path()).mkpath(u"home"_s);
        QDir(Temporary.path()).mkpath(u"music"_s);
    }

    /// The temporary folder itself cannot remove a file whose name is no text.
    ~World()
    {
        std::error_code ignored;
        std::filesystem::remove_all(HostName(Temporary.path().toUtf8()), ignored);
    }
    World(const World &) = delete;
    World &operator=(const World &) = delete;

    QString Path(const QString &name) const { return Temporary.filePath(u"music/"_s + name); }

    /// Names are bytes, so that any name can be made.
    void Write(const QByteArray &name, const QByteArray &content) const
    {
        const QByteArray path = Path({}).toUtf8() + name;
        std::ofstream file(HostName(path), std::ios::binary);
        file << content.toStdString() << std::flush;
        if (!file)
            qFatal("cannot write the test's file");
    }

    void Take(const QString &name) const
    {
        if (!QFile::copy(u"" TEST_DATA "/"_s + name, Path(name)))
            qFatal("cannot copy the test's file");
    }

    Listing Inspect(const QStringList &arguments) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString &name : {u"QT_QPA_PLATFORM"_s, u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s})
            environment.remove(name);
        for (const QString &name : {u"HOME"_s, u"XDG_CONFIG_HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_CACHE_HOME"_s,
                                    u"XDG_STATE_HOME"_s, u"TMPDIR"_s})
            environment.insert(name, Temporary.filePath(u"home"_s));
        // A folder that is missing, and must stay so.
        environment.insert(u"XDG_RUNTIME_DIR"_s, Temporary.filePath(u"home/runtime"_s));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(Path({}));
        // Lines end as on the host.
        process.start(u"" INSPECT_PROGRAM ""_s, arguments, QIODevice::ReadOnly | QIODevice::Text);
        Listing listing;
        if (process.waitForFinished(deadline) && process.exitStatus() == QProcess::NormalExit)
            listing.Status = process.exitCode();
        listing.Output = process.readAllStandardOutput();
        listing.Errors = process.readAllStandardError();
        return listing;
    }

    /// Everything there is below the temporary folder: files with their contents, folders and links with none.
    QMap<QString, QByteArray> Tree() const
    {
        QMap<QString, QByteArray> tree;
        QDirIterator entries(Temporary.path(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                             QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            QFile file(entries.next());
            const bool isFile = entries.fileInfo().isFile() && file.open(QIODevice::ReadOnly);
            tree.insert(file.fileName(), isFile ? file.readAll() : QByteArray());
        }
        return tree;
    }
};

QByteArray Garbage(std::size_t size)
{
    std::mt19937 generator(20020701);
    QByteArray bytes;
    while (bytes.size() < static_cast<qsizetype>(size))
        bytes.append(static_cast<char>(generator() & 0xFFU));
    return bytes;
}

bool Link(const char *target, const QString &path)
{
    std::error_code error;
    std::filesystem::create_symlink(target, HostName(path.toUtf8()), error);
    return !error;
}

} // namespace

/// The command-line program as scripts see it: what it prints and writes, and its exit status.
class InspectTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ListsAMixedPlaylist();
    void ListsFoldersAndFiles();
    void DrawsAPicture();
    void Refuses_data();
    void Refuses();
    void ReadsAnyPlaylist_data();
    void ReadsAnyPlaylist();
    void FollowsTheDrivesOfTheSettings();
    void SurvivesFolderLoops();
    void ListsTheDemo();
};

void InspectTest::ListsAMixedPlaylist()
{
    const World world;
    for (const QString &name : {u"cbr128-mpeg1-joint-info.mp3"_s, u"vbr-mpeg1-joint-xing.mp3"_s, u"tagged.ogg"_s,
                                u"stereo-16bit.wav"_s, u"tagged.wma"_s, u"text.mp3"_s, u"empty.mp3"_s})
        world.Take(name);
    world.Write("list.m3u", "#EXTM3U\r\ncbr128-mpeg1-joint-info.mp3\r\nvbr-mpeg1-joint-xing.mp3\r\ngone.mp3\r\n"
                            "tagged.ogg\r\nstereo-16bit.wav\r\ntagged.wma\r\nempty.mp3\r\ntext.mp3\r\nnotes.txt\r\n");
    const auto before = world.Tree();
    const Listing listing = world.Inspect({u"list.m3u"_s});
    QCOMPARE(listing.Status, 0);
    QCOMPARE(listing.Errors, QByteArray());
    QCOMPARE(world.Tree(), before);

    const QByteArray folder = FromHostPath(world.Path({})).toUtf8();
    const QList<QByteArray> rows{
        "cbr128-mpeg1-joint-info.mp3\t0:02\t36 Kb\t" + folder +
            "\tMPEG 1.0\tLayer III\t128 Kbit\t44100 Hz\tJoint Stereo\t2\t36361\t1\t1",
        "vbr-mpeg1-joint-xing.mp3\t0:02\t22 Kb\t" + folder +
            "\tMPEG 1.0\tLayer III\t79 VBR\t44100 Hz\tJoint Stereo\t2\t22722\t2\t1",
        "gone.mp3\t0:00\t0 Bytes\t" + folder + "\t\t\t\t\t\t\t\t\t2",
        "tagged.ogg\t0:00\t10,845 Bytes\t" + folder + "\tOGG Vorbis\t\t\t\t\t0\t10845\t4\t1",
        "stereo-16bit.wav\t0:00\t43 Kb\t" + folder + "\tWAV File\t\t\t\t\t0\t44144\t5\t1",
        "tagged.wma\t0:00\t19 Kb\t" + folder + "\t\t\t\t\t\t0\t19846\t6\t1",
        "empty.mp3\t0:00\t0 Bytes\t" + folder + "\t\t\t\t\t\t\t\t\t2",
        "text.mp3\t0:00\t760 Bytes\t" + folder + "\t\t\t\t\t\t0\t760\t8\t1",
    };
    QCOMPARE(listing.RowLines(), rows);
    // A missing row counts with the numbers of the row before it: 2 s and 22722 bytes, 0 s and 19846 bytes.
    const QList<QByteArray> panels{"", "panel 1: Total: 8", "panel 2: 0:06", "panel 3: 173 Kb", "panel 4: "};
    QCOMPARE(listing.Lines().mid(9), panels);
}

void InspectTest::ListsFoldersAndFiles()
{
    const World world;
    QList<QByteArray> files{"b.WAV", "c.txt"};
    QList<QByteArray> shown{"b.WAV"};
    if (NamesHoldAnything()) {
        files += {"tab\there.wma", "esc\x1b[31m.wma", "line\nbreak.wma", "bad\xff\xfe.wma"};
        shown += {"esc?[31m.wma", "line?break.wma", "tab?here.wma"};
    }
    for (const QByteArray &name : std::as_const(files))
        world.Write(name, "12345");
    const Listing folder = world.Inspect({u"."_s});
    QCOMPARE(folder.Status, 0);
    const QList<QByteArray> names = folder.Names();
    QCOMPARE(names.size(), files.size() - 1);
    for (const QByteArray &name : std::as_const(shown))
        QVERIFY2(names.contains(name), name.constData());
    QCOMPARE(world.Inspect({world.Path(u"b.WAV"_s)}).Names(), QList<QByteArray>{"b.WAV"});
    QCOMPARE(world.Inspect({u"c.txt"_s}).Names(), QList<QByteArray>());
}

void InspectTest::DrawsAPicture()
{
    const World world;
    world.Take(u"tagged.ogg"_s);
    world.Write("list.m3u", "tagged.ogg\r\ngone.mp3\r\n");
    auto expected = world.Tree();
    const QList<std::pair<QStringList, QSize>> requests{
        {{u"--window=Id3Info"_s, u"--page=General/Info"_s, u"--select=1"_s, u"--size=900x600"_s}, {900, 600}},
        {{}, {1000, 640}},
        {{u"--size=723x401"_s}, {723, 401}},
        {{u"--size=300x200"_s, u"--scale=2"_s}, {600, 400}}};
    for (const auto &[arguments, size] : requests) {
        const Listing listing = world.Inspect(QStringList{u"--picture"_s, u"p.png"_s, u"list.m3u"_s} + arguments);
        QCOMPARE(listing.Status, 0);
        QCOMPARE(listing.Names(), (QList<QByteArray>{"tagged.ogg", "(gone.mp3)"}));
        QImageReader reader(world.Path(u"p.png"_s));
        QCOMPARE(reader.format(), QByteArray("png"));
        const QImage picture = reader.read();
        QCOMPARE(picture.size(), size);
        QFile file(world.Path(u"p.png"_s));
        QVERIFY(file.open(QIODevice::ReadOnly));
        expected.insert(file.fileName(), file.readAll());
        QCOMPARE(world.Tree(), expected);
    }
}

void InspectTest::Refuses_data()
{
    QTest::addColumn<QStringList>("arguments");
    const QString list = u"list.m3u"_s;
    QTest::newRow("nothing") << QStringList{};
    QTest::newRow("empty path") << QStringList{QString()};
    QTest::newRow("two paths") << QStringList{list, list};
    QTest::newRow("unknown option") << QStringList{u"--colour"_s, list};
    QTest::newRow("missing path") << QStringList{u"gone.m3u"_s};
    QTest::newRow("missing path with a line break") << QStringList{u"go\nne.m3u"_s};
    QTest::newRow("file as a folder") << QStringList{u"list.m3u/x.mp3"_s};
    QTest::newRow("link to itself") << QStringList{u"loop.m3u"_s};
    QTest::newRow("picture without a name") << QStringList{u"--picture"_s, QString(), list};
    for (const QString &option :
         {u"--size=100"_s, u"--size=99x100"_s, u"--size=100x8193"_s, u"--size=200x200x200"_s, u"--scale=0"_s,
          u"--style=grey"_s, u"--mode="_s, u"--select=0"_s, u"--window=Nothing"_s, u"--page=Info"_s})
        QTest::newRow(qPrintable(option)) << QStringList{option, list};
    QTest::newRow("picture into no folder") << QStringList{u"--picture"_s, u"gone/p.png"_s, list};
    QTest::newRow("picture onto a folder") << QStringList{u"--picture"_s, u"folder"_s, list};
}

void InspectTest::Refuses()
{
    QFETCH(const QStringList, arguments);
    const World world;
    world.Write("list.m3u", "gone.mp3\r\n");
    if (!Link("loop.m3u", world.Path(u"loop.m3u"_s)) && arguments.contains(u"loop.m3u"_s))
        QSKIP("No symbolic links can be made here.");
    QDir(world.Path({})).mkdir(u"folder"_s);
    const auto before = world.Tree();
    const Listing listing = world.Inspect(arguments);
    QCOMPARE(listing.Status, 1);
    QVERIFY2(listing.Errors.startsWith("playlist-inspect: ") && listing.Errors.endsWith('\n') &&
                 listing.Errors.count('\n') == 1,
             listing.Errors.constData());
    QCOMPARE(world.Tree(), before);
}

void InspectTest::ReadsAnyPlaylist_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QList<QByteArray>>("names");
    using Names = QList<QByteArray>;
    const QByteArray megabyte = QByteArray("x/").repeated(1 << 19);
    QTest::newRow("zero bytes") << QByteArray() << Names{};
    QTest::newRow("comments and other types")
        << QByteArray("#EXTM3U\n#EXTINF:1,a.mp3\nnotes.txt\nlist.m3u\n\n \n") << Names{};
    QTest::newRow("garbage around an entry") << Garbage(70'001) + "\r\na.wma\r\n" + Garbage(100'000) << Names{"a.wma"};
    QTest::newRow("zeros around an entry")
        << QByteArray(5000, '\0') + "\ra\0.wma\ra.wma\r"_ba + QByteArray(5000, '\0') << Names{"(a?.wma)", "a.wma"};
    QTest::newRow("line of a megabyte") << "a.wma\r\n" + megabyte + "y.mp3\r\na.wma"
                                        << Names{"a.wma", "(y.mp3)", "a.wma"};
    QTest::newRow("CR alone") << QByteArray("a.wma\rgone.mp3\r\r#\ra.wma") << Names{"a.wma", "(gone.mp3)", "a.wma"};
    QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbf"
                                                   "a.wma\r\n\xc3\xa9.wma\r\n")
                                     << Names{"a.wma", "é.wma"};
    QTest::newRow("UTF-8") << QByteArray("é.wma\n夜.wma\n") << Names{"é.wma", "夜.wma"};
    QTest::newRow("Windows-1252") << QByteArray("\xe9.wma\r\n\x80 \x93q\x94.wma\r\n") << Names{"é.wma", "(€ “q”.wma)"};
    QTest::newRow("two extensions") << QByteArray("x.mp3.wav\n") << Names{"(x.mp3.wav)", "(x.mp3.wav)"};
    QTest::newRow("folder") << QByteArray("folder.mp3\nfolder.mp3/\n.\n") << Names{"(folder.mp3)", "()"};
    QTest::newRow("itself") << QByteArray("itself.mp3.m3u\n./itself.mp3.m3u\n")
                            << Names{"itself.mp3.m3u", "itself.mp3.m3u"};
    QTest::newRow("emoji") << QByteArray("🎵👩‍👩‍👧.wma\n") << Names{"🎵👩‍👩‍👧.wma"};
    QTest::newRow("combining marks") << QByteArray("e\xcc\x81.wma\n\xc3\xa9.wma\n")
                                     << Names{"e\xcc\x81.wma", "\xc3\xa9.wma"};
    QTest::newRow("link whose file vanished")
        << QByteArray("vanished.wma\na.wma\n") << Names{"(vanished.wma)", "a.wma"};
    QTest::newRow("network, device and drive") << QByteArray("\\\\server\\share\\x.mp3\nq:\\x.mp3\n/dev/null/x.mp3\n")
                                               << Names{"(x.mp3)", "(x.mp3)", "(x.mp3)"};
}

void InspectTest::ReadsAnyPlaylist()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QList<QByteArray>, names);
    const World world;
    for (const char *name : {"a.wma", "\xc3\xa9.wma", "e\xcc\x81.wma", "夜.wma", "🎵👩‍👩‍👧.wma"})
        world.Write(name, "12345");
    QDir(world.Path({})).mkdir(u"folder.mp3"_s);
    // Where no link can be made the name is missing all the same.
    Link("nothing.wma", world.Path(u"vanished.wma"_s));
    world.Write("itself.mp3.m3u", content);
    const Listing listing = world.Inspect({u"itself.mp3.m3u"_s});
    QCOMPARE(listing.Status, 0);
    QCOMPARE(listing.Errors, QByteArray());
    QCOMPARE(listing.Names(), names);
}

void InspectTest::FollowsTheDrivesOfTheSettings()
{
    if (!NamesHoldAnything())
        QSKIP("A host with drives of its own takes none from the settings.");
    const World world;
    world.Write("../home/Vantrel Playlist Editor20.ini", "[Drives]\nd=" + world.Temporary.path().toUtf8() + '\n');
    world.Write("one.wma", "12345");
    world.Write("list.m3u", "D:\\music\\one.wma\r\n");
    const auto before = world.Tree();
    const QList<QByteArray> rows = world.Inspect({u"list.m3u"_s}).RowLines();
    QCOMPARE(rows, QList<QByteArray>{"one.wma\t0:00\t5 Bytes\td:\\music\\\t\t\t\t\t\t0\t5\t1\t1"});
    QCOMPARE(world.Tree(), before);
}

void InspectTest::SurvivesFolderLoops()
{
    const World world;
    QDir(world.Path({})).mkpath(u"a/b"_s);
    world.Write("a/b/one.wma", "12345");
    if (!Link("..", world.Path(u"a/b/up"_s)) || !Link("self.wma", world.Path(u"self.wma"_s)))
        QSKIP("No symbolic links can be made here.");
    QCOMPARE(world.Inspect({u"."_s}).Names(), QList<QByteArray>{"one.wma"});
    world.Write("list.m3u", "a/b/up/b/one.wma\nself.wma\n");
    QCOMPARE(world.Inspect({u"list.m3u"_s}).Names(), (QList<QByteArray>{"one.wma", "(self.wma)"}));
}

void InspectTest::ListsTheDemo()
{
    const QString demo = u"" DEMO_FOLDER "/demo.m3u"_s;
    const QList<QByteArray> names = World().Inspect({demo}).Names();
    QVERIFY(names.size() >= 12);
    QCOMPARE(std::count_if(names.begin(), names.end(), [](const QByteArray &name) { return name.startsWith('('); }), 1);
}

QTEST_GUILESS_MAIN(InspectTest)
#include "InspectTest.moc"
