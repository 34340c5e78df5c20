// The least that a program with a window does. What the tool's start and idleness are measured by. With an argument the
// window shows it: what a program's first text costs.

#include <QApplication>
#include <QLabel>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    if (argc > 1)
        new QLabel(QString::fromUtf8(argv[1]), &window);
    window.resize(1280, 800);
    window.show();
    return QApplication::exec();
}
