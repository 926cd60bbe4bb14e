#pragma once

#include <QApplication>
#include <QEvent>
#include <QWidget>

/// Runs the event loop until a window has been painted.
class FirstPaint : public QObject
{
public:
    static void WaitFor(QWidget &window)
    {
        FirstPaint watcher(window);
        window.update();
        while (!watcher.painted)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

private:
    explicit FirstPaint(QWidget &watched) : window(watched) { qApp->installEventFilter(this); }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && object->isWidgetType())
            painted |= static_cast<QWidget *>(object)->window() == &window;
        return false;
    }

    QWidget &window;
    bool painted = false;
};
