#pragma once

#include <QLabel>

/// A panel of the status bar: shows what fits of its text, the rest as an ellipsis, and the whole as its tooltip.
class StatusPanel : public QLabel
{
    Q_OBJECT

public:
    explicit StatusPanel(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;
};
