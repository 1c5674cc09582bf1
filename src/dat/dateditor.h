// The work of the DAT editor: opening, changing and saving one document, with the questions that belong to
// it. It knows no window; the page shows the document and the viewer's list its rows, both by what it says.
#pragma once

#include "common/progress.h"
#include "dat/dateditorstate.h"
#include "services/abortflag.h"
#include "services/dialogs.h"
#include "services/settings.h"

#include <QObject>

#include <functional>

namespace wb
{

struct DatWork;

class DatEditor : public QObject
{
    Q_OBJECT

public:
    // `progress` shows how far the work is; what it does is told by WorkChanged.
    DatEditor(Settings &settings, Dialogs &dialogs, Progress &progress);

    const DatEditorState &State() const { return m_state; }

    // Reading and writing let events run. Meanwhile nothing else changes the document.
    bool IsBusy() const { return m_isBusy; }
    void AbortReading() { m_abort.Set(); } // also before Open has come to it

    void Open(); // what the user chooses
    bool Save();
    bool SaveAs();

    // Asks whether to save what has changed. False when it is to stay, or could not be saved.
    bool Close();
    bool MayClose();
    void Release(); // closes without a question

    void SetZL(bool isZL);

    // What a click and a double click on a row do, and the way to the root.
    void Select(int row);
    void Activate(int row);
    void GoToRoot();

    void SetValue(const QString &text);

Q_SIGNALS:
    void RowsChanged(int selected); // there are other ones, and this is selected
    void ValueSelected();           // or none
    void StateChanged();            // what can be done, and with which file
    void WorkChanged(const QString &text);
    void Opened();
    void Left(); // by the way up from the root, which closes the document
    void Idle(); // reading or writing has ended and left nothing behind

private:
    class Work;

    void Run(const std::function<void(const DatWork &)> &job);
    void Show(DatTree tree, const QString &path);
    void ShowRows(int selected);

    Settings &m_settings;
    Dialogs &m_dialogs;
    Progress &m_progress;
    AbortFlag m_abort;
    DatEditorState m_state;
    bool m_isBusy = false;
};

} // namespace wb
