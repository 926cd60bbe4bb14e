#include "playlist/NamingFormat.h"

#include <QTest>

using namespace Qt::StringLiterals;

class NamingFormatTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Expands()
    {
        QString growing;
        for (int i = 9; i >= 1; --i)
            growing += u"%"_s.append(QString::number(i + 1)).repeated(100) + u'\\';
        const QString title = u"c:\\test\\mp3s\\artist\\title\\"_s;
        // Format, path, file name.
        const QStringList cases[] = {
            {u"%0-%1"_s, title.chopped(1), u"title-artist.m3u"_s},
            {QString(), title, u"-title-artist-mp3s-test-c-----.m3u"_s},
            {u"c:\\a/b"_s, title, u"cab.m3u"_s},
            {u" %9 "_s, u"c:\\a\\"_s, QString()},
            {u"%0"_s, u"c:"_s, u"c.m3u"_s},
            {u"%0"_s, QString(), QString()},
            {u"%DATE %TIME %date"_s, title, u"03-09-2004 17-05-08 %date.m3u"_s},
            {u"%10"_s, u"a\\b\\c\\d\\e\\f\\g\\h\\i\\j\\k\\l\\"_s, u"l0.m3u"_s},
            {u"%1"_s, u"c:\\up\\is %2\\"_s, u"is up.m3u"_s},
            {u"%1"_s, u"c:\\up\\is %1\\"_s, u"is.m3u"_s},
            {u" : %1 "_s, title, u" title.m3u"_s},
            {u"%1 ♫"_s, u"c:\\夜\\"_s, u"夜 ♫.m3u"_s},
            {u"%1"_s, growing, QString()},
        };
        const QDateTime now(QDate(2004, 3, 9), QTime(17, 5, 8));
        for (const QStringList &texts : cases)
            QCOMPARE(ExpandNamingFormat(texts[0], texts[1], now), texts[2]);
    }
};

QTEST_GUILESS_MAIN(NamingFormatTest)
#include "NamingFormatTest.moc"
