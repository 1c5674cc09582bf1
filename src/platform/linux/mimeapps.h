// mimeapps.list, by which a user's desktop knows what opens a file (MIME Applications Associations 1.0).
#pragma once

#include <QByteArray>

namespace wb
{

// The text of the file with `entry`, a desktop entry's name, as the first choice for the MIME type, or with
// it nowhere for that type. Other choices stay behind it; no other line changes.
QByteArray WithDefault(const QByteArray &text, const QByteArray &mimeType, const QByteArray &entry);
QByteArray WithoutDefault(const QByteArray &text, const QByteArray &mimeType, const QByteArray &entry);

} // namespace wb
