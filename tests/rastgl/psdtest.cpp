#include "rastgl/picturefile.h"
#include "rastgl/rastgl.h"

#include <gtest/gtest.h>

namespace
{

using namespace picturefile;

// The control byte that does nothing, then literal bytes where they differ and a run where not.
File PackRow(const File &row)
{
    File packed = {0x80};
    for (std::size_t at = 0; at < row.size();) {
        std::size_t run = 1;
        while (at + run < row.size() && row[at + run] == row[at])
            ++run;
        packed.push_back(std::uint8_t(run > 1 ? 257 - run : 0));
        packed.push_back(row[at]);
        at += run;
    }
    return packed;
}

// Channels, width, height, depth and mode; layer section; palette; rows.
File Make(const std::vector<Numbers> &fields, bool isPacked)
{
    const Numbers &head = fields[0];
    Maker file;
    file.Raw({'8', 'B', 'P', 'S'}).Big(2, 1).Zeros(6).Big(2, head[0]).Big(4, head[2]).Big(4, head[1]);
    file.Big(2, head[3]).Big(2, head[4]);
    File palette(fields[2].empty() ? 0 : 768);
    for (std::size_t at = 0; at < fields[2].size() * 3; ++at)
        palette[at % 3 * 256 + at / 3 + 1] = std::uint8_t(fields[2][at / 3] >> (16 - at % 3 * 8));
    file.Big(4, std::uint32_t(palette.size())).Raw(palette).Big(4, 3).Raw({'r', 'e', 's'});
    file.Big(4, std::uint32_t(fields[1].size())).Raw(ToBytes(fields[1])).Big(2, isPacked ? 1 : 0);
    const File rows = ToBytes(fields[3]);
    if (!isPacked)
        return file.Raw(rows).bytes;

    Maker packed;
    const std::ptrdiff_t rowBytes = (head[1] * head[3] + 7) / 8;
    for (auto row = rows.begin(); rows.end() - row >= rowBytes; row += rowBytes) {
        const File bytes = PackRow(File(row, row + rowBytes));
        file.Big(2, std::uint32_t(bytes.size()));
        packed.Raw(bytes);
    }
    return file.Raw(packed.bytes).bytes;
}

TEST(Psd, ReadsEveryKindAlsoBrokenOffAndDamaged)
{
    for (const Case &each : LoadCases("psd.txt")) {
        SCOPED_TRACE(each.name);
        ExpectReads(VTGF_Read_PSD, Make(each.fields, false), each.seen);
        ExpectReads(VTGF_Read_PSD, Make(each.fields, true), each.seen);
    }
}

} // namespace
