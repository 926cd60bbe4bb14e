#pragma once

#include "support/MainFixture.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QCheckBox>
#include <QClipboard>
#include <QDialog>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

/// A main window and a tool's window over it, driven as a user does. Controls are named by their object names.
struct FormDriver {
    MainFixture F;
    QDialog *Form = nullptr;

    /// Opens the tool of a command over selected rows.
    void OpenTool(const char *command, const char *window, const QList<int> &rows)
    {
        F.Select(rows);
        F.Trigger(command);
        Form = F.Window->findChild<QDialog *>(QLatin1StringView(window));
    }

    /// Copies a file of the test data to a name and adds its row.
    QString TakeData(const QString &name, const char *data)
    {
        QByteArray content;
        ReadWholeFile(FromHostPath(QLatin1StringView(TEST_DATA "/") + QLatin1StringView(data)), content);
        const QString path = F.Write(name, content);
        F.Window->AddFile(path, 0);
        return path;
    }

    QWidget *At(const char *name) const { return Form->findChild<QWidget *>(QLatin1StringView(name)); }
    template <typename Control>
    Control *At(const char *name) const
    {
        return qobject_cast<Control *>(At(name));
    }
    bool Enabled(const char *name) const { return At(name)->isEnabled(); }
    QString Focused() const { return Form->focusWidget()->objectName(); }
    bool Ticked(const char *name) const { return At<QCheckBox>(name)->isChecked(); }

    /// The names of the controls that match, are shown and can be used.
    QString Usable(const char *names) const
    {
        QStringList usable;
        for (const QWidget *control : Named(names))
            usable += control->isVisible() && control->isEnabled() ? QStringList{control->objectName()} : QStringList();
        return usable.join(u' ');
    }

    /// Clicks on what brings a message.
    void ClickAndRead(const char *name, const QString &message, PromptAnswer answer = PromptAnswer::Ok)
    {
        F.Prompts.Expect(message, answer);
        Click(name);
    }
    /// Clicks on what asks for a path, and then perhaps brings a message; an empty path is Cancel.
    void ClickAndGive(const char *name, const QString &prompt, const std::optional<QString> &path,
                      const QString &message = {}, PromptAnswer answer = PromptAnswer::Ok)
    {
        F.Prompts.ExpectPath(prompt, path);
        if (!message.isEmpty())
            F.Prompts.Expect(message, answer);
        Click(name);
    }
    /// Clicks on what takes long, and presses Escape meanwhile.
    void ClickAndStop(const char *name) const
    {
        StopSoon();
        Click(name);
    }
    /// Clicks on what takes long, and presses Escape when a piece of its work is done and its bar goes back for the
    /// n-th time.
    void ClickAndStopAtEnd(const char *name, const char *bar, int times = 1) const
    {
        const auto stop = [this, last = 0, times](int value) mutable {
            if (std::exchange(last, value) > 0 && value == 0 && --times == 0)
                QTest::keyClick(Form, Qt::Key_Escape);
        };
        const auto connection = QObject::connect(At<QProgressBar>(bar), &QProgressBar::valueChanged, Form, stop);
        Click(name);
        QObject::disconnect(connection);
    }
    /// Presses Escape as soon as the program looks for keys.
    void StopSoon() const
    {
        QTimer::singleShot(0, Form, [this] { QTest::keyClick(Form, Qt::Key_Escape); });
    }

    /// Goes on by so many steps of a wizard.
    void Next(int times) const
    {
        for (; times > 0; --times)
            Click("CmdNext");
    }
    /// The frame of a wizard that is shown, from 0.
    int Step() const { return Form->findChild<QStackedWidget *>()->currentIndex(); }

