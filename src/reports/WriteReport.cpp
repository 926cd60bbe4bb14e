#include "reports/WriteReport.h"

#include "platform/ReplacedText.h"
#include "reports/ReportLayout.h"
#include "reports/ReportRow.h"
#include "text/FileLists.h"
#include "text/FormatText.h"

#include <cmath>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
/// The sum, or nothing when it is beyond 32 bits.
std::optional<qint32> Sum(double one, double other)
{
    using Limits = std::numeric_limits<qint32>;
    // The rounding mode of a process is halves to even.
    const double sum = std::nearbyint(one + other);
    return sum < Limits::min() || sum > Limits::max() ? std::nullopt : std::optional(static_cast<qint32>(sum));
}

/// The figures of the summary. A row that has no length counts with that of the MP3 file before it.
class ReportTotals
{
public:
    void Add(const std::vector<ReportColumn> &columns, const ReportRow &row)
    {
        if (row.IsMissing())
            timeMark = sizeMark = u">"_s;
        for (const ReportColumn column : columns) {
            if (column == ReportColumn::Time)
                seconds = Sum(seconds, row.SongLength()).value_or(seconds);
            if (row.SongLength() == 0)
                timeMark = u">"_s;
            if (column == ReportColumn::Size)
                bytes = Sum(bytes, static_cast<double>(row.FileLength())).value_or(bytes);
        }
    }

    QString Text(qsizetype items, const QDateTime &now) const
    {
        QString text = QString::number(items) + u" Items";
        if (seconds != 0)
            text += u", Total Playing Time " + timeMark + FormatPlayTime(seconds);
        if (bytes != 0)
            text += u", [" + sizeMark + FormatFileSize(bytes) + u']';
        return text + now.toString(u" 'page created' HH:mm:ss [MM-dd-yyyy]"_s);
    }

private:
    qint32 seconds = 0;
    qint32 bytes = 0;
    /// Something is not counted.
    QString timeMark;
    QString sizeMark;
};

/// Prints lines into the file, a hundred or so at once.
class Printer
{
public:
    explicit Printer(ReplacedText &target) : file(target) {}

    /// What comes next, up to Print.
    QString Buffer;

    void Print()
    {
        Buffer += "\r\n"_L1;
        constexpr qsizetype enough = 1 << 15;
        if (Buffer.size() > enough)
            Flush();
    }
    void Flush()
    {
        file.Append(Buffer);
        Buffer.resize(0);
    }

private:
    ReplacedText &file;
};

void DropStockText(auto &field, QStringView stockText)
{
    const QString text = field.Trimmed();
    field = text == stockText ? QString() : text;
}

/// False when the user has stopped the run.
template <typename Layout>
bool PrintReport(Printer &printer, const QStringList &files, const ReportSettings &settings, const Progress &progress,
                 const Clock &clock)
{
    const std::vector<ReportColumn> columns = SelectedColumns(settings);
    Layout layout(settings, columns);
    ReportRow row(columns, settings.SaveRel ? FindCommonRoot(files) : QString());
    ReportTotals totals;
    layout.Head(printer.Buffer);
    printer.Print();
    layout.TableHead(printer.Buffer);
    int number = 0;
    for (const QString &file : files) {
        progress.SetValue(++number);
        if (progress.Stopped())
            return false;
        row.Read(file);
        layout.Row(printer.Buffer, row);
        totals.Add(columns, row);
        printer.Print();
    }
    if (settings.Summary)
        layout.Summary(printer.Buffer, totals.Text(files.size(), clock.Now()));
    layout.End(printer.Buffer);
    printer.Print();
    printer.Flush();
    return true;
}
} // namespace

bool WriteWholeReport(const QString &fileName, const QStringList &files, ReportSettings &settings,
                      const Progress &progress, const Clock &clock)
{
    DropStockText(settings.Title, u"Report Title");
    DropStockText(settings.Description, u"Report Description");
    ReplacedText file(settings.IsText() ? ReplacedText::Kind::Plain : ReplacedText::Kind::Page);
    if (!file.Begin(fileName))
        return false;
    if (!files.isEmpty())
        progress.SetLimits(0, static_cast<int>(files.size()));
    Printer printer(file);
    const bool whole = settings.IsText() ? PrintReport<TextLayout>(printer, files, settings, progress, clock)
                                         : PrintReport<PageLayout>(printer, files, settings, progress, clock);
    const bool written = whole && file.Commit();
    progress.SetValue(0);
    return written;
}

bool WriteReport(const QString &fileName, const QStringList &files, ReportSettings &settings, const Progress &progress,
                 const Clock &clock)
{
    WriteWholeReport(fileName, files, settings, progress, clock);
    return PathExists(fileName);
}
