// The left side of the viewer: the folder, archive and record lists, with the path box and the ways to move.
#pragma once

#include "services/settings.h"
#include "widgets/filelistbox.h"
#include "widgets/frmres.h"

#include <QWidget>

#include <array>

class QLabel;
class QLineEdit;
class QPushButton;

namespace wb
{

class PictureButton;

class Browser : public QWidget
{
    Q_OBJECT

public:
    enum View { Files = 0, Archive = 1, Records = 2 };

    Browser(Settings &settings, const frmRes &res, QWidget *parent);

    View CurrentView() const { return m_view; }
    void SetView(View view); // presses cmdFileView(view)

    // The file selected in the folder list; empty for a folder, ".." or nothing.
    QString SelectedFile() const;

    const QString &Path() const { return lstFiles->Path(); }
    void SetPath(const QString &path) { lstFiles->SetPath(path); }

    // Selects a file of the folder shown by its name, ignoring case. False when it is not there.
    bool SelectFile(const QString &name);

    // Takes the selection away unless it is the file, which was opened by other means.
    void DeselectOther(const QString &file);

    void FocusList();
    void ScrollList(int rows);

Q_SIGNALS:
    // A file was selected in the folder list that is there.
    void FileSelected(const QString &path);
    void ViewDoubleClicked(View view);
    void KeyPress(QChar character);

private:
    QWidget *MakeNavigation();
    QWidget *MakeViewButtons();
    std::array<ListBox *, 3> Lists() const;
    ListBox *CurrentList() const;
    void OrderTabs();
    void FolderChanged();
    void ShowFolderTexts();
    void SelectionChanged();
    void SwitchView(View view);
    void GoUp();
    void GoToRoot();
    void GoToTypedPath();
    int ObjectCount() const;
    bool eventFilter(QObject *watched, QEvent *event) override;

    Settings &m_settings;
    View m_view = Files;
    bool m_switching = false;
    std::array<QPushButton *, 3> cmdFileView;
    PictureButton *cmdRoot;
    PictureButton *cmdSub;
    QLineEdit *txtPath;
    FileListBox *lstFiles;
    ListBox *lstPKG;
    ListBox *lstDAT;
    QLabel *lblFiles;
};

} // namespace wb
