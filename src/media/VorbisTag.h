#pragma once

#include <QString>

/// The comments of an Ogg Vorbis file.
struct VorbisTag {
    QString Title;
    QString Artist;
    QString Album;
    QString Genre;
    QString Date;
    QString Comment;
    qint16 TrackNumber = 0;
    QString EncodedUsing;
    /// Why the last reading failed; else empty.
    QString ErrorMessage;
};

/// Fills the tag anew; true when at least one field was found, else ErrorMessage tells why. Only a comment header
/// whose vendor text has 29 or 32 bytes is seen, and only within the first 2048 bytes of a file of at least 4096; it
/// must end within 2048 bytes. Keys count in upper case alone. With FullData, what is not found so comes from TagLib.
bool ReadVorbisTag(const QString &path, VorbisTag &tag);
