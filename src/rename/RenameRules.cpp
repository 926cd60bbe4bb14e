#include "rename/RenameRules.h"

#include "media/TitleTexts.h"
#include "text/FormatText.h"
#include "text/PathText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr qsizetype extensionSize = 4;
constexpr qsizetype longestPath = 32767;

int WidthOf(int total)
{
    if (total > 9999)
        return 0;
    return total > 999 ? 4 : total > 99 ? 3 : total > 9 ? 2 : 1;
}

/// False when the name outgrows what any path can hold, as rules that feed one another can make it do without end.
bool ApplyRules(const std::vector<RenameRule> &rules, QString &name)
{
    for (const RenameRule &rule : rules) {
        if (rule.From.isEmpty())
            name += rule.To;
        else
            name.replace(rule.From, rule.To);
        if (name.size() > longestPath)
            return false;
    }
    return true;
}

void AddNumber(const QString &number, bool atStart, QString &name)
{
    if (name.isEmpty())
        name = number;
    else
        name = atStart ? number + u" - "_s + name : name + u" - "_s + number;
}

void Truncate(qint32 limit, QString &name)
{
    name.truncate(std::max(limit, 0));
    // Half a character is none.
    if (!name.isEmpty() && name.back().isHighSurrogate())
        name.chop(1);
}
} // namespace

QString TagTitle(const QString &path, const QString &extension)
{
    if (extension == ".mp3"_L1)
        return ID3TitleText(path);
    return extension == ".ogg"_L1 ? OGGTitleText(path) : QString();
}

RenameRules::RenameRules(const RenameSettings &settings, TitleSource titles)
    : Settings(settings), Titles(std::move(titles))
{
    for (int slot = 0; slot < RenameSettings::Slots; ++slot) {
        if (IsSet(settings.RuleEnabled[static_cast<std::size_t>(slot)]))
            Enabled.push_back(RuleOf(settings, slot));
    }
}

QString FormatSequenceNumber(int number, int total)
{
    return QString::number(number).rightJustified(WidthOf(total), u'0');
}

QString ApplyRenameRules(const RenameRules &rules, const QString &path, int number, int total, bool commit)
{
    const RenameSettings &settings = rules.Settings;
    const QString fileName = GetFileName(path);
    QString extension = fileName.right(extensionSize);
    QString name = RemoveText(fileName, extension);
    if (IsSet(settings.Extension))
        extension = extension.toLower();
    if (IsSet(settings.RenID3)) {
        const QString title = rules.Titles(path, extension.toLower());
        if (!title.isEmpty())
            name = title;
    }
    if (!ApplyRules(rules.Enabled, name))
        return path;
    if (IsSet(settings.Capitalise))
        name = ProperCase(name);
    if (IsSet(settings.LowFilename))
        name = name.toLower();
    if (IsSet(settings.Increment))
        AddNumber(FormatSequenceNumber(number, total), IsSet(settings.IncPos), name);
    if (IsSet(settings.Truncat))
        Truncate(settings.Truncval, name);
    name = TrimBlanks(name);
    if (name.isEmpty())
        return path;
    const QString newPath = GetFolderPart(path) + name + extension;
    const bool renames = commit && newPath != path;
    return renames && !(StaysInFolder(path, newPath) && RenameFilePath(newPath, path)) ? path : newPath;
}

bool StaysInFolder(const QString &path, const QString &newPath)
{
    const qsizetype nameStart = path.lastIndexOf(u'\\') + 1;
    if (!newPath.startsWith(QStringView(path).first(nameStart)))
        return false;
    const QStringView name = QStringView(newPath).sliced(nameStart);
    return !name.contains(u'\\') && !name.contains(u'/') && name != u"." && name != u"..";
}
