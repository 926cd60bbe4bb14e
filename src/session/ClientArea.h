#pragma once

#include <QWidget>

#include <functional>

/// What lies between menu bar and frame: holds bars and grid, and asks for their places whenever its size changes.
class ClientArea : public QWidget
{
public:
    using QWidget::QWidget;
    std::function<void()> Resized;

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        QWidget::resizeEvent(event);
        if (Resized)
            Resized();
    }
};
