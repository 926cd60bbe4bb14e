#pragma once

#include "session/ToolForm.h"

#include <QPoint>

class QStackedWidget;

/// A tool whose work is done in steps: frames that take turns in one place, led through by Next and Back.
class WizardForm : public ToolForm
{
    Q_OBJECT

protected:
    using ToolForm::ToolForm;

    /// The place of the frames, and the commands that lead from one to the other. Shows the first frame.
    void SetSteps(QStackedWidget *frames, QAbstractButton *next, QAbstractButton *back);
    /// Brings a frame to the front, from 0.
    void ShowFrame(int index);
    void EnableSteps(bool next, bool back);
    /// The window moves with the mouse that drags the label.
    void MoveByLabel(QWidget *label);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QStackedWidget *frameStep = nullptr;
    QAbstractButton *nextCommand = nullptr;
    QAbstractButton *backCommand = nullptr;
    QWidget *titleLabel = nullptr;
    QPoint grip;
};
