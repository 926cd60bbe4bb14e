#include "platform/linux/DesktopEntry.h"

#include <QList>

#include <utility>

using namespace Qt::StringLiterals;

QByteArray DesktopValue(const QByteArray &content, QByteArrayView section, QByteArrayView key)
{
    bool inside = false;
    const QList<QByteArray> lines = content.split('\n');
    for (const QByteArray &line : lines) {
        const QByteArray text = line.trimmed();
        if (text.startsWith('['))
            inside = text == section;
        const qsizetype equals = text.indexOf('=');
        if (inside && equals > 0 && text.first(equals).trimmed() == key)
            return text.sliced(equals + 1).trimmed();
    }
    return {};
}

QStringList CommandOfDesktopEntry(const QByteArray &entry)
{
    // The value of a key has a backslash doubled; within quotes a further one stands before what it protects.
    const QByteArray exec = DesktopValue(entry, "[Desktop Entry]", "Exec").replace("\\\\", "\\");
    QList<QByteArray> words;
    bool quoted = false;
    bool inside = false;
    for (qsizetype i = 0; i < exec.size(); ++i) {
        if (exec[i] == ' ' && !quoted) {
            inside = false;
            continue;
        }
        if (!std::exchange(inside, true))
            words.append(QByteArray());
        if (exec[i] == '"')
            quoted = !quoted;
        else if (exec[i] == '\\' && quoted && i + 1 < exec.size())
            words.last().append(exec[++i]);
        else
            words.last().append(exec[i]);
    }
    QStringList command;
    for (const QByteArray &word : std::as_const(words))
        command.append(QString::fromUtf8(word));
    return command;
}

QStringList ArgumentsFor(const QStringList &command, const QString &path, const QString &address)
{
    QStringList arguments;
    bool placed = false;
    for (QString argument : command.sliced(1)) {
        const bool isPath = argument.contains(u"%f"_s, Qt::CaseInsensitive);
        const bool isAddress = argument.contains(u"%u"_s, Qt::CaseInsensitive);
        placed |= isPath || isAddress;
        // Icon, name and the like are the desktop's affair.
        if (argument.size() == 2 && argument[0] == u'%' && !isPath && !isAddress)
            continue;
        argument.replace(u"%f"_s, path, Qt::CaseInsensitive);
        arguments.append(isPath ? argument : argument.replace(u"%u"_s, address, Qt::CaseInsensitive));
    }
    return placed ? arguments : arguments << path;
}
