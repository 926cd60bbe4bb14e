#pragma once

#include <QStringList>
#include <QStringView>

/// A code unit with its case folded; surrogates stay as they are.
char16_t FoldedUnit(char16_t unit);

/// The order of names in a folder: without regard to case, ties by code unit.
bool NameBefore(QStringView left, QStringView right);

/// Sorts the names of a folder by NameBefore.
void SortNames(QStringList &names);
