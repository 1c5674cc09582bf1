#include "common/bytes.h"

#include <gmock/gmock.h>

#include <limits>
#include <stdexcept>

namespace wb
{
namespace
{

using testing::ElementsAre;

TEST(Bytes, ReadsSignedLittleEndian)
{
    const ByteArray bytes = {0xFF, 0x7F, 0x00, 0x80, 0xFF, 0xFF, 0xFF, 0xFF};
    EXPECT_EQ(ByteCount(bytes), 8);
    EXPECT_EQ(ByteCount({}), 0);
    EXPECT_EQ(GetInteger(bytes, 0), 32767);
    EXPECT_EQ(GetInteger(bytes, 2), -32768);
    EXPECT_EQ(GetLong(bytes, 4), -1);
    EXPECT_EQ(GetLong(bytes, 0), std::int32_t(0x80007FFF));

    std::int32_t position = 1;
    EXPECT_EQ(ReadByte(bytes, position), 0x7F);
    EXPECT_EQ(ReadLong(bytes, position), std::int32_t(0xFFFF8000));
    EXPECT_EQ(position, 6);
}

TEST(Bytes, AppendsEndTheArrayThere)
{
    ByteArray bytes(10, 7);
    std::int32_t position = 2;
    AppendLong(bytes, position, -2);
    EXPECT_THAT(bytes, ElementsAre(7, 7, 0xFE, 0xFF, 0xFF, 0xFF));
    EXPECT_EQ(position, 6);
    AppendByte(bytes, position, 9);
    EXPECT_EQ(bytes.back(), 9);
    EXPECT_EQ(position, 7);

    ByteArray gap = {7};
    position = 3;
    AppendByte(gap, position, 5);
    EXPECT_THAT(gap, ElementsAre(7, 0, 0, 5)) << "a gap is zero";
    PutLong(gap, 0, 0x04030201);
    EXPECT_THAT(gap, ElementsAre(1, 2, 3, 4));
}

TEST(Bytes, OutsideStopsAndChangesNothing)
{
    ByteArray bytes = {1, 2, 3, 4, 5};
    for (std::int32_t position :
         {-1, 2, 5, 6, std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min()}) {
        std::int32_t moving = position;
        EXPECT_THROW(GetLong(bytes, position), std::out_of_range) << position;
        EXPECT_THROW(ReadLong(bytes, moving), std::out_of_range) << position;
        EXPECT_THROW(PutLong(bytes, position, 0), std::out_of_range) << position;
        EXPECT_EQ(moving, position);
    }
    EXPECT_THROW(GetInteger(bytes, 4), std::out_of_range);
    for (std::int32_t position : {-1, 5}) {
        EXPECT_THROW(ReadByte(bytes, position), std::out_of_range) << position;
    }
    for (std::int32_t position : {-4, std::numeric_limits<std::int32_t>::max()}) {
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
    EXPECT_EQ(reader.Remaining(), 0);
    EXPECT_TRUE(reader.Take(0).empty());
    EXPECT_FALSE(reader.Failed());
    EXPECT_EQ(reader.Byte(), 0);
    EXPECT_TRUE(reader.Failed());

    for (std::int64_t count : {std::int64_t(5), std::int64_t(-1), std::numeric_limits<std::int64_t>::max(),
                               std::numeric_limits<std::int64_t>::min()}) {
        ByteReader taking(bytes);
        taking.Seek(3);
        EXPECT_TRUE(taking.Take(count).empty()) << count;
        EXPECT_TRUE(taking.Failed()) << count;
        EXPECT_EQ(taking.Position(), 3) << count;
        EXPECT_THAT(taking.Take(4), ElementsAre(4, 5, 6, 7)) << count;

        ByteReader seeking(bytes);
        seeking.Seek(count == 5 ? 8 : count);
        EXPECT_TRUE(seeking.Failed()) << count;
        EXPECT_EQ(seeking.Position(), 0) << count;
    }
}

} // namespace
} // namespace wb
