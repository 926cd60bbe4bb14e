#include "session/Icons.h"

#include <QFile>

using namespace Qt::StringLiterals;

// A library's resources are linked in only when they are named; the macro wants the global namespace.
static void InitIcons()
{
    Q_INIT_RESOURCE(icons);
}

QIcon Icon(QLatin1StringView name)
{
    InitIcons();
    QIcon icon;
    for (const int size : {16, 20, 22, 24, 32, 48, 64, 96, 128, 256}) {
        const QString file = u":/icons/%1-%2.png"_s.arg(name, QString::number(size));
        if (QFile::exists(file))
            icon.addFile(file, {size, size});
    }
    return icon;
}
