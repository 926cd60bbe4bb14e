#pragma once

#include <QByteArray>
#include <QString>

/// What stands at a path before something else is written there for a while.
class FormerFile
{
public:
    explicit FormerFile(const QString &pathOfFile);

    /// Whether a file stood there.
    bool Existed() const { return existed; }
    /// False when a file stood there whose content cannot be given back.
    bool IsKept() const { return !existed || readable; }
    /// Takes away what stands there now and gives back what it has replaced. False on any failure.
    bool GiveBack() const;

private:
    QString path;
    QByteArray content;
    bool existed;
    bool readable;
};
