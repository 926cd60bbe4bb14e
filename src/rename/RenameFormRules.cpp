#include "platform/Drives.h"
#include "rename/RenameForm.h"
#include "session/Main.h"
#include "text/PathText.h"

#include "ui_RenameForm.h"

#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace
{
// What the sample is numbered as.
constexpr int sampleNumber = 8;
constexpr int sampleTotal = 10;

FilePrompt RulesPrompt(const QString &title, const QString &folder)
{
    return {title, u"Replace Settings (*.rps)|*.rps|"_s, u"rps"_s, folder + u"\\*.rps"};
}
} // namespace

void RenameForm::ShowRenameSettings(const RenameSettings &settings)
{
    ui->Capitalise->setChecked(IsSet(settings.Capitalise));
    ui->LowFilename->setChecked(IsSet(settings.LowFilename));
    ui->Extension->setChecked(IsSet(settings.Extension));
    ui->RenID3->setChecked(IsSet(settings.RenID3));
    ui->Increment->setChecked(IsSet(settings.Increment));
    ui->Truncat->setChecked(IsSet(settings.Truncat));
    ui->IncPosC->setCurrentText(IsSet(settings.IncPos) ? u"At Start"_s : u"At End"_s);
    ui->IncPosC->setEnabled(IsSet(settings.Increment));
    // A limit that is none of the list is shown all the same.
    const QString limit = QString::number(settings.Truncval);
    ui->Truncval->setPlaceholderText(limit);
    ui->Truncval->setCurrentIndex(ui->Truncval->findText(limit));
    ui->Truncval->setEnabled(IsSet(settings.Truncat));

    const QSignalBlocker blocker(ui->RuleList);
    ui->RuleList->clear();
    for (int slot = 0; slot < RenameSettings::Slots; ++slot) {
        const RenameRule rule = RuleOf(settings, slot);
        if (rule.From == rule.To)
            continue;
        ui->RuleList->AddRow({RuleText(rule)}, false);
        // The tick goes by the slot, which behind an unused one is another row or none.
        if (slot < ui->RuleList->RowCount())
            ui->RuleList->SetTicked(slot, IsSet(settings.RuleEnabled[static_cast<std::size_t>(slot)]));
    }
}

void RenameForm::Options_Click()
{
    Settings.Capitalise = FlagOf(ui->Capitalise->isChecked());
    Settings.LowFilename = FlagOf(ui->LowFilename->isChecked());
    Settings.Extension = FlagOf(ui->Extension->isChecked());
    Settings.RenID3 = FlagOf(ui->RenID3->isChecked());
    Settings.Increment = FlagOf(ui->Increment->isChecked());
    Settings.Truncat = FlagOf(ui->Truncat->isChecked());
    ui->IncPosC->setEnabled(IsSet(Settings.Increment));
    ui->Truncval->setEnabled(IsSet(Settings.Truncat));
}

void RenameForm::IncPosC_Click()
{
    Settings.IncPos = FlagOf(ui->IncPosC->currentText() == "At Start"_L1);
}

void RenameForm::Truncval_Click()
{
    Settings.Truncval = ui->Truncval->currentText().toInt();
}

void RenameForm::RuleList_Click()
{
    for (int row = 0; row < ui->RuleList->RowCount(); ++row)
        Settings.RuleEnabled[static_cast<std::size_t>(row)] = FlagOf(ui->RuleList->IsTicked(row));
}

void RenameForm::AddRule_Click()
{
    const RenameRule rule{ui->ToReplace->text(), ui->ReplaceTo->text()};
    if (rule.From == rule.To || ui->RuleList->RowCount() >= RenameSettings::MaxRules)
        return;
    // All that the two boxes could mean.
    const QStringList texts{RuleText(rule), RuleText({{}, rule.To}), RuleText({rule.From, {}})};
    bool isThere = false;
    const QSignalBlocker blocker(ui->RuleList);
    for (int row = 0; row < ui->RuleList->RowCount(); ++row) {
        if (!texts.contains(ui->RuleList->RowText(row)))
            continue;
        isThere = true;
        ui->RuleList->SetTicked(row, true);
        Settings.RuleEnabled[static_cast<std::size_t>(row)] = flagSet;
    }
    if (!isThere) {
        const int row = ui->RuleList->RowCount();
        ui->RuleList->AddRow({RuleText(rule)}, false);
        SetRule(Settings, row, rule);
        Settings.RuleEnabled[static_cast<std::size_t>(row)] = flagClear;
    }
}

void RenameForm::RemoveRule_Click()
{
    const int row = ui->RuleList->SelectedRow();
    if (row < 0)
        return;
    RemoveSlot(Settings, row);
    delete ui->RuleList->topLevelItem(row);
}

void RenameForm::RenTest_Click()
{
    const QString sample = ui->Test1->text();
    ui->Test2->setText(ApplyRenameRules(Settings, sample, sampleNumber, sampleTotal, false));
    Report(u"Generated Test FileName from: "_s + sample);
}

void RenameForm::RulesLoad_Click()
{
    const auto path = main.World().Prompts.OpenFile(RulesPrompt(u"Load"_s, main.World().ProgramFolder));
    if (!path)
        return;
    if (!ReadRenameSettings(*path, Settings)) {
        main.World().Prompts.Message({u"Could not read the file!"_s, PromptIcon::Warning});
        return;
    }
    ShowRenameSettings(Settings);
    SSTab1_Click();
    Report(u"Renaming Configuration Loaded from: '"_s + ShownPath(GetFileName(*path)) + u'\'');
}

void RenameForm::RulesSave_Click()
{
    const auto path = main.World().Prompts.SaveFile(RulesPrompt(u"Save"_s, main.World().ProgramFolder));
    if (!path || main.CheckExists(*path))
        return;
    if (!WriteRenameSettings(*path, Settings)) {
        main.World().Prompts.Message(
            {u"Could not save the file!"_s, PromptIcon::Warning, PromptButtons::Ok,
             u"The folder does not let you write, the disk is full, or a rule holds characters "
             "that such a file cannot hold."_s});
        return;
    }
    Report(u"Renaming Configuration Saved to: '"_s + ShownPath(GetFileName(*path)) + u'\'');
}

void RenameForm::RulesDef_Click()
{
    RestoreDefaultRenameSettings(Settings);
    ShowRenameSettings(Settings);
    SSTab1_Click();
    Report(u"Restored Default Renaming Configuration..."_s);
}
