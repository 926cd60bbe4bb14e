#include "platform/DesktopTools.h"

#include "platform/windows/WindowsApi.h"

#include <array>
#include <bit>

#include <shellapi.h>

namespace
{
/// The shell answers a number; up to 32 it is an error.
bool Execute(const wchar_t *verb, const std::wstring &target)
{
    const HINSTANCE answer = ShellExecuteW(nullptr, verb, target.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return std::bit_cast<std::intptr_t>(answer) > 32;
}

bool Find()
{
    // Since the search is a window of the folders, only its address opens it.
    return Execute(L"find", {}) || Execute(L"open", L"search-ms:");
}

/// The full path of a program that Windows finds by its name; empty for none.
std::wstring Located(const wchar_t *program)
{
    std::array<wchar_t, MAX_PATH + 1> path{};
    const DWORD size = SearchPathW(nullptr, program, L".exe", MAX_PATH, path.data(), nullptr);
    return size > 0 && size < MAX_PATH ? std::wstring(path.data()) : std::wstring();
}

/// The mixer of the first versions of Windows, or today's.
std::wstring Mixer()
{
    const std::wstring first = Located(L"sndvol32");
    return first.empty() ? Located(L"sndvol") : first;
}

/// A text of the machine's registry; empty when it is not there.
std::wstring RegistryText(const wchar_t *place, const wchar_t *name)
{
    std::array<wchar_t, 512> text{};
    DWORD size = sizeof text;
    const LSTATUS answer = RegGetValueW(HKEY_LOCAL_MACHINE, place, name, RRF_RT_REG_SZ, nullptr, text.data(), &size);
    return answer == ERROR_SUCCESS ? std::wstring(text.data()) : std::wstring();
}

std::wstring Informer()
{
    const std::wstring path = RegistryText(L"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", L"PATH");
    if (!path.empty())
        return path;
    const std::wstring folder = RegistryText(L"SOFTWARE\\Microsoft\\Shared Tools Location", L"MSINFO");
    return folder.empty() ? folder : Located((folder + L"\\MSINFO32").c_str());
}

/// The program is looked for each time.
DesktopTool ToolOf(std::wstring (*program)())
{
    return {[program] { return !program().empty(); },
            [program] {
                const std::wstring path = program();
                return !path.empty() && Execute(L"open", path);
            }};
}
} // namespace

void AddDesktopTools(Shell &shell)
{
    shell.Find = {[] { return true; }, Find};
    shell.VolumeControl = ToolOf(Mixer);
    shell.SystemInformation = ToolOf(Informer);
}
