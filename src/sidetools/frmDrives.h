#pragma once

#include "session/ToolForm.h"
#include "sidetools/DriveItems.h"

#include <memory>

namespace Ui
{
class frmDrives;
}

/// Shows which folders stand for the letters of drives, and lets the user change that.
class frmDrives : public ToolForm
{
    Q_OBJECT

public:
    explicit frmDrives(Main &mainWindow);
    ~frmDrives() override;

private:
    // Handlers, by control and event.
    void Form_Activate() override;
    void CmdClose_Click() override;
    void lstDrives_Click();
    void cmdBrowse_Click();
    void cmdSet_Click();
    void cmdRemove_Click();

    QString Letter() const;
    void ShowDrives();
    /// Says how many rows the folder in the field would bring back, and lets it be set where it can be.
    void ShowItems();
    /// Maps the chosen letter, or takes its folder away, and reads the list again.
    void Map(const QString &folder);

    std::unique_ptr<Ui::frmDrives> ui;
    DriveItems items;
};
