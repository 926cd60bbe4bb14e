#include "platform/HostSettings.h"

#include <QSettings>
#include <QStandardPaths>

std::unique_ptr<QSettings> OpenSettings(const QString &applicationName)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return std::make_unique<QSettings>(QString(folder + u'/' + applicationName + u".ini"), QSettings::IniFormat);
}
