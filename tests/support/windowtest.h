// The whole main window over a folder of samples, driven by events.
#pragma once

#include "app/frmmain.h"
#include "platform/clsregistryobject.h"
#include "support/samplefolder.h"
#include "support/scripteddialogs.h"

#include <QAbstractButton>
#include <QLabel>
#include <QSlider>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

#include <memory>

namespace wb
{

class FileListBox;
class ListBox;

class WindowTest : public testing::Test
{
protected:
    // Opens the window on the sample folder, as the command line does.
    void OpenWindow(const QString &name = {});
    void CloseWindow();

    template <typename Widget = QWidget>
    Widget *Find(const char *name) const
    {
        auto *widget = window->findChild<Widget *>(QLatin1String(name));
        EXPECT_NE(nullptr, widget) << name;
        return widget;
    }

    QString Text(const char *label) const { return Find<QLabel>(label)->text(); }
    void Click(const char *button) const { QTest::mouseClick(Find(button), Qt::LeftButton); }
    void Key(char key) const; // where the focus is
    void Key(Qt::Key key) const;
    void ClickRow(const QString &name) const; // of the folder list
    void ClickRow(ListBox *list, int row, bool twice = false) const;
    // Drops files of the folder on the viewer's picture or elsewhere, as a program does that would rather
    // move them.
    void Drop(std::initializer_list<const char *> names) const;
    void Drop(const QStringList &names, QWidget *target) const;
    QColor PixelAt(const char *widget, QPoint position) const;
    FileListBox *List() const;
    Settings WrittenSettings() const;
    void WriteSettings(const Settings &settings) const;

    SampleFolder folder;
    SampleFolder settingsFolder;
    ScriptedDialogs dialogs;
    clsRegistryObject registry;
    std::unique_ptr<frmMain> window;
};

} // namespace wb
