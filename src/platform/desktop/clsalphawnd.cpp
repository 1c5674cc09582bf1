#include "platform/desktop/clsalphawnd.h"

#include "platform/desktop/windows.h"

#include <QPainter>
#include <QWidget>

namespace wb
{

namespace
{

constexpr int WatchInterval = 250; // ms

}

clsAlphaWnd::clsAlphaWnd(QWidget &window) : m_window(window)
{
    window.setAttribute(Qt::WA_TranslucentBackground);
    m_watch.setInterval(WatchInterval);
    QObject::connect(&m_watch, &QTimer::timeout, &window, [this] { FollowCompositor(); });
}

void clsAlphaWnd::UpdateAlpha(QImage picture)
{
    PremultiplyAlpha({picture.bits(), std::size_t(picture.sizeInBytes())});
    picture.reinterpretAsFormat(QImage::Format_ARGB32_Premultiplied);
    m_picture = std::move(picture);
    m_isComposited = IsComposited();
    m_watch.start();
    m_window.resize(m_picture.size());
    m_window.update();
}

void clsAlphaWnd::PremultiplyAlpha(std::span<std::uint8_t> pixels)
{
    for (std::size_t at = 0; at + 4 <= pixels.size(); at += 4) {
        const unsigned alpha = pixels[at + 3];
        for (std::size_t channel = at; channel < at + 3; ++channel)
            pixels[channel] = static_cast<std::uint8_t>(pixels[channel] * alpha / 255);
    }
}

void clsAlphaWnd::PushLayered(const QColor &back) const
{
    QPainter painter(&m_window);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(m_window.rect(), m_isComposited ? QColor(Qt::transparent) : back);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.drawImage(0, 0, m_picture);
}

void clsAlphaWnd::FollowCompositor()
{
    if (!m_window.isVisible()) {
        m_watch.stop();
    } else if (IsComposited() != m_isComposited) {
        m_isComposited = !m_isComposited;
        m_window.update();
    }
}

} // namespace wb
