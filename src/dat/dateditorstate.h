// What the DAT editor works on: the document, the block of it that is shown, and the value that is selected.
#pragma once

#include "dat/dattree.h"

#include <memory>

namespace wb
{

class DatEditorState
{
public:
    static constexpr int MaxDepth = 255; // of a block that can be entered; the root has 0

    bool DocOpen() const { return m_tree->Count() > 0; }
    bool Modified() const { return m_isModified; } // a value, since opening or saving
    const QString &DatPath() const { return m_path; }
    const DatTree &Tree() const { return *m_tree; }

    // Replaces everything by a document that is valid, and shows its root.
    void Open(DatTree tree, const QString &path);
    void Close();

    void SetPath(const QString &path) { m_path = path; }
    void SetSaved() { m_isModified = false; }
    void SetZL(bool isZL) { m_tree->IsZL = isZL; } // counts when it is saved, and is no change by itself

    // --- The block shown
    //
    // It is known by its place in the tree: blocks of one path and Id are still different ones.

    QString CurrentPath() const;
    int Depth() const { return m_depth; }
    int ObjectCount() const; // all children, those without a row as well

    // Row 0 leads up. The others are the children that are values or blocks by their type; here are their
    // places in the tree. Values may change while somebody holds the tree, names do not.
    const std::vector<std::int32_t> &Rows() const { return m_rows; }
    std::shared_ptr<const DatTree> SharedTree() const { return m_tree; }

    void ShowRoot() { Show(0, 0); }

    // Shows the block of a row. False, with nothing changed, when there is none or it lies too deep.
    bool Enter(int row);

    // Shows the block above, unless this is the root. Gives the row of the block left.
    int Leave();

    // --- The value selected

    // The row that is selected; one that is no value selects none.
    void Select(int row);
    bool ValueSelected() const { return m_selected > 0; }
    QString Value() const; // empty when none is
    void SetValue(const QString &text);

private:
    void Show(std::int32_t block, int depth);
    std::int32_t ItemOf(int row) const; // 0 when it has none

    std::shared_ptr<DatTree> m_tree = std::make_shared<DatTree>();
    QString m_path;
    bool m_isModified = false;
    std::int32_t m_block = 0;
    int m_depth = 0;
    std::vector<std::int32_t> m_rows;
    std::int32_t m_selected = 0; // 0: no value
};

} // namespace wb
