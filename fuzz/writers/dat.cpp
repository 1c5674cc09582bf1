// Values that are changed come back so, and nothing else does.
#include "fuzz/support/input.h"
#include "fuzz/support/target.h"

#include "dat/datreader.h"
#include "dat/datwriter.h"

void wb::FuzzOne(ByteView bytes)
{
    FuzzInput input(bytes);
    const bool isZL = input.Flag();
    const std::int32_t wanted = input.Number(1000);
    const QString text = input.Text(200);
    const ByteView file = input.Take(std::int64_t(bytes.size()));
    DatTree tree = DatParse(ByteArray(file.begin(), file.end()));
    if (tree.Count() < 2)
        return;
    const std::int32_t changed = 1 + wanted % (tree.Count() - 1);
    if (tree.Item(changed).OpensBlock)
        return;
    tree.IsZL = isZL;
    tree.SetValue(changed, text);
    const DatTree read = DatParse(DatSerialize(tree));
    Require(read.Count() == tree.Count() && read.IsZL == isZL, "every item comes back");
    for (std::int32_t item = 1; item < tree.Count(); ++item)
        Require(read.Name(item) == tree.Name(item) && read.Value(item) == tree.Value(item),
                "a text comes back");
    Require(read.Value(changed) == text, "the value is the one that was set");
}
