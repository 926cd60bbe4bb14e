#pragma once

#include "session/PaintPace.h"

#include <QWidget>

#include <memory>

namespace Ui
{
class Status;
}

/// The progress form: a window with a bar, shown without blocking while a long loop runs. It cannot stop the loop.
class Status : public QWidget
{
    Q_OBJECT

public:
    explicit Status(QWidget *owner);
    ~Status() override;

    void Open(const QString &caption, int minimum, int maximum);
    /// Paints at most 30 times a second, and the last value always.
    void SetValue(int value);
    void Close();

private:
    std::unique_ptr<Ui::Status> ui;
    PaintPace pace;
};
