#include "media/MP3CommentList.h"

#include "media/TagFrames.h"

namespace
{
/// The text of a comment frame that a person wrote.
std::optional<FrameText> CommentOf(const ID3v2Tag &tag, const TagFrame &frame)
{
    if (frame.Id != "COMM")
        return std::nullopt;
    std::optional<FrameText> text = ReadFrameText(tag, frame);
    return text && IsNamedValue(text->Description) ? std::nullopt : text;
}
} // namespace

void MP3CommentList::Add(const QString &text, const QString &description)
{
    const auto isComment = [this](const TagFrame &frame) { return CommentOf(tag, frame).has_value(); };
    const auto isSame = [&](const TagFrame &frame) {
        const std::optional<FrameText> old = CommentOf(tag, frame);
        return old && old->Text == text && old->Description == description;
    };
    tag.PutBehind(isComment, isSame, "COMM", [&] {
        return MakeFrameContent("COMM", FrameText{text, description}, tag.Version);
    });
}

int MP3CommentList::Count() const
{
    return static_cast<int>(Items().size());
}

void MP3CommentList::Clear()
{
    tag.Drop([this](const TagFrame &frame) { return CommentOf(tag, frame).has_value(); });
}

QList<MP3Comment> MP3CommentList::Items() const
{
    QList<MP3Comment> items;
    for (const TagFrame &frame : tag.Frames) {
        if (const std::optional<FrameText> text = frame.Dropped ? std::nullopt : CommentOf(tag, frame))
            items.append({text->Description, text->Text});
    }
    return items;
}
