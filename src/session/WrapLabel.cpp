#include "session/WrapLabel.h"

#include <QPainter>
#include <QStyle>

namespace
{
constexpr int anywhere = Qt::AlignTop | Qt::TextWordWrap | Qt::TextWrapAnywhere;
} // namespace

WrapLabel::WrapLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setWordWrap(true);
}

QSize WrapLabel::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(text()), fontMetrics().height()};
}

QSize WrapLabel::minimumSizeHint() const
{
    return {0, fontMetrics().height()};
}

int WrapLabel::heightForWidth(int width) const
{
    const QRect room(0, 0, std::max(width, 1), QWIDGETSIZE_MAX);
    return std::max(fontMetrics().height(), fontMetrics().boundingRect(room, anywhere, text()).height());
}

void WrapLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    style()->drawItemText(&painter, rect(), anywhere, palette(), isEnabled(), text(), foregroundRole());
}
