#include "session/Palettes.h"

#include <QApplication>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace
{
QPalette DarkPalette()
{
    QPalette palette(QColor(0x2b, 0x2d, 0x31), QColor(0x2b, 0x2d, 0x31));
    palette.setColor(QPalette::Base, QColor(0x1e, 0x1f, 0x22));
    palette.setColor(QPalette::AlternateBase, QColor(0x25, 0x26, 0x2a));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, QColor(0xe4, 0xe6, 0xea));
    palette.setColor(QPalette::PlaceholderText, QColor(0x9a, 0x9e, 0xa6));
    palette.setColor(QPalette::ToolTipBase, QColor(0x3a, 0x3d, 0x42));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x65, 0xca));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6c, 0xa8, 0xff));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x7a, 0x7d, 0x84));
    return palette;
}
} // namespace

void UseStyle(bool dark)
{
    QApplication::setStyle(u"Fusion"_s);
    QApplication::setPalette(dark ? DarkPalette() : QApplication::style()->standardPalette());
}
