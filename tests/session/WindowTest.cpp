#include "support/MainFixture.h"

#include "session/FormLayout.h"
#include "session/GridView.h"
#include "session/MenuTable.h"

#include <QDialog>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{
bool Enabled(const MainFixture &f, const char *name)
{
    return f.Window->Command(name)->isEnabled();
}
} // namespace

/// The status bar, the enabling of commands, the views, the settings and the session.
class WindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void PanelsFollowTheSelection();
    void CommandsFollowTheSelection();
    void EveryCommandIsDeclaredOnce();
    void SortAsksAndToggles();
    void PreviewsThroughTheRegisteredProgram();
    void RefreshReadsAgain();
    void ViewsAndOptions();
    void ToolbarIsCustomized();
    void ShortcutsOpenWhatTheyStandFor();
    void SettingsSurvive();
    void BadSettingsAreIgnoredOneByOne();
    void SavingOffKeepsOnlyTheLists();
    void SessionComesBack();
    void FailuresAreShownAndThePlaylistStays();
    void FormArithmetic();
    void DialogPlaces_data();
    void DialogPlaces();
};

void WindowTest::PanelsFollowTheSelection()
{
    MainFixture f;
    QCOMPARE(f.Panels(), (QStringList{u"Total: 0"_s, u"0:00"_s, u"0 Bytes"_s}));
    f.Window->AddPath(f.Write(u"l.m3u"_s, "gone.wma\r\n"), false);
    f.AddRows({100, 20, 3000});
    f.Window->AddPath(f.Write(u"l.m3u"_s, "gone.wma\r\n"), false);
    f.Window->MEditSelNone_Click();
    // A missing row repeats the row before it; before any measured row that is nothing.
    QCOMPARE(f.Panels(), (QStringList{u"Total: 5"_s, u"0:00"_s, u"6,120 Bytes"_s}));
    f.Select({3});
    QCOMPARE(f.Panels(), (QStringList{u"Track: 3/5"_s, u"0:00[0:00]"_s, u"20 Bytes"_s}));
    f.Select({2, 5});
    QCOMPARE(f.Panels(), (QStringList{u"2 Items"_s, u"0:00"_s, u"3,100 Bytes"_s}));
    // The one selected row counts, also when the focus has gone elsewhere.
    f.Window->ListView1.SetFocusedRow(1);
    f.Window->ListView1.Reselect([](int row, const PlaylistItem &) { return row == 4; });
    QTest::keyRelease(f.Window->View(), Qt::Key_Control);
    QCOMPARE(f.Panels(), (QStringList{u"Track: 4/5"_s, u"0:00[0:00]"_s, u"3,000 Bytes"_s}));

    MainFixture music;
    for (const char *name : {"cbr128-mpeg1-joint-info.mp3", "vbr-mpeg1-joint-xing.mp3", "cbr56-mpeg2-joint-bare.mp3"})
        music.Window->AddPath(FromHostPath(QLatin1StringView(TEST_DATA "/") + QLatin1StringView(name)), false);
    music.Select({3});
    const Grid &grid = music.Window->ListView1;
    const int before = grid.Item(1).Length + grid.Item(2).Length;
    QVERIFY(before > 0);
    QCOMPARE(music.Window->PanelText(2), u"0:0%1[0:0%2]"_s.arg(grid.Item(3).Length).arg(before));
}

void WindowTest::CommandsFollowTheSelection()
{
    MainFixture f;
    f.AddRows({1, 2, 3});
    const QList<const char *> needSelection{"MEditRemove",   "MEditPlaySel", "MEditPlayFol", "MEditPlayLoc",
                                            "MEditSelAlt",   "MEditSelNone", "MEditSelLoc",  "MEditSeMark",
                                            "MEditSeUnMark", "MEditId3"};
    for (const char *name : needSelection)
        QVERIFY2(!Enabled(f, name), name);
    f.Select({1});
    for (const char *name : needSelection)
        QVERIFY2(Enabled(f, name), name);
    QVERIFY(!Enabled(f, "MEditMoveUp") && Enabled(f, "MEditMoveDown") && !Enabled(f, "MEditSelTop"));
    QVERIFY(Enabled(f, "MEditFileInfo") && Enabled(f, "MEditSelAll") && Enabled(f, "MEditSelBottom"));
    f.Select({2, 3});
    QVERIFY(Enabled(f, "MEditMoveUp") && !Enabled(f, "MEditMoveDown") && Enabled(f, "MEditSelTop"));
    QVERIFY(!Enabled(f, "MEditFileInfo") && Enabled(f, "MEditSelAll"));
    f.Trigger("MEditSelAll");
    QVERIFY(!Enabled(f, "MEditSelAll") && !Enabled(f, "MEditSelTop") && !Enabled(f, "MEditSelBottom"));
    // A tool that is not there stays disabled whatever is selected.
    QVERIFY(!Enabled(f, "MToolsRename"));
}

