#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <optional>

// The text form of host names on hosts whose names are bytes. What Windows text cannot hold is carried in private-use
// characters, U+F000 + byte; see Drives.h.

enum class Carriage {
    /// Inside text: separators become backslashes, a backslash in a name is carried.
    Inside,
    /// A line of a playlist: separators and backslashes stand for themselves; what would break the line, and bytes
    /// that are not text, are carried.
    Line,
};

/// Text for host bytes, after a prefix that is taken as it is.
QString TextFromBytes(QByteArrayView bytes, Carriage carriage, QStringView prefix = {});

/// Host bytes for a text, after a prefix that is taken as it is. Empty when the text holds U+0000, which no host name
/// can.
QByteArray BytesFromText(QStringView text, Carriage carriage, QByteArrayView prefix = {});

/// The byte that a character carries; nothing for one that stands for itself.
std::optional<unsigned char> CarriedByte(QChar character, Carriage carriage);

/// The inside text for a line of a playlist in the host's form, after a prefix: what TextFromBytes makes of the line's
/// bytes. Empty where there are none.
QString InsideFromLine(QStringView line, QStringView prefix = {});

/// The text with its carriers as a person should see them.
QString ShownText(QString text);
