#include "platform/PlatformTests.h"

#include "platform/Arguments.h"
#include "platform/CodePage.h"
#include "platform/Host.h"

#include <QTest>

#include <filesystem>
#include <fstream>

using namespace Qt::StringLiterals;

namespace
{
// A slash between two names: the one character that no name holds.
const QByteArray Names = "plain.mp3/back\\slash.mp3/\\start/end\\/c:\\x.mp3/a:b.mp3/Song: x.mp3/http:/# 1.mp3/"
                         "new\nline/re\rturn/ blanks /%41?&'\"<>|*.mp3/.../caf\xE9.mp3/\xFF\xFE.mp3/"
                         "\xC3\xA9 e\xCC\x81 \xF0\x9F\x8E\xB5.mp3/cut \xE2\x82/overlong \xC0\xAF \xE0\x80\xAF/"
                         "edges \xC2\x80\xDF\xBF\xE0\xA0\x80\xF0\x90\x80\x80/surrogate \xED\xA0\x80/beyond "
                         "\xF4\x90\x80\x80/nonchar \xEF\xBF\xBF/\xEF\xBB\xBFmark/"
                         "real F05C \xEF\x81\x9C.mp3/real F00A \xEF\x80\x8A/real F0E9 \xEF\x83\xA9/"
                         "\xEF\x81\x9C\\\xEF\x81\x9C \xE9\xEF\x83\xA9/other private \xEF\x80\xA2 \xEE\x80\x80";
} // namespace

class DrivesTest : public FolderTest
{
    Q_OBJECT

    static void MapDrives()
    {
        SettingsStore settings;
        settings.Read = [](const QString &section, const QString &key) {
            const QMap<QString, QString> folders{
                {u"d"_s, u"/mnt/d"_s}, {u"e"_s, u"/mnt//d/deep/"_s}, {u"f"_s, u"/mnt/d"_s},    {u"g"_s, u"relative"_s},
                {u"h"_s, u"/"_s},      {u"y"_s, u"/mnt/y"_s},        {u"z"_s, u"/elsewhere"_s}};
            return section == u"Drives"_s ? folders.value(key) : QString();
        };
        LoadDriveMappings(settings);
    }

    static void CheckLine(const QString &path, const QByteArray &bytes)
    {
        const QString line = ToPlaylistLine(path);
        QVERIFY(!line.contains(u'\n') && !line.contains(u'\r') && !line.startsWith(u'#'));
        QVERIFY(!EncodeText(line).startsWith("\xEF\xBB\xBF"));
        // Without mapped folders lines are read on a shorter way.
        for (const bool mapped : {false, true}) {
            mapped ? MapDrives() : SetDriveMappings({});
            const QString read = FromPlaylistLine(DecodeText(EncodeText(line)), CurrentDirectory());
            const QByteArray reached = ToHostBytes(read);
            QCOMPARE(reached.startsWith('/') ? reached : ToHostBytes(CurrentDirectory()) + '/' + reached, bytes);
        }
    }

private Q_SLOTS:
    void initTestCase()
    {
        MapDrives();
        // Unusable mappings are passed over.
        QCOMPARE(DriveLetters(), (QStringList{u"d:"_s, u"e:"_s, u"f:"_s, u"h:"_s, u"y:"_s, u"z:"_s}));
    }
    void cleanupTestCase() { SetDriveMappings({}); }
    void cleanup()
    {
        QVERIFY(SetCurrentDirectory(u"z:\\"_s));
        QCOMPARE(CurrentDirectory(), u"z:"_s);
        // Qt does not reach every name.
        std::filesystem::remove_all(directory->path().toStdString());
    }

    void LongestMappedFolderWins()
    {
        const std::pair<QByteArray, QString> cases[] = {
            {"/mnt/d/Music/a.mp3", u"d:\\Music\\a.mp3"_s},
            {"/mnt/d/deep/a.mp3", u"e:\\a.mp3"_s},
            {"/mnt/d/deeper", u"d:\\deeper"_s},
            {"/mnt/dx", u"z:\\mnt\\dx"_s},
            {"/mnt/d", u"d:"_s},
            {"/", u"z:\\"_s},
            {"sub/a.mp3", u"sub\\a.mp3"_s},
        };
        for (const auto &[host, inside] : cases) {
            QCOMPARE(FromHostBytes(host), inside);
            QCOMPARE(ToHostBytes(inside), host);
        }
        QCOMPARE(ToHostBytes(u"Z:\\x"_s), QByteArray("/x"));
        QCOMPARE(ToHostBytes(u"E:x"_s), QByteArray("/mnt/d/deep/x"));
    }

