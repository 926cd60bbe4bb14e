#pragma once

#include "platform/HostCodePage.h"

// The code pages of Windows by number, as the system's own is told by GetACP.

/// Bytes of a text in a page other than UTF-8; nothing when the page cannot hold it.
std::optional<QByteArray> EncodeInPage(unsigned page, const QString &text);
/// Text of bytes in a page; Windows-1252 for the UTF-8 page, since bytes that are valid UTF-8 never come here.
QString DecodeFromPage(unsigned page, QByteArrayView bytes);
/// The characters of a single-byte page; those of Windows-1252 for any other.
RecordPage RecordPageOf(unsigned page);
