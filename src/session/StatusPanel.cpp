#include "session/StatusPanel.h"

#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace
{
constexpr int textMargin = 5;
}

StatusPanel::StatusPanel(const QString &usualText, QWidget *parent) : QLabel(parent), usual(usualText)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(usual.isEmpty() ? QSizePolicy::Ignored : QSizePolicy::Fixed, QSizePolicy::Preferred);
}

QSize StatusPanel::sizeHint() const
{
    const int width = std::max(fontMetrics().horizontalAdvance(usual), fontMetrics().horizontalAdvance(text()));
    return {width + 2 * textMargin, fontMetrics().height() + 2};
}

void StatusPanel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (x() > parentWidget()->contentsRect().left() + frameWidth() + 4) {
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawLine(0, 2, 0, height() - 3);
    }
    const QRect area = contentsRect().adjusted(textMargin, 0, -textMargin, 0);
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
