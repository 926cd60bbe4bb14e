#include "platform/PlatformTests.h"

#include "platform/CodePage.h"
#include "platform/Drives.h"
#include "platform/Files.h"

#include <QTemporaryDir>
#include <QTest>

#include <filesystem>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

/// Every name that a disk can hold is listed, reached, written to playlists and read back.
class NamesOnDiskTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void NameSurvives_data();
    void NameSurvives();
    void FolderNameSurvives_data() { NameSurvives_data(); }
    void FolderNameSurvives();
    void CarriersAreAsTold();

private:
    void CheckLine(const QString &path, const QByteArray &bytes);

    std::unique_ptr<QTemporaryDir> directory;
    QByteArray hostFolder;
    QString folder;
};

static const RegisterTest<NamesOnDiskTest> registered;

namespace
{

bool Make(const QByteArray &path)
{
    const int file = ::open(path.constData(), O_CREAT | O_EXCL | O_WRONLY, 0644);
    const bool made = file >= 0 && ::write(file, "abc", 3) == 3;
    return file >= 0 && ::close(file) == 0 && made;
}

bool Stands(const QByteArray &path)
{
    struct stat facts;
    return ::lstat(path.constData(), &facts) == 0;
}

} // namespace

void NamesOnDiskTest::init()
{
    directory = std::make_unique<QTemporaryDir>();
    hostFolder = directory->path().toUtf8();
    folder = FromHostBytes(hostFolder);
    QVERIFY(SetCurrentDirectory(folder));
}

void NamesOnDiskTest::cleanup()
{
    QVERIFY(SetCurrentDirectory(u"z:\\"_s));
    // Qt does not reach every name.
    std::filesystem::remove_all(hostFolder.toStdString());
}

void NamesOnDiskTest::NameSurvives_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {"plain.mp3",
                             "back\\slash.mp3",
                             "\\start",
                             "end\\",
                             "c:\\x.mp3",
                             "a:b.mp3",
                             "Song: x.mp3",
                             "http:",
                             "# 1.mp3",
                             "new\nline",
                             "re\rturn",
                             " blanks ",
                             "%41?&'\"<>|*.mp3",
                             "...",
                             "caf\xE9.mp3",
                             "\xFF\xFE.mp3",
                             "\xC3\xA9.mp3",
                             "e\xCC\x81.mp3",
                             "\xF0\x9F\x8E\xB5.mp3",
                             "cut \xE2\x82",
                             "overlong \xC0\xAF",
                             "surrogate \xED\xA0\x80",
                             "beyond \xF4\x90\x80\x80",
                             "nonchar \xEF\xBF\xBF",
                             "\xEF\xBB\xBFmark",
                             "real F05C \xEF\x81\x9C.mp3",
                             "real F00A \xEF\x80\x8A",
                             "real F0E9 \xEF\x83\xA9",
                             "\xEF\x81\x9C\\\xEF\x81\x9C \xE9\xEF\x83\xA9",
                             "other private \xEF\x80\xA2 \xEE\x80\x80"})
        QTest::newRow(QByteArray(name).toPercentEncoding().constData()) << QByteArray(name);
}

void NamesOnDiskTest::CheckLine(const QString &path, const QByteArray &bytes)
{
    const QString line = ToPlaylistLine(path);
    QVERIFY(!line.contains(u'\n') && !line.contains(u'\r') && !line.startsWith(u'#'));
    QVERIFY(!EncodeText(line).startsWith("\xEF\xBB\xBF"));
    const QString back = FromPlaylistLine(DecodeText(EncodeText(line)));
    const QByteArray reached = ToHostBytes(back);
    QCOMPARE(reached.startsWith('/') ? reached : QByteArray(hostFolder + '/' + reached), bytes);
}

void NamesOnDiskTest::NameSurvives()
{
    QFETCH(QByteArray, name);
    const QByteArray bytes = hostFolder + '/' + name;
    QVERIFY(Make(bytes));
    FolderEntries entries;
    QVERIFY(ListFolder(folder, entries));
    QCOMPARE(entries.Files.size(), 1);
    const QString path = folder + u'\\' + entries.Files.constFirst();
    QCOMPARE(path.lastIndexOf(u'\\'), folder.size());
    QCOMPARE(ToHostBytes(path), bytes);
    QCOMPARE(FromHostBytes(bytes), path);
    QCOMPARE(ExamineFile(path).Size, 3);
    QCOMPARE(FromUrl(ToUrl(path)), path);
    CheckLine(path, bytes);
    CheckLine(entries.Files.constFirst(), bytes);
    QVERIFY(WriteWholeFile(path, "replaced"));
    QCOMPARE(ExamineFile(path).Size, 8);
    QVERIFY(RenameFile(path, path + u".x"));
    QVERIFY(Stands(bytes + ".x") && !Stands(bytes));
}

void NamesOnDiskTest::FolderNameSurvives()
{
    QFETCH(QByteArray, name);
    const QByteArray bytes = hostFolder + '/' + name;
    QVERIFY(::mkdir(bytes.constData(), 0755) == 0 && Make(bytes + "/a.mp3"));
    FolderEntries entries;
    QVERIFY(ListFolder(folder, entries));
    QCOMPARE(entries.Folders.size(), 1);
    const QString path = folder + u'\\' + entries.Folders.constFirst();
    CheckLine(path + u"\\a.mp3", bytes + "/a.mp3");
    QVERIFY(SetCurrentDirectory(path));
    QCOMPARE(CurrentDirectory(), path);
    QVERIFY(ExamineFile(u"a.mp3"_s).Exists);
}

void NamesOnDiskTest::CarriersAreAsTold()
{
    QCOMPARE(FromHostBytes("/a\\b/c\n"), u"z:\\a\uF05Cb\\c\uF00A"_s);
    QCOMPARE(FromHostBytes("/\xE9\xC3\xA9"), u"z:\\\uF0E9\u00E9"_s);
    QCOMPARE(FromHostBytes("/\xEF\x81\x9C"), u"z:\\\uF0EF\uF081\uF09C"_s);
    QCOMPARE(ShownPath(u"z:\\a\uF05Cb\uF00A\uF0E9\uF022"_s), u"z:\\a\\b\uFFFD\uFFFD\uF022"_s);
    // Other programs find the file by the line.
    QCOMPARE(ToPlaylistLine(u"z:\\a\uF05Cb"_s), u"/a\\b"_s);
    QCOMPARE(ToPlaylistLine(u"z:\\\uF0EF\uF081\uF09C"_s), u"/\uF05C"_s);
    QCOMPARE(ToPlaylistLine(u"sub\\a\uF05Cb"_s), u"./sub/a\\b"_s);
    // No name holds U+0000, and none is cut at it.
    QVERIFY(ToHostBytes(u"z:\\a"_s + QChar(QChar::Null) + u'b').isEmpty());
}

#include "NamesOnDiskTest.moc"
