// Everything the program asks or tells in a box of its own. Pages get it handed, so that tests can answer.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace wb
{

class Dialogs
{
public:
    virtual ~Dialogs() = default;

    // A message box with the critical-stop icon and one button.
    virtual void Error(const QString &text, const QString &title) = 0;

    // Lets the user choose a colour, starting at `colour`; nothing when cancelled. Platform colour values:
    // red in the low byte.
    virtual std::optional<std::int32_t> ChooseColour(std::int32_t colour) = 0;
};

// The title of every box that reports an error.
inline const QString ErrorTitle = QStringLiteral("Error");

} // namespace wb
