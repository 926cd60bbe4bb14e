#pragma once

#include "session/ToolForm.h"

#include <memory>

namespace Ui
{
class frmAbout;
}

/// Tells what the program is, what it is made of, and where it keeps its data.
class frmAbout : public ToolForm
{
    Q_OBJECT

public:
    explicit frmAbout(Main &mainWindow);
    ~frmAbout() override;

private:
    // Handlers, by control and event.
    void cmdCopy_Click();
    void cmdSysInfo_Click();

    std::unique_ptr<Ui::frmAbout> ui;
};
