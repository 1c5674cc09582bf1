#include "fuzz/support/target.h"

#include "archive/zlblock.h"

void wb::FuzzOne(ByteView bytes)
{
    ByteArray plain;
    ZlBlockUnpack(plain, bytes, -1, 0);
    Require(plain.size() <= bytes.size() * 1032, "zlib expands at most 1,032 times");
}
