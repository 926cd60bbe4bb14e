#include "BenchRows.h"
#include "BenchSupport.h"
#include "BenchWindow.h"
#include "MediaFiles.h"
#include "PeakMemory.h"
#include "media/MP3File.h"
#include "platform/Drives.h"

#include <QAbstractButton>
#include <QAction>
#include <QDialog>
#include <QLineEdit>

using namespace Qt::StringLiterals;

// The tag editor's update of many selected files in a full list.

namespace
{
constexpr int FewFiles = 100;
constexpr int ManyFiles = 1000;

class TagUpdate
{
public:
    TagUpdate() : files(ManyFiles, [](int, std::minstd_rand &) { return MediaShape{4000, 30000, true, true}; })
    {
        Main &main = window.Window;
        main.ListView1.Append(BenchRecords(FullList - ManyFiles));
        for (const QString &path : files.Paths)
            main.AddFile(path, 0);
    }

    /// Opens the editor on so many files, with a new title for all of them.
    void Open(int count)
    {
        Main &main = window.Window;
        main.ListView1.Reselect([&](int row, const PlaylistItem &) {
            return row > FullList - ManyFiles && row <= FullList - ManyFiles + count;
        });
        main.ListView1_Click();
        main.Command("MEditId3")->trigger();
        auto *present = Editor()->findChild<QAbstractButton *>(u"ID3v2Present"_s);
        if (!present->isChecked())
            present->click();
        Editor()->findChild<QLineEdit *>(u"ID3v2Title"_s)->setText(QString::number(++titles));
        window.Settle();
    }

    void Update() { Editor()->findChild<QAbstractButton *>(u"CmdUpdate"_s)->click(); }

private:
    QDialog *Editor() { return window.Window.findChild<QDialog *>(u"Id3Info"_s); }

    MediaFolder files;
    BenchWindow window;
    int titles = 0;
};

void TagUpdateGrowth(benchmark::State &state)
{
    TagUpdate editor;
    const auto updating = [&](int count) {
        return Side{[&] { editor.Update(); }, static_cast<std::size_t>(count),
                    [&editor, count] { editor.Open(count); }};
    };
    Compare(state, 1.2, updating(FewFiles), updating(ManyFiles));
}

/// "ratio" is here the megabytes that the editor takes, from its opening to the end of an update, over those of the
/// file's picture.
void LargePictureMemory(benchmark::State &state)
{
    MediaFolder files(1, [](int, std::minstd_rand &) { return MediaShape{4000, 30000, true, true}; });
    const QString picture = files.Paths[0] + u".bmp";
    QImage image(4096, 4096, QImage::Format_RGB888);
    image.fill(Qt::darkCyan);
    image.save(ToHostPath(picture));
    const double size = static_cast<double>(image.sizeInBytes()) / (1 << 20);
    image = {};
    {
        MP3File file;
        file.ResetFile(files.Paths[0]);
        file.ReadTags(files.Paths[0], false);
        file.Images().Add(picture, {});
        file.WriteTags(files.Paths[0], MP3File::TagChange::Write, MP3File::TagChange::Write);
    }
    std::vector<double> ratios;
    for ([[maybe_unused]] auto round : state) {
        BenchWindow window;
        window.Window.AddFile(files.Paths[0], 0);
        window.Window.Command("MEditSelAll")->trigger();
        window.Settle();
        PeakMegabytes();
        const double before = PeakMegabytes();
        window.Window.Command("MEditId3")->trigger();
        auto *editor = window.Window.findChild<QDialog *>(u"Id3Info"_s);
        editor->findChild<QLineEdit *>(u"ID3v2Title"_s)->setText(QString::number(ratios.size()));
        editor->findChild<QAbstractButton *>(u"CmdUpdate"_s)->click();
        ratios.push_back((PeakMegabytes() - before) / size);
    }
    state.counters["ratio"] = Median(ratios);
    state.counters["bound"] = 4;
    state.SetLabel(Median(ratios) > 4 ? "OVER ITS BOUND" : "within its bound");
}

BENCHMARK(LargePictureMemory)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(TagUpdateGrowth)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);
} // namespace
