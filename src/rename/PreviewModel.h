#pragma once

#include "rename/RenamePreview.h"

#include <QAbstractTableModel>
#include <QIcon>

/// The list of the preview page: the present and the new name of each item.
class PreviewModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit PreviewModel(QObject *parent);

    void Show(std::vector<PreviewItem> shown);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<PreviewItem> items;
    QIcon collides;
    QIcon missing;
};
