#include "media/TagFrames.h"

#include "media/Genres.h"
#include "media/TagLibText.h"

#include <taglib/commentsframe.h>
#include <taglib/textidentificationframe.h>
#include <taglib/unsynchronizedlyricsframe.h>
#include <taglib/urllinkframe.h>

#include <QUrl>

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

template <typename Frame>
FrameText TextWithLanguage(const TagLib::ByteVector &bytes)
{
    const Frame frame(bytes);
    return {FromTagLib(frame.text()), FromTagLib(frame.description()), FromTagLib(frame.language())};
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

FrameText TextOfPlainText(const TagLib::ByteVector &bytes, bool isGenre)
{
    QStringList values = Values(Frames::TextIdentificationFrame(bytes).fieldList());
    if (isGenre)
        std::transform(values.begin(), values.end(), values.begin(), ShownGenre);
    return {values.join(u'/')};
}

// TagLib's own class takes the text for the description when the description is empty. A comment has the same fields,
// and a language behind the encoding. Of several values the first counts.
FrameText TextOfUserText(const QByteArray &content)
{
    const QByteArray comment = content.first(std::min<qsizetype>(content.size(), 1)) + "eng" + content.mid(1);
    return TextWithLanguage<Frames::CommentsFrame>(PlainFrame("COMM", comment));
}

FrameText TextOfUserLink(const TagLib::ByteVector &bytes)
{
    const Frames::UserUrlLinkFrame frame(bytes);
    return {FromTagLib(frame.url()), FromTagLib(frame.description())};
}

bool HasEncoding(const QByteArray &id)
{
    return id.startsWith('T') || id == "WXXX" || id == "COMM" || id == "USLT";
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

std::optional<FoundFrame> FindText(const ID3v2Tag &tag, const QByteArray &id)
{
    const auto any = [](const FrameText &) { return true; };
    for (const QByteArray &candidate : IdsFor(id, tag.Version)) {
        std::optional<FoundFrame> found;
        if (HasDescription(candidate))
            found = FindFrame(tag, candidate, [](const FrameText &text) { return text.Description.isEmpty(); });
        if (!found)
            found = FindFrame(tag, candidate, any);
        if (found)
            return found;
    }
    return std::nullopt;
}

QString YearOf(const QString &recordingDate)
{
    return recordingDate.section(u'-', 0, 0);
}

std::optional<FoundFrame> FindNamedValue(const ID3v2Tag &tag, const QString &description)
{
    return FindFrame(tag, "COMM", [&](const FrameText &text) { return text.Description == description; });
}

void PutText(ID3v2Tag &tag, const QByteArray &id, const std::optional<FoundFrame> &found, FrameText text)
{
    if (text.Text.isEmpty()) {
        if (found)
            tag.Frames.erase(tag.Frames.begin() + static_cast<std::ptrdiff_t>(found->Index));
    } else if (found) {
        TagFrame &frame = tag.Frames[found->Index];
        tag.SetContent(frame, MakeFrameContent(frame.Id, text, tag.Version));
    } else {
        tag.Append(id, MakeFrameContent(id, text, tag.Version));
    }
}
} // namespace

std::optional<FrameText> ReadFrameText(const ID3v2Tag &tag, const TagFrame &frame)
{
    const std::optional<QByteArray> content = tag.Content(frame);
    constexpr char lastEncoding = 3;
    if (!content ||
        (HasEncoding(frame.Id) && !content->isEmpty() && static_cast<quint8>(content->front()) > lastEncoding))
        return std::nullopt;
    const TagLib::ByteVector bytes = PlainFrame(frame.Id, *content);
    if (frame.Id == "COMM")
        return TextWithLanguage<Frames::CommentsFrame>(bytes);
    if (frame.Id == "USLT")
        return TextWithLanguage<Frames::UnsynchronizedLyricsFrame>(bytes);
    if (frame.Id == "TXXX")
        return TextOfUserText(*content);
    if (frame.Id == "WXXX")
        return TextOfUserLink(bytes);
    if (frame.Id.startsWith('T'))
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

QString TagText(const ID3v2Tag &tag, const QByteArray &id)
{
    const std::optional<FoundFrame> found = FindText(tag, id);
    if (!found)
        return QString();
    return tag.Frames[found->Index].Id == "TDRC" ? YearOf(found->Text.Text) : found->Text.Text;
}

void SetTagText(ID3v2Tag &tag, const QByteArray &id, const QString &text)
{
    if (text == TagText(tag, id))
        return;
    FrameText put;
    std::optional<FoundFrame> found = FindText(tag, id);
    if (found)
        put = found->Text;
    put.Text = text;
    PutText(tag, IdsFor(id, tag.Version).front(), found, put);
    // A text that is there twice, which no tag should have, shall not come back in the place of the removed one.
    while (text.isEmpty() && id.startsWith('T') && !HasDescription(id) && (found = FindText(tag, id)))
        PutText(tag, id, found, put);
}

QString NamedValue(const ID3v2Tag &tag, const QString &description)
{
    const std::optional<FoundFrame> found = FindNamedValue(tag, description);
    return found ? found->Text.Text : QString();
}

void SetNamedValue(ID3v2Tag &tag, const QString &description, const QString &text)
{
    const std::optional<FoundFrame> found = FindNamedValue(tag, description);
    if (text != (found ? found->Text.Text : QString()))
        PutText(tag, "COMM", found, FrameText{text, description});
}

bool IsNamedValue(const QString &description)
{
    static const QStringList descriptions{u"MusicMatch_Tempo"_s, u"MusicMatch_Mood"_s, u"MusicMatch_Situation"_s,
                                          u"MusicMatch_Preference"_s};
    return descriptions.contains(description);
}
