#include "FirstPaint.h"

// The least that a program with a window of Qt does.
int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QWidget window;
    window.resize(1000, 640);
    window.show();
    FirstPaint::WaitFor(window);
}
