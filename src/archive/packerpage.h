// The "PKG Packer" page: packs a folder into an archive.
#pragma once

#include "archive/packjob.h"
#include "services/dialogs.h"
#include "services/settings.h"
#include "widgets/page.h"

class QCheckBox;

namespace wb
{

class JobPanel;
class PathBox;

class PackerPage : public Page
{
    Q_OBJECT

public:
    PackerPage(Settings &settings, Dialogs &dialogs, PackJob &job, QWidget *parent);

    void ApplySettings() override;
    bool IsBusy() const override { return m_job.IsBusy(); }
    void Abort() override { m_job.Abort(); }

    // Does nothing while the job runs.
    void SetPaths(const QString &folder, const QString &archive);

private:
    void ChooseFolder();
    void ChooseArchive();
    void Start();

    Dialogs &m_dialogs;
    PackJob &m_job;
    PathBox *txtPack_Folder;
    PathBox *txtPack_FileName;
    QCheckBox *chkPack_NotComperss;
    JobPanel *m_panel;
};

} // namespace wb
