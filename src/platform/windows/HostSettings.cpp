#include "platform/HostSettings.h"

#include <QSettings>

using namespace Qt::StringLiterals;

HostSettings::HostSettings(const QString &applicationName)
    : store(std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope, u"Vantrel"_s, applicationName))
{
}

HostSettings::~HostSettings() = default;

QVariant HostSettings::Value(const QString &address) const
{
    return store->value(address);
}

bool HostSettings::Store(const QMap<QString, QString> &values)
{
    for (auto value = values.begin(); value != values.end(); ++value)
        store->setValue(value.key(), *value);
    store->sync();
    return store->status() == QSettings::NoError;
}

void HostSettings::Refresh()
{
    store->sync();
}

QString HostSettings::Place() const
{
    return store->fileName();
}
