#include "reports/ReportForm.h"

#include "playlist/NamingFormat.h"
#include "session/Hourglass.h"
#include "session/Main.h"
#include "text/FileLists.h"

#include "ui_ReportForm.h"

#include <QEvent>
#include <QFontDatabase>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace
{
// The frame of each kind of report that the other has not.
constexpr int pageStep = 2;
constexpr int textStep = 3;
constexpr int runStep = 5;
constexpr auto settingsFilter = "Report Settings (*.rpt)|*.rpt|"_L1;
constexpr auto settingsExtension = "rpt"_L1;
} // namespace

ReportForm::ReportForm(Main &mainWindow) : WizardForm(mainWindow)
{
    ui = std::make_unique<Ui::ReportForm>();
    ui->setupUi(this);
    Form_Load();
    ConnectClicks<ReportForm>({
        {ui->CmdNext, &ReportForm::CmdNext_Click},
        {ui->CmdBack, &ReportForm::CmdBack_Click},
        {ui->CmdClose, &ReportForm::CmdClose_Click},
        {ui->cmdUp, &ReportForm::cmdUp_Click},
        {ui->cmdDown, &ReportForm::cmdDown_Click},
        {ui->cmdAll, &ReportForm::cmdAll_Click},
        {ui->cmdNone, &ReportForm::cmdNone_Click},
        {ui->LoadCurrent, &ReportForm::LoadCurrent_Click},
        {ui->SaveCurrent, &ReportForm::SaveCurrent_Click},
        {ui->LoadDefault, &ReportForm::LoadDefault_Click},
    });
    connect(ui->FontList, &QListWidget::currentTextChanged, this,
            [this](const QString &family) { Run([&] { FontList_Click(family); }); });
    connect(ui->FontSizer, &QComboBox::currentIndexChanged, this, &ReportForm::FontSizer_Click);
    ui->txtTitle->installEventFilter(this);
}

ReportForm::~ReportForm() = default;

void ReportForm::Form_Load()
{
    SetSteps(ui->Frames, ui->CmdNext, ui->CmdBack);
    MoveByLabel(ui->Label1);
    QFont titleFont = ui->Label1->font();
    titleFont.setBold(true);
    ui->Label1->setFont(titleFont);
    FillLists();
    ShowRecord(DefaultReportSettings());
}

void ReportForm::FillLists()
{
    ui->RepType->addItems({u"HTML File"_s, u"TXT File"_s});
    ui->ColumnList->setHeaderLabels({u"Column"_s});
    constexpr int columnWidth = 200;
    ui->ColumnList->setColumnWidth(0, columnWidth);
    ui->ColumnList->setMinimumWidth(columnWidth + ui->ColumnList->style()->pixelMetric(QStyle::PM_ScrollBarExtent) +
                                    2 * ui->ColumnList->frameWidth());
    for (int width = 16; width <= 2000; width += 16)
        ui->ValWidth->addItem(QString::number(width));
    ui->ValWidth->addItem(u"Auto"_s);
    ui->ValWidth->lineEdit()->setMaxLength(4);
    for (QComboBox *list : {ui->ValBorder, ui->ValSpacing, ui->ValPadding}) {
        for (int number = 0; number <= 24; ++number)
            list->addItem(QString::number(number));
        list->lineEdit()->setMaxLength(3);
    }
    ui->FontSizer->addItems({u"8"_s, u"10"_s, u"12"_s, u"14"_s, u"18"_s, u"24"_s, u"36"_s});
    const QStringList families = QFontDatabase::families();
    for (const QString &family : families.mid(1)) {
        auto *row = new QListWidgetItem(family, ui->FontList);
        // A name in signs cannot be read.
        if (QFontDatabase::writingSystems(family).contains(QFontDatabase::Latin))
            row->setFont(QFont(family, ui->FontList->font().pointSize()));
    }
    // Room for the largest sample, so that nothing moves.
    QFont largest = ui->FontTest->font();
    largest.setPointSize(36);
    ui->FontTest->setMinimumHeight(QFontMetrics(largest).height());
}

