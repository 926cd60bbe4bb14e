#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// The command line without the program's own name, each argument in the host's bytes (UTF-8 on Windows).
std::vector<QByteArray> ProgramArguments(int argc, char **argv);

/// The inside form of the path that a whole command line means, whatever blanks it holds. Quotes belong to a name where
/// something bears it; else they are left out.
QString PathOfCommandLine(const std::vector<QByteArray> &arguments);

/// The inside form of a path as an argument gives it, made absolute from the current directory; "." and ".." are
/// resolved by text.
QString PathOfArgument(const QByteArray &argument);
