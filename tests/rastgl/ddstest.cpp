#include "rastgl/picturefile.h"
#include "rastgl/rastgl.h"

#include <gtest/gtest.h>

namespace
{

using namespace picturefile;

// Width, height and bits; flags of the pixel format; four-character code; masks; pixels.
File Make(const std::vector<Numbers> &fields)
{
    Maker file;
    file.Raw({'D', 'D', 'S', ' '}).Little(4, 124).Little(4, 0x1007);
    file.Little(4, fields[0][1]).Little(4, fields[0][0]).Zeros(14 * 4).Little(4, 32).Little(4, fields[1][0]);
    file.Little(4, fields[2].empty() ? 0 : fields[2][0]).Little(4, fields[0][2]);
    for (const std::uint32_t mask : fields[3])
        file.Little(4, mask);
    return file.Zeros(128 - file.bytes.size()).Raw(ToBytes(fields[4])).bytes;
}

TEST(Dds, ReadsEveryKindAlsoBrokenOffAndDamaged)
{
    for (const Case &each : LoadCases("dds.txt")) {
        SCOPED_TRACE(each.name);
        ExpectReads(VTGF_Read_DDS, Make(each.fields), each.seen);
    }
}

} // namespace
