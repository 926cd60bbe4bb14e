#pragma once

#include <QString>

#include <array>

/// The state of a row, as its small icon. Marks replace the normal icon and never the missing one.
enum SmallIcon : qint8 { IconNormal = 1, IconMissing, IconBlue, IconGreen, IconRed };

/// One row of the playlist: the path and the numbers; the texts of its columns are made when they are asked for.
struct PlaylistItem {
    /// The file's name with extension, without folder.
    QString Text;
    /// The folder, always ending in a backslash.
    QString Folder;
    /// The folder's place in the grid's pool of texts: the same for the same folder, and for no other.
    quint32 FolderNumber = 0;
    /// Bytes; 0 for a missing row.
    qint64 Size = 0;
    /// Whole seconds.
    qint32 Length = 0;
    /// ID, Layer, Bitrate, Samplerate and Mode, as places in the grid's pool of texts.
    std::array<quint32, 5> StreamTexts{};
    /// The row's index at the moment it was added.
    qint16 OriginalOrder = 0;
    enum SmallIcon SmallIcon = IconNormal;
    /// Shown dimmed: exactly for a row added as missing.
    bool Ghosted = false;
    bool Selected = false;
    /// What Selected was before the Shift or drag gesture that is open; else the same as Selected.
    bool SelectedBefore = false;

    QString FullPath() const { return Folder + Text; }
    /// A missing row has no values beyond its path: its columns 5 to 12 are empty.
    bool Measured() const { return Size != 0; }
};
