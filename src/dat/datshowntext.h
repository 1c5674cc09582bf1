// How the texts of a DAT are shown and changed in a single line, which they need not be.
//
// A unit that moves in a line or breaks it has a sign that stands in for it. What would be taken for one of
// these signs, and what has none, is shown by the character U+100000 + unit, of the last private plane. So
// each text is shown in one way, and what is shown means one text, however it was put together.
#pragma once

#include <QString>

namespace wb
{

// What is shown of a text, as it is in the file.
QString ShownText(QStringView text);

// The text of which `shown` is shown.
QString MeantText(QStringView shown);

} // namespace wb
