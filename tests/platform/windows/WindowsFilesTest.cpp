#include "platform/PlatformTests.h"

#include "platform/windows/WindowsApi.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// What only a disk of Windows has: attributes, locks, long paths, names of devices.
class WindowsFilesTest : public FolderTest
{
    Q_OBJECT

    std::wstring Wide(const QString &name) const { return WidePath(In(name)); }
    OwnedHandle Opened(const QString &name, DWORD access, DWORD sharing) const
    {
        return OwnedHandle(CreateFileW(Wide(name).c_str(), access, sharing, nullptr, OPEN_EXISTING, 0, nullptr));
    }
    /// Whether "a" can be neither written, nor replaced by "b", nor removed.
    bool StaysAsItIs() const
    {
        return !Write(u"a"_s, "new") && !CopyFile(In(u"b"_s), In(u"a"_s)) && !DeleteFile(In(u"a"_s));
    }

private Q_SLOTS:
    void AttributesAreThoseOfTheDisk()
    {
        QVERIFY(Write(u"a"_s, "x"));
        QVERIFY(SetFileAttributes(In(u"a"_s), AttributeHidden | AttributeSystem | AttributeReadOnly));
        const DWORD set = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY;
        QCOMPARE(GetFileAttributesW(Wide(u"a"_s).c_str()) & set, set);
        QVERIFY(SetFileAttributesW(Wide(u"a"_s).c_str(), FILE_ATTRIBUTE_HIDDEN));
        QCOMPARE(FileAttributes(In(u"a"_s)) & ~AttributeArchive, static_cast<int>(AttributeHidden));
        QVERIFY(Write(u"a"_s, "new"));
        QCOMPARE(FileAttributes(In(u"a"_s)) & ~AttributeArchive, static_cast<int>(AttributeHidden));
        QVERIFY(SetFileAttributes(In(u"a"_s), AttributeNormal));
        QCOMPARE(GetFileAttributesW(Wide(u"a"_s).c_str()) & set, DWORD{0});
    }

    void LockedFileIsLeftAlone()
    {
        QVERIFY(Write(u"a"_s, "old") && Write(u"b"_s, "new"));
        OwnedHandle lock = Opened(u"a"_s, GENERIC_READ | GENERIC_WRITE, 0);
        QVERIFY(lock.IsOpen() && !InputFile().Open(In(u"a"_s)));
        QVERIFY(StaysAsItIs() && !RenameFile(In(u"a"_s), In(u"c"_s)));
        QCOMPARE(Listed(), (QStringList{u"a"_s, u"b"_s}));
        // Its row still has a size.
        QCOMPARE(ExamineFile(In(u"a"_s)).Size, 3);
        lock.Close();
        QCOMPARE(Content(u"a"_s), QByteArray("old"));
        // As a player holds the file that it plays.
        OwnedHandle player = Opened(u"a"_s, GENERIC_READ, FILE_SHARE_READ);
        QCOMPARE(Content(u"a"_s), QByteArray("old"));
        QVERIFY(StaysAsItIs());
        QCOMPARE(Content(u"a"_s), QByteArray("old"));
        QCOMPARE(Listed(), (QStringList{u"a"_s, u"b"_s}));
        player.Close();
        QVERIFY(Write(u"a"_s, "new"));
    }

    void LongPathsAreReached()
    {
        const QString part = QString(100, u'd');
        const QString deep = In(part + u'\\' + part + u'\\' + part + u'\\' + part);
        QVERIFY(deep.size() > MAX_PATH && EnsureFolder(deep));
        const QString file = deep + u"\\a.mp3";
        QVERIFY(WriteWholeFile(file, "old") && WriteWholeFile(file, "content"));
        QCOMPARE(ExamineFile(file).Size, 7);
        QCOMPARE(ExamineFile(deep + u"\\.\\..\\\\"_s + part + u"\\a.mp3").Size, 7);
        FolderEntries entries;
        QVERIFY(ListFolder(deep, entries));
        QCOMPARE(entries.Files, QStringList{u"a.mp3"_s});
        QVERIFY(SetFileAttributes(file, AttributeHidden) && (FileAttributes(file) & AttributeHidden) != 0);
        QVERIFY(RenameFile(file, deep + u"\\b.mp3") && CopyFile(deep + u"\\b.mp3", file));
        QVERIFY(DeleteFile(file) && DeleteFile(deep + u"\\b.mp3"));
    }

    void DevicesAreNoFiles()
    {
        // Old Windows takes these for devices in every folder, new ones only some: a file, or nothing at all.
        QStringList written;
        for (const QString &name :
             {u"aux.wma"_s, u"com1.mp3"_s, u"con"_s, u"con.mp3"_s, u"lpt9.ogg"_s, u"NUL"_s, u"nul.m3u"_s}) {
            if (Write(name, "content"))
                written.append(name);
            InputFile file;
            QCOMPARE(file.Open(In(name)) ? name : QString(), written.contains(name) ? name : QString());
            QCOMPARE(file.Size(), written.contains(name) ? 7 : 0);
            QCOMPARE(ExamineFile(In(name)).Exists, written.contains(name));
        }
        QCOMPARE(Listed(), written);
    }

    void NamesKnowNoCase()
    {
        QVERIFY(Write(u"Same"_s, "old") && Write(u"sAME"_s, "new"));
        QCOMPARE(Listed().size(), 1);
        QCOMPARE(Content(u"SAME"_s), QByteArray("new"));
        QVERIFY(RenameFile(In(u"Same"_s), In(u"SAME"_s)));
        QCOMPARE(Listed().size(), 1);
    }

    void NamesThatWouldBecomeOthers()
    {
        QVERIFY(Write(u"a"_s, "a"));
        for (const QString &name : {u"b."_s, u"b "_s, u"b\0c"_s})
            QVERIFY(!RenameFile(In(u"a"_s), In(name)));
        QCOMPARE(Listed(), QStringList{u"a"_s});
    }
};

static const RegisterTest<WindowsFilesTest> registered;

#include "WindowsFilesTest.moc"
