#pragma once

#include <QString>

/// The name under which all settings are stored: the product's title followed by the major and the minor version.
QString ApplicationName();
