#include "platform/PlatformTests.h"

#include "platform/Drives.h"
#include "platform/Files.h"

#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <memory>

using namespace Qt::StringLiterals;

class FilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void MasksMatch_data();
    void MasksMatch();
    void FolderIsListedInOrder();
    void UnreadableFolderListsNothing();
    void InputFileReadsAnywhere();
    void FileIsReplacedWhole();
    void ReadOnlyFileIsNotWritten();
    void AttributesAreSetAndRead();
    void RenamingNeverOverwrites();
    void CopyOverwrites();
    void FoldersAreMadeAndTold();

private:
    QString In(const QString &name) const { return folder + u'\\' + name; }
    QStringList Listed() const
    {
        FolderEntries entries;
        ListFolder(folder, entries);
        return entries.Files;
    }

    std::unique_ptr<QTemporaryDir> directory;
    QString folder;
};

static const RegisterTest<FilesTest> registered;

namespace
{

QByteArray Content(const QString &path)
{
    QByteArray content;
    return ReadWholeFile(path, content) ? content : QByteArray("unreadable");
}

} // namespace

void FilesTest::init()
{
    directory = std::make_unique<QTemporaryDir>();
    folder = FromHostPath(directory->path());
}

void FilesTest::MasksMatch_data()
{
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QStringList>("matching");
    QTest::addColumn<QStringList>("others");
    QTest::newRow("extension") << u"*.mp3"_s << QStringList{u"a.MP3"_s, u".mp3"_s, u"a.b.mp3"_s}
                               << QStringList{u"mp3"_s, u"a.mp3x"_s, u"a.mp"_s, u""_s};
    QTest::newRow("case beyond ascii") << u"*.\u00C4\u03A9"_s << QStringList{u"x.\u00E4\u03C9"_s}
                                       << QStringList{u"x.a\u03C9"_s};
    QTest::newRow("everything") << u"*.*"_s << QStringList{u"a"_s, u"a.b"_s, u""_s} << QStringList{};
    QTest::newRow("star") << u"*"_s << QStringList{u""_s, u"x"_s} << QStringList{};
    QTest::newRow("question") << u"t?p*.m?u"_s << QStringList{u"TMP.m3u"_s, u"top 1.MAU"_s}
                              << QStringList{u"tp.m3u"_s, u"tmp.mu"_s, u"xtmp.m3u"_s};
    QTest::newRow("second try") << u"*ab*ac"_s << QStringList{u"abacabac"_s, u"xabxac"_s}
                                << QStringList{u"abab"_s, u"acab"_s};
    QTest::newRow("exact") << u"winamp.bm"_s << QStringList{u"WinAmp.BM"_s} << QStringList{u"winamp.bmx"_s, u"a"_s};
    QTest::newRow("brackets are letters") << u"[a]*"_s << QStringList{u"[A]b"_s} << QStringList{u"ab"_s};
}

void FilesTest::MasksMatch()
{
    QFETCH(QString, mask);
    QFETCH(QStringList, matching);
    QFETCH(QStringList, others);
    for (const QString &name : matching)
        QVERIFY2(MatchesMask(name, mask), qPrintable(name));
    for (const QString &name : others)
        QVERIFY2(!MatchesMask(name, mask), qPrintable(name));
}

void FilesTest::FolderIsListedInOrder()
{
    const QStringList sorted{u"_x"_s,       u"a10.mp3"_s,  u"a9.mp3"_s,       u"Alpha.mp3"_s,
                             u"beta.mp3"_s, u"Zeta.mp3"_s, u"\u00C4hm.mp3"_s, u"\u00E4hn.mp3"_s};
    for (const int i : {5, 0, 7, 2, 4, 1, 6, 3})
        QVERIFY(WriteWholeFile(In(sorted[i]), "x"));
    for (const QString &name : {u"sub b"_s, u"Sub a"_s, u"sub C"_s})
        QVERIFY(EnsureFolder(In(name)));
    FolderEntries entries;
    QVERIFY(ListFolder(folder, entries));
    QCOMPARE(entries.Files, sorted);
    QCOMPARE(entries.Folders, (QStringList{u"Sub a"_s, u"sub b"_s, u"sub C"_s}));
    QVERIFY(ListFolder(folder + u'\\', entries));
    QCOMPARE(entries.Files, sorted);
}

