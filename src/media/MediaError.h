#pragma once

#include <QString>

#include <stdexcept>

/// Raised by the tag library; what() and Text() are for a person to read.
class MediaError : public std::runtime_error
{
public:
    explicit MediaError(const QString &message) : std::runtime_error(message.toStdString()), text(message) {}
    const QString &Text() const { return text; }

private:
    QString text;
};
