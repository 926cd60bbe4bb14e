#include "sidetools/Bookmarks.h"

#include "platform/Drives.h"
#include "session/Hourglass.h"
#include "session/Main.h"
#include "sidetools/BookmarkFile.h"
#include "text/FormatText.h"
#include "text/PathText.h"

using namespace Qt::StringLiterals;

namespace
{
void Tell(Main &main, const QString &text, PromptIcon icon)
{
    main.World().Prompts.Message({text, icon});
}

/// True when there is a bookmark file, which the user may have pointed to just now.
bool FindBookmarkFile(Main &main)
{
    if (AnalysePath(main.BookmarkFilePath).IsFile)
        return true;
    Tell(main, u"Could not find the Bookmark file, please locate it. You will only need to do this once."_s,
         PromptIcon::Warning);
    return ChooseBookmarkFile(main);
}

bool WriteBookmarks(Main &main)
{
    const Hourglass hourglass(&main);
    main.DestroyFileArray();
    main.SaveFileArrayFromList(true);
    return WriteBookmarkFile(main.BookmarkFilePath, main.FileArray);
}
} // namespace

bool ChooseBookmarkFile(Main &main)
{
    const QString &path = main.BookmarkFilePath;
    const auto answer =
        main.World().Prompts.OpenFile({u"Use different Bookmark File"_s, u"Bookmark Files (*.bm)|*.bm|"_s, u"bm"_s,
                                       path.isEmpty() ? u"winamp.bm"_s : path});
    if (!answer)
        return false;
    if (!AnalysePath(*answer).IsFile) {
        Tell(main, ShownPath(*answer) + u" is not valid."_s, PromptIcon::Warning);
        return false;
    }
    main.BookmarkFilePath = *answer;
    main.Answer(u"Bookmark file: "_s + *answer);
    return true;
}

void LoadBookmarks(Main &main)
{
    if (!FindBookmarkFile(main))
        return;
    const Hourglass hourglass(&main);
    const int before = main.ListView1.Count();
    main.AnswerAdded(before, main.AddPath(main.BookmarkFilePath, true) ? QString() : main.BookmarkFilePath);
}

void SaveBookmarks(Main &main)
{
    const QString noBackup = u"The process failed because a backup copy of the Bookmarks file could not be created!"_s;
    if (main.ListView1.Count() == 0) {
        main.RequireItems();
        Tell(main, noBackup, PromptIcon::Warning);
        return;
    }
    if (!FindBookmarkFile(main))
        return;
    const QString backup = main.BookmarkFilePath + u".bak";
    if (!CopyFilePath(main.BookmarkFilePath, backup)) {
        Tell(main, noBackup, PromptIcon::Warning);
        return;
    }
    Tell(main, u"The program just created a backup of the Bookmark file as "_s + ShownPath(backup),
         PromptIcon::Information);
    if (!WriteBookmarks(main)) {
        Tell(main, u"Unable to write to the bookmark file."_s, PromptIcon::Stop);
        return;
    }
    Tell(main, u"The Bookmark file was successfully updated. You may need to restart WinAmp to view the changes."_s,
         PromptIcon::Information);
    main.Answer(u"Saved "_s + Counted(main.ListView1.Count(), u"bookmark"_s));
}
