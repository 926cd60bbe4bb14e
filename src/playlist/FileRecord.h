#pragma once

#include "text/EntryFinder.h"

#include <QString>

/// The result of analysing one file: the data of one row.
struct FileRecord {
    /// The analysis ran to its end.
    bool Valid = false;
    /// With extension, without folder.
    QString FileName;
    /// Playing time in whole seconds, halves to the even neighbour; 0 for everything but ".mp3", unless FullData is on.
    qint32 Length = 0;
    /// Bytes; 0 for what is missing or no file.
    qint64 Size = 0;
    /// Absolute, ending in a backslash.
    QString Folder;
    /// "MPEG " and the version, "OGG Vorbis", "WAV File", "VQF File" or empty.
    QString FileType;
    /// "Layer " and the layer; this and, unless FullData is on, the following are empty for everything but ".mp3".
    QString LayerText;
    /// "128 Kbit", or the library's text as it stands where it holds "VBR".
    QString BitrateText;
    /// "44100 Hz".
    QString SampleRateText;
    QString ModeText;
};

/// The folders of rows, as they follow one another: neighbours mostly share theirs, so the last one is kept.
class RowFolders
{
public:
    /// The folder, without a trailing backslash, that relative paths count from.
    explicit RowFolders(const QString &folder) : base(folder) {}

    const QString &Base() const { return base; }
    /// The absolute folder of a row, ending in a backslash, by its path and where the name starts there.
    QString Of(const QString &path, qsizetype nameStart);

private:
    QString base;
    /// The folder as the last path had it.
    QString lastPart;
    bool holdsStop = false;
    bool isAbsolute = false;
    /// As its rows have it; empty while none asked.
    QString last;
};

/// Turns a path into the data of a row. Raises nothing: a record that is not Valid holds what could be found out. The
/// file name is cut from the path wherever it occurs, so a folder that holds the same text loses that too. A relative
/// path counts from the base of the folders, or else from the current directory.
FileRecord AnalyseFile(const QString &path, RowFolders &folders);
FileRecord AnalyseFile(const QString &path);

/// Analyses what may have been written by another program: where nothing stands at an entry's path, its file is looked
/// for, and the record bears the names on the disk. One reader serves one load.
class EntryReader
{
public:
    /// The folder, without a trailing backslash, that relative entries count from.
    explicit EntryReader(const QString &folder) : written(folder), found(folder) {}

    FileRecord Analyse(const QString &entry);

private:
    RowFolders written;
    /// Of the files that were looked for; both run through their folders in order.
    RowFolders found;
    EntryFinder finder;
};
