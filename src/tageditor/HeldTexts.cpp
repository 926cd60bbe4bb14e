#include "tageditor/HeldTexts.h"

#include <QLineEdit>
#include <QPlainTextEdit>

namespace
{
QString ShownText(const QWidget *field)
{
    if (const auto *line = qobject_cast<const QLineEdit *>(field))
        return line->text();
    return qobject_cast<const QPlainTextEdit *>(field)->toPlainText();
}
} // namespace

void HeldTexts::Show(QWidget *field, const QString &text)
{
    if (auto *line = qobject_cast<QLineEdit *>(field)) {
        line->setText(text);
        line->setCursorPosition(0);
    } else {
        qobject_cast<QPlainTextEdit *>(field)->setPlainText(text);
    }
    held[field] = {text, ShownText(field)};
}

QString HeldTexts::Text(const QWidget *field) const
{
    return IsEdited(field) ? ShownText(field) : held[field].Given;
}

bool HeldTexts::IsEdited(const QWidget *field) const
{
    return ShownText(field) != held[field].Shown;
}
