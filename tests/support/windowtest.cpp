#include "support/windowtest.h"

#include "widgets/filelistbox.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace wb
{

namespace
{

const QString SettingsFile = QStringLiteral("Options.ini");

}

void WindowTest::OpenWindow(const QString &name)
{
    window = std::make_unique<frmMain>(dialogs, settingsFolder.Path(SettingsFile), registry);
    window->show();
    window->OpenCommandLine({folder.Path(), name});
    ASSERT_TRUE(QTest::qWaitFor([this] { return window->IsFirstFrameShown(); }));
}

void WindowTest::CloseWindow()
{
    window.reset();
}

void WindowTest::Key(char key) const
{
    QTest::keyClick(window->focusWidget(), key);
}

void WindowTest::Key(Qt::Key key) const
{
    QTest::keyClick(window->focusWidget(), key);
}

void WindowTest::ClickRow(const QString &name) const
{
    const int row = List()->FindName(name, 0);
    ASSERT_GE(row, 0) << name.toStdString();
    ClickRow(List(), row);
}

void WindowTest::ClickRow(ListBox *list, int row, bool twice) const
{
    const QModelIndex index = list->model()->index(row, 0);
    list->scrollTo(index);
    const QPoint place = list->visualRect(index).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    if (twice)
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
}

void WindowTest::Drop(std::initializer_list<const char *> names) const
{
    QStringList dropped;
    for (const char *name : names)
        dropped << QString::fromUtf8(name);
    Drop(dropped, Find("picPictureBorder"));
}

void WindowTest::Drop(const QStringList &names, QWidget *target) const
{
    QList<QUrl> urls;
    for (const QString &name : names)
        urls << QUrl::fromLocalFile(folder.NativeText(name.toStdString()));
    QMimeData files;
    files.setUrls(urls);
    QDragEnterEvent enter({5, 5}, Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, Qt::ShiftModifier);
    QCoreApplication::sendEvent(target, &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, Qt::ShiftModifier);
    QCoreApplication::sendEvent(target, &drop);
    EXPECT_EQ(Qt::CopyAction, drop.dropAction());
}

QColor WindowTest::PixelAt(const char *widget, QPoint position) const
{
    return Find(widget)->grab().toImage().pixelColor(position);
}

FileListBox *WindowTest::List() const
{
    return Find<FileListBox>("lstFiles");
}

Settings WindowTest::WrittenSettings() const
{
    return LoadSettings(settingsFolder.Path(SettingsFile));
}

void WindowTest::WriteSettings(const Settings &settings) const
{
    ASSERT_TRUE(SaveSettings(settingsFolder.Path(SettingsFile), settings));
}

} // namespace wb
