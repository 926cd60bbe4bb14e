#pragma once

#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

namespace Ui
{
class SplashFrm;
}

/// The first window of a start: names the program, then tells that the last session is being restored.
class SplashFrm : public QWidget
{
    Q_OBJECT

public:
    /// showMain shows the main window and restores its session; the splash hides when it is done.
    explicit SplashFrm(std::function<void()> showMain);
    ~SplashFrm() override;

private:
    void Timer1_Timer();

    std::unique_ptr<Ui::SplashFrm> ui;
    QTimer Timer1;
    std::function<void()> showMain;
};
