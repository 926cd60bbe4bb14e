#include "support/MainFixture.h"

#include "session/SplashFrm.h"
#include "session/StatusPanel.h"

#include <QApplication>
#include <QDialog>
#include <QHeaderView>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace
{
/// Adds the rows b, d, a and c, which no file stands behind. Each column puts them in an order of its own, and times
/// and sizes read as texts would be in another one.
void FillRows(MainFixture &f)
{
    static constexpr struct {
        char Name;
        int Length;
        int Size;
    } rows[] = {{'b', 600, 20'000}, {'d', 120, 9'000}, {'a', 3600, 17'000'000}, {'c', 121, 100'000}};
    f.Window->ListView1.Clear();
    for (const auto &row : rows) {
        const auto rank = [&](const char *order) { return QString::number(QByteArray(order).indexOf(row.Name)); };
        FileRecord record;
        record.FileName = QLatin1Char(row.Name) + u".mp3"_s;
        record.Folder = u"q:\\"_s + rank("cadb") + u'\\';
        record.FileType = rank("cbad");
        record.LayerText = rank("badc");
        record.BitrateText = rank("acbd");
        record.SampleRateText = rank("dacb");
        record.ModeText = rank("cdab");
        record.Length = row.Length;
        record.Size = row.Size;
        f.Window->ListView1.Insert(record);
    }
    f.Window->PlaylistDirty = false;
    f.Window->MEditSelNone_Click();
}

/// Those of the Edit menu's commands that follow the selection and are grey, without "MEdit".
QString GreyCommands(const MainFixture &f)
{
    QStringList grey;
    for (const char *name : {"MoveUp", "MoveDown", "SelAll", "SelTop", "SelBottom", "FileInfo", "Remove", "PlaySel",
                             "PlayFol", "PlayLoc", "SelNone", "SelAlt", "SelLoc", "SeMark", "SeUnMark", "Id3"}) {
        if (!f.Window->Command(QByteArray("MEdit").append(name))->isEnabled())
            grey.append(QLatin1StringView(name));
    }
    return grey.join(u' ');
}

/// The first panel, as rows in which a selected one is in capitals want it.
QString CountsOf(const QString &rows)
{
    const QStringList names = rows.split(u' ');
    const auto isSelected = [](const QString &name) { return name.isUpper(); };
    const auto selected = std::count_if(names.begin(), names.end(), isSelected);
    const auto place = std::find_if(names.begin(), names.end(), isSelected) - names.begin();
    return selected == 0   ? u"Total: %1"_s.arg(names.size())
           : selected == 1 ? u"Track: %1/%2"_s.arg(place + 1).arg(names.size())
                           : u"%1 Items"_s.arg(selected);
}

QString Icons(const MainFixture &f)
{
    QString icons;
    for (int row = 1; row <= f.Window->ListView1.Count(); ++row)
        icons += QString::number(f.Window->ListView1.Item(row).SmallIcon);
    return icons;
}

QColor Shown(const MainFixture &f, QPalette::ColorRole role)
{
    return f.Window->View()->palette().color(role);
}

/// The object name of the menu that has come up, which goes again.
QString MenuThatCameUp()
{
    QWidget *menu = QApplication::activePopupWidget();
    const QString name = menu != nullptr ? menu->objectName() : QString();
    if (menu != nullptr)
        menu->close();
    return name;
}
} // namespace

/// Rows, panels, commands, views and bars, through the window.
class WindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void MenusHoldTheirCommands()
    {
        const MainFixture f;
        // Each menu with the number of its lines, and of those that take a check.
        QStringList menus;
        for (const auto *menu : f.Window->findChildren<QMenu *>(QRegularExpression(u"^M"_s))) {
            const QList<QAction *> lines = menu->actions();
            const auto checkable =
                std::count_if(lines.begin(), lines.end(), [](auto *line) { return line->isCheckable(); });
            menus.append(u"%1 %2 %3"_s.arg(menu->objectName()).arg(lines.size()).arg(checkable));
        }
        menus.sort();
        QCOMPARE(menus.join(u' '),
                 u"MEdit 17 0 MEditPlay 4 0 MEditSeMark 3 0 MEditSel 11 0 MFile 11 0 MFileRec 9 0 MHelp 4 0 "
                 u"MHidOption 4 0 MHidOptionColumns 11 9 MHidOptionMenu 1 1 MHidOptionTable 3 0 MHidOptionTableBC 2 1 "
                 u"MHidOptionTableFC 2 1 MHidOptionTableFont 2 1 MHidOptionToolbar 2 2 MTools 10 1 MToolsShortCut 6 0 "
                 u"MToolsWinamp 3 0 MToolsWizards 3 0 MView 13 2 MViewSort 10 0 MViewTrans 11 11"_s);
        QCOMPARE(f.Window->menuBar()->actions().size(), 5);
        QCOMPARE(f.Window->Command("MView")->menu()->actions().last()->text(), u"GUI Options"_s);
    }

    void PanelsAndCommandsFollowTheSelection()
    {
        MainFixture f;
        f.Show();
        const QString all = u"Remove PlaySel PlayFol PlayLoc SelNone SelAlt SelLoc SeMark SeUnMark Id3"_s;
        QCOMPARE(f.Panels(), (QStringList{u"Total: 0"_s, u"0:00"_s, u"0 Bytes"_s}));
        FillRows(f);
        QCOMPARE(f.Panels(), (QStringList{u"Total: 4"_s, u"1:14:01"_s, u"16 Mb"_s}));
        QCOMPARE(GreyCommands(f), u"MoveUp MoveDown SelTop SelBottom FileInfo "_s + all);
        f.Click(1);
        QCOMPARE(f.Panels(), (QStringList{u"Track: 1/4"_s, u"10:00[0:00]"_s, u"20 Kb"_s}));
        QCOMPARE(GreyCommands(f), u"MoveUp SelTop"_s);
        f.Click(2, Qt::ControlModifier);
        QCOMPARE(f.Panels(), (QStringList{u"2 Items"_s, u"12:00"_s, u"28 Kb"_s}));
        QCOMPARE(GreyCommands(f), u"MoveUp FileInfo"_s);
        QTest::keyClick(f.Window->View(), Qt::Key_End);
        QCOMPARE(f.Panels(), (QStringList{u"Track: 4/4"_s, u"2:01[1:12:00]"_s, u"98 Kb"_s}));
        QCOMPARE(GreyCommands(f), u"MoveDown SelBottom"_s);
        f.Press("Ctrl+A");
        QCOMPARE(GreyCommands(f), u"MoveUp MoveDown SelAll SelTop SelBottom FileInfo"_s);
        // With rows to select and none selected Select All is there again.
        f.Press("Ctrl+U");
        QCOMPARE(GreyCommands(f), u"MoveUp MoveDown SelTop SelBottom FileInfo "_s + all);
        // A key that leads to the row that has the focus selects it all the same.
        for (const auto key : {Qt::Key_End, Qt::Key_Home, Qt::Key_Home}) {
            f.Press("Ctrl+U");
            QTest::keyClick(f.Window->View(), key);
            QCOMPARE(f.Rows(), key == Qt::Key_End ? u"b d a C"_s : u"B d a c"_s);
        }

        // A missing row counts with the numbers of the row before it, and before the first measured one with none.
        FileRecord missing;
        missing.FileName = u"gone.mp3"_s;
        f.Window->ListView1.Insert(missing, 1);
        f.Window->ListView1.Insert(missing, 4);
        f.Select({});
        QCOMPARE(f.Panels(), (QStringList{u"Total: 6"_s, u"1:16:01"_s, u"16 Mb"_s}));
        // The one selected row counts, also when the focus has gone elsewhere; numbers of any length are shown whole.
        FileRecord huge;
        huge.FileName = u"huge.wav"_s;
        huge.Length = 2'000'000'000;
        huge.Size = 4'000'000'000'000;
        f.Window->ListView1.Insert(huge, 3);
        f.Select({3});
        f.Window->ListView1.SetFocusedRow(1);
        QTest::keyRelease(f.Window->View(), Qt::Key_Control);
        QCOMPARE(f.Panels(), (QStringList{u"Track: 3/7"_s, u"555555:33:20[10:00]"_s, u"3,814,697 Mb"_s}));
        f.Window->resize(1, 1);
        QCoreApplication::processEvents();
        int end = 0;
        for (const auto *panel : f.Bar("StatusBar1")->findChildren<StatusPanel *>()) {
            QVERIFY(panel->x() >= end);
            end = panel->x() + panel->fontMetrics().horizontalAdvance(panel->text());
            QVERIFY(panel->geometry().right() >= end - 1);
        }
        QVERIFY(f.Window->View()->geometry().top() >= f.Bar("Toolbar1")->geometry().bottom());
        QVERIFY(f.Window->View()->viewport()->height() > 30);
        QVERIFY(f.Window->View()->geometry().bottom() <= f.Bar("StatusBar1")->geometry().top());
    }

    void RowCommandsRunByKey()
    {
        MainFixture f;
        f.Show();
        // A key or, where there is none, a command, the rows that are selected, and what comes of them.
        const struct {
            const char *Command;
            QList<int> Rows;
            QString Result;
            bool Dirty = false;
        } steps[] = {{"F3", {2, 3}, u"D A b c"_s, true},
                     {"F4", {1, 3}, u"d B c A"_s, true},
                     {"Del", {2, 4}, u"b a"_s, true},
                     {"Ctrl+T", {3}, u"A b d c"_s},
                     {"Ctrl+B", {1, 3}, u"d c B A"_s},
                     {"Ctrl+A", {}, u"B D A C"_s},
                     {"Ctrl+U", {1, 2}, u"b d a c"_s},
                     {"Ctrl+Z", {1}, u"b D A C"_s},
                     {"Ctrl+J", {1, 2, 3, 4}, u"B d A c"_s},
                     {"Ctrl+R", {}, u"b D a C"_s},
                     {"MEditSelShuffle", {2, 3, 4}, u"b D C A"_s},
                     {"Shift+Ins", {1}, u"B d a c"_s}};
        for (const auto &[command, rows, result, dirty] : steps) {
            FillRows(f);
            f.Select(rows);
            f.Draws =
                QByteArrayView(command) == "Ctrl+R" ? QList<double>{0.4, 0.5, 0.1, 0.9} : QList<double>{0.7, 0.7, 0.4};
            command[0] == 'M' ? f.Trigger(command) : f.Press(command);
            QCOMPARE(QLatin1StringView(command) + f.Rows(), QLatin1StringView(command) + result);
            QCOMPARE(f.Window->PanelText(1), CountsOf(f.Rows()));
            QCOMPARE(f.Window->PlaylistDirty, dirty);
        }
        for (const auto &[row, command] :
             {std::pair{2, "MEditSeMarkGreen"}, {3, "MEditSeMarkRed"}, {4, "MEditSeMarkRed"}}) {
            f.Select({row});
            f.Trigger(command);
        }
        QCOMPARE(Icons(f), u"3455"_s);
        f.Press("Shift+Del");
        QCOMPARE(Icons(f), u"3451"_s);
        f.Trigger("MEditSelectMark");
        QCOMPARE(f.Rows(), u"B D A c"_s);
        QVERIFY(!f.Window->PlaylistDirty && f.Window->PanelText(1) == u"3 Items");

        // The view follows what moves and what comes.
        f.Window->AddPath(f.Write(u"l.m3u"_s, QByteArray("q:\\x.mp3\r\n").repeated(200)), true);
        const auto sees = [&](int row) {
            const QRect cell = f.Window->View()->visualRect(f.Window->ListView1.index(row - 1, 0));
            return f.Window->View()->viewport()->rect().contains(cell.topLeft());
        };
        QVERIFY(sees(204) && !sees(1));
        f.Select({2});
        f.Press("F3");
        QVERIFY(sees(1) && !sees(204));
        // Draws that never leave place 0: the shuffle gives up.
        FillRows(f);
        f.Select({1, 2});
        f.Draws.clear();
        f.Prompts.Expect(u"The selection could not be shuffled: the random draws gave no valid place. "
                         u"The rows are as they were; try again."_s,
                         PromptAnswer::Ok);
        f.Trigger("MEditSelShuffle");
        QCOMPARE(f.Rows(), u"B D a c"_s);
    }

    void SortsByEveryColumn()
    {
        MainFixture f;
        f.Window->resize(1800, 500);
        f.Show();
        f.Trigger("MViewSortSize"); // An empty grid asks nothing.
        FillRows(f);
        f.Select({3});
        f.Prompts.Expect(u"Sort by Size?"_s, PromptAnswer::No);
        f.Trigger("MViewSortSize");
        QCOMPARE(f.Rows(), u"b d A c"_s);
        const struct {
            const char *Command;
            Column Clicked;
            QString Caption;
            QString Order;
        } sorts[] = {{"MViewSortFilename", ColumnFileName, u"FileName"_s, u"A b c d"_s},
                     {"MViewSortTime", ColumnTime, u"Time"_s, u"d c b A"_s},
                     {"MViewSortSize", ColumnSize, u"Size"_s, u"d b c A"_s},
                     {"MViewSortFolder", ColumnPath, u"Path"_s, u"c A d b"_s},
                     {"MViewSortID", ColumnID, u"ID"_s, u"c b A d"_s},
                     {"MViewSortLayer", ColumnLayer, u"Layer"_s, u"b A d c"_s},
                     {"MViewSortBitrate", ColumnBitrate, u"Bitrate"_s, u"A c b d"_s},
                     {"MViewSortSamplerate", ColumnSamplerate, u"Samplerate"_s, u"d A c b"_s},
                     {"MViewSortMode", ColumnMode, u"Mode"_s, u"c d A b"_s},
                     {"MViewSortOrig", ColumnOriginalOrder, u"Original Order"_s, u"b d A c"_s}};
        QHeaderView *header = f.Window->View()->header();
        // The column that bears the mark, with a minus for descending; 0 for none.
        const auto mark = [&] {
            const int column = header->isSortIndicatorShown() ? header->sortIndicatorSection() + 1 : 0;
            return header->sortIndicatorOrder() == Qt::AscendingOrder ? column : -column;
        };
        QCOMPARE(mark(), 0);
        for (const auto &[command, clicked, caption, order] : sorts) {
            f.Prompts.Expect(u"Sort by "_s + caption + u'?', PromptAnswer::Yes);
            f.Trigger(command);
            QCOMPARE(f.Rows(), order);
            QCOMPARE(mark(), clicked);
            // Once more, now by its header: the other way round.
            f.Prompts.Expect(u"Sort by "_s + caption + u'?', PromptAnswer::Yes);
            const QPoint middle(header->sectionViewportPosition(clicked - 1) + 20, header->height() / 2);
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, middle);
            QCOMPARE(mark(), -clicked);
            QString reversed = order;
            std::reverse(reversed.begin(), reversed.end());
            QCOMPARE(f.Rows(), reversed);
            QCOMPARE(f.Window->PanelText(1), CountsOf(reversed));
        }
        QVERIFY(!f.Window->PlaylistDirty);
        // The mark stays while the rows stand so, whatever is clicked and whatever goes.
        f.Prompts.Expect(u"Sort by FileName?"_s, PromptAnswer::No);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(20, header->height() / 2));
        f.Press("Del");
        QCOMPARE(mark(), -ColumnOriginalOrder);
        QTest::keyClick(f.Window->View(), Qt::Key_Home);
        f.Press("F4");
        QCOMPARE(mark(), 0);
    }

    void AnswersStayUntilTheNextCommand()
    {
        MainFixture f;
        f.Show();
        f.AddRows({1, 2, 3});
        const auto answer = [&] { return f.Window->PanelText(4); };
        f.Select({1, 2});
        f.Press("Del");
        QCOMPARE(answer(), u"Removed 2 items"_s);
        f.Click(1);
        QTest::keyClick(f.Window->View(), Qt::Key_Home);
        QCOMPARE(answer(), u"Removed 2 items"_s);
        f.Prompts.ExpectPath(f.Folder + u'\\' + f.Folder.section(u'\\', -1) + u".m3u", f.Inside(u"l.m3u"_s));
        f.Press("Ctrl+S");
        QCOMPARE(answer(), u"Saved 1 item"_s);
        f.Press("Ctrl+A");
        QCOMPARE(answer(), QString());
        Q_EMIT f.Window->View()->FilesDropped({f.Inside(u"a.wma"_s), f.Inside(u"b.wma"_s)});
        QCOMPARE(answer(), u"Added 2 items"_s);
        f.Prompts.ExpectPath({}, f.Inside(u"l.m3u"_s));
        f.Press("Ctrl+I");
        QCOMPARE(answer(), u"Added 1 item"_s);
        f.Prompts.ExpectPath(u"Select Folder..."_s, f.Folder);
        f.Press("F1");
        QCOMPARE(answer(), u"Added 3 items"_s);
        QTest::keyClick(f.Window->View(), Qt::Key_F5);
        QCOMPARE(answer(), u"Read 7 items again"_s);
    }

    void PreviewsThroughTheRegisteredProgram()
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
        f.Trigger("MEditSelFol");
        QCOMPARE(f.Rows(), u"A B C"_s);
        // The desktop would hand the list to this program itself.
        f.NoPlayer = true;
        f.Trigger("MEditPlayList");
        QCOMPARE(f.Window->PanelText(4), u"No player is registered for playlists"_s);
        QCOMPARE(f.ShellCalls.size(), 6);
        f.NoPlayer = false;
        f.Trigger("MEditPlayList");
        QCOMPARE(f.Window->PanelText(4), QString());
    }

    void RefreshReadsAgain()
    {
        MainFixture f;
        f.Trigger("MViewRefresh");
        f.AddRows({10, 20});
        f.Window->AddPath(f.Write(u"l.m3u"_s, "late.wma\r\n"), false);
        f.Write(u"late.wma"_s, "12345");
        DeleteFile(f.Inside(u"a.wma"_s));
        f.Select({2});
        f.Trigger("MEditSeMarkRed");
        f.Window->PlaylistDirty = true;
        f.Show();
        QTest::keyClick(f.Window->View(), Qt::Key_F5);
        QCOMPARE(f.Rows(), u"a b late"_s);
        const Grid &grid = f.Window->ListView1;
        QVERIFY(grid.Item(1).Ghosted && !grid.Item(3).Ghosted);
        QCOMPARE(grid.Item(2).SmallIcon, IconNormal);
        QVERIFY(f.Window->PlaylistDirty && f.Window->View()->isVisible() &&
                f.Window->focusWidget() == f.Window->View());
        QCOMPARE(f.Panels(), (QStringList{u"Total: 3"_s, u"0:00"_s, u"25 Bytes"_s}));
    }

    void ToolbarRunsItsCommands()
    {
        MainFixture f;
        f.Show();
        const auto press = [&](const char *name) {
            auto *button = f.Bar("Toolbar1")->findChild<QToolButton *>(QLatin1StringView(name));
            QVERIFY2(button->isEnabled() && !button->icon().isNull() && !button->toolTip().isEmpty(), name);
            QTest::mouseClick(button, Qt::LeftButton);
        };
        // Whatever is selected, buttons stay enabled and their commands guard themselves.
        for (const char *name :
             {"MFileSave", "MEditRemove", "MEditMoveUp", "MEditMoveDown", "MEditPlaySel", "MEditPlayList"})
            press(name);
        f.AddRows({1, 2, 3});
        const QString list = f.Inside(u"l.m3u"_s);
        f.Prompts.ExpectPath(f.Folder + u'\\' + f.Folder.section(u'\\', -1) + u".m3u", list);
        press("MFileSave");
        f.Select({2});
        press("MEditMoveUp");
        QCOMPARE(f.Rows(), u"B a c"_s);
        press("MEditMoveDown");
        QCOMPARE(f.Rows(), u"a B c"_s);
        press("MEditPlaySel");
        QCOMPARE(f.Read(u"app\\tmp.m3u"_s), ToHostBytes(f.Inside(u"b.wma"_s)) + "\r\n");
        press("MEditPlayList");
        QCOMPARE(f.Read(u"app\\tmp.m3u"_s), f.Read(u"l.m3u"_s));
        press("MEditRemove");
        QCOMPARE(f.Rows(), u"a c"_s);
        f.Prompts.ExpectPath(u"Select Folder..."_s, f.Folder);
        press("MEditAddDir");
        QCOMPARE(f.Rows(), u"a c A B C"_s);
        press("MHelpHelp");
        f.Trigger("MHelpWebsite");
        QCOMPARE(f.ShellCalls.mid(2), (QStringList{u"open "_s + f.Inside(u"program\\VTLPLEH.htm"_s),
                                                   u"open https://vantrel.example/playlist-editor"_s}));
        f.Window->PlaylistDirty = false;
        press("MFileNew");
        f.Prompts.ExpectPath({}, list);
        press("MFileOpen");
        QCOMPARE(f.Rows(), u"a b c"_s);
        f.Select({1});
        press("MEditId3");
        QVERIFY(f.Window->findChild<QDialog *>(u"Id3Info"_s)->isVisible());
        QStringList tools;
        for (const QAction *tool : f.Bar("MToolsSearch")->findChild<QMenu *>()->actions())
            tools.append(tool->text().remove(u'&'));
        QCOMPARE(tools.join(u'|'), u"Search Playlist...|Purge Playlist Entries...|Rectify MP3 Filenames...|"
                                   u"Generate Report...|Autocreate M3U's...|Create MP3 CD-ROM..."_s);
    }

    void MenusComeUpOnRelease()
    {
        MainFixture f;
        FillRows(f);
        f.Show();
        const QPoint row = f.Window->View()->visualRect(f.Window->ListView1.index(1, 0)).center();
        QWidget *rows = f.Window->View()->viewport();
        // Some hosts ask for it when the button goes down, others when it comes up.
        QTest::mousePress(rows, Qt::RightButton, {}, row);
        QContextMenuEvent early(QContextMenuEvent::Mouse, row, rows->mapToGlobal(row));
        QCoreApplication::sendEvent(rows, &early);
        QCOMPARE(MenuThatCameUp(), QString());
        QTest::mouseRelease(rows, Qt::RightButton, {}, row);
        QVERIFY(f.Window->Command("MEditRemove")->isEnabled() && f.Rows() == u"b D a c");
        QCOMPARE(MenuThatCameUp(), u"MEdit"_s);
        f.Window->ListView1.Reselect([](int, const PlaylistItem &) { return true; });
        QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {}, {});
        QCoreApplication::sendEvent(rows, &byKey);
        QVERIFY(!f.Window->Command("MEditSelAll")->isEnabled());
        QCOMPARE(MenuThatCameUp(), u"MEdit"_s);

        QWidget *header = f.Window->View()->header()->viewport();
        QContextMenuEvent onHeader(QContextMenuEvent::Mouse, QPoint(20, 5), header->mapToGlobal(QPoint(20, 5)));
        QCoreApplication::sendEvent(header, &onHeader);
        QCOMPARE(MenuThatCameUp(), u"MHidOptionColumns"_s);

        QWidget *bar = f.Bar("Toolbar1");
        const QPoint free(bar->width() - 3, bar->height() / 2);
        QTest::mousePress(bar, Qt::RightButton, {}, free);
        QCOMPARE(MenuThatCameUp(), QString());
        QTest::mouseRelease(bar, Qt::RightButton, {}, free);
        QCOMPARE(MenuThatCameUp(), u"MHidOption"_s);
        QCoreApplication::sendEvent(bar, &byKey);
        QCOMPARE(MenuThatCameUp(), u"MHidOption"_s);
        // A click with the other button brings none up, and does not drag either.
        QTest::mouseClick(bar, Qt::LeftButton, {}, free);
        f.Click(1);
        QCOMPARE(MenuThatCameUp(), QString());
    }

    void CommandsDoNotMeet()
    {
        MainFixture f;
        FillRows(f);
        f.Select({1});
        f.Prompts.Meanwhile = [&] {
            f.Trigger("MEditRemove");
            f.Trigger("MFileNew");
        };
        f.Prompts.Expect(u"Sort by Size?"_s, PromptAnswer::No);
        f.Trigger("MViewSortSize");
        QCOMPARE(f.Rows(), u"B d a c"_s);
        f.Trigger("MEditRemove");
        QCOMPARE(f.Rows(), u"d a c"_s);
    }

    void ViewsAndOptions()
    {
        MainFixture f;
        f.Window->resize(700, 600);
        f.Show();
        QWidget *toolbar = f.Bar("Toolbar1");
        QWidget *statusBar = f.Bar("StatusBar1");
        const GridView *view = f.Window->View();
        // What stands above what, a hidden bar left out.
        const auto stack = [&] {
            QString text = toolbar->isVisible() ? u"T"_s : QString();
            text.insert(toolbar->y() > view->y() ? 0 : text.size(), u'G');
            int heights = view->height() + (toolbar->isVisible() ? toolbar->height() : 0);
            if (statusBar->isVisible()) {
                text += u'S';
                heights += statusBar->height();
            }
            return heights == view->parentWidget()->height() ? text : u"gap"_s;
        };
        const auto checked = [&](const char *name) { return f.Window->Command(name)->isChecked(); };
        QCOMPARE(stack(), u"TGS"_s);
        f.Window->showMaximized();
        const QColor window = Shown(f, QPalette::Base);
        f.Trigger("MViewCompact");
        QVERIFY(!f.Window->isMaximized());
        QCOMPARE(stack(), u"GT"_s);
        QVERIFY(!checked("MViewStatusBar") && !checked("MHidOptionTableBCDefault") &&
                !checked("MHidOptionTableFCDefault"));
        QCOMPARE(Shown(f, QPalette::Base), QColor(64, 0, 0));
        QCOMPARE(Shown(f, QPalette::Text), QColor(255, 0, 0));
        f.Trigger("MViewNormal");
        QCOMPARE(stack(), u"TGS"_s);
        QVERIFY(checked("MViewStatusBar") && checked("MHidOptionTableBCDefault") &&
                checked("MHidOptionTableFCDefault"));
        QCOMPARE(Shown(f, QPalette::Base), window);
        // Dragged by its free area, the toolbar follows the mouse to the other half of the window.
        const QPoint free(toolbar->width() - 3, 5);
        QTest::mousePress(toolbar, Qt::LeftButton, {}, free);
        QCOMPARE(toolbar->cursor().shape(), Qt::SizeAllCursor);
        QTest::mouseMove(toolbar, QPoint(free.x(), 500));
        QTest::mouseRelease(toolbar, Qt::LeftButton, {}, free);
        QCOMPARE(stack(), u"GTS"_s);
        QTest::mouseMove(toolbar, QPoint(free.x(), -500));
        QVERIFY(stack() == u"GTS" && toolbar->cursor().shape() == Qt::ArrowCursor);
        f.Trigger("MViewNormal");
        f.Trigger("MViewToolbar");
        QVERIFY(stack() == u"GS" && !checked("MViewToolbar"));
        f.Trigger("MViewStatusBar");
        QVERIFY(stack() == u"G" && !checked("MViewStatusBar"));
        f.Trigger("MViewToolbar");

        f.Trigger("MHidOptionColumnVis(1)");
        QVERIFY(view->isColumnHidden(ColumnTime - 1) && !checked("MHidOptionColumnVis(1)"));
        f.Trigger("MHidOptionColumnVis(1)");
        QVERIFY(view->columnWidth(ColumnTime - 1) == 60 && checked("MHidOptionColumnVis(1)"));
        f.Trigger("MHidOptionColumnVis(8)");
        f.Window->View()->setColumnWidth(ColumnPath - 1, 33);
        f.Trigger("MHidOptionColumnVisAll");
        QCOMPARE(view->columnWidth(ColumnPath - 1), 650);
        QVERIFY(!view->isColumnHidden(ColumnMode - 1) && checked("MHidOptionColumnVis(8)"));
        for (const bool on : {false, true}) {
            f.Trigger("MHidOptionMenuVisible");
            QVERIFY(f.Window->menuBar()->isVisible() == on && checked("MHidOptionMenuVisible") == on);
            f.Trigger("MHidOptionToolbarFlat");
            QVERIFY(toolbar->findChild<QToolButton *>(u"MFileNew"_s)->autoRaise() == on);
        }
        const QImage plain = toolbar->grab().toImage();
        f.Trigger("MHidOptionToolbar3D");
        QVERIFY(toolbar->grab().toImage() != plain);
        f.Trigger("MViewTransVal(10)");
        QCOMPARE(qRound(f.Window->windowOpacity() * 255), 127);
        QVERIFY(checked("MViewTransVal(10)") && !checked("MViewTransVal(0)"));
        f.Trigger("MViewTransVal(0)");
        QVERIFY(f.Window->windowOpacity() == 1 && checked("MViewTransVal(0)"));
    }

    void ColoursAndFonts()
    {
        MainFixture f;
        const QColor window = Shown(f, QPalette::Base);
        const QColor text = Shown(f, QPalette::Text);
        const QFont font = f.Window->View()->font();
        // The two colours and the font as they are shown, each with a star when its Default is checked.
        const auto look = [&]() -> QString {
            const auto star = [&](const char *name) {
                return f.Window->Command(name)->isChecked() ? u"*"_s : QString();
            };
            return Shown(f, QPalette::Base).name() + star("MHidOptionTableBCDefault") + u' ' +
                   Shown(f, QPalette::Text).name() + star("MHidOptionTableFCDefault") + u' ' +
                   QString::number(f.Window->View()->font().pointSize()) + star("MHidOptionTableFontDefault");
        };
        const auto choose = [&](const char *command, const QColor &now, const std::optional<QColor> &chosen) {
            f.Prompts.ExpectChoice(now.name(), chosen);
            f.Trigger(command);
        };
        const QString first = look();
        QCOMPARE(first, window.name() + u"* "_s + text.name() + u"* 8*"_s);
        choose("MHidOptionTableBCChoose", window, {});
        choose("MHidOptionTableFCChoose", text, {});
        f.Prompts.ExpectChoice<QFont>(font.family(), {});
        f.Trigger("MHidOptionTableFontChoose");
        QCOMPARE(look(), first);
        choose("MHidOptionTableBCChoose", window, QColor(1, 2, 3));
        QCOMPARE(look(), u"#010203 "_s + text.name() + u"* 8*"_s);
        QVERIFY(Shown(f, QPalette::AlternateBase) != QApplication::palette().color(QPalette::AlternateBase));
        choose("MHidOptionTableFCChoose", text, QColor(250, 251, 252));
        // A font has no colour: the text keeps its own.
        f.Prompts.ExpectChoice<QFont>(font.family(), QFont(font.family(), 13));
        f.Trigger("MHidOptionTableFontChoose");
        QCOMPARE(look(), u"#010203 #fafbfc 13"_s);
        f.Trigger("MHidOptionTableFCDefault");
        QCOMPARE(look(), u"#010203 "_s + text.name() + u"* 13"_s);
        choose("MHidOptionTableFCChoose", text, QColor(4, 5, 6));
        f.Trigger("MHidOptionTableBCDefault");
        QCOMPARE(look(), window.name() + u"* #040506 13"_s);
        f.Trigger("MHidOptionTableFontDefault");
        QCOMPARE(look(), first);
        QCOMPARE(f.Window->View()->font(), font);
    }

    void ToolbarIsCustomized()
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

    void ShortcutsOpenWhatTheyStandFor()
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

    void SplashShowsTheWindow()
    {
        MainFixture f;
        SplashFrm splash([&] { f.Window->show(); });
        const auto says = [&](const QString &name) { return splash.findChild<QLabel *>(name)->text(); };
        QVERIFY(says(u"Label1"_s).startsWith(u"Vantrel Playlist Editor v"));
        QVERIFY(says(u"StartLabel"_s).startsWith(u"Welcome."));
        splash.show();
        QTRY_VERIFY(!splash.isVisible() && f.Window->isVisible());
        QCOMPARE(says(u"StartLabel"_s), u"Restoring Playlist from Previous Session...WAIT"_s);
    }
};

QTEST_MAIN(WindowTest)
#include "WindowTest.moc"
