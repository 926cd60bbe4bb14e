#include "session/EnterKey.h"

#include <QKeyEvent>
#include <QPushButton>

bool ClicksFocusedButton(const QWidget &window, const QKeyEvent &key)
{
    auto *button = qobject_cast<QPushButton *>(window.focusWidget());
    if (button == nullptr || (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter))
        return false;
    button->click();
    return true;
}
