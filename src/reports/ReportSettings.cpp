#include "reports/ReportSettings.h"

#include "platform/CodePage.h"
#include "platform/Files.h"

#include <QtEndian>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace
{
constexpr qsizetype RecordBytes = 1340;
constexpr qint16 On = -1;

/// Hands each field to a codec, in the order of the file.
template <typename Record, typename Codec>
void PassFields(Record &record, Codec codec)
{
    const auto passEach = [&codec](auto &fields) {
        for (auto &field : fields)
            codec.Pass(field);
    };
    codec.Pass(record.RepType);
    codec.Pass(record.Title);
    codec.Pass(record.Description);
    codec.Pass(record.Summary);
    codec.Pass(record.ColumnHeaders);
    codec.Pass(record.SaveRel);
    codec.Pass(record.ValWidth);
    codec.Pass(record.ValSpacing);
    codec.Pass(record.ValPadding);
    codec.Pass(record.ValBorder);
    passEach(record.ColumnOrder);
    passEach(record.ColumnChecked);
    codec.Pass(record.Delimiter);
    codec.Pass(record.SpaceAligned);
    codec.Pass(record.TabDelimited);
    codec.Pass(record.CommaDelimited);
    codec.Pass(record.CustomDelimited);
    codec.Pass(record.FontName);
    codec.Pass(record.FontSizeIndex);
    codec.Pass(record.ColorTable);
}

struct Encoder {
    QByteArray &Bytes;

    void Pass(qint16 number)
    {
        Bytes.resize(Bytes.size() + 2);
        qToLittleEndian(number, Bytes.end() - 2);
    }
    void Pass(bool flag) { Pass(flag ? On : qint16(0)); }
    template <qsizetype Length>
    void Pass(const FixedText<Length> &text)
    {
        Bytes += EncodeRecordText(text.Whole());
    }
};

struct Decoder {
    const QByteArray &Bytes;
    qsizetype Place = 0;

    QByteArray Take(qsizetype count)
    {
        Place += count;
        return Bytes.mid(Place - count, count);
    }
    void Pass(qint16 &number) { number = qFromLittleEndian<qint16>(Take(2).leftJustified(2, '\0').constData()); }
    void Pass(bool &flag)
    {
        qint16 number = 0;
        Pass(number);
        flag = number == On;
    }
    template <qsizetype Length>
    void Pass(FixedText<Length> &text)
    {
        text = DecodeRecordText(Take(Length));
    }
};
} // namespace

ReportSettings DefaultReportSettings()
{
    ReportSettings record;
    record.Title = u"Report Title"_s;
    record.Description = u"Report Description"_s;
    record.Summary = record.ColumnHeaders = record.SaveRel = record.ColorTable = true;
    record.ValWidth = u"Auto"_s;
    record.ValBorder = u"0"_s;
    record.ValSpacing = u"1"_s;
    record.ValPadding = u"3"_s;
    record.FontName = u"Verdana"_s;
    record.SpaceAligned = true;
    record.Delimiter = u":"_s;
    std::iota(record.ColumnOrder.begin(), record.ColumnOrder.end(), qint16(1));
    record.ColumnChecked.fill(true);
    record.ColumnChecked[1] = false;
    return record;
}

bool LoadReportSettings(const QString &path, ReportSettings &record)
{
    InputFile file;
    std::array<unsigned char, RecordBytes> buffer;
    const std::ptrdiff_t count = file.Open(path) ? file.ReadAt(0, buffer) : -1;
    if (count < 0)
        return false;
    PassFields(record, Decoder{QByteArray(reinterpret_cast<const char *>(buffer.data()), count)});
    return true;
}

bool SaveReportSettings(const QString &path, const ReportSettings &record)
{
    QByteArray content;
    if (ExamineFile(path).Exists && !ReadWholeFile(path, content))
        return false;
    QByteArray bytes;
    PassFields(record, Encoder{bytes});
    return WriteWholeFile(path, content.replace(0, RecordBytes, bytes));
}
