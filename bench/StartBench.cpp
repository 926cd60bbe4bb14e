#include "BenchRows.h"
#include "BenchSupport.h"
#include "MediaLists.h"

#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Host.h"
#include "session/ProgramName.h"

#include <array>
#include <stdexcept>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

// The whole program from its start to its first painting and its end, over a process that shows an empty window of Qt.

namespace
{
void RunProcess(const char *program)
{
    std::string path = program;
    const std::array<char *, 2> arguments{path.data(), nullptr};
    pid_t child = 0;
    int status = 0;
    if (posix_spawn(&child, program, nullptr, nullptr, arguments.data(), environ) != 0 ||
        waitpid(child, &status, 0) != child || status != 0)
        throw std::runtime_error("A process of the benchmark fails.");
}

/// Whether the next start shows a tip.
void LetStartShowTip(bool on)
{
    HeadlessHost(ApplicationName()).Settings.Write(u"Options"_s, u"Show Tips at Startup"_s, on ? u"1"_s : u"0"_s);
}

void StoreSession(const QByteArray &session)
{
    const QString folder = HeadlessHost(ApplicationName()).ApplicationFolder;
    EnsureFolder(folder);
    WriteWholeFile(folder + u"\\tmp.m3u"_s, session);
}

void StartOverBareWindow(benchmark::State &state, int entries, double bound)
{
    QByteArray session = "#\r\n";
    if (entries > 0)
        ReadWholeFile(MediaList(entries), session);
    StoreSession(session);
    LetStartShowTip(false);
    CompareInTurn(
        state, 1, bound, [] { RunProcess(BARE_WINDOW); }, [] { RunProcess(SESSION); });
}

/// Up to the first painting of the tip.
void StartWithTipOverWithout(benchmark::State &state)
{
    StoreSession("#\r\n");
    const auto start = [](bool tip) { return Side{[] { RunProcess(SESSION); }, 1, [tip] { LetStartShowTip(tip); }}; };
    Compare(state, 1.2, start(false), start(true));
}

BENCHMARK(StartWithTipOverWithout)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(15);
BENCHMARK_CAPTURE(StartOverBareWindow, EmptySession, 0, 2.5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(15);
BENCHMARK_CAPTURE(StartOverBareWindow, FullSession, FullList, 18)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(15);
} // namespace
