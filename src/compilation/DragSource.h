#pragma once

#include <QListWidget>
#include <QPixmap>

/// A list of one item that stands for files: dragged into another program, it hands them over as copies.
class DragSource : public QListWidget
{
    Q_OBJECT

public:
    explicit DragSource(QWidget *parent = nullptr);

    /// Full paths.
    QStringList Files;
    /// What is seen under the mouse.
    QPixmap DragPicture;

protected:
    QMimeData *mimeData(const QList<QListWidgetItem *> &items) const override;
    void startDrag(Qt::DropActions actions) override;
};
