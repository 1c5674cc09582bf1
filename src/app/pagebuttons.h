// The row of buttons below the title bar, one for each page: cmdPage(0) to cmdPage(8).
#pragma once

#include <QWidget>

class QButtonGroup;

namespace wb
{

class PageButtons final : public QWidget
{
    Q_OBJECT

public:
    explicit PageButtons(QWidget *parent);

    // As the user does; nothing while the buttons are disabled.
    void Press(int page);

Q_SIGNALS:
    void Chosen(int page);

private:
    QButtonGroup *m_group;
};

} // namespace wb
