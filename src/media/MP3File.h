#pragma once

#include "media/ID3v1Tag.h"
#include "media/ID3v2Tag.h"
#include "media/MP3CommentList.h"
#include "media/MP3ImageList.h"
#include "media/MediaError.h"
#include "media/StreamReader.h"
#include "platform/DiskFile.h"

#include <QString>

#include <optional>
#include <span>

class TaggedFile;

/// In-memory model of one MPEG audio file's stream data and tags. Every operation that touches the disk takes the path
/// anew, leaves nothing open, and raises MediaError when it fails; the file is then as it was.
class MP3File
{
public:
    MP3File() = default;
    MP3File(const MP3File &) = delete;
    MP3File &operator=(const MP3File &) = delete;

    // The ID3v2 frames, by the ids of version 2.3: "TIT2", "TPE1", "TALB", "TYER", "TRCK", "TCOM", "TOPE", "TCOP",
    // "TENC", "WXXX", "USLT", "TXXX", "WOAR", "TCON". "WXXX", "USLT" and "TXXX" mean the frame without a description.
    // "TYER" is the year of a 2.4 tag's recording date.

    /// The text of a frame, several values joined by "/", numbers of genres as their names; empty when there is no
    /// such frame or its text cannot be decoded. Where every "WXXX", "USLT" or "TXXX" has a description, the first one
    /// is shown.
    QString GetFrame(QByteArrayView id) const;
    /// Whether GetFrame shows a frame with a description, which is a matter of this file alone.
    bool IsDescribed(QByteArrayView id) const;
    /// Replaces the text of a frame; the empty text removes it. A frame that has this text already stays as it is;
    /// otherwise other frames that mean the same go.
    void SetFrame(QByteArrayView id, const QString &text);
    /// As SetFrame, but means the frame that GetFrame shows.
    void SetShownFrame(QByteArrayView id, const QString &text);

    /// Writes the held ID3v2 tag into the file. Fails when it or the tag there cannot be followed to its end.
    void WriteID3v2(const QString &path);
    /// Writes the held ID3v1 fields into the file: Latin-1, cut to their fields, with a question mark for what
    /// Latin-1 lacks.
    void WriteID3v1(const QString &path);
    void ReadID3v1(const QString &path, bool withMPEG);
    void RemoveID3v1(const QString &path);
    /// Removes every ID3v2 tag from the file's front. Fails when the size of one is not known.
    void RemoveID3v2(const QString &path);
    /// Empties the object ahead of an update of this file, which it does not touch.
    void ResetFile(const QString &path);
    void ReadID3v2(const QString &path, bool withMPEG);
    /// Reads both tags and, with withMPEG, the stream data, whose properties are those of a new object for a file
    /// without MPEG audio.
    void ReadTags(const QString &path, bool withMPEG);
    /// As ReadTags, but of the ID3v2 tag perhaps no more than what GetFrame shows for these plain texts. Such a tag
    /// cannot be written.
    void ReadTexts(const QString &path, std::span<const QByteArrayView> ids, bool withMPEG);
    /// Reads only the MPEG stream data. Raises MediaError for a missing or locked file and for one that holds no MPEG
    /// audio; the stream properties are then those of a new object, but FileSize stays that of the file if it could
    /// be opened.
    void ReadMPEG(const QString &path);

    /// True when the last read found an ID3v1 tag.
    bool HasID3v1() const { return v1.Present; }
    QString Title() const { return v1.Title; }
    void SetTitle(const QString &text) { v1.Title = text; }
    QString Artist() const { return v1.Artist; }
    void SetArtist(const QString &text) { v1.Artist = text; }
    QString Album() const { return v1.Album; }
    void SetAlbum(const QString &text) { v1.Album = text; }
    QString Year() const { return v1.Year; }
    void SetYear(const QString &text) { v1.Year = text; }
    QString Comment() const { return v1.Comment; }
    void SetComment(const QString &text) { v1.Comment = text; }
    /// 0 means none.
    quint8 Track() const { return v1.Track; }
    void SetTrack(quint8 number) { v1.Track = number; }
    quint8 Genre() const { return v1.Genre; }
    void SetGenre(quint8 number) { v1.Genre = number; }

    /// Playing time in seconds, with fractions.
    double SongLength() const;
    /// "I", "II" or "III".
    QString Layer() const;
    /// "1.0", "2.0" or "2.5".
    QString MPEGVersion() const;
    /// Kilobits per second as a number without a unit; for variable bit rate the rounded average, a blank and "VBR".
    QString Bitrate() const;
    /// Hertz.
    double SampleRate() const;
    bool CRCProtection() const;
    bool Copyrighted() const;
    bool Original() const;
    /// "None", "50/15 microsec" or "CCIT J.17".
    QString Emphasis() const;
    /// "Stereo", "Joint Stereo", "Dual Channel" or "Single Channel".
    QString Mode() const;

    /// The 192 names of the ID3v1 genres in the order of their numbers, joined by "|".
    static QString GenreList();

    /// True when the last read found an ID3v2 tag.
    bool HasID3v2() const { return v2.Present; }
    QString Tempo() const;
    void SetTempo(const QString &text);
    QString Mood() const;
    void SetMood(const QString &text);
    QString Situation() const;
    void SetSituation(const QString &text);
    QString Preference() const;
    void SetPreference(const QString &text);
    MP3ImageList &Images() { return images; }
    MP3CommentList &Comments() { return comments; }

    /// Bytes of the file that the last read opened; 0 when it could not be opened. Saves its caller a second question
    /// to the disk.
    qint64 FileSize() const { return fileSize; }

    enum class TagChange { Write, Remove };
    /// WriteID3v1 or RemoveID3v1, then WriteID3v2 or RemoveID3v2, in one writing of the file where both can be done.
    /// When the second cannot, the first is done all the same, and MediaError is raised.
    /// With asRead, also raised for a file whose size or time is another one since then.
    void WriteTags(const QString &path, TagChange id3v1, TagChange id3v2, const std::optional<DiskFacts> &asRead = {});

private:
    void ReadStreamOf(const TaggedFile &file, bool wanted);

    ID3v1Tag v1;
    ID3v2Tag v2;
    MP3ImageList images{v2};
    MP3CommentList comments{v2};
    /// No layer (0) until a stream was read.
    StreamFacts stream;
    qint64 fileSize = 0;
};
