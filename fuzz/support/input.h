// Takes what a round trip writes (numbers, texts, pictures) out of the fuzzer's bytes. Behind their end all
// is zero.
#pragma once

#include "common/bytes.h"
#include "gfx/framebuf.h"

#include <QString>

#include <algorithm>

namespace wb
{

class FuzzInput
{
public:
    explicit FuzzInput(ByteView bytes) : m_bytes(bytes) {}

    bool IsAtEnd() const { return m_bytes.Remaining() == 0; }
    std::uint8_t Byte() { return m_bytes.Byte(); }
    bool Flag() { return (Byte() & 1) != 0; }
    std::int32_t Long() { return m_bytes.Long(); }

    // From 0 to `most`, which is at most 65,535.
    std::int32_t Number(std::int32_t most) { return m_bytes.Word() % (most + 1); }

    ByteView Take(std::int64_t most) { return m_bytes.Take(std::min(most, m_bytes.Remaining())); }

    // Any UTF-16, of at most that many characters; no terminator among them.
    QString Text(std::int32_t most)
    {
        QString text;
        for (std::int32_t left = Number(most); left > 0 && !IsAtEnd(); --left)
            if (const char16_t unit = m_bytes.Word(); unit != 0)
                text += QChar(unit);
        return text;
    }

    // A picture of 1 to `mostSide` pixels each way and of that transparency class, or of one below.
    FrameBuf Picture(std::int32_t mostSide, std::int32_t transClass)
    {
        FrameBuf picture;
        picture.Width = 1 + Byte() % mostSide;
        picture.Height = 1 + Byte() % mostSide;
        picture.TransType = transClass;
        picture.Pixels.assign(std::size_t(picture.Width) * std::size_t(picture.Height) * 4, 0);
        std::ranges::copy(Take(std::int64_t(picture.Pixels.size())), picture.Pixels.begin());
        for (std::size_t i = 3; transClass < 2 && i < picture.Pixels.size(); i += 4)
            picture.Pixels[i] = transClass == 0 || (picture.Pixels[i] & 1) != 0 ? 255 : 0;
        return picture;
    }

private:
    ByteReader m_bytes;
};

} // namespace wb
