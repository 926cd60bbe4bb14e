#include "platform/PlatformTests.h"

#include "platform/Arguments.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// The system's own drives and shares. The folder of the test stands on some drive.
class WindowsDrivesTest : public FolderTest
{
    Q_OBJECT

    const QString startFolder = CurrentDirectory();

    QString Expanded(QString path) const
    {
        return path.replace(u"{drive}"_s, folder.first(2)).replace(u"{folder}"_s, folder);
    }

private Q_SLOTS:
    void cleanup() { QVERIFY(SetCurrentDirectory(startFolder)); }

    void LettersAreThoseOfTheSystem()
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

    void EachDriveHasItsDirectory()
    {
        QVERIFY(EnsureFolder(In(u"sub"_s)) && Write(u"sub\\a.mp3"_s, "x"));
        QVERIFY(SetCurrentDirectory(folder) && SetCurrentDirectory(u"sub"_s));
        QCOMPARE(CurrentDirectory(), In(u"sub"_s));
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

    void LinesAreReadAndWritten()
    {
        // The line that somebody wrote in the folder, the path.
        const std::pair<QString, QString> read[] = {
            {u"D:\\Music\\A.MP3"_s, u"d:\\Music\\A.MP3"_s},
            {u"D:/Music/a.mp3"_s, u"d:\\Music\\a.mp3"_s},
            {u"D:a.mp3"_s, u"d:\\a.mp3"_s},
            {u"\\Music\\a.mp3"_s, u"{drive}\\Music\\a.mp3"_s},
            {u"/Music/a.mp3"_s, u"{drive}\\Music\\a.mp3"_s},
            {u"//server/share/a.mp3"_s, u"\\\\server\\share\\a.mp3"_s},
            {u"../sub/a.mp3"_s, u"..\\sub\\a.mp3"_s},
            {u"./# a.mp3"_s, u"# a.mp3"_s},
            {u"http://host/a.mp3"_s, u"http://host/a.mp3"_s},
            {QString(), QString()},
        };
        for (const auto &[line, path] : read)
            QCOMPARE(FromPlaylistLine(line, folder), Expanded(path));
        // The path, the line as it is written.
        const std::pair<QString, QString> written[] = {
            {u"d:\\a b\\c.mp3"_s, u"d:\\a b\\c.mp3"_s},
            {u"\\\\server\\share\\c.mp3"_s, u"\\\\server\\share\\c.mp3"_s},
            {u"..\\sub\\c.mp3"_s, u"..\\sub\\c.mp3"_s},
            {u"#1 hits\\c.mp3"_s, u".\\#1 hits\\c.mp3"_s},
        };
        for (const auto &[path, line] : written) {
            QCOMPARE(ToPlaylistLine(path), line);
            QCOMPARE(FromPlaylistLine(line, folder), path);
        }
    }

    void ArgumentsAreMadeAbsolute()
    {
        QVERIFY(SetCurrentDirectory(folder));
        const std::pair<QByteArray, QString> cases[] = {
            {"D:\\Music/..\\a.m3u", u"d:\\a.m3u"_s},
            {"caf\xC3\xA9.m3u", u"{folder}\\caf\u00E9.m3u"_s},
            {"\\a.m3u", u"{drive}\\a.m3u"_s},
            {"\\\\server\\share\\x\\..\\a.m3u", u"\\\\server\\share\\a.m3u"_s},
            {"", QString()},
        };
        for (const auto &[argument, path] : cases)
            QCOMPARE(PathOfArgument(argument), Expanded(path));
        QCOMPARE(PathOfCommandLine({"\"D:\\a", "b.m3u\""}), u"d:\\a b.m3u"_s);
    }

    void SharesAreNamedAndNotFound()
    {
        const QString path = u"\\\\no-such-server.invalid\\Share\\a.mp3"_s;
        QVERIFY(!ExamineFile(path).Exists && FileAttributes(path) == -1);
        QVERIFY(!WriteWholeFile(path, "x") && !DeleteFile(path));
        QCOMPARE(ToHostPath(path), path);
    }

    void UrlsAreReadAndWritten()
    {
        const std::pair<QString, QByteArray> cases[] = {
            {u"c:\\Music\\#1 100%.mp3"_s, "file:///c:/Music/%231%20100%25.mp3"},
            {u"\\\\a-server\\share\\x"_s, "file://a-server/share/x"},
        };
        for (const auto &[path, url] : cases) {
            QCOMPARE(ToUrl(path).toEncoded(), url);
            QCOMPARE(FromUrl(QUrl::fromEncoded(url)), path);
        }
    }
};

static const RegisterTest<WindowsDrivesTest> registered;

#include "WindowsDrivesTest.moc"
