#include "viewer/folderpane.h"

#include "archive/pkgformat.h"
#include "common/files.h"
#include "common/paths.h"
#include "platform/fileio.h"
#include "platform/nativepath.h"
#include "platform/programfolder.h"
#include "viewer/filetype.h"
#include "viewer/viewertexts.h"
#include "widgets/listicons.h"

namespace wb
{

FolderPane::FolderPane(Settings &settings, const std::vector<QIcon> &icons, QWidget *parent)
    : BrowserPane(new FileListBox(QStringLiteral("lstFiles"), FolderListPictures(icons), FilePatterns(),
                                  ProgramFolder(), parent)),
      m_settings(settings), lstFiles(static_cast<FileListBox *>(List()))
{
    connect(lstFiles, &FileListBox::ChangeFolder, this, [this] { m_settings.Dir = Path(); });
    connect(lstFiles, &FileListBox::RowsRefreshed, this, &BrowserPane::Changed);
    connect(lstFiles, &ListBox::SelectionChanged, this, &FolderPane::SelectionChanged);
    connect(lstFiles, &ListBox::DblClick, this, &FolderPane::DoubleClicked);
}

QString FolderPane::PathOf(const QString &name) const
{
    return NormalizePath(Path() + u'\\' + name);
}

QString FolderPane::SelectedFile() const
{
    const QString name = lstFiles->SelectedName();
    const QString file = name.isEmpty() ? QString() : PathOf(name);
    return FileExists(file) ? file : QString();
}

QString FolderPane::SelectedFolder() const
{
    const QString name = lstFiles->SelectedName();
    const bool leadsDown = !name.isEmpty() && name != QStringLiteral("..");
    return leadsDown && FolderExists(PathOf(name)) ? PathOf(name) : Path();
}

void FolderPane::OpenNamed(const QString &name)
{
    const int row = name.isEmpty() ? -1 : lstFiles->FindName(name, 1);
    if (row < 0)
        return;
    lstFiles->SetListIndex(row);
    lstFiles->Activate();
}

QString FolderPane::CountText() const
{
    const int count = Path().isEmpty() ? lstFiles->ListCount() : lstFiles->ListCount() - 1;
    const QString file = SelectedFile();
    return file.isEmpty() ? ObjectsText(count) : ObjectsText(count, GetFileFacts(ToNativePath(file)).Size);
}

void FolderPane::SelectionChanged()
{
    Q_EMIT Changed();
    if (const QString file = SelectedFile(); !file.isEmpty())
        Q_EMIT FileSelected(file);
}

void FolderPane::DoubleClicked()
{
    if (!IsPkgPath(SelectedFile()))
        return; // selecting it has opened it
    SelectionChanged();
    Q_EMIT ArchiveOpened();
}

void FolderPane::GoUp()
{
    if (!Path().isEmpty())
        BrowserPane::GoUp();
}

void FolderPane::GoToRoot()
{
    constexpr int DriveRootLength = 3;
    if (Path().size() > DriveRootLength)
        SetPath(Path().left(DriveRootLength));
}

void FolderPane::GoTo(const QString &path)
{
    SetPath(PathFromUserText(path));
}

} // namespace wb
