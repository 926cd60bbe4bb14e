#pragma once

#include <QToolBar>

class QToolButton;
class QWidgetAction;

/// The toolbar: flat or raised buttons, a flat or raised bar, and it says when it is dragged or asked for its menu.
class Toolbar : public QToolBar
{
    Q_OBJECT

public:
    explicit Toolbar(QWidget *parent = nullptr);

    /// Stands for a gap in a layout.
    static QString Gap() { return QStringLiteral("-"); }

    /// A button with the look and the name of an action. It has its own enabled state and runs nothing by itself.
    QToolButton *AddButton(QAction *action);
    void AddGap();
    /// All buttons, shown or not, in the order in which they were added.
    QList<QToolButton *> Buttons() const;
    /// The names of the buttons shown, from left to right, with gaps, joined by commas.
    QString Layout() const;
    /// Shows just these; unknown and repeated names are passed over. False, and nothing changed, without any button.
    bool SetLayout(const QString &layout);
    const QString &DefaultLayout() const { return defaultLayout; }
    void SetFlat(bool flat);
    void SetRaised(bool raisedBar);

Q_SIGNALS:
    void Dragged(const QPoint &globalPosition);
    void MenuRequested(const QPoint &globalPosition);
    /// By a double click on its free area, or by F2 on a button.
    void CustomizeRequested();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QWidgetAction *ItemNamed(const QString &name) const;

    QList<QWidgetAction *> items;
    QString defaultLayout;
    bool raised = false;
    bool dragging = false;
};