    void UnmappedDriveStays()
    {
        for (const QString &path : {u"q:\\Music\\a.mp3"_s, u"\\\\server\\share\\a.mp3"_s}) {
            QVERIFY(ToHostBytes(path).isEmpty());
            QCOMPARE(ToHostPath(path), path);
            QCOMPARE(ToPlaylistLine(path), path);
            QCOMPARE(FromPlaylistLine(path, folder), path);
            QVERIFY(!ExamineFile(path).Exists && !WriteWholeFile(path, "x") && FileAttributes(path) == -1);
        }
    }

    void LinesAreReadAndWritten()
    {
        // The line that somebody wrote in d:\lists, the path, the line as it is written.
        const std::tuple<QString, QString, QString> cases[] = {
            {u"D:\\Music\\A.MP3"_s, u"d:\\Music\\A.MP3"_s, u"/mnt/d/Music/A.MP3"_s},
            {u"D:/Music/a.mp3"_s, u"d:\\Music\\a.mp3"_s, u"/mnt/d/Music/a.mp3"_s},
            {u"/x/a\\b.mp3"_s, u"z:\\x\\a\uF05Cb.mp3"_s, u"/x/a\\b.mp3"_s},
            {u"..\\sub\\a.mp3"_s, u"..\\sub\\a.mp3"_s, u"../sub/a.mp3"_s},
            {u"../sub/a.mp3"_s, u"..\\sub\\a.mp3"_s, u"../sub/a.mp3"_s},
            {u"./a.mp3"_s, u"a.mp3"_s, u"a.mp3"_s},
            {u".\\#1 hits\\a.mp3"_s, u"#1 hits\\a.mp3"_s, u"./#1 hits/a.mp3"_s},
            {u"Song: a.mp3"_s, u"d:\\lists\\Song: a.mp3"_s, u"/mnt/d/lists/Song: a.mp3"_s},
            {u"./a:b.mp3"_s, u"d:\\lists\\a:b.mp3"_s, u"/mnt/d/lists/a:b.mp3"_s},
            {u".//a.mp3"_s, u"a.mp3"_s, u"a.mp3"_s},
            {u"\\Music/a.mp3"_s, u"d:\\Music\\a.mp3"_s, u"/mnt/d/Music/a.mp3"_s},
            {u"E:a.mp3"_s, u"e:\\a.mp3"_s, u"/mnt/d/deep/a.mp3"_s},
            {u"Q:"_s, u"q:"_s, u"q:"_s},
            {u"Z:\\//a\\\\b.mp3"_s, u"z:\\a\\\\b.mp3"_s, u"/a//b.mp3"_s},
            {u"d:\\\\a.mp3"_s, u"d:\\\\a.mp3"_s, u"/mnt/d//a.mp3"_s},
            {QString(), QString(), QString()},
        };
        for (const auto &[line, path, written] : cases) {
            QCOMPARE(FromPlaylistLine(line, u"d:\\lists"_s), path);
            QCOMPARE(ToPlaylistLine(path), written);
        }
        QCOMPARE(FromPlaylistLine(u"\\a.mp3"_s, u"\\\\server\\share\\lists"_s), u"\\\\server\\share\\a.mp3"_s);
        for (const QString &address : {u"http://host/a.mp3"_s, u"s0+x-9.y://host/a.mp3"_s})
            QCOMPARE(FromPlaylistLine(address, folder), address);
        QCOMPARE(ToPlaylistLine(u"a:c.mp3"_s), u"./a:c.mp3"_s);
        // Other programs find the file by the line.
        QCOMPARE(ToPlaylistLine(u"z:\\\uF0EF\uF081\uF09C"_s), u"/\uF05C"_s);
        QCOMPARE(ToPlaylistLine(u"sub\\a\uF05Cb"_s), u"./sub/a\\b"_s);
    }

