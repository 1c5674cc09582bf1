#include "widgets/desktopdialogs.h"

#include "widgets/colour.h"

#include <QColorDialog>
#include <QMessageBox>

namespace wb
{

void DesktopDialogs::Error(const QString &text, const QString &title)
{
    QMessageBox::critical(m_owner, title, text);
}

std::optional<std::int32_t> DesktopDialogs::ChooseColour(std::int32_t colour)
{
    const QColor chosen = QColorDialog::getColor(ToQColor(colour), m_owner);
    if (!chosen.isValid())
        return std::nullopt;
    return FromQColor(chosen);
}

} // namespace wb
