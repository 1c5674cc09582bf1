// A text box for a whole number. A minus can't be typed, but a negative number that is shown keeps its own.
#pragma once

#include <QLineEdit>

#include <cstdint>

namespace wb
{

class DigitBox : public QLineEdit
{
    Q_OBJECT

public:
    DigitBox(const QString &name, std::int32_t maximum, QWidget *parent);

    // Shows a number, also one that could not be typed.
    void SetValue(std::int32_t value);

Q_SIGNALS:
    // Another number was typed or pasted. It is what the text begins with, 0 where that is no digit; a change
    // that would lead above the maximum, whatever the sign, is undone.
    void Edited(std::int32_t value);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void TakeEdit(const QString &text);

    std::int32_t m_maximum;
    std::int32_t m_value = 0;
};

} // namespace wb
