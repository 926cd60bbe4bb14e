#pragma once

#include "media/MP3CommentList.h"
#include "media/MP3ImageList.h"

#include <QStringList>

/// What an update would write: the fields of the tags whose boxes are ticked.
struct TagFields {
    bool HasID3v1 = false;
    bool HasID3v2 = false;
    QStringList Texts{};
    QList<MP3Comment> Comments{};
    QList<MP3Image> Images{};

    bool operator==(const TagFields &other) const = default;
};
