#pragma once

#include <QList>
#include <QRect>

// The arithmetic of windows, free of any window.

/// Where the bars and the grid stand in the client area. A hidden bar has height 0.
struct FormLayout {
    QRect Toolbar;
    QRect Grid;
    QRect StatusBar;
};
/// The grid takes what the bars leave; it is empty when nothing is left, and then keeps its place.
FormLayout LayOutForm(QSize client, int toolbarHeight, int statusHeight, bool toolbarAtTop);

/// Where a dialog of a size opens: beside a small main window, else centred over it. One unit throughout.
QPoint PlaceDialog(const QRect &main, QSize dialog, QSize screen);

/// A place, moved and if need be made smaller so that it lies in the area whole.
QRect BroughtInside(QRect place, const QRect &area);

/// A place that the areas do not cover whole, brought inside the one that holds most of it, else the first one.
QRect BroughtInsideOneOf(const QRect &place, const QList<QRect> &areas);
