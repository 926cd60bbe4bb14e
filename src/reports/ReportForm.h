#pragma once

#include "reports/ReportSettings.h"
#include "session/WizardForm.h"

#include <memory>
#include <optional>

class MadeFiles;

namespace Ui
{
class ReportForm;
}

/// The wizard that writes a report of all items of the playlist. Its frames bear their index behind an underscore;
/// which of them are shown depends on the kind of report.
class ReportForm : public WizardForm
{
    Q_OBJECT

public:
    explicit ReportForm(Main &mainWindow);
    ~ReportForm() override;

    void FillRecordFromControls(ReportSettings &record) const;
    void ShowRecord(const ReportSettings &record);
    /// Writes the report, opens it, and asks what shall become of it.
    void Generate();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Handlers, by control and event.
    void Form_Activate() override;
    void CmdNext_Click();
    void CmdBack_Click();
    void cmdUp_Click();
    void cmdDown_Click();
    void cmdAll_Click();
    void cmdNone_Click();
    void LoadCurrent_Click();
    void SaveCurrent_Click();
    void LoadDefault_Click();
    void txtTitle_DblClick();
    void FontList_Click(const QString &family);
    void FontSizer_Click();

    void Form_Load();
    void FillLists();
    void ShowFont(const QString &family);
    void MoveColumn(int distance);
    bool IsText() const;
    /// Where the step is one that this kind of report has not, the one beyond it.
    void Skip(int step, int target);
    void Restart();
    void RunGenerate();

    /// Takes the whole playlist into FileArray; returns the folder that its files have in common.
    QString TakePlaylist();
    /// Whether the file is there; nothing when the user has stopped the run.
    std::optional<bool> WriteTemporary(const QString &temporary);
    /// Where the report stands afterwards; empty when it is not kept.
    QString OfferToKeep(const QString &temporary, const QString &commonRoot, MadeFiles &made);
    /// Puts what stood there before in the place of a report that nobody keeps.
    void TakeBack(MadeFiles &made);

    std::unique_ptr<Ui::ReportForm> ui;
    /// The step, from 0: one of each frame, then the run, then the restart.
    int Step = 0;
    QString DefaultTitle;
};
