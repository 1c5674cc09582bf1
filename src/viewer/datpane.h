// The browser's list of records: the open DAT document, block by block.
#pragma once

#include "dat/dateditor.h"
#include "viewer/browserpane.h"

#include <vector>

namespace wb
{

class DatPane : public BrowserPane
{
    Q_OBJECT

public:
    // `icons` as LoadListIcons gives them.
    DatPane(DatEditor &editor, const std::vector<QIcon> &icons, QWidget *parent);

    QString PathText() const override { return m_editor.State().CurrentPath(); }
    QString CountText() const override;
    void GoToRoot() override { m_editor.GoToRoot(); }

private:
    struct Pictures {
        QIcon Up;
        QIcon Block;
        QIcon Value;
    };
    class Rows;

    void ShowRows(int selected);

    DatEditor &m_editor;
    std::shared_ptr<const Pictures> m_pictures;
};

} // namespace wb
