// The browser's archive list: the open archive, folder by folder.
#pragma once

#include "archive/openarchive.h"
#include "viewer/browserpane.h"

#include <memory>
#include <vector>

namespace wb
{

class ArchivePane : public BrowserPane
{
    Q_OBJECT

public:
    // `icons` as LoadListIcons gives them.
    ArchivePane(const std::vector<QIcon> &icons, QWidget *parent);

    const OpenArchive &Archive() const { return m_archive; }

    // As OpenArchive does, and shows what is there then.
    void Open(const QString &path);
    void Close();

    // Null for ".." or nothing.
    const PkgEntry *SelectedEntry() const { return m_archive.EntryOfRow(List()->ListIndex()); }

    QString PathText() const override { return m_archive.Location(); }
    QString CountText() const override;
    void GoToRoot() override;

Q_SIGNALS:
    // A file was selected. The entry is only there until the archive is closed.
    void EntrySelected(const PkgEntry &entry);
    // The way up from the root: the archive is closed.
    void Left();

private:
    class Pictures;
    class Rows;

    void ShowFolder(const QString &folder, int row);
    void ShowRows(int row);
    void SelectionChanged();
    void OpenSelected();
    void OpenParent();

    std::shared_ptr<const Pictures> m_pictures;
    OpenArchive m_archive;
};

} // namespace wb
