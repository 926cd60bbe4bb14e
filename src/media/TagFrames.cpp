#include "media/TagFrames.h"

#include "media/Genres.h"
#include "media/TagLibText.h"

#include <taglib/commentsframe.h>
#include <taglib/textidentificationframe.h>
#include <taglib/unsynchronizedlyricsframe.h>
#include <taglib/urllinkframe.h>

#include <QUrl>
#include <QtEndian>

#include <algorithm>

using namespace Qt::StringLiterals;
namespace Frames = TagLib::ID3v2;

namespace
{
QStringList Values(const TagLib::StringList &list)
{
    QStringList texts;
    for (const TagLib::String &value : list)
        texts.append(FromTagLib(value));
    return texts;
}

// Links are Latin-1; what that lacks is escaped as web addresses do.
TagLib::String LinkText(const QString &text)
{
    QString link;
    for (const char32_t character : text.toUcs4()) {
        const QString piece = QString::fromUcs4(&character, 1);
        link += character <= 0xFF ? piece : QString::fromLatin1(QUrl::toPercentEncoding(piece));
    }
    return ToTagLib(link);
}

/// Nothing for UTF-16 that does not tell its byte order.
std::optional<QString> Decoded(QByteArrayView bytes, TagLib::String::Type encoding)
{
    if (encoding == TagLib::String::UTF16 && !bytes.isEmpty() && !bytes.startsWith("\xFF\xFE") &&
        !bytes.startsWith("\xFE\xFF"))
        return std::nullopt;
    return FromTagLib(
        TagLib::String(TagLib::ByteVector(bytes.data(), static_cast<unsigned int>(bytes.size())), encoding));
}

// TagLib's own classes miss a description that no text follows, and would let it be lost. Of several values the first
// counts.
std::optional<FrameText> DescribedText(const QByteArray &id, const QByteArray &content)
{
    const qsizetype languageBytes = id == "COMM" || id == "USLT" ? 3 : 0;
    const qsizetype start = 1 + languageBytes;
    if (content.size() < start)
        return std::nullopt;
    const auto encoding = static_cast<TagLib::String::Type>(content.front());
    const qsizetype unit = encoding == TagLib::String::UTF16 || encoding == TagLib::String::UTF16BE ? 2 : 1;
    qsizetype end = start;
    while (end + unit <= content.size() && (content[end] != '\0' || content[end + unit - 1] != '\0'))
        end += unit;
    if (end + unit > content.size())
        return std::nullopt;
    const auto description = Decoded(QByteArrayView(content).sliced(start, end - start), encoding);
    const auto text =
        Decoded(QByteArrayView(content).sliced(end + unit), id == "WXXX" ? TagLib::String::Latin1 : encoding);
    if (!description || !text)
        return std::nullopt;
    return FrameText{*text, *description, content.sliced(1, languageBytes)};
}

template <typename Frame>
QByteArray ContentWithLanguage(const FrameText &text, TagLib::String::Type encoding)
{
    Frame frame(encoding);
    frame.setLanguage(ToTagLib(text.Language));
    frame.setDescription(ToTagLib(text.Description));
    frame.setText(ToTagLib(text.Text));
    return ContentOf(frame);
}

/// A single text in one of the encodings that nearly all taggers write; nothing for what TagLib has to look at.
std::optional<QString> PlainText(const QByteArray &content)
{
    constexpr qsizetype markEnd = 3;
    QString text;
    if (content.startsWith(QByteArrayView("\x01\xFF\xFE")) && content.size() % 2 != 0) {
        text.resize((content.size() - markEnd) / 2);
        qFromLittleEndian<char16_t>(content.constData() + markEnd, text.size(), text.data());
    } else if (content.startsWith('\0')) {
        text = QString::fromLatin1(QByteArrayView(content).sliced(1));
    } else {
        return std::nullopt;
    }
    while (text.endsWith(QChar::Null))
        text.chop(1);
    const bool isSingle = std::none_of(text.begin(), text.end(),
                                       [](QChar character) { return character.isNull() || character.isSurrogate(); });
    return isSingle ? std::optional(text) : std::nullopt;
}

FrameText TextOfPlainText(const TagLib::ByteVector &bytes, bool isGenre)
{
    QStringList values = Values(Frames::TextIdentificationFrame(bytes).fieldList());
    if (isGenre)
        std::transform(values.begin(), values.end(), values.begin(), ShownGenre);
    return {values.join(u'/')};
}

bool HasKnownEncoding(const QByteArray &id, const QByteArray &content)
{
    constexpr quint8 lastEncoding = 3;
    const bool hasEncoding = id.startsWith('T') || id == "WXXX" || id == "COMM" || id == "USLT";
    return !hasEncoding || content.isEmpty() || static_cast<quint8>(content.front()) <= lastEncoding;
}

// Whether a frame may be meant where its kind is asked for without a description.
bool HasDescription(const QByteArray &id)
{
    return id == "TXXX" || id == "WXXX" || id == "USLT";
}

/// The ids that can answer for one of version 2.3, the proper one of the tag's version first.
QList<QByteArray> IdsFor(const QByteArray &id, int version)
{
    if (id != "TYER")
        return {id};
    return version == 4 ? QList<QByteArray>{"TDRC", "TYER"} : QList<QByteArray>{"TYER", "TDRC"};
}

struct FoundFrame {
    std::size_t Index;
    FrameText Text;
};

template <typename Condition>
std::optional<FoundFrame> FindFrame(const ID3v2Tag &tag, const QByteArray &id, const Condition &fits)
{
    for (std::size_t i = 0; i < tag.Frames.size(); ++i) {
        const TagFrame &frame = tag.Frames[i];
        if (frame.Dropped || frame.Id != id)
            continue;
        if (const std::optional<FrameText> text = ReadFrameText(tag, frame); text && fits(*text))
            return FoundFrame{i, *text};
    }
    return std::nullopt;
}

/// The frame without a description, of an id whose frames may have one.
std::optional<FoundFrame> FindPlain(const ID3v2Tag &tag, const QByteArray &id)
{
    return FindFrame(tag, id, [](const FrameText &text) { return text.Description.isEmpty(); });
}

/// The frame whose text is shown.
std::optional<FoundFrame> FindText(const ID3v2Tag &tag, const QByteArray &id)
{
    std::optional<FoundFrame> found = HasDescription(id) ? FindPlain(tag, id) : std::nullopt;
    for (const QByteArray &candidate : IdsFor(id, tag.Version)) {
        if (!found)
            found = FindFrame(tag, candidate, [](const FrameText &) { return true; });
    }
    return found;
}

QString YearOf(const QString &recordingDate)
{
    return recordingDate.section(u'-', 0, 0);
}

std::optional<FoundFrame> FindNamedValue(const ID3v2Tag &tag, QStringView description)
{
    return FindFrame(tag, "COMM", [&](const FrameText &text) { return text.Description == description; });
}

/// Gives the found frame a text, or a new one where none was found; the empty text removes it. Its rivals, which mean
/// the same, go, so that no reader shows an old text.
void PutText(ID3v2Tag &tag, const QByteArray &id, const std::optional<FoundFrame> &found, const FrameText &text,
             const ID3v2Tag::FrameTest &isRival)
{
    std::optional<TagFrame> kept;
    std::size_t place = tag.Frames.size();
    if (found) {
        kept = std::move(tag.Frames[found->Index]);
        place = found->Index;
        tag.Frames.erase(tag.Frames.begin() + static_cast<std::ptrdiff_t>(place));
    }
    const auto front = tag.Frames.begin() + static_cast<std::ptrdiff_t>(place);
    place -= static_cast<std::size_t>(std::count_if(tag.Frames.begin(), front, isRival));
    std::erase_if(tag.Frames, isRival);
    if (text.Text.isEmpty())
        return;
    const QByteArray content = MakeFrameContent(id, text, tag.Version);
    if (!kept) {
        tag.Append(id, content);
        return;
    }
    kept->Id = id;
    tag.SetContent(*kept, content);
    tag.Frames.insert(tag.Frames.begin() + static_cast<std::ptrdiff_t>(place), std::move(*kept));
}

/// What is shown of a frame that stands for an id.
QString ShownText(const ID3v2Tag &tag, const std::optional<FoundFrame> &found)
{
    if (!found)
        return QString();
    return tag.Frames[found->Index].Id == "TDRC" ? YearOf(found->Text.Text) : found->Text.Text;
}

void SetFoundText(ID3v2Tag &tag, const QByteArray &id, const std::optional<FoundFrame> &found, const QString &text)
{
    if (text == ShownText(tag, found))
        return;
    FrameText put = found ? found->Text : FrameText();
    put.Text = text;
    const QList<QByteArray> ids = IdsFor(id, tag.Version);
    PutText(tag, ids.front(), found, put, [&](const TagFrame &frame) {
        // Of a plain text there is one frame, of a link there may be several.
        if (!HasDescription(id))
            return id.startsWith('T') && ids.contains(frame.Id);
        const std::optional<FrameText> other = frame.Id == id ? ReadFrameText(tag, frame) : std::nullopt;
        return other && other->Description == put.Description && other->Language == put.Language;
    });
}
} // namespace

