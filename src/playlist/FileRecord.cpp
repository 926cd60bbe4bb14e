#include "playlist/FileRecord.h"

#include "media/FullData.h"
#include "media/MP3File.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Names.h"
#include "platform/PlaylistLines.h"
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
    const QString folder = NormalisedPath(GetFolderPart(path));
    if (IsAbsolute(path))
        return folder + u'\\';
    const QString base = path.startsWith(u'\\') ? RootOf(current) : current;
    const bool needsSeparator = !folder.isEmpty() && !folder.startsWith(u'\\');
    return base + (needsSeparator ? u"\\" : u"") + folder + u'\\';
}

/// The ending of a name, a full stop and three letters without regard to case.
quint64 EndingOf(QStringView name)
{
    return name.size() < 4 ? 0 : FoldedPiece(name, name.size() - 4);
}

QString FileTypeText(quint64 ending)
{
    static const quint64 ogg = EndingOf(u".ogg");
    static const quint64 wav = EndingOf(u".wav");
    static const quint64 vqf = EndingOf(u".vqf");
    if (ending == ogg)
        return u"OGG Vorbis"_s;
    if (ending == wav)
        return u"WAV File"_s;
    return ending == vqf ? u"VQF File"_s : QString();
}

qint32 WholeSeconds(double seconds)
{
    // The rounding mode of a process is halves to even.
    return static_cast<qint32>(std::clamp(std::nearbyint(seconds), 0.0, LongestLength));
}

QString SampleRateText(qint64 rate)
{
    return QString::number(rate) + u" Hz";
}

void TakeStreamData(const MP3File &file, FileRecord &record)
{
    record.LayerText = u"Layer " + file.Layer();
    record.FileType = u"MPEG " + file.MPEGVersion();
    record.Length = WholeSeconds(file.SongLength());
    const QString bitrate = file.Bitrate();
    record.BitrateText = bitrate.contains(u"VBR"_s) ? bitrate : QString(bitrate + u" Kbit");
    record.SampleRateText = SampleRateText(std::llround(file.SampleRate()));
    record.ModeText = file.Mode();
}

void TakeStreamData(const AudioData &data, FileRecord &record)
{
    record.Length = WholeSeconds(data.Length / 1000.0);
    record.BitrateText = QString::number(data.Bitrate) + u" Kbit";
    record.SampleRateText = SampleRateText(data.SampleRate);
    record.ModeText = data.Channels == 1   ? u"Single Channel"_s
                      : data.Channels == 2 ? u"Stereo"_s
                                           : QString::number(data.Channels) + u" Channels";
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

QString RowFolders::Of(const QString &path, qsizetype nameStart)
{
    const QStringView part = QStringView(path).first(nameStart);
    const QStringView name = QStringView(path).sliced(nameStart);
    if (part != lastPart) {
        lastPart = part.toString();
        holdsStop = part.contains(u'.');
        isAbsolute = IsAbsolute(lastPart);
        last.clear();
    }
    // A name that is cut out of the folder, or whose colon makes the path absolute. Few folders hold a full stop, and
    // without one no name that has one.
    const bool hasStop = name.size() >= 4 && name[name.size() - 4] == u'.';
    if (((holdsStop || !hasStop) && name.size() <= LongestName && part.contains(name)) ||
        (!isAbsolute && IsAbsolute(path)))
        return AbsoluteFolder(path, base);
    if (last.isEmpty())
        last = AbsoluteFolder(path, base);
    return last;
}

FileRecord AnalyseFile(const QString &path)
{
    RowFolders folders(CurrentDirectory());
    return AnalyseFile(path, folders);
}

FileRecord AnalyseFile(const QString &path, RowFolders &folders)
{
    static const quint64 mp3 = EndingOf(u".mp3");
    const qsizetype nameStart = FileNameStart(path);
    FileRecord record;
    record.FileName = path.sliced(nameStart);
    record.Folder = folders.Of(path, nameStart);
    const QString file = AbsolutePath(path, folders.Base());
    const quint64 ending = EndingOf(record.FileName);
    if (ending == mp3) {
        AnalyseMPEG(file, record);
        return record;
    }
    const FileFacts facts = ExamineFile(file);
    if (!facts.Exists || facts.IsFolder)
        return record;
    record.Size = facts.Size;
    record.FileType = FileTypeText(ending);
    record.Valid = true;
    if (AudioData audio; FullData() && ReadAudioData(file, audio))
        TakeStreamData(audio, record);
    return record;
}

FileRecord EntryReader::Analyse(const QString &entry)
{
    FileRecord record = AnalyseFile(entry, written);
    if (record.Valid || record.Size > 0)
        return record;
    const QString path = finder.Find(entry, written.Base());
    return path.isEmpty() ? record : AnalyseFile(path, found);
}
