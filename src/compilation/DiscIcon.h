#pragma once

#include <QByteArray>
#include <QImage>

/// The content of an icon file (".ico") of 16, 32, 48 and 256 pixels with transparency, as every Windows shows it.
/// Empty for no picture.
QByteArray IconFileContent(const QImage &picture);
