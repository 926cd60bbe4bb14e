#include "tageditor/Id3Info.h"

#include "media/TitleTexts.h"
#include "media/VorbisTag.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "session/Hourglass.h"
#include "session/LockWindowRedraw.h"
#include "session/Main.h"
#include "text/FormatText.h"
#include "text/PathText.h"

#include "ui_Id3Info.h"

#include <QPointer>
#include <QScopeGuard>

#include <cmath>

using namespace Qt::StringLiterals;

void Id3Info::Form_Activate()
{
    const Hourglass hourglass(this);
    LockWindowRedraw(this, false);
    const auto unlock = qScopeGuard([this] { LockWindowRedraw(this, true); });
    const QPointer<QWidget> focused = focusWidget();
    const int page = ui->Id3MainTab->currentIndex();
    {
        // The pages change on their own here, by no click of the user's.
        const QSignalBlocker blocker(ui->Id3MainTab);
        DisableCommands();
        main.ListView1_Click();
        ui->CmdUpdate->setEnabled(CollectSelection());
        ui->CmdPrev->setEnabled(FirstIndex != 1);
        ui->CmdNext->setEnabled(LastIndex != main.ListView1.Count());
        ShowSelection(page);
        ShowTitle();
    }
    readFields = Fields();
    CountLostTags();
    ui->FileInfoReadOnly->show();
    ui->FileInfoArchive->show();
    if (QWidget *field = focused; field != nullptr && field->isEnabled() && field->isVisible())
        field->setFocus();
}

void Id3Info::CountLostTags()
{
    const bool several = SelectedExtension == ".mp3"_L1 && !IsOneFile();
    lostTags.Count(several ? SelectedPaths : QStringList());
}

void Id3Info::ShowBesideFields()
{
    main.ListView1_Click();
    LookAtAttributes();
    CountLostTags();
}

void Id3Info::DisableCommands()
{
    for (QWidget *command : {ui->CmdPrev, ui->CmdNext, ui->CmdPaste, ui->CmdCopy, ui->CmdUpdate})
        command->setEnabled(false);
    EnablePages(false);
    for (QWidget *frame : {ui->FrameMPEGInfo, ui->FrameOGGInfo}) {
        frame->hide();
        frame->setEnabled(false);
    }
    ui->FileInfoReadOnly->hide();
    ui->FileInfoArchive->hide();
}

void Id3Info::EnablePages(bool on)
{
    for (QWidget *page : {ui->ID3v1Page, ui->ID3v2Page})
        ui->Id3MainTab->setTabEnabled(ui->Id3MainTab->indexOf(page), on);
    ui->ID3v1Present->setEnabled(on);
    ui->ID3v2Present->setEnabled(on);
}

bool Id3Info::CollectSelection()
{
    SelectedPaths.clear();
    SelectedIndexes.clear();
    SelectedExtension.clear();
    attributesOfAll = AttributeReadOnly | AttributeArchive;
    attributesOfAny = 0;
    const Grid &grid = main.ListView1;
    qsizetype files = 0;
    int extensions = 0;
    QString lastExtension;
    for (int row = 1; row <= grid.Count(); ++row) {
        if (!grid.Item(row).Selected)
            continue;
        if (SelectedIndexes.isEmpty())
            FirstIndex = row;
        LastIndex = row;
        const QString path = grid.Item(row).FullPath();
        SelectedPaths.append(path);
        SelectedIndexes.append(row);
        const int attributes = FileAttributes(path);
        if (attributes < 0 || (attributes & (AttributeDirectory | AttributeVolume)) != 0)
            continue;
        attributesOfAll &= attributes;
        attributesOfAny |= attributes;
        const QString extension = GetExtension(GetFileName(path)).toLower();
        if (++files == 1 || extension != lastExtension)
            ++extensions;
        lastExtension = extension;
    }
    if (files == SelectedPaths.size() && extensions == 1) {
        SelectedExtension = lastExtension;
    } else {
        SelectedPaths.clear();
        SelectedIndexes.clear();
    }
    return SelectedExtension == ".mp3"_L1;
}

