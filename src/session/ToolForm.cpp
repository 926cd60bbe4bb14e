#include "session/ToolForm.h"

#include "session/EnterKey.h"
#include "session/Main.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QScrollArea>
#include <QStyle>

using namespace Qt::StringLiterals;

ToolForm::ToolForm(Main &mainWindow) : QDialog(&mainWindow), main(mainWindow)
{
    setWindowModality(Qt::ApplicationModal);
}

void ToolForm::Open()
{
    FitToScreen();
    main.PositionForm(this);
    show();
    Form_Activate();
}

void ToolForm::FitToScreen()
{
    const QSize room = main.Room().size();
    if (room == fittedRoom)
        return;
    fittedRoom = room;
    const QSize needed = minimumSizeHint();
    if (needed.width() > room.width() || needed.height() > room.height())
        ScrollBody();
    const int bar = body == this ? 0 : style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    resize((body->layout()->totalSizeHint() + QSize(bar, bar)).boundedTo(room));
}

void ToolForm::ScrollBody()
{
    body = new QWidget;
    body->setLayout(layout());
    auto *scroller = new QScrollArea;
    scroller->setObjectName("FormScroller"_L1);
    scroller->setWidgetResizable(true);
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setWidget(body);
    // The layout has held the window to what its controls need.
    setMinimumSize({});
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins({});
    outer->addWidget(scroller);
}

void ToolForm::ConnectClick(QAbstractButton *button, const std::function<void()> &handler)
{
    connect(button, &QAbstractButton::clicked, this, [this, handler] { Run(handler); });
}

void ToolForm::Run(const std::function<void()> &handler)
{
    main.Run(handler);
}

void ToolForm::Report(QLabel *line, const QString &text)
{
    line->setText(text);
    line->repaint();
}

void ToolForm::CmdClose_Click()
{
    hide();
}

void ToolForm::hideEvent(QHideEvent *event)
{
    QDialog::hideEvent(event);
    main.KeepAnswer();
}

void ToolForm::keyPressEvent(QKeyEvent *event)
{
    const bool acts = event->key() == Qt::Key_Escape || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    // A key that is still held behind the run that it has ended or begun is not meant for what comes then.
    if (acts && event->isAutoRepeat())
        return;
    if (!ClicksFocusedButton(*this, *event))
        QDialog::keyPressEvent(event);
}

void ToolForm::reject()
{
    Run([this] { CmdClose_Click(); });
}
