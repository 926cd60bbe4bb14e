#pragma once

#include "session/ToolForm.h"

#include <QTimer>

#include <memory>

struct PlaylistFigures;

namespace Ui
{
class PlaylistStats;
}

/// Shows figures of the whole playlist, reckoned anew each time it opens.
class PlaylistStats : public ToolForm
{
    Q_OBJECT

public:
    explicit PlaylistStats(Main &mainWindow);
    ~PlaylistStats() override;

private:
    // Handlers, by control and event.
    void Form_Activate() override;
    void CmdClose_Click() override;
    void Timer1_Timer();

    /// A figure that there is none of keeps its "????".
    void ShowFigures(const PlaylistFigures &figures);

    std::unique_ptr<Ui::PlaylistStats> ui;
    /// Lets the window be painted before the slow work begins.
    QTimer Timer1;
};
