// Files whose inside the fuzzer can't reach by itself: whatever byte it changes, a checksum or a compression
// is broken before anything else is read. A target of such files says how one is taken apart and put together
// again, and changes are made to a part.
#pragma once

#include "common/bytearray.h"

#include <vector>

namespace wb
{

struct FilePart {
    ByteArray bytes;
    bool isPacked = false; // in the file they are compressed
};

// The parts of the file, none when it is none of that kind; compressed ones expanded if `expands`, else as
// they stand. Each such target defines both.
std::vector<FilePart> TakeApart(ByteView file, bool expands);

// A file of these parts, with lengths and checksums that are right for them.
ByteArray PutTogether(const std::vector<FilePart> &parts);

} // namespace wb
