#include "viewer/viewerpage.h"

#include "common/files.h"
#include "common/paths.h"
#include "services/uitext.h"
#include "viewer/archivepane.h"
#include "viewer/browser.h"
#include "viewer/display.h"
#include "viewer/documentloader.h"
#include "viewer/folderpane.h"
#include "viewer/frameexport.h"

#include <QAbstractButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace wb
{

namespace
{

struct KeyButton {
    char16_t key;
    const char *button;
};

// What a key pressed in a list clicks.
constexpr KeyButton ViewKeys[] = {
    {u'1', "cmdFileView(0)"},
    {u'2', "cmdFileView(1)"},
    {u'3', "cmdFileView(2)"},
};
constexpr char16_t Backspace = 8;
constexpr char16_t Escape = 27;
constexpr KeyButton Keys[] = {
    {u'\\', "cmdRoot"},      {Backspace, "cmdSub"},      {Escape, "cmdAbort"},   {u's', "cmdSavePNG"},
    {u'a', "cmdSaveAllPNG"}, {u'j', "cmdSaveJPG"},       {u'p', "cmdPacker"},    {u'u', "cmdUnPacker"},
    {u'e', "cmdExtract"},    {u'g', "cmdCopyGICR"},      {u'v', "cmdCopyGAICR"}, {u'b', "cmdCopyGAICRAll"},
    {u'n', "cmdCopyAnimCR"}, {u'm', "cmdCopyAnimCRAll"}, {u'-', "cmdZoomOut"},   {u'=', "cmdZoomIn"},
    {u'+', "cmdZoomIn"},     {u' ', "cmdPlay"},
};

const char *ButtonOf(std::span<const KeyButton> keys, QChar character)
{
    const auto match = std::ranges::find(keys, character.toLower().unicode(), &KeyButton::key);
    return match == keys.end() ? nullptr : match->button;
}

} // namespace

ViewerPage::ViewerPage(Settings &settings, Dialogs &dialogs, Progress &progress, AbortFlag &abort,
                       const frmRes &res, const ArchiveJob &unpackJob, DatEditor &datEditor, QWidget *parent)
    : Page(parent), m_settings(settings), m_dialogs(dialogs), m_progress(progress), m_abort(abort),
      m_unpackJob(unpackJob), m_browser(new Browser(settings, res, datEditor, this)),
      m_display(new Display(settings, dialogs, progress, abort, res, this))
{
    m_browser->setMinimumWidth(232);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 12, 12, 10);
    column->addWidget(m_display);

    connect(&m_browser->Folders(), &FolderPane::FileSelected, this, &ViewerPage::FileSelected);
    connect(&m_browser->Folders(), &FolderPane::ArchiveOpened, this, &ViewerPage::ArchiveOpened);
    connect(&m_browser->Entries(), &ArchivePane::EntrySelected, this, &ViewerPage::EntrySelected);
    connect(m_browser, &Browser::PackerWanted, this, &ViewerPage::PackerWanted);
    connect(m_browser, &Browser::UnpackerWanted, this, &ViewerPage::UnpackerWanted);
    connect(m_browser, &Browser::ExtractWanted, this, &ViewerPage::Extract);
    connect(m_browser, &Browser::KeyPress, this, &ViewerPage::PressKey);
    connect(m_browser, &Browser::ViewDoubleClicked, this, [this](Browser::View view) {
        if (view == Browser::Records)
            Q_EMIT DatEditorWanted();
        else
            Q_EMIT ViewerWanted();
    });
    connect(m_display, &Display::FileDropped, this, &ViewerPage::FileDropped);
    connect(m_display, &Display::BusyChanged, m_browser, &Browser::SetBusy);
    connect(m_display, &Display::BusyChanged, this, [this](bool busy) {
        if (busy)
            return;
        Q_EMIT Idle();
        // When the document is complete on screen.
        QMetaObject::invokeMethod(this, &ViewerPage::OpenWaiting, Qt::QueuedConnection);
    });
    connect(m_display, &Display::CopyWanted, this, &ViewerPage::HandOver);
    connect(m_display, &Display::Released, this, &ViewerPage::FocusList);
}

void ViewerPage::ApplySettings()
{
    Redraw();
    m_browser->Folders().SetPath(m_settings.Dir);
}

QWidget *ViewerPage::Lists() const
{
    return m_browser;
}

void ViewerPage::Redraw()
{
    m_display->Redraw();
}

void ViewerPage::ScrollList(int rows)
{
    m_browser->ScrollList(rows);
}

void ViewerPage::CheckPreview()
{
    m_display->CheckPreview();
}

void ViewerPage::KeepPreviewOnTop(bool isMainActive)
{
    m_display->KeepPreviewOnTop(isMainActive);
}

bool ViewerPage::IsBusy() const
{
    return m_display->IsBusy();
}

// The flag has ended the loading by itself; nothing is to follow.
void ViewerPage::Abort()
{
    m_waiting = {};
}

void ViewerPage::Release()
{
    m_waiting = {};
    m_display->Release();
    m_browser->Entries().Close();
}

void ViewerPage::FocusList()
{
    m_browser->FocusList();
}

void ViewerPage::showEvent(QShowEvent *)
{
    FocusList();
}

void ViewerPage::OpenNamed(const QString &folder, const QString &name)
{
    m_browser->Folders().SetPath(folder);
    m_browser->Folders().OpenNamed(name);
}

LoadOptions ViewerPage::Options() const
{
    return {.AftColor = m_settings.AFTColor,
            .AltGaiMethod = m_settings.AltGAIMethod,
            .Bar = &m_progress,
            .Abort = &m_abort};
}

