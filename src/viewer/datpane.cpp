#include "viewer/datpane.h"

#include "dat/datshowntext.h"
#include "viewer/viewertexts.h"
#include "widgets/listicons.h"

namespace wb
{

namespace
{

constexpr QChar Backspace = QChar(u'\b');
constexpr qsizetype LongestName = 500; // more than a row has room for

} // namespace

// "..", then what a block holds.
class DatPane::Rows : public RowSource
{
public:
    Rows(const DatEditorState &state, std::shared_ptr<const Pictures> pictures)
        : m_tree(state.SharedTree()), m_items(state.Rows()), m_pictures(std::move(pictures))
    {
    }

    int Count() const override { return int(m_items.size()) + 1; }
    QString Text(int row) const override
    {
        return row == 0 ? QStringLiteral("..") : ShownText(m_tree->Name(Item(row)).left(LongestName));
    }
    QIcon Picture(int row) const override
    {
        if (row == 0)
            return m_pictures->Up;
        return m_tree->Item(Item(row)).Type == DatValue ? m_pictures->Value : m_pictures->Block;
    }

private:
    std::int32_t Item(int row) const { return m_items[std::size_t(row) - 1]; }

    std::shared_ptr<const DatTree> m_tree;
    std::vector<std::int32_t> m_items;
    std::shared_ptr<const Pictures> m_pictures;
};

DatPane::DatPane(DatEditor &editor, const std::vector<QIcon> &icons, QWidget *parent)
    : BrowserPane(new ListBox(QStringLiteral("lstDAT"), parent)), m_editor(editor),
      m_pictures(std::make_shared<Pictures>(Pictures{icons[std::size_t(ListIcon::FolderUp)],
                                                     icons[std::size_t(ListIcon::Folder)],
                                                     icons[std::size_t(ListIcon::Txt)]}))
{
    connect(List(), &ListBox::SelectionChanged, this, [this] {
        m_editor.Select(List()->ListIndex());
        Q_EMIT Changed();
    });
    connect(List(), &ListBox::DblClick, this, [this] { m_editor.Activate(List()->ListIndex()); });
    connect(List(), &ListBox::KeyPress, this, [this](QChar character) {
        if (character == Backspace)
            GoUp();
    });
    connect(&m_editor, &DatEditor::RowsChanged, this, &DatPane::ShowRows);
}

QString DatPane::CountText() const
{
    return ObjectsText(m_editor.State().ObjectCount());
}

void DatPane::ShowRows(int selected)
{
    const bool isOpen = m_editor.State().DocOpen();
    List()->SetRows(isOpen ? std::make_shared<Rows>(m_editor.State(), m_pictures) : nullptr, selected);
    List()->scrollTo(List()->currentIndex());
    Q_EMIT Changed();
}

} // namespace wb
