#include "session/LongRun.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>

#include <algorithm>
#include <utility>

LongRun::LongRun(QProgressBar *valueShownBy, QLabel *textShownBy)
    : outer(std::exchange(innermost, this)), bar(valueShownBy), label(textShownBy)
{
    QCoreApplication::instance()->installEventFilter(this);
}

LongRun::~LongRun()
{
    innermost = outer;
    if (outer != nullptr)
        outer->stopped = outer->stopped || stopped;
}

Progress LongRun::AsProgress()
{
    return {[this](int minimum, int maximum) { SetLimits(minimum, maximum); }, [this](int value) { SetValue(value); },
            [this](const QString &newText) { SetText(newText); }, [this] { return stopped; }};
}

void LongRun::SetLimits(int minimum, int maximum)
{
    if (bar != nullptr)
        bar->setRange(minimum, std::max(maximum, minimum + 1));
    current = minimum;
    Paint();
}

void LongRun::SetValue(int value)
{
    current = value;
    const bool isLimit = bar != nullptr && (value == bar->minimum() || value == bar->maximum());
    if (pace.Due() || isLimit)
        Paint();
}

void LongRun::SetText(const QString &newText)
{
    text = newText;
    if (pace.Due())
        Paint();
}

void LongRun::Paint()
{
    if (bar != nullptr)
        bar->setValue(current);
    if (label != nullptr && !text.isEmpty())
        label->setText(text);
    QCoreApplication::processEvents();
}

bool LongRun::eventFilter(QObject *, QEvent *event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        // Taken as a plain key, so that no shortcut and no mnemonic comes of it.
        event->accept();
        return true;
    case QEvent::KeyPress:
        stopped = stopped || static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape;
        return true;
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::Close:
    case QEvent::Drop:
        if (event->type() == QEvent::Close || event->type() == QEvent::Drop)
            event->ignore();
        return true;
    default:
        return false;
    }
}