void Id3Info::ShowSelection(int page)
{
    unread = false;
    if (SelectedPaths.isEmpty()) {
        ShowMPEGInfo({}, CopyBuffer);
        ShowFileInfo({});
        ShowLines(u"Unable to Update/Read files..."_s, u"Check the item(s) exist and are of the same type."_s);
    } else if (SelectedExtension == ".mp3"_L1) {
        ShowMP3(page);
    } else if (SelectedExtension == ".ogg"_L1) {
        ShowOGG();
    } else {
        ShowPlain(SelectedExtension.mid(1).toUpper());
    }
}

void Id3Info::ShowTitle()
{
    const QString caption = u"File Info/Tag Editor..."_s;
    const QString files =
        IsOneFile() ? ShownPath(GetFileName(SelectedPaths.front())) : Counted(SelectedPaths.size(), u"file"_s);
    setWindowTitle(SelectedPaths.isEmpty() ? caption : caption + u' ' + files);
}

void Id3Info::ShowMP3(int page)
{
    MP3File object;
    if (IsOneFile()) {
        const QString &path = SelectedPaths.front();
        shownFile = DiskFactsOf(path);
        if (!GetID3Tag(path, object)) {
            object.ResetFile(path);
            // Empty fields would take away tags that nobody has seen.
            unread = true;
            ui->CmdUpdate->setEnabled(false);
        }
        ShowFileInfo(path);
        ShowMPEGInfo(path, object);
    } else {
        ShowLines(u"Multiple MP3 Files Selected..."_s, u"Click 'Paste' then 'Update' to update all items."_s);
        ShowAttributes(attributesOfAll, attributesOfAny, true);
        ShowMPEGInfo({}, object);
    }
    LoadTagFields(object, false);
    ui->CmdCopy->setEnabled(object.HasID3v1() || object.HasID3v2());
    ui->FrameMPEGInfo->setEnabled(true);
    ui->FrameMPEGInfo->show();
    EnablePages(!unread);
    ui->Id3MainTab->setCurrentIndex(IsOneFile() && !unread ? page : 0);
    ui->CmdPaste->setEnabled(HasCopy && !unread);
}

void Id3Info::ShowOGG()
{
    ui->FrameOGGInfo->setEnabled(true);
    ui->FrameOGGInfo->show();
    ui->Id3MainTab->setCurrentIndex(0);
    VorbisTag tag;
    if (IsOneFile()) {
        const QString &path = SelectedPaths.front();
        ShowFileInfo(path);
        ReadVorbisTag(path, tag);
        ShowOGGInfo(path, tag);
        return;
    }
    ShowLines(u"Multiple OGG Files Selected..."_s, u"Updating OGG files is currenlty unsupported."_s);
    ShowAttributes(attributesOfAll, attributesOfAny, true);
    ShowOGGInfo({}, tag);
}

void Id3Info::ShowPlain(const QString &kind)
{
    ui->FrameMPEGInfo->setEnabled(true);
    ui->FrameMPEGInfo->show();
    ui->Id3MainTab->setCurrentIndex(0);
    ShowMPEGInfo({}, CopyBuffer);
    if (IsOneFile()) {
        ShowFileInfo(SelectedPaths.front());
        return;
    }
    ShowLines(u"Multiple "_s + kind + u" Files Selected...", u"Choose a single file to view the file info."_s);
    ShowAttributes(attributesOfAll, attributesOfAny, true);
}

void Id3Info::ShowLines(const QString &first, const QString &second)
{
    ui->FileInfo_0->setText(first);
    ui->FileInfo_1->setText(second);
}

