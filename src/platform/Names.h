#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

/// A code unit with its case folded; surrogates stay as they are.
char16_t FoldedUnit(char16_t unit);

/// A name with the case of each code unit folded.
QString FoldedName(QStringView name);

/// Four code units of a text with their case folded, as one number; 0 stands behind the end.
quint64 FoldedPiece(QStringView text, qsizetype from);

/// The same for all spellings of a name.
quint64 FoldedHash(QStringView name);

/// The order of names in a folder: without regard to case, ties by code unit.
bool NameBefore(QStringView left, QStringView right);

/// Whether two names differ in case at most.
bool IsSameName(QStringView left, QStringView right);

/// A mask of "*" and "?", to be matched with many names; see MatchesMask.
class NameMask
{
public:
    /// The text of the mask must outlive it.
    explicit NameMask(QStringView mask);
    bool Matches(QStringView name) const;

private:
    enum { All, Ending, Wildcards } kind = Wildcards;
    QStringView text;
};

/// Sorts the names of a folder by NameBefore.
void SortNames(QStringList &names);
