#include "platform/Drives.h"
#include "support/HostNames.h"

#include <QDirIterator>
#include <QFile>
#include <QImage>
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

    /// Between the header and the empty line before the four panels; what went wrong when there is no such listing.
    QByteArrayList RowLines() const
    {
        QByteArrayList lines = Output.first(std::max(Output.indexOf("\n\npanel 1: "), qsizetype(0))).split('\n');
        if (Status != 0 || !Errors.isEmpty() || lines.takeFirst() != headerLine)
            return {"status " + QByteArray::number(Status) + ": " + Errors + Output};
        return lines;
    }

    QByteArray Panels() const { return Output.mid(Output.indexOf("\n\npanel 1: ") + 2); }

    /// The names of the rows joined by "|", a missing one in brackets; a row that has not thirteen values as it is.
    QByteArray Names() const
    {
        QByteArrayList names;
        for (const QByteArray &line : RowLines()) {
            const QByteArrayList values = line.split('\t');
            const bool whole = values.size() == 13 && (values[12] == "1" || values[12] == "2");
            names.append(!whole ? line : values[12] == "2" ? '(' + values[0] + ')' : values[0]);
        }
        return names.join('|');
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
    void ListsAMixedPlaylist()
    {
        const World world;
        for (const QString &name : {u"cbr128-mpeg1-joint-info.mp3"_s, u"vbr-mpeg1-joint-xing.mp3"_s, u"tagged.ogg"_s,
                                    u"stereo-16bit.wav"_s, u"tagged.wma"_s, u"text.mp3"_s, u"empty.mp3"_s})
            world.Take(name);
        world.Write("list.m3u",
                    "#EXTM3U\r\ncbr128-mpeg1-joint-info.mp3\r\nvbr-mpeg1-joint-xing.mp3\r\ngone.mp3\r\n"
                    "tagged.ogg\r\nstereo-16bit.wav\r\ntagged.wma\r\nempty.mp3\r\ntext.mp3\r\nnotes.txt\r\n");
        const auto before = world.Tree();
        const Listing listing = world.Inspect({u"list.m3u"_s});
        QCOMPARE(world.Tree(), before);
        const QByteArray folder = FromHostPath(world.Path({})).toUtf8();
        const QByteArrayList rows{
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
        QCOMPARE(listing.Panels(), QByteArray("panel 1: Total: 8\npanel 2: 0:06\npanel 3: 173 Kb\npanel 4: \n"));
    }

    void ListsFoldersAndFiles()
    {
        const World world;
        QByteArrayList files{"b.WAV", "c.txt"};
        QByteArrayList shown{"b.WAV"};
        if (NamesHoldAnything()) {
            files += {"tab\there.wma", "esc\x1b[31m.wma", "line\nbreak.wma", "bad\xff\xfe.wma"};
            shown += {"esc?[31m.wma", "line?break.wma", "tab?here.wma"};
        }
        for (const QByteArray &name : std::as_const(files))
            world.Write(name, "12345");
        const QByteArrayList names = world.Inspect({u"."_s}).Names().split('|');
        QCOMPARE(names.size(), files.size() - 1);
        for (const QByteArray &name : std::as_const(shown))
            QVERIFY2(names.contains(name), names.join('|').constData());
        QCOMPARE(world.Inspect({world.Path(u"b.WAV"_s)}).Names(), QByteArray("b.WAV"));
        QCOMPARE(world.Inspect({u"c.txt"_s}).Names(), QByteArray());
    }

    void DrawsAPicture()
    {
        const World world;
        world.Take(u"tagged.ogg"_s);
        world.Write("list.m3u", "tagged.ogg\r\ngone.mp3\r\n");
        auto expected = world.Tree();
        // The picture's size, and a colour below the middle: that of the empty list.
        const std::tuple<QStringList, QSize, QRgb> requests[] = {
            {{u"--window=Id3Info"_s, u"--page=General/Info"_s, u"--select=1"_s, u"--size=900x600"_s}, {900, 600}, 0},
            {{}, {1000, 640}, 0xffffffff},
            {{u"--size=723x401"_s, u"--style=dark"_s}, {723, 401}, 0xff1e1f22},
            {{u"--size=500x300"_s, u"--scale=2"_s, u"--mode=compact"_s}, {1000, 600}, 0xff400000}};
        for (const auto &[arguments, size, colour] : requests) {
            const Listing listing = world.Inspect(QStringList{u"--picture"_s, u"p.png"_s, u"list.m3u"_s} + arguments);
            QCOMPARE(listing.Names(), QByteArray("tagged.ogg|(gone.mp3)"));
            QFile file(world.Path(u"p.png"_s));
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray png = file.readAll();
            const QImage picture = QImage::fromData(png, "PNG");
            QCOMPARE(picture.size(), size);
            QVERIFY(colour == 0 || picture.pixel(size.width() / 2, size.height() * 2 / 3) == colour);
            expected.insert(file.fileName(), png);
            QCOMPARE(world.Tree(), expected);
        }
    }

    void Refuses()
    {
        const World world;
        world.Write("list.m3u", "gone.mp3\r\n");
        QDir(world.Path({})).mkdir(u"folder"_s);
        const QString list = u"list.m3u"_s;
        QList<QStringList> requests{
            {},
            {QString()},
            {list, list},
            {u"gone.m3u"_s},
            {u"go\nne.m3u"_s},
            {u"list.m3u/x.mp3"_s},
            {u"--picture"_s, QString(), list},
            {u"--picture"_s, u"gone/p.png"_s, list},
            {u"--picture"_s, u"folder"_s, list},
        };
        for (const QString &option : {u"--colour"_s, u"--size=100"_s, u"--size=99x100"_s, u"--size=100x8193"_s,
                                      u"--size=200x200x200"_s, u"--scale=0"_s, u"--style=grey"_s, u"--mode="_s,
                                      u"--select=0"_s, u"--window=Nothing"_s, u"--page=Info"_s})
            requests.append({option, list});
        if (Link("loop.m3u", world.Path(u"loop.m3u"_s)))
            requests.append({u"loop.m3u"_s});
        const auto before = world.Tree();
        for (const QStringList &arguments : std::as_const(requests)) {
            const Listing listing = world.Inspect(arguments);
            const QByteArray told = listing.Errors.chopped(1);
            QVERIFY2(listing.Status == 1 && told.startsWith("playlist-inspect: ") && listing.Errors == told + '\n' &&
                         !told.contains('\n'),
                     qPrintable(arguments.join(u' ') + u" was told "_s + QString::fromUtf8(listing.Errors)));
            QCOMPARE(world.Tree(), before);
        }
    }

    void ReadsAnyPlaylist()
    {
        // The playlist and the names that it gives.
        const std::pair<QByteArray, QByteArray> cases[] = {
            {"", ""},
            {"#EXTM3U\n#EXTINF:1,a.mp3\nnotes.txt\nlist.m3u\n\n \n", ""},
            {Garbage(70'001) + "\r\na.wma\r\n" + Garbage(100'000), "a.wma"},
            {QByteArray(5000, '\0') + "\ra\0.wma\ra.wma\r"_ba + QByteArray(5000, '\0'), "(a?.wma)|a.wma"},
            {"a.wma\r\n" + QByteArray("x/").repeated(1 << 19) + "y.mp3\r\na.wma", "a.wma|(y.mp3)|a.wma"},
            {"a.wma\rgone.mp3\r\r#\ra.wma", "a.wma|(gone.mp3)|a.wma"},
            {"\xef\xbb\xbf夜.wma\r\né.wma\r\n", "夜.wma|é.wma"},
            {"🎵👩‍👩‍👧.wma\ne\xcc\x81.wma\né.wma\n", "🎵👩‍👩‍👧.wma|e\xcc\x81.wma|é.wma"},
            {"\xe9.wma\r\n\x80 \x93q\x94.wma\r\n", "é.wma|(€ “q”.wma)"},
            {"x.mp3.wav\nvanished.wma\nself.wma\n", "(x.mp3.wav)|(x.mp3.wav)|(vanished.wma)|(self.wma)"},
            {"folder.mp3\nfolder.mp3/\n.\nitself.mp3.m3u\n./itself.mp3.m3u\n",
             "(folder.mp3)|()|itself.mp3.m3u|itself.mp3.m3u"},
            {"\\\\server\\share\\x.mp3\nq:\\x.mp3\n/dev/null/x.mp3\n", "(x.mp3)|(x.mp3)|(x.mp3)"},
        };
        const World world;
        for (const char *name : {"a.wma", "é.wma", "e\xcc\x81.wma", "夜.wma", "🎵👩‍👩‍👧.wma"})
            world.Write(name, "12345");
        QDir(world.Path({})).mkdir(u"folder.mp3"_s);
        // Where no links can be made the names are missing all the same.
        Link("nothing.wma", world.Path(u"vanished.wma"_s));
        Link("self.wma", world.Path(u"self.wma"_s));
        for (const auto &[content, names] : cases) {
            world.Write("itself.mp3.m3u", content);
            QCOMPARE(world.Inspect({u"itself.mp3.m3u"_s}).Names(), names);
        }
    }

    void FollowsTheDrivesOfTheSettings()
    {
        if (!NamesHoldAnything())
            QSKIP("A host with drives of its own takes none from the settings.");
        const World world;
        world.Write("../home/Vantrel Playlist Editor20.ini", "[Drives]\nd=" + world.Temporary.path().toUtf8() + '\n');
        world.Write("one.wma", "12345");
        world.Write("list.m3u", "D:\\music\\one.wma\r\n");
        const QByteArrayList rows = world.Inspect({u"list.m3u"_s}).RowLines();
        QCOMPARE(rows, QByteArrayList{"one.wma\t0:00\t5 Bytes\td:\\music\\\t\t\t\t\t\t0\t5\t1\t1"});
        world.Write("list.m3u", "one.wma\r\n");
        QCOMPARE(world.Inspect({u"list.m3u"_s}).RowLines(), rows);
    }

    void ListsTheDemo()
    {
        const QByteArray names = World().Inspect({u"" DEMO_FOLDER "/demo.m3u"_s}).Names();
        QVERIFY2(names.count('|') >= 11 && names.count('(') == 1, names.constData());
    }
};

QTEST_GUILESS_MAIN(InspectTest)
#include "InspectTest.moc"
