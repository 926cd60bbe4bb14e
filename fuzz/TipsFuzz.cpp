#include "FuzzTarget.h"

#include "text/TextFiles.h"

using namespace Qt::StringLiterals;

namespace
{
void TakeTips(const QByteArray &input)
{
    const QString path = PutFile(u"tips.htd"_s, input);
    QStringList tips;
    Require(ReadLinesFromFile(tips, path), "a file can be read");
    Require(tips.size() <= input.size(), "no more lines than bytes");
    const QString copy = FuzzFolder() + u"\\copy.htd"_s;
    QStringList again;
    Require(WriteLinesToFile(copy, tips) && ReadLinesFromFile(again, copy), "lines can be written");
    // Half a character cannot be written.
    if (tips.join(u'\n').isValidUtf16() && !tips.join(u'\n').startsWith(QChar::ByteOrderMark))
        Require(again == tips, "lines are read as they were written");
}

const FuzzTarget target("tips", TakeTips);
} // namespace
