#pragma once

#include "text/FormatText.h"

#include <QProgressBar>

/// A progress bar that says "1,204 of 5,000".
class CountBar : public QProgressBar
{
    Q_OBJECT

public:
    using QProgressBar::QProgressBar;

    QString text() const override { return GroupedDigits(value()) + QStringLiteral(" of ") + GroupedDigits(maximum()); }
};
