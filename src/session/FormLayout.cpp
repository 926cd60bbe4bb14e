#include "session/FormLayout.h"

#include <algorithm>

namespace
{
qint64 SharedArea(const QRect &place, const QRect &area)
{
    const QRect shared = place & area;
    return qint64(shared.width()) * shared.height();
}
} // namespace

FormLayout LayOutForm(QSize client, int toolbarHeight, int statusHeight, bool toolbarAtTop)
{
    const int width = client.width();
    const int gridHeight = client.height() - toolbarHeight - statusHeight;
    const int gridTop = toolbarAtTop ? toolbarHeight : 0;
    const int toolbarTop = toolbarAtTop ? 0 : client.height() - statusHeight - toolbarHeight;
    FormLayout layout;
    layout.Toolbar = {0, toolbarTop, width, toolbarHeight};
    layout.StatusBar = {0, client.height() - statusHeight, width, statusHeight};
    if (width > 0 && gridHeight > 0)
        layout.Grid = {0, gridTop, width, gridHeight};
    return layout;
}

QPoint PlaceDialog(const QRect &main, QSize dialog, QSize screen)
{
    const int mainRight = main.left() + main.width();
    const int mainBottom = main.top() + main.height();
    const bool small = main.width() <= screen.width() * 2 / 5 && main.height() <= screen.height() * 5 / 6;
    const bool fitsLeft = main.left() >= dialog.width();
    const bool fitsRight = mainRight + dialog.width() <= screen.width();
    if (small && (fitsLeft || fitsRight)) {
        const int left = fitsLeft ? main.left() - dialog.width() : mainRight;
        return {left, mainBottom > screen.height() ? main.top() : mainBottom - dialog.height()};
    }
    return {main.left() + (main.width() - dialog.width()) / 2, main.top() + (main.height() - dialog.height()) / 2};
}

QRect BroughtInside(QRect place, const QRect &area)
{
    place.setSize(place.size().boundedTo(area.size()));
    const QPoint furthest = area.bottomRight() - place.bottomRight() + place.topLeft();
    place.moveTo(std::clamp(place.left(), area.left(), furthest.x()),
                 std::clamp(place.top(), area.top(), furthest.y()));
    return place;
}

QRect BroughtInsideOneOf(const QRect &place, const QList<QRect> &areas)
{
    qint64 covered = 0;
    for (const QRect &area : areas)
        covered += SharedArea(place, area);
    if (covered == SharedArea(place, place))
        return place;
    return BroughtInside(place, *std::max_element(areas.begin(), areas.end(), [&](const QRect &a, const QRect &b) {
                             return SharedArea(place, a) < SharedArea(place, b);
                         }));
}
