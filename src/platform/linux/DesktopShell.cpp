#include "platform/DesktopShell.h"

#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/PlaylistLines.h"
#include "platform/linux/DesktopEntry.h"

#include <QDesktopServices>
#include <QMimeDatabase>
#include <QProcess>
#include <QStandardPaths>

#include <optional>

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

/// The name of the desktop entry that the desktop opens a type of file with: the user's and the system's choices come
/// before what the installed programs offer.
QString DefaultEntry(const QByteArray &type)
{
    const auto firstOf = [&](const QStringList &files, QByteArrayView section) {
        for (const QString &file : files) {
            QByteArray content;
            ReadWholeFile(FromHostPath(file), content);
            const QByteArray name = DesktopValue(content, section, type).split(';').first();
            if (!name.isEmpty())
                return QString::fromUtf8(name);
        }
        return QString();
    };
    const QString choices = u"mimeapps.list"_s;
    const QString chosen = firstOf(QStandardPaths::locateAll(QStandardPaths::GenericConfigLocation, choices) +
                                       QStandardPaths::locateAll(QStandardPaths::ApplicationsLocation, choices),
                                   "[Default Applications]");
    return chosen.isEmpty()
               ? firstOf(QStandardPaths::locateAll(QStandardPaths::ApplicationsLocation, u"mimeinfo.cache"_s),
                         "[MIME Cache]")
               : chosen;
}

QString AssociatedProgram(const QString &document)
{
    const QString name = DefaultEntry(QMimeDatabase().mimeTypeForFile(ToHostPath(document)).name().toUtf8());
    const QString file = name.isEmpty() ? QString() : LocateEntry(name);
    QByteArray content;
    if (file.isEmpty() || !ReadWholeFile(FromHostPath(file), content))
        return {};
    const QString program = ProgramOfDesktopEntry(content);
    const QString found = program.isEmpty() ? QString() : QStandardPaths::findExecutable(program);
    return FromHostPath(found.isEmpty() ? program : found);
}

} // namespace

Shell DesktopShell()
{
    // The desktops have no common file search; the folder's window has one.
    return {Open, Browse, OpenFolder, OpenFolder, ShowProperties, AssociatedProgram};
}
