// A picture as a top-level window whose transparency is the picture's own.
#pragma once

#include <QImage>
#include <QTimer>

#include <cstdint>
#include <span>

class QColor;
class QWidget;

namespace wb
{

class clsAlphaWnd
{
public:
    // Makes `window` one that can be transparent; it has no native window yet. Its paint event calls
    // PushLayered.
    explicit clsAlphaWnd(QWidget &window);

    // Takes the picture, whose format is QImage::Format_ARGB32, and the window takes its size.
    void UpdateAlpha(QImage picture);

    // Multiplies the colours of B, G, R, A pixels by their alpha: channel * A \ 255.
    static void PremultiplyAlpha(std::span<std::uint8_t> pixels);

    // Paints the window: the picture alone, or over `back` where no compositor makes windows transparent.
    void PushLayered(const QColor &back) const;

private:
    void FollowCompositor();

    QWidget &m_window;
    QImage m_picture;
    QTimer m_watch; // of the compositor, which can come and go while the window is shown
    bool m_isComposited = false;
};

} // namespace wb
