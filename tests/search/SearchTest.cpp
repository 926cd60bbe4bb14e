#include "session/GridView.h"
#include "support/FormDriver.h"

#include <QAction>
#include <QComboBox>

using namespace Qt::StringLiterals;

namespace
{
/// A main window and the search over it.
struct SearchDriver : FormDriver {
    explicit SearchDriver(const QStringList &names)
    {
        for (const QString &name : names)
            F.Window->AddFile(F.Write(name, "x"), 0);
    }
    void Open(const QList<int> &rows) { OpenTool("MToolsSearch", "frmSearch", rows); }
    /// Clicks the entries of a menu, types a text, and clicks a button or, without one, presses Enter; the report, the
    /// rows, and a "+" for each command that is enabled then.
    QString Search(const QList<const char *> &options, const QString &text, const char *button = nullptr) const
    {
        for (const char *option : options)
            Form->findChild<QAction *>(QLatin1StringView(option))->trigger();
        if (text != Text("txtSearch"))
            Enter("txtSearch", text);
        button != nullptr ? Click(button) : QTest::keyClick(At("txtSearch"), Qt::Key_Return);
        return Text("lblReport") + u' ' + F.Rows() + u"+"_s.repeated(Usable("^cmd[BNPS]").count(u"cmd"_s));
    }
};
} // namespace

class SearchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FindsInColumns()
    {
        SearchDriver s({u"Apple\\one.wma"_s, u"two\\apple.wma"_s, u"жук\\x.wma"_s});
        s.TakeData(u"song.mp3"_s, "cbr128-mpeg1-joint-info.mp3");
        s.Open({});
        const std::tuple<QList<const char *>, QString, QString> cases[] = {
            {{}, QString(), u"Enter a search string... one apple x song"_s},
            {{}, u"APPLE"_s, u"Found: 2 Items. ONE APPLE x song++++"_s},
            {{"Mcasesensitive"}, u"Apple"_s, u"Found: 1 Items. ONE apple x song++++"_s},
            {{"Mfolder"}, u"Apple"_s, u"Found: 0 Items. ONE apple x song"_s},
            {{"Mcasesensitive", "MFilename", "Mfolder"}, u"ЖУК"_s, u"Found: 1 Items. one apple X song++++"_s},
            {{}, QString(20'000, u'a'), u"Found: 0 Items. one apple X song"_s},
            {{"Mfolder"}, u"a"_s, u"Found: 0 Items. one apple X song"_s},
        };
        for (const auto &[options, text, state] : cases)
            QCOMPARE(s.Search(options, text), state);
        for (const auto &[column, text] : {std::pair{"Mtime", u"0:02"_s},
                                           {"MSize", u"36 kB"_s},
                                           {"Mid", u"mpeg 1"_s},
                                           {"MLayer", u"iii"_s},
                                           {"Mbitrate", u"128 k"_s},
                                           {"Msamplerate", u"44100"_s},
                                           {"Mmode", u"joint"_s}})
            QCOMPARE(s.Search({column}, text, "cmdSelAl"), u"Found: 1 Items. one apple x SONG++++"_s);
        QCOMPARE(s.F.Window->PanelText(1), u"Track: 4/4"_s);
    }

    void StepsAndKeepsAlive()
    {
        SearchDriver s({u"x1.wma"_s, u"b.wma"_s, u"x2.wma"_s, u"X3.wma"_s, u"c.wma"_s});
        s.F.Window->resize(400, 100);
        s.F.Window->show();
        s.Open({2, 5});
        const GridView &view = *s.F.Window->View();
        QCOMPARE(s.Search({"Mfolder"}, u"X"_s, "cmdBack"), u"Selected: 3/3 Items. x1 b x2 X3 c++++"_s);
        QVERIFY(view.viewport()->rect().contains(view.visualRect(view.model()->index(3, 0)).center()));
        QVERIFY(s.F.Window->ListView1.FocusedRow() == 4 && s.Focused() == u"txtSearch");
        QCOMPARE(s.Search({}, u"X"_s, "cmdBack"), u"Selected: 2/3 Items. x1 b X2 X3 c++++"_s);
        QCOMPARE(s.Search({}, u"X"_s, "cmdNext"), u"Selected: 3/3 Items. x1 b x2 X3 c++++"_s);
        QCOMPARE(s.Search({}, u"X"_s, "cmdNext"), u"Selected: 1/3 Items. X1 b x2 X3 c++++"_s);
        s.Click("cmdPreview");
        QVERIFY(s.F.Read(u"app\\tmp.m3u"_s).endsWith("x1.wma\r\n"));
        s.Click("cmdSelAl");
        QCOMPARE(s.Search({"Mselonly"}, u"3"_s, "cmdNext"), u"Selected: 1/1 Items. x1 b x2 X3 c++++"_s);
        QCOMPARE(s.Search({"Mselonly"}, u"X"_s), u"Found: 3 Items. X1 b X2 X3 c++++"_s);
        auto *history = s.At<QComboBox>("txtSearch");
        QCOMPARE(history->itemText(0) + history->itemText(1) + history->itemText(2), u"X3"_s);
        s.Click("cmdClose");
        // Rows 4 and 5 are gone when the matches are stepped through again.
        s.F.Select({4, 5});
        s.F.Trigger("MEditRemove");
        s.Open({1});
        QCOMPARE(s.Search({}, u"X"_s, "cmdBack"), u"Selected: 2/2 Items. x1 b X2++++"_s);
        // What was selected at any of the openings; then a new search is due.
        QCOMPARE(s.Search({"MReselect"}, u"X"_s, "cmdPreview"), u"Selected: 2/2 Items. X1 B x2++++"_s);
        QCOMPARE(s.Search({}, u"X"_s, "cmdNext"), u"Selected: 1/2 Items. X1 b x2++++"_s);
        s.F.Window->ListView1.Clear();
        QCOMPARE(s.Search({"Mkeepalive"}, u"X"_s, "cmdNext"), u"Found: 0 Items. "_s);
        // The drop-down, once it opens, enables the commands.
        history->showPopup();
        QVERIFY(s.Enabled("cmdNext"));
        history->hidePopup();
        QTest::keyClick(s.Form, Qt::Key_Escape);
        s.Open({});
        QVERIFY(s.Text("txtSearch").isEmpty() && history->count() == 0 && !s.Enabled("cmdNext"));
    }
};

QTEST_MAIN(SearchTest)
#include "SearchTest.moc"
