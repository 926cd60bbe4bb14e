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

void StartOverBareWindow(benchmark::State &state, int entries, double bound)
{
    const QString folder = HeadlessHost(ApplicationName()).ApplicationFolder;
    QByteArray session = "#\r\n";
    if (entries > 0)
        ReadWholeFile(MediaList(entries), session);
    EnsureFolder(folder);
    WriteWholeFile(folder + u"\\tmp.m3u"_s, session);
    CompareInTurn(
        state, 1, bound, [] { RunProcess(BARE_WINDOW); }, [] { RunProcess(SESSION); });
}

BENCHMARK_CAPTURE(StartOverBareWindow, EmptySession, 0, 2.5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(15);
BENCHMARK_CAPTURE(StartOverBareWindow, FullSession, FullList, 18)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(15);
} // namespace
