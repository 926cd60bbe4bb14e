#include "platform/linux/DesktopEntry.h"

#include <QList>

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

QString ProgramOfDesktopEntry(const QByteArray &entry)
{
    // The value of a key has a backslash doubled; within quotes a further one stands before what it protects.
    const QByteArray exec = DesktopValue(entry, "[Desktop Entry]", "Exec").replace("\\\\", "\\");
    if (!exec.startsWith('"'))
        return QString::fromUtf8(exec.first(exec.indexOf(' ') < 0 ? exec.size() : exec.indexOf(' ')));
    QByteArray program;
    for (qsizetype i = 1; i < exec.size() && exec[i] != '"'; ++i) {
        if (exec[i] == '\\' && i + 1 < exec.size())
            ++i;
        program.append(exec[i]);
    }
    return QString::fromUtf8(program);
}