void FilesTest::UnreadableFolderListsNothing()
{
    QVERIFY(WriteWholeFile(In(u"file"_s), "x"));
    for (const QString &path : {In(u"gone"_s), In(u"file"_s), QString()}) {
        FolderEntries entries{{u"old"_s}, {u"old"_s}};
        QVERIFY(!ListFolder(path, entries));
        QVERIFY(entries.Files.isEmpty() && entries.Folders.isEmpty());
    }
}

void FilesTest::InputFileReadsAnywhere()
{
    QVERIFY(WriteWholeFile(In(u"a"_s), "0123456789"));
    InputFile file;
    std::array<unsigned char, 4> buffer{};
    QCOMPARE(file.ReadAt(0, buffer), -1);
    QVERIFY(file.Open(In(u"a"_s)));
    QCOMPARE(file.Size(), 10);
    QCOMPARE(file.ReadAt(3, buffer), 4);
    QCOMPARE(QByteArray(reinterpret_cast<const char *>(buffer.data()), 4), QByteArray("3456"));
    QCOMPARE(file.ReadAt(8, buffer), 2);
    QCOMPARE(file.ReadAt(10, buffer), 0);
    QCOMPARE(file.ReadAt(1000, buffer), 0);
    QCOMPARE(file.ReadAt(-1, buffer), -1);
    for (const QString &path : {folder, In(u"gone"_s), QString()}) {
        QVERIFY(!file.Open(path));
        QCOMPARE(file.Size(), 0);
        QCOMPARE(file.ReadAt(0, buffer), -1);
    }
}

