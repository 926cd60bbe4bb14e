#pragma once

#include <QFrame>
#include <QImage>
#include <QPixmap>

#include <functional>

/// Shows a picture scaled into the frame with its proportions. The picture is asked for when it is first needed: many
/// a large one is never looked at.
class PictureFrame : public QFrame
{
public:
    explicit PictureFrame(QWidget *parent = nullptr);

    /// No source empties the frame; a source that gives a null image is told to be no picture.
    void Show(std::function<QImage()> pictureSource);
    /// A null image when there is none.
    const QImage &Picture();

    QSize sizeHint() const override { return {280, 240}; }
    QSize minimumSizeHint() const override { return {140, 120}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::function<QImage()> source;
    bool asked = false;
    QImage picture;
    /// The picture in the pixels that it was last shown in.
    QPixmap scaled;
};
