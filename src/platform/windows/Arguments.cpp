#include "platform/Arguments.h"

#include "platform/Drives.h"
#include "platform/windows/WindowsApi.h"

#include <QString>

#include <shellapi.h>

std::vector<QByteArray> ProgramArguments(int, char **)
{
    std::vector<QByteArray> arguments;
    int count = 0;
    LPWSTR *texts = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i)
        arguments.push_back(QString::fromWCharArray(texts[i]).toUtf8());
    LocalFree(texts);
    return arguments;
}

QString PathOfArgument(const QByteArray &argument)
{
    if (argument.isEmpty())
        return {};
    const std::wstring text = QString::fromUtf8(argument).toStdWString();
    return FromHostPath(QString::fromStdWString(FullPath(text)));
}
