#pragma once

#include <QDialog>

#include <memory>

class QListWidgetItem;
class Toolbar;

namespace Ui
{
class CustomizeToolbar;
}

/// Lets the user show, hide and move the buttons of the toolbar, which follows at once.
class CustomizeToolbar : public QDialog
{
    Q_OBJECT

public:
    CustomizeToolbar(Toolbar &customized, QWidget *owner);
    ~CustomizeToolbar() override;

Q_SIGNALS:
    void Changed();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void Fill();
    void Apply(QListWidgetItem *changed);
    void MoveRow(int step);
    void CmdUp_Click();
    void CmdDown_Click();
    void CmdReset_Click();

    Toolbar &toolbar;
    std::unique_ptr<Ui::CustomizeToolbar> ui;
};
