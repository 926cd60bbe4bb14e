#include "text/PathText.h"
#include "text/FileLists.h"
#include "text/FormatText.h"

#include <QTest>

using namespace Qt::StringLiterals;

class PathTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SplitsPaths()
    {
        // Path, name, extension, folder; the folder loses the name's text wherever it stands.
        const QString most(255, u'n');
        // No file has a name like this.
        const QString more = most + u'n';
        const QStringList cases[] = {
            {most + u'\\' + most, most, QString(), u"\\"_s},
            {more + u'\\' + more, more, QString(), more + u'\\'},
            {u"c:\\a\\b.tar.gz"_s, u"b.tar.gz"_s, u".gz"_s, u"c:\\a\\"_s},
            {u"name"_s, u"name"_s, QString(), QString()},
            {u"c:\\a.b\\"_s, QString(), QString(), u"c:\\a.b\\"_s},
            {u"c:\\x1x1x\\1"_s, u"1"_s, QString(), u"c:\\xxx\\"_s},
            {u"c:\\a.ogg\\a.ogg"_s, u"a.ogg"_s, u".ogg"_s, u"c:\\\\"_s},
            {u"c:\\A.ogg\\a.ogg"_s, u"a.ogg"_s, u".ogg"_s, u"c:\\A.ogg\\"_s},
        };
        for (const QStringList &parts : cases) {
            const QString name = GetFileName(parts[0]);
            QCOMPARE(IsFolderPart(parts[3], parts[0]), parts[0] == parts[3] + name);
            QCOMPARE(IsFolderPart(parts[0].chopped(name.size()), parts[0]), parts[0] == parts[3] + name);
            QCOMPARE((QStringList{parts[0], name, GetExtension(name), GetFolderPart(parts[0])}), parts);
        }
    }

    void NormalisesPaths()
    {
        const std::pair<QString, QString> cases[] = {
            {u"C:\\Music\\"_s, u"c:\\Music"_s},     {u"c:\\Music\\\\"_s, u"c:\\Music\\"_s}, {u"C:"_s, u"c:"_s},
            {u"D:music"_s, u"d:\\music"_s},         {u"C:\\x C:\\y"_s, u"c:\\x c:\\y"_s},   {u"\\"_s, QString()},
            {u"\\\\Srv\\Sh\\"_s, u"\\\\Srv\\Sh"_s},
        };
        for (const auto &[path, normal] : cases)
            QCOMPARE(NormalisedPath(path), normal);
    }

    void FormatsNumbersAndText()
    {
        const std::pair<qint64, QString> sizes[] = {{0, u"0 Bytes"_s},      {1, QString()},
                                                    {2, u"2 Bytes"_s},      {16384, u"16,384 Bytes"_s},
                                                    {16385, u"16 Kb"_s},    {20992, u"21 Kb"_s},
                                                    {20991, u"20 Kb"_s},    {16777216, u"16,384 Kb"_s},
                                                    {16777217, u"16 Mb"_s}, {1234567 * 1048576LL, u"1,234,567 Mb"_s}};
        for (const auto &[bytes, text] : sizes)
            QCOMPARE(FormatFileSize(bytes), text);
        const std::pair<qint64, QString> times[] = {
            {0, u"0:00"_s}, {65, u"1:05"_s}, {3599, u"59:59"_s}, {3605, u"1:00:05"_s}, {360610, u"100:10:10"_s}};
        for (const auto &[seconds, text] : times)
            QCOMPARE(FormatPlayTime(seconds), text);
        QCOMPARE(ProperCase(u"AC/DC\tlive\rIN (the) \u00E9T\u00C9"_s), u"Ac/dc\tLive\rIn (the) \u00C9t\u00E9"_s);
        QCOMPARE(CleanText(u"  AC/DC -  T.N.T.  "_s), u"AC DC T N T "_s);
        QCOMPARE(CleanText(u"\tMotörhead, 夜\0"_s), u" Mot rhead 夜 "_s);
    }

    void FindsCommonRoots()
    {
        const std::pair<QStringList, QString> cases[] = {
            {{}, QString()},
            {{u"d:\\a\\b\\x.mp3"_s}, u"d:\\a\\b"_s},
            {{u"d:\\a\\x.mp3"_s, u"d:\\a\\b\\c\\x.mp3"_s}, u"d:\\a"_s},
            {{u"d:\\a\\x.mp3"_s, u"e:\\a\\x.mp3"_s}, QString()},
            {{u"d:\\a\\x.mp3"_s, u"x.mp3"_s}, QString()},
            {{u"d:\\a\\bb\\x"_s, u"d:\\bb\\a\\x"_s}, u"d:\\bb\\a"_s},
            // A piece of the longest folder may stand anywhere in the others.
            {{u"d:\\a\\bcd\\x"_s, u"d:\\a\\c\\efghi\\x"_s, u"d:\\ca\\efghi\\x"_s}, u"d:\\a\\c"_s},
        };
        for (const auto &[paths, root] : cases)
            QCOMPARE(FindCommonRoot(paths), root);
    }

    void ListsFoldersAndFiles()
    {
        QStringList paths{u"c:\\a\\1.mp3"_s, u"c:\\a\\2.mp3"_s, u"c:\\b\\3.mp3"_s, u"c:\\a\\4.mp3"_s};
        QStringList list;
        QVERIFY(!ListDistinctFolders({}, list) && ListDistinctFolders(paths, list));
        QCOMPARE(list, QStringList({u"c:\\a\\"_s, u"c:\\b\\"_s, u"c:\\a\\"_s}));
        list.clear();
        QVERIFY(ListFilesInFolder(paths, list, u"c:\\a"_s) && !ListFilesInFolder(paths, list, u"c:\\A\\"_s));
        QVERIFY(FilterByText(paths, list, u"\\b\\"_s) && !FilterByText(paths, list, u"\\B\\"_s));
        QCOMPARE(list, QStringList({u"1.mp3"_s, u"2.mp3"_s, u"4.mp3"_s, u"c:\\b\\3.mp3"_s}));
        MakePathsRelative(paths, QString());
        paths += {u"c:\\a\\\\\\5.mp3"_s, u"\\\\a\\6.mp3"_s};
        MakePathsRelative(paths, u"c:\\a"_s);
        QCOMPARE(paths,
                 QStringList({u"1.mp3"_s, u"2.mp3"_s, u"c:\\b\\3.mp3"_s, u"4.mp3"_s, u"5.mp3"_s, u"\\\\a\\6.mp3"_s}));
    }
};

QTEST_GUILESS_MAIN(PathTextTest)
#include "PathTextTest.moc"
