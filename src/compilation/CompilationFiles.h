#pragma once

#include <QStringList>

#include <functional>

enum class CompilationState {
    Fits,
    Empty,
    TooLarge,
    /// A figure is beyond 32 bits: the check ends without an answer.
    Unknown,
};

/// The media files of a compilation's folder, and whether they fit on a disc.
struct CompilationCheck {
    CompilationState State = CompilationState::Empty;
    QStringList Files;
    /// Bytes that are too many, for TooLarge.
    qint64 Excess = 0;
};
/// Lists the folder with all below it; each folder is told to onFolder. A mebibyte of the disc is always held back.
CompilationCheck CheckCompilationFiles(const QString &folder, int disc,
                                       const std::function<void(const QString &folder)> &onFolder = {});
