#include "reports/ReportRow.h"

#include "platform/Drives.h"
#include "platform/Files.h"
#include "text/FormatText.h"
#include "text/PathText.h"

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
/// The frames behind the columns from ID3v2Title on.
constexpr std::array<QByteArrayView, 4> shownFrames{"TIT2", "TPE1", "TALB", "TYER"};
constexpr auto firstShown = static_cast<std::size_t>(ReportColumn::ID3v2Title);
} // namespace

ReportRow::ReportRow(std::span<const ReportColumn> columns, const QString &rootOfPaths)
    : root(rootOfPaths.isEmpty() ? QString() : rootOfPaths + u'\\')
{
    for (const ReportColumn column : columns) {
        const bool isStream = column >= ReportColumn::Time && column <= ReportColumn::Copyrighted;
        // The length of a file is known without opening it.
        needsMPEG = needsMPEG || (isStream && column != ReportColumn::Size);
        needsID3v1 = needsID3v1 || (column >= ReportColumn::ID3v1Title && column <= ReportColumn::ID3v1Year);
        needsID3v2 = needsID3v2 || (column >= ReportColumn::ID3v2Title && column <= ReportColumn::ID3v2Year);
    }
}

void ReportRow::Read(const QString &pathOfFile)
{
    path = pathOfFile;
    const FileFacts facts = ExamineFile(path);
    length = facts.Size;
    kind = facts.Exists ? Kind::Other : Kind::Missing;
    if (facts.Exists && (needsMPEG || needsID3v1 || needsID3v2))
        ReadMedia();
}

void ReportRow::ReadMedia()
{
    const QString extension = GetExtension(GetFileName(path)).toLower();
    if (extension == ".ogg"_L1 && needsID3v1) {
        kind = Kind::Vorbis;
        ReadVorbisTag(path, comments);
    }
    if (extension != ".mp3"_L1)
        return;
    kind = Kind::MPEG;
    try {
        // One opening of the file for all that is needed; the stream comes last.
        if (needsID3v2)
            object.ReadTexts(path, shownFrames, needsMPEG);
        else if (needsID3v1)
            object.ReadID3v1(path, needsMPEG);
        else
            object.ReadMPEG(path);
    } catch (const MediaError &) {
        // A file that cannot be read has no stream, and not that of the file before it.
        object.ResetFile(path);
    }
}

QString ReportRow::Cell(ReportColumn column)
{
    switch (column) {
    case ReportColumn::FileName:
        return FileNameCell();
    case ReportColumn::Folder:
        return FolderCell();
    case ReportColumn::Size:
        return IsMissing() ? u"Not found!"_s : FormatFileSize(length);
    default:
        return kind == Kind::MPEG ? MPEGCell(column) : kind == Kind::Vorbis ? VorbisCell(column) : QString();
    }
}

QString ReportRow::FileNameCell() const
{
    QString name = GetFileName(path);
    const QString extension = GetExtension(name);
    return ShownPath(ProperCase(RemoveText(std::move(name), extension)));
}

const QString &ReportRow::FolderCell()
{
    if (!folderCell.isEmpty() && IsFolderPart(folder, path))
        return folderCell;
    folder = GetFolderPart(path);
    QString shown = RelativeTo(folder);
    if (shown.isEmpty())
        shown = u"."_s;
    if (shown.endsWith(u'\\'))
        shown.chop(1);
    folderCell = ShownPath(ToHostPath(shown));
    return folderCell;
}

QString ReportRow::RelativeTo(const QString &text) const
{
    if (root.isEmpty() || !text.startsWith(root))
        return text;
    qsizetype start = root.size();
    while (start < text.size() && text[start] == u'\\')
        ++start;
    return text.sliced(start);
}

QString ReportRow::Link() const
{
    return IsMissing() ? QString() : ToLink(RelativeTo(path));
}

QString ReportRow::MPEGCell(ReportColumn column) const
{
    switch (column) {
    case ReportColumn::Time:
        // The rounding mode of a process is halves to even.
        return FormatPlayTime(static_cast<qint64>(std::nearbyint(object.SongLength())));
    case ReportColumn::ID:
        return object.MPEGVersion();
    case ReportColumn::Layer:
        return object.Layer();
    case ReportColumn::BitRate:
        return object.Bitrate();
    case ReportColumn::SampleRate:
        return QString::number(object.SampleRate()) + u" Hz"_s;
    case ReportColumn::Mode:
        return object.Mode();
    case ReportColumn::CRCProtection:
        return YesNoText(object.CRCProtection());
    case ReportColumn::Emphasis:
        return object.Emphasis();
    case ReportColumn::Copyrighted:
        return YesNoText(object.Copyrighted());
    case ReportColumn::ID3v1Title:
        return object.Title();
    case ReportColumn::ID3v1Artist:
        return object.Artist();
    case ReportColumn::ID3v1Album:
        return object.Album();
    case ReportColumn::ID3v1Year:
        return object.Year();
    case ReportColumn::ID3v2Title:
    case ReportColumn::ID3v2Artist:
    case ReportColumn::ID3v2Album:
    case ReportColumn::ID3v2Year:
        return object.GetFrame(shownFrames[static_cast<std::size_t>(column) - firstShown]);
    default:
        return QString();
    }
}

QString ReportRow::VorbisCell(ReportColumn column) const
{
    switch (column) {
    case ReportColumn::ID:
        return u"OGG Vorbis"_s;
    case ReportColumn::ID3v1Title:
        return comments.Title;
    case ReportColumn::ID3v1Artist:
        return comments.Artist;
    case ReportColumn::ID3v1Album:
        return comments.Album;
    default:
        return QString();
    }
}
