#include "support/MainFixture.h"

#include "session/SplashFrm.h"
#include "session/StatusPanel.h"

#include <QActionGroup>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QDrag>
#include <QHeaderView>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
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
    for (const char *name :
         {"MoveUp", "MoveDown", "SelAll", "SelTop", "SelBottom", "FileInfo", "Remove", "PlaySel", "PlayFol", "PlayLoc",
          "SelNone", "SelAlt", "SelLoc", "Copy", "SeMark", "SeUnMark", "Id3"}) {
        if (!f.Window->Command(QByteArray("MEdit").append(name))->isEnabled())
            grey.append(QLatin1StringView(name));
    }
    return grey.join(u' ');
}

/// Whether panels and commands say what they would say now.
bool IsFresh(const MainFixture &f)
{
    const QString said = f.Panels().join(u'|') + GreyCommands(f);
    f.Window->ListView1_Click();
    return said == f.Panels().join(u'|') + GreyCommands(f);
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

/// Drags from a row to a place and lets go there, or leaves the list again; meanwhile happens before.
void Drag(
    const MainFixture &f, int row, QPoint target, Qt::KeyboardModifiers modifiers = {},
    const std::function<void()> &meanwhile = [] {}, bool leaves = false)
{
    GridView &view = *f.Window->View();
    QWidget *rows = view.viewport();
    view.CarryOut = [&](QDrag &drag) {
        QDragEnterEvent enter(target, Qt::CopyAction, drag.mimeData(), Qt::LeftButton, modifiers);
        QDragMoveEvent move(target, Qt::CopyAction, drag.mimeData(), Qt::LeftButton, modifiers);
        QDropEvent drop(target, Qt::CopyAction, drag.mimeData(), Qt::LeftButton, modifiers);
        QDragLeaveEvent leave;
        for (QEvent *event : {static_cast<QEvent *>(&enter), static_cast<QEvent *>(&move)})
            QVERIFY(QCoreApplication::sendEvent(rows, event) && event->isAccepted());
        meanwhile();
        QCoreApplication::sendEvent(rows, leaves ? static_cast<QEvent *>(&leave) : &drop);
    };
    const QPoint start = view.visualRect(f.Window->ListView1.index(row - 1, 0)).center();
    QTest::mousePress(rows, Qt::LeftButton, {}, start);
    for (const int distance : {1, 2})
        QTest::mouseMove(rows, start + distance * QPoint(QApplication::startDragDistance() + 1, 0));
    QTest::mouseRelease(rows, Qt::LeftButton, {}, start);
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
                 u"MEdit 24 0 MEditPlay 4 0 MEditSeMark 3 0 MEditSel 11 0 MFile 11 0 MFileRec 9 0 MHelp 4 0 "
                 u"MHidOption 4 0 MHidOptionColumns 11 9 MHidOptionMenu 1 1 MHidOptionTable 3 0 MHidOptionTableBC 2 1 "
                 u"MHidOptionTableFC 2 1 MHidOptionTableFont 2 1 MHidOptionToolbar 2 2 MTools 12 2 MToolsShortCut 6 0 "
                 u"MToolsWinamp 3 0 MToolsWizards 3 0 MView 13 2 MViewSort 10 0 MViewTrans 11 11"_s);
        QCOMPARE(f.Window->menuBar()->actions().size(), 5);
        // The command of a tool that is not there is grey.
        QVERIFY(!Main(f.Window->World()).Command("MToolsFilter")->isEnabled());
        QCOMPARE(f.Window->Command("MView")->menu()->actions().last()->text(), u"GUI Options"_s);
    }

    void PanelsAndCommandsFollowTheSelection()
    {
        MainFixture f;
        f.Show();
        const QString all = u"Remove PlaySel PlayFol PlayLoc SelNone SelAlt SelLoc Copy SeMark SeUnMark Id3"_s;
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
        QVERIFY(f.Window->View()->viewport()->height() > 2 * f.Window->View()->fontMetrics().height());
        QVERIFY(f.Window->View()->geometry().bottom() <= f.Bar("StatusBar1")->geometry().top());
    }

    void RowCommandsRunByKey()
    {
        MainFixture f;
        f.Show();
        // A key or, where there is none, a command, the rows that are selected, and what comes of them; "!" for a
        // change.
        const QString steps =
            u"F3:2 3:D A b c!|F4:1 3:d B c A!|Del:2 4:b a!|Ctrl+T:3:A b d c|Ctrl+B:1 3:d c B A|Ctrl+A::B D A C|"
            u"Ctrl+U:1 2:b d a c|Ctrl+Z:1:b D A C|Ctrl+J:1 2 3 4:B d A c|Ctrl+R::b D a C|"
            u"MEditSelShuffle:2 3 4:b D C A|Shift+Ins:1:B d a c"_s;
        for (const QString &step : steps.split(u'|')) {
            const QStringList parts = step.split(u':');
            const QByteArray command = parts[0].toLatin1();
            QList<int> rows;
            for (const QString &row : parts[1].split(u' ', Qt::SkipEmptyParts))
                rows.append(row.toInt());
            FillRows(f);
            f.Select(rows);
            f.Draws = command == "Ctrl+R" ? QList<double>{0.4, 0.5, 0.1, 0.9} : QList<double>{0.7, 0.7, 0.4};
            command[0] == 'M' ? f.Trigger(command.constData()) : f.Press(command.constData());
            const QString result = f.Rows() + (f.Window->PlaylistDirty ? u"!" : u"");
            QVERIFY2(result == parts[2] && IsFresh(f), qPrintable(step + u" gave " + result));
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
        QVERIFY(!f.Window->PlaylistDirty && IsFresh(f));

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
        // Command, column, caption and order of each.
        const QString sorts =
            u"Filename:1:FileName:A b c d|Time:2:Time:d c b A|Size:3:Size:d b c A|Folder:4:Path:c A d b|"
            u"ID:5:ID:c b A d|Layer:6:Layer:b A d c|Bitrate:7:Bitrate:A c b d|"
            u"Samplerate:8:Samplerate:d A c b|Mode:9:Mode:c d A b|Orig:12:Original Order:b d A c"_s;
        QHeaderView *header = f.Window->View()->header();
        // The column that bears the mark, with a minus for descending; 0 for none.
        const auto mark = [&] {
            const int column = header->isSortIndicatorShown() ? header->sortIndicatorSection() + 1 : 0;
            return header->sortIndicatorOrder() == Qt::AscendingOrder ? column : -column;
        };
        QCOMPARE(mark(), 0);
        for (const QString &sort : sorts.split(u'|')) {
            const int clicked = sort.section(u':', 1, 1).toInt();
            const QString question = u"Sort by "_s + sort.section(u':', 2, 2) + u'?';
            QString order = sort.section(u':', 3);
            f.Prompts.Expect(question, PromptAnswer::Yes);
            f.Trigger(QByteArray("MViewSort").append(sort.section(u':', 0, 0).toLatin1()).constData());
            QVERIFY2(f.Rows() == order && mark() == clicked, qPrintable(sort));
            // Once more, now by its header: the other way round.
            f.Prompts.Expect(question, PromptAnswer::Yes);
            const QPoint middle(header->sectionViewportPosition(clicked - 1) + 20, header->height() / 2);
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, middle);
            std::reverse(order.begin(), order.end());
            QVERIFY2(f.Rows() == order && mark() == -clicked && IsFresh(f), qPrintable(sort));
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

    void EveryChangeIsUndone()
    {
        MainFixture f;
        f.Show();
        f.AddRows({5, 3, 1, 4, 2});
        f.Write(u"one\\f.wma"_s, "1");
        const auto whole = [&]() -> QString {
            const bool marked = f.Window->View()->header()->isSortIndicatorShown();
            return f.Rows() + u' ' + Icons(f) + QString::number(f.Window->ListView1.FocusedRow()) +
                   (f.Window->PlaylistDirty ? u" dirty"_s : QString()) + (marked ? u" sorted"_s : QString());
        };
        const auto offers = [&](const char *command) {
            return f.Window->Command(command)->isEnabled() ? f.Window->Command(command)->text() : QString();
        };
        QVERIFY(offers("MEditUndo").isEmpty() && offers("MEditRedo").isEmpty());
        f.Draws = {.7, .7, .4};
        f.Prompts.Expect(u"Sort by Size?"_s, PromptAnswer::Yes);
        f.Prompts.ExpectPath(u"Select Folder..."_s, f.Inside(u"one"_s));
        // The keys or the command, and what the menu calls it.
        const std::pair<const char *, QString> commands[] = {
            {"F3", u"Move 3 items"_s},
            {"F4", u"Move 3 items"_s},
            {"Ctrl+T", u"Move 3 items"_s},
            {"Ctrl+B", u"Move 3 items"_s},
            {"MEditSelShuffle", u"Shuffle 3 items"_s},
            {"MViewSortSize", u"Sort by Size"_s},
            {"Shift+Ins", u"Mark 3 items"_s},
            {"Shift+Del", u"Unmark 3 items"_s},
            {"F1", u"Add 1 item"_s},
            {"Del", u"Remove 3 items"_s},
            {"F5", u"Refresh"_s},
        };
        QStringList before;
        for (const auto &[keys, name] : commands) {
            f.Select({2, 3, 4});
            f.Window->ListView1.SetFocusedRow(4);
            before.append(whole());
            keys[0] == 'M' ? f.Trigger(keys) : f.Press(keys);
            QCOMPARE(offers("MEditUndo"), u"U&ndo "_s + name);
            const QString after = whole();
            QVERIFY2(after != before.last(), keys);
            f.Press("Alt+Backspace");
            QCOMPARE(whole() + f.Window->PanelText(4), before.last() + u"Undone: "_s + name);
            QVERIFY(IsFresh(f));
            QCOMPARE(offers("MEditRedo"), u"Red&o "_s + name);
            f.Press("Shift+Alt+Backspace");
            QCOMPARE(whole() + f.Window->PanelText(4), after + u"Done again: "_s + name);
            QVERIFY(offers("MEditRedo").isEmpty() && IsFresh(f));
        }
        f.Trigger("MEditSelAll");
        while (!offers("MEditUndo").isEmpty()) {
            f.Press("Alt+Backspace");
            QCOMPARE(whole(), before.takeLast());
        }
        QVERIFY(before.isEmpty());
        f.Trigger("MEditUndo");
        f.Select({1});
        f.Trigger("MEditSeMarkRed");
        QVERIFY(offers("MEditRedo").isEmpty());
        // What comes back is seen.
        f.Window->ListView1.Append(std::vector<FileRecord>(200));
        f.Select({200});
        f.Trigger("MEditSelTop");
        f.Trigger("MEditUndo");
        QVERIFY(f.Window->View()->viewport()->rect().intersects(
            f.Window->View()->visualRect(f.Window->ListView1.index(199, 0))));
    }

    void RowsAreDraggedToAnotherPlace()
    {
        MainFixture f;
        f.Show();
        f.AddRows({1, 2, 3, 4, 5});
        f.Select({2, 4});
        f.Window->ListView1.SetFocusedRow(2);
        QWidget *rows = f.Window->View()->viewport();
        const auto upperHalf = [&](int row) {
            return f.Window->View()->visualRect(f.Window->ListView1.index(row - 1, 0)).topLeft() + QPoint(50, 2);
        };
        const QImage before = rows->grab().toImage();
        const auto isMarked = [&] { return rows->grab().toImage() != before; };
        // Two pixels high, with hooks at its ends.
        const GridView *view = f.Window->View();
        const auto hasLine = [&](int y) {
            const QImage picture = rows->grab().toImage();
            const auto isDrawn = [&](int x, int dy) {
                return picture.pixelColor(x, y + dy) == view->palette().color(QPalette::Text);
            };
            return !isDrawn(205, -2) && isDrawn(205, -1) && isDrawn(205, 0) && !isDrawn(205, 1) && !isDrawn(0, -5) &&
                   isDrawn(0, -4) && isDrawn(0, 3) && !isDrawn(0, 4) && isDrawn(rows->width() - 1, 3);
        };
        // Out of the list, and over the rows themselves.
        Drag(
            f, 2, upperHalf(5), {}, [&] { QVERIFY(hasLine(view->visualRect(f.Window->ListView1.index(4, 0)).top())); },
            true);
        QVERIFY(!isMarked());
        QVERIFY(f.Rows() == u"a B c D e" && f.Undoable().isEmpty() && !f.Window->PlaylistDirty);
        f.Select({2, 3});
        Drag(f, 2, upperHalf(3));
        QVERIFY(f.Rows() == u"a B C d e" && f.Undoable().isEmpty() && !f.Window->PlaylistDirty);

        f.Select({2, 4});
        Drag(f, 2, upperHalf(1));
        QCOMPARE(f.Rows() + f.Undoable(), u"B D a c eMove 2 items"_s);
        QVERIFY(f.Window->PlaylistDirty && IsFresh(f));
        Drag(f, 1,
             upperHalf(4) + QPoint(0, f.Window->View()->visualRect(f.Window->ListView1.index(0, 0)).height() - 4));
        QCOMPARE(f.Rows(), u"a c B D e"_s);
        // Below the last row, and with Ctrl once more.
        Drag(f, 3, QPoint(50, rows->height() - 40), {},
             [&] { QVERIFY(hasLine(view->visualRect(f.Window->ListView1.index(4, 0)).bottom() + 1)); });
        QCOMPARE(f.Rows(), u"a c e B D"_s);
        f.Window->PlaylistDirty = false;
        Drag(f, 4, upperHalf(2), Qt::ControlModifier);
        QCOMPARE(f.Rows() + f.Undoable() + f.Window->PanelText(4), u"a B D c e b dAdd 2 itemsAdded 2 items"_s);
        QVERIFY(f.Window->PlaylistDirty && IsFresh(f));
        // Rows that go meanwhile are not missed.
        Drag(f, 2, QPoint(50, rows->height() - 40), {}, [&] {
            f.Window->ListView1.RemoveIf(
                [](const PlaylistItem &item) { return item.Selected || item.Text == u"c.wma"; });
        });
        QCOMPARE(f.Rows(), u"a e b d"_s);
        // At its edges the list scrolls.
        f.Window->ListView1.Append(std::vector<FileRecord>(200));
        const QScrollBar *bar = f.Window->View()->verticalScrollBar();
        for (const bool down : {true, false}) {
            const int row = down ? 1 : f.Window->ListView1.Count();
            f.Select({row});
            Drag(f, row, QPoint(50, down ? rows->height() - 3 : 3), {},
                 [&] { QTRY_COMPARE(bar->value(), down ? bar->maximum() : 0); });
            QCOMPARE(f.Window->ListView1.Item(down ? 204 : 1).Selected, true);
        }
    }

    void CopiesAndPastes()
    {
        MainFixture f;
        f.Show();
        f.AddRows({1, 2, 3});
        QClipboard *clipboard = QGuiApplication::clipboard();
        f.Select({1, 3});
        f.Press("Ctrl+C");
        const QStringList paths{f.Inside(u"a.wma"_s), f.Inside(u"c.wma"_s)};
        QCOMPARE(clipboard->text(), ToHostPath(paths[0]) + u'\n' + ToHostPath(paths[1]));
        QCOMPARE(clipboard->mimeData()->urls(), (QList<QUrl>{ToUrl(paths[0]), ToUrl(paths[1])}));
        QCOMPARE(f.Window->PanelText(4), u"Copied 2 items"_s);
        f.Press("Ctrl+V");
        QCOMPARE(f.Rows() + f.Undoable(), u"a b c a CAdd 2 items"_s);
        QVERIFY(IsFresh(f));
        // What an editor puts there: paths of every form, and much that is none.
        f.Window->PlaylistDirty = false;
        f.Trigger("MFileNew");
        f.Write(u"one\\x \u00e4.wma"_s, "1");
        const QString folder = f.Inside(u"one"_s);
        // Nothing stands at some of the paths.
        clipboard->setText(u"#EXTM3U\n  \"%1\" \r\nfile:%2\nq:/gone.mp3\n\na.wma\nNote: z.mp3\n\"\n\\a.wma"_s.arg(
            ToHostPath(folder), ToUrl(f.Inside(u"b.wma"_s)).toString(QUrl::FullyEncoded).mid(5)));
        f.Press("Ctrl+V");
        QCOMPARE(f.Rows(), u"x \u00e4 B"_s);
        for (const bool picture : {true, false}) {
            picture ? clipboard->setImage(QImage(9, 9, QImage::Format_RGB32)) : clipboard->setText(u"no path"_s);
            f.Press("Ctrl+V");
            QCOMPARE(f.Window->PanelText(4), u"Nothing to add: the clipboard holds no files and no paths"_s);
        }
        f.Prompts.Expect(QString::fromLatin1(PlaylistFull().what()), PromptAnswer::Ok);
        clipboard->setText(QString(f.Inside(u"a.wma"_s) + u'\n').repeated(100'000));
        f.Press("Ctrl+V");
        QCOMPARE(f.Undoable() + f.Window->PanelText(4), u"Add 32,765 items"_s);
        f.Press("Alt+Backspace");
        QCOMPARE(f.Rows(), u"x \u00e4 B"_s);

        const QString filter =
            u"Audio Files and Playlists (%1)|%1|All Files (*.*)|*.*|"_s.arg(u"*.mp3;*.wav;*.ogg;*.wma;*.m3u;*.m3u8"_s);
        f.Prompts.ExpectPaths(filter, {});
        f.Trigger("MEditAddFiles");
        f.Prompts.ExpectPaths(filter, {f.Inside(u"a.wma"_s), f.Inside(u"c.wma"_s)});
        f.Trigger("MEditAddFiles");
        QCOMPARE(f.Rows() + f.Window->PanelText(4), u"x \u00e4 b a CAdded 2 items"_s);
    }

    void AnswersStayUntilTheNextCommand()
    {
        MainFixture f;
        f.Show();
        f.AddRows({1, 2, 3});
        const QString list = f.Inside(u"l.m3u"_s);
        f.Select({1, 2});
        f.Press("Del");
        f.Click(1);
        QString answers = f.Window->PanelText(4);
        f.Prompts.ExpectPath(f.Folder + u'\\' + f.Folder.section(u'\\', -1) + u".m3u", list);
        f.Prompts.ExpectPath({}, list);
        f.Prompts.ExpectPath(u"Select Folder..."_s, f.Folder);
        for (const char *keys : {"Ctrl+S", "Ctrl+A", "Ctrl+I", "F1", "F5"}) {
            f.Press(keys);
            answers += u'|' + f.Window->PanelText(4);
        }
        QCOMPARE(answers, u"Removed 2 items|Saved 1 item||Added 1 item|Added 3 items|Read 5 items again"_s);
        Q_EMIT f.Window->View()->FilesDropped({f.Inside(u"a.wma"_s), f.Inside(u"b.wma"_s)});
        QCOMPARE(f.Window->PanelText(4), u"Added 2 items"_s);
    }

    void PreviewsThroughTheRegisteredProgram()
    {
        MainFixture f;
        f.AddRows({1, 2, 3});
        const auto line = [&](const char *name) -> QByteArray {
            return ToHostBytes(f.Inside(QLatin1StringView(name))) + "\r\n";
        };
        // The button comes up while the program is being opened.
        QWidget *rows = f.Window->View()->viewport();
        const QSignalSpy clicked(f.Window->View(), &GridView::Clicked);
        QCoreApplication::postEvent(rows, new QMouseEvent(QEvent::MouseButtonRelease, QPoint(5, 300), QPoint(5, 300),
                                                          Qt::LeftButton, Qt::NoButton, {}));
        QTest::mouseDClick(rows, Qt::LeftButton, {}, QPoint(5, 300));
        QCoreApplication::processEvents();
        QCOMPARE(clicked.count(), 1);
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

    void EscapeEndsLongWork()
    {
        MainFixture f;
        f.Show();
        for (const char *name : {"a", "b", "c"})
            f.Write(u"tree\\%1.wma"_s.arg(QLatin1StringView(name)), "1");
        const auto answer = [&f] { return QString(f.Rows() + u'|' + f.Window->PanelText(4) + u'|' + f.Undoable()); };
        const auto addTree = [&f] {
            f.Prompts.ExpectPath(u"Select Folder..."_s, f.Inside(u"tree"_s));
            f.Trigger("MEditAddDir");
        };
        // While the folders are walked, and at the last file.
        QTimer::singleShot(0, f.Window.get(), [&f] { QTest::keyClick(f.Window.get(), Qt::Key_Escape); });
        addTree();
        QCOMPARE(answer(), u"|Stopped|"_s);
        f.StopAt(u"3 of 3"_s);
        addTree();
        QCOMPARE(answer(), u"A B|Stopped after 2 of 3; Added 2 items|Add 2 items"_s);
        const auto *form = f.Window->findChild<Status *>();
        QVERIFY(!form->isVisible() && form->findChild<QLabel *>(u"lbFolder"_s)->text() == f.Inside(u"tree\\"_s) &&
                form->findChild<QLabel *>(u"lbEnding"_s)->text() == u"Escape ends it");
        // The rows that a refresh did not come to stay as they are.
        f.Trigger("MEditSeMarkRed");
        f.StopAt(u"2 of 2"_s);
        f.Trigger("MViewRefresh");
        QCOMPARE(answer(), u"a b|Stopped after 1 of 2|Refresh"_s);
        const Grid &grid = f.Window->ListView1;
        QVERIFY(grid.Item(1).SmallIcon == IconNormal && grid.Item(2).SmallIcon == IconRed);
        // A drop ends with the list in it.
        const QString list = f.Write(u"l.m3u"_s, "tree/c.wma\ntree/a.wma\n");
        const QStringList dropped{f.Inside(u"tree\\b.wma"_s), list, f.Inside(u"tree"_s)};
        f.StopAt(u"2 of 2"_s);
        Q_EMIT f.Window->View()->FilesDropped(dropped);
        QCOMPARE(answer(), u"a b b C|Stopped after 1 of 2; Added 2 items|Add 2 items"_s);
        QTimer::singleShot(0, f.Window.get(), [&f] { QTest::keyClick(f.Window.get(), Qt::Key_Escape); });
        Q_EMIT f.Window->View()->FilesDropped(dropped);
        QCOMPARE(f.Window->PanelText(4), u"Stopped after 0 of 3"_s);
        // What is not the whole list is not saved in its place.
        f.Window->PlaylistDirty = false;
        f.Prompts.ExpectPath({}, list);
        f.StopAt(u"2 of 2"_s);
        f.Trigger("MFileOpen");
        QCOMPARE(answer() + f.Window->CurrentPlaylistPath, u"c|Stopped after 1 of 2|"_s);
        // The last session comes back whole.
        addTree();
        f.Window->SetFormState(true);
        f.Window->ListView1.Clear();
        f.StopAt(u"4 of 4"_s);
        f.Window->AddPath(f.Window->SessionFile(), false);
        QCOMPARE(f.Rows(), u"c a b c"_s);
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
        QWidget *rows = f.Window->View()->viewport();
        QWidget *header = f.Window->View()->header()->viewport();
        QWidget *bar = f.Bar("Toolbar1");
        const QPoint row = f.Window->View()->visualRect(f.Window->ListView1.index(1, 0)).center();
        const QPoint free(bar->width() - 3, bar->height() / 2);
        const auto ask = [](QWidget *area, QContextMenuEvent::Reason reason) {
            QContextMenuEvent event(reason, QPoint(9, 9), area->mapToGlobal(QPoint(9, 9)));
            QCoreApplication::sendEvent(area, &event);
            return MenuThatCameUp();
        };
        // Some hosts ask for the menu when the button goes down, others when it comes up.
        QTest::mousePress(rows, Qt::RightButton, {}, row);
        QCOMPARE(ask(rows, QContextMenuEvent::Mouse), QString());
        QTest::mouseRelease(rows, Qt::RightButton, {}, row);
        QVERIFY(f.Window->Command("MEditRemove")->isEnabled() && f.Rows() == u"b D a c");
        QCOMPARE(MenuThatCameUp(), u"MEdit"_s);
        f.Window->ListView1.Reselect([](int, const PlaylistItem &) { return true; });
        QCOMPARE(ask(rows, QContextMenuEvent::Keyboard), u"MEdit"_s);
        QVERIFY(!f.Window->Command("MEditSelAll")->isEnabled());
        QCOMPARE(ask(header, QContextMenuEvent::Mouse), u"MHidOptionColumns"_s);
        QTest::mousePress(bar, Qt::RightButton, {}, free);
        QCOMPARE(MenuThatCameUp(), QString());
        QTest::mouseRelease(bar, Qt::RightButton, {}, free);
        QCOMPARE(MenuThatCameUp(), u"MHidOption"_s);
        QCOMPARE(ask(bar, QContextMenuEvent::Keyboard), u"MHidOption"_s);
        // A click with the other button brings none up.
        QTest::mouseClick(bar, Qt::LeftButton, {}, free);
        f.Click(1);
        QCOMPARE(MenuThatCameUp(), QString());
    }

    void CommandsDoNotMeet()
    {
        MainFixture f;
        FillRows(f);
        f.Select({1});
        f.Trigger("MEditSeMarkBlue");
        f.Prompts.Meanwhile = [&] {
            f.Trigger("MEditUndo");
            f.Trigger("MEditRemove");
            f.Trigger("MFileNew");
        };
        f.Prompts.Expect(u"Sort by Size?"_s, PromptAnswer::No);
        f.Trigger("MViewSortSize");
        QCOMPARE(f.Rows() + Icons(f), u"B d a c3111"_s);
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
        QVERIFY(stack() == u"TGS" && checked("MHidOptionColumnVis(0)") && checked("MHidOptionColumnVis(8)"));
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
        // Without the menus the toolbar is the only way back to them.
        f.Trigger("MViewToolbar");
        for (const bool on : {false, true}) {
            f.Trigger("MHidOptionMenuVisible");
            QVERIFY(f.Window->menuBar()->isVisible() == on && checked("MHidOptionMenuVisible") == on);
            QVERIFY(toolbar->isVisible() && checked("MViewToolbar"));
            f.Trigger("MHidOptionToolbarFlat");
            QVERIFY(toolbar->findChild<QToolButton *>(u"MFileNew"_s)->autoRaise() == on);
        }
        const QImage plain = toolbar->grab().toImage();
        f.Trigger("MHidOptionToolbar3D");
        QVERIFY(toolbar->grab().toImage() != plain);
        f.Trigger("MViewTransVal(10)");
        QCOMPARE(qRound(f.Window->windowOpacity() * 255), 127);
        QVERIFY(checked("MViewTransVal(10)") && !checked("MViewTransVal(0)"));
        QVERIFY(f.Window->Command("MViewTransVal(5)")->actionGroup()->isExclusive());
        f.Trigger("MViewTransVal(0)");
        QVERIFY(f.Window->windowOpacity() == 1 && checked("MViewTransVal(0)"));
    }

    void ColoursAndFonts()
    {
        MainFixture f;
        const QFont font = f.Window->View()->font();
        // The two colours and the font as they are shown, each with a star when its Default is checked.
        const auto look = [&]() -> QString {
            const auto star = [&](const char *name) { return f.Window->Command(name)->isChecked() ? u"* "_s : u" "_s; };
            return Shown(f, QPalette::Base).name() + star("MHidOptionTableBCDefault") +
                   Shown(f, QPalette::Text).name() + star("MHidOptionTableFCDefault") +
                   QString::number(f.Window->View()->font().pointSize()) + star("MHidOptionTableFontDefault");
        };
        const auto choose = [&](const char *command, QPalette::ColorRole role, const std::optional<QColor> &chosen) {
            f.Prompts.ExpectChoice(Shown(f, role).name(), chosen);
            f.Trigger(command);
            return look();
        };
        const QString first = look();
        QCOMPARE(first, u"#ffffff* #000000* 8* "_s);
        QCOMPARE(choose("MHidOptionTableBCChoose", QPalette::Base, {}), first);
        QCOMPARE(choose("MHidOptionTableFCChoose", QPalette::Text, {}), first);
        QCOMPARE(choose("MHidOptionTableBCChoose", QPalette::Base, QColor(1, 2, 3)), u"#010203 #000000* 8* "_s);
        QVERIFY(Shown(f, QPalette::AlternateBase).lightness() < 128);
        // A font has no colour: the text keeps its own.
        for (const std::optional<QFont> &chosen : {std::optional<QFont>(), std::optional(QFont(font.family(), 13))}) {
            f.Prompts.ExpectChoice<QFont>(font.family(), chosen);
            f.Trigger("MHidOptionTableFontChoose");
            QCOMPARE(look(), chosen ? u"#010203 #000000* 13 "_s : u"#010203 #000000* 8* "_s);
        }
        QCOMPARE(choose("MHidOptionTableFCChoose", QPalette::Text, QColor(4, 5, 6)), u"#010203 #040506 13 "_s);
        f.Trigger("MHidOptionTableBCDefault");
        QCOMPARE(look(), u"#ffffff* #040506 13 "_s);
        choose("MHidOptionTableBCChoose", QPalette::Base, QColor(1, 2, 3));
        f.Trigger("MHidOptionTableFCDefault");
        QCOMPARE(look(), u"#010203 #000000* 13 "_s);
        f.Trigger("MHidOptionTableBCDefault");
        f.Trigger("MHidOptionTableFontDefault");
        QVERIFY(look() == first && f.Window->View()->font() == font);
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
