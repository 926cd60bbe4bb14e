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

QString AssociatedProgram(const QString &document)
{
    const QString type = QMimeDatabase().mimeTypeForFile(ToHostPath(document)).name();
    const auto entry = RunTool(u"xdg-mime"_s, {u"query"_s, u"default"_s, type});
    const QString name = entry ? QString::fromUtf8(entry->trimmed()) : QString();
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
    return {Open, OpenFolder, OpenFolder, ShowProperties, AssociatedProgram};
}
