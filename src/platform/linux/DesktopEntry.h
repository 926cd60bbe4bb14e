#pragma once

#include <QByteArray>
#include <QStringList>

/// The value of a key in a section ("[Desktop Entry]") of a desktop entry or of a list of default programs, which have
/// one form; empty for none.
QByteArray DesktopValue(const QByteArray &content, QByteArrayView section, QByteArrayView key);

/// The "Exec" line of a desktop entry, taken apart: the program and its arguments, with their field codes; empty for
/// none.
QStringList CommandOfDesktopEntry(const QByteArray &entry);

/// The arguments of such a command for one document, given as a path of the host and as an address. A command without a
/// place for it gets it at the end.
QStringList ArgumentsFor(const QStringList &command, const QString &path, const QString &address);