std::optional<FrameText> ReadFrameText(const ID3v2Tag &tag, const TagFrame &frame)
{
    const std::optional<QByteArray> content = tag.Content(frame);
    if (!content || !HasKnownEncoding(frame.Id, *content))
        return std::nullopt;
    if (frame.Id == "COMM" || HasDescription(frame.Id))
        return DescribedText(frame.Id, *content);
    const bool isText = frame.Id.startsWith('T');
    if (const auto text = isText && frame.Id != "TCON" ? PlainText(*content) : std::nullopt)
        return FrameText{*text};
    const TagLib::ByteVector bytes = PlainFrame(frame.Id, *content);
    if (isText)
        return TextOfPlainText(bytes, frame.Id == "TCON");
    if (frame.Id.startsWith('W'))
        return FrameText{FromTagLib(Frames::UrlLinkFrame(bytes).url())};
    return std::nullopt;
}

QByteArray MakeFrameContent(const QByteArray &id, const FrameText &text, int version)
{
    const TagLib::String::Type encoding = EncodingFor(text.Text + text.Description, version);
    if (id == "COMM")
        return ContentWithLanguage<Frames::CommentsFrame>(text, encoding);
    if (id == "USLT")
        return ContentWithLanguage<Frames::UnsynchronizedLyricsFrame>(text, encoding);
    if (id == "TXXX")
        return ContentOf(
            Frames::UserTextIdentificationFrame(ToTagLib(text.Description), ToTagLib(text.Text), encoding));
    if (id == "WXXX") {
        Frames::UserUrlLinkFrame frame(EncodingFor(text.Description, version));
        frame.setDescription(ToTagLib(text.Description));
        frame.setUrl(LinkText(text.Text));
        return ContentOf(frame);
    }
    if (id.startsWith('W')) {
        Frames::UrlLinkFrame frame(ToTagLib(id));
        frame.setUrl(LinkText(text.Text));
        return ContentOf(frame);
    }
    Frames::TextIdentificationFrame frame(ToTagLib(id), encoding);
    frame.setText(ToTagLib(text.Text));
    return ContentOf(frame);
}