void WindowTest::EveryCommandIsDeclaredOnce()
{
    const MainFixture f;
    QSet<QString> names;
    QSet<QString> shortcuts;
    for (const MenuEntry &entry : MenuTable()) {
        if (entry.Name[0] == '\0')
            continue;
        QVERIFY2(!names.contains(QLatin1StringView(entry.Name)), entry.Name);
        names.insert(QLatin1StringView(entry.Name));
        QVERIFY2(entry.Shortcut.isEmpty() || !shortcuts.contains(entry.Shortcut.toString()), entry.Name);
        shortcuts.insert(entry.Shortcut.toString());
        const QKeySequence key = f.Window->Command(entry.Name)->shortcut();
        QCOMPARE(key.toString(QKeySequence::PortableText), entry.Shortcut.toString());
        QVERIFY2(entry.Icon[0] == '\0' || !f.Window->Command(entry.Name)->icon().isNull(), entry.Name);
    }
}

void WindowTest::SortAsksAndToggles()
{
    MainFixture f;
    f.Trigger("MViewSortSize"); // An empty grid asks nothing.
    f.AddRows({300, 20, 1000});
    f.Prompts.Expect(u"Sort by Size?"_s, PromptAnswer::No);
    f.Trigger("MViewSortSize");
    QCOMPARE(f.Rows(), u"a b c"_s);
    f.Select({3});
    for (const QString &rows : {u"b a C"_s, u"C a b"_s}) {
        f.Prompts.Expect(u"Sort by Size?"_s, PromptAnswer::Yes);
        f.Trigger("MViewSortSize");
        QCOMPARE(f.Rows(), rows);
    }
    f.Prompts.Expect(u"Sort by Original Order?"_s, PromptAnswer::Yes);
    Q_EMIT f.Window->View()->HeaderClicked(ColumnOriginalOrder);
    QCOMPARE(f.Rows(), u"a b C"_s);
    QVERIFY(!f.Window->PlaylistDirty);
}

void WindowTest::PreviewsThroughTheRegisteredProgram()
{
    MainFixture f;
    f.AddRows({1, 2, 3});
    const auto line = [&](const char *name) -> QByteArray {
        return ToHostBytes(f.Inside(QLatin1StringView(name))) + "\r\n";
    };
    QTest::mouseDClick(f.Window->View()->viewport(), Qt::LeftButton, {}, QPoint(5, 300));
    QCOMPARE(f.ShellCalls, QStringList{u"open "_s + f.Inside(u"app\\tmp.m3u"_s)});
    QCOMPARE(f.Read(u"app\\tmp.m3u"_s), line("a.wma") + line("b.wma") + line("c.wma"));
    f.Select({2});
    QTest::keyClick(f.Window->View(), Qt::Key_Return);
    QCOMPARE(f.Read(u"app\\tmp.m3u"_s), line("b.wma"));
    f.Trigger("MEditPlayLoc");
    QCOMPARE(f.Read(u"app\\tmp.m3u"_s), line("b.wma") + line("c.wma"));
    f.Write(u"unlisted.mp3"_s, "1");
    f.Trigger("MEditPlayFol");
    QCOMPARE(f.Read(u"app\\tmp.m3u"_s), line("unlisted.mp3") + line("a.wma") + line("b.wma") + line("c.wma"));
    f.Trigger("MEditSelLoc");
    f.Trigger("MEditFileInfo");
    QCOMPARE(f.ShellCalls.mid(4), (QStringList{u"explore "_s + f.Folder, u"properties "_s + f.Inside(u"b.wma"_s)}));

    const QByteArray last = f.Read(u"app\\tmp.m3u"_s);
    DeleteFile(f.Inside(u"b.wma"_s));
    f.Prompts.Expect(u"You cannot preview the item(s) because they are pointed to incorrectly.\n"
                     u"Use 'Purge Playlist Entries' to remove or relocate the missing items.."_s,
                     PromptAnswer::Ok);
    f.Trigger("MEditPlaySel");
    QCOMPARE(f.Read(u"app\\tmp.m3u"_s), last);
}

