#include "session/SingleClicks.h"

#include <QAbstractButton>
#include <QKeyEvent>

namespace
{
class SingleClicks final : public QObject
{
public:
    explicit SingleClicks(QAbstractButton *button) : QObject(button)
    {
        button->installEventFilter(this);
        button->window()->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // Each key that may be a letter of the window passes it first.
        if (event->type() == QEvent::ShortcutOverride)
            isHeld = static_cast<QKeyEvent *>(event)->isAutoRepeat();
        return watched == parent() &&
               (event->type() == QEvent::MouseButtonDblClick || (event->type() == QEvent::Shortcut && isHeld));
    }

private:
    bool isHeld = false;
};
} // namespace

void TakeSingleClicks(QAbstractButton *button)
{
    new SingleClicks(button);
}
