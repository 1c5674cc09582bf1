// The memory that a document may take while it is read.
#pragma once

#include <algorithm>
#include <cstdint>

namespace wb
{

class MemoryBudget
{
public:
    explicit MemoryBudget(std::int64_t limit); // bytes; 0: half of the machine's free memory

    void LimitTo(std::int64_t bytes) { m_left = std::min(m_left, bytes); }
    bool Holds(std::int64_t bytes) const { return bytes <= m_left; }

    // False, with nothing taken, when it does not hold them.
    bool Take(std::int64_t bytes)
    {
        const bool holds = Holds(bytes);
        m_left -= holds ? bytes : 0;
        return holds;
    }

private:
    std::int64_t m_left;
};

} // namespace wb
