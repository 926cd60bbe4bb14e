#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The discs that a compilation can be made for, in the order of their list.
QStringList DiscNames();
inline constexpr int UsualDisc = 6;
/// Bytes of a disc of the list; nothing for the ones whose size is beyond 32 bits.
std::optional<qint32> DiscCapacity(int index);
