#pragma once

#include "reports/ReportSettings.h"
#include "session/WizardForm.h"
#include "text/MadeFiles.h"

#include <QIcon>

#include <memory>

class QCheckBox;
struct CompilationPlan;

namespace Ui
{
class MP3CDWizard;
}

/// The wizard that makes a folder of MP3 files ready to be burned on a disc. It works on the disk, not on the playlist,
/// and leaves the media files alone. Each opening starts anew with the settings of the last disc.
class MP3CDWizard : public WizardForm
{
    Q_OBJECT

public:
    explicit MP3CDWizard(Main &mainWindow);
    ~MP3CDWizard() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Handlers, by control and event.
    void Form_Activate() override;
    void CmdNext_Click();
    void CmdBack_Click();
    void CmdClose_Click() override;
    void BrowseAssembleLoc_Click();
    void BrowseImageLoc_Click();
    void OpenImageLoc_Click();
    void LoadReportSet_Click();
    void DefReportSet_Click();
    void PrevReportSet_Click();
    void ShowSoftware_Click();
    void IconChooser_Click(int index);

    void FillLists();
    void ConnectControls();
    /// The start of the wizard, and its restart after a build.
    void ResetWizard();
    /// The boxes of the settings, each with its key.
    QList<std::pair<QString, QCheckBox *>> Boxes() const;
    void LoadSettings();
    /// The usual choices, and those of the last compilation.
    void LoadChoices();
    void SaveSettings() const;
    void EnableFolders();
    void EnableFileOptions();
    void TakeAwayBrowser();

    QString Name() const;
    /// False when there is no folder and none can be made.
    bool EnsureCompilationFolder();
    void RememberName();
    /// Tells what is wrong; false when the compilation cannot be made of what lies in its folder.
    bool CheckFiles();
    /// What the boxes of the third step stand on.
    void PrepareFileOptions();
    ReportSettings DefaultRecord() const;
    bool LoadReport(const QString &path);
    void ShowPicture(const QIcon &picture);
    /// False, and nothing changed, for a file that holds no picture.
    bool ShowIconFile(const QString &path);
    void OpenPreview(const QString &path);
    CompilationPlan Plan() const;
    void RunBuild();
    void ReportSuccess(bool iconSaved);
    void ReportFailure(bool stopped);

    /// The entry of the list for a picture of one's own, and the one that is chosen when that cannot be shown.
    static constexpr int CustomPicture = 0;
    static constexpr int UsualPicture = 8;

    std::unique_ptr<Ui::MP3CDWizard> ui;
    int StepIndex = 0;
    bool hasFailed = false;
    /// Fixed when the first step is left; no trailing backslash.
    QString CompilationFolder;
    /// The custom icon, and the settings of the report; empty for none.
    QString IconFile;
    QString ReportFile;
    QStringList CompilationFiles;
    ReportSettings ReportRecord;
    QIcon Picture;
    /// The picture comes from a file that can be copied as it stands.
    bool PictureIsIcon = false;
    /// What a look at report and browser has put into the compilation.
    MadeFiles Previews{MadeFiles::AfterKill::TakeBack};
};
