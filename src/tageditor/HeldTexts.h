#pragma once

#include <QHash>
#include <QString>

class QWidget;

/// The texts that fields were given. A field may alter what it shows (line breaks, control characters), so a text goes
/// back as it came while the user leaves it alone. Fields are QLineEdit or QPlainTextEdit.
class HeldTexts
{
public:
    void Show(QWidget *field, const QString &text);
    QString Text(const QWidget *field) const;
    bool IsEdited(const QWidget *field) const;

private:
    struct HeldText {
        QString Given;
        QString Shown;
    };
    QHash<const QWidget *, HeldText> held;
};
