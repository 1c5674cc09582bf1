// Turns the desktop's wheel events into whole notches.
#pragma once

class QWheelEvent;

namespace wb
{

// A wheel sends one to three notches at once; touchpads and fine wheels send parts of one, which add up until
// a notch is full.
class WheelNotches
{
public:
    // +1 for a notch away from the user, -1 towards; 0 for none yet, and always while a key or button is
    // held.
    int Step(const QWheelEvent &event);

private:
    int m_part = 0;
};

} // namespace wb
