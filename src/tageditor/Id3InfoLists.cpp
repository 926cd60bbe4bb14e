#include "tageditor/Id3Info.h"

#include "media/ID3v2Tag.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "session/Main.h"
#include "text/FormatText.h"
#include "text/PathText.h"

#include "ui_Id3Info.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace
{
/// Characters that a cell shows of a text.
constexpr qsizetype shownLength = 500;
constexpr auto bitmapFilter = "Bitmap Files (*.bmp)|*.bmp"_L1;

QTableWidgetItem *Cell(const QString &text)
{
    const QString line = text.left(shownLength).simplified();
    auto *cell = new QTableWidgetItem(line);
    // A text of a tag is no markup.
    cell->setToolTip(u"<p>"_s + line.toHtmlEscaped() + u"</p>");
    return cell;
}

void AppendRow(QTableWidget *list, const QStringList &values)
{
    const int row = list->rowCount();
    list->insertRow(row);
    for (int column = 0; column < values.size(); ++column)
        list->setItem(row, column, Cell(values[column]));
}

/// From 0; -1 for none.
int SelectedRow(const QTableWidget *list)
{
    const QModelIndexList rows = list->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.front().row();
}
} // namespace

int Id3Info::RemoveSelectedRow(QTableWidget *list)
{
    const int row = SelectedRow(list);
    if (row < 0)
        return -1;
    const QSignalBlocker blocker(list);
    list->removeRow(row);
    list->clearSelection();
    if (list->rowCount() > 0)
        list->selectRow(std::max(row - 1, 0));
    return row;
}

void Id3Info::EnableCommentCommands(bool on)
{
    ui->ID3v2EditComment->setEnabled(on);
    ui->ID3v2RemoveComment->setEnabled(on);
}

void Id3Info::EnableImageCommands(bool on)
{
    for (QWidget *command : {ui->ID3v2ImageRemove, ui->ID3v2ImageSave, ui->ID3v2ImageOpen})
        command->setEnabled(on);
}

void Id3Info::LoadComments(MP3File &object)
{
    for (const MP3Comment &comment : object.Comments().Items())
        AddCommentRow(comment);
    if (!comments.empty())
        ui->ID3v2LstComments->selectRow(0);
}

void Id3Info::AddCommentRow(const MP3Comment &comment)
{
    comments.push_back(comment);
    AppendRow(ui->ID3v2LstComments, {comment.Description, comment.Text});
    EnableCommentCommands(true);
}

void Id3Info::ID3v2LstComments_Click()
{
    const int row = SelectedRow(ui->ID3v2LstComments);
    StoreShownComment();
    shownComment = row;
    texts.Show(ui->ID3v2Comment, row < 0 ? QString() : comments[static_cast<std::size_t>(row)].Text);
}

void Id3Info::StoreShownComment()
{
    if (shownComment < 0 || !texts.IsEdited(ui->ID3v2Comment))
        return;
    const QString text = texts.Text(ui->ID3v2Comment);
    comments[static_cast<std::size_t>(shownComment)].Text = text;
    ui->ID3v2LstComments->setItem(shownComment, 1, Cell(text));
    texts.Show(ui->ID3v2Comment, text);
}

void Id3Info::ID3v2AddComment_Click()
{
    const QString text = texts.Text(ui->ID3v2Comment);
    if (text.isEmpty())
        return;
    const auto description = main.World().Prompts.Line({u"Add Comment"_s, u"Enter description."_s, {}});
    if (!description || description->isEmpty())
        return;
    AddCommentRow({*description, text});
    // What was typed is the new one's, not that of the row it was typed over.
    shownComment = ui->ID3v2LstComments->rowCount() - 1;
    ui->ID3v2LstComments->selectRow(shownComment);
    ui->ID3v2Comment->setFocus();
}

void Id3Info::ID3v2EditComment_Click()
{
    StoreShownComment();
}

bool Id3Info::TakeTypedComment()
{
    if (!ui->ID3v2Present->isChecked() || !texts.IsEdited(ui->ID3v2Comment))
        return true;
    if (shownComment >= 0)
        StoreShownComment();
    else
        ID3v2AddComment_Click();
    return !texts.IsEdited(ui->ID3v2Comment);
}

void Id3Info::ID3v2RemoveComment_Click()
{
    const int row = RemoveSelectedRow(ui->ID3v2LstComments);
    if (row < 0)
        return;
    comments.erase(comments.begin() + row);
    shownComment = -1;
    ID3v2LstComments_Click();
}

