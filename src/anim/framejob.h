// The job that a list of frames is in while it is read, written or added to.
#pragma once

#include "common/bytearray.h"
#include "gfx/framebuf.h"

#include <QStringList>

#include <cstdint>
#include <functional>
#include <vector>

namespace wb
{

// Hears the number of items done and of all. It may let events run.
using FrameStep = std::function<void(std::int32_t done, std::int32_t all)>;

// The same for the loop over the items, which ends there when it gives false.
using GoOn = std::function<bool(std::int32_t done, std::int32_t all)>;

// How saving ended. Only the first replaced the file; of several files the others may have replaced some.
enum class SaveEnd { Saved, Stopped, TooLarge, Failed };

// How opening ended. Only after the first there is something to keep.
enum class OpenEnd { Read, Stopped, Failed };

class FrameJob
{
public:
    // While a job runs its owner refuses whatever would change the frames under it.
    bool IsBusy() const { return m_isBusy; }

    // Lets the job that runs end after the item that it is at.
    void Stop() { m_isStopping = true; }

    // Runs `work`, which calls what it is given after each item; each is told to `step`. Not while another
    // runs. False when the job was stopped.
    bool Run(const FrameStep &step, const std::function<void(const GoOn &)> &work);

    // Hands the bytes of the file to `read`; fails before that when it has none, or when a job runs.
    OpenEnd Open(const QString &path, const FrameStep &step,
                 const std::function<void(ByteView file, const GoOn &)> &read);

    // Writes the file that `make` gives; one without bytes would be too large. Not while a job runs.
    SaveEnd Save(const QString &path, const FrameStep &step,
                 const std::function<ByteArray(const GoOn &)> &make);

    // Hands each frame over to `add`, with its name where there is one. False when it was stopped, or when a
    // job runs already.
    bool AddFrames(std::vector<FrameBuf> frames, const QStringList &names, const FrameStep &step,
                   const std::function<void(FrameBuf, const QString &)> &add);

    // Runs `add` for each file. False when it refused one that is there, or when a job runs already.
    bool AddFiles(const QStringList &paths, const FrameStep &step,
                  const std::function<bool(const QString &)> &add);

private:
    bool m_isBusy = false;
    bool m_isStopping = false;
};

} // namespace wb
