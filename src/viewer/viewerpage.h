// The "ResViewer" page: a browser on the left, the document on the right.
#pragma once

#include "archive/unpackjob.h"
#include "common/progress.h"
#include "services/abortflag.h"
#include "services/dialogs.h"
#include "services/settings.h"
#include "widgets/frmres.h"
#include "widgets/page.h"

#include <QStringList>

#include <functional>
#include <span>

namespace wb
{

class Browser;
class DatEditor;
class Display;
class OpenArchive;
struct LoadOptions;
enum class FrameTarget;

class ViewerPage : public Page
{
    Q_OBJECT

public:
    // Nothing is extracted while `unpackJob` is busy. `datEditor` is whose records are listed.
    ViewerPage(Settings &settings, Dialogs &dialogs, Progress &progress, AbortFlag &abort, const frmRes &res,
               const ArchiveJob &unpackJob, DatEditor &datEditor, QWidget *parent);

    // The lists and what belongs to them, for the window to place: other pages are used with them as well.
    QWidget *Lists() const;

    void ApplySettings() override;
    void Redraw() override;
    bool IsBusy() const override;
    void Abort() override;
    void Release() override;

    // Shows the folder and, when it holds a file of that name, opens it.
    void OpenNamed(const QString &folder, const QString &name);

    void FocusList();
    void ScrollList(int rows); // up when negative

    // The main window has come into or gone from view; whether it is the active one. The preview window is
    // in view and on top by that.
    void CheckPreview();
    void KeepPreviewOnTop(bool isMainActive);

Q_SIGNALS:
    // Double clicks on the list buttons bring a page forward.
    void ViewerWanted();
    void DatEditorWanted();
    // The packer and unpacker pages should come forward and propose these paths.
    void PackerWanted(const QString &folder, const QString &archive);
    void UnpackerWanted(const QString &archive, const QString &folder);
    // The unpacker page should come forward and extract a folder of the archive open here.
    void ExtractWanted(const UnpackOrder &order);
    // The GI creator should come forward and take the picture, which stays the viewer's, of a document of
    // that path.
    void GiCreatorWanted(std::int32_t handle, const QString &documentPath);
    // A page should come forward and take these frames, which stay the viewer's, under their names.
    void GaiEditorWanted(std::span<const std::int32_t> handles, const QStringList &names);
    void HaiEditorWanted(std::span<const std::int32_t> handles, const QStringList &names);
    void AnimCreatorWanted(std::span<const std::int32_t> handles, const QStringList &names);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void OpenInViewer(const QString &path);
    void FileSelected(const QString &path);
    void ArchiveOpened();
    void FileDropped(const QString &path);
    void EntrySelected(const PkgEntry &entry);
    void OpenWaiting();
    LoadOptions Options() const;
    const OpenArchive &Archive() const;
    bool IsShown(const PkgEntry &entry) const;
    void Extract();
    void ExtractFile(const PkgArchive &archive, const PkgEntry &file);
    void ExtractFolder(const PkgHandle &archive, const PkgEntry &folder);
    void HandOver(FrameTarget target, bool all);
    void PressKey(QChar character);

    Settings &m_settings;
    Dialogs &m_dialogs;
    Progress &m_progress;
    AbortFlag &m_abort;
    const ArchiveJob &m_unpackJob;
    Browser *m_browser;
    Display *m_display;
    // Where in which archive the document lies, if in one: entries of different ones may have the same path.
    std::weak_ptr<const PkgArchive> m_documentArchive;
    std::int32_t m_documentOffset = 0;
    std::function<void()> m_waiting; // opens what was chosen last while the viewer was busy
};

} // namespace wb