    void UrlsOfOthers()
    {
        QVERIFY(SetCurrentDirectory(u"z:\\usr"_s) && !SetCurrentDirectory(u"q:\\"_s));
        QCOMPARE(FromUrl(QUrl(u"file:///mnt/d/caf%C3%A9%20%E9"_s)), u"d:\\caf\u00E9 \uF0E9"_s);
        QCOMPARE(FromUrl(QUrl(u"file://a-server/share/x"_s)), u"\\\\a-server\\share\\x"_s);
        QCOMPARE(FromUrl(QUrl(u"http://host/x"_s)), QString());
        QCOMPARE(ToUrl(u"sub\\#1 100%.mp3"_s).toEncoded(), QByteArray("file:///usr/sub/%231%20100%25.mp3"));
        QCOMPARE(ToLink(u"#1\\b:c & d&e'\"<>\uF05C\uF0E9\uF00A夜.mp3"_s),
                 u"%231/b%3Ac%20&%20d%26e%27%22%3C%3E%5C%E9%0A夜.mp3"_s);
        QCOMPARE(FromHostBytes("///usr//x"), u"z:\\usr\\\\x"_s);
    }

    void NamesSurvive_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const QByteArray &name : Names.split('/'))
            QTest::newRow(name.toPercentEncoding().constData()) << name;
    }
    void NamesSurvive()
    {
        QFETCH(QByteArray, name);
        const QByteArray hostFolder = directory->path().toUtf8() + '/' + name;
        const QByteArray bytes = hostFolder + '/' + name;
        QVERIFY(std::filesystem::create_directory(hostFolder.toStdString()));
        std::ofstream(bytes.toStdString()) << "abc";

        QCOMPARE(Listed().size(), 1);
        const QString inside = Listed().constFirst();
        const QString path = In(inside) + u'\\' + inside;
        QVERIFY(!inside.contains(u'\\') && SetCurrentDirectory(In(inside)));
        QCOMPARE(CurrentDirectory(), In(inside));
        FolderEntries entries;
        QVERIFY(ListFolder(In(inside), entries));
        QCOMPARE(entries.Files, QStringList{inside});
        QCOMPARE(ToHostBytes(path), bytes);
        QCOMPARE(FromUrl(ToUrl(path)), path);
        CheckLine(path, bytes);
        CheckLine(inside, bytes);
        QVERIFY(SetCurrentDirectory(folder));
        CheckLine(inside + u'\\' + inside, bytes);

        QCOMPARE(ExamineFile(path).Size, 3);
        QVERIFY(WriteWholeFile(path, "replaced") && RenameFile(path, path + u".x"));
        QCOMPARE(std::filesystem::file_size(bytes.toStdString() + ".x"), 8U);
        QVERIFY(!std::filesystem::exists(bytes.toStdString()));
    }

    void CommandLineIsOnePath()
    {
        QVERIFY(SetCurrentDirectory(folder) && Write(u"12\" single.m3u"_s, "x"));
        const std::pair<std::vector<QByteArray>, QString> cases[] = {
            {{}, QString()},
            {{"12\"", "single.m3u"}, In(u"12\" single.m3u"_s)},
            {{"\"/a b/./x.m3u\""}, u"z:\\a b\\x.m3u"_s},
            {{"../gone/"}, folder.first(folder.lastIndexOf(u'\\')) + u"\\gone"},
        };
        for (const auto &[arguments, path] : cases)
            QCOMPARE(PathOfCommandLine(arguments), path);
    }

    void CarriersAreAsTold()
    {
        QCOMPARE(FromHostBytes("/a\\b/c\n\xE9\xC3\xA9"), u"z:\\a\uF05Cb\\c\uF00A\uF0E9\u00E9"_s);
        QCOMPARE(FromHostBytes("/\xEF\x81\x9C"), u"z:\\\uF0EF\uF081\uF09C"_s);
        QCOMPARE(ShownPath(u"z:\\a\uF05Cb\uF00A\uF0E9\uF022"_s), u"z:\\a\\b\uFFFD\uFFFD\uF022"_s);
        // No name holds U+0000, and none is cut at it.
        QVERIFY(ToHostBytes(u"z:\\a"_s + QChar(QChar::Null) + u'b').isEmpty());
    }
};

static const RegisterTest<DrivesTest> registered;

#include "DrivesTest.moc"
