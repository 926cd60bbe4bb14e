#pragma once

#include <QLineEdit>

/// A field that takes digits alone and swallows every other character, Backspace among them. Keys that are no
/// characters (arrows, Delete, shortcuts) do their work.
class TrackEdit : public QLineEdit
{
public:
    explicit TrackEdit(QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
