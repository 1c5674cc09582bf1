#include "soundlib/soundsource.h"

#include <algorithm>
#include <cstring>
#include <filesystem>

namespace soundlib
{

namespace
{

SoundSource &SourceOf(void *user)
{
    return *static_cast<SoundSource *>(user);
}

} // namespace

SoundSource SoundSource::OfFile(const char *path, std::int64_t offset, std::int64_t length)
{
    SoundSource source;
    std::error_code error;
    // Opening a pipe would wait for somebody to write into it.
    if (!std::filesystem::is_regular_file(path, error))
        return source;
    const auto size = static_cast<std::int64_t>(std::filesystem::file_size(path, error));
    source.m_file.reset(error ? nullptr : std::fopen(path, "rb"));
    if (source.m_file == nullptr || offset < 0 || offset > size || length > size - offset)
        return source;
    source.m_start = offset;
    source.m_size = length > 0 ? length : size - offset;
    source.Seek(0, SEEK_SET);
    return source;
}

SoundSource SoundSource::OfMemory(const void *bytes, std::int64_t length)
{
    SoundSource source;
    source.m_bytes = static_cast<const std::uint8_t *>(bytes);
    source.m_size = std::max<std::int64_t>(length, 0);
    return source;
}

std::int64_t SoundSource::Seek(std::int64_t offset, int whence)
{
    const std::int64_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? m_position : m_size;
    m_position = offset < -base ? 0 : offset > m_size - base ? m_size : base + offset;
    if (m_file != nullptr)
        std::fseek(m_file.get(), m_start + m_position, SEEK_SET);
    return m_position;
}

std::int64_t SoundSource::Read(void *target, std::int64_t count)
{
    auto read = static_cast<std::size_t>(std::clamp<std::int64_t>(count, 0, m_size - m_position));
    if (m_file != nullptr)
        read = std::fread(target, 1, read, m_file.get());
    else if (read != 0)
        std::memcpy(target, m_bytes + m_position, read);
    m_position += static_cast<std::int64_t>(read);
    return static_cast<std::int64_t>(read);
}

SF_VIRTUAL_IO SoundSource::Calls()
{
    SF_VIRTUAL_IO calls{};
    calls.get_filelen = [](void *user) -> sf_count_t { return SourceOf(user).m_size; };
    calls.seek = [](sf_count_t offset, int whence, void *user) -> sf_count_t {
        return SourceOf(user).Seek(offset, whence);
    };
    calls.read = [](void *target, sf_count_t count, void *user) -> sf_count_t {
        return SourceOf(user).Read(target, count);
    };
    calls.tell = [](void *user) -> sf_count_t { return SourceOf(user).m_position; };
    return calls;
}

} // namespace soundlib
