#include "platform/PlatformTests.h"

#include "platform/Drives.h"
#include "platform/QtPrompts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTextDocumentFragment>
#include <QTimer>

using namespace Qt::StringLiterals;

/// The dialogs as the user meets them.
class PromptsTest : public FolderTest
{
    Q_OBJECT

    /// Acts on the next dialog once it is open.
    template <typename Dialog>
    static void WithDialog(const std::function<void(Dialog &)> &act)
    {
        QTimer::singleShot(0, qApp, [act] {
            auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            act(*dialog);
            if (dialog->isVisible())
                static_cast<QDialog *>(dialog)->reject();
        });
    }

    static PromptAnswer Answer(PromptButtons buttons, QMessageBox::StandardButton pressed)
    {
        WithDialog<QMessageBox>([pressed](QMessageBox &box) {
            QCOMPARE(box.text(), u"<b>z:\\a</b>"_s);
            QCOMPARE(box.textFormat(), Qt::PlainText);
            QCOMPARE(box.icon(), QMessageBox::Critical);
            if (pressed == QMessageBox::NoButton)
                QTest::keyClick(&box, Qt::Key_Escape);
            else
                box.button(pressed)->click();
        });
        return QtPrompts().Message({u"<b>z:\\a</b>"_s, PromptIcon::Stop, buttons});
    }

private Q_SLOTS:
    void MessageIsShownAndAnswered()
    {
        QCOMPARE(Answer(PromptButtons::YesNoCancel, QMessageBox::Yes), PromptAnswer::Yes);
        QCOMPARE(Answer(PromptButtons::YesNoCancel, QMessageBox::No), PromptAnswer::No);
        QCOMPARE(Answer(PromptButtons::YesNoCancel, QMessageBox::NoButton), PromptAnswer::Cancel);
        QCOMPARE(Answer(PromptButtons::YesNo, QMessageBox::NoButton), PromptAnswer::No);
        QCOMPARE(Answer(PromptButtons::Ok, QMessageBox::NoButton), PromptAnswer::Ok);
    }

    void DetailsStandBelow()
    {
        const QString line = u"<b>a.mp3</b>: read-only"_s;
        WithDialog<QMessageBox>([&](QMessageBox &box) {
            QCOMPARE(QTextDocumentFragment::fromHtml(box.informativeText()).toPlainText(), line);
            QVERIFY(box.detailedText().isEmpty());
        });
        QtPrompts().Message({u"Failed"_s, PromptIcon::Warning, PromptButtons::Ok, line});
        const QString lines = QString(line + u'\n').repeated(20);
        WithDialog<QMessageBox>([&](QMessageBox &box) { QCOMPARE(box.detailedText(), lines); });
        QtPrompts().Message({u"Failed"_s, PromptIcon::Warning, PromptButtons::Ok, lines});
    }

    void SaveProposesFolderAndName()
    {
        QVERIFY(Write(u"there.m3u"_s, "x"));
        const FilePrompt prompt{u"Save"_s, u"Playlists (*.m3u)|*.m3u|"_s, u"m3u"_s, In(u"there.m3u"_s)};
        // The program itself asks whether to replace; the dialog does not.
        WithDialog<QFileDialog>([](QFileDialog &dialog) { static_cast<QDialog &>(dialog).accept(); });
        QCOMPARE(QtPrompts().SaveFile(prompt), std::optional(prompt.Proposal));
        WithDialog<QFileDialog>([](QFileDialog &dialog) {
            dialog.selectFile(u"fresh"_s);
            static_cast<QDialog &>(dialog).accept();
        });
        QCOMPARE(QtPrompts().SaveFile(prompt), std::optional(In(u"fresh.m3u"_s)));
        QVERIFY(Write(u"Vol. 3"_s, "x"));
        for (const auto &[typed, made] : {std::pair{u"Vol. 2"_s, u"Vol. 2.m3u"_s},
                                          {u"R.E.M"_s, u"R.E.M.m3u"_s},
                                          {u"Vol. 3"_s, u"Vol. 3"_s},
                                          {u"a.txt"_s, u"a.txt"_s}}) {
            WithDialog<QFileDialog>([&](QFileDialog &dialog) {
                dialog.selectFile(typed);
                static_cast<QDialog &>(dialog).accept();
            });
            QCOMPARE(QtPrompts().SaveFile(prompt), std::optional(In(made)));
        }
    }

    void OpenTakesSeveralFiles()
    {
        QVERIFY(Write(u"a.mp3"_s, "x") && Write(u"b.mp3"_s, "x"));
        WithDialog<QFileDialog>([](QFileDialog &dialog) {
            dialog.findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(u"\"a.mp3\" \"b.mp3\""_s);
            static_cast<QDialog &>(dialog).accept();
        });
        const FilePrompt prompt{u"Add"_s, u"Files (*.mp3)|*.mp3|"_s, {}, In(u"*.mp3"_s)};
        QCOMPARE(QtPrompts().OpenFiles(prompt), (QStringList{In(u"a.mp3"_s), In(u"b.mp3"_s)}));
    }

    void OpenIsCancelled()
    {
        WithDialog<QFileDialog>([](QFileDialog &dialog) {
            QCOMPARE(dialog.nameFilters(), (QStringList{u"M3U (*.m3u)"_s, u"All (x) files (*.mp3 *.ogg)"_s}));
            QCOMPARE(FromHostPath(dialog.directory().path()), CurrentDirectory());
        });
        const QString filter = u"M3U (*.m3u)|*.m3u|All (x) files (*.*)|*.mp3;*.ogg|"_s;
        QVERIFY(!QtPrompts().OpenFile({u"Open"_s, filter, u"m3u"_s, QString()}));
        WithDialog<QFileDialog>([](QFileDialog &) {});
        QVERIFY(QtPrompts().OpenFiles({u"Add"_s, filter, {}, {}}).isEmpty());
    }
};

static const RegisterTest<PromptsTest> registered;

#include "PromptsTest.moc"
