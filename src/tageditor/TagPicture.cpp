#include "tageditor/TagPicture.h"

#include <QBuffer>

const QImage &TagPicture::Picture()
{
    if (!decoded)
        decoded = held.Picture();
    return *decoded;
}

const QByteArray &TagPicture::Bitmap()
{
    if (bitmap)
        return *bitmap;
    bitmap = QByteArray();
    if (Picture().isNull())
        return *bitmap;
    if (held.Data.startsWith("BM")) {
        bitmap = held.Data;
        return *bitmap;
    }
    QBuffer buffer(&*bitmap);
    buffer.open(QIODevice::WriteOnly);
    if (!Picture().save(&buffer, "BMP"))
        bitmap = QByteArray();
    return *bitmap;
}

const QByteArray &TagPicture::Stored()
{
    // A bitmap need not be decoded for this, which takes memory.
    if (held.Data.startsWith("BM"))
        return held.Data;
    const bool isShown = decoded.has_value();
    const bool isPicture = !Bitmap().isEmpty();
    if (!isShown)
        decoded.reset();
    return isPicture ? *bitmap : held.Data;
}
