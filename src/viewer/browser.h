// The left side of the viewer: the folder, archive and record lists, with the path box and the ways to move.
#pragma once

#include "services/settings.h"
#include "widgets/frmres.h"

#include <QWidget>

#include <array>

class QLabel;
class QLineEdit;
class QPushButton;

namespace wb
{

class ArchivePane;
class BrowserPane;
class DatEditor;
class FolderPane;
class ListBox;
class PictureButton;

class Browser : public QWidget
{
    Q_OBJECT

public:
    enum View { Files = 0, Archive = 1, Records = 2 };

    Browser(Settings &settings, const frmRes &res, DatEditor &datEditor, QWidget *parent);

    View CurrentView() const { return m_view; }
    void SetView(View view); // presses cmdFileView(view)

    FolderPane &Folders() const { return *m_folders; }
    ArchivePane &Entries() const { return *m_entries; }

    // While the viewer is busy nothing is packed, unpacked or extracted.
    void SetBusy(bool busy);

    void FocusList();
    void ScrollList(int rows);

Q_SIGNALS:
    void ViewDoubleClicked(View view);
    void KeyPress(QChar character);
    // The folder and the archive that a packing or unpacking should begin with.
    void PackerWanted(const QString &folder, const QString &archive);
    void UnpackerWanted(const QString &archive, const QString &folder);
    void ExtractWanted();

private:
    QWidget *MakeNavigation();
    QWidget *MakeViewButtons();
    QWidget *MakeArchiveButtons();
    QWidget *MakeTopRow();
    BrowserPane *CurrentPane() const;
    ListBox *CurrentList() const;
    void OrderTabs();
    void SwitchView(View view);
    void ShowTexts();
    void UpdateButtons();
    void WantPacker();
    void WantUnpacker();
    bool eventFilter(QObject *watched, QEvent *event) override;

    View m_view = Files;
    bool m_busy = false;
    FolderPane *m_folders;
    ArchivePane *m_entries;
    std::array<BrowserPane *, 3> m_panes; // of the views
    std::array<QPushButton *, 3> cmdFileView;
    PictureButton *cmdRoot;
    PictureButton *cmdSub;
    PictureButton *cmdPacker;
    PictureButton *cmdUnPacker;
    PictureButton *cmdExtract;
    QLineEdit *txtPath;
    QLabel *lblFiles;
};

} // namespace wb
