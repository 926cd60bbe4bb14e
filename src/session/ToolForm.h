#pragma once

#include <QDialog>

#include <functional>
#include <initializer_list>
#include <utility>

class Main;
class QAbstractButton;
class QKeyEvent;
class QLabel;

/// The window of a tool. It is modal over the main window, stays loaded when it is closed, and is closed by its close
/// command, by Escape and by the window's cross alike.
class ToolForm : public QDialog
{
    Q_OBJECT

public:
    /// Places the window, shows it and activates it.
    void Open();

protected:
    explicit ToolForm(Main &mainWindow);

    // Handlers, by control and event.
    /// Each time the window opens; not when a message box of its own closes.
    virtual void Form_Activate() {}
    virtual void CmdClose_Click();

    /// Lets each button run its handler.
    template <typename Form>
    void ConnectClicks(std::initializer_list<std::pair<QAbstractButton *, void (Form::*)()>> table)
    {
        for (const auto &[button, handler] : table)
            ConnectClick(button, [form = static_cast<Form *>(this), command = handler] { (form->*command)(); });
    }
    /// Runs a handler as a command of the main window.
    void Run(const std::function<void()> &handler);
    /// Changes a line and paints it at once.
    static void Report(QLabel *line, const QString &text);

    void reject() override;
    void keyPressEvent(QKeyEvent *event) override;
    void hideEvent(QHideEvent *event) override;

    Main &main;

private:
    void ConnectClick(QAbstractButton *button, const std::function<void()> &handler);
    /// Gives the form its natural size, or as much of it as the screen has; one that needs more scrolls from then on.
    void FitToScreen();
    void ScrollBody();

    /// What bears the layout of the controls: this window, or what scrolls in it.
    QWidget *body = this;
    /// The room that the screen had for the form when it was fitted; a size that the user gives it is kept.
    QSize fittedRoom;
};
