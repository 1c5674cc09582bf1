// A few threads that do the same.
#pragma once

#include <algorithm>
#include <functional>
#include <system_error>
#include <thread>
#include <vector>

namespace wb
{

// One for each core of the machine.
inline int CoreCount()
{
    return std::max(1, int(std::thread::hardware_concurrency())); // 0 when the machine can't tell
}

class Workers
{
public:
    Workers() = default;
    Workers(const Workers &) = delete;
    Workers &operator=(const Workers &) = delete;
    ~Workers() { Join(); }

    // Fewer when the system has no more to give: whoever starts them must get along without any.
    void Start(int count, const std::function<void()> &work)
    {
        try {
            for (int i = 0; i < count; ++i)
                m_threads.emplace_back(work);
        } catch (const std::system_error &) {
        }
    }

    // Waits until each has returned.
    void Join()
    {
        for (std::thread &thread : m_threads)
            thread.join();
        m_threads.clear();
    }

private:
    std::vector<std::thread> m_threads;
};

} // namespace wb
