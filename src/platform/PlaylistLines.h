#pragma once

#include <QString>
#include <QStringView>

/// Whether a text starts with an ASCII letter and a colon.
bool HasDrive(QStringView path);
/// Whether a text starts with two backslashes, as a path on another computer does.
bool IsOnShare(QStringView path);

/// Whether a line is a web address: a scheme of two letters or more and "://", or "file:/".
bool IsWebAddress(QStringView line);
/// A line that is a web address; its backslashes are slashes, as browsers take them, or a row would look for a folder
/// in it.
QString WebAddressOf(QStringView line);
/// Whether a text that a file gave is an address that no desktop takes for a file: it starts with a scheme of two
/// letters or more and a colon.
bool IsForeignAddress(QStringView text);
/// Whether a row stands for a web address: it has no folder, which every row shows as a backslash before its name.
bool IsWebRow(QStringView path);

/// Whether a relative line, taken as it stands, would be read as something else: as a comment, a drive, a web
/// address, or a byte order mark.
bool NeedsDotPrefix(QStringView line);

/// A line without "./" or ".\" at its start, also with more slashes.
QStringView WithoutDotPrefix(QStringView line);

/// A text with slashes as part of an address that stands without quotes in a page.
QString EscapedAddress(QStringView text);
/// A byte as "%" and two digits.
QString PercentEncoded(unsigned char byte);

/// The drive ("c:") or the share ("\\server\share") that a folder lies on.
QString RootOf(const QString &folder);

/// The inside form of a line that is a path in the form of Windows, as of a playlist in the folder: one that starts
/// with a separator counts from the folder's drive, a drive without a separator means its root. A relative one stays
/// relative.
QString FromWindowsLine(QStringView line, const QString &folder);
