#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

/// One thing that is read, and what must hold of it whatever the bytes are. A target registers itself.
struct FuzzTarget {
    using Take = void (*)(const QByteArray &input);
    FuzzTarget(const char *name, Take take) { All().insert(name, take); }

    static QMap<QByteArray, Take> &All()
    {
        static QMap<QByteArray, Take> targets;
        return targets;
    }
};

/// Ends the process, as a sanitizer does, where something does not hold.
void Require(bool holds, const char *what);

/// A folder of this process alone, in the inside form, without a trailing backslash.
const QString &FuzzFolder();
/// Makes it hold one file with this content, and returns its path.
QString PutFile(const QString &name, const QByteArray &content);
QByteArray ContentOf(const QString &path);
/// The names of the files in the folder.
QStringList FilesThere();
