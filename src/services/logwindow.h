// The window of text into which pages write their reports. Pages get it handed, so that tests can read it.
#pragma once

#include <QString>

namespace wb
{

class LogWindow
{
public:
    virtual ~LogWindow() = default;

    // Brings the window into view, which neither blocks the others nor empties the text; puts it away.
    virtual void Show() = 0;
    virtual void Hide() = 0;

    // Puts the text on a line of its own below the others, and that line into view.
    virtual void AddLine(const QString &text) = 0;

    // Empties the text.
    virtual void Clean() = 0;
};

} // namespace wb
