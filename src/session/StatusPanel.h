#pragma once

#include <QLabel>

/// A panel of the status bar: shows what fits of its text, the rest as an ellipsis, and the whole as its tooltip.
class StatusPanel : public QLabel
{
    Q_OBJECT

public:
    /// As wide as a usual text, and as a longer one while it shows that; a panel without one takes what is left.
    explicit StatusPanel(const QString &usualText, QWidget *parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    QString usual;
};
