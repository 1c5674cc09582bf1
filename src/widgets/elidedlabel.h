// A line of text that gives way: what does not fit is left out in its middle, as suits a path.
#pragma once

#include <QLabel>

namespace wb
{

class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    ElidedLabel(const QString &name, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace wb
