#pragma once

#include <QStringList>

class QMimeData;

/// What a drag of files hands over: their addresses on this host.
QMimeData *DragDataOf(const QStringList &paths);
