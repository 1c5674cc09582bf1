// The browser's folder list: drives, folders and the files that the viewer may know.
#pragma once

#include "services/settings.h"
#include "viewer/browserpane.h"
#include "widgets/filelistbox.h"

namespace wb
{

class FolderPane : public BrowserPane
{
    Q_OBJECT

public:
    // The folder shown is kept in the settings. `icons` as LoadListIcons gives them.
    FolderPane(Settings &settings, const std::vector<QIcon> &icons, QWidget *parent);

    // The folder shown; empty for the drives.
    const QString &Path() const { return lstFiles->Path(); }
    void SetPath(const QString &path) { lstFiles->SetPath(path); }

    // The file selected; empty for a folder, ".." or nothing.
    QString SelectedFile() const;

    // The folder selected; without one the folder shown.
    QString SelectedFolder() const;

    // Selects a file of the folder shown by its name, ignoring case, and opens it as a double click does.
    void OpenNamed(const QString &name);

    QString PathText() const override { return Path(); }
    QString CountText() const override;
    void GoUp() override;
    void GoToRoot() override;
    void GoTo(const QString &path) override;

Q_SIGNALS:
    void FileSelected(const QString &path);
    void ArchiveOpened(); // by a double click on the one that was selected

private:
    QString PathOf(const QString &name) const;
    void SelectionChanged();
    void DoubleClicked();

    Settings &m_settings;
    FileListBox *lstFiles;
};

} // namespace wb
