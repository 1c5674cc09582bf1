#include "dat/dattree.h"

#include <QStringList>
#include <QtEndian>

#include <algorithm>

namespace wb
{

DatTree::DatTree(ByteArray bytes, DatNodes items, bool isZL)
    : IsZL(isZL), m_bytes(std::move(bytes)), m_items(std::move(items))
{
}

QString DatTree::TextAt(const DatText &text) const
{
    QString copy(qsizetype(text.Length), Qt::Uninitialized);
    qFromLittleEndian<char16_t>(m_bytes.data() + text.At, copy.size(), copy.data());
    return copy;
}

QString DatTree::Value(std::int32_t index) const
{
    const auto change = m_changes.find(index);
    return change != m_changes.end() ? change->second : TextAt(m_items[index].Value);
}

QString DatTree::FullPath(std::int32_t index) const
{
    QStringList names;
    for (; index > 0; index = m_items[index].Parent)
        names << Name(index);
    std::ranges::reverse(names);
    return names.join(u'\\');
}

std::vector<std::int32_t> DatTree::Children(std::int32_t index) const
{
    std::vector<std::int32_t> children;
    children.reserve(std::size_t(m_items[index].Count));
    for (std::int32_t child = index + 1; child < m_items[index].End; child = m_items[child].End)
        children.push_back(child);
    return children;
}

void DatTree::SetValue(std::int32_t index, QString text)
{
    m_changes[index] = text.remove(QChar(u'\0'));
}

} // namespace wb