void ReportForm::Form_Activate()
{
    DefaultTitle = ExpandNamingFormat(u"%0"_s, TakePlaylist(), main.World().Clock.Now()).remove(".m3u"_L1);
    Restart();
}

QString ReportForm::TakePlaylist()
{
    const Hourglass hourglass(this);
    main.DestroyFileArray();
    main.SaveFileArrayFromList(true);
    return FindCommonRoot(main.FileArray);
}

void ReportForm::Restart()
{
    Step = 0;
    ShowFrame(0);
    EnableSteps(true, false);
    ui->lblReport->setText(u"Click 'Next>' to generate the report."_s);
}

bool ReportForm::IsText() const
{
    return ui->RepType->currentIndex() == 1;
}

void ReportForm::Skip(int step, int target)
{
    if (Step == step)
        Step = target;
}

void ReportForm::CmdNext_Click()
{
    ++Step;
    if (IsText())
        Skip(pageStep, textStep);
    else
        Skip(textStep, textStep + 1);
    if (Step > runStep) {
        Restart();
    } else if (Step == runStep) {
        RunGenerate();
    } else {
        ShowFrame(Step);
        EnableSteps(true, true);
    }
}

void ReportForm::CmdBack_Click()
{
    --Step;
    if (IsText())
        Skip(pageStep, pageStep - 1);
    else
        Skip(textStep, pageStep);
    ShowFrame(Step);
    EnableSteps(true, Step > 0);
}

void ReportForm::RunGenerate()
{
    EnableSteps(false, false);
    const auto done = qScopeGuard([this] {
        EnableSteps(true, false);
        ui->CmdClose->setFocus();
    });
    Generate();
}

void ReportForm::MoveColumn(int distance)
{
    TickList &list = *ui->ColumnList;
    const int row = list.SelectedRow();
    const int other = row + distance;
    if (row < 0 || other < 0 || other >= list.RowCount())
        return;
    list.SwapRows(row, other);
    list.SelectRow(other);
}

void ReportForm::cmdUp_Click()
{
    MoveColumn(-1);
}

void ReportForm::cmdDown_Click()
{
    MoveColumn(1);
}

void ReportForm::cmdAll_Click()
{
    ui->ColumnList->TickAll(true);
}

void ReportForm::cmdNone_Click()
{
    ui->ColumnList->TickAll(false);
}

bool ReportForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != ui->txtTitle || event->type() != QEvent::MouseButtonDblClick)
        return WizardForm::eventFilter(watched, event);
    Run([this] { txtTitle_DblClick(); });
    return true;
}

void ReportForm::txtTitle_DblClick()
{
    ui->txtTitle->setText(DefaultTitle);
}

void ReportForm::FontList_Click(const QString &family)
{
    ShowFont(family);
}

void ReportForm::FontSizer_Click()
{
    QFont font = ui->FontTest->font();
    font.setPointSize(ui->FontSizer->currentText().toInt());
    ui->FontTest->setFont(font);
}

void ReportForm::LoadCurrent_Click()
{
    const auto path = main.World().Prompts.OpenFile(
        {u"Load"_s, settingsFilter, settingsExtension, main.World().ProgramFolder + u"\\*.rpt"});
    if (!path)
        return;
    ReportSettings record;
    if (LoadReportSettings(*path, record))
        ShowRecord(record);
    else
        main.World().Prompts.Message({u"Could not read the file!"_s, PromptIcon::Warning});
}

void ReportForm::SaveCurrent_Click()
{
    const auto path = main.World().Prompts.SaveFile(
        {u"Save"_s, settingsFilter, settingsExtension, main.World().ProgramFolder + u"\\*.rpt"});
    if (!path || main.CheckExists(*path))
        return;
    ReportSettings record;
    FillRecordFromControls(record);
    if (!SaveReportSettings(*path, record))
        main.World().Prompts.Message({u"Could not save the file!"_s, PromptIcon::Warning});
}

void ReportForm::LoadDefault_Click()
{
    ShowRecord(DefaultReportSettings());
}
