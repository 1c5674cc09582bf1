#include "common/bytes.h"

#include <gmock/gmock.h>

#include <limits>
#include <stdexcept>

using namespace wb;
using testing::ElementsAre;

namespace
{

constexpr std::int32_t Smallest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t Largest = std::numeric_limits<std::int32_t>::max();

TEST(Bytes, ReadsSignedLittleEndian)
{
    const ByteArray bytes = {0xFF, 0x7F, 0x00, 0x80, 0xFF, 0xFF, 0xFF, 0xFF};
    EXPECT_EQ(GetInteger(bytes, 2), -32768);
    EXPECT_EQ(GetLong(bytes, 4), -1);
    std::int32_t position = 1;
    EXPECT_EQ(ReadByte(bytes, position), 0x7F);
    EXPECT_EQ(ReadLong(bytes, position), std::int32_t(0xFFFF8000));
    EXPECT_EQ(position, 6);
}

TEST(Bytes, AppendsEndTheArrayThere)
{
    ByteArray bytes(10, 7);
    std::int32_t position = 2;
    AppendLong(bytes, position, 0x04030201);
    AppendByte(bytes, position, 9);
    EXPECT_THAT(bytes, ElementsAre(7, 7, 1, 2, 3, 4, 9));
    EXPECT_EQ(position, 7);

    ByteArray gap = {7};
    position = 3;
    AppendByte(gap, position, 5);
    EXPECT_THAT(gap, ElementsAre(7, 0, 0, 5)) << "a gap is zero";
}

TEST(Bytes, OutsideStopsAndChangesNothing)
{
    ByteArray bytes = {1, 2, 3, 4, 5};
    for (const std::int32_t position : {-1, 2, 5, 6, Largest, Smallest}) {
        std::int32_t moving = position;
        EXPECT_THROW(ReadLong(bytes, moving), std::out_of_range) << position;
        EXPECT_THROW(PutLong(bytes, position, 0), std::out_of_range) << position;
        EXPECT_EQ(moving, position);
    }
    EXPECT_THROW(GetInteger(bytes, 4), std::out_of_range);
    for (std::int32_t position : {-1, 5})
        EXPECT_THROW(ReadByte(bytes, position), std::out_of_range) << position;
    for (std::int32_t position : {-4, Largest}) {
        EXPECT_THROW(AppendLong(bytes, position, 1), std::out_of_range) << position;
        EXPECT_THROW(AppendByte(bytes, position, 1), std::out_of_range) << position;
    }
    EXPECT_THAT(bytes, ElementsAre(1, 2, 3, 4, 5));
}

TEST(ByteReader, FailsOnceAndStaysInside)
{
    const ByteArray bytes = {1, 2, 3, 4, 5, 6, 7};
    ByteReader reader(bytes);
    EXPECT_EQ(reader.Byte(), 1);
    EXPECT_EQ(reader.Word(), 0x0302);
    EXPECT_EQ(reader.Long(), 0x07060504);
    reader.Seek(7);
    EXPECT_FALSE(reader.Failed());
    EXPECT_EQ(reader.Byte(), 0);
    EXPECT_TRUE(reader.Failed());

    using Limits = std::numeric_limits<std::int64_t>;
    for (const std::int64_t outside : {std::int64_t(8), std::int64_t(-1), Limits::max(), Limits::min()}) {
        ByteReader damaged(bytes);
        damaged.Seek(outside);
        EXPECT_TRUE(damaged.Failed()) << outside;
        EXPECT_EQ(damaged.Remaining(), 7) << outside;

        ByteReader taking(bytes);
        taking.Seek(3);
        EXPECT_TRUE(taking.Take(outside == 8 ? 5 : outside).empty()) << outside;
        EXPECT_TRUE(taking.Failed()) << outside;
        EXPECT_THAT(taking.Take(4), ElementsAre(4, 5, 6, 7)) << outside;
    }
}

} // namespace
