#include "rastgl/picturefile.h"
#include "rastgl/rastgl.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace picturefile;
using testing::Each;
using testing::ElementsAre;

TEST(Handles, KeepACopyUntilFreed)
{
    const Seen seen = {3, 2, 32, {0x01020304, 0x05060708, 0x090A0B0C, 0x0D0E0F10, 0x11121314, 0x15161718}};
    const std::int32_t first = Hold(3, 2, seen.pixels);
    const std::int32_t second = Hold(1, 1, {7});
    EXPECT_TRUE(first > 0 && second > 0 && first != second);
    std::vector<std::uint8_t> tooSmall(20, 9);
    const std::int32_t count = 20;
    VTGF_DIB_CopyBuf(tooSmall.data(), &count, first);
    EXPECT_THAT(tooSmall, Each(9));
    EXPECT_EQ(Take(first), seen);

    EXPECT_NE(Hold(1, 1, {8}), first) << "a freed handle came back at once";
    EXPECT_EQ(Take(first), Seen()) << "a freed handle, freed again";
    EXPECT_EQ(Take(second).pixels, Numbers{7});
}

TEST(Handles, AreNotMadeOfNothing)
{
    const std::int32_t zero = 0, tooLarge = 1 << 30, bits = 32;
    const std::uint8_t byte = 0;
    EXPECT_EQ(VTGF_Read_Buf(&byte, &zero, &bits, &bits), 0);
    EXPECT_EQ(VTGF_Read_Buf(&byte, &tooLarge, &tooLarge, &bits), 0);
    for (const Reader reader : {VTGF_Read_PNG, VTGF_Read_BMP, VTGF_Read_JPEG, VTGF_Read_PSD, VTGF_Read_DDS}) {
        EXPECT_EQ(reader(&byte, &zero), 0);
        EXPECT_EQ(reader(nullptr, &bits), 0);
    }
}

TEST(Handles, TellTheTransparencyClass)
{
    EXPECT_EQ(VTGF_DIB_GetTransType(0), 0);
    const std::pair<Numbers, std::int32_t> cases[] = {{{0xFF000000, 0xFFFFFFFF}, 0},
                                                      {{0xFF000000, 0x00FFFFFF}, 1},
                                                      {{0xFF000000, 0x00FFFFFF, 0xFE000000}, 2},
                                                      {{0x01000000}, 2}};
    for (const auto &[pixels, transType] : cases) {
        const std::int32_t handle = Hold(int(pixels.size()), 1, pixels);
        EXPECT_EQ(VTGF_DIB_GetTransType(handle), transType);
        VTGF_DIB_Free(handle);
    }
}

constexpr std::uint32_t Bare = 0x00112233;
constexpr std::int32_t Back = 0x000A141E; // blue 10, green 20, red 30

// A 4 x 3 surface of one colour inside a memory wider by two columns and higher by a row above and below,
// whose rest must stay as it is.
struct Screen {
    Numbers memory = Numbers(30, Bare);
    RastGlSurface surface{reinterpret_cast<std::uint8_t *>(memory.data() + 6), 4, 3, 24};

    Numbers Row(int y) const { return {memory.begin() + (y + 1) * 6, memory.begin() + (y + 2) * 6}; }
};

TEST(Drawing, ComposesOverTheColourAndClips)
{
    const std::int32_t handle = Hold(2, 2, {0xFFAABBCC, 0x00FFFFFF, 0x80FF0000, 0xFF010203});
    Screen screen;
    VTGF_DIB_DrawFast(&screen.surface, 2, 1, handle, Back);
    EXPECT_THAT(screen.Row(0), Each(Bare));
    EXPECT_THAT(screen.Row(1), ElementsAre(Bare, Bare, 0xFFAABBCC, 0xFF1E140A, Bare, Bare));
    EXPECT_THAT(screen.Row(2), ElementsAre(Bare, Bare, 0xFF8F0A05, 0xFF010203, Bare, Bare));

    Screen clipped;
    for (const auto &[x, y] : {std::pair(-1, -1), {3, 2}, {INT32_MAX, INT32_MAX}, {INT32_MIN, 0}})
        VTGF_DIB_DrawFast(&clipped.surface, x, y, handle, Back);
    VTGF_DIB_Free(handle);
    for (const int y : {-1, 1, 3})
        EXPECT_THAT(clipped.Row(y), Each(Bare)) << y;
    EXPECT_THAT(clipped.Row(0), ElementsAre(0xFF010203, Bare, Bare, Bare, Bare, Bare));
    EXPECT_THAT(clipped.Row(2), ElementsAre(Bare, Bare, Bare, 0xFFAABBCC, Bare, Bare));
}

TEST(Drawing, DrawsBuffersOverAColourOrWhatIsThere)
{
    const Numbers pixels = {0x00FFFFFF, 0x80FF0000};
    const auto *bytes = reinterpret_cast<const std::uint8_t *>(pixels.data());
    const std::int32_t width = 2, height = 1;
    Screen screen;
    VTGF_DrawBuf_Fast_32(&screen.surface, 1, 0, bytes, &width, &height, Back);
    VTGF_DrawBufGDI_32(&screen.surface, 0, 2, bytes, &width, &height);
    EXPECT_THAT(screen.Row(0), ElementsAre(Bare, 0xFF1E140A, 0xFF8F0A05, Bare, Bare, Bare));
    EXPECT_THAT(screen.Row(2), ElementsAre(0xFF112233, 0xFF881119, Bare, Bare, Bare, Bare));
}

} // namespace
