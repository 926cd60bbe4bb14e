#include "FuzzTarget.h"

#include "reports/WriteReport.h"

using namespace Qt::StringLiterals;

namespace
{
QByteArray Saved(const QString &path, const ReportSettings &record)
{
    const QString copy = FuzzFolder() + u"\\copy.rpt"_s;
    Require(SaveReportSettings(copy, record), "what was read can be written");
    Require(ContentOf(path).size() < 1340 || ContentOf(copy).size() == 1340, "a record has its size");
    return ContentOf(copy);
}

void TakeReport(const QByteArray &input)
{
    const QString path = PutFile(u"report.rpt"_s, input);
    ReportSettings record;
    Require(LoadReportSettings(path, record), "a file can be read");
    const QByteArray saved = Saved(path, record);
    ReportSettings again;
    LoadReportSettings(FuzzFolder() + u"\\copy.rpt"_s, again);
    Require(Saved(path, again) == saved, "a record is read as it was written");

    const Clock clock{[] { return QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5)); }, {}, {}};
    const QString report = FuzzFolder() + u"\\report.htm"_s;
    Require(WriteWholeReport(report, {u"z:\\nowhere\\a.mp3"_s, path}, record, Progress(), clock),
            "a report is written");
    Require(ContentOf(report).size() < 64 * 1024, "a report of two rows is short");
    Require(ContentOf(path) == input, "the settings file stays");
}

const FuzzTarget target("rpt", TakeReport);
} // namespace
