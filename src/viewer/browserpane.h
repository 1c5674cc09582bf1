// One of the browser's lists: the texts around it and the ways to move in it. By itself it leads nowhere.
#pragma once

#include "widgets/listbox.h"

namespace wb
{

class BrowserPane : public QObject
{
    Q_OBJECT

public:
    // Lives as long as its list.
    explicit BrowserPane(ListBox *list);

    ListBox *List() const { return m_list; }

    virtual QString PathText() const;  // for the path box
    virtual QString CountText() const; // for the label below

    virtual void GoUp(); // ".." is the first row, where there are rows
    virtual void GoToRoot() {}
    virtual void GoTo(const QString &) {} // as typed in the path box

Q_SIGNALS:
    // There are other rows, or another one is selected.
    void Changed();

private:
    ListBox *m_list;
};

} // namespace wb
