#include "tageditor/TrackEdit.h"

#include <QKeyEvent>

#include <algorithm>

namespace
{
bool IsDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

bool IsCharacter(const QKeyEvent *event)
{
    if (event->key() == Qt::Key_Backspace)
        return true;
    // Shortcuts; with Alt it is the key for a third character.
    if ((event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == Qt::ControlModifier)
        return false;
    switch (event->key()) {
    case Qt::Key_Delete:
    case Qt::Key_Escape:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return false;
    default:
        return !event->text().isEmpty() && event->text().front().isPrint();
    }
}
} // namespace

TrackEdit::TrackEdit(QWidget *parent) : QLineEdit(parent)
{
    // What comes in by the clipboard, a drag or an input method.
    connect(this, &QLineEdit::textEdited, this, [this](QString edited) {
        const auto end = std::remove_if(edited.begin(), edited.end(), [](QChar c) { return !IsDigit(c); });
        if (end == edited.end())
            return;
        edited.truncate(end - edited.begin());
        setText(edited);
    });
}

void TrackEdit::keyPressEvent(QKeyEvent *event)
{
    if (!IsCharacter(event) || (event->text().size() == 1 && IsDigit(event->text().front())))
        QLineEdit::keyPressEvent(event);
    else
        event->accept();
}
