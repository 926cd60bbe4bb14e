#include "session/WizardForm.h"

#include "session/SingleClicks.h"

#include <QAbstractButton>
#include <QMouseEvent>
#include <QStackedWidget>

void WizardForm::SetSteps(QStackedWidget *frames, QAbstractButton *next, QAbstractButton *back)
{
    frameStep = frames;
    nextCommand = next;
    backCommand = back;
    ShowFrame(0);
    EnableSteps(true, false);
    // Behind the last step it begins anew and forgets what can be undone.
    TakeSingleClicks(next);
}

void WizardForm::ShowFrame(int index)
{
    frameStep->setCurrentIndex(index);
}

void WizardForm::EnableSteps(bool next, bool back)
{
    nextCommand->setEnabled(next);
    backCommand->setEnabled(back);
}

void WizardForm::MoveByLabel(QWidget *label)
{
    titleLabel = label;
    label->installEventFilter(this);
}

bool WizardForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != titleLabel || (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseMove))
        return ToolForm::eventFilter(watched, event);
    const auto *mouse = static_cast<QMouseEvent *>(event);
    if (event->type() == QEvent::MouseButtonPress)
        grip = mouse->globalPosition().toPoint() - frameGeometry().topLeft();
    else if (mouse->buttons().testFlag(Qt::LeftButton))
        move(mouse->globalPosition().toPoint() - grip);
    return true;
}
