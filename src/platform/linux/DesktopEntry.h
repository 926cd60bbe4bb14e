#pragma once

#include <QByteArray>
#include <QString>

/// The program that the "Exec" line of a desktop entry starts, without its arguments; empty for none.
QString ProgramOfDesktopEntry(const QByteArray &entry);
