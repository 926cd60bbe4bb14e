#include "session/Toolbar.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>
#include <qdrawutil.h>

Toolbar::Toolbar(QWidget *parent) : QToolBar(parent)
{
    setMovable(false);
    setIconSize({24, 24});
}

QToolButton *Toolbar::AddButton(QAction *action)
{
    auto *button = new QToolButton(this);
    button->setIcon(action->icon());
    button->setToolTip(action->toolTip());
    button->setAccessibleName(action->text().remove(u'&').remove(u'.'));
    button->setIconSize(iconSize());
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    addWidget(button);
    return button;
}

void Toolbar::SetFlat(bool flat)
{
    for (auto *button : findChildren<QToolButton *>())
        button->setAutoRaise(flat);
}

void Toolbar::SetRaised(bool raisedBar)
{
    raised = raisedBar;
    update();
}

void Toolbar::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    dragging = true;
    setCursor(Qt::SizeAllCursor);
}

void Toolbar::mouseMoveEvent(QMouseEvent *event)
{
    if (dragging)
        Q_EMIT Dragged(event->globalPosition().toPoint());
}

void Toolbar::mouseReleaseEvent(QMouseEvent *event)
{
    unsetCursor();
    dragging = false;
    if (event->button() == Qt::RightButton)
        Q_EMIT MenuRequested(event->globalPosition().toPoint());
}

void Toolbar::contextMenuEvent(QContextMenuEvent *event)
{
    if (event->reason() == QContextMenuEvent::Keyboard)
        Q_EMIT MenuRequested(mapToGlobal(rect().bottomLeft()));
}

void Toolbar::paintEvent(QPaintEvent *event)
{
    QToolBar::paintEvent(event);
    if (!raised)
        return;
    QPainter painter(this);
    qDrawShadePanel(&painter, rect(), palette());
}
