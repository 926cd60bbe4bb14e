#pragma once

#include "platform/Files.h"

#include <QString>
#include <QStringList>

#include <functional>

/// Masks of the supported audio files: "*.mp3", "*.wav", "*.ogg", "*.wma", in this order.
const QStringList &FileTypes();
/// Whether a name matches one of FileTypes.
bool IsAudioFile(QStringView name);

/// Appends the full paths of the files in a folder that match the mask, in listing order. With a mask that is not one
/// of FileTypes it appends the folder and the mask instead, once for each file found.
void ListFolderFiles(const QString &folder, const QString &mask, QStringList &list);

/// Appends the files of a folder, grouped by mask in the order of the masks, then, if recursive, those of its
/// subfolders, depth first. Each folder is listed once. A folder for which enter is false, and one that cannot be read,
/// is passed over with all below it; links to folders are not followed.
void WalkFolder(const QString &folder, const QStringList &masks, QStringList &list, bool recursive,
                const std::function<bool(const QString &folder)> &enter = {});

/// Lists a folder and those below it, depth first, in listing order. A folder for which enter is false, and one that
/// cannot be read, is passed over with all below it, and so is what lies below one for which listed is false; links to
/// folders are not followed. The prefix is the folder with its backslash.
void WalkTree(const QString &root, const std::function<bool(const QString &folder, const FolderReader &open)> &enter,
              const std::function<bool(const QString &prefix, const FolderEntries &entries)> &listed);
