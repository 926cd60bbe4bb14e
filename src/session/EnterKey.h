#pragma once

class QKeyEvent;
class QWidget;

/// Whether the key is Enter and a push button of the window has the focus; it has then been clicked. A dialog on its
/// own lets Enter press its default button, whichever other one has the focus.
bool ClicksFocusedButton(const QWidget &window, const QKeyEvent &key);
