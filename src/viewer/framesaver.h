// Saving frames of the viewer's document: asks for the name, writes, and says when something can't be
// written.
#pragma once

#include "services/dialogs.h"
#include "services/settings.h"
#include "viewer/frameexport.h"

#include <functional>

namespace wb
{

class FrameSaver
{
public:
    FrameSaver(Settings &settings, Dialogs &dialogs, Progress &progress, AbortFlag &abort)
        : m_settings(settings), m_dialogs(dialogs), m_progress(progress), m_abort(abort)
    {
    }

    // Saves one frame of the document opened as `documentPath`. The document may change while the dialog is
    // open.
    void Save(const FrameSet &document, const QString &documentPath, std::int32_t frame, ExportFormat format);

    // Saves every frame as PNG, until the user aborts. `busy` hears True before the first frame and False
    // when all is over; in between the document must stay as it is.
    void SaveAll(const FrameSet &document, const QString &documentPath,
                 const std::function<void(bool)> &busy);

private:
    // The path chosen; empty when cancelled.
    QString Ask(ExportFormat format, const QString &name) const;
    void TellNotWritten() const;

    Settings &m_settings;
    Dialogs &m_dialogs;
    Progress &m_progress;
    AbortFlag &m_abort;
};

} // namespace wb
