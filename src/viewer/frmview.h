// The preview window: the current frame alone on the desktop, to be judged against whatever lies behind it.
#pragma once

#include "platform/desktop/clsalphawnd.h"
#include "services/settings.h"

#include <QWidget>

#include <cstdint>

namespace wb
{

class frmView : public QWidget
{
    Q_OBJECT

public:
    // Belongs to the window of `owner`: above it, and gone from view with it. Not in view until ShowPreview.
    frmView(const Settings &settings, QWidget *owner);

    // The preview flag: nothing is in view while it is off.
    bool IsOn() const { return m_isOn; }
    void SetOn(bool on);

    // While the flag is on, shows a picture of 32 bits per pixel, without taking the focus; hides otherwise.
    // False for a picture that is too large for a window and so has to be shown elsewhere.
    bool ShowPreview(std::int32_t handle);

    // Keeps to the top-most windows, when the settings want it, while the main window is the active one.
    void KeepOnTop(bool isMainActive);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QPoint PlaceFor(QSize size) const;
    void NoticeMove();

    const Settings &m_settings;
    clsAlphaWnd m_alpha;
    bool m_isOn = false;
    QPoint m_place;           // where it was last seen
    bool m_isPressed = false; // it was, so that it may be dragged; before, others may have placed it
    bool m_wasMoved = false;  // by the user, who decides from then on where it is
};

} // namespace wb
