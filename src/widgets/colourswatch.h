// A button that shows a colour; some show its text too.
#pragma once

#include <QAbstractButton>

#include <cstdint>

namespace wb
{

class ColourSwatch : public QAbstractButton
{
    Q_OBJECT

public:
    ColourSwatch(const QString &name, QWidget *parent);

    // A platform colour value (red in the low byte).
    void SetColour(std::int32_t colour);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::int32_t m_colour = 0;
};

} // namespace wb
