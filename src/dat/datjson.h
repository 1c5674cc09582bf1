// A DAT document as JSON and back, each text kept to the code unit.
//
//   {"zl": false, "root": BLOCK}
//   BLOCK        {"kind": "nodes" or "pairs", "children": [...]}
//   of nodes     {"type": "value", "id": 1, "aux": 0, "name": "...", "value": "..."}
//                {"type": "block", "id": 1, "aux": 0, "name": "...", "block": BLOCK}
//   of pairs     {"type": 1, "name": "...", "value": "..."}
#pragma once

#include "dat/dattree.h"

namespace wb
{

// UTF-8, a child a line.
ByteArray DatToJson(const DatTree &tree);

struct DatFromJsonResult {
    ByteArray Plain; // the plain form of the document
    bool IsZL = false;
    QString Problem; // what is wrong, with its path in the tree; then there are no bytes
};

DatFromJsonResult DatFromJson(ByteView json);

} // namespace wb
