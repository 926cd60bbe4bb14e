#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

/// A code unit with its case folded; surrogates stay as they are.
char16_t FoldedUnit(char16_t unit);

/// A name with the case of each code unit folded.
QString FoldedName(QStringView name);

/// The order of names in a folder: without regard to case, ties by code unit.
bool NameBefore(QStringView left, QStringView right);

/// Sorts the names of a folder by NameBefore.
void SortNames(QStringList &names);
