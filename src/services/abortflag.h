// The one flag by which the user stops what runs. A job clears it when it starts and asks between its items.
#pragma once

namespace wb
{

class AbortFlag
{
public:
    void Set() { m_set = true; }
    void Clear() { m_set = false; }
    bool IsSet() const { return m_set; }

private:
    bool m_set = false;
};

} // namespace wb
