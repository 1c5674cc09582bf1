// Finds the blocks of a DAT by their paths, for who knows no more of one than path and Id. The editor knows
// its blocks by their places in the tree, which tell blocks of one path and Id apart, and goes without.
#pragma once

#include "dat/dattree.h"

namespace wb
{

// What the block of that path and Id holds, as indexes in the tree: the root's path is empty and its Id 0.
// Of several such blocks the first counts; letters of either case are the same.
//
// A child is an item behind the block whose path is `path`, "\" and its name. A path that is empty or ends in
// "\" gets no other "\", so for blocks that are named so, the root apart, these are the children of others.
// DatTree::Children gives those of any block.
std::vector<std::int32_t> DatListFolder(const DatTree &tree, const QString &path, std::int32_t id);

} // namespace wb
