// What the pages that make animations have in common: a preview, commands that ask and run jobs, and frames
// that other pages hand over.
#pragma once

#include "anim/framejob.h"
#include "anim/framelistpane.h"
#include "anim/framepreview.h"
#include "gfx/framebuf.h"
#include "services/dialogs.h"
#include "services/settings.h"
#include "widgets/frmres.h"
#include "widgets/page.h"

#include <QPointer>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <span>
#include <vector>

class QHBoxLayout;
class QPushButton;
class QVBoxLayout;

namespace wb
{

class FramePage : public Page
{
    Q_OBJECT

public:
    // From the start of a command to the end of its last box.
    bool IsBusy() const override { return m_commands > 0; }

    void Redraw() override;
    bool MayClose() override { return MayLoseWork(); }

    // Ends the job that runs; copies that wait are not added any more.
    void Abort() override;

protected:
    static constexpr int Gap = 12;
    static constexpr int ListWidth = 208;

    FramePage(Settings &settings, Dialogs &dialogs, const frmRes &res, QWidget *parent);

    // --- Controls

    QPushButton *NewButton(const char *name, const QString &caption, const QString &tip);

    struct Columns {
        QHBoxLayout *All;
        QVBoxLayout *Middle;
    };

    // Puts a list to the left, and the preview, which is made, below a row of buttons. Those on the right of
    // the row take the work elsewhere, the last one as it is mostly done. `tag` is part of the names of the
    // preview's controls. What stands below the preview and right of it is added afterwards.
    Columns LayOut(FrameListPane *list, std::initializer_list<QPushButton *> left,
                   std::initializer_list<QPushButton *> right, const QString &tag);

    // Hands over files that are dropped on a list, but for those that arrive while a command runs.
    void ConnectDrops(FrameListPane *list, const std::function<void(const QStringList &)> &add);

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

    virtual void StopJob() = 0;
    virtual bool HasUnsavedWork() const = 0;
    virtual QString FileName() const = 0; // without folder; empty before there is one
    virtual bool Save() = 0;              // asks for a file; false when nothing was saved

    // Shows the frames; the current one only, and what can be done with it.
    virtual void ShowFrames() = 0;
    virtual void ShowFrame() = 0;

    // --- Commands. Each lets the user choose files, runs a job on them, and tells what went wrong.

    // What reads or writes a file, as GaiProject does.
    using Read = std::function<std::optional<std::int32_t>(const QString &path, const FrameStep &step)>;
    using Write = std::function<SaveEnd(const QString &path, const FrameStep &step)>;
    // Asks about what else than the file chosen is replaced.
    using MayReplace = std::function<bool(const QString &path)>;

    static QString PngFilter();

    // Asks whether unsaved work may be lost, and saves it where that is wanted.
    bool MayLoseWork();

    // Asks about unsaved work first.
    void OpenFrom(const QString &filter, const QString &what, const Read &read);
    bool SaveTo(const QString &filter, const QString &what, const Write &write,
                const MayReplace &mayReplace = {});
    void AddFrom(const QString &filter, const std::function<void(const QStringList &)> &add);

    // Runs `add`, which adds files, as a job; gives what it gives.
    bool RunAdding(const std::function<bool(const FrameStep &)> &add);

    // Runs what calls a step after each of its items and shows how far it is behind `what`. Events run
    // meanwhile.
    void RunJob(const QString &what, const std::function<void(const FrameStep &)> &job);

    // --- Frames from elsewhere

    // Copies so many pictures at once, one by one, and leaves out and tells of those that memory does not
    // suffice for. Adding the copies is a job that runs now, or when the command that runs has ended.
    using Copy = std::function<FrameBuf(std::size_t picture)>;
    using Add = std::function<void(std::vector<FrameBuf> frames, const FrameStep &step)>;
    void TakeCopies(std::size_t count, const Copy &copy, const QString &what, const Add &add);
    void TakeCopies(std::span<const std::int32_t> handles, const QString &what, const Add &add);

    Settings &m_settings;
    Dialogs &m_dialogs;
    const frmRes &m_res;
    FramePreview *m_preview = nullptr; // from LayOut on

    void changeEvent(QEvent *event) override;

private:
    void EndCommand();
    void RestoreFocus();
    QString ProposedPath() const;

    QPointer<QWidget> m_focused;                  // before a job, until it can have the focus again
    int m_commands = 0;                           // that run, one inside another
    std::vector<std::function<void()>> m_waiting; // for their end
};

} // namespace wb
