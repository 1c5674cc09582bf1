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
    const Numbers pixels = {0x01020304, 0x05060708, 0x090A0B0C, 0x0D0E0F10, 0x11121314, 0x15161718};
    const std::int32_t first = Hold(3, 2, pixels);
    const std::int32_t second = Hold(1, 1, {7});
    EXPECT_GT(first, 0);
    EXPECT_GT(second, 0);
    EXPECT_NE(first, second);
    std::vector<std::uint8_t> tooSmall(20, 9);
    const std::int32_t count = 20;
    VTGF_DIB_CopyBuf(tooSmall.data(), &count, first);
    EXPECT_THAT(tooSmall, Each(9));
    EXPECT_EQ(Take(first), (Seen{3, 2, 32, pixels}));

    EXPECT_NE(Hold(1, 1, {8}), first) << "a freed handle came back at once";
    EXPECT_EQ(VTGF_DIB_GetWidth(first), 0);
    EXPECT_EQ(VTGF_DIB_GetBPP(first), 0);
    VTGF_DIB_Free(first);
    EXPECT_EQ(Take(second).pixels, Numbers{7});
}

TEST(Handles, AreNotMadeOfNothing)
{
    EXPECT_EQ(Hold(0, 5, {}), 0);
    EXPECT_EQ(VTGF_DIB_GetTransType(0), 0);
    const std::int32_t zero = 0;
    const std::int32_t tooLarge = 1 << 30;
    const std::int32_t bits = 32;
    const std::uint8_t byte = 0;
    EXPECT_EQ(VTGF_Read_Buf(&byte, &tooLarge, &tooLarge, &bits), 0);
    for (const Reader reader : {VTGF_Read_PNG, VTGF_Read_BMP, VTGF_Read_JPEG, VTGF_Read_PSD, VTGF_Read_DDS}) {
        EXPECT_EQ(reader(&byte, &zero), 0);
        EXPECT_EQ(reader(nullptr, &bits), 0);
    }
}

TEST(Handles, TellTheTransparencyClass)
{
    const auto transType = [](const Numbers &pixels) {
        const std::int32_t handle = Hold(int(pixels.size()), 1, pixels);
        const std::int32_t found = VTGF_DIB_GetTransType(handle);
        VTGF_DIB_Free(handle);
        return found;
    };
    EXPECT_EQ(transType({0xFF000000, 0xFFFFFFFF}), 0);
    EXPECT_EQ(transType({0xFF000000, 0x00FFFFFF}), 1);
    EXPECT_EQ(transType({0xFF000000, 0x00FFFFFF, 0xFE000000}), 2);
    EXPECT_EQ(transType({0x01000000}), 2);
}

// A 4 x 3 surface of one colour inside a memory wider by two columns and higher by a row above and below,
// whose rest must stay as it is.
struct Screen {
    Numbers memory = Numbers(30, 0x00112233);
    RastGlSurface surface{reinterpret_cast<std::uint8_t *>(memory.data() + 6), 4, 3, 24};

    Numbers Row(int y) const { return {memory.begin() + (y + 1) * 6, memory.begin() + (y + 2) * 6}; }
};

constexpr std::uint32_t Bare = 0x00112233;
constexpr std::int32_t Back = 0x000A141E; // blue 10, green 20, red 30

TEST(Drawing, ComposesOverTheColourAndClips)
{
    const std::int32_t handle = Hold(2, 2, {0xFFAABBCC, 0x00FFFFFF, 0x80FF0000, 0xFF010203});
    Screen screen;
    VTGF_DIB_DrawFast(&screen.surface, 2, 1, handle, Back);
    EXPECT_THAT(screen.Row(0), Each(Bare));
    EXPECT_THAT(screen.Row(1), ElementsAre(Bare, Bare, 0xFFAABBCC, 0xFF1E140A, Bare, Bare));
    EXPECT_THAT(screen.Row(2), ElementsAre(Bare, Bare, 0xFF8F0A05, 0xFF010203, Bare, Bare));

    Screen clipped;
    VTGF_DIB_DrawFast(&clipped.surface, -1, -1, handle, Back);
    VTGF_DIB_DrawFast(&clipped.surface, 3, 2, handle, Back);
    VTGF_DIB_DrawFast(&clipped.surface, INT32_MAX, INT32_MAX, handle, Back);
    VTGF_DIB_DrawFast(&clipped.surface, INT32_MIN, 0, handle, Back);
    EXPECT_THAT(clipped.Row(-1), Each(Bare));
    EXPECT_THAT(clipped.Row(3), Each(Bare));
    EXPECT_THAT(clipped.Row(0), ElementsAre(0xFF010203, Bare, Bare, Bare, Bare, Bare));
    EXPECT_THAT(clipped.Row(1), Each(Bare));
    EXPECT_THAT(clipped.Row(2), ElementsAre(Bare, Bare, Bare, 0xFFAABBCC, Bare, Bare));
    VTGF_DIB_Free(handle);
}

TEST(Drawing, DrawsBuffersOverAColourOrWhatIsThere)
{
    const Numbers pixels = {0x00FFFFFF, 0x80FF0000};
    const auto *bytes = reinterpret_cast<const std::uint8_t *>(pixels.data());
    const std::int32_t width = 2;
    const std::int32_t height = 1;
    Screen over;
    VTGF_DrawBuf_Fast_32(&over.surface, 1, 0, bytes, &width, &height, Back);
    EXPECT_THAT(over.Row(0), ElementsAre(Bare, 0xFF1E140A, 0xFF8F0A05, Bare, Bare, Bare));
    Screen there;
    VTGF_DrawBufGDI_32(&there.surface, 1, 0, bytes, &width, &height);
    EXPECT_THAT(there.Row(0), ElementsAre(Bare, 0xFF112233, 0xFF881119, Bare, Bare, Bare));
}

} // namespace
