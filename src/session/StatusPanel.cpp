#include "session/StatusPanel.h"

#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

StatusPanel::StatusPanel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setMinimumWidth(fontMetrics().averageCharWidth() * 8);
}

void StatusPanel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (x() > parentWidget()->contentsRect().left() + frameWidth() + 4) {
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawLine(0, 2, 0, height() - 3);
    }
    const QRect area = contentsRect().adjusted(4, 0, -4, 0);
    style()->drawItemText(&painter, area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideMiddle, area.width()), foregroundRole());
}

bool StatusPanel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), text(), this);
    return true;
}
