#include "tageditor/Id3Info.h"

#include "platform/Drives.h"
#include "platform/Files.h"
#include "session/Hourglass.h"
#include "session/LongRun.h"
#include "session/Main.h"
#include "tageditor/SetAttributes.h"
#include "text/FormatText.h"
#include "text/FormerFile.h"
#include "text/PathText.h"

#include "ui_Id3Info.h"

#include <QScopeGuard>

#include <cmath>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
/// The reasons that are told of one update, at most.
constexpr qsizetype toldReasons = 24;

std::optional<double> NumberOf(const QString &text)
{
    bool isNumber = false;
    const double number = text.trimmed().toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// A file that each picture passes through while this lives, none for an empty path; a kill leaves it to the next
/// start.
class PassingFile
{
public:
    explicit PassingFile(const QString &pathOfFile) : path(pathOfFile)
    {
        if (path.isEmpty())
            return;
        DeleteFilePath(path);
        former.emplace(path).Note();
    }
    ~PassingFile()
    {
        if (former && PathExists(path))
            former->GiveBack();
        else if (former)
            former->Forget();
    }
    PassingFile(const PassingFile &) = delete;
    PassingFile &operator=(const PassingFile &) = delete;

private:
    QString path;
    std::optional<FormerFile> former;
};
} // namespace

quint8 Id3Info::TrackNumber() const
{
    const auto number = NumberOf(texts.Text(ui->ID3v1Track));
    if (!number)
        return 0;
    const double whole = std::nearbyint(*number);
    if (whole > std::numeric_limits<qint16>::max() || whole < std::numeric_limits<qint16>::min())
        throw std::runtime_error("The track number is too large: a tag holds numbers from 1 to 254.\n"
                                 "Nothing has been changed.");
    return whole >= 1 && whole <= 254 ? static_cast<quint8>(whole) : quint8(0);
}

quint8 Id3Info::GenreNumber() const
{
    return unlistedGenre.value_or(static_cast<quint8>(ui->ID3v1Genre->currentData().toUInt()));
}

void Id3Info::StoreTagFields(MP3File &object, bool copyFlag)
{
    const bool v1 = ui->ID3v1Present->isChecked();
    const bool v2 = ui->ID3v2Present->isChecked();
    const quint8 track = v1 ? TrackNumber() : quint8(0);
    if (copyFlag) {
        CopyHasID3v1 = v1;
        CopyHasID3v2 = v2;
    }
    if (v1) {
        object.SetTitle(texts.Text(ui->ID3v1Title));
        object.SetArtist(texts.Text(ui->ID3v1Artist));
        object.SetAlbum(texts.Text(ui->ID3v1Album));
        object.SetYear(texts.Text(ui->ID3v1Year));
        object.SetComment(texts.Text(ui->ID3v1Comment));
        object.SetTrack(track);
        object.SetGenre(GenreNumber());
    }
    if (!v2)
        return;
    for (const FrameField &frame : FrameFields())
        StoreFrame(object, frame, copyFlag);
    object.SetPreference(texts.Text(ui->ID3v2Preference));
    object.SetMood(texts.Text(ui->ID3v2Mood));
    object.SetTempo(texts.Text(ui->ID3v2Tempo));
    object.SetSituation(texts.Text(ui->ID3v2Situation));
    if (copyFlag) {
        CopyPreference = texts.Text(ui->ID3v2Preference);
        CopyMood = texts.Text(ui->ID3v2Mood);
        CopyTempo = texts.Text(ui->ID3v2Tempo);
        CopySituation = texts.Text(ui->ID3v2Situation);
    }
    StoreImages(object);
    object.Comments().Clear();
    for (const MP3Comment &comment : comments)
        object.Comments().Add(comment.Text, comment.Description);
}

void Id3Info::StoreFrame(MP3File &object, const FrameField &frame, bool copyFlag) const
{
    const QString text = texts.Text(frame.Field);
    if (!describedFrames.contains(frame.Id))
        object.SetFrame(frame.Id, text);
    else if (copyFlag)
        object.SetFrame(frame.Id, texts.IsEdited(frame.Field) ? text : QString());
    else
        object.SetShownFrame(frame.Id, text);
}

bool Id3Info::WriteTagFile(const QString &path, MP3File &object, const DiskFacts &asRead, QString &reason)
{
    const int attributes = FileAttributes(path);
    if (attributes < 0 || (attributes & AttributeDirectory) != 0) {
        reason = u"the file does not exist"_s;
        return false;
    }
    if ((attributes & AttributeReadOnly) != 0) {
        reason = u"the file is read-only"_s;
        return false;
    }
    const auto change = [](const QCheckBox *box) {
        return box->isChecked() ? MP3File::TagChange::Write : MP3File::TagChange::Remove;
    };
    try {
        object.WriteTags(path, change(ui->ID3v1Present), change(ui->ID3v2Present), asRead);
        return true;
    } catch (const MediaError &failure) {
        // Who has been told may try again, and one of two tags may be there already.
        shownFile = DiskFactsOf(path);
        reason = failure.Text();
        return false;
    }
}

