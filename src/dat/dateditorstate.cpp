#include "dat/dateditorstate.h"

#include <algorithm>

namespace wb
{

void DatEditorState::Open(DatTree tree, const QString &path)
{
    m_tree = std::make_shared<DatTree>(std::move(tree));
    m_path = path;
    m_isModified = false;
    ShowRoot();
}

void DatEditorState::Close()
{
    *this = DatEditorState();
}

QString DatEditorState::CurrentPath() const
{
    return m_tree->FullPath(m_block);
}

int DatEditorState::ObjectCount() const
{
    return DocOpen() ? m_tree->Item(m_block).Count : 0;
}

void DatEditorState::Show(std::int32_t block, int depth)
{
    m_block = block;
    m_depth = depth;
    m_selected = 0;
    m_rows = m_tree->Children(block);
    std::erase_if(m_rows, [this](std::int32_t item) {
        const std::uint8_t type = m_tree->Item(item).Type;
        return type != DatValue && type != DatBlock;
    });
}

std::int32_t DatEditorState::ItemOf(int row) const
{
    return row >= 1 && std::size_t(row) <= m_rows.size() ? m_rows[std::size_t(row) - 1] : 0;
}

bool DatEditorState::Enter(int row)
{
    const std::int32_t item = ItemOf(row);
    if (item == 0 || m_tree->Item(item).Type != DatBlock || m_depth == MaxDepth)
        return false;
    Show(item, m_depth + 1);
    return true;
}

int DatEditorState::Leave()
{
    const std::int32_t left = m_block;
    if (m_depth == 0)
        return 0;
    Show(m_tree->Item(left).Parent, m_depth - 1);
    return int(std::ranges::find(m_rows, left) - m_rows.begin()) + 1;
}

void DatEditorState::Select(int row)
{
    const std::int32_t item = ItemOf(row);
    m_selected = item != 0 && m_tree->Item(item).Type == DatValue ? item : 0;
}

QString DatEditorState::Value() const
{
    return ValueSelected() ? m_tree->Value(m_selected) : QString();
}

void DatEditorState::SetValue(const QString &text)
{
    if (!ValueSelected())
        return;
    m_tree->SetValue(m_selected, text);
    m_isModified = true;
}

} // namespace wb
