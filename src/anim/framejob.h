// The job that a list of frames is in while it is read, written or added to.
#pragma once

#include <cstdint>
#include <functional>

namespace wb
{

// Hears the number of items done and of all. It may let events run.
using FrameStep = std::function<void(std::int32_t done, std::int32_t all)>;

// The same for the loop over the items, which ends there when it gives false.
using GoOn = std::function<bool(std::int32_t done, std::int32_t all)>;

// How saving ended. Only the first wrote anything.
enum class SaveEnd { Saved, Stopped, TooLarge, Failed };

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

private:
    bool m_isBusy = false;
    bool m_isStopping = false;
};

} // namespace wb
