#include "session/InternetShortcut.h"

#include "text/TextFiles.h"

#include <QStringList>

using namespace Qt::StringLiterals;

std::optional<QString> InternetShortcutTarget(const QString &path)
{
    QStringList lines;
    if (!ReadLinesFromFile(lines, path))
        return std::nullopt;
    for (qsizetype i = 0; i + 1 < lines.size(); ++i) {
        if (lines[i].contains("[InternetShortcut]"_L1))
            return lines[i + 1].remove("URL="_L1);
    }
    return lines.isEmpty() ? path : lines.last();
}
