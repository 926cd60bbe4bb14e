#include "compilation/DiscCapacity.h"

#include <QList>

using namespace Qt::StringLiterals;

namespace
{
struct Disc {
    QString Name;
    std::optional<qint32> Capacity;
};

const QList<Disc> &Discs()
{
    static const QList<Disc> discs{
        {u"100Mb"_s, 104857600}, {u"200Mb"_s, 209715200}, {u"400Mb"_s, 419430400}, {u"600Mb"_s, 629145600},
        {u"640Mb"_s, 671088640}, {u"650Mb"_s, 681574400}, {u"680Mb"_s, 713031680}, {u"700Mb"_s, 734003200},
        {u"800Mb"_s, 838860800}, {u"1Gb"_s, 1073741824},  {u"2Gb"_s, {}},          {u"4Gb"_s, {}},
        {u"8Gb"_s, {}},          {u"16Gb"_s, {}},         {u"18Gb"_s, {}},         {u"24Gb"_s, 0},
    };
    return discs;
}
} // namespace

QStringList DiscNames()
{
    QStringList names;
    for (const Disc &disc : Discs())
        names.append(disc.Name);
    return names;
}

std::optional<qint32> DiscCapacity(int index)
{
    return Discs().value(index).Capacity;
}
