#include "session/ToolForm.h"

#include "session/Main.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>

ToolForm::ToolForm(Main &mainWindow) : QDialog(&mainWindow), main(mainWindow)
{
    setWindowModality(Qt::ApplicationModal);
}

void ToolForm::Open()
{
    if (!testAttribute(Qt::WA_WState_Created))
        FitToScreen();
    main.PositionForm(this);
    show();
    Form_Activate();
}

void ToolForm::FitToScreen()
{
    adjustSize();
    const QSize room = main.screen()->availableSize() - QSize(0, style()->pixelMetric(QStyle::PM_TitleBarHeight));
    const QSize needed = minimumSizeHint();
    if (layout() == nullptr || (needed.width() <= room.width() && needed.height() <= room.height()))
        return;
    auto *content = new QWidget;
    content->setLayout(layout());
    auto *scroller = new QScrollArea;
    scroller->setWidgetResizable(true);
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setWidget(content);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins({});
    outer->addWidget(scroller);
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    resize((needed + QSize(bar, bar)).boundedTo(room));
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

void ToolForm::reject()
{
    Run([this] { CmdClose_Click(); });
}
