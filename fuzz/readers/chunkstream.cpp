#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "fuzz/support/target.h"

#include "archive/zlblock.h"

void wb::FuzzOne(ByteView bytes)
{
    FuzzInput input(bytes);
    const std::int32_t unpackedLength = input.Long();
    const QString path = ScratchFile("stream", input.Take(std::int64_t(bytes.size())));
    InputFile archive;
    ByteArray plain;
    if (archive.Open(ToNativePath(path)) == FileError::None)
        ZlChunkStreamUnpack(archive, plain, 0, unpackedLength);
    Require(std::int64_t(plain.size()) <= std::max(unpackedLength, 0), "no more than was asked for");
}
