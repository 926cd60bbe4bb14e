#pragma once

#include <QWidget>

/// Holds back the repaint of a window; with unlock set, lets it go on and refreshes the window.
inline void LockWindowRedraw(QWidget *window, bool unlock)
{
    window->setUpdatesEnabled(unlock);
}
