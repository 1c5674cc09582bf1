// The log window of the desktop.
#pragma once

#include "services/logwindow.h"

#include <QWidget>

class QPlainTextEdit;

namespace wb
{

class frmLog : public QWidget, public LogWindow
{
    Q_OBJECT

public:
    // Belongs to the window `owner`; not in view until Show.
    explicit frmLog(QWidget *owner);

    void Show() override;
    void Hide() override;
    void AddLine(const QString &text) override;
    void Clean() override;

private:
    QPlainTextEdit *txtLog;
};

} // namespace wb