bool Id3Info::UpdateFile(const QString &path, MP3File &object, QString &reason)
{
    const DiskFacts asRead = IsOneFile() ? shownFile : DiskFactsOf(path);
    try {
        object.ResetFile(path);
        object.ReadTags(path, false);
        object.Images().Clear();
        object.Comments().Clear();
        StoreTagFields(object, false);
    } catch (const MediaError &failure) {
        reason = failure.Text();
        return false;
    }
    return WriteTagFile(path, object, asRead, reason);
}

void Id3Info::CmdUpdate_Click()
{
    Update();
}

bool Id3Info::Update()
{
    if (!TakeTypedComment())
        return false;
    const Hourglass hourglass(this);
    const auto hideBar = qScopeGuard([this] { ui->ProgressBar1->hide(); });
    ui->ProgressBar1->show();
    QStringList reasons;
    const qsizetype reached = UpdateFiles(reasons);
    const bool whole = reached == SelectedPaths.size();
    main.RefreshRows(SelectedIndexes.first(reached), SelectedPaths.first(reached));
    TellFailures(reasons);
    // What was entered for the files that are still to be written stays in the fields, also while their disk is away.
    if (whole && (reasons.isEmpty() || Fields() == readFields))
        Form_Activate();
    else
        ShowBesideFields();
    const qsizetype updated = reached - reasons.size();
    const QString files = Counted(updated, u"file"_s) + u" updated";
    main.Answer(whole ? files : u"Stopped: "_s + files);
    return whole && reasons.isEmpty();
}

qsizetype Id3Info::UpdateFiles(QStringList &reasons)
{
    LongRun run(ui->ProgressBar1, nullptr);
    const Progress progress = run.AsProgress();
    const PassingFile bitmap(Id3v2ImageList.empty() ? QString() : TemporaryBitmap());
    const qsizetype count = SelectedPaths.size();
    progress.SetLimits(0, 2 * static_cast<int>(count));
    MP3File object;
    qsizetype reached = 0;
    for (; reached < count && !run.Stopped(); ++reached) {
        const QString &path = SelectedPaths[reached];
        QString reason;
        if (!UpdateFile(path, object, reason))
            reasons.append(GetFileName(path) + u": " + reason);
        progress.SetValue(2 * static_cast<int>(reached + 1));
    }
    return reached;
}

TagFields Id3Info::Fields() const
{
    TagFields fields{ui->ID3v1Present->isChecked(), ui->ID3v2Present->isChecked()};
    const auto take = [&fields](const QWidget *page) {
        for (const auto *field : page->findChildren<QLineEdit *>())
            fields.Texts.append(field->text());
        for (const auto *field : page->findChildren<QPlainTextEdit *>())
            fields.Texts.append(field->toPlainText());
        for (const auto *field : page->findChildren<QComboBox *>())
            fields.Texts.append(field->currentText());
    };
    if (fields.HasID3v1) {
        take(ui->ID3v1InfoPage);
        fields.Texts.append(QString::number(GenreNumber()));
    }
    if (!fields.HasID3v2)
        return fields;
    for (const QWidget *page : {ui->ID3v2InfoPage, ui->ID3v2LyricsPage, ui->ID3v2MiscPage})
        take(page);
    fields.Texts.append(texts.IsEdited(ui->ID3v2Comment) ? texts.Text(ui->ID3v2Comment) : QString());
    fields.Comments = QList<MP3Comment>(comments.begin(), comments.end());
    for (const TagPicture &picture : Id3v2ImageList)
        fields.Images.append(picture.Image());
    return fields;
}

bool Id3Info::ConfirmUpdateFirst()
{
    if (Fields() == readFields)
        return true;
    const QString text = IsOneFile() ? u"The tags have been changed. Do you want to update the file first?"_s
                                     : u"The tags have been changed. Do you want to update the files first?"_s;
    const PromptAnswer answer = main.World().Prompts.Message({text, PromptIcon::Question, PromptButtons::YesNoCancel});
    return answer == PromptAnswer::Yes ? Update() : answer == PromptAnswer::No;
}

