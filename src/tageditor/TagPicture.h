#pragma once

#include "media/MP3ImageList.h"

#include <optional>

/// A picture of the editor's list, decoded at most once to be shown.
class TagPicture
{
public:
    explicit TagPicture(const MP3Image &image) : held(image) {}

    const MP3Image &Image() const { return held; }
    /// A null image for data that cannot be decoded.
    const QImage &Picture();
    /// The bytes of a bitmap file; empty for data that cannot be decoded.
    const QByteArray &Bitmap();
    /// What goes into a tag: the bitmap, or data that cannot be decoded as it came.
    const QByteArray &Stored();

private:
    MP3Image held;
    std::optional<QImage> decoded;
    std::optional<QByteArray> bitmap;
};
