#include "session/Icons.h"

#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

// A library's resources are linked in only when they are named; the macro wants the global namespace.
static void InitIcons()
{
    Q_INIT_RESOURCE(icons);
}

namespace
{
/// Reads the file of a size when it is first drawn in it: most icons stand in menus that are not opened.
class IconFiles : public QIconEngine
{
public:
    explicit IconFiles(const QString &iconName) : name(iconName)
    {
        for (const int size : {16, 20, 22, 24, 32, 48, 64, 96, 128, 256}) {
            if (QFile::exists(FileOf(size)))
                sizes.append({size, size});
        }
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        File(rect.size() * painter->device()->devicePixelRatio()).paint(painter, rect, Qt::AlignCenter, mode, state);
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return File(size).pixmap(size, 1.0, mode, state);
    }
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return File(size).actualSize(size, mode, state);
    }
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override { return sizes; }
    bool isNull() override { return sizes.isEmpty(); }
    QIconEngine *clone() const override { return new IconFiles(*this); }

private:
    QString FileOf(int size) const { return u":/icons/%1-%2.png"_s.arg(name, QString::number(size)); }

    /// The smallest file that fills the size, else the largest.
    const QIcon &File(QSize wanted)
    {
        static const QIcon none;
        if (sizes.isEmpty())
            return none;
        const auto filling = std::find_if(sizes.cbegin(), sizes.cend() - 1, [&](const QSize &size) {
            return size.width() >= std::max(wanted.width(), wanted.height());
        });
        QIcon &file = files[filling->width()];
        if (file.isNull())
            file = QIcon(FileOf(filling->width()));
        return file;
    }

    QString name;
    QList<QSize> sizes;
    QHash<int, QIcon> files;
};
} // namespace

QIcon Icon(QLatin1StringView name)
{
    InitIcons();
    return QIcon(new IconFiles(name));
}
