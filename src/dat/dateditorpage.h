// The "DAT Editor" page: opens a DAT file, changes the value that is selected in the list on the left, and
// saves it.
#pragma once

#include "dat/dateditor.h"
#include "widgets/page.h"

#include <QPointer>

class QCheckBox;
class QLabel;
class QPushButton;

namespace wb
{

class ElidedLabel;
class ValueBox;

class DatEditorPage : public Page
{
    Q_OBJECT

public:
    DatEditorPage(DatEditor &editor, QWidget *parent);

    bool IsBusy() const override { return m_editor.IsBusy(); }
    void Abort() override { m_editor.AbortReading(); }
    bool MayClose() override { return m_editor.MayClose(); }
    void Release() override { m_editor.Release(); }

private:
    QPushButton *NewButton(const char *name, const QString &caption, const QString &tip);
    QWidget *MakeButtons();
    QWidget *MakeValue();
    void ConnectControls();
    void ShowState();
    void GiveFocusBack();
    void ShowValue();

    DatEditor &m_editor;
    QPushButton *cmdDAT_Open;
    QPushButton *cmdDAT_Close;
    QCheckBox *chkDAT_ZL;
    QPushButton *cmdDAT_SaveAs;
    QPushButton *cmdDAT_Save;
    ElidedLabel *lblDAT_Path;
    ValueBox *txtText;
    QLabel *lblDAT_Part;
    QLabel *lblDAT_Work;
    QPointer<QWidget> m_focused; // when work began
};

} // namespace wb
