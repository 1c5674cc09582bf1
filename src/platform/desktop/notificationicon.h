// The program's icon in the notification area, while the window is put away there.
#pragma once

#include <QObject>
#include <QSystemTrayIcon>

#include <memory>

namespace wb
{

class NotificationIcon : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // Whether this desktop has a notification area at all.
    static bool Available() { return QSystemTrayIcon::isSystemTrayAvailable(); }

    // Shows the icon; the tip is cut to the 63 characters that every desktop's record holds.
    void Show(const QIcon &icon, const QString &tip);
    void Remove() { m_icon.reset(); }

Q_SIGNALS:
    // A click with the left or the right button.
    void Clicked();

private:
    struct LaterDelete {
        void operator()(QSystemTrayIcon *icon) const { icon->deleteLater(); }
    };
    std::unique_ptr<QSystemTrayIcon, LaterDelete> m_icon;
};

} // namespace wb
