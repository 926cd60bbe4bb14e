#include "playlist/FileRecord.h"

#include "media/MP3File.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "text/PathText.h"

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace
{
constexpr double LongestLength = std::numeric_limits<qint32>::max();

QString AbsoluteFolder(const QString &path, const QString &current)
{
    QString folder = GetFolderPart(path);
    if (!IsAbsolute(path))
        folder = AbsolutePath(folder, current);
    return NormalisePath(folder) + u'\\';
}

QString FileTypeText(const QString &extension)
{
    if (extension == u".ogg"_s)
        return u"OGG Vorbis"_s;
    if (extension == u".wav"_s)
        return u"WAV File"_s;
    if (extension == u".vqf"_s)
        return u"VQF File"_s;
    return QString();
}

void TakeStreamData(const MP3File &file, FileRecord &record)
{
    record.LayerText = u"Layer " + file.Layer();
    record.FileType = u"MPEG " + file.MPEGVersion();
    // The rounding mode of a process is halves to even.
    record.Length = static_cast<qint32>(std::min(std::nearbyint(file.SongLength()), LongestLength));
    const QString bitrate = file.Bitrate();
    record.BitrateText = bitrate.contains(u"VBR"_s) ? bitrate : QString(bitrate + u" Kbit");
    record.SampleRateText = QString::number(std::llround(file.SampleRate())) + u" Hz";
    record.ModeText = file.Mode();
}

// The reader has opened the file and knows its size, so that the disk is asked once.
void AnalyseMPEG(const QString &path, FileRecord &record)
{
    MP3File file;
    try {
        file.ReadMPEG(path);
        record.Size = file.FileSize();
        TakeStreamData(file, record);
        record.Valid = true;
    } catch (const std::exception &) {
        record.Size = file.FileSize();
        // What could not be opened may still be there, locked or without the right to read it.
        if (record.Size == 0)
            record.Size = ExamineFile(path).Size;
    }
}
} // namespace

FileRecord AnalyseFile(const QString &path)
{
    return AnalyseFile(path, CurrentDirectory());
}

FileRecord AnalyseFile(const QString &path, const QString &folder)
{
    FileRecord record;
    record.FileName = GetFileName(path);
    record.Folder = AbsoluteFolder(path, folder);
    const QString file = AbsolutePath(path, folder);
    const QString extension = GetExtension(record.FileName).toLower();
    if (extension == u".mp3"_s) {
        AnalyseMPEG(file, record);
        return record;
    }
    const FileFacts facts = ExamineFile(file);
    if (!facts.Exists || facts.IsFolder)
        return record;
    record.Size = facts.Size;
    record.FileType = FileTypeText(extension);
    record.Valid = true;
    return record;
}
