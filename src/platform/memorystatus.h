// The machine's memory.
#pragma once

#include <cstdint>
#include <string_view>

namespace wb
{

struct MemoryStatus {
    std::int64_t TotalBytes = 0;     // physical memory; 0 when unknown
    std::int64_t AvailableBytes = 0; // what programs can still get without swapping; at most TotalBytes
};

MemoryStatus QueryMemoryStatus();

// The status that the text of /proc/meminfo tells (proc_meminfo(5)). Kernels before 3.14 lack MemAvailable:
// free memory, buffers and cache stand for it.
MemoryStatus ParseMemoryInfo(std::string_view text);

} // namespace wb
