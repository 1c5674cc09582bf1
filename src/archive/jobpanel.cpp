#include "archive/jobpanel.h"

#include "archive/joblog.h"
#include "platform/nativepath.h"
#include "widgets/elidedlabel.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace wb
{

namespace
{

constexpr int NewsInterval = 40; // ms
constexpr int ButtonWidth = 130; // for the longest of a button's captions

QPushButton *NewButton(const QString &name, QWidget *parent)
{
    auto *button = new QPushButton(parent);
    button->setObjectName(name);
    button->setMinimumWidth(ButtonWidth);
    return button;
}

} // namespace

JobPanel::JobPanel(const Texts &texts, QWidget *form, ArchiveJob &job, Dialogs &dialogs, QWidget *parent)
    : QWidget(parent), m_job(job), m_dialogs(dialogs), m_startCaption(texts.Start), m_form(form),
      m_start(NewButton(QStringLiteral("cmd") + texts.Name, this)),
      m_pause(NewButton(QStringLiteral("cmd%1_Pause").arg(texts.Name), this)),
      m_work(new ElidedLabel(QStringLiteral("lbl%1_Work").arg(texts.Name), this)),
      m_log(new JobLog(QStringLiteral("lst%1_Work").arg(texts.Name), this))
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 12);
    column->setSpacing(12);
    column->addWidget(MakeCard(texts.Title));
    column->addWidget(m_log, 1);
    m_start->setProperty("primary", true);
    m_log->setAccessibleName(tr("Журнал"));

    connect(&tmrNews, &QTimer::timeout, this, &JobPanel::ShowNews);
    connect(m_start, &QPushButton::clicked, this, &JobPanel::StartOrAbort);
    connect(m_pause, &QPushButton::clicked, this, &JobPanel::TogglePause);
    ShowState(false);
}

QWidget *JobPanel::MakeCard(const QString &title)
{
    auto *card = new QGroupBox(title, this);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(m_work, 1);
    buttons->addWidget(m_start);
    buttons->addWidget(m_pause);
    auto *column = new QVBoxLayout(card);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(12);
    column->addWidget(m_form);
    column->addLayout(buttons);
    return card;
}

void JobPanel::StartOrAbort()
{
    if (m_job.IsBusy())
        m_job.Abort();
    else
        Q_EMIT StartWanted();
}

void JobPanel::TogglePause()
{
    m_job.TogglePause();
    ShowState(true);
}

void JobPanel::Run(const std::function<JobEnd(const JobReport &)> &run)
{
    if (m_job.IsBusy())
        return;
    m_log->Clear();
    ShowNews();
    ShowState(true);
    tmrNews.start();
    const JobEnd end = run({
        [this](const QString &line) { m_log->Add(line); },
        [this](const QString &path) { m_workPath = path; },
        [this](const QString &text) { m_dialogs.Error(text, ErrorTitle); },
    });
    tmrNews.stop();
    ShowNews();
    ShowState(false);
    if (end == JobEnd::Done)
        QApplication::beep();
    Q_EMIT Idle();
}

// However long the log gets, showing it takes a tenth of the job's time at most.
void JobPanel::ShowNews()
{
    QElapsedTimer taken;
    taken.start();
    m_work->setText(DisplayName(m_workPath));
    m_log->ShowNews();
    tmrNews.setInterval(std::max(NewsInterval, 10 * int(taken.elapsed())));
}

void JobPanel::ShowState(bool isBusy)
{
    m_form->setEnabled(!isBusy);
    m_start->setText(isBusy ? tr("Прервать") : m_startCaption);
    m_pause->setEnabled(isBusy);
    m_pause->setText(m_job.IsPaused() ? tr("Продолжить") : tr("Пауза"));
}

} // namespace wb
