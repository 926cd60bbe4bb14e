#include "platform/PlatformTests.h"

#include "platform/CodePage.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Host.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace Qt::StringLiterals;

class DrivesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void LongestMappedFolderWins_data();
    void LongestMappedFolderWins();
    void UnusableMappingsArePassedOver();
    void UnmappedDriveStays();
    void LinesAreRead_data();
    void LinesAreRead();
    void LinesAreWritten_data();
    void LinesAreWritten();
    void CurrentDirectoryIsTheProcess();
    void UrlsOfOthers();
    void PlaylistsHaveNoMark();
};

static const RegisterTest<DrivesTest> registered;

void DrivesTest::init()
{
    SettingsStore settings;
    settings.Read = [](const QString &section, const QString &key) {
        const QMap<QString, QString> folders{{u"d"_s, u"/mnt/d"_s}, {u"e"_s, u"/mnt//d/deep/"_s},
                                             {u"f"_s, u"/mnt/d"_s}, {u"g"_s, u"relative"_s},
                                             {u"h"_s, u"/"_s},      {u"z"_s, u"/elsewhere"_s}};
        return section == u"Drives"_s ? folders.value(key) : QString();
    };
    LoadDriveMappings(settings);
}

void DrivesTest::cleanup()
{
    SetDriveMappings({});
    QVERIFY(SetCurrentDirectory(u"z:"_s));
}

void DrivesTest::LongestMappedFolderWins_data()
{
    QTest::addColumn<QByteArray>("host");
    QTest::addColumn<QString>("inside");
    QTest::newRow("mapped") << QByteArray("/mnt/d/Music/a.mp3") << u"d:\\Music\\a.mp3"_s;
    QTest::newRow("deeper") << QByteArray("/mnt/d/deep/a.mp3") << u"e:\\a.mp3"_s;
    QTest::newRow("only a like name") << QByteArray("/mnt/d/deeper") << u"d:\\deeper"_s;
    QTest::newRow("beside") << QByteArray("/mnt/dx") << u"z:\\mnt\\dx"_s;
    QTest::newRow("the folder") << QByteArray("/mnt/d") << u"d:"_s;
    QTest::newRow("root") << QByteArray("/") << u"z:\\"_s;
    QTest::newRow("case") << QByteArray("/MNT/D/x") << u"z:\\MNT\\D\\x"_s;
    QTest::newRow("relative") << QByteArray("sub/a.mp3") << u"sub\\a.mp3"_s;
}

void DrivesTest::LongestMappedFolderWins()
{
    QFETCH(QByteArray, host);
    QFETCH(QString, inside);
    QCOMPARE(FromHostBytes(host), inside);
    QCOMPARE(ToHostBytes(inside), host);
    QCOMPARE(FromHostPath(ToHostPath(inside)), inside);
}

void DrivesTest::UnusableMappingsArePassedOver()
{
    QCOMPARE(DriveLetters(), (QStringList{u"d:"_s, u"e:"_s, u"f:"_s, u"h:"_s, u"z:"_s}));
    QCOMPARE(ToHostBytes(u"Z:\\x"_s), QByteArray("/x"));
    QCOMPARE(ToHostBytes(u"h:\\x"_s), QByteArray("/x"));
    QCOMPARE(ToHostBytes(u"E:x"_s), QByteArray("/mnt/d/deep/x"));
    SetDriveMappings({});
    QCOMPARE(DriveLetters(), QStringList{u"z:"_s});
    QCOMPARE(FromHostBytes("/mnt/d/x"), u"z:\\mnt\\d\\x"_s);
}

void DrivesTest::UnmappedDriveStays()
{
    for (const QString &path : {u"q:\\Music\\a.mp3"_s, u"\\\\server\\share\\a.mp3"_s}) {
        QVERIFY(ToHostBytes(path).isEmpty());
        QCOMPARE(ToHostPath(path), path);
        QCOMPARE(ToPlaylistLine(path), path);
        QCOMPARE(FromPlaylistLine(path), path);
        QVERIFY(!ExamineFile(path).Exists && !WriteWholeFile(path, "x") && FileAttributes(path) == -1);
    }
    QCOMPARE(ToUrl(u"q:\\a b"_s).toEncoded(), QByteArray("file:///q:/a%20b"));
}

