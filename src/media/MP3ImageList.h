#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QString>

#include <optional>

class ID3v2Tag;

/// One picture of a tag.
struct MP3Image {
    /// The stored data as it lies in the tag.
    QByteArray Data;
    QString Description;
    /// "image/" and a subtype.
    QString MIMEType;
    /// What it shows, by ID3v2's list of picture types: 3 is the front cover. Nothing for a picture from outside.
    std::optional<quint8> Type = {};

    /// The decoded image; a null one for data that is no picture this program can decode.
    QImage Picture() const;
    /// Bytes of the stored data.
    qint32 Size() const { return static_cast<qint32>(Data.size()); }

    bool operator==(const MP3Image &other) const = default;
};

/// The pictures of a held tag.
class MP3ImageList
{
public:
    explicit MP3ImageList(ID3v2Tag &held) : tag(held) {}

    /// Puts a picture with a file's content behind the others; without a type the first one is the front cover, others
    /// are "other". The file can be deleted right after. The data, description and type of a picture that the tag had
    /// before Clear bring back its frame as it was. Raises MediaError for a file that cannot be read.
    void Add(const QString &path, const QString &description, std::optional<quint8> type = {});
    /// From 1; an empty picture for a place that does not exist.
    MP3Image Item(qint16 index) const;
    int Count() const;
    void Clear();
    /// All pictures from first to last.
    QList<MP3Image> Items() const;

private:
    ID3v2Tag &tag;
};
