#include "dat/datlisting.h"

#include <algorithm>

namespace wb
{

namespace
{

// Calls `visit` with every item of that path, in the tree's order, until it returns true. Blocks that the
// path does not lead through are passed over.
template <typename Visit>
void VisitPath(const DatTree &tree, QStringView path, Visit &&visit)
{
    struct Level {
        std::int32_t end;
        qsizetype start; // in the path, of what is left of it
    };
    if (path.isEmpty() && visit(0))
        return;
    std::vector<Level> levels = {{tree.Count(), 0}};
    for (std::int32_t item = 1; item < tree.Count();) {
        while (item == levels.back().end)
            levels.pop_back();
        const DatNode &node = tree.Item(item);
        const QStringView rest = path.sliced(levels.back().start);
        const auto length = qsizetype(node.Name.Length);
        const bool isLast = rest.size() == length;
        const bool leads = rest.size() > length && rest[length] == u'\\';
        const bool fits =
            (isLast || leads) && rest.first(length).compare(tree.Name(item), Qt::CaseInsensitive) == 0;
        if (fits && isLast && visit(item))
            return;
        if (fits && leads && node.End > item + 1) {
            levels.push_back({node.End, levels.back().start + length + 1});
            ++item;
        } else {
            item = node.End;
        }
    }
}

} // namespace

std::vector<std::int32_t> DatListFolder(const DatTree &tree, const QString &path, std::int32_t id)
{
    std::int32_t folder = -1;
    if (tree.Count() > 0)
        VisitPath(tree, path, [&](std::int32_t item) {
            if (tree.Item(item).Id == id)
                folder = item;
            return folder >= 0;
        });
    if (folder < 0)
        return {};
    if (folder == 0 || (!path.isEmpty() && !path.endsWith(u'\\')))
        return tree.Children(folder);

    const auto expected = std::size_t(tree.Item(folder).Count);
    std::vector<std::int32_t> found;
    const auto addChildren = [&](std::int32_t block) {
        for (const std::int32_t child : tree.Children(block))
            if (child > folder && found.size() < expected)
                found.push_back(child);
        return found.size() >= expected;
    };
    if (path.isEmpty())
        addChildren(0);
    else
        VisitPath(tree, QStringView(path).chopped(1),
                  [&](std::int32_t block) { return block != 0 && addChildren(block); });
    return found;
}

} // namespace wb
