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

std::optional<MP3Image> ImageOf(const ID3v2Tag &tag, const TagFrame &frame)
{
    const std::optional<QByteArray> content = frame.Id == "APIC" ? tag.Content(frame) : std::nullopt;
    if (!content)
        return std::nullopt;
    const AttachedPictureFrame picture(PlainFrame(frame.Id, *content));
    return MP3Image{FromTagLib(picture.picture()), FromTagLib(picture.description()),
                    TypeName(FromTagLib(picture.mimeType()))};
}
} // namespace

QImage MP3Image::Picture() const
{
    return QImage::fromData(Data);
}

void MP3ImageList::Add(const QString &path, const QString &description)
{
    QByteArray data;
    if (!ReadWholeFile(path, data))
        throw MediaError(ShownPath(path) % u" cannot be read."_s);
    const auto isImage = [this](const TagFrame &frame) { return IsImage(tag, frame); };
    const auto isSame = [&](const TagFrame &frame) {
        const std::optional<MP3Image> old = ImageOf(tag, frame);
        return old && old->Data == data && old->Description == description;
    };
    tag.PutBehind(isImage, isSame, "APIC", [&] {
        AttachedPictureFrame picture;
        picture.setMimeType(ToTagLib(TypeOfData(data)));
        picture.setType(Count() == 0 ? AttachedPictureFrame::FrontCover : AttachedPictureFrame::Other);
        picture.setTextEncoding(EncodingFor(description, tag.Version));
        picture.setDescription(ToTagLib(description));
        picture.setPicture(ToTagLib(data));
        return ContentOf(picture);
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
        if (const std::optional<MP3Image> image = frame.Dropped ? std::nullopt : ImageOf(tag, frame))
            items.append(*image);
    }
    return items;
}
