#include "platform/PlatformTests.h"

#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/windows/WindowsApi.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// What only a disk of Windows has: attributes, locks, long paths, names of devices.
class WindowsFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void AttributesAreThoseOfTheDisk();
    void ReadOnlyFileStays();
    void ReplacingKeepsAttributes();
    void LockedFileIsLeftAlone();
    void FileThatOthersReadIsRead();
    void LongPathsAreReached();
    void DevicesAreNoFiles_data();
    void DevicesAreNoFiles();
    void NamesKnowNoCase();

private:
    QString In(const QString &name) const { return folder + u'\\' + name; }
    std::wstring Wide(const QString &name) const { return WidePath(In(name)); }
    QStringList Listed() const
    {
        FolderEntries entries;
        ListFolder(folder, entries);
        return entries.Files;
    }
    QByteArray Content(const QString &name) const
    {
        QByteArray content;
        return ReadWholeFile(In(name), content) ? content : QByteArray("unreadable");
    }

    std::unique_ptr<QTemporaryDir> directory;
    QString folder;
};

static const RegisterTest<WindowsFilesTest> registered;

void WindowsFilesTest::init()
{
    directory = std::make_unique<QTemporaryDir>();
    folder = FromHostPath(directory->path());
}

void WindowsFilesTest::AttributesAreThoseOfTheDisk()
{
    QVERIFY(WriteWholeFile(In(u"a"_s), "x"));
    QVERIFY(SetFileAttributes(In(u"a"_s), AttributeHidden | AttributeSystem | AttributeReadOnly));
    const DWORD set = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY;
    QCOMPARE(GetFileAttributesW(Wide(u"a"_s).c_str()) & set, set);
    QVERIFY(SetFileAttributesW(Wide(u"a"_s).c_str(), FILE_ATTRIBUTE_HIDDEN));
    QCOMPARE(FileAttributes(In(u"a"_s)) & ~AttributeArchive, static_cast<int>(AttributeHidden));
    QVERIFY(SetFileAttributes(In(u"a"_s), AttributeNormal));
    QCOMPARE(GetFileAttributesW(Wide(u"a"_s).c_str()) & set, DWORD{0});
}

void WindowsFilesTest::ReadOnlyFileStays()
{
    QVERIFY(WriteWholeFile(In(u"a"_s), "old") && WriteWholeFile(In(u"b"_s), "new"));
    QVERIFY(SetFileAttributesW(Wide(u"a"_s).c_str(), FILE_ATTRIBUTE_READONLY));
    QVERIFY((FileAttributes(In(u"a"_s)) & AttributeReadOnly) != 0);
    QVERIFY(!WriteWholeFile(In(u"a"_s), "new") && !CopyFile(In(u"b"_s), In(u"a"_s)));
    QVERIFY(!DeleteFile(In(u"a"_s)) && !RenameFile(In(u"b"_s), In(u"a"_s)));
    QCOMPARE(Content(u"a"_s), QByteArray("old"));
    QCOMPARE(Listed(), (QStringList{u"a"_s, u"b"_s}));
    QVERIFY(SetFileAttributes(In(u"a"_s), AttributeNormal) && DeleteFile(In(u"a"_s)));
}

void WindowsFilesTest::ReplacingKeepsAttributes()
{
    QVERIFY(WriteWholeFile(In(u"a"_s), "old"));
    QVERIFY(SetFileAttributes(In(u"a"_s), AttributeHidden | AttributeSystem));
    QVERIFY(WriteWholeFile(In(u"a"_s), "new"));
    QCOMPARE(Content(u"a"_s), QByteArray("new"));
    QCOMPARE(FileAttributes(In(u"a"_s)) & ~AttributeArchive, AttributeHidden | AttributeSystem);
}

