#include "platform/memorystatus.h"

#include "platform/linux/systemfile.h"

#include <algorithm>
#include <charconv>

namespace wb
{

namespace
{

// The value of a line "Name:   123 kB" in bytes; -1 when there is none.
std::int64_t BytesOf(std::string_view text, std::string_view name)
{
    std::size_t at = text.find(name);
    const auto isKey = [&] {
        return (at == 0 || text[at - 1] == '\n') && text.substr(at + name.size()).starts_with(':');
    };
    while (at != std::string_view::npos && !isKey())
        at = text.find(name, at + 1);
    if (at == std::string_view::npos)
        return -1;
    text.remove_prefix(at + name.size() + 1);
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    std::int64_t kilobytes = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), kilobytes);
    const bool isSane = result.ec == std::errc() && kilobytes >= 0 && kilobytes <= INT64_MAX / 1024;
    return isSane ? kilobytes * 1024 : -1;
}

} // namespace

MemoryStatus ParseMemoryInfo(std::string_view text)
{
    MemoryStatus status;
    status.TotalBytes = std::max<std::int64_t>(BytesOf(text, "MemTotal"), 0);
    status.AvailableBytes = BytesOf(text, "MemAvailable");
    if (status.AvailableBytes < 0) {
        status.AvailableBytes = 0;
        for (const std::string_view name : {"MemFree", "Buffers", "Cached"}) {
            const std::int64_t rest = status.TotalBytes - status.AvailableBytes;
            status.AvailableBytes += std::clamp<std::int64_t>(BytesOf(text, name), 0, rest);
        }
    }
    status.AvailableBytes = std::min(status.AvailableBytes, status.TotalBytes);
    return status;
}

MemoryStatus QueryMemoryStatus()
{
    return ParseMemoryInfo(ReadSystemFile("/proc/meminfo"));
}

} // namespace wb
