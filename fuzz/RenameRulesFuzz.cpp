#include "FuzzTarget.h"

#include "rename/RenameRules.h"

using namespace Qt::StringLiterals;

namespace
{
void TakeRules(const QByteArray &input)
{
    const QString path = PutFile(u"rules.rps"_s, input);
    RenameSettings settings;
    Require(ReadRenameSettings(path, settings), "a file can be read");
    const QString copy = FuzzFolder() + u"\\copy.rps"_s;
    Require(WriteRenameSettings(copy, settings), "what was read can be written");
    const QByteArray written = ContentOf(copy);
    if (input.size() >= written.size())
        Require(input.startsWith(written), "a record is written as it was read");
    RenameSettings again;
    ReadRenameSettings(copy, again);
    Require(SummaryOf(again) == SummaryOf(settings), "a record is read as it was written");

    const RenameRules rules(settings, [](const QString &, const QString &) { return u"Artist - _Title_"_s; });
    for (const QString &name : {u"z:\\a folder\\01_some_song.mp3"_s, u"song.ogg"_s, u"x"_s, QString()})
        Require(ApplyRenameRules(rules, name, 7, 120, false).size() <= 4 * 32767, "a name keeps within all measure");
}

const FuzzTarget target("rps", TakeRules);
} // namespace
