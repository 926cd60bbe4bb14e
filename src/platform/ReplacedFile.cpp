#include "platform/ReplacedFile.h"

bool ReplacedFile::Append(QByteArrayView content)
{
    if (!file.WriteAt(size, content))
        return false;
    size += content.size();
    return true;
}
