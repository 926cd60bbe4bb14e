#include "compilation/DiscIcon.h"

#include "platform/Files.h"
#include "text/PathText.h"

#include <QBuffer>
#include <QDataStream>
#include <QImageReader>
#include <QList>

namespace
{
/// From here on a picture stands in the file as PNG, below as a bitmap, which old systems want.
constexpr int firstPng = 256;

/// A picture as it stands in an icon file: rows from the bottom up, then a mask of what is transparent.
QByteArray Bitmap(const QImage &picture)
{
    constexpr quint32 headerBytes = 40;
    const int size = picture.width();
    const qsizetype maskRow = (size + 31) / 32 * 4;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    // The height counts the mask as well.
    stream << headerBytes << qint32(size) << qint32(2 * size) << quint16(1) << quint16(32);
    for (int field = 0; field < 6; ++field)
        stream << quint32(0);
    QByteArray mask;
    for (int y = size - 1; y >= 0; --y) {
        QByteArray row(maskRow, '\0');
        for (int x = 0; x < size; ++x) {
            const QRgb pixel = picture.pixel(x, y);
            stream << pixel;
            if (qAlpha(pixel) == 0)
                row[x / 8] = static_cast<char>(static_cast<unsigned char>(row[x / 8]) | (0x80U >> (x % 8)));
        }
        mask += row;
    }
    return bytes + mask;
}

QByteArray Png(const QImage &picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    picture.save(&buffer, "PNG");
    return bytes;
}
} // namespace

QByteArray IconFileContent(const QIcon &picture)
{
    if (picture.isNull())
        return {};
    QList<QByteArray> pictures;
    QByteArray directory;
    QDataStream stream(&directory, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    constexpr std::array sizes{16, 32, 48, 256};
    stream << quint16(0) << quint16(1) << quint16(sizes.size());
    quint32 place = 6 + 16 * sizes.size();
    for (const int size : sizes) {
        // An icon gives no more than it has.
        const QImage scaled = picture.pixmap(QSize(size, size), 1.0)
                                  .toImage()
                                  .scaled(size, size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                                  .convertToFormat(QImage::Format_ARGB32);
        pictures.append(size < firstPng ? Bitmap(scaled) : Png(scaled));
        const auto count = static_cast<quint32>(pictures.last().size());
        // 0 means 256.
        const auto side = static_cast<quint8>(size % 256);
        stream << side << side << quint8(0) << quint8(0) << quint16(1) << quint16(32) << count << place;
        place += count;
    }
    return directory + pictures.join();
}

DiscPicture ReadDiscPicture(const QString &path)
{
    DiscPicture result;
    QByteArray content;
    ReadWholeFile(path, content);
    QBuffer buffer(&content);
    QImageReader reader(&buffer);
    result.IsIcon = reader.format() == "ico" && GetExtension(path).toLower() == u".ico";
    do {
        const QPixmap picture = QPixmap::fromImageReader(&reader);
        if (!picture.isNull())
            result.Picture.addPixmap(picture);
    } while (reader.jumpToNextImage());
    return result;
}
