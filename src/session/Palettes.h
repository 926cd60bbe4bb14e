#pragma once

/// Gives the style of the desktop this program's own ways: its pictures in messages, plain buttons, lists of choices
/// that drop down, and marked text that can be read.
void UseProgramStyle();

/// The program's look where no desktop gives one: the same on every host, light or dark.
void UseStyle(bool dark);
