#include "sidetools/Shortcuts.h"

#include "platform/Drives.h"
#include "session/Main.h"
#include "text/FileLists.h"

void FindFiles(Main &main)
{
    main.World().Shell.Find.Open();
}

void ExploreFiles(Main &main)
{
    main.DestroyFileArray();
    main.SaveFileArrayFromList(true);
    const QString root = FindCommonRoot(main.FileArray);
    main.World().Shell.Explore(root.isEmpty() ? CurrentDirectory() : root);
}

void OpenVolumeControl(Main &main)
{
    main.World().Shell.VolumeControl.Open();
}
