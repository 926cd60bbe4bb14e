#include "compilation/BuildCompilation.h"

#include "platform/Files.h"
#include "platform/PlaylistLines.h"
#include "reports/WriteReport.h"
#include "text/FileLists.h"
#include "text/MadeFiles.h"
#include "text/PathText.h"
#include "text/TextFiles.h"

using namespace Qt::StringLiterals;

namespace
{
constexpr int stages = 5;

/// One run, with what it has to give back.
class Build
{
public:
    Build(const CompilationPlan &planOfRun, const Progress &progressOfRun) : plan(planOfRun), progress(progressOfRun) {}

    /// One stage more is done, and this is the next one.
    void Stage(const QString &text)
    {
        progress.SetValue(++stage);
        progress.SetText(text);
    }

    /// Writes a file of the compilation's root by a function that tells whether it has. What fails fails the run.
    bool Make(const QString &name, const std::function<bool(const QString &path)> &write)
    {
        const QString path = plan.Folder + u'\\' + name;
        const bool made = files.Make(path, [&] { return write(path); });
        success = success && made;
        return made;
    }

    void CopyBrowser()
    {
        if (plan.CopyBrowser)
            Make(BrowserOnDisc, [this](const QString &path) {
                return CopyFilePath(plan.ProgramFolder + u'\\' + BrowserProgram, path);
            });
    }

    void CreateTable(const QStringList &media, ReportSettings &record, const Clock &clock)
    {
        if (!plan.CreateTable)
            return;
        Make(u"MP3Index.htm"_s,
             [&](const QString &path) { return WriteWholeReport(path, media, record, progress, clock); });
        success = success && !progress.Stopped();
    }

    void SaveIcon()
    {
        const bool before = success;
        iconSaved = Make(u"setup.ico"_s, [this](const QString &path) {
            return (!plan.IconFile.isEmpty() && CopyFilePath(plan.IconFile, path)) || WriteWholeFile(path, plan.Icon);
        });
        success = before;
    }

    void CreateAutorun(QStringList &media)
    {
        QStringList lines{u"[autorun]"_s};
        if (plan.AutoIcon) {
            SaveIcon();
            lines.append(u"icon=setup.ico"_s);
        }
        progress.SetText(u"Creating CD playlist..."_s);
        MakePathsRelative(media, plan.Folder);
        for (QString &line : media) {
            if (NeedsDotPrefix(line))
                line.prepend(u".\\"_s);
        }
        const bool listed =
            Make(u"playlist.m3u"_s, [&media](const QString &path) { return WriteLinesToFile(path, media); });
        if (listed && plan.AutoBigList)
            lines.append(u"open=start playlist.m3u"_s);
        if (plan.AutoIndex && plan.CopyBrowser)
            lines.append(u"open=start "_s + BrowserOnDisc);
        if (lines.size() > 1)
            Make(u"autorun.inf"_s, [&lines](const QString &path) { return WriteLinesToFile(path, lines); });
    }

    QStringList RootEntries() const
    {
        FolderEntries entries;
        ListFolder(plan.Folder, entries);
        QStringList paths;
        for (const QString &name : entries.Folders + entries.Files)
            paths.append(plan.Folder + u'\\' + name);
        return paths;
    }

    BuildOutcome Finish()
    {
        if (!success)
            return {files.TakeAllBack().isEmpty() ? BuildResult::TakenBack : BuildResult::LeftBehind, iconSaved};
        files.Clear();
        return {BuildResult::Done, iconSaved};
    }

    bool Success() const { return success; }

private:
    const CompilationPlan &plan;
    const Progress &progress;
    MadeFiles files{MadeFiles::AfterKill::TakeBack};
    bool success = true;
    bool iconSaved = true;
    int stage = 0;
};
} // namespace

QString CompilationTitle(const QString &name, const QDateTime &now)
{
    return name + now.toString(u"' - Created: 'HH:mm:ss [MM-dd-yyyy]"_s);
}

BuildOutcome BuildCompilation(const CompilationPlan &plan, QStringList &compilationFiles, QStringList &rootEntries,
                              ReportSettings &reportRecord, const Progress &progress, const Clock &clock)
{
    Build build(plan, progress);
    progress.SetLimits(0, stages);
    build.Stage(u"Copying MP3 browser Software..."_s);
    build.CopyBrowser();
    reportRecord.SaveRel = true;
    reportRecord.Title = CompilationTitle(plan.Name, clock.Now());
    reportRecord.Description = {};
    build.Stage(u"Creating a table of MP3 Data..."_s);
    build.CreateTable(compilationFiles, reportRecord, clock);
    build.Stage(u"Creating the Autorun file..."_s);
    if (plan.CreateAutorun)
        build.CreateAutorun(compilationFiles);
    build.Stage(u"Building list of files to be copied..."_s);
    rootEntries += build.RootEntries();
    build.Stage(build.Success() ? u"Saving your settings..."_s : u"Process failed, cleaning up..."_s);
    const BuildOutcome outcome = build.Finish();
    progress.SetValue(0);
    return outcome;
}
