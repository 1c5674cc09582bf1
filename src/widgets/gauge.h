// A flat bar that fills from the left: the memory gauge and the progress of long work.
#pragma once

#include <QColor>
#include <QWidget>

namespace wb
{

class Gauge : public QWidget
{
    Q_OBJECT

public:
    Gauge(const QString &name, QWidget *parent);

    int Maximum() const { return m_maximum; }
    int Value() const { return m_value; }
    QColor BarColour() const { return m_colour; }

    void SetMaximum(int maximum);
    void SetValue(int value);
    void SetBarColour(const QColor &colour);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_maximum = 1;
    int m_value = 0;
    QColor m_colour{0x4D, 0x9B, 0xE7};
};

} // namespace wb