void ViewerPage::OpenInViewer(const QString &path)
{
    m_waiting = {};
    if (IsPkgPath(path))
        m_browser->Entries().Open(path);
    else if (m_display->IsBusy())
        m_waiting = [this, path] { OpenInViewer(path); };
    else
        m_display->Open(path, [this, &path] { return OpenDocumentFile(path, Options()); });
}

void ViewerPage::OpenWaiting()
{
    if (m_waiting && !m_display->IsBusy())
        std::exchange(m_waiting, {})();
}

void ViewerPage::FileSelected(const QString &path)
{
    m_waiting = {};
    const bool isShown = path == m_display->DocumentPath() && !m_display->IsCutShort();
    if (!isShown && path != Archive().Path())
        OpenInViewer(path);
}

// An archive that can't be opened is reported now only; selecting it said nothing.
void ViewerPage::ArchiveOpened()
{
    if (Archive().Error() == FileError::None)
        m_browser->SetView(Browser::Archive);
    else
        ReportFileError(m_dialogs, Archive().Error());
}

void ViewerPage::FileDropped(const QString &path)
{
    if (!FileExists(path))
        return;
    OpenInViewer(path);
    if (IsPkgPath(path))
        m_browser->SetView(Browser::Archive);
}

const OpenArchive &ViewerPage::Archive() const
{
    return m_browser->Entries().Archive();
}

bool ViewerPage::IsShown(const PkgEntry &entry) const
{
    return entry.FullPath() == m_display->DocumentPath() && entry.Offset == m_documentOffset &&
           Archive().Handle() == m_documentArchive.lock() && !m_display->IsCutShort();
}

void ViewerPage::EntrySelected(const PkgEntry &entry)
{
    m_waiting = {};
    if (IsShown(entry))
        return;
    if (m_display->IsBusy()) {
        m_waiting = [this, entry, archive = Archive().Handle()] {
            if (archive == Archive().Handle())
                EntrySelected(entry);
        };
        return;
    }
    m_documentArchive = Archive().Handle();
    m_documentOffset = entry.Offset;
    // Loading may let events run that close the archive; the bytes come first.
    m_display->Open(entry.FullPath(),
                    [this, entry] { return OpenDocumentBuffer(Archive().ReadEntry(entry), Options()); });
}

void ViewerPage::Extract()
{
    if (m_unpackJob.IsBusy()) {
        m_dialogs.Error(UiText(TextUnpackerBusy), ErrorTitle);
        return;
    }
    const PkgEntry *selected = m_browser->Entries().SelectedEntry();
    if (selected == nullptr)
        return;
    // Kept while dialogs let events run.
    const PkgEntry entry = *selected;
    const PkgHandle archive = Archive().Handle();
    if (entry.Type == PkgFolder)
        ExtractFolder(archive, entry);
    else
        ExtractFile(*archive, entry);
}

void ViewerPage::ExtractFile(const PkgArchive &archive, const PkgEntry &file)
{
    const QString name = SafeEntryName(file.Name);
    const QString path = m_dialogs.SaveFile(UiText(TextAllFiles) + QStringLiteral(" (*.*)|*.*"),
                                            PathIn(m_settings.OpenDir, name));
    if (path.isEmpty())
        return;
    ByteArray bytes;
    const bool isWhole = PkgReadEntryData(archive, bytes, file);
    if (!WriteFileBytes(path, bytes))
        ReportFileError(m_dialogs, FileError::AccessError);
    else if (!isWhole)
        m_dialogs.Error(QStringLiteral("The file is damaged."), ErrorTitle);
    m_settings.OpenDir = GetFolder(path);
}

void ViewerPage::ExtractFolder(const PkgHandle &archive, const PkgEntry &folder)
{
    if (!IsSafeEntryName(folder.Name)) {
        ReportFileError(m_dialogs, FileError::PathNotFound);
        return;
    }
    const QString target =
        m_dialogs.ChooseFolder(tr("Выберите папку, в которую извлечь файлы:"), m_settings.OpenDir);
    if (target.isEmpty())
        return;
    UnpackOrder order;
    order.Archive = archive;
    order.TargetFolder = NormalizePath(target + u'\\' + folder.Name);
    order.StartOffset = folder.Offset;
    order.LogPrefix = folder.Name + u'\\';
    Q_EMIT ExtractWanted(order);
}

void ViewerPage::HandOver(FrameTarget target, bool all)
{
    const QString &path = m_display->DocumentPath();
    if (target == FrameTarget::GiCreator) {
        Q_EMIT GiCreatorWanted(m_display->CurrentPicture(), path);
        return;
    }
    const FrameSet &document = m_display->Document();
    const std::int32_t first = all ? 0 : m_display->CurrentFrame();
    const std::int32_t count = all ? document.Count : 1;
    QStringList names;
    for (std::int32_t i = 0; i < count; ++i)
        names << DefaultSaveName(path, first + i, document.Count);
    const auto handles = std::span(document.Pictures).subspan(std::size_t(first), std::size_t(count));
    if (target == FrameTarget::GaiEditor)
        Q_EMIT GaiEditorWanted(handles, names);
    else if (target == FrameTarget::HaiEditor)
        Q_EMIT HaiEditorWanted(handles, names);
    else
        Q_EMIT AnimCreatorWanted(handles, names);
}

void ViewerPage::PressKey(QChar character)
{
    const char *name = ButtonOf(ViewKeys, character);
    if (name == nullptr && isVisible() && m_browser->CurrentView() != Browser::Records)
        name = ButtonOf(Keys, character);
    if (name == nullptr)
        return;
    if (auto *button = window()->findChild<QAbstractButton *>(QLatin1String(name));
        button->isVisible() && button->isEnabled())
        button->click();
}

} // namespace wb
