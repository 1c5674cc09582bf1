// How the texts of a DAT are shown and changed in a single line, which they need not be.
#pragma once

#include <QString>

namespace wb
{

// The text with a visible sign for each code unit that moves in a line or breaks it. Nothing changes its
// place.
QString ShownText(QString text);

// What becomes of `text` when the user has made `edited` of what was shown of it. What was not touched stays
// as it was, and a sign that was moved or copied is what it stood for.
QString EditedText(const QString &text, QStringView edited);

} // namespace wb
