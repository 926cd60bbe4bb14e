#pragma once

#include <QString>

/// What to do with each attribute of a file: "SET", "CLR", or empty to leave it as it is.
struct AttributeRequests {
    QString Normal{};
    QString ReadOnly{};
    QString Archive{};
    QString System{};
    QString Hidden{};
};

/// True when done; false, and nothing raised, when the file is missing or cannot be changed.
bool SetAttributes(const QString &path, const AttributeRequests &requests);
