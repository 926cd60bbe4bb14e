#include "platform/HostSettings.h"

#include "platform/DiskFile.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/FolderLock.h"

#include <QDateTime>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QThread>

using namespace Qt::StringLiterals;

// The file is read by QSettings. It is written here, since QSettings waits for ever for a lock file that cannot be
// removed, and leaves it behind when the process is killed.

namespace
{

QByteArray HexOf(char character)
{
    return QByteArray(1, character).toHex().toUpper();
}

/// A section's or a key's name as the file has it.
QByteArray NameInFile(const QString &name)
{
    QByteArray written;
    for (const char character : name.toLatin1()) {
        const bool isPlain =
            QChar::isLetterOrNumber(static_cast<uchar>(character)) || QByteArray("_-.").contains(character);
        written += isPlain ? QByteArray(1, character) : '%' + HexOf(character);
    }
    return written;
}

QByteArray ValueInFile(const QString &value)
{
    QByteArray written("\"");
    // "@" begins a value of another type.
    if (value.startsWith(u'@'))
        written += '@';
    bool afterCode = false;
    for (const char character : value.toUtf8()) {
        const bool isHex = QByteArray("0123456789abcdefABCDEF").contains(character);
        const bool isCode = static_cast<uchar>(character) < 0x20 || (afterCode && isHex);
        if (isCode)
            written += "\\x" + HexOf(character);
        else if (character == '"' || character == '\\')
            written += QByteArray("\\") + character;
        else
            written += character;
        afterCode = isCode;
    }
    return written + '"';
}

/// Replaces the line of a key, or adds it to its section.
void PutLine(QByteArrayList &lines, const QByteArray &section, const QByteArray &key, const QByteArray &value)
{
    // Without the mark this one would hold the keys that have no section.
    const bool isMarked = section.compare("general", Qt::CaseInsensitive) == 0;
    const QByteArray head = (isMarked ? "[%" : "[") + section + ']';
    qsizetype at = lines.indexOf(head);
    if (at < 0) {
        at = lines.size();
        lines.append(head);
    }
    qsizetype last = at;
    for (++at; at < lines.size() && !lines[at].startsWith('['); ++at) {
        if (lines[at].startsWith(QByteArray(key + '='))) {
            lines[at] = key + '=' + value;
            return;
        }
        if (!lines[at].isEmpty())
            last = at;
    }
    lines.insert(last + 1, key + '=' + value);
}

/// QSettings reads a file again when its size or its time is another one, so two are not written in one tick of the
/// file system's clock.
void WaitForNextTick(const QString &hostPath)
{
    constexpr qint64 longestTick = 10;
    const qint64 age = QFileInfo(hostPath).lastModified().msecsTo(QDateTime::currentDateTime());
    if (age >= 0 && age < longestTick)
        QThread::msleep(static_cast<unsigned long>(longestTick - age));
}

} // namespace

HostSettings::HostSettings(const QString &applicationName)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    store = std::make_unique<QSettings>(QString(folder + u'/' + applicationName + u".ini"), QSettings::IniFormat);
}

HostSettings::~HostSettings() = default;

QVariant HostSettings::Value(const QString &address) const
{
    return store->value(address);
}

bool HostSettings::Store(const QMap<QString, QString> &values)
{
    const QString folder = FromHostPath(QFileInfo(Place()).path());
    EnsureFolder(folder);
    const FolderLock lock(folder);
    const QString path = FromHostPath(Place());
    QByteArray content;
    if (!ReadWholeFile(path, content) && !IsAbsent(path))
        return false;
    QByteArrayList lines = content.replace("\r\n", "\n").split('\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    for (auto value = values.begin(); value != values.end(); ++value)
        PutLine(lines, NameInFile(value.key().section(u'/', 0, 0)), NameInFile(value.key().section(u'/', 1)),
                ValueInFile(*value));
    WaitForNextTick(Place());
    if (!WriteWholeFile(path, lines.join('\n') + '\n'))
        return false;
    Refresh();
    return true;
}

void HostSettings::Refresh()
{
    store->sync();
}

QString HostSettings::Place() const
{
    return store->fileName();
}
