#include "platform/HostSettings.h"

#include <QSettings>

using namespace Qt::StringLiterals;

std::unique_ptr<QSettings> OpenSettings(const QString &applicationName)
{
    return std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope, u"Vantrel"_s, applicationName);
}
