#include "platform/desktop/notificationicon.h"

namespace wb
{

void NotificationIcon::Show(const QIcon &icon, const QString &tip)
{
    constexpr int TipLength = 63;
    m_icon.reset(new QSystemTrayIcon(icon));
    m_icon->setToolTip(tip.left(TipLength));
    connect(m_icon.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::Context)
                    Q_EMIT Clicked();
            });
    m_icon->show();
}

} // namespace wb
