#include "dat/dateditor.h"

#include "common/paths.h"
#include "dat/datreader.h"
#include "dat/datwriter.h"
#include "services/uitext.h"

namespace wb
{

namespace
{

QString DatFilter()
{
    return UiText(TextDatFiles) + QStringLiteral(" (*.dat)|*.dat|") + UiText(TextAllFiles) +
           QStringLiteral(" (*.*)|*.*");
}

} // namespace

// The shared bar, with the text on the editor's own label.
class DatEditor::Work : public Progress
{
public:
    explicit Work(DatEditor &editor) : m_editor(editor), m_bar(editor.m_progress) {}

    void ProgressStart(std::int32_t maximum, const QString &text) override
    {
        Q_EMIT m_editor.WorkChanged(text);
        m_bar.ProgressStart(maximum, {});
    }
    void ProgressStep(std::int32_t value, const QString &text) override
    {
        Q_EMIT m_editor.WorkChanged(text);
        m_bar.ProgressStep(value, {});
    }
    void ProgressWait() override { m_bar.ProgressWait(); }
    void ProgressClear() override
    {
        Q_EMIT m_editor.WorkChanged({});
        m_bar.ProgressClear();
    }

private:
    DatEditor &m_editor;
    Progress &m_bar;
};

DatEditor::DatEditor(Settings &settings, Dialogs &dialogs, Progress &progress)
    : m_settings(settings), m_dialogs(dialogs), m_progress(progress)
{
}

void DatEditor::Run(const std::function<void(const DatWork &)> &job)
{
    Work work(*this);
    m_abort.Clear();
    m_isBusy = true;
    Q_EMIT StateChanged();
    job({&work, &m_abort});
    m_isBusy = false;
    Q_EMIT StateChanged();
}

void DatEditor::ShowRows(int selected)
{
    m_state.Select(selected);
    Q_EMIT RowsChanged(selected);
    Q_EMIT ValueSelected();
}

void DatEditor::Open()
{
    if (m_isBusy)
        return;
    m_abort.Clear();
    if (!Close() || m_abort.IsSet()) // while the older document was saved the window was closed
        return;
    const QString path = m_dialogs.OpenFile(DatFilter(), PathIn(m_settings.OpenDir, {}));
    if (path.isEmpty())
        return;
    m_settings.OpenDir = GetFolder(path);
    DatTree tree;
    Run([&](const DatWork &work) { tree = DatLoadFile(path, work); });
    if (tree.Count() > 0)
        Show(std::move(tree), path);
    else if (!m_abort.IsSet())
        m_dialogs.Error(QStringLiteral("Invalid or crypted file."), ErrorTitle);
    Q_EMIT Idle();
}

void DatEditor::Show(DatTree tree, const QString &path)
{
    m_state.Open(std::move(tree), path);
    ShowRows(0);
    Q_EMIT StateChanged();
    Q_EMIT Opened();
}

bool DatEditor::Save()
{
    if (m_isBusy || !m_state.DocOpen())
        return false;
    if (m_state.DatPath().isEmpty())
        return SaveAs();
    bool isSaved = false;
    Run([&](const DatWork &work) {
        isSaved = DatSaveFile(m_state.DatPath(), m_state.Tree(), work);
        if (isSaved)
            m_state.SetSaved();
    });
    if (!isSaved)
        ReportFileError(m_dialogs, FileError::AccessError);
    Q_EMIT Idle();
    return isSaved;
}

bool DatEditor::SaveAs()
{
    if (m_isBusy || !m_state.DocOpen())
        return false;
    const QString path =
        m_dialogs.SaveFile(DatFilter(), PathIn(m_settings.OpenDir, GetFileName(m_state.DatPath())));
    if (path.isEmpty())
        return false;
    m_state.SetPath(path);
    m_settings.OpenDir = GetFolder(path);
    return Save();
}

bool DatEditor::MayClose()
{
    return !m_state.DocOpen() || !m_state.Modified() ||
           AskToSave(m_dialogs, GetFileName(m_state.DatPath()), [this] { return Save(); });
}

bool DatEditor::Close()
{
    if (m_isBusy || !MayClose())
        return false;
    Release();
    return true;
}

void DatEditor::Release()
{
    m_state.Close();
    ShowRows(-1);
    Q_EMIT StateChanged();
}

void DatEditor::SetZL(bool isZL)
{
    if (!m_isBusy)
        m_state.SetZL(isZL);
}

void DatEditor::Select(int row)
{
    m_state.Select(row);
    Q_EMIT ValueSelected();
}

void DatEditor::Activate(int row)
{
    if (m_isBusy || !m_state.DocOpen())
        return;
    if (row > 0) {
        if (m_state.Enter(row))
            ShowRows(0);
    } else if (m_state.Depth() > 0) {
        ShowRows(m_state.Leave());
    } else if (Close()) {
        Q_EMIT Left();
    }
}

void DatEditor::GoToRoot()
{
    if (m_isBusy || !m_state.DocOpen())
        return;
    m_state.ShowRoot();
    ShowRows(0);
}

void DatEditor::SetValue(const QString &text)
{
    if (m_isBusy)
        return;
    m_state.SetValue(text);
    Q_EMIT StateChanged();
}

} // namespace wb
