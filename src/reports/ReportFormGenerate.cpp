#include "reports/ReportForm.h"

#include "platform/DiskFile.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "reports/WriteReport.h"
#include "session/Hourglass.h"
#include "session/LongRun.h"
#include "session/Main.h"
#include "text/MadeFiles.h"
#include "text/PathText.h"

#include "ui_ReportForm.h"

using namespace Qt::StringLiterals;

void ReportForm::Generate()
{
    const QString commonRoot = TakePlaylist();
    // Links relative to nothing are absolute ones.
    const bool relative = ui->SaveRel->isChecked() && !commonRoot.isEmpty();
    const QString folder = relative ? commonRoot : main.World().ApplicationFolder;
    const QString name = IsText() ? u"tmp.txt"_s : u"tmp.htm"_s;
    const QString report = u"Writing file: " + name;
    Report(ui->lblReport, report);
    Report(ui->lblReport, report + (relative ? u" to the relative folder..."_s : u" to the application folder..."_s));
    if (!relative)
        EnsureFolder(folder);
    const QString temporary = folder + u'\\' + name;
    MadeFiles made(MadeFiles::AfterKill::TakeBack);
    std::optional<bool> written = false;
    made.Make(temporary, [&] {
        written = WriteTemporary(temporary);
        return written == true;
    });
    if (!written) {
        Report(ui->lblReport, u"Stopped: no report was written. Click 'Next>' to restart..."_s);
        main.Answer(u"No report written"_s);
        return;
    }
    if (!*written)
        main.World().Prompts.Message(
            {u"The file :" + ToHostPath(temporary) + u" could not be written.", PromptIcon::Stop});
    const QString kept = *written ? OfferToKeep(temporary, commonRoot, made) : QString();
    main.Answer(!*written        ? u"No report written"_s
                : kept.isEmpty() ? u"Report not kept"_s
                                 : u"Report kept as "_s + kept);
    Report(ui->lblReport, u"Done: Report Generator. Click 'Next>' to restart..."_s);
}

std::optional<bool> ReportForm::WriteTemporary(const QString &temporary)
{
    const Hourglass hourglass(this);
    ReportSettings record;
    FillRecordFromControls(record);
    LongRun run(ui->ProgressBar1, nullptr);
    const bool written = WriteWholeReport(temporary, main.FileArray, record, run.AsProgress(), main.World().Clock);
    return !written && run.Stopped() ? std::nullopt : std::optional(written);
}

QString ReportForm::OfferToKeep(const QString &temporary, const QString &commonRoot, MadeFiles &made)
{
    const Host &world = main.World();
    if (!world.Shell.Open(temporary))
        Report(ui->lblReport, u"No program opened the file: "_s + ToHostPath(temporary));
    if (world.Prompts.Message({u"Do you want to keep the file?"_s, PromptIcon::Question, PromptButtons::YesNo}) !=
        PromptAnswer::Yes) {
        TakeBack(made);
        return {};
    }
    const bool text = IsText();
    const QString suggested =
        (commonRoot.isEmpty() ? QString() : commonRoot + u'\\') + (text ? u"playlist.txt"_s : u"playlist.htm"_s);
    const auto chosen = world.Prompts.SaveFile(
        {u"Save As"_s, text ? u"TXT Document (*.txt)|*.txt|"_s : u"HTM Document (*.htm)|*.htm|"_s,
         text ? u"txt"_s : u"htm"_s, suggested});
    // Cancel leaves the file where it is.
    if (!chosen) {
        made.Clear();
        return temporary;
    }
    if (main.CheckExists(*chosen)) {
        TakeBack(made);
        return {};
    }
    const bool copied = CopyFilePath(temporary, *chosen);
    if (!copied)
        world.Prompts.Message({u"Could not save the file!"_s, PromptIcon::Warning});
    // Not when it has been kept under its own name.
    const DiskFacts kept = DiskFactsOf(*chosen);
    if (kept.Size < 0 || DiskFactsOf(temporary) != kept)
        TakeBack(made);
    else
        made.Clear();
    return copied ? *chosen : QString();
}

void ReportForm::TakeBack(MadeFiles &made)
{
    main.TellNotTakenBack(made.TakeAllBack());
}
