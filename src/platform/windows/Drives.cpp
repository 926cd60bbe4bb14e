#include "platform/Drives.h"

#include "platform/PlaylistLines.h"
#include "platform/windows/WindowsApi.h"

#include <vector>

using namespace Qt::StringLiterals;

namespace
{

QString WithBackslashes(QStringView path)
{
    return path.toString().replace(u'/', u'\\');
}

std::wstring WorkingFolder()
{
    std::vector<wchar_t> buffer(GetCurrentDirectoryW(0, nullptr) + 1);
    const DWORD size = GetCurrentDirectoryW(static_cast<DWORD>(buffer.size()), buffer.data());
    return size < buffer.size() ? std::wstring(buffer.data(), size) : std::wstring();
}

} // namespace

void SetDriveMappings(const QMap<QChar, QString> &)
{
    // The drives of this host are its own.
}

bool CanMapDrives()
{
    return false;
}

QStringList DriveLetters()
{
    const DWORD present = GetLogicalDrives();
    QStringList letters;
    for (char16_t i = 0; i < 26; ++i) {
        if ((present >> i & 1U) != 0)
            letters.append(QString(QChar(static_cast<char16_t>(u'a' + i))) + u':');
    }
    return letters;
}

QByteArray ToHostBytes(const QString &path)
{
    return path.toUtf8();
}

QString ToHostPath(const QString &path)
{
    return path;
}

QString FromHostBytes(const QByteArray &hostPath)
{
    return FromHostPath(QString::fromUtf8(hostPath));
}

QString FromHostPath(const QString &hostPath)
{
    QString path = WithBackslashes(hostPath);
    if (HasDrive(path))
        path[0] = path[0].toLower();
    return path;
}

QString ToPlaylistLine(const QString &path)
{
    if (IsWebRow(path))
        return path.sliced(1);
    return HasDrive(path) || !NeedsDotPrefix(path) ? path : QString(u".\\" + path);
}

QString FromPlaylistLine(QStringView line, const QString &folder)
{
    return IsWebAddress(line) ? WebAddressOf(line) : FromWindowsLine(WithoutDotPrefix(line), folder);
}

QString ShownPath(QString path)
{
    return path;
}

QString ToLink(const QString &path)
{
    const QString address = EscapedAddress(QString(path).replace(u'\\', u'/'));
    return HasDrive(path) || path.startsWith(u'\\') ? u"file:///"_s + address : address;
}

QUrl ToUrl(const QString &path)
{
    if (path.isEmpty())
        return {};
    const bool absolute = HasDrive(path) || path.startsWith(u'\\') || path.startsWith(u'/');
    return QUrl::fromLocalFile(absolute ? path : QString(CurrentDirectory() + u'\\' + path));
}

QString FromUrl(const QUrl &url)
{
    return url.isLocalFile() ? FromHostPath(url.toLocalFile()) : QString();
}

QString CurrentDirectory()
{
    QString path = FromHostPath(QString::fromStdWString(WorkingFolder()));
    if (path.endsWith(u'\\'))
        path.chop(1);
    return path;
}

bool SetCurrentDirectory(const QString &path)
{
    if (path.isEmpty() || !SetCurrentDirectoryW(ShortWidePath(path).c_str()))
        return false;
    // Each drive remembers its own directory in a variable named "=X:", kept by programs and not by the system.
    const std::wstring folder = WorkingFolder();
    if (folder.size() >= 2 && folder[1] == L':') {
        const std::wstring name{L'=', folder[0] >= L'a' ? static_cast<wchar_t>(folder[0] - L'a' + L'A') : folder[0],
                                L':'};
        SetEnvironmentVariableW(name.c_str(), folder.c_str());
    }
    return true;
}
