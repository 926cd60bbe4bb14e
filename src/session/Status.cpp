#include "session/Status.h"

#include "ui_Status.h"

#include <QCoreApplication>

Status::Status(QWidget *owner) : QWidget(owner, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
{
    ui = std::make_unique<Ui::Status>();
    ui->setupUi(this);
    setAttribute(Qt::WA_ShowWithoutActivating);
}

Status::~Status() = default;

void Status::Open(const QString &caption, int minimum, int maximum)
{
    setWindowTitle(caption);
    ui->lbProgress->setRange(minimum, maximum);
    ui->lbProgress->setValue(minimum);
    // A window that has just been shown learns its place from the window system.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    const QRect owner = parentWidget()->frameGeometry();
    adjustSize();
    move(owner.center() - rect().center());
    show();
    pace = PaintPace();
}

void Status::SetValue(int value)
{
    if (!pace.Due() && value != ui->lbProgress->maximum())
        return;
    ui->lbProgress->setValue(value);
    // Lets the window system show the form; what the user does meanwhile waits.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void Status::Close()
{
    hide();
}
