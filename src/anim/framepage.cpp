#include "anim/framepage.h"

#include "anim/animviewing.h"
#include "common/paths.h"
#include "gfx/pixels.h"
#include "services/uitext.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace wb
{

namespace
{

constexpr std::int32_t EachShown = 16; // items of a job
constexpr qint64 ShowInterval = 30;    // ms

// When a job shows how far it is: after each of its first items, after the last, and often enough to look
// alive. However many frames there are, showing them takes a small part of the job's time.
class Pace
{
public:
    Pace() { m_clock.start(); }

    bool IsDue(std::int32_t done, std::int32_t all) const
    {
        return done <= EachShown || done == all || m_clock.elapsed() >= m_next;
    }

    void Show(const std::function<void()> &show)
    {
        const qint64 start = m_clock.elapsed();
        show();
        const qint64 end = m_clock.elapsed();
        m_next = end + std::max(ShowInterval, 4 * (end - start));
    }

private:
    QElapsedTimer m_clock;
    qint64 m_next = 0;
};

} // namespace

FramePage::FramePage(Settings &settings, Dialogs &dialogs, const frmRes &res, QWidget *parent)
    : Page(parent), m_settings(settings), m_dialogs(dialogs), m_res(res)
{
}

FramePage::Columns FramePage::LayOut(FrameListPane *list, std::initializer_list<QPushButton *> left,
                                     std::initializer_list<QPushButton *> right, const QString &tag)
{
    m_preview = new FramePreview(tag, m_res, this);
    auto *all = new QHBoxLayout(this);
    all->setContentsMargins(Gap, Gap, Gap, 10);
    all->setSpacing(Gap);
    list->setFixedWidth(ListWidth);
    all->addWidget(list);
    auto *middle = new QVBoxLayout;
    middle->setSpacing(8);
    all->addLayout(middle, 1);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    middle->addLayout(buttons);
    middle->addWidget(m_preview, 1);
    for (QPushButton *button : left)
        buttons->addWidget(button);
    buttons->addStretch(1);
    for (QPushButton *button : right)
        buttons->addWidget(button);
    std::rbegin(right)[0]->setProperty("primary", true);
    return {all, middle};
}

void FramePage::Redraw()
{
    m_preview->SetBackColour(m_settings.BackColor1);
    ShowFrames();
}

QPushButton *FramePage::NewButton(const char *name, const QString &caption, const QString &tip)
{
    auto *button = new QPushButton(caption, this);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(tip);
    return button;
}

void FramePage::ConnectDrops(FrameListPane *list, const std::function<void(const QStringList &)> &add)
{
    connect(list, &FrameListPane::FilesDropped, this, [this, add](const QStringList &paths) {
        if (IsBusy())
            return;
        const Command command(*this);
        add(paths);
    });
}

void FramePage::EndCommand()
{
    while (m_commands == 1 && !m_waiting.empty()) {
        const auto take = std::move(m_waiting.front());
        m_waiting.erase(m_waiting.begin());
        take();
    }
    --m_commands;
    if (m_commands == 0)
        Q_EMIT Idle();
}

void FramePage::Abort()
{
    m_waiting.clear();
    StopJob();
}

bool FramePage::MayLoseWork()
{
    return !HasUnsavedWork() || AskToSave(m_dialogs, FileName(), [this] { return Save(); });
}

QString FramePage::PngFilter()
{
    return UiText(TextPngFiles) + QStringLiteral(" (*.png)|*.png");
}

QString FramePage::ProposedPath() const
{
    return PathIn(m_settings.OpenDir, FileName());
}

void FramePage::OpenFrom(const QString &filter, const QString &what, const Read &read)
{
    const Command command(*this);
    if (!MayLoseWork())
        return;
    const QString path = m_dialogs.OpenFile(filter, ProposedPath());
    if (path.isEmpty())
        return;
    m_preview->StopPlaying();
    std::optional<std::int32_t> leftOut;
    RunJob(what, [&](const FrameStep &step) { leftOut = read(path, step); });
    m_settings.OpenDir = GetFolder(path);
    if (leftOut)
        TellLeftOut(m_dialogs, *leftOut);
    else
        ReportFileError(m_dialogs, FileError::AccessError);
}

bool FramePage::SaveTo(const QString &filter, const QString &what, const Write &write,
                       const MayReplace &mayReplace)
{
    const Command command(*this);
    const QString path = m_dialogs.SaveFile(filter, ProposedPath());
    if (path.isEmpty() || (mayReplace && !mayReplace(path)))
        return false;
    auto end = SaveEnd::Failed;
    RunJob(what, [&](const FrameStep &step) { end = write(path, step); });
    m_settings.OpenDir = GetFolder(path);
    if (end == SaveEnd::Failed)
        ReportFileError(m_dialogs, FileError::AccessError);
    else if (end == SaveEnd::TooLarge)
        m_dialogs.Error(QStringLiteral("The file would be larger than 2 GB."), ErrorTitle);
    return end == SaveEnd::Saved;
}

void FramePage::AddFrom(const QString &filter, const std::function<void(const QStringList &)> &add)
{
    const Command command(*this);
    const QStringList paths = m_dialogs.OpenFiles(filter, m_settings.OpenDir);
    if (paths.isEmpty())
        return;
    add(paths);
    m_settings.OpenDir = GetFolder(paths.front());
}

bool FramePage::RunAdding(const std::function<bool(const FrameStep &)> &add)
{
    m_preview->StopPlaying();
    bool areAllAdded = true;
    RunJob(UiText(TextAddingFrames), [&](const FrameStep &step) { areAllAdded = add(step); });
    return areAllAdded;
}

void FramePage::RunJob(const QString &what, const std::function<void(const FrameStep &)> &job)
{
    const Command command(*this);
    if (QWidget *focused = window()->focusWidget(); focused != nullptr && isAncestorOf(focused))
        m_focused = focused;
    Pace pace;
    job([&](std::int32_t done, std::int32_t all) {
        if (!pace.IsDue(done, all))
            return;
        pace.Show([&] {
            m_preview->ShowWork(what, done, all);
            ShowFrames();
            QCoreApplication::processEvents();
        });
    });
    m_preview->ClearWork();
    ShowFrames();
    RestoreFocus();
}

// A window that closes keeps its pages disabled until it stays open after all.
void FramePage::RestoreFocus()
{
    if (m_focused == nullptr || !isEnabled())
        return;
    if (isVisible())
        m_focused->setFocus();
    m_focused.clear();
}

void FramePage::changeEvent(QEvent *event)
{
    Page::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && !IsBusy())
        RestoreFocus();
}

void FramePage::TakeCopies(std::size_t count, const Copy &copy, const QString &what, const Add &add)
{
    MemoryBudget budget(0);
    std::vector<FrameBuf> frames;
    while (frames.size() < count) {
        FrameBuf frame = copy(frames.size());
        if (!budget.Take(FrameCost + std::int64_t(frame.Pixels.size())))
            break;
        frames.push_back(std::move(frame));
    }
    const auto leftOut = std::int32_t(count - frames.size());
    auto take = [this, frames = std::move(frames), leftOut, what, add]() mutable {
        const Command command(*this);
        RunJob(what, [&](const FrameStep &step) { add(std::move(frames), step); });
        TellLeftOut(m_dialogs, leftOut);
    };
    if (IsBusy())
        m_waiting.emplace_back(std::move(take));
    else
        take();
}

void FramePage::TakeCopies(std::span<const std::int32_t> handles, const QString &what, const Add &add)
{
    TakeCopies(
        handles.size(), [handles](std::size_t i) { return DibToFrameBuf(handles[i]); }, what, add);
}

} // namespace wb