void WindowsFilesTest::LockedFileIsLeftAlone()
{
    QVERIFY(WriteWholeFile(In(u"a"_s), "old") && WriteWholeFile(In(u"b"_s), "new"));
    OwnedHandle lock(
        CreateFileW(Wide(u"a"_s).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    QVERIFY(lock.IsOpen());
    InputFile file;
    QVERIFY(!file.Open(In(u"a"_s)));
    QVERIFY(!WriteWholeFile(In(u"a"_s), "new") && !CopyFile(In(u"b"_s), In(u"a"_s)));
    QVERIFY(!DeleteFile(In(u"a"_s)) && !RenameFile(In(u"a"_s), In(u"c"_s)));
    QCOMPARE(Listed(), (QStringList{u"a"_s, u"b"_s}));
    // Its row still has a size.
    QCOMPARE(ExamineFile(In(u"a"_s)).Size, 3);
    lock.Close();
    QCOMPARE(Content(u"a"_s), QByteArray("old"));
    QVERIFY(WriteWholeFile(In(u"a"_s), "new"));
}

void WindowsFilesTest::FileThatOthersReadIsRead()
{
    // As a player holds the file that it plays.
    QVERIFY(WriteWholeFile(In(u"a"_s), "old"));
    OwnedHandle player(
        CreateFileW(Wide(u"a"_s).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    QCOMPARE(Content(u"a"_s), QByteArray("old"));
    QVERIFY(!WriteWholeFile(In(u"a"_s), "new") && !DeleteFile(In(u"a"_s)));
    QCOMPARE(Content(u"a"_s), QByteArray("old"));
    QCOMPARE(Listed(), QStringList{u"a"_s});
    player.Close();
    QVERIFY(WriteWholeFile(In(u"a"_s), "new"));
}

void WindowsFilesTest::LongPathsAreReached()
{
    const QString part = QString(100, u'd');
    const QString deep = In(part + u'\\' + part + u'\\' + part + u'\\' + part);
    QVERIFY(deep.size() > MAX_PATH && EnsureFolder(deep));
    const QString file = deep + u"\\a.mp3";
    QVERIFY(WriteWholeFile(file, "old") && WriteWholeFile(file, "content"));
    QCOMPARE(ExamineFile(file).Size, 7);
    FolderEntries entries;
    QVERIFY(ListFolder(deep, entries));
    QCOMPARE(entries.Files, QStringList{u"a.mp3"_s});
    QVERIFY(SetFileAttributes(file, AttributeHidden) && (FileAttributes(file) & AttributeHidden) != 0);
    QVERIFY(RenameFile(file, deep + u"\\b.mp3") && CopyFile(deep + u"\\b.mp3", file));
    QVERIFY(DeleteFile(file) && DeleteFile(deep + u"\\b.mp3"));
}

void WindowsFilesTest::DevicesAreNoFiles_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"con", "con.mp3", "NUL", "nul.m3u", "aux.wma", "com1.mp3", "lpt9.ogg"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void WindowsFilesTest::DevicesAreNoFiles()
{
    // Old Windows takes these for devices in every folder, new ones only some: a file, or nothing at all.
    QFETCH(QString, name);
    const bool written = WriteWholeFile(In(name), "content");
    InputFile file;
    QCOMPARE(file.Open(In(name)), written);
    QCOMPARE(file.Size(), written ? 7 : 0);
    QCOMPARE(ExamineFile(In(name)).Exists, written);
    QCOMPARE(Listed(), written ? QStringList{name} : QStringList{});
}

void WindowsFilesTest::NamesKnowNoCase()
{
    QVERIFY(WriteWholeFile(In(u"Same"_s), "old") && WriteWholeFile(In(u"sAME"_s), "new"));
    QCOMPARE(Listed().size(), 1);
    QCOMPARE(Content(u"SAME"_s), QByteArray("new"));
    QVERIFY(RenameFile(In(u"Same"_s), In(u"SAME"_s)));
    QCOMPARE(Listed().size(), 1);
}

#include "WindowsFilesTest.moc"
