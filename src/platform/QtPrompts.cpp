#include "platform/QtPrompts.h"

#include "platform/Drives.h"
#include "platform/Files.h"

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QMimeDatabase>
#include <QTextDocument>
#include <QTextEdit>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{

QString MessageTitle()
{
    return u"Vantrel Playlist Editor"_s;
}

QMessageBox::Icon IconOf(PromptIcon icon)
{
    switch (icon) {
    case PromptIcon::Question:
        return QMessageBox::Question;
    case PromptIcon::Information:
        return QMessageBox::Information;
    case PromptIcon::Warning:
        return QMessageBox::Warning;
    case PromptIcon::Stop:
        return QMessageBox::Critical;
    case PromptIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(PromptButtons buttons)
{
    switch (buttons) {
    case PromptButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case PromptButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case PromptButtons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

/// Gives each button the letter that it may lack.
void AddLetters(const QMessageBox &box)
{
    for (QAbstractButton *button : box.buttons()) {
        if (!button->text().contains(u'&'))
            button->setText(u'&' + button->text());
    }
}

PromptAnswer AskMessage(const MessagePrompt &prompt)
{
    QMessageBox box(IconOf(prompt.Icon), MessageTitle(), ShownPath(prompt.Text), ButtonsOf(prompt.Buttons),
                    QApplication::activeWindow());
    // A file name is no markup.
    box.setTextFormat(Qt::PlainText);
    // A long list stands behind a button. A short one goes into a label that takes what looks like markup for it.
    const QString details = ShownPath(prompt.Details);
    if (details.count(u'\n') >= 3) {
        box.setDetailedText(details);
        box.findChild<QTextEdit *>()->setAccessibleName(u"Details"_s);
    } else if (!details.isEmpty()) {
        box.setInformativeText(Qt::convertFromPlainText(details));
    }
    AddLetters(box);
    switch (box.exec()) {
    case QMessageBox::Yes:
        return PromptAnswer::Yes;
    case QMessageBox::No:
        return PromptAnswer::No;
    case QMessageBox::Cancel:
        return PromptAnswer::Cancel;
    default:
        return PromptAnswer::Ok;
    }
}

/// Folder (host form) and name of a proposed path; the current directory for a bare name.
std::pair<QString, QString> SplitProposal(const QString &proposal)
{
    const qsizetype separator = proposal.lastIndexOf(u'\\');
    const QString folder = separator < 0 ? CurrentDirectory() : proposal.first(separator);
    return {ToHostPath(folder + u'\\'), ToHostPath(proposal.sliced(separator + 1))};
}

/// The dialog leaves every name as it is that holds a full stop, also "Vol. 2".
QString WithSuffix(const QString &path, const QString &suffix)
{
    const QString end = u'.' + suffix;
    const bool isKnown = suffix.isEmpty() || path.endsWith(end, Qt::CaseInsensitive) ||
                         QMimeDatabase().suffixForFileName(path).size() > 1 || ExamineFile(path).Exists;
    return isKnown ? path : path + end;
}

QStringList RunFilesDialog(QFileDialog &dialog)
{
    QStringList paths;
    if (dialog.exec() == QDialog::Accepted) {
        for (const QString &path : dialog.selectedFiles())
            paths.append(FromHostPath(path));
    }
    return paths;
}

std::optional<QString> RunFileDialog(QFileDialog &dialog)
{
    const QStringList paths = RunFilesDialog(dialog);
    return paths.isEmpty() ? std::nullopt : std::optional(paths.constFirst());
}

void PrepareFileDialog(QFileDialog &dialog, const FilePrompt &prompt)
{
    const auto [folder, name] = SplitProposal(prompt.Proposal);
    dialog.setDirectory(folder);
    dialog.setNameFilter(QtFilter(prompt.Filter));
    dialog.setDefaultSuffix(prompt.DefaultExtension);
    // A mask proposes the folder alone.
    if (!name.isEmpty() && !name.contains(u'*'))
        dialog.selectFile(name);
}

std::optional<QString> AskOpenFile(const FilePrompt &prompt)
{
    QFileDialog dialog(QApplication::activeWindow(), prompt.Title);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    PrepareFileDialog(dialog, prompt);
    return RunFileDialog(dialog);
}

QStringList AskOpenFiles(const FilePrompt &prompt)
{
    QFileDialog dialog(QApplication::activeWindow(), prompt.Title);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    PrepareFileDialog(dialog, prompt);
    return RunFilesDialog(dialog);
}

std::optional<QString> AskSaveFile(const FilePrompt &prompt)
{
    QFileDialog dialog(QApplication::activeWindow(), prompt.Title);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    // The program asks in its own words whether a file shall be replaced.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    PrepareFileDialog(dialog, prompt);
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString &filter) {
        dialog.setDefaultSuffix(filter.section(u"(*."_s, 1).section(u')', 0, 0));
    });
    const auto path = RunFileDialog(dialog);
    return path ? std::optional(WithSuffix(*path, dialog.defaultSuffix())) : std::nullopt;
}

std::optional<QString> AskFolder(const FolderPrompt &prompt)
{
    // Every dialog of Qt's lets a folder be typed, whether it was asked for or not.
    QFileDialog dialog(QApplication::activeWindow(), prompt.Title, ToHostPath(CurrentDirectory() + u'\\'));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    return RunFileDialog(dialog);
}

std::optional<QColor> AskColour(const QColor &colour)
{
    const QColor chosen = QColorDialog::getColor(colour, QApplication::activeWindow());
    return chosen.isValid() ? std::optional(chosen) : std::nullopt;
}

std::optional<QFont> AskFont(const QFont &font)
{
    bool accepted = false;
    const QFont chosen = QFontDialog::getFont(&accepted, font, QApplication::activeWindow());
    return accepted ? std::optional(chosen) : std::nullopt;
}

std::optional<QString> AskLine(const LinePrompt &prompt)
{
    bool accepted = false;
    const QString line = QInputDialog::getText(QApplication::activeWindow(), prompt.Title, prompt.Text,
                                               QLineEdit::Normal, prompt.Proposal, &accepted);
    return accepted ? std::optional(line) : std::nullopt;
}

} // namespace

QString QtFilter(const QString &filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const qsizetype bracket = parts[i].lastIndexOf(u'(');
        const QString text = (bracket < 0 ? parts[i] : parts[i].first(bracket)).trimmed();
        filters.append(text + u" (" + QString(parts[i + 1]).replace(u';', u' ') + u')');
    }
    return filters.join(u";;"_s);
}

Prompts QtPrompts()
{
    return {AskMessage, AskOpenFile, AskSaveFile, AskFolder, AskColour, AskFont, AskLine, AskOpenFiles};
}
