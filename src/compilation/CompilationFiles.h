#pragma once

#include "text/Progress.h"

#include <QStringList>

enum class CompilationState {
    Fits,
    Empty,
    TooLarge,
    /// A figure is beyond 32 bits, or the user has stopped the check: it ends without an answer.
    Unknown,
};

/// The media files of a compilation's folder, and whether they fit on a disc.
struct CompilationCheck {
    CompilationState State = CompilationState::Empty;
    QStringList Files;
    /// Bytes that are too many, for TooLarge.
    qint64 Excess = 0;
};
/// Lists the folder with all below it; each folder is told as a text. A mebibyte of the disc is always held back.
CompilationCheck CheckCompilationFiles(const QString &folder, int disc, const Progress &progress = {});