void WindowTest::RefreshReadsAgain()
{
    MainFixture f;
    f.AddRows({10, 20});
    f.Window->AddPath(f.Write(u"l.m3u"_s, "late.wma\r\n"), false);
    f.Write(u"late.wma"_s, "12345");
    DeleteFile(f.Inside(u"a.wma"_s));
    f.Select({2});
    f.Trigger("MEditSeMarkRed");
    f.Window->PlaylistDirty = true;
    f.Trigger("MViewRefresh");
    QCOMPARE(f.Rows(), u"a b late"_s);
    const Grid &grid = f.Window->ListView1;
    QVERIFY(grid.Item(1).Ghosted && !grid.Item(3).Ghosted);
    QCOMPARE(grid.Item(2).SmallIcon, IconNormal);
    QVERIFY(f.Window->PlaylistDirty);
}

void WindowTest::ViewsAndOptions()
{
    MainFixture f;
    f.Window->resize(800, 600);
    f.Window->show();
    auto *toolbar = f.Window->findChild<QWidget *>(u"Toolbar1"_s);
    auto *statusBar = f.Window->findChild<QWidget *>(u"StatusBar1"_s);
    const QColor window = f.Window->View()->palette().color(QPalette::Base);
    f.Trigger("MViewCompact");
    QVERIFY(toolbar->isVisible() && !statusBar->isVisible() && toolbar->y() > f.Window->View()->y());
    QCOMPARE(f.Window->View()->palette().color(QPalette::Base), QColor(64, 0, 0));
    QCOMPARE(f.Window->View()->palette().color(QPalette::Text), QColor(255, 0, 0));
    f.Trigger("MViewNormal");
    QVERIFY(toolbar->isVisible() && statusBar->isVisible() && toolbar->y() < f.Window->View()->y());
    QCOMPARE(f.Window->View()->palette().color(QPalette::Base), window);
    // Dragged by its free area, the toolbar follows the mouse to the other half of the window.
    QTest::mousePress(toolbar, Qt::LeftButton, {}, QPoint(700, 5));
    QTest::mouseMove(toolbar, QPoint(700, 500));
    QTest::mouseRelease(toolbar, Qt::LeftButton, {}, QPoint(700, 5));
    QVERIFY(toolbar->y() > f.Window->View()->y());
    f.Trigger("MViewNormal");
    f.Trigger("MViewToolbar");
    QVERIFY(!toolbar->isVisible() && !f.Window->Command("MViewToolbar")->isChecked());
    QCOMPARE(f.Window->View()->y(), 0);

    f.Trigger("MHidOptionColumnVis(1)");
    QVERIFY(f.Window->View()->isColumnHidden(ColumnTime - 1));
    f.Trigger("MHidOptionColumnVis(1)");
    QCOMPARE(f.Window->View()->columnWidth(ColumnTime - 1), 60);
    f.Window->View()->setColumnWidth(ColumnPath - 1, 33);
    f.Trigger("MHidOptionColumnVisAll");
    QCOMPARE(f.Window->View()->columnWidth(ColumnPath - 1), 650);
    f.Trigger("MHidOptionMenuVisible");
    QVERIFY(!f.Window->menuBar()->isVisible());
    f.Trigger("MHidOptionMenuVisible");
    QVERIFY(f.Window->menuBar()->isVisible());
    f.Trigger("MViewTransVal(10)");
    QCOMPARE(qRound(f.Window->windowOpacity() * 255), 127);
    QVERIFY(f.Window->Command("MViewTransVal(10)")->isChecked() && !f.Window->Command("MViewTransVal(0)")->isChecked());
}

