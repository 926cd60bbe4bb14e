#include "platform/Names.h"

#include "platform/Files.h"

#include <QChar>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>
#include <vector>

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

/// FoldedUnit, to be inlined here.
inline char16_t Folded(char16_t unit)
{
    return unit < 0x80 ? AsciiFolds[unit] : static_cast<char16_t>(QChar::toCaseFolded(static_cast<char32_t>(unit)));
}

constexpr std::ptrdiff_t BlockUnits = 4;

/// Four code units with their case folded, as the memory holds them. Nearly all are ASCII, and then folded at once.
quint64 FoldedBlock(const char16_t *units)
{
    constexpr quint64 each = 0x0001000100010001U;
    quint64 block = 0;
    std::memcpy(&block, units, sizeof block);
    if ((block & each * 0xFF80U) == 0) {
        const quint64 fromA = block + each * (0x80U - 'A');
        const quint64 behindZ = block + each * (0x80U - 'Z' - 1);
        return block | (fromA & ~behindZ & each * 0x80U) >> 2;
    }
    std::array<char16_t, BlockUnits> folded;
    std::transform(units, units + BlockUnits, folded.begin(), Folded);
    std::memcpy(&block, folded.data(), sizeof block);
    return block;
}

bool HasWildcard(QStringView mask)
{
    return mask.contains(u'*') || mask.contains(u'?');
}

/// Whether a name has an ending; from the end on, where names differ sooner.
bool EndsFolded(QStringView name, QStringView ending)
{
    return name.size() >= ending.size() &&
           std::equal(ending.rbegin(), ending.rend(), name.rbegin(),
                      [](QChar a, QChar b) { return Folded(a.unicode()) == Folded(b.unicode()); });
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
        } else if (m < mask.size() && (mask[m] == u'?' || Folded(mask[m].unicode()) == Folded(name[n].unicode()))) {
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
    return Folded(unit);
}

quint64 FoldedPiece(QStringView text, qsizetype from)
{
    quint64 piece = 0;
    for (qsizetype i = from; i < from + 4; ++i)
        piece = piece << 16 | (i < text.size() ? Folded(text[i].unicode()) : 0);
    return piece;
}

QString FoldedName(QStringView name)
{
    QString folded = name.toString();
    for (QChar &unit : folded)
        unit = QChar(FoldedUnit(unit.unicode()));
    return folded;
}

quint64 FoldedHash(QStringView name)
{
    quint64 hash = 14695981039346656037U;
    const char16_t *unit = name.utf16();
    const char16_t *const end = unit + name.size();
    for (; end - unit >= BlockUnits; unit += BlockUnits)
        hash = (hash ^ FoldedBlock(unit)) * 1099511628211U;
    std::array<char16_t, BlockUnits> rest{};
    std::copy(unit, end, rest.begin());
    return (hash ^ FoldedBlock(rest.data())) * 1099511628211U;
}

bool NameBefore(QStringView left, QStringView right)
{
    const char16_t *l = left.utf16();
    const char16_t *r = right.utf16();
    const qsizetype common = std::min(left.size(), right.size());
    qsizetype i = 0;
    // Names of one folder often start alike.
    while (i + 4 <= common && std::memcmp(l + i, r + i, 4 * sizeof *l) == 0)
        i += 4;
    for (; i < common; ++i) {
        if (l[i] == r[i])
            continue;
        const char16_t foldedLeft = Folded(l[i]);
        const char16_t foldedRight = Folded(r[i]);
        if (foldedLeft != foldedRight)
            return foldedLeft < foldedRight;
    }
    if (left.size() != right.size())
        return left.size() < right.size();
    return std::lexicographical_compare(l, l + common, r, r + common);
}

bool IsSameName(QStringView left, QStringView right)
{
    return left.size() == right.size() && EndsFolded(left, right);
}

void SortNames(QStringList &names)
{
    // Numbers are compared sooner than texts, and mostly tell already.
    std::vector<std::pair<quint64, QString>> keyed;
    keyed.reserve(static_cast<std::size_t>(names.size()));
    for (QString &name : names)
        keyed.emplace_back(FoldedPiece(name, 0), std::move(name));
    std::sort(keyed.begin(), keyed.end(), [](const auto &a, const auto &b) {
        return a.first != b.first ? a.first < b.first : NameBefore(a.second, b.second);
    });
    std::transform(keyed.begin(), keyed.end(), names.begin(), [](auto &each) { return std::move(each.second); });
}

NameMask::NameMask(QStringView mask) : text(mask)
{
    // "*.*" is every name on Windows, also one without a dot.
    if (mask == u"*.*"_s)
        kind = All;
    else if (mask.startsWith(u'*') && !HasWildcard(mask.sliced(1)))
        kind = Ending;
    if (kind == Ending)
        text = mask.sliced(1);
}

bool NameMask::Matches(QStringView name) const
{
    if (kind == Ending)
        return EndsFolded(name, text);
    return kind == All || MatchesWildcards(name, text);
}

bool MatchesMask(QStringView name, QStringView mask)
{
    return NameMask(mask).Matches(name);
}
