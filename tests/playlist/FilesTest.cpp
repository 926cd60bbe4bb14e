#include "platform/Files.h"
#include "platform/CodePage.h"
#include "platform/Drives.h"
#include "playlist/FileRecord.h"
#include "playlist/Grid.h"
#include "playlist/M3UFile.h"
#include "playlist/NamingFormat.h"
#include "support/HostNames.h"
#include "text/EntryFinder.h"
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
            u"\uF0E9.ogg"_s, u"new\uF00Aline.ogg"_s, u"夜.ogg"_s,      u".\uF05Cdot.ogg"_s};
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

    void LinesBeyondAFullListAreNotHeld()
    {
        QVERIFY(WriteWholeFile(In(u"long.m3u"_s), QByteArray("a.mp3\n").repeated(40'000)));
        QStringList read;
        QVERIFY(ReadM3UFile(In(u"long.m3u"_s), read));
        QCOMPARE(read.size(), Grid::MaxRows + 1);
    }

    void EntriesFindTheirFiles()
    {
        QVERIFY(EnsureFolder(In(u"Rock\\Abba"_s)) && EnsureFolder(In(u"Pop"_s)) && EnsureFolder(In(u"e\u0301"_s)));
        for (const QString &name : {u"Rock\\Abba\\Mamma Mia.mp3"_s, u"Rock\\50% #1+.mp3"_s, u"Rock\\%41.mp3"_s,
                                    u"Rock\\A.ogg"_s, u"e\u0301\\\u00E5.mp3"_s, u"Rock\\Gr\u00FC\u00DFe.mp3"_s})
            MakeFile(name);
        const QString address = QString::fromLatin1(ToUrl(In(u"Rock\\Abba\\Mamma Mia.mp3"_s)).toEncoded());
        const bool differ = !PathExists(In(u"ROCK"_s));
        const QString mamma = u"Rock\\Abba\\Mamma Mia.mp3"_s;
        // The entry, what is found below the root; nothing where the names of another case are names of the file.
        const std::pair<QString, QString> cases[] = {
            {mamma, mamma},
            {u"ROCK\\ABBA\\mamma mia.MP3"_s, differ ? mamma : u"ROCK\\ABBA\\mamma mia.MP3"_s},
            {In(u"Rock\\Abba\\Mamma%20Mia.mp3"_s), mamma},
            {u"Rock%2FAbba%5CMamma%20Mia.mp3"_s, mamma},
            {u"Rock\\Abba\\Mamma%2"_s, QString()},
            {u"Rock\\50% #1+.mp3"_s, u"Rock\\50% #1+.mp3"_s},
            {u"Rock\\50%25%20%231+.mp3"_s, u"Rock\\50% #1+.mp3"_s},
            {u"Rock\\50%%20#1+.mp3"_s, u"Rock\\50% #1+.mp3"_s},
            {u"Rock\\%41.mp3"_s, u"Rock\\%41.mp3"_s},
            {u"Rock\\%41.ogg"_s, u"Rock\\A.ogg"_s},
            {u"Rock\\A%00.ogg"_s, QString()},
            {u"Rock\\Gr%C3%BC%c3%9fe.mp3"_s, u"Rock\\Gr\u00FC\u00DFe.mp3"_s},
            {u"Rock\\Gr%FC%DFe.mp3"_s, u"Rock\\Gr\u00FC\u00DFe.mp3"_s},
            {u"\u00E9\\a\u030A.mp3"_s, u"e\u0301\\\u00E5.mp3"_s},
            {address, mamma},
            {u'\\' + QString(address).replace(u"file:///"_s, u"FILE://localhost/"_s), mamma},
            {QString(address).replace(u"file:///"_s, u"file:/"_s).replace(u"%20"_s, u" "_s), mamma},
            {u"file://"_s + In(mamma).replace(u'\\', u'/'), mamma},
            {u"Rock\\%41.og%67"_s, u"Rock\\A.ogg"_s},
            {u"Rock\\.\\"_s + QString(3000, u'\\') + u"a.ogg", u"Rock\\A.ogg"_s},
            {u"http://host/Rock/A.ogg"_s, QString()},
            {u"Rock"_s, u"Rock"_s},
            {u"x:\\gone.mp3"_s, QString()},
            {u"gone:\\gone.mp3"_s, QString()},
            {u"a\\"_s.repeated(16000) + u"a.mp3", QString()},
        };
        for (const auto &[entry, found] : cases) {
            EntryFinder finder;
            const QString path = finder.Find(entry, root);
            QVERIFY2(path == (found.isEmpty() ? found : In(found)), qPrintable(entry.left(80) + u" gave " + path));
        }
        if (!differ)
            return;
        // Of several spellings the exact one, else the first in the order of the folder; the file tells which folder.
        QVERIFY(EnsureFolder(In(u"rock"_s)) && EnsureFolder(In(u"rOCK"_s)));
        for (const QString &name : {u"rOCK\\b.mp3"_s, u"rOCK\\B.mp3"_s, u"rOCK\\e\u0301.wav"_s, u"rOCK\\\u00C9.wav"_s})
            MakeFile(name);
        EntryReader reader(root);
        for (const auto &[entry, found] : {std::pair{u"rock\\b.mp3"_s, u"rOCK\\b.mp3"_s},
                                           {u"ROCK\\b.MP3"_s, u"rOCK\\B.mp3"_s},
                                           {u"ROCK\\a.OGG"_s, u"Rock\\A.ogg"_s},
                                           {u"rOCK\\\u00E9.wav"_s, u"rOCK\\\u00C9.wav"_s},
                                           {u"Rock\\gone.wav"_s, u"Rock\\gone.wav"_s}}) {
            const FileRecord record = reader.Analyse(entry);
            QCOMPARE(record.Folder + record.FileName, In(found));
            QCOMPARE(record.Size, found.contains(u"gone"_s) ? 0 : 1);
        }
        // Each of thirty parts may mean three folders.
        EntryFinder finder;
        QVERIFY(finder.Find(u"file:///"_s + In(u"ROCK\\..\\"_s.repeated(30) + u"gone.wav"_s), root).isEmpty());
    }

    void ReadsStreamData()
    {
        // MPEG 1 Layer III, 44100 Hz, joint stereo: 128 and 192 kbit/s.
        const QByteArray frame128 = QByteArray("\xFF\xFB\x90\x64", 4) + QByteArray(413, '\0');
        const QByteArray frame192 = QByteArray("\xFF\xFB\xB0\x64", 4) + QByteArray(622, '\0');
        const std::pair<QByteArray, QString> cases[] = {{frame128.repeated(96), u"128 Kbit"_s},
                                                        {QByteArray(frame128 + frame192).repeated(48), u"160 VBR"_s}};
        for (const auto &[content, rate] : cases) {
            const FileRecord record = AnalyseFile(MakeFile(u"a.MP3"_s, content));
            QVERIFY(record.Valid);
            QCOMPARE(record.Folder + record.FileName, In(u"a.MP3"_s));
            QCOMPARE(record.Size, content.size());
            QCOMPARE(record.Length, 3);
            QCOMPARE(QStringList({record.FileType, record.LayerText, record.BitrateText, record.SampleRateText,
                                  record.ModeText}),
                     QStringList({u"MPEG 1.0"_s, u"Layer III"_s, rate, u"44100 Hz"_s, u"Joint Stereo"_s}));
        }
    }

    void TellsTypes()
    {
        QVERIFY(EnsureFolder(In(u"folder.mp3"_s)) && EnsureFolder(In(u"folder.ogg"_s)));
        // The content; "none" for a file that is not made.
        const std::tuple<QString, QByteArray, bool, QString> cases[] = {
            {u"a.Ogg"_s, "x", true, u"OGG Vorbis"_s},    {u"a.wav"_s, "", true, u"WAV File"_s},
            {u"a.vqf"_s, "x", true, u"VQF File"_s},      {u"a.wma"_s, "x", true, QString()},
            {u"noextension"_s, "xyz", true, QString()},  {u"a.mp3"_s, "no audio", false, QString()},
            {u"empty.mp3"_s, "", false, QString()},      {u"folder.mp3"_s, "none", false, QString()},
            {u"folder.ogg"_s, "none", false, QString()}, {u"gone.mp3"_s, "none", false, QString()},
            {u"gone.ogg"_s, "none", false, QString()},   {u"ogg"_s, "x", true, QString()},
        };
        for (const auto &[name, content, valid, type] : cases) {
            const bool made = content != "none";
            const FileRecord record = AnalyseFile(made ? MakeFile(name, content) : In(name));
            QCOMPARE(record.Valid, valid);
            QCOMPARE(record.FileType, type);
            QCOMPARE(record.Size, made ? content.size() : 0);
            QCOMPARE(record.Length, 0);
            QCOMPARE(record.Folder + record.FileName, In(name));
            QCOMPARE(record.LayerText + record.BitrateText + record.SampleRateText + record.ModeText, QString());
        }
    }

    void RowsKnowTheirFolders()
    {
        QCOMPARE(AnalyseFile(In(u"a.wav\\a.wav"_s)).Folder, root + u"\\\\");
        QCOMPARE(AnalyseFile(u"\\\\server\\Share\\a.ogg"_s).Folder, u"\\\\server\\Share\\"_s);
        QVERIFY(SetCurrentDirectory(root));
        QCOMPARE(AnalyseFile(u"sub\\gone.mp3"_s).Folder, In(u"sub\\"_s));
        // A run of rows: neighbours in one folder, names that are cut out of it, a drive, a root.
        QVERIFY(EnsureFolder(In(u"f.wav"_s)));
        MakeFile(u"f.wav\\b.wav"_s, "abc");
        MakeFile(u"b.wav"_s, "ab");
        const QString base = root + u'\\';
        RowFolders folders(root);
        const std::tuple<QString, QString, qint64> cases[] = {
            {u"b.wav"_s, base, 2},
            {u"gone.wav"_s, base, 0},
            {u"f.wav\\b.wav"_s, base + u"f.wav\\", 3},
            {u"f.wav\\f.wav"_s, base, 0},
            {u"f.wav\\e.wav"_s, base + u"f.wav\\", 0},
            {u"f.wav\\c:d.wav"_s, u"f.wav\\"_s, 0},
            {u"f.wav\\b.wav"_s, base + u"f.wav\\", 3},
            {base.sliced(2) + u"b.wav", base, 2},
            {u"\\gone"_s, base.first(2) + u'\\', 0},
            {u"Q:\\x\\y:z.wma"_s, u"q:\\x\\"_s, 0},
            {u"lists\\l"_s, base + u"ists\\", 0},
            {u"lists\\k"_s, base + u"lists\\", 0},
        };
        for (const auto &[path, folder, size] : cases) {
            const FileRecord record = AnalyseFile(path, folders);
            QCOMPARE(record.Folder, folder);
            QCOMPARE(record.Size, size);
        }
    }

    void NamingFormatsExpand()
    {
        QString growing;
        for (int i = 9; i >= 1; --i)
            growing += u"%"_s.append(QString::number(i + 1)).repeated(100) + u'\\';
        const QString title = u"c:\\test\\mp3s\\artist\\title\\"_s;
        // Format, path, file name.
        const QStringList cases[] = {
            {u"%0-%1"_s, title.chopped(1), u"title-artist.m3u"_s},
            {QString(), title, u"-title-artist-mp3s-test-c-----.m3u"_s},
            {u"c:\\a/b"_s, title, u"cab.m3u"_s},
            {u" %9 "_s, u"c:\\a\\"_s, QString()},
            {u"%0"_s, u"c:"_s, u"c.m3u"_s},
            {u"%0"_s, QString(), QString()},
            {u"%DATE %TIME %date"_s, title, u"03-09-2004 17-05-08 %date.m3u"_s},
            {u"%10"_s, u"a\\b\\c\\d\\e\\f\\g\\h\\i\\j\\k\\l\\"_s, u"l0.m3u"_s},
            {u"%1"_s, u"c:\\up\\is %2\\"_s, u"is up.m3u"_s},
            {u"%1"_s, u"c:\\up\\is %1\\"_s, u"is.m3u"_s},
            {u" : %1 "_s, title, u" title.m3u"_s},
            {u"%1 ♫"_s, u"c:\\夜\\"_s, u"夜 ♫.m3u"_s},
            {u"%1"_s, growing, QString()},
        };
        const QDateTime now(QDate(2004, 3, 9), QTime(17, 5, 8));
        for (const QStringList &texts : cases)
            QCOMPARE(ExpandNamingFormat(texts[0], texts[1], now), texts[2]);
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
        const auto tell = [&told](const QString &folder) {
            told.append(folder);
            return true;
        };
        WalkFolder(root + u'\\', FileTypes(), list, true, tell);
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