void WindowTest::ToolbarIsCustomized()
{
    MainFixture f;
    f.Window->show();
    auto *bar = f.Window->findChild<QWidget *>(u"Toolbar1"_s);
    const auto shows = [&bar](const QString &name) { return bar->findChild<QWidget *>(name) != nullptr; };
    QTest::mouseDClick(bar, Qt::LeftButton, {}, QPoint(bar->width() - 2, 2));
    auto *dialog = f.Window->findChild<QDialog *>(u"CustomizeToolbar"_s);
    QVERIFY(dialog != nullptr && dialog->isVisible());
    auto *list = dialog->findChild<QListWidget *>();
    const auto press = [&](const QString &name) {
        QTest::mouseClick(dialog->findChild<QWidget *>(name), Qt::LeftButton);
    };
    // The first button goes, the second one moves behind the third.
    QTest::keyClick(list, Qt::Key_Space);
    QVERIFY(!shows(u"MFileNew"_s));
    list->setCurrentRow(1);
    press(u"CmdDown"_s);
    QVERIFY(f.Settings[u"PS/Toolbar1"_s].startsWith(u"MFileSave,MFileOpen,-,MEditAddDir,"));
    f.Restart();
    f.Window->RestoreSession({});
    bar = f.Window->findChild<QWidget *>(u"Toolbar1"_s);
    QVERIFY(!shows(u"MFileNew"_s));
    QVERIFY(bar->findChild<QWidget *>(u"MFileSave"_s)->x() < bar->findChild<QWidget *>(u"MFileOpen"_s)->x());

    f.Settings[u"PS/Toolbar1"_s] = u"-,nonsense,-"_s;
    f.Restart();
    f.Window->RestoreSession({});
    f.Window->show();
    bar = f.Window->findChild<QWidget *>(u"Toolbar1"_s);
    QVERIFY(shows(u"MFileNew"_s) && shows(u"MHelpHelp"_s));
    QTest::keyClick(bar->findChild<QWidget *>(u"MHelpHelp"_s), Qt::Key_F2);
    dialog = f.Window->findChild<QDialog *>(u"CustomizeToolbar"_s);
    list = dialog->findChild<QListWidget *>();
    for (int row = 0; row < list->count(); ++row)
        list->item(row)->setCheckState(Qt::Unchecked);
    // The last button stays; Reset brings all of them back.
    QCOMPARE(f.Settings[u"PS/Toolbar1"_s], u"MHelpHelp"_s);
    press(u"CmdReset"_s);
    QVERIFY(shows(u"MFileNew"_s));
}

void WindowTest::ShortcutsOpenWhatTheyStandFor()
{
    MainFixture f;
    f.Window->RestoreSession({});
    const QString page = f.Write(u"my page.URL"_s, "[Other]\r\n[InternetShortcut]\r\nURL=http://a.example/x\r\n");
    const QString odd = f.Write(u"odd & even.url"_s, "no address\r\nhttp://last.example\r\n[InternetShortcut]");
    for (const QString &path : {page, odd, odd, f.Write(u"notes.txt"_s, "x")}) {
        f.Prompts.ExpectPath({}, path);
        f.Trigger("MToolsShortCutAdd(0)");
    }
    f.Prompts.ExpectPath({}, {});
    f.Trigger("MToolsShortCutAdd(0)");
    f.Window->close();
    QVERIFY(QFile::remove(f.Temporary.filePath(u"notes.txt"_s)));
    f.Restart();
    f.Window->RestoreSession({});
    QCOMPARE(f.Window->Command("MToolsShortCutAdd(1)")->text(), u"My Page.url"_s);
    QCOMPARE(f.Window->Command("MToolsShortCutAdd(2)")->text(), u"Odd && Even.url"_s);
    f.Trigger("MToolsShortCutAdd(1)");
    f.Trigger("MToolsShortCutAdd(2)");
    QCOMPARE(f.ShellCalls, (QStringList{u"open http://a.example/x"_s, u"open [InternetShortcut]"_s}));
    QVERIFY(QFile::remove(f.Temporary.filePath(u"my page.URL"_s)));
    f.Prompts.Expect(u"Failed to open Internet shortcut!"_s, PromptAnswer::Ok);
    f.Trigger("MToolsShortCutAdd(1)");
    f.Trigger("MToolsShortCutDel");
    QCOMPARE(f.Window->findChild<QMenu *>(u"MToolsShortCut"_s)->actions().last(),
             f.Window->Command("MToolsShortCutAdd(0)"));
    f.Window->close();
    QCOMPARE(f.Settings[u"SH/1"_s], QString());
}

