#pragma once

#include "platform/Host.h"
#include "reports/ReportSettings.h"
#include "text/Progress.h"

#include <QStringList>

/// What a compilation gets besides its media files.
struct CompilationPlan {
    /// Without a trailing backslash.
    QString Folder;
    QString Name;
    /// Where the browser program lies.
    QString ProgramFolder;
    bool CopyBrowser = false;
    bool CreateTable = false;
    bool CreateAutorun = false;
    bool AutoIcon = false;
    bool AutoBigList = false;
    bool AutoIndex = false;
    /// An icon file that is copied as it stands; empty for none.
    QString IconFile;
    /// The content of the icon file otherwise.
    QByteArray Icon;
};

inline const QString BrowserProgram = QStringLiteral("VTLMP3FB.exe");
inline const QString BrowserOnDisc = QStringLiteral("vtlmp3fb.exe");

/// The title of a compilation's report.
QString CompilationTitle(const QString &name, const QDateTime &now);

/// LeftBehind: it failed, and not all could be taken back; the next start tries that again.
enum class BuildResult { Done, TakenBack, LeftBehind };
struct BuildOutcome {
    BuildResult Result = BuildResult::Done;
    /// False when it was asked for and could not be saved, which fails nothing.
    bool IconSaved = true;
};
/// Adds the extra files to the folder of a compilation. The media files become relative to the folder when it gets a
/// playlist; what then lies in the folder is added
/// to the root entries, a subfolder as one. When one of the files could not be written, what the run has made is gone
/// again, and what it has replaced is back. Each stage is told as a text.
BuildOutcome BuildCompilation(const CompilationPlan &plan, QStringList &compilationFiles, QStringList &rootEntries,
                              ReportSettings &reportRecord, const Progress &progress, const Clock &clock);
