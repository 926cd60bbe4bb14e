#pragma once

#include <QColor>
#include <QPalette>

/// A colour as the settings keep it: blue, green and red from the high byte to the low one, as a signed 32-bit number;
/// with the high bit set it stands for a colour of the system.
using ColourNumber = qint32;

inline constexpr ColourNumber systemWindow = static_cast<ColourNumber>(0x80000005u);
inline constexpr ColourNumber systemWindowText = static_cast<ColourNumber>(0x80000008u);

inline ColourNumber NumberOfColour(const QColor &colour)
{
    return colour.red() | colour.green() << 8 | colour.blue() << 16;
}

/// How far apart two colours are for the eye, from 1 to 21.
double Contrast(const QColor &one, const QColor &other);

/// The contrast that reading needs, and the one that seeing something needs.
inline constexpr double readable = 4.5;
inline constexpr double seen = 3;

/// The text if it can be read on the ground, else black or white.
QColor TextOn(const QColor &ground, const QColor &text);

/// The text mixed into its ground: two thirds of it, or as much as keeps the contrast.
QColor Dimmed(const QColor &text, const QColor &ground, double contrast);

/// The ground of a selected row: paler than the palette's highlight, which would swallow the icons.
QColor SelectedGround(const QPalette &palette);

/// A colour between two: percent of the front.
inline QColor Blend(const QColor &front, const QColor &back, int percent)
{
    const auto mix = [percent](int a, int b) { return (a * percent + b * (100 - percent)) / 100; };
    return QColor(mix(front.red(), back.red()), mix(front.green(), back.green()), mix(front.blue(), back.blue()));
}

/// Whether a number stands for a colour that this program knows.
inline bool IsColour(ColourNumber number)
{
    return (number >= 0 && number <= 0xffffff) || number == systemWindow || number == systemWindowText;
}

inline QColor ColourOfNumber(ColourNumber number, const QPalette &system)
{
    if (number == systemWindow || number == systemWindowText)
        return system.color(number == systemWindow ? QPalette::Base : QPalette::Text);
    return QColor(number & 0xff, number >> 8 & 0xff, number >> 16 & 0xff);
}
