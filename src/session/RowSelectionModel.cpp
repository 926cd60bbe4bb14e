#include "session/RowSelectionModel.h"

#include <QSignalBlocker>

RowSelectionModel::RowSelectionModel(Grid *shownGrid, QObject *parent)
    : QItemSelectionModel(shownGrid, parent), grid(shownGrid)
{
}

void RowSelectionModel::select(const QModelIndex &index, SelectionFlags command)
{
    select(QItemSelection(index, index), command);
}

void RowSelectionModel::select(const QItemSelection &selection, SelectionFlags command)
{
    if (command == NoUpdate)
        return;
    const bool changesRows = (command & (Select | Deselect | Toggle)) != 0;
    auto &rows = grid->RowsForSelection();
    if (command & Clear) {
        for (PlaylistItem &item : rows)
            item.Selected = item.SelectedBefore = false;
    } else if (!(command & Current)) {
        for (PlaylistItem &item : rows)
            item.SelectedBefore = item.Selected;
    } else if (changesRows) {
        for (PlaylistItem &item : rows)
            item.Selected = item.SelectedBefore;
    }
    if (changesRows) {
        for (const QItemSelectionRange &range : selection) {
            for (int row = std::max(range.top(), 0); row <= range.bottom() && row < grid->Count(); ++row) {
                PlaylistItem &item = rows[static_cast<std::size_t>(row)];
                item.Selected = command & Toggle ? !item.SelectedBefore : bool(command & Select);
            }
        }
    }
    grid->TellSelection();
}

void RowSelectionModel::clear()
{
    select(QItemSelection(), Clear);
    clearCurrentIndex();
}

void RowSelectionModel::reset()
{
    const QSignalBlocker quiet(this);
    clearCurrentIndex();
}

RowSelectionModel::Mirror::Mirror(RowSelectionModel &mirrored, const QModelIndex &index) : model(mirrored)
{
    if (index.isValid() && model.grid->Item(index.row() + 1).Selected)
        SetBaseSelection(QItemSelection(index.siblingAtColumn(0), index.siblingAtColumn(ColumnCount - 1)));
}

RowSelectionModel::Mirror::~Mirror()
{
    SetBaseSelection({});
}

void RowSelectionModel::Mirror::SetBaseSelection(const QItemSelection &selection)
{
    const QSignalBlocker quiet(model);
    model.QItemSelectionModel::select(selection, ClearAndSelect);
}
