#include "platform/DesktopTools.h"

#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

#include <span>

using namespace Qt::StringLiterals;

namespace
{
/// A program that serves on a desktop, or on any one when that is empty, with its argument if it takes one.
struct Candidate {
    QLatin1StringView Desktop;
    QLatin1StringView Program;
    QLatin1StringView Argument{};
};

// What belongs to a desktop comes before what runs anywhere.
constexpr Candidate searches[] = {
    {"LXDE"_L1, "pcmanfm"_L1, "--find-files"_L1},
    {"LXQt"_L1, "pcmanfm-qt"_L1, "--find-files"_L1},
    {"KDE"_L1, "kfind"_L1},
    {"XFCE"_L1, "catfish"_L1},
    {"MATE"_L1, "mate-search-tool"_L1},
    {{}, "catfish"_L1},
    {{}, "kfind"_L1},
    {{}, "mate-search-tool"_L1},
    {{}, "gnome-search-tool"_L1},
    {{}, "fsearch"_L1},
};
constexpr Candidate mixers[] = {
    {"GNOME"_L1, "gnome-control-center"_L1, "sound"_L1},
    {"KDE"_L1, "systemsettings"_L1, "kcm_pulseaudio"_L1},
    {"KDE"_L1, "systemsettings5"_L1, "kcm_pulseaudio"_L1},
    {"X-Cinnamon"_L1, "cinnamon-settings"_L1, "sound"_L1},
    {"MATE"_L1, "mate-volume-control"_L1},
    {"LXQt"_L1, "pavucontrol-qt"_L1},
    {{}, "pavucontrol"_L1},
    {{}, "pavucontrol-qt"_L1},
    {{}, "kmix"_L1},
    {{}, "xfce4-mixer"_L1},
};
constexpr Candidate informers[] = {
    {"GNOME"_L1, "gnome-control-center"_L1, "info-overview"_L1},
    {"X-Cinnamon"_L1, "cinnamon-settings"_L1, "info"_L1},
    {"MATE"_L1, "mate-system-monitor"_L1, "--show-system-tab"_L1},
    {{}, "kinfocenter"_L1},
    {{}, "hardinfo2"_L1},
    {{}, "hardinfo"_L1},
};

/// The program and its arguments; empty when none of the candidates is there.
QStringList CommandOf(std::span<const Candidate> candidates)
{
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
    for (const Candidate &candidate : candidates) {
        if (!candidate.Desktop.isEmpty() && !desktops.contains(candidate.Desktop))
            continue;
        const QString program = QStandardPaths::findExecutable(candidate.Program);
        if (!program.isEmpty())
            return candidate.Argument.isEmpty() ? QStringList{program} : QStringList{program, candidate.Argument};
    }
    return {};
}

DesktopTool FirstOf(std::span<const Candidate> candidates)
{
    const auto start = [candidates] {
        const QStringList command = CommandOf(candidates);
        return !command.isEmpty() && QProcess::startDetached(command.front(), command.sliced(1));
    };
    return {[candidates] { return !CommandOf(candidates).isEmpty(); }, start};
}
} // namespace

void AddDesktopTools(Shell &shell)
{
    shell.Find = FirstOf(searches);
    shell.VolumeControl = FirstOf(mixers);
    shell.SystemInformation = FirstOf(informers);
}
