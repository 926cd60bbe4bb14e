#pragma once

#include <QLabel>

/// A panel of the status bar: shows what fits of its text, the rest as an ellipsis, and the whole as its tooltip.
class StatusPanel : public QLabel
{
    Q_OBJECT

public:
    /// As wide as its widest text; a panel without one takes what is left.
    explicit StatusPanel(const QString &widestText, QWidget *parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    QString widest;
};
