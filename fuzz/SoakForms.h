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
    /// Works one control of a form, of those that do something rather than the others; returns its name.
    QByteArray Work(QDialog &form);
    /// Requires that what was done in a form has changed no more of the list than it may.
    static void Follow(const QByteArray &form, const QByteArray &control, const SoakList &before, const SoakList &after,
                       const Main &window, SoakHistory &history);

private:
    QWidget *Choose(const QDialog &form) const;
    void Work(QWidget &control) const;
    void CloseMenu() const;

    Draw draw;
};
