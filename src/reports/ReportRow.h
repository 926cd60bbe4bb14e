#pragma once

#include "media/MP3File.h"
#include "media/VorbisTag.h"
#include "reports/ReportColumns.h"

#include <QString>

#include <span>

/// What a report tells of one file after the other, each looked at afresh on disk. A file is opened only for columns
/// that need it.
class ReportRow
{
public:
    /// An empty root leaves folders and links absolute.
    ReportRow(std::span<const ReportColumn> columns, const QString &rootOfPaths);

    void Read(const QString &pathOfFile);
    /// Empty for what is not known, and for the link.
    QString Cell(ReportColumn column);
    /// The address of the file; empty for a missing one.
    QString Link() const;
    bool IsMissing() const { return kind == Kind::Missing; }
    /// Bytes; 0 for a missing file.
    qint64 FileLength() const { return length; }
    /// Seconds of the MP3 file that was read last, which need not be this file.
    double SongLength() const { return object.SongLength(); }

private:
    enum class Kind { Missing, Other, MPEG, Vorbis };

    void ReadMedia();
    QString FileNameCell() const;
    const QString &FolderCell();
    QString MPEGCell(ReportColumn column) const;
    QString VorbisCell(ReportColumn column) const;
    QString RelativeTo(const QString &text) const;

    bool needsMPEG = false;
    bool needsID3v1 = false;
    bool needsID3v2 = false;
    /// With its backslash; empty for none.
    QString root;

    QString path;
    Kind kind = Kind::Missing;
    qint64 length = 0;
    MP3File object;
    VorbisTag comments;
    /// The folder of the last cell, and the cell.
    QString folder;
    QString folderCell;
};
