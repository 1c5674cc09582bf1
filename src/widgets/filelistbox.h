// A list of the machine's drives or of one folder, which walks the folder tree and keeps itself current.
#pragma once

#include "common/folderrows.h"
#include "platform/folderwatch.h"
#include "widgets/listbox.h"

#include <QTimer>

#include <vector>

namespace wb
{

class FileListBox : public ListBox
{
    Q_OBJECT

public:
    // `pictures` in the order of RowPicture, one for each of the patterns last. `pattern` holds patterns
    // separated by ";". Relative paths are taken from `programFolder`.
    FileListBox(const QString &name, std::vector<QIcon> pictures, QString pattern, QString programFolder,
                QWidget *parent);
    ~FileListBox() override;

    // The folder shown; empty: the drives. A folder that does not exist is replaced by its nearest parent.
    const QString &Path() const { return m_path; }
    void SetPath(const QString &path);

    // The selected row's name, empty without one.
    QString SelectedName() const;

    // As the function of that name does, in the rows shown.
    int FindName(const QString &name, int first) const;

    // Lists the folder again now, as the timer does.
    void Refresh();

Q_SIGNALS:
    void ChangeFolder();
    // A refresh found other rows; the selection is where it was, or on the first row when its row is gone.
    void RowsRefreshed();

protected:
    // Goes where the selected row leads; a file leads nowhere.
    void OpenSelected() override;

private:
    class Rows;

    void ShowPath(const QString &path, const QString &selectName);
    void ReplaceRows(FolderRows rows, int row);
    void TakeListing(int number, FolderRows rows);

    std::shared_ptr<const std::vector<QIcon>> m_pictures;
    QString m_pattern;
    QString m_programFolder;
    QString m_path;
    std::shared_ptr<const Rows> m_rows;
    FolderWatch m_watch;
    QTimer tmrRefresher;
    bool m_listing = false; // a refresh is on its way
    int m_number = 0;       // of the newest listing; older ones come too late
};

} // namespace wb
