#include "platform/PlatformTests.h"

#include "platform/Arguments.h"
#include "platform/Drives.h"
#include "platform/Files.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// The system's own drives and shares. The folder of the test stands on some drive, called "x:" in the names of cases.
class WindowsDrivesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void LettersAreThoseOfTheSystem();
    void EachDriveHasItsDirectory();
    void LinesAreRead_data();
    void LinesAreRead();
    void LinesAreWritten_data();
    void LinesAreWritten();
    void ArgumentsAreMadeAbsolute_data();
    void ArgumentsAreMadeAbsolute();
    void SharesAreNamedAndNotFound();
    void Urls_data();
    void Urls();

private:
    QString Expanded(QString path) const
    {
        return path.replace(u"{drive}"_s, folder.first(2)).replace(u"{folder}"_s, folder);
    }

    std::unique_ptr<QTemporaryDir> directory;
    QString folder;
    QString startFolder;
};

static const RegisterTest<WindowsDrivesTest> registered;

void WindowsDrivesTest::init()
{
    startFolder = CurrentDirectory();
    directory = std::make_unique<QTemporaryDir>();
    folder = FromHostPath(directory->path());
    QVERIFY(SetCurrentDirectory(folder));
}

void WindowsDrivesTest::cleanup()
{
    QVERIFY(SetCurrentDirectory(startFolder));
}

void WindowsDrivesTest::LettersAreThoseOfTheSystem()
{
    const QStringList letters = DriveLetters();
    QVERIFY(letters.contains(folder.first(2)));
    QVERIFY(std::is_sorted(letters.begin(), letters.end()));
    for (const QString &letter : letters)
        QVERIFY2(letter.size() == 2 && letter[0].isLower() && letter[1] == u':', qPrintable(letter));
    SetDriveMappings({{u'q', u"c:\\"_s}});
    QCOMPARE(DriveLetters(), letters);
    QCOMPARE(ToHostPath(u"q:\\x"_s), u"q:\\x"_s);
}

void WindowsDrivesTest::EachDriveHasItsDirectory()
{
    QVERIFY(EnsureFolder(u"sub"_s) && WriteWholeFile(u"sub\\a.mp3"_s, "x"));
    QVERIFY(SetCurrentDirectory(u"sub"_s));
    QCOMPARE(CurrentDirectory(), folder + u"\\sub"_s);
    for (const QString &wrong : {u"gone"_s, u"a.mp3"_s, QString()})
        QVERIFY(!SetCurrentDirectory(wrong));
    QVERIFY(ExamineFile(Expanded(u"{drive}a.mp3"_s)).Exists);
    for (const QString &other : DriveLetters()) {
        if (other == folder.first(2) || !SetCurrentDirectory(other))
            continue;
        QCOMPARE(CurrentDirectory(), other);
        QVERIFY(!ExamineFile(u"a.mp3"_s).Exists && ExamineFile(Expanded(u"{drive}a.mp3"_s)).Exists);
        return;
    }
    QSKIP("There is no second drive");
}

void WindowsDrivesTest::LinesAreRead_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("path");
    QTest::newRow("drive") << u"D:\\Music\\A.MP3"_s << u"d:\\Music\\A.MP3"_s;
    QTest::newRow("drive with slashes") << u"D:/Music/a.mp3"_s << u"d:\\Music\\a.mp3"_s;
    QTest::newRow("rooted") << u"\\Music\\a.mp3"_s << u"{drive}\\Music\\a.mp3"_s;
    QTest::newRow("rooted with slashes") << u"/Music/a.mp3"_s << u"{drive}\\Music\\a.mp3"_s;
    QTest::newRow("share") << u"\\\\server\\share\\a.mp3"_s << u"\\\\server\\share\\a.mp3"_s;
    QTest::newRow("share with slashes") << u"//server/share/a.mp3"_s << u"\\\\server\\share\\a.mp3"_s;
    QTest::newRow("relative") << u"../sub/a.mp3"_s << u"..\\sub\\a.mp3"_s;
    QTest::newRow("here") << u"./# a.mp3"_s << u"# a.mp3"_s;
    QTest::newRow("web address") << u"http://host/a.mp3"_s << u"http://host/a.mp3"_s;
    QTest::newRow("empty") << QString() << QString();
}

void WindowsDrivesTest::LinesAreRead()
{
    QFETCH(QString, line);
    QFETCH(QString, path);
    QCOMPARE(FromPlaylistLine(line), Expanded(path));
}

void WindowsDrivesTest::LinesAreWritten_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("line");
    QTest::newRow("drive") << u"d:\\a b\\c.mp3"_s << u"d:\\a b\\c.mp3"_s;
    QTest::newRow("share") << u"\\\\server\\share\\c.mp3"_s << u"\\\\server\\share\\c.mp3"_s;
    QTest::newRow("relative") << u"..\\sub\\c.mp3"_s << u"..\\sub\\c.mp3"_s;
    QTest::newRow("comment") << u"#1 hits\\c.mp3"_s << u".\\#1 hits\\c.mp3"_s;
}

void WindowsDrivesTest::LinesAreWritten()
{
    QFETCH(QString, path);
    QTEST(ToPlaylistLine(path), "line");
    QCOMPARE(FromPlaylistLine(ToPlaylistLine(path)), path);
}

void WindowsDrivesTest::ArgumentsAreMadeAbsolute_data()
{
    QTest::addColumn<QByteArray>("argument");
    QTest::addColumn<QString>("path");
    QTest::newRow("drive") << QByteArray("D:\\Music/..\\a.m3u") << u"d:\\a.m3u"_s;
    QTest::newRow("name") << QByteArray("caf\xC3\xA9.m3u") << u"{folder}\\caf\u00E9.m3u"_s;
    QTest::newRow("rooted") << QByteArray("\\a.m3u") << u"{drive}\\a.m3u"_s;
    QTest::newRow("share") << QByteArray("\\\\server\\share\\x\\..\\a.m3u") << u"\\\\server\\share\\a.m3u"_s;
    QTest::newRow("empty") << QByteArray() << QString();
}

void WindowsDrivesTest::ArgumentsAreMadeAbsolute()
{
    QFETCH(QByteArray, argument);
    QFETCH(QString, path);
    QCOMPARE(PathOfArgument(argument), Expanded(path));
}

void WindowsDrivesTest::SharesAreNamedAndNotFound()
{
    const QString path = u"\\\\no-such-server.invalid\\Share\\a.mp3"_s;
    QVERIFY(!ExamineFile(path).Exists && FileAttributes(path) == -1);
    QVERIFY(!WriteWholeFile(path, "x") && !DeleteFile(path));
    QCOMPARE(ToHostPath(path), path);
    QCOMPARE(FromUrl(ToUrl(path)), path);
}

void WindowsDrivesTest::Urls_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("url");
    QTest::newRow("drive") << u"c:\\Music\\#1 100%.mp3"_s << QByteArray("file:///c:/Music/%231%20100%25.mp3");
    QTest::newRow("share") << u"\\\\a-server\\share\\x"_s << QByteArray("file://a-server/share/x");
}

void WindowsDrivesTest::Urls()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, url);
    QCOMPARE(ToUrl(path).toEncoded(), url);
    QCOMPARE(FromUrl(QUrl::fromEncoded(url)), path);
}

#include "WindowsDrivesTest.moc"
