// How the texts of a DAT are shown and changed in a single line, which they need not be.
#pragma once

#include <QString>

namespace wb
{

// The text with a visible sign for each code unit that moves in a line or breaks it. Nothing changes its
// place.
QString ShownText(QString text);

// What becomes of `text` when the user has made `edited` of what was shown of it: all but the part that
// differs stays as it was.
QString EditedText(const QString &text, QStringView edited);

} // namespace wb
