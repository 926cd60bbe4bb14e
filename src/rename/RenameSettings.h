#pragma once

#include <QString>

#include <array>
#include <utility>
#include <vector>

/// A flag of a settings record: -1 is set, and every other value is clear.
using Flag = qint16;
inline constexpr Flag flagSet = -1;
inline constexpr Flag flagClear = 0;

inline bool IsSet(Flag flag)
{
    return flag == flagSet;
}
inline Flag FlagOf(bool on)
{
    return on ? flagSet : flagClear;
}

/// What the rename dialog is set to, and the image of a ".rps" file.
struct RenameSettings {
    /// Rules that the record has room for.
    static constexpr int Slots = 21;
    /// Rules that the dialog makes.
    static constexpr int MaxRules = 19;
    /// Characters of a rule's text with its padding.
    static constexpr int RuleWidth = 20;
    /// Characters: file systems take no longer names.
    static constexpr int MinTruncval = 8;
    static constexpr int MaxTruncval = 255;

    using RuleTexts = std::array<QString, Slots>;

    /// Capitalise each word.
    Flag Capitalise = flagSet;
    /// Make the extension lower case.
    Flag Extension = flagSet;
    /// Add sequence numbers, at the start (IncPos set) or at the end.
    Flag Increment = flagClear;
    Flag IncPos = flagSet;
    /// Slots as PadRuleText makes them; of an unused one all characters are blanks.
    RuleTexts RuleFrom = TextsWithFirst(QStringLiteral("_"));
    RuleTexts RuleTo = TextsWithFirst(QStringLiteral(" "));
    std::array<Flag, Slots> RuleEnabled{flagSet};
    /// Limit the name to Truncval characters.
    Flag Truncat = flagClear;
    qint32 Truncval = 32;
    /// Make the name lower case.
    Flag LowFilename = flagClear;
    /// Build the name from tag data.
    Flag RenID3 = flagClear;

private:
    static RuleTexts TextsWithFirst(const QString &first);
};

void RestoreDefaultRenameSettings(RenameSettings &settings);

/// The text and the padding character up to the width, so that a trailing blank stays part of it.
QString PadRuleText(const QString &text, int width);
/// The text of a slot; empty for one that holds no padding.
QString UnpadRuleText(const QString &slot);

/// Replaces From by To; with an empty To it removes From, with an empty From it adds To.
struct RenameRule {
    QString From;
    QString To;
};
RenameRule RuleOf(const RenameSettings &settings, int slot);
void SetRule(RenameSettings &settings, int slot, const RenameRule &rule);
/// Takes the rule of a slot away; those behind it move up.
void RemoveSlot(RenameSettings &settings, int slot);
/// The row of a rule in a list.
QString RuleText(const RenameRule &rule);

/// What a run will do, in its order: the number of the step and its text.
std::vector<std::pair<QString, QString>> SummaryOf(const RenameSettings &settings);

/// Reads a ".rps" file. What a file that is too short lacks stays as it was. False for a file that cannot be read.
bool ReadRenameSettings(const QString &path, RenameSettings &settings);
/// False, and an old file untouched, on any failure, and for rules that the file's code page cannot hold.
bool WriteRenameSettings(const QString &path, const RenameSettings &settings);
