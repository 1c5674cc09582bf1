// A window whose every press starts a drag of one file, for tests of dropping from another program.
// Usage: x11_dragsource FILE
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

namespace
{

class DragSource : public QWidget
{
public:
    explicit DragSource(const QString &file) : m_file(file)
    {
        setWindowTitle(QStringLiteral("x11_dragsource"));
        setWindowFlag(Qt::FramelessWindowHint);
        setGeometry(0, 0, 120, 120);
    }

protected:
    void mouseMoveEvent(QMouseEvent *event) override
    {
        if (!(event->buttons() & Qt::LeftButton))
            return;
        auto *files = new QMimeData;
        files->setUrls({QUrl::fromLocalFile(m_file)});
        auto *drag = new QDrag(this);
        drag->setMimeData(files);
        drag->exec(Qt::CopyAction);
    }

private:
    QString m_file;
};

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    DragSource source(QApplication::arguments().at(1));
    source.show();
    return QApplication::exec();
}
