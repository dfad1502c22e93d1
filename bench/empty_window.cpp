// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QMainWindow>

/// What any Qt Widgets program needs before it does something: the yardstick for the start and its memory.
int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1140, 760);
    window.show();
    return QApplication::exec();
}