void Id3Info::TellFailures(const QStringList &reasons)
{
    if (reasons.isEmpty())
        return;
    QString details = reasons.first(std::min(reasons.size(), toldReasons)).join(u'\n');
    if (reasons.size() > toldReasons)
        details += u"\nand "_s + QString::number(reasons.size() - toldReasons) + u" more";
    const QString text =
        IsOneFile() ? u"Failed to update the file!, check that it is not in use or set as Read-Only."_s
                    : u"Some files could not be updated!, check that they are not in use or set as Read-Only."_s;
    main.World().Prompts.Message({text, PromptIcon::Warning, PromptButtons::Ok, details});
}

void Id3Info::CmdCopy_Click()
{
    const Hourglass hourglass(this);
    if (!AnyTagTicked() || !TakeTypedComment())
        return;
    const PassingFile bitmap(Id3v2ImageList.empty() ? QString() : TemporaryBitmap());
    try {
        StoreTagFields(CopyBuffer, true);
    } catch (const MediaError &) {
        // Half of a copy is none.
        HasCopy = false;
        ui->CmdPaste->setEnabled(false);
        throw;
    }
    HasCopy = true;
    ui->CmdPaste->setEnabled(true);
}

void Id3Info::CmdPaste_Click()
{
    const Hourglass hourglass(this);
    LoadTagFields(CopyBuffer, true);
    if (AnyTagTicked())
        ui->CmdUpdate->setEnabled(true);
    ui->CmdCopy->setEnabled(true);
}

void Id3Info::ID3v1Duplicate_Click()
{
    if (!ui->ID3v1Present->isChecked())
        return;
    ui->ID3v2Present->setChecked(true);
    EnableFields();
    texts.Show(ui->ID3v2Title, texts.Text(ui->ID3v1Title));
    texts.Show(ui->ID3v2Artist, texts.Text(ui->ID3v1Artist));
    texts.Show(ui->ID3v2Album, texts.Text(ui->ID3v1Album));
    texts.Show(ui->ID3v2Year, texts.Text(ui->ID3v1Year));
    texts.Show(ui->ID3v2Track, texts.Text(ui->ID3v1Track));
    if (!unlistedGenre)
        texts.Show(ui->ID3v2Genre->lineEdit(), ui->ID3v1Genre->currentText());
    const QString comment = texts.Text(ui->ID3v1Comment);
    if (comment.isEmpty() || !TakeTypedComment())
        return;
    AddCommentRow({{}, comment});
    ui->ID3v2LstComments->selectRow(ui->ID3v2LstComments->rowCount() - 1);
}

void Id3Info::ID3v2Duplicate_Click()
{
    if (!ui->ID3v2Present->isChecked())
        return;
    ui->ID3v1Present->setChecked(true);
    EnableFields();
    texts.Show(ui->ID3v1Title, texts.Text(ui->ID3v2Title));
    texts.Show(ui->ID3v1Artist, texts.Text(ui->ID3v2Artist));
    texts.Show(ui->ID3v1Album, texts.Text(ui->ID3v2Album));
    texts.Show(ui->ID3v1Year, texts.Text(ui->ID3v2Year));
    const QString track = texts.Text(ui->ID3v2Track);
    const qsizetype slash = track.indexOf(u'/', 1);
    const QString number = NumberOf(track) ? track : slash > 0 ? track.first(slash) : QString();
    if (NumberOf(number))
        texts.Show(ui->ID3v1Track, number);
    const QString genre = texts.Text(ui->ID3v2Genre->lineEdit()).toLower();
    for (int entry = 1; entry < ui->ID3v1Genre->count(); ++entry) {
        if (genre.contains(ui->ID3v1Genre->itemText(entry).toLower())) {
            ui->ID3v1Genre->setCurrentIndex(entry);
            unlistedGenre.reset();
            break;
        }
    }
    if (TakeTypedComment() && !comments.empty())
        texts.Show(ui->ID3v1Comment, comments.front().Text);
}

void Id3Info::SetAttribute(int attribute, bool on)
{
    const Hourglass hourglass(this);
    const QString request = on ? u"SET"_s : u"CLR"_s;
    AttributeRequests requests;
    (attribute == AttributeReadOnly ? requests.ReadOnly : requests.Archive) = request;
    for (const QString &path : std::as_const(SelectedPaths))
        SetAttributes(path, requests);
    main.ListView1.Steps().End();
    // What could not be changed is shown as it is.
    LookAtAttributes();
}

void Id3Info::FileInfoReadOnly_Click()
{
    SetAttribute(AttributeReadOnly, ui->FileInfoReadOnly->isChecked());
}

void Id3Info::FileInfoArchive_Click()
{
    SetAttribute(AttributeArchive, ui->FileInfoArchive->isChecked());
}
