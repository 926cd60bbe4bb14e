#include "platform/Files.h"
#include "platform/CodePage.h"
#include "platform/Drives.h"
#include "playlist/FileRecord.h"
#include "playlist/M3UFile.h"
#include "support/HostNames.h"
#include "text/FileLists.h"
#include "text/FolderWalk.h"
#include "text/PathText.h"
#include "text/TextFiles.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <filesystem>

using namespace Qt::StringLiterals;

class FilesTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory;
    QString startDirectory;
    // Inside form, without a trailing backslash.
    QString root;

    QString In(const QString &name) const { return root + u'\\' + name; }
    QString MakeFile(const QString &name, const QByteArray &content = "x") const
    {
        if (!WriteWholeFile(In(name), content))
            qFatal("cannot write %s", qPrintable(name));
        return In(name);
    }

private Q_SLOTS:
    void init()
    {
        directory = std::make_unique<QTemporaryDir>();
        root = FromHostPath(directory->path());
        startDirectory = CurrentDirectory();
    }
    void cleanup()
    {
        SetCurrentDirectory(startDirectory);
        SetDriveMappings({});
        // QTemporaryDir cannot delete a name that is not valid UTF-8.
        if (NamesHoldAnything())
            std::filesystem::remove_all(directory->path().toStdString());
    }

    void ReadsPlaylists()
    {
        const QStringList two{u"a.mp3"_s, u"b.ogg"_s};
        QByteArray garbage;
        for (int i = 0; i < 4096; ++i)
            garbage += static_cast<char>(i * 7 % 256);
        const std::pair<QByteArray, QStringList> cases[] = {
            {"", {}},
            {"a.mp3\rb.ogg", two},
            {"\r\r\n\na.mp3\r\r\nb.ogg\n\r", two},
            {"#EXTM3U\r\n#EXTINF:1,a.mp3\r\na.mp3\r\n#x.ogg\r\nb.ogg", two},
            {"a.mp3\nc.flac\nmp3\nx.m3u\nb.ogg\n", two},
            {"C:\\Music\\A.MP3\r\n", {u"c:\\Music\\A.MP3"_s}},
            {"x.mp3.wav\r\nx.wav.wav\r\n", {u"x.mp3.wav"_s, u"x.mp3.wav"_s, u"x.wav.wav"_s}},
            {"  a.mp3.d\\..mp\\x ", {u"  a.mp3.d\\..mp\\x "_s}},
            {"\xEF\xBB\xBF\xE5\xA4\x9C.wma\r\n", {u"夜.wma"_s}},
            {"caf\xE9 \x80.mp3\r\n", {u"café €.mp3"_s}},
            {garbage, {}},
            {QByteArray("\0\0\0\na.mp3\nb.ogg\n\0", 17), two},
        };
        for (const auto &[content, entries] : cases) {
            QStringList list{u"before"_s};
            QCOMPARE(ReadM3UFile(MakeFile(u"list.m3u"_s, content), list), !entries.isEmpty());
            QCOMPARE(list, QStringList{u"before"_s} + entries);
            QVERIFY(!ReadM3UFile(In(u"missing.m3u"_s), list) && !ReadM3UFile(root, list));
        }
    }

    void SavedPlaylistsFindTheirFiles()
    {
        SetDriveMappings({{u'd', u"/mnt/d"_s}});
        QVERIFY(EnsureFolder(In(u"sub"_s)));
        QStringList paths{u"d:\\Rock\\夜 é Я.mp3"_s, u"x:\\away\\a.mp3"_s, u"z:\\new\uF00Aline\uF00D\\a.mp3"_s};
        const qsizetype missing = paths.size();
        QStringList names{
            u"#1.ogg"_s,     u"sub\\#2.ogg"_s,       u" blank .ogg"_s, u"\uFEFFmark.ogg"_s, u"back\uF05Cslash.ogg"_s,
            u"\uF0E9.ogg"_s, u"new\uF00Aline.ogg"_s, u"夜.ogg"_s};
        if (NamesHoldAnything())
            names += {u"C: and d.ogg"_s, u"sub\\B:c.ogg"_s, u"C:d.ogg"_s};
        for (const QString &name : std::as_const(names))
            paths.append(MakeFile(name));
        QStringList lines = paths;
        MakePathsRelative(lines, root);
        QVERIFY(WritePlaylistFile(In(u"list.m3u"_s), lines) && SetCurrentDirectory(root));
        QStringList read;
        QVERIFY(ReadM3UFile(u"list.m3u"_s, read));
        QCOMPARE(read.size(), paths.size());
        for (qsizetype i = 0; i < paths.size(); ++i) {
            const FileRecord record = AnalyseFile(read[i]);
            QCOMPARE(record.Folder + record.FileName, paths[i]);
            QCOMPARE(record.Size, i < missing ? 0 : 1);
        }
    }

    void LinesReadBack()
    {
        const QString file = In(u"lines.txt"_s);
        const QStringList lines{u"one"_s, QString(), u" é夜 "_s, QString()};
        QVERIFY(WriteLinesToFile(file, lines));
        QByteArray content;
        QVERIFY(ReadWholeFile(file, content));
        QCOMPARE(content, EncodeText(lines.join(u"\r\n"_s) + u"\r\n"));
        QStringList read;
        QVERIFY(ReadLinesFromFile(read, file) && !ReadLinesFromFile(read, In(u"missing.txt"_s)));
        QCOMPARE(read, lines);
        QVERIFY(!WriteLinesToFile(In(u"missing\\x.txt"_s), lines));
    }

    void WalksFolders()
    {
        QVERIFY(EnsureFolder(In(u"b\\deep"_s)) && EnsureFolder(In(u"A"_s)));
        QVERIFY(QFile::link(directory->path(), ToHostPath(In(u"b\\loop"_s))));
        QStringList expected;
        for (const QString &name : {u"2.MP3"_s, u"z.mp3"_s, u"1.wav"_s, u"A\\x.wma"_s, u"b\\1.mp3"_s, u"b\\0.ogg"_s,
                                    u"b\\deep\\.mp3"_s, u"b\\deep\\\uF0E9\uF05C.mp3"_s})
            expected.append(MakeFile(name));
        MakeFile(u"cover.jpg"_s);
        MakeFile(u"mp3"_s);

        QStringList list;
        QStringList told;
        WalkFolder(root + u'\\', FileTypes(), list, true, [&told](const QString &folder) { told.append(folder); });
        QCOMPARE(list, expected);
        QCOMPARE(told, QStringList({root + u'\\', In(u"A"_s), In(u"b"_s), In(u"b\\deep"_s)}));

        list.clear();
        WalkFolder(root, {u"*.wav"_s, u"?.mp3"_s}, list, false);
        WalkFolder(In(u"missing"_s), FileTypes(), list, true);
        ListFolderFiles(root, u"*.jpg"_s, list);
        QCOMPARE(list, QStringList({expected[2], In(u"?.mp3"_s), In(u"?.mp3"_s), In(u"*.jpg"_s)}));
    }

    void TellsWhatStandsAtPaths()
    {
        const QString file = MakeFile(u"A.Tar.MP3"_s);
        QStringList paths{file, In(u"gone.mp3"_s), root + u'\\', u"x:\\away.mp3"_s, QString()};
        QVERIFY(!RemoveMissingPaths(paths) && RemoveMissingPaths(paths));
        QCOMPARE(paths, QStringList({file, root + u'\\', QString()}));

        const PathInfo info = AnalysePath(file);
        QVERIFY(info.Valid && info.IsFile && !info.IsFolder && info.Extension == u".mp3"_s);
        const PathInfo folder = AnalysePath(root + u'\\');
        QVERIFY(folder.Valid && folder.IsFolder && !folder.IsFile && folder.Path == root);
        QVERIFY(!AnalysePath(In(u"gone.mp3"_s)).Valid);

        QVERIFY(RenameFilePath(In(u"b"_s), file) && !PathExists(file) && CopyFilePath(In(u"b"_s), file));
        QVERIFY(DeleteFilePath(In(u"b"_s)) && !PathExists(In(u"b"_s)) && PathExists(file));
    }
};

QTEST_GUILESS_MAIN(FilesTest)
#include "FilesTest.moc"
