#pragma once

#include <QByteArray>
#include <QString>

/// The ID3v1 tag: fields of fixed size in the last 128 bytes of a file.
struct ID3v1Tag {
    static constexpr qsizetype Size = 128;

    bool Present = false;
    QString Title;
    QString Artist;
    QString Album;
    QString Year;
    QString Comment;
    /// 0 means none.
    quint8 Track = 0;
    quint8 Genre = 0;

    /// From the last bytes of a file, Size and three more where the file has them; not Present when no tag is there.
    static ID3v1Tag FromTail(QByteArrayView tail);
    /// The 128 bytes: Latin-1 cut to the fields, a question mark for what Latin-1 lacks. A track takes the last two
    /// bytes of the comment. A field whose text is still that of the old tag keeps its bytes.
    QByteArray Bytes(const QByteArray &old) const;
};
