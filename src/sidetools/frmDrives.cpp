#include "sidetools/frmDrives.h"

#include "platform/Drives.h"
#include "platform/PlaylistLines.h"
#include "session/Main.h"
#include "ui_frmDrives.h"

using namespace Qt::StringLiterals;

namespace
{
constexpr auto drivesSection = "Drives"_L1;
} // namespace

frmDrives::frmDrives(Main &mainWindow)
    : ToolForm(mainWindow), items(main.ListView1, [this] { ui->lblItems->setText(items.Text()); })
{
    ui = std::make_unique<Ui::frmDrives>();
    ui->setupUi(this);
    for (char16_t letter = u'a'; letter < u'z'; ++letter)
        ui->cmbLetter->addItem(QString(QChar(letter)) + u':');
    connect(ui->lstDrives, &QTreeWidget::currentItemChanged, this, [this] { lstDrives_Click(); });
    connect(ui->cmbLetter, &QComboBox::currentIndexChanged, this, [this] { ShowItems(); });
    connect(ui->txtFolder, &QLineEdit::textChanged, this, [this] { ShowItems(); });
    ConnectClicks<frmDrives>({
        {ui->cmdBrowse, &frmDrives::cmdBrowse_Click},
        {ui->cmdSet, &frmDrives::cmdSet_Click},
        {ui->cmdRemove, &frmDrives::cmdRemove_Click},
        {ui->cmdClose, &frmDrives::CmdClose_Click},
    });
}

frmDrives::~frmDrives() = default;

QString frmDrives::Letter() const
{
    return ui->cmbLetter->currentText().first(1);
}

void frmDrives::Form_Activate()
{
    ShowDrives();
    // The first drive of the list that nothing stands for is the one that a person comes for.
    const QStringList known = DriveLetters();
    for (int row = 1; row <= main.ListView1.Count(); ++row) {
        const QString drive = main.ListView1.Item(row).Folder.left(2);
        if (HasDrive(drive) && !known.contains(drive)) {
            ui->cmbLetter->setCurrentText(drive);
            break;
        }
    }
    ShowItems();
}

void frmDrives::ShowDrives()
{
    ui->lstDrives->clear();
    const QStringList drives = DriveLetters();
    for (const QString &drive : drives)
        ui->lstDrives->addTopLevelItem(new QTreeWidgetItem({drive, ToHostPath(drive + u'\\')}));
}

void frmDrives::CmdClose_Click()
{
    items.Stop();
    ToolForm::CmdClose_Click();
}

void frmDrives::lstDrives_Click()
{
    const QTreeWidgetItem *item = ui->lstDrives->currentItem();
    const int letter = item == nullptr ? -1 : ui->cmbLetter->findText(item->text(0));
    if (letter < 0)
        return;
    ui->cmbLetter->setCurrentIndex(letter);
    ui->txtFolder->setText(item->text(1));
}

void frmDrives::ShowItems()
{
    const QString folder = FromHostPath(ui->txtFolder->text());
    items.Count(Letter()[0], folder);
    ui->cmdSet->setEnabled(HasDrive(folder));
    ui->cmdRemove->setEnabled(!main.World().Settings.Read(drivesSection, Letter()).isEmpty());
}

void frmDrives::cmdBrowse_Click()
{
    if (const auto folder = main.World().Prompts.Folder({u"Select Folder..."_s, true}))
        ui->txtFolder->setText(ToHostPath(*folder + u'\\'));
}

void frmDrives::cmdSet_Click()
{
    Map(ui->txtFolder->text());
}

void frmDrives::cmdRemove_Click()
{
    Map({});
}

void frmDrives::Map(const QString &folder)
{
    main.World().Settings.Write(drivesSection, Letter(), folder);
    LoadDriveMappings(main.World().Settings);
    ShowDrives();
    main.MViewRefresh_Click();
    ShowItems();
}
