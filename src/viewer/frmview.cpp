#include "viewer/frmview.h"

#include "gfx/graphicslibrary.h"
#include "platform/desktop/windows.h"
#include "widgets/colour.h"
#include "widgets/dibimage.h"

#include <QMouseEvent>
#include <QScreen>

#include <algorithm>

namespace wb
{

namespace
{

constexpr QSize FromBottomRight(260, 320);
// Window systems count pixels from the screen's edge in 15 bits, and hold a window several times over.
constexpr std::int32_t LongestSide = 16384;
constexpr std::int64_t MostPixels = 4096 * 4096;

bool IsTooLarge(std::int32_t handle)
{
    const std::int32_t width = Graphics().VTGF_DIB_GetWidth(handle);
    const std::int32_t height = Graphics().VTGF_DIB_GetHeight(handle);
    return width > LongestSide || height > LongestSide || std::int64_t(width) * height > MostPixels;
}

bool CanBeWindow(std::int32_t handle)
{
    return Graphics().VTGF_DIB_GetBPP(handle) == 32 && Graphics().VTGF_DIB_GetWidth(handle) > 0 &&
           Graphics().VTGF_DIB_GetHeight(handle) > 0 && !IsTooLarge(handle);
}

} // namespace

frmView::frmView(const Settings &settings, QWidget *owner)
    : QWidget(owner, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus), m_settings(settings),
      m_alpha(*this)
{
    setObjectName(QStringLiteral("frmView"));
    setAttribute(Qt::WA_ShowWithoutActivating);
}

void frmView::SetOn(bool on)
{
    m_isOn = on;
    if (!on)
        hide();
}

bool frmView::ShowPreview(std::int32_t handle)
{
    if (!m_isOn || !CanBeWindow(handle)) {
        hide();
        return !IsTooLarge(handle);
    }
    m_alpha.UpdateAlpha(ImageFromDib(handle));
    NoticeMove();
    if (!m_wasMoved) {
        move(PlaceFor(size()));
        m_place = pos();
    }
    show();
    return true;
}

// A move tells nothing while it goes on: the window manager does it.
void frmView::NoticeMove()
{
    m_wasMoved = m_wasMoved || (m_isPressed && pos() != m_place);
    m_place = pos();
}

// Nearer to the top or left where the picture fits on the screen that way only. One that is larger than the
// screen stays at its place, where it leaves the main window within reach.
QPoint frmView::PlaceFor(QSize size) const
{
    const auto edge = [](int screen, int length, int margin) {
        return screen - (length <= screen ? std::max(length, margin) : margin);
    };
    const QRect screen = parentWidget()->screen()->geometry();
    return screen.topLeft() + QPoint(edge(screen.width(), size.width(), FromBottomRight.width()),
                                     edge(screen.height(), size.height(), FromBottomRight.height()));
}

void frmView::KeepOnTop(bool isMainActive)
{
    SetTopMost(*this, isMainActive && m_settings.ViewOnTop);
}

void frmView::paintEvent(QPaintEvent *)
{
    m_alpha.PushLayered(ToQColor(m_settings.BackColor2));
}

void frmView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    NoticeMove();
    m_isPressed = StartWindowMove(*this) || m_isPressed;
}

void frmView::mouseReleaseEvent(QMouseEvent *)
{
    CancelWindowMove(*this);
}

} // namespace wb
