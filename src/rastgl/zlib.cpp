#define ZLIB_CONST // zlib takes its input as const

#include "rastgl/rastgl.h"

#include <cstring>
#include <libdeflate.h>
#include <memory>
#include <zlib.h>

namespace
{

constexpr std::int32_t HeaderSize = 8;

void PutLong(std::uint8_t *target, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        target[i] = static_cast<std::uint8_t>(value >> 8 * i);
}

// A deflate stream to be used again: what compress2 makes for each call costs more than compressing a small
// file.
class Compressor
{
public:
    Compressor() : m_isReady(::deflateInit(&m_stream, Z_DEFAULT_COMPRESSION) == Z_OK) {}
    Compressor(const Compressor &) = delete;
    Compressor &operator=(const Compressor &) = delete;
    ~Compressor()
    {
        if (m_isReady)
            ::deflateEnd(&m_stream);
    }

    // The length of the zlib stream, which is that of compress2; 0 when it does not fit.
    std::int32_t Compress(std::uint8_t *target, std::int64_t room, const std::uint8_t *source,
                          std::int32_t length)
    {
        if (!m_isReady || ::deflateReset(&m_stream) != Z_OK)
            return 0;
        m_stream.next_in = source;
        m_stream.avail_in = uInt(length);
        m_stream.next_out = target;
        m_stream.avail_out = uInt(room);
        const bool isWhole = ::deflate(&m_stream, Z_FINISH) == Z_STREAM_END;
        return isWhole ? static_cast<std::int32_t>(m_stream.total_out) : 0;
    }

private:
    z_stream m_stream = {};
    bool m_isReady;
};

// Writes the header and the stream; `room` is what the stream may take. Gives the stream's length, 0 when it
// does not fit.
std::int32_t Pack(std::uint8_t *target, const char *tag, std::int64_t room, const std::uint8_t *source,
                  std::int32_t length)
{
    thread_local Compressor compressor;
    if (length < 0 || room <= 0)
        return 0;
    const std::int32_t streamLength = compressor.Compress(target + HeaderSize, room, source, length);
    if (streamLength == 0)
        return 0;
    std::memcpy(target, tag, 4);
    PutLong(target + 4, std::uint32_t(length));
    return streamLength;
}

struct DecompressorDeleter {
    void operator()(libdeflate_decompressor *decompressor) const
    {
        libdeflate_free_decompressor(decompressor);
    }
};

// Making one costs more than expanding a small file.
libdeflate_decompressor *ThreadsDecompressor()
{
    thread_local const std::unique_ptr<libdeflate_decompressor, DecompressorDeleter> decompressor(
        libdeflate_alloc_decompressor());
    return decompressor.get();
}

// What libdeflate refuses, zlib expands as far as it goes. Nothing at all counts as damaged too.
std::int32_t ExpandDamaged(std::uint8_t *target, std::int32_t capacity, const std::uint8_t *stream,
                           std::int32_t length)
{
    auto produced = static_cast<uLongf>(capacity);
    const int result = ::uncompress(target, &produced, stream, uLong(length));
    if (result == Z_OK && produced > 0)
        return static_cast<std::int32_t>(produced);
    std::memset(target + produced, 0, std::size_t(capacity) - produced);
    return 0;
}

std::int32_t Expand(std::uint8_t *target, std::int32_t capacity, const std::uint8_t *block,
                    std::int32_t length)
{
    if (capacity <= 0)
        return 0;
    if (length <= HeaderSize) {
        std::memset(target, 0, std::size_t(capacity));
        return 0;
    }
    const std::uint8_t *stream = block + HeaderSize;
    const std::int32_t streamLength = length - HeaderSize;
    std::size_t produced = 0;
    libdeflate_decompressor *decompressor = ThreadsDecompressor();
    if (decompressor != nullptr &&
        libdeflate_zlib_decompress_ex(decompressor, stream, std::size_t(streamLength), target,
                                      std::size_t(capacity), nullptr, &produced) == LIBDEFLATE_SUCCESS &&
        produced > 0)
        return static_cast<std::int32_t>(produced);
    return ExpandDamaged(target, capacity, stream, streamLength);
}

} // namespace

std::int32_t VTGF_ZLib_Compress(std::uint8_t *target, const std::int32_t *capacity,
                                const std::uint8_t *source, const std::int32_t *length)
{
    return Pack(target, "ZL01", std::int64_t(*capacity) - HeaderSize, source, *length);
}

std::int32_t VTGF_ZLib_Compress2(std::uint8_t *target, const std::uint8_t *source, const std::int32_t *length)
{
    return Pack(target, "ZL02", std::int64_t(*length) + *length / 100 + 12, source, *length);
}

std::int32_t VTGF_ZLib_UnCompress(std::uint8_t *target, const std::int32_t *capacity,
                                  const std::uint8_t *block, const std::int32_t *length)
{
    return Expand(target, *capacity, block, *length);
}

std::int32_t VTGF_ZLib_UnCompress2(std::uint8_t *target, const std::int32_t *capacity,
                                   const std::uint8_t *block, const std::int32_t *length)
{
    return Expand(target, *capacity, block, *length);
}
