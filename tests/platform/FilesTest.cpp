#include "platform/Names.h"
#include "platform/PlatformTests.h"

#include <QTest>

using namespace Qt::StringLiterals;

class FilesTest : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void MasksMatch()
    {
        // Mask, names that match, names that do not.
        const std::tuple<QString, QStringList, QStringList> cases[] = {
            {u"*.mp3"_s, {u"a.MP3"_s, u".mp3"_s, u"a.b.mp3"_s}, {u"mp3"_s, u"a.mp3x"_s, u"a.mp"_s, u""_s}},
            {u"*.\u00C4\u03A9"_s, {u"x.\u00E4\u03C9"_s}, {u"x.a\u03C9"_s}},
            {u"*.*"_s, {u"a"_s, u"a.b"_s, u""_s}, {}},
            {u"t?p*.m?u"_s, {u"TMP.m3u"_s, u"top 1.MAU"_s}, {u"tp.m3u"_s, u"tmp.mu"_s, u"xtmp.m3u"_s}},
            {u"*ab*ac"_s, {u"abacabac"_s, u"xabxac"_s}, {u"abab"_s, u"acab"_s}},
            {u"[a].bm"_s, {u"[A].BM"_s}, {u"a.bm"_s, u"[a].bmx"_s}},
        };
        for (const auto &[mask, matching, others] : cases) {
            for (const QString &name : matching + others)
                QVERIFY2(MatchesMask(name, mask) == matching.contains(name), qPrintable(mask + u' ' + name));
        }
    }

    void FolderIsListedInOrder()
    {
        const QStringList sorted{u"_x"_s, u"a10"_s, u"a9"_s, u"Al"_s, u"be"_s, u"Ze"_s, u"\u00C4h"_s, u"\u00E4i"_s};
        for (const int i : {5, 0, 7, 2, 4, 1, 6, 3})
            QVERIFY(Write(sorted[i], "x"));
        QVERIFY(EnsureFolder(In(u"sub b"_s)) && EnsureFolder(In(u"Sub a"_s)));
        QCOMPARE(Listed(), sorted + QStringList({u"Sub a"_s, u"sub b"_s}));
        FolderEntries entries;
        QVERIFY(ListFolder(folder + u'\\', entries) && !ListFolder(In(u"gone"_s), entries));
        QVERIFY(entries.Files.isEmpty() && entries.Folders.isEmpty() && !ListFolder(In(u"_x"_s), entries));
    }

    void FilesAreReplacedWhole()
    {
        for (const QByteArray &content : {QByteArray(700'001, 'l'), QByteArray("short"), QByteArray()}) {
            QVERIFY(Write(u"a"_s, content) && CopyFile(In(u"a"_s), In(u"b"_s)));
            QCOMPARE(Content(u"a"_s), content);
            QCOMPARE(Content(u"b"_s), content);
        }
        QVERIFY(Write(u"b"_s, "old"));
        QVERIFY(!Write(u"gone\\a"_s, "x") && !WriteWholeFile(folder, "x") && !WriteWholeFile(QString(), "x"));
        QVERIFY(!CopyFile(In(u"gone"_s), In(u"b"_s)) && !CopyFile(folder, In(u"b"_s)));
        QCOMPARE(Content(u"b"_s), QByteArray("old"));
        QCOMPARE(Content(u"gone"_s), QByteArray("unreadable"));
        QCOMPARE(Listed(), (QStringList{u"a"_s, u"b"_s}));
    }

    void ReadOnlyFileIsNotWritten()
    {
        QVERIFY(Write(u"a"_s, "old") && Write(u"b"_s, "new"));
        QVERIFY(SetFileAttributes(In(u"a"_s), AttributeReadOnly) && !SetFileAttributes(In(u"gone"_s), AttributeNormal));
        QVERIFY((FileAttributes(In(u"a"_s)) & AttributeReadOnly) != 0 && FileAttributes(In(u"gone"_s)) == -1);
        QVERIFY(!Write(u"a"_s, "new") && !CopyFile(In(u"b"_s), In(u"a"_s)));
        QCOMPARE(Content(u"a"_s), QByteArray("old"));
        QCOMPARE(Listed(), (QStringList{u"a"_s, u"b"_s}));
        QVERIFY(SetFileAttributes(In(u"a"_s), AttributeNormal) && Write(u"a"_s, "new"));
    }

    void RenamingNeverOverwrites()
    {
        QVERIFY(Write(u"a"_s, "a") && Write(u"b"_s, "b"));
        QVERIFY(!RenameFile(In(u"a"_s), In(u"b"_s)) && !RenameFile(In(u"a"_s), In(u"gone\\a"_s)));
        QCOMPARE(Content(u"b"_s), QByteArray("b"));
        QVERIFY(RenameFile(In(u"a"_s), In(u"c"_s)) && !RenameFile(In(u"a"_s), In(u"d"_s)));
        QCOMPARE(Content(u"c"_s), QByteArray("a"));
        QVERIFY(DeleteFile(In(u"c"_s)) && !DeleteFile(In(u"c"_s)) && !DeleteFile(folder));
        QCOMPARE(Listed(), QStringList{u"b"_s});
    }

    void FoldersAreMadeAndTold()
    {
        QVERIFY(EnsureFolder(In(u"x\\y\\z"_s)) && EnsureFolder(In(u"x\\y\\z\\"_s)) && Write(u"x\\file"_s, "x"));
        QVERIFY(!EnsureFolder(In(u"x\\file"_s)) && !EnsureFolder(In(u"x\\file\\y"_s)));
        QCOMPARE(IdentifyFolder(In(u"x"_s)), IdentifyFolder(In(u"x\\y\\..\\"_s)));
        QVERIFY(IdentifyFolder(In(u"x"_s)) != IdentifyFolder(In(u"x\\y"_s)));
        QVERIFY(IdentifyFolder(folder).Valid && !IdentifyFolder(In(u"x\\file"_s)).Valid);
        // Equal for names that differ in case alone, the letters' neighbours being none.
        QCOMPARE(FoldedHash(u"@AZ[`az{ \u00C4b"), FoldedHash(u"@aZ[`AZ{ \u00E4B"));
        QVERIFY(FoldedHash(u"@AZ[") != FoldedHash(u"`az{") && FoldedHash(u"abcd") != FoldedHash(u"abc"));
        QVERIFY((FileAttributes(folder) & AttributeDirectory) != 0);
        QVERIFY(HoldsUserFiles(folder) && !HoldsUserFiles(In(u"gone"_s)));
    }
};

static const RegisterTest<FilesTest> registered;

#include "FilesTest.moc"
