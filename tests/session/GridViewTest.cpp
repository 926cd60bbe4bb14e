#include "session/GridView.h"
#include "platform/Drives.h"
#include "session/Colours.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QDropEvent>
#include <QMimeData>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{
constexpr int rowCount = 40;

void Fill(Grid &grid, int count)
{
    std::vector<FileRecord> records(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < records.size(); ++i) {
        records[i].FileName = u"track %1.mp3"_s.arg(i + 1);
        records[i].Folder = u"z:\\music\\"_s;
        records[i].Size = 1000;
    }
    grid.Append(records);
}

QList<int> SelectedRows(const Grid &grid)
{
    QList<int> rows;
    for (int row = 1; row <= grid.Count(); ++row) {
        if (grid.Item(row).Selected)
            rows.append(row);
    }
    return rows;
}

QList<int> SelectedRows(const QTreeView &view)
{
    QList<int> rows;
    for (const QModelIndex &index : view.selectionModel()->selectedRows())
        rows.append(index.row() + 1);
    std::sort(rows.begin(), rows.end());
    return rows;
}

/// A stock view set up as ours is.
std::unique_ptr<QTreeView> StockView(Grid &grid)
{
    auto view = std::make_unique<QTreeView>();
    view->setUniformRowHeights(true);
    view->setModel(&grid);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setRootIsDecorated(false);
    view->setItemsExpandable(false);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setDragEnabled(true);
    return view;
}

/// The same place in both views: the middle of a row's name, or the empty area below the last one.
QPoint PlaceOf(const QTreeView &view, int row)
{
    if (row > view.model()->rowCount())
        return {20, view.viewport()->height() - 2};
    return view.visualRect(view.model()->index(row - 1, 0)).center();
}
/// Drags the data over the view and drops it; true when the view took it.
bool Drop(QTreeView &view, const QMimeData &content)
{
    const QPoint place(5, 5);
    QDragEnterEvent enter(place, Qt::CopyAction | Qt::MoveAction, &content, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &enter);
    QDropEvent drop(place, Qt::CopyAction | Qt::MoveAction, &content, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &drop);
    return enter.isAccepted() && drop.isAccepted() && drop.dropAction() == Qt::CopyAction;
}
} // namespace

class GridViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SelectsAsAStockViewDoes()
    {
        Grid grid;
        Grid stockGrid;
        Fill(grid, rowCount);
        Fill(stockGrid, rowCount);
        GridView view(&grid);
        const auto stock = StockView(stockGrid);
        for (QTreeView *each : {static_cast<QTreeView *>(&view), stock.get()}) {
            each->resize(400, 1200);
            each->show();
        }
        const QList<Qt::Key> keys{Qt::Key_Up,   Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown,
                                  Qt::Key_Home, Qt::Key_End,  Qt::Key_Space,  Qt::Key_A};
        const QList<Qt::KeyboardModifiers> modifiers{Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier,
                                                     Qt::ControlModifier | Qt::ShiftModifier};
        QRandomGenerator draw(20);
        for (int step = 0; step < 3000; ++step) {
            // A row is found, too, where the column is hidden by which it is named.
            view.setColumnHidden(0, step >= 2000);
            const auto modifier = modifiers[draw.bounded(4)];
            const int row = 1 + draw.bounded(rowCount + 1);
            const int other = 1 + draw.bounded(rowCount);
            const int kind = draw.bounded(10);
            const Qt::Key key = keys[draw.bounded(8)];
            // To the row that has the focus already a stock view does not go; ours selects it.
            const int here = stock->currentIndex().row();
            if (kind >= 5 && modifier == Qt::NoModifier && here == (key == Qt::Key_Home ? 0 : rowCount - 1) &&
                (key == Qt::Key_Home || key == Qt::Key_End))
                stock->selectionModel()->setCurrentIndex(stockGrid.index(20, 0), QItemSelectionModel::NoUpdate);
            for (QTreeView *each : {static_cast<QTreeView *>(&view), stock.get()}) {
                const auto button = kind == 0 ? Qt::RightButton : Qt::LeftButton;
                if (kind < 5) {
                    QTest::mouseClick(each->viewport(), button, modifier, PlaceOf(*each, row));
                } else if (kind == 5 && row > rowCount) {
                    // From the empty area a drag spans rows; from a row it would carry files away.
                    QTest::mousePress(each->viewport(), Qt::LeftButton, modifier, PlaceOf(*each, row));
                    QTest::mouseMove(each->viewport(), PlaceOf(*each, other));
                    QTest::mouseRelease(each->viewport(), Qt::LeftButton, modifier, PlaceOf(*each, other));
                } else {
                    QTest::keyClick(each, key, key == Qt::Key_A ? Qt::ControlModifier : modifier);
                }
            }
            QCOMPARE(SelectedRows(grid), SelectedRows(*stock));
            QCOMPARE(view.currentIndex().row(), stock->currentIndex().row());
            QCOMPARE(grid.FocusedRow(), stock->currentIndex().row() + 1);
        }
    }

    void PaintsWhatIsSelected()
    {
        Grid grid;
        Fill(grid, 3);
        GridView view(&grid);
        grid.Reselect([](int row, const PlaylistItem &) { return row == 2; });
        const QImage picture = view.viewport()->grab().toImage();
        for (int row = 1; row <= 3; ++row) {
            const QPoint behindTheName(190, view.visualRect(grid.index(row - 1, 0)).center().y());
            QCOMPARE(picture.pixelColor(behindTheName) == SelectedGround(view.palette()), row == 2);
        }
    }

    void CommandBecomesTheBaseOfTheNextGesture()
    {
        Grid grid;
        Fill(grid, 10);
        GridView view(&grid);
        view.resize(400, 400);
        view.show();
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, PlaceOf(view, 2));
        grid.Reselect([](int row, const PlaylistItem &) { return row == 9; });
        QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::ControlModifier | Qt::ShiftModifier, PlaceOf(view, 4));
        QCOMPARE(SelectedRows(grid), (QList<int>{2, 3, 4, 9}));
    }

    void FocusFollowsRows()
    {
        Grid grid;
        Fill(grid, 6);
        GridView view(&grid);
        view.setCurrentIndex(grid.index(4, 0));
        QCOMPARE(grid.FocusedRow(), 5);
        grid.RemoveIf([&](const PlaylistItem &item) { return item.Text == u"track 2.mp3"; });
        QCOMPARE(view.currentIndex().row() + 1, 4);
        grid.Rearrange({4, 1, 2, 3, 5});
        QCOMPARE(view.currentIndex().row() + 1, 1);
        // And so does the row that a gesture begins with.
        view.resize(400, 400);
        view.show();
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, PlaceOf(view, 4));
        grid.Rearrange({4, 1, 2, 3, 5});
        QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::ShiftModifier, PlaceOf(view, 2));
        QCOMPARE(SelectedRows(grid), (QList<int>{1, 2}));
        grid.RemoveIf([](const PlaylistItem &) { return true; });
        QCOMPARE(grid.FocusedRow(), 0);
        QVERIFY(!view.currentIndex().isValid());
    }

    void TakesDroppedFiles()
    {
        Grid grid;
        GridView view(&grid);
        QStringList dropped;
        connect(&view, &GridView::FilesDropped, this, [&](const QStringList &paths) { dropped = paths; });
        QMimeData files;
        files.setUrls({ToUrl(u"z:\\music\\50% \u00e4 #1.mp3"_s), QUrl(u"https://example.com/x.mp3"_s)});
        QVERIFY(Drop(view, files));
        QCOMPARE(dropped, QStringList{u"z:\\music\\50% \u00e4 #1.mp3"_s});

        QMimeData text;
        text.setText(u"no files"_s);
        QVERIFY(!Drop(view, text));
    }

    void ScreenReadersHearTheRows()
    {
        Grid grid;
        const QAbstractItemModelTester tester(&grid, QAbstractItemModelTester::FailureReportingMode::QtTest);
        Fill(grid, 3);
        FileRecord missing;
        missing.FileName = u"gone.mp3"_s;
        grid.Insert(missing);
        qint8 icon = IconBlue;
        grid.UpdateIcons([&](PlaylistItem &item) {
            if (!item.Ghosted)
                item.SmallIcon = SmallIcon(icon++);
        });
        GridView view(&grid);
        view.resize(1400, 300);
        view.show();
        grid.Reselect([](int row, const PlaylistItem &) { return row == 2 || row == 4; });
        grid.SetFocusedRow(4);
        QAccessibleInterface *whole = QAccessible::queryAccessibleInterface(&view);
        QVERIFY(whole != nullptr && whole->tableInterface() != nullptr);
        QAccessibleTableInterface *table = whole->tableInterface();
        QCOMPARE(table->selectedRows(), (QList<int>{1, 3}));
        QVERIFY(table->isRowSelected(1) && !table->isRowSelected(0) && !table->isRowSelected(4));
        QCOMPARE(table->selectedCellCount(), table->selectedCells().size());
        QStringList names;
        for (int row = 0; row < table->rowCount(); ++row)
            names.append(table->cellAt(row, 0)->text(QAccessible::Name));
        QCOMPARE(names.join(u'|'), u"track 1.mp3, blue mark|track 2.mp3, green mark|track 3.mp3, red mark|gone.mp3, "
                                   u"missing"_s);
        // Each cell knows its place, its header and its table, and is found again where it stands.
        QCOMPARE(whole->childCount(), 5 * ColumnCount);
        for (int number = 0; number < whole->childCount(); ++number) {
            QAccessibleInterface *cell = whole->child(number);
            const int row = number / ColumnCount;
            const int column = number % ColumnCount;
            const QAccessible::State state = cell->state();
            QVERIFY(whole->indexOfChild(cell) == number && state.selected == (row == 2 || row == 4) &&
                    state.invisible == view.isColumnHidden(column) && state.focusable == (row > 0) &&
                    cell->role() == (row == 0 ? QAccessible::ColumnHeader : QAccessible::Cell));
            QVERIFY(row > 0 || cell->text(QAccessible::Name) == Grid::Caption(column + 1));
            const QAccessibleTableCellInterface *place = cell->tableCellInterface();
            QVERIFY(row == 0 ? place == nullptr
                             : place->rowIndex() == row - 1 && place->columnIndex() == column &&
                                   place->columnHeaderCells().first() == whole->child(column));
            const QPoint middle = cell->rect().center();
            QVERIFY(row == 0 || state.invisible ||
                    (whole->childAt(middle.x(), middle.y()) == cell &&
                     middle.x() == whole->child(column)->rect().center().x()));
        }
        QCOMPARE(whole->focusChild(), table->cellAt(3, 0));
        int told = 0;
        connect(&view, &GridView::Clicked, this, [&] { ++told; });
        QVERIFY(table->selectRow(0) && table->unselectRow(1) && !table->selectRow(4) && !table->selectRow(-1));
        QCOMPARE(table->selectedRows(), (QList<int>{0, 3}));
        QCOMPARE(told, 2);
        QVERIFY(table->cellAt(4, 0) == nullptr && whole->child(-1) == nullptr);
    }
};

QTEST_MAIN(GridViewTest)
#include "GridViewTest.moc"