    /// Clicks on the tab of a page.
    static void Turn(const QTabWidget &tabs, int page)
    {
        QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {}, tabs.tabBar()->tabRect(page).center());
        QCOMPARE(tabs.currentIndex(), page);
    }
    /// A control, after clicks on the tabs of the pages that it stands on.
    QWidget *Reach(const char *name) const
    {
        for (const auto *tabs : Form->findChildren<QTabWidget *>()) {
            for (int page = 0; page < tabs->count(); ++page) {
                if (page != tabs->currentIndex() && tabs->widget(page)->isAncestorOf(At(name)))
                    Turn(*tabs, page);
            }
        }
        return At(name);
    }

    void Click(const char *name) const
    {
        QWidget *control = Reach(name);
        QVERIFY2(control->isVisible(), name);
        const auto *button = At<QAbstractButton>(name);
        const bool isBox = button != nullptr && button->isCheckable();
        QTest::mouseClick(control, Qt::LeftButton, {}, isBox ? QPoint(8, control->height() / 2) : QPoint());
    }

    /// Makes the click on a button a double one, and then holds its letter for a while.
    void PressOn(const char *name, Qt::Key letter) const
    {
        // Letters reach the window that is active.
        Form->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(Form));
        QTest::mouseDClick(At(name), Qt::LeftButton);
        QTest::mouseRelease(At(name), Qt::LeftButton);
        for (int i = 0; i < 3; ++i)
            QTest::simulateEvent(Form, true, letter, Qt::AltModifier, QString(), true);
        // A button clicks a while after its letter.
        QVERIFY(!At<QAbstractButton>(name)->isDown());
    }

    void DoubleClick(const char *name) const
    {
        QWidget *control = Reach(name);
        auto *scrolled = At<QAbstractScrollArea>(name);
        QTest::mouseDClick(scrolled != nullptr ? scrolled->viewport() : control, Qt::LeftButton);
    }

    /// Replaces a field's text by way of the clipboard, which takes any script.
    void Enter(const char *name, const QString &text) const
    {
        QGuiApplication::clipboard()->setText(text);
        QTest::keyClick(Reach(name), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(At(name), Qt::Key_V, Qt::ControlModifier);
    }

    QString Text(const char *name) const { return TextOf(*At(name)); }
    /// The texts of the controls whose names match, joined by "|".
    QString Texts(const char *names) const
    {
        QStringList texts;
        for (const QWidget *control : Named(names))
            texts.append(TextOf(*control));
        return texts.join(u'|');
    }

    /// The cells of a list, a row each, joined by "|".
    QStringList Cells(const char *name) const
    {
        const QAbstractItemModel &model = *At<QAbstractItemView>(name)->model();
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model.columnCount(); ++column)
                cells.append(model.index(row, column).data().toString());
            rows.append(cells.join(u'|'));
        }
        return rows;
    }

    /// Chooses an entry of a list box, from 0.
    void Choose(const char *name, int entry) const
    {
        QTest::keyClick(Reach(name), Qt::Key_Home);
        for (; entry > 0; --entry)
            QTest::keyClick(At(name), Qt::Key_Down);
    }

    void SelectRow(const char *name, int row) const
    {
        auto *list = qobject_cast<QAbstractItemView *>(Reach(name));
        list->scrollTo(list->model()->index(row, 0));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, CellCentre(*list, row));
    }
    void DoubleClickRow(const char *name, int row) const
    {
        SelectRow(name, row);
        const auto *list = At<QAbstractItemView>(name);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, CellCentre(*list, row));
    }

    /// The controls whose names match a pattern.
    QList<QWidget *> Named(const char *pattern) const
    {
        return Form->findChildren<QWidget *>(QRegularExpression(QLatin1StringView(pattern)));
    }

private:
    static QPoint CellCentre(const QAbstractItemView &list, int row)
    {
        return list.visualRect(list.model()->index(row, 0)).center();
    }

    static QString TextOf(const QWidget &control)
    {
        QString text;
        for (const char *property : {"text", "plainText", "currentText"})
            text += control.property(property).toString();
        return text;
    }
};
