// Reads DAT files: the plain form, which is the root block and nothing else, and the compressed form, which
// is the plain one as a ZL block with the tag "ZL01". All integers are little-endian.
//
//   block               kind (1 byte), number of children (4), the children
//   child of a node list  Id (4), Aux (4), type (1), name; then a text or a block
//   child of a pair list  type (1), name, text
#pragma once

#include "common/memorybudget.h"
#include "dat/dattree.h"
#include "dat/datwork.h"

namespace wb
{

// The tree of a file's bytes. Nothing at all when any of them, up to the end of the root block, is not as it
// should be, when reading is ended early, or when the document takes too much memory: more than DatMemoryFor
// allows its file, or than there is. Only a text that is the last thing of all may lack its terminator.
DatTree DatParse(ByteArray bytes, const DatWork &work = {});

// The same of a file; nothing as well when it can't be read.
DatTree DatLoadFile(const QString &path, const DatWork &work = {});

// Appends the root block at `position` and all that it holds to `items`, which are empty, and moves the
// position behind it. False when it is damaged, reading is ended early or `budget` does not hold the items.
bool DatReadBlock(ByteView bytes, std::int64_t &position, DatNodes &items, MemoryBudget budget,
                  const DatWork &work = {});

// The text at `position`, which moves behind its terminator, or to the end of the bytes when it has none.
DatText DatReadText(ByteView bytes, std::int64_t &position);

} // namespace wb