void DrivesTest::LinesAreRead_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("path");
    QTest::newRow("windows") << u"D:\\Music\\A.MP3"_s << u"d:\\Music\\A.MP3"_s;
    QTest::newRow("windows with slashes") << u"D:/Music/a.mp3"_s << u"d:\\Music\\a.mp3"_s;
    QTest::newRow("host, mapped") << u"/mnt/d/a.mp3"_s << u"d:\\a.mp3"_s;
    QTest::newRow("host, backslash in a name") << u"/x/a\\b.mp3"_s << u"z:\\x\\a\uF05Cb.mp3"_s;
    QTest::newRow("relative windows") << u"..\\sub\\a.mp3"_s << u"..\\sub\\a.mp3"_s;
    QTest::newRow("relative host") << u"../sub/a.mp3"_s << u"..\\sub\\a.mp3"_s;
    QTest::newRow("here") << u"./a.mp3"_s << u"a.mp3"_s;
    QTest::newRow("here, windows") << u".\\# a.mp3"_s << u"# a.mp3"_s;
    QTest::newRow("colon in a relative name") << u"Song: a.mp3"_s << u"z:\\usr\\Song: a.mp3"_s;
    QTest::newRow("drive-like relative name") << u"./a:b.mp3"_s << u"z:\\usr\\a:b.mp3"_s;
    QTest::newRow("web address") << u"http://host/a.mp3"_s << u"http://host/a.mp3"_s;
    QTest::newRow("empty") << QString() << QString();
}

void DrivesTest::LinesAreRead()
{
    QFETCH(QString, line);
    QFETCH(QString, path);
    QVERIFY(SetCurrentDirectory(u"z:\\usr"_s));
    QCOMPARE(FromPlaylistLine(line), path);
}

void DrivesTest::LinesAreWritten_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("line");
    QTest::newRow("absolute") << u"z:\\a b\\c.mp3"_s << u"/a b/c.mp3"_s;
    QTest::newRow("mapped") << u"d:\\c.mp3"_s << u"/mnt/d/c.mp3"_s;
    QTest::newRow("relative") << u"..\\sub\\c.mp3"_s << u"../sub/c.mp3"_s;
    QTest::newRow("comment") << u"#1 hits\\c.mp3"_s << u"./#1 hits/c.mp3"_s;
    QTest::newRow("drive") << u"a:c.mp3"_s << u"./a:c.mp3"_s;
}

void DrivesTest::LinesAreWritten()
{
    QFETCH(QString, path);
    QFETCH(QString, line);
    QCOMPARE(ToPlaylistLine(path), line);
}

void DrivesTest::CurrentDirectoryIsTheProcess()
{
    const QTemporaryDir directory;
    QCOMPARE(CurrentDirectory(), u"z:"_s);
    QVERIFY(SetCurrentDirectory(FromHostPath(directory.path())));
    QVERIFY(WriteWholeFile(u"a"_s, "x"));
    QVERIFY(QFileInfo::exists(directory.filePath(u"a"_s)));
    for (const QString &path : {u"z:\\no such folder"_s, u"a"_s, u"q:\\"_s, QString()})
        QVERIFY(!SetCurrentDirectory(path));
    QCOMPARE(CurrentDirectory(), FromHostPath(directory.path()));
}

void DrivesTest::UrlsOfOthers()
{
    QCOMPARE(FromUrl(QUrl(u"file:///mnt/d/caf%C3%A9%20%E9"_s)), u"d:\\caf\u00E9 \uF0E9"_s);
    QCOMPARE(FromUrl(QUrl(u"file://localhost/x"_s)), u"z:\\x"_s);
    QCOMPARE(FromUrl(QUrl(u"file://a-server/share/x"_s)), u"\\\\a-server\\share\\x"_s);
    QCOMPARE(FromUrl(QUrl(u"http://host/x"_s)), QString());
    QVERIFY(ToUrl(QString()).isEmpty());
    QVERIFY(SetCurrentDirectory(u"z:\\usr"_s));
    QCOMPARE(ToUrl(u"sub\\#1 100%.mp3"_s).toEncoded(), QByteArray("file:///usr/sub/%231%20100%25.mp3"));
}

void DrivesTest::PlaylistsHaveNoMark()
{
    QCOMPARE(EncodeText(u"/caf\u00E9 \u4E2D"_s), QByteArray("/caf\xC3\xA9 \xE4\xB8\xAD"));
}

#include "DrivesTest.moc"
