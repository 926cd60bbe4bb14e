#pragma once

#include <QFile>

/// The most memory that the process has had since the last call, in megabytes.
inline double PeakMegabytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    double peak = 0;
    if (status.open(QIODevice::ReadOnly)) {
        const QByteArray text = status.readAll();
        peak = text.mid(text.indexOf("VmHWM:") + 6, 20).trimmed().split(' ').first().toDouble() / 1024;
    }
    QFile references(QStringLiteral("/proc/self/clear_refs"));
    if (references.open(QIODevice::WriteOnly))
        references.write("5");
    return peak;
}
