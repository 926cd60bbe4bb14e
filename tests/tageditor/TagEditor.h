#pragma once

#include "support/MainFixture.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDialog>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>

/// A main window and the tag editor over it, driven as a user does.
struct TagEditor {
    MainFixture F;
    QDialog *Form = nullptr;

    /// Copies a file of the test data, one with both tags, to a name and adds its row.
    QString Take(const QString &name, const char *data = "tag-id3v24.mp3")
    {
        QByteArray content;
        ReadWholeFile(FromHostPath(QLatin1StringView(TEST_DATA "/") + QLatin1StringView(data)), content);
        const QString path = F.Write(name, content);
        F.Window->AddFile(path, 0);
        return path;
    }

    /// Opens the editor over one file, unlike the others without tags; returns its path.
    QString OpenUntagged()
    {
        const QString path = Take(QStringLiteral("a.mp3"), "cbr128-mpeg1-joint-info.mp3");
        Open({1});
        return path;
    }

    void Open(const QList<int> &rows)
    {
        F.Select(rows);
        F.Trigger("MEditId3");
        Form = F.Window->findChild<QDialog *>(QStringLiteral("Id3Info"));
    }

    QWidget *At(const char *name) const { return Form->findChild<QWidget *>(QLatin1StringView(name)); }
    template <typename Control>
    Control *At(const char *name) const
    {
        return qobject_cast<Control *>(At(name));
    }
    bool Enabled(const char *name) const { return At(name)->isEnabled(); }
    bool Ticked(const char *name) const { return At<QCheckBox>(name)->isChecked(); }

    /// The commands below the pages that are enabled, by their names, from left to right.
    QString Commands() const
    {
        QStringList names;
        for (const QWidget *command : Named("^Cmd(Copy|Next|Paste|Prev|Update)"))
            names += command->isEnabled() ? QStringList{command->objectName().mid(3)} : QStringList();
        return names.join(u' ');
    }

    /// Clicks on the tab of a page.
    static void Turn(const QTabWidget &tabs, int page)
    {
        QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {}, tabs.tabBar()->tabRect(page).center());
        QCOMPARE(tabs.currentIndex(), page);
    }
    void Page(int page) const { Turn(*At<QTabWidget>("Id3MainTab"), page); }
    void InnerPage(int page) const { Turn(*At<QTabWidget>("Id3v2Tab"), page); }

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
        const bool isBox = At<QCheckBox>(name) != nullptr;
        QTest::mouseClick(control, Qt::LeftButton, {}, isBox ? QPoint(8, control->height() / 2) : QPoint());
    }

    void DoubleClick(const char *name) const
    {
        QWidget *control = Reach(name);
        auto *scrolled = At<QPlainTextEdit>(name);
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
        const auto *list = At<QTableWidget>(name);
        QStringList rows;
        for (int row = 0; row < list->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < list->columnCount(); ++column)
                cells.append(list->item(row, column)->text());
            rows.append(cells.join(u'|'));
        }
        return rows;
    }

    void SelectRow(const char *name, int row) const
    {
        const auto *list = qobject_cast<QTableWidget *>(Reach(name));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row, 0)).center());
    }

    void AddImage(const QString &path)
    {
        F.Prompts.ExpectPath(QString(), path);
        F.Prompts.ExpectPath(QStringLiteral("Enter description."), QString());
        Click("ID3v2ImageAdd");
    }

private:
    QList<QWidget *> Named(const char *pattern) const
    {
        return Form->findChildren<QWidget *>(QRegularExpression(QLatin1StringView(pattern)));
    }

    static QString TextOf(const QWidget &control)
    {
        QString text;
        for (const char *property : {"text", "plainText", "currentText"})
            text += control.property(property).toString();
        return text;
    }
};
