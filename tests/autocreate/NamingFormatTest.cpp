#include "autocreate/NamingFormat.h"

#include <QTest>

using namespace Qt::StringLiterals;

class NamingFormatTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Expands_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("name");
        const QString title = u"c:\\test\\mp3s\\artist\\title\\"_s;
        QTest::newRow("folders") << u"%1-%2"_s << title << u"title-artist.m3u"_s;
        QTest::newRow("no trailing backslash") << u"%0-%1"_s << title.chopped(1) << u"title-artist.m3u"_s;
        QTest::newRow("empty format") << QString() << title << u"-title-artist-mp3s-test-c-----.m3u"_s;
        QTest::newRow("literal") << u"My list"_s << title << u"My list.m3u"_s;
        QTest::newRow("separators go") << u"c:\\a/b"_s << title << u"cab.m3u"_s;
        QTest::newRow("too shallow") << u" %9 "_s << u"c:\\a\\"_s << QString();
        QTest::newRow("root") << u"%0"_s << u"c:"_s << u"c.m3u"_s;
        QTest::newRow("empty path") << u"%0"_s << QString() << QString();
        QTest::newRow("time") << u"%DATE %TIME %date"_s << title << u"03-09-2004 17-05-08 %date.m3u"_s;
        QTest::newRow("%10 is %1 and 0") << u"%10"_s << u"a\\b\\c\\d\\e\\f\\g\\h\\i\\j\\k\\l\\"_s << u"l0.m3u"_s;
        QTest::newRow("token in a folder") << u"%1"_s << u"c:\\up\\is %2\\"_s << u"is up.m3u"_s;
        QTest::newRow("token passed already") << u"%1"_s << u"c:\\up\\is %1\\"_s << u"is.m3u"_s;
        QTest::newRow("blanks before separators") << u" : %1 "_s << title << u" title.m3u"_s;
        QTest::newRow("any script") << u"%1 ♫"_s << u"c:\\夜\\"_s << u"夜 ♫.m3u"_s;
        QString growing;
        for (int i = 9; i >= 1; --i)
            growing += u"%"_s.append(QString::number(i + 1)).repeated(100) + u'\\';
        QTest::newRow("growing without end") << u"%1"_s << growing << QString();
    }
    void Expands()
    {
        QFETCH(QString, format);
        QFETCH(QString, path);
        const QDateTime now(QDate(2004, 3, 9), QTime(17, 5, 8));
        QTEST(ExpandNamingFormat(format, path, now), "name");
    }
};

QTEST_GUILESS_MAIN(NamingFormatTest)
#include "NamingFormatTest.moc"
