#pragma once

#include "support/MainFixture.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>

/// A main window and the tag editor over it, driven as a user does.
struct TagEditor {
    MainFixture F;
    QDialog *Form = nullptr;

    /// Copies a file of the test data to a name and adds its row.
    QString Take(const char *data, const QString &name)
    {
        QFile file(QLatin1StringView(TEST_DATA "/") + QLatin1StringView(data));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read the test's data");
        const QString path = F.Write(name, file.readAll());
        F.Window->AddFile(path, 0);
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

    void Page(const char *tabs, int page) const
    {
        auto *bar = At<QTabWidget>(tabs)->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(page).center());
        QCOMPARE(At<QTabWidget>(tabs)->currentIndex(), page);
    }

    void Click(const char *name) const
    {
        QVERIFY2(At(name)->isVisible(), name);
        const bool isBox = At<QCheckBox>(name) != nullptr;
        QTest::mouseClick(At(name), Qt::LeftButton, {}, isBox ? QPoint(8, At(name)->height() / 2) : QPoint());
    }

    void DoubleClick(const char *name) const
    {
        auto *scrolled = At<QPlainTextEdit>(name);
        QTest::mouseDClick(scrolled != nullptr ? scrolled->viewport() : At(name), Qt::LeftButton);
    }

    /// Replaces a field's text by way of the clipboard, which takes any script.
    void Enter(const char *name, const QString &text) const
    {
        QGuiApplication::clipboard()->setText(text);
        QTest::keyClick(At(name), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(At(name), Qt::Key_V, Qt::ControlModifier);
    }

    QString Text(const char *name) const
    {
        if (const auto *label = At<QLabel>(name))
            return label->text();
        if (const auto *box = At<QComboBox>(name))
            return box->currentText();
        const auto *line = At<QLineEdit>(name);
        return line != nullptr ? line->text() : At<QPlainTextEdit>(name)->toPlainText();
    }

    QStringList Texts(const QByteArray &array, int count) const
    {
        QStringList result;
        for (int i = 0; i < count; ++i)
            result.append(Text(QByteArray(array + '_' + QByteArray::number(i)).constData()));
        return result;
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
        auto *list = At<QTableWidget>(name);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row, 0)).center());
    }

    void AddImage(const QString &path)
    {
        F.Prompts.ExpectPath(QString(), path);
        F.Prompts.ExpectPath(QStringLiteral("Enter description."), QString());
        Click("ID3v2ImageAdd");
    }
};
