// Damaged files: no read or write outside (which the sanitizers see), no hang, no picture out of proportion.
#include "common/bytes.h"
#include "gfx/pixels.h"
#include "gi/gidecoder.h"
#include "gi/giencoder.h"
#include "madegi.h"

#include <gtest/gtest.h>

namespace wb::test
{
namespace
{

// A block of exactly these bytes, so that one read past them is seen.
ByteArray Exactly(ByteView bytes)
{
    return ByteArray(bytes.begin(), bytes.end());
}

void DecodeBothWays(ByteView gi)
{
    const FrameBuf fresh = Decode(gi);
    ASSERT_EQ(std::int64_t(fresh.Pixels.size()), PictureBytes(fresh.Width, fresh.Height));
    ASSERT_LE(fresh.Pixels.size() / 4, 4096U * 4096 + gi.size() * 4096);

    FrameBuf canvas = MakeCanvas({-3, -2, 37, 8});
    std::int32_t offset = 0;
    DecodeGi(canvas, gi, offset);
    ASSERT_EQ(canvas.Width * canvas.Height * 4, std::int32_t(canvas.Pixels.size()));
    ASSERT_EQ(canvas.Width, 40);
}

std::vector<ByteArray> EveryKind()
{
    std::mt19937 random(41);
    std::vector<ByteArray> files;
    for (std::int32_t transClass = 0; transClass <= 2; transClass++) {
        FrameBuf picture = RandomPicture(random, 31, 7, transClass);
        picture.X = picture.Y = 1;
        for (std::int32_t type = 0; type <= (transClass == 0 ? 0 : 4); type++)
            EncodeGi(files.emplace_back(), picture, type, transClass, transClass == 2);
    }
    for (std::int32_t type : {5, 6})
        files.push_back(MakeGi(type, Masks565, {0, 0, 5, 5}, {{{0, 0, 5, 5}, ByteArray(20, 1)}}));
    return files;
}

TEST(HostileGi, TruncatedAnywhere)
{
    for (const ByteArray &file : EveryKind())
        for (std::size_t length = 0; length < file.size(); length++)
            ASSERT_NO_FATAL_FAILURE(DecodeBothWays(Exactly(ByteView(file).first(length)))) << length;
}

TEST(HostileGi, MutatedAnywhere)
{
    std::mt19937 random(42);
    const std::array<std::int32_t, 12> nasty = {0,  1,       -1,      127,        INT32_MAX,     INT32_MIN,
                                                40, 0x10000, 1 << 24, -(1 << 24), INT32_MAX - 3, 4096};
    const std::vector<ByteArray> files = EveryKind();
    for (int round = 0; round < 6000; round++) {
        ByteArray file = files[std::size_t(round) % files.size()];
        for (unsigned changes = 1 + random() % 4; changes > 0; changes--) {
            // Fields of header, table and layer headers, or any byte.
            const bool field = random() % 2 == 0;
            const std::uint32_t data = std::uint32_t(GetLong(file, 64));
            const std::uint32_t end = std::min<std::uint32_t>(std::uint32_t(file.size()), data % 4096 + 16);
            if (field && end >= 8)
                PutLong(file, std::int32_t(4 + 4 * (random() % ((end - 4) / 4))),
                        nasty[random() % nasty.size()]);
            else
                file[random() % file.size()] = random() & 255;
        }
        ASSERT_NO_FATAL_FAILURE(DecodeBothWays(Exactly(file))) << round;
    }
}

TEST(HostileGi, TableBeyondTheBuffer)
{
    const ByteArray layer = MakeRunLayer(1, 1, {0x81, 0xFF, 0xFF, 0});
    const ByteArray whole = MakeGi(1, Masks565, {0, 0, 1, 1}, {{{0, 0, 1, 1}, layer}});
    struct Case {
        std::int32_t position, value;
        bool drawn;
    };
    const std::vector<Case> cases = {
        {44, 1, true},           {44, INT32_MAX, true},                   // more layers than there can be
        {44, -1, false},         {44, 0, false},         {64, 97, false}, // one byte past the end
        {64, -1, false},         {64, INT32_MAX, false}, {68, -20, false},
        {68, 0, false},          {68, 15, false},  // no whole layer header
        {100, 0x7FFFFFFF, true}, {104, -1, true}}; // width and height of the layer
    for (const Case &one : cases) {
        ByteArray gi = whole;
        PutLong(gi, one.position, one.value);
        const FrameBuf picture = Decode(gi);
        ASSERT_EQ(picture.Pixels.size(), 4U) << one.position << ' ' << one.value;
        EXPECT_EQ(PixelAt(picture, 0, 0), one.drawn ? 0xFFFFFFFFU : 0) << one.position << ' ' << one.value;
    }
}

} // namespace
} // namespace wb::test
