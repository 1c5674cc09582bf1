#include "dat/datshowntext.h"

#include <algorithm>

namespace wb
{

namespace
{

constexpr char16_t ControlPictures = 0x2400; // the signs of the control characters, in their order
constexpr char16_t DeletePicture = 0x2421;
constexpr char16_t NewlinePicture = 0x2424;

QChar Shown(QChar character)
{
    const char16_t unit = character.unicode();
    if (unit < u' ')
        return QChar(char16_t(ControlPictures + unit));
    switch (unit) {
    case 0x7F:
        return DeletePicture;
    case QChar::LineSeparator:
    case QChar::ParagraphSeparator:
    case 0xFDD0: // what the window system's texts take for the edges of frames
    case 0xFDD1:
        return NewlinePicture;
    default:
        return character;
    }
}

// What of `text` is shown as this character.
QChar MeantBy(QChar sign, const QString &text)
{
    if (sign < ControlPictures || sign > NewlinePicture)
        return sign;
    const auto meant = std::ranges::find(text, sign, Shown);
    return meant == text.end() ? sign : *meant;
}

} // namespace

QString ShownText(QString text)
{
    std::ranges::transform(text, text.begin(), Shown);
    return text;
}

QString EditedText(const QString &text, QStringView edited)
{
    const QString shown = ShownText(text);
    const qsizetype shorter = std::min(shown.size(), edited.size());
    const auto sameStart = std::mismatch(shown.begin(), shown.begin() + shorter, edited.begin());
    const qsizetype start = sameStart.first - shown.begin();
    const auto sameEnd = std::mismatch(shown.rbegin(), shown.rbegin() + (shorter - start), edited.rbegin());
    const qsizetype end = sameEnd.first - shown.rbegin();
    QString changed = edited.sliced(start, edited.size() - start - end).toString();
    std::ranges::transform(changed, changed.begin(), [&text](QChar sign) { return MeantBy(sign, text); });
    return text.first(start) + changed + text.last(end);
}

} // namespace wb
