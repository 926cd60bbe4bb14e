#include "platform/QtPrompts.h"
#include "support/FormDriver.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace
{
bool IsControl(const QWidget *widget)
{
    if (widget->focusProxy() != nullptr || qobject_cast<const QHeaderView *>(widget) != nullptr)
        return false;
    for (const char *kind :
         {"QAbstractButton", "QLineEdit", "QComboBox", "QAbstractItemView", "QPlainTextEdit", "QTabBar"}) {
        if (widget->inherits(kind))
            return true;
    }
    return (widget->focusPolicy() & Qt::TabFocus) != 0;
}

/// What a person can use in a window as it is shown; the parts of a control are none themselves.
QList<QWidget *> ControlsOf(const QWidget &window)
{
    QList<QWidget *> controls;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        bool isPart = !widget->isVisible() || widget->window() != &window;
        for (const QWidget *outer = widget->parentWidget(); outer != &window && !isPart; outer = outer->parentWidget())
            isPart = IsControl(outer);
        if (!isPart && IsControl(widget))
            controls.append(widget);
    }
    return controls;
}

QString NameOf(const QWidget *control)
{
    return control->objectName().isEmpty()
               ? QLatin1StringView(control->metaObject()->className()) + u' ' + control->property("text").toString()
               : control->objectName();
}

QString LetterOf(const QString &caption)
{
    return QKeySequence::mnemonic(caption).toString();
}

/// What is wrong with a window, a line each.
class Inspection
{
public:
    explicit Inspection(QWidget &inspected) : window(inspected) {}

    /// Looks at every page of the window's tabs.
    void Look() { Turn(window.findChildren<QTabWidget *>()); }
    /// Presses Enter on each push button that is shown, when nothing is to be clicked in the window any more.
    void Enter()
    {
        QStringList pressed;
        const QList<QPushButton *> buttons = window.findChildren<QPushButton *>();
        for (QPushButton *button : buttons) {
            QObject::disconnect(button, &QPushButton::clicked, nullptr, nullptr);
            QObject::connect(button, &QPushButton::clicked, &window, [&pressed, button] { pressed += NameOf(button); });
        }
        for (QPushButton *button : buttons) {
            if (!button->isVisible() || !button->isEnabled())
                continue;
            pressed.clear();
            button->setFocus();
            QTest::keyClick(button, Qt::Key_Return);
            if (pressed != QStringList(NameOf(button)))
                Fault(u"Enter on "_s + NameOf(button) + u" presses " + pressed.join(u' '));
        }
        for (QPushButton *button : buttons)
            QObject::disconnect(button, &QPushButton::clicked, nullptr, nullptr);
    }
    QStringList Faults;

private:
    void Turn(QList<QTabWidget *> tabs)
    {
        while (!tabs.isEmpty() && !tabs.front()->isVisible())
            tabs.removeFirst();
        if (tabs.isEmpty()) {
            LookAtPage();
            return;
        }
        QTabWidget *first = tabs.takeFirst();
        for (int page = 0; page < first->count(); ++page) {
            if (first->isTabEnabled(page)) {
                first->setCurrentIndex(page);
                Turn(tabs);
            }
        }
    }

    void LookAtPage()
    {
        QCoreApplication::processEvents();
        const QList<QWidget *> controls = ControlsOf(window);
        Walk(controls);
        Listen(controls);
        Letters(controls);
    }

    void Fault(const QString &fault)
    {
        if (!Faults.contains(fault))
            Faults.append(fault);
    }

    /// Presses Tab until the focus is where it began.
    void Walk(const QList<QWidget *> &controls)
    {
        QList<QWidget *> reached;
        for (QWidget *at = window.focusWidget(); !reached.contains(at); at = window.focusWidget()) {
            reached.append(at);
            QTest::keyClick(at != nullptr ? at : &window, Qt::Key_Tab);
        }
        if (window.focusWidget() == reached.last() && controls.size() > 1)
            Fault(u"holds the focus: "_s + NameOf(reached.last()));
        for (QWidget *control : controls) {
            const auto *button = qobject_cast<QRadioButton *>(control);
            const bool byArrows = button != nullptr && !button->isChecked();
            if (control->isEnabled() && !byArrows && !reached.contains(control))
                Fault(u"out of reach: "_s + NameOf(control));
        }
    }

    /// What a screen reader would say.
    void Listen(const QList<QWidget *> &controls)
    {
        static const QSet<QAccessible::Role> roles{
            QAccessible::PushButton, QAccessible::CheckBox,     QAccessible::RadioButton, QAccessible::ComboBox,
            QAccessible::List,       QAccessible::EditableText, QAccessible::Tree,        QAccessible::Table,
            QAccessible::ButtonMenu, QAccessible::PageTabList};
        for (QWidget *control : controls) {
            const QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(control);
            if (spoken->text(QAccessible::Name).isEmpty())
                Fault(u"nameless: "_s + NameOf(control));
            if (!roles.contains(spoken->role()))
                Fault(u"odd role: "_s + NameOf(control) + u' ' + QString::number(spoken->role()));
        }
    }

