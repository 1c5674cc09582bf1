// A DAT that is read is listed, and written and turned into JSON and back without a change.
#include "fuzz/support/target.h"

#include "dat/datjson.h"
#include "dat/datlisting.h"
#include "dat/datreader.h"
#include "dat/datwriter.h"

#include <algorithm>

void wb::FuzzOne(ByteView bytes)
{
    DatTree tree = DatParse(ByteArray(bytes.begin(), bytes.end()));
    if (tree.Count() == 0)
        return;
    for (std::int32_t item = 0; item < std::min(tree.Count(), 50); ++item)
        DatListFolder(tree, tree.FullPath(item), tree.Item(item).Id);
    tree.IsZL = false;
    const ByteArray plain = DatSerialize(tree);
    Require(!plain.empty() && DatSerialize(DatParse(plain)) == plain, "the plain form");
    const DatFromJsonResult back = DatFromJson(DatToJson(tree));
    Require(back.Problem.isEmpty() && back.Plain == plain, "as JSON");
    tree.IsZL = true;
    const DatTree expanded = DatParse(DatSerialize(tree));
    Require(expanded.IsZL && expanded.Count() == tree.Count(), "the compressed form");
}
