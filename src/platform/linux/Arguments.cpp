#include "platform/Arguments.h"

#include "platform/Drives.h"

#include <filesystem>

std::vector<QByteArray> ProgramArguments(int argc, char **argv)
{
    std::vector<QByteArray> arguments;
    for (int i = 1; i < argc; ++i)
        arguments.emplace_back(argv[i]);
    return arguments;
}

QString PathOfArgument(const QByteArray &argument)
{
    if (argument.isEmpty())
        return {};
    std::filesystem::path path(argument.toStdString());
    if (path.is_relative())
        path = ToHostBytes(CurrentDirectory()).toStdString() / path;
    QByteArray bytes = QByteArray::fromStdString(path.lexically_normal().string());
    if (bytes.size() > 1 && bytes.endsWith('/'))
        bytes.chop(1);
    return FromHostBytes(bytes);
}
