#pragma once

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
