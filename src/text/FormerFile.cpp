#include "text/FormerFile.h"

#include "platform/Files.h"

FormerFile::FormerFile(const QString &pathOfFile)
    : path(pathOfFile), existed(ExamineFile(path).Exists), readable(existed && ReadWholeFile(path, content))
{
}

bool FormerFile::GiveBack() const
{
    // What cannot be read has not been replaced either.
    if (existed)
        return !readable || WriteWholeFile(path, content);
    return DeleteFile(path);
}
