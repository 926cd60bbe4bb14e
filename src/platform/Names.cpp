#include "platform/Names.h"

#include "platform/Files.h"

#include <QChar>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace
{

constexpr std::array<char16_t, 128> MakeAsciiFolds()
{
    std::array<char16_t, 128> folds{};
    for (std::size_t c = 0; c < folds.size(); ++c)
        folds[c] = static_cast<char16_t>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return folds;
}

constexpr std::array<char16_t, 128> AsciiFolds = MakeAsciiFolds();

bool HasWildcard(QStringView mask)
{
    return mask.contains(u'*') || mask.contains(u'?');
}

bool EqualFolded(QStringView left, QStringView right)
{
    return left.size() == right.size() && std::equal(left.begin(), left.end(), right.begin(), [](QChar a, QChar b) {
               return a == b || FoldedUnit(a.unicode()) == FoldedUnit(b.unicode());
           });
}

/// Greedy matching: on a mismatch the last "*" takes one character more.
bool MatchesWildcards(QStringView name, QStringView mask)
{
    qsizetype n = 0;
    qsizetype m = 0;
    qsizetype starMask = -1;
    qsizetype starName = 0;
    while (n < name.size()) {
        if (m < mask.size() && mask[m] == u'*') {
            starMask = m++;
            starName = n;
        } else if (m < mask.size() &&
                   (mask[m] == u'?' || FoldedUnit(mask[m].unicode()) == FoldedUnit(name[n].unicode()))) {
            ++m;
            ++n;
        } else if (starMask >= 0) {
            m = starMask + 1;
            n = ++starName;
        } else {
            return false;
        }
    }
    while (m < mask.size() && mask[m] == u'*')
        ++m;
    return m == mask.size();
}

} // namespace

char16_t FoldedUnit(char16_t unit)
{
    if (unit < 0x80)
        return AsciiFolds[unit];
    const char32_t folded = QChar::toCaseFolded(static_cast<char32_t>(unit));
    return static_cast<char16_t>(folded);
}

QString FoldedName(QStringView name)
{
    QString folded = name.toString();
    for (QChar &unit : folded)
        unit = QChar(FoldedUnit(unit.unicode()));
    return folded;
}

bool NameBefore(QStringView left, QStringView right)
{
    const char16_t *l = left.utf16();
    const char16_t *r = right.utf16();
    const qsizetype common = std::min(left.size(), right.size());
    for (qsizetype i = 0; i < common; ++i) {
        if (l[i] == r[i])
            continue;
        const char16_t foldedLeft = FoldedUnit(l[i]);
        const char16_t foldedRight = FoldedUnit(r[i]);
        if (foldedLeft != foldedRight)
            return foldedLeft < foldedRight;
    }
    if (left.size() != right.size())
        return left.size() < right.size();
    return std::lexicographical_compare(l, l + common, r, r + common);
}

void SortNames(QStringList &names)
{
    std::sort(names.begin(), names.end(), [](const QString &a, const QString &b) { return NameBefore(a, b); });
}

bool MatchesMask(QStringView name, QStringView mask)
{
    // "*.*" is every name on Windows, also one without a dot.
    if (mask == u"*.*"_s)
        return true;
    if (mask.startsWith(u'*') && !HasWildcard(mask.sliced(1))) {
        const QStringView ending = mask.sliced(1);
        return name.size() >= ending.size() && EqualFolded(name.last(ending.size()), ending);
    }
    return MatchesWildcards(name, mask);
}
