#include "platform/QtPrompts.h"
#include "session/Colours.h"
#include "session/Icons.h"
#include "session/Palettes.h"
#include "support/FormDriver.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QMessageBox>
#include <QRadioButton>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace
{
/// The contrast that so many pixels of a part of the picture have, or more, with the colour behind them.
double ContrastOf(const QImage &picture, const QRect &part, const QColor &ground, std::size_t pixels)
{
    std::vector<double> contrasts;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x)
            contrasts.push_back(Contrast(picture.pixelColor(x, y), ground));
    }
    std::sort(contrasts.rbegin(), contrasts.rend());
    return contrasts[pixels - 1];
}

/// What is wrong with each row as it is painted, a line each. Rows 1 and 2 are there, 3 and 4 missing, the others
/// marked.
QStringList RowFaults(const GridView &view, double leastText)
{
    // Of 256; a thin ring as large as the icon would be 44.
    constexpr std::size_t iconPixels = 48;
    constexpr std::size_t letterPixels = 20;
    QStringList faults;
    const QImage picture = view.viewport()->grab().toImage();
    for (int row = 1; row <= view.Rows().Count(); ++row) {
        const bool missing = view.Rows().Item(row).Ghosted;
        const QRect cell = view.visualRect(view.model()->index(row - 1, 0));
        const QRect icon(cell.left(), cell.center().y() - 8, 24, 16);
        const QColor ground = picture.pixelColor(cell.right() - 2, cell.center().y());
        const double text = ContrastOf(picture, cell.adjusted(24, 2, -2, -2), ground, letterPixels);
        const double seenIcon = ContrastOf(picture, icon, ground, iconPixels);
        if (text < (missing ? seen : leastText) || seenIcon < seen)
            faults.append(u"row %1 on %2: text %3, icon %4"_s.arg(row).arg(ground.name()).arg(text).arg(seenIcon));
    }
    return faults;
}
} // namespace

class LooksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { UseStyle(false); }

    void RowsCanBeRead_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::addColumn<bool>("compact");
        QTest::newRow("light") << false << false;
        QTest::newRow("dark") << true << false;
        QTest::newRow("compact") << false << true;
        QTest::newRow("compact, dark") << true << true;
    }

    void RowsCanBeRead()
    {
        QFETCH(bool, dark);
        QFETCH(bool, compact);
        UseStyle(dark);
        for (const auto group : {QPalette::Active, QPalette::Inactive}) {
            const QPalette palette = QApplication::palette();
            QVERIFY(Contrast(palette.color(group, QPalette::Highlight),
                             palette.color(group, QPalette::HighlightedText)) >= readable);
        }
        MainFixture f;
        f.AddRows(QList<int>(10, 1));
        for (const char *name : {"c.wma", "d.wma"})
            QFile::remove(f.Temporary.filePath(QLatin1StringView(name)));
        f.Trigger("MViewRefresh");
        for (const auto &[command, row] :
             {std::pair("MEditSeMarkBlue", 5), std::pair("MEditSeMarkGreen", 7), std::pair("MEditSeMarkRed", 9)}) {
            f.Select({row, row + 1});
            f.Trigger(command);
        }
        if (compact)
            f.Trigger("MViewCompact");
        // Thick letters, so that some pixels are all text.
        GridView &view = *f.Window->View();
        view.setFont(QFont(view.font().family(), 24, QFont::Bold));
        f.Window->resize(1000, 900);
        f.Show();
        f.Trigger("MEditSelNone");
        // Pure red on dark red is what compact mode is.
        QCOMPARE(RowFaults(view, compact ? 4.3 : readable).join(u'\n'), QString());
        const auto groundOf = [&] {
            const QRect cell = view.visualRect(view.model()->index(0, 0));
            return view.viewport()->grab().toImage().pixelColor(cell.right() - 2, cell.center().y());
        };
        // The focus alone must not look like a selection.
        f.Window->ListView1.SetFocusedRow(1);
        const QColor plain = groundOf();
        QCOMPARE(plain, view.palette().color(QPalette::Base));
        f.Trigger("MEditSelAll");
        QCOMPARE(RowFaults(view, readable).join(u'\n'), QString());
        QVERIFY(Contrast(groundOf(), plain) > 1.2);
    }

    void HintCanBeRead()
    {
        for (const bool dark : {false, true}) {
            UseStyle(dark);
            MainFixture f;
            GridView &view = *f.Window->View();
            view.setFont(QFont(view.font().family(), 24, QFont::Bold));
            f.Show();
            const QImage picture = view.viewport()->grab().toImage();
            QVERIFY(ContrastOf(picture, picture.rect(), view.palette().color(QPalette::Base), 50) >= readable);
        }
    }

    void TickBoxesCanBeSeen()
    {
        for (const bool dark : {false, true}) {
            UseStyle(dark);
            QWidget form;
            QCheckBox box(&form);
            QRadioButton choice(&form);
            choice.move(0, 40);
            form.resize(100, 100);
            const QImage picture = form.grab().toImage();
            const QColor window = QApplication::palette().color(QPalette::Window);
            for (const QWidget *each : {static_cast<QWidget *>(&box), static_cast<QWidget *>(&choice)})
                QVERIFY(ContrastOf(picture, each->geometry(), window, 16) >= seen);
        }
    }

    void MessagesHaveOurPictures()
    {
        UseStyle(false);
        for (const auto &[icon, name] :
             {std::pair(PromptIcon::Question, "message-question"_L1),
              std::pair(PromptIcon::Information, "message-information"_L1),
              std::pair(PromptIcon::Warning, "message-warning"_L1), std::pair(PromptIcon::Stop, "message-stop"_L1)}) {
            QImage shown;
            bool plain = true;
            QTimer::singleShot(0, qApp, [&] {
                auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
                shown = box->iconPixmap().toImage();
                for (const QAbstractButton *button : box->buttons())
                    plain = plain && button->icon().isNull();
                box->reject();
            });
            QtPrompts().Message({u"text"_s, icon, PromptButtons::YesNoCancel, {}});
            QVERIFY(plain && !shown.isNull());
            QCOMPARE(shown, Icon(name).pixmap(shown.size()).toImage());
        }
    }

    void ChoicesDropDown()
    {
        UseStyle(false);
        FormDriver d;
        d.F.Show();
        d.OpenTool("MToolsMP3CDWiz", "MP3CDWizard", {});
        d.Enter("AssembleLoc", d.F.Folder + u'\\');
        d.F.Write(u"disc\\a.mp3"_s, "x");
        d.Enter("CDROMLoc", u"disc"_s);
        d.Next(2);
        auto *pictures = d.At<QComboBox>("IconChooser");
        pictures->showPopup();
        const QWidget *list = QApplication::activePopupWidget();
        QVERIFY(list != nullptr && list->height() < pictures->screen()->geometry().height() * 2 / 3);
        pictures->hidePopup();
    }
};

QTEST_MAIN(LooksTest)
#include "LooksTest.moc"
