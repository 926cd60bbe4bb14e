#include "session/CustomizeToolbar.h"
#include "session/GridView.h"
#include "session/Main.h"
#include "session/Toolbar.h"

#include <QApplication>
#include <QMenuBar>

using namespace Qt::StringLiterals;

void Main::ShowMenus(bool on)
{
    Check("MHidOptionMenuVisible", on);
    menuBar()->setVisible(on);
    // A right click on the toolbar is the way back to them.
    if (!on && Toolbar1->isHidden())
        MViewToolbar_Click();
}

void Main::MHidOptionMenuVisible_Click()
{
    ShowMenus(menuBar()->isHidden());
}

void Main::MHidOptionToolbarFlat_Click()
{
    Toolbar1->SetFlat(IsChecked("MHidOptionToolbarFlat"));
    Form_Resize();
}

void Main::MHidOptionToolbar3D_Click()
{
    Toolbar1->SetRaised(IsChecked("MHidOptionToolbar3D"));
    Form_Resize();
}

void Main::MHidOptionColumnVis_Click(int index)
{
    const auto place = static_cast<std::size_t>(index);
    int &width = ListView1.ColumnWidths[place];
    width = width == 0 ? ColumnWidthDefaults[place] : 0;
    Check(ElementName("MHidOptionColumnVis", index), width > 0);
    view->ApplyColumnWidths();
}

void Main::CustomizeToolbar1()
{
    auto *dialog = new CustomizeToolbar(*Toolbar1, this);
    // The toolbar keeps its look by itself, whether or not the settings are saved at the end.
    connect(dialog, &CustomizeToolbar::Changed, this,
            [this] { host.Settings.Write(u"PS"_s, u"Toolbar1"_s, Toolbar1->Layout()); });
    dialog->resize(QSize(400, 440).boundedTo(Room().size()));
    PositionForm(dialog);
    dialog->show();
}

void Main::MHidOptionColumnVisAll_Click()
{
    std::copy(ColumnWidthDefaults.begin(), ColumnWidthDefaults.end(), ListView1.ColumnWidths.begin());
    for (int i = 0; i < ColumnMode; ++i)
        Check(ElementName("MHidOptionColumnVis", i), true);
    view->ApplyColumnWidths();
}

void Main::ApplyGridColours()
{
    const QPalette system = QApplication::palette(view);
    QPalette palette = system;
    if (gridBackground != systemWindow) {
        const QColor base = ColourOfNumber(gridBackground, system);
        palette.setColor(QPalette::Base, base);
        palette.setColor(QPalette::AlternateBase, base.darker(base.lightness() < 128 ? 125 : 105));
    }
    if (gridForeground != systemWindowText)
        palette.setColor(QPalette::Text, ColourOfNumber(gridForeground, system));
    view->setPalette(palette);
}

void Main::SetGridColours(GridColour background, GridColour foreground)
{
    gridBackground = background.Number;
    gridForeground = foreground.Number;
    Check("MHidOptionTableBCDefault", background.IsDefault);
    Check("MHidOptionTableFCDefault", foreground.IsDefault);
    ApplyGridColours();
}

QFont Main::DefaultGridFont() const
{
    // The first column widths are made for this size.
    return QFont(GridFontDefaultName, 8);
}

void Main::MHidOptionTableFontChoose_Click()
{
    // The dialog has no colour, so the text keeps its own.
    const auto chosen = host.Prompts.Font(view->font());
    if (!chosen)
        return;
    view->setFont(*chosen);
    Check("MHidOptionTableFontDefault", false);
}

void Main::MHidOptionTableFontDefault_Click()
{
    view->setFont(DefaultGridFont());
    Check("MHidOptionTableFontDefault", true);
    MHidOptionTableFCDefault_Click();
}

void Main::MHidOptionTableBCChoose_Click()
{
    const auto chosen = host.Prompts.Colour(view->palette().color(QPalette::Base));
    if (chosen)
        SetGridColours({NumberOfColour(*chosen), false}, {gridForeground, IsChecked("MHidOptionTableFCDefault")});
}

void Main::MHidOptionTableBCDefault_Click()
{
    SetGridColours({systemWindow, true}, {gridForeground, IsChecked("MHidOptionTableFCDefault")});
}

void Main::MHidOptionTableFCChoose_Click()
{
    const auto chosen = host.Prompts.Colour(view->palette().color(QPalette::Text));
    if (chosen)
        SetGridColours({gridBackground, IsChecked("MHidOptionTableBCDefault")}, {NumberOfColour(*chosen), false});
}

void Main::MHidOptionTableFCDefault_Click()
{
    SetGridColours({gridBackground, IsChecked("MHidOptionTableBCDefault")}, {systemWindowText, true});
}

void Main::MToolsSaveSetting_Click()
{
    // The item's own check is the setting; it takes effect when the window closes.
}

void Main::MHelpHelp_Click()
{
    host.Shell.Open(host.ProgramFolder + u"\\VTLPLEH.htm");
}

void Main::MHelpWebsite_Click()
{
    host.Shell.Open(u"https://vantrel.example/playlist-editor"_s);
}
