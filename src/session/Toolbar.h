#pragma once

#include <QToolBar>

class QToolButton;

/// The toolbar: flat or raised buttons, a flat or raised bar, and it says when it is dragged or asked for its menu.
class Toolbar : public QToolBar
{
    Q_OBJECT

public:
    explicit Toolbar(QWidget *parent = nullptr);

    /// A button with the look of an action. It has its own enabled state and runs nothing by itself.
    QToolButton *AddButton(QAction *action);
    void SetFlat(bool flat);
    void SetRaised(bool raisedBar);

Q_SIGNALS:
    void Dragged(const QPoint &globalPosition);
    void MenuRequested(const QPoint &globalPosition);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool raised = false;
    bool dragging = false;
};
