#pragma once

#include <QString>

#include <memory>

class QSettings;

/// The host's per-user settings of an application.
std::unique_ptr<QSettings> OpenSettings(const QString &applicationName);
