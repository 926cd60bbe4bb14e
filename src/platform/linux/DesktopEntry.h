#pragma once

#include <QByteArray>
#include <QString>

/// The value of a key in a section ("[Desktop Entry]") of a desktop entry or of a list of default programs, which have
/// one form; empty for none.
QByteArray DesktopValue(const QByteArray &content, QByteArrayView section, QByteArrayView key);

/// The program that the "Exec" line of a desktop entry starts, without its arguments; empty for none.
QString ProgramOfDesktopEntry(const QByteArray &entry);
