#pragma once

#include "session/LongRun.h"

#include <QWidget>

#include <memory>
#include <optional>

namespace Ui
{
class Status;
}

/// The progress form: a window with a bar, shown without blocking while a long loop runs, and the loop's end by Escape.
class Status : public QWidget
{
    Q_OBJECT

public:
    enum class Ending { ByEscape, Never };

    explicit Status(QWidget *owner);
    ~Status() override;

    void Open(const QString &caption, int minimum, int maximum, Ending end);
    /// Shows how far the loop is and the folder of what comes next. False once the user has ended it.
    bool Step(int value, const QString &path);
    void Close();

private:
    std::unique_ptr<Ui::Status> ui;
    Ending ending = Ending::ByEscape;
    std::optional<LongRun> run;
    Progress progress;
    QString folder;
};
