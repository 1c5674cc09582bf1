#include "archive/packerpage.h"

#include "archive/jobpanel.h"
#include "archive/pathform.h"
#include "common/files.h"
#include "services/uitext.h"

#include <QCheckBox>
#include <QVBoxLayout>

namespace wb
{

PackerPage::PackerPage(Settings &settings, Dialogs &dialogs, PackJob &job, QWidget *parent)
    : Page(parent), m_dialogs(dialogs), m_job(job)
{
    auto *form = new PathForm(this);
    txtPack_Folder = form->AddPath({"txtPack_Folder", "cmdPack_OpenFolder", tr("Папка"),
                                    tr("Выбрать папку с файлами"), QStringLiteral("C:\\VW")},
                                   settings.Pack_Folder, [this] { ChooseFolder(); });
    txtPack_FileName = form->AddPath({"txtPack_FileName", "cmdPack_SaveFile", tr("Архив"),
                                      tr("Выбрать имя архива"), QStringLiteral("C:\\VW.pkg")},
                                     settings.Pack_FileName, [this] { ChooseArchive(); });
    chkPack_NotComperss = new QCheckBox(tr("Не сжимать"), form);
    chkPack_NotComperss->setObjectName(QStringLiteral("chkPack_NotComperss"));
    chkPack_NotComperss->setToolTip(tr("Хранить все файлы в архиве без сжатия"));
    form->AddOption(chkPack_NotComperss);
    m_panel = new JobPanel({QStringLiteral("Pack"), tr("Создание архива"), tr("Запаковать")}, form, m_job,
                           m_dialogs, this);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_panel);
    connect(m_panel, &JobPanel::StartWanted, this, &PackerPage::Start);
    connect(m_panel, &JobPanel::Idle, this, &Page::Idle);
}

void PackerPage::ApplySettings()
{
    txtPack_Folder->ApplySetting();
    txtPack_FileName->ApplySetting();
}

// The form tells what the running job does.
void PackerPage::SetPaths(const QString &folder, const QString &archive)
{
    if (m_job.IsBusy())
        return;
    txtPack_Folder->setText(folder);
    txtPack_FileName->setText(archive);
}

void PackerPage::ChooseFolder()
{
    const QString folder =
        m_dialogs.ChooseFolder(QStringLiteral("\r\nВыберите папку для запаковки:"), txtPack_Folder->Path());
    if (!folder.isEmpty())
        SetPaths(folder, folder + QStringLiteral(".pkg"));
}

void PackerPage::ChooseArchive()
{
    const QString filter = UiText(TextPkgArchives) + QStringLiteral(" (*.pkg)|*.pkg");
    const QString archive = m_dialogs.SaveFile(filter, txtPack_FileName->Path());
    if (!archive.isEmpty())
        txtPack_FileName->setText(archive);
}

void PackerPage::Start()
{
    const PackOrder order{txtPack_FileName->Path(), txtPack_Folder->Path(), chkPack_NotComperss->isChecked()};
    if (FileExists(order.ArchivePath) &&
        !m_dialogs.Question(ReplaceQuestion(order.ArchivePath), DefaultTitle))
        return;
    m_panel->Run([this, &order](const JobReport &report) { return m_job.Run(order, report); });
}

} // namespace wb
