#pragma once

#include <QByteArray>
#include <QIcon>

/// The content of an icon file (".ico") of 16, 32, 48 and 256 pixels with transparency, as every Windows shows it.
/// Empty for no picture.
QByteArray IconFileContent(const QIcon &picture);

/// A picture from a file, in all sizes that it holds. IsIcon says that the file is one that Windows shows as it stands.
struct DiscPicture {
    QIcon Picture;
    bool IsIcon = false;
};
DiscPicture ReadDiscPicture(const QString &path);
