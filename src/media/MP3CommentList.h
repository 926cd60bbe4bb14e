#pragma once

#include <QList>
#include <QString>

class ID3v2Tag;

/// One comment of a tag, of whatever language.
struct MP3Comment {
    QString Description;
    QString Text;

    bool operator==(const MP3Comment &other) const = default;
};

/// The comments of a held tag, without those that keep its named values.
class MP3CommentList
{
public:
    explicit MP3CommentList(ID3v2Tag &held) : tag(held) {}

    /// Puts a comment in English behind the others. The text and description of a comment that the tag had before Clear
    /// bring back its frame as it was.
    void Add(const QString &text, const QString &description);
    int Count() const;
    void Clear();
    /// All comments from first to last.
    QList<MP3Comment> Items() const;

private:
    ID3v2Tag &tag;
};
