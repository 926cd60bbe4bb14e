#include "FuzzTarget.h"

#include <QDirIterator>
#include <QFile>

#include <cstdio>

/// Gives each target every file below its own folder of each folder in the arguments.
int main(int count, char **arguments)
{
    int inputs = 0;
    for (int i = 1; i < count; ++i) {
        for (auto target = FuzzTarget::All().cbegin(); target != FuzzTarget::All().cend(); ++target) {
            QDirIterator files(QString::fromLocal8Bit(arguments[i]) + u'/' + QString::fromLatin1(target.key()),
                               QDir::Files);
            while (files.hasNext()) {
                QFile file(files.next());
                Require(file.open(QIODevice::ReadOnly), "an input can be read");
                // What fails is told last.
                std::printf("%s\n", qPrintable(file.fileName()));
                std::fflush(stdout);
                target.value()(file.readAll());
                ++inputs;
            }
        }
    }
    std::printf("%d inputs\n", inputs);
    return inputs > 0 ? 0 : 1;
}