void Id3Info::LoadImages(MP3File &object)
{
    for (const MP3Image &image : object.Images().Items())
        AddImageRow(TagPicture(image));
    if (!Id3v2ImageList.empty())
        ui->ID3v2LstImages->selectRow(0);
}

void Id3Info::AddImageRow(TagPicture picture)
{
    const MP3Image &image = picture.Image();
    AppendRow(ui->ID3v2LstImages, {image.Description, FormatFileSize(image.Size()), image.MIMEType});
    Id3v2ImageList.push_back(std::move(picture));
    EnableImageCommands(true);
}

void Id3Info::ID3v2LstImages_Click()
{
    const int row = SelectedRow(ui->ID3v2LstImages);
    if (row < 0)
        ui->ID3v2Image->Show({});
    else
        ui->ID3v2Image->Show([this, row] { return Id3v2ImageList[static_cast<std::size_t>(row)].Picture(); });
}

void Id3Info::ID3v2ImageAdd_Click()
{
    const auto path = main.World().Prompts.OpenFile(
        {u"Add Image"_s, u"Bitmap Files (*.bmp)|*.bmp|JPEG Files (*.jpg)|*.jpg|GIF Files (*.gif)|*.gif"_s, {}, {}});
    if (!path)
        return;
    const auto description = main.World().Prompts.Line({u"Add Image"_s, u"Enter description."_s, {}});
    MP3Image image;
    if (!description || !ReadWholeFile(*path, image.Data))
        return;
    image.Description = *description;
    image.MIMEType = u"image/"_s + GetExtension(GetFileName(*path)).mid(1);
    TagPicture picture(image);
    if (picture.Picture().isNull())
        return;
    AddImageRow(std::move(picture));
    ui->ID3v2LstImages->selectRow(ui->ID3v2LstImages->rowCount() - 1);
}

void Id3Info::ID3v2ImageRemove_Click()
{
    const int row = RemoveSelectedRow(ui->ID3v2LstImages);
    if (row < 0)
        return;
    Id3v2ImageList.erase(Id3v2ImageList.begin() + row);
    ID3v2LstImages_Click();
}

void Id3Info::ID3v2ImageSave_Click()
{
    const int row = SelectedRow(ui->ID3v2LstImages);
    if (row < 0 || ui->ID3v2Image->Picture().isNull())
        return;
    const Prompts &prompts = main.World().Prompts;
    const auto path = prompts.SaveFile({u"Save Image"_s, bitmapFilter, u"bmp"_s, {}});
    if (path && !main.CheckExists(*path) &&
        !WriteWholeFile(*path, Id3v2ImageList[static_cast<std::size_t>(row)].Bitmap()))
        prompts.Message({u"Could not save the file!"_s, PromptIcon::Warning});
}

void Id3Info::ID3v2ImageOpen_Click()
{
    const int row = SelectedRow(ui->ID3v2LstImages);
    if (row < 0 || ui->ID3v2Image->Picture().isNull())
        return;
    if (WriteTemporaryBitmap(Id3v2ImageList[static_cast<std::size_t>(row)].Bitmap()))
        main.World().Shell.Open(TemporaryBitmap());
}

QString Id3Info::TemporaryBitmap() const
{
    return main.World().ApplicationFolder + u"\\tmp.bmp";
}

bool Id3Info::WriteTemporaryBitmap(const QByteArray &content) const
{
    return EnsureFolder(main.World().ApplicationFolder) && WriteWholeFile(TemporaryBitmap(), content);
}

void Id3Info::StoreImages(MP3File &object)
{
    object.Images().Clear();
    qint64 size = 0;
    for (TagPicture &picture : Id3v2ImageList) {
        // What no tag can take shall not fill the memory before that is found.
        size += picture.Stored().size();
        if (size > MostID3v2Bytes)
            throw MediaError(u"the pictures are more than 256 MB as bitmaps"_s);
        // Without its picture a tag is not written at all.
        if (!WriteTemporaryBitmap(picture.Stored()))
            throw MediaError(u"a picture could not be handed over: "_s + ShownPath(TemporaryBitmap()) +
                             u" cannot be written");
        object.Images().Add(TemporaryBitmap(), picture.Image().Description, picture.Image().Type);
        DeleteFilePath(TemporaryBitmap());
    }
}
