#include "platform/Drives.h"
#include "session/InternetShortcut.h"
#include "session/Main.h"
#include "session/MenuTable.h"
#include "text/FormatText.h"
#include "text/PathText.h"

#include <QMenu>

using namespace Qt::StringLiterals;

void Main::AddShortcut(const QString &path)
{
    ShortcutList.append(path);
    const int index = static_cast<int>(ShortcutList.size());
    const QString caption = ProperCase(GetFileName(path)).replace(u'&', "&&"_L1);
    const MenuEntry shortcut{2, "MToolsShortCutAdd", {}, {}, "", nullptr, path, false, &Main::ShortcutClick};
    menus["MToolsShortCut"]->addAction(MakeElement(shortcut, index, caption));
}

void Main::MToolsShortCutDel_Click()
{
    for (qsizetype index = ShortcutList.size(); index >= 1; --index)
        delete commands.take(ElementName("MToolsShortCutAdd", static_cast<int>(index)));
    ShortcutList.clear();
    awayShortcuts.clear();
}

void Main::ShortcutClick(int index)
{
    if (index > 0) {
        OpenShortcut(ShortcutList[index - 1]);
        return;
    }
    const auto path = host.Prompts.OpenFile({u"Add.."_s, u"All Files (*.*)|*.*|"_s, {}, {}});
    if (path && !ShortcutList.contains(*path))
        AddShortcut(*path);
}

void Main::OpenShortcut(const QString &path)
{
    const bool isInternetShortcut = GetExtension(path).toLower() == ".url"_L1;
    const std::optional<QString> target = isInternetShortcut ? InternetShortcutTarget(path) : path;
    if (target && !host.Shell.Open(*target))
        Answer(u"No program opened the file: "_s + ShownPath(*target));
    else if (!target)
        host.Prompts.Message({u"Failed to open Internet shortcut!"_s, PromptIcon::Stop, PromptButtons::Ok, {}});
}