void Id3Info::ShowAttributes(int ofAll, int ofAny, bool enabled)
{
    const auto show = [&](QCheckBox *box, int attribute) {
        const bool all = (ofAll & attribute) != 0;
        const bool any = (ofAny & attribute) != 0;
        box->setTristate(false);
        box->setCheckState(all ? Qt::Checked : any ? Qt::PartiallyChecked : Qt::Unchecked);
        box->setEnabled(enabled);
    };
    show(ui->FileInfoReadOnly, AttributeReadOnly);
    show(ui->FileInfoArchive, AttributeArchive);
}

void Id3Info::LookAtAttributes()
{
    attributesOfAll = AttributeReadOnly | AttributeArchive;
    attributesOfAny = 0;
    for (const QString &path : std::as_const(SelectedPaths)) {
        const int attributes = std::max(FileAttributes(path), 0);
        attributesOfAll &= attributes;
        attributesOfAny |= attributes;
    }
    ShowAttributes(attributesOfAll, attributesOfAny, true);
}

void Id3Info::ShowFileInfo(const QString &path)
{
    if (path.isEmpty()) {
        ui->FileInfo_1->setText(u"File Size: ???? Bytes"_s);
        ShowAttributes(0, 0, false);
        return;
    }
    ui->FileInfo_0->setText(ShownPath(GetFileName(path)));
    const FileFacts facts = ExamineFile(path);
    const int attributes = FileAttributes(path);
    if (!facts.Exists || attributes < 0)
        return;
    ui->FileInfo_1->setText(u"File Size: "_s + GroupedDigits(facts.Size) + u" bytes");
    ShowAttributes(attributes, attributes, true);
}

void Id3Info::ShowMPEGInfo(const QString &path, const MP3File &object)
{
    const std::array<QLabel *, 10> labels{ui->MPEGInfo_0, ui->MPEGInfo_1, ui->MPEGInfo_2, ui->MPEGInfo_3,
                                          ui->MPEGInfo_4, ui->MPEGInfo_5, ui->MPEGInfo_6, ui->MPEGInfo_7,
                                          ui->MPEGInfo_8, ui->MPEGInfo_9};
    if (path.isEmpty()) {
        for (QLabel *label : labels)
            label->clear();
        return;
    }
    const double length = std::nearbyint(object.SongLength() * 100) / 100;
    const QString bitrate = object.Bitrate();
    const std::array<QString, 10> lines{
        u"Length: "_s + QString::number(length, 'f', QLocale::FloatingPointShortest) + u" Seconds",
        u"Version: MPEG "_s + object.MPEGVersion(),
        u"Encoding: "_s + bitrate + (bitrate.contains("VBR"_L1) ? QString() : u" Kbit "_s),
        u"Samplerate: "_s + QString::number(object.SampleRate(), 'f', QLocale::FloatingPointShortest) + u" Hz",
        u"CRCProtection: "_s + YesNoText(object.CRCProtection()),
        u"Copyrighted: "_s + YesNoText(object.Copyrighted()),
        u"Original: "_s + YesNoText(object.Original()),
        u"Emphasis: "_s + object.Emphasis(),
        u"Mode: "_s + object.Mode(),
        u"Layer: "_s + object.Layer(),
    };
    for (std::size_t i = 0; i < labels.size(); ++i)
        labels[i]->setText(lines[i]);
}

void Id3Info::ShowOGGInfo(const QString &path, const VorbisTag &tag)
{
    const std::array<QLabel *, 5> labels{ui->OGGInfo_0, ui->OGGInfo_1, ui->OGGInfo_2, ui->OGGInfo_3, ui->OGGInfo_4};
    if (path.isEmpty()) {
        for (QLabel *label : labels)
            label->clear();
        return;
    }
    if (!tag.ErrorMessage.isEmpty()) {
        for (QLabel *label : labels)
            label->setText(u"????"_s);
        ui->OGGInfo_0->setText(tag.ErrorMessage);
        return;
    }
    ui->OGGInfo_0->setText(u"Title: "_s + tag.Title);
    ui->OGGInfo_1->setText(u"Artist: "_s + tag.Artist);
    ui->OGGInfo_2->setText(u"Album: "_s + tag.Album);
    ui->OGGInfo_3->setText(u"Encoded with: "_s + tag.EncodedUsing);
    ui->OGGInfo_4->setText(u"Track: "_s + QString::number(tag.TrackNumber));
}

