#pragma once

#include "playlist/Grid.h"

class Main;

/// A row as a person knows it.
struct SoakRow {
    QString Path;
    bool Selected = false;
    SmallIcon Icon = IconNormal;
    qint64 Size = 0;
    qint32 Length = 0;

    bool operator==(const SoakRow &other) const = default;
};
using SoakRows = std::vector<SoakRow>;
SoakRows RowsOf(const Grid &grid);

/// The commands whose outcome follows from the rows.
std::vector<QByteArray> ModelledCommands();
/// Requires of one of them that it has made of the rows what it must; of any other nothing.
void CheckCommand(const QByteArray &command, const SoakRows &before, const SoakRows &after);
/// The same for selected rows that were dragged before a row: moved there, or added once more.
void CheckDrag(int row, bool again, const SoakRows &before, const SoakRows &after);
/// Requires that panels and commands tell of the rows as they are.
void CheckWindow(const Main &window);
