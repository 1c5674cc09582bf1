// Blocks and chunk streams give back what was packed into them.
#include "fuzz/support/scratch.h"
#include "fuzz/support/target.h"

#include "archive/zlblock.h"
#include "common/bytes.h"

#include <algorithm>

void wb::FuzzOne(ByteView bytes)
{
    if (bytes.empty())
        return;
    ByteArray packed;
    ByteArray plain;
    ZlBlockPack(packed, bytes);
    Require(ZlBlockUnpack(plain, packed, -1, 0) && std::ranges::equal(plain, bytes), "a block");

    // More than one chunk, of which each has its share of the bytes.
    ByteArray source;
    while (source.size() < std::size_t(ZlChunkSize))
        source.insert(source.end(), bytes.begin(), bytes.end());
    ByteArray stream(4);
    PutLong(stream, 0, ZlChunkStreamPack(packed, source));
    stream.insert(stream.end(), packed.begin(), packed.end());
    InputFile file;
    Require(file.Open(ToNativePath(ScratchFile("stream", stream))) == FileError::None, "the file is there");
    Require(ZlChunkStreamUnpack(file, plain, 0, ByteCount(source)) && plain == source, "a chunk stream");
}
