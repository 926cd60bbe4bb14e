#include "session/Status.h"

#include "platform/Drives.h"
#include "text/PathText.h"

#include "ui_Status.h"

#include <QCoreApplication>

Status::Status(QWidget *owner) : QWidget(owner, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
{
    ui = std::make_unique<Ui::Status>();
    ui->setupUi(this);
    setAttribute(Qt::WA_ShowWithoutActivating);
}

Status::~Status() = default;

void Status::Open(const QString &caption, int minimum, int maximum, Ending end)
{
    setWindowTitle(caption);
    ending = end;
    ui->lbEnding->setVisible(ending == Ending::ByEscape);
    folder.clear();
    ui->lbFolder->clear();
    run.emplace(ui->lbProgress, ui->lbFolder);
    progress = run->AsProgress();
    // A window that has just been shown learns its place from the window system.
    progress.SetLimits(minimum, maximum);
    const QRect owner = parentWidget()->frameGeometry();
    adjustSize();
    move(owner.center() - rect().center());
    show();
}

bool Status::Step(int value, const QString &path)
{
    if (!IsFolderPart(folder, path)) {
        folder = GetFolderPart(path);
        progress.SetText(
            ui->lbFolder->fontMetrics().elidedText(ShownPath(folder), Qt::ElideMiddle, ui->lbFolder->width()));
    }
    progress.SetValue(value);
    return ending == Ending::Never || !run->Stopped();
}

void Status::Close()
{
    run.reset();
    hide();
}
