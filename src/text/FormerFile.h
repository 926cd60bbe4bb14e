#pragma once

#include "platform/WayBack.h"

#include <QByteArray>
#include <QString>

/// What stands at a path before something else is written there for a while.
class FormerFile
{
public:
    explicit FormerFile(const QString &pathOfFile);

    /// Lets the next start give it back should the process be killed before GiveBack or Forget. False when that cannot
    /// be noted.
    bool Note();
    /// What has been written is this file; another one that stands there at the next start stays.
    void NoteMade(const DiskFacts &made) { wayBack.NoteMade(made); }
    /// What has been written stays.
    void Forget() { wayBack.Drop(); }
    /// It cannot be given back now: what is noted is tried again.
    void Abandon() { wayBack.Abandon(); }

    /// Whether a file stood there.
    bool Existed() const { return existed; }
    /// False when something stood there whose content cannot be given back.
    bool IsKept() const { return !existed || readable; }
    /// Takes away what stands there now and gives back what it has replaced. False on any failure; what is noted is
    /// then tried again.
    bool GiveBack();

private:
    QString path;
    QByteArray content;
    WayBack wayBack;
    bool existed;
    bool readable;
};
