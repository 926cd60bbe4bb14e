#include "media/ID3v1Tag.h"

#include <array>

namespace
{
struct Field {
    QString ID3v1Tag::*Text;
    qsizetype Offset;
    qsizetype Size;
};
constexpr std::array fields{
    Field{&ID3v1Tag::Title, 3, 30}, Field{&ID3v1Tag::Artist, 33, 30},  Field{&ID3v1Tag::Album, 63, 30},
    Field{&ID3v1Tag::Year, 93, 4},  Field{&ID3v1Tag::Comment, 97, 30},
};
// A zero and the track's number in the last two bytes of the comment make it ID3v1.1.
constexpr qsizetype trackMark = 125;
constexpr qsizetype trackPlace = 126;
constexpr qsizetype genrePlace = 127;

QString TextOf(QByteArrayView bytes)
{
    const qsizetype end = bytes.indexOf('\0');
    QString text = QString::fromLatin1(end < 0 ? bytes : bytes.first(end));
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

bool HasTrack(QByteArrayView tag)
{
    return tag[trackMark] == '\0' && tag[trackPlace] != '\0';
}

QByteArrayView FieldBytes(QByteArrayView tag, const Field &field)
{
    const bool shortened = field.Text == &ID3v1Tag::Comment && HasTrack(tag);
    return tag.sliced(field.Offset, shortened ? trackMark - field.Offset : field.Size);
}
} // namespace

ID3v1Tag ID3v1Tag::FromTail(QByteArrayView tail)
{
    ID3v1Tag tag;
    if (tail.size() < Size)
        return tag;
    const QByteArrayView bytes = tail.last(Size);
    // The mark of an APE tag, "APETAGEX", can end up here too.
    const bool isApe = tail.size() >= Size + 3 && tail.last(Size + 3).startsWith("APETAGEX");
    if (!bytes.startsWith("TAG") || isApe)
        return tag;
    tag.Present = true;
    for (const Field &field : fields)
        tag.*field.Text = TextOf(FieldBytes(bytes, field));
    tag.Track = HasTrack(bytes) ? static_cast<quint8>(bytes[trackPlace]) : quint8{0};
    tag.Genre = static_cast<quint8>(bytes[genrePlace]);
    return tag;
}

QByteArray ID3v1Tag::Bytes(const QByteArray &old) const
{
    QByteArray bytes = old.isEmpty() ? "TAG" + QByteArray(Size - 3, '\0') : old;
    const ID3v1Tag before = FromTail(bytes);
    for (const Field &field : fields) {
        const QString &text = this->*field.Text;
        if (text != before.*field.Text)
            bytes.replace(field.Offset, field.Size, text.toLatin1().leftJustified(field.Size, '\0', true));
    }
    if (Track != 0) {
        bytes[trackMark] = '\0';
        bytes[trackPlace] = static_cast<char>(Track);
    } else if (before.Track != 0 && Comment == before.Comment) {
        bytes[trackPlace] = '\0';
    }
    bytes[genrePlace] = static_cast<char>(Genre);
    return bytes;
}
