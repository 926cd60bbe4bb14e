#pragma once

#include "playlist/Grid.h"

#include <QItemSelectionModel>

/// Keeps the selection as flags in the grid's rows instead of ranges, so that every gesture and command is one pass
/// over the rows. The base class's own range list stays empty: its non-virtual isSelected(), selectedRows() and
/// clearSelection() must not be called on it, except inside a Mirror.
class RowSelectionModel : public QItemSelectionModel
{
    Q_OBJECT

public:
    explicit RowSelectionModel(Grid *shownGrid, QObject *parent = nullptr);

    void select(const QModelIndex &index, SelectionFlags command) override;
    void select(const QItemSelection &selection, SelectionFlags command) override;
    void clear() override;
    void reset() override;

    /// While it lives, the base class gives the right answer for one row: views ask whether the row under the mouse
    /// is already selected.
    class Mirror
    {
    public:
        Mirror(RowSelectionModel &mirrored, const QModelIndex &index);
        ~Mirror();
        Mirror(const Mirror &) = delete;
        Mirror &operator=(const Mirror &) = delete;

    private:
        void SetBaseSelection(const QItemSelection &selection);
        RowSelectionModel &model;
    };

private:
    Grid *grid;
};
