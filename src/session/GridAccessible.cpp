#include "session/GridAccessible.h"

#include "session/GridView.h"

#include <QAccessibleWidget>
#include <QHeaderView>

namespace
{
/// A header section (row 0) or a cell (rows from 1), columns from 0.
class CellAccessible : public QAccessibleInterface, public QAccessibleTableCellInterface
{
public:
    CellAccessible(GridView *shownIn, int cellRow, int cellColumn) : view(shownIn), row(cellRow), column(cellColumn) {}

    bool isValid() const override { return row <= view->Rows().Count(); }
    QObject *object() const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(view); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    void setText(QAccessible::Text, const QString &) override {}

    QString text(QAccessible::Text kind) const override
    {
        if (kind != QAccessible::Name || !isValid())
            return {};
        return row == 0 ? Grid::Caption(column + 1) : Index().data(Qt::DisplayRole).toString() + StateText();
    }

    QRect rect() const override
    {
        if (!isValid())
            return {};
        const QWidget *area = row == 0 ? view->header()->viewport() : view->viewport();
        const QRect place = row == 0 ? QRect(view->header()->sectionViewportPosition(column), 0,
                                             view->columnWidth(column), view->header()->height())
                                     : view->visualRect(Index());
        return {area->mapToGlobal(place.topLeft()), place.size()};
    }

    /// Among the children of the table that shows this.
    int Number() const { return row * ColumnCount + column; }
    const GridView *View() const { return view; }

    QAccessible::Role role() const override { return row == 0 ? QAccessible::ColumnHeader : QAccessible::Cell; }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.invisible = view->isColumnHidden(column);
        state.selectable = state.focusable = row > 0;
        state.selected = isSelected();
        state.focused =
            row > 0 && view->hasFocus() && view->Rows().FocusedRow() == row && view->currentIndex().column() == column;
        return state;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TableCellInterface && row > 0 ? static_cast<QAccessibleTableCellInterface *>(this)
                                                                  : nullptr;
    }

    bool isSelected() const override { return row > 0 && isValid() && view->Rows().Item(row).Selected; }
    QList<QAccessibleInterface *> columnHeaderCells() const override { return {parent()->child(column)}; }
    QList<QAccessibleInterface *> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return column; }
    int rowIndex() const override { return row - 1; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface *table() const override { return parent(); }

private:
    QModelIndex Index() const { return view->Rows().index(row - 1, column); }

    /// What the small icon tells those who see it.
    QString StateText() const
    {
        if (column != 0)
            return {};
        switch (view->Rows().Item(row).SmallIcon) {
        case IconMissing:
            return GridView::tr(", missing");
        case IconBlue:
            return GridView::tr(", blue mark");
        case IconGreen:
            return GridView::tr(", green mark");
        case IconRed:
            return GridView::tr(", red mark");
        default:
            return {};
        }
    }

    // The table drops its cells before its view goes.
    GridView *view;
    int row;
    int column;
};

/// Children are numbered row by row with the header as row 0, as the view numbers them in its focus events.
class GridAccessible : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    explicit GridAccessible(GridView *shown) : QAccessibleWidget(shown, QAccessible::Table), view(shown) {}
    ~GridAccessible() override { DropCells(); }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface *>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    int childCount() const override { return (rowCount() + 1) * ColumnCount; }
    QAccessibleInterface *child(int number) const override
    {
        if (number < 0 || number >= childCount())
            return nullptr;
        const auto known = cells.constFind(number);
        if (known != cells.cend())
            return QAccessible::accessibleInterface(*known);
        auto *cell = new CellAccessible(view, number / ColumnCount, number % ColumnCount);
        cells.insert(number, QAccessible::registerAccessibleInterface(cell));
        return cell;
    }
    int indexOfChild(const QAccessibleInterface *cell) const override
    {
        const auto *own = dynamic_cast<const CellAccessible *>(cell);
        return own != nullptr && own->View() == view ? own->Number() : -1;
    }
    QAccessibleInterface *childAt(int x, int y) const override
    {
        const QModelIndex index = view->indexAt(view->viewport()->mapFromGlobal(QPoint(x, y)));
        return index.isValid() ? cellAt(index.row(), index.column()) : nullptr;
    }
    QAccessibleInterface *focusChild() const override
    {
        const int row = view->Rows().FocusedRow();
        return row > 0 ? cellAt(row - 1, qMax(0, view->currentIndex().column())) : nullptr;
    }

    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    QAccessibleInterface *cellAt(int row, int column) const override { return child((row + 1) * ColumnCount + column); }
    int selectedCellCount() const override { return selectedRowCount() * ColumnCount; }
    QList<QAccessibleInterface *> selectedCells() const override
    {
        QList<QAccessibleInterface *> selected;
        for (const int row : selectedRows()) {
            for (int column = 0; column < ColumnCount; ++column)
                selected.append(cellAt(row, column));
        }
        return selected;
    }
    QString columnDescription(int column) const override { return Grid::Caption(column + 1); }
    QString rowDescription(int) const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return static_cast<int>(selectedRows().size()); }
    int columnCount() const override { return ColumnCount; }
    int rowCount() const override { return view->Rows().Count(); }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override
    {
        QList<int> selected;
        for (int row = 1; row <= rowCount(); ++row) {
            if (view->Rows().Item(row).Selected)
                selected.append(row - 1);
        }
        return selected;
    }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override
    {
        return row >= 0 && row < rowCount() && view->Rows().Item(row + 1).Selected;
    }
    bool selectRow(int row) override { return Choose(row, QItemSelectionModel::Select); }
    bool unselectRow(int row) override { return Choose(row, QItemSelectionModel::Deselect); }
    bool selectColumn(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent *) override { DropCells(); }

private:
    bool Choose(int row, QItemSelectionModel::SelectionFlag how)
    {
        if (row < 0 || row >= rowCount())
            return false;
        view->selectionModel()->select(view->Rows().index(row, 0), how);
        Q_EMIT view->Clicked();
        return true;
    }

    void DropCells()
    {
        for (const QAccessible::Id id : std::as_const(cells))
            QAccessible::deleteAccessibleInterface(id);
        cells.clear();
    }

    GridView *view;
    mutable QHash<int, QAccessible::Id> cells;
};

QAccessibleInterface *MakeGridAccessible(const QString &, QObject *object)
{
    auto *view = qobject_cast<GridView *>(object);
    return view != nullptr ? new GridAccessible(view) : nullptr;
}
} // namespace

void InstallGridAccessibility()
{
    [[maybe_unused]] static const bool installed = [] {
        QAccessible::installFactory(MakeGridAccessible);
        return true;
    }();
}
