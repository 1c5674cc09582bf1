// Reads the headers of picture files: numbers of either byte order, never past the end.
#pragma once

#include "rastgl/picture.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace rastgl
{

// After the first read past the end every read gives 0 or nothing and Failed() is true.
class Cursor
{
public:
    explicit Cursor(Bytes bytes) : m_rest(bytes) {}

    bool Failed() const { return m_failed; }
    std::size_t Remaining() const { return m_rest.size(); }

    std::uint8_t Byte() { return std::uint8_t(Big(1)); }
    std::uint16_t Big16() { return std::uint16_t(Big(2)); }
    std::uint32_t Big32() { return Big(4); }

    std::uint16_t Little16() { return std::uint16_t(Little(2)); }
    std::uint32_t Little32() { return Little(4); }

    // The next `count` bytes; empty when there are fewer.
    Bytes Take(std::size_t count)
    {
        if (count > m_rest.size()) {
            m_failed = true;
            m_rest = {};
            return {};
        }
        return TakeUpTo(count);
    }

    // The next `count` bytes, or what is left of them: for data that may be used as far as it goes.
    Bytes TakeUpTo(std::size_t count)
    {
        const Bytes taken = m_rest.first(std::min(count, m_rest.size()));
        m_rest = m_rest.subspan(taken.size());
        return taken;
    }

    void Skip(std::size_t count) { Take(count); }

private:
    std::uint32_t Big(std::size_t bytes)
    {
        std::uint32_t value = 0;
        for (const std::uint8_t byte : Take(bytes))
            value = value << 8 | byte;
        return value;
    }

    std::uint32_t Little(std::size_t bytes)
    {
        std::uint32_t value = 0;
        int shift = 0;
        for (const std::uint8_t byte : Take(bytes)) {
            value |= std::uint32_t(byte) << shift;
            shift += 8;
        }
        return value;
    }

    Bytes m_rest;
    bool m_failed = false;
};

} // namespace rastgl
