#include "platform/DesktopShell.h"

#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/PlaylistLines.h"
#include "platform/windows/WindowsApi.h"

#include <array>
#include <bit>

#include <shellapi.h>

namespace
{

/// The shell answers a number; up to 32 it is an error.
bool Succeeded(HINSTANCE answer)
{
    return std::bit_cast<std::intptr_t>(answer) > 32;
}

bool Execute(const wchar_t *verb, const std::wstring &target)
{
    return Succeeded(ShellExecuteW(nullptr, verb, target.c_str(), nullptr, nullptr, SW_SHOWNORMAL));
}

bool Open(const QString &document)
{
    if (IsWebAddress(document))
        return Execute(L"open", document.toStdWString());
    return ExamineFile(document).Exists && Execute(L"open", ShortWidePath(document));
}

bool Browse(const QString &address)
{
    return IsForeignAddress(address) && Execute(L"open", address.toStdWString());
}

bool Explore(const QString &folder)
{
    return ExamineFile(folder).IsFolder && Execute(L"explore", ShortWidePath(folder));
}

bool Find(const QString &folder)
{
    return ExamineFile(folder).IsFolder && Execute(L"find", ShortWidePath(folder));
}

bool ShowProperties(const QString &path)
{
    const std::wstring target = ShortWidePath(path);
    SHELLEXECUTEINFOW request{};
    request.cbSize = sizeof request;
    request.fMask = SEE_MASK_INVOKEIDLIST | SEE_MASK_FLAG_NO_UI;
    request.lpVerb = L"properties";
    request.lpFile = target.c_str();
    request.nShow = SW_SHOWNORMAL;
    return ExamineFile(path).Exists && ShellExecuteExW(&request);
}

QString AssociatedProgram(const QString &document)
{
    std::array<wchar_t, MAX_PATH + 1> program{};
    if (!Succeeded(FindExecutableW(ShortWidePath(document).c_str(), nullptr, program.data())))
        return {};
    return FromHostPath(TextFromWide(program.data()));
}

} // namespace

Shell DesktopShell()
{
    return {Open, Browse, Explore, Find, ShowProperties, AssociatedProgram};
}
