// A list of rows with a picture each, as tall as its window and as fast with fifty thousand rows as with
// five.
#pragma once

#include <QIcon>
#include <QListView>

#include <memory>

namespace wb
{

class ListBoxModel;

// What a list box shows. It stays unchanged while the list box holds it.
class RowSource
{
public:
    virtual ~RowSource() = default;
    virtual int Count() const = 0;
    virtual QString Text(int row) const = 0;
    virtual QIcon Picture(int row) const = 0;
};

class ListBox : public QListView
{
    Q_OBJECT

public:
    ListBox(const QString &name, QWidget *parent);
    ~ListBox() override;

    int ListCount() const;
    int ListIndex() const; // the selected row, -1 when none is
    void SetListIndex(int row);

    // What a double click on the selected row does, and Enter.
    void Activate();

    int TopIndex() const; // the first row in view
    void SetTopIndex(int row);
    int WholeRowsInView() const;

    // Replaces the rows and selects `row` (-1: none), without saying so.
    void SetRows(std::shared_ptr<const RowSource> rows, int row);

Q_SIGNALS:
    // Another row is selected, or the selected one was clicked again.
    void SelectionChanged();
    void DblClick();
    // A key that gives a character and moves nothing in the list; Escape and Backspace are their control
    // codes.
    void KeyPress(QChar character);

protected:
    // What a list does by itself before DblClick is sent.
    virtual void OpenSelected() {}

    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index,
                                                         const QEvent *event) const override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

private:
    int RowAfterKey(int key) const;

    ListBoxModel *m_model;
    bool m_isSilent = false; // what changes is not said, or not yet
};

} // namespace wb
