#include "support/windowtest.h"

#include "widgets/filelistbox.h"

namespace wb
{

namespace
{

const QString SettingsFile = QStringLiteral("Options.ini");

}

void WindowTest::OpenWindow(const QString &name)
{
    window = std::make_unique<frmMain>(dialogs, settingsFolder.Path(SettingsFile));
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    window->OpenCommandLine(folder.Path(), name);
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
    List()->scrollTo(List()->model()->index(row, 0));
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, {},
                      List()->visualRect(List()->model()->index(row, 0)).center());
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
