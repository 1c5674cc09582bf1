// What the main window knows of a page.
#pragma once

#include <QWidget>

namespace wb
{

class Page : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    // Gives every control of the page the value that the settings hold; called once, when the page is in
    // the window.
    virtual void ApplySettings() {}

    // Draws again what depends on colours, size or visibility.
    virtual void Redraw() {}

    // Whether a job of the page runs. The window stays open until none does.
    virtual bool IsBusy() const { return false; }

    // Makes that job end soon.
    virtual void Abort() {}

    // Asks whether what was not saved may be lost, when no job runs. False keeps the window open.
    virtual bool MayClose() { return true; }

    // The program ends: stop what runs and free every picture.
    virtual void Release() {}

Q_SIGNALS:
    // The page's job has ended and left nothing behind.
    void Idle();
};

} // namespace wb
