// What the pages that make animations have in common: a preview, commands that ask and run jobs, and frames
// that other pages hand over.
#pragma once

#include "anim/framejob.h"
#include "gfx/framebuf.h"
#include "services/dialogs.h"
#include "services/settings.h"
#include "widgets/frmres.h"
#include "widgets/page.h"

#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

class QPushButton;

namespace wb
{

class FramePreview;

class FramePage : public Page
{
    Q_OBJECT

public:
    // From the start of a command to the end of its last box.
    bool IsBusy() const override { return m_commands > 0; }

    void Redraw() override;
    bool MayClose() override;

protected:
    static constexpr int Gap = 12;
    static constexpr int ListWidth = 208;

    // `tag` is part of the names of the page's controls, as in FramePreview.
    FramePage(Settings &settings, Dialogs &dialogs, const frmRes &res, const QString &tag, QWidget *parent);

    // A command of the page, as long as it lives.
    class Command
    {
    public:
        explicit Command(FramePage &page) : m_page(page) { ++m_page.m_commands; }
        Command(const Command &) = delete;
        Command &operator=(const Command &) = delete;
        ~Command() { m_page.EndCommand(); }

    private:
        FramePage &m_page;
    };

    // --- What the page works on

    virtual bool HasUnsavedWork() const = 0;
    virtual QString FileName() const = 0; // without folder; empty before there is one
    virtual bool Save() = 0;              // asks for a file; false when nothing was saved

    // Shows the frames, and what can be done with them.
    virtual void ShowFrames() = 0;

    // --- Commands. Each lets the user choose files, runs a job on them, and tells what went wrong.

    // What reads or writes a file, as GaiProject does.
    using Read = std::function<std::optional<std::int32_t>(const QString &path, const FrameStep &step)>;
    using Write = std::function<SaveEnd(const QString &path, const FrameStep &step)>;

    // Asks about unsaved work first.
    void OpenFrom(const QString &filter, const QString &what, const Read &read);
    bool SaveTo(const QString &filter, const QString &what, const Write &write);
    void AddFrom(const QString &filter, const std::function<void(const QStringList &)> &add);

    // Runs what calls a step after each of its items and shows how far it is behind `what`. Events run
    // meanwhile.
    void RunJob(const QString &what, const std::function<void(const FrameStep &)> &job);

    // --- Frames from elsewhere

    // Copies pictures at once, and gives each with its name to `add`: now, or when the command that runs has
    // ended.
    using Add = std::function<void(FrameBuf frame, const QString &name)>;
    void TakeCopies(std::span<const std::int32_t> handles, const QStringList &names, const QString &what,
                    const Add &add);
    void TakeCopies(std::vector<FrameBuf> frames, const QStringList &names, const QString &what,
                    const Add &add);

    QPushButton *NewButton(const char *name, const QString &caption, const QString &tip);

    Settings &m_settings;
    Dialogs &m_dialogs;
    const frmRes &m_res;
    FramePreview *m_preview;

private:
    void EndCommand();
    QString ProposedPath() const;

    int m_commands = 0;                           // that run, one inside another
    std::vector<std::function<void()>> m_waiting; // for their end
};

} // namespace wb
