#include "text/FormerFile.h"

#include "platform/DiskFile.h"
#include "platform/Files.h"
#include "platform/ReplacedFile.h"

FormerFile::FormerFile(const QString &pathOfFile)
    : path(pathOfFile), existed(!IsAbsent(path)), readable(existed && ReadWholeFile(path, content))
{
}

bool FormerFile::Note()
{
    return IsKept() && wayBack.NoteFormer(path, existed, content);
}

bool FormerFile::GiveBack()
{
    // What cannot be read has not been replaced either.
    const bool done = existed ? !readable || WriteWholeFile(path, content) : DeleteMadeFile(path);
    if (done)
        Forget();
    else
        wayBack.Abandon();
    return done;
}
