#include "session/Colours.h"

#include <algorithm>
#include <cmath>

namespace
{
/// The share of white that the eye sees, by the screen's own curve (sRGB).
double Luminance(const QColor &colour)
{
    const auto linear = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}
} // namespace

double Contrast(const QColor &one, const QColor &other)
{
    const auto [low, high] = std::minmax({Luminance(one), Luminance(other)});
    return (high + 0.05) / (low + 0.05);
}

QColor TextOn(const QColor &ground, const QColor &text)
{
    if (Contrast(text, ground) >= readable)
        return text;
    return Contrast(Qt::white, ground) > Contrast(Qt::black, ground) ? Qt::white : Qt::black;
}

QColor Dimmed(const QColor &text, const QColor &ground, double contrast)
{
    int percent = 65;
    while (percent < 100 && Contrast(Blend(text, ground, percent), ground) < contrast)
        ++percent;
    return Blend(text, ground, percent);
}

QColor SelectedGround(const QPalette &palette)
{
    const QColor base = palette.color(QPalette::Base);
    const bool dark = Contrast(base, Qt::white) > Contrast(base, Qt::black);
    return Blend(palette.color(QPalette::Highlight), base, dark ? 38 : 25);
}
