#pragma once

#include <QLabel>

/// A label for one text of any length, a file's name for one: it breaks lines within a word too, so nothing is cut.
class WrapLabel : public QLabel
{
public:
    explicit WrapLabel(QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
