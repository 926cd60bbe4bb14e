#include "platform/DesktopShell.h"

#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/PlaylistLines.h"
#include "platform/linux/DesktopEntry.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeDatabase>
#include <QProcess>
#include <QStandardPaths>

#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

/// Output of a desktop's tool; nothing when it is missing, fails, or takes longer than a user would wait.
std::optional<QByteArray> RunTool(const QString &tool, const QStringList &arguments)
{
    constexpr int mostMilliseconds = 3000;
    QProcess process;
    process.start(tool, arguments, QIODevice::ReadOnly);
    if (!process.waitForFinished(mostMilliseconds)) {
        process.kill();
        process.waitForFinished(mostMilliseconds);
        return std::nullopt;
    }
    const bool done = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return done ? std::optional(process.readAllStandardOutput()) : std::nullopt;
}

bool Open(const QString &document)
{
    if (IsWebAddress(document))
        return QDesktopServices::openUrl(QUrl(document));
    return ExamineFile(document).Exists && QDesktopServices::openUrl(ToUrl(document));
}

bool Browse(const QString &address)
{
    return IsForeignAddress(address) && QDesktopServices::openUrl(QUrl(address));
}

bool OpenFolder(const QString &folder)
{
    return ExamineFile(folder).IsFolder && QDesktopServices::openUrl(ToUrl(folder));
}

bool ShowProperties(const QString &path)
{
    if (!ExamineFile(path).Exists)
        return false;
    const QString address = QString::fromLatin1(ToUrl(path).toEncoded());
    return RunTool(u"gdbus"_s, {u"call"_s, u"--session"_s, u"--dest"_s, u"org.freedesktop.FileManager1"_s,
                                u"--object-path"_s, u"/org/freedesktop/FileManager1"_s, u"--method"_s,
                                u"org.freedesktop.FileManager1.ShowItemProperties"_s, u"['"_s + address + u"']", u""_s})
        .has_value();
}

/// The file of a desktop entry; a hyphen of its name may stand for a folder.
QString LocateEntry(QString name)
{
    for (;;) {
        const QString file = QStandardPaths::locate(QStandardPaths::ApplicationsLocation, name);
        const qsizetype hyphen = name.indexOf(u'-');
        if (!file.isEmpty() || hyphen < 0)
            return file;
        name[hyphen] = u'/';
    }
}

/// The files of a name where the user's come before the system's, and those of the desktop that runs before the others.
QStringList ChoiceFiles()
{
    QStringList names;
    for (const QString &desktop : qEnvironmentVariable("XDG_CURRENT_DESKTOP").toLower().split(u':', Qt::SkipEmptyParts))
        names.append(desktop + u"-mimeapps.list");
    names.append(u"mimeapps.list"_s);
    QStringList files;
    for (const auto place : {QStandardPaths::GenericConfigLocation, QStandardPaths::ApplicationsLocation}) {
        for (const QString &name : std::as_const(names))
            files += QStandardPaths::locateAll(place, name);
    }
    return files;
}

/// A program that the desktop has for a document.
struct Registered {
    /// The name of its desktop entry.
    QString Name;
    /// The program and its arguments.
    QStringList Command;
    bool NeedsTerminal = false;
};

/// The programs registered for a document, the desktop's default one first: the user's and the system's choices come
/// before what the installed programs offer.
std::vector<Registered> ProgramsFor(const QString &document)
{
    const QMimeType type = QMimeDatabase().mimeTypeForFile(ToHostPath(document));
    QStringList names;
    const auto append = [&](const QStringList &files, QByteArrayView section) {
        for (const QString &file : files) {
            QByteArray content;
            ReadWholeFile(FromHostPath(file), content);
            for (const QString &each : QStringList{type.name()} + type.aliases())
                names += QString::fromUtf8(DesktopValue(content, section, each.toUtf8())).split(u';');
        }
    };
    const QStringList choices = ChoiceFiles();
    append(choices, "[Default Applications]");
    append(choices, "[Added Associations]");
    append(QStandardPaths::locateAll(QStandardPaths::ApplicationsLocation, u"mimeinfo.cache"_s), "[MIME Cache]");
    names.removeDuplicates();
    std::vector<Registered> programs;
    for (const QString &name : std::as_const(names)) {
        QByteArray entry;
        const QString file = name.isEmpty() ? QString() : LocateEntry(name);
        const bool read = !file.isEmpty() && ReadWholeFile(FromHostPath(file), entry);
        const QStringList command = read ? CommandOfDesktopEntry(entry) : QStringList();
        if (!command.isEmpty())
            programs.push_back({name, command, DesktopValue(entry, "[Desktop Entry]", "Terminal") == "true"});
    }
    return programs;
}

QString AssociatedProgram(const QString &document)
{
    const std::vector<Registered> programs = ProgramsFor(document);
    if (programs.empty())
        return {};
    const QString &program = programs.front().Command.front();
    const QString found = QStandardPaths::findExecutable(program);
    return FromHostPath(found.isEmpty() ? program : found);
}

/// Also for another copy of this program.
bool IsThisProgram(const Registered &program)
{
    const QString executable = QStandardPaths::findExecutable(program.Command.front());
    return program.Name == QString(QGuiApplication::desktopFileName() + u".desktop") ||
           QFileInfo(executable).canonicalFilePath() ==
               QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath();
}

bool OpenElsewhere(const QString &document)
{
    const std::vector<Registered> programs = ProgramsFor(document);
    for (const Registered &program : programs) {
        if (IsThisProgram(program))
            continue;
        // The desktop opens the default one as it does everywhere; to others it cannot be pointed.
        if (&program == &programs.front())
            return Open(document);
        const QString executable = QStandardPaths::findExecutable(program.Command.front());
        const QString address = QString::fromLatin1(ToUrl(document).toEncoded());
        if (!executable.isEmpty() && !program.NeedsTerminal &&
            QProcess::startDetached(executable, ArgumentsFor(program.Command, ToHostPath(document), address)))
            return true;
    }
    return false;
}

} // namespace

Shell DesktopShell()
{
    return {Open, Browse, OpenElsewhere, OpenFolder, ShowProperties, AssociatedProgram};
}
