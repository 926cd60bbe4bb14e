#pragma once

#include <QWidget>

/// Shows the hourglass over a widget while it lives.
class Hourglass
{
public:
    explicit Hourglass(QWidget *pointedAt) : widget(pointedAt) { widget->setCursor(Qt::WaitCursor); }
    ~Hourglass() { widget->unsetCursor(); }
    Hourglass(const Hourglass &) = delete;
    Hourglass &operator=(const Hourglass &) = delete;

private:
    QWidget *widget;
};
