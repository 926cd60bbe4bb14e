#pragma once

class QAbstractButton;

/// Takes a double click on a button, and its letter held down, as one click: for a button that does something else, or
/// more, once it has been clicked.
void TakeSingleClicks(QAbstractButton *button);
