#pragma once

#include <QByteArray>
#include <QString>

#include <taglib/id3v2frame.h>
#include <taglib/tbytevector.h>
#include <taglib/tstring.h>

// Between Qt's texts and bytes and those of TagLib, whose wide characters are UTF-16 code units on every host.

QString FromTagLib(const TagLib::String &text);
TagLib::String ToTagLib(const QString &text);
QByteArray FromTagLib(const TagLib::ByteVector &bytes);
TagLib::ByteVector ToTagLib(const QByteArray &bytes);

/// A frame's bytes around a content, as TagLib's frames read them, whatever the version of the tag.
TagLib::ByteVector PlainFrame(const QByteArray &id, const QByteArray &content);
/// The content alone of a frame that TagLib writes.
QByteArray ContentOf(const TagLib::ID3v2::Frame &frame);
/// Latin-1 where a text fits, else UTF-16 in a 2.3 tag and UTF-8 in a 2.4 tag.
TagLib::String::Type EncodingFor(const QString &text, int version);
