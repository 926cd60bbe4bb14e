#include "media/MP3ImageList.h"

#include "media/ID3v2Tag.h"
#include "media/MediaError.h"
#include "media/TagLibText.h"
#include "platform/Drives.h"
#include "platform/Files.h"

#include <taglib/attachedpictureframe.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using TagLib::ID3v2::AttachedPictureFrame;

namespace
{
QString TypeName(const QString &stored)
{
    if (stored.startsWith(u"image/", Qt::CaseInsensitive))
        return stored;
    return u"image/"_s + (stored.compare(u"jpg", Qt::CaseInsensitive) == 0 ? u"jpeg"_s : stored.toLower());
}

QString TypeOfData(const QByteArray &data)
{
    if (data.startsWith("BM"))
        return u"image/bmp"_s;
    if (data.startsWith("\x89PNG"))
        return u"image/png"_s;
    if (data.startsWith("\xFF\xD8\xFF"))
        return u"image/jpeg"_s;
    if (data.startsWith("GIF8"))
        return u"image/gif"_s;
    return u"image/"_s;
}

bool IsImage(const ID3v2Tag &tag, const TagFrame &frame)
{
    return frame.Id == "APIC" && tag.Content(frame);
}

/// Where in a picture frame the picture begins; its end where that cannot be told.
qsizetype PicturePlace(const QByteArray &content)
{
    const qsizetype description = content.indexOf('\0', 1) + 2;
    const char encoding = content.isEmpty() ? '\0' : content.front();
    const qsizetype unit = encoding == TagLib::String::UTF16 || encoding == TagLib::String::UTF16BE ? 2 : 1;
    for (qsizetype end = description; description > 1 && end + unit <= content.size(); end += unit) {
        if (content[end] == '\0' && content[end + unit - 1] == '\0')
            return end + unit;
    }
    return content.size();
}

/// A picture frame's content, whose data can be large and stays there.
struct PictureParts {
    QByteArrayView Data;
    QString Description;
    QString MIMEType;
    quint8 Type;
};

PictureParts PartsOf(const QByteArray &content)
{
    const qsizetype place = PicturePlace(content);
    // TagLib reads nothing of a frame of less than five bytes, so one of the picture's goes along.
    const AttachedPictureFrame head(PlainFrame("APIC", content.first(std::min(place + 1, content.size()))));
    return {QByteArrayView(content).sliced(place), FromTagLib(head.description()),
            TypeName(FromTagLib(head.mimeType())), static_cast<quint8>(head.type())};
}

bool IsSame(const ID3v2Tag &tag, const TagFrame &frame, const QByteArray &data, const QString &description,
            std::optional<quint8> type)
{
    const std::optional<QByteArray> content = frame.Id == "APIC" ? tag.Content(frame) : std::nullopt;
    if (!content)
        return false;
    const PictureParts parts = PartsOf(*content);
    return parts.Data == data && parts.Description == description && type.value_or(parts.Type) == parts.Type;
}
} // namespace

QImage MP3Image::Picture() const
{
    return QImage::fromData(Data);
}

void MP3ImageList::Add(const QString &path, const QString &description, std::optional<quint8> type)
{
    QByteArray data;
    if (!ReadWholeFile(path, data))
        throw MediaError(ShownPath(path) % u" cannot be read."_s);
    const auto isImage = [this](const TagFrame &frame) { return IsImage(tag, frame); };
    const auto isSame = [&](const TagFrame &frame) { return IsSame(tag, frame, data, description, type); };
    tag.PutBehind(isImage, isSame, "APIC", [&] {
        AttachedPictureFrame head;
        head.setMimeType(ToTagLib(TypeOfData(data)));
        const auto usual = Count() == 0 ? AttachedPictureFrame::FrontCover : AttachedPictureFrame::Other;
        head.setType(type ? static_cast<AttachedPictureFrame::Type>(*type) : usual);
        head.setTextEncoding(EncodingFor(description, tag.Version));
        head.setDescription(ToTagLib(description));
        return QByteArray(ContentOf(head) + data);
    });
}

MP3Image MP3ImageList::Item(qint16 index) const
{
    return Items().value(index - 1);
}

int MP3ImageList::Count() const
{
    return static_cast<int>(std::count_if(tag.Frames.begin(), tag.Frames.end(), [this](const TagFrame &frame) {
        return !frame.Dropped && IsImage(tag, frame);
    }));
}

void MP3ImageList::Clear()
{
    tag.Drop([this](const TagFrame &frame) { return IsImage(tag, frame); });
}

QList<MP3Image> MP3ImageList::Items() const
{
    QList<MP3Image> items;
    for (const TagFrame &frame : tag.Frames) {
        if (frame.Dropped || !IsImage(tag, frame))
            continue;
        const QByteArray content = *tag.Content(frame);
        const PictureParts parts = PartsOf(content);
        items.append({parts.Data.toByteArray(), parts.Description, parts.MIMEType, parts.Type});
    }
    return items;
}
