#include "platform/Drives.h"

#include "platform/Carriers.h"
#include "platform/PlaylistLines.h"

#include <QDir>
#include <QSysInfo>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <vector>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{

struct MappedFolder {
    QByteArray Folder;
    char16_t Letter = 0;
};

struct Mappings {
    /// Host folder by letter, without a trailing slash (so "/" is empty); null for a letter without one.
    std::array<QByteArray, 26> Folders;
    /// The mapped folders other than "/", longest first.
    std::vector<MappedFolder> LongestFirst;

    Mappings() { Folders.back() = QByteArray(""); }
};

Mappings &Current()
{
    static Mappings mappings;
    return mappings;
}

std::size_t LetterIndex(QChar letter)
{
    return static_cast<std::size_t>(letter.toLower().unicode() - u'a');
}

bool IsWithin(QByteArrayView path, const QByteArray &folder)
{
    return path.startsWith(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

QString FromAbsoluteBytes(QByteArrayView path)
{
    while (path.startsWith("//"))
        path = path.sliced(1);
    for (const MappedFolder &mapped : Current().LongestFirst) {
        if (IsWithin(path, mapped.Folder)) {
            const std::array<char16_t, 2> drive{mapped.Letter, u':'};
            return TextFromBytes(path.sliced(mapped.Folder.size()), Carriage::Inside, drive);
        }
    }
    return TextFromBytes(path, Carriage::Inside, u"z:");
}

/// The inside form of a line that is an absolute path of the host; empty for one that no path can be.
QString FromHostLine(QStringView line)
{
    if (!Current().LongestFirst.empty())
        return FromHostBytes(BytesFromText(line, Carriage::Line));
    while (line.size() > 1 && line[1] == u'/')
        line = line.sliced(1);
    return InsideFromLine(line, u"z:");
}

QByteArray WorkingFolder()
{
    const std::unique_ptr<char, decltype(&std::free)> folder(::getcwd(nullptr, 0), &std::free);
    return folder && folder.get()[0] == '/' ? QByteArray(folder.get()) : QByteArray("/");
}

/// The current directory as it was entered, through links and all: rows that lie in it must bear the name that the
/// user knows it by, or a relative save would not find them below its own folder. Empty while it is not known.
QString &KnownDirectory()
{
    static QString directory;
    return directory;
}

/// A letter and a colon without a separator is a relative name here: inside, every drive has its backslash.
bool HasRoot(const QString &path)
{
    return HasDrive(path) && (path.size() == 2 || path[2] == u'\\');
}

/// A path with one separator behind the drive that is the host's root: from the line that more of them are written as,
/// one would come back.
QString WithOneSeparator(QString path)
{
    const QByteArray &root = Current().Folders[LetterIndex(path[0])];
    const auto *rest = std::find_if(path.cbegin() + 2, path.cend(), [](QChar unit) { return unit != u'\\'; });
    const qsizetype separators = rest - path.cbegin() - 2;
    return root.isEmpty() && !root.isNull() && separators > 1 ? path.remove(3, separators - 1) : path;
}

} // namespace

void SetDriveMappings(const QMap<QChar, QString> &mappings)
{
    Mappings fresh;
    for (auto it = mappings.begin(); it != mappings.end(); ++it) {
        const QChar letter = it.key().toLower();
        if (letter < u'a' || letter > u'y' || !it.value().startsWith(u'/') || it.value().contains(QChar::Null))
            continue;
        const QString folder = QDir::cleanPath(it.value());
        const QByteArray bytes = folder == u"/"_s ? QByteArray("") : folder.toUtf8();
        fresh.Folders[LetterIndex(letter)] = bytes;
        if (!bytes.isEmpty())
            fresh.LongestFirst.push_back({bytes, letter.unicode()});
    }
    std::stable_sort(fresh.LongestFirst.begin(), fresh.LongestFirst.end(),
                     [](const auto &a, const auto &b) { return a.Folder.size() > b.Folder.size(); });
    Current() = std::move(fresh);
    KnownDirectory().clear();
}

bool CanMapDrives()
{
    return true;
}

QStringList DriveLetters()
{
    QStringList letters;
    for (std::size_t i = 0; i < Current().Folders.size(); ++i) {
        if (!Current().Folders[i].isNull())
            letters.append(QString(QChar(static_cast<char16_t>(u'a' + i))) + u':');
    }
    return letters;
}

QByteArray ToHostBytes(const QString &path)
{
    if (!HasDrive(path)) {
        // No network path can be reached through a system call.
        return IsOnShare(path) ? QByteArray() : BytesFromText(path, Carriage::Inside);
    }
    const QByteArray &folder = Current().Folders[LetterIndex(path[0])];
    if (folder.isNull())
        return {};
    const QStringView rest = QStringView(path).sliced(2);
    if (rest.isEmpty())
        return folder.isEmpty() ? QByteArray("/") : folder;
    if (rest[0] != u'\\' && rest[0] != u'/')
        return BytesFromText(rest, Carriage::Inside, QByteArray(folder + '/'));
    return BytesFromText(rest, Carriage::Inside, folder);
}

QString ToHostPath(const QString &path)
{
    const QByteArray bytes = ToHostBytes(path);
    return bytes.isEmpty() ? path : QString::fromUtf8(bytes);
}

QString FromHostBytes(const QByteArray &hostPath)
{
    return hostPath.startsWith('/') ? FromAbsoluteBytes(hostPath) : TextFromBytes(hostPath, Carriage::Inside);
}

QString FromHostPath(const QString &hostPath)
{
    return FromHostBytes(hostPath.toUtf8());
}

QString ToPlaylistLine(const QString &path)
{
    if (IsWebRow(path))
        return path.sliced(1);
    const bool drive = HasRoot(path);
    const QByteArray bytes = drive ? ToHostBytes(path) : BytesFromText(path, Carriage::Inside);
    if (bytes.isEmpty() || path.startsWith(u"\\\\"_s))
        return path;
    const QString line = TextFromBytes(bytes, Carriage::Line);
    if (drive || line.startsWith(u'/'))
        return line;
    // Only a line in the host's own form has backslashes that are no separators.
    const bool exact = bytes.contains('\\') || line.contains(QChar(0xF05C));
    return exact || NeedsDotPrefix(line) ? QString(u"./" + line) : line;
}

QString FromPlaylistLine(QStringView line, const QString &folder)
{
    const bool hasColon = std::find(line.begin(), line.end(), u':') != line.end();
    if (hasColon && IsWebAddress(line))
        return WebAddressOf(line);
    if (line.startsWith(u'/')) {
        const QString path = FromHostLine(line);
        if (!path.isEmpty())
            return path;
    }
    const QStringView rest = WithoutDotPrefix(line);
    const bool exact = rest.size() < line.size() && line.startsWith(u"./");
    QString path = exact ? InsideFromLine(rest) : QString();
    if (path.isEmpty())
        path = FromWindowsLine(rest, folder);
    if (hasColon && (exact || !(HasDrive(path) || IsOnShare(path))))
        return folder + u'\\' + path;
    return HasDrive(path) ? WithOneSeparator(path) : path;
}

QString ShownPath(QString path)
{
    return ShownText(std::move(path));
}

QString ToLink(const QString &path)
{
    const bool relative = !HasRoot(path) && !path.startsWith(u'\\');
    const QByteArray bytes = relative ? BytesFromText(path, Carriage::Inside) : ToHostBytes(path);
    // What is nothing on this host has the form that it has on Windows.
    const QString text = bytes.isEmpty() ? QString(path).replace(u'\\', u'/') : TextFromBytes(bytes, Carriage::Line);
    QString address = EscapedAddress(text);
    for (qsizetype i = address.size(); i-- > 0;) {
        if (const auto byte = CarriedByte(address[i], Carriage::Line))
            address.replace(i, 1, PercentEncoded(*byte));
    }
    // A colon would make a scheme of what stands before it.
    if (relative)
        return address.replace(u':', u"%3A"_s);
    return (address.startsWith(u'/') && !bytes.isEmpty() ? u"file://"_s : u"file:///"_s) + address;
}

QUrl ToUrl(const QString &path)
{
    QByteArray bytes = ToHostBytes(path);
    if (bytes.isEmpty()) {
        // Nothing on this host; the form that the path has on Windows.
        bytes = BytesFromText(path, Carriage::Inside);
        if (bytes.isEmpty())
            return {};
        bytes = HasDrive(path) ? '/' + bytes : bytes.sliced(2);
    } else if (!bytes.startsWith('/')) {
        const QByteArray folder = WorkingFolder();
        bytes = (folder == "/" ? QByteArray() : folder) + '/' + bytes;
    }
    return QUrl::fromEncoded("file://" + bytes.toPercentEncoding("/:"));
}

QString FromUrl(const QUrl &url)
{
    if (url.scheme() != u"file"_s)
        return {};
    const QByteArray bytes = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
    const QString server = url.host();
    const bool local = server.isEmpty() || server == u"localhost"_s ||
                       server.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) == 0;
    if (!local)
        return u"\\\\" + server + TextFromBytes(bytes, Carriage::Inside);
    return FromHostBytes(bytes);
}

QString CurrentDirectory()
{
    QString &known = KnownDirectory();
    if (known.isEmpty()) {
        known = FromHostBytes(WorkingFolder());
        if (known.endsWith(u'\\'))
            known.chop(1);
    }
    return known;
}

bool SetCurrentDirectory(const QString &path)
{
    const QByteArray bytes = ToHostBytes(path);
    if (bytes.isEmpty() || ::chdir(bytes.constData()) != 0)
        return false;
    KnownDirectory().clear();
    if (bytes.startsWith('/')) {
        const auto entered = std::filesystem::path(bytes.toStdString()).lexically_normal().string();
        KnownDirectory() = FromHostBytes(QByteArray::fromStdString(entered));
        while (KnownDirectory().endsWith(u'\\'))
            KnownDirectory().chop(1);
    }
    return true;
}
