#include "platform/DesktopShell.h"

#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/PlaylistLines.h"
#include "platform/windows/WindowsApi.h"

#include <algorithm>
#include <array>
#include <bit>
#include <vector>

#include <shellapi.h>
#include <shlwapi.h>

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

/// The program that opens a type of files, by the type's name in the registry.
std::wstring ProgramOf(const std::wstring &type)
{
    std::array<wchar_t, MAX_PATH + 1> program{};
    DWORD size = MAX_PATH;
    const HRESULT answer =
        AssocQueryStringW(ASSOCF_NONE, ASSOCSTR_EXECUTABLE, type.c_str(), L"open", program.data(), &size);
    return SUCCEEDED(answer) ? std::wstring(program.data()) : std::wstring();
}

bool IsThisProgram(const QString &program)
{
    std::array<wchar_t, 32768> own{};
    GetModuleFileNameW(nullptr, own.data(), own.size());
    return program.compare(FromHostPath(TextFromWide(own.data())), Qt::CaseInsensitive) == 0;
}

/// The types, by their names in the registry, as which Windows offers to open files of an extension.
std::vector<std::wstring> TypesOf(const QString &extension)
{
    std::vector<std::wstring> types;
    HKEY key = nullptr;
    const std::wstring place = extension.toStdWString() + L"\\OpenWithProgids";
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, place.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return types;
    std::array<wchar_t, 256> name{};
    for (DWORD i = 0, size = name.size();
         RegEnumValueW(key, i, name.data(), &size, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         ++i, size = name.size())
        types.emplace_back(name.data());
    RegCloseKey(key);
    return types;
}

bool OpenAs(const std::wstring &type, const QString &document)
{
    const std::wstring target = ShortWidePath(document);
    SHELLEXECUTEINFOW request{};
    request.cbSize = sizeof request;
    request.fMask = SEE_MASK_CLASSNAME | SEE_MASK_FLAG_NO_UI;
    request.lpVerb = L"open";
    request.lpFile = target.c_str();
    request.lpClass = type.c_str();
    request.nShow = SW_SHOWNORMAL;
    return ShellExecuteExW(&request);
}

QString AssociatedProgram(const QString &document)
{
    std::array<wchar_t, MAX_PATH + 1> program{};
    if (!Succeeded(FindExecutableW(ShortWidePath(document).c_str(), nullptr, program.data())))
        return {};
    return FromHostPath(TextFromWide(program.data()));
}

bool OpenElsewhere(const QString &document)
{
    const QString registered = AssociatedProgram(document);
    if (!registered.isEmpty() && !IsThisProgram(registered))
        return Open(document);
    const std::vector<std::wstring> types =
        TypesOf(document.sliced(std::max<qsizetype>(document.lastIndexOf(u'.'), 0)));
    return std::any_of(types.begin(), types.end(), [&](const std::wstring &type) {
        const std::wstring program = ProgramOf(type);
        return !program.empty() && !IsThisProgram(FromHostPath(QString::fromStdWString(program))) &&
               OpenAs(type, document);
    });
}

} // namespace

Shell DesktopShell()
{
    return {Open, Browse, OpenElsewhere, Explore, ShowProperties, AssociatedProgram};
}