void WindowTest::SettingsSurvive()
{
    MainFixture f;
    f.Window->RestoreSession({});
    f.Window->setGeometry(30, 40, 700, 500);
    f.Trigger("MViewCompact");
    f.Trigger("MHidOptionColumnVis(4)");
    f.Trigger("MHidOptionToolbarFlat");
    f.Trigger("MViewTransVal(3)");
    f.Window->View()->setColumnWidth(ColumnPath - 1, 321);
    f.Prompts.ExpectPath({}, f.Write(u"l.m3u"_s, "gone.wma\r\n"));
    f.Trigger("MFileOpen");
    f.Window->close();
    const QMap<QString, QString> stored = f.Settings;
    const QMap<QString, QString> wanted{{u"PS/W"_s, u"10500"_s},
                                        {u"PS/H"_s, u"7500"_s},
                                        {u"PS/L"_s, u"450"_s},
                                        {u"PS/T"_s, u"600"_s},
                                        {u"VE/TA"_s, u"1"_s},
                                        {u"VE/SA"_s, u"0"_s},
                                        {u"VE/TRANS"_s, u"3"_s},
                                        {u"ToolB/Flat"_s, u"False"_s},
                                        {u"ToolB/3D"_s, u"False"_s},
                                        {u"ToolB/Align"_s, u"2"_s},
                                        {u"Menu/Visible"_s, u"True"_s},
                                        {u"TableB/BCD"_s, u"False"_s},
                                        {u"TableB/BC"_s, u"64"_s},
                                        {u"TableB/FC"_s, u"255"_s},
                                        {u"TableB/TV4"_s, u"321"_s},
                                        {u"TableB/TV5"_s, u"0"_s},
                                        {u"TableB/TX5"_s, u"False"_s},
                                        {u"TableB/TX4"_s, u"True"_s},
                                        {u"TableFont/Default"_s, u"True"_s},
                                        {u"TableFont/Size"_s, u"8"_s},
                                        {u"RF/1"_s, u"1: "_s + f.Inside(u"l.m3u"_s)},
                                        {u"RF/Wkdir"_s, f.Folder},
                                        {u"SSE/V"_s, u"1"_s}};
    for (auto it = wanted.cbegin(); it != wanted.cend(); ++it)
        QCOMPARE(it.key() + u'=' + stored[it.key()], it.key() + u'=' + it.value());

    f.Restart();
    f.Window->RestoreSession({});
    f.Window->close();
    QCOMPARE(f.Settings, stored);
    f.Restart();
    f.Window->RestoreSession({});
    f.Trigger("MViewNormal");
    f.Window->close();
    QCOMPARE(f.Settings[u"TableB/BC"_s], u"-2147483643"_s);
    QCOMPARE(f.Settings[u"TableB/FC"_s], u"-2147483640"_s);
}

void WindowTest::BadSettingsAreIgnoredOneByOne()
{
    MainFixture f;
    const QSize first = f.Window->size();
    f.Settings = {{u"PS/H"_s, u"400"_s},         {u"PS/W"_s, u"6000"_s},      {u"VE/TA"_s, u"rubbish"_s},
                  {u"VE/SA"_s, u"0"_s},          {u"TableB/TV1"_s, u"-7"_s},  {u"TableB/TV2"_s, u"77"_s},
                  {u"TableB/BCD"_s, u"False"_s}, {u"TableB/BC"_s, u"blue"_s}, {u"TableFont/Size"_s, u"10000"_s},
                  {u"VE/TRANS"_s, u"99"_s},      {u"ToolB/Align"_s, u"5"_s},  {u"RF/Wkdir"_s, u"q:\\none"_s}};
    f.Window->RestoreSession({});
    QCOMPARE(f.Window->size(), QSize(400, first.height()));
    QVERIFY(f.Window->Command("MViewToolbar")->isChecked() && !f.Window->Command("MViewStatusBar")->isChecked());
    QCOMPARE(f.Window->View()->columnWidth(ColumnFileName - 1), 200);
    QCOMPARE(f.Window->View()->columnWidth(ColumnTime - 1), 77);
    QCOMPARE(f.Window->View()->font().pointSize(), 8);
    QCOMPARE(f.Window->windowOpacity(), 1.0);
    QCOMPARE(CurrentDirectory(), f.Folder);
}

