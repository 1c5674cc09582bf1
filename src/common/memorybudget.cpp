#include "common/memorybudget.h"

#include "platform/memorystatus.h"

namespace wb
{

namespace
{

constexpr std::int64_t WhereUnknown = std::int64_t(1) << 30; // one picture of the largest size

std::int64_t HalfOfFreeMemory()
{
    const MemoryStatus memory = QueryMemoryStatus();
    return memory.TotalBytes != 0 ? memory.AvailableBytes / 2 : WhereUnknown;
}

} // namespace

MemoryBudget::MemoryBudget(std::int64_t limit) : m_left(limit != 0 ? limit : HalfOfFreeMemory()) {}

} // namespace wb
