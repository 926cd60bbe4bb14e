#pragma once

#include "session/ToolForm.h"

#include <QStringList>

#include <memory>

namespace Ui
{
class frmTip;
}

/// Shows one of the tips of a file, another one each time it opens.
class frmTip : public ToolForm
{
    Q_OBJECT

public:
    explicit frmTip(Main &mainWindow);
    ~frmTip() override;

    /// False when there is no such file.
    bool LoadTips(const QString &path);
    /// Shows the tip at CurrentTip; nothing changes when there are none.
    void DisplayCurrentTip();

private:
    // Handlers, by control and event.
    void Form_Activate() override;
    void CmdNext_Click();
    void CmdPrev_Click();
    void cmdNextTip_Click();
    void chkLoadTipsAtStartup_Click();

    int TipCount() const { return static_cast<int>(tips.size()); }
    void ShowTip(int number);

    std::unique_ptr<Ui::frmTip> ui;
    QStringList tips;
    /// From 1.
    int CurrentTip = 0;
};
