#pragma once

#include "media/MP3File.h"
#include "session/ToolForm.h"
#include "tageditor/HeldTexts.h"
#include "tageditor/LostTags.h"
#include "tageditor/TagFields.h"
#include "tageditor/TagPicture.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QTableWidget;
struct VorbisTag;

namespace Ui
{
class Id3Info;
}

/// The tag editor: shows what is known of the selected items and edits their tags as a set. Elements of arrays of
/// controls bear their index behind an underscore, as "MPEGInfo_0". It stays loaded when it is closed, so that what
/// was copied can be pasted until the program ends.
class Id3Info : public ToolForm
{
    Q_OBJECT

public:
    explicit Id3Info(Main &mainWindow);
    ~Id3Info() override;

    /// Takes in the selection. True when it can be updated: existing files only, all of them ".mp3".
    bool CollectSelection();
    /// Fills the tag fields; with pasteFlag from the copy buffer, whose tags count as present as they were at the copy.
    void LoadTagFields(MP3File &object, bool pasteFlag);
    /// An empty path empties the panel.
    void ShowMPEGInfo(const QString &path, const MP3File &object);
    void ShowOGGInfo(const QString &path, const VorbisTag &tag);
    void ShowFileInfo(const QString &path);
    /// Moves the fields into the object; with copyFlag for the copy buffer. Raises std::runtime_error for a track
    /// number beyond 16 bits, and MediaError for a picture that cannot be handed over.
    void StoreTagFields(MP3File &object, bool copyFlag);
    /// True when the file has taken the tags of the ticked boxes and lost the others; else the reason, for a person.
    bool WriteTagFile(const QString &path, MP3File &object, const DiskFacts &asRead, QString &reason);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    // Handlers, by control and event.
    void Form_Activate() override;
    void CmdClose_Click() override;
    void Id3MainTab_Click(int page);
    void ID3v1Present_Click();
    void ID3v2Present_Click();
    void ID3v1Duplicate_Click();
    void ID3v2Duplicate_Click();
    void ID3v2LstComments_Click();
    void ID3v2AddComment_Click();
    void ID3v2EditComment_Click();
    void ID3v2RemoveComment_Click();
    void ID3v2LstImages_Click();
    void ID3v2ImageAdd_Click();
    void ID3v2ImageRemove_Click();
    void ID3v2ImageSave_Click();
    void ID3v2ImageOpen_Click();
    void FileInfoReadOnly_Click();
    void FileInfoArchive_Click();
    void CmdPrev_Click();
    void CmdNext_Click();
    void CmdCopy_Click();
    void CmdPaste_Click();
    void CmdRefresh_Click();
    void CmdListen_Click();
    void CmdUpdate_Click();
    void Title_DblClick(QWidget *field);
    void Comment_DblClick(QWidget *field);
    void URL_DblClick(QWidget *field);

    void Form_Load();
    void ConnectCommands();
    void ConnectLists();
    void ConnectFields();
    void WatchDoubleClick(QObject *watched, QWidget *field, void (Id3Info::*handler)(QWidget *));
    /// A disabled field shows the colour of the button face.
    void ColourFields();

    void DisableCommands();
    void EnablePages(bool on);
    void EnableFields();
    bool AnyTagTicked() const;
    void ShowSelection(int page);
    void ShowTitle();
    void ShowMP3(int page);
    void ShowOGG();
    void ShowPlain(const QString &kind);
    void ShowLines(const QString &first, const QString &second);
    /// Ticks the attribute boxes: fully for what all files have, partly for what some have.
    void ShowAttributes(int ofAll, int ofAny, bool enabled);
    void LookAtAttributes();
    void CountLostTags();
    /// What the window shows of the selection but for the fields.
    void ShowBesideFields();
    void ShowOnly(int row);
    bool IsOneFile() const { return SelectedPaths.size() == 1; }

    struct FrameField {
        const char *Id;
        QWidget *Field;
    };
    /// The fields of frames, in the order in which they are read and written.
    std::array<FrameField, 14> FrameFields() const;
    void LoadID3v1(const MP3File &object, bool present);
    void LoadID3v2(MP3File &object, bool present, bool pasteFlag);
    void LoadComments(MP3File &object);
    void LoadImages(MP3File &object);
    quint8 GenreNumber() const;
    /// The number for the tag of what stands in the track field; 0 for none.
    quint8 TrackNumber() const;
    void StoreImages(MP3File &object);
    void StoreFrame(MP3File &object, const FrameField &frame, bool copyFlag) const;
    bool UpdateFile(const QString &path, MP3File &object, QString &reason);
    /// True when every file has taken its tags.
    bool Update();
    /// Updates one file after the other until the user ends it, and returns how many it came to.
    qsizetype UpdateFiles(QStringList &reasons);
    TagFields Fields() const;
    /// True when the caller may go on: nothing changed, updated, or not wanted.
    bool ConfirmUpdateFirst();
    /// One file's boxes tell enough; of several files the line beside Update does.
    void ShowLostTags();
    void TellFailures(const QStringList &reasons);
    void SetAttribute(int attribute, bool on);

    void AddCommentRow(const MP3Comment &comment);
    /// Puts what was typed over the shown comment into its row.
    void StoreShownComment();
    /// Puts what was typed for a comment into the list, before the comments are used; false when it gets no
    /// description.
    bool TakeTypedComment();
    void AddImageRow(TagPicture picture);
    /// Removes the selected row and selects the one before it; its place from 0, -1 when none was selected.
    static int RemoveSelectedRow(QTableWidget *list);
    void EnableCommentCommands(bool on);
    void EnableImageCommands(bool on);
    QString TemporaryBitmap() const;
    bool WriteTemporaryBitmap(const QByteArray &content) const;

    std::unique_ptr<Ui::Id3Info> ui;
    HeldTexts texts;
    QHash<QObject *, std::function<void()>> doubleClicks;
    /// As they were when the files were read.
    TagFields readFields;
    LostTags lostTags{[this] { ShowLostTags(); }};

    QStringList SelectedPaths;
    /// The frames that are shown with the text of one that has a description, which is a matter of the file they come
    /// from: pasted elsewhere they mean the frame without one.
    QSet<QByteArray> describedFrames;
    /// The one file when its tags were read.
    DiskFacts shownFile;
    /// The one file's tags could not be read, so that its fields show nothing of it.
    bool unread = false;
    /// The loaded genre's number, as long as the list shows another one because it has no such entry.
    std::optional<quint8> unlistedGenre;
    /// Row numbers in the grid, in the order of SelectedPaths.
    QList<int> SelectedIndexes;
    /// In lower case, with its full stop; empty when the items are of different kinds.
    QString SelectedExtension;
    int FirstIndex = 0;
    int LastIndex = 0;
    /// Attribute bits that all and that any of the selected files have.
    int attributesOfAll = 0;
    int attributesOfAny = 0;

    bool HasCopy = false;
    MP3File CopyBuffer;
    bool CopyHasID3v1 = false;
    bool CopyHasID3v2 = false;
    QString CopyPreference;
    QString CopyMood;
    QString CopyTempo;
    QString CopySituation;

    /// The n-th comment and picture to the n-th row of their lists.
    std::vector<MP3Comment> comments;
    /// The row whose text the field shows, from 0; -1 for none.
    int shownComment = -1;
    std::vector<TagPicture> Id3v2ImageList;
};
