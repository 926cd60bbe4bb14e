#include "platform/PlatformTests.h"

#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/QtPrompts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>

using namespace Qt::StringLiterals;

/// The dialogs as the user meets them.
class PromptsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void MessageIsShownAsItStands();
    void AnswersOfAMessage_data();
    void AnswersOfAMessage();
    void SaveProposesFolderAndName();
    void OpenIsCancelled();
    void FilterInQtsForm();
};

static const RegisterTest<PromptsTest> registered;

namespace
{

/// Acts on the next dialog once it is open.
template <typename Dialog>
void WithDialog(const std::function<void(Dialog &)> &act)
{
    QTimer::singleShot(0, qApp, [act] {
        auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        act(*dialog);
        if (dialog->isVisible())
            static_cast<QDialog *>(dialog)->reject();
    });
}

} // namespace

void PromptsTest::MessageIsShownAsItStands()
{
    WithDialog<QMessageBox>([](QMessageBox &box) {
        QCOMPARE(box.text(), u"<b>z:\\a</b>"_s);
        QCOMPARE(box.textFormat(), Qt::PlainText);
        QCOMPARE(box.icon(), QMessageBox::Critical);
        QCOMPARE(box.windowTitle(), u"Vantrel Playlist Editor"_s);
    });
    QCOMPARE(QtPrompts().Message({u"<b>z:\\a</b>"_s, PromptIcon::Stop, PromptButtons::Ok}), PromptAnswer::Ok);
}

void PromptsTest::AnswersOfAMessage_data()
{
    QTest::addColumn<int>("buttons");
    QTest::addColumn<int>("pressed");
    QTest::addColumn<int>("answer");
    const auto row = [](const char *name, PromptButtons buttons, int pressed, PromptAnswer answer) {
        QTest::newRow(name) << static_cast<int>(buttons) << pressed << static_cast<int>(answer);
    };
    row("yes", PromptButtons::YesNoCancel, QMessageBox::Yes, PromptAnswer::Yes);
    row("no", PromptButtons::YesNoCancel, QMessageBox::No, PromptAnswer::No);
    row("cancel", PromptButtons::YesNoCancel, QMessageBox::Cancel, PromptAnswer::Cancel);
    row("escape", PromptButtons::YesNoCancel, QMessageBox::NoButton, PromptAnswer::Cancel);
    row("escape without cancel", PromptButtons::YesNo, QMessageBox::NoButton, PromptAnswer::No);
}

void PromptsTest::AnswersOfAMessage()
{
    QFETCH(int, buttons);
    QFETCH(int, pressed);
    QFETCH(int, answer);
    WithDialog<QMessageBox>([pressed](QMessageBox &box) {
        if (pressed == QMessageBox::NoButton)
            QTest::keyClick(&box, Qt::Key_Escape);
        else
            box.button(static_cast<QMessageBox::StandardButton>(pressed))->click();
    });
    const auto given = QtPrompts().Message({u"?"_s, PromptIcon::Question, static_cast<PromptButtons>(buttons)});
    QCOMPARE(static_cast<int>(given), answer);
}

void PromptsTest::SaveProposesFolderAndName()
{
    const QTemporaryDir directory;
    const QString folder = FromHostPath(directory.path());
    QVERIFY(WriteWholeFile(folder + u"\\there.m3u", "x"));
    const FilePrompt prompt{u"Save"_s, u"Playlists (*.m3u)|*.m3u|"_s, u"m3u"_s, QString(folder + u"\\there.m3u")};
    // The program itself asks whether to replace; the dialog does not.
    WithDialog<QFileDialog>([](QFileDialog &dialog) { static_cast<QDialog &>(dialog).accept(); });
    QCOMPARE(QtPrompts().SaveFile(prompt), std::optional(prompt.Proposal));
    WithDialog<QFileDialog>([](QFileDialog &dialog) {
        dialog.selectFile(u"fresh"_s);
        static_cast<QDialog &>(dialog).accept();
    });
    QCOMPARE(QtPrompts().SaveFile(prompt), std::optional(QString(folder + u"\\fresh.m3u")));
}

void PromptsTest::OpenIsCancelled()
{
    WithDialog<QFileDialog>([](QFileDialog &dialog) {
        QCOMPARE(dialog.fileMode(), QFileDialog::ExistingFile);
        QCOMPARE(dialog.nameFilters(), (QStringList{u"M3U (*.m3u)"_s, u"Bookmarks (*.bm)"_s}));
        QCOMPARE(FromHostPath(dialog.directory().path()), CurrentDirectory());
    });
    QVERIFY(!QtPrompts().OpenFile({u"Open"_s, u"M3U (*.m3u)|*.m3u|Bookmarks (*.bm)|*.bm|"_s, u"m3u"_s, QString()}));
}

void PromptsTest::FilterInQtsForm()
{
    QCOMPARE(QtFilter(u"M3U Playlist (*.m3u)|*.m3u|All (x) files (*.*)|*.mp3;*.ogg|"_s),
             u"M3U Playlist (*.m3u);;All (x) files (*.mp3 *.ogg)"_s);
    QCOMPARE(QtFilter(u"Plain|*.txt"_s), u"Plain (*.txt)"_s);
    QCOMPARE(QtFilter(QString()), QString());
}

#include "PromptsTest.moc"
