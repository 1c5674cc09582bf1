#include "platform/desktop/wheelnotches.h"

#include <QWheelEvent>

#include <cstdlib>

namespace wb
{

int WheelNotches::Step(const QWheelEvent &event)
{
    constexpr int Notch = QWheelEvent::DefaultDeltasPerStep;
    constexpr int MostNotches = 3;
    const int delta = event.angleDelta().y();
    if (delta == 0)
        return 0; // sideways
    if (event.modifiers() != Qt::NoModifier || event.buttons() != Qt::NoButton ||
        std::abs(delta) > MostNotches * Notch) {
        m_part = 0;
        return 0;
    }
    if ((delta > 0) != (m_part > 0))
        m_part = 0;
    m_part += delta;
    if (std::abs(m_part) < Notch)
        return 0;
    const int step = m_part > 0 ? 1 : -1;
    m_part = 0;
    return step;
}

} // namespace wb
