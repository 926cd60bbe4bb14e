#include "session/CustomizeToolbar.h"

#include "session/EnterKey.h"
#include "session/Toolbar.h"

#include "ui_CustomizeToolbar.h"

#include <QToolButton>

using namespace Qt::StringLiterals;

namespace
{
/// The item's name in a layout.
constexpr int nameRole = Qt::UserRole;
} // namespace

CustomizeToolbar::CustomizeToolbar(Toolbar &customized, QWidget *owner) : QDialog(owner), toolbar(customized)
{
    ui = std::make_unique<Ui::CustomizeToolbar>();
    ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    Fill();
    connect(ui->LstButtons, &QListWidget::itemChanged, this, &CustomizeToolbar::Apply);
    connect(ui->CmdUp, &QPushButton::clicked, this, &CustomizeToolbar::CmdUp_Click);
    connect(ui->CmdDown, &QPushButton::clicked, this, &CustomizeToolbar::CmdDown_Click);
    connect(ui->CmdReset, &QPushButton::clicked, this, &CustomizeToolbar::CmdReset_Click);
    connect(ui->CmdClose, &QPushButton::clicked, this, &QDialog::close);
}

CustomizeToolbar::~CustomizeToolbar() = default;

void CustomizeToolbar::keyPressEvent(QKeyEvent *event)
{
    if (!ClicksFocusedButton(*this, *event))
        QDialog::keyPressEvent(event);
}

void CustomizeToolbar::Fill()
{
    const QSignalBlocker blocker(ui->LstButtons);
    ui->LstButtons->clear();
    const auto add = [this](const QString &name, const QString &caption, const QIcon &icon, Qt::CheckState state) {
        auto *item = new QListWidgetItem(icon, caption, ui->LstButtons);
        item->setData(nameRole, name);
        item->setCheckState(state);
    };
    QStringList shown = toolbar.Layout().split(u',');
    for (const QString &name : std::as_const(shown)) {
        if (name == Toolbar::Gap())
            add(name, u"Separator"_s, QIcon(), Qt::Checked);
        for (const QToolButton *button : toolbar.Buttons()) {
            if (button->objectName() == name)
                add(name, button->accessibleName(), button->icon(), Qt::Checked);
        }
    }
    for (const QToolButton *button : toolbar.Buttons()) {
        if (!shown.contains(button->objectName()))
            add(button->objectName(), button->accessibleName(), button->icon(), Qt::Unchecked);
    }
    ui->LstButtons->setCurrentRow(0);
}

void CustomizeToolbar::Apply(QListWidgetItem *changed)
{
    QStringList names;
    for (int row = 0; row < ui->LstButtons->count(); ++row) {
        const QListWidgetItem *item = ui->LstButtons->item(row);
        if (item->checkState() == Qt::Checked)
            names.append(item->data(nameRole).toString());
    }
    // The last button stays.
    if (toolbar.SetLayout(names.join(u',')))
        Q_EMIT Changed();
    else
        changed->setCheckState(Qt::Checked);
}

void CustomizeToolbar::MoveRow(int step)
{
    const int row = ui->LstButtons->currentRow();
    if (row < 0 || row + step < 0 || row + step >= ui->LstButtons->count())
        return;
    QListWidgetItem *item = ui->LstButtons->takeItem(row);
    ui->LstButtons->insertItem(row + step, item);
    ui->LstButtons->setCurrentItem(item);
    Apply(item);
}

void CustomizeToolbar::CmdUp_Click()
{
    MoveRow(-1);
}

void CustomizeToolbar::CmdDown_Click()
{
    MoveRow(1);
}

void CustomizeToolbar::CmdReset_Click()
{
    toolbar.SetLayout(toolbar.DefaultLayout());
    Fill();
    Q_EMIT Changed();
}
