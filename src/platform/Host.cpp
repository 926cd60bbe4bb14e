#include "platform/Host.h"

#include "platform/Drives.h"
#include "platform/HostSettings.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QMap>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QUrl>

#include <ctime>
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

/// The settings of this process: what it has not changed since it read it keeps the value that another one stored.
class ProcessSettings
{
public:
    explicit ProcessSettings(const QString &applicationName) : stored(applicationName) {}
    ~ProcessSettings() { Flush(); }
    ProcessSettings(const ProcessSettings &) = delete;
    ProcessSettings &operator=(const ProcessSettings &) = delete;

    QString Read(const QString &address)
    {
        const QString value = unstored.contains(address) ? unstored[address] : SettingsText(stored.Value(address));
        known[address] = value;
        return value;
    }
    void Write(const QString &address, const QString &value)
    {
        const auto former = known.constFind(address);
        if (former == known.cend() || *former != value)
            unstored[address] = known[address] = value;
    }
    bool Flush()
    {
        if (!unstored.isEmpty() && !stored.Store(unstored))
            return false;
        unstored.clear();
        return true;
    }
    void Refresh() { stored.Refresh(); }
    QString Place() const { return stored.Place(); }

private:
    HostSettings stored;
    /// What was read or written last.
    QMap<QString, QString> known;
    QMap<QString, QString> unstored;
};

SettingsStore MakeSettings(const QString &applicationName)
{
    const auto process = std::make_shared<ProcessSettings>(applicationName);
    SettingsStore settings;
    settings.Read = [process](const QString &section, const QString &key) {
        return process->Read(SettingsAddress(section, key));
    };
    settings.Write = [process](const QString &section, const QString &key, const QString &value) {
        process->Write(SettingsAddress(section, key), value);
    };
    settings.Flush = [process] { return process->Flush(); };
    settings.Refresh = [process] { process->Refresh(); };
    settings.Place = process->Place();
    return settings;
}

/// Draws that depend on when the generator was seeded. A tick of the clock lasts for thousands of rows, which would all
/// fall alike; so each tick is cut into stretches of four reseeds, and a list drawn at random comes in short runs.
class ClockedGenerator
{
public:
    void Reseed() { state = start ^ (static_cast<quint64>(std::time(nullptr)) << 32) ^ (reseeds++ / 4); }

    /// The next draw, in [0, 1), by Steele, Lea and Flood's SplitMix64.
    double Draw()
    {
        state += 0x9e3779b97f4a7c15u;
        quint64 mixed = (state ^ (state >> 30)) * 0xbf58476d1ce4e5b9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebu;
        mixed ^= mixed >> 31;
        return static_cast<double>(mixed >> 11) * 0x1p-53;
    }

private:
    quint64 start = QRandomGenerator::system()->generate64();
    quint64 state = start;
    quint64 reseeds = 0;
};

Clock MakeClock()
{
    const auto generator = std::make_shared<ClockedGenerator>();
    Clock clock;
    clock.Now = [] { return QDateTime::currentDateTime(); };
    clock.Random = [generator] { return generator->Draw(); };
    clock.Reseed = [generator] { generator->Reseed(); };
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
    prompts.OpenFiles = [](const FilePrompt &) { return QStringList(); };
    prompts.SaveFile = [](const FilePrompt &) { return std::nullopt; };
    prompts.Folder = [](const FolderPrompt &) { return std::nullopt; };
    prompts.Colour = [](const QColor &) { return std::nullopt; };
    prompts.Font = [](const QFont &) { return std::nullopt; };
    prompts.Line = [](const LinePrompt &) { return std::nullopt; };
    return prompts;
}

Shell RefusingShell()
{
    const auto refuse = [](const QString &) { return false; };
    return {refuse, refuse, refuse, refuse, refuse, [](const QString &) { return QString(); }};
}

QStringList DriveRoots()
{
    QStringList roots = DriveLetters();
    for (QString &root : roots)
        root += u'\\';
    return roots;
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
    host.Roots = DriveRoots;
    host.System = QSysInfo::prettyProductName() + u", "_s + QSysInfo::currentCpuArchitecture();
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
