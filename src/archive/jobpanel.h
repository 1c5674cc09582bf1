// What the pages of the archive jobs have in common: the order's form, the buttons that start, abort and
// pause the job, the file it works on, and its log.
#pragma once

#include "archive/archivejob.h"
#include "services/dialogs.h"

#include <QTimer>
#include <QWidget>

#include <functional>

class QPushButton;

namespace wb
{

class ElidedLabel;
class JobLog;

class JobPanel : public QWidget
{
    Q_OBJECT

public:
    struct Texts {
        QString Name;  // "Pack": the controls are cmdPack, cmdPack_Pause, lblPack_Work and lstPack_Work
        QString Title; // above the form
        QString Start; // the button's caption while nothing runs
    };

    // The panel takes the form, and disables it while the job runs.
    JobPanel(const Texts &texts, QWidget *form, ArchiveJob &job, Dialogs &dialogs, QWidget *parent);

    // Runs the job to its end, which `run` must do with the report it gets. Does nothing while it is busy.
    void Run(const std::function<JobEnd(const JobReport &)> &run);

Q_SIGNALS:
    void StartWanted();
    // The job has ended and left nothing behind.
    void Idle();

private:
    QWidget *MakeCard(const QString &title);
    void StartOrAbort();
    void TogglePause();
    void ShowState(bool isBusy);
    void ShowNews();

    ArchiveJob &m_job;
    Dialogs &m_dialogs;
    QString m_startCaption;
    QWidget *m_form;
    QPushButton *m_start;
    QPushButton *m_pause;
    ElidedLabel *m_work;
    JobLog *m_log;
    QString m_workPath;
    QTimer tmrNews;
};

} // namespace wb
