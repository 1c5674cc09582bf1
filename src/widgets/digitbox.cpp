#include "widgets/digitbox.h"

#include "common/text.h"

#include <QKeyEvent>

#include <algorithm>

namespace wb
{

namespace
{

// What the text begins with; one number above `maximum` stands for all of them.
std::int32_t NumberIn(QStringView text, std::int32_t maximum)
{
    std::int64_t number = 0;
    for (const QChar character : text) {
        if (character < u'0' || character > u'9')
            break;
        number = std::min<std::int64_t>(number * 10 + character.unicode() - u'0', maximum + 1LL);
    }
    return std::int32_t(number);
}

} // namespace

DigitBox::DigitBox(const QString &name, std::int32_t maximum, QWidget *parent)
    : QLineEdit(QStringLiteral("0"), parent), m_maximum(maximum)
{
    setObjectName(name);
    setInputMethodHints(Qt::ImhDigitsOnly);
    connect(this, &QLineEdit::textEdited, this, &DigitBox::TakeEdit);
}

void DigitBox::SetValue(std::int32_t value)
{
    m_value = value;
    if (const QString shown = QString::number(value); shown != text())
        setText(shown);
}

void DigitBox::keyPressEvent(QKeyEvent *event)
{
    const QString typed = event->text();
    int code = typed.isEmpty() || !typed.front().isPrint() ? 0 : typed.front().unicode();
    const bool isCharacter = code != 0;
    FilterDigitKey(code);
    if (code != 0 || !isCharacter)
        QLineEdit::keyPressEvent(event);
}

void DigitBox::TakeEdit(const QString &text)
{
    const QString trimmed = text.trimmed();
    const bool isNegative = m_value < 0 && trimmed.startsWith(u'-');
    const std::int32_t size = NumberIn(QStringView(trimmed).mid(isNegative ? 1 : 0), m_maximum);
    const std::int32_t number = isNegative ? -size : size;
    const bool isChange = size <= m_maximum && number != m_value;
    const auto behindCursor = text.size() - cursorPosition();
    SetValue(size <= m_maximum ? number : m_value);
    setCursorPosition(int(this->text().size() - behindCursor));
    if (isChange)
        Q_EMIT Edited(number);
}

} // namespace wb
