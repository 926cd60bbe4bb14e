#include "compilation/DragSource.h"

#include "session/DragData.h"

#include <QDrag>
#include <QMimeData>

DragSource::DragSource(QWidget *parent) : QListWidget(parent)
{
    setViewMode(IconMode);
    setMovement(Static);
    setDragEnabled(true);
}

QMimeData *DragSource::mimeData(const QList<QListWidgetItem *> &) const
{
    return DragDataOf(Files);
}

void DragSource::startDrag(Qt::DropActions)
{
    auto *drag = new QDrag(this);
    drag->setMimeData(model()->mimeData(selectedIndexes()));
    drag->setPixmap(DragPicture);
    drag->exec(Qt::CopyAction, Qt::CopyAction);
}
