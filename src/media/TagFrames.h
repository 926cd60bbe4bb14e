#pragma once

#include "media/ID3v2Tag.h"

/// The text of a frame: of a text frame ("T..."), a link ("W..."), a comment ("COMM") or lyrics ("USLT").
struct FrameText {
    /// Several values are joined by "/"; a genre's numbers are its names.
    QString Text;
    /// Of "TXXX", "WXXX", "COMM" and "USLT".
    QString Description = QString();
    /// Three characters; of "COMM" and "USLT".
    QByteArray Language{"eng"};
};
/// Nothing for a frame of another kind, and for one whose text cannot be decoded.
std::optional<FrameText> ReadFrameText(const ID3v2Tag &tag, const TagFrame &frame);
/// The content of a frame with a text, Latin-1 where it fits, else UTF-16 in a 2.3 tag and UTF-8 in a 2.4 tag.
QByteArray MakeFrameContent(const QByteArray &id, const FrameText &text, int version);

/// The text that stands for an id of version 2.3, as MP3File::GetFrame tells.
QString TagText(const ID3v2Tag &tag, const QByteArray &id);
/// Whether the front of a tag is enough to tell that text.
bool AnswersFor(const ID3v2Tag &front, const QByteArray &id);
/// Whether that text stands in a frame with a description.
bool IsTextDescribed(const ID3v2Tag &tag, const QByteArray &id);
/// Sets it as MP3File::SetFrame tells.
void SetTagText(ID3v2Tag &tag, const QByteArray &id, const QString &text);
/// Sets it as MP3File::SetShownFrame tells.
void SetShownText(ID3v2Tag &tag, const QByteArray &id, const QString &text);

// Values that are kept as comments, by the descriptions that other programs know.
constexpr QStringView TempoDescription = u"MusicMatch_Tempo";
constexpr QStringView MoodDescription = u"MusicMatch_Mood";
constexpr QStringView SituationDescription = u"MusicMatch_Situation";
constexpr QStringView PreferenceDescription = u"MusicMatch_Preference";
QString NamedValue(const ID3v2Tag &tag, QStringView description);
void SetNamedValue(ID3v2Tag &tag, QStringView description, const QString &text);
/// Whether a comment of this description keeps a named value.
bool IsNamedValue(QStringView description);
