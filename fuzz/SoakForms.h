#pragma once

#include "SoakModel.h"

#include <functional>

class QDialog;
class QWidget;

/// The tools of the list: how a person works about in their windows, and what each may change.
class SoakForms
{
public:
    /// A draw from 0 to below its argument.
    using Draw = std::function<int(int)>;

    explicit SoakForms(Draw source) : draw(std::move(source)) {}
    /// A control to be worked, of those that do something rather than the others; none where there is none.
    QWidget *Choose(const QDialog &form) const;
    void Work(const QDialog &form, QWidget &control) const;
    /// Requires that what was done in a form has changed no more of the list than it may.
    static void Follow(const QByteArray &form, const QByteArray &control, const SoakList &before, const SoakList &after,
                       const Main &window, SoakHistory &history);

private:
    void Use(QWidget &control) const;
    void CloseMenu() const;

    Draw draw;
};
