#include "support/FormDriver.h"
#include "support/HostNames.h"

#include "media/FullData.h"
#include "session/FormLayout.h"
#include "session/LongRun.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QToolButton>
#include <QtEndian>

using namespace Qt::StringLiterals;

/// What the window keeps and brings back, and where windows stand on the screens: one of 800 x 800 and, to the right
/// of it, one of 800 x 600 at 200 %.
class SettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SettingsSurvive()
    {
        MainFixture f;
        f.Window->RestoreSession({});
        f.Window->setGeometry(30, 40, 700, 500);
        f.Trigger("MViewCompact");
        for (const char *command : {"MHidOptionColumnVis(4)", "MHidOptionToolbarFlat", "MHidOptionToolbar3D",
                                    "MHidOptionMenuVisible", "MViewTransVal(3)"})
            f.Trigger(command);
        f.Window->View()->setColumnWidth(ColumnPath - 1, 321);
        QFont font(u"Arial"_s, 13, QFont::Bold, true);
        font.setStrikeOut(true);
        f.Prompts.ExpectChoice<QFont>(f.Window->View()->font().family(), font);
        f.Trigger("MHidOptionTableFontChoose");
        f.Prompts.ExpectPath({}, f.Write(u"sub\\l.m3u"_s, "gone.wma\r\n"));
        f.Trigger("MFileOpen");
        f.Window->close();
        const QMap<QString, QString> stored = f.Settings;
        const auto wanted =
            u"PS/W=10500 PS/H=7500 PS/L=450 PS/T=600 VE/TA=1 VE/SA=0 VE/TRANS=3 ToolB/Flat=False ToolB/3D=True "
            u"ToolB/Align=2 Menu/Visible=False TableB/BCD=False TableB/BC=64 TableB/FCD=False TableB/FC=255 "
            u"TableB/TV1=200 "
            u"TableB/TV4=321 TableB/TV5=0 TableB/TX4=True TableB/TX5=False TableB/TX9=True TableFont/Default=False "
            u"TableFont/Name=Arial TableFont/Size=13 TableFont/Bold=True TableFont/Italic=True "
            u"TableFont/Strikethrough=True TableFont/Underline=False RF/2= SSE/V=1"_s;
        for (const QString &line : wanted.split(u' ')) {
            const QString key = line.section(u'=', 0, 0);
            QCOMPARE(key + u'=' + stored[key], line);
        }
        QCOMPARE(stored[u"RF/1"_s], u"1: "_s + f.Inside(u"sub\\l.m3u"_s));
        QCOMPARE(stored[u"RF/Wkdir"_s], f.Inside(u"sub"_s));

        // Without either bar there would be no way back.
        f.Settings[u"VE/TA"_s] = u"0"_s;
        f.Restart();
        f.Window->RestoreSession({});
        f.Window->show();
        QCOMPARE(CurrentDirectory(), f.Inside(u"sub"_s));
        QVERIFY(!f.Window->menuBar()->isVisible() && f.Bar("Toolbar1")->isVisible() &&
                f.Bar("Toolbar1")->y() > f.Window->View()->y());
        QVERIFY(!f.Bar("Toolbar1")->findChild<QToolButton *>(u"MFileNew"_s)->autoRaise() &&
                !f.Bar("StatusBar1")->isVisible());
        QVERIFY(f.Window->View()->isColumnHidden(ColumnID - 1) && f.Window->windowOpacity() < 0.9);
        QCOMPARE(f.Window->View()->palette().color(QPalette::Text), QColor(255, 0, 0));
        f.Window->close();
        QCOMPARE(f.Settings, stored);
        f.Restart();
        f.Window->RestoreSession({});
        f.Trigger("MViewNormal");
        // What is stored of a maximized or minimized window is its normal place.
        f.Window->showMaximized();
        f.Window->close();
        QCOMPARE(f.Settings[u"PS/W"_s] + f.Settings[u"VE/SA"_s], u"105001"_s);
        QCOMPARE(f.Settings[u"TableB/BC"_s], u"-2147483643"_s);
        QCOMPARE(f.Settings[u"TableB/FC"_s], u"-2147483640"_s);
    }

    void BadSettingsAreIgnoredOneByOne()
    {
        MainFixture f;
        const QSize first = f.Window->size();
        f.Settings = {{u"PS/H"_s, u"400"_s},          {u"PS/W"_s, u"9000"_s},     {u"VE/TA"_s, u"rubbish"_s},
                      {u"VE/SA"_s, u"0"_s},           {u"TableB/TV1"_s, u"-7"_s}, {u"TableB/TV2"_s, u"77"_s},
                      {u"TableFont/Size"_s, u"97"_s}, {u"VE/TRANS"_s, u"11"_s},   {u"ToolB/Align"_s, u"5"_s},
                      {u"RF/Wkdir"_s, u"q:\\none"_s}};
        f.Window->RestoreSession({});
        QCOMPARE(f.Window->size(), QSize(600, first.height()));
        QVERIFY(f.Window->Command("MViewToolbar")->isChecked() && !f.Window->Command("MViewStatusBar")->isChecked());
        QCOMPARE(f.Window->View()->columnWidth(ColumnFileName - 1), 200);
        QCOMPARE(f.Window->View()->columnWidth(ColumnTime - 1), 77);
        QCOMPARE(f.Window->View()->font().pointSize(), 8);
        QCOMPARE(f.Window->windowOpacity(), 1.0);
        QCOMPARE(CurrentDirectory(), f.Folder);

        // The mark of a colour and its number, and what is shown, with a star when its Default is checked.
        for (const QString &colour : u"False 64 #400000|False 16777215 #ffffff|False -2147483640 #000000|"
                                     u"False -2147483643 #ffffff|False blue #ffffff*|False 16777216 #ffffff*|"
                                     u"False -1 #ffffff*|rubbish 64 #ffffff*|True 64 #ffffff*"_s.split(u'|')) {
            const QStringList parts = colour.split(u' ');
            f.Settings = {{u"TableB/BCD"_s, parts[0]},
                          {u"TableB/BC"_s, parts[1]},
                          {u"TableB/FCD"_s, u"False"_s},
                          {u"TableB/FC"_s, u"255"_s}};
            f.Restart();
            f.Window->RestoreSession({});
            const bool isDefault = f.Window->Command("MHidOptionTableBCDefault")->isChecked();
            const QPalette palette = f.Window->View()->palette();
            const QString shown = palette.color(QPalette::Base).name() + (isDefault ? u"*" : u"");
            QVERIFY2(shown == parts[2] && palette.color(QPalette::Text) == QColor(255, 0, 0), qPrintable(colour));
        }
    }

    void SavingOffKeepsOnlyTheLists()
    {
        MainFixture f;
        f.Window->RestoreSession({});
        f.AddRows({1});
        const QByteArray session = f.Read(u"app\\tmp.m3u"_s);
        f.Trigger("MToolsSaveSetting");
        f.Window->resize(555, 444);
        f.Window->close();
        QCOMPARE(f.Settings[u"SSE/V"_s], u"0"_s);
        QVERIFY(!f.Settings.contains(u"PS/W"_s));
        QCOMPARE(f.Read(u"app\\tmp.m3u"_s), session);
        f.Settings[u"PS/W"_s] = u"9000"_s;
        const QString shortcut = f.Write(u"here.url"_s, "x");
        f.Settings[u"SH/1"_s] = f.Inside(u"gone.url"_s);
        f.Settings[u"SH/2"_s] = shortcut;
        f.Settings[u"SH/3"_s] = f.Inside(u"away\\x.url"_s);
        f.Restart();
        f.Window->RestoreSession({});
        QVERIFY(!f.Window->Command("MToolsSaveSetting")->isChecked());
        QVERIFY(f.Window->width() != 600);
        // The disk comes back meanwhile.
        f.Write(u"away\\x.url"_s, "x");
        f.Window->close();
        // What has gone vanishes with the next save, and the rest closes ranks.
        QCOMPARE(f.Settings[u"SH/1"_s], shortcut);
        // What was on a disk that was away comes back with it.
        QCOMPARE(f.Settings[u"SH/2"_s] + f.Settings[u"SH/3"_s], f.Inside(u"away\\x.url"_s));
        // Nor does one go at which nobody can look.
        if (NamesHoldAnything()) {
            const QString loop = f.Inside(u"loop.url"_s);
            QVERIFY(QFile::link(u"loop.url"_s, ToHostPath(loop)));
            f.Settings[u"SH/3"_s] = loop;
            f.Restart();
            f.Window->RestoreSession({});
            f.Window->close();
            QCOMPARE(f.Settings[u"SH/3"_s], loop);
        }
        f.Settings[u"SH/3"_s] = f.Inside(u"gone\\x.url"_s);
        f.Restart();
        f.Window->RestoreSession({});
        f.Trigger("MToolsShortCutDel");
        f.Window->close();
        QCOMPARE(f.Settings[u"SH/1"_s] + f.Settings[u"SH/2"_s] + f.Settings[u"SH/3"_s], QString());
    }

    void SessionComesBack()
    {
        MainFixture f;
        f.Player = u"c:\\Programs\\Winamp\\Winamp.exe"_s;
        f.Window->RestoreSession({});
        QCOMPARE(f.Read(u"app\\tmp.m3u"_s), QByteArray("#\r\n"));
        const auto bookmarkLines = [&] {
            const QList<QAction *> lines = f.Window->findChild<QMenu *>(u"MTools"_s)->actions();
            const qsizetype place = lines.indexOf(f.Window->Command("MToolsWinamp"));
            return int(lines[place]->isVisible()) +
                   int(lines[place - 1]->isSeparator() && lines[place - 1]->isVisible());
        };
        QCOMPARE(bookmarkLines(), 2);
        f.AddRows({1, 2});
        f.Window->close();
        QCOMPARE(f.Settings[u"RF/W"_s], u"c:\\Programs\\Winamp\\winamp.bm"_s);
        f.Player.clear();
        f.Restart();
        f.Window->Run([&f] { f.Window->RestoreSession({}); });
        // What the session brings is nothing to be undone.
        QCOMPARE(f.Rows() + f.Undoable(), u"a b"_s);
        QVERIFY(!f.Window->PlaylistDirty && f.Window->CurrentPlaylistPath.isEmpty());
        QCOMPARE(bookmarkLines(), 0);
        f.Restart();
        f.Window->RestoreSession(f.Write(u"a b\\x.m3u"_s, "../b.wma\r\n"));
        QCOMPARE(f.Rows(), u"b"_s);
        QVERIFY(!f.Window->PlaylistDirty);
        QCOMPARE(f.Window->windowTitle(), u"[Vantrel] M3U Playlist Editor v2.0 "_s);
    }

    void SessionOfAnotherProgramIsKept()
    {
        MainFixture f;
        const QString kept = u"app\\session-20260102-030405"_s;
        const auto store = [&f](const QByteArray &session) {
            f.Write(u"app\\tmp.m3u"_s, session);
            f.Settings[u"Session/Mark"_s] =
                QString::fromLatin1(QCryptographicHash::hash(session, QCryptographicHash::Sha1).toHex());
        };
        f.Window->RestoreSession({});
        f.AddRows({1});
        store("theirs.wma\r\n");
        f.Trigger("MEditPlayList");
        QCOMPARE(f.Window->Command("MFileRecent(0)")->text(), u"&1: "_s + f.Inside(kept) + u".m3u");
        // What another one previews is no session, and what it stores in the same second is.
        f.Write(u"app\\tmp.m3u"_s, "heard.wma\r\n");
        f.Trigger("MEditPlayList");
        store("others.wma\r\n");
        QVERIFY(f.Window->close());
        QCOMPARE(f.Read(kept + u".m3u") + f.Read(kept + u"-2.m3u"), "theirs.wma\r\nothers.wma\r\n");
        // Nor is what this one has stored or previewed before.
        f.Restart();
        f.Window->RestoreSession({});
        f.Trigger("MEditPlayList");
        QVERIFY(f.Window->EndWithHost(true));
        f.AddRows({});
        f.Window->ListView1.Clear();
        QVERIFY(f.Window->close());
        QCOMPARE(f.Listing(u"app"_s).count(u"session-"_s), 2);
        QCOMPARE(f.Read(u"app\\tmp.m3u"_s), "");
    }

    void SessionThatCannotBeReadIsKept()
    {
        MainFixture f;
        f.Window->RestoreSession({});
        f.AddRows({1, 2});
        f.Trigger("MEditPlayList");
        QVERIFY(f.Window->close());
        const QByteArray list = f.Read(u"app\\tmp.m3u"_s);
        // Its disk is away for a moment in the middle of the start.
        f.Adjust = [&f](Host &host) {
            host.Shell.AssociatedProgram = [&f](const QString &path) {
                RenameFile(path, path + u".away");
                return f.Player;
            };
        };
        f.Restart();
        f.Window->RestoreSession({});
        QVERIFY(f.Rows().isEmpty() && RenameFile(f.Inside(u"app\\tmp.m3u.away"_s), f.Inside(u"app\\tmp.m3u"_s)));
        QVERIFY(f.Window->close());
        QCOMPARE(f.Read(u"app\\session-20260102-030405.m3u"_s), list);
    }

    void EndsWithTheHost()
    {
        MainFixture f;
        const QString question = u"Do you want to save the current playlist first?"_s;
        f.Window->RestoreSession({});
        f.AddRows({1});
        const QByteArray before = f.Read(u"app\\tmp.m3u"_s);
        // A list that is being read has no rows yet.
        f.Window->Run([&f] {
            const PlaylistItem row = f.Window->ListView1.Item(1);
            f.Window->ListView1.Clear();
            QVERIFY(f.Window->EndWithHost(true));
            f.Window->AddFile(row.FullPath(), 0);
        });
        QCOMPARE(f.Read(u"app\\tmp.m3u"_s), before);
        f.Window->PlaylistDirty = true;
        f.Prompts.Expect(question, PromptAnswer::Cancel);
        QVERIFY(!f.Window->EndWithHost(true) && f.Read(u"app\\tmp.m3u"_s) == before);
        // A host that lets nobody ask has not asked.
        QVERIFY(f.Window->EndWithHost(false));
        f.Prompts.Expect(question, PromptAnswer::Cancel);
        QVERIFY(!f.Window->close());
        // In the midst of a command nobody is asked, and the command goes on.
        f.Window->Run([&f] {
            f.Window->FileArray = QStringList{u"in use"_s};
            QVERIFY(!f.Window->EndWithHost(true) && f.Window->EndWithHost(false));
            QCOMPARE(f.Window->FileArray, QStringList{u"in use"_s});
        });
        f.Prompts.Expect(question, PromptAnswer::Cancel);
        QVERIFY(!f.Window->close());
        QCOMPARE(f.Read(u"app\\tmp.m3u"_s), ToPlaylistLine(f.Inside(u"a.wma"_s)).toUtf8() + "\r\n");
        // Nor while the question of a close is open.
        bool ends = true;
        f.Prompts.Meanwhile = [&] { ends = f.Window->EndWithHost(true); };
        f.Prompts.Expect(question, PromptAnswer::Cancel);
        QVERIFY(!f.Window->close() && !ends);
        f.Prompts.Meanwhile = [] {};
        for (const bool goesOn : {true, false}) {
            f.Prompts.Expect(question, PromptAnswer::No);
            QVERIFY(f.Window->EndWithHost(true));
            if (!goesOn)
                continue;
            f.Trigger("MEditSelAll");
            f.Prompts.Expect(question, PromptAnswer::Cancel);
            QVERIFY(!f.Window->close());
        }
        QVERIFY(f.Window->close());
    }

    void FullDataIsReadAndKept()
    {
        FormDriver d;
        MainFixture &f = d.F;
        const auto restored = qScopeGuard([] { SetFullData(false); });
        for (const char *data :
             {"tagged-utf8.ogg", "tagged.wma", "stereo-16bit.wav", "mono-8bit.wav", "cbr128-mpeg1-joint-info.mp3"})
            d.TakeData(QLatin1StringView(data), data);
        const QByteArray ogg = f.Read(u"tagged-utf8.ogg"_s);
        // At one sample a second it is longer than its milliseconds can tell.
        const QByteArray slow = QByteArray("RIFF\x24\xa0\x25\0WAVEfmt \x10\0\0\0\1\0\1\0\1\0\0\0\1\0\0\0\1\0\x8\0"
                                           "data\0\xa0\x25\0",
                                           44) +
                                QByteArray(0x25a000, '\0');
        // Of another kind than its name tells, and nested deeper than memory for calls would last.
        constexpr quint32 depth = 200'000;
        QByteArray deep("\0\0\0\x10"
                        "ftypM4A \0\0\0\0",
                        16);
        for (quint32 rest = depth; rest > 0; --rest) {
            const quint32 size = qToBigEndian(8 * rest);
            deep.append(reinterpret_cast<const char *>(&size), sizeof size).append("moov");
        }
        const QByteArray behindTag = QByteArray("ID3\3\0\0\0\0\0\0", 10) + ogg;
        for (const auto &[name, content] : {std::pair{u"cut.ogg"_s, ogg.first(100)},
                                            {u"slow.wav"_s, slow},
                                            {u"other.wma"_s, ogg},
                                            {u"deep.wma"_s, deep},
                                            {u"behind.ogg"_s, behindTag}})
            f.Window->AddFile(f.Write(name, content), 0);
        const auto rows = [&f] {
            QStringList texts;
            for (int row = 1; row <= f.Window->ListView1.Count(); ++row) {
                for (const int column : {ColumnTime, ColumnBitrate, ColumnSamplerate, ColumnMode})
                    texts.append(f.Window->ListView1.CellText(row, column));
            }
            return texts.join(u'|');
        };
        const QString mp3 = u"|0:02|128 Kbit|44100 Hz|Joint Stereo"_s;
        QCOMPARE(rows(), QString(u"0:00|||" + u"|0:00|||"_s.repeated(3) + mp3 + u"|0:00|||"_s.repeated(5)));
        f.Trigger("MToolsFullData");
        const QString stereo = u"0:02|23 Kbit|22050 Hz|Stereo"_s;
        QCOMPARE(rows(), QString(stereo +
                                 u"|0:03|48 Kbit|22050 Hz|Stereo|0:01|353 Kbit|11025 Hz|Stereo"
                                 u"|0:02|64 Kbit|8000 Hz|Single Channel" +
                                 mp3 + u"|0:00||||0:00|0 Kbit|1 Hz|Single Channel|" + stereo + u"|0:00||||" + stereo));
        // It is kept, and the next start says so.
        SetFullData(false);
        f.Restart();
        f.Window->RestoreSession({});
        QVERIFY(f.Window->Command("MToolsFullData")->isChecked() && FullData());
        f.Trigger("MToolsFullData");
        QVERIFY(f.Settings[u"Options/Full Data"_s] == u"0"_s && !FullData());
    }

    void WindowComesBackOntoAScreen()
    {
        // Whole, over both screens, at 200 %; then off all screens, cut by an edge, by one at 200 %, larger than all.
        for (const auto &[stored, stays] : {std::pair{QRect(100, 150, 420, 300), true},
                                            {QRect(600, 100, 420, 150), true},
                                            {QRect(808, 100, 385, 190), true},
                                            {QRect(5000, 150, 420, 300), false},
                                            {QRect(300, 600, 420, 300), false},
                                            {QRect(1000, 200, 385, 250), false},
                                            {QRect(50, 60, 3000, 2000), false}}) {
            MainFixture f;
            for (const auto &[key, value] :
                 {std::pair{'L', stored.left()}, {'T', stored.top()}, {'W', stored.width()}, {'H', stored.height()}})
                f.Settings[u"PS/"_s + QLatin1Char(key)] = QString::number(value * 15);
            f.Show();
            // The small screen is too small for what some styles need.
            if (f.Window->minimumSizeHint().width() > stored.width())
                continue;
            f.Window->RestoreSession({});
            const QList<QScreen *> screens = QGuiApplication::screens();
            const auto screen = std::find_if(screens.begin(), screens.end(), [&](const QScreen *each) {
                return each->availableGeometry().contains(f.Window->frameGeometry());
            });
            if (stays) {
                QCOMPARE(f.Window->geometry(), stored);
                continue;
            }
            QVERIFY(screen != screens.end() && (stored.left() != 1000 || *screen == screens.last()));
            QCOMPARE(f.Window->size(), stored.size().boundedTo(f.Window->Room().size()));
        }
    }

    void ToolsFitTheScreen()
    {
        FormDriver d;
        d.F.Window->setGeometry(50, 100, 500, 400);
        d.F.Show();
        d.F.AddRows({1});
        const auto open = [&] {
            d.OpenTool("MEditId3", "Id3Info", {1});
            QVERIFY(d.F.Window->screen()->availableGeometry().contains(d.Form->frameGeometry()));
        };
        open();
        QCOMPARE(d.Form->findChild<QScrollArea *>(u"FormScroller"_s), nullptr);
        const QSize natural = d.Form->size();
        // A size that the user gave it stays, unless the screen has no room for it any more.
        d.Form->resize(natural + QSize(30, 20));
        QTest::keyClick(d.Form, Qt::Key_Escape);
        open();
        QCOMPARE(d.Form->size(), natural + QSize(30, 20));
        QTest::keyClick(d.Form, Qt::Key_Escape);
        d.F.Window->setGeometry(820, 60, 360, 200);
        open();
        auto *scroller = d.Form->findChild<QScrollArea *>(u"FormScroller"_s);
        QVERIFY(scroller != nullptr);
        QTRY_VERIFY(scroller->verticalScrollBar()->isVisible());
        scroller->ensureWidgetVisible(d.At("CmdClose"));
        d.Click("CmdClose");
        QVERIFY(!d.Form->isVisible());
        d.F.Window->setGeometry(50, 100, 500, 400);
        open();
        QTRY_VERIFY(!scroller->verticalScrollBar()->isVisible() && !scroller->horizontalScrollBar()->isVisible());
    }

    void DialogsStandBesideTheWindow()
    {
        // Left of it, right of it, beyond the bottom, and centred over a window that is too wide or too high.
        for (const auto &[main, place] : {std::pair{QRect(400, 100, 300, 500), QPoint(200, 500)},
                                          {QRect(100, 100, 300, 500), QPoint(400, 500)},
                                          {QRect(400, 400, 300, 700), QPoint(200, 400)},
                                          {QRect(300, 100, 401, 500), QPoint(400, 300)},
                                          {QRect(300, 0, 300, 834), QPoint(350, 367)}})
            QCOMPARE(PlaceDialog(main, {200, 100}, {1000, 1000}), place);
    }

    void LongRunsDropKeysAndClicks()
    {
        QWidget window;
        QProgressBar bar(&window);
        QLabel label(&window);
        QCheckBox box(&window);
        const QShortcut shortcut(Qt::ALT | Qt::Key_B, &window, &box, &QCheckBox::toggle);
        box.setGeometry(0, 50, 100, 20);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        {
            LongRun run(&bar, &label);
            const Progress progress = run.AsProgress();
            progress.SetText(u"z:\\music"_s);
            progress.SetLimits(10, 500);
            QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, 10));
            QVERIFY(!box.isChecked());
            QTest::keyClick(&window, Qt::Key_B, Qt::AltModifier);
            window.close();
            progress.SetValue(500);
            QVERIFY(!box.isChecked() && window.isVisible() && !progress.Stopped());
            QVERIFY(bar.minimum() == 10 && bar.value() == 500 && label.text() == u"z:\\music");
            QTest::keyClick(&window, Qt::Key_Escape);
            QVERIFY(progress.Stopped() && run.Stopped());
        }
        QTest::keyClick(&window, Qt::Key_B, Qt::AltModifier);
        QVERIFY(box.isChecked());
    }
};

int main(int argc, char **argv)
{
    // The platform takes its screens from a file, which it finds from the current directory.
    const QTemporaryDir folder;
    QDir::setCurrent(folder.path());
    QFile screens(u"screens.json"_s);
    if (!screens.open(QIODevice::WriteOnly) ||
        screens.write(R"({"screens": [{"name": "1", "x": 0, "y": 0, "width": 800, "height": 800, "logicalDpi": 96},
                                      {"name": "2", "x": 800, "y": 0, "width": 800, "height": 600, "logicalDpi": 192}]})") <
            0)
        return 1;
    screens.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=screens.json");
    const QApplication app(argc, argv);
    SettingsTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "SettingsTest.moc"
