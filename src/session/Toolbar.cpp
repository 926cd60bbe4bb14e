#include "session/Toolbar.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>
#include <QWidgetAction>
#include <qdrawutil.h>

#include <algorithm>

Toolbar::Toolbar(QWidget *parent) : QToolBar(parent)
{
    setMovable(false);
    setIconSize({24, 24});
}

QToolButton *Toolbar::AddButton(QAction *action)
{
    auto *button = new QToolButton(this);
    button->setObjectName(action->objectName());
    button->setIcon(action->icon());
    button->setToolTip(action->toolTip());
    button->setAccessibleName(action->text().remove(u'&').remove(u'.'));
    button->setIconSize(iconSize());
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    items.append(static_cast<QWidgetAction *>(addWidget(button)));
    defaultLayout = Layout();
    return button;
}

void Toolbar::AddGap()
{
    addSeparator();
    defaultLayout = Layout();
}

QList<QToolButton *> Toolbar::Buttons() const
{
    QList<QToolButton *> buttons;
    for (const QWidgetAction *item : items)
        buttons.append(static_cast<QToolButton *>(item->defaultWidget()));
    return buttons;
}

QString Toolbar::Layout() const
{
    QStringList names;
    for (const QAction *action : actions())
        names.append(action->isSeparator() ? Gap()
                                           : static_cast<const QWidgetAction *>(action)->defaultWidget()->objectName());
    return names.join(u',');
}

bool Toolbar::SetLayout(const QString &layout)
{
    QStringList names;
    for (const QString &name : layout.split(u',')) {
        if (name == Gap() || (ItemNamed(name) != nullptr && !names.contains(name)))
            names.append(name);
    }
    if (names.count(Gap()) == names.size())
        return false;
    for (QAction *action : actions()) {
        removeAction(action);
        if (action->isSeparator())
            delete action;
    }
    for (const QString &name : std::as_const(names)) {
        if (name == Gap())
            addSeparator();
        else
            addAction(ItemNamed(name));
    }
    return true;
}

QWidgetAction *Toolbar::ItemNamed(const QString &name) const
{
    const auto found = std::find_if(items.begin(), items.end(), [&](const QWidgetAction *item) {
        return item->defaultWidget()->objectName() == name;
    });
    return found == items.end() ? nullptr : *found;
}

void Toolbar::SetFlat(bool flat)
{
    for (QToolButton *button : Buttons())
        button->setAutoRaise(flat);
}

void Toolbar::SetRaised(bool raisedBar)
{
    raised = raisedBar;
    update();
}

void Toolbar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_F2)
        Q_EMIT CustomizeRequested();
    else
        QToolBar::keyPressEvent(event);
}

void Toolbar::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        Q_EMIT CustomizeRequested();
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