    void Letters(const QList<QWidget *> &controls)
    {
        QMap<QString, QString> owners;
        QSet<const QWidget *> served;
        const auto take = [&](const QWidget *owner, const QString &caption) {
            const QString letter = LetterOf(caption);
            if (letter.isEmpty())
                return;
            served.insert(owner);
            QString &former = owners[letter];
            if (!former.isEmpty())
                Fault(letter + u" twice: "_s + former + u", "_s + caption);
            former = caption;
        };
        for (const auto *label : window.findChildren<QLabel *>()) {
            if (label->isVisible() && label->buddy() != nullptr)
                take(label->buddy(), label->text());
        }
        for (const auto *bar : window.findChildren<QTabBar *>()) {
            served.insert(bar);
            for (int tab = 0; bar->isVisible() && tab < bar->count(); ++tab)
                take(bar, bar->tabText(tab));
        }
        // Its letter leads to the first control in it.
        for (const auto *group : window.findChildren<QGroupBox *>()) {
            for (const QWidget *next = group; group->isVisible() && !LetterOf(group->title()).isEmpty();) {
                next = next->nextInFocusChain();
                if (controls.contains(next) && group->isAncestorOf(next)) {
                    take(next, group->title());
                    break;
                }
            }
        }
        for (const QWidget *control : controls) {
            if (control->inherits("QAbstractButton"))
                take(control, control->property("text").toString());
            // Those of the main window are commands with menu lines and keys.
            if (!served.contains(control) && window.parentWidget() != nullptr)
                Fault(u"no letter: "_s + NameOf(control));
        }
    }

    QWidget &window;
};

/// Fields and lists with their values, and buttons that are clicked, in turn: "EnbPurge MissAction=2".
void TakeStep(const FormDriver &driver, const QString &step)
{
    const QByteArray bytes = step.section(u'=', 0, 0).toLatin1();
    const char *name = bytes.constData();
    const QString value = step.section(u'=', 1);
    const auto *list = driver.At<QComboBox>(name);
    if (value.isEmpty())
        driver.Click(name);
    else if (list != nullptr && !list->isEditable())
        driver.Choose(name, value.toInt());
    else
        driver.Enter(name, value);
}
} // namespace

class KeyboardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryWindow_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("window");
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("known");
        const auto add = [](const char *command, const char *window, const char *steps, const char *known = "") {
            QTest::newRow(window) << command << window << steps << known;
        };
        add("MEditId3", "Id3Info", "");
        add("MToolsFilter", "FilterForm", "EnbDuplicate EnbPurge MissAction=2 CmdSearch");
        add("MToolsReport", "ReportForm", "CmdNext CmdNext CmdNext CmdBack CmdBack CmdBack RepType=1 CmdNext CmdNext");
        add("MToolsM3UWiz", "AutoCreateWizard", "CmdNext CmdNext CmdNext CmdNext");
        add("MToolsMP3CDWiz", "MP3CDWizard", "AssembleLoc=FOLDER\\ CDROMLoc=disc CmdNext CmdNext CmdNext CmdNext");
        add("MToolsRename", "RenameForm", "ToReplace=a AddRule");
        add("MToolsSearch", "frmSearch", "txtSearch=a cmdOptions");
        add("MViewDetails", "PlaylistStats", "");
        add("MToolsDrives", "frmDrives", "");
        add("MHelpTip", "frmTip", "");
        add("MHelpAbout", "frmAbout", "");
    }

    void MainWindow()
    {
        FormDriver d;
        d.F.AddRows({1, 2});
        d.F.Show();
        Inspection inspection(*d.F.Window);
        inspection.Look();
        QCOMPARE(inspection.Faults.join(u'\n'), QString());
        QList<QWidget *> menus(1, d.F.Window->menuBar());
        for (QMenu *menu : d.F.Window->findChildren<QMenu *>())
            menus.append(menu);
        for (const QWidget *menu : std::as_const(menus)) {
            QSet<QString> letters;
            for (const QAction *line : menu->actions()) {
                const QString letter = LetterOf(line->text());
                QVERIFY2(letter.isEmpty() || !letters.contains(letter), qPrintable(menu->objectName() + letter));
                letters.insert(letter);
            }
        }
        QTest::keyClick(d.F.Bar("MFileNew"), Qt::Key_F2);
        Inspection customize(*d.F.Window->findChild<QDialog *>(u"CustomizeToolbar"_s));
        customize.Look();
        customize.Enter();
        QCOMPARE(customize.Faults.join(u'\n'), QString());
    }

    void Messages()
    {
        MainFixture f;
        f.Show();
        for (const auto buttons : {PromptButtons::Ok, PromptButtons::YesNo, PromptButtons::YesNoCancel}) {
            QString faults = u"never shown"_s;
            QTimer::singleShot(0, qApp, [&] {
                QWidget *box = QApplication::activeModalWidget();
                Inspection inspection(*box);
                inspection.Look();
                faults = inspection.Faults.join(u'\n');
                box->close();
            });
            QtPrompts().Message({u"text"_s, PromptIcon::Question, buttons, u"1\n2\n3\n4"_s});
            QCOMPARE(faults, QString());
        }
    }

    void EveryWindow()
    {
        QFETCH(QString, command);
        QFETCH(QString, window);
        QFETCH(QString, steps);
        QFETCH(QString, known);
        FormDriver driver;
        MainFixture &f = driver.F;
        f.Show();
        const QString found = driver.TakeData(u"disc\\a.mp3"_s, "tag-id3v23.mp3");
        const QString path = f.Write(u"old\\a.mp3"_s, "x");
        f.Window->AddFile(path, 0);
        QFile::remove(ToHostPath(path));
        driver.OpenTool(command.toLatin1().constData(), window.toLatin1().constData(), {1});
        Inspection inspection(*driver.Form);
        inspection.Look();
        for (const QString &step : QString(steps).replace(u"FOLDER"_s, f.Folder).split(u' ', Qt::SkipEmptyParts)) {
            TakeStep(driver, step);
            inspection.Look();
        }
        inspection.Enter();
        QCOMPARE(inspection.Faults.join(u'\n'), known);
    }
};

QTEST_MAIN(KeyboardTest)
#include "KeyboardTest.moc"
