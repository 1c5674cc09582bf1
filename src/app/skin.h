// The look of the whole program: one style, one palette, one font.
#pragma once

class QApplication;

namespace wb
{

void ApplySkin(QApplication &application);

} // namespace wb
