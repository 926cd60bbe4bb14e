#pragma once

#include "session/ToolForm.h"

#include <QList>

#include <memory>
#include <vector>

class QAction;
class QMenu;

namespace Ui
{
class frmSearch;
}

/// Finds rows of the playlist by a text and selects them, one at a time or all at once.
class frmSearch : public ToolForm
{
    Q_OBJECT

public:
    explicit frmSearch(Main &mainWindow);
    ~frmSearch() override;

    /// Fills Matches from what is looked for now, and reports how many there are.
    void RunSearch();
    void AddSearchHistory(const QString &text);
    /// Adds the selected rows to OriginalSelection.
    void SaveSelection();
    /// Selects just the rows of OriginalSelection.
    void RestoreSelection();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Handlers, by control and event.
    void Form_Load();
    void Form_Activate() override;
    void CmdClose_Click() override;
    void cmdNext_Click();
    void cmdBack_Click();
    void cmdSelAl_Click();
    void cmdPreview_Click();
    void cmdOptions_Click();
    void MReselect_Click();

    void BuildOptions();
    bool IsChecked(const char *name) const;
    /// The search is due anew.
    void QueryChanged();
    void EnableByText();
    void EnableCommands(bool on);
    /// Searches when that is due; true when there are matches. Those whose rows are gone are dropped.
    bool HasMatches();
    /// Selects the match at SearchPosition.
    void ShowMatch();

    std::unique_ptr<Ui::frmSearch> ui;
    QMenu *Moptions = nullptr;

    /// The rows that the last search found, from the top down.
    std::vector<qint16> Matches;
    /// -1: a new search is due; 0: searched and not yet stepped; from 1: the place in Matches of the row selected now.
    int SearchPosition = -1;
    /// For each row, from 1, whether it was selected at one of the times that the window opened.
    std::vector<bool> OriginalSelection;
};