std::array<Id3Info::FrameField, 14> Id3Info::FrameFields() const
{
    return {{{"TIT2", ui->ID3v2Title},
             {"TPE1", ui->ID3v2Artist},
             {"TALB", ui->ID3v2Album},
             {"TYER", ui->ID3v2Year},
             {"TRCK", ui->ID3v2Track},
             {"TCOM", ui->ID3v2Composer},
             {"TOPE", ui->ID3v2OrigArtist},
             {"TCOP", ui->ID3v2Copyright},
             {"TENC", ui->ID3v2EncodedBy},
             {"WXXX", ui->ID3v2URL},
             {"USLT", ui->ID3v2Lyrics},
             {"TXXX", ui->ID3v2UserText},
             {"WOAR", ui->ID3v2ArtistURL},
             {"TCON", ui->ID3v2Genre->lineEdit()}}};
}

void Id3Info::LoadTagFields(MP3File &object, bool pasteFlag)
{
    LoadID3v1(object, object.HasID3v1() || (pasteFlag && CopyHasID3v1));
    LoadID3v2(object, object.HasID3v2() || (pasteFlag && CopyHasID3v2), pasteFlag);
    EnableFields();
}

void Id3Info::LoadID3v1(const MP3File &object, bool present)
{
    ui->ID3v1Present->setChecked(present);
    const auto show = [&](QWidget *field, const QString &text) { texts.Show(field, present ? text : QString()); };
    show(ui->ID3v1Title, object.Title());
    show(ui->ID3v1Artist, object.Artist());
    show(ui->ID3v1Album, object.Album());
    show(ui->ID3v1Year, object.Year());
    show(ui->ID3v1Comment, object.Comment());
    show(ui->ID3v1Track, QString::number(object.Track()));
    // A number that no entry carries leaves the shown one, and is kept until another one is chosen.
    const int entry = present ? ui->ID3v1Genre->findData(static_cast<int>(object.Genre())) : 0;
    unlistedGenre.reset();
    if (entry >= 0)
        ui->ID3v1Genre->setCurrentIndex(entry);
    else
        unlistedGenre = object.Genre();
}

void Id3Info::LoadID3v2(MP3File &object, bool present, bool pasteFlag)
{
    ui->ID3v2Present->setChecked(present);
    describedFrames.clear();
    for (const auto &[id, field] : FrameFields()) {
        texts.Show(field, present ? object.GetFrame(id) : QString());
        if (!pasteFlag && object.IsDescribed(id))
            describedFrames.insert(id);
    }
    const auto show = [&](QWidget *field, const QString &text, const QString &copied) {
        texts.Show(field, present ? pasteFlag ? copied : text : QString());
    };
    show(ui->ID3v2Preference, object.Preference(), CopyPreference);
    show(ui->ID3v2Mood, object.Mood(), CopyMood);
    show(ui->ID3v2Tempo, object.Tempo(), CopyTempo);
    show(ui->ID3v2Situation, object.Situation(), CopySituation);
    ui->ID3v2LstImages->setRowCount(0);
    Id3v2ImageList.clear();
    shownComment = -1;
    ui->ID3v2LstComments->setRowCount(0);
    comments.clear();
    EnableImageCommands(false);
    EnableCommentCommands(false);
    ID3v2LstImages_Click();
    ID3v2LstComments_Click();
    if (!present)
        return;
    LoadImages(object);
    LoadComments(object);
}
