#include "widgets/listbox.h"

#include <QAbstractListModel>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace wb
{

class ListBoxModel : public QAbstractListModel
{
public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent) const override
    {
        return parent.isValid() || m_rows == nullptr ? 0 : m_rows->Count();
    }

    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role == Qt::DisplayRole)
            return m_rows->Text(index.row());
        if (role == Qt::DecorationRole)
            return m_rows->Picture(index.row());
        return {};
    }

    void Replace(std::shared_ptr<const RowSource> rows)
    {
        beginResetModel();
        m_rows = std::move(rows);
        endResetModel();
    }

private:
    std::shared_ptr<const RowSource> m_rows;
};

ListBox::ListBox(const QString &name, QWidget *parent) : QListView(parent), m_model(new ListBoxModel(this))
{
    setObjectName(name);
    setModel(m_model);
    setUniformItemSizes(true);
    setIconSize(QSize(20, 20));
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setEditTriggers(NoEditTriggers);
    setTextElideMode(Qt::ElideRight);
}

ListBox::~ListBox() = default;

int ListBox::ListCount() const
{
    return m_model->rowCount({});
}

int ListBox::ListIndex() const
{
    return currentIndex().isValid() ? currentIndex().row() : -1;
}

void ListBox::SetListIndex(int row)
{
    const bool isRow = row >= 0 && row < ListCount();
    setCurrentIndex(isRow ? m_model->index(row) : QModelIndex());
    if (!isRow)
        clearSelection();
}

void ListBox::Activate()
{
    if (ListIndex() < 0)
        return;
    OpenSelected();
    Q_EMIT DblClick();
}

int ListBox::TopIndex() const
{
    return verticalScrollBar()->value();
}

void ListBox::SetTopIndex(int row)
{
    executeDelayedItemsLayout(); // new rows have no scroll range before
    verticalScrollBar()->setValue(row);
}

int ListBox::WholeRowsInView() const
{
    const int rowHeight = sizeHintForRow(0);
    return rowHeight > 0 ? viewport()->height() / rowHeight : 0;
}

void ListBox::SetRows(std::shared_ptr<const RowSource> rows, int row)
{
    const QScopedValueRollback silence(m_isSilent, true);
    m_model->Replace(std::move(rows));
    SetListIndex(row);
}

int ListBox::RowAfterKey(int key) const
{
    const int page = std::max(WholeRowsInView() - 1, 1);
    const int last = ListCount() - 1;
    const int row = ListIndex();
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        return std::max(row - 1, 0);
    case Qt::Key_Right:
    case Qt::Key_Down:
        return std::min(row + 1, last);
    case Qt::Key_PageUp:
        return std::max(row - page, 0);
    case Qt::Key_PageDown:
        return std::min(row + page, last);
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return last;
    default:
        return -1;
    }
}

void ListBox::keyPressEvent(QKeyEvent *event)
{
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) {
        event->ignore();
        return;
    }
    if (const int row = RowAfterKey(event->key()); row >= 0 && ListCount() > 0) {
        SetListIndex(row);
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Activate();
    } else if (!event->text().isEmpty()) {
        Q_EMIT KeyPress(event->text().front());
    } else {
        event->ignore();
    }
}

// What hears of the selection may let events run, so the list takes the press to its end first.
void ListBox::mousePressEvent(QMouseEvent *event)
{
    const QModelIndex clicked = indexAt(event->position().toPoint());
    const QModelIndex before = currentIndex();
    const bool isAgain = event->button() == Qt::LeftButton && clicked.isValid() && clicked == before;
    {
        const QScopedValueRollback silence(m_isSilent, true);
        QListView::mousePressEvent(event);
    }
    if (isAgain || currentIndex() != before)
        Q_EMIT SelectionChanged();
}

void ListBox::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid())
        Activate();
}

// The selected row is always the highlighted one: a click beside the rows, or with a key held, takes nothing
// away.
QItemSelectionModel::SelectionFlags ListBox::selectionCommand(const QModelIndex &index, const QEvent *) const
{
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

void ListBox::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QListView::currentChanged(current, previous);
    if (!m_isSilent)
        Q_EMIT SelectionChanged();
}

} // namespace wb
