#pragma once

/// Before a QApplication is made: lets Qt draw without a display, without a word of its own on standard error, and
/// without making folders. Everything is drawn at a whole number of times its size.
void PrepareHeadless(int scale);
