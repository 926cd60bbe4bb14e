#include "support/FormDriver.h"

using namespace Qt::StringLiterals;

class PlaylistStatsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ShowsFigures()
    {
        FormDriver s;
        const auto figures = [&] {
            s.OpenTool("MViewDetails", "PlaylistStats", {});
            if (s.Text("lblplaylistfilename") != u"Refreshing..."_s || s.Text("lblTotalsize") != u"????"_s ||
                !QTest::qWaitFor([&] { return s.Text("lblplaylistfilename") != u"Refreshing..."_s; }))
                return QString();
            return s.Texts("^(lbl|More)").replace(s.F.Folder, u"F"_s);
        };
        const auto bytes = [&](qint64 rows, qint64 tails) {
            return QLocale::c().toString(rows * (s.F.Folder.size() + 3) + tails);
        };
        QCOMPARE(figures(), u"'Unsaved Playlist'|0 bytes|'Multiple volumes or bad playlist'|0 items|0 folders|????|0 "
                            u"items|????|????|????|");
        s.TakeData(u"one\\a.mp3"_s, "cbr128-mpeg1-joint-info.mp3");
        s.F.Prompts.ExpectPath({}, s.F.Write(u"list.m3u"_s, "one/a.mp3\r\n"));
        s.F.Trigger("MFileOpen");
        s.TakeData(u"two\\b.mp3"_s, "cbr128-mpeg1-joint-info.mp3");
        QCOMPARE(figures(), u"list.m3u|"_s + bytes(2, 18) +
                                u" bytes|F\\|2 items|2 folders|72,722 bytes|0 items|0:04 [hms]|0:02 [hms]|36 Kb|");
        // A file without a length, and one that is gone since.
        s.F.Window->AddFile(s.F.Write(u"one\\c.wav"_s, QByteArray(4, 'x')), 0);
        s.TakeData(u"one\\d.mp3"_s, "cbr128-mpeg1-joint-info.mp3");
        DeleteFile(s.F.Inside(u"one\\d.mp3"_s));
        const QString warning = u"|' > ' sign indicates 'More than'.."_s;
        QCOMPARE(figures(), u"list.m3u|"_s + bytes(4, 36) +
                                u" bytes|F\\|4 items|3 folders|>72,726 bytes|1 items|>0:06 [hms]|>0:02 [hms]|>24 Kb" +
                                warning);
        s.F.Window->ListView1.Clear();
        s.F.Window->AddFile(u"q:\\a.mp3"_s, 0);
        QCOMPARE(figures(), u"list.m3u|10 bytes|q:\\|1 items|1 folders|????|1 items|????|????|????"_s + warning);
    }
};

QTEST_MAIN(PlaylistStatsTest)
#include "PlaylistStatsTest.moc"
