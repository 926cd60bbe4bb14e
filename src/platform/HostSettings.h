#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

#include <memory>

class QSettings;

/// The host's per-user settings of an application, which other processes change too. An address is a section and a key,
/// "/" between them, of ASCII characters.
class HostSettings
{
public:
    explicit HostSettings(const QString &applicationName);
    ~HostSettings();
    HostSettings(const HostSettings &) = delete;
    HostSettings &operator=(const HostSettings &) = delete;

    /// As it stood at the last Store or Refresh, or when this was made.
    QVariant Value(const QString &address) const;
    /// Stores all the values or none, beside what others have stored meanwhile.
    bool Store(const QMap<QString, QString> &values);
    void Refresh();
    /// Where they are kept, for a person.
    QString Place() const;

private:
    std::unique_ptr<QSettings> store;
};
