// The "PKG UnPacker" page: extracts an archive into a folder.
#pragma once

#include "archive/unpackjob.h"
#include "services/dialogs.h"
#include "services/settings.h"
#include "widgets/page.h"

namespace wb
{

class JobPanel;
class PathBox;

class UnpackerPage : public Page
{
    Q_OBJECT

public:
    UnpackerPage(Settings &settings, Dialogs &dialogs, UnpackJob &job, QWidget *parent);

    void ApplySettings() override;
    bool IsBusy() const override { return m_job.IsBusy(); }
    void Abort() override { m_job.Abort(); }

    // Does nothing while the job runs.
    void SetPaths(const QString &archive, const QString &folder);

    // Runs the job, showing it on this page. Returns when it has ended; does nothing while another one runs.
    void Run(const UnpackOrder &order);

private:
    void ChooseArchive();
    void ChooseFolder();

    Dialogs &m_dialogs;
    UnpackJob &m_job;
    PathBox *txtUnPack_FileName;
    PathBox *txtUnPack_Folder;
    JobPanel *m_panel;
};

} // namespace wb