bool AnswersFor(const ID3v2Tag &front, const QByteArray &id)
{
    const QByteArray proper = IdsFor(id, front.Version).front();
    // What follows the last frame is not known, and may tell of its size.
    return !front.Frames.empty() &&
           std::any_of(front.Frames.begin(), front.Frames.end() - 1, [&](const TagFrame &frame) {
               return frame.Id == proper && frame.Flags == 0 && HasKnownEncoding(frame.Id, frame.Data);
           });
}

QString TagText(const ID3v2Tag &tag, const QByteArray &id)
{
    return ShownText(tag, FindText(tag, id));
}

bool IsTextDescribed(const ID3v2Tag &tag, const QByteArray &id)
{
    const std::optional<FoundFrame> found = FindText(tag, id);
    return HasDescription(id) && found && !found->Text.Description.isEmpty();
}

void SetTagText(ID3v2Tag &tag, const QByteArray &id, const QString &text)
{
    SetFoundText(tag, id, HasDescription(id) ? FindPlain(tag, id) : FindText(tag, id), text);
}

void SetShownText(ID3v2Tag &tag, const QByteArray &id, const QString &text)
{
    SetFoundText(tag, id, FindText(tag, id), text);
}

QString NamedValue(const ID3v2Tag &tag, QStringView description)
{
    return ShownText(tag, FindNamedValue(tag, description));
}

void SetNamedValue(ID3v2Tag &tag, QStringView description, const QString &text)
{
    const std::optional<FoundFrame> found = FindNamedValue(tag, description);
    if (text == ShownText(tag, found))
        return;
    PutText(tag, "COMM", found, FrameText{text, description.toString()}, [&](const TagFrame &frame) {
        const std::optional<FrameText> other = frame.Id == "COMM" ? ReadFrameText(tag, frame) : std::nullopt;
        return other && other->Description == description;
    });
}

bool IsNamedValue(QStringView description)
{
    return description == TempoDescription || description == MoodDescription || description == SituationDescription ||
           description == PreferenceDescription;
}
