#include "widgets/filelistbox.h"

#include "platform/nativepath.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

namespace wb
{

namespace
{

constexpr int RefreshInterval = 4000; // ms

}

class FileListBox::Rows : public RowSource
{
public:
    Rows(FolderRows rows, std::shared_ptr<const std::vector<QIcon>> pictures)
        : m_rows(std::move(rows)), m_pictures(std::move(pictures))
    {
    }

    const FolderRows &Records() const { return m_rows; }

    int Count() const override { return static_cast<int>(m_rows.size()); }
    QString Text(int row) const override { return m_rows[std::size_t(row)].Text; }
    QIcon Picture(int row) const override
    {
        const auto picture = std::size_t(m_rows[std::size_t(row)].Picture);
        return picture < m_pictures->size() ? (*m_pictures)[picture] : QIcon();
    }

private:
    FolderRows m_rows;
    std::shared_ptr<const std::vector<QIcon>> m_pictures;
};

FileListBox::FileListBox(const QString &name, std::vector<QIcon> pictures, QString pattern,
                         QString programFolder, QWidget *parent)
    : ListBox(name, parent), m_pictures(std::make_shared<std::vector<QIcon>>(std::move(pictures))),
      m_pattern(std::move(pattern)), m_programFolder(std::move(programFolder)),
      m_rows(std::make_shared<Rows>(FolderRows(), m_pictures))
{
    connect(&tmrRefresher, &QTimer::timeout, this, &FileListBox::Refresh);
    tmrRefresher.start(RefreshInterval);
}

FileListBox::~FileListBox() = default;

void FileListBox::SetPath(const QString &path)
{
    ShowPath(path, SelectedName());
}

QString FileListBox::SelectedName() const
{
    const int row = ListIndex();
    return row < 0 ? QString() : m_rows->Records()[std::size_t(row)].Name;
}

int FileListBox::FindName(const QString &name, int first) const
{
    return wb::FindName(m_rows->Records(), name, first);
}

void FileListBox::OpenSelected()
{
    const int row = ListIndex();
    if (row < 0)
        return;
    const OpenedRow opened = OpenRow(m_rows->Records()[std::size_t(row)], m_path, m_programFolder);
    if (opened.PathChanges)
        ShowPath(opened.Path, opened.SelectName);
}

void FileListBox::ShowPath(const QString &path, const QString &selectName)
{
    m_path = NearestFolder(NormalizeListPath(path, m_programFolder), m_programFolder);
    m_watch.Watch(ToNativePath(m_path));
    ++m_number;
    FolderRows rows = ListRows(m_path, m_pattern, 0);
    const int row = selectName.isEmpty() ? -1 : FindRow(rows, selectName);
    ReplaceRows(std::move(rows), row);
    scrollTo(currentIndex());
    Q_EMIT ChangeFolder();
    Q_EMIT SelectionChanged();
}

void FileListBox::ReplaceRows(FolderRows rows, int row)
{
    m_rows = std::make_shared<Rows>(std::move(rows), m_pictures);
    SetRows(m_rows, row);
}

void FileListBox::Refresh()
{
    // Drives come and go without a folder changing, so their list is always read again.
    if (m_listing || (!m_path.isEmpty() && !m_watch.MayHaveChanged()))
        return;
    m_listing = true;
    QThreadPool::globalInstance()->start([path = m_path, pattern = m_pattern, number = m_number,
                                          list = QPointer<FileListBox>(this)]() mutable {
        FolderRows rows = ListRows(path, pattern, 0);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [list, number, rows = std::move(rows)]() mutable {
                if (list)
                    list->TakeListing(number, std::move(rows));
            },
            Qt::QueuedConnection);
    });
}

void FileListBox::TakeListing(int number, FolderRows rows)
{
    m_listing = false;
    const FolderRows &shown = m_rows->Records();
    if (number != m_number || !RowsDiffer(shown, rows))
        return;
    const int selected = ListIndex();
    const int row = selected < 0 ? -1 : FindRow(rows, ReselectName(shown[std::size_t(selected)]));
    const int top = TopIndex();
    ReplaceRows(std::move(rows), row);
    SetTopIndex(top);
    Q_EMIT RowsRefreshed();
}

} // namespace wb
