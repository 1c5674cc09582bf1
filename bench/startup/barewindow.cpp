// What a program with a window of the workbench's size costs at the least.
#include <QApplication>
#include <QWidget>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QWidget window;
    window.setStyleSheet(QStringLiteral("background: #336699"));
    window.resize(1024, 736);
    window.show();
    return QApplication::exec();
}
