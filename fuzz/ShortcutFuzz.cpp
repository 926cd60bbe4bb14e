#include "FuzzTarget.h"

#include "platform/PlaylistLines.h"
#include "session/InternetShortcut.h"

using namespace Qt::StringLiterals;

namespace
{
void TakeShortcut(const QByteArray &input)
{
    const QString path = PutFile(u"site.url"_s, input);
    const std::optional<QString> address = InternetShortcutTarget(path);
    Require(address.has_value(), "a file can be read");
    Require(*address == path || address->size() <= input.size(), "an address comes from the file");
    Require(!address->contains(u'\n') && !address->contains(u'\r'), "an address is one line");
    Require(!(IsForeignAddress(*address) && address->startsWith(u"file:", Qt::CaseInsensitive)),
            "a file is no foreign address");
}

const FuzzTarget target("url", TakeShortcut);
} // namespace
