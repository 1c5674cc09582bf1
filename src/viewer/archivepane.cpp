#include "viewer/archivepane.h"

#include "common/folderrows.h"
#include "common/paths.h"
#include "viewer/filetype.h"
#include "viewer/viewertexts.h"
#include "widgets/listicons.h"

namespace wb
{

// The folder list's pictures, and one for the files that it does not show.
class ArchivePane::Pictures
{
public:
    explicit Pictures(const std::vector<QIcon> &icons)
        : m_patterns(FilePatterns().split(u';')), m_pictures(FolderListPictures(icons)),
          m_unknown(icons[std::size_t(ListIcon::Null)])
    {
    }

    const QIcon &Up() const { return m_pictures[PictureUp]; }

    const QIcon &Of(const PkgEntry &entry) const
    {
        if (entry.Type == PkgFolder)
            return m_pictures[PictureFolder];
        const auto pattern = m_patterns.indexOf(QStringLiteral("*.") + GetExtension(entry.Name).toUpper());
        return pattern < 0 ? m_unknown : m_pictures[std::size_t(PicturePatterns + pattern)];
    }

private:
    QStringList m_patterns;
    std::vector<QIcon> m_pictures;
    QIcon m_unknown;
};

// "..", then the entries of a folder.
class ArchivePane::Rows : public RowSource
{
public:
    Rows(PkgEntryList entries, std::shared_ptr<const Pictures> pictures)
        : m_entries(std::move(entries)), m_pictures(std::move(pictures))
    {
    }

    int Count() const override { return int(m_entries.size()) + 1; }
    QString Text(int row) const override { return row == 0 ? QStringLiteral("..") : Entry(row).Name; }
    QIcon Picture(int row) const override { return row == 0 ? m_pictures->Up() : m_pictures->Of(Entry(row)); }

private:
    const PkgEntry &Entry(int row) const { return m_entries[std::size_t(row) - 1]; }

    PkgEntryList m_entries;
    std::shared_ptr<const Pictures> m_pictures;
};

ArchivePane::ArchivePane(const std::vector<QIcon> &icons, QWidget *parent)
    : BrowserPane(new ListBox(QStringLiteral("lstPKG"), parent)),
      m_pictures(std::make_shared<Pictures>(icons))
{
    connect(List(), &ListBox::SelectionChanged, this, &ArchivePane::SelectionChanged);
    connect(List(), &ListBox::DblClick, this, &ArchivePane::OpenSelected);
}

void ArchivePane::Open(const QString &path)
{
    m_archive.Open(path);
    ShowRows(-1);
}

void ArchivePane::Close()
{
    m_archive.Close();
    ShowRows(-1);
}

QString ArchivePane::CountText() const
{
    const auto count = int(m_archive.Entries().size());
    const PkgEntry *entry = SelectedEntry();
    return entry == nullptr || entry->Type == PkgFolder ? ObjectsText(count)
                                                        : ObjectsText(count, entry->Size);
}

void ArchivePane::ShowRows(int row)
{
    const bool isOpen = m_archive.Handle() != nullptr;
    List()->SetRows(isOpen ? std::make_shared<Rows>(m_archive.Entries(), m_pictures) : nullptr, row);
    List()->scrollTo(List()->currentIndex());
    Q_EMIT Changed();
}

void ArchivePane::ShowFolder(const QString &folder, int row)
{
    m_archive.ShowFolder(folder);
    ShowRows(row);
}

void ArchivePane::SelectionChanged()
{
    Q_EMIT Changed();
    if (const PkgEntry *entry = SelectedEntry(); entry != nullptr && entry->Type != PkgFolder)
        Q_EMIT EntrySelected(*entry);
}

void ArchivePane::OpenSelected()
{
    if (List()->ListIndex() == 0)
        OpenParent();
    else if (const PkgEntry *entry = SelectedEntry(); entry != nullptr && entry->Type == PkgFolder)
        ShowFolder(entry->FullPath(), -1);
}

void ArchivePane::OpenParent()
{
    if (m_archive.Folder().isEmpty()) {
        Close();
        Q_EMIT Left();
    } else {
        ShowRows(m_archive.ShowParent());
    }
}

void ArchivePane::GoToRoot()
{
    if (!m_archive.Folder().isEmpty())
        ShowFolder({}, 0);
}

} // namespace wb
