#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <optional>

inline constexpr QByteArrayView Utf8Mark("\xEF\xBB\xBF");

/// The character of each byte of a single-byte code page, no two alike.
using RecordPage = std::array<char16_t, 256>;

RecordPage Windows1252Page();
QString DecodeSingleBytes(QByteArrayView bytes, const RecordPage &page);

/// The host's code page for text files: nothing when it cannot hold the text so that DecodeText gives it back.
std::optional<QByteArray> EncodeInHostPage(const QString &text);
/// Whether that page is UTF-8.
bool HostPageIsUtf8();
/// Text of bytes that are no UTF-8.
QString DecodeFromHostPage(QByteArrayView bytes);
/// The host's page for fixed records.
RecordPage HostRecordPage();
