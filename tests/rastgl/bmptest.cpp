#include "rastgl/picturefile.h"
#include "rastgl/rastgl.h"

#include <gtest/gtest.h>

namespace
{

using namespace picturefile;

// Header size, width, height, bits and compression; masks, inside headers that have room and else behind;
// palette; pixels.
File Make(const std::vector<Numbers> &fields)
{
    const Numbers &head = fields[0];
    const bool isShort = head[0] == 12;
    Maker header;
    header.Little(4, head[0]).Little(isShort ? 2 : 4, head[1]).Little(isShort ? 2 : 4, head[2]);
    header.Little(2, 1).Little(2, head[3]);
    if (!isShort)
        header.Little(4, head[4]).Zeros(12).Little(4, std::uint32_t(fields[2].size())).Zeros(4);
    for (const std::uint32_t mask : fields[1])
        header.Little(4, mask);
    if (header.bytes.size() < head[0])
        header.Zeros(head[0] - header.bytes.size());
    for (const std::uint32_t colour : fields[2])
        header.Little(isShort ? 3 : 4, colour);
    Maker file;
    file.Raw({'B', 'M'}).Zeros(8).Little(4, std::uint32_t(14 + header.bytes.size()));
    return file.Raw(header.bytes).Raw(ToBytes(fields[3])).bytes;
}

TEST(Bmp, ReadsEveryKindAlsoBrokenOffAndDamaged)
{
    for (const Case &each : LoadCases("bmp.txt")) {
        SCOPED_TRACE(each.name);
        ExpectReads(VTGF_Read_BMP, Make(each.fields), each.seen);
    }
}

} // namespace
