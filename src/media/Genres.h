#pragma once

#include <QString>
#include <QStringList>

/// The 192 genres of ID3v1 in the order of their numbers.
const QStringList &GenreNames();

/// The genres that the text of a "TCON" frame means, numbers as names, joined by "/": "17", "(17)", "(17)(Pop)",
/// "(4)Eurodisco". Other texts come back as they are.
QString ShownGenre(const QString &text);
