#pragma once

#include "platform/Host.h"
#include "reports/ReportSettings.h"
#include "text/Progress.h"

#include <QStringList>

/// Writes a report of the files, in their order, whole or not at all: rows go to a file beside the target as they come,
/// so that memory does not grow with them. Title and description lose the blanks around them, and the ones of the
/// default record become empty, in the caller's record. False when it could not be written, or the user has stopped the
/// run; an older file of that name then stays.
bool WriteWholeReport(const QString &fileName, const QStringList &files, ReportSettings &settings,
                      const Progress &progress, const Clock &clock);
/// The same; true when something stands at the target afterwards, also when that is an older file that could not be
/// replaced, or that stays because the user has stopped the run.
bool WriteReport(const QString &fileName, const QStringList &files, ReportSettings &settings, const Progress &progress,
                 const Clock &clock);
