#pragma once

#include <QStringList>

class QMimeData;

/// What a drag of files hands over: their addresses on this host.
QMimeData *DragDataOf(const QStringList &paths);

/// The files and folders that another program hands over as such. Inside paths.
QStringList FilesOf(const QMimeData &content);

/// The same, or else the lines of a text that are absolute paths, as editors and playlists write them: in quotes or
/// not, in this host's form, as Windows text or as an address. All other lines are passed over.
QStringList PathsOf(const QMimeData &content);
