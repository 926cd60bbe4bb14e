#pragma once

#include "session/InPieces.h"

#include <QStringList>

#include <functional>

/// Counts which tags the selected files have.
class LostTags
{
public:
    /// Each time that more is known, whenChanged is called.
    explicit LostTags(std::function<void()> whenChanged);

    /// Starts anew with these files, and looks at the first ones at once.
    void Count(const QStringList &files);
    void Stop() { pieces.Stop(); }
    /// What an update takes away: from how many files which tag, of the two that it removes. Empty for nothing.
    QString Text(bool removesID3v1, bool removesID3v2) const;

private:
    void CountIn(const QString &path);

    QStringList paths;
    qint64 withID3v1 = 0;
    qint64 withID3v2 = 0;
    InPieces pieces;
};
