#include "playlist/PathText.h"
#include "playlist/FileLists.h"
#include "playlist/FormatText.h"

#include <QTest>

using namespace Qt::StringLiterals;

class PathTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SplitsPaths_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("extension");
        QTest::addColumn<QString>("folder");
        QTest::newRow("usual") << u"c:\\a\\b.tar.gz"_s << u"b.tar.gz"_s << u".gz"_s << u"c:\\a\\"_s;
        QTest::newRow("bare name") << u"name"_s << u"name"_s << QString() << QString();
        QTest::newRow("folder") << u"c:\\a.b\\"_s << QString() << QString() << u"c:\\a.b\\"_s;
        QTest::newRow("name in folder") << u"c:\\x1x1x\\1"_s << u"1"_s << QString() << u"c:\\xxx\\"_s;
        QTest::newRow("folder of that name") << u"c:\\a.ogg\\a.ogg"_s << u"a.ogg"_s << u".ogg"_s << u"c:\\\\"_s;
        QTest::newRow("other case") << u"c:\\A.ogg\\a.ogg"_s << u"a.ogg"_s << u".ogg"_s << u"c:\\A.ogg\\"_s;
        QTest::newRow("any script") << u"c:\\ぎ\\я.é"_s << u"я.é"_s << u".é"_s << u"c:\\ぎ\\"_s;
    }
    void SplitsPaths()
    {
        QFETCH(QString, path);
        QTEST(GetFileName(path), "name");
        QTEST(GetExtension(GetFileName(path)), "extension");
        QTEST(GetFolderPart(path), "folder");
    }

    void NormalisesPaths_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("normal");
        QTest::newRow("folder") << u"C:\\Music\\"_s << u"c:\\Music"_s;
        QTest::newRow("one backslash of two") << u"c:\\Music\\\\"_s << u"c:\\Music\\"_s;
        QTest::newRow("bare drive") << u"C:"_s << u"c:"_s;
        QTest::newRow("drive without separator") << u"D:music"_s << u"d:\\music"_s;
        QTest::newRow("drive text again") << u"C:\\x C:\\y"_s << u"c:\\x c:\\y"_s;
        QTest::newRow("network") << u"\\\\Server\\Share\\"_s << u"\\\\Server\\Share"_s;
        QTest::newRow("separator alone") << u"\\"_s << QString();
        QTest::newRow("colon alone") << u":"_s << u":"_s;
        QTest::newRow("nothing") << QString() << QString();
    }
    void NormalisesPaths()
    {
        QFETCH(QString, path);
        QTEST(NormalisePath(path), "normal");
        QTEST(path, "normal");
    }

    void FormatsSizes_data()
    {
        QTest::addColumn<qint64>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("0") << qint64(0) << u"0 Bytes"_s;
        QTest::newRow("1") << qint64(1) << QString();
        QTest::newRow("2") << qint64(2) << u"2 Bytes"_s;
        QTest::newRow("last in bytes") << qint64(16384) << u"16,384 Bytes"_s;
        QTest::newRow("first in Kb") << qint64(16385) << u"16 Kb"_s;
        QTest::newRow("half a Kb") << qint64(20 * 1024 + 512) << u"21 Kb"_s;
        QTest::newRow("below half a Kb") << qint64(20 * 1024 + 511) << u"20 Kb"_s;
        QTest::newRow("last in Kb") << qint64(16777216) << u"16,384 Kb"_s;
        QTest::newRow("first in Mb") << qint64(16777217) << u"16 Mb"_s;
        QTest::newRow("20 million") << qint64(20000000) << u"19 Mb"_s;
        QTest::newRow("beyond 32 bits") << qint64(1234567) * 1048576 << u"1,234,567 Mb"_s;
    }
    void FormatsSizes()
    {
        QFETCH(qint64, bytes);
        QTEST(FormatFileSize(bytes), "text");
    }

    void FormatsPlayTimes()
    {
        const std::pair<qint64, QString> cases[] = {{0, u"0:00"_s},          {65, u"1:05"_s},      {599, u"9:59"_s},
                                                    {3599, u"59:59"_s},      {3605, u"1:00:05"_s}, {4210, u"1:10:10"_s},
                                                    {360000, u"100:00:00"_s}};
        for (const auto &[seconds, text] : cases)
            QCOMPARE(FormatPlayTime(seconds), text);
    }

    void CleansText()
    {
        const std::pair<QString, QString> cases[] = {{u"  AC/DC -  T.N.T.  "_s, u"AC DC T N T "_s},
                                                     {u"\tMotörhead"_s, u" Mot rhead"_s},
                                                     {u"Ночь, 夜"_s, u"Ночь 夜"_s},
                                                     {u"a\0b"_s, u"a b"_s},
                                                     {u"   "_s, QString()}};
        for (const auto &[text, clean] : cases)
            QCOMPARE(CleanText(text), clean);
    }

    void FindsCommonRoots_data()
    {
        QTest::addColumn<QStringList>("paths");
        QTest::addColumn<QString>("root");
        QTest::newRow("none") << QStringList() << QString();
        QTest::newRow("one path") << QStringList{u"d:\\a\\b\\x.mp3"_s} << u"d:\\a\\b"_s;
        QTest::newRow("in a root") << QStringList{u"d:\\x.mp3"_s, u"d:\\y.mp3"_s} << u"d:"_s;
        QTest::newRow("nested") << QStringList{u"d:\\a\\x.mp3"_s, u"d:\\a\\b\\c\\x.mp3"_s} << u"d:\\a"_s;
        QTest::newRow("drives") << QStringList{u"d:\\a\\x.mp3"_s, u"e:\\a\\x.mp3"_s} << QString();
        QTest::newRow("bare name") << QStringList{u"d:\\a\\x.mp3"_s, u"x.mp3"_s} << QString();
        QTest::newRow("piece anywhere") << QStringList{u"d:\\ab\\ma\\x.mp3"_s, u"d:\\q\\ab ma\\x"_s} << u"d:"_s;
        QTest::newRow("later of equal length") << QStringList{u"d:\\aa\\x"_s, u"d:\\ab\\x"_s, u"d:\\a\\x"_s} << u"d:"_s;
        QTest::newRow("substring") << QStringList{u"d:\\a\\bcd\\x"_s, u"d:\\a\\c\\efghi\\x"_s, u"d:\\ca\\efghi\\x"_s}
                                   << u"d:\\a\\c"_s;
    }
    void FindsCommonRoots()
    {
        QFETCH(QStringList, paths);
        QTEST(FindCommonRoot(paths), "root");
    }

    void ListsFoldersAndFiles()
    {
        const QStringList paths{u"c:\\a\\1.mp3"_s, u"c:\\a\\2.mp3"_s, u"c:\\b\\3.mp3"_s, u"c:\\a\\4.mp3"_s};
        QStringList folders;
        QVERIFY(ListDistinctFolders(paths, folders));
        QCOMPARE(folders, QStringList({u"c:\\a\\"_s, u"c:\\b\\"_s, u"c:\\a\\"_s}));
        QVERIFY(!ListDistinctFolders({}, folders));

        QStringList found;
        QVERIFY(ListFilesInFolder(paths, found, u"c:\\a"_s));
        QVERIFY(!ListFilesInFolder(paths, found, u"c:\\A\\"_s));
        QVERIFY(FilterByText(paths, found, u"\\b\\"_s));
        QVERIFY(!FilterByText(paths, found, u"\\B\\"_s));
        QCOMPARE(found, QStringList({u"1.mp3"_s, u"2.mp3"_s, u"4.mp3"_s, u"c:\\b\\3.mp3"_s}));
    }

    void MakesPathsRelative()
    {
        QStringList paths{u"c:\\a\\b.mp3"_s, u"c:\\a\\s\\b.mp3"_s, u"c:\\ab\\b.mp3"_s, u"C:\\a\\b.mp3"_s};
        MakePathsRelative(paths, QString());
        MakePathsRelative(paths, u"c:\\a"_s);
        QCOMPARE(paths, QStringList({u"b.mp3"_s, u"s\\b.mp3"_s, u"c:\\ab\\b.mp3"_s, u"C:\\a\\b.mp3"_s}));
    }
};

QTEST_GUILESS_MAIN(PathTextTest)
#include "PathTextTest.moc"
