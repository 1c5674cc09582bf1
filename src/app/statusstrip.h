// The strip at the window's bottom: what long work does, and how much memory the machine has left.
#pragma once

#include "common/progress.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <vector>

class QLabel;

namespace wb
{

class Gauge;
struct MemoryStatus;

class StatusStrip : public QWidget, public Progress
{
    Q_OBJECT

public:
    explicit StatusStrip(QWidget *parent);

    void ProgressStart(std::int32_t maximum, const QString &text) override;
    void ProgressStep(std::int32_t value, const QString &text) override;
    void ProgressWait() override;
    void ProgressClear() override;

    void ShowMemory(const MemoryStatus &memory);

private:
    void ShowProgress(bool shown);

    QLabel *lblStatus;
    Gauge *prgProgress;
    Gauge *prgMem;
    std::vector<std::int32_t> m_maximums; // of the jobs that run inside one another
    QElapsedTimer m_sinceShown;           // a step; invalid before the first one
    QTimer tmrMemory;
};

} // namespace wb
