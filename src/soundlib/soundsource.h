// The bytes that a sound is read from.
#pragma once

#include <sndfile.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>

namespace soundlib
{

// A part of a file, or of memory that somebody else keeps. Reading never leaves it.
class SoundSource
{
public:
    // `length` 0 is all that follows the offset. What is no regular file, and a part that lies outside, has
    // size 0.
    static SoundSource OfFile(const char *path, std::int64_t offset, std::int64_t length);
    static SoundSource OfMemory(const void *bytes, std::int64_t length);

    std::int64_t Size() const { return m_size; }

    // How libsndfile reads it; its user data is the source.
    static SF_VIRTUAL_IO Calls();

private:
    struct CloseFile {
        void operator()(std::FILE *file) const { std::fclose(file); }
    };

    std::int64_t Seek(std::int64_t offset, int whence);
    std::int64_t Read(void *target, std::int64_t count);

    std::unique_ptr<std::FILE, CloseFile> m_file; // null for memory
    const std::uint8_t *m_bytes = nullptr;
    std::int64_t m_start = 0; // of the part in the file
    std::int64_t m_size = 0;
    std::int64_t m_position = 0; // in the part
};

} // namespace soundlib
