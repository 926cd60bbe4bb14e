#include "tageditor/PictureFrame.h"

#include <QPainter>

#include <utility>

using namespace Qt::StringLiterals;

PictureFrame::PictureFrame(QWidget *parent) : QFrame(parent)
{
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
}

void PictureFrame::Show(std::function<QImage()> pictureSource)
{
    source = std::move(pictureSource);
    asked = false;
    picture = {};
    scaled = {};
    update();
}

const QImage &PictureFrame::Picture()
{
    if (!asked && source != nullptr)
        picture = source();
    asked = true;
    return picture;
}

void PictureFrame::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
    if (source == nullptr)
        return;
    const QRect room = contentsRect().adjusted(4, 4, -4, -4);
    QPainter painter(this);
    if (Picture().isNull()) {
        painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, u"This picture cannot be shown."_s);
        return;
    }
    const QSize shown = picture.size().scaled(room.size(), Qt::KeepAspectRatio).expandedTo({1, 1});
    const QSize pixels = (QSizeF(shown) * devicePixelRatioF()).toSize();
    if (scaled.size() != pixels)
        scaled = QPixmap::fromImage(picture.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    QRect place({}, shown);
    place.moveCenter(room.center());
    painter.drawPixmap(place, scaled);
}
