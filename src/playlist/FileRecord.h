#pragma once

#include <QString>

/// The result of analysing one file: the data of one row.
struct FileRecord {
    /// The analysis ran to its end.
    bool Valid = false;
    /// With extension, without folder.
    QString FileName;
    /// Playing time in whole seconds, halves to the even neighbour; 0 for everything but ".mp3".
    qint32 Length = 0;
    /// Bytes; 0 for what is missing or no file.
    qint64 Size = 0;
    /// Absolute, ending in a backslash.
    QString Folder;
    /// "MPEG " and the version, "OGG Vorbis", "WAV File", "VQF File" or empty.
    QString FileType;
    /// "Layer " and the layer; this and the following are empty for everything but ".mp3".
    QString LayerText;
    /// "128 Kbit", or the library's text as it stands where it holds "VBR".
    QString BitrateText;
    /// "44100 Hz".
    QString SampleRateText;
    QString ModeText;
};

/// Turns a path into the data of a row. Raises nothing: a record that is not Valid holds what could be found out. The
/// file name is cut from the path wherever it occurs, so a folder that holds the same text loses that too. A relative
/// path counts from the folder (without a trailing backslash), or else from the current directory.
FileRecord AnalyseFile(const QString &path, const QString &folder);
FileRecord AnalyseFile(const QString &path);
