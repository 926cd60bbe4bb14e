#include "platform/Host.h"

#include "platform/Drives.h"
#include "platform/HostSettings.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QMap>
#include <QRandomGenerator>
#include <QSettings>
#include <QStandardPaths>
#include <QUrl>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{

constexpr QLatin1StringView FolderName("vantrel-playlist-editor");

/// A part of a settings address that holds nothing the store would take for itself: no separator, never empty.
QString SettingsPart(const QString &text)
{
    return text.isEmpty() ? u"%"_s : QString::fromLatin1(QUrl::toPercentEncoding(text));
}

QString SettingsAddress(const QString &section, const QString &key)
{
    return SettingsPart(section) + u'/' + SettingsPart(key);
}

/// A value edited by hand may hold commas, which the store takes for a list.
QString SettingsText(const QVariant &value)
{
    return value.typeId() == QMetaType::QStringList ? value.toStringList().join(u", ") : value.toString();
}

SettingsStore MakeSettings(const QString &applicationName)
{
    const std::shared_ptr<QSettings> store = OpenSettings(applicationName);
    SettingsStore settings;
    settings.Read = [store](const QString &section, const QString &key) {
        return SettingsText(store->value(SettingsAddress(section, key)));
    };
    settings.Write = [store](const QString &section, const QString &key, const QString &value) {
        store->setValue(SettingsAddress(section, key), value);
    };
    return settings;
}

Clock MakeClock()
{
    const auto generator = std::make_shared<QRandomGenerator>(QRandomGenerator::securelySeeded());
    Clock clock;
    clock.Now = [] { return QDateTime::currentDateTime(); };
    clock.Random = [generator] { return generator->generateDouble(); };
    clock.Reseed = [generator] {
        const auto now = static_cast<quint64>(QDateTime::currentMSecsSinceEpoch());
        const quint32 seeds[] = {static_cast<quint32>(now), static_cast<quint32>(now >> 32)};
        *generator = QRandomGenerator(seeds, 2);
    };
    return clock;
}

QString WithoutEndingBackslash(QString path)
{
    if (path.endsWith(u'\\'))
        path.chop(1);
    return path;
}

QString InsideFolder(const QString &hostFolder)
{
    return WithoutEndingBackslash(FromHostPath(hostFolder));
}

QString DeliveredFolder(const QString &executableFolder)
{
    const QFileInfo shared(executableFolder + u"/../share/" + FolderName);
    return InsideFolder(shared.isDir() ? shared.canonicalFilePath() : executableFolder);
}

QString WrittenFolder(const QString &executableFolder)
{
    const bool portable =
        QFileInfo::exists(executableFolder + u"/portable") && QFileInfo(executableFolder).isWritable();
    if (portable)
        return InsideFolder(executableFolder);
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return InsideFolder(data + u'/' + FolderName);
}

/// Nobody is there to be asked.
Prompts UnansweredPrompts()
{
    Prompts prompts;
    prompts.Message = [](const MessagePrompt &prompt) {
        return prompt.Buttons == PromptButtons::Ok ? PromptAnswer::Ok : PromptAnswer::Cancel;
    };
    prompts.OpenFile = [](const FilePrompt &) { return std::nullopt; };
    prompts.SaveFile = [](const FilePrompt &) { return std::nullopt; };
    prompts.Folder = [](const FolderPrompt &) { return std::nullopt; };
    prompts.Colour = [](const QColor &) { return std::nullopt; };
    prompts.Font = [](const FontChoice &) { return std::nullopt; };
    prompts.Line = [](const LinePrompt &) { return std::nullopt; };
    return prompts;
}

Shell RefusingShell()
{
    const auto refuse = [](const QString &) { return false; };
    return {refuse, refuse, refuse, refuse, [](const QString &) { return QString(); }};
}

} // namespace

Host HeadlessHost(const QString &applicationName)
{
    const QString executableFolder = QCoreApplication::applicationDirPath();
    Host host;
    host.Prompts = UnansweredPrompts();
    host.Shell = RefusingShell();
    host.Clock = MakeClock();
    host.Settings = MakeSettings(applicationName);
    host.ProgramFolder = DeliveredFolder(executableFolder);
    host.ApplicationFolder = WrittenFolder(executableFolder);
    host.Environment = [](const QString &name) { return qEnvironmentVariable(name.toLocal8Bit().constData()); };
    return host;
}

void LoadDriveMappings(const SettingsStore &settings)
{
    QMap<QChar, QString> mappings;
    for (char16_t letter = u'a'; letter < u'z'; ++letter) {
        const QString folder = settings.Read(u"Drives"_s, QString(QChar(letter)));
        if (!folder.isEmpty())
            mappings.insert(QChar(letter), folder);
    }
    SetDriveMappings(mappings);
}
