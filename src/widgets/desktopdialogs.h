// The boxes and pickers of the desktop.
#pragma once

#include "services/dialogs.h"

class QWidget;

namespace wb
{

class DesktopDialogs : public Dialogs
{
public:
    // The window that the boxes belong to from now on; none until then.
    void SetOwner(QWidget *owner) { m_owner = owner; }

    void Error(const QString &text, const QString &title) override;
    void Information(const QString &text, const QString &title) override;
    bool Question(const QString &text, const QString &title) override;
    bool Warning(const QString &text, const QString &title) override;
    Choice YesNoCancel(const QString &text, const QString &title) override;
    QString OpenFile(const QString &filter, const QString &path) override;
    QStringList OpenFiles(const QString &filter, const QString &path) override;
    QString SaveFile(const QString &filter, const QString &path) override;
    QString ChooseFolder(const QString &prompt, const QString &path) override;
    std::optional<std::int32_t> ChooseColour(std::int32_t colour) override;

private:
    QString ChooseName(const QString &filter, const QString &path);

    QWidget *m_owner = nullptr;
};

} // namespace wb
