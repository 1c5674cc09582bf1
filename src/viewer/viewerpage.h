// The "ResViewer" page: a browser on the left, the document on the right.
#pragma once

#include "services/abortflag.h"
#include "services/dialogs.h"
#include "services/settings.h"
#include "widgets/frmres.h"
#include "widgets/page.h"

namespace wb
{

class Browser;
class Display;

class ViewerPage : public Page
{
    Q_OBJECT

public:
    ViewerPage(Settings &settings, Dialogs &dialogs, AbortFlag &abort, const frmRes &res, QWidget *parent);

    void ApplySettings() override;
    void Redraw() override;
    void Release() override;

    // Shows the folder and, when it holds a file of that name, opens it.
    void OpenNamed(const QString &folder, const QString &name);

    void FocusList();
    void ScrollList(int rows); // up when negative

Q_SIGNALS:
    // Double clicks on the list buttons bring a page forward.
    void ViewerWanted();
    void DatEditorWanted();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void OpenInViewer(const QString &path);
    void FileSelected(const QString &path);
    void FileDropped(const QString &path);
    void PressKey(QChar character);

    Settings &m_settings;
    Browser *m_browser;
    Display *m_display;
};

} // namespace wb
