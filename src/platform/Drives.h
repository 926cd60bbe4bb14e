#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QUrl>

// Inside the program every path is Windows text: backslashes, a lower-case drive letter. This is the one place that
// turns it into the host's form and back. On Windows all of these hand the text through.
//
// Off Windows a drive letter stands for a folder: "z:" is "/", and the user maps further letters. What Windows text
// cannot carry is kept in private-use characters U+F000 + byte: a backslash in a host name is U+F05C, a line feed
// U+F00A, a carriage return U+F00D, each byte of a name that is not valid UTF-8 U+F080..U+F0FF. A host name that
// itself holds one of those characters has its UTF-8 bytes carried one by one, so that every name survives the round
// trip byte for byte.

/// Replaces the user's drive letters: key = letter 'a'..'y', value = absolute host folder. "z:" is always "/".
/// Unusable entries are passed over.
void SetDriveMappings(const QMap<QChar, QString> &mappings);

/// Whether letters can be mapped on this host.
bool CanMapDrives();

/// The mapped letters in alphabetical order, as "c:"; off Windows always with "z:".
QStringList DriveLetters();

/// The host's own bytes for a path, for system calls; a relative path stays relative. Empty for a path whose drive
/// letter is not mapped, so that every host call on it fails as it would for a missing file. (UTF-8 on Windows.)
QByteArray ToHostBytes(const QString &path);

/// ToHostBytes as text, for Qt's file classes and for the user's eyes. A path with an unmapped drive letter comes
/// back unchanged.
QString ToHostPath(const QString &path);

/// The inside form of an absolute or relative host path. Off Windows the longest mapped folder wins.
QString FromHostBytes(const QByteArray &hostPath);
QString FromHostPath(const QString &hostPath);

/// A line of a playlist for other programs: the host's form (slashes for a relative path as well). A path with an
/// unmapped drive letter stays as it is, so that nothing is lost while a disk is away. A relative line that would
/// read back as a comment or as a drive gets "./" before it.
QString ToPlaylistLine(const QString &path);

/// The inside form of a line of a playlist that lies in the folder. Accepts Windows text ("d:\x", "d:/x", "sub\x",
/// "\x", "\\server\x") and the host's ("/x", "sub/x", "./x"). A relative host line that holds a colon is joined to the
/// folder, since everything inside takes a colon for a drive's; others stay relative.
QString FromPlaylistLine(QStringView line, const QString &folder);

/// The address of a path for a link in a page: with slashes, "file:///" and the host's path for an absolute one.
/// Blanks and what would end or bend the address are percent-encoded, and so are bytes that are no text; letters of all
/// scripts stand as they are.
QString ToLink(const QString &path);

/// The characters as a person should see them: the private-use carriers become what they stand for (a backslash),
/// or U+FFFD where nothing can be shown.
QString ShownPath(QString path);

/// file: URL of a path and back; survives names that are not valid UTF-8. FromUrl is empty for other schemes.
QUrl ToUrl(const QString &path);
QString FromUrl(const QUrl &url);

/// The process's current directory in the inside form, without a trailing backslash ("z:" for the root).
QString CurrentDirectory();
/// False, and nothing changed, when the folder cannot be entered.
bool SetCurrentDirectory(const QString &path);
