#pragma once

#include "media/ID3v1Tag.h"
#include "media/ID3v2Tag.h"
#include "platform/Files.h"

/// Which tags a file has, as far as its edges tell.
struct TagPresence {
    bool ID3v1 = false;
    bool ID3v2 = false;
};
/// Reads no more than the edges; none for a file that cannot be opened.
TagPresence FindTags(const QString &path);

/// A file whose tags are read and then perhaps written. Raises MediaError.
class TaggedFile
{
public:
    explicit TaggedFile(const QString &path);

    const InputFile &Input() const { return file; }
    /// The tag at the file's front.
    ID3v2Tag ReadID3v2() const;
    /// As ReadID3v2, but the rest of a tag is not read when its front answers for these texts. What is not read is a
    /// fault of the tag, so that nobody writes it.
    ID3v2Tag ReadTexts(std::span<const QByteArrayView> ids) const;
    ID3v1Tag ReadID3v1() const;
    TagPresence Tags() const;

    // What Write is to do; without a call the tag stays as it is.
    void PutID3v1(const ID3v1Tag &tag);
    void DropID3v1();
    void PutID3v2(const ID3v2Tag &tag);
    void DropID3v2();
    /// Gives the file its new tags, whole or not at all. A file that has them already is left alone.
    void Write();

private:
    QByteArray Read(qint64 offset, qint64 count) const;
    /// The bytes of the ID3v2 tag at an offset, fewer than it claims where the file ends; empty for none.
    QByteArray ID3v2BytesAt(qint64 offset) const;
    QByteArray ID3v1Bytes() const;
    bool Holds(qint64 offset, qint64 count, QByteArrayView bytes) const;
    void RequireWhole(const QString &fault) const;
    /// A tag whose size is known and fits the file can go, whatever is in it.
    void RequireSize(const QByteArray &bytes) const;

    QString path;
    InputFile file;
    /// The new bytes at either end, and the stretch of the file that stays between them.
    QByteArray front;
    QByteArray back;
    qint64 keepFrom = 0;
    qint64 keepEnd = 0;
};
