#include "platform/Arguments.h"

#include "platform/Files.h"

QString PathOfCommandLine(const std::vector<QByteArray> &arguments)
{
    QByteArray line;
    for (const QByteArray &argument : arguments)
        line += (line.isEmpty() ? QByteArray() : QByteArray(" ")) + argument;
    const QString path = PathOfArgument(line);
    return ExamineFile(path).Exists ? path : PathOfArgument(line.replace('"', QByteArray()));
}
