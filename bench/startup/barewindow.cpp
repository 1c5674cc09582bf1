// What a program with a window of the workbench's size and a line of text costs at the least.
#include <QApplication>
#include <QLabel>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QLabel window(QStringLiteral("Workbench"));
    window.setWindowFlag(Qt::FramelessWindowHint);
    window.setStyleSheet(QStringLiteral("background: #336699"));
    window.resize(1024, 736);
    window.show();
    return QApplication::exec();
}
