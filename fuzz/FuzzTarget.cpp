#include "FuzzTarget.h"

#include "platform/Drives.h"
#include "platform/Files.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

void Require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

const QString &FuzzFolder()
{
    static const QTemporaryDir temporary;
    static const QString folder = FromHostPath(temporary.path());
    return folder;
}

QStringList FilesThere()
{
    FolderEntries entries;
    ListFolder(FuzzFolder(), entries);
    return entries.Files;
}

QString PutFile(const QString &name, const QByteArray &content)
{
    for (const QString &old : FilesThere())
        DeleteFile(FuzzFolder() + u'\\' + old);
    QString path = FuzzFolder() + u'\\' + name;
    QFile file(ToHostPath(path));
    Require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(), "the input is written");
    return path;
}

QByteArray ContentOf(const QString &path)
{
    QByteArray content;
    Require(ReadWholeFile(path, content), "a file is there");
    return content;
}
