#include "session/Palettes.h"

#include "session/Colours.h"
#include "session/Icons.h"

#include <QApplication>
#include <QProxyStyle>
#include <QStyleOptionButton>

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

/// The colour of a window whose tick boxes, or round choices, have edges that can be seen: those are drawn darker than
/// it. Round ones are smoothed, and so paler.
QColor WindowOfSeenEdges(const QPalette &palette, bool round)
{
    const QColor window = palette.color(QPalette::Window);
    const auto isSeen = [&](const QColor &drawn) {
        const QColor edge = drawn.darker(round ? 150 : 127);
        const double wanted = round ? readable : seen;
        return Contrast(edge, palette.color(QPalette::Base)) >= wanted && Contrast(edge, window) >= wanted;
    };
    QColor drawn = window;
    for (int percent = 0; percent <= 100 && !isSeen(drawn); ++percent)
        drawn = Blend(palette.color(QPalette::WindowText), window, percent);
    return drawn;
}

/// What this program draws in its own way, whatever the style it is drawn with.
class ProgramStyle : public QProxyStyle
{
public:
    using QProxyStyle::QProxyStyle;

    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *result) const override
    {
        // Plain buttons, and lists of choices that drop down, with as many lines as they are given.
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons || hint == SH_ComboBox_Popup)
            return 0;
        return QProxyStyle::styleHint(hint, option, widget, result);
    }

    QIcon standardIcon(StandardPixmap icon, const QStyleOption *option, const QWidget *widget) const override
    {
        switch (icon) {
        case SP_MessageBoxQuestion:
            return Icon("message-question"_L1);
        case SP_MessageBoxInformation:
            return Icon("message-information"_L1);
        case SP_MessageBoxWarning:
            return Icon("message-warning"_L1);
        case SP_MessageBoxCritical:
            return Icon("message-stop"_L1);
        default:
            return QProxyStyle::standardIcon(icon, option, widget);
        }
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
        if (button == nullptr || (element != PE_IndicatorCheckBox && element != PE_IndicatorRadioButton)) {
            QProxyStyle::drawPrimitive(element, option, painter, widget);
            return;
        }
        QStyleOptionButton edged(*button);
        edged.palette.setColor(QPalette::Window,
                               WindowOfSeenEdges(option->palette, element == PE_IndicatorRadioButton));
        QProxyStyle::drawPrimitive(element, &edged, painter, widget);
    }

    void polish(QPalette &palette) override
    {
        QProxyStyle::polish(palette);
        for (const auto group : {QPalette::Active, QPalette::Inactive}) {
            const QColor text = palette.color(group, QPalette::HighlightedText);
            const QColor highlight = palette.color(group, QPalette::Highlight);
            const QColor away = Contrast(text, Qt::black) > Contrast(text, Qt::white) ? Qt::black : Qt::white;
            int percent = 0;
            while (percent < 100 && Contrast(Blend(away, highlight, percent), text) < readable)
                ++percent;
            palette.setColor(group, QPalette::Highlight, Blend(away, highlight, percent));
        }
    }
};
} // namespace

void UseProgramStyle()
{
    QApplication::setStyle(new ProgramStyle);
}

void UseStyle(bool dark)
{
    QApplication::setStyle(new ProgramStyle(u"Fusion"_s));
    QPalette palette = dark ? DarkPalette() : QApplication::style()->standardPalette();
    QApplication::style()->polish(palette);
    QApplication::setPalette(palette);
}
