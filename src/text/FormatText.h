#pragma once

#include <QString>

/// A whole number with the system's thousands separator.
QString GroupedDigits(qint64 number);
/// So many things of a kind, which takes an "s": "1 file", "1,204 files".
QString Counted(qint64 number, const QString &kind);
/// A size in bytes as "n Bytes" up to 16,384, "n Kb" up to 16,777,216 and "n Mb" beyond, rounded to whole numbers,
/// with the system's thousands separator. Empty for 1 and for negative sizes.
QString FormatFileSize(qint64 bytes);
/// Whole seconds as "m:ss" or "h:mm:ss".
QString FormatPlayTime(qint64 seconds);
/// "Yes" or "No".
QString YesNoText(bool value);
/// Proper case: the first character of each word in upper case, all others in lower case. Words end at blanks and other
/// white space, so a letter behind a bracket or hyphen stays small.
QString ProperCase(QString text);
/// The text with each run of characters of code 0 to 255 that are neither letters A to Z nor digits made one blank.
/// Blanks at the ends go before that, so a sign at an end leaves a blank there. Other scripts stay as they are.
QString CleanText(const QString &text);
