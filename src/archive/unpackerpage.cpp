#include "archive/unpackerpage.h"

#include "archive/jobpanel.h"
#include "archive/pathform.h"
#include "services/uitext.h"

#include <QVBoxLayout>

namespace wb
{

UnpackerPage::UnpackerPage(Settings &settings, Dialogs &dialogs, UnpackJob &job, QWidget *parent)
    : Page(parent), m_dialogs(dialogs), m_job(job)
{
    auto *form = new PathForm(this);
    txtUnPack_FileName = form->AddPath({"txtUnPack_FileName", "cmdUnPack_OpenFile", tr("Архив"),
                                        tr("Выбрать архив"), QStringLiteral("C:\\VW.pkg")},
                                       settings.UnPack_FileName, [this] { ChooseArchive(); });
    txtUnPack_Folder = form->AddPath({"txtUnPack_Folder", "cmdUnPack_OpenFolder", tr("Папка"),
                                      tr("Выбрать папку для файлов"), QStringLiteral("C:\\VW")},
                                     settings.UnPack_Folder, [this] { ChooseFolder(); });
    m_panel = new JobPanel({QStringLiteral("UnPack"), tr("Распаковка архива"), tr("Распаковать")}, form,
                           m_job, m_dialogs, this);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_panel);
    connect(m_panel, &JobPanel::StartWanted, this, [this] {
        UnpackOrder order;
        order.ArchivePath = txtUnPack_FileName->Path();
        order.TargetFolder = txtUnPack_Folder->Path();
        Run(order);
    });
    connect(m_panel, &JobPanel::Idle, this, &Page::Idle);
}

void UnpackerPage::ApplySettings()
{
    txtUnPack_FileName->ApplySetting();
    txtUnPack_Folder->ApplySetting();
}

// The form tells what the running job does.
void UnpackerPage::SetPaths(const QString &archive, const QString &folder)
{
    if (m_job.IsBusy())
        return;
    txtUnPack_FileName->setText(archive);
    txtUnPack_Folder->setText(folder);
}

void UnpackerPage::ChooseArchive()
{
    const QString filter = UiText(TextPkgArchives) + QStringLiteral(" (*.pkg)|*.pkg");
    const QString archive = m_dialogs.OpenFile(filter, txtUnPack_FileName->Path());
    if (!archive.isEmpty())
        SetPaths(archive, archive.left(archive.size() - 4)); // without its ".pkg"
}

void UnpackerPage::ChooseFolder()
{
    const QString folder = m_dialogs.ChooseFolder(
        QStringLiteral("\r\nВыберите папку, в которую распаковать файлы:"), txtUnPack_Folder->Path());
    if (!folder.isEmpty())
        txtUnPack_Folder->setText(folder);
}

void UnpackerPage::Run(const UnpackOrder &order)
{
    m_panel->Run([this, &order](const JobReport &report) { return m_job.Run(order, report); });
}

} // namespace wb