void FilesTest::FileIsReplacedWhole()
{
    const QByteArray large(700'000, 'l');
    QVERIFY(WriteWholeFile(In(u"a.m3u"_s), large));
    QCOMPARE(Content(In(u"a.m3u"_s)), large);
    QVERIFY(WriteWholeFile(In(u"a.m3u"_s), "short"));
    QCOMPARE(ExamineFile(In(u"a.m3u"_s)).Size, 5);
    QVERIFY(WriteWholeFile(In(u"a.m3u"_s), QByteArray()));
    QCOMPARE(Content(In(u"a.m3u"_s)), QByteArray());
    QVERIFY(!WriteWholeFile(In(u"gone\\a.m3u"_s), "x"));
    QVERIFY(!WriteWholeFile(folder, "x"));
    QVERIFY(!WriteWholeFile(QString(), "x"));
    QCOMPARE(Listed(), QStringList{u"a.m3u"_s});
    QCOMPARE(Content(In(u"gone"_s)), QByteArray("unreadable"));
    QVERIFY(ExamineFile(folder).IsFolder && !ExamineFile(In(u"gone"_s)).Exists);
}

void FilesTest::ReadOnlyFileIsNotWritten()
{
    QVERIFY(WriteWholeFile(In(u"a"_s), "old"));
    QVERIFY(WriteWholeFile(In(u"b"_s), "new"));
    QVERIFY(SetFileAttributes(In(u"a"_s), AttributeReadOnly));
    QVERIFY(!WriteWholeFile(In(u"a"_s), "new"));
    QVERIFY(!CopyFile(In(u"b"_s), In(u"a"_s)));
    QCOMPARE(Content(In(u"a"_s)), QByteArray("old"));
    QCOMPARE(Listed(), (QStringList{u"a"_s, u"b"_s}));
    QVERIFY(SetFileAttributes(In(u"a"_s), AttributeNormal));
    QVERIFY(WriteWholeFile(In(u"a"_s), "new"));
}

void FilesTest::AttributesAreSetAndRead()
{
    QCOMPARE(FileAttributes(In(u"a"_s)), -1);
    QVERIFY(!SetFileAttributes(In(u"a"_s), AttributeNormal));
    QVERIFY((FileAttributes(folder) & AttributeDirectory) != 0);
    QVERIFY(WriteWholeFile(In(u"a"_s), "x"));
    if (!SetFileAttributes(In(u"a"_s), AttributeHidden))
        QSKIP("The file system of the temporary folder keeps no extended attributes");
    constexpr int all = AttributeReadOnly | AttributeHidden | AttributeSystem;
    for (const int bits : {AttributeReadOnly | AttributeHidden, static_cast<int>(AttributeSystem), all,
                           static_cast<int>(AttributeReadOnly), static_cast<int>(AttributeNormal)}) {
        QVERIFY(SetFileAttributes(In(u"a"_s), bits));
        QCOMPARE(FileAttributes(In(u"a"_s)) & all, bits & all);
    }
}

void FilesTest::RenamingNeverOverwrites()
{
    QVERIFY(WriteWholeFile(In(u"a"_s), "a"));
    QVERIFY(WriteWholeFile(In(u"b"_s), "b"));
    QVERIFY(!RenameFile(In(u"a"_s), In(u"b"_s)));
    QVERIFY(!RenameFile(In(u"gone"_s), In(u"c"_s)));
    QVERIFY(!RenameFile(In(u"a"_s), In(u"gone\\a"_s)));
    QCOMPARE(Listed(), (QStringList{u"a"_s, u"b"_s}));
    QVERIFY(RenameFile(In(u"a"_s), In(u"c"_s)));
    QCOMPARE(Content(In(u"c"_s)), QByteArray("a"));
    QCOMPARE(Content(In(u"b"_s)), QByteArray("b"));
    QVERIFY(DeleteFile(In(u"c"_s)) && !DeleteFile(In(u"c"_s)) && !DeleteFile(folder));
    QCOMPARE(Listed(), QStringList{u"b"_s});
}

void FilesTest::CopyOverwrites()
{
    const QByteArray large(700'001, 'c');
    QVERIFY(WriteWholeFile(In(u"a"_s), large));
    QVERIFY(CopyFile(In(u"a"_s), In(u"b"_s)));
    QCOMPARE(Content(In(u"b"_s)), large);
    QVERIFY(WriteWholeFile(In(u"a"_s), "short"));
    QVERIFY(CopyFile(In(u"a"_s), In(u"b"_s)));
    QCOMPARE(Content(In(u"b"_s)), QByteArray("short"));
    QVERIFY(!CopyFile(In(u"gone"_s), In(u"b"_s)));
    QVERIFY(!CopyFile(folder, In(u"b"_s)));
    QCOMPARE(Content(In(u"b"_s)), QByteArray("short"));
    QCOMPARE(Listed(), (QStringList{u"a"_s, u"b"_s}));
}

void FilesTest::FoldersAreMadeAndTold()
{
    QVERIFY(EnsureFolder(In(u"x\\y\\z"_s)) && EnsureFolder(In(u"x\\y\\z\\"_s)));
    QVERIFY(WriteWholeFile(In(u"x\\file"_s), "x"));
    QVERIFY(!EnsureFolder(In(u"x\\file"_s)) && !EnsureFolder(In(u"x\\file\\y"_s)));
    QVERIFY(IdentifyFolder(In(u"x"_s)).Valid);
    QCOMPARE(IdentifyFolder(In(u"x"_s)), IdentifyFolder(In(u"x\\y\\..\\"_s)));
    QVERIFY(IdentifyFolder(In(u"x"_s)) != IdentifyFolder(In(u"x\\y"_s)));
    QVERIFY(!IdentifyFolder(In(u"x\\file"_s)).Valid && !IdentifyFolder(In(u"gone"_s)).Valid);
    QVERIFY(HoldsUserFiles(folder) && !HoldsUserFiles(In(u"gone"_s)));
}

#include "FilesTest.moc"