void WindowTest::SavingOffKeepsOnlyTheLists()
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
    f.Restart();
    f.Window->RestoreSession({});
    QVERIFY(!f.Window->Command("MToolsSaveSetting")->isChecked());
    QVERIFY(f.Window->width() != 600);
    f.Window->close();
    // What has gone vanishes with the next save, and the rest closes ranks.
    QCOMPARE(f.Settings[u"SH/1"_s], shortcut);
    QCOMPARE(f.Settings[u"SH/2"_s], QString());
}

void WindowTest::SessionComesBack()
{
    MainFixture f;
    f.Player = u"c:\\Programs\\Winamp\\Winamp.exe"_s;
    f.Window->RestoreSession({});
    QCOMPARE(f.Read(u"app\\tmp.m3u"_s), QByteArray("#\r\n"));
    QVERIFY(f.Window->Command("MToolsWinamp")->isVisible());
    f.AddRows({1, 2});
    f.Window->close();
    QCOMPARE(f.Settings[u"RF/W"_s], u"c:\\Programs\\Winamp\\winamp.bm"_s);
    f.Player.clear();
    f.Restart();
    f.Window->RestoreSession({});
    QCOMPARE(f.Rows(), u"a b"_s);
    QVERIFY(!f.Window->PlaylistDirty && f.Window->CurrentPlaylistPath.isEmpty());
    QVERIFY(!f.Window->Command("MToolsWinamp")->isVisible());
    f.Restart();
    f.Window->RestoreSession(f.Write(u"a b\\x.m3u"_s, "../b.wma\r\n"));
    QCOMPARE(f.Rows(), u"b"_s);
    QVERIFY(!f.Window->PlaylistDirty);
    QCOMPARE(f.Window->windowTitle(), u"[Vantrel] M3U Playlist Editor v2.0 "_s);
}

void WindowTest::FailuresAreShownAndThePlaylistStays()
{
    MainFixture f;
    f.AddRows({1, 2});
    f.Select({1, 2});
    // Draws that never leave place 0: the shuffle gives up.
    f.Prompts.Expect(u"The selection could not be shuffled: the random draws gave no valid place. "
                     u"The rows are as they were; try again."_s,
                     PromptAnswer::Ok);
    f.Trigger("MEditSelShuffle");
    QCOMPARE(f.Rows(), u"A B"_s);
}

void WindowTest::FormArithmetic()
{
    const FormLayout top = LayOutForm({800, 600}, 40, 20, true);
    QCOMPARE(top.Grid, QRect(0, 40, 800, 540));
    const FormLayout bottom = LayOutForm({800, 600}, 40, 20, false);
    QCOMPARE(bottom.Grid, QRect(0, 0, 800, 540));
    QCOMPARE(bottom.Toolbar, QRect(0, 540, 800, 40));
    QCOMPARE(bottom.StatusBar, QRect(0, 580, 800, 20));
    QVERIFY(LayOutForm({800, 60}, 40, 20, true).Grid.isEmpty());
}

void WindowTest::DialogPlaces_data()
{
    QTest::addColumn<QRect>("main");
    QTest::addColumn<QPoint>("place");
    QTest::newRow("left of it") << QRect(400, 100, 300, 500) << QPoint(200, 500);
    QTest::newRow("right of it") << QRect(100, 100, 300, 500) << QPoint(400, 500);
    QTest::newRow("beyond the bottom") << QRect(400, 400, 300, 700) << QPoint(200, 400);
    QTest::newRow("too wide, centred") << QRect(300, 100, 401, 500) << QPoint(400, 300);
    QTest::newRow("too high, centred") << QRect(300, 0, 300, 834) << QPoint(350, 367);
}

void WindowTest::DialogPlaces()
{
    QFETCH(QRect, main);
    QTEST(PlaceDialog(main, {200, 100}, {1000, 1000}), "place");
}

QTEST_MAIN(WindowTest)
#include "WindowTest.moc"
