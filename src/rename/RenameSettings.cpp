#include "rename/RenameSettings.h"

#include "platform/CodePage.h"
#include "platform/Files.h"

#include <QtEndian>

using namespace Qt::StringLiterals;

namespace
{
constexpr QChar padding(0x8F);
constexpr qsizetype recordSize = 900;

QString Blanks()
{
    return QString(RenameSettings::RuleWidth, u' ');
}

/// The fields in the order of the file.
template <typename Settings, typename Field>
void VisitFields(Settings &settings, Field field)
{
    for (auto *flag : {&settings.Capitalise, &settings.Extension, &settings.Increment, &settings.IncPos})
        field(*flag);
    for (auto &text : settings.RuleFrom)
        field(text);
    for (auto &text : settings.RuleTo)
        field(text);
    for (auto &flag : settings.RuleEnabled)
        field(flag);
    field(settings.Truncat);
    field(settings.Truncval);
    field(settings.LowFilename);
    field(settings.RenID3);
}

/// Takes fields from the start of a record as far as it goes.
class RecordReader
{
public:
    explicit RecordReader(QByteArray record) : bytes(std::move(record)) {}

    template <typename Number>
    void operator()(Number &number)
    {
        const QByteArray part = Take(sizeof number);
        if (!part.isEmpty())
            number = qFromLittleEndian<Number>(part.constData());
    }
    void operator()(QString &slot)
    {
        const QByteArray part = Take(RenameSettings::RuleWidth);
        if (!part.isEmpty())
            slot = DecodeRecordText(part);
    }

private:
    /// Empty when the record has no such part.
    QByteArray Take(qsizetype size)
    {
        const qsizetype from = std::exchange(place, place + size);
        return place <= bytes.size() ? bytes.mid(from, size) : QByteArray();
    }

    QByteArray bytes;
    qsizetype place = 0;
};

class RecordWriter
{
public:
    QByteArray Bytes;
    /// Every text could be held.
    bool Whole = true;

    template <typename Number>
    void operator()(const Number &number)
    {
        const Number stored = qToLittleEndian(number);
        Bytes.append(reinterpret_cast<const char *>(&stored), sizeof stored);
    }
    void operator()(const QString &slot)
    {
        const QByteArray part = EncodeRecordText(slot);
        Whole = Whole && part.size() == RenameSettings::RuleWidth && DecodeRecordText(part) == slot;
        Bytes.append(part);
    }
};

QString Quoted(const QString &text)
{
    return u'\'' + text + u'\'';
}

QString SummaryText(const RenameRule &rule)
{
    if (rule.From.isEmpty())
        return Quoted(rule.To) + u" will be added to the end of the filename."_s;
    if (rule.To.isEmpty())
        return Quoted(rule.From) + u" will be removed from the filename."_s;
    return Quoted(rule.From) + u" in the filename will be replaced with "_s + Quoted(rule.To) + u'.';
}
} // namespace

RenameSettings::RuleTexts RenameSettings::TextsWithFirst(const QString &first)
{
    RuleTexts texts;
    texts.fill(Blanks());
    texts.front() = PadRuleText(first, RuleWidth);
    return texts;
}

void RestoreDefaultRenameSettings(RenameSettings &settings)
{
    settings = {};
}

QString PadRuleText(const QString &text, int width)
{
    return text.leftJustified(width, padding);
}

QString UnpadRuleText(const QString &slot)
{
    return slot.contains(padding) ? QString(slot).remove(padding) : QString();
}

RenameRule RuleOf(const RenameSettings &settings, int slot)
{
    const auto place = static_cast<std::size_t>(slot);
    return {UnpadRuleText(settings.RuleFrom[place]), UnpadRuleText(settings.RuleTo[place])};
}

void SetRule(RenameSettings &settings, int slot, const RenameRule &rule)
{
    const auto place = static_cast<std::size_t>(slot);
    settings.RuleFrom[place] = PadRuleText(rule.From, RenameSettings::RuleWidth);
    settings.RuleTo[place] = PadRuleText(rule.To, RenameSettings::RuleWidth);
}

void RemoveSlot(RenameSettings &settings, int slot)
{
    const auto moveUp = [slot](auto &texts, const auto &blank) {
        std::move(texts.begin() + slot + 1, texts.end(), texts.begin() + slot);
        texts.back() = blank;
    };
    moveUp(settings.RuleFrom, Blanks());
    moveUp(settings.RuleTo, Blanks());
    moveUp(settings.RuleEnabled, flagClear);
}

QString RuleText(const RenameRule &rule)
{
    if (rule.From.isEmpty())
        return u"Add "_s + Quoted(rule.To);
    if (rule.To.isEmpty())
        return u"Remove "_s + Quoted(rule.From);
    return u"Replace "_s + Quoted(rule.From) + u" with "_s + Quoted(rule.To);
}

std::vector<std::pair<QString, QString>> SummaryOf(const RenameSettings &settings)
{
    std::vector<std::pair<QString, QString>> steps;
    const auto add = [&steps](bool holds, const QString &text) {
        if (holds)
            steps.emplace_back(QString::number(steps.size() + 1), text);
    };
    add(IsSet(settings.Extension), u"The extension will be made lower case."_s);
    add(IsSet(settings.RenID3), u"The filename will be created from ID3v1/2 Data."_s);
    for (int slot = 0; slot < RenameSettings::Slots; ++slot) {
        const RenameRule rule = RuleOf(settings, slot);
        add(IsSet(settings.RuleEnabled[static_cast<std::size_t>(slot)]) && rule.From != rule.To, SummaryText(rule));
    }
    add(IsSet(settings.Capitalise), u"Words will be formatted to start with a capital letter."_s);
    add(IsSet(settings.LowFilename), u"The filename will be made lowercase."_s);
    add(IsSet(settings.Increment),
        u"Numbers will be added to the %1 of each file."_s.arg(IsSet(settings.IncPos) ? u"start"_s : u"end"_s));
    add(IsSet(settings.Truncat),
        u"The filename will be truncated to "_s + QString::number(settings.Truncval) + u" characters.");
    add(true, u"The filename will be validated and rebuilt"_s);
    steps.emplace_back(u">"_s, u"The file will be renamed and the change logged."_s);
    return steps;
}

bool ReadRenameSettings(const QString &path, RenameSettings &settings)
{
    InputFile file;
    std::array<unsigned char, recordSize> buffer{};
    const std::ptrdiff_t count = file.Open(path) ? file.ReadAt(0, buffer) : -1;
    if (count < 0)
        return false;
    VisitFields(settings, RecordReader(QByteArray(reinterpret_cast<const char *>(buffer.data()), count)));
    return true;
}

bool WriteRenameSettings(const QString &path, const RenameSettings &settings)
{
    RecordWriter writer;
    VisitFields(settings, std::ref(writer));
    return writer.Whole && WriteWholeFile(path, writer.Bytes);
}
